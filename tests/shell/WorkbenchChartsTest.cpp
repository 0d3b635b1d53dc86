// What the charts of the workbench say of a target.

#include "tests/support/MainFormTest.h"
#include "tests/support/Testing.h"

namespace corvanta::test {
namespace {

class WorkbenchChartsTest : public MainFormTest {
  protected:
    /// The chart of bump steer as it is now.
    const ChartSheet& BumpSteer() {
        m_main.Workbench->Update();
        return m_main.Workbench->Sheets()[1];
    }
    void MoveTrackrod(const std::string& way) {
        WorkbenchPoints& points = m_main.Workbench->Points;
        ASSERT_TRUE(points.Select(ptTRI));
        points.grdPoints_Edited(points.Selection.FirstRow, 2, way);
    }
};

TEST_F(WorkbenchChartsTest, AVerdictIsGivenOnlyOnACurveOfTheDesignAtStatic) {
    Open(SampleBytes());
    m_main.Execute(mcWorkbench, 0);
    StudyData study = m_current.Study();
    study.Targets = {PlainTarget(chSteerAngleBump, vvAlongWheelTravel, 0, 0.1, -25, 25)};
    m_current.ChangeStudy(study);
    EXPECT_EQ(BumpSteer().Mark, TargetMark::Holds);
    EXPECT_EQ(BumpSteer().MarkText, "within target");
    MoveTrackrod("+400"); // outboard of its outboard end
    EXPECT_EQ(BumpSteer().Mark, TargetMark::None);
    EXPECT_TRUE(BumpSteer().Curves.front().Faded);
    EXPECT_EQ(BumpSteer().Bands.size(), 1U) << "the target itself stays";
    MoveTrackrod("+-400");
    EXPECT_EQ(BumpSteer().Mark, TargetMark::Holds);

    m_main.Workbench->sldRack_Moved(0);
    EXPECT_EQ(BumpSteer().Mark, TargetMark::None);
    EXPECT_EQ(BumpSteer().MarkText, "target at static rack travel");
}

} // namespace
} // namespace corvanta::test
