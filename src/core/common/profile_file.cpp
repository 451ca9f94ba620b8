#include "profile_file.h"

#include "atomic_file.h"
#include "native_file.h"

#include <algorithm>
#include <filesystem>
#include <vector>

#ifdef _WIN32
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#endif

namespace qor {

namespace {

constexpr std::string_view Blanks = " \t\v\f\r\n";
constexpr std::string_view NewLine = "\r\n";
constexpr std::string_view Utf8ByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view Utf16LeByteOrderMark = "\xFF\xFE";

std::string_view TrimBlank(std::string_view text)
{
    auto first = text.find_first_not_of(Blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    auto last = text.find_last_not_of(Blanks);
    return text.substr(first, last - first + 1);
}

bool EqualNoCase(std::string_view a, std::string_view b)
{
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        char x = a[i] >= 'a' && a[i] <= 'z' ? static_cast<char>(a[i] - 32) : a[i];
        char y = b[i] >= 'a' && b[i] <= 'z' ? static_cast<char>(b[i] - 32) : b[i];
        if (x != y) {
            return false;
        }
    }
    return true;
}

// One character of UTF-8 text and its length in bytes. A byte that does not
// begin a well-formed sequence stands alone as U+FFFD. A surrogate encoded on
// its own is taken as it is: a UTF-16 file may hold one, and it must go back
// into the file unchanged.
struct Character
{
    char32_t code;
    std::size_t length;
};

Character NextCharacter(std::string_view text, std::size_t pos)
{
    auto byte = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(pos);
    if (lead < 0x80) {
        return {lead, 1};
    }
    const std::size_t length = lead >= 0xC2 && lead < 0xE0   ? 2
                               : lead >= 0xE0 && lead < 0xF0 ? 3
                               : lead >= 0xF0 && lead < 0xF5 ? 4
                                                             : 0;
    constexpr Character invalid{0xFFFD, 1};
    if (length == 0 || length > text.size() - pos) {
        return invalid;
    }
    char32_t code = lead & (0x7F >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(pos + i) & 0xC0) != 0x80) {
            return invalid;
        }
        code = code << 6 | (byte(pos + i) & 0x3F);
    }
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    return code < smallest[length] || code > 0x10FFFF ? invalid : Character{code, length};
}

void AppendUtf8(std::string &out, char32_t code)
{
    auto put = [&out](char32_t bits) { out += static_cast<char>(bits); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | code >> 6);
        put(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        put(0xE0 | code >> 12);
        put(0x80 | (code >> 6 & 0x3F));
        put(0x80 | (code & 0x3F));
    } else {
        put(0xF0 | code >> 18);
        put(0x80 | (code >> 12 & 0x3F));
        put(0x80 | (code >> 6 & 0x3F));
        put(0x80 | (code & 0x3F));
    }
}

// UTF-16 LE text (after its byte order mark) as UTF-8. An odd last byte is no
// character and is dropped.
std::string Utf8FromUtf16Le(std::string_view bytes)
{
    auto unit = [&bytes](std::size_t i) -> char32_t {
        return static_cast<unsigned char>(bytes[i]) | static_cast<unsigned char>(bytes[i + 1]) << 8;
    };
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        char32_t code = unit(i);
        if (code >= 0xD800 && code < 0xDC00 && i + 3 < bytes.size()) {
            char32_t low = unit(i + 2);
            if (low >= 0xDC00 && low < 0xE000) {
                code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
                i += 2;
            }
        }
        AppendUtf8(text, code);
    }
    return text;
}

std::string Utf16LeFromUtf8(std::string_view text)
{
    std::string bytes;
    bytes.reserve(text.size() * 2);
    auto put = [&bytes](char32_t unit) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    };
    for (std::size_t pos = 0; pos < text.size();) {
        Character c = NextCharacter(text, pos);
        pos += c.length;
        if (c.code >= 0x10000) {
            put(0xD800 + ((c.code - 0x10000) >> 10));
            put(0xDC00 + ((c.code - 0x10000) & 0x3FF));
        } else {
            put(c.code);
        }
    }
    return bytes;
}

// The longest start of `text` that fits into `limit` UTF-16 units, never half
// a character: the Windows functions count a value's length in UTF-16 units.
std::string_view CutToUtf16Units(std::string_view text, std::size_t limit)
{
    std::size_t pos = 0;
    std::size_t units = 0;
    while (pos < text.size()) {
        Character c = NextCharacter(text, pos);
        units += c.code >= 0x10000 ? 2 : 1;
        if (units > limit) {
            break;
        }
        pos += c.length;
    }
    return text.substr(0, pos);
}

