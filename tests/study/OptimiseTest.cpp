#include "study/Optimise.h"

#include "study/DesignResults.h"
#include "tests/support/Corners.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <cmath>
#include <limits>

namespace corvanta::test {
namespace {

constexpr PointCoordinate RodHeight{ptTRI, 2};
constexpr PointCoordinate UpperFrontHeight{ptUWIF, 2};

/// A car with the inner end of its track rod 5 mm too high, and bump steer for it.
class OptimiseTest : public testing::Test {
  protected:
    OptimiseTest() {
        SetValue(m_design, RodHeight, ValueOf(m_sound, RodHeight) + 5);
        m_question.Free = {Around(RodHeight, 10)};
        m_question.Targets = {PlainTarget(chSteerAngleBump, vvAlongWheelTravel, 0, 0.005, -25, 25)};
    }

    [[nodiscard]] FreeVariable Around(const DesignVariable& variable, double halfWidth) const {
        const double value = ValueOf(m_design, variable);
        return {variable, value - halfWidth, value + halfWidth};
    }

    [[nodiscard]] OptimiseAnswer Answer(const StudyWork& work = {2}) const {
        CSampleRunner runner(work);
        return Optimise(runner, m_design, m_question, m_settings);
    }

    [[nodiscard]] std::string Refusal() const {
        return FailureOf([&] { static_cast<void>(Answer()); }).Description();
    }

