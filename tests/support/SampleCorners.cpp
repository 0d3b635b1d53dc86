#include "tests/support/SampleCorners.h"

#include "persistence/MData.h"
#include "platform/DiskFileServices.h"
#include "platform/Messages.h"
#include "solver/MLibMaths.h"
#include "tests/support/RecordingMessageBox.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <stdexcept>

namespace corvanta::test {

namespace {

/// The sample of each spring mechanism, 0 to 11.
constexpr std::array<const char*, 12> SamplesByMechanism{
    "roadster-front-links.WSP",       "rally-rear-upright-spring.WSP",
    "touring-front-wishbone.WSP",     "classic-front-inboard-rocker.WSP",
    "classic-front-rocker-link.WSP",  "formula-front-pullrod.WSP",
    "formula-front-pushrod.WSP",      "formula-rear-pullrod.WSP",
    "formula-rear-pushrod.WSP",       "prototype-front-two-rockers.WSP",
    "prototype-rear-two-rockers.WSP", "saloon-front-strut.WSP",
};

SuspPoint Plus(const SuspPoint& p, double dx, double dy, double dz) {
    return {p.X + dx, p.Y + dy, p.Z + dz};
}

SuspPoint Between(const SuspPoint& from, const SuspPoint& to, double share) {
    return {from.X + share * (to.X - from.X), from.Y + share * (to.Y - from.Y),
            from.Z + share * (to.Z - from.Z)};
}

/// The place on the first rocker that lies at `share` of the way from its pivot to the rod's
/// pickup, then `across` the arm in the rocker's plane and `along` its axis, mm. A pickup well off
/// the plane of the others can't be taken for its mirror image.
SuspPoint OnRocker(const PointSet& points, double share, double across, double along) {
    const SuspPoint& pivot = points[ptR1P1];
    const Vector3 arm = VectorSubtract(points[ptPRI], pivot);
    const Vector3 toAxis = VectorSubtract(points[ptR1P2], pivot);
    const Vector3 axis = UnitVector(toAxis.X, toAxis.Y, toAxis.Z);
    const Vector3 square = CrossProduct(axis, arm);
    const Vector3 side = UnitVector(square.X, square.Y, square.Z);
    return {pivot.X + share * arm.X + across * side.X + along * axis.X,
            pivot.Y + share * arm.Y + across * side.Y + along * axis.Y,
            pivot.Z + share * arm.Z + across * side.Z + along * axis.Z};
}

/// A lateral bar above the drop link's lower end: an upright link, a lever along the car.
void PlaceLateralBar(PointSet& points, const SuspPoint& dropLinkLower) {
    points[ptARDL] = dropLinkLower;
    points[ptARI] = Plus(dropLinkLower, 3, -6, 160);
    points[ptARP1] = Plus(points[ptARI], 140, -25, 10);
    points[ptARP2] = points[ptARP1];
    points[ptARP2].Y = -points[ptARP1].Y;
}

void PlaceBar(PointSet& points, std::int32_t arb) {
    const SuspPoint innerLower = Between(points[ptLWIR], points[ptLWIF], 0.5);
    switch (arb) {
    case abToLowerWishbone:
        PlaceLateralBar(points, Between(innerLower, points[ptLWO], 0.6));
        break;
    case abToRocker:
        PlaceLateralBar(points, OnRocker(points, 0.7, 0, 35));
        break;
    case abToUpright:
        PlaceLateralBar(points, Plus(points[ptLWO], 20, -35, 60));
        break;
    default:
        break;
    }
}

/// A T-bar whose stem lies along the car, above the rocker: an upright drop link moves its end.
void PlaceTBar(PointSet& points) {
    points[ptTBDLI] = OnRocker(points, 0.5, 30, 40);
    points[ptTBDLO] = Plus(points[ptTBDLI], 2, -3, 150);
    points[ptTBP1] = {points[ptTBDLO].X + 80, 0, points[ptTBDLO].Z + 5};
    points[ptTBP2] = {points[ptTBP1].X, 40, points[ptTBP1].Z};
    points[ptTSI] = {points[ptTBDLO].X, 0, points[ptTBDLO].Z};
    points[ptTSO] = Plus(points[ptTSI], 0, 0, 200);
}

void PlaceOptionalPoints(Suspension& document) {
    PointSet& points = document.StaticPoints();
    PlaceBar(points, document.Data.ARBMechanism);
    if (UsesTBar(document.Data)) {
        PlaceTBar(points);
    }
    points[ptLCSI] = OnRocker(points, 0.6, 0, -35);
    points[ptDSO] = Plus(points[ptWC], 0, -30, 0);
    points[ptDSI] = {points[ptWC].X + 10, 120, points[ptWC].Z + 20};
}

/// The centre spring choices that go with a third spring choice.
std::vector<std::int32_t> CentreSprings(std::int32_t thirdSpring) {
    return thirdSpring == tsCornerSpring
               ? std::vector<std::int32_t>{csLongitudinalViaTBar}
               : std::vector<std::int32_t>{csLongitudinalViaTBar, csLateralViaRocker};
}

std::vector<std::int32_t> Bars(std::int32_t spring) {
    switch (spring) {
    case smOutboardToUpright:
    case smOutboardToLowerWishbone:
    case smMacPhersonStrut:
        return {abNone, abToLowerWishbone, abToUpright};
    case smPullrodToUpright:
    case smPushrodToUpright:
    case smPullrodToUpperWishbone:
    case smPushrodToLowerWishbone:
        return {abNone, abToLowerWishbone, abToRocker, abTBar};
    case smTwoRockersToUpright:
    case smTwoRockersToLowerWishbone:
        return {abNone, abToLowerWishbone, abToRocker};
    default:
        return {abNone, abToLowerWishbone};
    }
}

} // namespace

std::string SamplePath(const std::string& name) {
    return std::string(CORVANTA_SOURCE_DIR) + "/samples/" + name;
}

std::vector<std::string> AllSamplePaths() {
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(SamplePath(""))) {
        if (entry.path().extension() == ".WSP") {
            paths.push_back(entry.path().string());
        }
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

Suspension LoadSample(const std::string& name) {
    Suspension document;
    ViewSettings settings;
    const FundamentalUnits units = MetricUnits();
    ChannelCatalogue channels = MetricChannels();
    DiskFileServices files;
    RecordingMessageBox box;
    Messages messages(box);
    ResetDocument(document, settings);
    if (!DataLoad(document, channels, SamplePath(name), false, units, files, messages)) {
        throw std::runtime_error("can't load " + name);
    }
    return document;
}

void ForEachSample(const std::function<void(Suspension&)>& change,
                   const std::function<void(const Suspension&)>& look) {
    for (const std::string& path : AllSamplePaths()) {
        const std::string name = std::filesystem::relative(path, SamplePath("")).string();
        SCOPED_TRACE(name);
        Suspension document = LoadSample(name);
        change(document);
        SetUpCorner(document);
        CalculateCorner(document);
        look(document);
    }
}

std::string MechanismChoice::Text() const {
    return "spring " + std::to_string(Spring) + ", springs " + std::to_string(ThirdSpring) +
           ", centre spring " + std::to_string(CentreSpring) + ", bar " + std::to_string(ARB) +
           ", motion " + std::to_string(Motion) + (DriveShaft ? ", driveshaft" : "");
}

std::vector<MechanismChoice> OfferedChoices() {
    std::vector<MechanismChoice> choices;
    for (std::int32_t spring = smNone; spring <= smMacPhersonStrut; ++spring) {
        const std::int32_t lastThird = HasSingleRodRocker(spring) ? tsCentreSpring : tsCornerSpring;
        for (std::int32_t third = tsCornerSpring; third <= lastThird; ++third) {
            for (const std::int32_t centre : CentreSprings(third)) {
                for (const std::int32_t bar : Bars(spring)) {
                    choices.push_back({spring, third, centre, bar, cmRoll, false});
                    choices.push_back({spring, third, centre, bar, cmHeave, true});
                    choices.push_back({spring, third, centre, bar, cmHeave, false});
                    choices.push_back({spring, third, centre, bar, cmRoll, true});
                }
            }
        }
    }
    return choices;
}

Suspension CornerOf(const MechanismChoice& choice) {
    Suspension document =
        LoadSample(SamplesByMechanism.at(static_cast<std::size_t>(choice.Spring)));
    SuspensionData& data = document.Data;
    data.ThirdSpringMechanism = choice.ThirdSpring;
    data.CentreSpringSystem = choice.CentreSpring;
    data.ARBMechanism = choice.ARB;
    data.ChassisMotion = choice.Motion;
    data.DriveShaftExists = choice.DriveShaft;
    data.Bump = 20;
    data.Droop = 15;
    data.WheelTravelStepSize = 5;
    data.RackTravel = 12;
    data.RackTravelStepSize = 4;
    PlaceOptionalPoints(document);
    SetUpCorner(document);
    return document;
}

} // namespace corvanta::test
