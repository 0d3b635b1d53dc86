#include "properties/RollCentre.h"

#include "model/Failure.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace corvanta::test {
namespace {

/// Where two lines through (y1, z1) and (y2, z2) cross, by Cramer's rule on their normal forms.
Point2D Cross(const Point2D& a1, const Point2D& a2, const Point2D& b1, const Point2D& b2) {
    const double na = a2.Y - a1.Y, ma = a1.X - a2.X, ca = na * a1.X + ma * a1.Y;
    const double nb = b2.Y - b1.Y, mb = b1.X - b2.X, cb = nb * b1.X + mb * b1.Y;
    const double determinant = na * mb - nb * ma;
    return {(ca * mb - cb * ma) / determinant, (na * cb - nb * ca) / determinant};
}

TEST(RollCentreTest, UnderRollLiesWhereTheLinesOfBothWheelsCross) {
    Suspension alone = LoadSample("touring-front-wishbone.WSP");
    alone.Data.ChassisMotion = cmHeave; // an axle that moves as one has each wheel's own height
    ASSERT_GT(alone.Data.Bump, alone.Data.Droop);
    const int mirrored = alone.NW - (alone.StaticWheel - 1); // steps of droop
    CalculateCorner(alone);
    Suspension rolled = alone;
    rolled.Data.ChassisMotion = cmRoll;
    CalculateCorner(rolled);

    const int r = alone.StaticRack;
    const int ws = alone.StaticWheel;
    for (int w = 2; w <= alone.NW + 1; ++w) {
        SCOPED_TRACE(w);
        const ChannelCells& single = alone.WheelStates(r, w).Channels;
        const ChannelCells& result = rolled.WheelStates(r, w).Channels;
        const SuspPoint& patch = alone.WheelStates(r, w).Points[ptWTCP];
        EXPECT_EQ(single[chRollCentreY], 0);
        if (w < ws - mirrored) { // deeper in bump than the other wheel can be in droop
            EXPECT_EQ(result[chRollCentreY], 0);
            EXPECT_EQ(result[chRollCentreToOrigin], single[chRollCentreToOrigin]);
            continue;
        }
        const int mirror = 2 * ws - w;
        const SuspPoint& opposite = alone.WheelStates(r, mirror).Points[ptWTCP];
        // In droop the other wheel's height is the one that its own roll centre has been given.
        const Suspension& other = w > ws ? rolled : alone;
        const Point2D expected =
            Cross({-patch.Y, patch.Z}, {0, single[chRollCentreToOrigin]}, {opposite.Y, opposite.Z},
                  {0, other.WheelStates(r, mirror).Channels[chRollCentreToOrigin]});
        EXPECT_NEAR(result[chRollCentreY], expected.X, 1e-6);
        EXPECT_NEAR(result[chRollCentreToOrigin], expected.Y, 1e-6);
        EXPECT_NEAR(result[chRollCentreToGround], expected.Y - patch.Z, 1e-6);
    }
    const ChannelCells& upright = rolled.WheelStates(r, ws).Channels;
    EXPECT_NEAR(upright[chRollCentreY], 0, 1e-9);
    EXPECT_NEAR(upright[chRollCentreToOrigin],
                alone.WheelStates(r, ws).Channels[chRollCentreToOrigin], 1e-9);
}

/// A state of which only what the foci are made of is given: the two wishbone planes by their
/// slopes and their heights above the patch. Patch and wheel centre do not stand above each other.
class FociTest : public testing::Test {
  protected:
    struct Plane {
        double LongSlope = 0;
        double LatSlope = 0;
        double Height = 0;
    };

    FociTest() {
        m_points[ptWTCP] = m_patch;
        m_points[ptWC] = m_centre;
    }
    void Find(const Plane& upper, const Plane& lower, bool isFrontCorner = true) {
        const auto onAxis = [&](const Plane& plane) {
            return SuspPoint{m_patch.X, m_patch.Y - 400,
                             m_patch.Z + plane.Height - 400 * plane.LatSlope};
        };
        m_points[ptSNextA] = onAxis(upper);
        m_points[ptTNextA] = onAxis(lower);
        CalculateFoci(m_state, {true, upper.LongSlope, upper.LatSlope},
                      {true, lower.LongSlope, lower.LatSlope}, isFrontCorner);
    }
    [[nodiscard]] double Cell(ChannelId id) const { return m_state.Channels[id]; }

