#pragma once

#include "workspace.h"

#include <string>

namespace qor {

// The parameter summary of the tool at the table's CurrentSlot, for the list
// window's Param box: "" for an empty position or a slot outside the table.
//
// Entries are a label (a "String" text filled with blanks to 10 columns)
// followed by the value with the picture "##0.0", each entry padded to 20
// columns and laid out two to a line, in three groups that each start a
// line: the kind's shape values, the length definition, the limit. A label or
// an entry that fills its column is followed by one blank. Columns are those
// of a fixed-pitch font: kana, kanji and full-width forms take two. The limit
// is one line of its own (its four values with "##0.00", "----" for those
// not set) followed by the output variant indented by 20 blanks, under the
// values. Lines end in CR LF, the last one without.
std::string MakeParamString(const Workspace &workspace);

} // namespace qor
