#include "results/MDisplayTable.h"

#include "model/Failure.h"
#include "tests/support/RecordingMessageBox.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <array>

namespace corvanta::test {
namespace {

/// Cells of a row from `first` on, parted by "|".
std::string Row(const ViewTable& table, int row, int first = 0) {
    std::string text = table.Cell(row, first);
    for (int column = first + 1; column < table.Columns(); ++column) {
        text += "|" + table.Cell(row, column);
    }
    return text;
}

std::string Column(const ViewTable& table, int column, int first = 0) {
    std::string text = table.Cell(first, column);
    for (int row = first + 1; row < table.Rows(); ++row) {
        text += "|" + table.Cell(row, column);
    }
    return text;
}

/// A front corner of 3 rack steps by 4 wheel steps. Channels hold values that tell their place:
/// channel n of rack step r and wheel step w is n + r / 10 + w / 100.
class MDisplayTableTest : public testing::Test {
  protected:
    MDisplayTableTest() {
        Suspension& document = m_program.Document;
        document.DataLoaded = document.GeometryValid = document.ResultsValid = true;
        for (int r = 2; r <= 4; ++r) {
            for (int w = 2; w <= 5; ++w) {
                for (int id = 1; id <= ChannelCount; ++id) {
                    document.WheelStates(r, w).Channels.Set(id, id + r / 10.0 + w / 100.0);
                }
            }
        }
        m_program.Channels.SetFrontRearTitles(true);
    }

    SuspensionData& Data() { return m_program.Document.Data; }

    /// The channels of a view behind the axis column.
    [[nodiscard]] std::string Heads(std::int32_t view) const {
        return Row(Build(view, vvAlongWheelTravel), 0, 1);
    }
    [[nodiscard]] ViewTable Build(std::int32_t view, std::int32_t variable, int rack = 0,
                                  int wheel = 0) const {
        return BuildViewTable(m_program, view, variable, rack, wheel, m_program.CustomChannels);
    }
    void Choose(std::initializer_list<int> ids) {
        m_program.CustomChannels.Clear();
        for (const int id : ids) {
            m_program.CustomChannels.Add(id);
        }
    }

