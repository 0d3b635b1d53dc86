#include "study/Sweep.h"

#include "solver/RideHeight.h"
#include "tests/support/BatchTable.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <cmath>

namespace corvanta::test {
namespace {

class SweepTest : public testing::Test {
  protected:
    [[nodiscard]] SweepAnswer Run(const SweepQuestion& question, const StudyWork& work = {}) const {
        CSampleRunner runner(work);
        return RunSweep(runner, m_design, question, {m_units, m_channels});
    }

    const FundamentalUnits m_units = MetricUnits();
    const ChannelCatalogue m_channels = MetricChannels();
    const Design m_design = DesignOf(LoadSample("formula-front-pushrod.WSP"));
    const SweepAxis m_height{PointCoordinate{ptUWIF, 2}, {350, 356, 362}};
    const SweepAxis m_rate{DataNumber{&SuspensionData::KSpring}, {100, 150}};
};

TEST_F(SweepTest, IsWhatSingleRunsOfTheBatchProgramExport) {
    const SweepQuestion question{
        {m_height},
        {{chCamberAngle, ChartKind::AlongWheelTravel},
         {chHalfTrack, ChartKind::AlongRackTravel},
         {chCamberAngle, ChartKind::Map}},
        Figure{chCamberAngle, FigureKind::AtTravel, vvAlongWheelTravel, 10}};
    const SweepAnswer answer = Run(question, {1});
    ASSERT_EQ(answer.FirstCount, 3U);
    for (std::size_t n = 0; n < 3; ++n) {
        Design design = m_design;
        design.Points[ptUWIF].Z = m_height.Values[n];
        const SweptDesign& swept = answer.At(n);
        EXPECT_EQ(swept.Values[0], m_height.Values[n]);
        EXPECT_FALSE(swept.Curves[2]) << "a map";
        const auto expect = [&](std::size_t chart, std::int32_t variable, const char* travel,
                                const char* title, double half) {
            const BatchTable table = BatchTableOf(design, variable);
            const Curve& curve = swept.Curves[chart].value();
            ASSERT_EQ(table.Rows.size(), curve.X.size());
            for (std::size_t row = 0; row < table.Rows.size(); ++row) {
                EXPECT_NEAR(ValueAt(curve, table.Cell(row, travel)).value(), table.Cell(row, title),
                            half);
            }
        };
        expect(0, vvAlongWheelTravel, "Wheel Travel", "Camber Angle", 0.00051); // of the last digit
        expect(1, vvAlongRackTravel, "Rack Travel", "Half Track", 0.0051);
    }
    EXPECT_EQ(answer.At(2).Number, ValueAt(*answer.At(2).Curves[0], 10));
    const SweepAnswer again = Run(question, {2});
    for (std::size_t n = 0; n < 3; ++n) {
        EXPECT_EQ(again.At(n).Curves[1]->Y, answer.At(n).Curves[1]->Y);
    }
    EXPECT_GT(std::abs(*answer.At(0).Number - *answer.At(2).Number), 0.01) << "nothing is swept";
}

TEST_F(SweepTest, OverALinkIsTheCornerAtItsNewRideHeight) {
    Suspension raised = LoadSample("formula-front-pushrod.WSP");
    SetUpCorner(raised);
    CalculateCorner(raised);
    std::string errorText;
    ASSERT_TRUE(AdjustRideHeight(raised, errorText, 4, true)) << errorText;
    const auto rod = [](const PointSet& points) {
        return std::hypot(points[ptPRO].X - points[ptPRI].X, points[ptPRO].Y - points[ptPRI].Y,
                          points[ptPRO].Z - points[ptPRI].Z);
    };
    const double longer = rod(raised.StaticPoints()) - rod(m_design.Points);
    const SweepAnswer answer = Run({{{CornerLink::SpringRod, {0, longer}}},
                                    {{chCamberAngle, ChartKind::AlongWheelTravel}},
                                    Figure{chCamberAngle}});
    const BatchTable table = BatchTableOf(DesignOf(raised), vvAlongWheelTravel);
    const Curve& curve = answer.At(1).Curves[0].value();
    for (std::size_t row = 0; row < table.Rows.size(); ++row) {
        EXPECT_NEAR(ValueAt(curve, table.Cell(row, "Wheel Travel")).value(),
                    table.Cell(row, "Camber Angle"), 0.00055);
    }
    EXPECT_GT(std::abs(*answer.At(1).Number - *answer.At(0).Number), 0.05);
}

TEST_F(SweepTest, OverTwoAxesIsAMapOfTheFigure) {
    // Whatever the pickup, which is behind the rear one once, wheel and spring rate go together.
    SweepQuestion question{{{PointCoordinate{ptUWIF, 0}, {-170, -160, 300, -150}}, m_rate},
                           {{chCamberAngle, ChartKind::AlongWheelTravel}},
                           Figure{chWheelRateSpring}};
    const SweepAnswer answer = Run(question);
    for (const std::size_t first : {0U, 1U, 3U}) {
        EXPECT_NEAR(answer.At(first, 1).Number.value() / answer.At(first, 0).Number.value(), 1.5,
                    1e-9);
        EXPECT_EQ(answer.At(first, 1).Values[0], question.Axes[0].Values[first]);
        EXPECT_EQ(answer.At(first, 1).Values[1], 150);
        EXPECT_THAT(answer.At(first, 1).Curves, IsEmpty()) << "a map has no curves";
    }
    EXPECT_EQ(answer.FailedDesigns, 2U);
    EXPECT_THAT(answer.At(2, 1).Failure, EndsWith("wishbone inboard points back to front"));
    for (const unsigned threads : {2U, 7U}) {
        const SweepAnswer again = Run(question, {threads});
        for (std::size_t n = 0; n < answer.Designs.size(); ++n) {
            EXPECT_EQ(again.Designs[n].Number, answer.Designs[n].Number);
            EXPECT_EQ(again.Designs[n].Failure, answer.Designs[n].Failure);
        }
    }
}

TEST_F(SweepTest, ADesignThatFailsTellsWhyAndAStopLeavesTheRest) {
    const SweepQuestion question{
        {{PointCoordinate{ptUWIF, 0}, {400, 300, -160, -150}}}, {}, Figure{chCamberAngle}};
    const SweepAnswer answer = Run(question);
    EXPECT_EQ(answer.FailedDesigns, 2U);
    EXPECT_THAT(answer.At(0).Failure, EndsWith("wishbone inboard points back to front"));
    EXPECT_EQ(answer.At(1).Failure, answer.At(0).Failure);
    EXPECT_TRUE(answer.At(2).Solved && answer.At(3).Solved);

    std::stop_source source;
    const SweepAnswer stopped =
        Run(question, {1, source.get_token(), [&](double) { source.request_stop(); }});
    EXPECT_TRUE(stopped.Stopped);
    EXPECT_EQ(stopped.FailedDesigns, 1U);
    EXPECT_FALSE(stopped.At(3).Solved);
    EXPECT_EQ(stopped.At(3).Failure, "");
}

TEST_F(SweepTest, RefusesWhatCannotBeSwept) {
    const SweepQuestion sound{{m_height, m_rate}, {}, Figure{chCamberAngle}};
    const auto fault = [&](const auto& change) {
        SweepQuestion question = sound;
        change(question);
        return FailureOf([&] { (void)Run(question); }).Description();
    };
    using Asked = SweepQuestion;
    EXPECT_EQ(fault([](Asked& asked) { asked.Axes[0] = asked.Axes[1]; }), "Two axes are the same");
    EXPECT_EQ(fault([](Asked& asked) { asked.Axes[1].Values.clear(); }), "An axis has no values");
    EXPECT_EQ(fault([](Asked& asked) { asked.Axes[1].Values[0] = std::nan(""); }),
              "A value of an axis is no number");
    EXPECT_THAT(fault([](Asked& asked) { asked.Axes[0].What = DataNumber{&SuspensionData::Bump}; }),
                StartsWith("Bump travel can't vary"));
    EXPECT_EQ(fault([](Asked& asked) { asked.Number.reset(); }),
              "Neither a curve nor a figure is asked for");
    EXPECT_EQ(fault([](Asked& asked) {
                  asked.Axes[0].What = PointCoordinate{ptLCSI, 0};
              }),
              "ptLCSI.X is not in play");
    EXPECT_THAT(fault([](Asked& asked) { asked.Axes[0].Values.resize(5'001); }),
                HasSubstr("10000"));
}

} // namespace
} // namespace corvanta::test
