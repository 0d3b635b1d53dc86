#include "platform/ColourScale.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace corvanta {
namespace {

/// CIE 1976 L*a*b* of a colour of a screen, white at D65: another measure than the one that the
/// scales are made with.
std::array<double, 3> LabOf(const Colour& colour) {
    const auto linear = [](std::uint8_t part) {
        const double v = part / 255.0;
        return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    const double r = linear(colour.Red);
    const double g = linear(colour.Green);
    const double b = linear(colour.Blue);
    const auto f = [](double t) {
        return t > 216.0 / 24389 ? std::cbrt(t) : (24389.0 / 27 * t + 16) / 116;
    };
    const double x = f((0.4124564 * r + 0.3575761 * g + 0.1804375 * b) / 0.95047);
    const double y = f(0.2126729 * r + 0.7151522 * g + 0.0721750 * b);
    const double z = f((0.0193339 * r + 0.1191920 * g + 0.9503041 * b) / 1.08883);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

double Difference(const Colour& a, const Colour& b) {
    const auto p = LabOf(a);
    const auto q = LabOf(b);
    return std::hypot(p[0] - q[0], p[1] - q[1], p[2] - q[2]);
}

TEST(ColourScaleTest, SequentialStepsLookEquallyFarApartAndRiseInLightness) {
    for (const int steps : {5, 11, 20}) {
        const std::vector<Colour> colours = SequentialColours(steps);
        ASSERT_EQ(colours.size(), static_cast<std::size_t>(steps));
        const double rise = (LabOf(colours.back())[0] - LabOf(colours.front())[0]) / (steps - 1);
        EXPECT_GT(rise * (steps - 1), 70) << "most of the way from black to white";
        double least = 1e9;
        double most = 0;
        for (std::size_t n = 1; n < colours.size(); ++n) {
            EXPECT_NEAR(LabOf(colours[n])[0] - LabOf(colours[n - 1])[0], rise, 0.15 * rise);
            least = std::min(least, Difference(colours[n - 1], colours[n]));
            most = std::max(most, Difference(colours[n - 1], colours[n]));
        }
        EXPECT_LT(most / least, 1.25) << steps;
        EXPECT_GT(least, 2.3) << "a difference that is just seen";
    }
}

TEST(ColourScaleTest, DifferencesAreWhiteInTheMiddleAndAsStrongOnBothSides) {
    const std::vector<Colour> colours = DivergingColours(11);
    EXPECT_EQ(colours[5], (Colour{255, 255, 255}));
    for (std::size_t n = 0; n < 5; ++n) {
        EXPECT_NEAR(LabOf(colours[n])[0], LabOf(colours[10 - n])[0], 3);
        EXPECT_LT(LabOf(colours[n])[0] + 5, LabOf(colours[n + 1])[0]);
        EXPECT_GT(colours[n].Blue, colours[n].Red);
        EXPECT_GT(colours[10 - n].Red, colours[10 - n].Blue);
    }
}

TEST(ColourScaleTest, LevelsHoldAllValuesOnRoundBorders) {
    EXPECT_EQ(LevelsOf(-5.3, 1.6, 0.01), (ColourLevels{-5.5, 2, 15}));
    EXPECT_EQ(LevelsOf(0, 8, 0.01), (ColourLevels{0, 8, 8}));
    EXPECT_EQ(LevelsOf(3, 3, 0.5), (ColourLevels{3, 3.5, 1})) << "a flat map";
    const ColourLevels differences = LevelsOfDifferences(-0.37, 0.05, 0.01);
    EXPECT_EQ(differences.Steps % 2, 1);
    EXPECT_EQ(differences.Low, -differences.High);
    EXPECT_GE(differences.High, 0.37);
    EXPECT_EQ(LevelsOfDifferences(0, 0, 0.1).Steps, 3);
    for (const double size : {1e-7, 0.0123, 1.0, 1.01, 4.99, 5.0, 123456.0}) {
        const ColourLevels levels = LevelsOf(-size / 3, size, 1e-9);
        EXPECT_LE(levels.Low, -size / 3);
        EXPECT_GE(levels.High, size);
        EXPECT_GE(levels.Steps, 8);
        EXPECT_LE(levels.Steps, 22);
    }
}

} // namespace
} // namespace corvanta
