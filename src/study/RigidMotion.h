#pragma once

#include "solver/MLibMaths.h"

#include <array>
#include <cstddef>
#include <optional>

namespace corvanta {

[[nodiscard]] inline Vector3 VectorAdd(const Vector3& a, const Vector3& b) {
    return {a.X + b.X, a.Y + b.Y, a.Z + b.Z};
}

[[nodiscard]] inline Vector3 VectorScale(const Vector3& a, double factor) {
    return {a.X * factor, a.Y * factor, a.Z * factor};
}

[[nodiscard]] inline double DotProduct(const Vector3& a, const Vector3& b) {
    return a.X * b.X + a.Y * b.Y + a.Z * b.Z;
}

/// Distance of two points, mm; one that is no number stays one.
[[nodiscard]] double Span(const SuspPoint& a, const SuspPoint& b);

/// Three directions square to each other: the first along `along`, the second square to it in the
/// plane with `towards`. Nothing when the two lie in one line.
using Directions = std::array<Vector3, 3>;
[[nodiscard]] std::optional<Directions> DirectionsOf(const Vector3& along, const Vector3& towards);

/// The coordinates of a vector in three directions, and the vector of such coordinates.
[[nodiscard]] Vector3 InDirections(const Directions& directions, const Vector3& vector);
[[nodiscard]] Vector3 FromDirections(const Directions& directions, const Vector3& coordinates);

/// A rotation about the axis of a vector by its length in radians (Rodrigues' formula).
class CRotation {
  public:
    explicit CRotation(const Vector3& turn);
    [[nodiscard]] Vector3 Turned(const Vector3& v) const;

  private:
    Vector3 m_turn;
    double m_first = 1;    ///< sin(a) / a
    double m_second = 0.5; ///< (1 - cos(a)) / a2
};

/// A line that a body turns about.
class CAxis {
  public:
    /// The axis is without a direction when its points coincide: nothing turns about it then.
    CAxis(const SuspPoint& first, const SuspPoint& second);

    [[nodiscard]] SuspPoint Turned(const SuspPoint& point, double angle) const;

    /// The angle, rad, about which `point` is `distance` from `target`; of the two the one nearer
    /// `near`. Nothing when no angle gives that distance.
    [[nodiscard]] std::optional<double> AngleAtDistance(const SuspPoint& point,
                                                        const SuspPoint& target, double distance,
                                                        double near) const;

  private:
    SuspPoint m_origin;
    Vector3 m_direction;
};

/// The most unknowns that a linkage has: six of the upright and two of rockers.
inline constexpr std::size_t MostUnknowns = 8;
using Unknowns = std::array<double, MostUnknowns>;
using Slopes = std::array<Unknowns, MostUnknowns>; ///< row by row

/// Solves `count` linear equations by elimination with row pivots. False when they are dependent.
[[nodiscard]] bool SolveLinear(Slopes matrix, Unknowns right, std::size_t count,
                               Unknowns& solution);

} // namespace corvanta
