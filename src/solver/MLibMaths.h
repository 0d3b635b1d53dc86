#pragma once

#include "model/Points.h"

#include <cmath>

namespace corvanta {

/// A direction or difference of two points, mm or without unit.
using Vector3 = SuspPoint;

[[noreturn]] void RaiseDivisionByZero();
[[noreturn]] void RaiseOverflow();
[[noreturn]] void RaiseInvalidCall();

/// The value itself. Throws Failure "Overflow" when it is infinite or not a number: none leaves a
/// routine of the program.
[[nodiscard]] inline double Checked(double value) {
    if (!std::isfinite(value)) {
        RaiseOverflow();
    }
    return value;
}

/// a / b. Throws Failure "Division by zero" when b is exactly 0, "Overflow" when the quotient is
/// beyond the range of a double.
[[nodiscard]] inline double Divide(double a, double b) {
    if (b == 0) { // exactly 0 is the failure, anything else divides
        RaiseDivisionByZero();
    }
    return Checked(a / b);
}

/// The square root. Throws Failure "Invalid procedure call or argument" for a negative number.
[[nodiscard]] inline double SquareRoot(double x) {
    if (x < 0) {
        RaiseInvalidCall();
    }
    return std::sqrt(x);
}

/// -1, 0 or 1.
[[nodiscard]] inline double Sign(double x) {
    return x > 0 ? 1.0 : (x < 0 ? -1.0 : 0.0);
}

[[nodiscard]] inline double Squared(double x) {
    return x * x;
}

/// The angle of (x, y) in radians, 0 up to (not including) 2 pi; y comes first. A coordinate within
/// 1e-8 of 0 counts as 0. Rests on a half pi of 1.570796326794895, a little below the true one.
[[nodiscard]] double ArcTan2(double y, double x);

/// The angle in radians brought into the range of `ArcTan2`.
[[nodiscard]] double NormaliseAngle(double angle);

/// The arc sine in radians; the half pi of `ArcTan2` with the sign of `s` where abs(s) is 1 or
/// more, so that it never fails.
[[nodiscard]] double ArcSin(double s);

/// The vector divided by its length; a length of exactly 0 gives (0, 0, 0).
[[nodiscard]] Vector3 UnitVector(double x, double y, double z);

[[nodiscard]] Vector3 CrossProduct(const Vector3& a, const Vector3& b);
[[nodiscard]] double VectorMagnitude(double x, double y, double z);

/// a - b.
[[nodiscard]] inline Vector3 VectorSubtract(const Vector3& a, const Vector3& b) {
    return {a.X - b.X, a.Y - b.Y, a.Z - b.Z};
}

} // namespace corvanta
