#include "catalogue_choice.h"
#include "native_file.h"
#include "profile_file.h"
#include "recording_message_service.h"
#include "startup.h"
#include "temp_dir.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <utility>
#include <vector>

#ifdef _WIN32
#include <windows.h>
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

// A program folder with a catalogue and, when given, a settings file.
class Startup : public testing::Test
{
protected:
    int Start(const std::string &settings = {}, const std::string &catalogue = SmallCatalogue)
    {
        ws = Workspace();
        messages.shown.clear();
        dir.write("QORTool.msg", catalogue);
        if (!settings.empty()) {
            dir.write("QorTool.INI", "[Config]\r\n" + settings);
        }
        return RunStartup(ws, dir.path(), messages);
    }

    test::TempDir dir;
    Workspace ws;
    test::RecordingMessageService messages;
};

TEST_F(Startup, FillsAMissingSettingsFileAndTheNameTablesAndLeavesAClearedTable)
{
    EXPECT_EQ(Start(), 0);

    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(dir.read("QorTool.INI"), "[Config]\r\n"
                                       "COLUMNHEADER FONT SIZE=8\r\n"
                                       "TEXTBOX FONT SIZE=11\r\n"
                                       "LISTVIEW FONT SIZE=9\r\n"
                                       "BUTTON FONT SIZE=11\r\n"
                                       "BUTTON FONT BOLD=1\r\n"
                                       "SUPPORT PEN MAX=16\r\n"
                                       "Magazine Max=100\r\n"
                                       "[Files]\r\n"
                                       "Code Page=1252\r\n");
    EXPECT_EQ(ws.Globals.IniPath, dir.file("QorTool.INI"));
    EXPECT_EQ(ws.Globals.MsgPath, dir.file("QORTool.msg"));
    EXPECT_EQ(ws.Globals.WorkDir, dir.path());
    EXPECT_EQ(ws.Table.KindNames[1], "CUT");
    EXPECT_EQ(ws.Table.KindNames[10], "T-T");
    EXPECT_EQ(ws.Table.ArborTypeNames[0], "");
    EXPECT_EQ(ws.Table.ArborTypeNames[3], "ARBOR3");
    EXPECT_EQ(ws.ArborFlagCaptions[1], "Taper");
    ASSERT_EQ(ws.Table.Slots.size(), 100u);
    EXPECT_EQ(ws.Table.Slots[99].ToolKind, -1);
    EXPECT_TRUE(ws.ExtendedKinds);
}

TEST_F(Startup, ReadsTheDisplaySettingsWithTheirRules)
{
    Start("COLUMNHEADER FONT SIZE=\r\nTEXTBOX FONT SIZE=14\r\nLISTVIEW FONT SIZE=big\r\n"
          "BUTTON FONT SIZE=9.5\r\nBUTTON FONT BOLD=0\r\nSUPPORT PEN MAX=many\r\n"
          "Magazine Max=20\r\n");

    const StartupGlobals &g = ws.Globals;
    EXPECT_EQ(g.ColumnHeaderFontSize, 8);
    EXPECT_EQ(g.TextBoxFontSize, 14);
    EXPECT_EQ(g.ListViewFontSize, 9);
    EXPECT_EQ(g.ButtonFontSize, 10);
    EXPECT_FALSE(g.ButtonFontBold);
    EXPECT_EQ(g.SupportPenMax, 16);
    EXPECT_EQ(ws.Table.Slots.size(), 20u);
    // The empty value was replaced by its default; the bad texts stay.
    const std::string ini = dir.read("QorTool.INI");
    EXPECT_NE(ini.find("COLUMNHEADER FONT SIZE=8\r\n"), std::string::npos);
    EXPECT_NE(ini.find("LISTVIEW FONT SIZE=big\r\n"), std::string::npos);
}

TEST_F(Startup, KeepsBoldOnForAnythingButZeroAnd100PositionsForAnImpossibleMagazineMax)
{
    for (const std::string value : {"2", "yes", "-1", "0.0"}) {
        Start("BUTTON FONT BOLD=" + value + "\r\n");

        EXPECT_EQ(ws.Globals.ButtonFontBold, value != "0.0") << value;
    }
    for (const std::string value : {"0", "-5", "40000", "abc"}) {
        EXPECT_EQ(Start("Magazine Max=" + value + "\r\n"), 0);

        EXPECT_EQ(ws.Table.Slots.size(), 100u) << value;
        // Only a number that cannot be a magazine size is worth a message.
        EXPECT_EQ(messages.shown.size(), value == "abc" ? 0u : 1u) << value;
    }
}

