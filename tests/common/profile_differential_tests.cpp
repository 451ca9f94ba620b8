// Our own profile (INI) implementation against the real Windows functions:
// every case puts the same bytes into two files, runs the same reads or the
// same write through GetPrivateProfileStringW/WritePrivateProfileStringW on
// one and through the portable functions on the other, and compares the
// results. Where everything is ASCII, GetPrivateProfileStringA and
// WritePrivateProfileStringA (on a third file) must agree with the W ones. Wine rewrites every line
// of a file it writes, where Windows keeps the lines it does not touch, so a written file is
// compared only where the two agree: the values read back through the real reader, the text
// encoding, and the key line that was written with its line end.
#include "native_file.h"
#include "profile_file.h"
#include "temp_dir.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

namespace qor {
namespace {

// Text through the same conversions the program's paths take.
std::wstring Wide(std::string_view utf8)
{
    return NativePath(utf8).native();
}

std::string Utf8(std::wstring_view wide)
{
    return Utf8Path(std::filesystem::path(std::wstring(wide)));
}

// The real functions, with the buffer size the program uses.
constexpr DWORD BufferSize = ProfileValueLimit + 1;

std::string RealReadW(const std::string &file, const std::string &section, const std::string &key)
{
    wchar_t buffer[BufferSize] = {};
    GetPrivateProfileStringW(Wide(section).c_str(), Wide(key).c_str(), L"", buffer, BufferSize,
                             Wide(file).c_str());
    return Utf8(buffer);
}

bool RealWriteW(const std::string &file, const std::string &section, const std::string &key,
                const std::string &value)
{
    return WritePrivateProfileStringW(Wide(section).c_str(), Wide(key).c_str(), Wide(value).c_str(),
                                      Wide(file).c_str()) != 0;
}

std::string RealReadA(const std::string &file, const std::string &section, const std::string &key)
{
    char buffer[BufferSize] = {};
    GetPrivateProfileStringA(section.c_str(), key.c_str(), "", buffer, BufferSize, file.c_str());
    return buffer;
}

bool RealWriteA(const std::string &file, const std::string &section, const std::string &key,
                const std::string &value)
{
    return WritePrivateProfileStringA(section.c_str(), key.c_str(), value.c_str(), file.c_str()) !=
           0;
}

std::string Utf16Le(std::string_view utf8)
{
    std::wstring wide = Wide(utf8);
    std::string bytes = "\xFF\xFE";
    for (wchar_t unit : wide) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

bool IsAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool EqualNoCase(std::string_view a, std::string_view b)
{
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return std::toupper(static_cast<unsigned char>(x)) ==
                      std::toupper(static_cast<unsigned char>(y));
           });
}

std::string_view Trim(std::string_view text)
{
    auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// What a written file shows of the write: its encoding, whether it is whole
// (a UTF-16 file of an odd number of bytes is not), and the lines that set the
// written key to the written value (blanks aside), each with its line end.
struct WrittenFile
{
    std::string encoding;
    bool whole = true;
    std::vector<std::string> keyLines{};

    bool operator==(const WrittenFile &) const = default;
};

void PrintTo(const WrittenFile &file, std::ostream *out)
{
    *out << file.encoding << (file.whole ? "" : " (cut)") << " key lines:";
    for (const auto &line : file.keyLines) {
        *out << " " << ::testing::PrintToString(line);
    }
}

WrittenFile Inspect(const std::string &bytes, std::string_view key, std::string_view value)
{
    WrittenFile file{"ANSI"};
    std::string text = bytes;
    if (bytes.starts_with("\xFF\xFE")) {
        file.encoding = "UTF-16 LE";
        file.whole = bytes.size() % 2 == 0;
        std::wstring wide;
        for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
            wide += static_cast<wchar_t>(static_cast<unsigned char>(bytes[i]) |
                                         static_cast<unsigned char>(bytes[i + 1]) << 8);
        }
        text = Utf8(wide);
    } else if (bytes.starts_with("\xEF\xBB\xBF")) {
        file.encoding = "UTF-8 with BOM";
        text = bytes.substr(3);
    }
    for (std::size_t pos = 0; pos < text.size();) {
        std::size_t stop = std::min(text.find_first_of("\r\n", pos), text.size());
        std::size_t next = text.compare(stop, 2, "\r\n") == 0 ? stop + 2
                           : stop < text.size()               ? stop + 1
                                                              : stop;
        std::string_view line = std::string_view(text).substr(pos, stop - pos);
        auto equals = line.find('=');
        if (equals != std::string_view::npos && EqualNoCase(Trim(line.substr(0, equals)), key) &&
            Trim(line.substr(equals + 1)) == Trim(value)) {
            file.keyLines.push_back(text.substr(pos, next - pos));
        }
        pos = next;
    }
    return file;
}

struct Entry
{
    std::string section;
    std::string key;
};

struct Change
{
    std::string section;
    std::string key;
    std::string value;
};

struct DiffCase
{
    std::string name;
    std::optional<std::string> content; // none: the file does not exist
    std::vector<Entry> reads;           // read before a write and again after it
    std::optional<Change> write = std::nullopt;
};

void PrintTo(const DiffCase &c, std::ostream *out)
{
    *out << c.name;
}

class ProfileDifferential : public ::testing::TestWithParam<DiffCase>
{};

TEST_P(ProfileDifferential, OursAgreesWithWindows)
{
    const DiffCase &c = GetParam();
    test::TempDir dir;
    // Names of their own per case: Wine keeps read files in a cache.
    const std::string windowsName = c.name + "-windows.ini", windows = dir.file(windowsName);
    const std::string ansiName = c.name + "-ansi.ini", ansi = dir.file(ansiName);
    const std::string oursName = c.name + "-ours.ini", ours = dir.file(oursName);
    bool ascii = IsAscii(dir.path()) && IsAscii(c.content.value_or(""));
    for (const auto &[section, key] : c.reads) {
        ascii = ascii && IsAscii(section) && IsAscii(key);
    }
    if (c.write) {
        ascii = ascii && IsAscii(c.write->section + c.write->key + c.write->value);
    }
    if (c.content) {
        for (const auto &name : {windowsName, ansiName, oursName}) {
            dir.write(name, *c.content);
        }
    }

    for (const auto &[section, key] : c.reads) {
        SCOPED_TRACE("reading [" + section + "] " + key);
        std::string expected = RealReadW(windows, section, key);
        EXPECT_EQ(ReadProfileEntryPortable(ours, section, key), expected);
        if (ascii) {
            EXPECT_EQ(RealReadA(windows, section, key), expected);
        }
    }
    if (!c.write) {
        return;
    }

    const Change &w = *c.write;
    bool written = RealWriteW(windows, w.section, w.key, w.value);
    EXPECT_EQ(WriteProfileEntryPortable(ours, w.section, w.key, w.value), written);
    if (ascii) {
        EXPECT_EQ(RealWriteA(ansi, w.section, w.key, w.value), written);
    }

    std::vector<Entry> readBack = c.reads;
    readBack.push_back({w.section, w.key});
    for (const auto &[section, key] : readBack) {
        SCOPED_TRACE("reading back [" + section + "] " + key);
        std::string expected = RealReadW(windows, section, key);
        EXPECT_EQ(RealReadW(ours, section, key), expected);
        if (ascii) {
            EXPECT_EQ(RealReadW(ansi, section, key), expected);
        }
    }
    WrittenFile expected = Inspect(dir.read(windowsName), w.key, w.value);
    EXPECT_EQ(Inspect(dir.read(oursName), w.key, w.value), expected);
    if (ascii) {
        EXPECT_EQ(Inspect(dir.read(ansiName), w.key, w.value), expected);
    }
}

const std::string Jurgen = "J\xC3\xBCrgen";           // Jürgen
const std::string Tools = "\xE5\xB7\xA5\xE5\x85\xB7"; // 工具
const std::string Mill = "Fr\xC3\xA4se";              // Fräse
const std::string Wrench = "\xF0\x9F\x94\xA7";        // U+1F527, two UTF-16 units
const std::string Length = "L\xC3\xA4nge";            // Länge

std::string Repeated(std::string_view text, int times)
{
    std::string out;
    for (int i = 0; i < times; ++i) {
        out += text;
    }
    return out;
}

// A settings file as Notepad saves it as "Unicode", and one as UTF-8 with a
// byte order mark.
const std::string Utf16Settings =
    Utf16Le("[Config]\r\nMagazine Max=20\r\nBediener=" + Jurgen + "\r\nSymbol=" + Wrench +
            "\r\n\r\n[Files]\r\nTTL File=C:\\" + Tools + "\\Atc.ttl\r\n");
const std::string Utf8Settings =
    "\xEF\xBB\xBF[Werkzeug]\r\nBediener=" + Jurgen + "\r\nName=" + Tools + "\r\n" + Length + "=" +
    Repeated("\xC3\xBC", 260) + "\r\nSymbole=" + Repeated(Wrench, 130) + "\r\n";
const std::string Brackets = "[One]\r\nA=1\r\n[Two]]\r\nB=2\r\n[Three\r\nC=3\r\n";
// Keys before the first header, and a header without a name that is not them.
const std::string Leading = "Orphan=1\r\n[Config]\r\nA=2\r\n[]\r\nE=3\r\n";

std::vector<DiffCase> Cases()
{
    const std::string v253(253, 'a'), v254(254, 'b'), v255(255, 'c'), v300(300, 'd');
    // Left out: a quoted value of exactly 254 characters, where Wine drops
    // the last character with the closing quote.
    return {
        // Reads.
        {"NamesIgnoreCase",
         "[Config]\r\nMagazine Max=20\r\nTEXTBOX FONT SIZE=14\r\n",
         {{"config", "MAGAZINE MAX"},
          {" CONFIG ", " textbox font size "},
          {"Config", "Missing"},
          {"Other", "Magazine Max"}}},
        {"FirstMatchWins",
         "[Config]\r\nA=first\r\na=second\r\n[Files]\r\nX=1\r\n[config]\r\nA=third\r\nB=later\r\n",
         {{"Config", "A"}, {"Config", "B"}, {"Files", "X"}}},
        {"QuotesAndBlanks",
         "[Q]\r\n  Spaced Key  =   spaced value   \r\n\tTabbed\t=\tt\t\r\nDouble=\"  kept  "
         "\"\r\nSingle='x'\r\nMixed=\"x'\r\nLone=\"\r\nTwoQuotes=\"\"\r\nInner=a \"b\" "
         "c\r\nEquals=b=c\r\nEmpty=\r\n",
         {{"Q", "Spaced Key"},
          {"Q", "Tabbed"},
          {"Q", "Double"},
          {"Q", "Single"},
          {"Q", "Mixed"},
          {"Q", "Lone"},
          {"Q", "TwoQuotes"},
          {"Q", "Inner"},
          {"Q", "Equals"},
          {"Q", "Empty"}}},
        {"KeyWithoutEqualsSign", "[Q]\r\nK\r\nK=5\r\nL=6\r\n", {{"Q", "K"}, {"Q", "L"}}},
        {"CommentLine", "[C]\r\n;x=1\r\nY=2\r\n", {{"C", "x"}, {"C", ";x"}, {"C", "Y"}}},
        {"KeysBeforeAnySection",
         Leading,
         {{"", "Orphan"}, {"Config", "Orphan"}, {"Config", "A"}, {"", "E"}}},
        {"BracketsInHeaders",
         Brackets + "  [ Four ]  \r\nD=4\r\n[Five] after\r\nE=5\r\n[Six] ]\r\nF=6\r\n",
         {{"One", "A"},
          {"Two", "B"},
          {"Two]", "B"},
          {"Three", "C"},
          {"Two]", "C"},
          {"Four", "D"},
          {"Five", "E"},
          {"Six", "F"},
          {"Six]", "F"}}},
        {"ValuesNearTheLimit",
         "[L]\r\nV253=" + v253 + "\r\nV254=" + v254 + "\r\nV255=" + v255 + "\r\nV300=" + v300 +
             "\r\nQuoted=\"" + v300 + "\"\r\n",
         {{"L", "V253"}, {"L", "V254"}, {"L", "V255"}, {"L", "V300"}, {"L", "Quoted"}}},
        {"LineFeedsOnly", "[Config]\nA=1\nB=2\n[Files]\nX=y", {{"Config", "B"}, {"Files", "X"}}},
        {"CarriageReturnsOnly", "[S]\rA=1\rB=2\r\n[T]\r\nC=3\r\n", {{"S", "B"}, {"T", "C"}}},
        {"Utf8WithBom",
         Utf8Settings,
         {{"Werkzeug", "Bediener"},
          {"werkzeug", "NAME"},
          {"Werkzeug", Length},
          {"Werkzeug", "L\xC3\x84NGE"},
          {"Werkzeug", "Symbole"}}},
        {"Utf16WithBom",
         Utf16Settings,
         {{"Config", "Magazine Max"},
          {"config", "bediener"},
          {"Config", "Symbol"},
          {"Files", "TTL File"},
          {"Files", "Magazine Max"}}},
        {"MissingFile", std::nullopt, {{"Config", "A"}}},

        // Writes.
        {"ReplaceKeepsTheFilesSpelling",
         "[Config]\r\n  Magazine Max =  20  \r\nB=2\r\n",
         {{"Config", "B"}},
         Change{"config", "magazine max", "5"}},
        {"ReplaceInTheFirstOfTwoSections",
         "[Config]\r\nA=1\r\n[config]\r\nA=2\r\n",
         {},
         Change{"CONFIG", "A", "3"}},
        {"ReplaceAKeyWithoutEqualsSign",
         "[Q]\r\nK\r\nL=5\r\n",
         {{"Q", "L"}},
         Change{"Q", "K", "7"}},
        {"ReplacedLastLineGetsItsLineEnd", "[Config]\nA=1", {}, Change{"Config", "A", "9"}},
        {"ReplacedLineGetsCrLfInALineFeedFile",
         "[Config]\nA=1\nB=2\n",
         {{"Config", "B"}},
         Change{"Config", "A", "9"}},
        {"NewKeyAtTheEndOfItsSection",
         "[Config]\r\nA=1\r\n\r\n[Files]\r\nX=y\r\n",
         {{"Config", "A"}, {"Files", "X"}},
         Change{"Config", "C", "3"}},
        {"NewKeyGetsCrLfInALineFeedFile",
         "[Config]\nA=1\n[Files]\nX=y\n",
         {{"Config", "A"}, {"Files", "X"}},
         Change{"Config", "B", "2"}},
        {"MissingSectionAppended",
         "[Config]\r\nA=1",
         {{"Config", "A"}},
         Change{"Exe", "Text Editer", "Notepad.exe"}},
        {"NewSectionGetsCrLfInALineFeedFile",
         "[Config]\nA=1\n",
         {{"Config", "A"}},
         Change{"Files", "TTL File", "C:\\HOLBENMILL\\Atc.ttl"}},
        {"MissingFileCreated", std::nullopt, {}, Change{"Config", "Magazine Max", "100"}},
        {"EmptyFile", "", {}, Change{"Config", "Magazine Max", "100"}},
        {"EmptyValue", "[Config]\r\nA=1\r\nB=2\r\n", {{"Config", "B"}}, Change{"Config", "A", ""}},
        {"BlanksAroundAValue", "[S]\r\n", {}, Change{"S", "A", " v "}},
        {"LongValueKeptWhole",
         "[Files]\r\n",
         {},
         Change{"Files", "TTL File", std::string(300, 'p')}},
        {"WriteUnderBrokenHeaders",
         Brackets,
         {{"One", "A"}, {"Two]", "B"}, {"Two]", "C"}},
         Change{"Three", "C", "9"}},
        {"WriteNextToAComment",
         "[C]\r\n;x=1\r\nY=2\r\n",
         {{"C", "Y"}, {"C", ";x"}},
         Change{"C", "x", "5"}},
        {"WriteAKeyBeforeAnySection", Leading, {{"Config", "A"}}, Change{"", "Orphan", "9"}},
        {"WriteANewKeyBeforeAnySection",
         "[Config]\r\nA=2\r\n",
         {{"Config", "A"}},
         Change{"", "New", "9"}},
        {"WriteBesideAKeyBeforeAnySection",
         Leading,
         {{"Config", "A"}, {"", "Orphan"}},
         Change{"Config", "Orphan", "7"}},
        {"Utf16FileReplace",
         Utf16Settings,
         {{"Config", "Magazine Max"}, {"Config", "Symbol"}, {"Files", "TTL File"}},
         Change{"Config", "Bediener", Tools}},
        {"Utf16FileNewSection",
         Utf16Settings,
         {{"Config", "Bediener"}, {"Files", "TTL File"}},
         Change{"Werkzeug", "Name", Mill + Wrench}},
        {"Utf16FileWithOnlyItsBom", "\xFF\xFE", {}, Change{"Config", "Bediener", Jurgen}},
        {"Utf8FileReplace",
         Utf8Settings,
         {{"Werkzeug", "Bediener"}, {"Werkzeug", Length}},
         Change{"Werkzeug", "Name", Mill}},
        {"Utf8FileNewKey", Utf8Settings, {{"Werkzeug", "Name"}}, Change{"Werkzeug", Jurgen, Tools}},
    };
}

INSTANTIATE_TEST_SUITE_P(Cases, ProfileDifferential, ::testing::ValuesIn(Cases()),
                         [](const auto &info) { return info.param.name; });

} // namespace
} // namespace qor
