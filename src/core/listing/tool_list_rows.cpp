#include "tool_list_rows.h"

#include "code_page.h"
#include "numeric_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace qor {

namespace {

constexpr std::size_t ToolNameLength = 20;
constexpr std::string_view ValuePicture = "##0.0##";

std::string ValueText(float value)
{
    return FormatSingle(value, ValuePicture);
}

std::string MagazineText(int magazine)
{
    std::string digits = FormatPicture(magazine, "####");
    constexpr std::size_t width = 6;
    if (digits.size() < width) {
        digits.insert(0, width - digits.size(), ' ');
    }
    return digits;
}

// Kinds whose corner radius column shows CornerRad.
bool ShowsCornerRad(std::int16_t kind)
{
    switch (kind) {
    case KindCut:
    case KindTap:
    case KindBul:
    case KindOva:
    case KindRad:
        return true;
    default:
        return false;
    }
}

} // namespace

bool IsNumberColumn(ListColumn column)
{
    switch (column) {
    case ListColumn::MagNo:
    case ListColumn::ToolDia:
    case ListColumn::CornerRad:
    case ListColumn::Shift:
    case ListColumn::Pen:
        return true;
    default:
        return false;
    }
}

std::string FormatSingle(float value, std::string_view picture)
{
    const auto point = picture.find('.');
    const std::string_view integerPicture = picture.substr(0, point);
    const std::string_view fractionPicture =
        point == std::string_view::npos ? std::string_view() : picture.substr(point + 1);
    const auto minIntegers =
        static_cast<std::size_t>(std::count(integerPicture.begin(), integerPicture.end(), '0'));
    const auto minDecimals =
        static_cast<std::size_t>(std::count(fractionPicture.begin(), fractionPicture.end(), '0'));
    const std::size_t maxDecimals = fractionPicture.size();

    if (!std::isfinite(value)) {
        value = 0;
    }
    char buffer[64];
    const auto written =
        std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value), std::chars_format::fixed);
    const std::string_view shortest(buffer, static_cast<std::size_t>(written.ptr - buffer));
    const auto dot = shortest.find('.');
    std::string digits(shortest.substr(0, dot)); // integer digits, then the kept decimals
    const std::string_view decimals =
        dot == std::string_view::npos ? std::string_view() : shortest.substr(dot + 1);
    digits += decimals.substr(0, maxDecimals);
    std::size_t kept = std::min(decimals.size(), maxDecimals);
    if (decimals.size() > maxDecimals && decimals[maxDecimals] >= '5') {
        std::size_t i = digits.size();
        while (i > 0 && digits[i - 1] == '9') {
            digits[--i] = '0';
        }
        if (i == 0) {
            digits.insert(digits.begin(), '1');
        } else {
            ++digits[i - 1];
        }
    }
    std::string fraction = digits.substr(digits.size() - kept);
    std::string integer = digits.substr(0, digits.size() - kept);
    while (fraction.size() > minDecimals && fraction.back() == '0') {
        fraction.pop_back();
    }
    fraction.append(minDecimals - std::min(minDecimals, fraction.size()), '0');
    integer.erase(0, std::min(integer.find_first_not_of('0'), integer.size()));
    integer.insert(0, minIntegers - std::min(minIntegers, integer.size()), '0');

    std::string text = integer;
    if (!fraction.empty()) {
        text += '.' + fraction;
    }
    if (std::signbit(value) && text.find_first_not_of("0.") != std::string::npos) {
        text.insert(text.begin(), '-');
    }
    return text;
}

std::string_view FirstCharacters(std::string_view utf8, std::size_t count)
{
    std::size_t end = 0;
    for (std::size_t characters = 0; end < utf8.size() && characters < count; ++characters) {
        ++end;
        while (end < utf8.size() && (static_cast<unsigned char>(utf8[end]) & 0xC0) == 0x80) {
            ++end; // continuation bytes belong to the character before
        }
    }
    return utf8.substr(0, end);
}

bool ToolListRows::HasTool(int row) const
{
    return row >= 0 && row < RowCount() && m_rows[static_cast<std::size_t>(row)].kind >= 0;
}

