#include "results/CornerProjection.h"

#include "solver/MLibMaths.h"

#include <cmath>
#include <numbers>

namespace corvanta {

namespace {

struct SineAndCosine {
    double Sine = 0;
    double Cosine = 1;
};

/// Exact at multiples of 90 degrees.
SineAndCosine ExactAt90(double degrees) {
    const double quarters = degrees / 90;
    const double whole = std::round(quarters);
    const double rest = (quarters - whole) * std::numbers::pi / 2;
    const double s = std::sin(rest);
    const double c = std::cos(rest);
    switch (static_cast<int>(std::fmod(whole, 4) + 4) % 4) {
    case 0:
        return {s, c};
    case 1:
        return {c, -s};
    case 2:
        return {-s, -c};
    default:
        return {-c, s};
    }
}

SuspPoint WithYTurned(const SuspPoint& p) {
    return {p.X, -p.Y, p.Z};
}

} // namespace

Matrix3 CornerProjection::RotationOf(const ViewSide& side) {
    const auto [s, c] = ExactAt90(side.Turn);
    const auto [st, ct] = ExactAt90(side.Tilt);
    Matrix3 m;
    m(1, 1) = c;
    m(1, 2) = s;
    m(2, 1) = -ct * s;
    m(2, 2) = ct * c;
    m(2, 3) = st;
    m(3, 1) = st * s;
    m(3, 2) = -st * c;
    m(3, 3) = ct;
    return m;
}

Point2D CornerProjection::Place(const SuspPoint& point) const {
    const Point2D way = OnSurface(VectorSubtract(point, Middle));
    return {Centre.X + way.X, Centre.Y + way.Y};
}

double CornerProjection::Nearness(const SuspPoint& point) const {
    return TransformPoint(WithYTurned(VectorSubtract(point, Middle)), Rotation).Z;
}

Point2D CornerProjection::OnSurface(const SuspPoint& way) const {
    const SuspPoint seen = TransformPoint(WithYTurned(way), Rotation);
    return {Scale * seen.X, -Scale * seen.Y};
}

SuspPoint CornerProjection::InCar(const Point2D& way) const {
    const double right = way.X / Scale;
    const double up = -way.Y / Scale;
    // The inverse of a rotation is its transpose.
    const auto along = [&](int axis) { return Rotation(1, axis) * right + Rotation(2, axis) * up; };
    return {along(1), -along(2), along(3)};
}

} // namespace corvanta
