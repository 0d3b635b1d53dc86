#include "solver/WheelAttitude.h"

#include "solver/MLibMaths.h"
#include "solver/SGetLocn.h"

#include <cmath>

namespace corvanta {

double SinglePrecisionAsin(double sine) {
    return ArcSin(static_cast<double>(static_cast<float>(sine)));
}

double WheelCamber(const SuspPoint& wheelCentre, const SuspPoint& stubAxle) {
    const double rise = stubAxle.Z - wheelCentre.Z;
    return SinglePrecisionAsin(Divide(rise, PointDistance(stubAxle, wheelCentre).Distance)) *
           DegreesPerRadian;
}

double WheelSteer(const SuspPoint& wheelCentre, const SuspPoint& stubAxle) {
    const double dx = stubAxle.X - wheelCentre.X;
    const double dy = stubAxle.Y - wheelCentre.Y;
    return SinglePrecisionAsin(Divide(dx, SquareRoot(dy * dy + dx * dx))) * DegreesPerRadian;
}

SuspPoint ContactPatchPoint(const SuspPoint& wheelCentre, const SuspPoint& stubAxle,
                            double radius) {
    const double camber = RadiansPerDegree * WheelCamber(wheelCentre, stubAxle);
    const double steer = RadiansPerDegree * WheelSteer(wheelCentre, stubAxle);
    const double sinCamber = std::sin(camber);
    return {wheelCentre.X + sinCamber * radius * std::sin(steer),
            wheelCentre.Y - sinCamber * radius * std::cos(steer),
            wheelCentre.Z - std::cos(camber) * radius};
}

} // namespace corvanta
