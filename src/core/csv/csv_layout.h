#pragma once

#include "tool_table_csv.h"

#include <string_view>

// What the CSV export and import share: which columns each kind fills.
namespace qor::csvlayout {

using namespace csvcol;

constexpr std::string_view Bom = "\xEF\xBB\xBF";
constexpr int LengthValuesOfMode[4] = {0, 1, 4, 6};

// Which shape values (Diameter .. Flute length) each kind's tool line
// carries; Parameter 7 of CUT and TAP only behind a positive Parameter 6.
constexpr int ShapeColumns = FluteLength - Diameter + 1;
constexpr bool KindUses[KindCount][ShapeColumns] = {
    // Dia   Corner P3    P4     P5     P6     P7     Flute
    {true, true, true, true, true, true, true, true},       // CUT
    {true, false, false, false, false, false, false, true}, // BAL
    {false, true, false, false, false, true, true, true},   // TAP
    {true, false, false, false, false, false, false, true}, // FLA
    {true, true, false, false, false, false, false, true},  // BUL
    {true, false, false, false, false, false, true, true},  // VER
    {true, false, false, false, false, false, false, true}, // KEG
    {true, true, false, false, false, false, true, true},   // OVA
    {true, true, false, false, false, false, true, false},  // RAD
    {true, true, false, false, true, false, true, true},    // T-T
};

// The editor's Para(i) of each shape column: Para(6) is the flute length,
// Para(7) Parameter 7.
constexpr int ParaOfShape[ShapeColumns] = {0, 1, 2, 3, 4, 5, 7, 6};

// The shape value of a column from Diameter to Flute length.
template <typename Slot> auto &ToolValue(Slot &tool, int column)
{
    switch (column) {
    case Diameter:
        return tool.ToolDia;
    case CornerRadius:
        return tool.CornerRad;
    case Param3:
        return tool.Param3;
    case Param4:
        return tool.Param4;
    case Param5:
        return tool.Param5;
    case Param6:
        return tool.Param6;
    case Param7:
        return tool.Param7;
    default:
        return tool.ToolLength;
    }
}

inline bool PairKind(int kind)
{
    return kind == KindCut || kind == KindTap;
}

} // namespace qor::csvlayout