// A profile file's text as UTF-8, and how the file holds it: as it is (ANSI or
// UTF-8), as UTF-8 after a byte order mark, or as UTF-16 LE after one (what
// Notepad saves as "Unicode").
enum class Encoding
{
    Bytes,
    Utf8WithBom,
    Utf16Le
};

struct ProfileText
{
    Encoding encoding;
    std::string text;
};

ProfileText Decode(std::string_view content)
{
    if (content.starts_with(Utf16LeByteOrderMark)) {
        return {Encoding::Utf16Le, Utf8FromUtf16Le(content.substr(Utf16LeByteOrderMark.size()))};
    }
    if (content.starts_with(Utf8ByteOrderMark)) {
        return {Encoding::Utf8WithBom, std::string(content.substr(Utf8ByteOrderMark.size()))};
    }
    return {Encoding::Bytes, std::string(content)};
}

std::string Encode(Encoding encoding, std::string text)
{
    switch (encoding) {
    case Encoding::Utf16Le:
        return std::string(Utf16LeByteOrderMark) + Utf16LeFromUtf8(text);
    case Encoding::Utf8WithBom:
        return std::string(Utf8ByteOrderMark) + text;
    case Encoding::Bytes:
        break;
    }
    return text;
}

// One line of the file: its text and its line end, kept apart so that lines
// not touched are written back exactly.
struct Line
{
    std::string_view text;
    std::string_view end;
};

std::vector<Line> SplitLines(std::string_view content)
{
    std::vector<Line> lines;
    std::size_t pos = 0;
    while (pos < content.size()) {
        auto stop = content.find_first_of("\r\n", pos);
        if (stop == std::string_view::npos) {
            lines.push_back({content.substr(pos), {}});
            break;
        }
        std::size_t endLength =
            content[stop] == '\r' && stop + 1 < content.size() && content[stop + 1] == '\n' ? 2 : 1;
        lines.push_back({content.substr(pos, stop - pos), content.substr(stop, endLength)});
        pos = stop + endLength;
    }
    return lines;
}

// The section name of a header line, or false when the line is not one. The
// name is what stands between the "[" and the last "]" ("[Two]]" is section
// "Two]"); a line that never closes its "[" is no header but a key.
bool SectionName(std::string_view line, std::string_view &name)
{
    std::string_view t = TrimBlank(line);
    if (t.empty() || t.front() != '[') {
        return false;
    }
    auto close = t.rfind(']');
    if (close == std::string_view::npos) {
        return false;
    }
    name = TrimBlank(t.substr(1, close - 1));
    return true;
}

// Every line that is neither blank nor a header is a key: the text before its
// first "=", or the whole line, then with an empty value. So ";x=1" is the key
// ";x", as Windows has it.
bool KeyOfLine(std::string_view line, std::string_view &key, std::string_view &value)
{
    std::string_view t = TrimBlank(line);
    if (t.empty()) {
        return false;
    }
    auto equals = t.find('=');
    key = TrimBlank(t.substr(0, equals));
    value = equals == std::string_view::npos ? std::string_view() : TrimBlank(t.substr(equals + 1));
    return true;
}

// The lines [begin, end) of the first section called `section`, after its
// header. The lines before the first header are the section without a name.
struct SectionRange
{
    bool found = false;
    std::size_t begin = 0;
    std::size_t end = 0;
};

SectionRange FindSection(const std::vector<Line> &lines, std::string_view section)
{
    section = TrimBlank(section);
    SectionRange range;
    range.found = section.empty();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        std::string_view name;
        if (!SectionName(lines[i].text, name)) {
            continue;
        }
        if (range.found) {
            range.end = i;
            return range;
        }
        if (EqualNoCase(name, section)) {
            range.found = true;
            range.begin = i + 1;
        }
    }
    range.end = range.found ? lines.size() : 0;
    return range;
}

// The index of the first line of `range` that holds `key`, or npos.
std::size_t FindKey(const std::vector<Line> &lines, const SectionRange &range, std::string_view key)
{
    key = TrimBlank(key);
    for (std::size_t i = range.begin; i < range.end; ++i) {
        std::string_view lineKey, value;
        if (KeyOfLine(lines[i].text, lineKey, value) && EqualNoCase(lineKey, key)) {
            return i;
        }
    }
    return std::string_view::npos;
}

} // namespace

struct ProfileDocument::Parsed
{
    ProfileText profile;
    std::vector<Line> lines;
};

ProfileDocument::ProfileDocument(std::string_view content)
{
    auto parsed = std::make_shared<Parsed>();
    parsed->profile = Decode(content);
    parsed->lines = SplitLines(parsed->profile.text);
    m_parsed = std::move(parsed);
}