TEST_F(Startup, ReadsTheCodePageBeforeTheCatalogueAndFallsBackTo1252)
{
    const std::pair<const char *, int> cases[] = {
        {"932", 932}, {"1251", 1251}, {"", 1252}, {"Shift-JIS", 1252}, {"65001", 1252}};
    // "ツール" in Shift-JIS: not UTF-8, so read in the configured code page.
    const std::string catalogue =
        SmallCatalogue + "[String]\r\nStr80=\x83\x63\x81\x5B\x83\x8B\r\n" + std::string(80, '\n');

    for (const auto &[value, codePage] : cases) {
        ASSERT_EQ(Start(std::string("[Files]\r\nCode Page=") + value + "\r\n", catalogue), 0);

        EXPECT_EQ(ws.Globals.CodePage, codePage) << value;
        EXPECT_EQ(ws.Text("String", "Str80") == "\xE3\x83\x84\xE3\x83\xBC\xE3\x83\xAB",
                  codePage == 932)
            << value;
        // An empty value is replaced by the default; another stays as typed.
        const std::string written = *value == '\0' ? "1252" : value;
        EXPECT_NE(dir.read("QorTool.INI").find("Code Page=" + written + "\r\n"), std::string::npos)
            << value;
        messages.shown.clear();
    }
}

TEST_F(Startup, StopsWithTheExactMessageWhenTheCatalogueIsMissing)
{
    EXPECT_NE(RunStartup(ws, dir.path(), messages), 0);

    ASSERT_EQ(messages.shown.size(), 1u);
    EXPECT_EQ(messages.shown[0].text,
              "A text definition file \"" + dir.file("QORTool.msg") + "\" is not found.");
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Critical);
    EXPECT_TRUE(ws.Table.Slots.empty());
}

TEST_F(Startup, WarnsOnceAboutAnOldCatalogueAndGoesOn)
{
    for (const std::string version : {"1.7", "", "1.70 "}) {
        std::string catalogue = SmallCatalogue;
        catalogue.replace(catalogue.find("1.70"), 4, version);

        EXPECT_EQ(Start({}, catalogue), 0);

        if (version == "1.70 ") { // the trailing blank is trimmed
            EXPECT_TRUE(messages.shown.empty());
            continue;
        }
        ASSERT_EQ(messages.shown.size(), 1u) << version;
        EXPECT_EQ(messages.shown[0].text,
                  "There is a possibility that the text definition file is old.\r\n"
                  "In this case, a part of text is not displayed.\r\n\r\n"
                  "Text definition file : \"" +
                      dir.file("QORTool.msg") + "\"");
        EXPECT_EQ(messages.shown[0].icon, MessageIcon::Information);
    }
}

// A folder that exists and in which nobody, root included, can make a file:
// /proc on Linux, and the same folder seen through Wine's drive Z:.
std::string UnwritableFolder()
{
#ifdef _WIN32
    auto ntdll = GetModuleHandleW(L"ntdll.dll");
    if (ntdll == nullptr || GetProcAddress(ntdll, "wine_get_version") == nullptr) {
        return {};
    }
    return "Z:\\proc\\";
#else
    return "/proc/";
#endif
}

TEST_F(Startup, UsesTheDefaultsSilentlyWhenTheFolderCannotBeWritten)
{
    const std::string folder = UnwritableFolder();
    if (folder.empty()) {
        GTEST_SKIP() << "no folder here is known to refuse new files to everyone";
    }
    dir.write("QORTool.msg", SmallCatalogue);

    EXPECT_EQ(RunStartup(ws, folder, messages, StartupOverrides{dir.file("QORTool.msg"), {}}), 0);

    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(ws.Globals.IniPath, folder + "QorTool.INI");
    EXPECT_EQ(ws.Globals.MagazineMax, 100);
    EXPECT_EQ(ws.Globals.ButtonFontSize, 11);
    EXPECT_FALSE(std::filesystem::exists(NativePath(ws.Globals.IniPath)));
}

