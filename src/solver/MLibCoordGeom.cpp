#include "solver/MLibCoordGeom.h"

#include "solver/MLibMaths.h"
#include "solver/SGetLocn.h"

#include <algorithm>
#include <cmath>

namespace corvanta {

namespace {

/// Radians per degree of `RotationMatrix`; its results rest on this value, which is a little below
/// pi / 180.
constexpr double RadiansPerDegree = 0.017453292222222222;

/// Both coordinates of the crossing of parallel lines.
constexpr double ParallelCrossing = 1e38;

/// A point nearer to an edge than this lies on it.
constexpr double OnEdgeTolerance = 2.2204460492503102e-14;

bool Between(double value, double end1, double end2) {
    return value >= std::min(end1, end2) && value <= std::max(end1, end2);
}

} // namespace

double DistancePointToLine(const SuspPoint& line1, const SuspPoint& line2, const SuspPoint& point) {
    const Vector3 direction = UnitVector(line1.X - line2.X, line1.Y - line2.Y, line1.Z - line2.Z);
    const Vector3 across = CrossProduct(VectorSubtract(point, line1), direction);
    return VectorMagnitude(across.X, across.Y, across.Z);
}

double DistancePointToLineOfPoints(const PointSet& points, PointNumber line1, PointNumber line2,
                                   PointNumber point) {
    return DistancePointToLine(points[line1], points[line2], points[point]);
}

Point2D LineIntersect2D(const Point2D& first1, const Point2D& first2, const Point2D& second1,
                        const Point2D& second2) {
    const double dx1 = first2.X - first1.X;
    const double dy1 = first2.Y - first1.Y;
    const double dx2 = second2.X - second1.X;
    const double dy2 = second2.Y - second1.Y;
    const double determinant = dy1 * dx2 - dx1 * dy2;
    const double t = ((first1.X - second1.X) * dy2 + (second1.Y - first1.Y) * dx2) / determinant;
    if (determinant == 0 || !std::isfinite(t)) { // exactly parallel
        return {ParallelCrossing, ParallelCrossing};
    }
    return {Checked(dx1 * t + first1.X), Checked(dy1 * t + first1.Y)};
}

SuspPoint PerpendicularFoot(const SuspPoint& line1, const SuspPoint& line2,
                            const SuspPoint& point) {
    const PointSpan d12 = PointDistance(line1, line2);
    const PointSpan d13 = PointDistance(line1, point);
    const PointSpan d23 = PointDistance(line2, point);
    // The cosine rule gives the distance of the foot from the first end, along the line.
    const double t = Divide(d12.Squared + d13.Squared - d23.Squared, 2 * d12.Distance);
    const double share = Divide(t, d12.Distance);
    return {Checked(line1.X + share * (line2.X - line1.X)),
            Checked(line1.Y + share * (line2.Y - line1.Y)),
            Checked(line1.Z + share * (line2.Z - line1.Z))};
}

void PerpendicularFootOfPoints(PointSet& points, PointNumber line1, PointNumber line2,
                               PointNumber point, PointNumber out) {
    points[out] = PerpendicularFoot(points[line1], points[line2], points[point]);
}

bool IsPointInPolygon(double x, double y, std::span<const Point2D> vertices) {
    bool inside = false;
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        const Point2D& here = vertices[i];
        const Point2D& previous = vertices[i == 0 ? vertices.size() - 1 : i - 1];
        const bool crosses = (here.Y <= y && y < previous.Y) || (previous.Y <= y && y < here.Y);
        if (crosses) {
            const double crossing =
                Divide((previous.X - here.X) * (y - here.Y), previous.Y - here.Y) + here.X;
            inside = inside != (x < crossing);
        }
    }
    return inside;
}

bool IsPointInPolygonInclusive(double x, double y, std::span<const Point2D> vertices) {
    if (IsPointInPolygon(x, y, vertices)) {
        return true;
    }
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        const Point2D& here = vertices[i];
        const Point2D& previous = vertices[i == 0 ? vertices.size() - 1 : i - 1];
        if (Between(x, here.X, previous.X) && Between(y, here.Y, previous.Y) &&
            DistancePointToLine({previous.X, previous.Y, 0}, {here.X, here.Y, 0}, {x, y, 0}) <
                OnEdgeTolerance) {
            return true;
        }
    }
    return false;
}

Matrix3 RotationMatrix(double a, double b, double c) {
    const double sa = std::sin(a * RadiansPerDegree);
    const double ca = std::cos(a * RadiansPerDegree);
    const double sb = std::sin(b * RadiansPerDegree);
    const double cb = std::cos(b * RadiansPerDegree);
    const double sc = std::sin(c * RadiansPerDegree);
    const double cc = std::cos(c * RadiansPerDegree);
    Matrix3 m;
    m(1, 1) = cc * cb;
    m(1, 2) = cc * sb * sa - sc * ca;
    m(1, 3) = cc * sb * ca + sc * sa;
    m(2, 1) = sc * cb;
    m(2, 2) = sc * sb * sa + cc * ca;
    m(2, 3) = sc * sb * ca - cc * sa;
    m(3, 1) = -sb;
    m(3, 2) = sa * cb;
    m(3, 3) = ca * cb;
    return m;
}

SuspPoint TransformPoint(const SuspPoint& point, const Matrix3& matrix) {
    const auto row = [&](int r) {
        return Checked(matrix(r, 1) * point.X + matrix(r, 2) * point.Y + matrix(r, 3) * point.Z);
    };
    return {row(1), row(2), row(3)};
}

} // namespace corvanta
