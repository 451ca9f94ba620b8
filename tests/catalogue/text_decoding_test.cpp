#include "text_decoding.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>

namespace qor {
namespace {

struct TextFileCase
{
    const char *name;
    std::string bytes;
    int codePage;
    std::string text;
};

void PrintTo(const TextFileCase &c, std::ostream *out)
{
    *out << c.name;
}

class DecodeTextFileTest : public testing::TestWithParam<TextFileCase>
{};

TEST_P(DecodeTextFileTest, GivesUtf8)
{
    const TextFileCase &c = GetParam();

    EXPECT_EQ(DecodeTextFile(c.bytes, c.codePage), c.text);
}

// Valid UTF-8 wins over the code page; anything else is in the code page.
INSTANTIATE_TEST_SUITE_P(
    Files, DecodeTextFileTest,
    testing::Values(
        TextFileCase{"Utf8WithBom", "\xEF\xBB\xBF\xC3\xA9", 932, "\xC3\xA9"},
        // C3 98 would be two half-width katakana in 932.
        TextFileCase{"Utf8WithoutBom", "\xC3\x98", 932, "\xC3\x98"},
        TextFileCase{"Windows1252", "Ma\xDF \x80", 1252, "Ma\xC3\x9F \xE2\x82\xAC"},
        TextFileCase{"ShiftJis", "\x83\x5C\x83\x74\x83\x67", 932,
                     "\xE3\x82\xBD\xE3\x83\x95\xE3\x83\x88"}, // "ソフト", 5C second bytes
        // A BOM says UTF-8: one damaged character must not turn the rest
        // into mojibake.
        TextFileCase{"BomWithABadByte", "\xEF\xBB\xBF\xC3\xA9\xFF", 1252, "\xC3\xA9\xEF\xBF\xBD"}),
    [](const testing::TestParamInfo<TextFileCase> &info) { return info.param.name; });

} // namespace
} // namespace qor
