#include "listing_fixture.h"
#include "message_text.h"
#include "native_file.h"
#include "profile_file.h"
#include "tool_list_commands.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace qor::test {
namespace {

using Started = std::vector<std::pair<std::string, std::string>>;

class Commands : public Listing
{
protected:
    std::string Setting(std::string_view section, std::string_view key) const
    {
        return ReadProfileEntry(ws.Globals.IniPath, section, key);
    }

    const RecordingMessageService::Shown &OnlyMessage() const
    {
        EXPECT_EQ(messages.shown.size(), 1u);
        static const RecordingMessageService::Shown none{};
        return messages.shown.empty() ? none : messages.shown.front();
    }

    TempDir files;
    Started started;
    bool starts = true;
    ToolListCommands commands{ws, messages,
                              [this](const std::string &program, const std::string &path) {
                                  started.emplace_back(program, path);
                                  return starts;
                              }};
};

TEST_F(Commands, AMissingFileIsCreatedEmptyOnlyWhenTheUserSaysYes)
{
    const std::string path = files.file("new.TTL");
    NewDataSet(ws.Table, 4);
    messages.answers = {MessageAnswer::No};

    EXPECT_FALSE(commands.Read(path));

    const auto &question = OnlyMessage();
    EXPECT_EQ(question.text, Msg("MSG5") + " " + path + "\n\n" + Msg("MSG9"));
    EXPECT_EQ(question.buttons, MessageButtons::YesNo);
    EXPECT_FALSE(std::filesystem::exists(path));

    messages.shown.clear();
    messages.answers = {MessageAnswer::Yes};
    EXPECT_TRUE(commands.Read(path));

    EXPECT_TRUE(std::filesystem::exists(path));
    EXPECT_EQ(files.read("new.TTL"), "");
    EXPECT_EQ(Slot(4).ToolKind, KindBal); // the table is kept, to be saved under the new name
    EXPECT_EQ(ws.Table.InitialMagazine, 1);
}

TEST_F(Commands, AFormatErrorNamesTheLineAndKeepsWhatWasReadBefore)
{
    files.write("broken.TTL", SourceFile("data/samples/broken.TTL"));

    EXPECT_FALSE(commands.Read(files.file("broken.TTL")));

    const auto &message = OnlyMessage();
    EXPECT_EQ(message.icon, MessageIcon::Exclamation);
    EXPECT_EQ(message.text.rfind(Msg("MSG7"), 0), 0u);
    // Every word of it from the catalogue.
    const std::string line = "MAGAZINE03 = FLA 8,30,\"D8 flat\"";
    EXPECT_EQ(message.text,
              Msg("MSG7") + "\n\n" + files.file("broken.TTL") + "\n" +
                  FillIn(Msg("MSG30-12"), {"7", FillIn(Msg("MSG31-7"), {line, "FLA"})}));
    EXPECT_EQ(Slot(1).ToolKind, KindBal);
    EXPECT_EQ(Slot(2).ToolKind, KindFla); // the faulty item's kind was read
    EXPECT_EQ(Slot(2).ToolDia, 0);
}

TEST_F(Commands, AFailedSaveChangesNothingAndSaysWhy)
{
    files.write("atc.TTL", "old bytes");
    const std::string missing = files.file("no such folder/atc.TTL");
    NewDataSet(ws.Table, 0);
    const ToolTable before = ws.Table;

    EXPECT_FALSE(commands.Save(missing, "1", true));

    const auto &message = OnlyMessage();
    EXPECT_EQ(message.icon, MessageIcon::Exclamation);
    EXPECT_NE(message.text.find(missing), std::string::npos) << message.text;
    EXPECT_TRUE(ws.Table.Slots == before.Slots);
    EXPECT_EQ(Setting("Files", "TTL File"), "");
    EXPECT_EQ(files.read("atc.TTL"), "old bytes");
}

TEST_F(Commands, AFileThatIsNoToolListIsReadAndTheUserToldWhatItSeemsToBe)
{
    const std::string path = files.file("letter.TTL");
    files.write("letter.TTL", "Dear machinist,\r\nthe holders arrive on Monday.\r\n");

    EXPECT_TRUE(commands.Read(path));

    const auto &message = OnlyMessage();
    EXPECT_EQ(message.icon, MessageIcon::Information);
    EXPECT_EQ(message.text, Msg("MSG29-3") + "\n\n" + path);
    EXPECT_FALSE(Msg("MSG29-3").empty());
}

TEST_F(Commands, ARefusedSaveShowsTheCataloguesReasonNamingTheFile)
{
    const std::string path = files.file("atc.TTL");
    files.write("atc.TTL", "MAGAZINE01 = BAL/10,50\r\n");
    ws.NoQuestionAfterSave = true;
    ASSERT_TRUE(commands.Read(path));
    std::filesystem::permissions(NativePath(path), std::filesystem::perms::owner_read);
    messages.shown.clear();

    EXPECT_FALSE(commands.Save(path, "1", true));

    EXPECT_EQ(OnlyMessage().text, FillIn(Msg("MSG25-2"), {path}));
    EXPECT_NE(Msg("MSG25-2").find("%1"), std::string::npos);
    EXPECT_EQ(files.read("atc.TTL"), "MAGAZINE01 = BAL/10,50\r\n");
}

TEST_F(Commands, ToolsBeyondTheTableAreReportedAndSavingWithoutThemNeedsAYes)
{
    const std::string path = files.file("atc.TTL");
    files.write("atc.TTL",
                "MAGAZINE01 = BAL/10,50\nMAGAZINE150 = BAL/8,40\nMAGAZINE30 = FLA/6,40\n");
    ws.NoQuestionAfterSave = true;

    EXPECT_TRUE(commands.Read(path));
    EXPECT_EQ(OnlyMessage().text,
              Msg("MSG23-1") + " 150 " + Msg("MSG23-2") + " 20 " + Msg("MSG23-3"));
    messages.shown.clear();
    EXPECT_FALSE(commands.Save(path, "1", true)); // Enter answers No

    EXPECT_EQ(OnlyMessage().text, Msg("MSG24-1") + " 20 " + Msg("MSG24-2"));
    EXPECT_EQ(OnlyMessage().buttons, MessageButtons::YesNoDefaultNo);
    EXPECT_NE(files.read("atc.TTL").find("MAGAZINE150"), std::string::npos);
    messages.answers = {MessageAnswer::Yes};
    EXPECT_TRUE(commands.Save(path, "1", true));
    EXPECT_EQ(files.read("atc.TTL").find("MAGAZINE150"), std::string::npos);
    messages.shown.clear();
    EXPECT_TRUE(commands.Read(path)); // now nothing lies beyond the table
    EXPECT_TRUE(commands.Save(path, "1", true));
    EXPECT_TRUE(messages.shown.empty());
}

// Saving over a file that may hold what nobody has seen asks first. Each case
// prepares "atc.TTL" (and what was read) and names the reason the question
// gives, or none when the save must go ahead without asking.
struct OverwriteCase
{
    const char *name;
    void (*prepare)(TempDir &files, ToolListCommands &commands);
    const char *reason; // "MSG26-n", or nullptr for no question
};

void PrintTo(const OverwriteCase &overwriteCase, std::ostream *out)
{
    *out << overwriteCase.name;
}

constexpr const char *OwnFile = "MAGAZINE01 = BAL/10,50\r\n";

void WriteAndRead(TempDir &files, ToolListCommands &commands)
{
    files.write("atc.TTL", OwnFile);
    commands.Read(files.file("atc.TTL"));
}

const OverwriteCase OverwriteCases[] = {
    {"NothingWasRead", [](TempDir &files, ToolListCommands &) { files.write("atc.TTL", OwnFile); },
     "MSG26-1"},
    {"AnotherFileWasRead",
     [](TempDir &files, ToolListCommands &commands) {
         files.write("atc.TTL", OwnFile);
         files.write("other.TTL", OwnFile);
         commands.Read(files.file("other.TTL"));
     },
     "MSG26-1"},
    {"ItGrewSinceItWasRead",
     [](TempDir &files, ToolListCommands &commands) {
         WriteAndRead(files, commands);
         files.write("atc.TTL", std::string(OwnFile) + "MAGAZINE02 = FLA/6,40\r\n");
     },
     "MSG26-2"},
    {"ItWasTouchedSinceItWasRead",
     [](TempDir &files, ToolListCommands &commands) {
         WriteAndRead(files, commands);
         const std::filesystem::path path = NativePath(files.file("atc.TTL"));
         std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) +
                                                    std::chrono::seconds(5));
     },
     "MSG26-2"},
    // Same bytes, same time: only the file's identity tells.
    {"ItWasReplacedByACopySinceItWasRead",
     [](TempDir &files, ToolListCommands &commands) {
         WriteAndRead(files, commands);
         const std::filesystem::path path = NativePath(files.file("atc.TTL"));
         const std::filesystem::path copy = NativePath(files.file("copy.TTL"));
         files.write("copy.TTL", OwnFile);
         std::filesystem::last_write_time(copy, std::filesystem::last_write_time(path));
         std::filesystem::rename(copy, path);
     },
     "MSG26-2"},
    {"ItsReadStoppedAtAFormatError",
     [](TempDir &files, ToolListCommands &commands) {
         files.write("atc.TTL", SourceFile("data/samples/broken.TTL"));
         commands.Read(files.file("atc.TTL"));
     },
     "MSG26-3"},
    {"ItIsUnchangedSinceItWasRead", WriteAndRead, nullptr},
    {"ItWasReadUnderAnotherName",
     [](TempDir &files, ToolListCommands &commands) {
         files.write("atc.TTL", OwnFile);
         commands.Read(files.file("./atc.TTL"));
     },
     nullptr},
    {"NothingIsThereYet", [](TempDir &, ToolListCommands &) {}, nullptr},
    {"ItWasCreatedEmptyOnRequest",
     [](TempDir &files, ToolListCommands &commands) { commands.Read(files.file("atc.TTL")); },
     nullptr},
};

