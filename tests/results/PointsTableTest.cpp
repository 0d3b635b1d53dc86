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

TEST_F(PointsTableTest, HoldsThePointsInPlayInTheirOrder) {
    m_program.Document = LoadSample("touring-front-wishbone.WSP");
    Fill(1, 1);
    const std::string text = m_grid.Text();
    EXPECT_THAT(text, StartsWith("Point\tX\tY\tZ\r\n\tmm\tmm\tmm\r\n"
                                 "Centre of tyre contact patch\t0.00\t830.00\t0.00\r\n"
                                 "Centre of wheel\t0.00\t812.99\t324.56\r\n"));
    EXPECT_THAT(text, EndsWith("Trackrod outboard  pickup\t-142.00\t742.00\t212.00\r\n"
                               "Trackrod inboard pickup\t-150.00\t369.50\t196.00\r\n"
                               "Shock absorber pickup on lower wishbone\t14.00\t650.00\t200.00\r\n"
                               "Shock absorber pickup on chassis\t40.00\t520.00\t610.00\r\n"
                               "ARB drop link pickup on wishbone\t-75.00\t610.00\t185.00\r\n"
                               "ARB drop link pickup on input lever\t-80.00\t604.00\t352.00\r\n"
                               "ARB axis point 1\t-310.00\t470.00\t360.00\r\n"
                               "ARB axis point 2\t-310.00\t-470.00\t360.00\r\n"
                               "Ride height reference point\t12.00\t0.00\t130.00\r\n"));
    EXPECT_EQ(m_grid.Rows(), 2 + 17);
    EXPECT_EQ(m_grid.RowData(2), "ptWTCP");
    EXPECT_EQ(m_grid.RowData(18), "ptRHM");
    EXPECT_EQ(m_grid.FixedRows(), 2);
    EXPECT_EQ(m_grid.FixedColumns(), 1);
    EXPECT_EQ(m_grid.ColumnWidth(0), 3500);
    EXPECT_EQ(m_grid.ColumnWidth(3), 750);
    EXPECT_TRUE(m_grid.Bold(0));
    EXPECT_FALSE(m_grid.Bold(1));
    EXPECT_TRUE(m_grid.Shaded(2, 0));
    EXPECT_FALSE(m_grid.Shaded(3, 0));
    EXPECT_FALSE(m_grid.Editable);
    Fill(1, 1, true);
    EXPECT_TRUE(m_grid.Editable);
}

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
