#pragma once

#include <span>
#include <vector>

namespace corvanta {

/// A curve through points (x, y), at least one, in any order. Between two points it is the straight
/// line; beyond its ends it follows the line of the end segment. Of points with equal x the first
/// one counts; a curve of one x has its y everywhere.
class CCurve {
  public:
    CCurve(std::span<const double> x, std::span<const double> y);

    /// The y at `x`. Throws Failure "Overflow" when it is beyond the range of a double.
    [[nodiscard]] double At(double x) const;

  private:
    struct CurvePoint {
        double X;
        double Y;
    };

    std::vector<CurvePoint> m_points; ///< ascending, no x twice
};

/// Looks a curve up once.
[[nodiscard]] double Interpolate(std::span<const double> x, std::span<const double> y, double at);

} // namespace corvanta
