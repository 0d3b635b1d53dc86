#pragma once

#include "study/CornerLinkage.h"

#include <optional>
#include <string>

namespace corvanta {

/// A corner on its wheels, or why it can't stand so.
struct CornerStance {
    bool Closed = false; ///< all lengths are met, to 1e-9 mm
    std::string Fault;   ///< why not
    Design Corner;       ///< as it stands now, complete: its points are the new static ones

    /// Of the wheel, deg, signs as of the channels. A design is taken as straight ahead, so that
    /// the steer of `Corner` can't be told from its points.
    double Camber = 0;
    double Steer = 0;

    double Travel = 0; ///< of the contact patch from the design's, mm
    std::optional<double> SpringLength;
    double RockerAngle = 0; ///< of the first rocker, rad from the design
    Unknowns Solution{};
};

/// A corner as a rigid linkage between chassis and wheel, which is solved anew for every change of
/// its parts: lengths of links, moved joints, the spring. Chassis pickups stay in place. Nothing is
/// taken from slopes, and the classic search for the wheel has no part in it.
class CRigidCorner {
  public:
    explicit CRigidCorner(Design design);

    /// The corner with its wheel at a travel of the contact patch from the design, mm.
    [[nodiscard]] CornerStance AtTravel(double travel, const CornerChange& change = {}) const;

    /// The changed corner with what carries the load as it is in `base`: the corner spring keeps
    /// its length (but for `SpringLonger`), so that its load stays; where the rocker works a centre
    /// spring alone, the rocker its place. Without any spring the wheel keeps its travel.
    [[nodiscard]] CornerStance OnSpring(const CornerStance& base, const CornerChange& change) const;

    [[nodiscard]] const Design& Base() const { return m_base; }

  private:
    [[nodiscard]] CornerStance Stand(const CornerStance& from, const CornerChange& change,
                                     CornerDemand demand, double start, double demanded) const;

    Design m_base; ///< with its derived points
    std::string m_fault;
};

} // namespace corvanta
