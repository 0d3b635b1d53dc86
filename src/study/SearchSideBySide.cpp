#include "study/SearchSideBySide.h"

#include <algorithm>
#include <cmath>
#include <condition_variable>
#include <cstddef>
#include <exception>
#include <mutex>

namespace corvanta {

namespace {

constexpr double ShareOfJacobian = 1.0 / 6;

/// Points that a search has asked for at once.
struct Batch {
    std::span<const std::vector<double>> Points;
    double ShareOfPoint = 0; ///< of the search's progress
    ResidualsAtPoints Residuals = ResidualsAtPoints(Points.size());
    std::size_t Next = 0;
    std::size_t Done = 0;
    std::exception_ptr Thrown{};
};

/// What the threads share. Whatever changes is guarded.
class CSearches {
  public:
    CSearches(const StudyWork& work, const ResidualsOfDesign& residuals,
              std::span<const LeastSquaresProblem> problems, double fromShare, double toShare)
        : m_work(work),
          m_residuals(residuals),
          m_problems(problems),
          m_fromShare(fromShare),
          m_toShare(toShare),
          m_results(problems.size()) {}

    /// Searches and evaluates points for other searches until all have ended.
    void TakePart(Suspension& scratch) {
        std::unique_lock lock(m_guard);
        for (;;) {
            if (m_next < m_problems.size()) {
                Search(m_next++, scratch, lock);
            } else if (!m_open.empty()) {
                EvaluateNext(*m_open.front(), scratch, lock);
            } else if (m_running != 0) {
                m_changed.wait(lock);
            } else {
                return;
            }
        }
    }

    [[nodiscard]] std::vector<LeastSquaresResult> Results() {
        if (m_thrown) {
            std::rethrow_exception(m_thrown);
        }
        return std::move(m_results);
    }

  private:
    using Lock = std::unique_lock<std::mutex>;

    void Search(std::size_t number, Suspension& scratch, Lock& lock) {
        ++m_running;
        lock.unlock();
        double left = 1; // of its progress
        LeastSquaresProblem problem = m_problems[number];
        problem.Stop = m_work.Stop;
        problem.Evaluate = [&](std::span<const std::vector<double>> points) {
            return Evaluate(points, left, scratch);
        };
        std::exception_ptr thrown;
        try {
            m_results[number] = SolveLeastSquares(problem);
        } catch (...) {
            thrown = std::current_exception();
        }
        lock.lock();
        if (thrown) {
            m_thrown = thrown;
            m_next = m_problems.size();
        }
        Tell(left);
        --m_running;
        m_changed.notify_all();
    }

    ResidualsAtPoints Evaluate(std::span<const std::vector<double>> points, double& left,
                               Suspension& scratch) {
        const double share = points.size() > 1 ? left * ShareOfJacobian : 0;
        left -= share;
        Batch batch{points, share / static_cast<double>(points.size())};
        Lock lock(m_guard);
        m_open.push_back(&batch);
        if (points.size() > 1) {
            m_changed.notify_all();
        }
        while (batch.Next < points.size()) {
            EvaluateNext(batch, scratch, lock);
        }
        m_changed.wait(lock, [&] { return batch.Done == points.size(); });
        if (batch.Thrown) {
            std::rethrow_exception(batch.Thrown);
        }
        return std::move(batch.Residuals);
    }

    void EvaluateNext(Batch& batch, Suspension& scratch, Lock& lock) {
        const std::size_t n = batch.Next++;
        if (batch.Next == batch.Points.size()) {
            std::erase(m_open, &batch);
        }
        lock.unlock();
        std::exception_ptr thrown;
        try {
            batch.Residuals[n] = m_residuals(batch.Points[n], scratch);
        } catch (...) {
            thrown = std::current_exception();
        }
        lock.lock();
        if (thrown) {
            batch.Thrown = thrown;
        }
        Tell(batch.ShareOfPoint);
        if (++batch.Done == batch.Points.size()) {
            m_changed.notify_all();
        }
    }

    void Tell(double share) {
        m_done += share / static_cast<double>(m_problems.size());
        if (m_work.Progress) {
            m_work.Progress(std::lerp(m_fromShare, m_toShare, std::min(m_done, 1.0)));
        }
    }

    const StudyWork& m_work;
    const ResidualsOfDesign& m_residuals;
    const std::span<const LeastSquaresProblem> m_problems;
    const double m_fromShare;
    const double m_toShare;
    std::vector<LeastSquaresResult> m_results; ///< each written by the thread of its search

    std::mutex m_guard;
    std::condition_variable m_changed;
    std::vector<Batch*> m_open; ///< with points that no thread has taken yet
    std::size_t m_next = 0;     ///< search to begin
    std::size_t m_running = 0;  ///< searches
    double m_done = 0;
    std::exception_ptr m_thrown;
};

} // namespace

std::vector<LeastSquaresResult> SearchSideBySide(CSampleRunner& runner,
                                                 const ResidualsOfDesign& residuals,
                                                 std::span<const LeastSquaresProblem> problems,
                                                 double fromShare, double toShare) {
    CSearches searches(runner.Work(), residuals, problems, fromShare, toShare);
    runner.OnEveryThread([&](Suspension& scratch) { searches.TakePart(scratch); });
    return searches.Results();
}

} // namespace corvanta
