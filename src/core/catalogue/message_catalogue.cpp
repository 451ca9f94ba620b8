#include "message_catalogue.h"

#include "atomic_file.h"
#include "numeric_text.h"
#include "text_decoding.h"

#include <charconv>
#include <cstdint>
#include <optional>

namespace qor {

namespace {

char Upper(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// `upper` is upper-case ASCII; the text may be in any case.
bool EqualsUpper(std::string_view text, std::string_view upper)
{
    if (text.size() != upper.size()) {
        return false;
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (Upper(text[i]) != upper[i]) {
            return false;
        }
    }
    return true;
}

bool StartsWithUpper(std::string_view text, std::string_view upper)
{
    return text.size() >= upper.size() && EqualsUpper(text.substr(0, upper.size()), upper);
}

bool ContainsUpper(std::string_view text, std::string_view upper)
{
    for (std::size_t i = 0; i + upper.size() <= text.size(); ++i) {
        if (EqualsUpper(text.substr(i, upper.size()), upper)) {
            return true;
        }
    }
    return false;
}

// Plain digits are by far the most common number text; they skip the general
// numeric parser, which gives the same result for them.
std::optional<std::int16_t> PlainDigits(std::string_view text)
{
    if (text.empty() || text.size() > 5) {
        return std::nullopt;
    }
    int value = 0;
    for (char c : text) {
        if (c < '0' || c > '9') {
            return std::nullopt;
        }
        value = value * 10 + (c - '0');
    }
    if (value > 32767) {
        return std::nullopt;
    }
    return static_cast<std::int16_t>(value);
}

bool Numeric(std::string_view text)
{
    return PlainDigits(text) || IsNumeric(text);
}

// The 16-bit value of a numeric text, empty when out of range.
std::optional<std::int16_t> Number(std::string_view text)
{
    if (auto plain = PlainDigits(text)) {
        return plain;
    }
    return ToInt16(text);
}

// The value as the texts are written: a "##" comment cut off (quotes do not
// protect it), blanks trimmed, then one leading and one trailing double quote
// removed, so quotes can keep blanks.
std::string_view CleanValue(std::string_view value)
{
    if (auto comment = value.find("##"); comment != std::string_view::npos) {
        value = value.substr(0, comment);
    }
    value = TrimSpaces(value);
    if (!value.empty() && value.front() == '"') {
        value.remove_prefix(1);
    }
    if (!value.empty() && value.back() == '"') {
        value.remove_suffix(1);
    }
    return value;
}

// Where the text ends when only its first `maxLines` lines are read (a line
// ends at CR LF, LF or a lone CR). The terminators are the same bytes in UTF-8
// and in the code pages (no second byte of a character is CR or LF), so this
// can run before decoding.
std::size_t EndOfFirstLines(std::string_view text, int maxLines)
{
    int lines = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n' || text[i] == '\r') {
            if (++lines == maxLines) {
                return i;
            }
            if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
                ++i;
            }
        }
    }
    return text.size();
}

// Calls `lineFound(line)` for each line; a terminator at the very end does not
// start another line. Stops early when `lineFound` returns false.
template <typename F> void ForEachLine(std::string_view text, F lineFound)
{
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char c = text[i];
        if (c != '\n' && c != '\r') {
            continue;
        }
        if (!lineFound(text.substr(begin, i - begin))) {
            return;
        }
        if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
            ++i;
        }
        begin = i + 1;
    }
    if (begin < text.size()) {
        lineFound(text.substr(begin));
    }
}

std::string Quoted(std::string_view text)
{
    std::string quoted;
    quoted.reserve(text.size() + 2);
    quoted += '"';
    quoted += text;
    quoted += '"';
    return quoted;
}

Error LineError(const std::string &name, int lineNumber, std::string_view line,
                const std::string &what)
{
    return Error(Quoted(name) + ", line " + std::to_string(lineNumber) + ": " + what, lineNumber,
                 std::string(line));
}

void AppendNumber(std::string &text, long long number)
{
    char digits[24];
    auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    text.append(digits, end);
}

} // namespace

int SectionNumber(std::string_view name)
{
    struct Known
    {
        std::string_view name;
        int number;
    };
    static constexpr Known known[] = {
        {"FRMLIST", MessageCatalogue::FrmList},
        {"FRMFSET", MessageCatalogue::FrmFSet},
        {"FRMEDITOR", MessageCatalogue::FrmEditor},
        {"FRMINFO", MessageCatalogue::FrmInfo},
        {"MSG", MessageCatalogue::Msg},
        {"STRING", MessageCatalogue::String},
        {"FRMLIMIT", MessageCatalogue::FrmLimit},
        {"SHEET", MessageCatalogue::Sheet},
    };
    name = TrimSpaces(name);
    for (const Known &k : known) {
        if (EqualsUpper(name, k.name)) {
            return k.number;
        }
    }
    return 0;
}

Status MessageCatalogue::Load(const std::string &path, int codePage)
{
    auto bytes = ReadWholeFile(path, MaxCatalogueBytes);
    if (!bytes) {
        return bytes.error();
    }
    return LoadFromBytes(bytes.value(), path, codePage);
}