std::optional<double> ToolListRows::Number(int row, ListColumn column) const
{
    if (row < 0 || row >= RowCount()) {
        return std::nullopt;
    }
    if (column == ListColumn::MagNo) {
        return row + 1;
    }
    const Row &r = m_rows[static_cast<std::size_t>(row)];
    if (r.kind < 0 || r.kind >= KindCount) {
        return std::nullopt;
    }
    switch (column) {
    case ListColumn::ToolDia:
        if (r.kind != KindTap) {
            return r.dia;
        }
        break;
    case ListColumn::CornerRad:
        if (r.kind == KindBal) {
            return r.dia / 2;
        }
        if (ShowsCornerRad(r.kind)) {
            return r.corner;
        }
        break;
    case ListColumn::Shift:
        if (r.shiftOn) {
            return r.shift;
        }
        break;
    case ListColumn::Pen:
        if (r.pen != 0) {
            return r.pen;
        }
        break;
    default:
        break;
    }
    return std::nullopt;
}

std::string_view ToolListRows::Text(int row, ListColumn column) const
{
    if (row < 0 || row >= RowCount()) {
        return {};
    }
    const Row &r = m_rows[static_cast<std::size_t>(row)];
    if (r.kind < 0 || r.kind >= KindCount) {
        return {};
    }
    switch (column) {
    case ListColumn::ToolKind:
        return m_kindNames[static_cast<std::size_t>(r.kind + 1)];
    case ListColumn::ToolName:
        return std::string_view(m_names).substr(r.nameBegin, r.nameSize);
    case ListColumn::Arbor:
        if (r.arborMode > 0 && r.arborMode < static_cast<int>(m_arborNames.size())) {
            return m_arborNames[static_cast<std::size_t>(r.arborMode)];
        }
        break;
    case ListColumn::Option:
        if (r.option) {
            return m_optionMark;
        }
        break;
    default:
        break;
    }
    return {};
}

std::string ToolListRows::Cell(int row, ListColumn column) const
{
    if (column == ListColumn::MagNo) {
        return row >= 0 && row < RowCount() ? MagazineText(row + 1) : std::string();
    }
    if (!IsNumberColumn(column)) {
        return std::string(Text(row, column));
    }
    const std::optional<double> value = Number(row, column);
    if (!value) {
        return {};
    }
    if (column == ListColumn::Pen) {
        return std::to_string(static_cast<int>(*value));
    }
    return ValueText(static_cast<float>(*value));
}

bool FillToolList(const Workspace &workspace, ToolListContents &contents)
{
    const ToolTable &table = workspace.Table;
    if (table.InitialMagazine < 1) {
        return false;
    }
    contents.MagIni = std::to_string(table.InitialMagazine);
    contents.DefaultArbor =
        table.DefaultArborType >= 1 && table.DefaultArborType <= 3
            ? table.ArborTypeNames[static_cast<std::size_t>(table.DefaultArborType)]
            : workspace.Text("String", "Str14");

    ToolListRows &rows = contents.Rows;
    rows.m_kindNames = table.KindNames;
    rows.m_arborNames = table.ArborTypeNames;
    rows.m_optionMark = workspace.Text("String", "Str31");
    rows.m_names.clear();
    rows.m_rows.assign(table.Slots.size(), ToolListRows::Row{});
    for (std::size_t i = 0; i < table.Slots.size(); ++i) {
        const ToolSlot &slot = table.Slots[i];
        if (!slot.HasTool()) {
            continue;
        }
        ToolListRows::Row &row = rows.m_rows[i];
        row.kind = slot.ToolKind;
        row.arborMode = slot.ArborMode;
        row.pen = slot.PenNo;
        row.shiftOn = slot.ShiftOn != 0;
        for (std::int16_t on : slot.OptFeedOn) {
            row.option = row.option || on != 0;
        }
        row.dia = slot.ToolDia;
        row.corner = slot.CornerRad;
        row.shift = slot.ShiftValue;
        if (!slot.ToolComment.empty()) {
            const std::string name = DecodeCodePage(slot.ToolComment, workspace.Globals.CodePage);
            const std::string_view shown = FirstCharacters(name, ToolNameLength);
            if (rows.m_names.size() + shown.size() <= std::numeric_limits<std::uint32_t>::max()) {
                row.nameBegin = static_cast<std::uint32_t>(rows.m_names.size());
                row.nameSize = static_cast<std::uint32_t>(shown.size());
                rows.m_names += shown;
            }
        }
    }
    return true;
}

} // namespace qor
