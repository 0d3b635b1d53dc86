#pragma once

#include "python/Module.h"
#include "study/StudyWork.h"

#include <chrono>
#include <exception>
#include <stop_token>

namespace corvanta {

/// The work of a study that Python asked for: others run meanwhile, the caller's `progress` is told
/// the share done now and then, and it stops when that returns False or raises, or at Ctrl+C.
class CPythonWork {
  public:
    CPythonWork(unsigned threads, py::object progress)
        : m_threads(threads),
          m_progress(std::move(progress)) {}

    /// Calls `study` with a runner. Raises what `progress` raised.
    template <typename Study>
    auto Run(Study study) {
        try {
            const py::gil_scoped_release others;
            CSampleRunner runner(
                {m_threads, m_stop.get_token(), [&](double share) { Tell(share); }});
            auto answer = study(runner);
            if (!m_raised) {
                return answer;
            }
        } catch (...) {
            if (!m_raised) {
                throw;
            }
        }
        std::rethrow_exception(m_raised);
    }

  private:
    using Clock = std::chrono::steady_clock;

    void Tell(double share);

    unsigned m_threads;
    py::object m_progress;
    std::stop_source m_stop;
    std::exception_ptr m_raised;
    Clock::time_point m_told = Clock::now();
};

} // namespace corvanta
