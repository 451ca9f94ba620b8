#include "draw_inputs.h"

#include "numeric_text.h"

namespace qor {
namespace {

float Box(const EditorForm &form, LengthBox box)
{
    return DrawValue(form.Lengths[static_cast<std::size_t>(box)]);
}

float Radians(float degrees)
{
    return static_cast<float>(degrees * DegreesToRadians);
}

// No arbor and no length definition: the tool's length is unknown, so it is drawn long enough
// to look like the tool, 7 diameters or twice the flutes, at most 150 unless the tool is so thick
// that 3 diameters are more.
void ApplyDefaultDrawingLength(DrawInputs &in)
{
    in.ArborDrawOn = false;
    float t = 7.0f * in.DrawDia;
    if (2.0f * in.Lc > t) {
        t = 2.0f * in.Lc;
    }
    if (t > 150.0f) {
        t = 150.0f;
    }
    if (3.0f * in.DrawDia > t) {
        t = 3.0f * in.DrawDia;
    }
    in.ArborStyle = 0;
    in.DrawSecDia.fill(0.0f);
    in.DrawSecLen.fill(0.0f);
    in.DrawSecFlag.fill(0);
    if (in.DrawLength < t) {
        in.DrawLength = t;
    }
}

} // namespace

std::string_view ZeroIfSign(std::string_view text)
{
    return text == "-" || text == "." ? std::string_view("0") : text;
}

float DrawValue(const TextBox &box)
{
    return ToSingle(ZeroIfSign(box.Text)).value_or(0.0f);
}

DrawInputs GatherDrawInputs(const Workspace &workspace, const EditorForm &form)
{
    DrawInputs in;
    in.Kind = form.Tool.Index;
    in.MagNo = ToInt16(ZeroIfSign(form.MagNo.Text)).value_or(0);
    in.ArborOnly = workspace.ArborOnlyMode;

    in.DrawDia = DrawValue(form.Para[0]);
    in.DrawRad = DrawValue(form.Para[1]);
    in.Q3 = DrawValue(form.Para[2]);
    in.Q4 = DrawValue(form.Para[3]);
    in.Q5 = Radians(DrawValue(form.Para[4]));
    in.Theta = Radians(DrawValue(form.Para[5]));
    in.Lc = DrawValue(form.Para[6]);
    in.P = DrawValue(form.Para[7]);

    in.LengthMode = form.LenDef.Index >= 0 && form.LenDef.Index <= 3 ? form.LenDef.Index : 0;
    in.DrawLength = Box(form, BoxLength);
    if (in.LengthMode >= 2) {
        in.ShankDia = Box(form, BoxShD);
        in.ShoulderAngle = Radians(Box(form, BoxShNb));
        if (in.LengthMode == 3) {
            in.NeckTaper = Radians(Box(form, BoxShN));
            in.NeckLength2 = Box(form, BoxShT);
            in.TaperLength = Box(form, BoxShTb);
        } else {
            in.NeckLength = Box(form, BoxShN);
        }
    }
    in.DrawShift = DrawValue(form.Shift);

    int style = form.Arbor.Index;
    if (workspace.ArborOnlyMode && style == 0) {
        style = workspace.Table.DefaultArborType;
    }
    if (style > 0) {
        in.ArborDrawOn = true;
        in.ArborStyle = style;
        in.DrawSecDia = form.Sections.Dia;
        in.DrawSecLen = form.Sections.Len;
        in.DrawSecFlag = form.Sections.Flag;
        in.EditorSecDia = form.Sections.Dia;
    } else if (in.LengthMode == 0) {
        ApplyDefaultDrawingLength(in);
    }
    // Without a neck and shank of its own the tool is a plain cylinder of its diameter up to L.
    if (in.LengthMode < 2) {
        in.NeckLength = in.DrawLength;
        in.ShankDia = in.DrawDia;
    }
    return in;
}

} // namespace qor
