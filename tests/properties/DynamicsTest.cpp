#include "properties/Dynamics.h"

#include "model/Failure.h"
#include "tests/support/Testing.h"

#include <array>

namespace corvanta::test {
namespace {

/// The fields of the record in the order accelerating, braking: load, tyre, links, suspension,
/// corrected suspension, total.
std::array<double, 12> Fields(const DynamicsRecord& d) {
    return {d.LoadAccel,          d.LoadBrake,          d.TyreAccel,  d.TyreBrake,
            d.LinkAccel,          d.LinkBrake,          d.SuspAccel,  d.SuspBrake,
            d.SuspAccelCorrected, d.SuspBrakeCorrected, d.TotalAccel, d.TotalBrake};
}

class DynamicsTest : public testing::Test {
  protected:
    DynamicsTest() {
        m_data.SpringMechanism = smOutboardToUpright;
        m_data.Mass = 800;
        m_data.GAccel = 0.5;
        m_data.GBrake = 1.5;
        m_data.CGX = 0; // the patch lies at it: a front corner
        m_data.CGZ = 510;
        m_data.Wheelbase = 2500;
        m_data.KTyre = 200;
        m_data.KLink = 1000;
        m_data.KSpring = 50;
        m_document.StaticWheel = 4;
        m_document.WheelStates(3, 1).Points[ptWTCP].Z = 10;
        Static().Set(chWheelRateSpring, 25);
        Static().Set(chAntiDivePercent, 0.3);
        Static().Set(chAntiSquatPercent, 0.2);
    }
    ChannelCells& Static() { return m_document.WheelStates(3, 4).Channels; }

    Suspension m_document;
    SuspensionData& m_data = m_document.Data;
};

TEST_F(DynamicsTest, SettingsThatDoNotAllowThem) {
    const SuspensionData sound = m_data;
    const auto isValid = [&] {
        m_document.DynamicsValid = true;
        m_document.Dynamics.TyreBrake = 7;
        CalculateDynamics(m_document, 3);
        EXPECT_EQ(Fields(m_document.Dynamics) == Fields({}), !m_document.DynamicsValid);
        return m_document.DynamicsValid;
    };
    for (double* const setting :
         {&m_data.Wheelbase, &m_data.KTyre, &m_data.KLink, &m_data.KSpring}) {
        *setting = 0.999;
        EXPECT_FALSE(isValid());
        *setting = 1;
        EXPECT_TRUE(isValid());
        m_data = sound;
    }
    m_data.SpringMechanism = smNone;
    EXPECT_FALSE(isValid());
    m_data = sound;
    for (const double rate : {0.0, -5.0, 1e-6}) {
        Static().Set(chWheelRateSpring, rate);
        EXPECT_EQ(isValid(), rate > 0);
    }
    // Nothing of an earlier run stays behind an arithmetic failure.
    m_document.DynamicsValid = true;
    m_document.Dynamics.LoadAccel = 5;
    Static().Set(chWheelRateSpring, 1e-308);
    EXPECT_THAT([&] { CalculateDynamics(m_document, 3); }, ThrowsMessage<Failure>("Overflow"));
    EXPECT_FALSE(m_document.DynamicsValid);
    EXPECT_EQ(Fields(m_document.Dynamics), Fields({}));
}

} // namespace
} // namespace corvanta::test
