#include "text_decoding.h"

#include <gtest/gtest.h>
#include <string>

namespace qor {
namespace {

TEST(TextDecoding, AcceptsOnlyWellFormedUtf8)
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

TEST(TextDecoding, ConvertsEveryWindows1252Byte)
{
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        all += static_cast<char>(byte);
    }

    std::string text = Windows1252ToUtf8(all);

    EXPECT_TRUE(IsValidUtf8(text));
    EXPECT_EQ(text.substr(0, 128), all.substr(0, 128));
    EXPECT_NE(text.find("\xE2\x82\xAC\xC2\x81\xE2\x80\x9A"), std::string::npos); // 80 81 82
    EXPECT_NE(text.find("\xC5\xBE\xC5\xB8\xC2\xA0"), std::string::npos);         // 9E 9F A0
    EXPECT_NE(text.find("\xC2\x8D\xC5\xBD\xC2\x8F\xC2\x90"), std::string::npos); // 8D..90
    EXPECT_EQ(text.substr(text.size() - 4), "\xC3\xBE\xC3\xBF");                 // FE FF
}

TEST(TextDecoding, KeepsAFileWithABomUtf8DespiteABadByte)
{
    EXPECT_EQ(DecodeTextFile("\xEF\xBB\xBF\xC3\xA9\xFF"), "\xC3\xA9\xEF\xBF\xBD");
}

} // namespace
} // namespace qor
