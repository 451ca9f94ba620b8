#include "row_filter.h"

#include <charconv>
#include <cmath>

namespace qor {

namespace {

constexpr std::array<ListColumn, 5> NumberColumns = {ListColumn::MagNo, ListColumn::ToolDia,
                                                     ListColumn::CornerRad, ListColumn::Shift,
                                                     ListColumn::Pen};

// One character of UTF-8 text for comparing: ASCII letters in lower case,
// the full-width forms U+FF01..U+FF5E as their ASCII characters and the
// ideographic space as a blank; any other byte as it is. `length` is how many
// bytes it took.
char FoldedAt(std::string_view text, std::size_t at, std::size_t &length)
{
    const auto byte = [&](std::size_t i) {
        return at + i < text.size() ? static_cast<unsigned char>(text[at + i]) : 0u;
    };
    length = 1;
    unsigned code = byte(0);
    if (code == 0xE3 && byte(1) == 0x80 && byte(2) == 0x80) {
        length = 3;
        return ' ';
    }
    if (code == 0xEF && (byte(1) == 0xBC || byte(1) == 0xBD) && (byte(2) & 0xC0) == 0x80) {
        const unsigned point = 0xFF00 + ((byte(1) - 0xBC) << 6) + (byte(2) & 0x3F);
        if (point >= 0xFF01 && point <= 0xFF5E) {
            length = 3;
            code = point - 0xFEE0;
        }
    }
    if (code >= 'A' && code <= 'Z') {
        code += 'a' - 'A';
    }
    return static_cast<char>(code);
}

std::string Fold(std::string_view text)
{
    std::string folded;
    folded.reserve(text.size());
    for (std::size_t i = 0, length = 0; i < text.size(); i += length) {
        folded += FoldedAt(text, i, length);
    }
    return folded;
}

// True when `text`, folded as it is read, is `folded`.
bool EqualsFolded(std::string_view text, std::string_view folded)
{
    std::size_t at = 0;
    std::size_t length = 0;
    for (char c : folded) {
        if (at >= text.size() || FoldedAt(text, at, length) != c) {
            return false;
        }
        at += length;
    }
    return at == text.size();
}

// True when `text` (folded as it is read) holds `folded`.
bool Contains(std::string_view text, std::string_view folded)
{
    if (folded.empty()) {
        return true;
    }
    for (std::size_t start = 0; start < text.size();) {
        std::size_t at = start;
        std::size_t matched = 0;
        std::size_t length = 0;
        while (matched < folded.size() && at < text.size() &&
               FoldedAt(text, at, length) == folded[matched]) {
            at += length;
            ++matched;
        }
        if (matched == folded.size()) {
            return true;
        }
        FoldedAt(text, start, length);
        start += length;
    }
    return false;
}

bool IsOperator(char c)
{
    return c == '<' || c == '>' || c == '=' || c == '!';
}

// The folded query split at blanks, where blanks beside an operator do not
// split ("D < 10" is one term).
std::vector<std::string> Words(std::string_view query)
{
    const std::string folded = Fold(query);
    std::string joined;
    for (std::size_t i = 0; i < folded.size();) {
        if (folded[i] != ' ' && folded[i] != '\t') {
            joined += folded[i++];
            continue;
        }
        std::size_t next = i;
        while (next < folded.size() && (folded[next] == ' ' || folded[next] == '\t')) {
            ++next;
        }
        const bool besideOperator = (!joined.empty() && IsOperator(joined.back())) ||
                                    (next < folded.size() && IsOperator(folded[next]));
        if (!besideOperator) {
            joined += ' ';
        }
        i = next;
    }
    std::vector<std::string> words;
    std::size_t start = 0;
    while (start < joined.size()) {
        const std::size_t end = std::min(joined.find(' ', start), joined.size());
        if (end > start) {
            words.push_back(joined.substr(start, end - start));
        }
        start = end + 1;
    }
    return words;
}

// A plain decimal number with "." or "," as its point, and nothing else.
std::optional<double> PlainNumber(std::string_view text)
{
    std::string plain(text);
    bool digits = false;
    bool point = false;
    for (std::size_t i = 0; i < plain.size(); ++i) {
        char &c = plain[i];
        if (c >= '0' && c <= '9') {
            digits = true;
        } else if ((c == '.' || c == ',') && !point) {
            point = true;
            c = '.';
        } else if (!((c == '-' || c == '+') && i == 0)) {
            return std::nullopt;
        }
    }
    if (!digits) {
        return std::nullopt;
    }
    const char *begin = plain.data() + (plain.front() == '+' ? 1 : 0);
    double value = 0;
    const auto [end, error] = std::from_chars(begin, plain.data() + plain.size(), value);
    if (error != std::errc() || end != plain.data() + plain.size()) {
        return std::nullopt;
    }
    return value;
}

// -1, 0 or 1 as the cell, shown as the list shows it, is below, equal to or
// above `value`. Values far from it are settled without making the text.
int CompareShown(const ToolListRows &rows, int row, ListColumn column, double cell, double value)
{
    if (column == ListColumn::MagNo || column == ListColumn::Pen) {
        return cell < value ? -1 : cell > value ? 1 : 0;
    }
    // The text is rounded to three decimals from the single's shortest
    // digits, which lie within a few millionths of it.
    const double margin = 0.001 + std::fabs(cell) * 1e-6;
    if (cell + margin < value) {
        return -1;
    }
    if (cell - margin > value) {
        return 1;
    }
    const std::string text = rows.Cell(row, column);
    double shown = 0;
    std::from_chars(text.data(), text.data() + text.size(), shown);
    return shown < value ? -1 : shown > value ? 1 : 0;
}

} // namespace

RowFilter::RowFilter(std::string_view query)
{
    for (std::string &word : Words(query)) {
        Term term;
        const char first = word.front();
        if ((first == 'd' || first == 'r') && word.size() >= 2 && IsOperator(word[1])) {
            static constexpr std::array<std::pair<std::string_view, Comparison>, 8> Operators = {{
                {"<=", Comparison::LessOrEqual},
                {">=", Comparison::GreaterOrEqual},
                {"!=", Comparison::NotEqual},
                {"<>", Comparison::NotEqual},
                {"==", Comparison::Equal},
                {"<", Comparison::Less},
                {">", Comparison::Greater},
                {"=", Comparison::Equal},
            }};
            const std::string_view rest = std::string_view(word).substr(1);
            for (const auto &[symbol, comparison] : Operators) {
                if (!rest.starts_with(symbol)) {
                    continue;
                }
                const std::string_view number = rest.substr(symbol.size());
                if (number.empty()) {
                    term.kind = TermKind::Condition; // still being typed: left out
                    break;
                }
                if (const std::optional<double> value = PlainNumber(number)) {
                    term.kind = TermKind::Condition;
                    term.value = *value;
                    term.column = first == 'd' ? ListColumn::ToolDia : ListColumn::CornerRad;
                    term.comparison = comparison;
                    term.text = std::move(word);
                    m_terms.push_back(std::move(term));
                }
                break;
            }
            if (term.kind == TermKind::Condition) {
                continue;
            }
        }
        if (const std::optional<double> value = PlainNumber(word)) {
            term.kind = TermKind::Number;
            term.value = *value;
        }
        term.text = std::move(word);
        m_terms.push_back(std::move(term));
    }
}

bool RowFilter::TermMatches(const Term &term, const ToolListRows &rows, int row)
{
    switch (term.kind) {
    case TermKind::Condition: {
        const std::optional<double> cell = rows.Number(row, term.column);
        if (!cell) {
            return false;
        }
        const int order = CompareShown(rows, row, term.column, *cell, term.value);
        switch (term.comparison) {
        case Comparison::Less:
            return order < 0;
        case Comparison::LessOrEqual:
            return order <= 0;
        case Comparison::Greater:
            return order > 0;
        case Comparison::GreaterOrEqual:
            return order >= 0;
        case Comparison::Equal:
            return order == 0;
        case Comparison::NotEqual:
            return order != 0;
        }
        return false;
    }
    case TermKind::Number:
        for (ListColumn column : NumberColumns) {
            const std::optional<double> cell = rows.Number(row, column);
            if (cell && (CompareShown(rows, row, column, *cell, term.value) == 0 ||
                         static_cast<float>(*cell) == static_cast<float>(term.value))) {
                return true;
            }
        }
        break;
    case TermKind::Word:
        if (EqualsFolded(rows.Text(row, ListColumn::ToolKind), term.text)) {
            return true;
        }
        break;
    }
    return Contains(rows.Text(row, ListColumn::ToolName), term.text);
}

bool RowFilter::Matches(const ToolListRows &rows, int row) const
{
    if (m_terms.empty()) {
        return true;
    }
    if (!rows.HasTool(row)) {
        return false;
    }
    for (const Term &term : m_terms) {
        if (!TermMatches(term, rows, row)) {
            return false;
        }
    }
    return true;
}

std::vector<bool> RowFilter::MatchAll(const ToolListRows &rows) const
{
    std::vector<bool> matches(static_cast<std::size_t>(rows.RowCount()));
    for (int row = 0; row < rows.RowCount(); ++row) {
        matches[static_cast<std::size_t>(row)] = Matches(rows, row);
    }
    return matches;
}

} // namespace qor