    const SuspPoint m_patch{5, 750, 2};
    const SuspPoint m_centre{7, 748, 300};
    WheelState m_state;
    PointSet& m_points = m_state.Points;
};

constexpr double Degree = std::numbers::pi / 180;

TEST_F(FociTest, OfParallelPlanesLieAtInfinity) {
    const auto across = [&](double upperOverLower) {
        Find({0.03 + upperOverLower, 0.03 + upperOverLower, 400}, {0.03, 0.03, 160});
        return std::pair(m_points[ptLongFocus].X, m_points[ptLatFocus].Y);
    };
    EXPECT_EQ(across(-5e-7), std::pair(999999.0, 999999.0));
    EXPECT_EQ(across(5e-7), std::pair(-999999.0, -999999.0));
    EXPECT_EQ(across(0), std::pair(-999999.0, 999999.0)) << "the views differ in the tie";
    EXPECT_EQ(Cell(chAntiDiveLength), 999999);
    EXPECT_EQ(Cell(chAntiSquatLength), 999999);
    EXPECT_DOUBLE_EQ(Cell(chAntiDiveAngle), 0.03 * 57.29577952) << "the slope itself";
    EXPECT_DOUBLE_EQ(Cell(chAntiSquatAngle), 0.03 * 57.29577952);
    EXPECT_NEAR(m_points[ptLongFocus].Z, 402 + 0.03 * (-999999 - 5), 1e-6);
    const double rise = 400 + 0.03 * (999999 - 750);
    EXPECT_NEAR(Cell(chAntiRollLength), std::hypot(999999 - 750, rise), 1e-6);
    EXPECT_NEAR(Cell(chAntiRollAngle), -std::atan(rise / (999999 - 750)) / Degree, 1e-8);

    const auto [x, y] = across(2e-6); // far, but they meet
    EXPECT_NEAR(x / (5 - 240 / 2e-6), 1, 1e-9);
    EXPECT_NEAR(y / (750 - 240 / 2e-6), 1, 1e-9);
    EXPECT_NEAR(Cell(chAntiDiveLength) / 240 * 2e-6, 1, 1e-3);
}

TEST(AntiFeaturesTest, RestOnWheelbaseTrackAndHeight) {
    Suspension document;
    document.Data.CGX = 0; // the patch lies at it: a front corner
    document.Data.CGZ = 510;
    document.Data.Wheelbase = 2000;
    document.Data.FrontBrakeBalanceSplitPC = 70;
    WheelState state;
    state.Points[ptWTCP] = {0, 700, 10};
    state.Points[ptWC] = {20, 690, 300};
    state.Points[ptLongFocus] = {-1980, 690, 410};
    state.Points[ptLatFocus] = {0, -300, 260};
    state.Channels.Set(chHalfTrack, 700);
    const auto cell = [&](ChannelId id) {
        CalculateAntiDiveSquatRollPercentages(document, state);
        return state.Channels[id];
    };
    // A unit of load transfer is one 500/2000 of the force, and 500/1400 of a lateral one.
    EXPECT_NEAR(cell(chAntiDivePercent), 0.7 * (-400 / 1980.0) * 4, 1e-12);
    EXPECT_NEAR(cell(chAntiSquatPercent), (110 / 2000.0) * 4, 1e-12);
    EXPECT_NEAR(cell(chAntiRollPercent), 0.5 * (250 / 1000.0) * 1400 / 500, 1e-12);
    document.Data.CGX = -1;
    EXPECT_NEAR(cell(chAntiDivePercent), 0.3 * (400 / 1980.0) * 4, 1e-12);
    EXPECT_NEAR(cell(chAntiSquatPercent), (110 / 2000.0) * 4, 1e-12);

    for (const double missing : {0.999, 0.0, -0.999}) {
        document.Data.Wheelbase = missing;
        EXPECT_EQ(cell(chAntiDivePercent), -999);
        EXPECT_EQ(cell(chAntiSquatPercent), -999);
        EXPECT_NEAR(cell(chAntiRollPercent), 0.35, 1e-12);
    }
    document.Data.Wheelbase = 1;
    EXPECT_NEAR(cell(chAntiSquatPercent), 110 / 2000.0 / 500, 1e-15);
    state.Channels.Set(chHalfTrack, 0.499);
    EXPECT_EQ(cell(chAntiRollPercent), -999);
    state.Channels.Set(chHalfTrack, 0.5);
    EXPECT_NEAR(cell(chAntiRollPercent), 0.125 / 500, 1e-15);

    const auto divides = ThrowsMessage<Failure>("Division by zero");
    const WheelState sound = state;
    state.Points[ptLongFocus].X = 0;
    EXPECT_THAT([&] { cell(chAntiDivePercent); }, divides);
    state.Points[ptLongFocus].X = 20;
    EXPECT_THAT([&] { cell(chAntiDivePercent); }, divides);
    state = sound;
    document.Data.CGZ = 10;
    EXPECT_THAT([&] { cell(chAntiDivePercent); }, divides);
}

} // namespace
} // namespace corvanta::test
