#include "temp_dir.h"
#include "tool_list_reader.h"
#include "tool_list_writer.h"

#include <array>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <tuple>

#ifndef _WIN32
#include <csignal>
#include <sys/mount.h>
#include <sys/resource.h>
#endif

namespace qor {
namespace {

namespace fs = std::filesystem;

const std::string Header =
    "#********************   Tool list               ********************\r\n"
    "#********************     edited with QORTool   *******V1.70********\r\n";

ToolTable MakeTable(std::int16_t slots = 100)
{
    ToolTable table;
    SizeToolTable(table, slots);
    table.KindNames = {"", "CUT", "BAL", "TAP", "FLA", "BUL", "VER", "KEG", "OVA", "RAD", "T-T"};
    return table;
}

// Dia, CornerRad, Param3 .. Param6, ToolLength, Param7.
ToolSlot Tool(std::int16_t kind, std::array<float, 8> p = {})
{
    ToolSlot tool;
    tool.ToolKind = kind;
    tool.ToolDia = p[0];
    tool.CornerRad = p[1];
    tool.Param3 = p[2];
    tool.Param4 = p[3];
    tool.Param5 = p[4];
    tool.Param6 = p[5];
    tool.ToolLength = p[6];
    tool.Param7 = p[7];
    return tool;
}

std::string Format(ToolTable &table, std::string title = "Tool list", std::string magIni = "1")
{
    return FormatToolList(table, WriteOptions{std::move(title), std::move(magIni)});
}

// The lines behind the three header lines.
std::string Body(ToolTable &table)
{
    std::string text = Format(table);
    return text.substr(text.find("\r\n", Header.size()) + 2);
}

std::set<std::string> FilesIn(const std::string &folder)
{
    std::set<std::string> names;
    for (auto &entry : fs::directory_iterator(folder)) {
        names.insert(entry.path().filename().string());
    }
    return names;
}

TEST(ToolListWriter, HeaderTitleInitialMagazineAndFileArbor)
{
    ToolTable table = MakeTable();
    table.InitialMagazine = 4;
    const std::string stars(20, '*');
    auto firstAndLast = [&](std::string title, std::string magIni) {
        std::string text = Format(table, std::move(title), std::move(magIni));
        return text.substr(0, text.find("\r\n")) + "|" + text.substr(text.rfind("INI"));
    };

    EXPECT_EQ(Format(table, "Tool list", "3"), Header + "INI = MAGAZINE03\r\n");
    // The fill counts characters of the UTF-8 title; a long title gets none.
    EXPECT_EQ(firstAndLast("", "7"),
              "#" + stars + "   " + std::string(24, ' ') + stars + "|INI = MAGAZINE07\r\n");
    EXPECT_EQ(firstAndLast("Werkzeugliste", " 100 "), "#" + stars + "   Werkzeugliste" +
                                                          std::string(11, ' ') + stars +
                                                          "|INI = MAGAZINE100\r\n");
    EXPECT_EQ(firstAndLast(std::string(30, 'T'), "2.5"),
              "#" + stars + "   " + std::string(30, 'T') + stars + "|INI = MAGAZINE02\r\n");
    // The title goes in the code page; a character it cannot hold becomes "?"
    // (the line is a comment).
    const std::string toolList =
        "\xE3\x83\x84\xE3\x83\xBC\xE3\x83\xAB\xE3\x83\xAA\xE3\x82\xB9\xE3\x83\x88";
    const std::tuple<int, std::string, std::string> titles[] = {
        {1252, "Werkzeugliste \xC3\x84", "Werkzeugliste \xC4         "},
        {932, "ATC" + toolList,
         "ATC\x83\x63\x81\x5B\x83\x8B\x83\x8A\x83\x58\x83\x67" + std::string(15, ' ')},
        {1252, "ATC" + toolList, "ATC??????" + std::string(15, ' ')},
        {932, "\xC3\x98 tools", "? tools" + std::string(17, ' ')}};
    for (const auto &[codePage, title, written] : titles) {
        const std::string text = FormatToolList(table, WriteOptions{title, "1", codePage});
        EXPECT_EQ(text.substr(0, text.find("\r\n")), "#" + stars + "   " + written + stars)
            << codePage;
    }
    // A box that holds no 16-bit number leaves the table's number.
    for (const char *text : {"", "abc", "70000"}) {
        EXPECT_EQ(Format(table, "Tool list", text), Header + "INI = MAGAZINE04\r\n") << text;
    }
    table.DefaultArborType = 2;
    table.DefaultArbor.Dia = {40, 50, 50, 30};
    table.DefaultArbor.Len = {10, 20.5f, 5, 7};
    EXPECT_EQ(Body(table), "ARBOR2/40,10,50,20.5,50,5\r\n");
}

TEST(ToolListWriter, EachKindWritesItsNumbersInItsOwnOrder)
{
    struct Case
    {
        std::int16_t kind;
        float param6;
        float param7;
        const char *line;
    };
    // Dia 1, CornerRad 2, Param3 3, Param4 4, Param5 5, ToolLength 8.
    const Case cases[] = {{KindCut, 6, 7, "CUT/1,2,3,4,5,6;7,8"},
                          {KindCut, 0, 7, "CUT/1,2,3,4,5,0,8"},
                          {KindCut, 6, 0, "CUT/1,2,3,4,5,6,8"},
                          {KindTap, 6, 7, "TAP/2,6;7,8"},
                          {KindTap, -6, 7, "TAP/2,-6,8"},
                          {KindBal, 6, 7, "BAL/1,8"},
                          {KindFla, 6, 7, "FLA/1,8"},
                          {KindKeg, 6, 7, "KEG/1,8"},
                          {KindBul, 6, 7, "BUL/1,2,8"},
                          {KindVer, 6, 7, "VER/1,7,8"},
                          {KindOva, 6, 7, "OVA/1,2,7,8"},
                          {KindRad, 6, 7, "RAD/1,2,7"},
                          {KindTT, 6, 7, "T-T/1,8,2,5,7"}};
    for (const Case &c : cases) {
        ToolTable table = MakeTable();
        table.Slots[41] = Tool(c.kind, {1, 2, 3, 4, 5, c.param6, 8, c.param7});

        EXPECT_EQ(Body(table), "MAGAZINE42 = " + std::string(c.line) + "\r\n");
    }
}

TEST(ToolListWriter, SlotNumbersKindWordsAndComments)
{
    ToolTable table = MakeTable(200);
    table.KindNames[2] = "Bal"; // the catalogue's word is written as it is
    table.Slots[0] = Tool(KindBal, {10, 5, 0, 0, 0, 0, 1.0f / 3});
    table.Slots[0].ToolComment = "  \x83\x65\x83\x58\x83\x67 \xE4 \"x  ";
    table.Slots[1] = Tool(KindFla, {0.5f, 0, 0, 0, 0, 0, 10});
    table.Slots[1].ToolComment = "   ";
    table.Slots[99] = Tool(KindFla, {-2.25f, 0, 0, 0, 0, 0, 123456789.0f});
    table.Slots[100].ToolKind = 12; // no word for it
    table.Slots[150].ToolKind = KindTT;
    table.KindNames[10].clear();

    EXPECT_EQ(Body(table), "MAGAZINE01 = Bal/10,0.3333333,\"\x83\x65\x83\x58\x83\x67 \xE4 \"x\"\r\n"
                           "MAGAZINE02 = FLA/0.5,10\r\n"
                           "MAGAZINE100 = FLA/-2.25,123456800\r\n"
                           "MAGAZINE151 = T-T/0,0,0,0,0\r\n");
}

TEST(ToolListWriter, ItemLinesFollowTheToolLineInTheirOrder)
{
    ToolTable table = MakeTable();
    ToolSlot &tool = table.Slots[0];
    tool.ToolKind = KindFla;
    tool.LengthMode = 3;
    tool.Len = {1, 2, 3, 4, 5, 6};
    tool.ArborMode = 3;
    tool.Arbor.Dia = {20, 30, 30, 25};
    tool.Arbor.Len = {5, 6, 7, 8};
    tool.Arbor.Flag = {0, 1, 0, 1};
    tool.ShiftOn = 1;
    tool.ShiftValue = -1.5f;
    tool.PenNo = 3;
    tool.OptFeedOn = {1, 0, 1, 1};
    tool.OptFeedPos[0] = {0, 10, 20};
    tool.OptFeedVal[0] = {100, 200, 300};
    tool.OptFeedPos[2] = {5};
    tool.OptFeedVal[2] = {9};
    tool.OptFeedPos[3] = {-5}; // zeros ascend from it: all twenty points
    tool.LimitFlags = 2 | LimitFourValues | LimitPVariant;
    tool.LimitValues = {1, 2, 3, 4};

    EXPECT_EQ(Body(table),
              "MAGAZINE01 = FLA/0,0\r\n"
              "LENGTH3/1,4,6,3,5,2\r\n"
              "ARBOR3/20,5,0,30,6,1,30,7,0\r\n"
              "SHIFT/-1.5\r\n"
              "PEN/3\r\n"
              "OPT-F(A)/0,100,10,200,20\r\n"
              "OPT-F(U)/5\r\n"
              "OPT-F(D)/-5,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,"
              "0,0,0,0,0,0,0,0\r\n"
              "LIMITSP/1,2,3,4\r\n");
}

TEST(ToolListWriter, ItemFormsAndTheirLimits)
{
    ToolTable table = MakeTable(13);
    for (ToolSlot &slot : table.Slots) {
        slot.ToolKind = KindFla;
    }
    auto &t = table.Slots;
    t[0].LengthMode = 1;
    t[0].Len = {7, 8};
    t[1].LengthMode = 2;
    t[1].Len = {1, 2, 3, 4};
    t[2].LengthMode = 7;
    t[2].Len = {50}; // no such mode: dropped for good
    t[3].ArborMode = 1;
    t[3].Arbor.Dia = {10, 20};
    t[4].ArborMode = 2;
    t[4].Arbor.Dia = {0.0005f, 1}; // too thin a first section
    t[5].ArborMode = 1;
    t[5].Arbor.Dia = {0, 20};
    t[6].ArborMode = 0;
    t[6].Arbor.Dia = {10};
    t[7].ArborMode = 1;
    t[7].Arbor.Dia = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
    t[8].ShiftOn = -1;
    t[8].PenNo = -1;
    t[9].LimitFlags = 1;
    t[9].LimitValues = {5, 6};
    t[10].LimitFlags = 1 | LimitPVariant;
    t[11].LimitFlags = 3 | LimitFourValues;
    t[12].LimitFlags = LimitFourValues | LimitPVariant;

    EXPECT_EQ(Body(table),
              "MAGAZINE01 = FLA/0,0\r\nLENGTH/7\r\n"
              "MAGAZINE02 = FLA/0,0\r\nLENGTH2/1,3,4,2\r\n"
              "MAGAZINE03 = FLA/0,0\r\n"
              "MAGAZINE04 = FLA/0,0\r\nARBOR/10,0,20,0\r\n"
              "MAGAZINE05 = FLA/0,0\r\nARBOR2/\r\n"
              "MAGAZINE06 = FLA/0,0\r\n"
              "MAGAZINE07 = FLA/0,0\r\n"
              "MAGAZINE08 = FLA/0,0\r\nARBOR/1,0,2,0,3,0,4,0,5,0,6,0,7,0,8,0,9,0,10,0,11\r\n"
              "MAGAZINE09 = FLA/0,0\r\nSHIFT/0\r\n"
              "MAGAZINE10 = FLA/0,0\r\nLIMIT/5\r\n"
              "MAGAZINE11 = FLA/0,0\r\nLIMITP/0\r\n"
              "MAGAZINE12 = FLA/0,0\r\nLIMIT/0,0,0,0\r\n"
              "MAGAZINE13 = FLA/0,0\r\n");
    EXPECT_EQ(t[2].LengthMode, 0);
}

class ToolListFile : public ::testing::Test
{
protected:
    ToolListFile()
    {
        table = MakeTable(3000);
        for (std::size_t i = 0; i < table.Slots.size(); i += 2) {
            table.Slots[i] = Tool(KindCut, {10, 1, 2, 3, 4, 5, static_cast<float>(i) / 8});
            table.Slots[i].ToolComment = "End mill " + std::to_string(i);
        }
    }

