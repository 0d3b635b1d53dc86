#include "properties/SGeoProp.h"

#include "model/Failure.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <cmath>
#include <numbers>

namespace corvanta::test {
namespace {

constexpr double Degree = std::numbers::pi / 180;

/// Angles of the system rest on a degree that is right to about 1 in 3e8.
constexpr double AngleTolerance = 1e-8;

class SGeoPropTest : public testing::Test {
  protected:
    SGeoPropTest() {
        PointSet& p = m_state.Points;
        // Planes: upper z = 0.02 x + 0.1 y + 370, lower z = -0.01 x - 0.05 y + 236.
        const auto upper = [](double x, double y) {
            return SuspPoint{x, y, 0.02 * x + 0.1 * y + 370};
        };
        const auto lower = [](double x, double y) {
            return SuspPoint{x, y, -0.01 * x - 0.05 * y + 236};
        };
        p[ptUWIF] = upper(-150, 300);
        p[ptUWIR] = upper(150, 310);
        p[ptUWO] = {30, 690, 439.6};
        p[ptLWIF] = lower(-160, 250);
        p[ptLWIR] = lower(170, 240);
        p[ptLWO] = {10, 720, 199.9};
        p[ptWTCP] = {5, 750, 2};
        p[ptWC] = {5, 748, 300};
        p[ptWSA] = {5, 148, 300};
    }

    [[nodiscard]] double Angle(ChannelId channel) const { return m_state.Channels[channel]; }
    bool Geometry() { return CalculateGeometry(m_document, m_state, m_message); }
    bool Driveshaft(const SuspPoint& outer) {
        m_document.Data.DriveShaftExists = true;
        m_state.Points[ptDSI] = {10, 200, 290};
        m_state.Points[ptDSO] = {10 + outer.X, 200 + outer.Y, 290 + outer.Z};
        m_document.GeometryValid = true;
        return CalculateDriveshaftAngles(m_document, m_state, m_message);
    }

