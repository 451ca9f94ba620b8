#include "numeric_text.h"
#include "temp_dir.h"
#include "tool_list_reader.h"
#include "tool_list_writer.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <set>

#ifndef _WIN32
#include <csignal>
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace qor {
namespace {

namespace fs = std::filesystem;

const std::string Line1 =
    "#********************   Tool list               ********************\r\n";
const std::string Line2 =
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

std::string Format(ToolTable &table, std::string magIni = "1")
{
    return FormatToolList(table, WriteOptions{"Tool list", std::move(magIni)});
}

// The lines behind the three header lines.
std::string Body(ToolTable &table)
{
    std::string text = Format(table);
    return text.substr(text.find("\r\n", Line1.size() + Line2.size()) + 2);
}

std::set<std::string> FilesIn(const std::string &folder)
{
    std::set<std::string> names;
    for (auto &entry : fs::directory_iterator(folder)) {
        names.insert(entry.path().filename().string());
    }
    return names;
}

TEST(ToolListWriter, EmptyTableWritesTheHeaderAndTheFileArborOnly)
{
    ToolTable table = MakeTable();
    EXPECT_EQ(Format(table, "3"), Line1 + Line2 + "INI = MAGAZINE03\r\n");

    table.DefaultArborType = 2;
    table.DefaultArbor.Dia = {40, 50, 50, 30};
    table.DefaultArbor.Len = {10, 20.5f, 5, 7};
    EXPECT_EQ(Format(table, "3"),
              Line1 + Line2 + "INI = MAGAZINE03\r\nARBOR2/40,10,50,20.5,50,5\r\n");
}

TEST(ToolListWriter, TitleFillAndInitialMagazine)
{
    ToolTable table = MakeTable();
    table.InitialMagazine = 4;
    const std::string stars(20, '*');
    auto lines = [&](std::string title, std::string magIni) {
        std::string text = FormatToolList(table, WriteOptions{std::move(title), std::move(magIni)});
        return text.substr(0, text.find("\r\n")) + "|" + text.substr(text.rfind("INI"));
    };

    // The fill counts characters of the UTF-8 title; a long title gets none.
    EXPECT_EQ(lines("", "7"),
              "#" + stars + "   " + std::string(24, ' ') + stars + "|INI = MAGAZINE07\r\n");
    EXPECT_EQ(lines("Werkzeugliste \xC3\x84", " 100 "), "#" + stars + "   Werkzeugliste \xC3\x84" +
                                                            std::string(9, ' ') + stars +
                                                            "|INI = MAGAZINE100\r\n");
    EXPECT_EQ(lines(std::string(30, 'T'), "2.5"),
              "#" + stars + "   " + std::string(30, 'T') + stars + "|INI = MAGAZINE02\r\n");
    // A box that holds no 16-bit number leaves the table's number.
    for (const char *text : {"", "abc", "70000"}) {
        EXPECT_EQ(Format(table, text).substr(Line1.size() + Line2.size()), "INI = MAGAZINE04\r\n");
    }
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
    const Case cases[] = {
        {KindCut, 6, 7, "CUT/1,2,3,4,5,6;7,8"},
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
        {KindTT, 6, 7, "T-T/1,8,2,5,7"},
    };
    for (const Case &c : cases) {
        ToolTable table = MakeTable();
        ToolSlot &tool = table.Slots[41];
        tool = Tool(c.kind, {1, 2, 3, 4, 5, c.param6, 8, c.param7});

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
    tool.OptFeedPos[3] = {-5};
    tool.LimitFlags = 2 | LimitFourValues | LimitPVariant;
    tool.LimitValues = {1, 2, 3, 4};

    std::string zeros;
    for (int k = 1; k < OptFeedPointCount; ++k) {
        zeros += ",0,0";
    }

    EXPECT_EQ(Body(table), "MAGAZINE01 = FLA/0,0\r\n"
                           "LENGTH3/1,4,6,3,5,2\r\n"
                           "ARBOR3/20,5,0,30,6,1,30,7,0\r\n"
                           "SHIFT/-1.5\r\n"
                           "PEN/3\r\n"
                           "OPT-F(A)/0,100,10,200,20\r\n"
                           "OPT-F(U)/5\r\n"
                           "OPT-F(D)/-5" +
                               zeros + "\r\n" + "LIMITSP/1,2,3,4\r\n");
}

TEST(ToolListWriter, ItemFormsAndTheirLimits)
{
    ToolTable table = MakeTable(14);
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
    t[13].OptFeedOn[1] = 1;
    t[13].OptFeedVal[1].fill(2);
    for (int k = 0; k < OptFeedPointCount; ++k) {
        t[13].OptFeedPos[1][k] = static_cast<float>(k);
    }

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
              "MAGAZINE13 = FLA/0,0\r\n"
              "MAGAZINE14 = FLA/0,0\r\nOPT-F(V)/0,2,1,2,2,2,3,2,4,2,5,2,6,2,7,2,8,2,9,2,"
              "10,2,11,2,12,2,13,2,14,2,15,2,16,2,17,2,18,2,19\r\n");
    EXPECT_EQ(t[2].LengthMode, 0);
}

// Numbers are the bulk of a file; compare the fast text with printf's.
TEST(ToolListWriter, NumberTextAgreesWithPrintfRounding)
{
    auto reference = [](float value) {
        char sci[32];
        std::snprintf(sci, sizeof sci, "%.6e", std::fabs(static_cast<double>(value)));
        std::string digits{sci[0]};
        digits.append(sci + 2, 6);
        int exponent = std::atoi(std::strchr(sci, 'e') + 1);
        digits.erase(digits.find_last_not_of('0') + 1);
        std::string text;
        if (exponent < 0) {
            text = "0." + std::string(-exponent - 1, '0') + digits;
        } else if (exponent + 1 >= static_cast<int>(digits.size())) {
            text = digits + std::string(exponent + 1 - digits.size(), '0');
        } else {
            text = digits.substr(0, exponent + 1) + "." + digits.substr(exponent + 1);
        }
        return (value < 0 ? "-" : "") + text;
    };
    std::mt19937 random(7);
    std::string text;
    for (int i = 0; i < 300000; ++i) {
        std::uint32_t bits = random();
        float value;
        std::memcpy(&value, &bits, sizeof value);
        if (i % 3 == 1) {
            value = static_cast<float>(static_cast<int>(bits % 2000001) - 1000000) / 1000.0f;
        } else if (i % 3 == 2) {
            value = static_cast<float>(bits % 10000000) + 0.5f; // ties at the seventh digit
        }
        if (!std::isfinite(value) || value == 0) {
            continue;
        }

        text.clear();
        AppendSingleText(text, value);

        ASSERT_EQ(text, reference(value)) << bits;
    }
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

TEST_F(ToolListFile, HoldsTheFormattedBytes)
{
    ASSERT_TRUE(Save().ok());

    EXPECT_GT(dir.read("Atc.ttl").size(), 64u * 1024u); // more than one chunk
    EXPECT_EQ(dir.read("Atc.ttl"), FormatToolList(table, options));
    EXPECT_EQ(FilesIn(dir.path()), std::set<std::string>{"Atc.ttl"});
}

TEST_F(ToolListFile, ForeignFileIsKeptOncePerSaveUntilReadAgain)
{
    dir.write("Atc.ttl", "foreign\r\n");
    table.ForeignFile = true;

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

TEST_F(ToolListFile, NoBackupOfOwnOrMissingFiles)
{
    dir.write("Atc.ttl", "ours");
    ASSERT_TRUE(Save().ok());
    table.ForeignFile = true;
    path = dir.file("New.ttl");
    ASSERT_TRUE(Save().ok());

    EXPECT_EQ(FilesIn(dir.path()), (std::set<std::string>{"Atc.ttl", "New.ttl"}));
}

TEST_F(ToolListFile, NameAtTheSystemLimitIsWritten)
{
    path = dir.file(std::string(251, 'n') + ".ttl");

    ASSERT_TRUE(Save().ok()) << Save().error().message;
    EXPECT_EQ(FilesIn(dir.path()).size(), 1u);
}

// Every failure leaves the folder exactly as it was and says which file.
class FailedSave : public ToolListFile
{
protected:
    void ExpectFailureLeavesEverything()
    {
        dir.write("Atc.ttl", "old bytes");
        table.ForeignFile = true;
        auto before = FilesIn(dir.path());

        Status saved = Save();

        ASSERT_FALSE(saved.ok());
        EXPECT_NE(saved.error().message.find(path), std::string::npos) << saved.error().message;
        EXPECT_EQ(dir.read("Atc.ttl"), "old bytes");
        EXPECT_EQ(FilesIn(dir.path()), before);
    }
};

TEST_F(FailedSave, PathIsAFolder)
{
    fs::create_directory(dir.file("Folder.ttl"));
    path = dir.file("Folder.ttl");
    ExpectFailureLeavesEverything();
}

TEST_F(FailedSave, FolderIsMissing)
{
    path = dir.file("missing/Atc.ttl");
    ExpectFailureLeavesEverything();
}

TEST_F(FailedSave, NameIsTooLong)
{
    path = dir.file(std::string(300, 'n') + ".ttl");
    ExpectFailureLeavesEverything();
}

// A file size limit stands in for a disk that fills up: the write fails
// after the first chunks, before any backup would be made.
TEST_F(FailedSave, DiskFillsUpWhileWriting)
{
#ifdef _WIN32
    GTEST_SKIP() << "no file size limit to stand in for a full disk";
#else
    struct SizeLimit
    {
        rlimit old{};
        SizeLimit()
        {
            std::signal(SIGXFSZ, SIG_IGN);
            getrlimit(RLIMIT_FSIZE, &old);
            rlimit small = old;
            small.rlim_cur = 16 * 1024;
            setrlimit(RLIMIT_FSIZE, &small);
        }
        ~SizeLimit() { setrlimit(RLIMIT_FSIZE, &old); }
    } limit;
    ExpectFailureLeavesEverything();
#endif
}

TEST_F(FailedSave, FolderIsReadOnly)
{
#ifdef _WIN32
    GTEST_SKIP() << "a read-only attribute does not keep files out of a Windows folder";
#else
    if (geteuid() == 0) {
        GTEST_SKIP() << "root writes into read-only folders";
    }
#endif
    dir.write("Atc.ttl", "old bytes");
    fs::permissions(dir.path(), fs::perms::owner_write, fs::perm_options::remove);
    ExpectFailureLeavesEverything();
    fs::permissions(dir.path(), fs::perms::owner_write, fs::perm_options::add);
}

} // namespace
} // namespace qor
