#pragma once

#include "model/Suspension.h"
#include "solver/SGetLocn.h"

#include <cstdint>
#include <string>
#include <vector>

namespace corvanta {

/// A point set that is being solved, the set in which distances are taken, and the set that decides
/// between mirror positions.
struct MovedSets {
    PointSet& New;
    const PointSet& Old;
    const PointSet& Near;
    std::int64_t Locations = 0;               ///< how many points were located
    std::vector<CarriedPoint>* Log = nullptr; ///< takes what is located from what, where asked for

    /// Moves `target` along with the three references.
    void Locate(PointNumber target, PointNumber ref1, PointNumber ref2, PointNumber ref3) {
        LocatePointByIndex(New, Old, Near, ref1, ref2, ref3, target);
        Count(target, ref1, ref2, ref3);
    }
    void Count(PointNumber target, PointNumber ref1, PointNumber ref2, PointNumber ref3) {
        ++Locations;
        if (Log != nullptr) {
            Log->push_back({target, {ref1, ref2, ref3}});
        }
    }
};

/// Where the axes of the two wishbones cross the lateral plane through the contact patch.
struct AxisPoints {
    SuspPoint Upper;
    SuspPoint Lower;
};

/// Throws Failure "Division by zero" when an axis runs straight across the car.
[[nodiscard]] AxisPoints WishboneAxisPointsAtX(const SuspPoint& upperFront,
                                               const SuspPoint& upperRear,
                                               const SuspPoint& lowerFront,
                                               const SuspPoint& lowerRear, const SuspPoint& patch);

/// Carries a new place of the upright through everything that hangs off it and off the wishbones:
/// steering arm base, driveshaft joint, actuator, rockers, bars and centre spring. Reads mechanisms
/// and static lengths of the document.
///
/// A point can always be placed, if need be wrongly; so three lever lengths are checked afterwards
/// to 0.0001 mm. Returns false with `errorText` set, `GeometryValid` cleared and its points named
/// when one differs from its static length, which is how a travel out of the mechanism's reach
/// shows.
[[nodiscard]] bool TrackMechanism(MovedSets& sets, Suspension& document, std::string& errorText);

} // namespace corvanta
