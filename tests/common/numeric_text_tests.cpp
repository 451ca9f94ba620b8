#include "numeric_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace qor {
namespace {

TEST(IsNumeric, AcceptsDecimalNumbersWithSignPointExponentAndBlanks)
{
    for (const char *text : {"0", "12", "-3", "+4", "1.5", ".5", "5.", " 7 ", "1e5", "2.5E-3",
                             "-0.0"}) {
        EXPECT_TRUE(IsNumeric(text)) << text;
    }
}

TEST(IsNumeric, RefusesPartialAndForeignForms)
{
    for (const char *text : {"", " ", "-", ".", "-.", "1e", "1e+", "1.2.3", "1,5", "1 000", "abc",
                             "12a", "&H10", "$5", "5-", "--5", "1e5.0", "\t5"}) {
        EXPECT_FALSE(IsNumeric(text)) << text;
    }
}

TEST(ToInt16, RoundsHalfToEven)
{
    EXPECT_EQ(ToInt16("0.5"), 0);
    EXPECT_EQ(ToInt16("1.5"), 2);
    EXPECT_EQ(ToInt16("2.5"), 2);
    EXPECT_EQ(ToInt16("-2.5"), -2);
    EXPECT_EQ(ToInt16("2.5000001"), 3);
    EXPECT_EQ(ToInt16(" 12 "), 12);
}

TEST(ToInt16, RefusesOutOfRangeAndNonNumericText)
{
    EXPECT_EQ(ToInt16("32767"), 32767);
    EXPECT_EQ(ToInt16("-32768"), -32768);
    EXPECT_EQ(ToInt16("32767.5"), std::nullopt); // rounds to 32768
    EXPECT_EQ(ToInt16("99999999999"), std::nullopt);
    EXPECT_EQ(ToInt16("1e999"), std::nullopt);
    EXPECT_EQ(ToInt16("yes"), std::nullopt);
    EXPECT_EQ(ToInt16(""), std::nullopt);
}

TEST(ToSingle, ConvertsCorrectlyRoundedAndRefusesOverflow)
{
    EXPECT_EQ(ToSingle("0.1"), 0.1f);
    EXPECT_EQ(ToSingle("-12.5"), -12.5f);
    EXPECT_EQ(ToSingle("+3"), 3.0f);
    EXPECT_EQ(ToSingle("3.4028235e38"), std::numeric_limits<float>::max());
    EXPECT_EQ(ToSingle("1e39"), std::nullopt);
    EXPECT_EQ(ToSingle("1e999"), std::nullopt);
    EXPECT_EQ(ToSingle(std::string(400, '9')), std::nullopt);
    EXPECT_EQ(ToSingle("1e-60"), 0.0f);
    EXPECT_EQ(ToSingle("1,5"), std::nullopt);
}

TEST(SingleToText, WritesAtMostSevenSignificantDigitsInPlainDecimal)
{
    EXPECT_EQ(SingleToText(10.0f), "10");
    EXPECT_EQ(SingleToText(0.5f), "0.5");
    EXPECT_EQ(SingleToText(1.0f / 3.0f), "0.3333333");
    EXPECT_EQ(SingleToText(-2.25f), "-2.25");
    EXPECT_EQ(SingleToText(0.1f), "0.1");
    EXPECT_EQ(SingleToText(123456789.0f), "123456800");
    EXPECT_EQ(SingleToText(0.00001f), "0.00001");
    EXPECT_EQ(SingleToText(-0.0f), "0");
    EXPECT_EQ(SingleToText(1e20f), "100000000000000000000");
}

TEST(SingleToText, ReadsBackToTheSameSingleWhenSevenDigitsSuffice)
{
    for (int i = -20000; i <= 20000; i += 7) {
        float value = static_cast<float>(i) / 1000.0f;
        EXPECT_EQ(ToSingle(SingleToText(value)), value) << i;
    }
}

struct PictureCase
{
    double value;
    const char *picture;
    const char *expected;
};

class FormatPictureTest : public testing::TestWithParam<PictureCase>
{
};

TEST_P(FormatPictureTest, FormatsLikeThePicture)
{
    const PictureCase &c = GetParam();
    EXPECT_EQ(FormatPicture(c.value, c.picture), c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Pictures, FormatPictureTest,
    testing::Values(PictureCase{7, "####", "7"}, PictureCase{1234, "####", "1234"},
                    PictureCase{0, "####", ""}, PictureCase{1, "#00", "01"},
                    PictureCase{100, "#00", "100"}, PictureCase{2.5, "#00", "03"},
                    PictureCase{5, "##0.0", "5.0"}, PictureCase{0.25, "##0.0", "0.3"},
                    PictureCase{-0.04, "##0.0", "0.0"}, PictureCase{12.345, "##0.00", "12.35"},
                    PictureCase{5, "##0.0##", "5.0"}, PictureCase{2.5, "##0.0##", "2.5"},
                    PictureCase{0.1234, "##0.0##", "0.123"},
                    PictureCase{0.0625, "##0.0##", "0.063"},
                    PictureCase{static_cast<double>(0.1f), "##0.0##", "0.1"},
                    PictureCase{-12.5, "##0.0##", "-12.5"},
                    PictureCase{99.99, "##0.0", "100.0"}));

} // namespace
} // namespace qor
