#pragma once

#include "study/DesignVariable.h"

#include <span>

namespace corvanta {

/// Puts values in the place of those that a design has of some variables.
void SetValues(Design& design, std::span<const DesignVariable> variables,
               std::span<const double> values);

/// The step of central differences against a variable, stored units: large against what the search
/// for the wheel leaves open, small against what bends a curve.
[[nodiscard]] double DifferenceStep(const DesignVariable& variable, double value);

} // namespace corvanta
