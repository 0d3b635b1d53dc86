#pragma once

#include "platform/DrawingSurface.h"
#include "results/CWireframe.h"
#include "results/MDisplayPlot.h"
#include "shell/Desk.h"
#include "shell/DocumentFiles.h"
#include "shell/MainControls.h"
#include "shell/MainWindows.h"
#include "shell/MechanismExample.h"
#include "shell/PointWords.h"
#include "shell/ShellHost.h"
#include "shell/StudyFiles.h"
#include "shell/ViewMemory.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace corvanta {

/// Keys that the main window takes before its controls see them.
enum class MainKey { F1, F5, Up, Down, Left, Right };

struct KeyModifiers {
    bool Shift = false;
    bool Ctrl = false;
    bool Alt = false;
};

/// The main window, without a window system: it decides when to calculate and what to show, and
/// owns the file commands, the menus and the windows that open from it.
class frmMain final : public ShellHost,
                      public MainControls,
                      public MainWindows,
                      public Window,
                      private DocumentWatcher {
  public:
    explicit frmMain(Desk& desk);
    frmMain(const frmMain&) = delete;
    frmMain& operator=(const frmMain&) = delete;
    frmMain(frmMain&&) = delete;
    frmMain& operator=(frmMain&&) = delete;
    ~frmMain() override;

    /// Loading of the window: the recent files with their entries.
    void Load();

    /// Lets the first document that is opened come up in the view of the last start; `KeepView`
    /// writes the one that is shown into the store.
    void RestoreView() { m_viewToCome = ReadView(*m_desk.Store); }
    void KeepView();

    /// Creates the toolbar once.
    void BuildToolbar() { tbrMain = MainToolbar(); }

    /// Every event ends here: calculates if results are stale, and shows the current view. A
    /// failure is reported, and the next event works.
    void RefreshGUI(bool resetPosition) override;

    void ShowCurrentView() override;

    [[nodiscard]] const DataGrid& Grid() const override { return grdDisplay; }
    [[nodiscard]] const std::string& ReportText() const override { return picResults.Text; }
    [[nodiscard]] const Chart2D* Chart() const override { return chtSurface; }

    /// Shows the parts of the result area and the selection strip that the view has.
    void ShowViewPanels();

    void DisplayView(std::int32_t view, std::int32_t viewArgument, std::int32_t variable, int wheel,
                     int rack) override;

    /// Rebuilds the selection strip for a view: what of it is shown, the entries of its lists and
    /// their selection.
    void SetupViewControls(std::int32_t view, std::int32_t viewArgument, std::int32_t variable,
                           int wheel, int rack);

    void UpdateMenus();
    void UpdateToolbar();
    void DisplayFormCaption();

    // Events. The window system has put the new choice into the control before.
    void cboType_Changed();
    void cboWheel_Changed();
    void cboRack_Changed();
    void optRack_Click() { FixTravel(vvAlongRackTravel); }
    void optWheel_Click() { FixTravel(vvAlongWheelTravel); }
    void chk3dDrawAxes_Click();
    void chk3dAutoScale_Click();

    /// A key, before the controls see it; true when it goes no further. `focus` is the control that
    /// has the keyboard focus. Arrows with a modifier are left to the controls.
    bool KeyDown(MainKey key, KeyModifiers modifiers, const Control* focus);

    /// The command of a menu entry or of a button.
    void Execute(int command, int tag);
    void Execute(const MenuItem& item) { Execute(item.Command, item.Tag); }

    /// The size of the window changed.
    void Resized() { RefreshGUI(false); }

    /// A click on the splash window, the end of its time, or a message.
    void TakeDownSplash();

    /// Asks what to do with unsaved changes. False when the window must stay open.
    [[nodiscard]] bool QueryUnload();

    /// Unloading of the window: the list of recent files goes to the store.
    void Unload();

    /// The window became the active one: offers to read a document again that another program
    /// has changed.
    void Activated() { ShowOutcome(Files.OfferReload()); }

    /// Opens a document in the place of the current one, and calculates; see `DocumentFiles`.
    void FileOpen(const std::string& path) { ShowOutcome(Files.Open(path)); }

    /// The same, for a file that the user chose: a sample becomes an untitled copy, and a study
    /// brings its document.
    void OpenFile(const std::string& path);

    /// Opens a study with its document, and the workbench on both.
    void OpenStudy(const std::string& path);

    /// Saves the document under a name; see `DocumentFiles::SaveTo`.
    void FileSave(const std::string& path) { ShowOutcome(Files.SaveTo(path)); }

    bool GetFileName(FileNameMode mode, const std::string& filter, const std::string& startFolder,
                     ChosenFile& chosen, bool quietOnError) override;

    void Confirm(const std::string& done) override;

    void ResetEditDialog() override;
    bool MayDropEdits() override;
    bool MayDropStudy() override { return Studies.MayGo(); }
    bool TakeTypedEdits() override { return Files.ApplyTyped(); }

    [[nodiscard]] frmEditGeometry* OpenedEditor() override;

    /// Opens the list of unsaved work, if there is any. Asked for by the user it says so when there
    /// is none.
    void OfferRecovery(bool asked = false);

    /// Opens the dialog for the target of a channel along wheel or rack travel.
    void EditTarget(int channel, std::int32_t variable);

    /// Asks for one of the samples and opens it.
    void OpenSample() { ShowOutcome(Files.AskAndOpenSample()); }

    /// The samples that the start page shows.
    [[nodiscard]] std::vector<SampleCard> Samples() const;

    /// The files of the document.
    DocumentFiles Files;

    /// The study beside the document and its file.
    StudyFiles Studies;

    /// What view 15 is drawn on, none without a window system. It outlives its use here.
    DrawingSurface* picSurface = nullptr;

    /// The chart of view 14, none without a window system.
    Chart2D* chtSurface = nullptr;

    /// A click on the chart, twips from its top left corner.
    void chtChart_Click(double x, double y);

    /// The drawing of view 15, whose free view the user may turn and zoom; `DrawAgain` shows it.
    CWireframe Wireframe;
    void DrawAgain();

  private:
    void Refresh(bool resetPosition);
    void Calculate();
    void DocumentChanged(DocumentChange change) override;
    void StepHistory(void (CDocument::*step)());
    void TakeResults();
    void ShowNoView();
    void ResetPosition(bool always);
    void FillResultArea(std::int32_t view, std::int32_t viewArgument, std::int32_t variable,
                        int wheel, int rack);
    void ShowPlot(std::int32_t viewArgument, std::int32_t variable, int wheel, int rack);
    void MarkStaticRow(std::int32_t view, std::int32_t variable);
    void FillPositionLists();
    void FillTypeList(std::int32_t view);
    void ShowSelectionControls(std::int32_t view, std::int32_t variable);
    void SelectPositions(std::int32_t view, std::int32_t viewArgument, int wheel, int rack);
    [[nodiscard]] std::int32_t ShownView() const;
    [[nodiscard]] std::string PositionWords(int wheelStep, int rackStep) const;
    [[nodiscard]] std::string FailureNote() const;
    void DisplayStatus();
    void FixTravel(std::int32_t variable);
    void GoToView(std::int32_t view);
    bool ExecuteFileCommand(int command, int tag);
    bool ResultsAtHand();
    bool ExecuteExportCommand(int command);
    void ExecuteWindowCommand(int command);
    void New();
    void ShowOutcome(FileOutcome outcome);
    void TakeRememberedView();
    void OpenAdjustDialog();
    void CopyGrid();
    void ShowNoDocument();
    void TellNothingToShow(std::int32_t view, const std::string& words);

    Desk& m_desk;
    PlotState m_plot;
    std::unique_ptr<Suspension> m_compared;    ///< where designs beside the document are solved for
                                               ///< the plot, while that is on show
    int m_runsShown = 0;                       ///< calculations up to the one on show
    std::int32_t m_viewBeforeFailure = vwNone; ///< that comes back when a design is one again
    std::set<std::int32_t> m_toldViews;        ///< views of these results that said they are empty
    std::string m_typeText;                    ///< the texts last selected in the three lists
    std::string m_wheelText;
    std::string m_rackText;
    std::optional<RememberedView> m_viewToCome; ///< of the last start, until a document is shown
    std::int32_t m_viewLastDisplayed = vwNone;
    std::int32_t m_channelLastPlotted = 0;
    bool m_unprotected = false; ///< no copy of the unsaved work could be kept
    bool m_linkLoadsWarned = false;
    bool m_refreshBusy = false;
};

} // namespace corvanta