// Where the settings go: beside the program when its folder takes new files
// and carries no per-user mark, else in the user's folder (seeded once from
// the program's settings), else nowhere writable: read-only, no message.
struct SettingsFolderCase
{
    const char *name;
    bool appWritable;
    bool marked;
    const char *appSettings;  // in the program's folder, or nullptr
    const char *userSettings; // already in the user's folder, or nullptr
    bool userMakeable;
    bool expectUserFolder;
    const char *expectMagazineMax;
};

class SettingsFolder : public testing::TestWithParam<SettingsFolderCase>
{};

TEST_P(SettingsFolder, ChoosesTheFolderAndSeedsIt)
{
    const SettingsFolderCase &c = GetParam();
    const std::string proc = UnwritableFolder();
    if (!c.appWritable && proc.empty()) {
        GTEST_SKIP() << "no folder here is known to refuse new files to everyone";
    }
    test::TempDir app;
    test::TempDir home;
    app.write("QORTool.msg", SmallCatalogue);
    if (c.marked) {
        app.write(PerUserSettingsMark, "");
    }
    if (c.appSettings) {
        app.write("QorTool.INI", c.appSettings);
    }
    const std::string user =
        c.userMakeable ? home.file("config") + PathSeparator() + "QORTool" : proc + "QORTool";
    if (c.userSettings) {
        std::filesystem::create_directories(NativePath(user));
        home.write(std::string("config") + PathSeparator() + "QORTool" + PathSeparator() +
                       "QorTool.INI",
                   c.userSettings);
    }
    Workspace ws;
    test::RecordingMessageService messages;
    const std::string appDir = c.appWritable ? app.path() : proc;

    EXPECT_EQ(RunStartup(ws, appDir, messages, StartupOverrides{app.file("QORTool.msg"), {}, user}),
              0);

    EXPECT_TRUE(messages.shown.empty());
    const std::string folder = c.expectUserFolder ? user + PathSeparator() : appDir;
    EXPECT_EQ(ws.Globals.IniPath, folder + "QorTool.INI");
    EXPECT_EQ(SettingsFileToRead(appDir, user), ws.Globals.IniPath);
    EXPECT_EQ(ReadProfileEntry(ws.Globals.IniPath, "Config", "Magazine Max"), c.expectMagazineMax);
    EXPECT_EQ(std::filesystem::exists(NativePath(user)), c.expectUserFolder || c.userSettings);
}

const char *const Seed = "[Config]\r\nMagazine Max=40\r\n";
const char *const Own = "[Config]\r\nMagazine Max=60\r\n";

INSTANTIATE_TEST_SUITE_P(
    Startup, SettingsFolder,
    testing::Values(
        SettingsFolderCase{"WritableProgramFolder", true, false, Seed, nullptr, true, false, "40"},
        SettingsFolderCase{"MarkedProgramFolderSeeds", true, true, Seed, nullptr, true, true, "40"},
        SettingsFolderCase{"MarkedWithoutSeed", true, true, nullptr, nullptr, true, true, "100"},
        SettingsFolderCase{"UserFileWinsOverSeed", true, true, Seed, Own, true, true, "60"},
        SettingsFolderCase{"UnwritableProgramFolder", false, false, nullptr, nullptr, true, true,
                           "100"},
        SettingsFolderCase{"NothingWritable", false, false, nullptr, nullptr, false, false, ""}),
    [](const testing::TestParamInfo<SettingsFolderCase> &info) { return info.param.name; });

TEST_F(Startup, StartsFromAFolderWithAnyCharactersAndUsesTheSystemSeparatorThroughout)
{
    const std::string name = "J\xC3\xBCrgen \xE5\xB7\xA5\xE5\x85\xB7";
    const std::string folder = dir.file(name) + PathSeparator();
    std::filesystem::create_directory(NativePath(folder));
    dir.write(name + PathSeparator() + "QORTool.msg", SmallCatalogue);
    std::string given = folder.substr(0, folder.size() - 1);
#ifdef _WIN32
    std::replace(given.begin(), given.end(), '\\', '/');
#endif

    EXPECT_EQ(RunStartup(ws, given, messages), 0);

    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(ws.Globals.AppDir, folder);
    EXPECT_EQ(ws.Globals.MsgPath, folder + "QORTool.msg");
    EXPECT_EQ(ReadProfileEntry(folder + "QorTool.INI", "Config", "Magazine Max"), "100");
}

