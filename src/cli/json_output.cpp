#include "json_output.h"

#include "code_page.h"
#include "numeric_text.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace qor::cli {

void JsonWriter::BeginObject(bool inlineItems)
{
    BeforeItem();
    m_out += '{';
    m_levels.push_back({inlineItems, 0});
}

void JsonWriter::EndObject()
{
    Close('}');
}

void JsonWriter::BeginArray(bool inlineItems)
{
    BeforeItem();
    m_out += '[';
    m_levels.push_back({inlineItems, 0});
}

void JsonWriter::EndArray()
{
    Close(']');
}

void JsonWriter::Key(std::string_view name)
{
    BeforeItem();
    m_out += JsonQuoted(name);
    m_out += ": ";
    m_afterKey = true;
}

void JsonWriter::String(std::string_view utf8)
{
    BeforeItem();
    m_out += JsonQuoted(utf8);
}

void JsonWriter::Integer(long long value)
{
    BeforeItem();
    m_out += std::to_string(value);
}

void JsonWriter::Number(float value)
{
    BeforeItem();
    m_out += std::isfinite(value) ? SingleToText(value) : "null";
}

void JsonWriter::Bool(bool value)
{
    BeforeItem();
    m_out += value ? "true" : "false";
}

void JsonWriter::BeforeItem()
{
    if (m_afterKey) {
        m_afterKey = false;
        return;
    }
    if (m_levels.empty()) {
        return;
    }
    Level &level = m_levels.back();
    if (level.count > 0) {
        m_out += level.inlineItems ? ", " : ",";
    }
    if (!level.inlineItems) {
        NewLine();
    }
    ++level.count;
}

void JsonWriter::Close(char bracket)
{
    const Level level = m_levels.back();
    m_levels.pop_back();
    if (level.count > 0 && !level.inlineItems) {
        NewLine();
    }
    m_out += bracket;
}

void JsonWriter::NewLine()
{
    m_out += '\n';
    m_out.append(2 * m_levels.size(), ' ');
}

std::string JsonQuoted(std::string_view utf8)
{
    static constexpr char Hex[] = "0123456789abcdef";
    std::string quoted;
    quoted.reserve(utf8.size() + 2);
    quoted += '"';
    for (char c : utf8) {
        const auto byte = static_cast<unsigned char>(c);
        switch (c) {
        case '"':
            quoted += "\\\"";
            break;
        case '\\':
            quoted += "\\\\";
            break;
        case '\n':
            quoted += "\\n";
            break;
        case '\r':
            quoted += "\\r";
            break;
        case '\t':
            quoted += "\\t";
            break;
        default:
            if (byte < 0x20) {
                quoted += "\\u00";
                quoted += Hex[byte >> 4];
                quoted += Hex[byte & 0xF];
            } else {
                quoted += c;
            }
        }
    }
    quoted += '"';
    return quoted;
}

std::string BytesToUtf8(std::string_view bytes, int codePage)
{
    return IsValidUtf8(bytes) ? std::string(bytes) : DecodeCodePage(bytes, codePage);
}

