#include "recording_surface.h"
#include "tool_drawing.h"
#include "tool_forms.h"
#include "tool_profiles.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <ostream>
#include <tuple>
#include <vector>

namespace qor::test {
namespace {

constexpr double Near = 1e-6;

// One end of a drawn line or arc, with the unit direction in which the primitive leaves it.
struct End
{
    std::size_t primitive;
    double x, y, dx, dy;
};

std::vector<End> EndsOf(const RecordingSurface &s)
{
    std::vector<End> ends;
    for (std::size_t i = 0; i < s.Primitives().size(); ++i) {
        const RecordedPrimitive &p = s.Primitives()[i];
        if (p.kind == RecordedPrimitive::Kind::Line) {
            const double n = std::hypot(p.x2 - p.x1, p.y2 - p.y1);
            ends.push_back({i, p.x1, p.y1, (p.x2 - p.x1) / n, (p.y2 - p.y1) / n});
            ends.push_back({i, p.x2, p.y2, (p.x1 - p.x2) / n, (p.y1 - p.y2) / n});
        } else if (p.kind == RecordedPrimitive::Kind::Arc) {
            const SurfaceArc &a = p.arc;
            double sx, sy, ex, ey;
            RecordingSurface::ArcEnds(a, sx, sy, ex, ey);
            for (const auto &[t, sign, x, y] : {std::tuple(a.startAngle, 1.0, sx, sy),
                                                std::tuple(a.startAngle + a.sweep, -1.0, ex, ey)}) {
                const double dx = -a.rx * std::sin(t) * sign, dy = a.ry * std::cos(t) * sign;
                ends.push_back({i, x, y, dx / std::hypot(dx, dy), dy / std::hypot(dx, dy)});
            }
        }
    }
    return ends;
}

bool Meet(const End &a, const End &b)
{
    return a.primitive != b.primitive && std::hypot(a.x - b.x, a.y - b.y) < Near;
}

// A tool: its name, kind, Para boxes, length mode and boxes, and whether every arc runs into its
// neighbours without a kink.
struct ToolCase
{
    const char *name;
    int kind;
    const char *para;
    int mode;
    const char *lengths;
    bool smooth;
};

void PrintTo(const ToolCase &tool, std::ostream *out)
{
    *out << tool.name;
}

class Outline : public testing::TestWithParam<ToolCase>
{};

// What a machinist relies on when looking at the picture of any sane tool.
TEST_P(Outline, IsSymmetricClosedFromTipToLengthAndInsideThePicture)
{
    const auto &[name, kind, para, mode, lengths, smooth] = GetParam();
    Workspace ws = WorkspaceWithTool();
    EditorForm form = FormOf({.kind = kind, .para = para, .lengthMode = mode, .lengths = lengths});
    RecordingSurface s(800, 600);
    ASSERT_TRUE(RedrawTool(ws, form, s)); // writes the derived values, as in the editor
    const ToolPicture picture = DrawTool(ws, form, s);
    s.Clear();
    DrawProfile(s, picture.Inputs, picture.View.value()); // the outline alone

    EXPECT_EQ(s.RefusedCalls(), 0);
    const double top = double(picture.Inputs.DrawLength) * picture.View->s + picture.View->oy;
    const std::vector<End> ends = EndsOf(s);
    int open = 0;
    for (const End &a : ends) {
        const auto where = testing::Message() << "at (" << a.x << ", " << a.y << ")";
        EXPECT_TRUE(std::any_of(ends.begin(), ends.end(),
                                [&](const End &b) {
                                    return std::hypot(a.x + b.x, a.y - b.y) +
                                               std::hypot(a.dx + b.dx, a.dy - b.dy) <
                                           Near;
                                }))
            << "no mirror image " << where;
        bool met = false, kinkless = false;
        for (const End &b : ends) {
            met = met || Meet(a, b);
            kinkless = kinkless || (Meet(a, b) && std::hypot(a.dx + b.dx, a.dy + b.dy) < Near);
        }
        open += met ? 0 : 1;
        EXPECT_TRUE(met || std::abs(a.y - top) < Near) << "loose " << where;
        if (smooth && s.Primitives()[a.primitive].kind == RecordedPrimitive::Kind::Arc) {
            EXPECT_TRUE(kinkless) << "a kink " << where;
        }
    }
    EXPECT_EQ(open, 2) << "open only at the top, where the tool goes into its holder";
    const Bounds box = s.BoundingBox().value();
    EXPECT_NEAR(box.top, top, Near);
    EXPECT_GE(box.bottom, picture.View->oy - Near) << "nothing below the tip";
    EXPECT_LE(box.right, s.ScaleWidth() / 2);
    EXPECT_GE(box.bottom, s.ScaleHeight() / 2);

    // Only the tip (a face across, an arc about a point on the axis) goes across the axis;
    // everything else keeps to one side of it.
    const auto side = [](double x) { return x > Near ? 1 : x < -Near ? 2 : 0; };
    for (const RecordedPrimitive &p : s.Primitives()) {
        int sides = 0;
        if (p.kind == RecordedPrimitive::Kind::Line && std::abs(p.y1 - p.y2) > Near) {
            sides = side(p.x1) | side(p.x2);
            EXPECT_NE(sides, 0) << "along the axis at y " << p.y1 << " to " << p.y2;
        } else if (p.kind == RecordedPrimitive::Kind::Arc && std::abs(p.arc.cx) > Near) {
            for (int k = 0; k <= 32; ++k) {
                sides |=
                    side(p.arc.cx + p.arc.rx * std::cos(p.arc.startAngle + p.arc.sweep * k / 32));
            }
        }
        EXPECT_NE(sides, 3) << "across the axis at y " << p.y1 << " to " << p.y2;
    }
}

INSTANTIATE_TEST_SUITE_P(
    TypicalTools, Outline,
    testing::Values(
        ToolCase{"FlankNeckShoulder", KindCut, "10 0.5 0 0 0 1.5 25 0", 2, "60 10 35 30 0 0", true},
        ToolCase{"RoundedConeAndFlank", KindCut, "10 0.5 0 0 45 5 20 0", 2, "55 12 30 45 0 0",
                 true},
        ToolCase{"DrillPoint", KindCut, "8 0 0 0 31 0 40 0", 1, "50 0 0 0 0 0", true},
        ToolCase{"HollowCorner", KindCut, "12 -1.5 0 3 0 0 25 0", 0, "50 0 0 0 0 0", false},
        ToolCase{"BallTaperedNeck", KindBal, "6 3 0 0 0 0 10 0", 3, "60 10 4 30 20 12", true},
        ToolCase{"TaperIntoShank", KindTap, "0 0.5 0 0 0 10 10 0", 2, "60 8 40 90 0 0", true},
        ToolCase{"HollowRing", KindVer, "10 0 0 0 0 0 15 0.5", 1, "50 0 0 0 0 0", true},
        ToolCase{"OvalTip", KindOva, "12 3 0 0 0 0 20 6", 0, "50 0 0 0 0 0", true},
        ToolCase{"NarrowOvalTip", KindOva, "12 2 0 0 0 0 20 4", 1, "50 0 0 0 0 0", false},
        ToolCase{"RoundingShallow", KindRad, "16 3 0 0 0 0 0 0.5", 1, "50 0 0 0 0 0", false},
        ToolCase{"RoundingPilot", KindRad, "16 3 0 0 0 0 0 4", 2, "50 12 25 45 0 0", false},
        ToolCase{"TSlotCutter", KindTT, "20 0.4 0 0 0 0 25 5", 2, "70 16 45 90 0 0", true},
        ToolCase{"FaceMill45", KindTT, "40 0.8 0 0 45 0 5 5", 1, "50 0 0 0 0 0", true},
        ToolCase{"ChamferMill", KindTT, "20 0.5 0 0 45 0 5 12", 1, "50 0 0 0 0 0", true},
        ToolCase{"BackTaper", KindCut, "10 2 0 0 0 -10 30 0", 1, "80 0 0 0 0 0", true},
        ToolCase{"BackTaperCone", KindCut, "10 1 0 0 30 -20 30 0", 1, "80 0 0 0 0 0", true},
        ToolCase{"DovetailOnNeck", KindCut, "20 1 0 0 0 -30 6 0", 2, "70 16 30 45 0 0", true},
        ToolCase{"SteepFlank", KindCut, "10 2 0 0 0 60 40 0", 1, "50 0 0 0 0 0", true},
        ToolCase{"HollowWiderThanTool", KindCut, "10 -8 0 0 0 0 30 0", 1, "80 0 0 0 0 0", false},
        ToolCase{"Lollipop", KindTap, "0 1 0 0 0 -10 30 0", 1, "80 0 0 0 0 0", true}),
    [](const testing::TestParamInfo<ToolCase> &info) { return std::string(info.param.name); });

// The profiles in tool units: scale 1, origin at the tip.
class Profile : public testing::Test
{
protected:
    static DrawInputs Inputs(const ToolBoxes &tool)
    {
        return GatherDrawInputs(WorkspaceWithTool(), FormOf(tool));
    }

