#include "solver/WheelPosition.h"

#include "model/Failure.h"
#include "solver/MLibMaths.h"
#include "solver/WheelAttitude.h"

#include <algorithm>
#include <cmath>

namespace corvanta {

namespace {

/// First estimate of the joint's rise per rise of the contact patch.
constexpr double FirstTravelFactor = 0.97;

/// The search is finished when the patch is this near to its height, mm.
constexpr double TravelTolerance = 1e-6;

/// After the last pass this is good enough, mm.
constexpr double LooseTravelTolerance = 1e-5;

constexpr int MostPasses = 100;

/// The wheel travel below which a step is the static one, mm.
constexpr double StaticTravel = 1e-5;

/// The offset of the slopes as a share of the wheel step, and its most, mm.
constexpr double SlopeOffsetShare = 0.1;
constexpr double MostSlopeOffset = 1;

/// How far the fictitious wishbone's inner points stand before and behind the mount, mm.
constexpr double FictitiousHalfBase = 200;

BodyDistances Measure(const PointSet& set, PointNumber ref1, PointNumber ref2, PointNumber ref3,
                      PointNumber target) {
    return MeasureBody(set[ref1], set[ref2], set[ref3], set[target]);
}

ReferenceTriangle Triangle(const PointSet& set, PointNumber ref1, PointNumber ref2,
                           PointNumber ref3) {
    return {set[ref1], set[ref2], set[ref3]};
}

} // namespace

WishboneSwing::WishboneSwing(const SuspPoint& axisFront, const SuspPoint& axisRear,
                             const SuspPoint& joint, const SuspPoint& centre)
    : m_centre(centre),
      m_radiusSquared(PointDistanceSquared(joint, centre)) {
    const Vector3 axis = VectorSubtract(axisFront, axisRear);
    m_tilt = Divide(axis.Z, SquareRoot(axis.X * axis.X + axis.Y * axis.Y));
    m_tiltStretch = Divide(1, std::cos(std::atan(m_tilt)));
    const double plan = std::atan(Divide(axis.Y, axis.X));
    m_sinPlan = std::sin(plan);
    m_cosPlan = std::cos(plan);
}

SuspPoint WishboneSwing::PointOnCircleAtHeight(double height) const {
    const double rise = height - m_centre.Z;
    const double p = rise * m_tiltStretch;
    const double q = rise * m_tilt;
    const double n = SquareRoot(m_radiusSquared - p * p);
    return {m_centre.X - m_sinPlan * n + q * m_cosPlan, m_centre.Y + m_cosPlan * n + m_sinPlan * q,
            height};
}

WheelSearch::WheelSearch(const PointSet& start, const StaticLengthRecord& lengths,
                         std::int32_t springMechanism)
    : m_start(start),
      m_tyreRadius(lengths.TyreRadius),
      m_isStrut(springMechanism == smMacPhersonStrut),
      m_swing(DrivenSwing(start, springMechanism)),
      m_bodies(MeasureBodies(start)),
      m_travelFactor(FirstTravelFactor) {}

WishboneSwing WheelSearch::DrivenSwing(const PointSet& start, std::int32_t springMechanism) {
    if (springMechanism == smMacPhersonStrut) {
        return {start[ptLWIF], start[ptLWIR], start[ptLWO], start[ptLWCR]};
    }
    return {start[ptUWIF], start[ptUWIR], start[ptUWO], start[ptUWCR]};
}

WheelSearch::Bodies WheelSearch::MeasureBodies(const PointSet& start) {
    return {Measure(start, ptUWO, ptLWIR, ptLWIF, ptLWO),
            Measure(start, ptUWO, ptTRI, ptLWO, ptTRO), Measure(start, ptUWO, ptTRO, ptLWO, ptWSA),
            Measure(start, ptUWO, ptTRO, ptLWO, ptWC), Measure(start, ptSAI, ptTRO, ptLWO, ptPRO)};
}

void WheelSearch::CalcWheelState(double travel, const PointSet& near, PointSet& solved) {
    ++m_solves;
    for (int pass = 1;; ++pass) {
        if (m_isStrut) {
            PassStrut(travel, near, solved);
        } else {
            PassDoubleWishbone(travel, near, solved);
        }
        solved[ptWTCP] = ContactPatchPoint(solved[ptWC], solved[ptWSA], m_tyreRadius);
        const double achieved = solved[ptWTCP].Z - m_start[ptWTCP].Z;
        m_travelFactor = Checked(m_travelFactor * std::abs(Divide(travel, achieved)));
        const double miss = std::abs(achieved - travel);
        if (miss < TravelTolerance || (pass > MostPasses && miss < LooseTravelTolerance)) {
            return;
        }
        if (pass > MostPasses) {
            throw Failure(fnNoConvergence, "Unable to iterate wheel position");
        }
    }
}

void WheelSearch::PassDoubleWishbone(double travel, const PointSet& near, PointSet& solved) {
    solved[ptUWO] = m_swing.PointOnCircleAtHeight(m_start[ptUWO].Z + travel * m_travelFactor);
    solved[ptLWO] =
        Triangle(solved, ptUWO, ptLWIR, ptLWIF).Locate(m_bodies.LowerJoint, near[ptLWO]);
    solved[ptTRO] = Triangle(solved, ptUWO, ptTRI, ptLWO).Locate(m_bodies.TrackRodEnd, near[ptTRO]);
    const ReferenceTriangle upright = Triangle(solved, ptUWO, ptTRO, ptLWO);
    solved[ptWSA] = upright.Locate(m_bodies.StubAxle, near[ptWSA]);
    solved[ptWC] = upright.Locate(m_bodies.WheelCentre, near[ptWC]);
    m_locations += 4;
}

void WheelSearch::PassStrut(double travel, const PointSet& near, PointSet& solved) {
    solved[ptLWO] = m_swing.PointOnCircleAtHeight(m_start[ptLWO].Z + travel * m_travelFactor);
    solved[ptSAI] = StrutTopFollow(near[ptLWO], solved[ptLWO], near[ptSAI]);
    solved[ptUWO_MACPH] = solved[ptSAI];

    // Along the march the body's distances are those of the solved neighbour, whose top has moved
    // as this one's has; the start set decides between mirror positions.
    solved[ptTRO] = Triangle(solved, ptLWO, ptTRI, ptSAI)
                        .Locate(Measure(near, ptLWO, ptTRI, ptSAI, ptTRO), m_start[ptTRO]);
    const ReferenceTriangle upright = Triangle(solved, ptSAI, ptTRO, ptLWO);
    solved[ptWSA] = upright.Locate(Measure(near, ptSAI, ptTRO, ptLWO, ptWSA), m_start[ptWSA]);
    solved[ptWC] = upright.Locate(Measure(near, ptSAI, ptTRO, ptLWO, ptWC), m_start[ptWC]);
    solved[ptUWO] = m_start[ptUWO];
    solved[ptPRO] = upright.Locate(m_bodies.StrutPickup, near[ptPRO]);
    m_locations += 4;

    const InnerPickups pickups = FictitiousWishbone(solved[ptLWO], near[ptUWO], solved[ptUWO]);
    solved[ptUWIF] = pickups.Front;
    solved[ptUWIR] = pickups.Rear;
}

SuspPoint StrutTopFollow(const SuspPoint& nearLower, const SuspPoint& newLower,
                         const SuspPoint& nearTop) {
    const double body = PointDistance(nearTop, nearLower).Distance;
    const double share = Divide(body, PointDistance(nearTop, newLower).Distance);
    return {newLower.X + (nearTop.X - newLower.X) * share,
            newLower.Y + (nearTop.Y - newLower.Y) * share,
            newLower.Z + (nearTop.Z - newLower.Z) * share};
}

InnerPickups FictitiousWishbone(const SuspPoint& lower, const SuspPoint& mount,
                                const SuspPoint& top) {
    const double d = PointDistance(top, lower).Distance;
    const double a = Divide(top.X - lower.X, d);
    const double b = Divide(top.Y - lower.Y, d);
    const double c = Divide(top.Z - lower.Z, d);
    return {{mount.X - FictitiousHalfBase, 0,
             lower.Z + Divide(FictitiousHalfBase * a + d + b * top.Y, c)},
            {mount.X + FictitiousHalfBase, 0,
             lower.Z + Divide(d - FictitiousHalfBase * a + b * top.Y, c)}};
}

bool SolveWheelStep(Suspension& document, std::string& errorText, WheelSearch& search, int r, int c,
                    int prev, double travel) {
    const double offset = std::min(static_cast<double>(static_cast<float>(
                                       document.Data.WheelTravelStepSize * SlopeOffsetShare)),
                                   MostSlopeOffset);
    const PointSet& near = document.WheelStates(r, prev).Points;
    WheelState& state = document.WheelStates(r, c);
    const auto solve = [&](double demanded, PointSet& solved) {
        search.CalcWheelState(demanded, near, solved);
        MovedSets sets{solved, search.Start(), near};
        const bool tracked = TrackMechanism(sets, document, errorText);
        search.CountLocations(sets.Locations);
        return tracked;
    };
    if (!solve(travel - offset, state.PointsMinus) || !solve(travel + offset, state.PointsPlus)) {
        return false;
    }
    // At the static step the set stays the copy of the start set.
    return std::abs(travel) < StaticTravel || solve(travel, state.Points);
}

bool SolveRackRow(Suspension& document, std::string& errorText, int r, double rackTravel) {
    const PointSet& fixed = document.StaticPoints();
    MovedSets sets{document.WheelStates(r, 1).Points, fixed, fixed};
    return LocateRackRow(sets, document, errorText, rackTravel);
}

bool LocateRackRow(MovedSets& sets, Suspension& document, std::string& errorText,
                   double rackTravel) {
    PointSet& moved = sets.New;
    moved[ptTRI].Y = sets.Old[ptTRI].Y - rackTravel;

    // The ball joints stay at their static places, in the new set as in the old.
    sets.Locate(ptTRO, ptUWO, ptLWO, ptTRI);
    sets.Locate(ptWSA, ptUWO, ptTRO, ptLWO);
    sets.Locate(ptWC, ptUWO, ptTRO, ptLWO);
    moved[ptWTCP] = ContactPatchPoint(moved[ptWC], moved[ptWSA], document.StaticLengths.TyreRadius);
    return TrackMechanism(sets, document, errorText);
}

} // namespace corvanta
