#include "shell/frmWorkbench.h"
#include "tests/support/MainFormTest.h"
#include "tests/support/Testing.h"

namespace corvanta::test {
namespace {

class WorkbenchFaultsTest : public MainFormTest {
  protected:
    frmWorkbench& OpenBench(const std::string& sample) {
        Open(SampleBytes(sample));
        m_main.Execute(mcWorkbench, 0);
        return *m_main.Workbench;
    }
};

TEST_F(WorkbenchFaultsTest, ReadoutsHaveNoSignAtZeroAndNoDashForAUnit) {
    frmWorkbench& bench = OpenBench("touring-front-wishbone.WSP");
    bench.Points.Select(ptTRO);
    bench.Points.Nudge(1, false);
    bench.Update();
    EXPECT_THAT(bench.Steps.back().Name, AllOf(HasSubstr("Trackrod"), Not(HasSubstr("  "))));
    for (const ChartSheet& sheet : bench.Sheets()) {
        EXPECT_THAT(sheet.Title, Not(HasSubstr("  ")));
        ASSERT_TRUE(sheet.Cursor);
        for (const std::string& line : sheet.Cursor->Lines) {
            EXPECT_THAT(line, Not(testing::ContainsRegex("[-+]0(\\.0*)?( |$)")));
            EXPECT_THAT(line, Not(testing::EndsWith(" -")));
        }
    }
}

TEST_F(WorkbenchFaultsTest, EndsOfTravelStayWhereTheyAreWhateverTheDesign) {
    frmWorkbench& bench = OpenBench("touring-front-wishbone.WSP");
    const AxisRange shown = bench.Sheets()[0].AxisX.Shown;
    EXPECT_EQ(shown.Upper, m_document.Data.Bump);
    EXPECT_EQ(shown.Lower, -m_document.Data.Droop);
    bench.Points.Selection = {8, 3, 8, 3};
    bench.Points.Nudge(1, true);
    bench.Update();
    EXPECT_EQ(bench.Sheets()[0].AxisX.Shown, shown);
}

TEST_F(WorkbenchFaultsTest, WhatBecameOfTheTypingIsSaidBesideAFailure) {
    frmWorkbench& bench = OpenBench("touring-front-wishbone.WSP");
    bench.Points.grdPoints_Edited(4, 3, "9000");
    bench.Update();
    const std::string failure = bench.labHead.Caption;
    ASSERT_THAT(failure, HasSubstr("Can't be solved"));
    bench.Points.grdPoints_Edited(4, 3, "abc");
    bench.Points_Changed();
    bench.Update();
    EXPECT_THAT(bench.labHead.Caption, AllOf(HasSubstr("abc"), HasSubstr(failure)));
}

TEST_F(WorkbenchFaultsTest, AChannelThatTheCornerLacksIsSaidToBeMissing) {
    frmWorkbench& bench = OpenBench("formula-front-monoshock.WSP");
    EXPECT_EQ(bench.Sheets()[0].MarkText, "");
    EXPECT_EQ(bench.Sheets()[3].MarkText, "none in this corner");
}

TEST_F(WorkbenchFaultsTest, AnotherDocumentIsFittedIntoTheCorner) {
    frmWorkbench& bench = OpenBench("formula-front-pushrod.WSP");
    bench.Corner.Resize(340, 600);
    const double scale = bench.Corner.Projection().Scale;
    Open(SampleBytes("published/STRUTGEN.WSP"));
    bench.Update();
    EXPECT_LT(bench.Corner.Projection().Scale, scale) << "a larger car";
    const double fitted = bench.Corner.Projection().Scale;
    bench.Corner.Fit();
    EXPECT_EQ(bench.Corner.Projection().Scale, fitted);
}

} // namespace
} // namespace corvanta::test
