#include "length_definition_choice.h"

#include "flag_hold.h"
#include "numeric_text.h"

#include <algorithm>
#include <cmath>

namespace qor {
namespace {

// The constant the program has always converted degrees with.
constexpr double Pi = 3.14159265358979;
constexpr double LongestRun = 1e7;
constexpr double SteepestWholeAngle = 89.0;

float Box(const EditorForm &form, LengthBox box)
{
    return BoxValue(form.Lengths[static_cast<std::size_t>(box)]);
}

void Write(EditorRules &rules, LengthBox box, float value)
{
    rules.WriteBox({FormPart::Length, box}, SingleToText(value));
}

// How far the neck has to widen, per side, to reach the shank.
double ShankStep(const EditorForm &form)
{
    return (static_cast<double>(Box(form, BoxShD)) - BoxValue(form.Para[0])) / 2.0;
}

void FillEmptyNeck(EditorRules &rules)
{
    const EditorForm &form = rules.Form();
    if (Box(form, BoxShD) <= 0) {
        Write(rules, BoxShD, BoxValue(form.Para[0]));
    }
    if (Box(form, BoxShN) <= 0 && BoxValue(form.Para[6]) > 0) {
        Write(rules, BoxShN, BoxValue(form.Para[6]));
    }
}

void NeckLengthToTaper(EditorRules &rules)
{
    const EditorForm &form = rules.Form();
    const float neck = Box(form, BoxShN);
    const float straight = Box(form, BoxShT);
    std::optional<double> angle;
    if (straight > 0) {
        angle = WholeAngleOfSlope(ShankStep(form), static_cast<double>(neck) - straight);
    }
    if (!angle || *angle <= 0) {
        angle = 0.0;
        Write(rules, BoxShT, neck);
    }
    Write(rules, BoxShN, static_cast<float>(*angle));
}

void TaperToNeckLength(EditorRules &rules)
{
    const EditorForm &form = rules.Form();
    const float straight = Box(form, BoxShT);
    const std::optional<double> run = WholeRunOfAngle(Box(form, BoxShN), ShankStep(form));
    const float neck =
        run ? static_cast<float>(std::trunc(straight + *run + 0.5)) : straight + Box(form, BoxShTb);
    Write(rules, BoxShN, neck);
}

void KeepNeckWithinLength(EditorRules &rules, int position)
{
    const EditorForm &form = rules.Form();
    float neck = 0;
    if (position == 2) {
        neck = Box(form, BoxShN);
    } else if (position == 3) {
        neck = Box(form, BoxShT) + Box(form, BoxShTb);
    }
    if (neck > Box(form, BoxLength)) {
        Write(rules, BoxLength, neck);
    }
}

} // namespace

std::optional<double> WholeRunOfAngle(double degrees, double rise)
{
    if (!(degrees > 0 && degrees < 90 && rise > 0)) {
        return std::nullopt;
    }
    const double run = std::trunc(rise / std::tan(degrees * Pi / 180.0) + 0.5);
    if (!(run < LongestRun)) {
        return std::nullopt;
    }
    return run;
}

std::optional<double> WholeAngleOfSlope(double rise, double run)
{
    if (!(rise > 0 && run > 0)) {
        return std::nullopt;
    }
    const double angle = std::trunc(std::atan(rise / run) * 180.0 / Pi + 0.5);
    return std::min(angle, SteepestWholeAngle);
}

bool ChooseLengthDefinition(EditorRules &rules, int position, MessageService &messages)
{
    if (position < 0 || position > 3) {
        messages.Show("program error!!", MessageIcon::Critical, MessageButtons::Ok);
        return false;
    }
    EditorForm &form = rules.Form();
    {
        FlagHold hold(rules.Ws().DrawHold);
        // What the boxes held; a mode no list position shows counts as none.
        int before = ToInt16(form.keepLD).value_or(0);
        if (before < 0 || before > 3) {
            before = 0;
        }
        rules.SelectLengthDefinition(position);
        if (before < 2 && position >= 2) {
            FillEmptyNeck(rules);
        }
        if (before != 3 && position == 3) {
            NeckLengthToTaper(rules);
        } else if (before == 3 && position != 3) {
            TaperToNeckLength(rules);
        }
        KeepNeckWithinLength(rules, position);
        if (form.keepLD != std::to_string(position)) {
            form.keepLD = std::to_string(position);
            rules.Report({FormPart::keepLD});
        }
    }
    rules.RequestRedraw();
    return true;
}

} // namespace qor
