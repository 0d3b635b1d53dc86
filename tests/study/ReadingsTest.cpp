#include "study/Readings.h"

#include "study/ReadingGrid.h"
#include "tests/support/Corners.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <cmath>
#include <limits>
#include <memory>

namespace corvanta::test {
namespace {

std::vector<Reading> Parse(const std::string& text, const std::string& decimal = ".") {
    FundamentalUnits units = MetricUnits();
    units.NumberSeparators.Decimal = decimal;
    return ParseReadings(text, MetricChannels(), units);
}

std::string Refusal(const std::string& text, const std::string& decimal = ".") {
    return FailureOf([&] { Parse(text, decimal); }).Description();
}

TEST(ReadingsTest, SheetsOfAnyKindSayTheSame) {
    const std::vector<Reading> expected{{-25, 0, chCamberAngle, -2.5, 0.02},
                                        {12.5, 7, chAckerman, 0.4, 0.01}};
    EXPECT_EQ(Parse("Wheel\tRack\tWhat\tValue\tSd\r\n\r\n"
                    "-25\t0\tcamber angle\t-2.5\t0.02\t\t\r\n12.5\t7\tAckerman %\t40\t1\r\n\t\r\n"),
              expected);
    EXPECT_EQ(Parse("-25;0;14;-2,5;0,02\n12,5;7;1;40.0;1", ","), expected);
    EXPECT_EQ(Parse("\"-25\", 0 ,\"Camber Angle\",-2.5,.02\r12.5,7,1,40,1"), expected);
    EXPECT_THAT(Parse(" \n"), IsEmpty());
    // And back, in units that need factors.
    FundamentalUnits inches = UnitsOf("in", "lbf", "lb", "lbf/in");
    inches.NumberSeparators.Decimal = ",";
    ChannelCatalogue channels;
    channels.ChannelsSetup(inches);
    const std::string text = ReadingsText(expected, channels, inches);
    const std::vector<Reading> back = ParseReadings(text, channels, inches);
    ASSERT_THAT(back, SizeIs(2));
    EXPECT_NEAR(back[0].WheelTravel, -25, 1e-9);
    EXPECT_NEAR(back[1].Value, 0.4, 1e-12);
    EXPECT_EQ(ReadingsText(back, channels, inches), text);
}

TEST(ReadingsTest, AnErrorNamesLineAndColumn) {
    EXPECT_THAT(Refusal("0\t0\tcamber\t1\t1"), HasSubstr("Line 1, column 3 (Channel): \"camber\""));
    EXPECT_THAT(Refusal("a\tb\tc\td\te\n\n0\t0\t14\t1x\t1"), HasSubstr("Line 3, column 4 (Value)"));
    EXPECT_THAT(Refusal("0\t0\t14\t1"), EndsWith("column 5 (Uncertainty): there is no number"));
    EXPECT_THAT(Refusal("0\t0\t14\t1\t0"), HasSubstr("column 5 (Uncertainty): The uncertainty"));
    EXPECT_THAT(Refusal("0\t0\t14\t1\tnan"), HasSubstr("column 5"));
    EXPECT_THAT(Refusal("0\t0\t14\t1e999\t1"), HasSubstr("column 4"));
    EXPECT_THAT(Refusal("0\t0\tARB Rotation\t1\t1"), HasSubstr("column 3"));
    EXPECT_THAT(Refusal("0\t0\t26\t1\t1"), HasSubstr("is no channel")) << "link loads";
    EXPECT_THAT(Refusal("1\n0,5,0,14,1,0,1", ","), HasSubstr("Line 1, column 2"));
    EXPECT_THAT(Refusal("0,5,0,14,1,0,1", ","), HasSubstr("has 7 columns, not 5"));
}

/// What a place of readings has on their grid, and whether none lies between steps.
struct OnGrid {
    std::vector<double> Values;
    bool Exact = false;
};

OnGrid ValuesOf(Design design, const std::vector<Reading>& readings) {
    const FundamentalUnits units = MetricUnits();
    const ChannelCatalogue channels = MetricChannels();
    const ReadingGrid grid = GridOfReadings(design, readings, units);
    SetTravels(design, grid);
    const auto scratch = std::make_unique<Suspension>();
    EXPECT_TRUE(Solve(*scratch, design, {units, channels}, grid.Cut).Solved);
    OnGrid values{{}, grid.Exact};
    for (const ReadingPlace& place : grid.Places) {
        values.Values.push_back(ValueAt(*scratch, place).value_or(NAN));
    }
    return values;
}

TEST(ReadingsTest, TravelsOffTheGridAreSolvedOrLieOnACubic) {
    // A lesser grid with a step for every travel holds what all others must come to.
    Design fine = DesignOf(LoadSample("formula-front-pushrod.WSP"));
    const Design own = fine;
    fine.Data.Bump = fine.Data.Droop = 12;
    fine.Data.WheelTravelStepSize = 0.5;
    fine.Data.RackTravel = 12;
    fine.Data.RackTravelStepSize = 0.5;
    std::vector<Reading> readings;
    for (const int channel : {chCamberAngle, chSteerAngle, chAckerman, chRollCentreToGround,
                              chSpringVelocityRatio, chHalfTrack}) {
        readings.push_back({-3.5, 7, channel, 0, 1});
        readings.push_back({10.5, -3.5, channel, 0, 1});
    }
    readings.push_back({2, 1, chAckerman, 0, 1}); // beside its jump at static
    readings.push_back({2, -1, chAckerman, 0, 1});
    const OnGrid common = ValuesOf(own, readings);
    EXPECT_TRUE(common.Exact);
    readings.push_back({0.77, 5.93, chCamberAngle, 0, 1}); // no common step any more
    const OnGrid between = ValuesOf(own, readings);
    EXPECT_FALSE(between.Exact);
    readings.pop_back();
    const OnGrid expected = ValuesOf(fine, readings);
    ASSERT_TRUE(expected.Exact);
    for (std::size_t n = 0; n < readings.size(); ++n) {
        const double scale = std::max(1.0, std::abs(expected.Values[n]));
        EXPECT_NEAR(common.Values[n], expected.Values[n], 1e-5 * scale) << n;
        EXPECT_NEAR(between.Values[n], expected.Values[n], 1e-4 * scale) << n;
    }
    // Static alone, and travels that are nearer to each other than any step.
    EXPECT_TRUE(ValuesOf(own, {{0, 0, chCamberAngle, 0, 1}}).Exact);
    const OnGrid near = ValuesOf(own, {{0, 0, chCamberAngle, 0, 1}, {0.1, 0, chCamberAngle, 0, 1}});
    EXPECT_NEAR(near.Values[0], -3.2, 0.2);
    EXPECT_NEAR((near.Values[1] - near.Values[0]) / 0.1, -0.025, 0.003);
}

TEST(ReadingsTest, ALastStepBeyondBumpIsOnTheGrid) {
    Design design = DesignOf(LoadSample("formula-front-pushrod.WSP"));
    design.Data.Bump = design.Data.Droop = 22; // the steps reach 25
    design.Data.WheelTravelStepSize = 5;
    design.Data.ChassisMotion = cmRoll;
    std::vector<Reading> readings{{25, 0, chRollCentreToGround, 0, 1}};
    const FundamentalUnits units = MetricUnits();
    const ChannelCatalogue channels = MetricChannels();
    EXPECT_EQ(FaultOfPlaces(design, readings, {units, channels}), "");
    const ReadingGrid grid = GridOfReadings(design, readings, units);
    EXPECT_TRUE(grid.Exact && grid.WheelTravelStepSize == 5);
    readings.front().WheelTravel = 26;
    EXPECT_THAT(FaultOfPlaces(design, readings, {units, channels}), HasSubstr("opposite wheel"));
}

TEST(ReadingsTest, TheFarthestReadingsLieWithinTheirFourStepsToo) {
    const Design design = DesignOf(LoadSample("formula-front-pushrod.WSP"));
    const std::vector<Reading> readings{{20.13, 0, chCamberAngle, 0, 1},
                                        {-17.77, 0, chCamberAngle, 0, 1},
                                        {0.71, 13.37, chCamberAngle, 0, 1},
                                        {3, -26.9, chCamberAngle, 0, 1}};
    for (const ReadingPlace& place : GridOfReadings(design, readings, MetricUnits()).Places) {
        for (const std::vector<StepShare>& shares : {place.Rack, place.Wheel}) {
            for (const StepShare& share : shares) { // the least of a cubic's middle is -1 / 16
                EXPECT_GE(share.Share, -0.065);
            }
        }
    }
}

} // namespace
} // namespace corvanta::test
