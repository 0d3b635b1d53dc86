#pragma once

#include "model/Points.h"

namespace corvanta {

/// Degrees per radian and radians per degree of the wheel angles. The values are fixed: results of
/// the system rest on them, and they are not each other's reciprocal.
inline constexpr double DegreesPerRadian = 57.29577952;
inline constexpr double RadiansPerDegree = 0.017453292;

/// `ArcSin` of the argument rounded to single precision. Camber and steer carry this resolution.
[[nodiscard]] double SinglePrecisionAsin(double sine);

/// Camber of a wheel with the given centre and stub axle point, deg: positive with the top
/// outwards. Throws Failure "Division by zero" when the two coincide.
[[nodiscard]] double WheelCamber(const SuspPoint& wheelCentre, const SuspPoint& stubAxle);

/// Steer of a wheel, deg: the angle of its axle in plan. Throws Failure "Division by zero" when the
/// axle stands upright.
[[nodiscard]] double WheelSteer(const SuspPoint& wheelCentre, const SuspPoint& stubAxle);

/// The contact patch: the wheel is a disc, and the patch lies at `radius` from its centre, straight
/// down in the plane of the wheel.
[[nodiscard]] SuspPoint ContactPatchPoint(const SuspPoint& wheelCentre, const SuspPoint& stubAxle,
                                          double radius);

} // namespace corvanta
