#pragma once

#include "model/Design.h"

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// One step of the work on a document.
struct HistoryStep {
    std::string Name; ///< of what made it: "Move Trackrod inboard pickup Z"
    corvanta::Design Design;
};

/// The designs of a document since it was opened, each with the name of the step that made it, and
/// which of them the document is at. Steps behind that one can be done again until another change
/// takes their place. The oldest go when there are more than `MostSteps`, or when their texts make
/// them more than `MostBytes`.
class History {
  public:
    using Time = std::chrono::steady_clock::time_point;

    static constexpr std::size_t MostSteps = 2000;
    static constexpr std::size_t MostBytes = 16U << 20U;

    /// Changes of one name follow each other within this time to be one step.
    static constexpr std::chrono::seconds MergeTime{1};

    /// No step, and nothing saved: there is no document.
    void Clear() { *this = History(); }

    /// A document comes in, as its file has it or not.
    void Begin(std::string name, Design design, bool saved);

    /// A change made the document what `design` is. It joins the last step when that has its name
    /// and is held, or is no older than `MergeTime` and was not saved meanwhile. A step that comes
    /// back to the design before it is none. True when the design is another one than before.
    bool Add(std::string name, Design design, Time at);

    /// From the next change to `Release`, changes of one name are one step however long they take:
    /// a hand moves something.
    void Hold();
    void Release();

    /// As `Release`, but what was changed since `Hold` is taken back; what was undone before can
    /// be done again.
    void CallOff();
    [[nodiscard]] bool IsHeld() const { return m_held != Held::No; }

    [[nodiscard]] bool CanUndo() const { return m_current > 0; }
    [[nodiscard]] bool CanRedo() const { return m_current + 1 < m_steps.size(); }

    /// Name of the step that would be undone or done again, empty when there is none.
    [[nodiscard]] std::string UndoName() const;
    [[nodiscard]] std::string RedoName() const;

    /// Goes to a step, 0 the oldest that is kept. It must be there.
    void GoTo(std::size_t step);
    void Undo() { GoTo(m_current - 1); }
    void Redo() { GoTo(m_current + 1); }

    /// Takes the last step back for good, for a change that was called off.
    void Withdraw();

    [[nodiscard]] bool IsEmpty() const { return m_steps.empty(); }
    [[nodiscard]] const std::vector<HistoryStep>& Steps() const { return m_steps; }
    [[nodiscard]] std::size_t Current() const { return m_current; }

    /// The design that the document is at; there must be one.
    [[nodiscard]] const Design& CurrentDesign() const { return m_steps[m_current].Design; }

    /// The document's file holds the current design.
    void MarkSaved();

    /// True while the current design is the one that the file holds, and while there is none.
    [[nodiscard]] bool IsClean() const { return m_clean; }

  private:
    enum class Held { No, Waiting, Joining };

    [[nodiscard]] bool Joins(const std::string& name, Time at) const;
    void WithdrawHeld();
    void Trim();
    void Recheck();

    std::vector<HistoryStep> m_steps;
    std::vector<HistoryStep> m_setAside; ///< undone steps that the held change has replaced
    std::size_t m_current = 0;
    std::optional<Design> m_saved; ///< what the file holds, as far as that is known
    Time m_lastChange;
    bool m_open = false; ///< the last change may still be joined
    bool m_clean = true;
    Held m_held = Held::No;
};

} // namespace corvanta
