#include "model/History.h"

#include <cassert>
#include <iterator>
#include <numeric>
#include <utility>

namespace corvanta {

namespace {

std::size_t SizeOf(const HistoryStep& step) {
    return sizeof step + step.Name.capacity() + step.Design.Data.Description.capacity();
}

} // namespace

void History::Begin(std::string name, Design design, bool saved) {
    Clear();
    if (saved) {
        m_saved = design;
    }
    m_steps.push_back({std::move(name), std::move(design)});
    Recheck();
}

bool History::Joins(const std::string& name, Time at) const {
    if (!m_open || CanRedo() || m_current == 0 || m_steps[m_current].Name != name) {
        return false;
    }
    return m_held == Held::Joining || (m_held == Held::No && at - m_lastChange <= MergeTime);
}

bool History::Add(std::string name, Design design, Time at) {
    assert(!IsEmpty());
    if (design == CurrentDesign()) {
        return false;
    }
    if (Joins(name, at)) {
        m_steps[m_current].Design = std::move(design);
        // A hand that comes back to where it began may move on.
        if (m_held == Held::No && m_steps[m_current].Design == m_steps[m_current - 1].Design) {
            m_steps.pop_back();
            --m_current;
            m_open = false;
        }
    } else {
        const auto undone = m_steps.begin() + static_cast<std::ptrdiff_t>(m_current) + 1;
        if (m_held == Held::Waiting) {
            m_setAside.assign(std::make_move_iterator(undone),
                              std::make_move_iterator(m_steps.end()));
        }
        m_steps.erase(undone, m_steps.end());
        m_steps.push_back({std::move(name), std::move(design)});
        ++m_current;
        m_open = true;
        Trim();
    }
    m_held = m_held == Held::No ? Held::No : Held::Joining;
    m_lastChange = at;
    Recheck();
    return true;
}

void History::Hold() {
    m_held = Held::Waiting;
}

void History::Release() {
    const bool joined = std::exchange(m_held, Held::No) == Held::Joining;
    if (!joined) {
        return;
    }
    m_open = false;
    if (CanUndo() && !CanRedo() && CurrentDesign() == m_steps[m_current - 1].Design) {
        WithdrawHeld();
    }
    m_setAside.clear();
}

void History::CallOff() {
    if (std::exchange(m_held, Held::No) == Held::Joining) {
        WithdrawHeld();
    }
    m_setAside.clear();
}

/// Nothing was changed after all, so what was undone before can be done again.
void History::WithdrawHeld() {
    Withdraw();
    m_steps.insert(m_steps.end(), std::make_move_iterator(m_setAside.begin()),
                   std::make_move_iterator(m_setAside.end()));
}

std::string History::UndoName() const {
    return CanUndo() ? m_steps[m_current].Name : std::string();
}

std::string History::RedoName() const {
    return CanRedo() ? m_steps[m_current + 1].Name : std::string();
}

void History::GoTo(std::size_t step) {
    assert(step < m_steps.size());
    m_current = step;
    m_open = false;
    Recheck();
}

void History::Withdraw() {
    assert(CanUndo());
    m_steps.resize(m_current);
    --m_current;
    m_open = false;
    Recheck();
}

void History::MarkSaved() {
    if (!IsEmpty()) {
        m_saved = CurrentDesign();
    }
    m_open = false;
    Recheck();
}

void History::Trim() {
    std::size_t bytes = std::accumulate(
        m_steps.begin(), m_steps.end(), std::size_t{0},
        [](std::size_t sum, const HistoryStep& step) { return sum + SizeOf(step); });
    std::size_t surplus = 0; // the current design and the one before it stay
    while (surplus + 2 < m_steps.size() &&
           (m_steps.size() - surplus > MostSteps || bytes > MostBytes)) {
        bytes -= SizeOf(m_steps[surplus]);
        ++surplus;
    }
    m_steps.erase(m_steps.begin(), m_steps.begin() + static_cast<std::ptrdiff_t>(surplus));
    m_current -= surplus;
}

void History::Recheck() {
    m_clean = IsEmpty() || (m_saved && *m_saved == CurrentDesign());
}

} // namespace corvanta
