#include "shell/MLibHelp.h"

#include "model/Failure.h"

namespace corvanta {

namespace {

/// Help that can't be shown must never stop the work that it should help with.
template <typename Show>
void IgnoreFailure(const Show& show) {
    try {
        show();
    } catch (...) {
        static_cast<void>(FailureInFlight()); // only a failure of the program itself is ignored
    }
}

} // namespace

void MLibHelp::ShowHelpContents() {
    IgnoreFailure([&] { m_viewer.ShowContents(m_path); });
}

void MLibHelp::ShowHelpTopic(int topic) {
    IgnoreFailure([&] { m_viewer.ShowTopic(m_path, topic); });
}

} // namespace corvanta
