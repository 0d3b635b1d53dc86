#pragma once

#include "model/Points.h"
#include "model/SuspensionData.h"
#include "model/Views.h"
#include "model/WheelState.h"

#include <array>
#include <vector>

namespace corvanta {

/// Lengths measured once per run at the static position, mm. A length that the mechanism in force
/// does not use keeps the value of the last run that used it.
struct StaticLengthRecord {
    double DriveshaftLength = 0;
    double StaticHalfTrack = 0;
    double SpringLength = 0;
    double CentreSpringLength = 0;
    double ARBInputLever = 0;
    double ARBDropLink = 0;
    double StubAxleLength = 0;
    double RockerInputLever = 0;
    double RockerOutputLever = 0;
    double SecondRockerInputLever = 0;
    double SecondRockerOutputLever = 0;
    double PushrodLength = 0;
    double InterconnectLength = 0;
    double SteeringArmLever = 0;
    double TyreRadius = 0;
    double TrackRodLength = 0;
    double LowerFrontLink = 0;
    double LowerRearLink = 0;
    double LowerWishboneRadius = 0;
    double UpperFrontLink = 0;
    double UpperRearLink = 0;
    double UpperWishboneRadius = 0;
    double TBarInputLever = 0;
    double TBarDropLink = 0;
};

/// One fitted curve y = a x^2 + b x + c against damper travel, in display units.
struct QuadraticFit {
    double A = 0;
    double B = 0;
    double C = 0;
};

inline constexpr int QuadraticFitCount = 10;

/// How far the corner moves under the stated acceleration and braking, mm, and the load transferred
/// to or from its wheel, N.
struct DynamicsRecord {
    double LinkAccel = 0; ///< deflection of the rigid links
    double LinkBrake = 0;
    double LoadAccel = 0; ///< load transferred
    double LoadBrake = 0;
    double SuspAccel = 0; ///< suspension deflection without correction
    double SuspBrake = 0;
    double SuspAccelCorrected = 0; ///< suspension deflection with the anti-feature
    double SuspBrakeCorrected = 0;
    double TotalAccel = 0; ///< tyre, links and corrected suspension
    double TotalBrake = 0;
    double TyreAccel = 0; ///< tyre deflection
    double TyreBrake = 0;
};

/// The document: one corner with its settings, its solved grid and all that is derived from it. A
/// value: two documents can live side by side.
struct Suspension {
    SuspensionData Data;
    PointCatalogue Catalogue;
    WheelStateGrid WheelStates;
    StaticLengthRecord StaticLengths;
    std::array<QuadraticFit, QuadraticFitCount> QuadraticFits{};
    DynamicsRecord Dynamics;

    int NW = 1;          ///< number of wheel steps, 1 to 49; they run from 2 to NW + 1
    int NR = 1;          ///< number of rack steps, 1 to 49; they run from 2 to NR + 1
    int StaticWheel = 2; ///< wheel step of the static position
    int StaticRack = 2;  ///< rack step of the static position

    bool DataLoaded = false;    ///< a suspension is in memory
    bool ResultsValid = false;  ///< the grid holds the results of the current settings
    bool GeometryValid = false; ///< the solved grid is usable
    bool DynamicsValid = false; ///< the dynamics record holds results

    /// Points in play that the failure of the last calculation is about, empty when there is none
    /// to tell.
    std::vector<PointNumber> FaultyPoints;

    /// The static pickup points, which the user edits and a file stores.
    [[nodiscard]] PointSet& StaticPoints() { return WheelStates(1, 1).Points; }
    [[nodiscard]] const PointSet& StaticPoints() const { return WheelStates(1, 1).Points; }
};

/// A new document in the place of the old: the defaults, the flags cleared, a fresh grid, no point
/// in play or named, and `ViewVariable` 2. The centre spring system, centre spring rate, bar rate,
/// travels and chassis motion stay: a new document inherits them from the one before it.
void ResetDocument(Suspension& document, ViewSettings& settings);

/// Wheel travel of a wheel step from static, mm: steps grow from bump towards droop.
[[nodiscard]] double WheelTravelAtStep(const Suspension& document, int wheelStep);

/// Rack travel of a rack step from static, mm: steps grow with rack travel.
[[nodiscard]] double RackTravelAtStep(const Suspension& document, int rackStep);

/// True when the corner lies at or ahead of the centre of gravity.
[[nodiscard]] bool IsFrontCorner(const SuspensionData& data, const PointSet& staticPoints);
[[nodiscard]] bool IsFrontCorner(const Suspension& document);

} // namespace corvanta
