#include "export/Interpolate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <random>
#include <vector>

namespace corvanta {
namespace {

using Numbers = std::vector<double>;

/// The same curve by sorting its points and weighing the two ends of a segment.
double ByWeights(const Numbers& x, const Numbers& y, double at) {
    std::map<double, double> curve;
    for (std::size_t k = 0; k < x.size(); ++k) {
        curve.emplace(x[k], y[k]); // keeps the first of equal x
    }
    if (curve.size() == 1) {
        return curve.begin()->second;
    }
    auto right = curve.lower_bound(at);
    if (right == curve.begin()) {
        ++right;
    } else if (right == curve.end()) {
        --right;
    }
    const auto left = std::prev(right);
    return (left->second * (right->first - at) + right->second * (at - left->first)) /
           (right->first - left->first);
}

TEST(InterpolateTest, AgreesWithASortedCurve) {
    std::mt19937 random(62);
    std::uniform_int_distribution<int> place(0, 12); // coarse, so that some x are equal
    std::uniform_real_distribution<double> height(-50, 50);
    std::uniform_real_distribution<double> where(-3, 15);
    for (int trial = 0; trial < 2000; ++trial) {
        Numbers x;
        Numbers y;
        for (int k = 0; k <= trial % 9; ++k) {
            x.push_back(place(random));
            y.push_back(height(random));
        }
        const double at = where(random);
        EXPECT_NEAR(Interpolate(x, y, at), ByWeights(x, y, at), 1e-10);
        EXPECT_EQ(Interpolate(x, y, x.front()), y.front());
    }
}

} // namespace
} // namespace corvanta
