#include "export/Interpolate.h"

#include "solver/MLibMaths.h"

#include <cassert>
#include <cstddef>
#include <functional>
#include <optional>

namespace corvanta {

namespace {

/// Of the x that `allowed` takes, the one that `before` puts first; of equal ones the first.
template <typename Before, typename Allowed>
std::optional<std::size_t> FirstBy(std::span<const double> x, Before before, Allowed allowed) {
    std::optional<std::size_t> first;
    for (std::size_t k = 0; k < x.size(); ++k) {
        if (allowed(x[k]) && (!first || before(x[k], x[*first]))) {
            first = k;
        }
    }
    return first;
}

std::optional<std::size_t> LeastAbove(std::span<const double> x, double limit) {
    return FirstBy(x, std::less<>(), [limit](double value) { return value > limit; });
}

std::optional<std::size_t> GreatestBelow(std::span<const double> x, double limit) {
    return FirstBy(x, std::greater<>(), [limit](double value) { return value < limit; });
}

std::optional<std::size_t> GreatestUpTo(std::span<const double> x, double limit) {
    return FirstBy(x, std::greater<>(), [limit](double value) { return value <= limit; });
}

} // namespace

double Interpolate(std::span<const double> x, std::span<const double> y, double at) {
    assert(!x.empty() && x.size() == y.size());
    // The segment begins at the point at or below, so that a point of the curve gives its own y.
    std::optional<std::size_t> from = GreatestUpTo(x, at);
    if (!from) {
        from = LeastAbove(x, at);
    }
    std::optional<std::size_t> to = LeastAbove(x, x[*from]);
    if (!to) {
        to = GreatestBelow(x, x[*from]);
    }
    if (!to) {
        return y[*from];
    }
    const double share = Divide(at - x[*from], x[*to] - x[*from]);
    return Checked(y[*from] + share * (y[*to] - y[*from]));
}

} // namespace corvanta
