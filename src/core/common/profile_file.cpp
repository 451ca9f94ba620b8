#include "profile_file.h"

#include "atomic_file.h"
#include "native_file.h"

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

std::string_view TrimBlank(std::string_view text)
{
    constexpr std::string_view blanks = " \t\v\f\r\n";
    auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    auto last = text.find_last_not_of(blanks);
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

constexpr std::string_view Utf8ByteOrderMark = "\xEF\xBB\xBF";

// A UTF-8 file may begin with a byte order mark; it is not part of the first
// line.
bool SkipByteOrderMark(std::string_view &content)
{
    if (content.substr(0, Utf8ByteOrderMark.size()) == Utf8ByteOrderMark) {
        content.remove_prefix(Utf8ByteOrderMark.size());
        return true;
    }
    return false;
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

// The section name of a header line, or false when the line is not one.
bool SectionName(std::string_view line, std::string_view &name)
{
    std::string_view t = TrimBlank(line);
    if (t.empty() || t.front() != '[') {
        return false;
    }
    auto close = t.find(']');
    name = TrimBlank(
        t.substr(1, close == std::string_view::npos ? std::string_view::npos : close - 1));
    return true;
}

bool KeyOfLine(std::string_view line, std::string_view &key, std::string_view &value)
{
    auto equals = line.find('=');
    if (equals == std::string_view::npos) {
        return false;
    }
    key = TrimBlank(line.substr(0, equals));
    value = TrimBlank(line.substr(equals + 1));
    return true;
}

// Index range [begin, end) of the lines of the first section called `section`
// (after its header); begin is npos when there is none.
struct SectionRange
{
    std::size_t header = std::string_view::npos;
    std::size_t end = 0;
};

SectionRange FindSection(const std::vector<Line> &lines, std::string_view section)
{
    SectionRange range;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        std::string_view name;
        if (!SectionName(lines[i].text, name)) {
            continue;
        }
        if (range.header != std::string_view::npos) {
            range.end = i;
            return range;
        }
        if (EqualNoCase(name, TrimBlank(section))) {
            range.header = i;
        }
    }
    range.end = lines.size();
    return range;
}

} // namespace

std::string FindProfileValue(std::string_view content, std::string_view section,
                             std::string_view key)
{
    SkipByteOrderMark(content);
    auto lines = SplitLines(content);
    SectionRange range = FindSection(lines, section);
    if (range.header == std::string_view::npos) {
        return {};
    }
    for (std::size_t i = range.header + 1; i < range.end; ++i) {
        std::string_view lineKey, value;
        if (KeyOfLine(lines[i].text, lineKey, value) && EqualNoCase(lineKey, TrimBlank(key))) {
            if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
                value.back() == value.front()) {
                value = value.substr(1, value.size() - 2);
            }
            return std::string(value.substr(0, ProfileValueLimit));
        }
    }
    return {};
}

std::string SetProfileValue(std::string_view content, std::string_view section,
                            std::string_view key, std::string_view value)
{
    constexpr std::string_view newLine = "\r\n";
    bool byteOrderMark = SkipByteOrderMark(content);
    auto lines = SplitLines(content);
    std::string entry = std::string(TrimBlank(key)) + "=" + std::string(value);
    SectionRange range = FindSection(lines, section);

    std::string out;
    out.reserve(content.size() + entry.size() + section.size() + 8);
    if (byteOrderMark) {
        out.append(Utf8ByteOrderMark);
    }
    auto append = [&out](const Line &line) {
        out.append(line.text);
        out.append(line.end);
    };

    if (range.header == std::string_view::npos) {
        for (const Line &line : lines) {
            append(line);
        }
        if (!lines.empty() && lines.back().end.empty()) {
            out.append(newLine);
        }
        out.append("[").append(TrimBlank(section)).append("]").append(newLine);
        out.append(entry).append(newLine);
        return out;
    }

    // Replace the key's line, or add the entry after the section's last
    // non-blank line.
    std::size_t replace = std::string_view::npos;
    std::size_t lastFilled = range.header;
    for (std::size_t i = range.header + 1; i < range.end; ++i) {
        std::string_view lineKey, lineValue;
        if (KeyOfLine(lines[i].text, lineKey, lineValue) && EqualNoCase(lineKey, TrimBlank(key))) {
            replace = i;
            break;
        }
        if (!TrimBlank(lines[i].text).empty()) {
            lastFilled = i;
        }
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i == replace) {
            out.append(entry).append(lines[i].end.empty() ? std::string_view() : lines[i].end);
            continue;
        }
        append(lines[i]);
        if (replace == std::string_view::npos && i == lastFilled) {
            if (lines[i].end.empty()) {
                out.append(newLine);
            }
            out.append(entry).append(newLine);
        }
    }
    return out;
}

std::string ReadProfileEntryPortable(const std::string &file, std::string_view section,
                                     std::string_view key)
{
    auto content = ReadWholeFile(file);
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
        auto content = ReadWholeFile(file);
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
