#include "results/PointsTable.h"

#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

namespace corvanta::test {
namespace {

class PointsTableTest : public testing::Test {
  protected:
    PointsTableTest() { m_program.Units = MetricUnits(); }

    void Fill(int wheelStep, int rackStep, bool editable = false) {
        SetupPointsTableBlank(m_grid, m_program.Document, m_program.Units, editable);
        DataPointsGet(m_grid, m_program.Document, m_program.Units, wheelStep, rackStep);
    }

    Program m_program;
    DataGrid m_grid;
};

TEST_F(PointsTableTest, ShowsTheStateThatIsAskedForInTheUsersUnit) {
    m_program.Document = LoadSample("touring-front-wishbone.WSP");
    Suspension& document = m_program.Document;
    document.WheelStates(5, 7).Points[ptWTCP] = {25.4, -50.8, 0};
    document.WheelStates(document.StaticRack, 7).Points[ptWTCP].X = 254;
    document.WheelStates(5, document.StaticWheel).Points[ptWTCP].X = 2540;
    m_program.Units[ucDisplacement].Label = "in";
    m_program.Units.SetFundUnitsData();
    Fill(7, 5);
    EXPECT_EQ(m_grid.Text().substr(0, 24), "Point\tX\tY\tZ\r\n\tin\tin\tin\r\n");
    EXPECT_EQ(m_grid.Cell(2, 1) + " " + m_grid.Cell(2, 2) + " " + m_grid.Cell(2, 3),
              "1.000 -2.000 0.000");
    Fill(7, 0);
    EXPECT_EQ(m_grid.Cell(2, 1), "10.000");
    Fill(0, 5);
    EXPECT_EQ(m_grid.Cell(2, 1), "100.000");
}

} // namespace
} // namespace corvanta::test
