#include "row_order.h"

namespace qor {

namespace {

char Lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

int CompareTexts(std::string_view a, std::string_view b)
{
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        const auto x = static_cast<unsigned char>(Lower(a[i]));
        const auto y = static_cast<unsigned char>(Lower(b[i]));
        if (x != y) {
            return x < y ? -1 : 1;
        }
    }
    return a.size() < b.size() ? -1 : a.size() > b.size() ? 1 : 0;
}

// 0 for a cell with a value, 1 for a blank cell of a tool, 2 for a position
// without a tool.
int Rank(const ToolListRows &rows, int row, ListColumn column)
{
    if (!rows.HasTool(row)) {
        return 2;
    }
    if (IsNumberColumn(column)) {
        return rows.Number(row, column) ? 0 : 1;
    }
    return rows.Text(row, column).empty() ? 1 : 0;
}

} // namespace

bool RowBefore(const ToolListRows &rows, int a, int b, ListColumn column, bool descending)
{
    if (column == ListColumn::MagNo) {
        return descending ? a > b : a < b;
    }
    const int rankA = Rank(rows, a, column);
    const int rankB = Rank(rows, b, column);
    if (rankA != rankB) {
        return rankA < rankB;
    }
    int order = 0;
    if (rankA == 0) {
        if (IsNumberColumn(column)) {
            const double x = *rows.Number(a, column);
            const double y = *rows.Number(b, column);
            order = x < y ? -1 : x > y ? 1 : 0;
        } else {
            order = CompareTexts(rows.Text(a, column), rows.Text(b, column));
        }
    }
    if (order != 0) {
        return descending ? order > 0 : order < 0;
    }
    return a < b;
}

} // namespace qor