std::string ProfileDocument::Find(std::string_view section, std::string_view key) const
{
    const auto &lines = m_parsed->lines;
    const SectionRange range = FindSection(lines, section);
    const std::size_t at = FindKey(lines, range, key);
    if (at == std::string_view::npos) {
        return {};
    }
    std::string_view lineKey, value;
    KeyOfLine(lines[at].text, lineKey, value);
    if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
        value.back() == value.front()) {
        value = value.substr(1, value.size() - 2);
    }
    return std::string(CutToUtf16Units(value, ProfileValueLimit));
}

std::string FindProfileValue(std::string_view content, std::string_view section,
                             std::string_view key)
{
    return ProfileDocument(content).Find(section, key);
}

std::string SetProfileValue(std::string_view content, std::string_view section,
                            std::string_view key, std::string_view value)
{
    const ProfileText profile = Decode(content);
    const auto lines = SplitLines(profile.text);
    const SectionRange range = FindSection(lines, section);
    const std::size_t replace = FindKey(lines, range, key);

    // A replaced key keeps the file's spelling of its name. Blanks before the
    // value are dropped, as Windows does (they would not be read anyway); the
    // written line always ends in CR LF.
    std::string_view name = TrimBlank(key);
    if (replace != std::string_view::npos) {
        std::string_view ignored;
        KeyOfLine(lines[replace].text, name, ignored);
    }
    value.remove_prefix(std::min(value.find_first_not_of(Blanks), value.size()));
    std::string entry = std::string(name) + "=" + std::string(value) + std::string(NewLine);

    std::string out;
    out.reserve(profile.text.size() + entry.size() + section.size() + 8);
    auto endLastLine = [&out, &lines] {
        if (!lines.empty() && lines.back().end.empty()) {
            out.append(NewLine);
        }
    };

    if (!range.found) {
        out.append(profile.text);
        endLastLine();
        out.append("[").append(TrimBlank(section)).append("]").append(NewLine).append(entry);
        return Encode(profile.encoding, std::move(out));
    }

    // A new key goes after the section's last line that is not blank.
    std::size_t insertAt = range.begin;
    if (replace == std::string_view::npos) {
        for (std::size_t i = range.begin; i < range.end; ++i) {
            if (!TrimBlank(lines[i].text).empty()) {
                insertAt = i + 1;
            }
        }
    }
    for (std::size_t i = 0; i <= lines.size(); ++i) {
        if (replace == std::string_view::npos && i == insertAt) {
            if (i == lines.size()) {
                endLastLine();
            }
            out.append(entry);
        }
        if (i == lines.size()) {
            break;
        }
        if (i == replace) {
            out.append(entry);
        } else {
            out.append(lines[i].text).append(lines[i].end);
        }
    }
    return Encode(profile.encoding, std::move(out));
}

std::string ReadProfileEntryPortable(const std::string &file, std::string_view section,
                                     std::string_view key)
{
    auto content = ReadWholeFile(file, MaxProfileBytes);
    if (!content) {
        return {};
    }
    return FindProfileValue(content.value(), section, key);
}

bool WriteProfileEntryPortable(const std::string &file, std::string_view section,
                               std::string_view key, std::string_view value)
{
    std::string existing;
    if (FileExists(file)) {
        auto content = ReadWholeFile(file, MaxProfileBytes);
        if (!content) {
            return false;
        }
        existing = std::move(content.value());
    }
    return WriteFileAtomically(file, SetProfileValue(existing, section, key, value)).ok();
}

#ifdef _WIN32

namespace {

std::wstring WideText(std::string_view utf8)
{
    return NativePath(utf8).native();
}

// The profile functions look a name without a folder up in the Windows
// folder: they are always given the full path.
std::wstring FullWidePath(const std::string &file)
{
    std::error_code ec;
    auto full = std::filesystem::absolute(NativePath(file), ec);
    return ec ? NativePath(file).native() : full.native();
}

} // namespace

std::string ReadProfileEntry(const std::string &file, std::string_view section,
                             std::string_view key)
{
    wchar_t buffer[256] = {};
    GetPrivateProfileStringW(WideText(section).c_str(), WideText(key).c_str(), L"", buffer, 255,
                             FullWidePath(file).c_str());
    return Utf8Path(std::filesystem::path(std::wstring(buffer)));
}

bool WriteProfileEntry(const std::string &file, std::string_view section, std::string_view key,
                       std::string_view value)
{
    return WritePrivateProfileStringW(WideText(section).c_str(), WideText(key).c_str(),
                                      WideText(value).c_str(), FullWidePath(file).c_str()) != 0;
}

#else

std::string ReadProfileEntry(const std::string &file, std::string_view section,
                             std::string_view key)
{
    return ReadProfileEntryPortable(file, section, key);
}

bool WriteProfileEntry(const std::string &file, std::string_view section, std::string_view key,
                       std::string_view value)
{
    return WriteProfileEntryPortable(file, section, key, value);
}

#endif

} // namespace qor
