#pragma once

#include "workspace.h"

#include <string>

namespace qor::bench {

// A workspace with the largest magazine, every position holding a tool with
// a comment, an arbor, a shift, a pen and an option feed, and the names the
// catalogue would give.
inline void FillWorkspace(Workspace &ws)
{
    SizeToolTable(ws.Table, 32767);
    ws.Globals.MagazineMax = 32767;
    ws.Table.InitialMagazine = 1;
    ws.Table.KindNames = {"----", "CUT", "BAL", "TAP", "FLA", "BUL",
                          "VER",  "KEG", "OVA", "RAD", "T-T"};
    ws.Table.ArborTypeNames = {"None", "ARBOR", "ARBOR2", "ARBOR3"};
    for (int s = 0; s < ws.Table.MagazineMax; ++s) {
        ToolSlot &tool = ws.Table.Slots[static_cast<std::size_t>(s)];
        tool.ToolKind = static_cast<std::int16_t>(s % KindCount);
        tool.ToolDia = static_cast<float>(s % 997) / 7.0f;
        tool.CornerRad = static_cast<float>(s % 89) / 13.0f;
        tool.ToolComment = "tool number " + std::to_string(s) + " carbide 4F long reach";
        tool.ArborMode = static_cast<std::int16_t>(s % 4);
        tool.ShiftOn = 1;
        tool.ShiftValue = static_cast<float>(s % 50) / 100.0f;
        tool.PenNo = static_cast<std::int16_t>(1 + s % 16);
        tool.OptFeedOn[s % OptFeedLetterCount] = 1;
    }
}

} // namespace qor::bench
