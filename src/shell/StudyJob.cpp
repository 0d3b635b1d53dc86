#include "shell/StudyJob.h"

#include <utility>

namespace corvanta {

StudyWork PartOf(const StudyWork& work, double from, double to) {
    return {work.Threads, work.Stop, [told = work.Progress, from, to](double share) {
                if (told) {
                    told(from + share * (to - from));
                }
            }};
}

void CStudyJob::Start(Work work) {
    m_show = m_interim = {};
    m_thrown = {};
    m_share = 0;
    m_ended = false;
    m_thread = std::jthread([this, work = std::move(work)](const std::stop_token& stop) {
        try {
            m_show = work({0, stop, [this](double share) { m_share = share; }}, [this](Show show) {
                const std::scoped_lock lock(m_guard);
                m_interim = std::move(show);
            });
        } catch (...) {
            m_thrown = std::current_exception();
        }
        m_ended = true; // what was written before is seen by whoever reads this
    });
}

std::optional<CStudyJob::Show> CStudyJob::TakeOutcome() {
    if (!m_ended) {
        const std::scoped_lock lock(m_guard);
        Show interim = std::exchange(m_interim, {});
        return interim ? std::optional(std::move(interim)) : std::nullopt;
    }
    m_thread.join();
    m_ended = false;
    if (m_thrown) {
        std::rethrow_exception(std::exchange(m_thrown, {}));
    }
    return std::exchange(m_show, {});
}

} // namespace corvanta
