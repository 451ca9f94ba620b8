#include "editor_store.h"

#include "numeric_text.h"

namespace qor {
namespace {

// The first `count` characters of UTF-8 text (a character is a lead byte and
// its continuation bytes).
std::string_view FirstCharacters(std::string_view text, std::size_t count)
{
    std::size_t characters = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80 && characters++ == count) {
            return text.substr(0, i);
        }
    }
    return text;
}

// The caption beside a box, for naming it in a message; its control name
// when the catalogue has no caption.
std::string BoxCaption(const EditorForm &form, const Workspace &ws, FormField field)
{
    static constexpr std::array<std::string_view, ParaCount> ParaLabels = {
        "Text4", "", "Text6", "Text7", "", "Text9", "", ""};
    static constexpr std::array<std::string_view, LengthBoxCount> LengthLabels = {
        "Text17", "Text18", "", "", "Text19", "Text20"};
    const auto index = static_cast<std::size_t>(field.Index);
    std::string caption;
    std::string name;
    switch (field.Part) {
    case FormPart::MagNo:
        caption = ws.Text("frmEditor", "Text1");
        name = "MagNo";
        break;
    case FormPart::Para: {
        const std::array<std::string_view, ParaCount> keys = {
            ParaLabels[0], form.Label5,   ParaLabels[2], ParaLabels[3],
            form.Label8,   ParaLabels[5], form.Label10,  form.Label15};
        caption = ws.Text("frmEditor", keys[index]);
        name = "Para(" + std::to_string(field.Index) + ")";
        break;
    }
    case FormPart::Length: {
        std::string_view key = LengthLabels[index];
        if (field.Index == BoxShN) {
            key = form.ShNLabel;
        } else if (field.Index == BoxShNb) {
            key = form.ShNbLabel;
        }
        caption = ws.Text("frmEditor", key);
        name = LengthBoxNames[index];
        break;
    }
    case FormPart::Shift:
        caption = ws.Text("frmEditor", "Text36");
        name = "Shift";
        break;
    case FormPart::Pen:
        caption = ws.Text("frmEditor", "Text37");
        name = "Pen";
        break;
    case FormPart::Limit:
        caption = ws.Text("frmLimit", "Text" + std::to_string(9 + field.Index));
        name = "tbLimVal(" + std::to_string(field.Index) + ")";
        break;
    default:
        break;
    }
    return caption.empty() ? name : caption;
}

StoreOutcome Refused(FormField field)
{
    StoreOutcome outcome;
    outcome.Refused = field;
    return outcome;
}

StoreOutcome Refuse(const EditorForm &form, Workspace &ws, MessageService &messages,
                    FormField field)
{
    messages.Show(BoxCaption(form, ws, field) + ": " + ws.Text("MSG", "MSG1"),
                  MessageIcon::Exclamation, MessageButtons::Ok);
    return Refused(field);
}

bool LimitValueInUse(const LimitForm &limit, int i)
{
    const int kind = limit.LimKind.Index;
    return (kind == 1 || kind == 2) && (i == 0 || limit.SetKind.Index == 1);
}

// The first box that is stored but holds no number.
std::optional<FormField> FirstNonNumeric(const EditorForm &form)
{
    for (int i = 0; i < ParaCount; ++i) {
        if (!ToSingle(form.Para[static_cast<std::size_t>(i)].Text)) {
            return FormField{FormPart::Para, i};
        }
    }
    for (int k = 0; k < LengthBoxCount; ++k) {
        if (!ToSingle(form.Lengths[static_cast<std::size_t>(k)].Text)) {
            return FormField{FormPart::Length, k};
        }
    }
    if (form.Check1.Checked && !ToSingle(form.Shift.Text)) {
        return FormField{FormPart::Shift};
    }
    if (form.Check2.Checked && !ToInt16(form.Pen.Text)) {
        return FormField{FormPart::Pen};
    }
    for (int i = 0; i < 4; ++i) {
        if (LimitValueInUse(form.Limit, i) &&
            !ToSingle(form.Limit.Values[static_cast<std::size_t>(i)].Text)) {
            return FormField{FormPart::Limit, i};
        }
    }
    return std::nullopt;
}

float Value(const TextBox &box)
{
    return ToSingle(box.Text).value_or(0.0f);
}

void StoreLimit(const LimitForm &limit, ToolSlot &slot)
{
    slot.LimitFlags = 0;
    slot.LimitValues = {};
    const int kind = limit.LimKind.Index;
    if (kind != 1 && kind != 2) {
        return;
    }
    slot.LimitFlags = static_cast<std::uint8_t>(kind);
    if (limit.OutType.Index == 1) {
        slot.LimitFlags |= LimitPVariant;
    }
    if (limit.SetKind.Index == 1) {
        slot.LimitFlags |= LimitFourValues;
    }
    for (int i = 0; i < 4; ++i) {
        if (LimitValueInUse(limit, i)) {
            slot.LimitValues[static_cast<std::size_t>(i)] =
                Value(limit.Values[static_cast<std::size_t>(i)]);
        }
    }
}

} // namespace

