#include "solver/MLibMaths.h"

#include "model/Failure.h"

namespace corvanta {

namespace {

/// The half pi of the angle routines. Results of the system rest on this value.
constexpr double HalfPi = 1.570796326794895;

/// A coordinate nearer to 0 than this counts as 0 in `ArcTan2`.
constexpr double AxisTolerance = 1e-8;

} // namespace

void RaiseDivisionByZero() {
    throw Failure(fnDivisionByZero, "Division by zero");
}

void RaiseOverflow() {
    throw Failure(fnOverflow, "Overflow");
}

void RaiseInvalidCall() {
    throw Failure(fnInvalidCall, "Invalid procedure call or argument");
}

double ArcTan2(double y, double x) {
    if (std::abs(y) < AxisTolerance) {
        return (1 - Sign(x)) * HalfPi;
    }
    const double base = (2 - Sign(y)) * HalfPi;
    if (std::abs(x) < AxisTolerance) {
        return base;
    }
    return (std::abs(std::atan(Divide(y, x))) - HalfPi) * Sign(y) * Sign(x) + base;
}

double NormaliseAngle(double angle) {
    return ArcTan2(std::sin(angle), std::cos(angle));
}

double ArcSin(double s) {
    if (std::abs(s) >= 1) {
        return Sign(s) * HalfPi;
    }
    return std::atan(s / std::sqrt(1 - s * s));
}

Vector3 UnitVector(double x, double y, double z) {
    const double magnitude = VectorMagnitude(x, y, z);
    if (magnitude == 0) { // exactly the zero vector
        return {};
    }
    return {x / magnitude, y / magnitude, z / magnitude};
}

Vector3 CrossProduct(const Vector3& a, const Vector3& b) {
    return {Checked(a.Y * b.Z - a.Z * b.Y), Checked(a.Z * b.X - a.X * b.Z),
            Checked(a.X * b.Y - a.Y * b.X)};
}

double VectorMagnitude(double x, double y, double z) {
    return Checked(std::sqrt(x * x + y * y + z * z));
}

} // namespace corvanta
