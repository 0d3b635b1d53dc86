#pragma once

#include "platform/Controls.h"
#include "shell/CornerPanel.h"
#include "shell/Desk.h"
#include "shell/ShellHost.h"
#include "shell/StudyPanels.h"
#include "shell/WorkbenchCharts.h"
#include "shell/WorkbenchPoints.h"
#include "shell/WorkbenchTour.h"
#include "study/DesignResults.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// One travel as a slider has it: positions of the grid, counted from the lowest travel.
struct TravelSlider : Control {
    int Last = 0; ///< the highest; the lowest is 0
    int Value = 0;
    int Static = 0;
};

/// What moves while the travel plays.
enum class PlayMode { None, Heave, Steer, Both };

/// A step of the history as the window lists it.
struct ListedStep {
    std::string Name;
    bool IsUndone = false; ///< it can be done again

    friend bool operator==(const ListedStep&, const ListedStep&) = default;
};

/// A variant as the window lists it.
struct ListedVariant {
    std::string Name;
    std::string Note;
    Colour Drawn;
    bool Ticked = false;

    friend bool operator==(const ListedVariant&, const ListedVariant&) = default;
};

/// The workbench: one window in which a corner is tuned, with every consequence of a change in
/// sight while the hand still moves. It works on the open document beside the other windows; what
/// it changes are steps of the document's history.
///
/// A design that can't be solved blocks nothing: the last good curves stay, faded, and the head
/// says what fails and where.
class frmWorkbench final : public Window, private DocumentWatcher, private StudyHost {
  public:
    static constexpr int MostCharts = 9;

    frmWorkbench(Desk& desk, ShellHost& main);
    frmWorkbench(const frmWorkbench&) = delete;
    frmWorkbench& operator=(const frmWorkbench&) = delete;
    frmWorkbench(frmWorkbench&&) = delete;
    frmWorkbench& operator=(frmWorkbench&&) = delete;
    ~frmWorkbench() override;

    void Open();

    /// Remembers the place and the charts, and closes the window.
    void Close();

    /// Brings what is shown up to date, if anything has changed. Events leave that to the window
    /// system, which asks for it once before it paints, so that nothing queues up behind a hand.
    void Update();

    // The points.
    WorkbenchPoints Points;
    void Points_Changed() { m_stale = true; }

    // The charts.
    [[nodiscard]] const std::vector<ChartSheet>& Sheets() const { return m_charts.Sheets(); }
    [[nodiscard]] const std::vector<StudyChart>& Charts() const;
    void SetChart(std::size_t n, const StudyChart& chart);

    /// 1 to `MostCharts`; what is added are channels that no chart shows yet.
    void SetChartCount(std::size_t count);

    /// The pointer is at a place of a chart, or at none.
    void Chart_Hovered(std::size_t n, std::optional<ChartPoint> place);

    /// A click or drag in a chart brings all windows to its travel.
    void Chart_TravelMoved(std::size_t n, const ChartPoint& place, bool held);

    /// A chart was clicked or has the keyboard: the studies that ask about one chart ask about it.
    void Chart_TakenInHand(std::size_t n);

    // The corner.
    CornerPanel Corner;

    // The travel.
    TravelSlider sldBump, sldRack;
    NumberBox txtBump, txtRack;
    void sldBump_Moved(int value);
    void sldRack_Moved(int value);
    void txtTravel_Changed(NumberBox& box) const; ///< after each keystroke
    void txtTravel_LostFocus(NumberBox& box);     ///< typing has ended

    void Play(PlayMode mode);
    void StopPlay() { m_play = PlayMode::None; }
    [[nodiscard]] PlayMode Playing() const { return m_play; }

    /// Time has passed while it plays, seconds.
    void PlayOn(double seconds);

    // History and variants.
    std::vector<ListedStep> Steps;
    int CurrentStep = 0;
    void GoToStep(std::size_t step);
    void Undo();
    void Redo();

    std::vector<ListedVariant> Variants;
    void SetBaseline();
    void KeepVariant();
    void RestoreVariant(std::size_t n);
    void DeleteVariant(std::size_t n);
    void TickVariant(std::size_t n, bool ticked);

    /// False, with the reason in the head, for a name that can't be one.
    bool RenameVariant(std::size_t n, const std::string& name);
    void SetVariantNote(std::size_t n, const std::string& note);

    /// What fails and where, or what became of the last typing; empty when all is well.
    Control labHead;

    // The studies, below the charts while one of them is in sight; they end the tour.
    CStudyPanels Studies;
    void ShowStudy(std::optional<std::size_t> n);

    /// Shows the studies as they were last, or none.
    void ToggleStudies();

    /// Begins the study in sight.
    void RunStudy() const;

    /// Help on the study in sight, or on the workbench.
    void cmdHelp_Click();

    /// Takes what came out of the studies meanwhile; true when there is something to show.
    bool PollStudies();

    /// Asks for a file and writes the report of the study in sight.
    void ReportStudy();

    /// What to do while no document is open; nothing else of the window is visible then.
    Control panEmpty;

    CWorkbenchTour Tour;

    /// Shows the tour anew; the studies, which lie where its bubble does, make room.
    void BeginTour();

    Control cmdUndo, cmdRedo, cmdSetBaseline, cmdKeepVariant, cmdStudies;

    /// How the window system has divided the window; kept as it is.
    std::string Panels;

  private:
    struct Cached {
        corvanta::Design Design;
        std::vector<StudyChart> Charts;
        TravelPlace Place;
        std::string LengthUnit;
        DesignResults Results;
    };

    void DocumentChanged(DocumentChange change) override;

    // What the studies need.
    [[nodiscard]] std::vector<PointCoordinate> SelectedCoordinates() const override;
    void SelectCoordinate(const PointCoordinate& coordinate) override;
    [[nodiscard]] std::size_t ChartInHand() const override { return m_chartInHand; }
    std::string KeepAsVariant(const std::string& name, const std::string& note,
                              const Design& design) override;

    void Evaluate();
    [[nodiscard]] bool IsUpToDate(const std::optional<Cached>& cached, const Design& design,
                                  const std::vector<StudyChart>& charts) const;
    void Renew(std::optional<Cached>& cached, Suspension& scratch, const Design& design,
               const std::vector<StudyChart>& charts);
    void EvaluateBeside();
    [[nodiscard]] std::vector<BesideResults> Beside() const;
    void ComposeCharts();
    void ShowCorner();
    void ShowTravel();
    void ShowLists();
    void ShowHead();
    [[nodiscard]] std::string FailureWords() const;
    [[nodiscard]] TravelPlace Place() const;
    void MoveTo(const TravelPlace& place);
    void MovePoint(PointNumber number, const SuspPoint& place);
    void ChangeVariants(const std::vector<Variant>& variants);

    Desk& m_desk;
    ShellHost& m_main;
    WorkbenchCharts m_charts;
    Suspension m_scratch;       ///< for the design in hand
    Suspension m_besideScratch; ///< for all others
    std::optional<Cached> m_now;
    std::optional<Cached> m_good; ///< the last one that could be solved
    std::optional<Cached> m_baseline;
    std::vector<std::optional<Cached>> m_variants;
    std::optional<TravelPlace> m_hover;
    std::size_t m_chartInHand = 0;
    std::size_t m_lastStudy = 0; ///< that was in sight
    std::string m_shownUnit;
    PlayMode m_play = PlayMode::None;
    double m_phase = 0;  ///< of playing, in full turns
    bool m_held = false; ///< a hand moves the cursor
    bool m_fitCorner = false;
    bool m_stale = true;
};

} // namespace corvanta
