#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace corvanta::benchmarks {

/// The median of some times.
inline double Median(std::vector<double> times) {
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

} // namespace corvanta::benchmarks