Status MessageCatalogue::LoadFromBytes(std::string_view bytes, const std::string &name,
                                       int codePage)
{
    MessageCatalogue loaded;
    loaded.m_text = DecodeTextFile(bytes.substr(0, EndOfFirstLines(bytes, MaxLines)), codePage);
    const std::string_view text = loaded.m_text;

    int lineCount = 0;
    ForEachLine(text, [&](std::string_view) {
        ++lineCount;
        return true;
    });
    if (lineCount == 0) {
        return Error(Quoted(name) +
                     ": the file is empty, so it holds none of the program's texts.");
    }

    int section = 0;
    int lineNumber = 0;
    std::optional<Error> failure;
    ForEachLine(text, [&](std::string_view line) {
        ++lineNumber;
        // Positions below are counted in the trimmed line but cut from the line
        // as read, so an indented entry loses the start of its value: entries
        // are written flush left.
        std::string_view work = TrimSpaces(line);
        if (work.size() >= 2 && work.front() == '[' && work.back() == ']') {
            section = SectionNumber(work.substr(1, work.size() - 2));
        }
        std::size_t equals = work.find('=');
        if (equals == std::string_view::npos) {
            return true;
        }
        std::string_view key = TrimSpaces(work.substr(0, equals));
        std::size_t prefix = 0;
        if (ContainsUpper(key, "TEXT")) {
            prefix = 4;
        } else if (ContainsUpper(key, "MSG") || ContainsUpper(key, "STR")) {
            prefix = 3;
        } else {
            return true;
        }
        std::string_view number = key.substr(prefix);
        std::string_view subNumber;
        std::size_t dash = number.find('-');
        if (dash != std::string_view::npos) {
            subNumber = number.substr(dash + 1);
            number = number.substr(0, dash);
            if (!Numeric(subNumber)) {
                return true;
            }
        }
        if (!Numeric(number)) {
            return true;
        }

        if (section == 0) {
            failure = LineError(name, lineNumber, line,
                                "the entry " + Quoted(key) +
                                    " stands outside a known section; put it under a header "
                                    "such as [frmList].");
            return false;
        }
        std::optional<std::int16_t> n = Number(number);
        if (!n || *n < 0 || *n >= lineCount) {
            failure = LineError(name, lineNumber, line,
                                "the entry " + Quoted(key) + " has a number outside 0 to " +
                                    std::to_string(lineCount - 1) + "; a catalogue of " +
                                    std::to_string(lineCount) +
                                    " lines can number its entries only in that range.");
            return false;
        }
        std::optional<std::int16_t> s;
        if (dash != std::string_view::npos) {
            s = Number(subNumber);
            if (!s) {
                failure = LineError(name, lineNumber, line,
                                    "the entry " + Quoted(key) +
                                        " has a sub-key number outside -32768 to 32767.");
                return false;
            }
        }

        std::string_view value = CleanValue(line.substr(equals + 1));
        Span span{static_cast<std::size_t>(value.data() - text.data()), value.size()};
        std::vector<Entry> &table = loaded.m_sections[static_cast<std::size_t>(section - 1)];
        if (table.size() <= static_cast<std::size_t>(*n)) {
            table.resize(static_cast<std::size_t>(*n) + 1);
        }
        Entry &entry = table[static_cast<std::size_t>(*n)];
        if (!s || *s == 1) {
            entry.Text = span;
        } else {
            AppendNumber(entry.SubIndex, *s);
            entry.SubIndex += ':';
            AppendNumber(entry.SubIndex, static_cast<long long>(loaded.m_pool.size()));
            entry.SubIndex += ',';
            loaded.m_pool.push_back(span);
        }
        return true;
    });
    if (failure) {
        return *failure;
    }

    *this = std::move(loaded);
    return Success();
}

std::string MessageCatalogue::GetText(std::string_view section, std::string_view key) const
{
    int number = SectionNumber(section);
    if (number == 0) {
        return {};
    }
    std::string_view base = key;
    std::string_view subKey;
    if (std::size_t dash = key.find('-'); dash != std::string_view::npos) {
        base = key.substr(0, dash);
        subKey = TrimSpaces(key.substr(dash + 1));
    }
    base = TrimSpaces(base);

    std::string_view rest;
    bool isStr = false;
    if (StartsWithUpper(base, "TEX")) {
        if (!StartsWithUpper(base, "TEXT")) {
            return {};
        }
        rest = base.substr(4);
    } else if (StartsWithUpper(base, "MSG")) {
        rest = base.substr(3);
    } else if (StartsWithUpper(base, "STR")) {
        rest = base.substr(3);
        isStr = true;
    } else {
        return {};
    }
    std::optional<std::int16_t> n = Number(rest);
    const std::vector<Entry> &table = m_sections[static_cast<std::size_t>(number - 1)];
    if (!n || *n < 0 || static_cast<std::size_t>(*n) >= table.size()) {
        return {};
    }
    const Entry &entry = table[static_cast<std::size_t>(*n)];

    if (isStr || !Numeric(subKey)) {
        return View(entry.Text);
    }
    if (auto s = Number(subKey); s && *s == 1) {
        return View(entry.Text);
    }

    // A plain text search, first match: a sub-key defined twice gives its
    // first text, and "2" can find the item of "12" when that comes first.
    // Sub-key case does not matter: the index holds only digits and signs.
    std::string_view index = entry.SubIndex;
    for (std::size_t at = index.find(subKey); at != std::string_view::npos;
         at = index.find(subKey, at + 1)) {
        std::size_t colon = at + subKey.size();
        if (colon >= index.size() || index[colon] != ':') {
            continue;
        }
        std::string_view poolIndex = index.substr(colon + 1);
        poolIndex = poolIndex.substr(0, poolIndex.find(','));
        std::size_t i = 0;
        auto [end, ec] = std::from_chars(poolIndex.data(), poolIndex.data() + poolIndex.size(), i);
        if (ec != std::errc() || end != poolIndex.data() + poolIndex.size() || i >= m_pool.size()) {
            return {};
        }
        return View(m_pool[i]);
    }
    return {};
}

bool MessageCatalogue::empty() const
{
    for (const std::vector<Entry> &table : m_sections) {
        if (!table.empty()) {
            return false;
        }
    }
    return m_pool.empty();
}

} // namespace qor
