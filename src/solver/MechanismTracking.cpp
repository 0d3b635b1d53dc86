#include "solver/MechanismTracking.h"

#include "solver/FaultyPoints.h"
#include "solver/MLibCoordGeom.h"
#include "solver/MLibMaths.h"

#include <array>
#include <cmath>
#include <span>
#include <string_view>

namespace corvanta {

namespace {

/// How far a lever may be from its static length, mm.
constexpr double LeverTolerance = 0.0001;

/// A check of a lever after its tracking, and the points that make the lever and what moves it.
struct LeverCheck {
    std::string_view Lead; ///< of the text of a failure
    std::span<const PointNumber> Points;
};

constexpr std::array RockerInputPoints{ptPRI, ptR1P1, ptR1P2, ptPRO};
constexpr std::array TBarLeverPoints{ptTBDLO, ptTSI, ptTBDLI, ptTBP1};
constexpr std::array TBarDropLinkPoints{ptTBDLO, ptTBDLI, ptTBP1};
constexpr LeverCheck RockerInput{"Rocker input lever length", RockerInputPoints};
constexpr LeverCheck TBarLever{"T-Bar input lever length", TBarLeverPoints};
constexpr LeverCheck TBarDropLink{"T-Bar drop link length", TBarDropLinkPoints};

SuspPoint PointOfAxisAtX(const SuspPoint& front, const SuspPoint& rear, double x) {
    const double share = Divide(rear.X - x, rear.X - front.X);
    return {Checked(rear.X + (front.X - rear.X) * share),
            Checked(rear.Y + (front.Y - rear.Y) * share),
            Checked(rear.Z + (front.Z - rear.Z) * share)};
}

bool KeepsLength(const PointSet& points, PointNumber from, PointNumber to, double length) {
    const double distance = PointDistance(points[from], points[to]).Distance;
    return std::abs(distance - length) <= LeverTolerance;
}

/// One tracking of a mechanism, step by step.
class Tracking {
  public:
    Tracking(MovedSets& sets, const Suspension& document)
        : m_sets(sets),
          m_data(document.Data),
          m_lengths(document.StaticLengths) {}

    /// Runs all steps. Returns the check that failed, none when all held.
    const LeverCheck* Run() {
        TrackUpright();
        TrackActuator();
        const LeverCheck* failed = nullptr;
        if (HasRocker(m_data.SpringMechanism)) {
            failed = TrackRockers();
        }
        if (failed == nullptr) {
            TrackLateralBar();
        }
        if (failed == nullptr && UsesTBar(m_data)) {
            failed = TrackTBar();
        }
        if (failed == nullptr && HasLateralCentreSpring(m_data)) {
            m_sets.Locate(ptLCSI, ptR1P1, ptPRI, ptR1O);
        }
        return failed;
    }

  private:
    void TrackUpright() {
        PointSet& points = m_sets.New;
        PerpendicularFootOfPoints(points, ptUWO, ptLWO, ptTRO, ptST);
        if (m_data.DriveShaftExists) {
            const bool strut = m_data.SpringMechanism == smMacPhersonStrut;
            m_sets.Locate(ptDSO, strut ? ptUWO_MACPH : ptUWO, ptLWO, ptTRO);
        }
        const AxisPoints axes = WishboneAxisPointsAtX(
            points[ptUWIF], points[ptUWIR], points[ptLWIF], points[ptLWIR], points[ptWTCP]);
        points[ptSNextA] = axes.Upper;
        points[ptTNextA] = axes.Lower;
    }

    /// The outermost pickup of the spring train, and the fixed top of a spring straight to the
    /// chassis.
    void TrackActuator() {
        switch (m_data.SpringMechanism) {
        case smOutboardToUpright:
            m_sets.Locate(ptPRO, ptUWO, ptLWO, ptTRO);
            m_sets.New[ptPRI] = m_sets.Old[ptSAI];
            break;
        case smPullrodToUpright:
        case smPushrodToUpright:
        case smTwoRockersToUpright:
            m_sets.Locate(ptPRO, ptUWO, ptLWO, ptTRO);
            break;
        case smMacPhersonStrut: // the pickup moved with the strut
            m_sets.New[ptPRI] = m_sets.Old[ptSAI];
            break;
        case smOutboardToLowerWishbone:
            m_sets.Locate(ptPRO, ptLWIF, ptLWIR, ptLWO);
            m_sets.New[ptPRI] = m_sets.Old[ptSAI];
            break;
        case smPushrodToLowerWishbone:
        case smTwoRockersToLowerWishbone:
            m_sets.Locate(ptPRO, ptLWIF, ptLWIR, ptLWO);
            break;
        case smDirectToUpperWishbone:
        case smRockerToUpperWishbone:
        case smPullrodToUpperWishbone:
            m_sets.Locate(ptPRO, ptUWIF, ptUWIR, ptUWO);
            break;
        default:
            break;
        }
    }