    const FundamentalUnits m_units = MetricUnits();
    const ChannelCatalogue m_channels = MetricChannels();
    const SolveSettings m_settings{m_units, m_channels};
    const Design m_sound = DesignOf(LoadSample("formula-front-pushrod.WSP"));
    Design m_design = m_sound;
    OptimiseQuestion m_question;
};

TEST_F(OptimiseTest, TakesTheBumpSteerOutAndLeavesWhatDoesNotMatter) {
    m_question.Free.push_back(Around(PointCoordinate{ptSAI, 0}, 20)); // the spring's place
    const OptimiseAnswer answer = Answer();
    EXPECT_FALSE(answer.Targets[0].Before.Holds);
    EXPECT_TRUE(answer.Targets[0].After.Holds);
    EXPECT_TRUE(answer.AllHold);
    EXPECT_NEAR(ValueOf(answer.Best, RodHeight), ValueOf(m_sound, RodHeight), 0.3);
    EXPECT_NEAR(answer.Variables[1].After, answer.Variables[1].Before, 0.01);
    EXPECT_FALSE(answer.Variables[0].AtBound);
    for (const OptimisedStart& start : answer.Starts) {
        EXPECT_TRUE(start.AllHold && start.Converged);
    }
    EXPECT_EQ(answer.NotEvaluated, 0);
    // What it says is what the whole grid has.
    Suspension scratch;
    const Curve curve =
        CurveOfDesign(scratch, answer.Best, m_settings, chSteerAngleBump, vvAlongWheelTravel, {})
            .value();
    EXPECT_EQ(JudgeTarget(m_question.Targets[0], curve).Deviation, 0);
    // A box that ends before: at its bound, as near as it gets.
    m_question.Free = {{RodHeight, ValueOf(m_sound, RodHeight) + 2, 300}};
    const OptimiseAnswer bound = Answer();
    EXPECT_TRUE(bound.Variables[0].AtBound);
    EXPECT_EQ(bound.Variables[0].After, m_question.Free[0].Low);
    EXPECT_FALSE(bound.AllHold);
    EXPECT_LT(std::abs(bound.Targets[0].After.Deviation),
              0.5 * std::abs(bound.Targets[0].Before.Deviation));
}

TEST_F(OptimiseTest, BringsSeveralCurvesOfAnotherCarBack) {
    // Bands about the curves of a car that is known to be within the boxes.
    Suspension scratch;
    m_question.Targets.clear();
    for (const int channel : {chSteerAngleBump, chCamberAngle, chRollCentreToGround}) {
        const Curve curve =
            CurveOfDesign(scratch, m_sound, m_settings, channel, vvAlongWheelTravel, {}).value();
        const double tolerance = channel == chRollCentreToGround ? 0.5 : 0.01;
        Target target{channel, vvAlongWheelTravel, {}, 1};
        for (std::size_t n = 0; n < curve.X.size(); ++n) {
            target.Band.push_back({curve.X[n], curve.Y[n] - tolerance, curve.Y[n] + tolerance});
        }
        m_question.Targets.push_back(target);
    }
    m_question.Targets.push_back(PlainTarget(chAckerman, vvAlongRackTravel, -0.044, 0.01, 14, 28));
    SetValue(m_design, UpperFrontHeight, ValueOf(m_sound, UpperFrontHeight) - 4);
    for (const DesignVariable& variable :
         {DesignVariable(UpperFrontHeight), DesignVariable(PointCoordinate{ptLWIR, 2})}) {
        m_question.Free.push_back(Around(variable, 10));
    }
    m_question.Starts = 3;
    const OptimiseAnswer answer = Answer();
    EXPECT_TRUE(answer.AllHold);
    for (const TargetGain& gain : answer.Targets) {
        EXPECT_EQ(gain.After.Deviation, 0);
    }
    for (const OptimisedStart& start : answer.Starts) {
        EXPECT_GE(start.Cost, answer.Starts.front().Cost);
    }
    const OptimiseAnswer one = Answer({1});
    const OptimiseAnswer seven = Answer({7});
    EXPECT_TRUE(one.Best == answer.Best && seven.Best == answer.Best);
    EXPECT_EQ(one.Variables, answer.Variables);
    EXPECT_EQ(seven.Starts.back().Cost, answer.Starts.back().Cost);
}

TEST_F(OptimiseTest, TargetsThatContradictEachOtherMeetHalfway) {
    for (const double height : {-1.0, -2.0}) {
        m_question.Targets.push_back(
            PlainTarget(chCamberAngle, vvAlongWheelTravel, height, 0.2, 0, 0));
    }
    m_question.Free.push_back(Around(DataNumber{&SuspensionData::KSpring}, 5)); // moves no curve
    OptimiseAnswer answer = Answer();
    EXPECT_FALSE(answer.AllHold || answer.Targets[1].After.Holds || answer.Targets[2].After.Holds);
    EXPECT_TRUE(answer.Targets[0].After.Holds) << "static camber is out of reach of the rod";

    // Bump steer of two signs at one travel: the deviations share out against the weights.
    m_question.Targets = {PlainTarget(chSteerAngleBump, vvAlongWheelTravel, 0.05, 0.01, 20, 20),
                          PlainTarget(chSteerAngleBump, vvAlongWheelTravel, -0.05, 0.01, 20, 20)};
    const double weight = 9;
    m_question.Targets[0].Weight = weight;
    answer = Answer();
    const double up = -answer.Targets[0].After.Deviation;
    const double down = answer.Targets[1].After.Deviation;
    EXPECT_NEAR(up + down, 0.08, 1e-9);
    // Seen from outside, the search aims a tenth of the half width into the bands.
    EXPECT_NEAR((down + 0.001) / (up + 0.001), weight, 0.01);
}

TEST_F(OptimiseTest, BoxesWithoutASolvableDesignAreTold) {
    // Both ends of a wishbone's axis at one place.
    m_question.Free.clear();
    for (const int axis : {0, 1, 2}) {
        const double value = ValueOf(m_design, PointCoordinate{ptUWIF, axis});
        m_question.Free.push_back({PointCoordinate{ptUWIR, axis}, value - 1e-9, value + 1e-9});
    }
    const Failure none = FailureOf([&] { static_cast<void>(Answer()); });
    EXPECT_EQ(none.Number(), fnInvalidCall);
    EXPECT_THAT(none.Description(),
                StartsWith("No design within the boxes can be calculated, of 5 starts: "));
    // A large box: what fails is counted, the rest goes on.
    m_question.Free = {{RodHeight, 100, 1200}};
    m_question.Starts = 12;
    const OptimiseAnswer some = Answer();
    EXPECT_GT(some.NotEvaluated, 0);
    EXPECT_NE(some.FirstFailure, "");
    EXPECT_TRUE(some.AllHold);
    EXPECT_FALSE(some.Starts.back().Evaluated);
    EXPECT_THAT(some.Starts, SizeIs(12));
}

TEST_F(OptimiseTest, StopsWithTheBestUntilThen) {
    for (const int calls : {0, 1, 4, 30}) {
        std::stop_source stop;
        int left = calls;
        double told = 0;
        if (calls == 0) {
            stop.request_stop();
        }
        const OptimiseAnswer answer = Answer({2, stop.get_token(), [&](double share) {
                                                  EXPECT_GE(share, told);
                                                  told = share;
                                                  if (--left == 0) {
                                                      stop.request_stop();
                                                  }
                                              }});
        EXPECT_TRUE(answer.Stopped);
        EXPECT_EQ(answer.NotEvaluated, 0) << "a start that was stopped is none that fails";
        ASSERT_THAT(answer.Targets, SizeIs(1));
        EXPECT_LE(std::abs(answer.Targets[0].After.Deviation),
                  std::abs(answer.Targets[0].Before.Deviation));
    }
}

TEST_F(OptimiseTest, RefusesWhatItCannotAnswer) {
    const auto refusal = [&](const std::function<void()>& change) {
        const OptimiseQuestion question = m_question;
        const Design design = m_design;
        change();
        std::string text = Refusal();
        m_question = question;
        m_design = design;
        return text;
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(refusal([&] { m_question.Free.clear(); }), "No coordinate is chosen");
    EXPECT_EQ(refusal([&] { m_question.Targets.clear(); }), "There is no target");
    EXPECT_THAT(refusal([&] { m_question.Free[0].High = nan; }), StartsWith("The box of Track"));
    EXPECT_THAT(refusal([&] { m_question.Targets[0].Weight = nan; }),
                StartsWith("Target 1 (Steer Angle - Bump): The weight"));
    EXPECT_THAT(refusal([&] { m_question.Targets[0].Channel = 99; }), HasSubstr("no such channel"));
    EXPECT_THAT(refusal([&] {
                    for (BandCorner& corner : m_question.Targets[0].Band) {
                        corner.Travel += 100;
                    }
                }),
                EndsWith("no travel in common"));
    EXPECT_THAT(refusal([&] { m_question.Targets[0].Channel = chDriveshaftLength; }),
                EndsWith("no such curve"));
    EXPECT_THAT(refusal([&] { m_question.Starts = 0; }), HasSubstr("starts"));
    EXPECT_THAT(refusal([&] { m_design.Points[ptUWIR] = m_design.Points[ptUWIF]; }),
                StartsWith("The design can't be calculated: "));
}

} // namespace
} // namespace corvanta::test