class SavingOver : public Commands, public testing::WithParamInterface<OverwriteCase>
{};

TEST_P(SavingOver, AsksWhenTheFileMayHoldWhatNobodySawAndWritesOnlyOnYes)
{
    const std::string path = files.file("atc.TTL");
    ws.NoQuestionAfterSave = true;
    messages.answers = {MessageAnswer::Yes}; // creates the missing file when asked
    GetParam().prepare(files, commands);
    messages.shown.clear();
    messages.answers.clear();
    NewDataSet(ws.Table, 5);
    const bool existed = std::filesystem::exists(NativePath(path));
    const std::string before = existed ? files.read("atc.TTL") : std::string();

    const bool savedAtOnce = commands.Save(path, "1", true); // Enter answers No

    if (GetParam().reason != nullptr) {
        EXPECT_FALSE(savedAtOnce);
        const auto &question = OnlyMessage();
        EXPECT_EQ(question.text, path + "\n\n" + Msg(GetParam().reason) + "\n\n" + Msg("MSG26-4"));
        EXPECT_EQ(question.icon, MessageIcon::Question);
        EXPECT_EQ(question.buttons, MessageButtons::YesNoDefaultNo);
        EXPECT_EQ(files.read("atc.TTL"), before);
        EXPECT_EQ(Setting("Files", "TTL File"), "");
        messages.shown.clear();
        messages.answers = {MessageAnswer::Yes};
        EXPECT_TRUE(commands.Save(path, "1", true));
    } else {
        EXPECT_TRUE(savedAtOnce);
        EXPECT_TRUE(messages.shown.empty()) << messages.shown.front().text;
    }
    EXPECT_NE(files.read("atc.TTL").find("MAGAZINE06 = BAL/"), std::string::npos);

    // What is there now was written by this run: the next save asks nothing.
    messages.shown.clear();
    EXPECT_TRUE(commands.Save(path, "1", true));
    EXPECT_TRUE(messages.shown.empty());
}

