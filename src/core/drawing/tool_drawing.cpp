#include "tool_drawing.h"

#include "geometry.h"
#include "numeric_text.h"
#include "recording_surface.h"
#include "tool_kinds.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace qor {
namespace {

// EditorBusy for the span of one redraw, cleared on every way out.
class BusyScope
{
public:
    explicit BusyScope(bool &flag) : m_flag(flag) { m_flag = true; }
    ~BusyScope() { m_flag = false; }
    BusyScope(const BusyScope &) = delete;
    BusyScope &operator=(const BusyScope &) = delete;

private:
    bool &m_flag;
};

// The boxes whose values follow from others, written back before drawing.
class DerivedWriter
{
public:
    DerivedWriter(EditorForm &form, const FormChangeListener &changed)
        : m_form(form), m_changed(changed)
    {}

    float Value(int i) const { return DrawValue(Box(i)); }

    void Write(int i, float value) { Write(i, SingleToText(value)); }

    void Write(int i, std::string text)
    {
        if (Box(i).Text != text) {
            Change(i, [&] { Box(i).Text = std::move(text); });
        }
    }

    void Enable(int i, bool on)
    {
        if (Box(i).Enabled != on) {
            Change(i, [&] { Box(i).Enabled = on; });
        }
    }

private:
    TextBox &Box(int i) const { return m_form.Para[static_cast<std::size_t>(i)]; }

    template <typename Edit> void Change(int i, Edit edit)
    {
        m_form.DerivedWrite = true;
        edit();
        if (m_changed) {
            m_changed({FormPart::Para, i});
        }
        m_form.DerivedWrite = false;
    }

    EditorForm &m_form;
    const FormChangeListener &m_changed;
};

void WriteDerivedValues(EditorForm &form, const FormChangeListener &changed)
{
    DerivedWriter para(form, changed);
    const int kind = form.Tool.Index;
    switch (kind) {
    case KindBal:
        para.Write(1, para.Value(0) / 2.0f);
        para.Write(2, "0");
        para.Write(3, para.Value(1));
        break;
    case KindTap: {
        // A taper tool's diameter is where its flank leaves the tip ball, which its tip radius
        // and taper angle fix; where they describe no tool the box keeps what it holds.
        float diameter = 0.0f;
        if (TaperDiameter(para.Value(1), para.Value(5), diameter) == GeoOk) {
            para.Write(0, diameter);
        }
        para.Write(2, "0");
        para.Write(3, para.Value(1));
        break;
    }
    case KindBul:
        para.Write(3, std::abs(para.Value(1)));
        para.Write(2, para.Value(0) / 2.0f - std::abs(para.Value(1)));
        break;
    default:
        break;
    }

    // A hollow corner is never taller than its step.
    if (para.Value(1) < 0.0f && std::abs(para.Value(1)) >= para.Value(3)) {
        para.Write(3, std::abs(para.Value(1)));
    }

    if (kind == KindCut) {
        if (para.Value(1) >= 0.0f) {
            para.Enable(3, false);
            para.Write(3, para.Value(0) / 2.0f - para.Value(1));
            para.Enable(4, true);
            para.Enable(5, true);
        } else {
            para.Enable(3, true);
            para.Enable(4, false);
            para.Enable(5, false);
            para.Write(4, "0");
            para.Write(5, "0");
        }
    }
    if (kind == KindCut || kind == KindTap) {
        para.Enable(7, para.Value(5) >= 0.0f);
    }
}

// How wide the profile is drawn, across the axis: a flank leaning outwards, a tip ball or an
// oval tip can reach beyond D. The outline is drawn at scale 1 onto a recording and measured.
float OutlineDiameter(const DrawInputs &in)
{
    RecordingSurface outline(1, 1, 25.4);
    DrawProfile(outline, in, {1.0f, 0.0f, 0.0f});
    const std::optional<Bounds> box = outline.BoundingBox();
    return box ? static_cast<float>(2.0 * std::max(box->right, -box->left)) : 0.0f;
}

void Segment(PictureSurface &surface, double x1, double y1, double x2, double y2)
{
    if (x1 != x2 || y1 != y2) {
        surface.Line(x1, y1, x2, y2);
    }
}

} // namespace

void DrawProfile(PictureSurface &surface, const DrawInputs &in, const ViewTransform &view)
{
    switch (in.Kind) {
    case KindVer:
        DrawVerProfile(surface, in, view);
        break;
    case KindOva:
        DrawOvalProfile(surface, in, view);
        break;
    case KindRad:
        DrawRadiusProfile(surface, in, view);
        break;
    case KindTT:
        DrawTTProfile(surface, in, view);
        break;
    default:
        if (in.DrawRad >= 0.0f) {
            DrawGeneralProfile(surface, in, view);
        } else {
            DrawConcaveProfile(surface, in, view);
        }
        break;
    }
}

