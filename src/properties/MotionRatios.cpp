#include "properties/MotionRatios.h"

#include "solver/MLibMaths.h"
#include "solver/SGetLocn.h"
#include "solver/WheelAttitude.h"

#include <cmath>
#include <optional>

namespace corvanta {

namespace {

/// An actuator that moves less than this between the slope sets stands still, mm.
constexpr double StandsStill = 1e-6;

/// A velocity ratio of this and more counts as no connection.
constexpr double MostVelocityRatio = 100;

/// A bar whose axis spans at least this much across the car is a lateral one, mm.
constexpr double LateralAxis = 1;

/// Two points nearer than this along X stand above each other for `QuadrantAngle`, mm.
constexpr double UprightLever = 1e-5;

/// Rise of the contact patch between the slope sets, mm.
double PatchRise(const WheelState& state) {
    return state.PointsPlus[ptWTCP].Z - state.PointsMinus[ptWTCP].Z;
}

double VelocityRatio(const WheelState& state, double actuatorMovement) {
    return std::abs(actuatorMovement) < StandsStill ? 0
                                                    : Divide(PatchRise(state), actuatorMovement);
}

/// How much a spring from a moving point to a fixed place shortens between the slope sets, mm.
double Shortening(const WheelState& state, PointNumber moving, const SuspPoint& fixed) {
    return PointDistance(state.PointsMinus[moving], fixed).Distance -
           PointDistance(state.PointsPlus[moving], fixed).Distance;
}

/// Velocity ratio of a lever point by the length of its path.
double ArmVelocityRatio(const WheelState& state, PointNumber lever) {
    return VelocityRatio(state,
                         PointDistance(state.PointsPlus[lever], state.PointsMinus[lever]).Distance);
}

struct LeverAngle {
    double Degrees = 0;
    int Quadrant = 1;
};

/// Direction of `to` seen from `from`, in the X-Z plane or in plan, 0 to 360 deg.
LeverAngle QuadrantAngle(bool useZ, const SuspPoint& from, const SuspPoint& to) {
    const double a = to.X - from.X;
    const double b = useZ ? to.Z - from.Z : to.Y - from.Y;
    if (std::abs(a) < UprightLever) {
        return b >= 0 ? LeverAngle{90, 1} : LeverAngle{270, 3};
    }
    const double t = std::atan(std::abs(Divide(b, a))) * DegreesPerRadian;
    if (b >= 0) {
        return a >= 0 ? LeverAngle{t, 1} : LeverAngle{180 - t, 2};
    }
    return a < 0 ? LeverAngle{180 + t, 3} : LeverAngle{360 - t, 4};
}

/// `point` turned about `centre` in plan, deg. Its Z stays.
SuspPoint RotateInPlan(double degrees, const SuspPoint& centre, const SuspPoint& point) {
    const double c = std::cos(degrees * RadiansPerDegree);
    const double s = std::sin(degrees * RadiansPerDegree);
    const double dx = point.X - centre.X;
    const double dy = point.Y - centre.Y;
    return {centre.X + c * dx - s * dy, centre.Y + s * dx + c * dy, point.Z};
}

double LateralBarRotation(const PointSet& points, const PointSet& staticPoints) {
    const bool useZ = std::abs(points[ptARP1].Y - points[ptARP2].Y) >= LateralAxis;
    const int atStatic = QuadrantAngle(false, staticPoints[ptARP1], staticPoints[ptARI]).Quadrant;
    const LeverAngle lever = QuadrantAngle(useZ, points[ptARP1], points[ptARI]);
    // A lever that crosses the zero line keeps its sign.
    const bool crossed = (atStatic == 1 || atStatic == 4) && lever.Quadrant == 4;
    return (crossed ? lever.Degrees - 360 : lever.Degrees) - 90;
}

double TBarRotation(const PointSet& points) {
    const double stem = QuadrantAngle(true, points[ptTBP1], points[ptTSI]).Degrees;
    const SuspPoint end = RotateInPlan(90 - stem, points[ptTBP1], points[ptTBDLO]);
    return 90 - QuadrantAngle(false, points[ptTBP1], end).Degrees;
}

/// True for a velocity ratio that stands for a working connection.
bool Connects(double ratio) {
    return ratio > 0 && ratio < MostVelocityRatio;
}

double RateAtWheel(double stiffness, double ratio) {
    return Divide(stiffness, ratio * ratio);
}

/// Change of the inverse square of a ratio, which leaves the stiffness out of it.
double InverseSquareChange(double value, double reference) {
    const double now = Divide(1, value * value);
    const double then = Divide(1, reference * reference);
    return Divide(now - then, then);
}

} // namespace

void CalculateMotionSpring(const Suspension& document, WheelState& state) {
    const std::optional<PointNumber> end = MovingSpringEnd(document.Data);
    if (!end) {
        state.Channels.Set(chSpringVelocityRatio, 0);
        state.Channels.Set(chSpringLength, 0);
        return;
    }
    const SuspPoint& chassis = state.Points[ptSAI];
    state.Channels.Set(chSpringLength, PointDistance(state.Points[*end], chassis).Distance);
    state.Channels.Set(chSpringVelocityRatio,
                       VelocityRatio(state, Shortening(state, *end, chassis)));
}

void CalculateMotionThirdSpring(const Suspension& document, WheelState& state,
                                const WheelState& rowStartState) {
    const SuspensionData& data = document.Data;
    double length = 0;
    double shortening = 0;
    if (data.ThirdSpringMechanism == tsCornerSpring) {
        state.Channels.Set(chCentreSpringVelocityRatio, 0);
        state.Channels.Set(chCentreSpringLength, 0);
        return;
    }
    if (data.CentreSpringSystem == csLongitudinalViaTBar) {
        const SuspPoint& chassis = state.Points[ptTSO];
        length = PointDistance(state.Points[ptTSI], chassis).Distance;
        shortening = Shortening(state, ptTSI, chassis);
    } else if (data.ChassisMotion == cmHeave) {
        length = state.Points[ptLCSI].Y + state.Points[ptLCSI].Y;
        shortening = state.PointsMinus[ptLCSI].Y - state.PointsPlus[ptLCSI].Y;
    } else {
        SuspPoint opposite = rowStartState.Points[ptLCSI];
        opposite.Y = -opposite.Y;
        length = PointDistance(state.Points[ptLCSI], opposite).Distance;
        shortening = Shortening(state, ptLCSI, opposite);
    }
    state.Channels.Set(chCentreSpringLength, length);
    state.Channels.Set(chCentreSpringVelocityRatio, VelocityRatio(state, shortening));
}

void CalculateMotionPRod(const Suspension& document, WheelState& state) {
    state.Channels.Set(chPushrodVelocityRatio, HasRocker(document.Data.SpringMechanism)
                                                   ? ArmVelocityRatio(state, ptPRI)
                                                   : 0);
}

void CalculateMotionARB(const Suspension& document, WheelState& state,
                        const WheelState& staticState) {
    const SuspensionData& data = document.Data;
    if (data.ChassisMotion == cmHeave || data.ARBMechanism == abNone) {
        state.Channels.Set(chARBRotation, 0);
        state.Channels.Set(chARBVelocityRatio, 0);
        return;
    }
    const bool tBar = data.ARBMechanism == abTBar;
    const double ratio = ArmVelocityRatio(state, tBar ? ptTBDLO : ptARI);
    state.Channels.Set(chARBRotation, tBar ? TBarRotation(state.Points)
                                           : LateralBarRotation(state.Points, staticState.Points));
    state.Channels.Set(chARBVelocityRatio, ratio);
    state.Channels.Set(chARBRatio, ratio * document.StaticLengths.ARBInputLever / 1000);
}

void CalculateWheelRates(const Suspension& document, WheelState& state) {
    const SuspensionData& data = document.Data;
    ChannelCells& channels = state.Channels;
    const double spring = channels[chSpringVelocityRatio];
    const double centre = channels[chCentreSpringVelocityRatio];
    const double bar = channels[chARBVelocityRatio];
    channels.Set(chWheelRateSpring, Connects(spring) ? RateAtWheel(data.KSpring, spring) : 0);
    // Under heave the two wheels share the centre spring.
    const double share = data.ChassisMotion == cmHeave ? 2 : 1;
    channels.Set(chWheelRateCentreSpring,
                 Connects(centre) ? RateAtWheel(data.KThirdSpring, centre) / share : 0);
    channels.Set(chWheelRateARB, bar > 0 ? RateAtWheel(data.KARB, bar) : 0);
}

void CalculateWheelRateTotal(const Suspension& document, WheelState& state) {
    const SuspensionData& data = document.Data;
    ChannelCells& channels = state.Channels;
    const bool spring = Connects(channels[chSpringVelocityRatio]) && data.KSpring > 0;
    const bool centre = Connects(channels[chCentreSpringVelocityRatio]) && data.KThirdSpring > 0;
    double total = 0;
    if (data.KTyre > 0 && data.KLink > 0 && (spring || centre)) {
        const double parallel = channels[chWheelRateARB] + channels[chWheelRateCentreSpring] +
                                channels[chWheelRateSpring];
        total = Divide(1, Divide(1, data.KTyre) + Divide(1, data.KLink) + Divide(1, parallel));
    }
    channels.Set(chWheelRateTotal, total);
    if (total > 0) {
        channels.Set(chRollStiffness, Checked(Squared(channels[chHalfTrack] * 2) * (total * 0.5)));
    }
}

void CalculateWheelRateChanges(WheelState& state, const WheelState& referenceState) {
    ChannelCells& channels = state.Channels;
    const auto setRelative = [&](ChannelId changed, ChannelId source) {
        const double reference = referenceState.Channels[source];
        if (reference > 0) {
            channels.Set(changed, Divide(channels[source] - reference, reference));
        }
    };
    const auto setInverseSquare = [&](ChannelId changed, ChannelId source) {
        const double reference = referenceState.Channels[source];
        if (reference > 0) {
            channels.Set(changed, InverseSquareChange(channels[source], reference));
        }
    };
    setRelative(chWheelRateChangeTotal, chWheelRateTotal);
    setInverseSquare(chWheelRateChangeSpring, chSpringVelocityRatio);
    setInverseSquare(chWheelRateChangeCentreSpring, chCentreSpringVelocityRatio);
    setInverseSquare(chWheelRateChangeARB, chARBVelocityRatio);
    setRelative(chRollStiffnessChange, chRollStiffness);
}

} // namespace corvanta
