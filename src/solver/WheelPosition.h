#pragma once

#include "model/Suspension.h"
#include "solver/MechanismTracking.h"
#include "solver/SGetLocn.h"

#include <cstdint>
#include <string>

namespace corvanta {

/// The circle on which the outer joint of a wishbone swings about the wishbone's axis.
class WishboneSwing {
  public:
    /// Axis from front to rear inner pickup, the joint, and the foot of the joint on the axis, all
    /// at one position. Throws Failure "Division by zero" when the axis runs straight across the
    /// car.
    WishboneSwing(const SuspPoint& axisFront, const SuspPoint& axisRear, const SuspPoint& joint,
                  const SuspPoint& centre);

    /// The joint at the height `height`, mm, on the outboard side of the axis. Throws Failure
    /// "Invalid procedure call or argument" for a height out of the wishbone's reach.
    [[nodiscard]] SuspPoint PointOnCircleAtHeight(double height) const;

  private:
    SuspPoint m_centre;
    double m_radiusSquared;
    double m_tilt;        ///< slope of the axis against the ground
    double m_tiltStretch; ///< 1 / cosine of the angle of that slope
    double m_sinPlan;     ///< sine and cosine of the axis's angle in plan
    double m_cosPlan;
};

/// The search for the upright at a demanded wheel travel from one start set. The wheel travel is
/// told at the contact patch but the linkage is driven from a ball joint, so the joint's height is
/// searched; every position inside a pass is closed-form.
///
/// `start` must outlive the search and hold the derived points of `CalculateStaticPoints`.
class WheelSearch {
  public:
    WheelSearch(const PointSet& start, const StaticLengthRecord& lengths,
                std::int32_t springMechanism);

    /// Places the upright and the wheel in `solved`, a copy of the start set, so that the contact
    /// patch has risen by `travel`, mm, to 1e-6 mm. `near` is a solved neighbour that decides
    /// between mirror positions. The estimate of the joint's rise per rise of the patch carries
    /// over to the next call.
    ///
    /// Throws Failure "Unable to iterate wheel position" after 101 passes that did not come within
    /// 1e-5 mm, and the arithmetic failure of a travel out of reach.
    void CalcWheelState(double travel, const PointSet& near, PointSet& solved);

    [[nodiscard]] const PointSet& Start() const { return m_start; }

    /// The estimate that the next call begins with; set back to what it was before a call that
    /// failed, the search goes on as if there had been none.
    [[nodiscard]] double TravelFactor() const { return m_travelFactor; }
    void SetTravelFactor(double factor) { m_travelFactor = factor; }

    /// How many positions were searched since the search was made.
    [[nodiscard]] std::int64_t Solves() const { return m_solves; }

    /// Counts points that were located on behalf of this search.
    void CountLocations(std::int64_t count) { m_locations += count; }

    /// How many points were located since the search was made.
    [[nodiscard]] std::int64_t Locations() const { return m_locations; }

  private:
    /// Distances of the points of a pass from their references, where they are taken in the start
    /// set.
    struct Bodies {
        BodyDistances LowerJoint;
        BodyDistances TrackRodEnd;
        BodyDistances StubAxle;
        BodyDistances WheelCentre;
        BodyDistances StrutPickup;
    };

    static WishboneSwing DrivenSwing(const PointSet& start, std::int32_t springMechanism);
    [[nodiscard]] static Bodies MeasureBodies(const PointSet& start);
    void PassDoubleWishbone(double travel, const PointSet& near, PointSet& solved);
    void PassStrut(double travel, const PointSet& near, PointSet& solved);

    const PointSet& m_start;
    double m_tyreRadius;
    bool m_isStrut;
    WishboneSwing m_swing;
    Bodies m_bodies;
    double m_travelFactor;
    std::int64_t m_solves = 0;
    std::int64_t m_locations = 0;
};

/// The top of a strut body whose lower joint moved: on the line from the new lower joint through
/// the former top, at the length of the strut body.
[[nodiscard]] SuspPoint StrutTopFollow(const SuspPoint& nearLower, const SuspPoint& newLower,
                                       const SuspPoint& nearTop);

/// Inner pickups of the wishbone that stands in for the upper end of a strut.
struct InnerPickups {
    SuspPoint Front;
    SuspPoint Rear;
};

/// A strut has no upper wishbone, but the derived properties are written for one: its inner points
/// lie in the centre plane, 200 mm before and behind the mount, on a line square to the strut's
/// axis. Throws Failure "Division by zero" for a strut that lies flat.
[[nodiscard]] InnerPickups FictitiousWishbone(const SuspPoint& lower, const SuspPoint& mount,
                                              const SuspPoint& top);

/// Solves the three sets of element (r, c), each a copy of the row's start state, for a wheel
/// travel and for that travel less and plus the offset of the slopes. `prev` is the wheel step
/// solved before. Returns false with `errorText` when the mechanism cannot follow; throws what the
/// search throws.
[[nodiscard]] bool SolveWheelStep(Suspension& document, std::string& errorText, WheelSearch& search,
                                  int r, int c, int prev, double travel);

/// Turns element (r, 1), a copy of the static points, into the start state of rack step r: the rack
/// has moved the inner track rod end by -`rackTravel` in Y, mm, and the upright has followed about
/// the line of its ball joints. Returns false with `errorText` when the mechanism cannot follow.
[[nodiscard]] bool SolveRackRow(Suspension& document, std::string& errorText, int r,
                                double rackTravel);

/// The same for the sets given: the new one starts as a copy of the old.
[[nodiscard]] bool LocateRackRow(MovedSets& sets, Suspension& document, std::string& errorText,
                                 double rackTravel);

} // namespace corvanta
