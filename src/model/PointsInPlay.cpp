#include "model/PointsInPlay.h"

#include <string_view>

namespace corvanta {

namespace {

void Enable(PointCatalogue& catalogue, PointNumber number, std::string_view longName) {
    catalogue[number].Enabled = true;
    catalogue[number].LongName = longName;
}

constexpr std::string_view ShockAbsorberOnChassis = "Shock absorber pickup on chassis";

void EnableWheelAndLinks(PointCatalogue& catalogue, std::int32_t mechanism,
                         const SuspensionData& data) {
    catalogue[ptWSA].LongName = "Fictitious stub axle";
    Enable(catalogue, ptRHM, "Ride height reference point");
    Enable(catalogue, ptWTCP, "Centre of tyre contact patch");
    Enable(catalogue, ptWC, "Centre of wheel");
    if (mechanism != smMacPhersonStrut) {
        Enable(catalogue, ptUWO, "Upper wishbone outer pickup");
        Enable(catalogue, ptUWIR, "Upper wishbone inner rear pickup");
        Enable(catalogue, ptUWIF, "Upper wishbone inner front pickup");
    }
    Enable(catalogue, ptLWO, "Lower wishbone outer pickup");
    Enable(catalogue, ptLWIR, "Lower wishbone inner rear pickup");
    Enable(catalogue, ptLWIF, "Lower wishbone inner front pickup");
    Enable(catalogue, ptTRO, "Trackrod outboard  pickup");
    Enable(catalogue, ptTRI, "Trackrod inboard pickup");
    if (data.DriveShaftExists) {
        Enable(catalogue, ptDSO, "Driveshaft outboard pickup");
        Enable(catalogue, ptDSI, "Driveshaft inboard pickup");
    }
}

/// A spring that runs from the outer pickup straight to the chassis.
void EnableDirectSpring(PointCatalogue& catalogue, std::string_view outer,
                        std::string_view inner = ShockAbsorberOnChassis) {
    Enable(catalogue, ptPRO, outer);
    Enable(catalogue, ptSAI, inner);
}

/// A rod to a rocker; with only a centre spring the rocker has no corner spring.
void EnableRodAndRocker(PointCatalogue& catalogue, std::string_view outer, std::string_view inner,
                        bool cornerSpring) {
    Enable(catalogue, ptPRO, outer);
    Enable(catalogue, ptPRI, inner);
    Enable(catalogue, ptR1P1, "Rocker pivot point on chassis");
    Enable(catalogue, ptR1P2, "Rocker pivot axis ref point");
    if (cornerSpring) {
        Enable(catalogue, ptR1O, "Shock absorber pickup on rocker");
        Enable(catalogue, ptSAI, ShockAbsorberOnChassis);
    }
}

void EnableSmallRocker(PointCatalogue& catalogue) {
    Enable(catalogue, ptPRO, "Drop link pickup on upper rocker-wishbone");
    Enable(catalogue, ptPRI, "Drop link pickup on small rocker");
    Enable(catalogue, ptR1P1, "Small rocker pivot point on chassis");
    Enable(catalogue, ptR1P2, "Small rocker pivot axis ref point");
    Enable(catalogue, ptR1O, "Shock absorber pickup on small rocker");
    Enable(catalogue, ptSAI, ShockAbsorberOnChassis);
}

void EnableTwoRockers(PointCatalogue& catalogue, std::string_view outer,
                      std::string_view secondAxis, std::string_view secondOutput) {
    EnableRodAndRocker(catalogue, outer, "Pushrod inboard pickup on rocker", true);
    catalogue[ptR1O].LongName = "Rocker output";
    Enable(catalogue, ptR2I, "Second rocker input");
    Enable(catalogue, ptR2P1, "Second rocker pivot point on chassis");
    Enable(catalogue, ptR2P2, secondAxis);
    Enable(catalogue, ptR2O, secondOutput);
}

void EnableSpringTrain(PointCatalogue& catalogue, std::int32_t mechanism, bool cornerSpring) {
    switch (mechanism) {
    case smOutboardToUpright:
        EnableDirectSpring(catalogue, "Shock absorber pickup on upright");
        break;
    case smOutboardToLowerWishbone:
        EnableDirectSpring(catalogue, "Shock absorber pickup on lower wishbone");
        break;
    case smDirectToUpperWishbone:
        EnableDirectSpring(catalogue, "Shock absorber pickup on upper rocker/wishbone");
        break;
    case smRockerToUpperWishbone:
        EnableSmallRocker(catalogue);
        break;
    case smPullrodToUpright:
        EnableRodAndRocker(catalogue, "Pullrod outboard pickup on upright",
                           "Pullrod inboard pickup on rocker", cornerSpring);
        break;
    case smPushrodToUpright:
        EnableRodAndRocker(catalogue, "Pushrod outboard pickup on upright",
                           "Pushrod inboard  pickup on rocker", cornerSpring);
        break;
    case smPullrodToUpperWishbone:
        EnableRodAndRocker(catalogue, "Pullrod outboard pickup on upper wishbone",
                           "Pullrod inboard pickup on rocker", cornerSpring);
        break;
    case smPushrodToLowerWishbone:
        EnableRodAndRocker(catalogue, "Pushrod outboard pickup on lower wishbone",
                           "Pushrod inboard pickup on rocker", cornerSpring);
        break;
    case smTwoRockersToUpright:
        EnableTwoRockers(catalogue, "Pushrod outboard pickup on upright",
                         "Second rocker axis ref point", "Second rocker ouput");
        break;
    case smTwoRockersToLowerWishbone:
        EnableTwoRockers(catalogue, "Pushrod outboard pickup on lower wishbone",
                         "Second rocker axis ref point ", "Second rocker output");
        break;
    case smMacPhersonStrut:
        EnableDirectSpring(catalogue, "Strut pickup on upright", "Strut pickup on chassis");
        break;
    default:
        break;
    }
}

void EnableLateralBar(PointCatalogue& catalogue, std::string_view dropLinkPickup) {
    Enable(catalogue, ptARP1, "ARB axis point 1");
    Enable(catalogue, ptARP2, "ARB axis point 2");
    Enable(catalogue, ptARI, "ARB drop link pickup on input lever");
    Enable(catalogue, ptARDL, dropLinkPickup);
}

void EnableBar(PointCatalogue& catalogue, std::int32_t arbMechanism) {
    switch (arbMechanism) {
    case abToLowerWishbone:
        EnableLateralBar(catalogue, "ARB drop link pickup on wishbone");
        break;
    case abToRocker:
        EnableLateralBar(catalogue, "ARB drop link pickup on rocker");
        break;
    case abToUpright:
        EnableLateralBar(catalogue, "ARB drop link pickup on upright");
        break;
    default:
        break;
    }
}

void EnableCentreSpring(PointCatalogue& catalogue, const SuspensionData& data) {
    if (HasLateralCentreSpring(data)) {
        Enable(catalogue, ptLCSI, "Lateral spring pickup on rocker");
    } else if (HasCentreSpring(data) && data.CentreSpringSystem == csLongitudinalViaTBar) {
        Enable(catalogue, ptTSO, "Centre spring pickup on chassis");
        Enable(catalogue, ptTSI, "Centre spring pickup on T-Bar");
    }
}

void EnableTBar(PointCatalogue& catalogue) {
    Enable(catalogue, ptTBP1, "T-Bar pivot point on chassis");
    Enable(catalogue, ptTBP2, "T-Bar pivot axis ref point");
    Enable(catalogue, ptTBDLI, "T-Bar drop link pickup on rocker");
    Enable(catalogue, ptTBDLO, "T-Bar drop link pickup on T-Bar");
    catalogue[ptTBDLO2].LongName.clear();
}

} // namespace

void SetPointsInPlay(PointCatalogue& catalogue, std::int32_t springMechanism,
                     const SuspensionData& data) {
    for (const PointNumber number : AllPoints) {
        catalogue[number].Enabled = false;
    }
    EnableWheelAndLinks(catalogue, springMechanism, data);
    EnableSpringTrain(catalogue, springMechanism, data.ThirdSpringMechanism != tsCentreSpring);
    EnableCentreSpring(catalogue, data);
    EnableBar(catalogue, data.ARBMechanism);
    if (UsesTBar(data)) {
        EnableTBar(catalogue);
    }
}

} // namespace corvanta
