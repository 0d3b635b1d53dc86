#include "platform/DiskFileServices.h"
#include "study/Fit.h"
#include "study/Optimise.h"
#include "study/Region.h"
#include "study/Sensitivity.h"
#include "study/SetupTurns.h"
#include "study/Sweep.h"
#include "tests/support/Places.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <algorithm>
#include <cmath>
#include <regex>

namespace corvanta::test {
namespace {

const PointCoordinate RodInboardZ{ptTRI, 2};

/// The worked examples of the help, asked as the pages have the user ask them.
class StudyStoriesTest : public testing::Test {
  protected:
    static std::string Page(const std::string& study) {
        return DiskFileServices().ReadBytes(SourceFolder() + "/docs/help/study-" + study + ".html");
    }

    /// True when a page has the words, wherever its lines break, with the numbers in the place of
    /// their formats, which stand in braces.
    [[nodiscard]] testing::AssertionResult Tells(const std::string& study, std::string words,
                                                 auto... numbers) const {
        for (const double number : {static_cast<double>(numbers)...}) {
            const std::size_t from = words.find('{');
            const std::string format = words.substr(from + 1, words.find('}') - from - 1);
            words.replace(from, format.size() + 2, FormatUnsignedZero(number, format, {}));
        }
        const std::string page = std::regex_replace(Page(study), std::regex("\\s+"), " ");
        return testing::AssertionResult(page.find(words) != std::string::npos) << words;
    }

