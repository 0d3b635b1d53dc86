#include "model/NumberText.h"

#include "model/Failure.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <random>

namespace corvanta {
namespace {

const Separators Point{".", ","};
const Separators French{",", "\u202F"};

TEST(NumberTextTest, PlainTextsAreThoseOfTheCLibraryAndReadBack) {
    std::mt19937_64 random(15);
    std::uniform_real_distribution<double> mantissa(-10, 10);
    std::uniform_int_distribution<int> exponent(-300, 300);
    for (int n = 0; n < 2000; ++n) {
        const double value = mantissa(random) * std::pow(10, exponent(random));
        char expected[40];
        std::snprintf(expected, sizeof expected, "%.15G", value);
        EXPECT_EQ(NumberToText(value, Point), expected);
        EXPECT_EQ(WholeNumberText(expected, "."), std::strtod(expected, nullptr));
    }
}

TEST(NumberTextTest, AWholeTextIsANumberOrNothing) {
    EXPECT_EQ(WholeNumberText(" \t\r\n-1.5e3\r\n ", "."), -1500);
    EXPECT_EQ(WholeNumberText("+.5", "."), 0.5);
    EXPECT_EQ(WholeNumberText("5.", "."), 5);
    EXPECT_EQ(WholeNumberText("1,5", ","), 1.5);
    EXPECT_EQ(WholeNumberText("1\u066B5", "\u066B"), 1.5);
    for (const char* text : {"", " ", "-", "+", ".", "12abc", "1 2", "1,5", "1.2.3", "inf", "nan",
                             "-inf", "0x10", "+-1", "--1", "1e", "1E999", "e5"}) {
        EXPECT_EQ(WholeNumberText(text, "."), std::nullopt) << text;
    }
    EXPECT_EQ(WholeNumberText("1.5", ","), std::nullopt);
    EXPECT_EQ(WholeNumberText("1.234,5", ","), std::nullopt);
}

TEST(NumberTextTest, ALeadingNumberEndsWhereItEnds) {
    EXPECT_EQ(LeadingNumber("1,5"), 1);
    EXPECT_EQ(LeadingNumber("  -2.5mm"), -2.5);
    EXPECT_EQ(LeadingNumber("+2.5 mm"), 2.5);
    EXPECT_EQ(LeadingNumber("1e3x"), 1000);
    EXPECT_EQ(LeadingNumber("1e"), 1);
    EXPECT_EQ(LeadingNumber("mm 5"), 0);
    EXPECT_EQ(LeadingNumber("infinity"), 0);
    EXPECT_EQ(LeadingNumber(""), 0);
    EXPECT_THROW((void)LeadingNumber("1E999"), Failure);
}

TEST(NumberTextTest, FormatsRoundTheDecimalText) {
    EXPECT_EQ(FormatNumber(100.005, "0.00", Point), "100.01"); // below the half in binary
    EXPECT_EQ(FormatNumber(-0.125, "0.00", Point), "-0.13");
    EXPECT_EQ(FormatNumber(2.5, "0", Point), "3");
    EXPECT_EQ(FormatNumber(9.9996, "0.000", Point), "10.000");
    EXPECT_EQ(FormatNumber(0.0005, "0.000", Point), "0.001");
    EXPECT_EQ(FormatNumber(0.00049999, "0.000", Point), "0.000");
    EXPECT_EQ(FormatNumber(0.00009, "0.000", Point), "0.000");
    EXPECT_EQ(FormatNumber(-0.0001, "0.000", Point), "-0.000");
    EXPECT_EQ(FormatNumber(-0.0, "0.000", Point), "0.000");
    EXPECT_EQ(FormatNumber(0.5, "###0", Point), "1");
    std::mt19937_64 random(3);
    std::uniform_real_distribution<double> number(-5000, 5000);
    for (int n = 0; n < 2000; ++n) {
        const double value = number(random);
        const std::optional<double> read =
            WholeNumberText(FormatNumber(value, "0.000", Point), ".");
        ASSERT_TRUE(read.has_value());
        EXPECT_LE(std::abs(*read - value), 0.0005 + 1e-12) << value;
    }
}

} // namespace
} // namespace corvanta
