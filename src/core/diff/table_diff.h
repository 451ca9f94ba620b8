#pragma once

#include "message_catalogue.h"
#include "tool_table.h"

#include <string>
#include <vector>

namespace qor {

// What differs between two tool tables, position by position. Values are
// compared as the tool list file carries them (the cells of the CSV export),
// so comments, the order of items and values the file never writes do not
// count.

struct FieldChange
{
    std::string Field; // the CSV column name, as "Diameter"
    std::string Old;   // "" when the old table has no value there
    std::string New;
};

enum class PositionChange
{
    Added,
    Removed,
    Changed
};

struct PositionDiff
{
    int Magazine = 0; // 1-based; 0 for the file-level values
    PositionChange Change = PositionChange::Changed;
    // Added and Removed: that tool's line as the file writes it, behind
    // "MAGAZINEnn = " (UTF-8).
    std::string Tool;
    std::vector<FieldChange> Fields; // Changed only
};

// The differences from `before` to `after`: first the file-level values
// (initial magazine, file arbor) when they differ, then each position that
// differs, in magazine order. Empty when the tables hold the same. Tool names
// are decoded from `codePage`.
std::vector<PositionDiff> DiffToolTables(const ToolTable &before, const ToolTable &after,
                                         int codePage);

// The words of the listing, from the catalogue (MSG36-1 ...), English by
// default.
struct DiffWords
{
    std::string added = "added";
    std::string removed = "removed";
    std::string same = "no differences";
    std::string empty = "(empty)";
};

DiffWords DiffWordsOf(const MessageCatalogue &catalogue);

// One line a position, as
//   FILE:
//     Initial magazine: 1 -> 2
//   MAGAZINE03: added BAL/10,20
//   MAGAZINE05: removed FLA/6,40,"D6"
//   MAGAZINE07:
//     Diameter: 10 -> 12
// and the words' `same` alone on a line when there is nothing. Lines end in
// "\n".
std::string FormatTableDiff(const std::vector<PositionDiff> &diffs, const DiffWords &words);

} // namespace qor
