// Renders every window and every view of the program as pictures:
//   corvanta_screenshots FOLDER light|dark

#include "desktop/AboutWindow.h"
#include "desktop/AdjustWindow.h"
#include "desktop/ChartSheetView.h"
#include "desktop/CompareWindow.h"
#include "desktop/CustomChannelsWindow.h"
#include "desktop/ExportWindow.h"
#include "desktop/GuardedApplication.h"
#include "desktop/PrintWindow.h"
#include "desktop/TargetWindow.h"
#include "tests/desktop/DesktopUser.h"
#include "tests/desktop/Photographer.h"
#include "tests/desktop/SampleSheets.h"
#include "tests/desktop/StudyScreenshots.h"
#include "tests/desktop/TutorialScreenshots.h"
#include "tests/desktop/WorkbenchScreenshots.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/TemporaryFolder.h"

#include <iostream>

namespace corvanta::test {
namespace {

QPalette DarkPalette() {
    QPalette palette;
    const QColor window(42, 43, 46);
    const QColor text(226, 227, 230);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, QColor(30, 31, 34));
    palette.setColor(QPalette::AlternateBase, QColor(37, 38, 42));
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Button, QColor(50, 51, 55));
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::ToolTipBase, window);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::PlaceholderText, QColor(140, 141, 146));
    palette.setColor(QPalette::Highlight, QColor(61, 128, 196));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, QColor(120, 121, 126));
    }
    return palette;
}

void TakeViews(DesktopUser& user, const Photographer& camera) {
    for (const MenuItem& item : user.Logic().mnuView.Items) {
        if (item.Command == mcView && item.Enabled) {
            user.Choose(mcView, item.Tag);
            camera.Take(&user.Window(), QString("view-%1").arg(item.Tag, 2, 10, QChar('0')));
        }
    }
    user.Choose(mcView, vwPlot);
    user.Desk.Handle([&] {
        user.Logic().cboType.Select(user.Logic().cboType.FindData(chCamberAngle));
        user.Logic().cboType_Changed();
    });
    camera.Take(&user.Window(), "view-14-camber");
    user.Choose(mcView, vwAntis);
    user.Desk.Handle([&] { user.Logic().optRack_Click(); });
    camera.Take(&user.Window(), "view-01-along-rack");
    user.Desk.Handle([&] { user.Logic().optWheel_Click(); });
}

void TakeEditor(DesktopUser& user, const Photographer& camera) {
    user.Choose(mcProperties);
    frmEditGeometry& editor = *user.Logic().EditGeometry;
    user.Desk.EditorView()->resize(1000, 640);
    for (std::size_t page = 0; page < editor.Pages.size(); ++page) {
        user.Desk.Handle([&] { editor.tabPages_Changed(static_cast<int>(page)); });
        camera.Take(user.Desk.EditorView(), QString("editor-%1").arg(page + 1));
    }
    user.Desk.Handle([&] { editor.cmdCancel_Click(); });
}

/// The charts of the workbench alone, as small and as large as they get.
void TakeCharts(const Photographer& camera) {
    for (const QSize& size : {QSize(300, 200), QSize(1600, 900)}) {
        for (const bool map : {false, true}) {
            ChartSheetView chart({});
            chart.resize(size);
            chart.show();
            chart.Show(map ? MapSheet() : LineSheet());
            camera.Take(&chart,
                        QString("chart-%1-%2").arg(map ? "map" : "lines").arg(size.width()));
        }
    }
}

/// What stands beside the document, in the windows that compare it.
void TakeComparison(DesktopUser& user, const Photographer& camera) {
    user.Choose(mcProperties);
    user.Desk.Handle([&] {
        frmEditGeometry& editor = *user.Logic().EditGeometry;
        editor.tabPages_Changed(pgStaticPoints);
        editor.grdPoints_Edited(4, 3, "250");
    });
    camera.Take(user.Desk.EditorView(), "editor-preview");
    user.Desk.EditorView()->resize(1024, 600);
    camera.Take(user.Desk.EditorView(), "editor-preview-small");
    user.Desk.Handle([&] { user.Logic().EditGeometry->grdPoints_Edited(4, 3, "9250"); });
    camera.Take(user.Desk.EditorView(), "editor-preview-fails");
    user.Desk.Handle([&] {
        user.Logic().EditGeometry->grdPoints_Edited(4, 3, "250");
        user.Logic().EditGeometry->cmdOK_Click();
    });
    camera.Take(&user.Window(), "plot-compared");
    user.Choose(mcCompare);
    camera.Take(user.Desk.CompareView(), "compare");
    user.Desk.Handle([&] { user.Logic().CompareWindow->Close(); });
    user.Desk.Handle([&] { user.Logic().EditTarget(chCamberAngle, vvAlongWheelTravel); });
    camera.Take(user.Desk.TargetView(), "target");
    user.Desk.Handle([&] { user.Logic().TargetDialog->cmdCancel_Click(); });
}

