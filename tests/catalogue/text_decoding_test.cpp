#include "text_decoding.h"

#include <gtest/gtest.h>
#include <string>
#include <tuple>
#include <vector>

namespace qor {
namespace {

// Valid UTF-8 wins over the code page; anything else is in the code page.
TEST(DecodeTextFile, GivesUtf8)
{
    const std::vector<std::tuple<std::string, int, std::string>> cases = {
        {"\xEF\xBB\xBF\xC3\xA9", 932, "\xC3\xA9"},
        {"\xC3\x98", 932, "\xC3\x98"}, // two half-width katakana in 932
        {"Ma\xDF \x80", 1252, "Ma\xC3\x9F \xE2\x82\xAC"},
        {"\x83\x5C\x83\x74\x83\x67", 932,
         "\xE3\x82\xBD\xE3\x83\x95\xE3\x83\x88"}, // 5C second bytes
        // A BOM says UTF-8: one damaged character must not turn the rest
        // into mojibake.
        {"\xEF\xBB\xBF\xC3\xA9\xFF", 1252, "\xC3\xA9\xEF\xBF\xBD"},
    };
    for (const auto &[bytes, codePage, text] : cases) {
        EXPECT_EQ(DecodeTextFile(bytes, codePage), text) << bytes;
    }
}

} // namespace
} // namespace qor
