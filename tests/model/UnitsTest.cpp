#include "model/Units.h"

#include "tests/support/Corners.h"
#include "tests/support/Testing.h"

namespace corvanta::test {
namespace {

TEST(UnitsTest, ValuesShowInTheChosenUnits) {
    const FundamentalUnits imperial = UnitsOf("in", "lbs", "lbs", "lb/in");
    EXPECT_EQ(FormatChannelValue(imperial, 25.4, ucDisplacement), "1.000");
    EXPECT_EQ(FormatChannelValue(imperial, 1000, ucForce), "225");
    EXPECT_EQ(FormatChannelValue(imperial, 100, ucMass), "220.5");
    EXPECT_EQ(FormatChannelValue(imperial, 100, ucRate), "571");
    EXPECT_EQ(FormatChannelValue(imperial, 254000, ucBarRate), "2,247");
    EXPECT_EQ(imperial[ucBarRate].Label, "lb.in/deg");

    const FundamentalUnits metric = UnitsOf("mm", "kg", "kg", "kg/mm");
    EXPECT_EQ(FormatChannelValue(metric, 25.4, ucDisplacement), "25.40");
    EXPECT_EQ(FormatChannelValue(metric, 981, ucForce), "100.0");
    EXPECT_EQ(FormatChannelValue(metric, 1000, ucRate), "102");
    EXPECT_EQ(FormatChannelValue(metric, 9810, ucBarRate), "1,000");
    EXPECT_EQ(metric[ucBarRate].Label, "kg.mm/deg");

    const FundamentalUnits si = UnitsOf("mm", "N", "kg", "N/mm");
    EXPECT_EQ(FormatChannelValue(si, 1234.5, ucForce), "1235");
    EXPECT_EQ(FormatChannelValue(si, 1234567, ucBarRate), "1,234,567");
    EXPECT_EQ(FormatChannelValue(si, 1, ucPercentage), "100.0");
    EXPECT_EQ(FormatChannelValue(si, -1.23456, ucAngle), "-1.235");
    EXPECT_EQ(FormatChannelValue(si, 12.345, ucTwoDecimals), "12.35");
    EXPECT_EQ(FormatChannelValue(si, 12.5, ucWholeNumber), "13");
    EXPECT_EQ(FormatChannelValue(si, std::nullopt, ucDisplacement), "0");
}

TEST(UnitsTest, AnUnknownLabelKeepsTheFormerUnit) {
    FundamentalUnits units = UnitsOf("furlong", "kg", "kg", "N/mm");
    const Failure failure = FailureOf([&] { (void)FormatChannelValue(units, 1, ucDisplacement); });
    EXPECT_EQ(failure.Number(), fnUnitConversion);
    EXPECT_EQ(failure.Description(), "There was a problem converting units.");
    EXPECT_THROW((void)ParseChannelValue(units, "1", ucDisplacement), Failure);
    units[ucRate].Label = "N/furlong";
    units.SetFundUnitsData();
    EXPECT_EQ(FormatChannelValue(units, 7, ucRate), "7");
    EXPECT_EQ(units[ucBarRate].Label, "N.mm/deg");
}

} // namespace
} // namespace corvanta::test
