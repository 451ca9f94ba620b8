#include "code_page.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace qor {
namespace {

// Text every code page holds goes there and back unchanged.
TEST(CodePage, EncodesWhatItHoldsAndDecodesItBack)
{
    const struct
    {
        const char *name;
        int codePage;
        std::string text; // UTF-8
        std::string bytes;
    } cases[] = {
        {"Ascii", 932, "C:\\cam ~ D20", "C:\\cam ~ D20"}, // 5C and 7E stay in 932
        {"SlashedO", 1252,
         "\xC3\x98"
         "20 x 4 T-slot new",
         "\xD8"
         "20 x 4 T-slot new"},
        {"WesternLetters", 1252, "Ma\xC3\x9F \xC3\xBC \xE2\x82\xAC \xC5\x92",
         "Ma\xDF \xFC \x80 \x8C"},
        {"Kanji", 932,
         "\xE5\xB7\xA5\xE5\x85\xB7 \xCF\x86"
         "10", // 工具 φ10
         "\x8D\x48\x8B\xEF \x83\xD3"
         "10"},
        {"HalfWidthKana", 932, "\xEF\xBE\x8E\xEF\xBE\x9E\xEF\xBD\xB0\xEF\xBE\x99",
         "\xCE\xDE\xB0\xD9"}, // ﾎﾞｰﾙ, one byte each
        {"BackslashAsSecondByte", 932, "\xE3\x82\xBD\xE3\x83\x95\xE3\x83\x88",
         "\x83\x5C\x83\x74\x83\x67"}, // ソフト
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);

        const EncodedText encoded = EncodeCodePage(c.text, c.codePage);

        EXPECT_EQ(encoded.Unheld, "");
        EXPECT_EQ(encoded.Bytes, c.bytes);
        EXPECT_EQ(DecodeCodePage(c.bytes, c.codePage), c.text);
    }
}

// A character the code page cannot hold is named, never replaced silently.
TEST(CodePage, NamesTheFirstCharacterItCannotHold)
{
    const struct
    {
        const char *name;
        int codePage;
        std::string text;
        std::string unheld; // the first character the code page cannot hold
        std::string replaced;
    } cases[] = {
        {"KanjiIn1252", 1252, "D6 \xE5\xB7\xA5\xE5\x85\xB7", "\xE5\xB7\xA5", "D6 ??"},
        {"SlashedOIn932", 932,
         "\xC3\x98"
         "20",
         "\xC3\x98", "?20"},
        // Converters write these as look-alikes (the backslash, the
        // full-width minus); the file would then not say what was typed.
        {"YenIn932", 932,
         "\xC2\xA5"
         "100",
         "\xC2\xA5", "?100"},
        {"MinusSignIn932", 932,
         "\xE2\x88\x92"
         "5",
         "\xE2\x88\x92", "?5"},
        {"OutsideTheBmp", 1252, "a\xF0\x9F\x94\xA7", "\xF0\x9F\x94\xA7", "a?"},
        {"MalformedUtf8", 1252, "a\xFF", "\xEF\xBF\xBD", "a?"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<std::string> listed;

        const EncodedText encoded = EncodeCodePage(c.text, c.codePage);
        const std::string replaced = EncodeCodePageReplacing(c.text, c.codePage, &listed);

        EXPECT_EQ(encoded.Unheld, c.unheld);
        EXPECT_EQ(replaced, c.replaced);
        EXPECT_EQ(listed.empty() ? "" : listed.front(), c.unheld);
    }
    // Each character is listed once, in the order of the text: "ツールツ Ä" in 1252.
    std::vector<std::string> listed;

    const std::string replaced = EncodeCodePageReplacing(
        "\xE3\x83\x84\xE3\x83\xBC\xE3\x83\xAB\xE3\x83\x84 \xC3\x84", 1252, &listed);

    EXPECT_EQ(replaced, "???? \xC4");
    EXPECT_EQ(listed, (std::vector<std::string>{"\xE3\x83\x84", "\xE3\x83\xBC", "\xE3\x83\xAB"}));
}

// Bytes the code page does not define become U+FFFD; the rest is kept.
TEST(CodePage, DecodesInvalidBytesAsReplacementCharacters)
{
    EXPECT_EQ(DecodeCodePage("\x81\x20"
                             "A",
                             932),
              "\xEF\xBF\xBD A");                                                // no second byte
    EXPECT_EQ(DecodeCodePage("ab\x82", 932), "ab\xEF\xBF\xBD");                 // cut short
    EXPECT_EQ(DecodeCodePage("\x83\x47\xFD", 932), "\xE3\x82\xA8\xEF\xBF\xBD"); // undefined
}

TEST(CodePage, SettingNamesASupportedCodePageOrGives1252)
{
    const std::pair<const char *, int> cases[] = {
        {"1252", 1252}, {" 932 ", 932},  {"1251", 1251},  {"936", 936},
        {"", 1252},     {"cp932", 1252}, {"932x", 1252},  {"-932", 1252},
        {"0", 1252},    {"99999", 1252}, {"65001", 1252}, // UTF-8 is no ANSI code page
    };
    for (const auto &[text, codePage] : cases) {
        EXPECT_EQ(CodePageOfSetting(text), codePage) << '"' << text << '"';
    }
}

TEST(CodePage, NamesCodePoints)
{
    EXPECT_EQ(CodePointName("A"), "U+0041");
    EXPECT_EQ(CodePointName("\xE5\xB7\xA5"), "U+5DE5");
    EXPECT_EQ(CodePointName("\xF0\x9F\x94\xA7"), "U+1F527");
    EXPECT_EQ(CodePointName("\xFF"), "U+FFFD");
}

TEST(CodePage, AcceptsOnlyWellFormedUtf8)
{
    EXPECT_TRUE(IsValidUtf8("plain ASCII text, longer than eight bytes"));
    EXPECT_TRUE(IsValidUtf8("\xC3\x98 \xE2\x82\xAC \xF0\x9F\x94\xA7"));
    for (const char *bad : {"Durchmesser \xD8",         // Windows-1252
                            "\xC0\xAF", "\xE0\x80\xAF", // overlong "/"
                            "\xED\xA0\x80",             // surrogate
                            "\xF4\x90\x80\x80",         // above U+10FFFF
                            "abcdefgh\xE2\x82"}) {      // cut short
        EXPECT_FALSE(IsValidUtf8(bad)) << bad;
    }
}

} // namespace
} // namespace qor
