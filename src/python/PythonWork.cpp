#include "python/PythonWork.h"

namespace corvanta {

namespace {

/// How often Python is asked: its one lock would hold up the threads otherwise.
constexpr std::chrono::milliseconds TellingInterval(50);

} // namespace

void CPythonWork::Tell(double share) {
    const Clock::time_point now = Clock::now();
    if (m_raised || (now - m_told < TellingInterval && share < 1)) {
        return;
    }
    m_told = now;
    const py::gil_scoped_acquire locked;
    try {
        if (PyErr_CheckSignals() != 0) { // sees them on the main thread alone
            throw py::error_already_set();
        }
        if (!m_progress.is_none() && m_progress(share).is(py::bool_(false))) {
            m_stop.request_stop();
        }
    } catch (...) {
        m_raised = std::current_exception();
        m_stop.request_stop();
    }
}

} // namespace corvanta
