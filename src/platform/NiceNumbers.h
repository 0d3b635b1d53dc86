#pragma once

#include <cmath>

namespace corvanta {

enum class NiceWay { Up, Down };

/// The next of the steps 1, 2 and 5 times a power of ten, not below or not above a size greater
/// than 0.
[[nodiscard]] inline double NiceStep(double size, NiceWay way) {
    constexpr double Slack = 1e-9; // a size that is such a step already stays, rounding or not
    const double power = std::floor(std::log10(size) + Slack);
    const double lead = size / std::pow(10, power);
    // Whole powers are exact; a product with one of 0.1 would end in stray digits.
    const auto step = [power](double digit) {
        return power < 0 ? digit / std::pow(10, -power) : digit * std::pow(10, power);
    };
    if (way == NiceWay::Up) {
        return step(lead <= 1 + Slack ? 1 : lead <= 2 + Slack ? 2 : lead <= 5 + Slack ? 5 : 10);
    }
    return step(lead >= 5 - Slack ? 5 : lead >= 2 - Slack ? 2 : 1);
}

/// A multiple of a step of `NiceStep`, without stray digits.
[[nodiscard]] inline double Multiple(double count, double step) {
    return step < 1 ? count / std::round(1 / step) : count * step;
}

/// Decimals that a multiple of a step of `NiceStep` is written with.
[[nodiscard]] inline int DecimalsOf(double step) {
    return static_cast<int>(std::fmax(0, -std::floor(std::log10(step) + 1e-9)));
}

} // namespace corvanta
