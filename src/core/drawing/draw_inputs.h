#pragma once

#include "editor_form.h"
#include "tool_table.h"
#include "workspace.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace qor {

// Degrees to radians with the constant the tool file's angles were always converted with.
inline constexpr double DegreesToRadians = 3.14159265358979 / 180.0;

// Everything one drawing of the tool reads, taken from the editor's boxes. Lengths are in the
// tool file's unit, y along the axis from the tip towards the arbor. Filled afresh for every
// drawing; nothing of it outlives the call.
struct DrawInputs
{
    int Kind = -1; // the Tool list position: the kind code, -1 for none
    int MagNo = 0; // whole-number value of MagNo; 0 or less: no tool, the arbor alone
    bool ArborOnly = false;

    float DrawDia = 0; // D, Para(0)
    float DrawRad = 0; // R, Para(1); negative selects the hollow corner
    float Q3 = 0;      // Para(2)
    float Q4 = 0;      // Para(3)
    float Q5 = 0;      // Para(4) in radians: tip cone angle, or the T-T edge angle
    float Theta = 0;   // Para(5) in radians: flank angle from the axis
    float Lc = 0;      // Para(6): flute (cutting) length
    float P = 0;       // Para(7)

    int LengthMode = 0;      // LenDef position 0..3
    float DrawLength = 0;    // L, tip to the base of the arbor
    float ShankDia = 0;      // Ds
    float NeckLength = 0;    // N1, tip to the shoulder (modes 0 to 2; L below mode 2)
    float NeckTaper = 0;     // Tn in radians (mode 3)
    float ShoulderAngle = 0; // radians from the axis; 0 and 90° are a square step
    float NeckLength2 = 0;   // N2, tip to the tapered stage (mode 3)
    float TaperLength = 0;   // Nt, length of the tapered stage (mode 3)
    float DrawShift = 0;

    std::array<float, ArborDiameterCount> DrawSecDia{};
    std::array<float, ArborSectionCount> DrawSecLen{};
    std::array<std::uint8_t, ArborSectionCount> DrawSecFlag{};
    // The editor's own copy of the arbor diameters (its ArbD boxes), which FitScale compares.
    std::array<float, ArborDiameterCount> EditorSecDia{};
    bool ArborDrawOn = false;
    int ArborStyle = 0; // 1 stepped, 2 conical, 3 per-section taper flags
};

// "0" for a box holding only "-" or ".", else the text itself: a half-typed number draws as 0.
std::string_view ZeroIfSign(std::string_view text);

// The value of a box as the drawing reads it: through ZeroIfSign, 0 when not numeric.
float DrawValue(const TextBox &box);

// Reads the form into DrawInputs. The arbor comes from the form's working sections when an arbor
// type is chosen (in ArborOnlyMode, when the form names none, the file-level type is used). With
// neither an arbor nor a length definition the tool is drawn as a plain cylinder of a length
// that suits its diameter and flutes, and no arbor.
DrawInputs GatherDrawInputs(const Workspace &workspace, const EditorForm &form);

} // namespace qor
