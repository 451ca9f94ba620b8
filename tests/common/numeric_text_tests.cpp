#include "numeric_text.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <regex>
#include <string>

namespace qor {
namespace {

TEST(IsNumeric, AcceptsDecimalNumbersWithSignPointExponentAndBlanksOnly)
{
    for (const char *text : {"0", "-3", "+4", ".5", "5.", " 7 ", "2.5E-3", "-0.0"}) {
        EXPECT_TRUE(IsNumeric(text)) << text;
    }
    for (const char *text : {"", " ", "-", ".", "-.", "1e", "1e+", "1.2.3", "1,5", "1 000", "12a",
                             "&H10", "$5", "5-", "--5", "1e5.0", "\t5"}) {
        EXPECT_FALSE(IsNumeric(text)) << text;
    }
}

TEST(ToInt16, RoundsHalfToEvenAndRefusesOutOfRangeAndNonNumericText)
{
    EXPECT_EQ(ToInt16("0.5"), 0);
    EXPECT_EQ(ToInt16("1.5"), 2);
    EXPECT_EQ(ToInt16("-2.5"), -2);
    EXPECT_EQ(ToInt16("2.5000001"), 3);
    EXPECT_EQ(ToInt16("-32768"), -32768);
    EXPECT_EQ(ToInt16("32767.5"), std::nullopt); // rounds to 32768
    EXPECT_EQ(ToInt16("1e999"), std::nullopt);
    EXPECT_EQ(ToInt16(""), std::nullopt);
}

TEST(ToSingle, ConvertsCorrectlyRoundedAndRefusesOverflow)
{
    EXPECT_EQ(ToSingle("0.1"), 0.1f);
    EXPECT_EQ(ToSingle("3.4028235e38"), std::numeric_limits<float>::max());
    EXPECT_EQ(ToSingle("1e39"), std::nullopt);
    EXPECT_EQ(ToSingle(std::string(400, '9')), std::nullopt);
    EXPECT_EQ(ToSingle("1e-60"), 0.0f);
    EXPECT_EQ(ToSingle("1,5"), std::nullopt);
}

// Numbers are the bulk of a tool list: the fast text must name the value that
// printf rounds to seven significant digits, in plain decimal notation.
TEST(SingleToText, AgreesWithPrintfRoundingInPlainDecimal)
{
    EXPECT_EQ(SingleToText(-0.0f), "0");
    EXPECT_EQ(SingleToText(1e20f), "100000000000000000000");
    EXPECT_EQ(SingleToText(0.00001f), "0.00001");
    const std::regex plain(R"(-?(0|[1-9][0-9]*)(\.[0-9]*[1-9])?)");
    std::mt19937 random(7);
    std::string text;
    for (int i = 0; i < 300000; ++i) {
        std::uint32_t bits = random();
        float value;
        std::memcpy(&value, &bits, sizeof value);
        if (i % 3 == 1) {
            value = static_cast<float>(static_cast<int>(bits % 2000001) - 1000000) / 1000.0f;
        } else if (i % 3 == 2) {
            value = static_cast<float>(bits % 10000000) + 0.5f; // ties at the seventh digit
        }
        if (!std::isfinite(value) || value == 0) {
            continue;
        }
        char rounded[32];
        std::snprintf(rounded, sizeof rounded, "%.6e", static_cast<double>(value));

        text.clear();
        AppendSingleText(text, value);

        ASSERT_EQ(std::strtod(text.c_str(), nullptr), std::strtod(rounded, nullptr)) << text;
        ASSERT_TRUE(std::regex_match(text, plain)) << text;
    }
}

TEST(FormatPicture, FormatsLikeThePicture)
{
    const struct
    {
        double value;
        const char *picture;
        const char *expected;
    } cases[] = {
        {7, "####", "7"},
        {0, "####", ""},
        {1, "#00", "01"},
        {2.5, "#00", "03"},
        {0.25, "##0.0", "0.3"},
        {-0.04, "##0.0", "0.0"},
        {12.345, "##0.00", "12.35"},
        {5, "##0.0##", "5.0"},
        {0.0625, "##0.0##", "0.063"},
        {static_cast<double>(0.1f), "##0.0##", "0.1"},
        {99.99, "##0.0", "100.0"},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(FormatPicture(c.value, c.picture), c.expected) << c.value << " " << c.picture;
    }
}

} // namespace
} // namespace qor
