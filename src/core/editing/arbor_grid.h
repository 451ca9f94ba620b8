#pragma once

#include "editor_rules.h"

#include <string>

namespace qor {

// The arbor-section grid of the editor: ArborRowCount rows over the ten
// working sections, moved by the scroll bar VS1. Typing into a row's boxes
// goes through field_entry.h (the change rule copies a numeric text into the
// working sections); these are the rest.

// The highest value of VS1: the last rows show the last sections.
inline constexpr int ArborGridLast = ArborSectionCount - ArborRowCount;

// ArbDataSet: the grid shows the working sections from its first row on;
// each row's boxes and flag button are reported. Draws nothing.
void ArbDataSet(EditorRules &rules);

// VS1 moved: the grid shows the sections from `first` on (kept within
// 0 .. ArborGridLast). The boxes are refilled only while DrawSuppressed is
// clear, as the arbor rules hold it while they set the grid up themselves.
void ScrollArborGrid(EditorRules &rules, int first);

// ArbFlgB(row): the section's flag turns over (a set flag tapers the section
// to the next diameter, arbor type 3); reported and drawn.
void ArbFlgBClick(EditorRules &rules, int row);

// Whether the flag buttons take clicks: the arbor-editing controls are on and
// the arbor type is the one that reads the flags (3).
bool ArborFlagsInUse(const EditorForm &form);

// The caption of a section's flag button, Str20 (straight) or Str21
// (tapered) as start-up put them into ArborFlagCaptions.
const std::string &ArborFlagCaption(const Workspace &workspace, const EditorForm &form, int row);

// Cancel: the working sections go back to the copy saved at loading or at
// the last store, and the grid shows them.
void CancelArborEdits(EditorRules &rules);

} // namespace qor
