#include "study/StudyWork.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>

namespace corvanta {

namespace {

/// What the threads of a run share.
struct SharedRun {
    const std::size_t Count;
    const std::function<void(std::size_t, Suspension&)>& Sample;
    const StudyWork& Work;
    const double FromShare;
    const double ToShare;
    std::atomic<std::size_t> Next{0};
    std::atomic<bool> Ended{false}; ///< before all samples were taken
    std::mutex Guard{};
    std::size_t Done = 0;
    std::exception_ptr Thrown{};
};

void TellProgress(SharedRun& run) {
    const std::scoped_lock lock(run.Guard);
    ++run.Done;
    if (run.Work.Progress) {
        const double share = static_cast<double>(run.Done) / static_cast<double>(run.Count);
        run.Work.Progress(run.FromShare + share * (run.ToShare - run.FromShare));
    }
}

void WorkOn(SharedRun& run, Suspension& scratch) {
    try {
        for (;;) {
            if (run.Work.Stop.stop_requested()) {
                run.Ended = true;
            }
            const std::size_t sample = run.Ended ? run.Count : run.Next++;
            if (sample >= run.Count) {
                return;
            }
            run.Sample(sample, scratch);
            TellProgress(run);
        }
    } catch (...) {
        const std::scoped_lock lock(run.Guard);
        run.Thrown = std::current_exception();
        run.Ended = true;
    }
}

} // namespace

CSampleRunner::CSampleRunner(const StudyWork& work) : m_work(work) {
    constexpr unsigned MostThreads = 1024; // each has a document of its own
    const unsigned threads = work.Threads != 0 ? std::min(work.Threads, MostThreads)
                                               : std::max(1U, std::thread::hardware_concurrency());
    for (unsigned n = 0; n < threads; ++n) {
        m_scratches.push_back(std::make_unique<Suspension>());
    }
}

bool CSampleRunner::Run(std::size_t count,
                        const std::function<void(std::size_t, Suspension&)>& sample) {
    return Run(count, sample, 0, 1);
}

bool CSampleRunner::Run(std::size_t count,
                        const std::function<void(std::size_t, Suspension&)>& sample,
                        double fromShare, double toShare) {
    SharedRun run{count, sample, m_work, fromShare, toShare};
    OnEveryThread([&](Suspension& scratch) { WorkOn(run, scratch); }, count);
    if (run.Thrown) {
        std::rethrow_exception(run.Thrown);
    }
    return !run.Ended;
}

void CSampleRunner::OnEveryThread(const std::function<void(Suspension&)>& work, std::size_t most) {
    std::vector<std::jthread> threads;
    for (std::size_t n = 1; n < std::min(m_scratches.size(), most); ++n) {
        threads.emplace_back([&work, &scratch = *m_scratches[n]] { work(scratch); });
    }
    work(*m_scratches.front());
}

} // namespace corvanta
