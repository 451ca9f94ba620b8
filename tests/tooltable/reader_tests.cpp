#include "numeric_text.h"
#include "temp_dir.h"
#include "tool_list_items.h"
#include "tool_list_reader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>
#include <random>
#include <string>

namespace qor {
namespace {

using namespace std::string_view_literals;

class Reader : public ::testing::Test
{
protected:
    Reader() { SizeToolTable(table, 10); }

    ReadResult Read(std::string_view text)
    {
        dir.write("Atc.ttl", text);
        return ReadToolListFile(table, dir.file("Atc.ttl"));
    }

    ToolSlot &Magazine(int number) { return table.Slots[static_cast<std::size_t>(number - 1)]; }

    test::TempDir dir;
    ToolTable table;
};

// Every field of the table within what its type and meaning allow.
bool WithinBounds(const ToolTable &table)
{
    auto finite = [](const auto &values) {
        return std::all_of(values.begin(), values.end(), [](float v) { return std::isfinite(v); });
    };
    bool ok = table.InitialMagazine >= 0 && table.CurrentSlot == table.InitialMagazine - 1 &&
              table.DefaultArborType >= 0 && table.DefaultArborType <= 3;
    for (const ToolSlot &s : table.Slots) {
        const int limit = s.LimitFlags & ~LimitFourValues;
        ok = ok && s.ToolKind >= KindNone && s.ToolKind < KindCount && s.LengthMode >= 0 &&
             s.LengthMode <= 3 && s.ArborMode >= 0 && s.ArborMode <= 3 &&
             (limit <= 2 || limit == 128 || limit == 130) &&
             finite(std::array{s.ToolDia, s.CornerRad, s.Param3, s.Param4, s.Param5, s.Param6,
                               s.Param7, s.ToolLength}) &&
             finite(s.Arbor.Dia) && finite(s.OptFeedPos[0]);
    }
    return ok;
}

// The value is that of the longest numeric prefix reached through numeric
// prefixes ("-" always extends, "," always ends them): "12x,3" gives 12, "-5-3,7"
// -5, "1e999" 1. The text is cut behind its first "," or blank and trimmed.
TEST(ReadNumber, AgreesWithTestingEveryPrefixAndCutsAtTheFirstCommaOrBlank)
{
    const char *examples[] = {"6,40 PEN/3", "40 PEN/3", "5 abc,6", "12x,3", "-5-3,7",
                              "--,2",       "1e999",    ".5",      "7,  8", "abc,5"};
    std::mt19937 random(7);
    const std::string_view alphabet = "0123456789012345678900000.-+eE ,;x";
    for (std::size_t round = 0; round < 20000; ++round) {
        std::string text = round < std::size(examples) ? examples[round] : "";
        for (int n = text.empty() ? static_cast<int>(random() % 16) : 0; n > 0; --n) {
            text += alphabet[random() % alphabet.size()];
        }
        const std::string_view whole = text;
        std::size_t prefix = 0;
        std::size_t numeric = 0;
        while (prefix < text.size() && text[prefix] != ',' &&
               (text[prefix] == '-' || IsNumeric(whole.substr(0, prefix + 1)))) {
            ++prefix;
            if (IsNumeric(whole.substr(0, prefix))) {
                numeric = prefix;
            }
        }
        const float expected = numeric ? *ToSingle(whole.substr(0, numeric)) : 0.0f;
        const std::size_t cut = text.find_first_of(", ");
        const std::string_view rest = prefix == 0 ? whole
                                      : cut == std::string::npos
                                          ? std::string_view()
                                          : TrimSpaces(whole.substr(cut + 1));
        std::string_view view = text;

        auto value = ReadNumber(view);

        ASSERT_TRUE(value) << '"' << text << '"';
        ASSERT_EQ(*value, expected) << '"' << text << '"';
        ASSERT_EQ(view, rest) << '"' << text << '"';
    }
    std::string huge(400, '9');
    std::string_view text = huge;
    EXPECT_FALSE(ReadNumber(text)); // too large for a single
}

// The numbers' order is the writer's, which the round trip holds the reader to.
TEST_F(Reader, KindWordsCommentsLineEndsAndTheInitialMagazine)
{
    auto result = Read("INI = magazine05\r\n"
                       "MAGAZINE01 = CUT/10,1,2,3,4,5;30,60,\"  roughing \x93\x81 \" PEN/9\r\n"
                       "magazine02 = bal/10,50\r"
                       "MAGAZINE03 = TAP/1,6;7,40,\"no end\n"
                       "MAGAZINE04 = FLA/6,40 PEN/3\n"
                       "MAGAZINE05 = BUL/8,1,30\nMAGAZINE06 = VER/8,2,30\nMAGAZINE07 = KEG/3,9\n"
                       "MAGAZINE08 = OVA/8,1,2,30\nMAGAZINE09 = RAD/8,1,2\n"
                       "MAGAZINE10 = T-T/20,5,1,2,3\n");

    ASSERT_EQ(result.outcome, ReadOutcome::Read) << result.error.message;
    for (int kind = 0; kind < KindCount; ++kind) {
        EXPECT_EQ(Magazine(kind + 1).ToolKind, kind) << KindWords[kind];
    }
    EXPECT_EQ(Magazine(1).Param7, 30);
    EXPECT_EQ(Magazine(1).ToolComment, "roughing \x93\x81");
    EXPECT_EQ(Magazine(1).PenNo, 0); // nothing behind a comment is read
    EXPECT_EQ(Magazine(2).ToolLength, 50);
    EXPECT_EQ(Magazine(3).ToolComment, "");
    EXPECT_EQ(Magazine(3).ToolLength, 40);
    EXPECT_EQ(Magazine(4).PenNo, 3);
    EXPECT_EQ(table.InitialMagazine, 5);
    EXPECT_EQ(table.CurrentSlot, 4);
    EXPECT_TRUE(table.ForeignFile);
}

TEST_F(Reader, ToolOptionsLengthsPenShiftFeedsAndLimits)
{
    auto result = Read("MAGAZINE01 = BAL/10,50\n"
                       "LENGTH2/1,2,3,4 PEN/2.5 SHIFT/-1.5\n"
                       "OPT-F/0,100,10,200,20 opt-f(d)/5\n"
                       "LIMITSP/1,2,3,4\n"
                       "MAGAZINE02 = BAL/10,50 LENGTH3/1,2,3,4,5,6 PEN/3.5 LIMITP/7\n"
                       "OPT-F(V)/0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,"
                       "23,24,25,26,27,28,29,30,31,32,33,34,35,36,37,38,39,40,41,42\n"
                       "MAGAZINE03 = BAL/10,50 LENGTH/80 LIMIT/5 LIMITS/1 2\n");

    ASSERT_EQ(result.outcome, ReadOutcome::Read) << result.error.message;
    const ToolSlot &one = Magazine(1);
    EXPECT_EQ(one.Len, (std::array<float, 6>{1, 4, 2, 3, 0, 0}));
    EXPECT_EQ(one.PenNo, 2); // rounded half to even
    EXPECT_EQ(one.ShiftValue, -1.5f);
    EXPECT_EQ(one.OptFeedOn, (std::array<std::int16_t, 4>{1, 0, 0, 1}));
    EXPECT_EQ(one.OptFeedPos[3][0], 5);
    EXPECT_EQ(one.LimitFlags, 130 | LimitFourValues);
    const ToolSlot &two = Magazine(2);
    EXPECT_EQ(two.PenNo, 4);
    EXPECT_EQ(two.LimitFlags, 128);
    EXPECT_EQ(two.OptFeedPos[1][19], 38);
    EXPECT_EQ(two.OptFeedVal[1][18], 37);
    EXPECT_EQ(Magazine(3).LimitFlags, 2); // the later item wins; a blank is no ","
}

TEST_F(Reader, ArborBeforeTheFirstMagazineIsTheFilesAndAfterItTheTools)
{
    auto result = Read("#*****   edited with QORTool   *******V1.70********\n"
                       "ARBOR2/20,30,40,50\n"
                       "MAGAZINE01 = BAL/10,50\n"
                       "ARBOR3/12,5,1,16,8,0,14,9,1\n"
                       "MAGAZINE02 = BAL/10,50\n"
                       "ARBOR/1,1,2,2,3,3,4,4,5,5,6,6,7,7,8,8,9,9,10,10,11,11\n"
                       "MAGAZINE03 = BAL/10,50 ARBOR/-1,5\n");

    ASSERT_EQ(result.outcome, ReadOutcome::Read) << result.error.message;
    EXPECT_FALSE(table.ForeignFile);
    EXPECT_EQ(table.DefaultArborType, 2);
    EXPECT_EQ(table.DefaultArbor.Dia[1], 40);
    EXPECT_EQ(Magazine(1).ArborMode, 3);
    EXPECT_EQ(Magazine(1).Arbor.Dia, (std::array<float, 11>{12, 16}));
    EXPECT_EQ(Magazine(2).Arbor.Dia[9], 10);
    EXPECT_EQ(Magazine(2).Arbor.Dia[10], 0);
    EXPECT_EQ(Magazine(3).ArborMode, 1);
    EXPECT_EQ(Magazine(3).Arbor.Dia[0], 0);
}

// Counted are the distinct positions beyond the table that held a tool.
TEST_F(Reader, PositionsBeyondTheTableAreSkippedAndCounted)
{
    auto result = Read("MAGAZINE11 = BAL/10,50\nPEN/4\nMAGAZINE02 = FLA/6,40\n"
                       "magazine9999 = bal/1,1 MAGAZINE03 = BAL/1,1\nMAGAZINE11 = FLA/1,1\n"
                       "MAGAZINE20000 = PEN/3\nMAGAZINE20001 = XYZ/1\n");

    ASSERT_EQ(result.outcome, ReadOutcome::Read) << result.error.message;
    EXPECT_EQ(Magazine(2).ToolKind, KindFla);
    EXPECT_EQ(Magazine(2).PenNo, 0);
    EXPECT_EQ(Magazine(3).ToolKind, KindNone);
    EXPECT_EQ(table.CurrentSlot, -1);
    EXPECT_EQ(result.skippedPositions, 2);
    EXPECT_EQ(result.highestSkippedMagazine, 9999);
    auto within = Read("MAGAZINE10 = BAL/10,50\n");
    EXPECT_EQ(within.skippedPositions, 0);
    EXPECT_EQ(within.highestSkippedMagazine, 0);
}

TEST_F(Reader, MissingFileOrFolderLeavesTheTable)
{
    NewDataSet(table, 3);
    table.CurrentSlot = 3;

    EXPECT_EQ(ReadToolListFile(table, dir.file("none.ttl")).outcome, ReadOutcome::NotFound);
    EXPECT_EQ(ReadToolListFile(table, dir.path()).outcome, ReadOutcome::NotFound);
    EXPECT_EQ(ReadToolListFile(table, "").outcome, ReadOutcome::NotFound);

    EXPECT_EQ(Magazine(4).ToolKind, KindBal);
    EXPECT_EQ(table.CurrentSlot, 3);
}

// A faulty line stops the read; what came before it is kept.
TEST_F(Reader, StopsAtTheFaultyLineKeepingWhatCameBefore)
{
    const struct
    {
        std::string_view text;
        int line;
        std::string_view says;
        std::int16_t kindAtOne = KindBal; // a kind item sets its kind before anything can fail
    } cases[] = {{"MAGAZINE01 = FLA 6,40", 3,
                  "\"MAGAZINE01 = FLA 6,40\": the tool item \"FLA\" needs a \"/\"", KindFla},
                 {"MAGAZINE03 BAL/1,1", 3, "needs a \"=\""},
                 {"MAGAZINE = BAL/1,1", 3, "number right after"},
                 {"MAGAZINE00 = BAL/1,1", 3, "magazine number 0"},
                 {"MAGAZINE99999 = BAL/1,1", 3, "out of range"},
                 {"INI = TOOL01", 3, "\"INI\" needs"},
                 {"INI = MAGAZINE40000", 3, "range"},
                 {"# fine\n\nPEN/99999999999", 5, "pen number \"99999999999\""},
                 {"LENGTH/1000000000000000000000000000000000000000000000", 3, "too large"},
                 {"CUT/1,1,1,1,1,1e999;2,3", 3, "too large", KindCut},
                 {"ARBOR3/10,5,256", 3, "flag \"256\""},
                 {"LIMIT 5", 3, "\"/\""}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.text);
        NewDataSet(table, 9); // cleared by the read

        auto result = Read("INI = MAGAZINE03\nMAGAZINE01 = BAL/10,50\n" + std::string(c.text) +
                           "\nMAGAZINE02 = BAL/10,50\n");

        ASSERT_EQ(result.outcome, ReadOutcome::FormatError);
        EXPECT_EQ(result.error.line, c.line);
        EXPECT_NE(result.error.message.find(c.says), std::string::npos) << result.error.message;
        EXPECT_EQ(Magazine(1).ToolKind, c.kindAtOne);
        EXPECT_EQ(Magazine(2).ToolKind, KindNone);
        EXPECT_EQ(Magazine(10).ToolKind, KindNone);
        EXPECT_EQ(table.CurrentSlot, 2);
    }
}

TEST_F(Reader, AnOverlongLineIsRefused)
{
    auto result = Read("MAGAZINE01 = BAL/10,50\n" + std::string(70000, 'x') + "\n");

    ASSERT_EQ(result.outcome, ReadOutcome::FormatError);
    EXPECT_EQ(result.error.line, 2);
    EXPECT_NE(result.error.message.find("longer than 65536"), std::string::npos);
    EXPECT_LE(result.error.lineText.size(), 210u);
    EXPECT_EQ(Magazine(1).ToolKind, KindBal);
}

TEST_F(Reader, SaysWhatAFileThatIsNoToolListSeemsToBe)
{
    const std::vector<std::pair<std::string, FileLooks>> cases = {
        {test::SourceFile("data/samples/machining_centre.TTL"), FileLooks::ToolList},
        {"", FileLooks::ToolList},
        {"# only a comment\r\n\r\n", FileLooks::NoItems},
        {"Dear machinist,\r\nthe new holders arrive on Monday.\r\n", FileLooks::NoItems},
        {std::string("\xFF\xFEM\0A\0G\0", 8), FileLooks::Utf16Text},
        {std::string("MAGAZINE01 = BAL/1\0,2\n", 22), FileLooks::Binary},
        {std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16), FileLooks::Binary},
    };
    for (const auto &[content, looks] : cases) {
        EXPECT_EQ(Read(content).looks, looks) << content;
    }
    // Binary junk alone does not stop the read.
    EXPECT_EQ(Read(std::string("MAGAZINE01 = BAL/1\0,2\n\0\0\0\xff\xfe\n", 29)).outcome,
              ReadOutcome::Read);
    EXPECT_EQ(Magazine(1).ToolDia, 1);
}

