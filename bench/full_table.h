#pragma once

#include "tool_table.h"

#include <string>

namespace qor::bench {

// Numbers of up to six significant digits that vary from tool to tool, so
// that the text is as long as in a real file.
inline float Value(int slot, int field)
{
    return static_cast<float>((slot * 7919 + field * 104729) % 1000000) / 1000.0f;
}

// Every position filled with every item a tool can carry.
inline ToolTable FullTable()
{
    ToolTable table;
    SizeToolTable(table, 32767);
    table.KindNames = {"", "CUT", "BAL", "TAP", "FLA", "BUL", "VER", "KEG", "OVA", "RAD", "T-T"};
    table.DefaultArborType = 1;
    table.DefaultArbor.Dia = {40, 50};
    table.DefaultArbor.Len = {20, 30};
    for (int s = 0; s < table.MagazineMax; ++s) {
        ToolSlot &tool = table.Slots[static_cast<std::size_t>(s)];
        tool.ToolKind = static_cast<std::int16_t>(s % KindCount);
        tool.ToolDia = Value(s, 1);
        tool.CornerRad = Value(s, 2);
        tool.Param3 = Value(s, 3);
        tool.Param4 = Value(s, 4);
        tool.Param5 = Value(s, 5);
        tool.Param6 = Value(s, 6) + 1;
        tool.Param7 = Value(s, 7) + 1;
        tool.ToolLength = Value(s, 8);
        tool.LengthMode = 3;
        for (int i = 0; i < LengthValueCount; ++i) {
            tool.Len[i] = Value(s, 10 + i);
        }
        tool.ArborMode = 3;
        for (int i = 0; i < ArborSectionCount; ++i) {
            tool.Arbor.Dia[i] = 10.0f + static_cast<float>(i) * 2.5f + Value(s, 20) / 1000.0f;
            tool.Arbor.Len[i] = Value(s, 30 + i);
            tool.Arbor.Flag[i] = static_cast<std::uint8_t>(i % 2);
        }
        tool.ShiftOn = 1;
        tool.ShiftValue = Value(s, 40);
        tool.PenNo = static_cast<std::int16_t>(1 + s % 16);
        for (int letter = 0; letter < OptFeedLetterCount; ++letter) {
            tool.OptFeedOn[letter] = 1;
            for (int k = 0; k < OptFeedPointCount; ++k) {
                tool.OptFeedPos[letter][k] = static_cast<float>(k) * 12.5f + Value(s, 50) / 1000.0f;
            }
            for (int k = 0; k < OptFeedValueCount; ++k) {
                tool.OptFeedVal[letter][k] = Value(s, 60 + k);
            }
        }
        tool.LimitFlags = 2 | LimitFourValues;
        tool.LimitValues = {Value(s, 80), Value(s, 81), Value(s, 82), Value(s, 83)};
        tool.ToolComment = "End mill no. " + std::to_string(s + 1);
    }
    return table;
}

} // namespace qor::bench