EncodedText CommentToStore(const EditorForm &form, int codePage)
{
    // Bytes the code page does not define show as U+FFFD, which it cannot
    // hold: only an untouched name keeps them.
    if (form.ToolName.Text == DecodeCodePage(form.ToolNameBytes, codePage)) {
        return {form.ToolNameBytes, {}};
    }
    return EncodeCodePage(TrimSpaces(FirstCharacters(form.ToolName.Text, CommentCharacters)),
                          codePage);
}

std::string UnheldCharacterText(const Workspace &ws, std::string_view character)
{
    return ws.Text("MSG", "MSG27-1") + " \"" + std::string(character) + "\" (" +
           CodePointName(character) + ")" + ws.Text("MSG", "MSG27-2") + " " +
           std::to_string(ws.Globals.CodePage) + " " + ws.Text("MSG", "MSG27-3");
}

StoreOutcome StoreForm(EditorForm &form, Workspace &ws, MessageService &messages)
{
    // An empty box counts as 0, as when the window was loaded: the list
    // window clears it to edit the file's arbor.
    const std::string_view magText = TrimSpaces(form.MagNo.Text);
    const std::optional<std::int16_t> magazine =
        magText.empty() ? std::optional<std::int16_t>(0) : ToInt16(magText);
    if (!magazine) {
        return Refuse(form, ws, messages, {FormPart::MagNo});
    }
    ToolTable &table = ws.Table;
    StoreOutcome stored;
    stored.Stored = true;
    if (*magazine <= 0) {
        stored.Change = MakeFileArborChange(
            table, FileArbor{static_cast<std::int16_t>(form.Arbor.Index), form.Sections});
        table.DefaultArborType = static_cast<std::int16_t>(form.Arbor.Index);
        table.DefaultArbor = form.Sections;
        form.SavedSections = form.Sections;
        return stored;
    }
    if (*magazine > static_cast<int>(table.Slots.size())) {
        messages.Show(ws.Text("MSG", "MSG17-1") + " " + std::to_string(table.Slots.size()) + " " +
                          ws.Text("MSG", "MSG17-2"),
                      MessageIcon::Exclamation, MessageButtons::Ok);
        return Refused(FormField{FormPart::MagNo});
    }
    EncodedText comment = CommentToStore(form, ws.Globals.CodePage);
    if (!comment.Unheld.empty()) {
        messages.Show(UnheldCharacterText(ws, comment.Unheld), MessageIcon::Exclamation,
                      MessageButtons::Ok);
        return Refused(FormField{FormPart::ToolName});
    }
    if (const std::optional<FormField> bad = FirstNonNumeric(form)) {
        return Refuse(form, ws, messages, *bad);
    }

    table.CurrentSlot = static_cast<std::int16_t>(*magazine - 1);
    ws.NewToolSlot = -1; // a stored tool stays, whatever the editor does next
    ToolSlot &slot = table.Slots[static_cast<std::size_t>(table.CurrentSlot)];
    const ToolSlot before = slot;
    if (form.Tool.Index >= 0) {
        slot.ToolKind = static_cast<std::int16_t>(form.Tool.Index);
    }
    float *const values[ParaCount] = {&slot.ToolDia,    &slot.CornerRad, &slot.Param3,
                                      &slot.Param4,     &slot.Param5,    &slot.Param6,
                                      &slot.ToolLength, &slot.Param7};
    for (std::size_t i = 0; i < ParaCount; ++i) {
        *values[i] = Value(form.Para[i]);
    }
    slot.ToolComment = std::move(comment.Bytes);
    form.ToolNameBytes = slot.ToolComment;
    slot.ArborMode = static_cast<std::int16_t>(form.Arbor.Index);
    slot.LengthMode = static_cast<std::int16_t>(form.LenDef.Index);
    for (std::size_t k = 0; k < LengthValueCount; ++k) {
        slot.Len[k] = Value(form.Lengths[k]);
    }
    slot.Arbor = form.Sections;
    form.SavedSections = form.Sections;
    slot.ShiftOn = form.Check1.Checked ? 1 : 0;
    slot.ShiftValue = form.Check1.Checked ? Value(form.Shift) : 0.0f;
    slot.PenNo = form.Check2.Checked ? ToInt16(form.Pen.Text).value_or(0) : std::int16_t{0};

    if (ToInt16(form.OptionFeed.MagNo).value_or(0) >= 1) {
        for (std::size_t letter = 0; letter < OptFeedLetterCount; ++letter) {
            slot.OptFeedOn[letter] = form.OptionFeed.On[letter] ? 1 : 0;
        }
        slot.OptFeedPos = form.OptionFeed.FeedPos;
        slot.OptFeedVal = form.OptionFeed.FeedVal;
    }
    StoreLimit(form.Limit, slot);
    stored.Change = MakeSlotChange(table.CurrentSlot, before, slot);
    return stored;
}

} // namespace qor
