#include "editor_rules.h"

#include "code_page.h"
#include "current_slot.h"
#include "feed_limit_forms.h"
#include "flag_hold.h"
#include "kind_table.h"
#include "numeric_text.h"

#include <algorithm>

namespace qor {
namespace {

std::array<float, ParaCount> ParaValuesOf(const ToolSlot &slot)
{
    return {slot.ToolDia, slot.CornerRad, slot.Param3,     slot.Param4,
            slot.Param5,  slot.Param6,    slot.ToolLength, slot.Param7};
}

// Arbor and length-definition lists have four entries; a mode or position
// outside them (which no file read gives) counts as the first entry.
int ListPosition(int mode)
{
    return mode >= 0 && mode <= 3 ? mode : 0;
}

std::string_view AvailabilityOf(int kind, const EditorForm &form)
{
    if (kind == KindCut && BoxValue(form.Para[1]) < 0) {
        return CutNegativeAvailability;
    }
    return KindRules[static_cast<std::size_t>(kind)].Availability;
}

} // namespace

float BoxValue(const TextBox &box)
{
    return ToSingle(box.Text).value_or(0.0f);
}

EditorRules::EditorRules(EditorForm &form, Workspace &workspace) : m_form(form), m_ws(workspace) {}

template <typename T> void EditorRules::Assign(T &target, T value, FormField field)
{
    if (target != value) {
        target = std::move(value);
        Notify(field);
    }
}

void EditorRules::WriteText(TextBox &box, FormField field, std::string text)
{
    Assign(box.Text, std::move(text), field);
}

void EditorRules::Notify(FormField field)
{
    if (m_changed) {
        m_changed(field);
    }
}

bool EditorRules::RequestRedraw()
{
    if (m_ws.DrawSuppressed || m_ws.EditorBusy || m_ws.DrawHold) {
        return false;
    }
    if (m_redraw) {
        m_redraw();
    }
    return true;
}

TextBox *FormBox(EditorForm &form, FormField field)
{
    const auto index = static_cast<std::size_t>(field.Index);
    switch (field.Part) {
    case FormPart::MagNo:
        return &form.MagNo;
    case FormPart::Para:
        return field.Index >= 0 && index < ParaCount ? &form.Para[index] : nullptr;
    case FormPart::Length:
        return field.Index >= 0 && index < LengthBoxCount ? &form.Lengths[index] : nullptr;
    case FormPart::ToolName:
        return &form.ToolName;
    case FormPart::Shift:
        return &form.Shift;
    case FormPart::Pen:
        return &form.Pen;
    default:
        return nullptr;
    }
}

const TextBox *FormBox(const EditorForm &form, FormField field)
{
    return FormBox(const_cast<EditorForm &>(form), field);
}

void EditorRules::WriteBox(FormField field, std::string text)
{
    if (TextBox *box = FormBox(m_form, field)) {
        WriteText(*box, field, std::move(text));
    }
}

void EditorRules::BoxChanged(FormField field)
{
    switch (field.Part) {
    case FormPart::Para:
        if (m_ws.ParaChangeGuard) {
            return;
        }
        break;
    case FormPart::Length:
    case FormPart::Shift:
        break;
    case FormPart::Sections:
        RequestRedraw();
        return;
    default:
        return;
    }
    const TextBox *box = FormBox(m_form, field);
    if (box != nullptr && IsNumeric(box->Text)) {
        RequestRedraw();
    }
}

void EditorRules::SelectKind(int position)
{
    {
        FlagHold hold(m_ws.DrawHold);
        SetKindPosition(position);
    }
    ToolClick();
}

void EditorRules::SetKindPosition(int position)
{
    if (position < 0 || position >= KindEntryCount(m_ws)) {
        position = NoListEntry;
    }
    Assign(m_form.Tool.Index, position, {FormPart::Tool});
}

void EditorRules::ToolClick()
{
    const int kind = m_form.Tool.Index;
    const bool known = kind >= 0 && kind < KindCount;
    {
        // Held over the kind's own writes too (scribing mode, the kind-9
        // defaults), so that choosing a kind draws once.
        FlagHold hold(m_ws.DrawHold);
        if (known) {
            const KindRule &rule = KindRules[static_cast<std::size_t>(kind)];
            showPara(AvailabilityOf(kind, m_form));
            ParaDefVal(rule.Keep);
            Kegaki(kind == KindKeg);
            if (kind == KindOva && BoxValue(m_form.Para[7]) <= 0) {
                WriteText(m_form.Para[7], {FormPart::Para, 7},
                          SingleToText(BoxValue(m_form.Para[0]) / 2.0f));
                WriteText(m_form.Para[1], {FormPart::Para, 1},
                          SingleToText(BoxValue(m_form.Para[7]) / 2.0f));
            }
        }
        Assign(m_form.ThrowCommentVisible, false, {FormPart::Captions});
        if (known) {
            SetCaptions(kind);
        }
        if (kind == KindTT) {
            Assign(m_form.ThrowCommentVisible, true, {FormPart::Captions});
            for (int i : {6, 7}) {
                if (BoxValue(m_form.Para[static_cast<std::size_t>(i)]) == 0) {
                    WriteText(m_form.Para[static_cast<std::size_t>(i)], {FormPart::Para, i}, "10");
                }
            }
        }
    }
    RequestRedraw();
}

void EditorRules::SetCaptions(int kind)
{
    const KindRule &rule = KindRules[static_cast<std::size_t>(kind)];
    const FormField captions{FormPart::Captions};
    Assign(m_form.Label5, rule.Label5, captions);
    Assign(m_form.Label8, rule.Label8, captions);
    Assign(m_form.Label10, rule.Label10, captions);
    Assign(m_form.Label15, rule.Label15, captions);
    Assign(m_form.ParaTips[1], rule.TipPara1, captions);
    Assign(m_form.ParaTips[4], rule.TipPara4, captions);
    Assign(m_form.ParaTips[6], rule.TipPara6, captions);
    Assign(m_form.ParaTips[7], rule.TipPara7, captions);
}

void EditorRules::showPara(std::string_view mask)
{
    for (int i = 0; i < ParaCount; ++i) {
        Assign(m_form.Para[static_cast<std::size_t>(i)].Enabled, MaskBit(mask, i),
               {FormPart::Para, i});
    }
}

void EditorRules::ParaDefVal(std::string_view mask)
{
    FlagHold hold(m_ws.DrawHold);
    for (int i = 0; i < ParaCount; ++i) {
        if (!MaskBit(mask, i)) {
            WriteText(m_form.Para[static_cast<std::size_t>(i)], {FormPart::Para, i}, "0");
        }
    }
}

void EditorRules::Kegaki(bool on)
{
    FlagHold hold(m_ws.DrawHold);
    if (on) {
        Assign(m_form.Arbor.Index, 0, {FormPart::Arbor});
        Assign(m_form.Arbor.Enabled, false, {FormPart::Arbor});
        Assign(m_form.LenDef.Index, 0, {FormPart::LenDef});
        ApplyLengthDefinition();
        Assign(m_form.keepLD, std::string("0"), {FormPart::keepLD});
        Assign(m_form.LenDef.Enabled, false, {FormPart::LenDef});
        Check1Click(false);
        Assign(m_form.Check1.Enabled, false, {FormPart::Check1});
        Assign(m_form.Command1Enabled, false, {FormPart::Command1});
    } else {
        Assign(m_form.Arbor.Enabled, true, {FormPart::Arbor});
        Assign(m_form.LenDef.Enabled, true, {FormPart::LenDef});
        Assign(m_form.Check1.Enabled, true, {FormPart::Check1});
        Assign(m_form.Command1Enabled, true, {FormPart::Command1});
    }
    ApplyArbor();
}

void EditorRules::SelectLengthDefinition(int position)
{
    {
        FlagHold hold(m_ws.DrawHold);
        Assign(m_form.LenDef.Index, position, {FormPart::LenDef});
        ApplyLengthDefinition();
    }
    RequestRedraw();
}

void EditorRules::ApplyLengthDefinition()
{
    FlagHold hold(m_ws.DrawHold);
    const int position = ListPosition(m_form.LenDef.Index);
    for (int k = 0; k < LengthBoxCount; ++k) {
        Assign(m_form.Lengths[static_cast<std::size_t>(k)].Enabled,
               LengthBoxesInUse[static_cast<std::size_t>(position)][static_cast<std::size_t>(k)],
               {FormPart::Length, k});
    }
    // Position 3 turns ShN into the taper angle of the neck.
    const bool taper = position == 3;
    Assign(m_form.ShNLabel, std::string_view(taper ? "Text88" : "Text25"), {FormPart::Captions});
    Assign(m_form.ShNbLabel, std::string_view(taper ? "Text90" : "Text27"), {FormPart::Captions});
}

void EditorRules::SelectArbor(int position)
{
    {
        FlagHold hold(m_ws.DrawSuppressed);
        Assign(m_form.Arbor.Index, position, {FormPart::Arbor});
        ApplyArbor();
    }
    RequestRedraw();
}

void EditorRules::ApplyArbor()
{
    ArbEdit(m_form.Arbor.Index > 0 && m_form.Arbor.Enabled);
}

void EditorRules::ArbEdit(bool on)
{
    FlagHold hold(m_ws.DrawSuppressed);
    Assign(m_form.ArbEditEnabled, on, {FormPart::Sections});
}

void EditorRules::RestoreSavedSections()
{
    {
        FlagHold hold(m_ws.DrawSuppressed);
        Assign(m_form.Sections, m_form.SavedSections, {FormPart::Sections});
    }
    RequestRedraw();
}

void EditorRules::SelectViewScale(int position)
{
    m_form.ViewScale.Index = position;
    RequestRedraw();
}

void EditorRules::Check1Click(bool checked)
{
    const bool moved = !checked && m_form.Shift.Text != "0";
    {
        FlagHold hold(m_ws.DrawHold);
        Assign(m_form.Check1.Checked, checked, {FormPart::Check1});
        if (!checked) {
            WriteText(m_form.Shift, {FormPart::Shift}, "0");
        }
        Assign(m_form.Shift.Enabled, checked, {FormPart::Shift});
    }
    if (moved) {
        RequestRedraw(); // the shift marker goes back to the tip
    }
}

void EditorRules::Check2Click(bool checked)
{
    FlagHold hold(m_ws.DrawHold);
    Assign(m_form.Check2.Checked, checked, {FormPart::Check2});
    Assign(m_form.Pen.Enabled, checked, {FormPart::Pen});
}

void EditorRules::SetMagNo(std::string text)
{
    WriteText(m_form.MagNo, {FormPart::MagNo}, std::move(text));
    MagNoChange();
}

void EditorRules::ShowMagazine(std::string text)
{
    if (text == m_form.MagNo.Text && m_loaded && *m_loaded == WhatTableHolds()) {
        return;
    }
    SetMagNo(std::move(text));
}

EditorRules::Loaded EditorRules::WhatTableHolds() const
{
    Loaded now{m_form.MagNo.Text, m_ws.ArborEdit, {}, 0, {}};
    if (ToInt16(m_form.MagNo.Text).value_or(0) == 0) {
        if (m_ws.ArborEdit) {
            now.ArborType = m_ws.Table.DefaultArborType;
            now.Arbor = m_ws.Table.DefaultArbor;
        }
    } else if (const ToolSlot *slot = CurrentSlotOf(m_ws.Table)) {
        now.Slot = *slot;
    }
    return now;
}

void EditorRules::MagNoChange()
{
    m_loaded = WhatTableHolds();
    const int n = ToInt16(m_form.MagNo.Text).value_or(0);
    // 1001 is reserved: it reloads the editor alone and leaves the option
    // feed and limit windows as they are.
    if (n != 1001) {
        SetOptionFeedMagNo(m_form.OptionFeed, m_ws.Table, m_form.MagNo.Text);
        Notify({FormPart::OptionFeed});
        frmLimitSet(m_form.Limit, m_ws.Table);
        Notify({FormPart::Limit});
    }
    if (n == 0) {
        if (m_ws.ArborEdit) {
            LoadFileArbor();
        }
        return;
    }
    const ToolSlot *slot = CurrentSlotOf(m_ws.Table);
    if (slot == nullptr) {
        return;
    }
    {
        FlagHold busy(m_ws.EditorBusy);
        ArbEdit(false);
        if (slot->HasTool()) {
            LoadSlot(*slot);
        } else {
            DataIniSet();
        }
        Assign(m_form.ArborFrame, std::string_view("Text51"), {FormPart::Captions});
    }
    if (!m_ws.ArborOnlyMode) {
        RequestRedraw();
    }
}

void EditorRules::LoadSlot(const ToolSlot &slot)
{
    SetKindPosition(slot.ToolKind);
    ToolClick();

    const int kind = m_form.Tool.Index;
    const std::array<float, ParaCount> values = ParaValuesOf(slot);
    // A kind the list does not offer shows every value, so that nothing is
    // hidden from the user.
    const std::string_view keep =
        kind >= 0 ? KindRules[static_cast<std::size_t>(kind)].Keep : std::string_view("11111111");
    for (int i = 0; i < ParaCount; ++i) {
        if (MaskBit(keep, i)) {
            WriteText(m_form.Para[static_cast<std::size_t>(i)], {FormPart::Para, i},
                      SingleToText(values[static_cast<std::size_t>(i)]));
        }
    }
    // The kind change looked at the radius of the tool shown before; the
    // boxes must follow the loaded radius whatever was shown before.
    if (kind == KindCut) {
        showPara(AvailabilityOf(kind, m_form));
    }

    m_form.ToolNameBytes = slot.ToolComment;
    WriteText(m_form.ToolName, {FormPart::ToolName},
              DecodeCodePage(slot.ToolComment, m_ws.Globals.CodePage));
    Assign(m_form.Arbor.Index, ListPosition(slot.ArborMode), {FormPart::Arbor});
    ApplyArbor();
    Assign(m_form.LenDef.Index, ListPosition(slot.LengthMode), {FormPart::LenDef});
    ApplyLengthDefinition();
    Assign(m_form.keepLD, std::to_string(slot.LengthMode), {FormPart::keepLD});
    for (int k = 0; k < LengthBoxCount; ++k) {
        WriteText(m_form.Lengths[static_cast<std::size_t>(k)], {FormPart::Length, k},
                  SingleToText(slot.Len[static_cast<std::size_t>(k)]));
    }
    Assign(m_form.Sections, slot.Arbor, {FormPart::Sections});
    m_form.SavedSections = slot.Arbor;

    Check1Click(slot.ShiftOn != 0);
    WriteText(m_form.Shift, {FormPart::Shift}, SingleToText(slot.ShiftValue));
    Check2Click(slot.PenNo != 0);
    WriteText(m_form.Pen, {FormPart::Pen}, std::to_string(slot.PenNo));
}

void EditorRules::LoadFileArbor()
{
    FlagHold busy(m_ws.EditorBusy);
    const ToolTable &table = m_ws.Table;
    Assign(m_form.Arbor.Enabled, true, {FormPart::Arbor});
    Assign(m_form.Arbor.Index, ListPosition(table.DefaultArborType), {FormPart::Arbor});
    ApplyArbor();
    Assign(m_form.Sections, table.DefaultArbor, {FormPart::Sections});
    m_form.SavedSections = table.DefaultArbor;
    Assign(m_form.ArborFrame, std::string_view("Text51-2"), {FormPart::Captions});
}

void EditorRules::DataIniSet()
{
    FlagHold hold(m_ws.DrawHold);
    SetKindPosition(KindBal);
    ToolClick();
    static constexpr std::array<const char *, ParaCount> Defaults = {"10", "5", "0",  "0",
                                                                     "0",  "0", "20", "0"};
    for (int i = 0; i < ParaCount; ++i) {
        WriteText(m_form.Para[static_cast<std::size_t>(i)], {FormPart::Para, i},
                  Defaults[static_cast<std::size_t>(i)]);
    }
    m_form.ToolNameBytes.clear();
    WriteText(m_form.ToolName, {FormPart::ToolName}, "");
    Assign(m_form.Arbor.Index, 0, {FormPart::Arbor});
    Assign(m_form.LenDef.Index, 0, {FormPart::LenDef});
    ApplyLengthDefinition();
    Assign(m_form.keepLD, std::string("0"), {FormPart::keepLD});
    for (int k = 0; k < LengthBoxCount; ++k) {
        WriteText(m_form.Lengths[static_cast<std::size_t>(k)], {FormPart::Length, k},
                  k == BoxLength ? "50" : "0");
    }
    Assign(m_form.Sections, ArborSections{}, {FormPart::Sections});
    m_form.SavedSections = ArborSections{};
    Check1Click(false);
    Check2Click(false);
    WriteText(m_form.Pen, {FormPart::Pen}, "0");
    ArbEdit(false);
}

void EditorRules::ClearFeedAndLimit()
{
    OptionFeedForm feed;
    feed.MagNo = m_form.OptionFeed.MagNo;
    Assign(m_form.OptionFeed, feed, {FormPart::OptionFeed});
    LimitForm limit = m_form.Limit;
    limit.LimKind.Index = 0;
    for (TextBox &value : limit.Values) {
        value.Text.assign(1, '0');
    }
    LimitKindClick(limit);
    Assign(m_form.Limit, limit, {FormPart::Limit});
}

std::optional<int> EditorRules::NewB(MessageService &messages)
{
    const int slot = FirstFreeSlot(m_ws.Table);
    if (slot < 0) {
        messages.Show(m_ws.Text("MSG", "MSG14"), MessageIcon::Exclamation, MessageButtons::Ok);
        return std::nullopt;
    }
    const int magazine = slot + 1;
    {
        FlagHold busy(m_ws.EditorBusy);
        SetMagNo(std::to_string(magazine));
        DataIniSet();
        // The load took them from the tool shown before; a new tool has none.
        ClearFeedAndLimit();
    }
    RequestRedraw();
    return magazine;
}

EditorForm FillFormFromSlot(Workspace &workspace, int slot)
{
    EditorForm form;
    if (slot < 0 || slot >= static_cast<int>(workspace.Table.Slots.size())) {
        return form;
    }
    // The rules give every guard flag back its value; only the current slot
    // needs restoring.
    const std::int16_t current = workspace.Table.CurrentSlot;
    workspace.Table.CurrentSlot = static_cast<std::int16_t>(slot);
    EditorRules rules(form, workspace);
    rules.SetMagNo(std::to_string(slot + 1));
    workspace.Table.CurrentSlot = current;
    return form;
}

} // namespace qor
