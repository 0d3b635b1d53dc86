#include "tests/support/Testing.h"
#include "tests/support/WorkbenchFormTest.h"

#include <cmath>

namespace corvanta::test {
namespace {

class frmWorkbenchTest : public WorkbenchFormTest {
  protected:
    [[nodiscard]] const ChartSheet& Sheet(std::size_t n) { return Bench().Sheets()[n]; }
    [[nodiscard]] const SheetCurve* CurveNamed(std::size_t n, const std::string& name) {
        for (const SheetCurve& curve : Sheet(n).Curves) {
            if (curve.Name == name) {
                return &curve;
            }
        }
        return nullptr;
    }
    void SelectCell(PointNumber number, int axis) {
        Bench().Points.Select(number);
        CellRange& cells = Bench().Points.Selection;
        cells.FirstColumn = cells.LastColumn = axis + 1;
    }
    [[nodiscard]] std::string Cell(PointNumber number, int axis) {
        Bench().Points.Select(number);
        return Bench().Points.grdPoints.Cell(Bench().Points.Selection.FirstRow, axis + 1);
    }
    void TypeCell(PointNumber number, int axis, const std::string& text) {
        Bench().Points.Select(number);
        Bench().Points.grdPoints_Edited(Bench().Points.Selection.FirstRow, axis + 1, text);
        Bench().Points_Changed();
    }
    [[nodiscard]] double& Z(PointNumber number) { return m_document.StaticPoints()[number].Z; }
    [[nodiscard]] std::vector<std::string> StepNames() {
        std::vector<std::string> names;
        for (const ListedStep& step : Bench().Steps) {
            names.push_back(step.Name);
        }
        return names;
    }
};

// What is drawn is compared with the channel cells of a run of the classic road.
TEST_F(frmWorkbenchTest, ChartsShowWhatARunGivesAtTheCursorOfAllWindows) {
    m_settings.ViewRack = m_document.StaticRack + 1;
    m_settings.ViewWheel = m_document.StaticWheel - 2;
    m_main.RefreshGUI(false);
    Bench().Points_Changed();
    const ChartSheet camber = Sheet(0);
    EXPECT_EQ(camber.Title, "Camber Angle [deg]");
    const std::vector<ChartPoint>& line = camber.Curves.front().Points;
    ASSERT_EQ(line.size(), static_cast<std::size_t>(m_document.NW));
    for (int w = 2; w <= m_document.NW + 1; ++w) {
        const auto& cells = m_document.WheelStates(m_settings.ViewRack, w).Channels;
        const ChartPoint& point = line[static_cast<std::size_t>(m_document.NW + 1 - w)];
        EXPECT_EQ(point.Y, cells[chCamberAngle]);
        EXPECT_NEAR(point.X, cells[chWheelTravel], 1e-5);
    }
    const double shown =
        m_document.WheelStates(m_settings.ViewRack, m_settings.ViewWheel).Channels[chCamberAngle];
    ASSERT_TRUE(camber.Cursor && camber.Cursor->Y);
    EXPECT_EQ(*camber.Cursor->Y, shown);
    const SheetMap map = *Sheet(5).Map;
    const auto columns = static_cast<std::size_t>(m_document.NW);
    EXPECT_EQ(map.Values[0], m_document.WheelStates(2, m_document.NW + 1).Channels[chCamberAngle]);
    EXPECT_EQ(map.Values[columns - 1], m_document.WheelStates(2, 2).Channels[chCamberAngle]);
    EXPECT_EQ(map.Cross, (ChartPoint{WheelTravelAtStep(m_document, m_settings.ViewWheel),
                                     RackTravelAtStep(m_document, m_settings.ViewRack)}));
    Bench().Chart_TravelMoved(5, {map.X.front() + 0.3, 0.2}, false);
    EXPECT_EQ(m_settings.ViewWheel, m_document.NW + 1);
    EXPECT_EQ(m_settings.ViewRack, m_document.StaticRack);
    Bench().Chart_Hovered(0, ChartPoint{10.0, -3.0});
    EXPECT_TRUE(Sheet(1).Hover && !Sheet(4).Hover) << "the other runs along rack travel";
    m_program.Units[ucDisplacement].Label = "in";
    m_program.Channels.ChannelsSetup(m_program.Units);
    EXPECT_NEAR(Sheet(0).AxisX.Shown.Upper, line.back().X / 25.4, 1e-3);
}

TEST_F(frmWorkbenchTest, CellsAreTypedNudgedAndScrubbedAsStepsOfTheHistory) {
    const double before = Z(ptTRI);
    SelectCell(ptTRI, 2);
    Bench().Points.Nudge(1, false);
    Bench().Points.Nudge(1, true);
    EXPECT_NEAR(Z(ptTRI), before + 5.5, 1e-9);
    EXPECT_THAT(StepNames(), ElementsAre("Open front.WSP", "Move Trackrod inboard pickup Z"));
    TypeCell(ptTRI, 2, "+-5.5");
    EXPECT_NEAR(Z(ptTRI), before, 1e-9);
    TypeCell(ptUWIR, 0, "280+2.5");
    EXPECT_EQ(m_document.StaticPoints()[ptUWIR].X, 282.5);
    EXPECT_THAT(Bench().Points.grdPoints.Note(Bench().Points.Selection.FirstRow, 1),
                AllOf(StartsWith("was 285.00"), EndsWith("-2.50 mm")));
    TypeCell(ptUWIR, 0, "about 3");
    EXPECT_THAT(Bench().labHead.Caption, HasSubstr("is no number"));
    EXPECT_EQ(m_document.StaticPoints()[ptUWIR].X, 282.5);

    Bench().Points.txtFilter.Text = "lower inner";
    Bench().Points_Changed();
    EXPECT_EQ(Bench().Points.grdPoints.Rows(), 4);
    Bench().Points.Selection = {2, 3, 3, 3};
    const double front = Z(ptLWIF);
    const double rear = Z(ptLWIR);
    Bench().Points.BeginScrub();
    Bench().Points.ScrubTo(4);
    Bench().Points.ScrubTo(3);
    EXPECT_NEAR(Z(ptLWIF) - front, 1.5, 1e-9);
    EXPECT_NEAR(Z(ptLWIR) - rear, 1.5, 1e-9);
    Bench().Points.EndScrub(true);
    EXPECT_EQ(StepNames().back(), "Move 2 points Z");
    Bench().Points.BeginScrub();
    Bench().Points.ScrubTo(40);
    Bench().Points.EndScrub(false);
    EXPECT_NEAR(Z(ptLWIF) - front, 1.5, 1e-9);
    EXPECT_EQ(StepNames().back(), "Move 2 points Z");
    Bench().Undo();
    EXPECT_EQ(Z(ptLWIF), front);
    Bench().GoToStep(0);
    EXPECT_FALSE(m_program.Modified);
    EXPECT_THAT(m_box.Shown, IsEmpty());
}

TEST_F(frmWorkbenchTest, ADesignThatFailsBlocksNothingAndTheNextGoodOneBringsAllBack) {
    const std::vector<ChartPoint> good = Sheet(0).Curves.front().Points;
    Bench().Points.BeginScrub();
    SelectCell(ptTRI, 2);
    Bench().Points.ScrubTo(2000);
    EXPECT_THAT(Bench().labHead.Caption, StartsWith("Can't be solved"));
    EXPECT_TRUE(Sheet(0).Curves.front().Faded);
    EXPECT_EQ(Sheet(0).Curves.front().Points, good);
    EXPECT_THAT(Sheet(0).Cursor->Lines, IsEmpty()) << "the number would be of another design";
    Bench().Points.ScrubTo(1);
    EXPECT_EQ(Bench().labHead.Caption, "");
    EXPECT_FALSE(Sheet(0).Curves.front().Faded);
    EXPECT_NE(Sheet(0).Curves.front().Points, good);
    ASSERT_NE(CurveNamed(0, "Baseline"), nullptr);
    EXPECT_EQ(CurveNamed(0, "Baseline")->Points, good);
    EXPECT_EQ(CurveNamed(0, "Baseline")->Style, CurveStyle::Dashed);
    Bench().Points.EndScrub(false);
    EXPECT_EQ(CurveNamed(0, "Baseline"), nullptr) << "it is the design itself";
    EXPECT_THAT(m_box.Shown, IsEmpty());
}

TEST_F(frmWorkbenchTest, VariantsAreKeptRestoredAndDrawnWhereTheyAreTicked) {
    SelectCell(ptTRI, 2);
    Bench().Points.Nudge(1, true);
    Bench().KeepVariant();
    const double kept = Z(ptTRI);
    Bench().Undo();
    ASSERT_EQ(Bench().Variants.size(), 1U);
    ASSERT_NE(CurveNamed(1, "Variant 1"), nullptr);
    EXPECT_EQ(CurveNamed(1, "Variant 1")->Style, CurveStyle::Thin);
    const std::vector<ChartPoint> line = CurveNamed(1, "Variant 1")->Points;
    Bench().TickVariant(0, false);
    EXPECT_EQ(CurveNamed(1, "Variant 1"), nullptr);
    EXPECT_TRUE(Bench().RenameVariant(0, "High rod"));
    Bench().KeepVariant();
    EXPECT_FALSE(Bench().RenameVariant(1, "High rod"));
    EXPECT_NE(Bench().labHead.Caption, "");
    Bench().RestoreVariant(0);
    EXPECT_EQ(Z(ptTRI), kept);
    EXPECT_EQ(Sheet(1).Curves.front().Points, line) << "bump steer as it was drawn before";
    EXPECT_EQ(StepNames().back(), "Restore High rod");
    Bench().SetBaseline();
    EXPECT_EQ(CurveNamed(1, "Baseline"), nullptr);
    Bench().Undo();
    EXPECT_EQ(CurveNamed(1, "Baseline")->Points, line);
    Bench().DeleteVariant(0);
    EXPECT_EQ(Bench().Variants.size(), 1U);
}

TEST_F(frmWorkbenchTest, TargetsAreJudgedOnTheCurveAtStaticAlone) {
    AddTarget(PlainTarget(chSteerAngleBump, vvAlongWheelTravel, 0, 0.02, -25, 25));
    EXPECT_EQ(Sheet(1).Mark, TargetMark::Holds);
    EXPECT_EQ(Sheet(1).Bands.size(), 1U);
    EXPECT_EQ(Sheet(0).Mark, TargetMark::None);
    SelectCell(ptTRI, 2);
    Bench().Points.Nudge(1, true);
    EXPECT_EQ(Sheet(1).Mark, TargetMark::Fails);
    // 5 mm at the rod of some 460 mm turn the wheel by 5 / 460 of the travel over its arm of some
    // 90 mm: 25 mm give about 0.17 deg, of which 0.02 are allowed.
    EXPECT_NEAR(std::abs(std::stod(Sheet(1).MarkText)), 0.15, 0.04);
    Bench().sldRack_Moved(0);
    EXPECT_EQ(Sheet(1).Mark, TargetMark::None);
    EXPECT_THAT(Sheet(1).MarkText, HasSubstr("static rack"));
}

TEST_F(frmWorkbenchTest, AxesGrowAtOnceAndShrinkWhenTheHandLetsGo) {
    const AxisRange before = Sheet(1).AxisY.Shown;
    SelectCell(ptTRI, 2);
    Bench().Points.BeginScrub();
    Bench().Points.ScrubTo(10);
    const AxisRange grown = Sheet(1).AxisY.Shown;
    EXPECT_GT(grown.Size(), 2 * before.Size());
    Bench().Points.ScrubTo(0);
    EXPECT_EQ(Sheet(1).AxisY.Shown, grown);
    Bench().Points.EndScrub(true);
    EXPECT_EQ(Sheet(1).AxisY.Shown, before);
}

TEST_F(frmWorkbenchTest, TravelIsTypedPlayedAndStopped) {
    Bench().txtBump.Text = "12";
    Bench().txtTravel_LostFocus(Bench().txtBump);
    EXPECT_EQ(WheelTravelAtStep(m_document, m_settings.ViewWheel),
              std::round(12 / m_document.Data.WheelTravelStepSize) *
                  m_document.Data.WheelTravelStepSize);
    Bench().txtBump.Text = "no";
    Bench().txtTravel_LostFocus(Bench().txtBump);
    EXPECT_FALSE(Bench().txtBump.Fault) << "it shows where it stands";
    Bench().Play(PlayMode::Both);
    std::set<std::pair<int, int>> places;
    for (int tick = 0; tick < 400; ++tick) {
        Bench().PlayOn(0.025);
        places.insert({m_settings.ViewWheel, m_settings.ViewRack});
    }
    EXPECT_GE(places.size(), static_cast<std::size_t>(m_document.NW));
    Bench().StopPlay();
    const int stopped = m_settings.ViewWheel;
    Bench().PlayOn(1);
    EXPECT_EQ(m_settings.ViewWheel, stopped);
}

TEST_F(frmWorkbenchTest, RemembersItsChartsAndWorksOnWhateverIsOpened) {
    Bench().SetChart(0, {chSpringLength, ChartKind::AlongRackTravel});
    Bench().SetChartCount(3);
    m_main.Workbench->Close();
    m_main.ReleaseClosedWindows();
    m_main.Execute(mcWorkbench, 0);
    EXPECT_EQ(Bench().Charts().size(), 3U);
    EXPECT_EQ(Bench().Charts()[0], (StudyChart{chSpringLength, ChartKind::AlongRackTravel}));
    Bench().SetChartCount(99);
    EXPECT_EQ(Bench().Sheets().size(), 9U);
    Bench().KeepVariant();
    m_box.Answers = {maNo}; // the variant may go
    Open(SampleBytes("saloon-front-strut.WSP"), "/cars/strut.WSP");
    EXPECT_THAT(StepNames(), ElementsAre("Open strut.WSP"));
    EXPECT_THAT(Bench().Variants, IsEmpty());
    EXPECT_EQ(Bench().labHead.Caption, "");
    m_box.Answers = {maYes};
    m_main.Execute(mcNew, 0);
    EXPECT_EQ(Bench().Points.grdPoints.Rows(), 0);
    for (const ChartSheet& sheet : Bench().Sheets()) {
        EXPECT_THAT(sheet.Curves, IsEmpty());
    }
}

} // namespace
} // namespace corvanta::test
