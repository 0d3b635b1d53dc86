#include "study/Curve.h"

#include "tests/support/Corners.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

namespace corvanta::test {
namespace {

using testing::DoubleEq;
using testing::Optional;

/// Wheel travels 10, 4, 0 and -8 on the static rack step of the small grid, static the third.
Suspension UnevenRow() {
    Suspension document = SmallGrid().Document;
    constexpr std::array<double, 4> travels{10, 4, 0, -8};
    constexpr std::array<double, 4> camber{-2, -0.5, 0.25, 3.25};
    for (std::size_t k = 0; k < travels.size(); ++k) {
        ChannelCells& cells = document.WheelStates(3, static_cast<int>(k) + 2).Channels;
        cells.Set(chWheelTravel, travels[k]);
        cells.Set(chCamberAngle, camber[k]);
    }
    return document;
}

TEST(CurveTest, RunsFromDroopToBumpStraightBetweenTheSteps) {
    const Curve curve = CurveOf(UnevenRow(), chCamberAngle, vvAlongWheelTravel);
    EXPECT_THAT(curve.X, ElementsAre(-8, 0, 4, 10));
    EXPECT_THAT(curve.Y, ElementsAre(3.25, 0.25, -0.5, -2));
    EXPECT_THAT(curve.Static, Optional(1U));
    EXPECT_THAT(ValueAt(curve, -6), Optional(DoubleEq(2.5)));
    EXPECT_THAT(ValueAt(curve, 4), Optional(-0.5));
    EXPECT_THAT(ValueAt(curve, 10 + TravelResolution / 2), Optional(-2));
    EXPECT_EQ(ValueAt(curve, 10.1), std::nullopt);
    EXPECT_EQ(ValueAt(curve, -8.1), std::nullopt);
    EXPECT_EQ(ValueAt(curve, std::nan("")), std::nullopt);
    EXPECT_THAT(GainAtStatic(curve), Optional(DoubleEq(-3.75 / 12)));
}

TEST(CurveTest, TakesTheLastTwoStepsWhereStaticIsAnEnd) {
    Suspension document = UnevenRow();
    document.StaticWheel = 5;
    EXPECT_THAT(GainAtStatic(CurveOf(document, chCamberAngle, vvAlongWheelTravel)),
                Optional(DoubleEq(-3.0 / 8)));
    document.NW = 1;
    document.StaticWheel = 2;
    EXPECT_EQ(GainAtStatic(CurveOf(document, chCamberAngle, vvAlongWheelTravel)), std::nullopt);
}

TEST(CurveTest, OfAChannelThatTheCornerHasNotIsEmpty) {
    const Curve curve = CurveOf(UnevenRow(), chDriveshaftLength, vvAlongWheelTravel);
    EXPECT_THAT(curve.X, IsEmpty());
    EXPECT_EQ(ValueAt(curve, 0), std::nullopt);
    EXPECT_EQ(GainAtStatic(curve), std::nullopt);
    EXPECT_THAT([] { (void)CurveOf({}, ChannelCount + 1, vvAlongWheelTravel); },
                ThrowsMessage<Failure>("Subscript out of range"));
}

TEST(CurveTest, CurvesAndMapsOfASolvedCornerAgree) {
    Suspension document = DoubleWishboneCorner();
    SetUpCorner(document);
    CalculateCorner(document);
    const ChannelMap map = MapOf(document, chSteerAngle);
    ASSERT_THAT(map.RackTravel, ElementsAre(-10, -5, 0, 5, 10));
    ASSERT_THAT(map.WheelTravel, ElementsAre(-20, -15, -10, -5, 0, 5, 10, 15, 20));
    for (std::size_t column = 0; column < map.WheelTravel.size(); ++column) {
        const int wheelStep = document.NW + 1 - static_cast<int>(column);
        const Curve curve = CurveOf(document, chSteerAngle, vvAlongRackTravel, 0, wheelStep);
        for (std::size_t row = 0; row < map.RackTravel.size(); ++row) {
            const Curve across =
                CurveOf(document, chSteerAngle, vvAlongWheelTravel, static_cast<int>(row) + 2, 0);
            EXPECT_NEAR(curve.X.at(row), map.RackTravel[row], 1e-4);
            EXPECT_NEAR(across.X.at(column), map.WheelTravel[column], 1e-4);
            EXPECT_EQ(map.At(row, column), curve.Y.at(row));
            EXPECT_EQ(map.At(row, column), across.Y.at(column));
        }
    }
    // To the right the rack turns this wheel the other way than to the left.
    EXPECT_LT(*map.At(0, 4) * *map.At(4, 4), 0);
}

} // namespace
} // namespace corvanta::test
