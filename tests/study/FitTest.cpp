#include "study/Fit.h"

#include "study/SampleRandom.h"
#include "tests/support/BatchTable.h"
#include "tests/support/Corners.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace corvanta::test {
namespace {

/// A car whose upper front pickup and track rod may be off, read along bump at three rack travels.
class FitTest : public testing::Test {
  protected:
    FitTest() {
        m_design.Data.Bump = m_design.Data.Droop = 20;
        m_design.Data.WheelTravelStepSize = 10;
        m_design.Data.RackTravel = m_design.Data.RackTravelStepSize = 12;
        for (const PointCoordinate& coordinate :
             {PointCoordinate{ptTRI, 2}, PointCoordinate{ptUWIF, 2}, PointCoordinate{ptLWIF, 2},
              PointCoordinate{ptUWO, 1}}) {
            m_question.Free.push_back({coordinate, 3, Spread::Normal});
        }
        for (const double wheel : {-20, -10, 0, 10, 20}) {
            m_question.Readings.push_back({wheel, 0, chCamberAngle, 0, 0.02});
            m_question.Readings.push_back({wheel, 0, chSteerAngle, 0, 0.02});
            m_question.Readings.push_back({wheel, 0, chCasterAngle, 0, 0.05});
        }
    }

    /// Reads what the batch program exports of a car, with noise.
    void Read(const Design& car, CSampleRandom& random) {
        const BatchTable table = BatchTableOf(car, vvAlongWheelTravel); // from bump to droop
        for (Reading& reading : m_question.Readings) {
            const auto row = static_cast<std::size_t>((20 - reading.WheelTravel) / 10);
            const std::string title(TrimBlanks(m_channels[reading.Channel].Title));
            ASSERT_EQ(table.Cell(row, "Wheel Travel"), reading.WheelTravel);
            reading.Value = table.Cell(row, title) + random.Normal() * reading.Uncertainty;
        }
    }

    /// A car built within the tolerances.
    [[nodiscard]] Design Built(CSampleRandom& random) const {
        Design car = m_design;
        for (const Tolerance& free : m_question.Free) {
            SetValue(car, free.Variable,
                     ValueOf(car, free.Variable) + random.Normal() * PriorDeviation(free));
        }
        return car;
    }

    FitAnswer Fitted(unsigned threads = 1) {
        CSampleRunner runner({threads});
        return Fit(runner, m_design, m_question, m_settings);
    }

    const FundamentalUnits m_units = MetricUnits();
    const ChannelCatalogue m_channels = MetricChannels();
    const SolveSettings m_settings{m_units, m_channels};
    Design m_design = DesignOf(DoubleWishboneCorner());
    FitQuestion m_question;
};

TEST_F(FitTest, DeviationsCoverTheTruthAsOftenAsTheyShould) {
    constexpr int Seeds = 200;
    std::array<int, 4> within{};
    double chiSquared = 0;
    int degrees = 0;
    CSampleRunner runner({0});
    for (int seed = 0; seed < Seeds; ++seed) {
        CSampleRandom random(2026, static_cast<std::size_t>(seed));
        const Design car = Built(random);
        Read(car, random);
        const FitAnswer answer = Fit(runner, m_design, m_question, m_settings);
        ASSERT_TRUE(answer.Converged) << seed << ": " << answer.Words;
        for (std::size_t i = 0; i < within.size(); ++i) {
            const FittedVariable& variable = answer.Variables[i];
            const double miss = variable.After - ValueOf(car, variable.Variable);
            within[i] += std::abs(miss) < variable.Deviation.value() ? 1 : 0;
        }
        chiSquared += answer.ChiSquared;
        degrees += answer.DegreesOfFreedom;
    }
    // Binomial: 136.5 of 200 expected, standard deviation 6.58; the four together 546 and 13.2.
    constexpr double Share = 0.6827;
    const auto deviation = [](double count) { return std::sqrt(count * Share * (1 - Share)); };
    int all = 0;
    for (const int count : within) {
        EXPECT_NEAR(count, Share * Seeds, 3 * deviation(Seeds));
        all += count;
    }
    EXPECT_NEAR(all, Share * Seeds * 4, 2.5 * deviation(Seeds * 4));
    // A quotient of 3000 squares has a standard deviation of the root of 2 / 3000; the readings'
    // weights, which make the search robust, leave a little in it.
    EXPECT_NEAR(chiSquared / degrees, 1, 0.07);
}

TEST_F(FitTest, AGrossErrorIsNamedAndNotFollowed) {
    CSampleRandom random(5, 0);
    Read(Built(random), random);
    const FitAnswer sound = Fitted();
    EXPECT_EQ(sound.Outliers, 0);
    EXPECT_LT(sound.ChiSquared / sound.DegreesOfFreedom, 2);
    m_question.Readings[7].Value += 0.5; // 25 uncertainties of a steer angle
    const FitAnswer robust = Fitted();
    EXPECT_EQ(robust.Outliers, 1);
    EXPECT_TRUE(robust.Readings[7].Outlier);
    EXPECT_NEAR(robust.Readings[7].Residual, 0.5, 0.06);
    EXPECT_NEAR(robust.Readings[7].InUncertainties, robust.Readings[7].Residual / 0.02, 1e-9);
    EXPECT_EQ(robust.DegreesOfFreedom, 14);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(robust.Variables[i].After, sound.Variables[i].After,
                    *sound.Variables[i].Deviation);
    }
}

