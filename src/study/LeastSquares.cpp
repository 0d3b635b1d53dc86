#include "study/LeastSquares.h"

#include "model/Failure.h"

#include <ceres/ceres.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <exception>
#include <limits>
#include <memory>
#include <utility>

namespace corvanta {

namespace {

/// A step that changes the variables relatively by less ends the search.
constexpr double StepTolerance = 1e-10;

/// Singular values of the Jacobian, in difference steps, that are smaller relatively to the
/// greatest tell nothing beyond the noise of the differences.
constexpr double LeastSingularShare = 1e-7;

using Point = std::vector<double>;

bool AllFinite(const std::vector<double>& values) {
    return std::all_of(values.begin(), values.end(), [](double v) { return std::isfinite(v); });
}

void CheckProblem(const LeastSquaresProblem& problem) {
    const std::size_t n = problem.Start.size();
    bool sound = n > 0 && problem.Low.size() == n && problem.High.size() == n &&
                 problem.Step.size() == n && AllFinite(problem.Start) && problem.Evaluate;
    for (std::size_t i = 0; sound && i < n; ++i) {
        sound = problem.Low[i] < problem.High[i] && problem.Step[i] > 0 &&
                std::isfinite(problem.Step[i]);
    }
    if (!sound) {
        throw Failure(fnInvalidCall, "The least squares problem is none");
    }
}

std::unique_ptr<ceres::LossFunction> LossOf(const LeastSquaresProblem& problem,
                                            std::size_t residual) {
    const double scale = problem.LossScales.empty() ? 0 : problem.LossScales[residual];
    if (scale <= 0) {
        return nullptr;
    }
    if (problem.Loss == RobustLoss::Tukey) {
        return std::make_unique<ceres::TukeyLoss>(scale);
    }
    return std::make_unique<ceres::HuberLoss>(scale);
}

/// A place of Ceres and what was evaluated there.
struct Evaluated {
    Point Place;
    std::optional<Point> Residuals;
    std::vector<double> Jacobian{}; ///< row by row, against steps; empty until it is asked for
    std::vector<bool> Held{};       ///< the variables that the cost presses against a bound
    double Cost = 0;
};

/// What was evaluated last and best. Ceres counts a variable in its difference steps, so that those
/// of different units compare, and asks each residual alone.
class CEvaluation {
  public:
    explicit CEvaluation(const LeastSquaresProblem& problem) : m_problem(problem) {}

    [[nodiscard]] std::size_t Size() const { return m_problem.Start.size(); }

    /// Residuals at a place; null where they can't be evaluated.
    const Point* ResidualsAt(const double* place) {
        const Evaluated& at = At(place);
        return at.Residuals ? &*at.Residuals : nullptr;
    }

    /// A row of their Jacobian. Ceres steps across a bound that it stands at, is put back there and
    /// makes no way in the other variables; so what is pressed against a bound is held for the step
    /// (D. P. Bertsekas, "Projected Newton Methods for Optimization Problems with Simple
    /// Constraints", SIAM J. Control and Optimization 20, 1982).
    void RowAt(const double* place, std::size_t residual, double* row) {
        Evaluated& at = At(place);
        if (at.Jacobian.empty()) {
            at.Jacobian = Differences(at);
            at.Held = PressedAgainstBounds(at);
        }
        for (std::size_t i = 0; i < Size(); ++i) {
            row[i] = m_holds && at.Held[i] ? 0 : at.Jacobian[residual * Size() + i];
        }
    }

    /// From here on nothing is held: a covariance knows no bounds.
    void ReleaseAll() { m_holds = false; }

    [[nodiscard]] Point PlaceOf(const Point& x) const {
        Point place(Size());
        for (std::size_t i = 0; i < Size(); ++i) {
            place[i] = std::clamp(x[i], m_problem.Low[i], m_problem.High[i]) / m_problem.Step[i];
        }
        return place;
    }

    [[nodiscard]] Point PointOf(const Point& place) const {
        Point x(Size());
        for (std::size_t i = 0; i < Size(); ++i) {
            x[i] = std::clamp(place[i] * m_problem.Step[i], m_problem.Low[i], m_problem.High[i]);
        }
        return x;
    }

