#pragma once

#include "tool_table.h"

#include <string>

namespace qor::test {

// The fields in which two tables differ ("slot 3 ToolDia, DefaultArbor"),
// "" when they hold the same; CurrentSlot is left out.
inline std::string TableDifferences(const ToolTable &a, const ToolTable &b)
{
    std::string out;
#define QOR_COMPARE(prefix, x, y, field)                                                           \
    if (!((x).field == (y).field)) {                                                               \
        out += std::string(out.empty() ? "" : ", ") + (prefix) + #field;                           \
    }
    QOR_COMPARE("", a, b, MagazineMax)
    QOR_COMPARE("", a, b, InitialMagazine)
    QOR_COMPARE("", a, b, ForeignFile)
    QOR_COMPARE("", a, b, DefaultArborType)
    QOR_COMPARE("", a, b, DefaultArbor)
    QOR_COMPARE("", a, b, Slots.size())
    for (std::size_t i = 0; i < a.Slots.size() && i < b.Slots.size(); ++i) {
        const ToolSlot &x = a.Slots[i];
        const ToolSlot &y = b.Slots[i];
        const std::string slot = "slot " + std::to_string(i) + " ";
        QOR_COMPARE(slot, x, y, ToolKind)
        QOR_COMPARE(slot, x, y, ToolDia)
        QOR_COMPARE(slot, x, y, CornerRad)
        QOR_COMPARE(slot, x, y, Param3)
        QOR_COMPARE(slot, x, y, Param4)
        QOR_COMPARE(slot, x, y, Param5)
        QOR_COMPARE(slot, x, y, Param6)
        QOR_COMPARE(slot, x, y, ToolLength)
        QOR_COMPARE(slot, x, y, Param7)
        QOR_COMPARE(slot, x, y, LengthMode)
        QOR_COMPARE(slot, x, y, Len)
        QOR_COMPARE(slot, x, y, ArborMode)
        QOR_COMPARE(slot, x, y, Arbor)
        QOR_COMPARE(slot, x, y, OptFeedOn)
        QOR_COMPARE(slot, x, y, OptFeedPos)
        QOR_COMPARE(slot, x, y, OptFeedVal)
        QOR_COMPARE(slot, x, y, ToolComment)
        QOR_COMPARE(slot, x, y, PenNo)
        QOR_COMPARE(slot, x, y, ShiftOn)
        QOR_COMPARE(slot, x, y, ShiftValue)
        QOR_COMPARE(slot, x, y, LimitFlags)
        QOR_COMPARE(slot, x, y, LimitValues)
    }
#undef QOR_COMPARE
    return out;
}

// The slots in which two tables differ, ascending.
inline std::vector<int> DifferentSlots(const ToolTable &a, const ToolTable &b)
{
    std::vector<int> slots;
    for (std::size_t i = 0; i < a.Slots.size() && i < b.Slots.size(); ++i) {
        if (!(a.Slots[i] == b.Slots[i])) {
            slots.push_back(static_cast<int>(i));
        }
    }
    return slots;
}

// A tool with every field set, each value told apart by `seed`, all of them
// as a tool list file can hold them.
inline ToolSlot FullTool(int seed)
{
    const auto v = [seed](int field) { return static_cast<float>(seed * 10 + field) / 4.0f; };
    ToolSlot tool;
    tool.ToolKind = KindCut;
    tool.ToolDia = v(1);
    tool.CornerRad = v(2);
    tool.Param3 = v(3);
    tool.Param4 = v(4);
    tool.Param5 = v(5);
    tool.Param6 = v(6);
    tool.ToolLength = v(7);
    tool.Param7 = v(8);
    tool.LengthMode = 3;
    tool.Len = {v(9), v(10), v(11), v(12), v(13), v(14)};
    tool.ArborMode = 3;
    tool.Arbor.Dia = {20, 30, 40};
    tool.Arbor.Len = {v(15), v(16), v(17)};
    tool.Arbor.Flag = {0, 1, 0};
    tool.OptFeedOn = {1, 0, 0, 1};
    tool.OptFeedPos[0] = {0, 10, 20};
    tool.OptFeedVal[0] = {v(18), v(19)};
    tool.OptFeedPos[3] = {5, 6};
    tool.OptFeedVal[3] = {v(20)};
    tool.ToolComment = "Fr\xE4ser " + std::to_string(seed); // Windows-1252
    tool.PenNo = static_cast<std::int16_t>(1 + seed % 16);
    tool.ShiftOn = 1;
    tool.ShiftValue = v(21);
    tool.LimitFlags = 2 | LimitFourValues | LimitPVariant;
    tool.LimitValues = {v(22), v(23), v(24), v(25)};
    return tool;
}

} // namespace qor::test