    bool HasLine(double x1, double y1, double x2, double y2) const
    {
        for (const LineSegment &l : s.Lines()) {
            if (std::hypot(l.x1 - x1, l.y1 - y1) + std::hypot(l.x2 - x2, l.y2 - y2) < Near) {
                return true;
            }
        }
        return false;
    }

    RecordingSurface s{1000, 1000, 25.4};
    const ViewTransform unit{1.0f, 0.0f, 0.0f};
};

TEST_F(Profile, FlatEndMillHasATipLineAcrossAndBallEndMillTwoQuarterArcsMeetingOnTheAxis)
{
    DrawGeneralProfile(s, Inputs({.kind = KindFla}), unit);

    EXPECT_TRUE(HasLine(-5, 0, 5, 0) && HasLine(5, 0, 5, 50) && HasLine(-5, 0, -5, 50));
    EXPECT_EQ(s.Lines().size(), 3u);
    EXPECT_TRUE(s.Arcs().empty());

    s.Clear();
    DrawGeneralProfile(s, Inputs({.kind = KindBal, .para = "10 5 0 5 0 0 20 0"}), unit);

    ASSERT_EQ(s.Arcs().size(), 2u);
    for (const SurfaceArc &arc : s.Arcs()) {
        EXPECT_DOUBLE_EQ(arc.radius, 5.0);
        EXPECT_NEAR(arc.sweep, std::numbers::pi / 2, 1e-12);
        double sx, sy, ex, ey;
        RecordingSurface::ArcEnds(arc, sx, sy, ex, ey);
        EXPECT_NEAR(std::min(std::hypot(sx, sy), std::hypot(ex, ey)), 0.0, 1e-12);
    }
    EXPECT_TRUE(HasLine(5, 5, 5, 50) && HasLine(-5, 5, -5, 50));
    EXPECT_EQ(s.Lines().size(), 2u) << "no tip flat";
}

TEST_F(Profile, WithoutANeckTheBodyRisesStraightFromTheFlutesANarrowingOneFromHalfTheDiameter)
{
    // The outline's last line, up to L = 80: from the flute length Lc = 30 at the width the
    // flank reached there, or from where a narrowing flank met the neck of half the diameter.
    const std::tuple<int, const char *, double, double> cases[] = {
        {KindCut, "10 2 0 0 0 10 30 0", 5 + 30 * std::tan(10 * std::numbers::pi / 180), 30},
        {KindCut, "10 2 0 0 0 -10 30 0", 2.5, 2.5 / std::tan(10 * std::numbers::pi / 180)},
        // A taper tool is as wide at the top of its flutes as R / cos θ + (Lc − R) tan θ.
        {KindTap, "1.9923894 1 0 0 0 5 30 0", 3.5410, 30},
    };
    for (const auto &[kind, para, x, y] : cases) {
        s.Clear();

        DrawGeneralProfile(s, Inputs({.kind = kind, .para = para, .lengths = "80 0 0 0 0 0"}),
                           unit);

        const LineSegment top = s.Lines().back();
        EXPECT_NEAR(std::abs(top.x1), x, 1e-4) << para;
        EXPECT_NEAR(top.y1, y, 1e-4) << para;
        EXPECT_NEAR(top.x2, top.x1, Near) << para;
        EXPECT_NEAR(top.y2, 80, Near) << para;
    }
}

TEST_F(Profile, ANegativeRadiusHollowsTheCornerOfEveryGeneralKind)
{
    for (int kind : {KindCut, KindBal, KindTap, KindFla, KindBul, KindKeg}) {
        s.Clear();
        DrawProfile(s, Inputs({.kind = kind, .para = "10 -1.5 0 3 0 0 20 0"}), unit);

        // Centred on the diameter, half way up the corner step of height 3.
        ASSERT_EQ(s.Arcs().size(), 2u) << kind;
        EXPECT_DOUBLE_EQ(std::abs(s.Arcs()[0].cx), 5.0) << kind;
        EXPECT_DOUBLE_EQ(s.Arcs()[0].cy, 1.5) << kind;
    }
}

TEST_F(Profile, CornerRoundingCutterEndingAboveItsRadiusHasAPilot)
{
    DrawRadiusProfile(s, Inputs({.kind = KindRad, .para = "16 3 0 0 0 0 0 4"}), unit);

    EXPECT_TRUE(HasLine(2, 0, 2, 1) && HasLine(-2, 0, -2, 1)) << "pilot of radius D/2 - 2R";
    EXPECT_TRUE(HasLine(5, 4, 8, 4)) << "land from the round out to the diameter";
}

TEST_F(Profile, ShankRunsThroughNeckTaperStageAndShoulderToTheLength)
{
    // LENGTH3: L 60, shank 12, neck taper 5°, shoulder 30° from the axis, N2 20, Nt 8.
    const DrawInputs in = Inputs({.lengthMode = 3, .lengths = "60 12 5 30 20 8"});

    const ProfileEnd end = DrawShank(s, in, unit, {3, 10}, 0.0);

    const double taper = 3 + 8 * std::tan(5 * std::numbers::pi / 180);
    const double shoulder = 28 + (6 - taper) / std::tan(30 * std::numbers::pi / 180);
    EXPECT_TRUE(HasLine(3, 10, 3, 20) && HasLine(3, 20, taper, 28));
    EXPECT_TRUE(HasLine(taper, 28, 6, shoulder) && HasLine(6, shoulder, 6, 60));
    EXPECT_EQ(s.Lines().size(), 8u);
    EXPECT_DOUBLE_EQ(end.x, 6.0);
    EXPECT_DOUBLE_EQ(end.y, 60.0);
}

} // namespace
} // namespace qor::test
