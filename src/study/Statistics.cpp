#include "study/Statistics.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace corvanta {

namespace {

/// A column in units of its standard deviation; all 0 when it does not vary.
void Standardise(std::span<double> column) {
    const double mean = MeanOf(column);
    const double deviation = StandardDeviationOf(column);
    for (double& value : column) {
        value = deviation > 0 ? (value - mean) / deviation : 0;
    }
}

double Product(std::span<const double> a, std::span<const double> b) {
    return std::inner_product(a.begin(), a.end(), b.begin(), 0.0);
}

/// The columns of a table of rows, behind each other and standardised.
std::vector<double> StandardColumns(std::span<const double> rows, std::size_t count) {
    const std::size_t length = rows.size() / count;
    std::vector<double> columns(rows.size());
    for (std::size_t c = 0; c < count; ++c) {
        for (std::size_t r = 0; r < length; ++r) {
            columns[c * length + r] = rows[r * count + c];
        }
        Standardise(std::span(columns).subspan(c * length, length));
    }
    return columns;
}

} // namespace

double QuantileOf(std::span<const double> sorted, double probability) {
    const double place = probability * static_cast<double>(sorted.size() - 1);
    const auto below = static_cast<std::size_t>(place);
    const std::size_t above = std::min(below + 1, sorted.size() - 1);
    return std::lerp(sorted[below], sorted[above], place - std::floor(place));
}

double MeanOf(std::span<const double> values) {
    if (values.empty()) {
        return 0;
    }
    double sum = 0;
    for (const double value : values) { // from the first one, so that equal ones are their mean
        sum += value - values.front();
    }
    return values.front() + sum / static_cast<double>(values.size());
}

double StandardDeviationOf(std::span<const double> values) {
    if (values.size() < 2) {
        return 0;
    }
    const double mean = MeanOf(values);
    double sum = 0;
    for (const double value : values) {
        sum += (value - mean) * (value - mean);
    }
    return std::sqrt(sum / static_cast<double>(values.size() - 1));
}

bool SolveSymmetric(std::vector<double>& a, std::vector<double>& b) {
    /// Below this share of its diagonal a pivot says that one unknown follows from others.
    constexpr double LeastPivot = 1e-10;
    const std::size_t n = b.size();
    for (std::size_t j = 0; j < n; ++j) {
        const std::span<const double> upper(&a[j * n], j);
        const double pivot = a[j * n + j] - Product(upper, upper);
        if (!(pivot > LeastPivot * a[j * n + j])) {
            return false;
        }
        a[j * n + j] = std::sqrt(pivot);
        for (std::size_t i = j + 1; i < n; ++i) {
            a[i * n + j] = (a[i * n + j] - Product(upper, {&a[i * n], j})) / a[j * n + j];
        }
        b[j] = (b[j] - Product(upper, {b.data(), j})) / a[j * n + j];
    }
    for (std::size_t j = n; j-- > 0;) {
        for (std::size_t i = j + 1; i < n; ++i) {
            b[j] -= a[i * n + j] * b[i];
        }
        b[j] /= a[j * n + j];
    }
    return true;
}

VarianceShares SharesOf(std::span<const double> numbers, std::span<const double> inputs,
                        std::size_t inputCount) {
    const std::size_t count = numbers.size();
    if (inputCount == 0 || count < 2 * (inputCount + 1) || !(StandardDeviationOf(numbers) > 0)) {
        return {};
    }
    std::vector<double> standard(numbers.begin(), numbers.end());
    Standardise(standard);
    const std::vector<double> columns = StandardColumns(inputs, inputCount);
    const auto column = [&](std::size_t n) {
        return std::span<const double>(columns).subspan(n * count, count);
    };
    std::vector<double> normal(inputCount * inputCount);
    std::vector<double> coefficients(inputCount);
    for (std::size_t i = 0; i < inputCount; ++i) {
        for (std::size_t j = 0; j <= i; ++j) {
            normal[i * inputCount + j] = Product(column(i), column(j));
        }
        coefficients[i] = Product(column(i), standard);
    }
    if (!SolveSymmetric(normal, coefficients)) {
        return {};
    }
    for (std::size_t n = 0; n < inputCount; ++n) {
        for (std::size_t r = 0; r < count; ++r) {
            standard[r] -= coefficients[n] * column(n)[r];
        }
    }
    // All columns have the variance 1, so that what is left over is the share not explained.
    const double unexplained =
        std::min(Product(standard, standard) / static_cast<double>(count - inputCount - 1), 1.0);
    const double squares = Product(coefficients, coefficients);
    if (!(squares > 0)) {
        return {};
    }
    VarianceShares found{coefficients, unexplained};
    for (double& share : found.Shares) {
        share *= share / squares * (1 - unexplained);
    }
    return found;
}

} // namespace corvanta
