#include "param_string.h"

#include "code_page.h"
#include "numeric_text.h"
#include "tool_list_rows.h"

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace qor {

namespace {

constexpr std::size_t LabelWidth = 10;
constexpr std::size_t EntryWidth = 20;
constexpr std::string_view LineEnd = "\r\n";

// Characters that a fixed-pitch font shows two columns wide: the East Asian wide and full-width
// ranges (kana, kanji, hangul, full-width forms and punctuation).
bool IsWide(std::uint32_t c)
{
    return (c >= 0x1100 && c <= 0x115F) || (c >= 0x2E80 && c <= 0x303E) ||
           (c >= 0x3041 && c <= 0x33FF) || (c >= 0x3400 && c <= 0x4DBF) ||
           (c >= 0x4E00 && c <= 0x9FFF) || (c >= 0xA000 && c <= 0xA4CF) ||
           (c >= 0xAC00 && c <= 0xD7A3) || (c >= 0xF900 && c <= 0xFAFF) ||
           (c >= 0xFE30 && c <= 0xFE4F) || (c >= 0xFF00 && c <= 0xFF60) ||
           (c >= 0xFFE0 && c <= 0xFFE6) || (c >= 0x20000 && c <= 0x3FFFD);
}

// How many columns of the Param box's fixed-pitch font the UTF-8 text takes.
std::size_t Columns(std::string_view text)
{
    std::size_t columns = 0;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = Utf8SequenceLength(text, i);
        if (length == 0) {
            ++columns; // a stray byte shows as one replacement character
            ++i;
            continue;
        }
        std::uint32_t c = static_cast<unsigned char>(text[i]);
        if (length > 1) {
            c &= 0x7Fu >> length;
            for (std::size_t k = 1; k < length; ++k) {
                c = (c << 6) | (static_cast<unsigned char>(text[i + k]) & 0x3Fu);
            }
        }
        columns += IsWide(c) ? 2 : 1;
        i += length;
    }
    return columns;
}

// Blanks up to `width` columns, and at least one: a label or an entry as wide as its column or
// wider is still set apart from what follows it.
void PadTo(std::string &text, std::size_t width)
{
    const std::size_t columns = Columns(text);
    text.append(columns < width ? width - columns : 1, ' ');
}

class ParamText
{
public:
    explicit ParamText(const Workspace &workspace) : m_ws(workspace) {}

    void Add(std::string_view key, float value)
    {
        std::string entry = Label(key);
        entry += FormatSingle(value, "##0.0");
        m_group.push_back(std::move(entry));
    }

    // Ends a group of entries: two to a line.
    void EndGroup()
    {
        for (std::size_t i = 0; i < m_group.size(); i += 2) {
            std::string line = m_group[i];
            if (i + 1 < m_group.size()) {
                PadTo(line, EntryWidth);
                line += m_group[i + 1];
            }
            AddLine(std::move(line));
        }
        m_group.clear();
    }

    void AddLine(std::string line)
    {
        if (!m_text.empty()) {
            m_text += LineEnd;
        }
        m_text += line;
    }

    std::string Label(std::string_view key) const
    {
        std::string label = m_ws.Text("String", key);
        PadTo(label, LabelWidth);
        return label;
    }

    std::string Text(std::string_view key) const { return m_ws.Text("String", key); }

    std::string Take() { return std::move(m_text); }

private:
    const Workspace &m_ws;
    std::vector<std::string> m_group;
    std::string m_text;
};

void AddShape(ParamText &text, const ToolSlot &slot)
{
    switch (slot.ToolKind) {
    case KindOva:
        text.Add("Str81", slot.CornerRad);
        text.Add("Str83", slot.Param7);
        text.Add("Str42", slot.ToolLength);
        break;
    case KindRad:
        text.Add("Str82", slot.Param7);
        break;
    case KindTT:
        text.Add("Str91", slot.ToolLength);
        text.Add("Str93", slot.CornerRad);
        text.Add("Str92", slot.Param7);
        text.Add("Str94", slot.Param5);
        break;
    default:
        text.Add("Str40", slot.Param5);
        text.Add("Str41", slot.Param6);
        text.Add("Str42", slot.ToolLength);
        if (slot.ToolKind == KindVer) {
            text.Add("Str43", slot.Param7);
        }
        break;
    }
    text.EndGroup();
}

void AddLength(ParamText &text, const ToolSlot &slot)
{
    const auto &len = slot.Len; // Len[0] is Len1
    if (slot.LengthMode >= 1) {
        text.Add("Str44", len[0]);
    }
    if (slot.LengthMode == 2) {
        text.Add("Str45", len[2]);
        text.Add("Str46", len[1]);
        text.Add("Str47", len[3]);
    } else if (slot.LengthMode == 3) {
        text.Add("Str87", len[3]);
        text.Add("Str46", len[1]);
        text.Add("Str88", len[5]);
        text.Add("Str89", len[2]);
        text.Add("Str90", len[4]);
    }
    text.EndGroup();
}

void AddLimit(ParamText &text, const ToolSlot &slot)
{
    if ((slot.LimitFlags & LimitModeMask) == 0) {
        return;
    }
    const bool four = (slot.LimitFlags & LimitFourValues) != 0;
    std::string line = text.Label("Str84");
    line += "A: " + FormatSingle(slot.LimitValues[0], "##0.00");
    constexpr std::string_view letters[] = {"V: ", "U: ", "D: "};
    for (std::size_t i = 0; i < 3; ++i) {
        line += "  ";
        line += letters[i];
        line += four ? FormatSingle(slot.LimitValues[i + 1], "##0.00") : "----";
    }
    text.AddLine(std::move(line));
    const bool pVariant = (slot.LimitFlags & LimitPVariant) != 0;
    text.AddLine(std::string(EntryWidth, ' ') + text.Text(pVariant ? "Str86" : "Str85"));
}

} // namespace

std::string MakeParamString(const Workspace &workspace)
{
    const ToolTable &table = workspace.Table;
    const int slotIndex = table.CurrentSlot;
    if (slotIndex < 0 || slotIndex >= static_cast<int>(table.Slots.size())) {
        return {};
    }
    const ToolSlot &slot = table.Slots[static_cast<std::size_t>(slotIndex)];
    if (!slot.HasTool()) {
        return {};
    }
    ParamText text(workspace);
    AddShape(text, slot);
    AddLength(text, slot);
    AddLimit(text, slot);
    return text.Take();
}

} // namespace qor
