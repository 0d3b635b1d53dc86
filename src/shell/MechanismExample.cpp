#include "shell/MechanismExample.h"

#include "model/Failure.h"
#include "model/NumberText.h"
#include "model/PointsInPlay.h"
#include "persistence/MData.h"
#include "platform/DataFolder.h"
#include "platform/NoWindowSystem.h"
#include "solver/MLibMaths.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace corvanta {

namespace {

/// The sample of each spring mechanism, 0 to 11.
constexpr std::array<const char*, 12> ExamplesByMechanism{
    "roadster-front-links.WSP",       "rally-rear-upright-spring.WSP",
    "touring-front-wishbone.WSP",     "classic-front-inboard-rocker.WSP",
    "classic-front-rocker-link.WSP",  "formula-front-pullrod.WSP",
    "formula-front-pushrod.WSP",      "formula-rear-pullrod.WSP",
    "formula-rear-pushrod.WSP",       "prototype-front-two-rockers.WSP",
    "prototype-rear-two-rockers.WSP", "saloon-front-strut.WSP",
};

/// Those of the centre springs, which stand beside them.
constexpr std::array<const char*, 2> CentreSpringExamples{
    "formula-front-monoshock.WSP",
    "hillclimb-rear-centre-spring.WSP",
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

} // namespace

std::string SamplesFolder(const ProcessServices& process, const FileServices& files) {
    return DataFolder(process, files) + FileServices::Separator + "samples";
}

std::string ExampleName(std::int32_t springMechanism) {
    const auto place = static_cast<std::size_t>(springMechanism);
    return place < ExamplesByMechanism.size() ? ExamplesByMechanism[place] : std::string();
}

void PlaceOptionalPoints(PointSet& points, const SuspensionData& data) {
    PlaceBar(points, data.ARBMechanism);
    if (UsesTBar(data)) {
        PlaceTBar(points);
    }
    points[ptLCSI] = OnRocker(points, 0.6, 0, -35);
    points[ptDSO] = Plus(points[ptWC], 0, -30, 0);
    points[ptDSI] = {points[ptWC].X + 10, 120, points[ptWC].Z + 20};
}

namespace {

/// "formula-front-pushrod.WSP" reads "Formula front pushrod".
std::string TitleOfFile(const std::string& name) {
    std::string title = ReplaceAll(FileServices::BaseName(name), "-", " ");
    title.replace(0, 1, UpperCase(title.substr(0, 1)));
    return title;
}

/// A sample without a word to the user; nothing where it can't be read.
std::optional<Suspension> ReadQuietly(const std::string& path, const FundamentalUnits& units,
                                      FileServices& files) {
    Suspension document;
    ViewSettings settings;
    ChannelCatalogue channels;
    NoMessageBox box;
    Messages silent(box);
    try {
        ResetDocument(document, settings);
        if (DataLoad(document, channels, path, false, units, files, silent)) {
            return document;
        }
    } catch (...) {
        static_cast<void>(FailureInFlight()); // without its file there is no sample
    }
    return std::nullopt;
}

} // namespace

std::vector<SampleCard> SampleCards(const std::string& folder, const FundamentalUnits& units,
                                    FileServices& files) {
    std::vector<SampleCard> cards;
    const auto add = [&](const char* name) {
        const std::string path = folder + FileServices::Separator + name;
        if (std::optional<Suspension> document = ReadQuietly(path, units, files)) {
            cards.push_back({path, TitleOfFile(name), std::move(*document)});
        }
    };
    std::for_each(ExamplesByMechanism.begin(), ExamplesByMechanism.end(), add);
    std::for_each(CentreSpringExamples.begin(), CentreSpringExamples.end(), add);
    std::sort(cards.begin(), cards.end(),
              [](const auto& a, const auto& b) { return a.Title < b.Title; });
    return cards;
}

std::optional<Suspension> MechanismExample(const SuspensionData& choice, const std::string& folder,
                                           const FundamentalUnits& units, FileServices& files) {
    const std::string name = ExampleName(choice.SpringMechanism);
    if (name.empty() || folder.empty()) {
        return std::nullopt;
    }
    std::optional<Suspension> example =
        ReadQuietly(folder + FileServices::Separator + name, units, files);
    if (example) {
        example->Data = choice;
        PlaceOptionalPoints(example->StaticPoints(), choice);
        SetPointsInPlay(example->Catalogue, choice.SpringMechanism, choice);
    }
    return example;
}

} // namespace corvanta