TEST_F(FitTest, WhatTheReadingsCannotTellStaysAndIsNamed) {
    CSampleRandom random(6, 0);
    m_question.Free = {{PointCoordinate{ptTRI, 2}, 3, Spread::Normal},
                       {PointCoordinate{ptSAI, 2}, 3, Spread::Uniform},
                       {PointCoordinate{ptTRO, 2}, 3, Spread::Normal}};
    Read(Built(random), random);
    const FitAnswer answer = Fitted();
    const FittedVariable& spring = answer.Variables[1]; // no angle of the wheel depends on it
    EXPECT_FALSE(spring.Told);
    EXPECT_NEAR(spring.After, spring.Before, 1e-9);
    EXPECT_NEAR(*spring.Deviation, std::sqrt(3.0), 1e-6);
    EXPECT_TRUE(answer.Variables[0].Told && answer.Variables[2].Told);
    // Both ends of the track rod turn it alike.
    EXPECT_GT(answer.Correlations[2], 0.5);
    EXPECT_NEAR(answer.Correlations[2], answer.Correlations[6], 1e-12);
    EXPECT_NEAR(answer.Correlations[4], 1, 1e-12);
    // Fewer readings than coordinates.
    m_question.Readings.resize(2);
    const FitAnswer few = Fitted();
    EXPECT_TRUE(few.Converged);
    EXPECT_EQ(few.DegreesOfFreedom, 2);
}

TEST_F(FitTest, ThreadsAndStopChangeNothingElse) {
    CSampleRandom random(7, 0);
    Read(Built(random), random);
    const FitAnswer one = Fitted(1);
    for (const unsigned threads : {2U, 7U}) {
        const FitAnswer many = Fitted(threads);
        EXPECT_TRUE(many.Fitted == one.Fitted);
        EXPECT_EQ(many.Correlations, one.Correlations);
        EXPECT_EQ(many.ChiSquared, one.ChiSquared);
    }
    for (const int calls : {0, 1, 5, 40}) {
        std::stop_source stop;
        double told = 0;
        int left = calls;
        const auto progress = [&](double share) {
            EXPECT_GE(share, told);
            told = share;
            if (left-- == 0) {
                stop.request_stop();
            }
        };
        if (calls == 0) {
            stop.request_stop();
        }
        CSampleRunner runner({2, stop.get_token(), progress});
        const FitAnswer stopped = Fit(runner, m_design, m_question, m_settings);
        EXPECT_TRUE(stopped.Stopped) << calls;
        EXPECT_FALSE(stopped.Converged);
        EXPECT_THAT(stopped.Variables, SizeIs(4));
        EXPECT_THAT(stopped.Readings, SizeIs(15));
        EXPECT_EQ(stopped.Outliers, 0) << "what a search has not fitted yet is no gross error";
    }
}

