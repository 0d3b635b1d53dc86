#include "tests/desktop/WorkbenchScreenshots.h"

#include "desktop/ChartsPanel.h"
#include "desktop/CornerPanelView.h"
#include "desktop/PointsPanel.h"
#include "desktop/WorkbenchWindow.h"
#include "tests/support/SampleCorners.h"

#include <QTabWidget>
#include <QTest>

namespace corvanta::test {

namespace {

constexpr QSize Usual{1280, 800};
constexpr int HelpWidth = 800; ///< a page of the help is no wider

/// A picture of the workbench at a size.
void TakeAt(DesktopUser& user, const Photographer& camera, const QSize& size, const QString& name) {
    QTest::qWait(40); // a window that has just come up is fitted to the screen
    user.Desk.WorkbenchView()->resize(size);
    camera.Take(user.Desk.WorkbenchView(), name);
}

/// Moves a coordinate by as many steps of the table.
void Nudge(DesktopUser& user, PointNumber number, int column, int steps) {
    user.Desk.Handle([&] {
        frmWorkbench& bench = *user.Logic().Workbench;
        bench.Points.Selection.FirstColumn = column;
        bench.Points.Select(number);
        for (int n = 0; n < std::abs(steps); ++n) {
            bench.Points.Nudge(steps < 0 ? -1 : 1, false);
        }
        bench.Points_Changed();
    });
}

void TakeTour(DesktopUser& user, const Photographer& camera) {
    frmWorkbench& bench = *user.Logic().Workbench;
    user.Desk.WorkbenchView()->resize(Usual);
    for (int step = 1; bench.Tour.IsOpen(); ++step) {
        camera.Take(user.Desk.WorkbenchView(), QString("workbench-tour-%1").arg(step));
        user.Desk.Handle([&] { bench.Tour.cmdNext_Click(); });
    }
}

/// Two variants, a target for bump steer, and a trackrod that is moved away from the baseline.
void Tune(DesktopUser& user) {
    frmWorkbench& bench = *user.Logic().Workbench;
    const auto keep = [&](const char* name) {
        user.Desk.Handle([&] {
            bench.KeepVariant();
            bench.RenameVariant(bench.Variants.size(), name);
        });
    };
    Nudge(user, ptTRI, 3, 4);
    keep("Trackrod up 2 mm");
    Nudge(user, ptUWO, 3, 8);
    keep("Upper joint up 4 mm");
    Nudge(user, ptUWO, 3, -8);
    Nudge(user, ptTRI, 3, -3);
    user.Desk.Handle([&] {
        StudyData study = user.Desk.Program().Current().Study();
        study.Targets.push_back(
            PlainTarget(chSteerAngleBump, vvAlongWheelTravel, 0, 0.02, -25, 25));
        user.Desk.Program().Current().ChangeStudy(std::move(study));
        bench.sldBump_Moved(bench.sldBump.Static + 2);
    });
    user.Desk.WorkbenchView()->findChild<QTabWidget*>("tabLists")->setCurrentIndex(1);
}

void TakePanels(DesktopUser& user, const Photographer& camera) {
    WorkbenchWindow& window = *user.Desk.WorkbenchView();
    camera.Take(&window.Points(), "workbench-points");
    camera.Take(&window.Charts(), "workbench-charts");
    camera.Take(&window.Corner(), "workbench-corner");
    camera.Take(window.findChild<QWidget*>("panTravel"), "workbench-travel", HelpWidth);
    camera.Take(window.findChild<QWidget*>("tabLists"), "workbench-lists");
}

} // namespace

void TakeWorkbench(DesktopUser& user, const Photographer& camera) {
    const auto takeBoth = [&](const QString& name) { // as it is, and for the help
        camera.Take(user.Desk.WorkbenchView(), name);
        camera.Take(user.Desk.WorkbenchView(), name + "-help", HelpWidth);
    };
    user.Choose(mcWorkbench);
    TakeAt(user, camera, Usual, "workbench-empty");
    user.Open(SamplePath("touring-front-wishbone.WSP"));
    TakeTour(user, camera);
    Tune(user);
    frmWorkbench& bench = *user.Logic().Workbench;
    TakeAt(user, camera, {1920, 1080}, "workbench-1920");
    TakeAt(user, camera, {1024, 640}, "workbench-1024");
    user.Desk.WorkbenchView()->resize(Usual);
    takeBoth("workbench");
    TakePanels(user, camera);
    user.Desk.Handle([&] {
        bench.SetChartCount(1);
        bench.SetChart(0, {chCamberAngle, ChartKind::Map, true});
    });
    takeBoth("workbench-difference");
    user.Desk.Handle([&] { bench.SetChartCount(frmWorkbench::MostCharts); });
    camera.Take(user.Desk.WorkbenchView(), "workbench-nine");
    user.Desk.Handle([&] { bench.SetChartCount(6); });
    Nudge(user, ptTRI, 2, 800); // far beyond what the trackrod can follow
    user.Desk.WorkbenchView()->findChild<QTabWidget*>("tabLists")->setCurrentIndex(0);
    takeBoth("workbench-failing");
    user.Desk.Handle([&] { bench.Close(); });
}

} // namespace corvanta::test