    Program m_program = SmallGrid();
    RecordingMessageBox m_box;
    Messages m_messages{m_box};
    bool m_warned = false;
};

TEST_F(MDisplayTableTest, ViewsThatDependOnTheEndOfTheCar) {
    EXPECT_EQ(Heads(vwAntis), "Anti-Dive Swing Axle Length|Anti-Dive Angle|Anti-Dive %|"
                              "Anti-Lift Swing Axle Length|Anti-Lift Angle|Anti-Lift %|"
                              "Anti-Roll Swing Axle Length|Anti-Roll Swing Axle Angle");
    EXPECT_EQ(Heads(vwPlanGeometry), "Steer Angle|Steer Angle - Bump |Steer Angle - Delta|"
                                     "Ackerman %|Caster Angle|Caster Offset");
    EXPECT_EQ(Heads(vwLateralGeometry),
              "Camber Angle|Half Track|Kingpin Offset|Kingpin Inclination|"
              "Roll Centre to Origin|Roll Centre to Ground");

    m_program.Document.StaticPoints()[ptWTCP].X = Data().CGX + 0.001; // just behind it: a rear one
    m_program.Channels.SetFrontRearTitles(IsFrontCorner(m_program.Document));
    EXPECT_THAT(Heads(vwAntis), StartsWith("Anti-Rise Swing Axle Length|"));
    EXPECT_EQ(Heads(vwPlanGeometry), "Steer Angle|Steer Angle - Bump |Steer Angle - Delta|"
                                     "Caster Angle|Caster Offset");
}

TEST_F(MDisplayTableTest, ViewsThatDependOnTheMechanisms) {
    const std::string corner = "Spring Length|Spring Velocity Ratio|";
    const std::string centre = "Centre Spring Length|Centre Spring Vel. Ratio|";
    const std::string pushrod = "Pushrod Velocity Ratio|";
    const std::string cornerRates = "W'Rate Spring|W'Rate Change Spring|";
    const std::string centreRates = "W'Rate Centre Spring|W'Rate Change Centre Spring|";
    const std::string total =
        "W'Rate Total|W'Rate Change Total|Roll Stiffness|Roll Stiffness Change";
    const auto expectSprings = [&](std::int32_t spring, const std::string& rod) {
        SCOPED_TRACE(spring);
        Data().SpringMechanism = spring;
        Data().ThirdSpringMechanism = 0;
        EXPECT_EQ(Heads(vwSpringDetails), corner + rod + cornerRates + total);
        Data().ThirdSpringMechanism = 1;
        EXPECT_EQ(Heads(vwSpringDetails),
                  corner + centre + rod + cornerRates + centreRates + total);
        Data().ThirdSpringMechanism = 2;
        EXPECT_EQ(Heads(vwSpringDetails), centre + rod + centreRates + total);
    };
    for (std::int32_t spring = smNone; spring <= smMacPhersonStrut; ++spring) {
        expectSprings(spring, spring == 3 || spring == 11 ? "" : pushrod);
    }
    EXPECT_EQ(Heads(vwBarDetails),
              "ARB Rotation|ARB Velocity Ratio|ARB Ratio|W'Rate ARB|W'Rate Change ARB|" + total);
    const std::string wishbones = "W'bone Lat. Angle Upper|W'bone Lat. Angle Lower|"
                                  "W'bone Long. Angle Upper|W'bone Long. Angle Lower";
    EXPECT_EQ(Heads(vwAngles), wishbones);
    Data().DriveShaftExists = true;
    EXPECT_EQ(Heads(vwAngles), "Driveshaft Length|Driveshaft Angle XY|Driveshaft Angle YZ|"
                               "Driveshaft Total Angle|" +
                                   wishbones);
}

TEST_F(MDisplayTableTest, LengthsOfEveryMechanism) {
    // Every length is its place in the record.
    m_program.Document.StaticLengths = {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12,
                                        13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24};
    const auto rows = [&](int first) {
        const ViewTable table = ShowLinkLengths(m_program);
        return Column(table, 0, first) + ": " + Column(table, 1, first);
    };
    EXPECT_EQ(rows(0),
              "Link||Tyre Radius|Static Half Track|Upper Wishbone Front Link|"
              "Upper Wishbone Rear Link|Upper Wishbone Axis to OB Joint|"
              "Lower Wishbone Front Link|Lower Wishbone Rear Link|"
              "Lower Wishbone Axis to OB Joint|Trackrod|Steering Arm Lever|Static Spring Length: "
              "Length|mm|15.00|2.00|20.00|21.00|22.00|17.00|18.00|19.00|16.00|14.00|3.00");
    const std::string spring = "Static Spring Length: 3.00";
    const std::string lever =
        "Rocker Input Lever|Rocker Output Lever|Static Spring Length: 8.00|9.00|3.00";
    const std::string rocker = "rod|Rocker Input Lever|Rocker Output Lever|"
                               "Static Spring Length: 12.00|8.00|9.00|3.00";
    const std::string twoRockers = "Pushrod|First Rocker Input Lever|First Rocker Output Lever|"
                                   "Interconnect Pushrod|Second Rocker Input Lever|"
                                   "Second Rocker Output Lever|Static Spring Length: "
                                   "12.00|8.00|9.00|13.00|10.00|11.00|3.00";
    const std::array<std::string, 12> expected{spring,          spring,          spring,
                                               lever,           "Push" + rocker, "Pull" + rocker,
                                               "Push" + rocker, "Pull" + rocker, "Push" + rocker,
                                               twoRockers,      twoRockers,      spring};
    for (std::size_t mechanism = 0; mechanism < expected.size(); ++mechanism) {
        Data().SpringMechanism = static_cast<std::int32_t>(mechanism);
        EXPECT_EQ(rows(12), expected[mechanism]) << mechanism;
    }

    Data().ThirdSpringMechanism = tsCornerAndCentreSpring;
    Data().DriveShaftExists = true;
    for (const std::int32_t bar : {abToLowerWishbone, abToRocker, abToUpright}) {
        Data().ARBMechanism = bar;
        EXPECT_EQ(rows(12), "Static Spring Length|Static Centre Spring Length|ARB Input Lever|"
                            "ARB Drop Link|Static Driveshaft Length: 3.00|4.00|5.00|6.00|1.00");
    }
    Data().ThirdSpringMechanism = tsCentreSpring;
    Data().ARBMechanism = abTBar;
    EXPECT_EQ(rows(12), "Static Centre Spring Length|T-Bar Input Lever|T-Bar Drop Link|"
                        "Static Driveshaft Length: 4.00|23.00|24.00|1.00");

    // Two decimals of the three on show: 8.5445 in shows as 8.545, and that as 8.55.
    m_program.Document.StaticLengths.CentreSpringLength = 217.0304;
    m_program.Units[ucDisplacement].Label = "in";
    m_program.Units.NumberSeparators = {",", "."};
    m_program.Channels.ChannelsSetup(m_program.Units);
    EXPECT_EQ(Column(ShowLinkLengths(m_program), 1, 12), "8,55|0,91|0,95|0,04");
}

TEST_F(MDisplayTableTest, LinkLoadsSayWhereTheyAreNotAvailableAndWarnOnce) {
    const std::string notAvailable =
        "This option is not available for the current suspension setup";
    const std::string inexact =
        "Link loads are calculated assuming the actuator (pushrod, pullrod or spring) is attached "
        "directly to the upright.\rThey are inaccurate when the actuator is attached to a "
        "wishbone because a portion of the wishbone goes into bending.\rThe inaccuracy increases "
        "with the distance between the line of action of the actuator and the outboard wishbone "
        "joint.";
    std::string available;
    for (std::int32_t spring = smNone; spring <= smMacPhersonStrut; ++spring) {
        Data().SpringMechanism = spring;
        m_warned = false;
        m_box.Shown.clear();
        const bool shown = ShowLinkLoadView(m_program, 1, 3, m_messages, m_warned).has_value();
        available += !shown ? 'n' : m_warned ? 'w' : 'y';
        if (shown && !m_warned) {
            EXPECT_TRUE(m_box.Shown.empty());
            continue;
        }
        (void)ShowLinkLoadView(m_program, 1, 3, m_messages, m_warned); // a second visit
        EXPECT_EQ(m_box.Shown.size(), shown ? 1U : 2U);
        EXPECT_EQ(m_box.Shown.front().Style, shown ? 48 : 0);
        EXPECT_EQ(m_box.Shown.front().Prompt, shown ? inexact : notAvailable);
    }
    EXPECT_EQ(available, "nywnnyyywywy");
    m_program.Document.ResultsValid = false;
    EXPECT_FALSE(ShowLinkLoadView(m_program, 1, 3, m_messages, m_warned));
}

TEST_F(MDisplayTableTest, AGridShowsATableInItsLook) {
    DataGrid grid;
    grid.Editable = true;
    const ViewTable lateral = Build(vwLateralGeometry, vvAlongWheelTravel);
    ShowTable(grid, vwLateralGeometry, lateral);
    EXPECT_FALSE(grid.Editable);
    EXPECT_EQ(grid.FixedRows(), 2);
    EXPECT_EQ(grid.FixedColumns(), 1);
    EXPECT_EQ(grid.ColumnWidth(0), 1000);
    EXPECT_EQ(grid.ColumnWidth(6), 1000);
    EXPECT_EQ(grid.Cell(5, 6), lateral.Cell(5, 6));
    std::string bands;
    for (int row = 0; row < grid.Rows(); ++row) {
        bands += grid.Shaded(row, 0) && grid.Shaded(row, 6) ? 'x' : '.';
    }
    EXPECT_EQ(bands, "..x.x.");

    ShowTable(grid, vwQuadraticCoefficients, ShowQuadraticCoefficients(m_program));
    EXPECT_EQ(grid.FixedRows(), 1);
    EXPECT_EQ(grid.ColumnWidth(0), 3000);
    EXPECT_EQ(grid.ColumnWidth(3), 900);
    EXPECT_TRUE(grid.Shaded(1, 0) && !grid.Shaded(2, 0));
    BandAlternateLines(grid, false, 1);
    EXPECT_TRUE(grid.Shaded(2, 3) && !grid.Shaded(2, 2));

    FillGrid(grid, lateral, 2, 1, {});
    EXPECT_EQ(grid.ColumnWidth(0), 0);
}

} // namespace
} // namespace corvanta::test
