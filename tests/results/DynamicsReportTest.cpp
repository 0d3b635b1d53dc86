#include "results/DynamicsReport.h"

#include "calculation/SCalcs.h"
#include "properties/Dynamics.h"
#include "tests/support/RecordingMessageBox.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <string>

namespace corvanta::test {
namespace {

const std::string NotValid = "Current settings are not valid for this report.";

const std::string Notes =
    "\r\nNOTES\r\nResults use velocity ratio & antidive/squat at datum conditions.\r\n"
    "Acceleration forces are applied through rear wheel hubs.\r\n"
    "Braking forces are distributed to front and rear contact patches.";

/// A corner whose numbers a hand can work out. The load transfer is 0.12 of the weight times g:
/// 235.44 N per wheel under acceleration, 588.6 N under braking.
Suspension HandCorner(bool front) {
    Suspension document;
    SuspensionData& data = document.Data;
    data.SpringMechanism = smPushrodToUpright;
    data.Mass = 800;
    data.GAccel = 0.5;
    data.GBrake = 1.25;
    data.CGX = 1500;
    data.CGZ = 350;
    data.Wheelbase = 2500;
    data.KTyre = 150;
    data.KLink = 3000;
    data.KSpring = 1;
    data.FrontBrakeBalanceSplitPC = 60;
    document.StaticRack = 3;
    document.StaticWheel = 4;
    document.StaticPoints()[ptWTCP] = {front ? 1500.0 : 1500.1, 700, 999};
    document.WheelStates(3, 1).Points[ptWTCP].Z = 50;
    ChannelCells& channels = document.WheelStates(3, 4).Channels;
    channels.Set(chWheelRateSpring, 30);
    channels.Set(chAntiDivePercent, front ? 0.2 : -0.5);
    channels.Set(chAntiSquatPercent, 0.4);
    return document;
}

class DynamicsReportTest : public testing::Test {
  protected:
    std::string Report(const Suspension& document, const FundamentalUnits& units) {
        Program program;
        program.Document = document;
        program.Units = units;
        return ShowDynamicsReport(program, m_messages);
    }

    RecordingMessageBox m_box;
    Messages m_messages{m_box};
};

TEST_F(DynamicsReportTest, RearCornerByHandInInchesAndKilogramsWithAComma) {
    Suspension document = HandCorner(false);
    CalculateDynamics(document, 3);
    FundamentalUnits units = UnitsOf("in", "kg", "kg", "lb/in");
    units.NumberSeparators = {",", "."};
    EXPECT_EQ(Report(document, units),
              "Rear suspension with outboard brakes\r\n"
              "Front Brake Bias = 60,0%\r\n"
              "\r\n"
              "ACCELERATION AT 0,5 g\r\n"
              "Additional  wheel load = 24,0 kg\r\n" // 235.44 / 9.81
              "Tyre deflection = 0,062 in\r\n"
              "Rigid link deflection = 0,003 in\r\n"
              "Uncorrected Suspension deflection = 0,309\r\n"            // 7.848 mm
              "Antisquat corrected Suspension deflection = 0,185 in\r\n" // 7.848 mm x 0.6
              "Total deflection = 0,250 in\r\n" // 1.5696 + 0.07848 + 4.7088 mm
              "\r\n"
              "BRAKING AT 1,25 g\r\n"
              "Reduction in wheel load = 60,0 kg\r\n"
              "Tyre extension  = 0,154 in\r\n"
              "Rigid link extension  = 0,008 in\r\n"
              "Uncorrected Suspension extension  = 0,772 in\r\n"
              "Antidive corrected Suspension extension  = 1,159 in\r\n" // 29.43 mm
              "Total extension  = 1,321 in\r\n" +                       // 33.5502 mm
                  Notes);
}

} // namespace
} // namespace corvanta::test
