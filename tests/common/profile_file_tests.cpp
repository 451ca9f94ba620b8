#include "common.h"
#include "profile_file.h"
#include "temp_dir.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace qor {
namespace {

std::string TrimBlanks(std::string_view text)
{
    auto first = text.find_first_not_of(' ');
    return first == std::string_view::npos
               ? std::string()
               : std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

TEST(ProfileRead, FindsKeysWithoutRegardToCaseTrimsUnquotesAndToleratesJunk)
{
    const std::string text = "garbage before any section\n"
                             "[Config]\r\n"
                             "key without equals\n"
                             "\x01\x02 binary \xff\n"
                             "  Magazine Max =  20  \r\n"
                             "Name=\"  quoted  \"\r\n"
                             "Single='x'\r\n"
                             "A=first\n"
                             "a=second\n"
                             "Long=" +
                             std::string(300, 'v') +
                             "\n"
                             "[Files]\r\n"
                             "TTL File=C:\\HOLBENMILL\\Atc.ttl\r\n"
                             "[config]\n"
                             "B=in the duplicate section\n"
                             "Last=no line break";

    EXPECT_EQ(FindProfileValue(text, "config", "MAGAZINE MAX"), "20");
    EXPECT_EQ(FindProfileValue(text, "Config", "Name"), "  quoted  ");
    EXPECT_EQ(FindProfileValue(text, "Config", "Single"), "x");
    EXPECT_EQ(FindProfileValue(text, "Config", "A"), "first");
    EXPECT_EQ(FindProfileValue(text, "Config", "B"), "");
    EXPECT_EQ(FindProfileValue(text, "Config", "Long"), std::string(254, 'v'));
    EXPECT_EQ(FindProfileValue(text, "FILES", "ttl file"), "C:\\HOLBENMILL\\Atc.ttl");
    EXPECT_EQ(FindProfileValue(text, "Files", "Magazine Max"), "");
    EXPECT_EQ(FindProfileValue(text, "Config", "Last"), "");
    EXPECT_EQ(FindProfileValue("[S]\nLast=no line break", "S", "Last"), "no line break");
    EXPECT_EQ(FindProfileValue("\xEF\xBB\xBF[Config]\r\nVersion=1.70\r\n", "Config", "Version"),
              "1.70");
}

// Profile text as UTF-16 LE with its byte order mark.
std::string Utf16Le(std::u16string_view text)
{
    std::string bytes = "\xFF\xFE";
    for (char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

std::string Repeated(std::string_view text, int times)
{
    std::string out;
    for (int i = 0; i < times; ++i) {
        out += text;
    }
    return out;
}

const std::string Brackets = "[Two]]\r\nB=2\r\n[Three\r\nC=3\r\n";
const std::string Leading = "Orphan=1\r\n[Config]\r\nA=2\r\n[]\r\nE=3\r\n";
const std::string Wrench = "\xF0\x9F\x94\xA7"; // U+1F527, two UTF-16 units

// The value Windows finds in what it takes for headers, keys and text.
TEST(ProfileRead, FindsTheValueWindowsFinds)
{
    const std::string utf16 = Utf16Le(u"[Config]\r\nBediener=Jürgen\r\nSymbol=\U0001F527\r\n");
    const struct
    {
        const char *name;
        std::string content, section, key, value;
    } cases[] = {
        {"HeaderEndsAtItsLastBracket", Brackets, "Two]", "B", "2"},
        {"NoHeaderWithoutClosingBracket", Brackets, "Two]", "C", "3"},
        {"UnclosedHeaderNamesNoSection", Brackets, "Three", "C", ""},
        {"KeyBeforeAnySection", Leading, "", "orphan", "1"},
        {"EmptyHeaderIsNotTheLeadingLines", Leading, "", "E", ""},
        {"KeyWithoutEqualsSignComesFirst", "[Q]\r\nK\r\nK=5\r\n", "Q", "K", ""},
        {"CommentLineIsAKeyToo", "[C]\r\n;x=1\r\n", "C", ";x", "1"},
        {"Utf16File", utf16, "config", "BEDIENER", "J\xC3\xBCrgen"},
        {"Utf16SurrogatePair", utf16, "Config", "Symbol", Wrench},
        {"LimitCountsUtf16Units", std::string("[L]\r\nU=").append(Repeated("\xC3\xBC", 300)), "L",
         "U", Repeated("\xC3\xBC", 254)},
        {"LimitCutsNoCharacterInHalf", std::string("[L]\r\nW=a").append(Repeated(Wrench, 130)), "L",
         "W", std::string("a").append(Repeated(Wrench, 126))},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(FindProfileValue(c.content, c.section, c.key), c.value) << c.name;
    }
}

// A write changes only the key's line, adds what is missing where Windows
// would, and keeps the file's encoding.
TEST(ProfileWrite, ChangesOnlyTheKeyLine)
{
    const std::string sections = "; my comment\r\n[Config]\r\nA=1\r\nB=2\r\n\r\n[Files]\r\nX=y\r\n";
    const struct
    {
        const char *name;
        std::string content, section, key, value, written;
    } cases[] = {
        {"ReplaceKeepsTheFilesSpelling", sections, "config", "a", "9",
         "; my comment\r\n[Config]\r\nA=9\r\nB=2\r\n\r\n[Files]\r\nX=y\r\n"},
        {"NewKeyAfterTheSectionsLastLine", sections, "Config", "C", "3",
         "; my comment\r\n[Config]\r\nA=1\r\nB=2\r\nC=3\r\n\r\n[Files]\r\nX=y\r\n"},
        {"MissingSectionAppended", sections, "Exe", "Text Editer", "Notepad.exe",
         sections + "[Exe]\r\nText Editer=Notepad.exe\r\n"},
        {"NewLinesEndInCrLf", "[Config]\nA=1", "Config", "B", "2", "[Config]\nA=1\r\nB=2\r\n"},
        {"ReplacedLineEndsInCrLfWithoutBlanks", "[Config]\n  a = 1\nB=2", "Config", "A", "  9 ",
         "[Config]\na=9 \r\nB=2"},
        {"UnclosedHeaderGetsItsSection", Brackets, "Three", "C", "9",
         Brackets + "[Three]\r\nC=9\r\n"},
        {"ReplaceBeforeAnySection", Leading, "", "ORPHAN", "9",
         "Orphan=9\r\n[Config]\r\nA=2\r\n[]\r\nE=3\r\n"},
        {"NewKeyBeforeAnySection", "[Config]\r\nA=2\r\n", "", "New", "9",
         "New=9\r\n[Config]\r\nA=2\r\n"},
        {"KeyWithoutEqualsSignReplaced", "[Q]\r\nK\r\nL=5\r\n", "Q", "k", "7",
         "[Q]\r\nK=7\r\nL=5\r\n"},
        {"Utf8ByteOrderMarkKept", "\xEF\xBB\xBF[S]\r\nA=1\r\n", "S", "B", "\xC3\xBC",
         "\xEF\xBB\xBF[S]\r\nA=1\r\nB=\xC3\xBC\r\n"},
        // A stray surrogate in a line not touched goes back unchanged.
        {"Utf16FileStaysUtf16", Utf16Le(u"[Config]\r\nBediener=Jürgen\r\n\xD800x\r\n"), "Config",
         "Name", "\xE5\xB7\xA5\xE5\x85\xB7" + Wrench,
         Utf16Le(u"[Config]\r\nBediener=Jürgen\r\n\xD800x\r\nName=工具\U0001F527\r\n")},
        {"Utf16FileOfOnlyItsByteOrderMark", "\xFF\xFE", "Config", "A", "1",
         Utf16Le(u"[Config]\r\nA=1\r\n")}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);

        const std::string written = SetProfileValue(c.content, c.section, c.key, c.value);

        EXPECT_EQ(written, c.written);
        EXPECT_EQ(FindProfileValue(written, c.section, c.key), TrimBlanks(c.value));
    }
}

TEST(Common, FillsMissingAndEmptyKeysWithTheirDefaultAndCutsValuesTo256Characters)
{
    test::TempDir dir;
    dir.write("QorTool.INI", "[Config]\r\nCOLUMNHEADER FONT SIZE=\r\nTEXTBOX FONT SIZE=14\r\n");
    Common settings(dir.file("QorTool.INI"));

    EXPECT_EQ(settings.GetIniString("Config", "COLUMNHEADER FONT SIZE", "8"), "8");
    EXPECT_EQ(settings.GetIniString("Config", "TEXTBOX FONT SIZE", "11"), "14");
    EXPECT_EQ(settings.GetIniString("Exe", "Text Editer", "Notepad.exe"), "Notepad.exe");
    EXPECT_EQ(settings.WriteIniString("Files", "TTL File", std::string(300, 'p')), 1);

    EXPECT_EQ(dir.read("QorTool.INI"),
              "[Config]\r\nCOLUMNHEADER FONT SIZE=8\r\n"
              "TEXTBOX FONT SIZE=14\r\n[Exe]\r\nText Editer=Notepad.exe\r\n"
              "[Files]\r\nTTL File=" +
                  std::string(256, 'p') + "\r\n");
}

TEST(Common, GivesTheDefaultWhenTheFolderCannotBeWritten)
{
    test::TempDir dir;
    Common settings(dir.file("no such folder/QorTool.INI"));

    EXPECT_EQ(settings.GetIniString("Config", "Magazine Max", "100"), "100");
    EXPECT_EQ(settings.WriteIniString("Config", "Magazine Max", "5"), 0);
}

TEST(PathHelpers, SplitAtTheLastSeparatorOfEitherKind)
{
    EXPECT_EQ(DirOfPath("C:\\HOLBENMILL\\Atc.ttl"), "C:\\HOLBENMILL\\");
    EXPECT_EQ(FileOfPath("/home/cam/Atc.ttl"), "Atc.ttl");
    EXPECT_EQ(DirOfPath("Atc.ttl"), "");
    EXPECT_EQ(FileOfPath("Atc.ttl"), "");
    EXPECT_EQ(FileOfPath("C:\\folder\\"), "");
}

} // namespace
} // namespace qor