    /// -1 at the lower bound, 1 at the upper one: counted in steps, a bound is met but for
    /// rounding.
    [[nodiscard]] int BoundAt(const Point& place, std::size_t i) const {
        const double slack = StepTolerance * (1 + std::abs(place[i]));
        if (place[i] <= m_problem.Low[i] / m_problem.Step[i] + slack) {
            return -1;
        }
        return place[i] >= m_problem.High[i] / m_problem.Step[i] - slack ? 1 : 0;
    }

    [[nodiscard]] const Evaluated& Best() const { return m_best; }
    [[nodiscard]] bool Stopped() const { return m_problem.Stop.stop_requested(); }

    /// Goes on with what `Evaluate` threw, which must not pass through the frames of Ceres.
    void RethrowIfThrown() const {
        if (m_thrown) {
            std::rethrow_exception(m_thrown);
        }
    }

  private:
    Evaluated& At(const double* place) {
        for (Evaluated* const kept : {&m_best, &m_last}) {
            if (!kept->Place.empty() && std::equal(kept->Place.begin(), kept->Place.end(), place)) {
                return *kept;
            }
        }
        m_last = {Point(place, place + Size()), {}};
        m_last.Residuals = Evaluate({PointOf(m_last.Place)}).front();
        if (!m_last.Residuals) {
            return m_last;
        }
        for (std::size_t k = 0; k < m_last.Residuals->size(); ++k) {
            m_last.Cost += LossAt(*m_last.Residuals, k)[0] / 2;
        }
        if (m_best.Place.empty() || m_last.Cost < m_best.Cost) {
            std::swap(m_best, m_last); // a search may step back to where it was best before
            return m_best;
        }
        return m_last;
    }

    ResidualsAtPoints Evaluate(const std::vector<Point>& points) {
        ResidualsAtPoints residuals(points.size());
        if (Stopped() || m_thrown) {
            return residuals;
        }
        try {
            residuals = m_problem.Evaluate(points);
        } catch (...) {
            m_thrown = std::current_exception();
        }
        residuals.resize(points.size());
        for (std::optional<Point>& each : residuals) {
            if (each && (!AllFinite(*each) ||
                         (m_best.Residuals && each->size() != m_best.Residuals->size()))) {
                each.reset();
            }
        }
        return residuals;
    }

    /// The loss of a residual and its slope against the square.
    [[nodiscard]] std::array<double, 3> LossAt(const Point& residuals, std::size_t k) const {
        const double square = residuals[k] * residuals[k];
        std::array<double, 3> loss{square, 1, 0};
        if (const auto function = LossOf(m_problem, k)) {
            function->Evaluate(square, loss.data());
        }
        return loss;
    }

    std::vector<double> Differences(const Evaluated& at) {
        const Point x = PointOf(at.Place);
        std::vector<Point> points;
        for (std::size_t i = 0; i < Size(); ++i) {
            for (const double side : {-m_problem.Step[i], m_problem.Step[i]}) {
                points.push_back(x);
                points.back()[i] = std::clamp(x[i] + side, m_problem.Low[i], m_problem.High[i]);
            }
        }
        const ResidualsAtPoints sides = Evaluate(points);
        std::vector<double> jacobian(at.Residuals->size() * Size());
        for (std::size_t i = 0; i < Size(); ++i) {
            const auto& below = sides[2 * i];
            const auto& above = sides[2 * i + 1];
            const double from = below ? points[2 * i][i] : x[i];
            const double run = ((above ? points[2 * i + 1][i] : x[i]) - from) / m_problem.Step[i];
            for (std::size_t k = 0; run > 0 && k < at.Residuals->size(); ++k) {
                const double rise =
                    (above ? *above : *at.Residuals)[k] - (below ? *below : *at.Residuals)[k];
                jacobian[k * Size() + i] = rise / run;
            }
        }
        return jacobian;
    }