    Status Save() { return WriteToolListFile(table, path, options); }

    test::TempDir dir;
    std::string path = dir.file("Atc.ttl");
    ToolTable table;
    WriteOptions options{"Tool list", "1"};
};

// More than one chunk, under a name whose temporary file must not grow longer
// than the system allows.
TEST_F(ToolListFile, HoldsTheFormattedBytesUnderANameAtTheSystemLimit)
{
    const std::string name = std::string(251, 'n') + ".ttl";
    path = dir.file(name);

    Status saved = Save();

    ASSERT_TRUE(saved.ok()) << saved.error().message;
    EXPECT_GT(dir.read(name).size(), 64u * 1024u);
    EXPECT_EQ(dir.read(name), FormatToolList(table, options));
    EXPECT_EQ(FilesIn(dir.path()), std::set<std::string>{name});
}

TEST_F(ToolListFile, ForeignFileIsBackedUpOncePerSaveUntilReadAgain)
{
    table.ForeignFile = true;
    ASSERT_TRUE(Save().ok()); // nothing to back up yet
    dir.write("Atc.ttl", "foreign\r\n");

    ASSERT_TRUE(Save().ok());
    std::string first = dir.read("Atc.ttl");
    table.Slots[1].ToolKind = KindBal;
    ASSERT_TRUE(Save().ok());

    EXPECT_TRUE(table.ForeignFile);
    EXPECT_EQ(dir.read("Atc_org1.TTL"), "foreign\r\n");
    EXPECT_EQ(dir.read("Atc_org2.TTL"), first);
    EXPECT_EQ(dir.read("Atc.ttl"), FormatToolList(table, options));
    ASSERT_EQ(ReadToolListFile(table, path).outcome, ReadOutcome::Read);
    EXPECT_FALSE(table.ForeignFile);
    ASSERT_TRUE(Save().ok());
    EXPECT_EQ(FilesIn(dir.path()),
              (std::set<std::string>{"Atc.ttl", "Atc_org1.TTL", "Atc_org2.TTL"}));
}

// Every failure leaves the folder exactly as it was and says which file: a
// path that cannot be written, and a disk that fills up while writing (a file
// size limit stands in for it), which fails before any backup would be made.
TEST_F(ToolListFile, FailedSaveLeavesTheFolderAsItWas)
{
    auto expectFailureLeavesEverything = [this] {
        dir.write("Atc.ttl", "old bytes");
        table.ForeignFile = true;
        auto before = FilesIn(dir.path());

        Status saved = Save();

        ASSERT_FALSE(saved.ok());
        EXPECT_NE(saved.error().message.find(path), std::string::npos) << saved.error().message;
        EXPECT_EQ(dir.read("Atc.ttl"), "old bytes");
        EXPECT_EQ(FilesIn(dir.path()), before);
    };
    fs::create_directory(dir.file("Folder.ttl"));

    for (const std::string &name : {std::string("Folder.ttl"), std::string("missing/Atc.ttl"),
                                    std::string(300, 'n') + ".ttl"}) {
        SCOPED_TRACE(name);
        path = dir.file(name);
        expectFailureLeavesEverything();
    }
#ifndef _WIN32
    SCOPED_TRACE("disk full");
    path = dir.file("Atc.ttl");
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit old{};
    getrlimit(RLIMIT_FSIZE, &old);
    rlimit small = old;
    small.rlim_cur = 16 * 1024;
    setrlimit(RLIMIT_FSIZE, &small);
    expectFailureLeavesEverything();
    setrlimit(RLIMIT_FSIZE, &old);
#endif
}

#ifndef _WIN32
// A disk with room for the new file but not for a copy of the old one: the
// backup needs no room, since it is the original itself, so the original is
// never lost. A disk without room for the new file fails the save and keeps
// the file as it was.
TEST_F(ToolListFile, AFullDiskNeverCostsTheOriginal)
{
    fs::create_directory(dir.file("disk"));
    if (::mount("tmpfs", dir.file("disk").c_str(), "tmpfs", 0, "size=256k") != 0) {
        GTEST_SKIP() << "a small file system needs root to mount: " << std::strerror(errno);
    }
    path = dir.file("disk/Atc.TTL");
    SizeToolTable(table, 400);
    for (int slot = 0; slot < 400; ++slot) {
        table.Slots[static_cast<std::size_t>(slot)].ToolKind = KindFla;
        table.Slots[static_cast<std::size_t>(slot)].ToolDia = 12.5f;
        table.Slots[static_cast<std::size_t>(slot)].ToolComment = std::string(180, 'c');
    }
    const std::string original = "; written by hand\r\n" + FormatToolList(table, options);
    dir.write("disk/Atc.TTL", original);
    auto fill = [this](std::uintmax_t leave) {
        const auto free = fs::space(dir.file("disk")).available;
        dir.write("disk/filler", std::string(free > leave ? free - leave : 0, 'f'));
    };
    table.ForeignFile = true;
    table.Slots[0].ToolDia = 10;

    fill(original.size() + 16 * 1024);
    const Status roomForOne = Save();
    const std::string afterFirst = dir.read("disk/Atc.TTL");
    const std::string backup = dir.read("disk/Atc_org1.TTL");
    fs::remove(dir.file("disk/filler"));
    fill(4096);
    table.Slots[1].ToolDia = 10;
    const Status noRoom = Save();
    const std::string afterSecond = dir.read("disk/Atc.TTL");
    ::umount(dir.file("disk").c_str());

    ASSERT_TRUE(roomForOne.ok()) << roomForOne.error().message;
    EXPECT_EQ(backup, original);
    EXPECT_NE(afterFirst, original);
    EXPECT_FALSE(noRoom.ok());
    EXPECT_EQ(afterSecond, afterFirst);
}
#endif

} // namespace
} // namespace qor