    const LeverCheck* TrackRockers() {
        LocateOnChassisAxis(ptPRI, ptPRO);
        if (!KeepsLength(m_sets.New, ptPRI, ptPRICR, m_lengths.RockerInputLever)) {
            return &RockerInput;
        }
        LocateOnChassisAxis(ptR1O, ptPRI);
        if (HasSecondRocker(m_data.SpringMechanism)) {
            m_sets.Locate(ptR2I, ptR1O, ptR2P1, ptR2P2);
            m_sets.Locate(ptR2O, ptR2I, ptR2P1, ptR2P2);
        }
        return nullptr;
    }

    /// Moves a point of the first rocker along with `driver`: the rocker's axis is fixed to the
    /// chassis, so its points are taken from the new set for both places.
    void LocateOnChassisAxis(PointNumber target, PointNumber driver) {
        PointSet& points = m_sets.New;
        const SuspPoint& axis1 = points[ptR1P1];
        const SuspPoint& axis2 = points[ptR1P2];
        points[target] = LocatePoint(m_sets.Old[driver], points[driver], axis1, axis1, axis2, axis2,
                                     m_sets.Old[target], m_sets.Near[target]);
        m_sets.Count(target, driver, ptR1P1, ptR1P2);
    }

    void TrackLateralBar() {
        switch (m_data.ARBMechanism) {
        case abToLowerWishbone:
            m_sets.Locate(ptARDL, ptLWO, ptLWIF, ptLWIR);
            break;
        case abToRocker:
            m_sets.Locate(ptARDL, ptR1P1, ptPRI, ptR1O);
            break;
        case abToUpright:
            m_sets.Locate(ptARDL, ptLWO, ptTRO, ptWSA);
            break;
        default:
            return;
        }
        m_sets.Locate(ptARI, ptARDL, ptARP1, ptARP2);
    }

    const LeverCheck* TrackTBar() {
        m_sets.Locate(ptTBDLI, ptR1P1, ptPRI, ptR1O);
        if (m_data.ChassisMotion == cmRoll) {
            // The far side of the bar stays where it is.
            m_sets.Locate(ptTBDLO, ptTBP1, ptTBDLO2, ptTBDLI);
            m_sets.Locate(ptTSI, ptTBDLO, ptTBDLO2, ptTBP1);
        } else {
            // The bar turns about its own axis and the far side goes with it.
            m_sets.Locate(ptTBDLO, ptTBP1, ptTBP2, ptTBDLI);
            m_sets.Locate(ptTSI, ptTBDLO, ptTBP2, ptTBP1);
            m_sets.Locate(ptTBDLO2, ptTBP1, ptTBP2, ptTBDLO);
        }
        if (!KeepsLength(m_sets.New, ptTBDLO, ptTSI, m_lengths.TBarInputLever)) {
            return &TBarLever;
        }
        if (!KeepsLength(m_sets.New, ptTBDLO, ptTBDLI, m_lengths.TBarDropLink)) {
            return &TBarDropLink;
        }
        return nullptr;
    }

    MovedSets& m_sets;
    const SuspensionData& m_data;
    const StaticLengthRecord& m_lengths;
};

} // namespace

AxisPoints WishboneAxisPointsAtX(const SuspPoint& upperFront, const SuspPoint& upperRear,
                                 const SuspPoint& lowerFront, const SuspPoint& lowerRear,
                                 const SuspPoint& patch) {
    return {PointOfAxisAtX(upperFront, upperRear, patch.X),
            PointOfAxisAtX(lowerFront, lowerRear, patch.X)};
}

bool TrackMechanism(MovedSets& sets, Suspension& document, std::string& errorText) {
    const LeverCheck* const failed = Tracking(sets, document).Run();
    if (failed == nullptr) {
        return true;
    }
    errorText = std::string(failed->Lead) +
                " locus tracking error.\rThis can be due to a geometry that cannot achieve the "
                "required travel.\rTry reduced travel or smaller step size. Check units.";
    document.GeometryValid = false;
    NameFaultyPoints(document, failed->Points);
    return false;
}

} // namespace corvanta
