#pragma once

#include "draw_inputs.h"
#include "picture_surface.h"

namespace qor {

// Where a tool point lands in the picture: (x·s + ox, y·s + oy), x across the axis, y along it
// from the tip towards the arbor.
struct ViewTransform
{
    float s = 1.0f;
    float ox = 0.0f;
    float oy = 0.0f;
};

// A point of the right half of the outline, in tool units (not picture units).
struct ProfileEnd
{
    double x = 0.0;
    double y = 0.0;
};

// The outline routines. Each draws the right half of the tool and its mirror image, from the tip
// up, and ends with DrawShank, whose end point (normally at x = Ds/2, y = L) it returns. Values
// a real tool cannot have are drawn as the nearest shape that makes sense (a corner radius larger
// than the corner, an angle of 90° or more); nothing is ever drawn from a NaN or an infinity.
//
// Kinds CUT, BAL, TAP, FLA, BUL, KEG with R >= 0. D is the diameter where the flank meets the tip
// face (or the tip cone); for TAP, where the flank touches the tip ball, which puts the ball on
// the axis. R rounds the corner between tip and flank; θ (Para 5) tilts the flank outwards from
// the axis as it rises (a negative θ narrows it: the flank then stops narrowing at a neck of half
// the diameter and goes straight up, it never crosses the axis); Q5 (Para 4, between 0 and 90°)
// raises the tip into a cone at that angle from the tip face, rounded with R at the point and at
// the shoulder where it meets the flank. The flank runs up to the flute length Lc.
ProfileEnd DrawGeneralProfile(PictureSurface &surface, const DrawInputs &in,
                              const ViewTransform &view);

// The same kinds with R < 0: a hollow (concave) corner of radius |R| cut into the corner of the
// tip. The tip face reaches D/2 − |R|; a straight step rises from there to Q4 − |R|; the quarter
// round of radius |R| about (D/2, Q4 − |R|) meets the side at height Q4 (Para 3, the height of
// the corner step, at least |R|); the side runs up to Lc. A hollow of |R| >= D/2 leaves no tip
// face and no step: the rounds of both sides meet in a point on the axis at the tip.
ProfileEnd DrawConcaveProfile(PictureSurface &surface, const DrawInputs &in,
                              const ViewTransform &view);

// VER: a hollow cutter that cuts with a ring of width P (Para 7) at the tip. The ring face runs
// from D/2 − P to D/2, the side up to Lc; the hollow inside the ring, (D/2 − P) / 3 deep, is
// drawn with thin lines.
ProfileEnd DrawVerProfile(PictureSurface &surface, const DrawInputs &in, const ViewTransform &view);

// OVA: the tip is the lower half of an ellipse centred on the axis at height R, with the
// horizontal semi-axis P (Para 7, "half width") and the vertical semi-axis R (Para 1, "half
// height"); a half width below D/2 steps out to the side at height R; the side runs from R to Lc.
ProfileEnd DrawOvalProfile(PictureSurface &surface, const DrawInputs &in,
                           const ViewTransform &view);

// RAD: a corner rounding cutter. The cutting edge is a concave quarter round of radius R whose
// upper end lies at height P (Para 7) at D/2 − R, from where a flat land runs out to D/2 and the
// side goes up. With P <= R the round is cut off by the tip face, which ends where it meets the
// round; with P > R a straight pilot of radius D/2 − 2R rises P − R from the tip face to where
// the round begins.
ProfileEnd DrawRadiusProfile(PictureSurface &surface, const DrawInputs &in,
                             const ViewTransform &view);

// T-T: an indexable insert cutter. The inserts form a disc of diameter D and height P (Para 7,
// insert height) at the tip. Its cutting edge rises from the tip face at the edge angle Para 4
// (0: a flat face and a straight side; above 0 a lead edge over the disc's height, as on a face
// or chamfer mill) to the full diameter. R (Para 1) rounds the insert's corners: where the tip
// face turns into the lead edge and where the edge turns into the side. Above the disc a neck of
// half the disc's diameter (no wider than the shank) runs up to the cutting length Lc (Para 6),
// the depth the tool can reach; with Lc <= P there is no neck and the body above the inserts has
// the full diameter.
ProfileEnd DrawTTProfile(PictureSurface &surface, const DrawInputs &in, const ViewTransform &view);

// Continues the outline from `from` (tool units) up to the tool length L. In length modes 2 and 3
// the neck continues the flank at `slope` (x per unit of y) up to N1 (N2 in mode 3); a sloped
// neck that reaches the shank diameter earlier runs into the shank there, and a narrowing one
// stops at half the tool's diameter. Mode 3 adds the taper stage of length Nt widening by
// |tan Tn|·Nt. The shoulder steps to Ds/2 at the shoulder angle from the axis (0 or 90° and more:
// a square step), and the shank walls rise to L. Below mode 2 there is no neck: the body goes
// straight up to L. Returns where the outline stopped.
ProfileEnd DrawShank(PictureSurface &surface, const DrawInputs &in, const ViewTransform &view,
                     ProfileEnd from, double slope);

} // namespace qor