    Suspension m_document;
    WheelState m_state;
    std::string m_message;
};

TEST_F(SGeoPropTest, SteeringAxisAndWishbonePlanes) {
    ASSERT_TRUE(Geometry()) << m_message;
    EXPECT_TRUE(m_document.GeometryValid);
    EXPECT_NEAR(Angle(chUpperLongAngle), std::atan(0.02) / Degree, AngleTolerance);
    EXPECT_NEAR(Angle(chUpperLatAngle), std::atan(0.1) / Degree, AngleTolerance);
    EXPECT_NEAR(Angle(chLowerLongAngle), -std::atan(0.01) / Degree, AngleTolerance);
    EXPECT_NEAR(Angle(chLowerLatAngle), -std::atan(0.05) / Degree, AngleTolerance);
    const double rise = 439.6 - 199.9;
    EXPECT_NEAR(Angle(chKingpinInclination), std::atan2(30, rise) / Degree, AngleTolerance);
    EXPECT_NEAR(Angle(chCasterAngle), std::atan2(20, rise) / Degree, AngleTolerance);
    // Where the axis meets the ground, by running down from the lower joint.
    const double down = (199.9 - 2) / rise;
    EXPECT_NEAR(Angle(chKingpinOffset), 750 - (720 + 30 * down), 1e-9);
    EXPECT_NEAR(Angle(chCasterOffset), (10 - 20 * down) - 5, 1e-9);
    EXPECT_EQ(Angle(chHalfTrack), 750);
}

TEST_F(SGeoPropTest, GeometryWithoutAngles) {
    const PointSet sound = m_state.Points;
    const auto broken = [&](PointNumber outer, PointNumber onto) {
        m_state.Points = sound;
        m_state.Points[outer] = sound[onto];
        m_document.GeometryValid = true;
        EXPECT_FALSE(Geometry());
        EXPECT_FALSE(m_document.GeometryValid);
        return m_message;
    };
    EXPECT_EQ(broken(ptUWO, ptUWIF),
              "Plane of upper wishbone not defined, points lie on a straight line");
    EXPECT_EQ(broken(ptLWO, ptLWIR),
              "Plane of lower wishbone not defined, points lie on a straight line");
    m_state.Points = sound;
    m_state.Points[ptUWO].Z = sound[ptLWO].Z;
    EXPECT_THAT([&] { (void)Geometry(); }, ThrowsMessage<Failure>("Division by zero"));

    m_state.Points[ptUWIF] = {-150, 300, 0}; // flat but for a slope of 1e-14
    m_state.Points[ptUWIR] = {150, 300, 3e-12};
    m_state.Points[ptUWO] = {-150, 700, 0};
    ASSERT_TRUE(Geometry());
    EXPECT_EQ(Angle(chUpperLongAngle), 0);
}

TEST_F(SGeoPropTest, DriveshaftAngles) {
    ASSERT_TRUE(Driveshaft({-80, 480, 60}));
    EXPECT_DOUBLE_EQ(Angle(chDriveshaftLength), std::sqrt(80 * 80 + 480 * 480 + 60 * 60));
    EXPECT_NEAR(Angle(chDriveshaftAngleYZ), std::atan2(60, 480) / Degree, AngleTolerance);
    EXPECT_NEAR(Angle(chDriveshaftAngleXY), std::atan2(-80, 480) / Degree, AngleTolerance);
    EXPECT_NEAR(Angle(chDriveshaftTotalAngle), std::atan2(100, 480) / Degree, AngleTolerance);
    EXPECT_TRUE(Driveshaft({3, 1, 4}));
    EXPECT_NEAR(Angle(chDriveshaftTotalAngle), std::atan(5) / Degree, 1e-7);

    for (const double span : {0.999, -400.0}) {
        EXPECT_FALSE(Driveshaft({0, span, 0}));
        EXPECT_EQ(m_message,
                  "Driveshaft outboard point too close to inboard point for angle calcs");
        EXPECT_FALSE(m_document.GeometryValid);
    }
    // So long a shaft that its span across the car is lost in its length.
    EXPECT_FALSE(Driveshaft({1e10, 2, 0}));
    EXPECT_EQ(m_message, "Driveshaft angle calculation failure");
    EXPECT_FALSE(m_document.GeometryValid);

    m_state.Channels = {};
    m_document.Data.DriveShaftExists = false;
    EXPECT_TRUE(CalculateDriveshaftAngles(m_document, m_state, m_message));
    EXPECT_FALSE(m_state.Channels.Cell(chDriveshaftLength)) << "not written";
}

TEST_F(SGeoPropTest, ChannelsThatCompareStates) {
    Suspension& document = m_document;
    document.Data.Wheelbase = 2500;
    document.StaticLengths.StaticHalfTrack = 700;
    document.Data.ChassisMotion = cmHeave;
    document.NW = 2;
    document.NR = 3;
    document.StaticWheel = 2;
    document.StaticRack = 3;
    const double outer = std::atan(2500.0 / (6000 + 700)) / Degree;
    const double ideal = std::atan(2500.0 / (6000 - 700)) / Degree;
    const double inner = outer + 0.4 * (ideal - outer);
    const double steers[] = {0, 0, outer, 0.25, -inner}; // by rack step
    document.StaticPoints()[ptTRI].Y = 350;
    for (int r = 1; r <= 4; ++r) {
        for (int w = 1; w <= 3; ++w) {
            WheelState& state = document.WheelStates(r, w);
            state.Points[ptTRI].Y = 350 + 10 * (r - 3) * (r > 1 ? 1 : 0);
            state.Points[ptWTCP].Z = 0.125 * r + 7 * (w - 1);
            state.Channels.Set(chSteerAngle, steers[r]);
            if (r > 1 && w > 1) {
                state.Channels.Set(chRollCentreToOrigin, 40 + 3 * r + w);
            }
        }
    }
    CalculateGridChannels(document, WholeGrid(document.NR, document.NW));
    for (int w = 2; w <= 3; ++w) {
        const auto cell = [&](int r, ChannelId id) {
            return document.WheelStates(r, w).Channels[id];
        };
        for (int r = 1; r <= 4; ++r) {
            EXPECT_EQ(cell(r, chWheelTravel), 7 * (w - 1));
            const double patch = document.WheelStates(r, w).Points[ptWTCP].Z;
            EXPECT_EQ(cell(r, chRollCentreToGround), (r > 1 ? 40 + 3 * r + w : 0) - patch);
        }
        EXPECT_EQ(cell(2, chRackTravel), -10);
        EXPECT_EQ(cell(4, chRackTravel), 10);
        EXPECT_NEAR(cell(2, chAckerman), 0.4, 1e-6);
        EXPECT_EQ(cell(3, chAckerman), 0) << "no rack travel";
        EXPECT_NEAR(cell(4, chAckerman), 0.4, 1e-6);
        EXPECT_DOUBLE_EQ(cell(2, chSteerAngleDelta), outer - inner);
        EXPECT_DOUBLE_EQ(cell(3, chSteerAngleDelta), 0.5);
        EXPECT_DOUBLE_EQ(cell(4, chSteerAngleDelta), outer - inner);
    }
    EXPECT_FALSE(document.WheelStates(1, 1).Channels.Cell(chAckerman));
    EXPECT_EQ(document.WheelStates(2, 1).Channels[chRollCentreToGround], -0.25) << "none above";
}

/// A solved corner with a bar to the lower wishbone, of 5 rack rows of 3 wheel steps.
class PassOverTheGridTest : public testing::Test {
  protected:
    PassOverTheGridTest() {
        m_document.Data.WheelTravelStepSize = 20;
        m_document.Data.RackTravelStepSize = 5;
        m_document.Data.ThirdSpringMechanism = tsCornerAndCentreSpring;
        m_document.Data.CentreSpringSystem = csLateralViaRocker;
        m_document.Data.KARB = 20;
        m_document.Data.KThirdSpring = 30;
        SetUpCorner(m_document);
        CalculateCorner(m_document);
    }
    [[nodiscard]] ChannelCells& Cells(int r, int w) {
        return m_document.WheelStates(r, w).Channels;
    }

