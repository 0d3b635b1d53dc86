#include "export/Interpolate.h"

#include "solver/MLibMaths.h"

#include <algorithm>
#include <cassert>
#include <cstddef>

namespace corvanta {

CCurve::CCurve(std::span<const double> x, std::span<const double> y) {
    assert(!x.empty() && x.size() == y.size());
    m_points.reserve(x.size());
    for (std::size_t k = 0; k < x.size(); ++k) {
        m_points.push_back({x[k], y[k]});
    }
    std::stable_sort(m_points.begin(), m_points.end(),
                     [](const CurvePoint& a, const CurvePoint& b) { return a.X < b.X; });
    const auto same = [](const CurvePoint& a, const CurvePoint& b) { return a.X == b.X; };
    m_points.erase(std::unique(m_points.begin(), m_points.end(), same), m_points.end());
}

double CCurve::At(double x) const {
    if (m_points.size() == 1) {
        return m_points.front().Y;
    }
    // The segment begins at the point at or below, so that a point of the curve gives its own y.
    const auto above =
        std::upper_bound(m_points.begin(), m_points.end(), x,
                         [](double value, const CurvePoint& point) { return value < point.X; });
    const bool below = above == m_points.begin();
    const bool beyond = above == m_points.end();
    const CurvePoint& from = below ? *above : *(above - 1);
    const CurvePoint& to = below ? *(above + 1) : (beyond ? *(above - 2) : *above);
    const double share = Divide(x - from.X, to.X - from.X);
    return Checked(from.Y + share * (to.Y - from.Y));
}

double Interpolate(std::span<const double> x, std::span<const double> y, double at) {
    return CCurve(x, y).At(at);
}

} // namespace corvanta
