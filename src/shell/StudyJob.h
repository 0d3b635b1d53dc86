#pragma once

#include "calculation/SCalcs.h"
#include "model/Program.h"
#include "study/StudyWork.h"

#include <atomic>
#include <exception>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

namespace corvanta {

/// What a study takes from the program, its own, as it works beside windows that may change them.
struct StudySettings {
    explicit StudySettings(const Program& program)
        : Units(program.Units),
          Channels(program.Channels) {}

    [[nodiscard]] SolveSettings Settings() const { return {Units, Channels}; }

    FundamentalUnits Units;
    ChannelCatalogue Channels;
};

/// A part of a work: what it tells of its progress runs from one share to another.
[[nodiscard]] StudyWork PartOf(const StudyWork& work, double from, double to);

/// A study at work beside the windows. All is called from the thread of the windows.
class CStudyJob {
  public:
    /// Shows what came out.
    using Show = std::function<void()>;

    /// Hands in what shows an outcome before the work is done.
    using Interim = std::function<void(Show show)>;

    /// The work itself, in a thread of its own; it knows nothing of the windows.
    using Work = std::function<Show(const StudyWork& work, const Interim& interim)>;

    CStudyJob() = default;
    CStudyJob(const CStudyJob&) = delete;
    CStudyJob& operator=(const CStudyJob&) = delete;
    CStudyJob(CStudyJob&&) = delete;
    CStudyJob& operator=(CStudyJob&&) = delete;

    /// Stops the work and waits for its end, which is a few milliseconds away.
    ~CStudyJob() = default;

    /// Begins a work; none may be running.
    void Start(Work work);

    /// Asks the work to stop.
    void Stop() { m_thread.request_stop(); }

    [[nodiscard]] bool IsRunning() const { return m_thread.joinable(); }

    /// How much is done, 0 to 1.
    [[nodiscard]] double Progress() const { return m_share; }

    /// What shows an outcome that came since, the last one once the work has ended; nothing
    /// otherwise. Throws what ended the work.
    [[nodiscard]] std::optional<Show> TakeOutcome();

  private:
    std::mutex m_guard;
    Show m_interim; ///< guarded
    Show m_show;
    std::exception_ptr m_thrown;
    std::atomic<double> m_share{0};
    std::atomic<bool> m_ended{false};
    std::jthread m_thread; ///< goes first
};

} // namespace corvanta
