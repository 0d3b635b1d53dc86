#include "shell/FitPanel.h"
#include "shell/OptimisePanel.h"
#include "shell/RegionPanel.h"
#include "shell/SensitivityPanel.h"
#include "shell/SetupPanel.h"
#include "shell/StudyReport.h"
#include "shell/SweepPanel.h"
#include "shell/TolerancePanel.h"
#include "tests/support/Testing.h"
#include "tests/support/WorkbenchFormTest.h"

#include <chrono>
#include <thread>

namespace corvanta::test {
namespace {

/// The studies of the workbench, worked by their controls.
class StudyPanelsTest : public WorkbenchFormTest {
  protected:
    /// Brings the study of a kind in sight.
    template <typename Panel>
    Panel& Show() {
        const auto& all = Bench().Studies.All();
        for (std::size_t n = 0; n < all.size(); ++n) {
            if (auto* const panel = dynamic_cast<Panel*>(all[n].get())) {
                Bench().ShowStudy(n);
                return *panel;
            }
        }
        throw std::logic_error("no such study");
    }

    void Wait(const CStudyPanel& panel) {
        while (panel.IsRunning()) {
            Bench().PollStudies();
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
    /// To its end; what it tells of its progress never falls.
    void Run(CStudyPanel& panel) {
        Wait(panel);
        panel.cmdRun_Click();
        for (double done = 0; panel.IsRunning(); Bench().PollStudies()) {
            const double now = panel.Progress();
            EXPECT_TRUE(done <= now && now <= 1) << panel.Page.Caption << " " << now;
            done = now;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
    void Select(PointNumber number, int axis) {
        Bench().Points.Select(PointCoordinate{number, axis});
    }
    void Add(CStudyPanel& panel, PointNumber number, int axis, std::size_t table = 0) {
        Select(number, axis);
        panel.cmdAdd_Click(table);
    }
    void TakeInHand(std::size_t chart) { Bench().Chart_TravelMoved(chart, {0, 0}, false); }
    void Move(PointNumber number, double SuspPoint::*axis, double way) {
        Design design = DesignOf(m_document);
        design.Points[number].*axis += way;
        m_current.Change("Move", design);
    }
    static std::string Row(const DataGrid& grid, int row) {
        std::string text;
        for (int column = 0; column < grid.Columns(); ++column) {
            text += (column == 0 ? "" : "|") + grid.Cell(grid.FixedRows() + row, column);
        }
        return text;
    }
    static double Number(const DataGrid& grid, int row, int column) {
        return std::stod(grid.Cell(grid.FixedRows() + row, column));
    }
};

TEST_F(StudyPanelsTest, WhatMovesThisFollowsTheDesignAndTheChartInHand) {
    auto& panel = Show<SensitivityPanel>();
    TakeInHand(1); // bump steer
    panel.cboFigure.Select(1);
    panel.Field_Changed(0);
    Wait(panel);
    const DataGrid& grid = panel.grdSlopes.Grid;
    EXPECT_THAT(grid.Cell(0, 1), HasSubstr("Steer Angle - Bump gain"));
    EXPECT_THAT(panel.labStatus.Caption, HasSubstr("deg/mm"));
    const std::string first = Row(grid, 0);
    EXPECT_EQ(grid.Bar(grid.FixedRows(), 2), Number(grid, 0, 1) < 0 ? -1 : 1);
    const double slope = Number(grid, 0, 1);
    // The slope is that of the numbers that the workbench shows.
    panel.Answer_Clicked(0, grid.FixedRows());
    const PointCoordinate top = Bench().Points.SelectedCoordinates().front();
    const Figure gain{chSteerAngleBump, FigureKind::GainAtStatic};
    CalculateCorner(m_document);
    const double before = *FigureValue(m_document, gain);
    Bench().Points.txtStep.Text = "0.2";
    Bench().Points.txtStep_Changed();
    Bench().Points.Nudge(1, false);
    Wait(panel);
    CalculateCorner(m_document);
    EXPECT_NEAR((*FigureValue(m_document, gain) - before) / 0.2, slope, std::abs(slope) * 0.02)
        << NameOf(m_document.Data, top);
    panel.cboFigure.Select(3);
    panel.Field_Changed(0);
    EXPECT_THAT(panel.labStatus.Caption, HasSubstr("no target"));
    EXPECT_EQ(grid.Rows(), 0) << "the slopes of another question";
}

TEST_F(StudyPanelsTest, ASweepFansItsCurvesOverTheChartsAndTwoMakeAMap) {
    auto& panel = Show<SweepPanel>();
    Run(panel);
    EXPECT_FALSE(panel.HasAnswer() || panel.labStatus.Caption.empty());
    Add(panel, ptTRI, 2);
    panel.Asked_Edited(0, 1, 1, "190");
    panel.Asked_Edited(0, 1, 2, "205");
    panel.Asked_Edited(0, 1, 3, "4");
    EXPECT_EQ(Row(panel.grdAxes.Grid, 0), "Trackrod inboard Z [mm]|190.00|205.00|4");
    TakeInHand(1);
    Run(panel);
    EXPECT_EQ(panel.labStatus.Caption, "4 designs");
    const std::vector<SheetCurve>& curves = Bench().Sheets()[1].Curves;
    ASSERT_EQ(curves.size(), 5U) << "the design and four beside it";
    EXPECT_EQ(curves.back().Name, "205.00 mm");
    EXPECT_EQ(panel.Sheets.at(0).Curves.at(0).Points.size(), 4U);
    panel.cboValue.Select(panel.cboValue.Find("Wheelbase"));
    panel.cmdFill_Click(0);
    Run(panel);
    ASSERT_TRUE(panel.Sheets.at(0).Map);
    EXPECT_EQ(panel.Sheets[0].Map->Values.size(), 44U);
    EXPECT_EQ(Bench().Sheets()[1].Curves.size(), 1U);
    Add(panel, ptTRI, 1);
    EXPECT_THAT(panel.labStatus.Caption, HasSubstr("remove one first"));
    panel.grdAxes.Selection = {1, 1, 1, 1};
    panel.cmdRemove_Click(0);
    EXPECT_THAT(Row(panel.grdAxes.Grid, 0), StartsWith("Wheelbase"));
    panel.cmdRemove_Click(0);
    panel.cboValue.Select(panel.cboValue.Find("Trackrod, longer by"));
    panel.cmdFill_Click(0);
    panel.Asked_Edited(0, 1, 3, "-1; 0; 2.5");
    EXPECT_EQ(Row(panel.grdAxes.Grid, 0), "Trackrod, longer by [mm]|-1.00|2.50|3 in a list");
    Run(panel);
    EXPECT_EQ(panel.labStatus.Caption, "3 designs");
    panel.Asked_Edited(0, 1, 3, "60");
    Run(panel);
    EXPECT_EQ(Bench().Sheets()[1].Curves.size(), 61U) << "the design and all beside it";
}

TEST_F(StudyPanelsTest, ASweepOfADeviationKnowsItsTargetAndItsChart) {
    AddTarget(PlainTarget(chSteerAngleBump, vvAlongWheelTravel, 0, 0.001, -25, 25));
    auto& panel = Show<SweepPanel>();
    Add(panel, ptTRI, 2);
    panel.Asked_Edited(0, 1, 3, "3");
    TakeInHand(1);
    panel.cboFigure.Select(3);
    panel.Field_Changed(0);
    Run(panel);
    EXPECT_EQ(panel.labStatus.Caption, "3 designs");
    EXPECT_EQ(ReportOf(m_desk, panel).Asked.back().Title, "Targets");
    TakeInHand(0);
    EXPECT_THAT(panel.labStatus.Caption, HasSubstr("figure chosen before"));
    EXPECT_EQ(Bench().Sheets()[1].Curves.size(), 4U) << "the fan is the same";
    TakeInHand(1);
    EXPECT_EQ(panel.labStatus.Caption, "3 designs");
    StudyData study = m_current.Study();
    study.Targets.front().Band.front().High = 0.5;
    m_current.ChangeStudy(study);
    EXPECT_THAT(panel.labStatus.Caption, HasSubstr("figure chosen before"));
}

TEST_F(StudyPanelsTest, TolerancesBandTheChartsUntilTheDesignChanges) {
    AddTarget(PlainTarget(chSteerAngleBump, vvAlongWheelTravel, 0, 0.001, -25, 25));
    auto& panel = Show<TolerancePanel>();
    panel.cmdFill_Click(0);
    panel.txtSamples.Text = "120";
    panel.Field_Left(0);
    Run(panel);
    EXPECT_EQ(panel.labStatus.Caption, "120 samples");
    const std::vector<SheetBand> bands = Bench().Sheets()[1].Bands;
    ASSERT_EQ(bands.size(), 3U) << "target, extremes and quantiles";
    const SheetCurve asked = Bench().Sheets()[1].Curves.at(0);
    EXPECT_LT(bands[1].Low.back().Y, bands[2].Low.back().Y);
    EXPECT_LT(bands[2].High.back().Y, bands[1].High.back().Y);
    EXPECT_THAT(Row(panel.grdTargets.Grid, 0), StartsWith("Steer Angle - Bump|120|"));
    EXPECT_EQ(panel.grdShares.Grid.Rows(), panel.grdTolerances.Grid.Rows() + 1);
    const std::string html = ReportAsHtml(m_windowSystem.Pages, {}, ReportOf(m_desk, panel));
    EXPECT_THAT(html, AllOf(HasSubstr("120 samples, seed 1"), HasSubstr("<svg>Steer Angle - Bump"),
                            HasSubstr("Static coordinates")));
    Bench().ReportStudy();
    EXPECT_EQ(m_windowSystem.Requests.back().StartFolder, "/cars/");
    EXPECT_EQ(m_windowSystem.Requests.back().InitialName, "front Tolerance.pdf");
    Move(ptTRI, &SuspPoint::Z, 1);
    EXPECT_EQ(Bench().Sheets()[1].Bands.size(), 1U);
    EXPECT_THAT(panel.labStatus.Caption, HasSubstr("before its last change"));
    Bench().sldRack_Moved(0);
    const std::vector<ChartSheet> reported = ReportOf(m_desk, panel).Sheets;
    ASSERT_EQ(reported.size(), 5U) << "all charts but the map, wherever the workbench stands";
    ASSERT_EQ(reported[1].Bands.size(), 3U);
    EXPECT_EQ(reported[1].Bands[2].High.back().Y, bands[2].High.back().Y);
    EXPECT_EQ(reported[1].Curves.at(0).Points.back().Y, asked.Points.back().Y);
    m_current.Undo();
    EXPECT_EQ(panel.labStatus.Caption, "120 samples");
    Bench().sldRack_Moved(Bench().sldRack.Static);
    EXPECT_EQ(Bench().Sheets()[1].Bands.size(), 3U);
    panel.chkFollow.Checked = true;
    panel.Field_Changed(2);
    Wait(panel);
    Move(ptTRI, &SuspPoint::Z, 1);
    Wait(panel);
    EXPECT_EQ(Bench().Sheets()[1].Bands.size(), 3U);
}

TEST_F(StudyPanelsTest, TheBumpSteerIsTakenOutWithTwoCoordinates) {
    Move(ptTRI, &SuspPoint::Z, 4);
    AddTarget(PlainTarget(chSteerAngleBump, vvAlongWheelTravel, 0, 0.01, -25, 25));
    auto& panel = Show<OptimisePanel>();
    Run(panel);
    EXPECT_THAT(panel.labStatus.Caption, HasSubstr("press Add Selected"));
    Add(panel, ptTRI, 2);
    Add(panel, ptTRI, 1);
    Add(panel, ptTRI, 1); // twice is once
    panel.Asked_Edited(0, 2, 1, "190");
    EXPECT_THAT(panel.labStatus.Caption, HasSubstr("among the points"));
    panel.Asked_Edited(0, 2, 2, "abc");
    EXPECT_THAT(panel.labStatus.Caption, HasSubstr("abc"));
    panel.Asked_Edited(0, 2, 2, "190");
    ASSERT_EQ(panel.grdFree.Grid.Rows(), 4);
    Run(panel);
    EXPECT_THAT(panel.labStatus.Caption, StartsWith("All targets hold"));
    EXPECT_THAT(Row(panel.grdGains.Grid, 0), EndsWith("|holds"));
    panel.cmdKeep_Click();
    const Variant& kept = m_current.Study().Variants.back();
    EXPECT_EQ(kept.Name, "Optimised");
    EXPECT_THAT(panel.labStatus.Caption, HasSubstr("\"Optimised\""));
    const auto scratch = std::make_unique<Suspension>();
    const auto curve = CurveOfDesign(*scratch, kept.Design, m_current.Settings(), chSteerAngleBump,
                                     vvAlongWheelTravel, {});
    EXPECT_TRUE(Holds(m_current.Study().Targets.front(), *curve));
}

TEST_F(StudyPanelsTest, ARegionIsDrawnAsSlicesAndInTheCorner) {
    AddTarget(PlainTarget(chCamberAngle, vvAlongWheelTravel, -3.2, 0.7, -25, 25));
    auto& panel = Show<RegionPanel>();
    panel.cboPoint.Select(panel.cboPoint.FindData(ptUWIF));
    panel.Field_Changed(0);
    for (int row = 2; row < 5; ++row) {
        panel.Asked_Edited(0, row, 3, "9");
    }
    Run(panel);
    EXPECT_EQ(panel.labStatus.Caption, "Where it stands now, all is held");
    ASSERT_EQ(panel.Sheets.size(), 3U);
    panel.Asked_Edited(0, 2, 2, "-150");
    Run(panel);
    for (const ChartSheet& sheet : panel.Sheets) { // with one side of the box shorter
        EXPECT_DOUBLE_EQ(sheet.AxisX.Shown.Upper - sheet.AxisX.Shown.Lower, 40) << sheet.Title;
        EXPECT_DOUBLE_EQ(sheet.AxisY.Shown.Upper - sheet.AxisY.Shown.Lower, 40) << sheet.Title;
    }
    const SheetMap& map = *panel.Sheets[0].Map;
    EXPECT_EQ(map.Kinds.size(), 3U);
    EXPECT_EQ(ValueAt(map, map.Cross->X, map.Cross->Y), 0.0);
    EXPECT_FALSE(panel.Overlay.Places.empty());
    const DataGrid& verdicts = panel.grdVerdicts.Grid;
    EXPECT_EQ(Number(verdicts, 0, 1) + Number(verdicts, 1, 1) + Number(verdicts, 2, 1), 729);
    EXPECT_GT(Number(verdicts, 2, 1), 0);
    StudyData study = m_current.Study();
    const Colour camber = map.Kinds.back().Drawn;
    study.Targets.insert(study.Targets.begin(),
                         PlainTarget(chSteerAngleBump, vvAlongWheelTravel, 0, 9, -25, 25));
    m_current.ChangeStudy(study);
    Run(panel);
    EXPECT_EQ(panel.Sheets[0].Map->Kinds.back().Drawn, camber) << "with another one before it";
}

TEST_F(StudyPanelsTest, APlantedErrorIsFoundInPastedReadings) {
    Design built = DesignOf(m_document);
    built.Points[ptTRI].Z += 1.5;
    Suspension car;
    ASSERT_TRUE(Solve(car, built, m_current.Settings()).Solved);
    std::vector<Reading> readings;
    for (int w = 2; w <= car.NW + 1; w += 2) {
        const ChannelCells& cells = car.WheelStates(car.StaticRack, w).Channels;
        readings.push_back({WheelTravelAtStep(car, w), 0, chSteerAngle, cells[chSteerAngle], 0.01});
    }
    m_windowSystem.Board = ReadingsText(readings, m_program.Channels, m_program.Units);
    auto& panel = Show<FitPanel>();
    panel.cmdFill_Click(0);
    ASSERT_EQ(panel.grdReadings.Grid.Rows(), 2 + static_cast<int>(readings.size()));
    Add(panel, ptTRI, 2, 1);
    Add(panel, ptSAI, 2, 1);
    Run(panel);
    const DataGrid& found = panel.grdFound.Grid;
    EXPECT_NEAR(Number(found, 0, 3), 1.5, 0.1);
    EXPECT_THAT(Row(found, 1), EndsWith("the readings can't tell"));
    panel.cmdKeep_Click();
    EXPECT_EQ(m_current.Study().Variants.back().Name, "As built");
    m_windowSystem.Board = "0\t0\tNo such channel\t1\t1";
    panel.cmdFill_Click(0);
    EXPECT_THAT(panel.labStatus.Caption, HasSubstr("No such channel"));
    EXPECT_EQ(m_current.Study().Questions.Fit.Readings.size(), readings.size());
}

TEST_F(StudyPanelsTest, TurnsRaiseTheCarWithItsToeHeld) {
    auto& panel = Show<SetupPanel>();
    panel.cmdFill_Click(0);
    const DataGrid& wanted = panel.grdWanted.Grid;
    for (int row = wanted.FixedRows(); row < wanted.Rows(); ++row) {
        if (wanted.Cell(row, 0).starts_with("Ride height")) {
            panel.Asked_Edited(1, row, 2, "3");
            panel.Asked_Edited(1, row, 3, "0.5");
        } else if (wanted.Cell(row, 0).starts_with("Steer")) {
            panel.Asked_Edited(1, row, 1, "held");
            panel.Asked_Edited(1, row, 3, "0.05");
        }
    }
    Run(panel);
    EXPECT_EQ(panel.labStatus.Caption, "All that is wanted is met");
    EXPECT_GT(panel.grdSheet.Grid.Rows(), 10);
    const DataGrid& reached = panel.grdReached.Grid;
    for (int row = 0; row < reached.Rows() - reached.FixedRows(); ++row) {
        if (Row(reached, row).starts_with("Ride height")) {
            EXPECT_NEAR(Number(reached, row, 3), 3, 0.5);
        }
    }
    panel.cmdKeep_Click();
    const Design& set = m_current.Study().Variants.back().Design;
    const Design was = DesignOf(m_document);
    EXPECT_NEAR(set.Points[ptWTCP].Z, was.Points[ptWTCP].Z - 3, 0.5);
}

TEST_F(StudyPanelsTest, AStudyGoesOnWhileTheCursorOrTheDesignMoves) {
    auto& panel = Show<TolerancePanel>();
    panel.cmdFill_Click(0);
    panel.cmdRun_Click();
    Bench().sldBump_Moved(Bench().sldBump.Static + 1);
    Wait(panel);
    EXPECT_EQ(panel.labStatus.Caption, "500 samples");
    EXPECT_FALSE(panel.Overlay.Bands.empty());
    panel.cmdRun_Click();
    Move(ptTRI, &SuspPoint::Z, 1);
    Wait(panel);
    EXPECT_THAT(panel.labStatus.Caption, HasSubstr("before its last change"));
    EXPECT_EQ(panel.OverlayNow(), nullptr) << "of another design";
    EXPECT_GT(panel.grdShares.Grid.Rows(), 0);
}

// A study is about the design that it began with, and nothing waits for it.
TEST_F(StudyPanelsTest, StudiesAreStoppedByHandAndByAnotherDocument) {
    auto& panel = Show<TolerancePanel>();
    panel.cmdFill_Click(0);
    panel.txtSamples.Text = "10000";
    panel.Field_Left(0);
    panel.cmdRun_Click();
    EXPECT_TRUE(panel.IsRunning() && panel.cmdStop.Enabled && !panel.cmdRun.Enabled);
    panel.cmdStop_Click();
    Wait(panel);
    EXPECT_TRUE(panel.cmdRun.Enabled);
    panel.cmdRun_Click();
    Move(ptTRI, &SuspPoint::Z, 1);
    m_program.Units[ucDisplacement].Label = "in"; // the windows are in other units meanwhile
    m_program.Channels.ChannelsSetup(m_program.Units);
    Open(SampleBytes("saloon-front-strut.WSP"));
    Wait(panel);
    EXPECT_FALSE(panel.HasAnswer());
    EXPECT_TRUE(panel.Overlay.Bands.empty());
    auto& fit = Show<FitPanel>();
    Add(fit, ptTRI, 2, 1);
    fit.cmdRun_Click(); // which fails, without readings
    Open(SampleBytes());
    Wait(fit);
    EXPECT_EQ(fit.labStatus.Caption, "") << "nobody of this document asked";
    Show<TolerancePanel>().cmdRun_Click();
    m_main.Workbench->Close(); // with the work going on
    EXPECT_TRUE(m_box.Shown.empty());
}

// Whatever a stopped study shows, it claims nothing and keeps no corner that was never solved.
TEST_F(StudyPanelsTest, EveryStudyIsStoppedAtOnceAndInItsMiddle) {
    AddTarget(PlainTarget(chSteerAngleBump, vvAlongWheelTravel, 0.2, 0.01, -25, 25));
    for (const auto& panel : Bench().Studies.All()) {
        for (std::size_t table = 0; table < panel->Asked.size(); ++table) {
            panel->cmdFill_Click(table);
        }
    }
    Add(Show<OptimisePanel>(), ptTRI, 2);
    Add(Show<SweepPanel>(), ptTRI, 1);
    auto& fit = Show<FitPanel>();
    Add(fit, ptTRI, 2, 0);
    Add(fit, ptTRI, 2, 1);
    auto& setup = Show<SetupPanel>();
    setup.Asked_Edited(1, setup.grdWanted.Grid.FixedRows(), 2, "-0.5");
    int stops = 0;
    for (std::size_t n = 0; n < Bench().Studies.All().size(); ++n) {
        Bench().ShowStudy(n);
        CStudyPanel& panel = *Bench().Studies.All()[n];
        Run(panel);
        const std::string whole = panel.labStatus.Caption;
        for (const int wait : {0, 1, 7}) {
            panel.cmdRun_Click();
            std::this_thread::sleep_for(std::chrono::milliseconds(wait));
            panel.cmdStop_Click();
            Wait(panel);
            const std::string said = panel.labStatus.Caption;
            const bool stopped = said.find("topped") != std::string::npos;
            stops += stopped ? 1 : 0;
            EXPECT_TRUE(stopped || said == whole) << panel.Page.Caption << ": " << said;
            EXPECT_THAT(stopped ? said : "",
                        testing::Not(testing::ContainsRegex("^Fitted|settled|nowhere|can be")));
            if (panel.cmdKeep.Enabled) {
                panel.cmdKeep_Click();
            }
            if (panel.HasAnswer()) {
                EXPECT_THAT(said, StartsWith(ReportOf(m_desk, panel).Words.Found.front()));
            }
        }
    }
    EXPECT_GT(stops, 0);
    for (const Variant& variant : m_current.Study().Variants) {
        Suspension solved;
        EXPECT_TRUE(Solve(solved, variant.Design, m_current.Settings()).Solved) << variant.Name;
    }
}

TEST_F(StudyPanelsTest, AFieldIsTakenWhenItIsLeftAndAnAnswerKnowsItsQuestion) {
    auto& setup = Show<SetupPanel>();
    for (const char* text : {"1", "12", "12."}) {
        setup.txtRideHeight.Text = text;
        setup.Field_Changed(0);
        EXPECT_EQ(setup.txtRideHeight.Text, text);
    }
    setup.Field_Left(0);
    EXPECT_EQ(setup.txtRideHeight.Text, "12.00");
    EXPECT_EQ(m_current.Study().Questions.Setup.Sheet.RideHeight, 12);
    auto& panel = Show<TolerancePanel>();
    panel.txtSamples.Text = "0";
    panel.cmdRun_Click(); // with the field not left
    EXPECT_FALSE(panel.IsRunning());
    EXPECT_THAT(panel.labStatus.Caption, HasSubstr("from 2 to"));
    EXPECT_TRUE(panel.txtSamples.Fault);
    panel.txtSamples.Text = "20";
    panel.Field_Left(0);
    EXPECT_FALSE(panel.txtSamples.Fault);
    Add(panel, ptTRI, 2);
    Run(panel);
    const std::string asked = panel.Answered().Tables.front().Grid.Cell(2, 1);
    panel.Asked_Edited(0, 2, 1, "0.11");
    EXPECT_THAT(panel.labStatus.Caption, HasSubstr("asked before"));
    EXPECT_EQ(ReportOf(m_desk, panel).Asked.front().Grid.Cell(2, 1), asked);
    EXPECT_EQ(panel.grdTolerances.Grid.Cell(2, 1), "0.11");
}

} // namespace
} // namespace corvanta::test
