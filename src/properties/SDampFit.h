#pragma once

#include "model/Channels.h"
#include "model/Suspension.h"

#include <span>

namespace corvanta {

/// What a coefficient reads that can't be had, because the damper does not move.
inline constexpr double NoCoefficient = -99.9;

/// The curve y = a x^2 + b x + c, or the straight line b x + c, of least squares through the
/// points, by the normal equations. `x` and `y` have the same length of at least 1. A coefficient
/// whose divisor is exactly 0 is `NoCoefficient`. Throws Failure "Overflow".
[[nodiscard]] QuadraticFit FitQuadratic(std::span<const double> x, std::span<const double> y,
                                        bool straightLine);

/// Fits the ten curves of the document against damper travel from static, closing positive, over
/// the wheel steps of a rack step. Both are in display units, so that the coefficients follow the
/// units.
void CalculateQuadraticFits(Suspension& document, const ChannelCatalogue& channels, int rackRow);

} // namespace corvanta
