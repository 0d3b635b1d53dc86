#include "properties/RollCentre.h"

#include "solver/MLibMaths.h"
#include "solver/WheelAttitude.h"

#include <algorithm>
#include <cmath>

namespace corvanta {

namespace {

/// Slopes nearer than this make parallel lines.
constexpr double ParallelSlopes = 1e-6;

/// A line shorter than this across has no angle, mm.
constexpr double UprightLine = 1e-6;

/// A wheelbase or track shorter than this counts as not given, mm.
constexpr double LeastBase = 1;

/// Coordinates of a roll centre under roll are kept within this, mm.
constexpr double FarthestRollCentre = 9999;

/// The lines of the two wishbone planes in one view, and where they meet.
struct ViewFocus {
    bool Parallel = false;
    double Across = 0;
    double Height = 0;
};

/// A wishbone plane in one view: its slope there, and its height above the contact patch.
struct ViewLine {
    double Slope = 0;
    double HeightAtPatch = 0;
};

/// `towardsPlus` says to which side a parallel pair of lines is taken to meet.
ViewFocus MeetInView(const ViewLine& upper, const ViewLine& lower, double patchAcross,
                     bool towardsPlus) {
    const double upperIntercept = upper.HeightAtPatch - upper.Slope * patchAcross;
    const double lowerIntercept = lower.HeightAtPatch - lower.Slope * patchAcross;
    ViewFocus focus;
    focus.Parallel = std::abs(upper.Slope - lower.Slope) < ParallelSlopes;
    if (focus.Parallel) {
        focus.Across = towardsPlus ? SwingAxleAtInfinity : -SwingAxleAtInfinity;
    } else {
        focus.Across = Divide(lowerIntercept - upperIntercept, upper.Slope - lower.Slope);
    }
    focus.Height = Checked(upper.Slope * focus.Across + upperIntercept);
    return focus;
}

double SideViewAngle(double dX, double dZ, bool parallel, double lowerSlope) {
    if (std::abs(dX) < UprightLine) {
        return NoSideViewAngle;
    }
    // A line to infinity has the slope of the wishbones; it is taken for the angle as it stands.
    return (parallel ? lowerSlope : std::atan(Divide(dZ, dX))) * DegreesPerRadian;
}

void SetSideView(WheelState& state, const PlaneSlopes& upper, const PlaneSlopes& lower,
                 bool isFrontCorner) {
    PointSet& points = state.Points;
    ChannelCells& channels = state.Channels;
    const SuspPoint& patch = points[ptWTCP];
    const SuspPoint& centre = points[ptWC];
    SuspPoint& focus = points[ptLongFocus];
    const ViewFocus meet =
        MeetInView({upper.dZdX, points[ptuWTCP].Z}, {lower.dZdX, points[ptLWTCP].Z}, patch.X,
                   upper.dZdX < lower.dZdX);
    const auto length = [&](const SuspPoint& from) {
        return meet.Parallel ? SwingAxleAtInfinity : PointDistance(from, focus).Distance;
    };
    focus = {meet.Across, patch.Y, meet.Height};
    channels.Set(chAntiDiveLength, length(patch));
    focus.Y = centre.Y;
    channels.Set(chAntiSquatLength, length(centre));

    const double dX = isFrontCorner ? focus.X - patch.X : patch.X - focus.X;
    channels.Set(chAntiDiveAngle, SideViewAngle(dX, focus.Z - patch.Z, meet.Parallel, lower.dZdX));
    channels.Set(chAntiSquatAngle,
                 SideViewAngle(dX, focus.Z - centre.Z, meet.Parallel, lower.dZdX));
}

void SetFrontView(WheelState& state, const PlaneSlopes& upper, const PlaneSlopes& lower) {
    PointSet& points = state.Points;
    ChannelCells& channels = state.Channels;
    const SuspPoint& patch = points[ptWTCP];
    SuspPoint& focus = points[ptLatFocus];
    const ViewFocus meet =
        MeetInView({upper.dZdY, points[ptuWTCP].Z}, {lower.dZdY, points[ptLWTCP].Z}, patch.Y,
                   upper.dZdY <= lower.dZdY);
    focus = {patch.X, meet.Across, meet.Height};
    channels.Set(chAntiRollLength, PointDistance(patch, focus).Distance);

    const double dY = patch.Y - focus.Y;
    if (std::abs(dY) < UprightLine) {
        channels.Set(chAntiRollAngle, NoLateralLine);
        channels.Set(chRollCentreToOrigin, NoLateralLine);
        return;
    }
    const double slope = Divide(focus.Z - patch.Z, dY);
    channels.Set(chAntiRollAngle, std::atan(slope) * DegreesPerRadian);
    channels.Set(chRollCentreToOrigin, slope * patch.Y + patch.Z);
}

double Clamped(double coordinate) {
    return std::clamp(coordinate, -FarthestRollCentre, FarthestRollCentre);
}

} // namespace

void CalculateFoci(WheelState& state, const PlaneSlopes& upper, const PlaneSlopes& lower,
                   bool isFrontCorner) {
    PointSet& points = state.Points;
    const SuspPoint& patch = points[ptWTCP];
    // The wishbone planes straight above the patch, from the axis points beside it.
    const auto abovePatch = [&](const SuspPoint& axisPoint, double slope) {
        return SuspPoint{patch.X, patch.Y, (patch.Y - axisPoint.Y) * slope + axisPoint.Z};
    };
    points[ptuWTCP] = abovePatch(points[ptSNextA], upper.dZdY);
    points[ptLWTCP] = abovePatch(points[ptTNextA], lower.dZdY);
    SetSideView(state, upper, lower, isFrontCorner);
    SetFrontView(state, upper, lower);
}

void CalculateAntiDiveSquatRollPercentages(const Suspension& document, WheelState& state) {
    const SuspensionData& data = document.Data;
    const SuspPoint& patch = state.Points[ptWTCP];
    const SuspPoint& centre = state.Points[ptWC];
    const SuspPoint& side = state.Points[ptLongFocus];
    const SuspPoint& front = state.Points[ptLatFocus];
    ChannelCells& channels = state.Channels;
    const double height = data.CGZ - patch.Z;

    if (std::abs(data.Wheelbase) < LeastBase) {
        channels.Set(chAntiDivePercent, NoPercentage);
        channels.Set(chAntiSquatPercent, NoPercentage);
    } else {
        const double transfer = Divide(height, data.Wheelbase);
        const double brakeShare = IsFrontCorner(document)
                                      ? data.FrontBrakeBalanceSplitPC * 0.01
                                      : (100 - data.FrontBrakeBalanceSplitPC) * -0.01;
        const double brakeLine = Divide(side.Z - patch.Z, side.X - patch.X);
        const double driveLine = Divide(-1 * (side.Z - centre.Z), side.X - centre.X);
        channels.Set(chAntiDivePercent, Divide(brakeLine, transfer) * brakeShare);
        channels.Set(chAntiSquatPercent, Divide(driveLine, transfer));
    }
    const double track = channels[chHalfTrack] * 2;
    if (std::abs(track) < LeastBase) {
        channels.Set(chAntiRollPercent, NoPercentage);
    } else {
        const double lateralLine = Divide(front.Z - patch.Z, patch.Y - front.Y);
        channels.Set(chAntiRollPercent, Divide(lateralLine * 0.5, Divide(height, track)));
    }
}

Point2D CalculateRollCentreUnderRoll(double yOwn, double zOwn, double yMirror, double zMirror,
                                     double heightOwn, double heightMirror) {
    // The corner itself is reflected to the other side of the car.
    const Point2D crossing =
        LineIntersect2D({-yOwn, zOwn}, {0, heightOwn}, {yMirror, zMirror}, {0, heightMirror});
    return {Clamped(crossing.X), Clamped(crossing.Y)};
}

void CalculateRollCentre(Suspension& document, const GridPart& part, int r, int w) {
    const SuspensionData& data = document.Data;
    WheelState& state = document.WheelStates(r, w);
    const double mirroredSteps =
        std::nearbyint(Divide(std::min(data.Bump, data.Droop), data.WheelTravelStepSize));
    const bool hasMirror = std::abs(w - document.StaticWheel) <= mirroredSteps;
    if (data.ChassisMotion != cmRoll || !hasMirror) {
        state.Channels.Set(chRollCentreY, 0);
        return;
    }
    const int mirrorStep = 2 * document.StaticWheel - w;
    if (!part.Has(r, mirrorStep)) {
        for (const ChannelId channel :
             {chRollCentreY, chRollCentreToOrigin, chRollCentreToGround}) {
            state.Channels.Clear(channel);
        }
        return;
    }
    const WheelState& mirror = document.WheelStates(r, mirrorStep);
    const SuspPoint& own = state.Points[ptWTCP];
    const SuspPoint& opposite = mirror.Points[ptWTCP];
    const Point2D centre = CalculateRollCentreUnderRoll(own.Y, own.Z, opposite.Y, opposite.Z,
                                                        state.Channels[chRollCentreToOrigin],
                                                        mirror.Channels[chRollCentreToOrigin]);
    state.Channels.Set(chRollCentreY, centre.X);
    state.Channels.Set(chRollCentreToOrigin, centre.Y);
    state.Channels.Set(chRollCentreToGround, centre.Y - own.Z);
}

} // namespace corvanta
