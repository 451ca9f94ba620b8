#pragma once

#include "table_change.h"
#include "workspace.h"

#include <array>
#include <string>

namespace qor {

// What a change did, in a few words for the undo and redo commands ("Move
// tool 3 to 7"): "MSG32-1" .. "MSG32-9" by its kind, with the magazine
// numbers it concerns.
std::string ChangeText(const Workspace &workspace, const TableChange &change);

// The question before a move (or copy) from `from` onto a position `to` that
// holds a tool (slot indices): "MSG33-1" (move) or "MSG33-2" (copy) with both
// magazine numbers.
std::string TargetQuestionText(const Workspace &workspace, ChangeKind kind, int from, int to);

// The answers to that question: swap, replace, cancel ("MSG33-3" .. "MSG33-5").
std::array<std::string, 3> TargetAnswerTexts(const Workspace &workspace);

} // namespace qor