bool FitScale(const DrawInputs &in, double width, double height, ViewTransform &view)
{
    float total = in.DrawLength;
    for (float length : in.DrawSecLen) {
        total += length;
    }
    // The comparison reads the editor's copy of the diameters and the assignment takes the
    // drawing input, on purpose; both come from the form's working sections, so they agree.
    float widest = in.DrawDia;
    if (in.MagNo >= 1) {
        widest = std::max(widest, OutlineDiameter(in));
    }
    for (int i = 0; i < ArborSectionCount; ++i) {
        if (in.EditorSecDia[static_cast<std::size_t>(i)] > widest) {
            widest = in.DrawSecDia[static_cast<std::size_t>(i)];
        }
    }
    const float w = static_cast<float>(width);
    const float h = static_cast<float>(height);
    const float a = total / h;
    const float b = widest / w;
    float s = b < a ? h / total : w / widest;
    s *= 0.95f;
    const float oy = -total * s / 2.0f;
    if (!std::isfinite(s) || !(s > 0.0f) || !std::isfinite(oy)) {
        return false;
    }
    view = {s, 0.0f, oy};
    return true;
}

bool FixedScale(const DrawInputs &in, ViewTransform &view)
{
    float shown = in.DrawLength;
    for (int i = 0; i < 4; ++i) {
        shown += in.DrawSecLen[static_cast<std::size_t>(i)];
    }
    const float oy = -shown / 2.0f;
    if (!std::isfinite(oy)) {
        return false;
    }
    view = {1.0f, 0.0f, oy};
    return true;
}

void DrawArbor(PictureSurface &surface, const DrawInputs &in, const ViewTransform &view)
{
    if (!in.ArborDrawOn) {
        return;
    }
    if (!in.ArborOnly) {
        surface.SetDrawWidth(2);
    }
    const double s = view.s;
    const double ox = view.ox;
    float height = in.DrawLength;
    double yb = height * s + view.oy;
    float previous = 0.0f;
    double r = 0.0;
    double rt = 0.0;
    bool drawn = false;
    for (std::size_t i = 0; i < ArborSectionCount; ++i) {
        const float dia = in.DrawSecDia[i];
        // A zero diameter ends the list; so does a section narrower than the one below it.
        if (!(dia > 0.0f) || dia < previous) {
            break;
        }
        const double below = r;
        r = dia / 2.0 * s;
        height += in.DrawSecLen[i];
        const double yt = height * s + view.oy;
        double rb = r;
        rt = r;
        if (in.ArborStyle == 2) {
            rb = below; // a cone from the section below (from the axis for the first)
        } else if (in.ArborStyle == 3 && in.DrawSecFlag[i] != 0) {
            rt = in.DrawSecDia[i + 1] / 2.0 * s; // tapers to the next section's diameter
        }
        Segment(surface, ox - rb, yb, ox + rb, yb);
        Segment(surface, ox + rb, yb, ox + rt, yt);
        Segment(surface, ox - rb, yb, ox - rt, yt);
        previous = dia;
        yb = yt;
        drawn = true;
    }
    if (drawn) {
        Segment(surface, ox - rt, yb, ox + rt, yb);
    }
}

ToolPicture DrawTool(const Workspace &workspace, const EditorForm &form, PictureSurface &surface)
{
    ToolPicture picture;
    picture.Inputs = GatherDrawInputs(workspace, form);
    DrawInputs &in = picture.Inputs;
    if (!workspace.ArborOnlyMode) {
        surface.SetDrawWidth(2);
    }
    const double width = std::abs(surface.ScaleWidth());
    const double height = std::abs(surface.ScaleHeight());
    surface.SetScale(-width / 2.0, height / 2.0, width / 2.0, -height / 2.0);
    if (in.MagNo <= 0) {
        in.DrawLength = 0.0f; // the arbor alone, from the tip's height
    }
    ViewTransform view;
    const bool scaled =
        form.ViewScale.Index == 0 ? FitScale(in, width, height, view) : FixedScale(in, view);
    if (!scaled) {
        return picture;
    }
    picture.View = view;
    if (in.MagNo >= 1) {
        DrawProfile(surface, in, view);
    }
    DrawArbor(surface, in, view);
    surface.PSet(view.ox, in.DrawShift * view.s + view.oy, RgbRed);
    return picture;
}

bool RedrawTool(Workspace &workspace, EditorForm &form, PictureSurface &surface,
                const FormChangeListener &changed)
{
    if (workspace.DrawSuppressed || workspace.EditorBusy || workspace.DrawHold) {
        return false;
    }
    const int slot = workspace.Table.CurrentSlot;
    if (slot < 0 || static_cast<std::size_t>(slot) >= workspace.Table.Slots.size()) {
        return false;
    }
    surface.Clear();
    if (!workspace.Table.Slots[static_cast<std::size_t>(slot)].HasTool() &&
        workspace.ArborOnlyMode) {
        return false;
    }
    BusyScope busy(workspace.EditorBusy);
    if (ToInt16(ZeroIfSign(form.MagNo.Text)).value_or(0) > 0) {
        WriteDerivedValues(form, changed);
    }
    DrawTool(workspace, form, surface);
    return true;
}

} // namespace qor
