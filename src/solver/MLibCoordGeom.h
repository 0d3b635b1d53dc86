#pragma once

#include "model/Points.h"

#include <array>
#include <span>

namespace corvanta {

/// Distance of a point from the line through two others, mm; 0 when these coincide.
[[nodiscard]] double DistancePointToLine(const SuspPoint& line1, const SuspPoint& line2,
                                         const SuspPoint& point);

/// `DistancePointToLine` of points of a set: the line through `line1` and `line2`, the point
/// `point`.
[[nodiscard]] double DistancePointToLineOfPoints(const PointSet& points, PointNumber line1,
                                                 PointNumber line2, PointNumber point);

struct Point2D {
    double X = 0;
    double Y = 0;
};

/// Where two infinite lines in a plane cross, each given by two points. Parallel lines give 1e38 in
/// both coordinates.
[[nodiscard]] Point2D LineIntersect2D(const Point2D& first1, const Point2D& first2,
                                      const Point2D& second1, const Point2D& second2);

/// Foot of the perpendicular from a point on the line through two others. Throws Failure "Division
/// by zero" when these coincide.
[[nodiscard]] SuspPoint PerpendicularFoot(const SuspPoint& line1, const SuspPoint& line2,
                                          const SuspPoint& point);

/// `PerpendicularFoot` of points of a set, stored in the point `out`.
void PerpendicularFootOfPoints(PointSet& points, PointNumber line1, PointNumber line2,
                               PointNumber point, PointNumber out);

/// True when (x, y) lies inside the polygon by ray crossing; points on the right-hand and upper
/// edges do not count. Source: M. Shimrat, "Algorithm 112: Position of point relative to polygon",
/// CACM 5 (1962).
[[nodiscard]] bool IsPointInPolygon(double x, double y, std::span<const Point2D> vertices);

/// `IsPointInPolygon`, and true on the whole boundary.
[[nodiscard]] bool IsPointInPolygonInclusive(double x, double y, std::span<const Point2D> vertices);

/// A 3 by 3 matrix, rows and columns 1 to 3.
class Matrix3 {
  public:
    [[nodiscard]] double& operator()(int row, int column) { return m_cells.at(Slot(row, column)); }
    [[nodiscard]] double operator()(int row, int column) const {
        return m_cells.at(Slot(row, column));
    }

  private:
    static std::size_t Slot(int row, int column) {
        return static_cast<std::size_t>((row - 1) * 3 + column - 1);
    }

    std::array<double, 9> m_cells{};
};

/// The rotation by `a` about X, then `b` about Y, then `c` about Z, degrees.
[[nodiscard]] Matrix3 RotationMatrix(double a, double b, double c);

/// The product of a matrix and a point.
[[nodiscard]] SuspPoint TransformPoint(const SuspPoint& point, const Matrix3& matrix);

} // namespace corvanta