TEST_F(Startup, TakesTheCommandLineOverrides)
{
    dir.write("other.msg", SmallCatalogue);
    dir.write("Deutsch.msg", SmallCatalogue);
    dir.write("QorTool.INI", "[Config]\r\nTEXT FILE=Deutsch.msg\r\n");

    EXPECT_EQ(RunStartup(ws, dir.path(), messages, StartupOverrides{dir.file("other.msg"), 7}), 0);

    EXPECT_EQ(ws.Globals.MsgPath, dir.file("other.msg"));
    EXPECT_EQ(ws.Table.Slots.size(), 7u);
}

// The small catalogue with the arbor flag captions of another language.
std::string GermanCatalogue()
{
    std::string catalogue = SmallCatalogue;
    catalogue.replace(catalogue.find("Straight"), 8, "Gerade");
    return catalogue;
}

TEST_F(Startup, TheCatalogueChosenInTheInformationWindowIsLoadedAtTheNextStart)
{
    dir.write("Deutsch.msg", GermanCatalogue());
    ASSERT_EQ(Start(), 0);
    ChooseCatalogue(ws, messages, "Deutsch.msg");
    const std::string settings = dir.read("QorTool.INI");

    EXPECT_EQ(Start(), 0);

    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(ws.Globals.MsgPath, dir.file("Deutsch.msg"));
    EXPECT_EQ(ws.ArborFlagCaptions[0], "Gerade");
    EXPECT_EQ(dir.read("QorTool.INI"), settings);
}

TEST_F(Startup, ACatalogueNamedButNotInTheProgramFolderGivesTheEnglishOneAndTheSettingStays)
{
    std::filesystem::create_directory(NativePath(dir.file("sub")));
    dir.write(std::string("sub") + PathSeparator() + "Deutsch.msg", GermanCatalogue());
    for (const std::string &name : std::vector<std::string>{
             "Gone.msg", "", "sub", std::string("sub") + PathSeparator() + "Deutsch.msg"}) {
        const std::string settings = "TEXT FILE=" + name + "\r\nMagazine Max=100\r\n";

        EXPECT_EQ(Start(settings), 0) << name;

        EXPECT_TRUE(messages.shown.empty()) << name;
        EXPECT_EQ(ws.Globals.MsgPath, dir.file("QORTool.msg")) << name;
        EXPECT_EQ(ws.ArborFlagCaptions[0], "Straight") << name;
        // Only the information window writes the name, so none is filled in.
        EXPECT_NE(dir.read("QorTool.INI").find("[Config]\r\n" + settings), std::string::npos)
            << name;
    }
}

TEST_F(Startup, AChosenCatalogueThatCannotBeLoadedIsNamedAndTheEnglishOneIsUsed)
{
    dir.write("Broken.msg", "[Config]\r\nVersion=1.70\r\nText5=outside any window section\r\n");

    EXPECT_EQ(Start("TEXT FILE=Broken.msg\r\n"), 0);

    ASSERT_EQ(messages.shown.size(), 1u);
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Critical);
    EXPECT_NE(messages.shown[0].text.find("Broken.msg"), std::string::npos);
    EXPECT_EQ(ws.Globals.MsgPath, dir.file("QORTool.msg"));
    EXPECT_EQ(ws.ArborFlagCaptions[0], "Straight");

    // The English catalogue broken too stops the start, naming its line.
    EXPECT_NE(Start("TEXT FILE=Broken.msg\r\n", "[Config]\r\nVersion=1.70\r\nText5=x\r\n"), 0);
    ASSERT_EQ(messages.shown.size(), 2u);
    EXPECT_EQ(messages.shown[1].icon, MessageIcon::Critical);
    EXPECT_NE(messages.shown[1].text.find("QORTool.msg\", line 3"), std::string::npos)
        << messages.shown[1].text;
}

} // namespace
} // namespace qor
