#include "study/VariedDesign.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <variant>

namespace corvanta {

namespace {

constexpr double CoordinateStep = 0.1; // mm

/// The step of any other number as a share of it, and the least of it.
constexpr double NumberShare = 1e-3;
constexpr double LeastNumber = 1;

} // namespace

void SetValues(Design& design, std::span<const DesignVariable> variables,
               std::span<const double> values) {
    for (std::size_t i = 0; i < variables.size(); ++i) {
        SetValue(design, variables[i], values[i]);
    }
}

double DifferenceStep(const DesignVariable& variable, double value) {
    return std::holds_alternative<PointCoordinate>(variable)
               ? CoordinateStep
               : NumberShare * std::max(std::abs(value), LeastNumber);
}

} // namespace corvanta
