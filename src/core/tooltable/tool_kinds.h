#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace qor {

// The ten tool kinds; the value is what `ToolKind` holds (-1: no tool).
enum ToolKindCode : std::int16_t
{
    KindNone = -1,
    KindCut = 0, // "CUT" general cutter: diameter, corner radius, cone and flank angles
    KindBal = 1, // "BAL" ball end mill
    KindTap = 2, // "TAP" taper tool
    KindFla = 3, // "FLA" flat end mill
    KindBul = 4, // "BUL" bull nose (corner radius) end mill
    KindVer = 5, // "VER" vertical cutter with a ring at the tip
    KindKeg = 6, // "KEG" scribing tool
    KindOva = 7, // "OVA" oval (elliptic) tip
    KindRad = 8, // "RAD" corner rounding cutter
    KindTT = 9,  // "T-T" T-slot cutter
};

inline constexpr int KindCount = 10;

// The three-letter words the reader recognises, in code order. The writer
// takes its words from the catalogue (`KindNames`), which holds the same.
inline constexpr std::array<std::string_view, KindCount> KindWords = {
    "CUT", "BAL", "TAP", "FLA", "BUL", "VER", "KEG", "OVA", "RAD", "T-T"};

// The code of a three-letter word (compared as given: callers upper-case).
std::optional<std::int16_t> KindOfWord(std::string_view word);

} // namespace qor
