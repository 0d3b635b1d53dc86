#include "properties/SGeoProp.h"

#include "model/Failure.h"
#include "properties/MotionRatios.h"
#include "properties/RollCentre.h"
#include "properties/SLinkLds.h"
#include "solver/MLibMaths.h"
#include "solver/SGetLocn.h"
#include "solver/WheelAttitude.h"

#include <cmath>
#include <string_view>

namespace corvanta {

namespace {

/// A wishbone angle smaller than this is 0, deg.
constexpr double LeastWishboneAngle = 1e-12;

/// Joints of a driveshaft must lie at least this far apart across the car, mm.
constexpr double LeastDriveshaftSpan = 1;

/// The square of a driveshaft's span across the car must not vanish against its length, mm2.
constexpr double LeastDriveshaftSpanSquared = 1e-6;

/// The line through two points as seen along one axis: `Slope` across per height.
struct AxisLine {
    double Slope = 0;
    double AtGround = 0; ///< where the line stands at the height of the contact patch
};

AxisLine SteeringAxis(double upperAcross, double lowerAcross, const SuspPoint& upper,
                      const SuspPoint& lower, double groundHeight) {
    const double slope = Divide(upperAcross - lowerAcross, upper.Z - lower.Z);
    return {slope, slope * groundHeight + upperAcross - slope * upper.Z};
}

/// Runs a step under its name: a failure thrown out of it leaves the name in `message`.
template <typename Step>
void RunNamed(std::string& message, std::string_view name, Step step) {
    try {
        step();
    } catch (...) {
        message = "There was an error in " + std::string(name);
        throw;
    }
}

void SetWishboneAngle(WheelState& state, ChannelId channel, double slope) {
    const double angle = std::atan(slope) * DegreesPerRadian;
    state.Channels.Set(channel, std::abs(angle) < LeastWishboneAngle ? 0 : angle);
}

/// Kingpin inclination and offset, camber, half track, steer, caster and caster offset.
void SetWheelAngles(WheelState& state) {
    const PointSet& points = state.Points;
    const SuspPoint& upper = points[ptUWO];
    const SuspPoint& lower = points[ptLWO];
    const SuspPoint& patch = points[ptWTCP];
    ChannelCells& channels = state.Channels;

    const AxisLine kingpin = SteeringAxis(upper.Y, lower.Y, upper, lower, patch.Z);
    channels.Set(chKingpinInclination, std::atan(kingpin.Slope) * -DegreesPerRadian);
    channels.Set(chKingpinOffset, patch.Y - kingpin.AtGround);
    channels.Set(chCamberAngle, WheelCamber(points[ptWC], points[ptWSA]));
    channels.Set(chHalfTrack, patch.Y);
    channels.Set(chSteerAngle, WheelSteer(points[ptWC], points[ptWSA]));

    const AxisLine caster = SteeringAxis(upper.X, lower.X, upper, lower, patch.Z);
    channels.Set(chCasterAngle, std::atan(caster.Slope) * DegreesPerRadian);
    channels.Set(chCasterOffset, caster.AtGround - patch.X);
}

/// All channels of state (r, w) that no other state of its rack step is needed for.
bool CalculateState(Suspension& document, int r, int w, std::string& message) {
    WheelState& state = document.WheelStates(r, w);
    if (!CalculateGeometry(document, state, message)) {
        return false;
    }
    RunNamed(message, "CalculateAntiDiveSquatRollPercentages",
             [&] { CalculateAntiDiveSquatRollPercentages(document, state); });
    if (document.Data.ThirdSpringMechanism != tsCentreSpring) {
        RunNamed(message, "CalculateMotionSpring", [&] { CalculateMotionSpring(document, state); });
    }
    RunNamed(message, "CalculateMotionThirdSpring",
             [&] { CalculateMotionThirdSpring(document, state, document.WheelStates(r, 1)); });
    RunNamed(message, "CalculateMotionPRod", [&] { CalculateMotionPRod(document, state); });
    RunNamed(message, "CalculateMotionARB", [&] {
        CalculateMotionARB(document, state,
                           document.WheelStates(document.StaticRack, document.StaticWheel));
    });
    RunNamed(message, "CalculateWheelRates", [&] { CalculateWheelRates(document, state); });
    RunNamed(message, "CalculateWheelRateTotal", [&] { CalculateWheelRateTotal(document, state); });
    return CalculateDriveshaftAngles(document, state, message);
}

/// Channels of a state that are told against the static wheel step of its rack step.
void CompareState(WheelState& state, const WheelState& reference, std::string& message) {
    RunNamed(message, "CalculateSteerAngleBump",
             [&] { CalculateSteerAngleBump(state, reference); });
    RunNamed(message, "CalculateWheelRateChanges",
             [&] { CalculateWheelRateChanges(state, reference); });
}

/// Channels of the states of a rack step that are told against its static wheel step. With
/// `negateBar` the rotation of the bar changes its sign.
void CompareRow(Suspension& document, int r, const GridPart& part, bool negateBar,
                std::string& message) {
    const WheelState& reference = document.WheelStates(r, document.StaticWheel);
    for (int w = 2; w <= document.NW + 1; ++w) {
        if (!part.Has(r, w)) {
            continue;
        }
        WheelState& state = document.WheelStates(r, w);
        if (negateBar) {
            state.Channels.Set(chARBRotation, -state.Channels[chARBRotation]);
        }
        CompareState(state, reference, message);
    }
}

/// Steer and Ackerman of a state against the opposite wheel on the same rack movement.
void SetSteeringOfAxle(Suspension& document, const GridPart& part, int r, int w) {
    const int mirrorStep = 2 * document.StaticRack - r;
    if (!part.Has(mirrorStep, w)) {
        return;
    }
    WheelState& state = document.WheelStates(r, w);
    const WheelState& mirror = document.WheelStates(mirrorStep, w);
    const double own = state.Channels[chSteerAngle];
    const double opposite = -mirror.Channels[chSteerAngle];
    state.Channels.Set(chSteerAngleDelta, own - opposite);
    double ackerman = 0;
    if (r < document.StaticRack) {
        ackerman = CalculateAckerman(document, own, opposite);
    } else if (r > document.StaticRack) {
        ackerman = CalculateAckerman(document, -opposite, -own);
    }
    state.Channels.Set(chAckerman, ackerman);
}

/// True when a rack step shows the bar turning the other way between its ends in the part.
bool BarTurnsBack(const Suspension& document, int r, const GridPart& part) {
    int bump = 2;
    int droop = document.NW + 1;
    while (bump < droop && !part.Has(r, bump)) {
        ++bump;
    }
    while (bump < droop && !part.Has(r, droop)) {
        --droop;
    }
    return document.WheelStates(r, droop).Channels[chARBRotation] >
           document.WheelStates(r, bump).Channels[chARBRotation];
}

/// All channels of the states of a rack step that its own rack step is enough for.
bool CalculateRow(Suspension& document, int r, const GridPart& part, bool& negateBar,
                  std::string& message) {
    for (int w = 2; w <= document.NW + 1; ++w) {
        if (part.Has(r, w) && !CalculateState(document, r, w, message)) {
            return false;
        }
    }
    negateBar = negateBar || BarTurnsBack(document, r, part);
    CompareRow(document, r, part, negateBar, message);
    if (HasLinkLoads(document.Data.SpringMechanism)) {
        for (int w = 2; w <= document.NW + 1; ++w) {
            if (part.Has(r, w)) {
                CalculateLinkLoads(document.WheelStates(r, w), document.Data);
            }
        }
    }
    return true;
}

/// Runs a step for one state. False when it fails; `first` takes the first failure.
template <typename Step>
bool Try(StateFailure& first, int r, int w, Step step) {
    std::string message;
    try {
        if (step(message)) {
            return true;
        }
    } catch (const Failure& failure) {
        if (message.empty()) {
            message = "The following error occurred: " + failure.Description();
        }
    }
    if (first.Message.empty()) {
        first = {message, r, w};
    }
    return false;
}

/// Takes the states of a rack step out of the part whose channels can't be calculated.
void DropFailingStates(Suspension& document, GridPart& part, int r, StateFailure& first) {
    const WheelState& reference = document.WheelStates(r, document.StaticWheel);
    const auto succeeds = [&](int w) {
        return Try(first, r, w, [&](std::string& message) {
            WheelState& state = document.WheelStates(r, w);
            if (!CalculateState(document, r, w, message)) {
                return false;
            }
            CompareState(state, reference, message);
            if (HasLinkLoads(document.Data.SpringMechanism)) {
                CalculateLinkLoads(state, document.Data);
            }
            return true;
        });
    };
    if (!succeeds(document.StaticWheel)) {
        part.RemoveRow(r);
    }
    for (int w = 2; w <= document.NW + 1; ++w) {
        if (part.Has(r, w) && !succeeds(w)) {
            part.Remove(r, w);
        }
    }
}

/// Wheel travel and height of the roll centre above the ground, of start states too.
void SetHeights(Suspension& document, const GridPart& part) {
    for (int r = 1; r <= document.NR + 1; ++r) {
        if (!part.HasRow(r)) {
            continue;
        }
        const double startHeight = document.WheelStates(r, 1).Points[ptWTCP].Z;
        for (int w = 1; w <= document.NW + 1; ++w) {
            if (!part.Has(r, w)) {
                continue;
            }
            WheelState& state = document.WheelStates(r, w);
            const double patchHeight = state.Points[ptWTCP].Z;
            state.Channels.Set(chWheelTravel, patchHeight - startHeight);
            state.Channels.Set(chRollCentreToGround,
                               state.Channels[chRollCentreToOrigin] - patchHeight);
        }
    }
}

/// Rack travel of a state and its channels of the axle.
void SetAxleChannels(Suspension& document, const GridPart& part, int r, int w) {
    WheelState& state = document.WheelStates(r, w);
    state.Channels.Set(chRackTravel, state.Points[ptTRI].Y - document.StaticPoints()[ptTRI].Y);
    SetSteeringOfAxle(document, part, r, w);
    CalculateRollCentre(document, part, r, w);
}

/// Runs a step for every state of the part from (2, 2), the wheel steps of all rack steps in
/// ascending order.
template <typename Step>
void ForEachState(const Suspension& document, const GridPart& part, Step step) {
    for (int w = 2; w <= document.NW + 1; ++w) {
        for (int r = 2; r <= document.NR + 1; ++r) {
            if (part.Has(r, w)) {
                step(r, w);
            }
        }
    }
}

} // namespace

bool CalculateStateProperties(Suspension& document, const GridPart& part, std::string& message) {
    // Once a rack step shows the bar turning the other way, it and all later ones change its sign.
    bool negateBar = false;
    for (int r = 2; r <= document.NR + 1; ++r) {
        if (part.HasRow(r) && !CalculateRow(document, r, part, negateBar, message)) {
            return false;
        }
    }
    return true;
}

void CalculateGridChannels(Suspension& document, const GridPart& part) {
    SetHeights(document, part);
    ForEachState(document, part, [&](int r, int w) { SetAxleChannels(document, part, r, w); });
}

void CalculateWhatCanBe(Suspension& document, GridPart& part, StateFailure& first) {
    for (int r = 2; r <= document.NR + 1; ++r) {
        if (part.HasRow(r)) {
            DropFailingStates(document, part, r, first);
        }
    }
    std::string message;
    if (!CalculateStateProperties(document, part, message)) {
        throw Failure(fnInternal, message); // each of them has succeeded alone
    }
    SetHeights(document, part);
    const GridPart calculated = part; // a mirror that fails has its place all the same
    ForEachState(document, calculated, [&](int r, int w) {
        const bool done = Try(first, r, w, [&](std::string&) {
            SetAxleChannels(document, calculated, r, w);
            return true;
        });
        if (!done) {
            part.Remove(r, w);
        }
    });
}

bool CalculateGeometry(Suspension& document, WheelState& state, std::string& message) {
    const PointSet& points = state.Points;
    const PlaneSlopes upper = PlaneGradients(points[ptUWIR], points[ptUWIF], points[ptUWO]);
    document.GeometryValid = upper.Defined;
    if (!upper.Defined) {
        message = "Plane of upper wishbone not defined, points lie on a straight line";
        return false;
    }
    const PlaneSlopes lower = PlaneGradients(points[ptLWIR], points[ptLWIF], points[ptLWO]);
    document.GeometryValid = lower.Defined;
    if (!lower.Defined) {
        message = "Plane of lower wishbone not defined, points lie on a straight line";
        return false;
    }
    SetWishboneAngle(state, chUpperLongAngle, upper.dZdX);
    SetWishboneAngle(state, chUpperLatAngle, upper.dZdY);
    SetWishboneAngle(state, chLowerLongAngle, lower.dZdX);
    SetWishboneAngle(state, chLowerLatAngle, lower.dZdY);
    CalculateFoci(state, upper, lower, IsFrontCorner(document));
    SetWheelAngles(state);
    return true;
}

bool CalculateDriveshaftAngles(Suspension& document, WheelState& state, std::string& message) {
    if (!document.Data.DriveShaftExists) {
        return true;
    }
    const auto fail = [&](const char* reason) {
        document.GeometryValid = false;
        message = reason;
        return false;
    };
    const SuspPoint& outer = state.Points[ptDSO];
    const SuspPoint& inner = state.Points[ptDSI];
    const Vector3 shaft = VectorSubtract(outer, inner);
    state.Channels.Set(chDriveshaftLength, PointDistance(outer, inner).Distance);
    if (shaft.Y < LeastDriveshaftSpan) {
        return fail("Driveshaft outboard point too close to inboard point for angle calcs");
    }
    const double perSpan = Divide(1, shaft.Y);
    state.Channels.Set(chDriveshaftAngleYZ, std::atan(shaft.Z * perSpan) * DegreesPerRadian);
    state.Channels.Set(chDriveshaftAngleXY, std::atan(shaft.X * perSpan) * DegreesPerRadian);
    const double across = shaft.X * shaft.X + shaft.Z * shaft.Z;
    const double along = (shaft.Y * shaft.Y + across) - across;
    if (across < 0 || along < LeastDriveshaftSpanSquared) {
        return fail("Driveshaft angle calculation failure");
    }
    state.Channels.Set(chDriveshaftTotalAngle,
                       std::atan(Divide(SquareRoot(across), SquareRoot(along))) * DegreesPerRadian);
    return true;
}

void CalculateSteerAngleBump(WheelState& state, const WheelState& staticState) {
    state.Channels.Set(chSteerAngleBump,
                       state.Channels[chSteerAngle] - staticState.Channels[chSteerAngle]);
}

double CalculateAckerman(const Suspension& document, double steerA, double steerB) {
    if (steerA == 0) { // exactly straight ahead
        return 0;
    }
    const double halfTrack = document.StaticLengths.StaticHalfTrack;
    const double wheelbase = document.Data.Wheelbase;
    const double turn = Divide(wheelbase, std::tan(steerA * RadiansPerDegree)) - halfTrack;
    const double ideal = std::atan(Divide(wheelbase, turn - halfTrack)) / RadiansPerDegree;
    return Divide(steerB - steerA, ideal - steerA);
}

} // namespace corvanta
