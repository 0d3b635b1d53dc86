#pragma once

#include "model/Mechanisms.h"
#include "model/Points.h"

#include <cstdint>
#include <optional>
#include <string>

namespace corvanta {

/// The settings of a document. Stored units: mm, N, kg, g, N/mm and, for the bar, N.mm/deg. The
/// values here are those of a new document.
struct SuspensionData {
    /// Newtons per millimetre hold this many pounds per inch; the rates of a new document are round
    /// numbers in pounds per inch.
    static constexpr double PoundsPerInch = 5.708223;

    std::int32_t SpringMechanism = smNone;
    std::int32_t ThirdSpringMechanism = tsCornerSpring;
    std::int32_t CentreSpringSystem = csLongitudinalViaTBar;
    std::int32_t ChassisMotion = cmRoll;
    bool DriveShaftExists = false;
    std::int32_t ARBMechanism = abNone;
    double Bump = 25;               ///< wheel travel upwards from static
    double Droop = 25;              ///< wheel travel downwards from static
    double WheelTravelStepSize = 5; ///< step of wheel travel
    double RackTravel = 25;         ///< rack travel either side of static
    double RackTravelStepSize = 5;  ///< step of rack travel
    double CGX = 1750;              ///< X of the centre of gravity
    double CGZ = 300;               ///< height of the centre of gravity
    double Wheelbase = 2920;
    double Mass = 600;                     ///< of the whole car
    double GAccel = 1;                     ///< acceleration, g
    double GBrake = 2;                     ///< braking, g
    double KTyre = 1000 / PoundsPerInch;   ///< tyre rate
    double KLink = 10000 / PoundsPerInch;  ///< rate of the links
    double KSpring = 1500 / PoundsPerInch; ///< corner spring rate
    double KThirdSpring = 0;               ///< centre spring rate
    double KARB = 0;                       ///< bar rate, N.mm/deg
    double FrontBrakeBalanceSplitPC = 40;  ///< front share of the braking, per cent
    std::string Description;
    double XForce = 0; ///< force at the contact patch for the link loads
    double YForce = 0;
    double ZForce = 0;

    friend bool operator==(const SuspensionData&, const SuspensionData&) = default;
};

/// Takes the mechanisms, the driveshaft among them, from other data.
void CopyType(SuspensionData& data, const SuspensionData& from);

/// True when the corner has a centre spring.
[[nodiscard]] inline bool HasCentreSpring(const SuspensionData& data) {
    return data.ThirdSpringMechanism == tsCornerAndCentreSpring ||
           data.ThirdSpringMechanism == tsCentreSpring;
}

/// True when the centre spring lies across the car between the rockers.
[[nodiscard]] inline bool HasLateralCentreSpring(const SuspensionData& data) {
    return HasCentreSpring(data) && data.CentreSpringSystem == csLateralViaRocker;
}

/// True when a T-bar is in use, as the bar or to drive a centre spring.
[[nodiscard]] inline bool UsesTBar(const SuspensionData& data) {
    return data.ARBMechanism == abTBar ||
           (HasCentreSpring(data) && data.CentreSpringSystem == csLongitudinalViaTBar);
}

/// The end of the corner spring that moves with the wheel; its other end is `ptSAI`. None without a
/// spring, and none when a single rocker drives a centre spring alone.
[[nodiscard]] std::optional<PointNumber> MovingSpringEnd(const SuspensionData& data);

/// The short word of the document's spring mechanism.
[[nodiscard]] inline std::string_view SpringShortWord(const SuspensionData& data) {
    return SpringShortWordOf(data.SpringMechanism);
}

} // namespace corvanta
