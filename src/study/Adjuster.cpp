#include "study/Adjuster.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace corvanta {

namespace {

/// mm per turn: one M12 thread, a left and a right thread of M10, the fine thread of a platform.
constexpr double LegPitch = 1.75;
constexpr double RodPitch = 3;
constexpr double PlatformPitch = 2;

constexpr double ShimThickness = 1;

/// Joints and pickups that a shim can stand below.
constexpr std::array ShimPlaces{ptUWO,  ptLWO,  ptTRO,  ptPRO, ptUWIF,
                                ptUWIR, ptLWIF, ptLWIR, ptTRI, ptSAI};

bool IsLeg(CornerLink link) {
    return link == CornerLink::LowerFront || link == CornerLink::LowerRear ||
           link == CornerLink::UpperFront || link == CornerLink::UpperRear;
}

void AddShim(std::vector<Adjuster>& adjusters, const SuspensionData& data, PointNumber point,
             int axis) {
    Adjuster shim;
    shim.Kind = AdjusterKind::Shim;
    shim.Place = {point, axis};
    shim.Name = "Shim, " + NameOf(data, DesignVariable(shim.Place));
    shim.Pitch = ShimThickness;
    if (FaultOf(data, shim).empty()) {
        adjusters.push_back(shim);
    }
}

} // namespace

std::vector<Adjuster> AdjustersOf(const SuspensionData& data) {
    std::vector<Adjuster> adjusters;
    for (std::size_t n = 0; n < CornerLinkCount; ++n) {
        const auto link = static_cast<CornerLink>(n);
        if (HasLink(data, link)) {
            Adjuster length;
            length.Name = NameOf(data, link);
            length.Link = link;
            length.Pitch = IsLeg(link) ? LegPitch : RodPitch;
            length.Part = 0.5;
            adjusters.push_back(length);
        }
    }
    if (MovingSpringEnd(data)) {
        Adjuster platform;
        platform.Name = "Spring platform";
        platform.Kind = AdjusterKind::SpringPlatform;
        platform.Pitch = PlatformPitch;
        platform.Part = 0.5;
        adjusters.push_back(platform);
    }
    AddShim(adjusters, data, ptUWO, 1);
    AddShim(adjusters, data, ptUWIF, 1);
    AddShim(adjusters, data, ptUWIR, 1);
    AddShim(adjusters, data, ptTRO, 2);
    if (data.SpringMechanism == smMacPhersonStrut) {
        AddShim(adjusters, data, ptSAI, 0);
        AddShim(adjusters, data, ptSAI, 1);
    }
    return adjusters;
}

std::string FaultOf(const SuspensionData& data, const Adjuster& adjuster) {
    if (adjuster.Name.empty()) {
        return "An adjuster has no name";
    }
    if (!(adjuster.Pitch > 0 && std::isfinite(adjuster.Pitch))) {
        return "The pitch of \"" + adjuster.Name + "\" must be above 0";
    }
    if (!(adjuster.Part > 0 && adjuster.Part <= 1)) {
        return "The smallest part of a turn of \"" + adjuster.Name + "\" must be above 0, to 1";
    }
    const std::string missing = "This corner does not have \"" + adjuster.Name + "\"";
    switch (adjuster.Kind) {
    case AdjusterKind::LinkLength:
        return HasLink(data, adjuster.Link) ? std::string() : missing;
    case AdjusterKind::SpringPlatform:
        return MovingSpringEnd(data) ? std::string() : missing;
    case AdjusterKind::Shim:
        break;
    }
    if (std::find(ShimPlaces.begin(), ShimPlaces.end(), adjuster.Place.Point) == ShimPlaces.end() ||
        adjuster.Place.Axis < 0 || adjuster.Place.Axis > 2) {
        return "\"" + adjuster.Name + "\" is not at a joint or pickup of a link";
    }
    return HasVariable(data, adjuster.Place) ? std::string() : missing;
}

CornerChange ChangeOf(std::span<const Adjuster> adjusters, std::span<const double> counts) {
    CornerChange change;
    for (std::size_t n = 0; n < adjusters.size() && n < counts.size(); ++n) {
        const Adjuster& adjuster = adjusters[n];
        const double moved = counts[n] * StepOf(adjuster);
        switch (adjuster.Kind) {
        case AdjusterKind::LinkLength:
            change[adjuster.Link] += moved;
            break;
        case AdjusterKind::SpringPlatform:
            change.SpringLonger += moved;
            break;
        case AdjusterKind::Shim: {
            SuspPoint& point = change.Moved[adjuster.Place.Point];
            (adjuster.Place.Axis == 0   ? point.X
             : adjuster.Place.Axis == 1 ? point.Y
                                        : point.Z) += moved;
            break;
        }
        }
    }
    return change;
}

} // namespace corvanta
