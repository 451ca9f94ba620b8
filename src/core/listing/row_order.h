#pragma once

#include "tool_list_rows.h"

namespace qor {

// Whether the list sorted by `column` shows row `a` before row `b`: numbers
// by value, texts by their characters with letters in either case, equal
// cells in magazine order. Sorted by any column but the magazine number,
// tools with a blank cell and then positions without a tool come last, in
// either direction. (A sorting view that turns its "less than" around for
// descending order gets this order from RowBefore(b, a, column, true).)
bool RowBefore(const ToolListRows &rows, int a, int b, ListColumn column, bool descending);

} // namespace qor
