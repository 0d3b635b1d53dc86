#include "shell/CDocument.h"

#include "platform/NoWindowSystem.h"
#include "solver/SInitGeo.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace corvanta {

namespace {

History::Time Now() {
    return std::chrono::steady_clock::now();
}

} // namespace

void CDocument::Unwatch(const DocumentWatcher& watcher) {
    m_watchers.erase(std::remove(m_watchers.begin(), m_watchers.end(), &watcher), m_watchers.end());
}

void CDocument::Tell(DocumentChange change) {
    MarkModified();
    if (change == DocumentChange::InMotion) {
        m_inMotion = true;
    } else if (change == DocumentChange::Changed || change == DocumentChange::Replaced) {
        m_inMotion = false;
    }
    for (DocumentWatcher* const watcher : std::vector(m_watchers)) {
        watcher->DocumentChanged(change);
    }
}

void CDocument::MarkModified() {
    m_program.Modified = !m_history.IsClean();
}

void CDocument::Begin(const std::string& name, bool saved, bool again) {
    const bool ownBaseline = !m_study.Baseline || m_history.IsEmpty() ||
                             *m_study.Baseline == m_history.Steps().front().Design;
    m_history.Clear();
    if (!again) {
        StudyData study;
        study.Charts = std::move(m_study.Charts); // the user's choice, whatever is open
        m_study = std::move(study);
        ++m_studiesBegun;
    }
    m_failedOn.reset(); // another document, which the user was told nothing about yet
    m_quiet = false;
    if (m_program.Document.DataLoaded) {
        m_history.Begin(name, DesignOf(m_program.Document), saved);
        if (!again || ownBaseline) {
            m_study.Baseline = m_history.CurrentDesign();
        }
    }
    Tell(DocumentChange::Replaced);
}

void CDocument::Record(const std::string& name) {
    m_quiet = false;
    if (!m_program.Document.DataLoaded) {
        m_program.Modified = true; // typed, but no document yet
        return;
    }
    if (m_history.IsEmpty()) {
        Begin(name, false, true);
        return;
    }
    if (m_history.Add(name, DesignOf(m_program.Document), Now())) {
        Tell(DocumentChange::Recorded);
    }
}

void CDocument::TakeBack(const std::string& name) {
    const Design design = DesignOf(m_program.Document);
    if (m_history.UndoName() == name &&
        m_history.Steps()[m_history.Current() - 1].Design == design) {
        m_history.Withdraw();
        Tell(DocumentChange::Recorded);
    } else {
        Record(name);
    }
}

void CDocument::Take(const Design& design) {
    m_quiet = true;
    SetDesign(m_program.Document, design, m_program.Units);
    m_program.Channels.SetFrontRearTitles(IsFrontCorner(m_program.Document));
}

void CDocument::Change(const std::string& name, const Design& design, bool inMotion) {
    Take(design);
    if (m_history.Add(name, DesignOf(m_program.Document), Now())) {
        Tell(inMotion || m_history.IsHeld() ? DocumentChange::InMotion : DocumentChange::Changed);
    }
}

void CDocument::Release() {
    if (m_history.IsHeld()) {
        m_history.Release();
        Tell(DocumentChange::Changed);
    }
}

void CDocument::CallOff() {
    if (m_history.IsHeld()) {
        const Design reached = m_history.CurrentDesign();
        m_history.CallOff();
        if (m_history.CurrentDesign() != reached) {
            Take(m_history.CurrentDesign());
        }
        Tell(DocumentChange::Changed);
    }
}

void CDocument::CatchUp() {
    if (m_inMotion) {
        Tell(DocumentChange::Changed);
    }
}

void CDocument::ShowPosition(int wheelStep, int rackStep) {
    ViewSettings& settings = m_program.Settings;
    if (settings.ViewWheel != wheelStep || settings.ViewRack != rackStep) {
        settings.ViewWheel = wheelStep;
        settings.ViewRack = rackStep;
        Tell(DocumentChange::InMotion);
    }
}

void CDocument::Undo() {
    if (m_history.CanUndo()) {
        GoTo(m_history.Current() - 1);
    }
}

void CDocument::Redo() {
    if (m_history.CanRedo()) {
        GoTo(m_history.Current() + 1);
    }
}

void CDocument::GoTo(std::size_t step) {
    if (step >= m_history.Steps().size() || step == m_history.Current() || m_history.IsHeld()) {
        return;
    }
    Take(m_history.Steps()[step].Design);
    m_history.GoTo(step);
    Tell(DocumentChange::Changed);
}

void CDocument::ChangeStudy(StudyData study) {
    m_study = std::move(study);
    Tell(DocumentChange::Beside);
}

void CDocument::MarkSaved() {
    m_history.MarkSaved();
    MarkModified();
}

bool CDocument::NeedsCalculation() const {
    const Suspension& document = m_program.Document;
    return document.DataLoaded && !document.ResultsValid &&
           !(m_failedOn && *m_failedOn == DesignOf(document));
}

void CDocument::Calculate() {
    Suspension& document = m_program.Document;
    NoMessageBox box;
    Messages silent(box);
    m_failure = RunCalculation(document, m_program.Channels, m_quiet ? silent : m_messages);
    ++m_runs;
    const bool solved = document.ResultsValid;
    m_displaced = solved ? DescribeDisplacement(document, m_program.Units) : DisplacementWords{};
    m_failedOn = solved ? std::nullopt : std::optional(DesignOf(document));
}

} // namespace corvanta
