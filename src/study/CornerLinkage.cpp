#include "study/CornerLinkage.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <limits>

namespace corvanta {

namespace {

/// A radian of the upright counts as this many mm, so that all unknowns are of one size.
constexpr double RotationArm = 200;

constexpr std::array<LinkEnds, CornerLinkCount> Ends{{{ptLWIF, ptLWO},
                                                      {ptLWIR, ptLWO},
                                                      {ptUWIF, ptUWO},
                                                      {ptUWIR, ptUWO},
                                                      {ptTRI, ptTRO},
                                                      {ptPRO, ptPRI},
                                                      {ptR1O, ptR2I},
                                                      {ptARDL, ptARI},
                                                      {ptTBDLI, ptTBDLO}}};

bool OnLowerWishbone(std::int32_t mechanism) {
    return mechanism == smOutboardToLowerWishbone || mechanism == smPushrodToLowerWishbone ||
           mechanism == smTwoRockersToLowerWishbone;
}

bool OnUpperWishbone(std::int32_t mechanism) {
    return mechanism == smDirectToUpperWishbone || mechanism == smRockerToUpperWishbone ||
           mechanism == smPullrodToUpperWishbone;
}

bool HasTBarLink(const SuspensionData& data) {
    return UsesTBar(data) && HasRocker(data.SpringMechanism);
}

std::string Millimetres(double length) {
    std::array<char, 64> text{};
    (void)std::snprintf(text.data(), text.size(), "%.3f mm", length);
    return text.data();
}

/// The directions of a wishbone; those of the car when its three points lie in one line.
Directions WishboneDirections(const SuspPoint& front, const SuspPoint& rear,
                              const SuspPoint& joint) {
    return DirectionsOf(VectorSubtract(rear, front), VectorSubtract(joint, front))
        .value_or(Directions{Vector3{1, 0, 0}, Vector3{0, 1, 0}, Vector3{0, 0, 1}});
}

/// The contact patch below a wheel: as `ContactPatchPoint`, whose angles carry the resolution of
/// single precision, without that step, so that an equation can be met to the last digits.
SuspPoint PatchBelow(const SuspPoint& wheelCentre, const SuspPoint& stubAxle, double radius) {
    const Vector3 axle = VectorSubtract(stubAxle, wheelCentre);
    const Vector3 u = UnitVector(axle.X, axle.Y, axle.Z);
    const double plan = std::hypot(u.X, u.Y); // cosine of the camber
    return {wheelCentre.X + radius * u.Z * u.X / plan, wheelCentre.Y + radius * u.Z * u.Y / plan,
            wheelCentre.Z - radius * plan};
}

} // namespace

LinkEnds EndsOf(CornerLink link) {
    return Ends.at(static_cast<std::size_t>(link));
}

bool HasLink(const SuspensionData& data, CornerLink link) {
    switch (link) {
    case CornerLink::LowerFront:
    case CornerLink::LowerRear:
    case CornerLink::TrackRod:
        return true;
    case CornerLink::UpperFront:
    case CornerLink::UpperRear:
        return data.SpringMechanism != smMacPhersonStrut;
    case CornerLink::SpringRod:
        return HasRocker(data.SpringMechanism);
    case CornerLink::Interconnect:
        return HasSecondRocker(data.SpringMechanism);
    case CornerLink::BarDropLink:
        return IsLateralBar(data.ARBMechanism);
    case CornerLink::TBarDropLink:
        return HasTBarLink(data);
    }
    return false;
}

std::string NameOf(const SuspensionData& data, CornerLink link) {
    switch (link) {
    case CornerLink::LowerFront:
        return "Lower front leg";
    case CornerLink::LowerRear:
        return "Lower rear leg";
    case CornerLink::UpperFront:
        return "Upper front leg";
    case CornerLink::UpperRear:
        return "Upper rear leg";
    case CornerLink::TrackRod:
        return "Trackrod";
    case CornerLink::SpringRod:
        if (data.SpringMechanism == smRockerToUpperWishbone) {
            return "Rocker drop link";
        }
        return data.SpringMechanism == smPullrodToUpright ||
                       data.SpringMechanism == smPullrodToUpperWishbone
                   ? "Pullrod"
                   : "Pushrod";
    case CornerLink::Interconnect:
        return "Link between the rockers";
    case CornerLink::BarDropLink:
        return "ARB drop link";
    case CornerLink::TBarDropLink:
        return "T-Bar drop link";
    }
    return {};
}

CCornerLinkage::CCornerLinkage(const SuspensionData& data, const PointSet& base,
                               const CornerChange& change, CornerDemand demand, double demanded)
    : m_data(data),
      m_base(base),
      m_changed(base),
      m_demand(demand),
      m_demanded(demanded) {
    for (const PointNumber number : AllPoints) {
        m_changed[number] = VectorAdd(base[number], change.Moved[number]);
    }
    for (std::size_t n = 0; n < CornerLinkCount; ++n) {
        m_lengths[n] = Span(base[Ends[n].From], base[Ends[n].To]) + change.Longer[n];
    }
    if (m_demand == CornerDemand::SpringLength) {
        m_demanded += change.SpringLonger;
    }
    ChooseRiders();
    ChooseLinks();
}

void CCornerLinkage::ChooseLinks() {
    m_links = {CornerLink::LowerFront, CornerLink::LowerRear, CornerLink::TrackRod};
    if (!IsStrut()) {
        m_links.insert(m_links.end(), {CornerLink::UpperFront, CornerLink::UpperRear});
    }
    if (HasRocker(m_data.SpringMechanism)) {
        m_links.push_back(CornerLink::SpringRod);
        m_rockers = 1;
    }
    if (HasSecondRocker(m_data.SpringMechanism)) {
        m_links.push_back(CornerLink::Interconnect);
        m_rockers = 2;
    }
    m_count = FirstRocker + m_rockers;
}

void CCornerLinkage::AddRider(PointNumber point, bool upper) {
    Rider rider{point, upper ? ptUWIF : ptLWIF, upper ? ptUWIR : ptLWIR, upper ? ptUWO : ptLWO};
    // The wishbone itself is as it was: a moved joint or pickup moves where it is held alone.
    const Directions directions =
        WishboneDirections(m_base[rider.Front], m_base[rider.Rear], m_base[rider.Joint]);
    rider.Place = InDirections(directions, VectorSubtract(m_changed[point], m_base[rider.Joint]));
    m_riders.push_back(rider);
}

void CCornerLinkage::ChooseRiders() {
    const std::int32_t mechanism = m_data.SpringMechanism;
    m_onUpright = {ptLWO, ptTRO, ptWC, ptWSA};
    if (!IsStrut()) {
        m_onUpright.push_back(ptUWO);
    }
    if (m_data.DriveShaftExists) {
        m_onUpright.push_back(ptDSO);
    }
    if (OnLowerWishbone(mechanism) || OnUpperWishbone(mechanism)) {
        AddRider(ptPRO, OnUpperWishbone(mechanism));
    } else if (mechanism != smNone) {
        m_onUpright.push_back(ptPRO);
    }
    if (m_data.ARBMechanism == abToLowerWishbone) {
        AddRider(ptARDL, false);
    } else if (m_data.ARBMechanism == abToUpright) {
        m_onUpright.push_back(ptARDL);
    }
    if (!HasRocker(mechanism)) {
        return;
    }
    m_onRocker = {ptPRI, ptR1O};
    if (m_data.ARBMechanism == abToRocker) {
        m_onRocker.push_back(ptARDL);
    }
    if (UsesTBar(m_data)) {
        m_onRocker.push_back(ptTBDLI);
    }
    if (HasLateralCentreSpring(m_data)) {
        m_onRocker.push_back(ptLCSI);
    }
}

void CCornerLinkage::PlaceUpright(const Unknowns& unknowns, PointSet& places) const {
    const CRotation rotation(
        {unknowns[3] / RotationArm, unknowns[4] / RotationArm, unknowns[5] / RotationArm});
    const SuspPoint& centre = m_base[ptWC];
    const SuspPoint moved = VectorAdd(centre, {unknowns[0], unknowns[1], unknowns[2]});
    const auto carried = [&](const SuspPoint& point) {
        return VectorAdd(moved, rotation.Turned(VectorSubtract(point, centre)));
    };
    for (const PointNumber number : m_onUpright) {
        places[number] = carried(m_changed[number]);
    }
    if (IsStrut()) { // the top of the strut's body, which slides through the mount
        places[ptUWO_MACPH] = carried(m_base[ptSAI]);
    }
    // A patch that is entered beside the wheel's plane stays so, by as much.
    const double radius = Span(m_base[ptWTCP], m_base[ptWC]);
    const Vector3 rolled = VectorSubtract(PatchBelow(places[ptWC], places[ptWSA], radius),
                                          PatchBelow(m_base[ptWC], m_base[ptWSA], radius));
    places[ptWTCP] = VectorAdd(m_base[ptWTCP], rolled);
}

PointSet CCornerLinkage::Places(const Unknowns& unknowns) const {
    PointSet places = m_changed;
    PlaceUpright(unknowns, places);
    for (const Rider& rider : m_riders) {
        const Directions directions =
            WishboneDirections(places[rider.Front], places[rider.Rear], places[rider.Joint]);
        places[rider.Point] =
            VectorAdd(places[rider.Joint], FromDirections(directions, rider.Place));
    }
    if (m_rockers > 0) {
        const CAxis axis(places[ptR1P1], places[ptR1P2]);
        for (const PointNumber number : m_onRocker) {
            places[number] = axis.Turned(m_changed[number], unknowns[FirstRocker]);
        }
    }
    if (m_rockers > 1) {
        const CAxis axis(places[ptR2P1], places[ptR2P2]);
        for (const PointNumber number : {ptR2I, ptR2O}) {
            places[number] = axis.Turned(m_changed[number], unknowns[FirstRocker + 1]);
        }
    }
    return places;
}

double CCornerLinkage::WheelTravel(const PointSet& places) const {
    return places[ptWTCP].Z - m_base[ptWTCP].Z;
}

std::optional<double> CCornerLinkage::SpringLength(const PointSet& places) const {
    const std::optional<PointNumber> end = MovingSpringEnd(m_data);
    return end ? std::optional(Span(places[*end], places[ptSAI])) : std::nullopt;
}

double CCornerLinkage::DemandMissed(const PointSet& places, const Unknowns& unknowns) const {
    switch (m_demand) {
    case CornerDemand::WheelTravel:
        return WheelTravel(places) - m_demanded;
    case CornerDemand::SpringLength:
        return SpringLength(places).value_or(0) - m_demanded;
    case CornerDemand::RockerAngle:
        return (RockerAngle(unknowns) - m_demanded) * RotationArm;
    }
    return 0;
}

/// The mount lies on the line through the lower joint and the top of the strut's body. Where the
/// stub axle lies on that line too, nothing tells what is beside it: the residuals are no numbers.
void CCornerLinkage::AddStrutMissed(Unknowns& residuals, std::size_t& n, const PointSet& places) {
    const Vector3 line = VectorSubtract(places[ptUWO_MACPH], places[ptLWO]);
    const std::optional<Directions> directions =
        DirectionsOf(line, VectorSubtract(places[ptWSA], places[ptLWO]));
    constexpr double None = std::numeric_limits<double>::quiet_NaN();
    const Vector3 beside =
        directions ? InDirections(*directions, VectorSubtract(places[ptSAI], places[ptUWO_MACPH]))
                   : Vector3{None, None, None};
    residuals[n++] = beside.Y;
    residuals[n++] = beside.Z;
}

Unknowns CCornerLinkage::Residuals(const Unknowns& unknowns) const {
    const PointSet places = Places(unknowns);
    Unknowns residuals{};
    std::size_t n = 0;
    for (const CornerLink link : m_links) {
        const LinkEnds ends = EndsOf(link);
        residuals[n++] = Span(places[ends.From], places[ends.To]) - Length(link);
    }
    if (IsStrut()) {
        AddStrutMissed(residuals, n, places);
    }
    residuals[n] = DemandMissed(places, unknowns);
    return residuals;
}

std::string CCornerLinkage::LengthFault(CornerLink link) const {
    return NameOf(m_data, link) + " can't be " + Millimetres(Length(link)) +
           " long: the linkage does not close";
}

std::string CCornerLinkage::FaultOf(std::size_t equation) const {
    if (equation < m_links.size()) {
        return LengthFault(m_links[equation]);
    }
    if (equation + 1 < m_count) {
        return "The strut does not reach its pickup on the chassis";
    }
    switch (m_demand) {
    case CornerDemand::WheelTravel:
        return "The wheel can't stand at a travel of " + Millimetres(m_demanded);
    case CornerDemand::SpringLength:
        return "The spring can't be " + Millimetres(m_demanded) +
               " long: the linkage does not close";
    case CornerDemand::RockerAngle:
        return "The rocker can't keep its place: the linkage does not close";
    }
    return {};
}

bool CCornerLinkage::TurnBars(PointSet& places, std::string& fault) const {
    if (IsLateralBar(m_data.ARBMechanism)) {
        const CAxis axis(places[ptARP1], places[ptARP2]);
        const std::optional<double> angle = axis.AngleAtDistance(
            m_changed[ptARI], places[ptARDL], Length(CornerLink::BarDropLink), 0);
        if (!angle) {
            fault = LengthFault(CornerLink::BarDropLink);
            return false;
        }
        places[ptARI] = axis.Turned(m_changed[ptARI], *angle);
    }
    if (HasTBarLink(m_data)) {
        // Both sides of the car stand alike, so that the bar turns about its pivot.
        const CAxis axis(places[ptTBP1], places[ptTBP2]);
        const std::optional<double> angle = axis.AngleAtDistance(
            m_changed[ptTBDLO], places[ptTBDLI], Length(CornerLink::TBarDropLink), 0);
        if (!angle) {
            fault = LengthFault(CornerLink::TBarDropLink);
            return false;
        }
        places[ptTBDLO] = axis.Turned(m_changed[ptTBDLO], *angle);
        places[ptTSI] = axis.Turned(m_changed[ptTSI], *angle);
    }
    return true;
}

bool CCornerLinkage::AllPlaces(const Unknowns& unknowns, PointSet& places,
                               std::string& fault) const {
    places = Places(unknowns);
    if (IsStrut()) { // at rest the top of the body is the pickup on the chassis
        places[ptUWO] = places[ptSAI];
        places[ptUWO_MACPH] = places[ptSAI];
    }
    return TurnBars(places, fault);
}

} // namespace corvanta
