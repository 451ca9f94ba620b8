#include "listing_fixture.h"
#include "row_filter.h"
#include "row_order.h"

#include <algorithm>
#include <numeric>

namespace qor::test {
namespace {

// Eight positions: seven tools and, at 6, none.
class FindAndSort : public Listing
{
protected:
    void SetUp() override
    {
        Listing::SetUp();
        ws.Table.InitialMagazine = 1;
        Put(1, KindBal, 10, 0, "Ball 10 carbide");
        Put(2, KindFla, 6, 0, "FLAT 6 HSS");
        Put(3, KindBul, 6, 0.5f, "Bull 6 R0.5");
        Slot(2).ShiftOn = 1;
        Slot(2).ShiftValue = 1.5f;
        Slot(2).PenNo = 3;
        Put(4, KindTap, 8, 0.5f, "taper");  // shows no diameter
        Put(5, KindCut, 9.9996f, 0.5f, ""); // shows 10.0
        Put(7, KindBal, 1, 0, "ball 1");    // shows 0.5 as its radius
        Put(8, KindKeg, 6, 0, "scriber");
        ws.Table.Slots.resize(8);
        FillToolList(ws, contents);
    }

    void Put(int magazine, std::int16_t kind, float dia, float corner, std::string name)
    {
        ToolSlot &tool = Slot(magazine - 1);
        tool.ToolKind = kind;
        tool.ToolDia = dia;
        tool.CornerRad = corner;
        tool.ToolComment = std::move(name);
    }

    // The magazine numbers the query shows.
    std::vector<int> Found(std::string_view query) const
    {
        const std::vector<bool> matches = RowFilter(query).MatchAll(contents.Rows);
        std::vector<int> found;
        for (std::size_t row = 0; row < matches.size(); ++row) {
            if (matches[row]) {
                found.push_back(static_cast<int>(row) + 1);
            }
        }
        return found;
    }

    // The magazine numbers in the order the list sorted by `column` shows.
    std::vector<int> Sorted(ListColumn column, bool descending) const
    {
        std::vector<int> rows(static_cast<std::size_t>(contents.Rows.RowCount()));
        std::iota(rows.begin(), rows.end(), 0);
        std::sort(rows.begin(), rows.end(),
                  [&](int a, int b) { return RowBefore(contents.Rows, a, b, column, descending); });
        for (int &row : rows) {
            ++row;
        }
        return rows;
    }

    ToolListContents contents;
};

TEST_F(FindAndSort, QueriesShowTheRowsThatMatchEveryTerm)
{
    const std::vector<std::pair<std::string_view, std::vector<int>>> cases = {
        {"", {1, 2, 3, 4, 5, 6, 7, 8}},
        {"D<", {1, 2, 3, 4, 5, 6, 7, 8}}, // still being typed
        {"bal", {1, 7}},                  // the kind word, in any case
        {"CARBIDE", {1}},                 // a part of the name
        {"fla", {2}},
        {"flat hss", {2}},
        {"6", {2, 3, 8}}, // a diameter; position 6 holds no tool
        {"3", {3}},       // magazine number and pen
        {"1.5", {3}},     // the shift
        {"10", {1, 5}},   // 9.9996 shows as 10.0
        {"0,5", {3, 4, 5, 7}},
        {"D<10", {2, 3, 7, 8}},
        {"d < 10", {2, 3, 7, 8}},
        {"Ｄ＜１０", {2, 3, 7, 8}}, // as a Japanese input method types it
        {"D>=6", {1, 2, 3, 5, 8}},
        {"D!=6", {1, 5, 7}}, // a blank diameter fails every condition
        {"R=0.5", {3, 4, 5, 7}},
        {"r <= 0,5 d>=6", {3, 5}},
        {"D<x", {}},
        {"bal d>5", {1}},
        {"nothing", {}},
    };
    for (const auto &[query, expected] : cases) {
        EXPECT_EQ(Found(query), expected) << query;
    }
}

TEST_F(FindAndSort, SortingPutsBlankCellsAndEmptyPositionsLastBothWays)
{
    EXPECT_EQ(Sorted(ListColumn::ToolDia, false), (std::vector<int>{7, 2, 3, 8, 5, 1, 4, 6}));
    EXPECT_EQ(Sorted(ListColumn::ToolDia, true), (std::vector<int>{1, 5, 2, 3, 8, 7, 4, 6}));
    EXPECT_EQ(Sorted(ListColumn::ToolName, false), (std::vector<int>{7, 1, 3, 2, 8, 4, 5, 6}));
    EXPECT_EQ(Sorted(ListColumn::CornerRad, false), (std::vector<int>{3, 4, 5, 7, 1, 2, 8, 6}));
    EXPECT_EQ(Sorted(ListColumn::MagNo, true), (std::vector<int>{8, 7, 6, 5, 4, 3, 2, 1}));
}

} // namespace
} // namespace qor::test