namespace {

template <typename Container>
void InlineNumbers(JsonWriter &json, const Container &values, std::size_t count)
{
    json.BeginArray(true);
    for (std::size_t i = 0; i < count; ++i) {
        json.Number(static_cast<float>(values[i]));
    }
    json.EndArray();
}

// Arbor sections up to the first zero diameter. An 11th diameter may close
// a taper, but only ten sections have a length and a flag.
void ArborFields(JsonWriter &json, const ArborSections &arbor, std::string_view prefix)
{
    std::size_t diameters = 0;
    while (diameters < arbor.Dia.size() && arbor.Dia[diameters] != 0) {
        ++diameters;
    }
    const std::size_t sections = std::min<std::size_t>(diameters, ArborSectionCount);
    json.Key(std::string(prefix) + "SecDia");
    InlineNumbers(json, arbor.Dia, diameters);
    json.Key(std::string(prefix) + "SecLen");
    InlineNumbers(json, arbor.Len, sections);
    json.Key(std::string(prefix) + "SecFlag");
    json.BeginArray(true);
    for (std::size_t i = 0; i < sections; ++i) {
        json.Integer(arbor.Flag[i]);
    }
    json.EndArray();
}

// One object keyed by the option feed letters.
template <typename PerLetter>
void PerLetterArrays(JsonWriter &json, std::string_view key, const PerLetter &perLetter)
{
    json.Key(key);
    json.BeginObject();
    for (std::size_t letter = 0; letter < OptFeedLetters.size(); ++letter) {
        json.Key(std::string_view(&OptFeedLetters[letter], 1));
        InlineNumbers(json, perLetter[letter], perLetter[letter].size());
    }
    json.EndObject();
}

void SlotFields(JsonWriter &json, const ToolSlot &slot, int slotIndex, int codePage)
{
    json.Key("MagazineNumber");
    json.Integer(slotIndex + 1);
    json.Key("ToolKind");
    json.Integer(slot.ToolKind);
    json.Key("KindWord");
    json.String(slot.ToolKind < KindCount ? KindWords[static_cast<std::size_t>(slot.ToolKind)]
                                          : std::string_view());

    const std::pair<const char *, float> shape[] = {
        {"ToolDia", slot.ToolDia}, {"CornerRad", slot.CornerRad},   {"Param3", slot.Param3},
        {"Param4", slot.Param4},   {"Param5", slot.Param5},         {"Param6", slot.Param6},
        {"Param7", slot.Param7},   {"ToolLength", slot.ToolLength},
    };
    for (const auto &[name, value] : shape) {
        json.Key(name);
        json.Number(value);
    }

    json.Key("LengthMode");
    json.Integer(slot.LengthMode);
    for (std::size_t i = 0; i < slot.Len.size(); ++i) {
        json.Key("Len" + std::to_string(i + 1));
        json.Number(slot.Len[i]);
    }

    json.Key("ArborMode");
    json.Integer(slot.ArborMode);
    ArborFields(json, slot.Arbor, "Arbor");

    json.Key("OptFeedOn");
    json.BeginObject(true);
    for (std::size_t letter = 0; letter < OptFeedLetters.size(); ++letter) {
        json.Key(std::string_view(&OptFeedLetters[letter], 1));
        json.Integer(slot.OptFeedOn[letter]);
    }
    json.EndObject();
    PerLetterArrays(json, "OptFeedPos", slot.OptFeedPos);
    PerLetterArrays(json, "OptFeedVal", slot.OptFeedVal);

    json.Key("ToolComment");
    json.String(DecodeCodePage(slot.ToolComment, codePage));
    json.Key("PenNo");
    json.Integer(slot.PenNo);
    json.Key("ShiftOn");
    json.Integer(slot.ShiftOn);
    json.Key("ShiftValue");
    json.Number(slot.ShiftValue);
    json.Key("LimitFlags");
    json.Integer(slot.LimitFlags);
    json.Key("LimitValues");
    InlineNumbers(json, slot.LimitValues, slot.LimitValues.size());
}

} // namespace

std::string TableToJson(const ToolTable &table, std::string_view fileName, int codePage)
{
    std::string out;
    JsonWriter json(out);
    json.BeginObject();
    json.Key("File");
    json.String(BytesToUtf8(fileName, codePage));
    json.Key("MagazineMax");
    json.Integer(table.MagazineMax);
    json.Key("InitialMagazine");
    json.Integer(table.InitialMagazine);
    json.Key("ForeignFile");
    json.Bool(table.ForeignFile);
    json.Key("DefaultArborType");
    json.Integer(table.DefaultArborType);
    ArborFields(json, table.DefaultArbor, "DefaultArbor");

    json.Key("Slots");
    json.BeginArray();
    for (std::size_t i = 0; i < table.Slots.size(); ++i) {
        if (table.Slots[i].HasTool()) {
            json.BeginObject();
            SlotFields(json, table.Slots[i], static_cast<int>(i), codePage);
            json.EndObject();
        }
    }
    json.EndArray();
    json.EndObject();
    out += '\n';
    return out;
}

} // namespace qor::cli
