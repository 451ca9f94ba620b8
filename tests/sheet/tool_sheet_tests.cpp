#include "listing_fixture.h"
#include "param_string.h"
#include "tool_kinds.h"
#include "tool_sheet.h"

namespace qor::test {
namespace {

class ToolSheetTest : public Listing
{};

// One tool per case: how its overview row reads.
struct RowCase
{
    std::int16_t kind;
    std::array<float, 3> diaCornerLength;
    std::int16_t lengthMode;
    std::array<const char *, SheetColumnCount> cells;
};

TEST_F(ToolSheetTest, OverviewRowsShowEachKindAsTheListDoesWithTheLengths)
{
    // Ball: half its diameter as corner radius; taper: no diameter; flat: no corner radius;
    // corner rounding: no length. The overall length is Len1 when a length is defined.
    const RowCase cases[] = {
        {KindBal,
         {10, 0, 20},
         0,
         {"1", "BAL", "10.0", "5.0", "20.0", "", "ARBOR2", "-0.25", "3", "b"}},
        {KindTap, {4, 0.5f, 30}, 1, {"2", "TAP", "", "0.5", "30.0", "80.0", "", "", "", "t"}},
        {KindFla, {12, 1, 26}, 2, {"3", "FLA", "12.0", "", "26.0", "80.0", "", "", "", "f"}},
        {KindRad, {16, 3, 9}, 0, {"4", "RAD", "16.0", "3.0", "", "", "", "", "", "r"}},
    };
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        ToolSlot &tool = Slot(static_cast<int>(i));
        tool.ToolKind = cases[i].kind;
        tool.ToolDia = cases[i].diaCornerLength[0];
        tool.CornerRad = cases[i].diaCornerLength[1];
        tool.ToolLength = cases[i].diaCornerLength[2];
        tool.LengthMode = cases[i].lengthMode;
        tool.Len[0] = 80;
        tool.ToolComment = cases[i].cells[9];
    }
    Slot(0).ArborMode = 2;
    Slot(0).ShiftOn = 1;
    Slot(0).ShiftValue = -0.25f;
    Slot(0).PenNo = 3;
    ws.Table.CurrentSlot = 7;

    const ToolSheet sheet = MakeToolSheet(ws, "Atc.ttl", "2026-11-25 14:03");

    ASSERT_EQ(sheet.rows.size(), std::size(cases));
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        SCOPED_TRACE(cases[i].cells[1]);
        std::array<std::string, SheetColumnCount> expected;
        std::copy(cases[i].cells.begin(), cases[i].cells.end(), expected.begin());
        EXPECT_EQ(sheet.rows[i].cells, expected);
    }
    EXPECT_EQ(ws.Table.CurrentSlot, 7);
    EXPECT_EQ(sheet.headings[0], ws.Text("frmList", "Text21"));
    EXPECT_EQ(sheet.headings[9], ws.Text("frmList", "Text25"));
    EXPECT_EQ(PageNumberText(sheet, 2, 7), "Page 2 of 7");
}

TEST_F(ToolSheetTest, ABlockHoldsTheListSummaryItsOptionFeedsAndItsLimit)
{
    ToolSlot &tool = Slot(4);
    tool.ToolKind = KindCut;
    tool.ToolDia = 10;
    tool.ToolLength = 22;
    tool.ToolComment = "D10 \xE9"; // é in code page 1252
    tool.OptFeedOn[1] = 1;
    tool.OptFeedPos[1] = {0, 10, 22, 5}; // ends where a breakpoint falls back
    tool.OptFeedVal[1] = {100, 80};
    tool.LimitFlags = 2 | LimitFourValues | LimitPVariant;
    tool.LimitValues = {1, 2, 3, 4};

    const ToolSheet sheet = MakeToolSheet(ws, "Atc.ttl", "");

    ASSERT_EQ(sheet.tools.size(), 1u);
    const SheetToolBlock &block = sheet.tools[0];
    EXPECT_EQ(block.slot, 4);
    EXPECT_EQ(block.heading, "Magazine 5   CUT   D10 \xC3\xA9");
    ws.Table.CurrentSlot = 4;
    std::string summary;
    for (const std::string &line : block.summary) {
        summary += (summary.empty() ? "" : "\r\n") + line;
    }
    EXPECT_EQ(summary, MakeParamString(ws));
    EXPECT_EQ(block.feeds, std::vector<std::string>{"Option feed V:  0 to 10: 100;  10 to 22: 80"});
    EXPECT_EQ(block.limits, std::vector<std::string>{"Limits: LIMITS, P output"});
}

TEST(SheetScale, TheLargestStandardScaleThatFits)
{
    struct Case
    {
        double width, height, boxWidth, boxHeight, scale;
        const char *text;
    } const cases[] = {
        {4, 10, 50, 60, 5.0, "5:1"},    {10, 40, 50, 60, 1.0, "1:1"},
        {10, 70, 50, 60, 0.5, "1:2"},   {20, 250, 50, 60, 0.2, "1:5"},
        {30, 590, 50, 60, 0.1, "1:10"}, {300, 2900, 50, 60, 0.02, "1:50"},
    };
    for (const Case &c : cases) {
        const double scale = ChooseSheetScale(c.width, c.height, c.boxWidth, c.boxHeight);
        EXPECT_DOUBLE_EQ(scale, c.scale) << c.width << " x " << c.height;
        EXPECT_EQ(ScaleRatioText(scale), c.text);
    }
}

} // namespace
} // namespace qor::test