void TakeAll(const std::string& userFolder, const QString& pictures) {
    const Photographer camera(pictures);
    TakeCharts(camera);
    DesktopUser user(userFolder);
    static_cast<void>(user.Desk.Start());
    camera.Take(user.Desk.AboutView(), "splash");
    user.Desk.Handle([&] { user.Logic().TakeDownSplash(); });
    user.Window().resize(1100, 720); // the platform's screen is smaller than any of a user
    camera.Take(&user.Window(), "start");
    user.Open(SamplePath("saloon-front-strut.WSP"));
    user.Open(SamplePath("formula-front-pushrod.WSP"));
    user.Logic().stbMain.Note.clear();
    TakeViews(user, camera);
    TakeEditor(user, camera);
    user.Choose(mcOptions);
    camera.Take(user.Desk.OptionsView(), "options");
    user.Desk.Handle([&] { user.Logic().OptionsDialog->cmdCancel_Click(); });
    user.Choose(mcExportResults);
    camera.Take(user.Desk.ExportView(), "export");
    user.Desk.Handle([&] { user.Logic().ExportDialog->cmdCancel_Click(); });
    user.Choose(mcDefineCustomTable);
    user.Desk.Handle([&] {
        frmCustomChannels& editor = *user.Logic().CustomChannelsDialog;
        for (const int row : {13, 14, 35}) {
            editor.tvwChannels.Rows[static_cast<std::size_t>(row)].Checked = true;
            editor.tvwChannels_NodeCheck(row);
        }
    });
    camera.Take(user.Desk.CustomChannelsView(), "custom-table");
    user.Desk.Handle([&] { user.Logic().CustomChannelsDialog->cmdOk_Click(); });
    user.Choose(mcView, vwCustomTable);
    camera.Take(&user.Window(), "view-07-custom");
    user.Choose(mcPrint);
    camera.Take(user.Desk.PrintView(), "print");
    user.Desk.Handle([&] {
        frmPrint& dialog = *user.Logic().PrintDialog;
        dialog.optSelectedTables.Selected = true;
        dialog.optPrintCurrent.Selected = false;
        for (CheckListRow& row : dialog.tvwTables.Rows) {
            row.Checked = true;
        }
        dialog.chkPrintCoordinates.Checked = true;
        dialog.cmdPreview_Click();
    });
    camera.Take(user.Desk.PrintView(), "print-preview");
    user.Desk.Pages().SavePdf(camera.Path("report.pdf").toStdString());
    user.Desk.Handle([&] { user.Logic().PrintDialog->Close(); });
    user.Choose(mcView, vwPlot);
    user.Choose(mcPrint);
    user.Desk.Handle([&] {
        user.Logic().PrintDialog->optSelectedTables.Selected = false;
        user.Logic().PrintDialog->optPrintCurrent.Selected = true;
        user.Logic().PrintDialog->cmdPreview_Click();
    });
    user.Desk.Pages().SavePdf(camera.Path("plot.pdf").toStdString());
    user.Desk.Handle([&] { user.Logic().PrintDialog->Close(); });
    TakeComparison(user, camera);
    user.Choose(mcAdjust);
    camera.Take(user.Desk.AdjustView(), "adjust");
    user.Desk.Handle([&] { user.Logic().AdjustDialog->cmdCancel_Click(); });
    user.Choose(mcHelpTopics);
    camera.Take(user.Desk.Help().View(), "help");
    user.Open(SamplePath("SOURCES.md")); // no document at all
    camera.Take(&user.Window(), "start-with-recent-files");
    TakeWorkbench(user, camera);
    TakeStudies(user, camera);
}

} // namespace
} // namespace corvanta::test

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    corvanta::GuardedApplication application(argc, argv);
    if (argc != 3) {
        std::cerr << "usage: corvanta_screenshots FOLDER light|dark\n";
        return 2;
    }
    QApplication::setStyle(new corvanta::PlainButtonStyle("Fusion"));
    if (QString(argv[2]) == "dark") {
        QApplication::setPalette(corvanta::test::DarkPalette());
    }
    const corvanta::test::TemporaryFolder user;
    corvanta::test::TakeAll(user.Path(), argv[1]);
    corvanta::test::TakeTutorial(corvanta::test::Photographer(argv[1]));
    return 0;
}