    [[nodiscard]] std::vector<bool> PressedAgainstBounds(const Evaluated& at) const {
        Point slope(Size());
        for (std::size_t k = 0; k < at.Residuals->size(); ++k) {
            const double weighted = LossAt(*at.Residuals, k)[1] * (*at.Residuals)[k];
            for (std::size_t i = 0; i < Size(); ++i) {
                slope[i] += weighted * at.Jacobian[k * Size() + i];
            }
        }
        std::vector<bool> pressed;
        for (std::size_t i = 0; i < Size(); ++i) {
            pressed.push_back(BoundAt(at.Place, i) * slope[i] < 0);
        }
        return pressed;
    }

    const LeastSquaresProblem& m_problem;
    Evaluated m_last;
    Evaluated m_best;
    bool m_holds = true;
    std::exception_ptr m_thrown;
};

/// One residual.
class CResidual final : public ceres::CostFunction {
  public:
    CResidual(CEvaluation& evaluation, std::size_t number)
        : m_evaluation(evaluation),
          m_number(number) {
        set_num_residuals(1);
        mutable_parameter_block_sizes()->push_back(static_cast<int>(evaluation.Size()));
    }

    bool Evaluate(double const* const* parameters, double* residuals,
                  double** jacobians) const override {
        const Point* const all = m_evaluation.ResidualsAt(parameters[0]);
        if (all == nullptr) {
            return false;
        }
        residuals[0] = (*all)[m_number];
        if (jacobians != nullptr && jacobians[0] != nullptr) {
            m_evaluation.RowAt(parameters[0], m_number, jacobians[0]);
        }
        return !m_evaluation.Stopped();
    }

  private:
    CEvaluation& m_evaluation;
    std::size_t m_number;
};

/// Ends a search between two steps.
class CEndBetweenSteps final : public ceres::IterationCallback {
  public:
    CEndBetweenSteps(const CEvaluation& evaluation, const std::vector<double>& enough)
        : m_evaluation(evaluation),
          m_enough(enough) {}

    ceres::CallbackReturnType operator()(const ceres::IterationSummary&) override {
        if (m_evaluation.Stopped()) {
            return ceres::SOLVER_ABORT;
        }
        const Point& residuals = *m_evaluation.Best().Residuals;
        const bool done = !m_enough.empty() &&
                          std::equal(residuals.begin(), residuals.end(), m_enough.begin(),
                                     [](double r, double enough) { return std::abs(r) <= enough; });
        return done ? ceres::SOLVER_TERMINATE_SUCCESSFULLY : ceres::SOLVER_CONTINUE;
    }

