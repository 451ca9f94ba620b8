#include "field_entry.h"

#include "editor_store.h"
#include "entry_limits.h"
#include "flag_hold.h"
#include "kind_table.h"
#include "numeric_text.h"

namespace qor {
namespace {

bool IsDigit(int key)
{
    return key >= '0' && key <= '9';
}

bool InGrid(FormField box)
{
    return box.Index >= 0 && box.Index < ArborRowCount;
}

// The text a numeric box of the editor shows; nullptr for any other field.
const std::string *BoxText(const EditorForm &form, FormField box)
{
    switch (box.Part) {
    case FormPart::Para:
    case FormPart::Length:
    case FormPart::Shift:
    case FormPart::Pen: {
        const TextBox *text = FormBox(form, box);
        return text != nullptr ? &text->Text : nullptr;
    }
    case FormPart::ArbD:
        return InGrid(box) ? &form.Grid.ArbD[static_cast<std::size_t>(box.Index)] : nullptr;
    case FormPart::ArbH:
        return InGrid(box) ? &form.Grid.ArbH[static_cast<std::size_t>(box.Index)] : nullptr;
    default:
        return nullptr;
    }
}

bool MinusAllowed(const EditorForm &form, FormField box)
{
    switch (box.Part) {
    case FormPart::Para:
        return ParaTakesMinus(box.Index, form.Tool.Index);
    case FormPart::ArbD:
        return box.Index == 1;
    case FormPart::Shift:
        return true;
    default:
        return false;
    }
}

EntryOutcome Refuse(EditorRules &rules, MessageService &messages, const char *key)
{
    messages.Show(rules.Ws().Text("MSG", key), MessageIcon::Exclamation, MessageButtons::Ok);
    return EntryOutcome::Refused;
}

int LengthDefinition(const EditorForm &form)
{
    return form.LenDef.Index;
}

// Writes a box with the redraw held, then draws once.
void WriteAndRedraw(EditorRules &rules, FormField field, std::string text)
{
    bool written = false;
    {
        FlagHold hold(rules.Ws().DrawHold);
        const TextBox *box = FormBox(rules.Form(), field);
        written = box != nullptr && box->Text != text;
        rules.WriteBox(field, std::move(text));
    }
    if (written) {
        rules.RequestRedraw();
    }
}

EntryOutcome ParaChanged(EditorRules &rules, int index, MessageService &messages)
{
    EditorForm &form = rules.Form();
    Workspace &ws = rules.Ws();
    const std::string &text = form.Para[static_cast<std::size_t>(index)].Text;
    if (!IsNumeric(text)) {
        return EntryOutcome::Accepted;
    }
    if (index == ParaFirstAngle || index == ParaSecondAngle) {
        const std::optional<float> angle = ToSingle(text);
        if (!angle || !IsAngle(*angle, false)) {
            Refuse(rules, messages, "MSG19");
            FlagHold guard(ws.ParaChangeGuard);
            rules.WriteBox({FormPart::Para, index}, "");
            return EntryOutcome::Refused;
        }
    }
    if (index == 0 && form.Tool.Index == KindOva) {
        FlagHold guard(ws.ParaChangeGuard);
        rules.WriteBox({FormPart::Para, 7}, SingleToText(BoxValue(form.Para[0]) / 2.0f));
    }
    rules.RequestRedraw();
    return EntryOutcome::Accepted;
}

void GridChanged(EditorRules &rules, FormField box)
{
    EditorForm &form = rules.Form();
    const std::string &text = *BoxText(form, box);
    const std::optional<float> value = ToSingle(text);
    if (!value) {
        return;
    }
    const auto section = static_cast<std::size_t>(form.Grid.First + box.Index);
    if (section >= static_cast<std::size_t>(ArborSectionCount)) {
        return;
    }
    float &target =
        box.Part == FormPart::ArbD ? form.Sections.Dia[section] : form.Sections.Len[section];
    target = *value;
    rules.RequestRedraw();
}

EntryOutcome PenLeft(EditorRules &rules, MessageService &messages)
{
    const Workspace &ws = rules.Ws();
    const int highest = ws.Globals.SupportPenMax - 1;
    const std::optional<std::int16_t> pen = ToInt16(rules.Form().Pen.Text);
    if (pen && PenInRange(*pen, ws.Globals.SupportPenMax)) {
        return EntryOutcome::Accepted;
    }
    messages.Show(ws.Text("MSG", "MSG17-1") + " " + std::to_string(highest) + " " +
                      ws.Text("MSG", "MSG17-2"),
                  MessageIcon::Exclamation, MessageButtons::Ok);
    return EntryOutcome::Refused;
}

EntryOutcome LengthBoxLeft(EditorRules &rules, int index, MessageService &messages)
{
    EditorForm &form = rules.Form();
    const TextBox &length = form.Lengths[BoxLength];
    const TextBox &neck = form.Lengths[BoxShN];
    const bool taperNeck = LengthDefinition(form) == 3;
    switch (index) {
    case BoxLength:
        // The box just left wins: a neck longer than the tool shortens.
        if (BoxValue(neck) > BoxValue(length)) {
            WriteAndRedraw(rules, {FormPart::Length, BoxShN}, length.Text);
        }
        break;
    case BoxShN:
        if (taperNeck) {
            if (!IsAngle(BoxValue(neck), false)) {
                return Refuse(rules, messages, "MSG19");
            }
        } else if (BoxValue(length) < BoxValue(neck)) {
            WriteAndRedraw(rules, {FormPart::Length, BoxLength}, neck.Text);
        }
        break;
    case BoxShNb:
        if (taperNeck && !IsAngle(BoxValue(form.Lengths[BoxShNb]), true)) {
            return Refuse(rules, messages, "MSG19");
        }
        break;
    case BoxShT:
    case BoxShTb:
        if (taperNeck) {
            const float neckTotal =
                BoxValue(form.Lengths[BoxShT]) + BoxValue(form.Lengths[BoxShTb]);
            if (BoxValue(length) < neckTotal) {
                WriteAndRedraw(rules, {FormPart::Length, BoxLength}, SingleToText(neckTotal));
            }
        }
        break;
    default:
        break;
    }
    return EntryOutcome::Accepted;
}

// NumKey, then the numeric box's own rule.
int NumericBoxKey(const EditorForm &form, FormField box, int key)
{
    const int remaining = NumKey(key);
    if (box.Part == FormPart::Pen) {
        return remaining == KeyBackspace || IsDigit(remaining) ? remaining : 0;
    }
    return remaining == KeyMinus && !MinusAllowed(form, box) ? 0 : remaining;
}

// A double quote would end the name in the file: what follows it is lost.
EntryOutcome NameQuoteLeft(EditorRules &rules, MessageService &messages)
{
    if (rules.Form().ToolName.Text.find(static_cast<char>(KeyQuote)) != std::string::npos) {
        return Refuse(rules, messages, "MSG28-1");
    }
    return EntryOutcome::Accepted;
}

// The tool list file holds the name in its code page: a character the code
// page does not have is refused, never replaced.
EntryOutcome NameCodePageLeft(EditorRules &rules, MessageService &messages)
{
    const Workspace &ws = rules.Ws();
    const EncodedText comment = CommentToStore(rules.Form(), ws.Globals.CodePage);
    if (comment.Unheld.empty()) {
        return EntryOutcome::Accepted;
    }
    messages.Show(UnheldCharacterText(ws, comment.Unheld), MessageIcon::Exclamation,
                  MessageButtons::Ok);
    return EntryOutcome::Refused;
}

// The checks of the tool name, each its own function; the first refusal
// wins.
EntryOutcome ToolNameLeft(EditorRules &rules, MessageService &messages)
{
    if (NameQuoteLeft(rules, messages) == EntryOutcome::Refused) {
        return EntryOutcome::Refused;
    }
    return NameCodePageLeft(rules, messages);
}

} // namespace

int NameKey(int key)
{
    return key == KeyQuote ? 0 : key;
}

int NumKey(int key)
{
    if (key == KeyBackspace || key == KeyMinus || key == KeyPoint || IsDigit(key)) {
        return key;
    }
    return 0;
}

int FilterKey(const EditorForm &form, FormField box, int key, MessageService &messages)
{
    int remaining = 0;
    if (box.Part == FormPart::ToolName) {
        remaining = NameKey(key);
    } else if (BoxText(form, box) == nullptr) {
        return key;
    } else {
        remaining = NumericBoxKey(form, box, key);
    }
    if (remaining == 0) {
        messages.Beep();
    }
    return remaining;
}

bool FilterText(const EditorForm &form, FormField box, std::string_view text,
                MessageService &messages)
{
    if (BoxText(form, box) == nullptr) {
        return true;
    }
    for (const char c : text) {
        int key = static_cast<unsigned char>(c);
        if (key == KeyBackspace || NumKey(key) == 0 ||
            (key == KeyMinus && !MinusAllowed(form, box)) ||
            (box.Part == FormPart::Pen && !IsDigit(key))) {
            messages.Beep();
            return false;
        }
    }
    return true;
}

EntryOutcome BoxTextChanged(EditorRules &rules, FormField box, MessageService &messages)
{
    const EditorForm &form = rules.Form();
    if (form.DerivedWrite || BoxText(form, box) == nullptr) {
        return EntryOutcome::Accepted;
    }
    switch (box.Part) {
    case FormPart::Para:
        if (rules.Ws().ParaChangeGuard) {
            return EntryOutcome::Accepted;
        }
        return ParaChanged(rules, box.Index, messages);
    case FormPart::ArbD:
    case FormPart::ArbH:
        GridChanged(rules, box);
        return EntryOutcome::Accepted;
    default:
        rules.BoxChanged(box); // a numeric text redraws; Pen never
        return EntryOutcome::Accepted;
    }
}

std::size_t NameCharacters(std::string_view name)
{
    std::size_t characters = 0;
    for (const char c : name) {
        if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) {
            ++characters;
        }
    }
    return characters;
}

EntryOutcome LeaveBox(EditorRules &rules, FormField box, MessageService &messages)
{
    if (box.Part == FormPart::ToolName) {
        return ToolNameLeft(rules, messages);
    }
    const std::string *text = BoxText(rules.Form(), box);
    if (text == nullptr) {
        return EntryOutcome::Accepted;
    }
    if (box.Part == FormPart::Pen) {
        return PenLeft(rules, messages);
    }
    // A number beyond the single range could not be stored: not a number.
    if (!ToSingle(*text)) {
        return Refuse(rules, messages, "MSG1");
    }
    if (box.Part == FormPart::Length) {
        return LengthBoxLeft(rules, box.Index, messages);
    }
    return EntryOutcome::Accepted;
}

} // namespace qor
