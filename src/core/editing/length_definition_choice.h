#pragma once

#include "editor_rules.h"
#include "message_service.h"

namespace qor {

// The length-definition list LenDef: chooses a position (the slot's
// LengthMode 0..3), enables its boxes, sets the captions of ShN and ShNb,
// remembers the position in keepLD and draws once; nothing is drawn in
// between. A position outside 0..3 shows "program error!!" with the critical
// icon and changes nothing; returns false then.
//
// ShN is the one box whose meaning changes: a neck length N1 below position 3,
// the neck's taper angle Tn at position 3 (see length_definition.h). keepLD
// tells what it holds, and crossing into or out of position 3 converts it
// with d = (ShD - Para(0)) / 2, how far the neck has to widen to reach the
// shank:
//   into 3:   a straight neck ShT (N2) kept from before ends below N1, so the
//             neck widens from N2 to N1: Tn = atan(d / (N1 - N2)) in whole
//             degrees (below 90). With nothing to widen Tn = 0 and the
//             straight neck takes N1, so the outline stays as it was.
//   out of 3: the neck ends where the taper reaches the shank diameter:
//             N1 = N2 + d / tan(Tn), a whole number; with Tn = 0 or d <= 0 the
//             neck ends at the top of the taper stage, N1 = N2 + ShTb.
// Into 2 or 3 from 0 or 1, an empty shank diameter becomes the tool diameter
// and an empty neck length the flute length Para(6). A neck that the
// conversion makes longer than Length raises Length to it.
bool ChooseLengthDefinition(EditorRules &rules, int position, MessageService &messages);

// Whole-number helpers of the conversion, rounding by adding 0.5 and taking
// the integer part. The run of a slope: rise / tan(degrees); empty unless
// 0 < degrees < 90, rise > 0 and the result is below 1e7.
std::optional<double> WholeRunOfAngle(double degrees, double rise);
// The angle of a slope in degrees: atan(rise / run), at most 89; empty
// unless rise > 0 and run > 0.
std::optional<double> WholeAngleOfSlope(double rise, double run);

} // namespace qor
