#include "study/Fit.h"

#include "study/ReadingGrid.h"
#include "study/SampleRandom.h"
#include "study/VariedDesign.h"
#include "tests/support/Corners.h"
#include "tests/support/Places.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Testing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <memory>
#include <sstream>

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
        for (const double rack : {0.0, 12.0}) {
            for (const double wheel : {-20.0, 0.0, 20.0}) {
                m_question.Readings.push_back({wheel, rack, chCamberAngle, 0, 0.02});
                m_question.Readings.push_back({wheel, rack, chSteerAngle, 0, 0.02});
                m_question.Readings.push_back({wheel, rack, chCasterAngle, 0, 0.05});
            }
        }
    }

    /// Reads a car with noise.
    void Read(const Design& car, CSampleRandom& random) {
        const ReadingGrid grid = GridOfReadings(car, m_question.Readings, m_units);
        Design onGrid = car;
        SetTravels(onGrid, grid);
        ASSERT_TRUE(Solve(*m_scratch, onGrid, m_settings, grid.Cut).Solved);
        for (std::size_t n = 0; n < grid.Places.size(); ++n) {
            Reading& reading = m_question.Readings[n];
            reading.Value =
                ValueAt(*m_scratch, grid.Places[n]).value() + random.Normal() * reading.Uncertainty;
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

    std::string Fault() { return FaultOf(m_question, m_design, m_settings); }

    const FundamentalUnits m_units = MetricUnits();
    const ChannelCatalogue m_channels = MetricChannels();
    const SolveSettings m_settings{m_units, m_channels};
    Design m_design = DesignOf(DoubleWishboneCorner());
    FitQuestion m_question;
    std::unique_ptr<Suspension> m_scratch = std::make_unique<Suspension>();
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
    // A quotient of 3600 squares has a standard deviation of the root of 2 / 3600; the readings'
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
    EXPECT_EQ(robust.DegreesOfFreedom, 17);
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
    EXPECT_EQ(answer.Correlations[2], answer.Correlations[6]);
    EXPECT_NEAR(answer.Correlations[4], 1, 1e-12);
    // One reading for three coordinates.
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
        EXPECT_THAT(stopped.Readings, SizeIs(18));
        EXPECT_GT(stopped.ChiSquared, one.ChiSquared);
        EXPECT_EQ(stopped.Outliers, 0) << "what a search has not fitted yet is no gross error";
    }
}

TEST_F(FitTest, RefusesWhatItCannotAnswer) {
    const auto fault = [&](const std::function<void()>& change) {
        const FitQuestion question = m_question;
        const Design design = m_design;
        change();
        const std::string text = Fault();
        EXPECT_NE(text, "");
        EXPECT_EQ(FailureOf([&] { Fitted(); }).Description(), text);
        m_question = question;
        m_design = design;
        return text;
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(Fault(), "");
    EXPECT_THAT(fault([&] { m_question.Free.clear(); }), HasSubstr("free"));
    EXPECT_THAT(fault([&] { m_question.Free[0].HalfWidth = nan; }), HasSubstr("tolerance"));
    EXPECT_THAT(fault([&] { m_question.Free[0].Variable = DataNumber{&SuspensionData::Bump}; }),
                StartsWith("Bump travel can't be free"));
    EXPECT_THAT(fault([&] { m_question.Readings.clear(); }), HasSubstr("no reading"));
    EXPECT_THAT(fault([&] { m_question.Readings[4].Value = nan; }), StartsWith("reading 5 (Steer"));
    EXPECT_THAT(fault([&] { m_question.Readings[1].Channel = chRackTravel; }),
                StartsWith("reading 2 (Rack Travel)"));
    EXPECT_THAT(fault([&] {
                    m_design.Data.DriveShaftExists = false;
                    for (Reading& reading : m_question.Readings) {
                        reading.Channel = chDriveshaftLength;
                    }
                }),
                EndsWith("reading 1: the corner has no Driveshaft Length"));
    EXPECT_THAT(fault([&] { m_question.Readings[0].WheelTravel = 1e4; }),
                StartsWith("the design can't be calculated at the travels of the readings"));
    EXPECT_THAT(fault([&] { m_question.Readings[0].WheelTravel = 1e300; }), HasSubstr("travels"));
    EXPECT_THAT(fault([&] {
                    m_question.Readings[0].Channel = chRollCentreToGround;
                    m_question.Readings[0].WheelTravel = 20.5;
                }),
                HasSubstr("opposite wheel"));
    EXPECT_THAT(fault([&] { m_design.Points[ptUWIF] = m_design.Points[ptUWIR]; }),
                StartsWith("the design can't be calculated: "));
    EXPECT_THAT(fault([&] { m_design.Points[ptTRI].Z = nan; }), HasSubstr("no value"));
}

/// The table of all channels along wheel travel that the batch program writes of a document.
std::string BatchTable(const std::string& document) {
    const TemporaryFolder folder;
    std::ofstream(folder / "car.WSP", std::ios::binary) << document;
    const auto key = [&](const std::string& name) {
        std::string path = folder / name;
        std::replace(path.begin(), path.end(), '/', '\\');
        return path;
    };
    const std::string command = "env -u LC_ALL -u LANG XDG_CONFIG_HOME='" + folder / "config" +
                                "' '" + ProgramFolder() +
                                "/corvanta-batch' '/input=" + key("car.WSP") +
                                " /output=" + key("out.txt") + " /type=1 /variable=2'";
    EXPECT_EQ(std::system(command.c_str()), 0);
    std::ifstream file(folder / "out.txt", std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

std::vector<std::string> CellsOf(const std::string& line) {
    std::vector<std::string> cells;
    std::stringstream text(line);
    for (std::string cell; std::getline(text, cell, '\t');) {
        cells.push_back(cell);
    }
    return cells;
}

TEST_F(FitTest, FindsTheErrorOfACarThatTheBatchProgramCalculated) {
    const std::string name = "touring-front-wishbone.WSP";
    std::ifstream file(SamplePath(name), std::ios::binary);
    std::stringstream bytes;
    bytes << file.rdbuf();
    // The track rod's pickup 1.5 mm too high, the upper front pickup 1 mm too low.
    std::string document =
        ReplaceAll(bytes.str(), "[ptTRI]\t-150\t369.5\t196\r", "[ptTRI]\t-150\t369.5\t197.5\r");
    document = ReplaceAll(document, "[ptUWIF]\t-95\t455\t418\r", "[ptUWIF]\t-95\t455\t417\r");
    ASSERT_NE(document, bytes.str());

    std::stringstream table(BatchTable(document));
    std::string sheet;
    std::vector<std::string> titles;
    CSampleRandom random(8, 0);
    for (std::string line; std::getline(table, line);) {
        const std::vector<std::string> cells = CellsOf(ReplaceAll(line, "\r", ""));
        titles = cells.size() > 40 && titles.empty() ? cells : titles;
        if (cells.size() != titles.size() || !WholeNumberText(cells[0], ".")) {
            continue;
        }
        const auto cell = [&](const std::string& title) {
            return cells.at(static_cast<std::size_t>(
                std::find(titles.begin(), titles.end(), title) - titles.begin()));
        };
        for (const std::string title : {"Camber Angle", "Steer Angle", "Caster Angle"}) {
            const double value = *WholeNumberText(cell(title), ".") + 0.01 * random.Normal();
            sheet += cell("Wheel Travel") + ";0;" + title + ";" + std::to_string(value) + ";0.01\n";
        }
    }
    m_design = DesignOf(LoadSample(name));
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
