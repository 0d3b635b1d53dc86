#include "study/Comparison.h"

#include "tests/support/Corners.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <charconv>
#include <map>

namespace corvanta::test {
namespace {

Suspension Solved(Suspension document) {
    SetUpCorner(document);
    CalculateCorner(document);
    return document;
}

/// Name, unit, texts and differences of a row in one line.
std::string Line(const ComparisonRow& row) {
    std::string line = row.Name + " [" + row.Unit + "]";
    for (std::size_t i = 0; i < row.Texts.size(); ++i) {
        line += " | " + row.Texts[i] + (row.Differences[i].empty() ? "" : " " + row.Differences[i]);
    }
    return line;
}

std::vector<std::string> Lines(const Comparison& comparison, const std::string& section) {
    std::vector<std::string> lines;
    for (const ComparisonSection& one : comparison.Sections) {
        for (const ComparisonRow& row : one.Rows) {
            if (one.Title == section) {
                lines.push_back(Line(row));
            }
        }
    }
    return lines;
}

std::map<std::string, std::string> FiguresOf(const Suspension& document,
                                             const FundamentalUnits& units) {
    const ComparedDesign design{"it", DesignOf(document), &document};
    const Comparison comparison = CompareDesigns(std::span(&design, 1), MetricChannels(), units);
    EXPECT_EQ(comparison.Sections.size(), 1U) << "one design differs from nothing";
    std::map<std::string, std::string> figures;
    for (const ComparisonRow& row : comparison.Sections.at(0).Rows) {
        figures[row.Name + " [" + row.Unit + "]"] = row.Texts.at(0);
    }
    return figures;
}

TEST(ComparisonTest, StaticFiguresAreThoseOfTheCoordinatesWorkedByHand) {
    // Ball joints at 8, 690, 440 and -6, 715, 160; wheel centre 5 mm inboard of the patch over 300.
    const Suspension document = Solved(DoubleWishboneCorner());
    auto figures = FiguresOf(document, MetricUnits());
    EXPECT_EQ(figures["Camber Angle [deg]"], "-0.955"); // -atan(5 / 300)
    EXPECT_EQ(figures["Steer Angle [deg]"], "0.000");
    EXPECT_EQ(figures["Caster Angle [deg]"], "2.862");        // atan(14 / 280)
    EXPECT_EQ(figures["Kingpin Inclination [deg]"], "5.102"); // atan(25 / 280)
    EXPECT_EQ(figures["Kingpin Offset [mm]"], "20.71");       // 750 - (715 + 160 x 25 / 280)
    EXPECT_EQ(figures["Caster Offset [mm]"], "-14.00");       // -6 - 160 x 14 / 280
    EXPECT_EQ(figures["Half Track [mm]"], "750.00");
    EXPECT_EQ(figures.count("Centre Spring Vel. Ratio [-]"), 0U);

    auto inches = FiguresOf(document, UnitsOf("in", "lbs", "lbs", "lb/in"));
    EXPECT_EQ(inches["Caster Offset [in]"], "-0.551"); // 14 / 25.4
}

TEST(ComparisonTest, FiguresOfEverySampleAreThoseOfItsChannels) {
    const auto number = [](const std::string& text) {
        double value = std::nan("");
        std::from_chars(text.data(), text.data() + text.size(), value);
        return value;
    };
    ForEachSample(
        [](Suspension&) {},
        [&](const Suspension& document) {
            const auto cell = [&](int wheelStep, int channel) {
                return document.WheelStates(document.StaticRack, wheelStep).Channels[channel];
            };
            const int fixed = document.StaticWheel;
            ASSERT_TRUE(fixed > 2 && fixed <= document.NW);
            auto figures = FiguresOf(document, MetricUnits());
            for (const auto& [name, channel] : std::map<std::string, int>{
                     {"Camber Angle gain [deg/mm]", chCamberAngle},
                     {"Steer Angle gain [deg/mm]", chSteerAngle},
                     {"Half Track gain [mm/mm]", chHalfTrack},
                     {"Roll Centre to Ground gain [mm/mm]", chRollCentreToGround}}) {
                EXPECT_NEAR(number(figures[name]),
                            (cell(fixed - 1, channel) - cell(fixed + 1, channel)) /
                                (2 * document.Data.WheelTravelStepSize),
                            6e-5)
                    << name;
            }
            if (document.Data.SpringMechanism != smNone &&
                document.Data.ThirdSpringMechanism != tsCentreSpring) {
                EXPECT_NEAR(number(figures["Spring Velocity Ratio change, droop to bump [-]"]),
                            cell(2, chSpringVelocityRatio) -
                                cell(document.NW + 1, chSpringVelocityRatio),
                            6e-4);
            }
            EXPECT_NEAR(number(figures["Anti-Dive % [%]"]), 100 * cell(fixed, chAntiDivePercent),
                        0.06);
            EXPECT_NEAR(number(figures["W'Rate Total [N/mm]"]), cell(fixed, chWheelRateTotal),
                        0.06);
        });
}

TEST(ComparisonTest, ListsWhatDiffersAndNothingElse) {
    const Suspension base = Solved(DoubleWishboneCorner());
    Suspension moved = base;
    moved.StaticPoints()[ptTRI].Z += 1.5;
    moved.StaticPoints()[ptLWO].X -= 0.0001;
    moved.StaticPoints()[ptR2I].X = 7; // not in play
    moved.Data.KARB = 12;
    moved.Data.GBrake = 1.75;
    moved.Data.Description = "two\r\nlines";
    moved = Solved(moved);
    Design other = DesignOf(base);
    other.Data.SpringMechanism = smOutboardToUpright;
    other.Data.DriveShaftExists = false;

    const std::vector<ComparedDesign> designs{
        {"Baseline", DesignOf(base), &base}, {"A, B", DesignOf(moved), &moved}, {"C", other, {}}};
    const auto two = std::span(designs).first(2);
    const Comparison pair = CompareDesigns(two, MetricChannels(), MetricUnits());
    EXPECT_THAT(Lines(pair, "Coordinates"),
                ElementsAre("Lower wishbone outer pickup X [mm] | -6.00 | -6.00 -0.0001",
                            "Trackrod inboard pickup Z [mm] | 200.00 | 201.50 +1.50"));
    EXPECT_THAT(Lines(pair, "Settings"),
                ElementsAre("Braking [g] | 2.00 | 1.75 -0.25", "ARB rate [N/deg] | 0 | 12 +12",
                            "Description [] |  | two lines"));
    EXPECT_THAT(Lines(pair, "Figures").at(0), "Camber Angle [deg] | -0.955 | -0.955 0.000");

    const Comparison all = CompareDesigns(designs, MetricChannels(), MetricUnits());
    EXPECT_THAT(Lines(all, "Coordinates"),
                testing::Contains("Driveshaft inboard pickup Y [mm] | 150.00 | 150.00 0.00 | -"));
    EXPECT_THAT(Lines(all, "Settings").at(0),
                "Mechanism [] | Inboard spring via rocker and pushrod to lower wishbone | Inboard "
                "spring via rocker and pushrod to lower wishbone | Outboard spring to upright");
    EXPECT_THAT(Lines(all, "Figures").at(6), "Half Track [mm] | 750.00 | 750.00 0.00 | -");

    DataGrid grid;
    ShowComparison(grid, pair);
    EXPECT_THAT(grid.Text(),
                StartsWith("\tUnit\tBaseline\tA, B\tDifference\r\nCoordinates\t\t\t\t\r\nLower"));
    EXPECT_THAT(grid.CommaSeparated(), HasSubstr(",Unit,Baseline,\"A, B\",Difference\r\n"));
    EXPECT_TRUE(grid.Bold(1) && !grid.Bold(2));
    ShowComparison(grid, CompareDesigns({}, MetricChannels(), MetricUnits()));
    EXPECT_EQ(grid.Rows(), 0);
}

} // namespace
} // namespace corvanta::test
