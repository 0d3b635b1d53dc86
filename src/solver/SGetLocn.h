#pragma once

#include "model/Points.h"
#include "solver/MLibMaths.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace corvanta {

/// How far two points lie apart, mm, and the square of it, mm2.
struct PointSpan {
    double Distance = 0;
    double Squared = 0;
};

/// The square of the distance of two points, mm2. Throws Failure "Overflow".
[[nodiscard]] inline double PointDistanceSquared(const SuspPoint& p1, const SuspPoint& p2) {
    const double dx = p1.X - p2.X;
    const double dy = p1.Y - p2.Y;
    const double dz = p1.Z - p2.Z;
    return Checked(dx * dx + dy * dy + dz * dz);
}

/// Distance of two points and its square. Throws Failure "Overflow".
[[nodiscard]] inline PointSpan PointDistance(const SuspPoint& p1, const SuspPoint& p2) {
    const double squared = PointDistanceSquared(p1, p2);
    return {std::sqrt(squared), squared};
}

/// Squares of the three distances that fix a point of a rigid body, mm2.
struct BodyDistances {
    double First = 0;
    double Second = 0;
    double Third = 0;
};

/// Squares of the distances of `target` from three references.
[[nodiscard]] inline BodyDistances MeasureBody(const SuspPoint& ref1, const SuspPoint& ref2,
                                               const SuspPoint& ref3, const SuspPoint& target) {
    return {PointDistanceSquared(target, ref1), PointDistanceSquared(target, ref2),
            PointDistanceSquared(target, ref3)};
}

/// Three points of a rigid body in their new places, ready to place further points of the body.
///
/// A point P at the distances d1, d2, d3 from the three lies on two planes, P . a = r1 and
/// P . b = r2 (from the first reference as origin, a and b the other two), whose line of
/// intersection meets the sphere |P| = d1 in two points. The line runs along a x b; the coordinate
/// in which it is longest is the free one, so that the other two are gentle straight-line functions
/// of it. The plane coefficients depend on the references alone and are worked out once.
class ReferenceTriangle {
  public:
    ReferenceTriangle(const SuspPoint& ref1, const SuspPoint& ref2, const SuspPoint& ref3);

    /// The point at the given distances from the references; of the two such points the one nearer
    /// `near`. Where no point has all three distances the result is that of the closest approach of
    /// the construction: there is no failure but Failure "Overflow". When the references lie within
    /// rounding of one line, the result is meaningless.
    [[nodiscard]] SuspPoint Locate(const BodyDistances& distances, const SuspPoint& near) const;

    /// True when the references lie within rounding of one line.
    [[nodiscard]] bool Degenerate() const { return m_degenerate; }

  private:
    /// Coordinates in the order X, Y, Z, to be taken by number.
    using Coordinates = std::array<double, 3>;

    /// The coordinates of the found point from the first reference, in the order free, next, last.
    using Candidate = std::array<double, 3>;

    [[nodiscard]] static Coordinates CoordinatesOf(const SuspPoint& p) { return {p.X, p.Y, p.Z}; }
    [[nodiscard]] SuspPoint Place(const Candidate& candidate) const;

    Coordinates m_origin;
    Coordinates m_a;
    Coordinates m_b;
    double m_aa;
    double m_bb;
    std::size_t m_free = 0; ///< number of the free coordinate
    std::size_t m_next = 1; ///< the coordinates that follow it in the circle X, Y, Z
    std::size_t m_last = 2;
    double m_determinant = 0; ///< component of the line of intersection along the free coordinate
    double m_slopeNext;
    double m_slopeLast;
    bool m_degenerate = true;
};

/// Moves a point of a rigid body along with three others of it. Distances of `targetOld` are taken
/// from the references in their old places, and a point at these distances is found from their new
/// ones: of the two the one nearer `nearPoint`, and on an exact tie the one of the root with the
/// minus sign. See `ReferenceTriangle::Locate`.
[[nodiscard]] SuspPoint LocatePoint(const SuspPoint& ref1Old, const SuspPoint& ref1New,
                                    const SuspPoint& ref2Old, const SuspPoint& ref2New,
                                    const SuspPoint& ref3Old, const SuspPoint& ref3New,
                                    const SuspPoint& targetOld, const SuspPoint& nearPoint);

/// A point and the three that it is located from.
struct CarriedPoint {
    PointNumber Target = ptWSA;
    std::array<PointNumber, 3> References{};
};

/// `LocatePoint` with points of three sets: old places from `old`, new ones from `solved`, the near
/// point from `near`. Writes the target into `solved`.
void LocatePointByIndex(PointSet& solved, const PointSet& old, const PointSet& near,
                        PointNumber ref1, PointNumber ref2, PointNumber ref3, PointNumber target);

/// Slopes of the plane through three points, Z as a function of X and Y.
struct PlaneSlopes {
    bool Defined = false; ///< false for a plane that stands upright; both slopes are then -1
    double dZdX = -1;
    double dZdY = -1;
};

[[nodiscard]] PlaneSlopes PlaneGradients(const SuspPoint& p1, const SuspPoint& p2,
                                         const SuspPoint& p3);

} // namespace corvanta