TEST_F(FitTest, RefusesWhatItCannotAnswer) {
    const auto fault = [&](const std::function<void()>& change) {
        const FitQuestion question = m_question;
        const Design design = m_design;
        change();
        std::string text = FailureOf([&] { Fitted(); }).Description();
        m_question = question;
        m_design = design;
        return text;
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THAT(fault([&] { m_question.Free.clear(); }), HasSubstr("chosen"));
    EXPECT_THAT(fault([&] { m_question.Free[0].HalfWidth = nan; }), HasSubstr("tolerance"));
    EXPECT_THAT(fault([&] { m_question.Free[0].Variable = DataNumber{&SuspensionData::Bump}; }),
                StartsWith("Bump travel can't vary"));
    EXPECT_THAT(fault([&] { m_question.Readings.clear(); }), HasSubstr("no reading"));
    EXPECT_THAT(fault([&] { m_question.Readings[4].Value = nan; }), StartsWith("Reading 5 (Steer"));
    EXPECT_THAT(fault([&] { m_question.Readings[1].Channel = chRackTravel; }),
                StartsWith("Reading 2 (Rack Travel)"));
    EXPECT_THAT(fault([&] {
                    m_design.Data.DriveShaftExists = false;
                    for (Reading& reading : m_question.Readings) {
                        reading.Channel = chDriveshaftLength;
                    }
                }),
                EndsWith("Reading 1: the corner has no Driveshaft Length"));
    EXPECT_THAT(fault([&] { m_question.Readings[0].WheelTravel = 1e4; }),
                StartsWith("The design can't be calculated at the travels of the readings"));
    EXPECT_THAT(fault([&] { m_question.Readings[0].WheelTravel = 1e300; }), HasSubstr("travels"));
    EXPECT_THAT(fault([&] {
                    m_question.Readings[0].Channel = chRollCentreToGround;
                    m_question.Readings[0].WheelTravel = 20.5;
                }),
                HasSubstr("opposite wheel"));
    EXPECT_THAT(fault([&] { m_design.Points[ptUWIF] = m_design.Points[ptUWIR]; }),
                StartsWith("The design can't be calculated: "));
    EXPECT_THAT(fault([&] { m_design.Points[ptTRI].Z = nan; }), HasSubstr("no value"));
}

TEST_F(FitTest, FindsTheErrorOfACarThatTheBatchProgramCalculated) {
    m_design = DesignOf(LoadSample("touring-front-wishbone.WSP"));
    Design car = m_design;
    car.Points[ptTRI].Z += 1.5;
    car.Points[ptUWIF].Z -= 1;
    const BatchTable table = BatchTableOf(car, vvAlongWheelTravel);
    std::string sheet;
    CSampleRandom random(8, 0);
    for (std::size_t row = 0; row < table.Rows.size(); ++row) {
        for (const std::string title : {"Camber Angle", "Steer Angle", "Caster Angle"}) {
            sheet += std::to_string(table.Cell(row, "Wheel Travel")) + ";0;" + title + ";" +
                     std::to_string(table.Cell(row, title) + 0.01 * random.Normal()) + ";0.01\n";
        }
    }
    m_question.Readings = ParseReadings(sheet, m_channels, m_units);
    ASSERT_THAT(m_question.Readings, SizeIs(19 * 3));
    m_question.Free.resize(2);
    const FitAnswer answer = Fitted();
    EXPECT_TRUE(answer.Converged && answer.Exact);
    EXPECT_EQ(answer.Outliers, 0);
    const std::array<double, 2> moved{1.5, -1};
    for (std::size_t i = 0; i < moved.size(); ++i) {
        const FittedVariable& variable = answer.Variables[i];
        EXPECT_NEAR(variable.After - variable.Before, moved[i], 3 * *variable.Deviation) << i;
        EXPECT_LT(*variable.Deviation, 0.15) << i;
    }
}

} // namespace
} // namespace corvanta::test
