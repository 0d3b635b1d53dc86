#include "properties/MotionRatios.h"

#include "model/Failure.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace corvanta::test {
namespace {

/// Slope of a quantity over the wheel steps next to `w` by the patch's height, a fourth order
/// difference.
template <typename Quantity>
double SlopeOverSteps(const Suspension& document, int r, int w, Quantity quantity) {
    const double step = document.Data.WheelTravelStepSize;
    const auto at = [&](int offset) { return quantity(document.WheelStates(r, w - offset)); };
    return (at(-2) - 8 * at(-1) + 8 * at(1) - at(2)) / (12 * step);
}

TEST(MotionRatiosTest, AgreeWithTheSlopesBetweenTheSteps) {
    ForEachSample(
        [](Suspension& document) {
            // Steps fine enough for a difference over them.
            document.Data.Bump = document.Data.Droop = 10;
            document.Data.WheelTravelStepSize = 2;
        },
        [](const Suspension& document) {
            const SuspensionData& data = document.Data;
            for (int r = 2; r <= document.NR + 1; ++r) {
                for (int w = 4; w <= document.NW - 1; ++w) {
                    const ChannelCells& cells = document.WheelStates(r, w).Channels;
                    const auto channel = [](ChannelId id) {
                        return [id](const WheelState& state) { return state.Channels[id]; };
                    };
                    if (data.SpringMechanism != smNone &&
                        data.ThirdSpringMechanism != tsCentreSpring) {
                        const double slope =
                            -SlopeOverSteps(document, r, w, channel(chSpringLength));
                        const double ratio = cells[chSpringVelocityRatio];
                        EXPECT_NEAR(1 / ratio, slope, 2e-4 * std::abs(slope));
                        // The work of the wheel is the work of the spring.
                        if (ratio > 0 && data.KSpring > 0) {
                            EXPECT_NEAR(cells[chWheelRateSpring], data.KSpring * slope * slope,
                                        5e-4 * data.KSpring * slope * slope);
                        }
                    }
                    if (data.ThirdSpringMechanism != tsCornerSpring &&
                        cells[chCentreSpringVelocityRatio] != 0) {
                        const double slope =
                            -SlopeOverSteps(document, r, w, channel(chCentreSpringLength));
                        // The exported length of a lateral spring under heave spans both rockers.
                        const double ends =
                            HasLateralCentreSpring(data) && data.ChassisMotion == cmHeave ? 2 : 1;
                        EXPECT_NEAR(1 / cells[chCentreSpringVelocityRatio], slope / ends,
                                    2e-4 * std::abs(slope) + 1e-6);
                    }
                }
            }
        });
}

constexpr double Degree = std::numbers::pi / 180;

/// The degree of the system is right to 3e-8.
constexpr double AngleTolerance = 1e-5;

/// A state whose channels are made by hand.
class HandMadeStateTest : public testing::Test {
  protected:
    [[nodiscard]] double Cell(ChannelId id) const { return m_state.Channels[id]; }

    Suspension m_document;
    SuspensionData& m_data = m_document.Data;
    WheelState m_state;
};

/// A lateral bar made by hand: its lever points `degrees` from straight back, upwards in side view.
class LateralBarTest : public HandMadeStateTest {
  protected:
    LateralBarTest() {
        m_data.ARBMechanism = abToLowerWishbone;
        m_state.Points[ptARP2].Y = 200;
        m_static.Points[ptARI] = {1, 1, 0};
    }
    double Rotation(const SuspPoint& lever) {
        m_state.Points[ptARI] = lever;
        CalculateMotionARB(m_document, m_state, m_static);
        return Cell(chARBRotation);
    }
    double RotationAt(double degrees) {
        return Rotation({100 * std::cos(degrees * Degree), 30, 100 * std::sin(degrees * Degree)});
    }

