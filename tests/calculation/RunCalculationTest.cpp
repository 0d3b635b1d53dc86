#include "calculation/SCalcs.h"
#include "tests/support/Corners.h"
#include "tests/support/RecordingMessageBox.h"
#include "tests/support/Testing.h"

#include <string>

namespace corvanta::test {
namespace {

class RunCalculationTest : public testing::Test {
  protected:
    RecordingMessageBox m_box;
    Messages m_messages{m_box};
};

TEST_F(RunCalculationTest, AFailureEndsTheRunAndIsToldOnce) {
    Suspension document = DoubleWishboneCorner(smNone);
    // In one step past the length of the upper wishbone.
    document.Data.Bump = document.Data.Droop = document.Data.WheelTravelStepSize = 400;
    SetUpCorner(document);
    RunCalculation(document, MetricChannels(), m_messages);
    EXPECT_FALSE(document.ResultsValid);
    ASSERT_EQ(m_box.Shown.size(), 1U);
    EXPECT_EQ(m_box.Shown[0].Prompt,
              "Calculations could not be completed.\r\rThe following error occurred: Invalid "
              "procedure call or argument");
    EXPECT_EQ(m_box.Shown[0].Style, msExclamation);
    EXPECT_EQ(m_box.Shown[0].Title, "");
    EXPECT_EQ(document.WheelStates(2, document.StaticWheel + 1).Points, PointSet{})
        << "nothing after the failed bump is solved";

    document.StaticPoints()[ptTRI].Y = 800;
    RunCalculation(document, MetricChannels(), m_messages);
    ASSERT_EQ(m_box.Shown.size(), 2U);
    EXPECT_EQ(m_box.Shown[1].Prompt,
              "Calculations could not be completed.\r\rThe following problem/s were found with the "
              "input geometry: \r\rTrackrod points swapped inboard for outboard");
    EXPECT_THAT(document.FaultyPoints, ElementsAre(ptTRO, ptTRI));
    m_messages.Silence();
    RunCalculation(document, MetricChannels(), m_messages);
    EXPECT_EQ(m_box.Shown.size(), 2U);

    Suspension strut = StrutCorner();
    PointSet& points = strut.StaticPoints();
    const PointSet sound = points;
    points[ptLWIR] = points[ptLWIF]; // what no check asks
    RunCalculation(strut, MetricChannels(), m_messages);
    EXPECT_THAT(strut.FaultyPoints, ElementsAre(ptLWIF, ptLWIR));
    points = sound;
    points[ptSAI].Z = points[ptLWO].Z;
    RunCalculation(strut, MetricChannels(), m_messages);
    EXPECT_THAT(strut.FaultyPoints, ElementsAre(ptSAI, ptLWO));
    points = sound;
    RunCalculation(strut, MetricChannels(), m_messages);
    EXPECT_THAT(strut.FaultyPoints, IsEmpty());
}

} // namespace
} // namespace corvanta::test
