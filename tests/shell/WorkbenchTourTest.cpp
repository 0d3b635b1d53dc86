// The tour of the workbench: once by itself, again when it is called.

#include "tests/support/MainFormTest.h"
#include "tests/support/Testing.h"

#include <set>

namespace corvanta::test {
namespace {

class WorkbenchTourTest : public MainFormTest {
  protected:
    CWorkbenchTour& Tour() { return m_main.Workbench->Tour; }
    void OpenWorkbench() {
        m_main.Execute(mcWorkbench, 0);
        m_main.Workbench->Update();
    }
};

TEST_F(WorkbenchTourTest, ComesOnceByItselfWhenThereIsSomethingToSee) {
    OpenWorkbench();
    EXPECT_FALSE(Tour().IsOpen()) << "there is no document";
    m_main.Workbench->ShowStudy(1);
    Open(SampleBytes());
    m_main.Workbench->Update();
    EXPECT_FALSE(Tour().IsOpen()) << "it would lie upon the study";
    m_main.Workbench->ShowStudy(std::nullopt);
    m_main.Workbench->Update();
    EXPECT_TRUE(Tour().IsOpen());
    Tour().cmdSkip_Click();
    m_main.Workbench->Close();
    OpenWorkbench();
    EXPECT_FALSE(Tour().IsOpen());

    m_main.Workbench->Close();
    m_main.Execute(mcWorkbenchTour, 0);
    EXPECT_TRUE(m_main.Workbench->IsOpen && Tour().IsOpen());
}

TEST_F(WorkbenchTourTest, WalksThroughAllPartsAndBack) {
    Open(SampleBytes());
    m_main.Execute(mcWorkbenchTour, 0);
    std::set<TourPart> parts{Tour().Step().Part};
    EXPECT_FALSE(Tour().cmdBack.Enabled);
    Tour().cmdBack_Click();
    EXPECT_EQ(Tour().labCount.Caption, "1 of 5");
    while (Tour().cmdSkip.Visible) {
        Tour().cmdNext_Click();
        parts.insert(Tour().Step().Part);
    }
    EXPECT_EQ(parts.size(), CWorkbenchTour::Steps) << "each step speaks of another part";
    Tour().cmdBack_Click();
    EXPECT_EQ(Tour().labCount.Caption, "4 of 5");
    Tour().cmdNext_Click();
    Tour().cmdNext_Click();
    EXPECT_FALSE(Tour().IsOpen());
    m_main.Execute(mcWorkbenchTour, 0);
    EXPECT_EQ(Tour().labCount.Caption, "1 of 5");
    m_main.Workbench->ShowStudy(1); // below its bubble
    EXPECT_FALSE(Tour().IsOpen());
    m_main.Execute(mcWorkbenchTour, 0);
    EXPECT_TRUE(Tour().IsOpen() && !m_main.Workbench->Studies.Shown());
}

} // namespace
} // namespace corvanta::test