    WheelState m_static;
};

TEST_F(LateralBarTest, TurnsFromUpright) {
    for (const double angle : {30.0, 150.0, 210.0}) {
        EXPECT_NEAR(RotationAt(angle), angle - 90, AngleTolerance);
    }
    // Through the zero line the sign stays where the lever points back at rest, as seen in plan.
    const std::pair<SuspPoint, double> atRest[] = {{{1, 1, 0}, -120},  {{1, -1, 0}, -120},
                                                   {{-1, 1, 0}, 240},  {{-1, -1, 0}, 240},
                                                   {{0, 1, -1}, -120}, {{0, -1, 1}, 240}};
    for (const auto& [lever, rotation] : atRest) {
        m_static.Points[ptARI] = lever;
        EXPECT_NEAR(RotationAt(330), rotation, AngleTolerance);
        EXPECT_NEAR(RotationAt(200), 110, AngleTolerance) << "only from the fourth quadrant";
    }
}

/// Rates from ratios that stand in the channels.
class RatesTest : public HandMadeStateTest {
  protected:
    RatesTest() {
        m_data.KSpring = 50;
        m_data.KThirdSpring = 30;
        m_data.KARB = 20;
        m_data.KTyre = 200;
        m_data.KLink = 1000;
        m_state.Channels.Set(chHalfTrack, 700);
    }
    void Rates(double spring, double centre, double bar) {
        m_state.Channels.Set(chSpringVelocityRatio, spring);
        m_state.Channels.Set(chCentreSpringVelocityRatio, centre);
        m_state.Channels.Set(chARBVelocityRatio, bar);
        CalculateWheelRates(m_document, m_state);
        CalculateWheelRateTotal(m_document, m_state);
    }
};

TEST_F(RatesTest, TheTotalNeedsTyreLinksAndAWorkingSpring) {
    const SuspensionData sound = m_data;
    const auto total = [&](double spring, double centre) {
        m_state.Channels = {};
        Rates(spring, centre, 2);
        EXPECT_EQ(m_state.Channels.Cell(chRollStiffness).has_value(), Cell(chWheelRateTotal) > 0);
        m_data = sound;
        return Cell(chWheelRateTotal);
    };
    EXPECT_NEAR(total(1, 1), 1 / (1 / 200.0 + 1 / 1000.0 + 1 / (5 + 30 + 50.0)), 1e-12);
    EXPECT_NEAR(total(1, 0), 1 / (1 / 200.0 + 1 / 1000.0 + 1 / (5 + 50.0)), 1e-12);
    EXPECT_NEAR(total(100, 1), 1 / (1 / 200.0 + 1 / 1000.0 + 1 / (5 + 30.0)), 1e-12);
    m_data.KSpring = 0;
    EXPECT_NEAR(total(1, 1), 1 / (1 / 200.0 + 1 / 1000.0 + 1 / (5 + 30.0)), 1e-12);
    m_data.KSpring = 0;
    EXPECT_EQ(total(1, 0), 0);
    m_data.KThirdSpring = 0;
    EXPECT_EQ(total(0, 1), 0);
    m_data.KSpring = m_data.KThirdSpring = 0;
    EXPECT_EQ(total(1, 1), 0) << "a bar alone carries nothing";
    for (double* const missing : {&m_data.KTyre, &m_data.KLink}) {
        *missing = 0;
        EXPECT_EQ(total(1, 1), 0);
    }
}

TEST_F(RatesTest, ChangesAreToldAgainstAPositiveReference) {
    const ChannelId changes[] = {chWheelRateChangeTotal, chWheelRateChangeSpring,
                                 chWheelRateChangeCentreSpring, chWheelRateChangeARB,
                                 chRollStiffnessChange};
    const ChannelId sources[] = {chWheelRateTotal, chSpringVelocityRatio,
                                 chCentreSpringVelocityRatio, chARBVelocityRatio, chRollStiffness};
    WheelState reference;
    for (const double none : {0.0, -3.0}) {
        for (const ChannelId source : sources) {
            reference.Channels.Set(source, none);
        }
        CalculateWheelRateChanges(m_state, reference);
        for (const ChannelId change : changes) {
            EXPECT_FALSE(m_state.Channels.Cell(change)) << "not written";
        }
    }
    // Rates go with the inverse square of their ratio, also where the stiffness is 0.
    double scale = 1;
    for (const ChannelId source : sources) {
        reference.Channels.Set(source, 2);
        m_state.Channels.Set(source, 1.6 * scale);
        scale *= 1.25;
    }
    CalculateWheelRateChanges(m_state, reference);
    EXPECT_NEAR(Cell(chWheelRateChangeTotal), -0.2, 1e-12);
    EXPECT_NEAR(Cell(chWheelRateChangeSpring), 0, 1e-12);
    EXPECT_NEAR(Cell(chWheelRateChangeCentreSpring), 1 / 1.5625 - 1, 1e-12);
    EXPECT_NEAR(Cell(chWheelRateChangeARB), 1 / (1.5625 * 1.5625) - 1, 1e-12);
    EXPECT_NEAR(Cell(chRollStiffnessChange), 0.8 * 1.25 * 1.25 * 1.25 * 1.25 - 1, 1e-12);
    m_state.Channels.Set(chSpringVelocityRatio, 0);
    EXPECT_THAT([&] { CalculateWheelRateChanges(m_state, reference); },
                ThrowsMessage<Failure>("Division by zero"));
}

} // namespace
} // namespace corvanta::test
