#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <vector>

namespace corvanta {

/// How much large residuals count. Within the scale of a residual a loss is close to its square.
enum class RobustLoss : std::uint8_t {
    Huber, ///< beyond the scale linear: P. J. Huber, "Robust Statistics", 1981
    Tukey, ///< beyond the scale without any weight: Tukey's biweight
};

/// The residuals at some points; none where a point can't be evaluated.
using ResidualsAtPoints = std::vector<std::optional<std::vector<double>>>;

/// The least sum of squares of residuals within bounds. Every vector over the variables is of one
/// size.
struct LeastSquaresProblem {
    std::vector<double> Start; ///< brought into the bounds
    std::vector<double> Low;   ///< below `High`; either may be infinite
    std::vector<double> High;
    std::vector<double> Step; ///< of the central differences, above 0; none leaves the bounds

    /// The residuals at all the points that are asked for at once, as many as there are variables
    /// or one: how they are shared out is the function's own. Always equally many residuals; a
    /// residual that is no number counts as one that can't be evaluated.
    std::function<ResidualsAtPoints(std::span<const std::vector<double>> points)> Evaluate;

    RobustLoss Loss = RobustLoss::Huber;
    std::vector<double> LossScales; ///< of the residuals, 0 for a plain square; empty for all plain
    int MostIterations = 50;
    double CostTolerance = 1e-10; ///< a step that lowers the cost by a lesser share is the last

    /// Residuals none of which is greater than here end the search; empty to go on to the least.
    std::vector<double> Enough;
    bool Covariance = false; ///< wanted
    std::stop_token Stop{};
};

struct LeastSquaresResult {
    bool Evaluated = false; ///< the start could be; all else is empty otherwise
    bool Converged = false;
    bool Stopped = false; ///< on request; `X` is the best point until then
    std::string Words;    ///< how it ended
    std::vector<double> X;
    std::vector<double> Residuals;
    double Cost = 0; ///< half the sum of the losses
    int Iterations = 0;
    std::vector<bool> AtBound; ///< of the variables

    /// Of the variables, row by row, as the residuals were of variance 1: the inverse of J'WJ, the
    /// weights W those of the loss. A bound does not narrow it. Empty when it was not wanted and
    /// when the residuals can't tell all variables apart.
    std::vector<double> Covariance;
};

/// Solves a problem by Levenberg's and Marquardt's method in a trust region (Ceres Solver), on the
/// caller's thread. The Jacobian is taken once for each accepted point by central differences;
/// where one side can't be evaluated, or lies beyond a bound, by one-sided ones; a variable that
/// can't move either way stays. A point that can't be evaluated is one that is not taken. The same
/// problem gives the same bytes. Throws Failure (`fnInvalidCall`) for a problem that is none, and
/// what `Evaluate` throws.
[[nodiscard]] LeastSquaresResult SolveLeastSquares(const LeastSquaresProblem& problem);

} // namespace corvanta
