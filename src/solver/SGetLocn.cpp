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

double Dot(const Vector3& a, const Vector3& b) {
    return a.X * b.X + a.Y * b.Y + a.Z * b.Z;
}

} // namespace

ReferenceTriangle::ReferenceTriangle(const SuspPoint& ref1, const SuspPoint& ref2,
                                     const SuspPoint& ref3)
    : m_origin(ref1),
      m_a(VectorSubtract(ref2, ref1)),
      m_b(VectorSubtract(ref3, ref1)),
      m_normal{m_a.Z * m_b.Y - m_b.Z * m_a.Y, m_b.Z * m_a.X - m_b.X * m_a.Z,
               m_b.X * m_a.Y - m_b.Y * m_a.X},
      m_aa(Dot(m_a, m_a)),
      m_bb(Dot(m_b, m_b)) {
    // Both slopes of a form are ratios of the other two components of the normal to its own, so the
    // form with the smallest of the larger slopes is the one of the largest component.
    const double dX = std::abs(m_normal.X);
    const double dY = std::abs(m_normal.Y);
    const double dZ = std::abs(m_normal.Z);
    if (dX >= dY && dX >= dZ && dX > DegenerateDeterminant) {
        m_free = FreeCoordinate::X;
        m_slopeU = m_normal.Y / m_normal.X;
        m_slopeV = m_normal.Z / m_normal.X;
    } else if (dY >= dX && dY >= dZ && dY > DegenerateDeterminant) {
        m_free = FreeCoordinate::Y;
        m_slopeU = m_normal.X / m_normal.Y;
        m_slopeV = m_normal.Z / m_normal.Y;
    } else if (dZ > DegenerateDeterminant) {
        m_free = FreeCoordinate::Z;
        m_slopeU = m_normal.X / m_normal.Z;
        m_slopeV = m_normal.Y / m_normal.Z;
    }
}

ReferenceTriangle::StraightLines ReferenceTriangle::Lines(double r1, double r2) const {
    StraightLines lines{m_slopeU, m_slopeV, 0, 0};
    switch (m_free) {
    case FreeCoordinate::X: // u is y, v is z
        lines.InterceptU = (m_a.Z * r2 - m_b.Z * r1) / m_normal.X;
        lines.InterceptV = (m_b.Y * r1 - m_a.Y * r2) / m_normal.X;
        break;
    case FreeCoordinate::Y: // u is x, v is z
        lines.InterceptU = (m_b.Z * r1 - m_a.Z * r2) / m_normal.Y;
        lines.InterceptV = (m_a.X * r2 - m_b.X * r1) / m_normal.Y;
        break;
    case FreeCoordinate::Z: // u is x, v is y
        lines.InterceptU = (m_a.Y * r2 - m_b.Y * r1) / m_normal.Z;
        lines.InterceptV = (m_b.X * r1 - m_a.X * r2) / m_normal.Z;
        break;
    case FreeCoordinate::None:
        lines = {DegenerateSlope, DegenerateSlope, DegenerateSlope, DegenerateSlope};
        break;
    }
    return lines;
}

SuspPoint ReferenceTriangle::Candidate(const StraightLines& lines, double root) const {
    const double u = lines.SlopeU * root + lines.InterceptU;
    const double v = lines.SlopeV * root + lines.InterceptV;
    switch (m_free) {
    case FreeCoordinate::Y:
        return {u + m_origin.X, root + m_origin.Y, v + m_origin.Z};
    case FreeCoordinate::Z:
        return {u + m_origin.X, v + m_origin.Y, root + m_origin.Z};
    case FreeCoordinate::X:
    case FreeCoordinate::None:
        break;
    }
    return {root + m_origin.X, u + m_origin.Y, v + m_origin.Z};
}

SuspPoint ReferenceTriangle::Locate(const BodyDistances& distances, const SuspPoint& near) const {
    const double r1 = (distances.First - distances.Second + m_aa) / 2;
    const double r2 = (distances.First - distances.Third + m_bb) / 2;
    const StraightLines lines = Lines(r1, r2);

    // The free coordinate is a root of A u^2 + B u + C; a negative discriminant, where the spheres
    // do not meet, goes on by its absolute value.
    const double A = lines.SlopeU * lines.SlopeU + lines.SlopeV * lines.SlopeV + 1;
    const double B = 2 * lines.SlopeV * lines.InterceptV + 2 * lines.SlopeU * lines.InterceptU;
    const double C =
        lines.InterceptU * lines.InterceptU + lines.InterceptV * lines.InterceptV - distances.First;
    const double S = std::sqrt(std::abs(B * B - 4 * A * C));
    const SuspPoint plus = Candidate(lines, (S - B) / (2 * A));
    const SuspPoint minus = Candidate(lines, (-B - S) / (2 * A));
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
