#include "shell/frmMain.h"

#include "model/Failure.h"
#include "shell/BusyScope.h"
#include "shell/CMousePointer.h"
#include "shell/ExportCommands.h"
#include "shell/MLibGUI.h"

namespace corvanta {

namespace {

/// 1100 by 720 pixels of 15 twips, the size that the window is drawn for.
constexpr WindowPlacement DesignSize{0, 0, 16500, 10800};

/// The views whose wheel and rack position the lists choose.
bool HasPosition(std::int32_t view) {
    return (view >= vwAntis && view <= vwCoordinates) || view == vwPlot || view == vw3d;
}

} // namespace

frmMain::frmMain(Desk& desk)
    : Files(desk, *this, mnuFMRU),
      Studies(desk, *this, Files, [this](FileOutcome outcome) { ShowOutcome(outcome); }),
      m_desk(desk) {
    SetUpMainControls(*this);
    Caption = "Corvanta";
    Frame = {"frmMain", DesignSize};
    m_desk.Current.Watch(*this);
}

frmMain::~frmMain() {
    m_desk.Current.Unwatch(*this);
}

void frmMain::Load() {
    Files.LoadRecentFiles();
    for (MenuItem& item : mnuFMRU) {
        item.Command = item.Caption == "-" ? mcNone : mcRecentFile;
    }
}

void frmMain::Unload() {
    Files.SaveRecentFiles();
    Workbench.Close();
    CompareWindow.Close();
    IsOpen = false;
}

void frmMain::RefreshGUI(bool resetPosition) {
    try {
        Refresh(resetPosition);
    } catch (...) {
        m_desk.Messages.ShowMessage("There was an error while displaying results. Error was: " +
                                        FailureInFlight().Description(),
                                    msExclamation);
    }
}

void frmMain::ShowCurrentView() {
    m_toldViews.clear(); // what goes out says so however often the window did
    Refresh(false);
}

void frmMain::Refresh(bool resetPosition) {
    if (m_refreshBusy) {
        return;
    }
    const CMousePointer wait(m_desk.Windows.Cursor, HourglassCursor);
    const BusyScope busy(m_refreshBusy);
    Suspension& document = m_desk.Program.Document;
    ViewSettings& settings = m_desk.Program.Settings;
    if (m_desk.Current.NeedsCalculation()) {
        Calculate();
    }
    TakeResults();
    if (!document.GeometryValid || !document.ResultsValid || !document.DataLoaded) {
        ShowNoView();
    }
    ShowViewPanels();
    ResetPosition(resetPosition);
    DisplayView(settings.View, settings.ViewArgument, settings.ViewVariable, settings.ViewWheel,
                settings.ViewRack);
    UpdateMenus();
    UpdateToolbar();
    DisplayFormCaption();
    DisplayStatus();
    if (frmAdjust* const adjust = AdjustDialog.Opened()) {
        adjust->FollowDocument();
    }
    if (frmCompare* const compare = CompareWindow.Opened()) {
        compare->FollowUnits();
    }
}

void frmMain::Calculate() {
    const Program& program = m_desk.Program;
    m_unprotected = program.Modified && !Files.Recovery.KeepSoon(program);
    m_desk.Current.Calculate();
}

/// Whichever window asked for the calculation, here its outcome is shown.
void frmMain::TakeResults() {
    Program& program = m_desk.Program;
    const CDocument& current = m_desk.Current;
    if (std::exchange(m_runsShown, current.Runs()) == current.Runs()) {
        return;
    }
    const CalculationFailure& failure = current.LastFailure();
    labBanner.Caption = current.Displaced().Banner;
    labFailurePlace.Caption =
        program.Document.ResultsValid
            ? ""
            : DescribeFailure(program.Document, program.Units,
                              PositionWords(failure.WheelStep, failure.RackStep));
    m_toldViews.clear();
    if (program.Settings.View == vwNone) {
        program.Settings.View =
            m_viewBeforeFailure == vwNone ? std::int32_t{vwCoordinates} : m_viewBeforeFailure;
    }
}

/// There are no results to show. A design that fails on the way to another one makes no noise, and
/// its view comes back with the results.
void frmMain::ShowNoView() {
    std::int32_t& view = m_desk.Program.Settings.View;
    if (!m_desk.Current.IsQuiet()) {
        m_viewBeforeFailure = vwNone;
        if (view != vwNone) {
            m_desk.Process.Beep();
        }
    } else if (view != vwNone) {
        m_viewBeforeFailure = view;
    }
    view = vwNone;
}

void frmMain::DocumentChanged(DocumentChange change) {
    if (change == DocumentChange::Beside) {
        RefreshGUI(false);
    } else if (change == DocumentChange::Changed) {
        if (frmEditGeometry* const editor = OpenedEditor()) {
            editor->FollowDocument();
        }
        RefreshGUI(false);
    }
}

/// What is typed and not applied becomes a step of its own before, so that it is not lost.
void frmMain::StepHistory(void (CDocument::*step)()) {
    if (Files.ApplyTyped()) {
        (m_desk.Current.*step)();
    }
}

void frmMain::ResetPosition(bool always) {
    const Suspension& document = m_desk.Program.Document;
    ViewSettings& settings = m_desk.Program.Settings;
    if (always || settings.ViewWheel <= 0 || settings.ViewWheel > document.NW + 1) {
        settings.ViewWheel = document.StaticWheel;
    }
    if (always || settings.ViewRack <= 0 || settings.ViewRack > document.NR + 1) {
        settings.ViewRack = document.StaticRack;
    }
}

void frmMain::cboType_Changed() {
    if (cboType.Text() == m_typeText || cboType.Index() == ListControl::NoSelection) {
        return;
    }
    m_typeText = cboType.Text();
    ViewSettings& settings = m_desk.Program.Settings;
    if (settings.View == vwLinkLoads) {
        settings.ViewArgument = cboType.Index() + 1;
    } else if (settings.View == vwPlot) {
        settings.ViewArgument = cboType.Entry(cboType.Index()).ItemData;
    }
    RefreshGUI(false);
}

void frmMain::cboWheel_Changed() {
    if (cboWheel.Text() == m_wheelText || cboWheel.Index() == ListControl::NoSelection) {
        return;
    }
    m_wheelText = cboWheel.Text();
    ViewSettings& settings = m_desk.Program.Settings;
    if (HasPosition(settings.View)) {
        settings.ViewWheel = cboWheel.Index() + 2;
    }
    RefreshGUI(false);
    Focus = &cboWheel;
}

void frmMain::cboRack_Changed() {
    if (cboRack.Text() == m_rackText || cboRack.Index() == ListControl::NoSelection) {
        return;
    }
    m_rackText = cboRack.Text();
    ViewSettings& settings = m_desk.Program.Settings;
    if (HasPosition(settings.View)) {
        settings.ViewRack = cboRack.Count() - cboRack.Index() + 1;
    }
    RefreshGUI(false);
    Focus = &cboRack;
}

void frmMain::FixTravel(std::int32_t variable) {
    m_desk.Program.Settings.ViewVariable = variable;
    RefreshGUI(false);
}

void frmMain::chk3dDrawAxes_Click() {
    m_desk.Program.Options.DrawAxes = chk3dDrawAxes.Checked;
    RefreshGUI(false);
}

void frmMain::chk3dAutoScale_Click() {
    m_desk.Program.Options.AutoScale = chk3dAutoScale.Checked;
    RefreshGUI(false);
}

bool frmMain::KeyDown(MainKey key, KeyModifiers modifiers, const Control* focus) {
    if (key == MainKey::F1) {
        m_desk.Help.ShowHelpTopic(htMainWindow);
        return true;
    }
    if (key == MainKey::F5) {
        if (modifiers.Shift || modifiers.Alt) {
            return false;
        }
        if (modifiers.Ctrl) {
            m_desk.Program.Document.ResultsValid = false;
            m_desk.Current.ForgetFailure(); // it is to be tried again
        }
        RefreshGUI(modifiers.Ctrl);
        return true;
    }
    if (modifiers.Shift || modifiers.Ctrl || modifiers.Alt || !picComboContainer.Visible) {
        return false;
    }
    const bool alongWheel = key == MainKey::Up || key == MainKey::Down;
    const ListControl& stepped = alongWheel ? cboWheel : cboRack;
    const ListControl& other = alongWheel ? cboRack : cboWheel;
    if (stepped.Visible) {
        Focus = &stepped;
    }
    return focus == &other;
}

void frmMain::Execute(int command, int tag) {
    if (command == mcView) {
        GoToView(tag);
    } else if (!ExecuteFileCommand(command, tag) && !ExecuteExportCommand(command)) {
        ExecuteWindowCommand(command);
    }
}

/// A page of the editor that was left may have made the results stale; what goes out is of the
/// document as it is now.
bool frmMain::ResultsAtHand() {
    if (!m_desk.Program.Document.ResultsValid) {
        RefreshGUI(false);
    }
    return m_desk.Program.Document.ResultsValid;
}

bool frmMain::ExecuteExportCommand(int command) {
    const bool writes = command == mcPrint || command == mcExportComponent ||
                        command == mcExportDXF || command == mcExportResults;
    if (writes && !ResultsAtHand()) {
        return true;
    }
    switch (command) {
    case mcPrint:
        PrintDialog.Open(m_desk, *this);
        return true;
    case mcExportComponent:
        AskAndExportComponent(m_desk, *this);
        return true;
    case mcExportDXF:
        AskAndExportDXF(m_desk, *this);
        return true;
    case mcExportResults:
        ExportDialog.Open(m_desk, *this);
        return true;
    default:
        return false;
    }
}

void frmMain::ExecuteWindowCommand(int command) {
    switch (command) {
    case mcUndo:
        StepHistory(&CDocument::Undo);
        break;
    case mcRedo:
        StepHistory(&CDocument::Redo);
        break;
    case mcCopy:
        CopyGrid();
        break;
    case mcProperties:
        EditGeometry.Raise(m_desk, *this);
        break;
    case mcAdjust:
        OpenAdjustDialog();
        break;
    case mcWorkbench:
        Workbench.Raise(m_desk, *this);
        break;
    case mcWorkbenchHelp:
        m_desk.Help.ShowHelpTopic(htWorkbench);
        break;
    case mcWorkbenchTour:
        Workbench.Raise(m_desk, *this);
        Workbench->BeginTour();
        break;
    case mcOptions:
        OptionsDialog.Open(m_desk, *this);
        break;
    case mcDefineCustomTable:
        CustomChannelsDialog.Open(m_desk, *this);
        break;
    case mcCompare:
        CompareWindow.Raise(m_desk, *this);
        break;
    case mcHelpTopics:
        m_desk.Help.ShowHelpContents();
        break;
    case mcAbout:
        About.ShowAbout(m_desk.Process.Version().Text());
        break;
    default:
        break;
    }
}

void frmMain::GoToView(std::int32_t view) {
    m_desk.Program.Settings.View = view;
    RefreshGUI(false);
}

void frmMain::CopyGrid() {
    if (ItemOf(mnuEdit, mcCopy).Enabled) {
        m_desk.Windows.Board.SetText(grdDisplay.Text());
        Confirm("Table copied");
    }
}

/// What holds as long as the document is as it is stands in front.
void frmMain::Confirm(const std::string& done) {
    DisplayStatus();
    stbMain.Note += (stbMain.Note.empty() ? "" : "   ") + done;
}

frmEditGeometry* frmMain::OpenedEditor() {
    return EditGeometry.Opened();
}

void frmMain::OpenAdjustDialog() {
    if (!ResultsAtHand() || !ItemOf(mnuEdit, mcAdjust).Enabled) {
        return; // the button of the toolbar stays as it is built
    }
    AdjustDialog.Raise(m_desk, *this);
}

void frmMain::EditTarget(int channel, std::int32_t variable) {
    TargetDialog.Open(m_desk, channel, variable);
}

void frmMain::ResetEditDialog() {
    EditGeometry.Close();
    AdjustDialog.Close();
}

bool frmMain::MayDropEdits() {
    const frmEditGeometry* const editor = OpenedEditor();
    return editor == nullptr || !editor->HasUnappliedChanges() ||
           m_desk.Messages.Ask("Suspension Properties holds changes that are not "
                               "applied.\rDiscard them?",
                               {"&Discard"}) == maYes;
}

void frmMain::TakeDownSplash() {
    if (About.IsSplash) {
        About.Close();
        About.IsSplash = false;
    }
}

} // namespace corvanta
