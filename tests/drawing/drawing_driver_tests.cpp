#include "editor_rules.h"
#include "geometry.h"
#include "numeric_text.h"
#include "recording_surface.h"
#include "render_slot.h"
#include "tool_drawing.h"
#include "tool_forms.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <tuple>

namespace qor::test {
namespace {

// Everything drawn as text: kind, ends (of arcs too), radius, width and red of the colour.
std::string Drawn(const RecordingSurface &s)
{
    std::string drawn;
    for (const RecordedPrimitive &p : s.Primitives()) {
        double sx = p.x1, sy = p.y1, ex = p.x2, ey = p.y2;
        if (p.kind == RecordedPrimitive::Kind::Arc) {
            RecordingSurface::ArcEnds(p.arc, sx, sy, ex, ey);
        }
        char text[160];
        std::snprintf(text, sizeof text, "%s%d %g %g %g %g r%g w%d c%d", drawn.empty() ? "" : ", ",
                      int(p.kind), sx, sy, ex, ey, p.arc.radius, p.width, p.colour.red);
        drawn += text;
    }
    return drawn;
}

TEST(DrawTool, FitsToolAndArborIntoThePictureOrDrawsAtTrueSize)
{
    const Workspace ws = WorkspaceWithTool();
    RecordingSurface s(100, 200, 25.4);
    EditorForm form = FormOf({.kind = KindFla});

    const ToolPicture fit = DrawTool(ws, form, s);

    EXPECT_FLOAT_EQ(fit.View.value().s, 3.8f);
    EXPECT_FLOAT_EQ(fit.View->oy, -95.0f);
    EXPECT_NEAR(s.BoundingBox()->bottom, -95.0, 1e-4);
    EXPECT_NEAR(s.BoundingBox()->top, 95.0, 1e-4);

    // True size centres the tool and the first four arbor sections; the fifth runs off the top.
    form.ViewScale.Index = 1;
    form.Arbor.Index = 1;
    form.Sections = {{20, 20, 20, 20, 20}, {10, 20, 30, 40, 50}, {}};
    s.Clear();

    const ToolPicture fixed = DrawTool(ws, form, s);

    EXPECT_FLOAT_EQ(fixed.View.value().s, 1.0f);
    EXPECT_FLOAT_EQ(fixed.View->oy, -75.0f);
    EXPECT_NEAR(s.BoundingBox()->top, 200.0 - 75.0, 1e-4);
}

TEST(GatherDrawInputs, DefaultLengthIsSevenDiametersOrTwiceTheFlutesAtMost150OrThreeDiameters)
{
    const std::tuple<const char *, const char *, const char *, float> cases[] = {
        {"10", "20", "50", 70.0f},
        {"30", "20", "50", 150.0f},
        {"60", "20", "50", 180.0f},
        {"10", "20", "200", 200.0f}, // a longer length wins
    };
    for (const auto &[dia, flutes, length, expected] : cases) {
        ToolBoxes tool{.para = std::string(dia) + " 0 0 0 0 0 " + flutes + " 0", .lengthMode = 0};
        tool.lengths = std::string(length) + " 0 0 0 0 0";
        tool.sections = {{40}, {30}, {}}; // left in the form, but no arbor is chosen

        const DrawInputs in = GatherDrawInputs(WorkspaceWithTool(), FormOf(tool));

        EXPECT_FLOAT_EQ(in.DrawLength, expected) << dia << " " << length;
        EXPECT_FLOAT_EQ(in.NeckLength, expected) << "a plain cylinder";
        EXPECT_FALSE(in.ArborDrawOn);
    }
}

TEST(DrawArbor, DrawsSectionsBottomUpWithAClosingTopLineInEachStyle)
{
    const std::tuple<int, ArborSections, const char *> cases[] = {
        {1,
         {{20, 30}, {10, 20}, {}},
         "-10 5 10 5, 10 5 10 15, -10 5 -10 15, -15 15 15 15, 15 15 15 35, -15 15 -15 35, "
         "-15 35 15 35"},
        // A narrower section ends the list.
        {1, {{40, 30, 50}, {10, 10, 10}, {}}, "-20 5 20 5, 20 5 20 15, -20 5 -20 15, -20 15 20 15"},
        {2,
         {{20, 30}, {10, 20}, {}},
         "0 5 10 15, 0 5 -10 15, -10 15 10 15, 10 15 15 35, -10 15 -15 35, -15 35 15 35"},
        {3,
         {{20, 30}, {10, 20}, {1, 0}},
         "-10 5 10 5, 10 5 15 15, -10 5 -15 15, -15 15 15 15, 15 15 15 35, -15 15 -15 35, "
         "-15 35 15 35"},
    };
    for (const auto &[style, sections, expected] : cases) {
        DrawInputs in;
        in.ArborDrawOn = true;
        in.ArborStyle = style;
        in.DrawLength = 5;
        in.DrawSecDia = sections.Dia;
        in.DrawSecLen = sections.Len;
        in.DrawSecFlag = sections.Flag;
        RecordingSurface s(100, 100, 25.4);

        DrawArbor(s, in, {1.0f, 0.0f, 0.0f});

        std::string lines;
        for (const LineSegment &l : s.Lines()) {
            char text[80];
            std::snprintf(text, sizeof text, "%s%g %g %g %g", lines.empty() ? "" : ", ", l.x1, l.y1,
                          l.x2, l.y2);
            lines += text;
        }
        EXPECT_EQ(lines, expected) << "style " << style;
    }
}

TEST(RedrawTool, ListWindowDrawsTheArborAloneFromTheTipWithTheShiftMarker)
{
    Workspace ws = WorkspaceWithTool();
    ws.ArborOnlyMode = true;
    ws.Table.DefaultArborType = 1; // the list window leaves the form's arbor list alone
    EditorForm form = FormOf({.sections = {{20}, {30}, {}}, .shift = "12"}, "0");
    RecordingSurface s(100, 200, 25.4);
    s.SetDrawWidth(3);

    EXPECT_TRUE(RedrawTool(ws, form, s));

    // The arbor is widest: s = 100 / 20 · 0.95; its base is at the tip's height.
    EXPECT_EQ(Drawn(s), "0 -47.5 -71.25 47.5 -71.25 r0 w3 c0, 0 47.5 -71.25 47.5 71.25 r0 w3 c0, "
                        "0 -47.5 -71.25 -47.5 71.25 r0 w3 c0, 0 -47.5 71.25 47.5 71.25 r0 w3 c0, "
                        "1 0 -14.25 0 0 r0 w3 c255");

    ws.Table.Slots[0].ToolKind = KindNone;
    EXPECT_FALSE(RedrawTool(ws, form, s));
    EXPECT_TRUE(s.Primitives().empty()) << "an empty position stays blank in the list window";
}

TEST(RedrawTool, AHalfTypedNumberDrawsAsZero)
{
    Workspace ws = WorkspaceWithTool();
    RecordingSurface zero(400, 300);
    EditorForm form = FormOf({.lengthMode = 2});
    RedrawTool(ws, form, zero);

    for (std::string half : {"-", "."}) {
        RecordingSurface typed(400, 300);
        EditorForm partly = FormOf({.para = "10 " + half + " 0 0 " + half + " 0 20 0",
                                    .lengthMode = 2,
                                    .lengths = "50 " + half + " " + half + " 0 0 0",
                                    .shift = half});

        RedrawTool(ws, partly, typed);

        EXPECT_EQ(Drawn(typed), Drawn(zero)) << half;
    }
}

TEST(RedrawTool, RefusedWhileGuardedAndBusyForExactlyOneRedrawOnEveryPath)
{
    for (bool Workspace::*guard :
         {&Workspace::DrawSuppressed, &Workspace::EditorBusy, &Workspace::DrawHold}) {
        Workspace ws = WorkspaceWithTool();
        ws.*guard = true;
        EditorForm form = FormOf({});
        RecordingSurface s(100, 100);
        EXPECT_FALSE(RedrawTool(ws, form, s));
        EXPECT_EQ(s.ClearCount(), 0);
    }

    Workspace ws = WorkspaceWithTool();
    EditorForm form = FormOf({.kind = KindBal, .para = "8 0 0 0 0 0 20 0"});
    RecordingSurface s(400, 300);
    int writes = 0;
    EXPECT_TRUE(RedrawTool(ws, form, s, [&](FormField) {
        ++writes;
        EXPECT_TRUE(ws.EditorBusy && form.DerivedWrite);
    }));
    EXPECT_EQ(writes, 2) << "Para(1) and Para(3); Para(2) already held 0";
    EXPECT_FALSE(ws.EditorBusy || form.DerivedWrite);

    // Nothing to scale by, or lengths beyond any number: nothing is drawn and nothing breaks.
    ws.ArborOnlyMode = true;
    for (const ToolBoxes &tool : {ToolBoxes{.para = "0 0 0 0 0 0 0 0"},
                                  ToolBoxes{.arbor = 1, .sections = {{3e38f}, {3e38f, 3e38f}}}}) {
        EditorForm arborOnly = FormOf(tool, "0");
        RecordingSurface blank(400, 300);
        EXPECT_TRUE(RedrawTool(ws, arborOnly, blank));
        EXPECT_EQ(Drawn(blank), "");
        EXPECT_EQ(blank.RefusedCalls(), 0);
        EXPECT_FALSE(ws.EditorBusy);
    }
}

TEST(RedrawTool, WritesTheDerivedValuesBackBeforeDrawingOnlyForAMagazinePosition)
{
    float taper = 0;
    ASSERT_EQ(TaperDiameter(0.5, 3, taper), GeoOk);
    // MagNo, kind, the boxes before and after, and whether Para(3), (4), (5), (7) are enabled.
    const std::tuple<const char *, int, std::string, std::string, const char *> cases[] = {
        {"1", KindBal, "10 1 7 0 0 0 20 0", "10 5 0 5 0 0 20 0", "1111"},
        {"0", KindBal, "10 1 7 0 0 0 20 0", "10 1 7 0 0 0 20 0", "1111"},
        {"1", KindTap, "99 0.5 1 0 0 3 20 2", SingleToText(taper) + " 0.5 0 0.5 0 3 20 2", "1111"},
        {"1", KindCut, "10 1 0 9 30 -2 20 3", "10 1 0 4 30 -2 20 3", "0110"},
        // A hollow corner is never taller than its step.
        {"1", KindCut, "10 -2 0 1 30 5 20 3", "10 -2 0 2 0 0 20 3", "1001"},
    };
    for (const auto &[magNo, kind, before, after, enabled] : cases) {
        Workspace ws = WorkspaceWithTool();
        EditorForm form = FormOf({.kind = kind, .para = before}, magNo);
        RecordingSurface s(400, 300);

        RedrawTool(ws, form, s);

        std::string states;
        for (std::size_t i : {3, 4, 5, 7}) {
            states += form.Para[i].Enabled ? '1' : '0';
        }
        EXPECT_EQ(Texts(form.Para), after) << before;
        EXPECT_EQ(states, enabled) << before;
    }
}

TEST(RenderSlot, DrawsTheSlotAsTheEditorShowsItAndLeavesTheWorkspaceAsItWas)
{
    Workspace ws = WorkspaceWithTool();
    ToolSlot &taper = ws.Table.Slots[1];
    taper.ToolKind = KindTap;
    taper.CornerRad = 0.5f;
    taper.Param6 = 3;
    taper.ToolLength = 20;
    Workspace editing = ws;
    editing.Table.CurrentSlot = 1;
    EditorForm form = FillFormFromSlot(editing, 1);
    RecordingSurface shown(400, 300);
    RedrawTool(editing, form, shown);
    ws.Table.CurrentSlot = 2;
    ws.DrawHold = ws.ArborOnlyMode = true;
    RecordingSurface rendered(400, 300);

    EXPECT_TRUE(RenderSlot(ws, 1, rendered, false));

    EXPECT_TRUE(ws.Table.CurrentSlot == 2 && ws.DrawHold && ws.ArborOnlyMode);
    EXPECT_EQ(ws.Table.Slots[1].ToolDia, 0.0f) << "the derived diameter is drawn, not stored";
    EXPECT_EQ(Drawn(rendered), Drawn(shown));
    EXPECT_EQ(rendered.Arcs().size(), 2u) << "the taper's ball tip";
}

} // namespace
} // namespace qor::test
