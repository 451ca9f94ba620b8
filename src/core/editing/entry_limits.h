#pragma once

#include "length_definition.h"
#include "tool_kinds.h"

namespace qor {

// The value limits of the editor's boxes, as plain predicates: the boxes
// check typed text with them, and whatever else fills a tool (the CSV import)
// holds its values to the same limits.

// The angle parameters Para(4) and Para(5) (Param5, Param6), the neck taper
// angle ShN of length definition 3 (below 90), and its shoulder angle ShNb
// (up to 90 inclusive).
constexpr bool IsAngle(float value, bool ninetyAllowed)
{
    return value >= 0.0f && (ninetyAllowed ? value <= 90.0f : value < 90.0f);
}

inline constexpr int ParaFirstAngle = 4;
inline constexpr int ParaSecondAngle = 5;

// Para(i) takes a minus sign only as the corner radius (i = 1) of CUT and
// BUL: their hollow corner.
constexpr bool ParaTakesMinus(int index, int kind)
{
    return index == 1 && (kind == KindCut || kind == KindBul);
}

// The length boxes, the arbor lengths and the other shape parameters take
// no minus sign.

// The pens the Pen box accepts: 1 to the supported maximum less one.
constexpr bool PenInRange(int pen, int supportPenMax)
{
    return pen >= 1 && pen <= supportPenMax - 1;
}

} // namespace qor
