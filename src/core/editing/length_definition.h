#pragma once

#include <array>

namespace qor {

// The editor's six length boxes and what they carry. Box k (in the order
// below) holds Len(k+1) of the slot, whatever the length mode; the mode only
// decides which boxes are in use and what two of them mean.
//
//   box     slot  mode 1 "LENGTH/"  mode 2 "LENGTH2/"          mode 3 "LENGTH3/"
//   Length  Len1  overall length L  L                          L
//   ShD     Len2  -                 shank diameter Ds          Ds
//   ShN     Len3  -                 neck length N1             neck taper angle Tn (degrees, < 90)
//   ShNb    Len4  -                 shoulder angle (degrees)   shoulder angle (degrees, <= 90)
//   ShT     Len5  -                 -                          straight neck length N2
//   ShTb    Len6  -                 -                          tapered neck length Nt
//
// L runs from the tool tip to the base of the arbor. The neck is the part
// between the flutes and the shank: one straight stage up to N1 (mode 2), or
// a straight stage up to N2 followed by a stage of length Nt that widens at
// the angle Tn from the axis (mode 3). The shoulder is the step from the neck
// out to the shank diameter, at its angle from the axis (90 is a square step).
// The file writes mode 2 as L, N1, shoulder, Ds (Len1, Len3, Len4, Len2) and
// mode 3 as L, shoulder, Nt, Tn, N2, Ds (Len1, Len4, Len6, Len3, Len5, Len2).
enum LengthBox
{
    BoxLength = 0,
    BoxShD = 1,
    BoxShN = 2,
    BoxShNb = 3,
    BoxShT = 4,
    BoxShTb = 5
};

inline constexpr int LengthBoxCount = 6;

inline constexpr std::array<const char *, LengthBoxCount> LengthBoxNames = {
    "Length", "ShD", "ShN", "ShNb", "ShT", "ShTb"};

// Which boxes a length-definition position (= LengthMode 0..3) enables. Below
// mode 2 the tool is drawn as a plain cylinder of the tool diameter up to L.
inline constexpr std::array<std::array<bool, LengthBoxCount>, 4> LengthBoxesInUse = {{
    {true, false, false, false, false, false}, // 0: none
    {true, false, false, false, false, false}, // 1: "LENGTH/"
    {true, true, true, true, false, false},    // 2: "LENGTH2/"
    {true, true, true, true, true, true},      // 3: "LENGTH3/"
}};

} // namespace qor
