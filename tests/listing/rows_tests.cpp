#include "listing_fixture.h"
#include "tool_list_reader.h"
#include "tool_list_rows.h"

#include <limits>
#include <tuple>

namespace qor::test {
namespace {

class Rows : public Listing
{
protected:
    std::string Cell(int magazine, ListColumn column) const
    {
        return contents.Rows.Cell(magazine - 1, column);
    }

    ToolListContents contents;
};

TEST_F(Rows, NothingIsListedBeforeAFileGaveAnInitialMagazine)
{
    NewDataSet(ws.Table, 0);
    contents.MagIni = "kept";

    EXPECT_FALSE(FillToolList(ws, contents));

    EXPECT_EQ(contents.Rows.RowCount(), 0);
    EXPECT_EQ(contents.MagIni, "kept");
}

TEST_F(Rows, TheSampleFileShowsEveryColumnAsTheKindAsks)
{
    ASSERT_EQ(ReadToolListFile(ws.Table,
                               std::string(QOR_SOURCE_DIR) + "/data/samples/machining_centre.TTL")
                  .outcome,
              ReadOutcome::Read);

    ASSERT_TRUE(FillToolList(ws, contents));

    EXPECT_EQ(contents.Rows.RowCount(), 20);
    EXPECT_EQ(contents.MagIni, "1");
    EXPECT_EQ(contents.DefaultArbor, Str("Str11"));
    // Magazine 1: a cutter with arbor, pen and an option feed.
    EXPECT_EQ(contents.Rows.RowText(0), "     1");
    EXPECT_EQ(Cell(1, ListColumn::ToolKind), "CUT");
    EXPECT_EQ(Cell(1, ListColumn::ToolDia), "10.0");
    EXPECT_EQ(Cell(1, ListColumn::ToolName), "D10 R0.5 carbide");
    EXPECT_EQ(Cell(1, ListColumn::Arbor), Str("Str11"));
    EXPECT_EQ(Cell(1, ListColumn::Pen), "1");
    EXPECT_EQ(Cell(1, ListColumn::Option), Str("Str31"));
    // Shift shown with its sign and up to three decimals.
    EXPECT_EQ(Cell(3, ListColumn::Shift), "0.05");
    EXPECT_EQ(Cell(12, ListColumn::Shift), "-0.02");
    EXPECT_EQ(Cell(3, ListColumn::Arbor), Str("Str13"));
    // An empty position keeps only its number.
    for (int column = 1; column < ListColumnCount; ++column) {
        EXPECT_EQ(Cell(5, static_cast<ListColumn>(column)), "") << column;
    }
    // A ball shows half its diameter as corner radius; a taper tool shows
    // no diameter; a flat end mill no corner radius.
    EXPECT_EQ(Cell(6, ListColumn::CornerRad), "3.0");
    EXPECT_EQ(Cell(8, ListColumn::ToolDia), "");
    EXPECT_EQ(Cell(8, ListColumn::CornerRad), "0.5");
    EXPECT_EQ(Cell(9, ListColumn::CornerRad), "");
    EXPECT_EQ(Cell(18, ListColumn::CornerRad), "");
    // Names are cut to 20 characters; the Windows-1252 byte is decoded.
    EXPECT_EQ(Cell(10, ListColumn::ToolName), "D12 flat rougher HSS");
    EXPECT_EQ(Cell(18, ListColumn::ToolName), "\xC3\x98"
                                              "20 x 4 T-slot");
}

TEST_F(Rows, NamesAreDecodedFromTheCodePageAndCutByCharactersNotBytes)
{
    struct Case
    {
        int codePage;
        std::string bytes;
        std::string shown;
    };
    const Case cases[] = {
        {1252, "\xE4\xF6\xFC" + std::string(20, 'x'),
         "\xC3\xA4\xC3\xB6\xC3\xBC" + std::string(17, 'x')},
        {932, "\x8D\x48\x8B\xEF" + std::string(20, 'x'),
         "\xE5\xB7\xA5\xE5\x85\xB7" + std::string(18, 'x')},
        // UTF-8 bytes are what the code page makes of them, as in the CAM system.
        {1252, "\xC3\x98", "\xC3\x83\xCB\x9C"},
    };
    ws.Table.InitialMagazine = 1;
    Slot(0).ToolKind = KindFla;
    for (const Case &c : cases) {
        ws.Globals.CodePage = c.codePage;
        Slot(0).ToolComment = c.bytes;

        ASSERT_TRUE(FillToolList(ws, contents));

        EXPECT_EQ(Cell(1, ListColumn::ToolName), c.shown) << c.codePage;
    }
}

TEST(FormatSingle, RoundsHalfAwayFromZeroOnTheShortestDecimalText)
{
    const std::tuple<float, const char *, const char *> cases[] = {
        {1.0005f, "##0.0##", "1.001"},
        {9.9996f, "##0.0##", "10.0"},
        {-2, "##0.0", "-2.0"},
        {-0.0001f, "##0.0##", "0.0"},
        {0.125f, "##0.00", "0.13"},
        {0.05f, "##0.0", "0.1"},
        {1234.5678f, "##0.0##", "1234.568"},
        {std::numeric_limits<float>::quiet_NaN(), "##0.0", "0.0"},
    };
    for (const auto &[value, picture, text] : cases) {
        EXPECT_EQ(FormatSingle(value, picture), text) << value << " " << picture;
    }
}

TEST_F(Rows, DefaultArborBoxNamesTheTypeOrNone)
{
    ws.Table.InitialMagazine = 1;
    for (std::int16_t type : {0, 1, 2, 3, 7}) {
        ws.Table.DefaultArborType = type;

        ASSERT_TRUE(FillToolList(ws, contents));

        EXPECT_EQ(contents.DefaultArbor,
                  type >= 1 && type <= 3 ? Str("Str1" + std::to_string(type)) : Str("Str14"))
            << type;
    }
}

} // namespace
} // namespace qor::test
