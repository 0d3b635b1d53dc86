#include "study/Tolerance.h"

#include "study/SampleRandom.h"
#include "study/Statistics.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace corvanta::test {
namespace {

class ToleranceTest : public testing::Test {
  protected:
    [[nodiscard]] ToleranceAnswer Find(const Design& design, const ToleranceQuestion& question,
                                       const StudyWork& work = {}) const {
        CSampleRunner runner(work);
        return FindTolerance(runner, design, question, {m_units, m_channels});
    }

    const FundamentalUnits m_units = MetricUnits();
    const ChannelCatalogue m_channels = MetricChannels();
    const Design m_design = DesignOf(DoubleWishboneCorner());
    const std::vector<StudyChart> m_charts{{chCamberAngle, ChartKind::AlongWheelTravel},
                                           {chCamberAngle, ChartKind::Map},
                                           {chAckerman, ChartKind::AlongRackTravel}};
    const ToleranceQuestion m_question{
        DefaultTolerances(m_design.Data),
        m_charts,
        DefaultFigures(m_charts),
        {PlainTarget(chCamberAngle, vvAlongWheelTravel, 0, 1, -20, 20)}};
};

// At static the half track is the contact patch's Y itself. What follows is within four standard
// errors of the sampling.
TEST_F(ToleranceTest, OfALinearFigureIsItsClosedForm) {
    constexpr double HalfWidth = 0.6;
    constexpr double Samples = 2'000;
    const PointCoordinate patch{ptWTCP, 1};
    const double nominal = m_design.Points[ptWTCP].Y;
    for (const Spread distribution : {Spread::Uniform, Spread::Normal}) {
        const bool uniform = distribution == Spread::Uniform;
        const ToleranceAnswer answer = Find(
            m_design, {{{patch, HalfWidth, distribution}},
                       {{chHalfTrack, ChartKind::AlongWheelTravel}},
                       {{chHalfTrack}},
                       {PlainTarget(chHalfTrack, vvAlongWheelTravel, nominal, HalfWidth / 2, 0, 0)},
                       2'000});
        const double deviation = HalfWidth / (uniform ? std::sqrt(3.0) : 3);
        const double quantile = uniform ? 0.9 * HalfWidth : 1.6448536269514722 * deviation;
        const double density = uniform ? 0.5 / HalfWidth : 0.10313564037537139 / deviation;
        const double quantileError = 4 * std::sqrt(0.05 * 0.95 / Samples) / density;
        const FigureSpread& spread = answer.Spreads.at(0);
        EXPECT_NEAR(spread.Mean, nominal, 4 * deviation / std::sqrt(Samples));
        EXPECT_NEAR(spread.StandardDeviation, deviation, 4 * deviation / std::sqrt(2 * Samples));
        EXPECT_THAT(spread.Shares, ElementsAre(testing::DoubleNear(1, 1e-9)));
        const ToleranceBand& band = answer.Bands.at(0);
        ASSERT_THAT(band.Travel, SizeIs(9));
        EXPECT_NEAR(band.Travel[4], 0, 1e-6);
        EXPECT_NEAR(band.Nominal[4], nominal, 1e-6);
        EXPECT_NEAR(band.Low[4], nominal - quantile, quantileError);
        EXPECT_NEAR(band.High[4], nominal + quantile, quantileError);
        EXPECT_EQ(band.Greatest[4] - nominal <= HalfWidth, uniform);
        const auto outside = std::count_if(
            spread.Values.begin(), spread.Values.end(), [&](const std::optional<double>& value) {
                return std::abs(value.value() - nominal) > HalfWidth / 2;
            });
        EXPECT_EQ(answer.Targets.at(0).Leave, static_cast<std::size_t>(outside));
        EXPECT_EQ(answer.Targets[0].Judged, 2'000U);
        EXPECT_TRUE(answer.Targets[0].NominalHolds);
    }
}

// A spring grows by the direction cosines of its ends' moves.
TEST_F(ToleranceTest, SharesAreThoseOfTheDirectionsOfASpring) {
    const SuspPoint& end = m_design.Points[ptSAI];
    const SuspPoint& rocker = m_design.Points[ptR1O];
    const double length = Distance(end, rocker);
    const double x = 0.1 * (end.X - rocker.X) / length;
    const double y = 0.2 * (end.Y - rocker.Y) / length;
    const double z = 0.3 * (rocker.Z - end.Z) / length;
    const double variance = x * x + y * y + z * z;
    const ToleranceAnswer answer = Find(m_design, {{{PointCoordinate{ptSAI, 0}, 0.1},
                                                    {DataNumber{&SuspensionData::KSpring}, 5},
                                                    {PointCoordinate{ptSAI, 1}, 0.2},
                                                    {PointCoordinate{ptR1O, 2}, 0.3}},
                                                   {},
                                                   {{chSpringLength}},
                                                   {}});
    const FigureSpread& spread = answer.Spreads.at(0);
    EXPECT_NEAR(spread.StandardDeviation, std::sqrt(variance) / 3, 0.13 * std::sqrt(variance) / 3);
    const double error = 0.07; // four of a share's standard errors at 500 samples
    EXPECT_THAT(spread.Shares, ElementsAre(testing::DoubleNear(x * x / variance, error),
                                           testing::DoubleNear(0, 1e-4),
                                           testing::DoubleNear(y * y / variance, error),
                                           testing::DoubleNear(z * z / variance, error)));
    EXPECT_NEAR(spread.Unexplained, 0, 1e-4);
}

TEST_F(ToleranceTest, StatisticsAreTheirDefinitions) {
    const std::vector<double> sorted{1, 2, 4, 8};
    EXPECT_DOUBLE_EQ(QuantileOf(sorted, 0.05), 1.15);
    EXPECT_DOUBLE_EQ(QuantileOf(sorted, 0.95), 7.4);
    EXPECT_EQ(QuantileOf(sorted, 1), 8);
    EXPECT_DOUBLE_EQ(StandardDeviationOf(sorted), std::sqrt(115.0 / 12));
    // a + b c over cubes of edge 2: the variances 1/3 and 1/9, and no line follows the product.
    std::vector<double> inputs;
    std::vector<double> numbers;
    for (std::size_t n = 0; n < 2'000; ++n) {
        CSampleRandom random(7, n);
        for (int column = 0; column < 3; ++column) {
            inputs.push_back(2 * random.Uniform() - 1);
        }
        const std::size_t row = 3 * n;
        numbers.push_back(inputs[row] + inputs[row + 1] * inputs[row + 2]);
    }
    const VarianceShares found = SharesOf(numbers, inputs, 3);
    ASSERT_THAT(found.Shares, SizeIs(3));
    EXPECT_NEAR(found.Shares[0], 0.75, 0.04);
    EXPECT_NEAR(found.Shares[1] + found.Shares[2], 0, 0.01);
    EXPECT_NEAR(found.Unexplained, 0.25, 0.04);
    EXPECT_THAT(SharesOf({numbers.data(), 7}, {inputs.data(), 21}, 3).Shares, IsEmpty());
    EXPECT_THAT(SharesOf(std::vector<double>(2'000, 3), inputs, 3).Shares, IsEmpty());
    EXPECT_THAT(SharesOf(numbers, std::vector<double>(6'000, 3), 3).Shares, IsEmpty());
}

TEST_F(ToleranceTest, IsTheSameOnAnyThreadsAndFewSamplesAreTheFirstOfMany) {
    ToleranceQuestion question = m_question;
    const ToleranceAnswer one = Find(m_design, question, {1});
    EXPECT_EQ(one.Built, 500U);
    EXPECT_THAT(one.Bands[1].Travel, IsEmpty()) << "a map";
    ASSERT_THAT(one.Spreads, SizeIs(6));
    for (const unsigned threads : {2U, 7U}) {
        const ToleranceAnswer many = Find(m_design, question, {threads});
        for (std::size_t n = 0; n < 3; ++n) {
            EXPECT_EQ(many.Bands[n].Low, one.Bands[n].Low);
            EXPECT_EQ(many.Bands[n].Greatest, one.Bands[n].Greatest);
        }
        EXPECT_EQ(many.Spreads[0].Values, one.Spreads[0].Values);
        EXPECT_EQ(many.Spreads[1].Shares, one.Spreads[1].Shares);
        EXPECT_EQ(many.Targets[0].Leave, one.Targets[0].Leave);
    }
    question.Samples = 50;
    const ToleranceAnswer few = Find(m_design, question);
    const auto& all = one.Spreads[1].Values;
    EXPECT_EQ(few.Spreads[1].Values,
              std::vector<std::optional<double>>(all.begin(), all.begin() + 50));
    EXPECT_THAT(few.Spreads[1].Shares, IsEmpty()) << "more coordinates than samples";
    question.Seed = 2;
    EXPECT_NE(Find(m_design, question).Spreads[1].Values, few.Spreads[1].Values);
}

// The pivots of a bar must stand 1 mm apart at least, and here they do so by chance. How far they
// are apart changes nothing else.
TEST_F(ToleranceTest, SamplesThatCannotBeBuiltAreCountedAndLeftOut) {
    Design design = DesignOf(DoubleWishboneCorner(smPushrodToLowerWishbone, abTBar));
    design.Points[ptTBP2].Y = design.Points[ptTBP1].Y + 1;
    design.Points[ptTBP2].Y = std::nextafter(design.Points[ptTBP2].Y, 1e9);
    ToleranceQuestion question{
        {{PointCoordinate{ptTBP2, 1}, 0.3, Spread::Uniform}}, m_charts, {{chHalfTrack}}, {}};
    const ToleranceAnswer answer = Find(design, question);
    EXPECT_EQ(answer.Built + answer.NotBuilt, 500U);
    EXPECT_NEAR(static_cast<double>(answer.NotBuilt), 250, 45);
    EXPECT_THAT(answer.FirstReason, EndsWith("Two distinct points needed for T-Bar pivot axis"));
    const ToleranceBand& band = answer.Bands[0];
    EXPECT_THAT(band.Travel, SizeIs(9));
    EXPECT_EQ(band.Least, band.Nominal);
    EXPECT_EQ(band.Greatest, band.Nominal);
    EXPECT_EQ(answer.Spreads[0].Count, answer.Built);
    EXPECT_EQ(answer.Spreads[0].StandardDeviation, 0);
    EXPECT_THAT(answer.Spreads[0].Shares, IsEmpty()) << "nothing varies";

    question.Tolerances[0].Variable = PointCoordinate{ptTBP2, 0};
    const ToleranceAnswer none = Find(design, question);
    EXPECT_EQ(none.NotBuilt, 500U);
    EXPECT_THAT(none.Bands[0].Travel, IsEmpty());

    design.Points[ptTBP2] = design.Points[ptTBP1];
    EXPECT_THAT(FailureOf([&] { (void)Find(design, question); }).Description(),
                EndsWith("Two distinct points needed for T-Bar pivot axis"));
}

TEST_F(ToleranceTest, DefaultsCanBeBuiltOnEverySample) {
    ForEachSample([](Suspension&) {},
                  [&](const Suspension& document) {
                      const Design design = DesignOf(document);
                      const ToleranceAnswer answer =
                          Find(design, {DefaultTolerances(design.Data), m_charts, {}, {}, 20});
                      EXPECT_EQ(answer.NotBuilt, 0U) << answer.FirstReason;
                  });
}

TEST_F(ToleranceTest, StopsAnywhereWithNothingHalfDone) {
    for (const double share : {0.001, 0.5, 0.96}) {
        std::stop_source source;
        const auto stop = [&](double done) { done >= share&& source.request_stop(); };
        const ToleranceAnswer stopped = Find(m_design, m_question, {2, source.get_token(), stop});
        EXPECT_TRUE(stopped.Stopped);
        EXPECT_THAT(stopped.Bands, IsEmpty());
    }
}

TEST_F(ToleranceTest, RefusesWhatTellsNothing) {
    const auto fault = [&](const auto& change) {
        ToleranceQuestion question = m_question;
        change(question);
        return FailureOf([&] { (void)Find(m_design, question); }).Description();
    };
    using Asked = ToleranceQuestion;
    EXPECT_EQ(fault([](Asked& asked) { asked.Tolerances.clear(); }), "No coordinate is chosen");
    for (const double none : {0.0, -0.1, std::nan("")}) {
        EXPECT_EQ(fault([&](Asked& asked) { asked.Tolerances[0].HalfWidth = none; }),
                  "The tolerance of Upper wishbone outer pickup X must be above 0");
    }
    for (const auto& taken : std::vector<std::pair<DesignVariable, std::string>>{
             {DataNumber{&SuspensionData::Bump}, "can't vary"},
             {PointCoordinate{ptLCSI, 1}, "ptLCSI.Y is not in play"},
             {m_question.Tolerances[1].Variable, "is chosen twice"}}) {
        EXPECT_THAT(fault([&](Asked& asked) { asked.Tolerances.back().Variable = taken.first; }),
                    HasSubstr(taken.second));
    }
    EXPECT_THAT(fault([](Asked& asked) { asked.Samples = 0; }), HasSubstr("samples"));
    EXPECT_THAT(fault([](Asked& asked) { asked.Charts[0].Channel = 0; }),
                HasSubstr("no such channel"));
}

} // namespace
} // namespace corvanta::test