  private:
    const CEvaluation& m_evaluation;
    const std::vector<double>& m_enough;
};

void AddResiduals(ceres::Problem& ceresProblem, const LeastSquaresProblem& problem,
                  CEvaluation& evaluation, std::vector<double>& place) {
    for (std::size_t k = 0; k < evaluation.Best().Residuals->size(); ++k) {
        ceresProblem.AddResidualBlock(std::make_unique<CResidual>(evaluation, k).release(),
                                      LossOf(problem, k).release(), place.data());
    }
    for (std::size_t i = 0; i < place.size(); ++i) {
        const int number = static_cast<int>(i);
        if (std::isfinite(problem.Low[i])) {
            ceresProblem.SetParameterLowerBound(place.data(), number,
                                                problem.Low[i] / problem.Step[i]);
        }
        if (std::isfinite(problem.High[i])) {
            ceresProblem.SetParameterUpperBound(place.data(), number,
                                                problem.High[i] / problem.Step[i]);
        }
    }
}

ceres::Solver::Options OptionsOf(const LeastSquaresProblem& problem) {
    ceres::Solver::Options options;
    options.linear_solver_type = ceres::DENSE_QR;
    options.dense_linear_algebra_library_type = ceres::EIGEN;
    options.line_search_interpolation_type = ceres::QUADRATIC; // takes no slopes, which are dear
    options.num_threads = 1;
    options.logging_type = ceres::SILENT;
    options.minimizer_progress_to_stdout = false;
    options.max_num_iterations = problem.MostIterations;
    options.function_tolerance = problem.CostTolerance;
    options.parameter_tolerance = StepTolerance;
    options.gradient_tolerance = std::numeric_limits<double>::min(); // 0 cost ends it as well
    return options;
}

std::vector<double> CovarianceOf(ceres::Problem& ceresProblem, const std::vector<double>& place,
                                 const LeastSquaresProblem& problem) {
    ceres::Covariance::Options options;
    options.algorithm_type = ceres::DENSE_SVD;
    options.min_reciprocal_condition_number = LeastSingularShare * LeastSingularShare;
    options.num_threads = 1;
    ceres::Covariance covariance(options);
    const std::vector<std::pair<const double*, const double*>> block{{place.data(), place.data()}};
    if (!covariance.Compute(block, &ceresProblem)) {
        return {};
    }
    const std::size_t n = place.size();
    std::vector<double> values(n * n);
    covariance.GetCovarianceBlock(place.data(), place.data(), values.data());
    for (std::size_t i = 0; i < n; ++i) {
        for (std::size_t j = 0; j < n; ++j) {
            values[i * n + j] *= problem.Step[i] * problem.Step[j];
        }
    }
    return AllFinite(values) ? values : std::vector<double>{};
}

/// Ceres tells of a singular Jacobian and the like on the terminal, which is not its own.
void SilenceCeres() {
    [[maybe_unused]] static const bool silent = [] {
        FLAGS_minloglevel = google::GLOG_FATAL;
        return true;
    }();
}

std::string WordsOf(const LeastSquaresResult& result, const ceres::Solver::Summary& summary) {
    if (result.Stopped) {
        return "The search was stopped";
    }
    if (result.Converged) {
        return "The search has converged";
    }
    return summary.termination_type == ceres::NO_CONVERGENCE
               ? "The search has not converged after " + std::to_string(result.Iterations) +
                     " steps"
               : "The search could not go on from the best point";
}

void TakeBest(LeastSquaresResult& result, const CEvaluation& evaluation) {
    const Evaluated& best = evaluation.Best();
    result.X = evaluation.PointOf(best.Place);
    result.Residuals = *best.Residuals;
    result.Cost = best.Cost;
    for (std::size_t i = 0; i < result.X.size(); ++i) {
        result.AtBound.push_back(evaluation.BoundAt(best.Place, i) != 0);
    }
}

} // namespace

LeastSquaresResult SolveLeastSquares(const LeastSquaresProblem& problem) {
    CheckProblem(problem);
    SilenceCeres();
    CEvaluation evaluation(problem);
    std::vector<double> place = evaluation.PlaceOf(problem.Start);
    LeastSquaresResult result;
    result.Evaluated = evaluation.ResidualsAt(place.data()) != nullptr;
    evaluation.RethrowIfThrown();
    result.Stopped = evaluation.Stopped();
    if (!result.Evaluated) {
        result.Words = result.Stopped ? "The search was stopped" : "The start can't be evaluated";
        return result;
    }
    const std::size_t count = evaluation.Best().Residuals->size();
    const auto fits = [&](const std::vector<double>& each) {
        return each.empty() || each.size() == count;
    };
    if (count == 0 || !fits(problem.LossScales) || !fits(problem.Enough)) {
        throw Failure(fnInvalidCall, "The least squares problem is none");
    }
    ceres::Problem ceresProblem;
    AddResiduals(ceresProblem, problem, evaluation, place);
    CEndBetweenSteps end(evaluation, problem.Enough);
    ceres::Solver::Options options = OptionsOf(problem);
    options.callbacks.push_back(&end);
    ceres::Solver::Summary summary;
    ceres::Solve(options, &ceresProblem, &summary);
    evaluation.RethrowIfThrown();

    result.Stopped = evaluation.Stopped();
    result.Converged = !result.Stopped && (summary.termination_type == ceres::CONVERGENCE ||
                                           summary.termination_type == ceres::USER_SUCCESS);
    result.Iterations = std::max(static_cast<int>(summary.iterations.size()) - 1, 0);
    result.Words = WordsOf(result, summary);
    place = evaluation.Best().Place;
    evaluation.ReleaseAll();
    if (problem.Covariance && !result.Stopped) {
        result.Covariance = CovarianceOf(ceresProblem, place, problem);
        evaluation.RethrowIfThrown();
    }
    TakeBest(result, evaluation);
    return result;
}

} // namespace corvanta
