#pragma once

#include "model/Suspension.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <stop_token>
#include <vector>

namespace corvanta {

/// How a study goes about its work. What it finds does not depend on it.
struct StudyWork {
    unsigned Threads = 0; ///< 0 for as many as the machine has
    std::stop_token Stop{};

    /// Told how much is done, from 0 to 1 and never less than before; from any thread, but one call
    /// at a time.
    std::function<void(double share)> Progress{};
};

/// Works on the samples of a study with several threads, each on a scratch document of its own that
/// it keeps from one sample to the next.
class CSampleRunner {
  public:
    explicit CSampleRunner(const StudyWork& work);

    /// Calls `sample(n, scratch)` once for each n below `count`, at the same time from several
    /// threads; what it gives must depend on n alone and go to a place of its own. False when the
    /// work was stopped; some samples are left out then. What a sample throws ends the run and is
    /// thrown on.
    bool Run(std::size_t count, const std::function<void(std::size_t, Suspension&)>& sample);

    /// The same, and what of the study's progress the run stands for.
    bool Run(std::size_t count, const std::function<void(std::size_t, Suspension&)>& sample,
             double fromShare, double toShare);

    /// Calls `work`, which throws nothing, on all threads at the same time, `most` at most, each
    /// with its scratch document.
    void OnEveryThread(const std::function<void(Suspension&)>& work, std::size_t most = SIZE_MAX);

    /// A scratch document for work that is not shared out.
    [[nodiscard]] Suspension& Scratch() { return *m_scratches.front(); }

    [[nodiscard]] const StudyWork& Work() const { return m_work; }

  private:
    StudyWork m_work;
    std::vector<std::unique_ptr<Suspension>> m_scratches; ///< one for each thread
};

} // namespace corvanta