    const FundamentalUnits m_units = MetricUnits();
    const ChannelCatalogue m_channels = MetricChannels();
    const SolveSettings m_settings{m_units, m_channels};
    const Design m_formula = DesignOf(LoadSample("formula-front-pushrod.WSP"));
    CSampleRunner m_runner{{}};
};

TEST_F(StudyStoriesTest, WhatIsBehindTheBumpSteer) {
    const Figure gain{chSteerAngleBump, FigureKind::GainAtStatic};
    const auto slopes = FindSensitivity(m_runner, m_formula, {gain}, m_settings).Slopes;
    const auto most = *std::max_element(slopes.begin(), slopes.end(), [](auto& a, auto& b) {
        return std::abs(a.PerMillimetre.value_or(0)) < std::abs(b.PerMillimetre.value_or(0));
    });
    EXPECT_EQ(most.Coordinate, RodInboardZ);
    EXPECT_TRUE(Tells("sensitivity", "it most: by {0.00000} deg/mm", most.PerMillimetre.value()));
    const Figure range{chSteerAngleBump, FigureKind::RangeOverTravel};
    const SweepQuestion question{{{RodInboardZ, {199.5, 201.5}}}, {}, range};
    const auto swept = RunSweep(m_runner, m_formula, question, m_settings).Designs;
    EXPECT_TRUE(
        Tells("sweep", "<td>{0.000}</td><td>{0.000}</td>", *swept[0].Number, *swept[1].Number));
}

TEST_F(StudyStoriesTest, TheBumpSteerIsTakenOut) {
    Design design = m_formula;
    design.Points[ptTRI].Z += 4;
    OptimiseQuestion question{
        {}, {PlainTarget(chSteerAngleBump, vvAlongWheelTravel, 0, 0.01, -25, 25)}};
    for (const PointCoordinate& free : {RodInboardZ, PointCoordinate{ptTRO, 2}}) {
        question.Free.push_back({free, ValueOf(design, free) - 5, ValueOf(design, free) + 5});
    }
    const OptimiseAnswer answer = Optimise(m_runner, design, question, m_settings);
    EXPECT_TRUE(answer.AllHold);
    EXPECT_TRUE(Tells("optimise", "{0.000} deg outside its band and now holds it",
                      answer.Targets[0].Before.Deviation));
    const OptimisedVariable& inboard = answer.Variables[0];
    EXPECT_TRUE(Tells("optimise", "<td>{0.00}</td><td>{0.00}</td>", inboard.Before, inboard.After));
}

TEST_F(StudyStoriesTest, WhichPickupMustBeHeld) {
    const Design design = DesignOf(LoadSample("roadster-front-links.WSP"));
    ToleranceQuestion question{
        DefaultTolerances(design.Data),
        {},
        {{chSteerAngleBump, FigureKind::GainAtStatic}},
        {PlainTarget(chSteerAngleBump, vvAlongWheelTravel, 0, 0.05, -60, 60)}};
    const ToleranceAnswer loose = FindTolerance(m_runner, design, question, m_settings);
    const FigureSpread& gain = loose.Spreads[0];
    const auto most = std::max_element(gain.Shares.begin(), gain.Shares.end());
    Tolerance& first = question.Tolerances.at(static_cast<std::size_t>(most - gain.Shares.begin()));
    EXPECT_EQ(first.Variable, DesignVariable(RodInboardZ));
    EXPECT_TRUE(Tells("tolerance", "{0} of the 500 corners leave", loose.Targets[0].Leave));
    EXPECT_TRUE(Tells("tolerance", "{0} % of the variance of the gain", 100 * *most));
    first.HalfWidth = 0.2;
    const ToleranceAnswer tight = FindTolerance(m_runner, design, question, m_settings);
    EXPECT_TRUE(Tells("tolerance", "{0} of 500 leave the target", tight.Targets[0].Leave));
    EXPECT_TRUE(Tells("tolerance", "falls from {0.00000} to {0.00000} deg/mm",
                      gain.StandardDeviation, tight.Spreads[0].StandardDeviation));
}

TEST_F(StudyStoriesTest, WhereTheUpperFrontPickupMayGo) {
    const Design design = DesignOf(LoadSample("touring-front-wishbone.WSP"));
    const SuspPoint& at = design.Points[ptUWIF];
    const RegionQuestion question{
        ptUWIF,
        {{{at.X - 20, at.X + 20}, {at.Y - 20, at.Y + 20}, {at.Z - 20, at.Z + 20}}},
        {PlainTarget(chRollCentreToGround, vvAlongWheelTravel, 49, 5, 0, 0),
         PlainTarget(chCamberAngle, vvAlongWheelTravel, -4.6, 0.1, 50, 50)}};
    const RegionAnswer answer = FindRegion(m_runner, design, question, m_settings);
    const auto held = std::ranges::count(answer.Nodes, RegionVerdict::Held, &RegionNode::Verdict);
    EXPECT_TRUE(Tells("region", "{#,##0} of the {#,##0} places hold", held, answer.Nodes.size()));
}

TEST_F(StudyStoriesTest, ARackThatSitsTooHigh) {
    const std::string page = Page("fit");
    const std::string readings = page.substr(page.find("<pre>") + 5);
    const Design design = DesignOf(LoadSample("published/DWSWEEP.WSP"));
    FitQuestion question{
        {{RodInboardZ, 3}},
        ParseReadings(readings.substr(0, readings.find("</pre>")), m_channels, m_units)};
    for (const PointCoordinate& free :
         {PointCoordinate{ptUWIF, 0}, {ptUWIF, 2}, {ptUWIR, 2}, {ptLWIF, 2}, {ptLWIR, 2}}) {
        question.Free.push_back({free, 3});
    }
    FittedVariable rod = Fit(m_runner, design, question, m_settings).Variables.at(0);
    EXPECT_TRUE(Tells("fit", "Z</td><td>{0.00}</td><td>{0.00}</td>", rod.After - rod.Before,
                      rod.Deviation.value()));
    question.Free.resize(1);
    rod = Fit(m_runner, design, question, m_settings).Variables.at(0);
    EXPECT_TRUE(Tells("fit", "comes out at {0.00} mm, plus or minus {0.00}", rod.After - rod.Before,
                      rod.Deviation.value()));
}

TEST_F(StudyStoriesTest, TurnsForRideHeightWithToeHeld) {
    TurnsQuestion question;
    question.Sheet.Adjusters = AdjustersOf(m_formula.Data);
    std::erase_if(question.Sheet.Adjusters, [](const Adjuster& adjuster) {
        return adjuster.Name != "Trackrod" && adjuster.Name != "Pushrod";
    });
    question.Sheet.Figures = {{true}, {false, {chSteerAngle}}, {false, {chCamberAngle}}};
    question.Wishes = {{false, 3, 0.5}, {false, 0, 0.05}, {}};
    question.Ranges.resize(2);
    const TurnsAnswer turns = FindTurns(m_runner, m_formula, question, m_settings);
    EXPECT_THAT(turns.Counts, ElementsAre(0, 1)); // half a turn of the pushrod
    EXPECT_TRUE(Tells("setup", "rises by {0.00} mm; {0.00} mm are left over",
                      *turns.Reached.Values[0] - *turns.Base.Values[0], -*turns.LeftOver[0]));
}

} // namespace
} // namespace corvanta::test
