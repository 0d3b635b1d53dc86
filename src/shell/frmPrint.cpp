#include "shell/frmPrint.h"

#include "model/Failure.h"
#include "platform/PageWriter.h"
#include "results/MDisplay.h"
#include "shell/CMousePointer.h"
#include "shell/MLibGUI.h"

#include <algorithm>
#include <initializer_list>
#include <string>

namespace corvanta {

namespace {

constexpr WindowPlacement DesignSize{0, 0, 6300, 6900};

constexpr const char* CancelCaption = "Cancel";
constexpr const char* CloseCaption = "&Close";

void KeepIfEnabled(bool& option, const CheckBox& box) {
    if (box.Enabled) {
        option = box.Checked;
    }
}

/// The stored orientation; a number that means none is portrait.
PageOrientation OrientationOf(const Options& options) {
    return options.PaperOrientation == poLandscape ? poLandscape : poPortrait;
}

/// The size of the preview: pages of either orientation can be read in it.
WindowPlacement PreviewSize(const WindowPlacement& settings, const WindowPlacement& screen) {
    return {0, 0, std::max(settings.Width, screen.Width / 5 * 3),
            std::max(settings.Height, screen.Height / 10 * 9)};
}

} // namespace

frmPrint::frmPrint(Desk& desk, ShellHost& main) : m_desk(desk), m_main(main) {
    Caption = "Print";
    Frame.Name = "frmPrint";
    Frame.Placement = DesignSize;
    optPrintCurrent.Caption = "&Current View";
    optSelectedTables.Caption = "Selected &Views:";
    chkPageThrow.Caption = "&One table per page";
    chkChassisDetails.Caption = "Chassis &details";
    chkPrintCoordinates.Caption = "S&tatic Coordinates";
    cmdOK.Caption = "&Print";
    cmdPreview.Caption = "P&review";
    cmdSetup.Caption = "&Setup...";
    cmdCancel.Caption = CancelCaption;
    cmdHelp.Caption = "&Help";
    picPages.Visible = false;
}

void frmPrint::Open() {
    const CMousePointer wait(m_desk.Windows.Cursor, HourglassCursor);
    const Options& options = m_desk.Program.Options;
    CentreWindow(Frame, m_desk.Windows.ScreenSize);
    m_desk.Windows.Pages.SetOrientation(OrientationOf(options));
    // A drawing does not go to paper: the report begins with the views that do.
    const bool drawing = m_desk.Program.Settings.View == vw3d;
    optSelectedTables.Selected = options.PrintSelectedTables || drawing;
    optPrintCurrent.Selected = !optSelectedTables.Selected;
    optPrint_Click();
    chkPageThrow.Checked = options.PageThrow;
    chkChassisDetails.Checked = options.PrintChassisDetails;
    chkPrintCoordinates.Checked = options.PrintCoordinates;
    tvwTables.Rows.clear();
    for (int view = 1; view <= SelectableViewCount; ++view) {
        tvwTables.Rows.push_back({std::string(ViewName(view)), view, options.SelectedTables[view]});
    }
    if (m_desk.Program.Settings.View == vwPlot) { // its page is its own and holds nothing else
        chkPageThrow.Checked = chkChassisDetails.Checked = false;
        chkPageThrow.Enabled = chkChassisDetails.Enabled = false;
    }
    IsOpen = true;
}

void frmPrint::optPrint_Click() {
    tvwTables.Enabled = optSelectedTables.Selected;
}

void frmPrint::tvwTables_Click(int row) {
    bool& ticked = tvwTables.Rows.at(static_cast<std::size_t>(row)).Checked;
    ticked = !ticked;
}

void frmPrint::KeepChoices() {
    Options& options = m_desk.Program.Options;
    KeepIfEnabled(options.PageThrow, chkPageThrow);
    KeepIfEnabled(options.PrintChassisDetails, chkChassisDetails);
    KeepIfEnabled(options.PrintCoordinates, chkPrintCoordinates);
    options.PrintSelectedTables = optSelectedTables.Selected;
    for (const CheckListRow& row : tvwTables.Rows) {
        options.SelectedTables.Set(row.Tag, row.Checked);
    }
}

void frmPrint::Build() {
    const CMousePointer wait(m_desk.Windows.Cursor, HourglassCursor);
    KeepChoices();
    BuildReport({m_desk.Program, m_main, m_desk.Windows.Pages, m_desk.Process.Version()});
}

void frmPrint::cmdOK_Click() {
    ReportFailure([this] {
        Build();
        if (m_desk.Windows.Pages.Print()) {
            Close();
        }
    });
}

void frmPrint::cmdPreview_Click() {
    ReportFailure([this] {
        Build();
        ShowPreview(true);
    });
}

void frmPrint::cmdSetup_Click() {
    ReportFailure([this] {
        Options& options = m_desk.Program.Options;
        PageWriter& pages = m_desk.Windows.Pages;
        pages.SetOrientation(OrientationOf(options));
        pages.SetUpPrinter();
        options.PaperOrientation = pages.Orientation();
    });
}

void frmPrint::cmdCancel_Click() {
    if (picPages.Visible) {
        ShowPreview(false);
    } else {
        Close();
    }
}

void frmPrint::cmdHelp_Click() {
    m_desk.Help.ShowHelpTopic(HelpTopicNumber);
}

void frmPrint::ShowPreview(bool shown) {
    if (shown) {
        m_settingsPlacement = Frame.Placement;
        Frame.Placement = PreviewSize(Frame.Placement, m_desk.Windows.ScreenSize);
        CentreWindow(Frame, m_desk.Windows.ScreenSize);
    } else {
        Frame.Placement = m_settingsPlacement;
    }
    // What the pages cover must not be reached by a key.
    for (Control* control : std::initializer_list<Control*>{
             &optPrintCurrent, &optSelectedTables, &tvwTables, &chkPageThrow, &chkChassisDetails,
             &chkPrintCoordinates, &cmdOK, &cmdPreview, &cmdSetup, &cmdHelp}) {
        control->Visible = !shown;
    }
    picPages.Visible = shown;
    cmdCancel.Caption = shown ? CloseCaption : CancelCaption;
}

void frmPrint::ReportFailure(const std::function<void()>& command) {
    try {
        command();
    } catch (...) {
        m_desk.Messages.ShowMessage("There was an error while printing.\rError was: " +
                                        FailureInFlight().Description(),
                                    msExclamation);
    }
}

} // namespace corvanta
