#include "results/MDisplayPlot.h"

#include "tests/support/Corners.h"
#include "tests/support/RecordingChart.h"
#include "tests/support/Testing.h"

namespace corvanta {

inline void PrintTo(const ChartPoint& point, std::ostream* stream) {
    *stream << point.X << "," << point.Y;
}

} // namespace corvanta

namespace corvanta::test {
namespace {

/// 3 rack steps by 4 wheel steps. Camber tells the place of its state, and the travels have more
/// decimals than a plot keeps.
class MDisplayPlotTest : public testing::Test {
  protected:
    MDisplayPlotTest() {
        Suspension& document = m_program.Document;
        for (int r = 2; r <= 4; ++r) {
            for (int w = 2; w <= 5; ++w) {
                ChannelCells& channels = document.WheelStates(r, w).Channels;
                channels.Set(chCamberAngle, r + w / 1e7);
                channels.Set(chAckerman, r / 100.0);
                channels.Set(chWheelTravel, 5.0000064 * (4 - w));
                channels.Set(chRackTravel, 7.0000049 * (r - 3));
            }
        }
    }

    void Plot(int channel, std::int32_t variable, int rack = 3, int wheel = 4) {
        PlotDisplay(m_plot, m_chart, m_program, channel, variable, rack, wheel);
    }

    /// A click at a part of the plot area across and up, 0 to 1.
    void Click(double across, double up) {
        PlotClick(m_plot, m_chart, m_program,
                  15 * (RecordingChart::Left + across * RecordingChart::Width),
                  15 * (RecordingChart::Top + (1 - up) * RecordingChart::Height));
    }

    void ExpectNoReadout(const char* titleX, const char* titleY) const {
        EXPECT_EQ(m_chart.AxisX.Title, titleX);
        EXPECT_EQ(m_chart.AxisY.Title, titleY);
        EXPECT_FALSE(m_chart.AxisX.Marker || m_chart.AxisY.Marker);
    }

    Program m_program = SmallGrid();
    RecordingChart m_chart;
    PlotState m_plot;
};

TEST_F(MDisplayPlotTest, RunsAlongTheVariableAtTheOtherPosition) {
    Plot(chCamberAngle, vvAlongRackTravel, 2, 5);
    EXPECT_THAT(m_chart.Series.Points,
                ElementsAre(ChartPoint{-7, 2 + 5 / 1e7}, ChartPoint{0, 3 + 5 / 1e7},
                            ChartPoint{7, 4 + 5 / 1e7}));
    ExpectNoReadout("Rack Travel [mm]", "Camber Angle [deg]");
    EXPECT_EQ(m_plot.PlotChannelX, chRackTravel);

    Plot(chCamberAngle, vvAlongWheelTravel, 2, 5);
    EXPECT_THAT(m_chart.Series.Points,
                ElementsAre(ChartPoint{10.00001, 2 + 2 / 1e7}, ChartPoint{5.00001, 2 + 3 / 1e7},
                            ChartPoint{0, 2 + 4 / 1e7}, ChartPoint{-5.00001, 2 + 5 / 1e7}));
    ExpectNoReadout("Wheel Travel [mm]", "Camber Angle [deg]");

    Plot(0, vvAlongWheelTravel, 0); // the first channel at the static position
    EXPECT_THAT(m_chart.Series.Points.front(), (ChartPoint{10.00001, 3.0}));
    ExpectNoReadout("Wheel Travel [mm]", "Ackerman % [%]");
}

TEST_F(MDisplayPlotTest, PointsAreInTheUsersUnitsRoundedBeforeTheConversion) {
    m_program.Units[ucDisplacement].Label = "in";
    m_program.Channels.ChannelsSetup(m_program.Units);
    m_program.Units.NumberSeparators = {",", "."};
    m_program.Document.WheelStates(3, 2).Channels.Set(chHalfTrack, 1e-7);
    Plot(chHalfTrack, vvAlongWheelTravel);
    const double inch = 0.03937008F;
    EXPECT_EQ(m_chart.Series.Points.front(), (ChartPoint{10.00001 * inch, 1e-7 * inch}));
    ExpectNoReadout("Wheel Travel [in]", "Half Track [in]");
    EXPECT_EQ(m_chart.AxisX.Format + m_chart.AxisY.Format, "0.0000.000");
    EXPECT_EQ(m_chart.NumberSeparators.Decimal, ",");

    Click(1, 1);
    EXPECT_EQ(m_chart.AxisX.Title, "Wheel Travel [in] = 0,394") << "no second conversion";
    EXPECT_EQ(m_chart.AxisY.Title, "Half Track [in] = 0,000");
}

TEST_F(MDisplayPlotTest, AClickReadsOutItsPosition) {
    Plot(chCamberAngle, vvAlongRackTravel);
    Click(0.75, 0.25);
    EXPECT_EQ(m_chart.AxisX.Title, "Rack Travel [mm] = 3.50");
    EXPECT_EQ(m_chart.AxisY.Title, "Camber Angle [deg] = 2.500");
    EXPECT_NEAR(m_chart.AxisX.Marker.value(), 3.5, 1e-12);
    EXPECT_NEAR(m_chart.AxisY.Marker.value(), 2.5, 1e-6);

    Click(0.5, 0.5); // the titles do not grow
    EXPECT_EQ(m_chart.AxisY.Title, "Camber Angle [deg] = 3.000");

    for (const auto& [across, up] : {std::pair(1.01, 0.5), {-0.01, 0.5}, {0.5, 1.01}, {2.0, 2.0}}) {
        Click(0.5, 0.5);
        Click(across, up);
        ExpectNoReadout("Rack Travel [mm]", "Camber Angle [deg]");
    }
    Click(0.5, 0.5);
    PlotClick(m_plot, m_chart, m_program, 1E308, 1E308);
    ExpectNoReadout("Rack Travel [mm]", "Camber Angle [deg]");
    Click(0.5, 0.5);
    Plot(chCamberAngle, vvAlongWheelTravel);
    ExpectNoReadout("Wheel Travel [mm]", "Camber Angle [deg]");
}

} // namespace
} // namespace corvanta::test
