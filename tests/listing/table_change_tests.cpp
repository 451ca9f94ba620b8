#include "change_texts.h"
#include "editor_rules.h"
#include "editor_store.h"
#include "listing_fixture.h"
#include "recovery_file.h"
#include "table_change.h"
#include "table_compare.h"
#include "tool_list_commands.h"

#include <functional>

namespace qor::test {
namespace {

class TableChanges : public Listing
{
protected:
    void SetUp() override
    {
        Listing::SetUp();
        ws.Table.InitialMagazine = 1;
        ws.Table.DefaultArborType = 1;
        ws.Table.DefaultArbor.Dia = {40, 50};
        ws.Table.DefaultArbor.Len = {20, 30};
        Slot(0) = FullTool(1);
        NewDataSet(ws.Table, 1);
        Slot(3) = FullTool(4);
        ws.Table.CurrentSlot = 9;
    }

    ToolListCommands commands{ws, messages, nullptr};
};

struct Case
{
    const char *name;
    std::function<std::optional<TableChange>()> make;
    std::vector<int> slots; // the positions it changes
    BeforeAfter<int> focus; // CurrentSlot after undo and redo (-1: as it was)
};

// Every operation made, undone and redone: each time the table holds, field
// by field, what it held before, and the change names the positions it
// touched and the one to show.
TEST_F(TableChanges, EveryOperationIsUndoneAndRedoneExactly)
{
    const std::vector<Case> cases = {
        {"editor stores an edited tool",
         [this] {
             EditorForm form = FillFormFromSlot(ws, 0);
             form.Para[0].Text = std::string("6"); // a bare "6" trips GCC 12 -Wrestrict
             form.ToolName.Text = "renamed";
             return StoreForm(form, ws, messages).Change;
         },
         {0},
         {0, 0}},
        {"editor stores the default arbor",
         [this] {
             EditorForm form = FillFormFromSlot(ws, 0);
             form.MagNo.Text.clear(); // as the list window leaves it
             form.Arbor.Index = 3;
             form.Sections.Dia = {25, 35};
             return StoreForm(form, ws, messages).Change;
         },
         {},
         {-1, -1}},
        {"new tool", [this] { return commands.NewToolChange(); }, {2}, {2, 2}},
        {"editing an empty position gives it the new tool",
         [this] { return commands.EditChange(7); },
         {7},
         {7, 7}},
        {"delete",
         [this] {
             messages.answers.push_back(MessageAnswer::Ok);
             return commands.DeleteChange(3);
         },
         {3},
         {3, 3}},
        {"move to a free position", [this] { return MakeMove(ws.Table, 0, 5); }, {0, 5}, {0, 5}},
        {"move replacing a tool",
         [this] { return MakeMove(ws.Table, 0, 3, OccupiedTarget::Replace); },
         {0, 3},
         {0, 3}},
        {"move answered with swap",
         [this] { return MakeMove(ws.Table, 3, 0, OccupiedTarget::Swap); },
         {0, 3},
         {3, 0}},
        {"copy to a free position", [this] { return MakeCopy(ws.Table, 3, 19); }, {19}, {3, 19}},
        {"copy replacing a tool", [this] { return MakeCopy(ws.Table, 0, 1); }, {1}, {0, 1}},
        {"swap with an empty position",
         [this] { return MakeSwap(ws.Table, 1, 4); },
         {1, 4},
         {1, 4}},
        {"initial magazine number", [this] { return commands.MagIniChange(" 7 "); }, {}, {-1, -1}},
        {"restore of recovered changes",
         [this] {
             Recovery recovery;
             recovery.Slots = {0, 6, 12};
             recovery.Contents = {ToolSlot{}, FullTool(7), Slot(12)};
             recovery.InitialMagazine = 3;
             recovery.Arbor = FileArbor{2, {}};
             return MakeRestoreChange(ws.Table, recovery);
         },
         {0, 6},
         {0, 0}},
        {"import replacing the whole table",
         [this] {
             ToolTable imported = ws.Table;
             imported.Slots[0] = FullTool(9);
             imported.Slots[3] = ToolSlot{};
             imported.Slots[11] = FullTool(12);
             imported.InitialMagazine = 4;
             imported.DefaultArborType = 0;
             return MakeTableReplacement(ws.Table, imported);
         },
         {0, 3, 11},
         {0, 0}},
    };
    const ToolTable original = ws.Table;
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        ws.Table = original;
        messages.shown.clear();
        const ToolTable before = ws.Table;

        std::optional<TableChange> change = c.make();
        ASSERT_TRUE(change.has_value());
        ASSERT_FALSE(change->Empty());
        ApplyChange(ws.Table, *change, ChangeDirection::Redo);
        const ToolTable after = ws.Table;

        EXPECT_NE(TableDifferences(before, after), "");
        EXPECT_EQ(DifferentSlots(before, after), c.slots);
        EXPECT_EQ(ChangedSlots(*change), c.slots);
        EXPECT_EQ(change->Focus, c.focus);
        EXPECT_FALSE(ChangeText(ws, *change).empty());
        for (int round = 0; round < 2; ++round) {
            ApplyChange(ws.Table, *change, ChangeDirection::Undo);
            EXPECT_EQ(TableDifferences(before, ws.Table), "");
            EXPECT_EQ(ws.Table.CurrentSlot,
                      c.focus.Before < 0 ? after.CurrentSlot : c.focus.Before);
            ApplyChange(ws.Table, *change, ChangeDirection::Redo);
            EXPECT_EQ(TableDifferences(after, ws.Table), "");
            EXPECT_EQ(ws.Table.CurrentSlot, c.focus.After < 0 ? after.CurrentSlot : c.focus.After);
        }
        EXPECT_TRUE(messages.shown.size() <= 1); // the delete question only
    }
}

TEST_F(TableChanges, OperationsThatWouldChangeNothingGiveNoChange)
{
    const ToolTable &table = ws.Table;
    EditorForm unedited = FillFormFromSlot(ws, 0);

    EXPECT_FALSE(MakeMove(table, 2, 5)) << "nothing to move";
    EXPECT_FALSE(MakeMove(table, 0, 0)) << "onto itself";
    EXPECT_FALSE(MakeMove(table, 0, 20)) << "beyond the table";
    EXPECT_FALSE(MakeCopy(table, -1, 3)) << "before the table";
    EXPECT_FALSE(MakeSwap(table, 2, 5)) << "two empty positions";
    EXPECT_FALSE(MakeDelete(table, 2)) << "already empty";
    EXPECT_FALSE(MakeInitialMagazineChange(table, 1)) << "the same number";
    EXPECT_FALSE(MakeTableReplacement(table, table)) << "an import of the same table";
    EXPECT_FALSE(StoreForm(unedited, ws, messages).Change) << "stored as it was";
    EXPECT_TRUE(commands.EditChange(0)->Empty()) << "opening a tool changes nothing";
    EXPECT_TRUE(commands.MagIniChange("")->Empty()) << "an empty box keeps the number";
}

TEST_F(TableChanges, MovesAndCopiesAskOnlyBeforeOverwritingATool)
{
    EXPECT_TRUE(TargetNeedsQuestion(ws.Table, 0, 3));
    EXPECT_FALSE(TargetNeedsQuestion(ws.Table, 0, 2));
    EXPECT_FALSE(TargetNeedsQuestion(ws.Table, 2, 3)) << "an empty source moves nothing";
    EXPECT_FALSE(TargetNeedsQuestion(ws.Table, 3, 3));

    const std::string question = TargetQuestionText(ws, ChangeKind::Copy, 0, 3);

    EXPECT_NE(question.find('1'), std::string::npos);
    EXPECT_NE(question.find('4'), std::string::npos);
    EXPECT_EQ(TargetAnswerTexts(ws)[0], Msg("MSG33-3"));
}

TEST_F(TableChanges, RefusedAndCancelledCommandsGiveNothing)
{
    messages.answers.push_back(MessageAnswer::Cancel);
    EXPECT_FALSE(commands.DeleteChange(0));
    EXPECT_FALSE(commands.DeleteChange(-1)); // no row: "MSG8"
    EXPECT_FALSE(commands.MagIniChange("2.5"));
    for (int slot = 0; slot < ws.Table.MagazineMax; ++slot) {
        NewDataSet(ws.Table, slot);
    }
    EXPECT_FALSE(commands.NewToolChange());

    EXPECT_EQ(messages.shown.size(), 4u);
    EXPECT_EQ(messages.beeps, 1);
}

TEST_F(TableChanges, UnsavedChangesCollectWhatChangesTouchedUntilCleared)
{
    UnsavedChanges unsaved;
    EXPECT_FALSE(unsaved.Any());

    unsaved.Note(*MakeMove(ws.Table, 3, 12));
    unsaved.Note(*MakeSwap(ws.Table, 12, 0));
    unsaved.Note(*MakeInitialMagazineChange(ws.Table, 5));

    EXPECT_EQ(unsaved.Slots(), (std::vector<int>{0, 3, 12}));
    EXPECT_TRUE(unsaved.InitialMagazineChanged());
    EXPECT_FALSE(unsaved.FileArborChanged());
    unsaved.Clear();
    EXPECT_FALSE(unsaved.Any());
}

} // namespace
} // namespace qor::test
