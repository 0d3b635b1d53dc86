#include "solver/MLibMaths.h"

#include "model/Failure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

namespace corvanta {
namespace {

using testing::ThrowsMessage;

constexpr double HalfPi = 1.570796326794895; // the half pi of the angle routines, not the true one

TEST(MLibMathsTest, AnglesFollowTheStandardOnesInTheirOwnRange) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> coordinate(-1000, 1000);
    for (int n = 0; n < 1000; ++n) {
        const double x = coordinate(random);
        const double y = coordinate(random);
        const double standard = std::atan2(y, x);
        const double expected = standard < 0 ? standard + 2 * std::numbers::pi : standard;
        ASSERT_NEAR(ArcTan2(y, x), expected, 1e-13) << y << ", " << x;
        ASSERT_NEAR(NormaliseAngle(standard + 4 * std::numbers::pi), expected, 1e-12);
        ASSERT_NEAR(ArcSin(x / 1001), std::asin(x / 1001), 1e-12);
    }
    EXPECT_EQ(ArcTan2(0, 0), HalfPi);
    EXPECT_EQ(ArcTan2(0, 7), 0);
    EXPECT_EQ(ArcTan2(1e-9, -5), 2 * HalfPi);
    EXPECT_NE(ArcTan2(1e-8, -5), 2 * HalfPi) << "1e-8 itself is no longer near";
    EXPECT_EQ(ArcTan2(-1, 1e-9), 3 * HalfPi);
    EXPECT_EQ(ArcSin(1.5), HalfPi);
    EXPECT_EQ(ArcSin(-1), -HalfPi);
}

TEST(MLibMathsTest, ArithmeticThatHasNoResultFails) {
    EXPECT_THAT([] { (void)Divide(0, 0); }, ThrowsMessage<Failure>("Division by zero"));
    EXPECT_THAT([] { (void)Divide(1e300, 1e-300); }, ThrowsMessage<Failure>("Overflow"));
    EXPECT_THAT([] { (void)Checked(std::nan("")); }, ThrowsMessage<Failure>("Overflow"));
    EXPECT_THAT([] { (void)VectorMagnitude(1e200, 0, 0); }, ThrowsMessage<Failure>("Overflow"));
    EXPECT_THAT([] { (void)SquareRoot(-1e-300); },
                ThrowsMessage<Failure>("Invalid procedure call or argument"));
    EXPECT_EQ(UnitVector(0, 0, 0), (Vector3{0, 0, 0}));
    EXPECT_EQ(UnitVector(2, -6, 3), (Vector3{2.0 / 7, -6.0 / 7, 3.0 / 7}));
}

} // namespace
} // namespace corvanta
