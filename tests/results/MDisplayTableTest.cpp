#include "results/MDisplayTable.h"

#include "tests/support/Corners.h"
#include "tests/support/RecordingMessageBox.h"
#include "tests/support/Testing.h"

namespace corvanta::test {
namespace {

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

    [[nodiscard]] ViewTable Build(std::int32_t view, std::int32_t variable, int rack = 0,
                                  int wheel = 0) const {
        return BuildViewTable(m_program, view, variable, rack, wheel, m_program.CustomChannels);
    }

    Program m_program = SmallGrid();
    RecordingMessageBox m_box;
    Messages m_messages{m_box};
    bool m_warned = false;
};

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
