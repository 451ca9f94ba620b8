#pragma once

#include "tool_kinds.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace qor {

struct Workspace;

// What choosing a kind in the editor does. A mask has eight characters "0" or
// "1"; character i governs Para(i). The availability mask enables boxes
// (showPara), the keep mask decides which values survive a change of kind
// (ParaDefVal): a kind may keep a value it does not let the user edit.
struct KindRule
{
    std::string_view Entry; // key of the kind list entry, section "String"
    std::string_view Availability;
    std::string_view Keep;
    // Captions and tooltips, keys of section "frmEditor"; "" = empty tooltip.
    std::string_view Label5;
    std::string_view Label8;
    std::string_view Label10;
    std::string_view Label15;
    std::string_view TipPara1;
    std::string_view TipPara4;
    std::string_view TipPara6;
    std::string_view TipPara7;
};

// Kind 0 with a negative corner radius also opens Para(3), the step height.
inline constexpr std::string_view CutNegativeAvailability = "11011110";

inline constexpr std::array<KindRule, KindCount> KindRules = {{
    {"Str50", "11001110", "11111111", "Text5", "Text8", "Text10", "Text15-4", "Text92", "Text82",
     "Text84", "Text85-2"},
    {"Str51", "10000010", "11010010", "Text5", "Text8", "Text10", "Text15-4", "", "Text82",
     "Text84", "Text85-2"},
    {"Str52", "01000110", "11010111", "Text5", "Text8", "Text10", "Text15-4", "", "Text82",
     "Text84", "Text85-2"},
    {"Str53", "10000010", "10000010", "Text5", "Text8", "Text10", "Text15-4", "", "Text82",
     "Text84", "Text85-2"},
    {"Str54", "11000010", "11110010", "Text5", "Text8", "Text10", "Text15-4", "Text92", "Text82",
     "Text84", "Text85-2"},
    {"Str55", "10000011", "10000011", "Text5", "Text8", "Text10", "Text15", "", "Text82", "Text84",
     "Text85"},
    {"Str56", "10000010", "10000010", "Text5", "Text8", "Text10", "Text15-4", "", "Text82",
     "Text84", "Text85-2"},
    {"Str57", "11000010", "11000011", "Text5-2", "Text8", "Text10", "Text15-2", "Text92-2",
     "Text82", "Text84", "Text85-2"},
    {"Str58", "11000001", "11000011", "Text5", "Text8", "Text10", "Text15-3", "Text92", "Text82",
     "Text84", "Text85-3"},
    {"Str59", "11001011", "11001011", "Text5-3", "Text8-2", "Text10-2", "Text15-5", "Text92-3",
     "Text82-2", "Text84-2", "Text85-4"},
}};

// True when character i of the mask is set (its numeric value is not 0).
// Characters beyond the mask count as clear.
bool MaskBit(std::string_view mask, int i);

// How many entries the kind list offers: the tenth kind ("T-T") only while
// the workspace offers it.
int KindEntryCount(const Workspace &workspace);

// The kind list's entries, in kind order.
std::vector<std::string> KindListTexts(const Workspace &workspace);

} // namespace qor