TEST_F(Reader, RandomMutationsReadOrFailCleanly)
{
    const std::string valid = "#   edited with QORTool   V1.70\n"
                              "INI = MAGAZINE02\n"
                              "ARBOR3/20,30,1,40,50,0\n"
                              "MAGAZINE01 = CUT/10,1,2,3,4,5;30,60,\"first\"\n"
                              "LENGTH3/1,2,3,4,5,6\nARBOR2/10,20,30,40\nSHIFT/1.5\nPEN/3\n"
                              "OPT-F(A)/0,100,10,200,20\nOPT-F(D)/1,2,3\nLIMITSP/1,2,3,4\n"
                              "MAGAZINE02 = TAP/1,6;7,40 LENGTH2/1,2,3,4 LIMIT/5\n"
                              "MAGAZINE10 = T-T/20,5,1,2,3\n";
    const std::string_view pieces[] = {
        "0",  "9",  "-",    ".",    ",", ";",        " ",       "/",        "=",    "\"",
        "\n", "\r", "\0"sv, "\xff", "e", "MAGAZINE", "ARBOR3/", "99999999", "PEN/", "OPT-F(V)/"};
    std::mt19937 random(20240601);
    int refused = 0;
    test::ScratchStream scratch;
    for (int round = 0; round < 3000; ++round) {
        std::string text = valid;
        for (int n = 1 + static_cast<int>(random() % 4); n > 0; --n) {
            const std::size_t at = random() % (text.size() + 1);
            const std::string_view piece = pieces[random() % std::size(pieces)];
            const std::size_t op = random() % 3; // insert, erase or overwrite
            const std::size_t length = op == 0 ? 0 : op == 1 ? 1 + random() % 8 : piece.size();
            text.replace(at, length, op == 1 ? std::string_view() : piece);
        }

        std::FILE *file = scratch.hold(text);
        ASSERT_TRUE(file);

        auto result = ReadToolListStream(table, file);

        ASSERT_NE(result.outcome, ReadOutcome::NotFound) << text;
        ASSERT_TRUE(WithinBounds(table)) << text;
        refused += result.outcome == ReadOutcome::FormatError;
    }
    EXPECT_GT(refused, 300); // the mutations reach both outcomes
    EXPECT_LT(refused, 2700);
}

} // namespace
} // namespace qor
