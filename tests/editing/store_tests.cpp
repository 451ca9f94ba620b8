#include "editor_fixture.h"
#include "editor_store.h"

namespace qor::test {
namespace {

class Store : public Editor
{
protected:
    Store()
    {
        PutFullCutter(0);
        Load(0);
    }

    StoreOutcome StoreAt(std::string magazine)
    {
        form.MagNo.Text = std::move(magazine);
        return StoreForm(form, ws, messages);
    }
};

TEST_F(Store, AnUneditedToolStoresBackExactlyAsItWasRead)
{
    EXPECT_TRUE(StoreAt("4").Stored);

    EXPECT_EQ(Slot(3), Slot(0)); // the comment's bytes included
    EXPECT_EQ(ws.Table.CurrentSlot, 3);
}

TEST_F(Store, AnEditedNameIsCutToTwentyCharactersBeforeTrimming)
{
    form.ToolName.Text = "  ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    ASSERT_TRUE(StoreAt("1").Stored);
    EXPECT_EQ(Slot(0).ToolComment, "ABCDEFGHIJKLMNOPQR");

    form.ToolName.Text = "\xC3\x84\xC3\x84" + std::string(19, 'x');
    ASSERT_TRUE(StoreAt("1").Stored);
    EXPECT_EQ(Slot(0).ToolComment, "\xC4\xC4" + std::string(18, 'x')); // in Windows-1252
}

TEST_F(Store, ClearedSwitchesStoreNoShiftAndNoPen)
{
    rules.Check1Click(false);
    form.Shift.Text = "not a number";
    rules.Check2Click(false);

    ASSERT_TRUE(StoreAt("1").Stored);

    EXPECT_EQ(Slot(0).ShiftOn, 0);
    EXPECT_EQ(Slot(0).ShiftValue, 0);
    EXPECT_EQ(Slot(0).PenNo, 0);
}

TEST_F(Store, MagazineZeroStoresOnlyTheFileArbor)
{
    const ToolSlot tool = Slot(0);
    rules.SelectArbor(2);
    form.Sections.Dia[0] = 99;

    ASSERT_TRUE(StoreAt("0").Stored);

    EXPECT_EQ(ws.Table.DefaultArborType, 2);
    EXPECT_EQ(ws.Table.DefaultArbor.Dia[0], 99);
    EXPECT_EQ(Slot(0), tool);
}

TEST_F(Store, ABoxWithoutANumberStopsTheStoreAndIsNamed)
{
    const ToolTable before = ws.Table;
    form.Para[2].Text = "1,5";
    form.Para[6].Text = "";

    const StoreOutcome outcome = StoreAt("2");

    EXPECT_FALSE(outcome.Stored);
    EXPECT_EQ(outcome.Refused, (FormField{FormPart::Para, 2}));
    ASSERT_EQ(messages.shown.size(), 1u);
    EXPECT_EQ(messages.shown[0].text, "Centre offset: Not a number.");
    EXPECT_EQ(ws.Table.Slots, before.Slots);
    EXPECT_EQ(ws.Table.CurrentSlot, 0);

    EXPECT_FALSE(StoreAt("6").Stored); // beyond the table
    EXPECT_EQ(messages.shown.back().text, "From 1 to 5 only.");
}

} // namespace
} // namespace qor::test
