#pragma once

#include "numeric_text.h"
#include "tool_table.h"

#include <random>
#include <string>
#include <vector>

namespace qor::test {

// A random table of what the file can carry: values of at most six
// significant digits (so seven written digits read back the same single),
// only the numbers each kind writes, ascending arbor diameters and feed
// breakpoints, Param7 of CUT and TAP behind a positive Param6 only.
inline ToolTable RandomTable(std::mt19937 &random)
{
    auto between = [&](int low, int high) {
        return static_cast<std::int16_t>(std::uniform_int_distribution(low, high)(random));
    };
    auto value = [&] {
        const int thousandths = std::uniform_int_distribution(-999999, 999999)(random);
        return between(0, 3) == 0 ? static_cast<float>(thousandths / 1000)
                                  : static_cast<float>(thousandths) / 1000.0f;
    };
    auto ascending = [&](auto &values, int count, int first) {
        for (int i = 0; i < count; ++i, first += between(0, 30000)) {
            values[i] = static_cast<float>(first) / 1000.0f;
        }
    };
    auto arbor = [&](ArborSections &sections, int type, int count) {
        ascending(sections.Dia, count, between(1, 30000));
        for (int i = 0; i < count; ++i) {
            sections.Len[i] = value();
            sections.Flag[i] = static_cast<std::uint8_t>(type == 3 ? between(0, 255) : 0);
        }
    };
    using T = ToolSlot;
    const std::vector<float T::*> numbersOf[KindCount] = {
        {&T::ToolDia, &T::CornerRad, &T::Param3, &T::Param4, &T::Param5, &T::Param6,
         &T::ToolLength},
        {&T::ToolDia, &T::ToolLength},
        {&T::CornerRad, &T::Param6, &T::ToolLength},
        {&T::ToolDia, &T::ToolLength},
        {&T::ToolDia, &T::CornerRad, &T::ToolLength},
        {&T::ToolDia, &T::Param7, &T::ToolLength},
        {&T::ToolDia, &T::ToolLength},
        {&T::ToolDia, &T::CornerRad, &T::Param7, &T::ToolLength},
        {&T::ToolDia, &T::CornerRad, &T::Param7},
        {&T::ToolDia, &T::ToolLength, &T::CornerRad, &T::Param5, &T::Param7}};
    const std::string letters = "abcXYZ019 ,.;/-+()#*=_'\x80\xA9\xE4\xFF";
    // "LIMITP/" is left out: it reads back as flags 128, which carry no limit.
    constexpr std::uint8_t limitForms[] = {0, 1, 2, 1 | 64, 2 | 64, 2 | 128, 2 | 64 | 128};
    constexpr int lengthCounts[] = {0, 1, 4, 6};

    ToolTable table;
    SizeToolTable(table, between(1, 120));
    table.InitialMagazine = between(0, table.MagazineMax);
    table.DefaultArborType = between(0, 3);
    if (table.DefaultArborType > 0) {
        arbor(table.DefaultArbor, table.DefaultArborType, between(0, ArborSectionCount));
    }
    for (ToolSlot &tool : table.Slots) {
        if (between(1, 10) <= 3) {
            continue;
        }
        tool.ToolKind = between(0, KindCount - 1);
        for (auto field : numbersOf[tool.ToolKind]) {
            tool.*field = value();
        }
        if (tool.Param6 > 0 && between(0, 1)) {
            tool.Param7 = value();
        }
        for (int n = between(-30, 30); n > 0; --n) { // about half get a comment
            tool.ToolComment += letters[between(0, static_cast<int>(letters.size()) - 1)];
        }
        tool.ToolComment = std::string(TrimSpaces(tool.ToolComment));
        tool.LengthMode = between(0, 3);
        for (int i = 0; i < lengthCounts[tool.LengthMode]; ++i) {
            tool.Len[i] = value();
        }
        tool.ArborMode = between(0, 3);
        if (tool.ArborMode > 0) {
            arbor(tool.Arbor, tool.ArborMode, between(1, ArborSectionCount));
        }
        tool.ShiftOn = between(0, 2) == 0;
        tool.ShiftValue = tool.ShiftOn ? value() : 0;
        tool.PenNo = between(0, 1) ? between(1, 32767) : 0;
        for (int letter = 0; letter < OptFeedLetterCount; ++letter) {
            const int count = between(1, 10) <= 4 ? between(1, OptFeedPointCount) : 0;
            tool.OptFeedOn[letter] = count > 0;
            ascending(tool.OptFeedPos[letter], count, between(-1000, 1000) * 100);
            for (int k = 0; k + 1 < count; ++k) {
                tool.OptFeedVal[letter][k] = value();
            }
        }
        tool.LimitFlags = limitForms[between(0, 6)];
        const int limitCount = tool.LimitFlags == 0 ? 0 : tool.LimitFlags & LimitFourValues ? 4 : 1;
        for (int i = 0; i < limitCount; ++i) {
            tool.LimitValues[i] = value();
        }
    }
    return table;
}

} // namespace qor::test
