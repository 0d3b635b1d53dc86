#pragma once

#include "model/Design.h"
#include "study/RigidMotion.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// What of a corner has a length that can be changed.
enum class CornerLink : std::uint8_t {
    LowerFront,
    LowerRear,
    UpperFront,
    UpperRear,
    TrackRod,
    SpringRod,    ///< pushrod, pullrod or drop link from the outer pickup to the rocker
    Interconnect, ///< from the first rocker to the second
    BarDropLink,
    TBarDropLink,
};

inline constexpr std::size_t CornerLinkCount = 9;

/// The ends of a link.
struct LinkEnds {
    PointNumber From = ptLWIF;
    PointNumber To = ptLWO;
};
[[nodiscard]] LinkEnds EndsOf(CornerLink link);

/// True when the mechanisms have the link.
[[nodiscard]] bool HasLink(const SuspensionData& data, CornerLink link);

/// The name of a link: "Lower front leg", "Pushrod".
[[nodiscard]] std::string NameOf(const SuspensionData& data, CornerLink link);

/// What is changed of a design: by how much links are longer, mm, how far points are moved on the
/// part that carries them (along the axes of the car as the part stands in the design), and by how
/// much the spring is longer from seat to seat.
struct CornerChange {
    std::array<double, CornerLinkCount> Longer{};
    PointSet Moved{};
    double SpringLonger = 0;

    [[nodiscard]] double& operator[](CornerLink link) {
        return Longer[static_cast<std::size_t>(link)];
    }
    [[nodiscard]] double operator[](CornerLink link) const {
        return Longer[static_cast<std::size_t>(link)];
    }
};

/// What places the corner on its wheels beside the lengths of its links.
enum class CornerDemand : std::uint8_t {
    WheelTravel,  ///< of the contact patch, mm
    SpringLength, ///< mm
    RockerAngle,  ///< of the first rocker, rad from the design
};

/// The equations of a corner whose chassis stands still and whose links have their lengths. The
/// unknowns are the displacement and the rotation of the upright from its place in the design, and
/// the angles of the rockers; residuals are mm.
///
/// The legs of a wishbone are links of their own. What rides on a wishbone keeps its place at the
/// outer joint: along the line of the inner pickups, square to it, and normal to the wishbone, so
/// that a leg that grows does not throw it.
class CCornerLinkage {
  public:
    static constexpr std::size_t FirstRocker = 6; ///< among the unknowns, behind the upright's

    /// `base` is a design whose stub axle and derived points are placed.
    CCornerLinkage(const SuspensionData& data, const PointSet& base, const CornerChange& change,
                   CornerDemand demand, double demanded);

    [[nodiscard]] std::size_t Count() const { return m_count; }

    [[nodiscard]] Unknowns Residuals(const Unknowns& unknowns) const;

    /// What an equation asks, for a message: "The trackrod can't be 480.2 mm long".
    [[nodiscard]] std::string FaultOf(std::size_t equation) const;

    /// The wheel and the spring train at a solution; what only hangs on them stays.
    [[nodiscard]] PointSet Places(const Unknowns& unknowns) const;

    /// All points, with what hangs on upright, wishbones and rockers carried along. False with a
    /// message when a drop link does not reach.
    [[nodiscard]] bool AllPlaces(const Unknowns& unknowns, PointSet& places,
                                 std::string& fault) const;

    [[nodiscard]] double WheelTravel(const PointSet& places) const;
    [[nodiscard]] std::optional<double> SpringLength(const PointSet& places) const;

    /// The angle of the first rocker at a solution, 0 without one.
    [[nodiscard]] double RockerAngle(const Unknowns& unknowns) const {
        return m_rockers > 0 ? unknowns[FirstRocker] : 0;
    }

  private:
    /// A point on a wishbone, in the directions of the wishbone from its outer joint.
    struct Rider {
        PointNumber Point = ptPRO;
        PointNumber Front = ptLWIF;
        PointNumber Rear = ptLWIR;
        PointNumber Joint = ptLWO;
        Vector3 Place{};
    };

    void ChooseRiders();
    void AddRider(PointNumber point, bool upper);
    void ChooseLinks();
    void PlaceUpright(const Unknowns& unknowns, PointSet& places) const;
    static void AddStrutMissed(Unknowns& residuals, std::size_t& n, const PointSet& places);
    [[nodiscard]] double DemandMissed(const PointSet& places, const Unknowns& unknowns) const;
    [[nodiscard]] bool TurnBars(PointSet& places, std::string& fault) const;
    [[nodiscard]] std::string LengthFault(CornerLink link) const;
    [[nodiscard]] double Length(CornerLink link) const {
        return m_lengths[static_cast<std::size_t>(link)];
    }
    [[nodiscard]] bool IsStrut() const { return m_data.SpringMechanism == smMacPhersonStrut; }

    const SuspensionData& m_data;
    const PointSet& m_base;
    PointSet m_changed; ///< the base with the moved points
    CornerDemand m_demand;
    double m_demanded;
    std::array<double, CornerLinkCount> m_lengths{};
    std::vector<CornerLink> m_links; ///< whose lengths are equations
    std::vector<PointNumber> m_onUpright;
    std::vector<PointNumber> m_onRocker;
    std::vector<Rider> m_riders;
    std::size_t m_rockers = 0;
    std::size_t m_count = 0;
};

} // namespace corvanta
