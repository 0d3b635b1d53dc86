#include "study/Sweep.h"

#include "persistence/MData.h"
#include "platform/DiskFileServices.h"
#include "solver/SInitGeo.h"
#include "tests/support/Places.h"
#include "tests/support/RecordingMessageBox.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Testing.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <sstream>

namespace corvanta::test {
namespace {

class SweepTest : public testing::Test {
  protected:
    [[nodiscard]] SweepAnswer Run(const SweepQuestion& question, const StudyWork& work = {}) const {
        CSampleRunner runner(work);
        return RunSweep(runner, m_design, question, {m_units, m_channels});
    }
    [[nodiscard]] std::vector<std::vector<double>> BatchTable(const Design& design, int variable);

    const FundamentalUnits m_units = MetricUnits();
    const ChannelCatalogue m_channels = MetricChannels();
    const Design m_design = DesignOf(LoadSample("formula-front-pushrod.WSP"));
    const SweepAxis m_height{PointCoordinate{ptUWIF, 2}, {350, 356, 362}};
    const SweepAxis m_rate{DataNumber{&SuspensionData::KSpring}, {100, 150}};
    TemporaryFolder m_folder;
};

/// The numbers of the lateral geometry that the batch program exports of a design, 1 along rack and
/// 2 along wheel travel: travel, camber, half track and what follows.
std::vector<std::vector<double>> SweepTest::BatchTable(const Design& design, int variable) {
    Suspension document;
    SetDesign(document, design, m_units);
    DiskFileServices files;
    RecordingMessageBox box;
    Messages messages(box);
    bool written = false;
    static_cast<void>(
        DataWrite(written, document, m_folder / "swept.WSP", m_units, files, messages));
    std::string folder = m_folder.Path();
    std::replace(folder.begin(), folder.end(), '/', '\\'); // a slash begins a key
    const std::string command =
        "env -u LC_ALL -u LANG XDG_CONFIG_HOME='" + m_folder.Path() + "' '" + ProgramFolder() +
        "/corvanta-batch' '/input=" + folder + "\\swept.WSP /output=" + folder +
        "\\out.txt /type=2 /table=2 /variable=" + std::to_string(variable) + "'";
    EXPECT_TRUE(written && std::system(command.c_str()) == 0);
    std::istringstream text(files.ReadBytes(m_folder / "out.txt"));
    std::vector<std::vector<double>> rows;
    for (std::string line; std::getline(text, line);) {
        std::istringstream cells(line);
        const std::vector<double> row{std::istream_iterator<double>(cells), {}};
        if (row.size() > 2) {
            rows.push_back(row);
        }
    }
    return rows;
}

TEST_F(SweepTest, IsWhatSingleRunsOfTheBatchProgramExport) {
    const SweepQuestion question{
        {m_height},
        {{chCamberAngle, ChartKind::AlongWheelTravel},
         {chHalfTrack, ChartKind::AlongRackTravel},
         {chCamberAngle, ChartKind::Map}},
        Figure{chCamberAngle, FigureKind::AtTravel, vvAlongWheelTravel, 10},
        false};
    const SweepAnswer answer = Run(question);
    ASSERT_EQ(answer.FirstCount, 3U);
    for (std::size_t n = 0; n < 3; ++n) {
        Design design = m_design;
        design.Points[ptUWIF].Z = m_height.Values[n];
        const SweptDesign& swept = answer.At(n);
        EXPECT_EQ(swept.Values[0], m_height.Values[n]);
        EXPECT_FALSE(swept.Curves[2]) << "a map";
        for (const std::size_t chart : {0U, 1U}) {
            const std::vector<std::vector<double>> table = BatchTable(design, chart == 0 ? 2 : 1);
            const Curve& curve = swept.Curves[chart].value();
            ASSERT_EQ(table.size(), curve.X.size());
            for (const std::vector<double>& row : table) {
                const double half = chart == 0 ? 0.00051 : 0.0051; // of the last decimal
                EXPECT_NEAR(ValueAt(curve, row[0]).value(), row[chart + 1], half);
            }
        }
    }
    EXPECT_EQ(answer.At(2).Number, ValueAt(*answer.At(2).Curves[0], 10));
    EXPECT_GT(std::abs(*answer.At(0).Number - *answer.At(2).Number), 0.01) << "nothing is swept";
}

TEST_F(SweepTest, OverTwoAxesIsAMapOfTheFigure) {
    // Whatever the pickup, which is behind the rear one once, wheel and spring rate go together.
    SweepQuestion question{{{PointCoordinate{ptUWIF, 0}, {-170, -160, 300, -150}}, m_rate},
                           {{chCamberAngle, ChartKind::AlongWheelTravel}},
                           Figure{chWheelRateSpring},
                           false};
    const SweepAnswer answer = Run(question);
    for (const std::size_t first : {0U, 1U, 3U}) {
        EXPECT_NEAR(answer.At(first, 1).Number.value() / answer.At(first, 0).Number.value(), 1.5,
                    1e-9);
        EXPECT_EQ(answer.At(first, 1).Values[0], question.Axes[0].Values[first]);
        EXPECT_EQ(answer.At(first, 1).Values[1], 150);
        EXPECT_THAT(answer.At(first, 1).Curves, IsEmpty()) << "not asked for";
    }
    EXPECT_EQ(answer.FailedDesigns, 2U);
    EXPECT_THAT(answer.At(2, 1).Failure, EndsWith("wishbone inboard points back to front"));
    question.CurvesOverTwoAxes = true;
    for (const unsigned threads : {2U, 7U}) {
        const SweepAnswer again = Run(question, {threads});
        for (std::size_t n = 0; n < answer.Designs.size(); ++n) {
            EXPECT_EQ(again.Designs[n].Number, answer.Designs[n].Number);
            EXPECT_EQ(again.Designs[n].Failure, answer.Designs[n].Failure);
            EXPECT_EQ(again.Designs[n].Curves.size(), again.Designs[n].Solved ? 1U : 0U);
        }
    }
}

TEST_F(SweepTest, ADesignThatFailsTellsWhyAndAStopLeavesTheRest) {
    SweepQuestion question{
        {{DataNumber{&SuspensionData::WheelTravelStepSize}, {}}}, {}, Figure{chCamberAngle}, false};
    question.Axes[0].Values = EvenlySpaced(-2.5, 5, 4); // -2.5, 0, 2.5, 5
    const SweepAnswer answer = Run(question);
    EXPECT_EQ(answer.FailedDesigns, 2U);
    EXPECT_EQ(answer.At(0).Failure, "The step size of wheel travel must be greater than 0");
    EXPECT_EQ(answer.At(1).Failure, "Division by zero");
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
    const SweepQuestion sound{{m_height, m_rate}, {}, Figure{chCamberAngle}, false};
    const auto fault = [&](const auto& change) {
        SweepQuestion question = sound;
        change(question);
        std::string text = FaultOf(question, m_design);
        EXPECT_EQ(FailureOf([&] { (void)Run(question); }).Description(),
                  text.empty() ? "no failure" : text);
        return text;
    };
    using Asked = SweepQuestion;
    EXPECT_EQ(fault([](Asked&) {}), "");
    EXPECT_NE(fault([](Asked& asked) { asked.Axes[0] = asked.Axes[1]; }), "");
    EXPECT_NE(fault([](Asked& asked) { asked.Axes[1].Values.clear(); }), "");
    EXPECT_NE(fault([](Asked& asked) { asked.Axes[1].Values[0] = std::nan(""); }), "");
    EXPECT_EQ(fault([](Asked& asked) { asked.Number.reset(); }),
              "neither a curve nor a figure is asked for");
    EXPECT_EQ(fault([](Asked& asked) {
                  asked.Axes[0].What = PointCoordinate{ptLCSI, 0};
              }),
              "ptLCSI.X is not in play");
    EXPECT_THAT(fault([](Asked& asked) { asked.Axes[0].Values.resize(5'001); }),
                HasSubstr("10000"));
}

} // namespace
} // namespace corvanta::test
