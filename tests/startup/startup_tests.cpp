#include "recording_message_service.h"
#include "startup.h"
#include "temp_dir.h"

#include <gtest/gtest.h>

#include <filesystem>

#ifndef _WIN32
#include <unistd.h>
#endif

namespace qor {
namespace {

// Entry numbers must stay below the file's line count, hence the padding.
const std::string SmallCatalogue = "[Config]\r\n"
                                   "Version=1.70\r\n"
                                   "[String]\r\n"
                                   "Str0=----\r\nStr1=CUT\r\nStr2=BAL\r\nStr3=TAP\r\nStr4=FLA\r\n"
                                   "Str5=BUL\r\nStr6=VER\r\nStr7=KEG\r\nStr8=OVA\r\nStr9=RAD\r\n"
                                   "Str10=\"\"\r\nStr11=ARBOR\r\nStr12=ARBOR2\r\nStr13=ARBOR3\r\n"
                                   "Str15=T-T\r\nStr20=Straight\r\nStr21=Taper\r\n" +
                                   std::string(10, '\n');

struct Started
{
    Workspace workspace;
    test::RecordingMessageService messages;
    int status = -1;
};

void Start(Started &started, const test::TempDir &dir)
{
    started.status = RunStartup(started.workspace, dir.path(), started.messages);
}

TEST(Startup, FillsAMissingSettingsFileWithEveryKeyInOrder)
{
    test::TempDir dir;
    dir.write("QORTool.msg", SmallCatalogue);
    Started started;

    Start(started, dir);

    EXPECT_EQ(started.status, 0);
    EXPECT_TRUE(started.messages.shown.empty());
    EXPECT_EQ(dir.read("QorTool.INI"), "[Config]\r\n"
                                       "COLUMNHEADER FONT SIZE=8\r\n"
                                       "TEXTBOX FONT SIZE=11\r\n"
                                       "LISTVIEW FONT SIZE=9\r\n"
                                       "BUTTON FONT SIZE=11\r\n"
                                       "BUTTON FONT BOLD=1\r\n"
                                       "SUPPORT PEN MAX=16\r\n"
                                       "Magazine Max=100\r\n");
    const StartupGlobals &g = started.workspace.Globals;
    EXPECT_EQ(g.AppDir, dir.path());
    EXPECT_EQ(g.IniPath, dir.file("QorTool.INI"));
    EXPECT_EQ(g.MsgPath, dir.file("QORTool.msg"));
    EXPECT_EQ(g.WorkDir, dir.path());
    EXPECT_TRUE(g.StartFlag);
    EXPECT_EQ(g.MagazineMax, 100);
}

TEST(Startup, ReadsTheDisplaySettingsWithTheirRules)
{
    test::TempDir dir;
    dir.write("QORTool.msg", SmallCatalogue);
    dir.write("QorTool.INI", "[config]\r\n"
                             "COLUMNHEADER FONT SIZE=\r\n"
                             "TEXTBOX FONT SIZE=14\r\n"
                             "LISTVIEW FONT SIZE=big\r\n"
                             "BUTTON FONT SIZE=9.5\r\n"
                             "BUTTON FONT BOLD=0\r\n"
                             "SUPPORT PEN MAX=many\r\n"
                             "Magazine Max=20\r\n");
    Started started;

    Start(started, dir);

    const StartupGlobals &g = started.workspace.Globals;
    EXPECT_EQ(g.ColumnHeaderFontSize, 8);
    EXPECT_EQ(g.TextBoxFontSize, 14);
    EXPECT_EQ(g.ListViewFontSize, 9);
    EXPECT_EQ(g.ButtonFontSize, 10);
    EXPECT_FALSE(g.ButtonFontBold);
    EXPECT_EQ(g.SupportPenMax, 16);
    EXPECT_EQ(g.MagazineMax, 20);
    EXPECT_EQ(started.workspace.Table.Slots.size(), 20u);
    // The empty value was replaced by its default; the bad texts stay.
    std::string ini = dir.read("QorTool.INI");
    EXPECT_NE(ini.find("COLUMNHEADER FONT SIZE=8\r\n"), std::string::npos);
    EXPECT_NE(ini.find("LISTVIEW FONT SIZE=big\r\n"), std::string::npos);
}

TEST(Startup, KeepsBoldOnForAnythingButZero)
{
    for (const char *value : {"2", "yes", "-1", "0.0"}) {
        test::TempDir dir;
        dir.write("QORTool.msg", SmallCatalogue);
        dir.write("QorTool.INI", std::string("[Config]\r\nBUTTON FONT BOLD=") + value + "\r\n");
        Started started;

        Start(started, dir);

        EXPECT_EQ(started.workspace.Globals.ButtonFontBold, std::string(value) != "0.0") << value;
    }
}

TEST(Startup, StopsWithTheExactMessageWhenTheCatalogueIsMissing)
{
    test::TempDir dir;
    Started started;

    Start(started, dir);

    EXPECT_NE(started.status, 0);
    ASSERT_EQ(started.messages.shown.size(), 1u);
    EXPECT_EQ(started.messages.shown[0].text,
              "A text definition file \"" + dir.file("QORTool.msg") + "\" is not found.");
    EXPECT_EQ(started.messages.shown[0].icon, MessageIcon::Critical);
    EXPECT_TRUE(started.workspace.Table.Slots.empty());
}

TEST(Startup, WarnsOnceAboutAnOldCatalogueAndGoesOn)
{
    for (const char *version : {"1.7", "", "1.70 "}) {
        test::TempDir dir;
        std::string catalogue = SmallCatalogue;
        catalogue.replace(catalogue.find("1.70"), 4, version);
        dir.write("QORTool.msg", catalogue);
        Started started;

        Start(started, dir);

        EXPECT_EQ(started.status, 0);
        bool trailingBlankTrimmed = std::string(version) == "1.70 ";
        ASSERT_EQ(started.messages.shown.size(), trailingBlankTrimmed ? 0u : 1u) << version;
        if (!trailingBlankTrimmed) {
            EXPECT_EQ(started.messages.shown[0].text,
                      "There is a possibility that the text definition file is old.\r\n"
                      "In this case, a part of text is not displayed.\r\n\r\n"
                      "Text definition file : \"" +
                          dir.file("QORTool.msg") + "\"");
            EXPECT_EQ(started.messages.shown[0].icon, MessageIcon::Information);
        }
    }
}

TEST(Startup, RefusesABrokenCatalogueWithACriticalMessageNamingTheLine)
{
    test::TempDir dir;
    dir.write("QORTool.msg", "[Config]\r\nVersion=1.70\r\nText5=outside any window section\r\n");
    Started started;

    Start(started, dir);

    EXPECT_NE(started.status, 0);
    ASSERT_EQ(started.messages.shown.size(), 1u);
    EXPECT_EQ(started.messages.shown[0].icon, MessageIcon::Critical);
    EXPECT_NE(started.messages.shown[0].text.find("QORTool.msg"), std::string::npos);
    EXPECT_NE(started.messages.shown[0].text.find("3"), std::string::npos);
}

TEST(Startup, FallsBackTo100PositionsForAnImpossibleMagazineMax)
{
    for (const char *value : {"0", "-5", "40000", "abc"}) {
        test::TempDir dir;
        dir.write("QORTool.msg", SmallCatalogue);
        dir.write("QorTool.INI", std::string("[Config]\r\nMagazine Max=") + value + "\r\n");
        Started started;

        Start(started, dir);

        EXPECT_EQ(started.status, 0);
        EXPECT_EQ(started.workspace.Table.Slots.size(), 100u) << value;
        // Only a number that cannot be a magazine size is worth a message.
        EXPECT_EQ(started.messages.shown.size(), std::string(value) == "abc" ? 0u : 1u) << value;
    }
}

TEST(Startup, FillsTheNameTablesAndLeavesAClearedTable)
{
    test::TempDir dir;
    dir.write("QORTool.msg", SmallCatalogue);
    Started started;

    Start(started, dir);

    const ToolTable &table = started.workspace.Table;
    EXPECT_EQ(table.KindNames[0], "----");
    EXPECT_EQ(table.KindNames[1], "CUT");
    EXPECT_EQ(table.KindNames[9], "RAD");
    EXPECT_EQ(table.KindNames[10], "T-T");
    EXPECT_EQ(table.ArborTypeNames[0], "");
    EXPECT_EQ(table.ArborTypeNames[3], "ARBOR3");
    EXPECT_EQ(started.workspace.ArborFlagCaptions[1], "Taper");
    EXPECT_EQ(table.DefaultArborType, 0);
    for (const ToolSlot &slot : table.Slots) {
        ASSERT_EQ(slot.ToolKind, -1);
    }
    EXPECT_TRUE(started.workspace.ExtendedKinds);
    EXPECT_FALSE(started.workspace.DrawSuppressed);
}

TEST(Startup, UsesTheDefaultsSilentlyWhenTheFolderCannotBeWritten)
{
#ifndef _WIN32
    if (geteuid() == 0) {
        GTEST_SKIP() << "root writes into read-only folders; nothing to observe";
    }
#endif
    test::TempDir dir;
    dir.write("QORTool.msg", SmallCatalogue);
    std::filesystem::permissions(dir.path(), std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::remove);
    Started started;

    Start(started, dir);

    EXPECT_EQ(started.status, 0);
    EXPECT_TRUE(started.messages.shown.empty());
    EXPECT_EQ(started.workspace.Globals.MagazineMax, 100);
    EXPECT_FALSE(std::filesystem::exists(dir.file("QorTool.INI")));
}

TEST(Startup, TakesTheCommandLineOverrides)
{
    test::TempDir dir;
    dir.write("other.msg", SmallCatalogue);
    Started started;

    started.status = RunStartup(started.workspace, dir.path(), started.messages,
                                StartupOverrides{dir.file("other.msg"), 7});

    EXPECT_EQ(started.status, 0);
    EXPECT_EQ(started.workspace.Globals.MsgPath, dir.file("other.msg"));
    EXPECT_EQ(started.workspace.Table.Slots.size(), 7u);
}

} // namespace
} // namespace qor
