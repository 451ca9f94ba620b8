#include "listing_fixture.h"
#include "recovery_file.h"
#include "table_compare.h"
#include "tool_list_writer.h"

#include <filesystem>
#include <fstream>

namespace qor::test {
namespace {

// A tool list file read into the table, then changed without saving.
class Recovering : public Listing
{
protected:
    void SetUp() override
    {
        Listing::SetUp();
        ws.Table.InitialMagazine = 1;
        for (int slot = 0; slot < 6; ++slot) {
            Slot(slot) = FullTool(slot);
        }
        toolList = app.file("Atc.ttl");
        EXPECT_TRUE(WriteToolListFile(ws.Table, toolList, WriteOptions{"Title", ""}));
        source = LastRead{toolList, TakeFileStamp(toolList)};
        asRead = ws.Table;

        Make(*MakeMove(ws.Table, 1, 9));
        Make(*MakeCopy(ws.Table, 3, 0));
        Make(*MakeDelete(ws.Table, 5));
        Make(*MakeFileArborChange(ws.Table, FileArbor{3, {{30, 40}, {5, 6}, {1}}}));
        Make(*MakeInitialMagazineChange(ws.Table, 4));
        recoveryPath = RecoveryFilePath(ws.Globals.IniPath);
    }

    void Make(const TableChange &change)
    {
        ApplyChange(ws.Table, change, ChangeDirection::Redo);
        unsaved.Note(change);
    }

    Result<std::optional<Recovery>> Read() const { return ReadRecoveryFile(recoveryPath); }

    std::string toolList;
    LastRead source;
    ToolTable asRead;
    UnsavedChanges unsaved;
    std::string recoveryPath;
};

TEST_F(Recovering, TheFileRestoresTheUnsavedChangesOntoTheTableAsRead)
{
    ASSERT_TRUE(WriteRecoveryFile(recoveryPath, ws.Table, unsaved, source));
    Result<std::optional<Recovery>> read = Read();
    ASSERT_TRUE(read) << read.error().message;
    ASSERT_TRUE(read.value().has_value());
    const Recovery &recovery = *read.value();
    ToolTable restored = asRead;

    std::optional<TableChange> change = MakeRestoreChange(restored, recovery);
    ASSERT_TRUE(change);
    ApplyChange(restored, *change, ChangeDirection::Redo);

    EXPECT_EQ(TableDifferences(ws.Table, restored), "");
    EXPECT_EQ(recovery.Slots, (std::vector<int>{0, 1, 5, 9}));
    EXPECT_EQ(recovery.Source.path, toolList);
    EXPECT_EQ(recovery.Source.stamp, source.stamp);
    EXPECT_EQ(SourceState(recovery), RecoverySourceState::Unchanged);
    EXPECT_EQ(recoveryPath, app.file("QorTool.recovery"));
    EXPECT_NE(RecoveryQuestionText(ws, recovery).find(toolList), std::string::npos);
    EXPECT_FALSE(MakeRestoreChange(restored, recovery)) << "nothing left to restore";

    std::ofstream(toolList, std::ios::app) << "MAGAZINE20 = BAL/3,4\r\n";
    EXPECT_EQ(SourceState(recovery), RecoverySourceState::Changed);
    std::filesystem::remove(toolList);
    EXPECT_EQ(SourceState(recovery), RecoverySourceState::Missing);
}

TEST_F(Recovering, NothingUnsavedLeavesNoFile)
{
    ASSERT_TRUE(WriteRecoveryFile(recoveryPath, ws.Table, unsaved, source));
    unsaved.Clear();

    ASSERT_TRUE(WriteRecoveryFile(recoveryPath, ws.Table, unsaved, source));

    EXPECT_FALSE(std::filesystem::exists(recoveryPath));
    Result<std::optional<Recovery>> read = Read();
    ASSERT_TRUE(read);
    EXPECT_FALSE(read.value().has_value());
    EXPECT_TRUE(RemoveRecoveryFile(recoveryPath));
}

// Whatever happened to the file, reading it refuses with one message and
// never restores a part of it.
TEST_F(Recovering, ADamagedFileIsRefused)
{
    const std::string good = FormatRecovery(ws.Table, unsaved, source);
    const auto replaced = [&good](std::string_view from, std::string_view to) {
        std::string bytes = good;
        bytes.replace(bytes.find(from), from.size(), to);
        return bytes;
    };
    const std::vector<std::pair<const char *, std::string>> cases = {
        {"empty", ""},
        {"a tool list file", FormatToolList(ws.Table, WriteOptions{})},
        {"cut in the header", good.substr(0, 40)},
        {"cut in the items", good.substr(0, good.size() - 30)},
        {"a byte changed in the items", replaced("MAGAZINE10", "MAGAZINE11")},
        {"an item beyond the table", replaced("MAGAZINE10", "MAGAZINE99")},
        {"positions out of order", replaced("Positions=1-2,6,10", "Positions=2,1,6,10")},
        {"positions beyond any magazine", replaced("Positions=1-2,6,10", "Positions=1-40000")},
        {"a tool count that does not fit", replaced("Tools=2", "Tools=3")},
        {"a broken stamp", replaced("Stamp=1 ", "Stamp=x ")},
        {"binary", std::string("\0\xFF\r\n\n", 5)},
    };
    for (const auto &[name, bytes] : cases) {
        app.write("QorTool.recovery", bytes);

        Result<std::optional<Recovery>> read = Read();

        ASSERT_FALSE(read) << name;
        EXPECT_EQ(read.error().key, "MSG34-5") << name;
    }
}

} // namespace
} // namespace qor::test
