#pragma once

#include "editor_form.h"
#include "tool_table.h"

#include <string>

namespace qor {

// The option feed window's magazine box changed: when its whole value is 1
// or more, the working copy and the four presence switches are reloaded from
// the table's current slot; otherwise nothing changes. Returns true when it
// reloaded.
bool SetOptionFeedMagNo(OptionFeedForm &feed, const ToolTable &table, std::string text);

// Loads the limit window from the table's current slot (frmLimitSet): the
// kind from the low six bits of LimitFlags; with a kind, the output variant,
// the value count and the values (four only with the four-value bit). With
// no kind the values keep what they showed and are only disabled. Nothing
// happens when the current slot lies outside the table.
void frmLimitSet(LimitForm &limit, const ToolTable &table);

// The handlers of the limit window's lists: the enabled states follow the
// chosen entries. The value count list acts only while it is enabled.
void LimitKindClick(LimitForm &limit);
void LimitSetKindClick(LimitForm &limit);

} // namespace qor
