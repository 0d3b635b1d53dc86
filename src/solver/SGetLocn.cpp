#include "solver/SGetLocn.h"

namespace corvanta {

namespace {

/// A form whose determinant, mm2, is not above this is not used: the references lie too nearly in a
/// plane that holds the free axis.
constexpr double DegenerateDeterminant = 0.01;

/// Slope and intercept of a degenerate form. It is used only when all three forms are degenerate.
constexpr double DegenerateSlope = 1e16;

/// Below this an upright plane has no slopes; mm2.
constexpr double UprightPlane = 1e-6;

} // namespace

ReferenceTriangle::ReferenceTriangle(const SuspPoint& ref1, const SuspPoint& ref2,
                                     const SuspPoint& ref3)
    : m_origin(CoordinatesOf(ref1)),
      m_a(CoordinatesOf(VectorSubtract(ref2, ref1))),
      m_b(CoordinatesOf(VectorSubtract(ref3, ref1))),
      m_aa(m_a[0] * m_a[0] + m_a[1] * m_a[1] + m_a[2] * m_a[2]),
      m_bb(m_b[0] * m_b[0] + m_b[1] * m_b[1] + m_b[2] * m_b[2]),
      m_slopeNext(DegenerateSlope),
      m_slopeLast(DegenerateSlope) {
    const Coordinates line{m_a[2] * m_b[1] - m_b[2] * m_a[1], m_b[2] * m_a[0] - m_b[0] * m_a[2],
                           m_b[0] * m_a[1] - m_b[1] * m_a[0]};
    // Both slopes of a form are ratios of the other two components of the line to its own, so the
    // form with the smallest of the larger slopes is the one of the largest component; on a tie X
    // comes before Y and Y before Z.
    const double dX = std::abs(line[0]);
    const double dY = std::abs(line[1]);
    const double dZ = std::abs(line[2]);
    if (dX < dY || dX < dZ) {
        m_free = dY >= dX && dY >= dZ ? 1 : 2;
        m_next = m_free == 1 ? 2 : 0;
        m_last = m_free == 1 ? 0 : 1;
    }
    m_determinant = line[m_free];
    m_degenerate = std::abs(m_determinant) <= DegenerateDeterminant;
    if (m_degenerate) { // and with it both other forms, of smaller determinants
        m_free = 0;
        m_next = 1;
        m_last = 2;
    } else {
        m_slopeNext = line[m_next] / m_determinant;
        m_slopeLast = line[m_last] / m_determinant;
    }
}

SuspPoint ReferenceTriangle::Place(const Candidate& candidate) const {
    Coordinates place{};
    place[m_free] = candidate[0] + m_origin[m_free];
    place[m_next] = candidate[1] + m_origin[m_next];
    place[m_last] = candidate[2] + m_origin[m_last];
    return {place[0], place[1], place[2]};
}

SuspPoint ReferenceTriangle::Locate(const BodyDistances& distances, const SuspPoint& near) const {
    const double r1 = (distances.First - distances.Second + m_aa) / 2;
    const double r2 = (distances.First - distances.Third + m_bb) / 2;
    double interceptNext = DegenerateSlope;
    double interceptLast = DegenerateSlope;
    if (!m_degenerate) {
        interceptNext = (m_a[m_last] * r2 - m_b[m_last] * r1) / m_determinant;
        interceptLast = (m_b[m_next] * r1 - m_a[m_next] * r2) / m_determinant;
    }

    // The free coordinate is a root of A u^2 + B u + C; a negative discriminant, where the spheres
    // do not meet, goes on by its absolute value.
    const double A = m_slopeNext * m_slopeNext + m_slopeLast * m_slopeLast + 1;
    const double B = 2 * m_slopeLast * interceptLast + 2 * m_slopeNext * interceptNext;
    const double C =
        interceptNext * interceptNext + interceptLast * interceptLast - distances.First;
    const double S = std::sqrt(std::abs(B * B - 4 * A * C));
    const auto candidate = [&](double root) {
        return Place(
            {root, m_slopeNext * root + interceptNext, m_slopeLast * root + interceptLast});
    };
    const SuspPoint plus = candidate((S - B) / (2 * A));
    const SuspPoint minus = candidate((-B - S) / (2 * A));
    return PointDistanceSquared(minus, near) > PointDistanceSquared(plus, near) ? plus : minus;
}

SuspPoint LocatePoint(const SuspPoint& ref1Old, const SuspPoint& ref1New, const SuspPoint& ref2Old,
                      const SuspPoint& ref2New, const SuspPoint& ref3Old, const SuspPoint& ref3New,
                      const SuspPoint& targetOld, const SuspPoint& nearPoint) {
    return ReferenceTriangle(ref1New, ref2New, ref3New)
        .Locate(MeasureBody(ref1Old, ref2Old, ref3Old, targetOld), nearPoint);
}

void LocatePointByIndex(PointSet& solved, const PointSet& old, const PointSet& near,
                        PointNumber ref1, PointNumber ref2, PointNumber ref3, PointNumber target) {
    solved[target] = LocatePoint(old[ref1], solved[ref1], old[ref2], solved[ref2], old[ref3],
                                 solved[ref3], old[target], near[target]);
}

PlaneSlopes PlaneGradients(const SuspPoint& p1, const SuspPoint& p2, const SuspPoint& p3) {
    const Vector3 p = VectorSubtract(p2, p1);
    const Vector3 q = VectorSubtract(p3, p1);
    const double nx = p.Y * q.Z - p.Z * q.Y;
    const double ny = q.X * p.Z - p.X * q.Z;
    const double nz = q.X * p.Y - p.X * q.Y;
    if (std::abs(nz) < UprightPlane) {
        return {};
    }
    return {true, Divide(nx, nz), Divide(ny, nz)};
}

} // namespace corvanta