INSTANTIATE_TEST_SUITE_P(Cases, SavingOver, testing::ValuesIn(OverwriteCases),
                         [](const auto &info) { return std::string(info.param.name); });

TEST_F(Commands, TheConfiguredEditorOpensTheFileOrTheUserIsTold)
{
    ws.Settings.WriteIniString("Exe", "Text Editer", " kate ");

    EXPECT_TRUE(commands.OpenInTextEditor("/x/atc.TTL"));
    EXPECT_EQ(started, (Started{{"kate", "/x/atc.TTL"}}));
    EXPECT_TRUE(messages.shown.empty());

    starts = false;
    EXPECT_FALSE(commands.OpenInTextEditor("/x/atc.TTL"));
    EXPECT_EQ(OnlyMessage().text, Msg("MSG5") + Msg("MSG13"));
}

// Cancelling the editor takes back the new tool that Edit or New tool put
// into an empty position, unless something has kept it since.
TEST_F(Commands, CancellingTakesBackOnlyANewToolThatNothingKeptSince)
{
    files.write("read.TTL", "INI = MAGAZINE01\r\nMAGAZINE01 = FLA/10,20\r\n");
    ws.NoQuestionAfterSave = true;
    const struct
    {
        const char *name;
        std::function<void()> act;
        std::optional<int> emptied;
    } cases[] = {
        {"edit of an empty position", [&] { commands.Edit(3); }, 3},
        {"new tool", [&] { commands.NewTool(); }, 0},
        {"edit of a tool", [&] { NewDataSet(ws.Table, 3), commands.Edit(3); }, std::nullopt},
        {"new tool, then edit of a tool",
         [&] { commands.NewTool(), NewDataSet(ws.Table, 3), commands.Edit(3); }, std::nullopt},
        {"new tool, saved",
         [&] { commands.NewTool(), commands.Save(files.file("saved.TTL"), "1", true); },
         std::nullopt},
        {"new tool, then pasted over", [&] { commands.NewTool(), ws.Table.Slots[0].ToolDia = 6; },
         std::nullopt},
        {"new tool, then a file read",
         [&] { commands.NewTool(), commands.Read(files.file("read.TTL")); }, std::nullopt},
    };

    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        ClearToolTable(ws.Table);
        c.act();
        const std::vector<ToolSlot> before = ws.Table.Slots;

        EXPECT_EQ(CancelNewTool(ws), c.emptied);

        for (int slot = 0; slot < static_cast<int>(before.size()); ++slot) {
            const std::int16_t kind = before[static_cast<std::size_t>(slot)].ToolKind;
            EXPECT_EQ(Slot(slot).ToolKind, slot == c.emptied ? std::int16_t{KindNone} : kind)
                << slot;
        }
        EXPECT_EQ(CancelNewTool(ws), std::nullopt); // forgotten
    }
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(Commands, AValidInitialMagazineBecomesTheTablesOwn)
{
    ws.Table.InitialMagazine = 3;

    EXPECT_TRUE(commands.CheckMagIni(""));
    EXPECT_EQ(ws.Table.InitialMagazine, 3);
    EXPECT_TRUE(commands.CheckMagIni(" 20 "));
    EXPECT_TRUE(commands.CheckMagIni("7.0"));
    EXPECT_EQ(ws.Table.InitialMagazine, 7);

    for (const char *refused : {"-1", "1e9", "x", "1,5"}) {
        EXPECT_FALSE(commands.CheckMagIni(refused)) << refused;
    }
    EXPECT_EQ(ws.Table.InitialMagazine, 7);
    EXPECT_EQ(messages.shown.back().text, Msg("MSG17-1") + " 20 " + Msg("MSG17-2"));
}

TEST_F(Commands, TheFileToStartWithComesFromTheCommandLineOrTheSettings)
{
    EXPECT_EQ(InitialToolFileName("  ", "/work", ws.Settings), DefaultToolListPath);
    EXPECT_EQ(Setting("Files", "TTL File"), DefaultToolListPath);
    ws.Settings.WriteIniString("Files", "TTL File", "/data/atc.ttl");
    EXPECT_EQ(InitialToolFileName("", "/work", ws.Settings), "/data/atc.ttl");

    EXPECT_EQ(InitialToolFileName(" atc.TTL ", "/work", ws.Settings),
              std::string("/work") + PathSeparator() + "atc.TTL");
    EXPECT_EQ(InitialToolFileName("sub/atc.TTL", "/work/", ws.Settings), "/work/sub/atc.TTL");
    for (const char *absolute : {"/data/atc.TTL", "c:/NC/atc.TTL", "\\\\server\\share\\atc.TTL"}) {
        EXPECT_EQ(InitialToolFileName(absolute, "/work", ws.Settings), absolute);
    }
}

} // namespace
} // namespace qor::test
