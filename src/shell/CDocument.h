#pragma once

#include "calculation/SCalcs.h"
#include "model/Design.h"
#include "model/History.h"
#include "model/Program.h"
#include "platform/Messages.h"
#include "shell/PointWords.h"
#include "study/StudyFile.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// What happened to the document.
enum class DocumentChange {
    Replaced, ///< another one is there, or none
    Recorded, ///< a window changed it and brings that to the main window itself
    Changed,  ///< it is another design than before
    InMotion, ///< the same, or the position on show is another, while a hand moves something, many
              ///< times a second
    Beside,   ///< baseline, variants, targets or charts are others
};

/// A window that shows the document and is told of its changes.
class DocumentWatcher {
  public:
    DocumentWatcher() = default;
    DocumentWatcher(const DocumentWatcher&) = delete;
    DocumentWatcher& operator=(const DocumentWatcher&) = delete;
    DocumentWatcher(DocumentWatcher&&) = delete;
    DocumentWatcher& operator=(DocumentWatcher&&) = delete;
    virtual ~DocumentWatcher() = default;

    virtual void DocumentChanged(DocumentChange change) = 0;
};

/// The open document as its windows share it: the program's document with its history and its
/// calculation. Every change by any window goes through here, and all windows are told.
class CDocument {
  public:
    CDocument(Program& program, Messages& messages) : m_program(program), m_messages(messages) {}

    void Watch(DocumentWatcher& watcher) { m_watchers.push_back(&watcher); }
    void Unwatch(const DocumentWatcher& watcher);

    /// Another document is in the program, loaded or none; `saved` when its file holds it. The
    /// history begins with it, and a new study, unless it is the same document read `again`.
    void Begin(const std::string& name, bool saved, bool again = false);

    /// A window has changed the document itself. A document that only now came to be begins its
    /// history.
    void Record(const std::string& name);

    /// A window has put the document back to what it was before its step of that name.
    void TakeBack(const std::string& name);

    /// Makes the document another design. In motion, or while a hand holds something, the other
    /// windows follow a little later. Throws Failure for a design without a grid, and changes
    /// nothing then.
    void Change(const std::string& name, const Design& design, bool inMotion = false);

    /// Until `Release`, changes of one name are one step: a hand moves something. `CallOff` goes
    /// back to where the hand began.
    void Hold() { m_history.Hold(); }
    void Release();
    void CallOff();

    /// Tells the windows that don't follow a motion what it has come to, if there was one.
    void CatchUp();

    /// Brings all windows to a position of the grid.
    void ShowPosition(int wheelStep, int rackStep);

    /// Goes to a step of the history; what can't be done does nothing.
    void Undo();
    void Redo();
    void GoTo(std::size_t step);

    /// The document's file holds it now.
    void MarkSaved();

    [[nodiscard]] const History& Steps() const { return m_history; }

    /// What stands beside the document: the baseline, which every document that comes in is its own
    /// until another is set, variants, targets and charts. A window that changes it tells the
    /// others by `ChangeStudy`.
    [[nodiscard]] const StudyData& Study() const { return m_study; }
    void ChangeStudy(StudyData study);

    /// How many studies have begun; opening a file of one is not counted.
    [[nodiscard]] int StudiesBegun() const { return m_studiesBegun; }

    /// What a solve of any design takes from the program.
    [[nodiscard]] SolveSettings Settings() const { return {m_program.Units, m_program.Channels}; }

    /// True when the results are stale and the input is not one that has failed already.
    [[nodiscard]] bool NeedsCalculation() const;

    /// Calculates. A failure of a design that came by `Change` or from the history is not shown in
    /// a box.
    void Calculate();

    /// How often it was calculated.
    [[nodiscard]] int Runs() const { return m_runs; }

    /// The next `Calculate` tries what has failed already again.
    void ForgetFailure() { m_failedOn.reset(); }

    /// Of the last calculation: why and where it failed, and points that it does not find where
    /// they were entered.
    [[nodiscard]] const CalculationFailure& LastFailure() const { return m_failure; }
    [[nodiscard]] const DisplacementWords& Displaced() const { return m_displaced; }

    /// True while failures of the document's design are told by the windows alone, not in a box.
    [[nodiscard]] bool IsQuiet() const { return m_quiet; }

  private:
    void Take(const Design& design);
    void Tell(DocumentChange change);
    void MarkModified();

    Program& m_program;
    Messages& m_messages;
    History m_history;
    StudyData m_study;
    CalculationFailure m_failure;
    DisplacementWords m_displaced;
    std::optional<Design> m_failedOn; ///< what the failure was about
    bool m_quiet = false;
    bool m_inMotion = false; ///< windows that don't follow a motion show what was before it
    int m_runs = 0;
    int m_studiesBegun = 0;
    std::vector<DocumentWatcher*> m_watchers;
};

} // namespace corvanta
