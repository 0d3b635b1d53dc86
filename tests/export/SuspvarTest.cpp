#include "export/Suspvar.h"

#include "model/Failure.h"
#include <gtest/gtest.h>

#include <limits>

namespace corvanta::test {
namespace {

TEST(SuspvarTest, RoundsToSignificantFiguresTiesToEven) {
    EXPECT_EQ(RoundToSignificantFigures(0, 7), 0);
    EXPECT_EQ(RoundToSignificantFigures(123.456789, 7), 123.4568);
    EXPECT_EQ(RoundToSignificantFigures(1234567890, 7), 1234568000);
    EXPECT_EQ(RoundToSignificantFigures(-0.000123456789, 7), -0.0001234568);
    EXPECT_EQ(RoundToSignificantFigures(12345665, 7), 12345660);
    EXPECT_EQ(RoundToSignificantFigures(12345675, 7), 12345680);
    EXPECT_EQ(RoundToSignificantFigures(-2.5, 1), -2);
    EXPECT_EQ(RoundToSignificantFigures(0.375, 2), 0.38);
    EXPECT_EQ(RoundToSignificantFigures(0.625, 2), 0.62);
    EXPECT_EQ(RoundToSignificantFigures(9999999.6, 7), 10000000);
    EXPECT_EQ(RoundToSignificantFigures(999.99999, 7), 1000);
    EXPECT_EQ(RoundToSignificantFigures(1000, 7), 1000);
    EXPECT_NEAR(RoundToSignificantFigures(1.23456789e300, 7), 1.234568e300, 1e285);
    EXPECT_NEAR(RoundToSignificantFigures(1.23456789e-30, 7), 1.234568e-30, 1e-45);
    const double least = std::numeric_limits<double>::denorm_min();
    EXPECT_EQ(RoundToSignificantFigures(least, 7), least);
    EXPECT_THROW((void)RoundToSignificantFigures(std::numeric_limits<double>::max(), 1), Failure);
}

} // namespace
} // namespace corvanta::test