    Suspension m_document = DoubleWishboneCorner(smPushrodToLowerWishbone, abToLowerWishbone);
};

TEST_F(PassOverTheGridTest, AChannelThatItsMechanismDoesNotWriteKeepsWhatItHeld) {
    const ChannelCells former = Cells(3, 2);
    const ChannelId dependent[] = {chARBRatio,
                                   chSpringVelocityRatio,
                                   chSpringLength,
                                   chRollStiffness,
                                   chRollStiffnessChange,
                                   chWheelRateChangeARB,
                                   chWheelRateChangeTotal,
                                   chDriveshaftTotalAngle};
    for (const ChannelId id : dependent) {
        ASSERT_NE(former[id], 0) << id;
    }
    m_document.Data.ThirdSpringMechanism = tsCentreSpring;
    m_document.Data.ARBMechanism = abNone;
    m_document.Data.DriveShaftExists = false;
    m_document.Data.KTyre = 0;
    m_document.Data.KSpring *= 2;
    SetUpCorner(m_document);
    CalculateCorner(m_document);
    const ChannelCells& kept = Cells(3, 2);
    for (const ChannelId id : dependent) {
        EXPECT_EQ(kept[id], former[id]) << id;
    }
    EXPECT_EQ(kept[chWheelRateSpring], 2 * former[chWheelRateSpring]) << "from the former ratio";
    EXPECT_EQ(kept[chWheelRateTotal], 0);

    m_document.WheelStates.Clear();
    m_document.StaticPoints() = DoubleWishboneCorner().StaticPoints();
    SetUpCorner(m_document);
    CalculateCorner(m_document);
    for (const ChannelId id : dependent) {
        EXPECT_FALSE(Cells(3, 2).Cell(id)) << id;
    }
    EXPECT_EQ(Cells(3, 2).Cell(chWheelRateSpring), 0);
    EXPECT_FALSE(m_document.DynamicsValid);
}

} // namespace
} // namespace corvanta::test
