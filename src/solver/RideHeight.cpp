#include "solver/RideHeight.h"

#include "solver/MechanismTracking.h"
#include "solver/SSums.h"
#include "solver/StaticState.h"
#include "solver/WheelPosition.h"

#include <array>
#include <span>

namespace corvanta {

namespace {

/// What stays with the first rocker when the rod takes up the change.
constexpr std::array RockerSide{ptPRI, ptPRICR, ptR1O, ptSAOCR, ptARDL, ptARI};
constexpr std::array SecondRockerSide{ptR2I, ptR2O};
constexpr std::array TBarSide{ptTBDLI, ptTBDLO, ptTBDLO2, ptTSI, ptTBP1, ptTBP2};

/// The solved position next to the static points, which decides between mirror positions.
const PointSet& SolvedNeighbour(const Suspension& document) {
    // The solved sets of a strut have their chassis pickup back and no longer hold the point that
    // followed the strut's body.
    if (!document.ResultsValid || document.Data.SpringMechanism == smMacPhersonStrut) {
        return document.StaticPoints();
    }
    return document.WheelStates(document.StaticRack, document.StaticWheel - 1).Points;
}

void Restore(PointSet& moved, const PointSet& fixed, std::span<const PointNumber> numbers) {
    for (const PointNumber number : numbers) {
        moved[number] = fixed[number];
    }
}

void KeepRockerSide(PointSet& moved, const PointSet& fixed, const SuspensionData& data) {
    const bool second = HasSecondRocker(data.SpringMechanism);
    if (second || HasSingleRodRocker(data.SpringMechanism)) {
        Restore(moved, fixed, RockerSide);
    }
    if (second) {
        Restore(moved, fixed, SecondRockerSide);
    }
    if (UsesTBar(data)) {
        Restore(moved, fixed, TBarSide);
    }
}

/// Solves the wheel at a travel from the static points and carries the mechanism along.
bool SolveMoved(PointSet& moved, Suspension& document, std::string& errorText, double travel) {
    const PointSet& fixed = document.StaticPoints();
    const PointSet& near = SolvedNeighbour(document);
    WheelSearch search(fixed, document.StaticLengths, document.Data.SpringMechanism);
    search.CalcWheelState(travel, near, moved);
    MovedSets sets{moved, fixed, near};
    const bool geometryValid = document.GeometryValid;
    const std::vector<PointNumber> faultyPoints = document.FaultyPoints;
    const bool tracked = TrackMechanism(sets, document, errorText);
    document.GeometryValid = geometryValid; // the grid is no worse for a travel out of reach
    document.FaultyPoints = faultyPoints;
    return tracked;
}

} // namespace

bool AdjustRideHeight(Suspension& document, std::string& errorText, double travel,
                      bool byPushRodLength) {
    if (!document.ResultsValid) {
        if (!CheckInputGeometry(document, errorText)) {
            return false;
        }
        PrepareStaticState(document);
    }
    const PointSet fixed = document.StaticPoints();
    PointSet moved = fixed;
    if (!SolveMoved(moved, document, errorText, travel)) {
        return false;
    }
    if (document.Data.SpringMechanism == smMacPhersonStrut) {
        // A chassis pickup, and at rest the top of the body: the search moved them with the body.
        moved[ptSAI] = fixed[ptSAI];
        moved[ptUWO_MACPH] = fixed[ptSAI];
    }
    if (byPushRodLength) {
        KeepRockerSide(moved, fixed, document.Data);
    }
    document.StaticPoints() = moved;
    return true;
}

} // namespace corvanta
