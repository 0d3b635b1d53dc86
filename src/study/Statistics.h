#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace corvanta {

/// The quantile of values in growing order, at least one, at a probability from 0 to 1: straight
/// between the values, the least at 0 and the greatest at 1 (type 7 of Hyndman and Fan, "Sample
/// Quantiles in Statistical Packages", The American Statistician 50, 1996).
[[nodiscard]] double QuantileOf(std::span<const double> sorted, double probability);

[[nodiscard]] double MeanOf(std::span<const double> values);

/// The standard deviation of the population that values are a sample of; 0 for fewer than two.
[[nodiscard]] double StandardDeviationOf(std::span<const double> values);

/// Solves A x = b in place of b, A symmetric of order b.size(), its lower half given row by row and
/// lost (Cholesky). False when A is not positive definite.
[[nodiscard]] bool SolveSymmetric(std::vector<double>& a, std::vector<double>& b);

/// What of the variance of a number its inputs stand for.
struct VarianceShares {
    std::vector<double> Shares; ///< one for each input, 0 to 1; empty when they can't be told
    double Unexplained = 1;     ///< 1 less their sum
};

/// Linear regression of `numbers` on the rows of `inputs`, `inputCount` of them for each number.
/// The shares stand to each other as the squares of the standardised coefficients and add up to the
/// adjusted R^2 (Theil, "Economic Forecasts and Policy", 1961), so that chance is no explanation.
/// They can't be told of numbers that don't vary, nor with less than two numbers for each
/// coefficient, nor when an input follows from others.
[[nodiscard]] VarianceShares SharesOf(std::span<const double> numbers,
                                      std::span<const double> inputs, std::size_t inputCount);

} // namespace corvanta
