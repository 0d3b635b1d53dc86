#include "calculation/SCalcs.h"

#include "model/Failure.h"
#include "properties/Dynamics.h"
#include "properties/SGeoProp.h"
#include "solver/FaultyPoints.h"
#include "solver/SInitGeo.h"
#include "solver/SSums.h"
#include "solver/StaticState.h"
#include "solver/WheelPosition.h"

namespace corvanta {

namespace {

/// Steps of a march around the centre step `centre`: below it outward, itself, above it outward.
MarchStep MarchAround(int i, int centre, double stepSize) {
    MarchStep step;
    if (i < centre) {
        step.Step = centre - i + 1;
        step.Neighbour = step.Step == centre - 1 ? 1 : step.Step + 1;
    } else if (i == centre) {
        step.Step = centre;
        step.Neighbour = centre - 1;
    } else {
        step.Step = i;
        step.Neighbour = i == centre + 1 ? 1 : i - 1;
    }
    step.Travel = (centre - step.Step) * stepSize;
    return step;
}

bool SolveRow(Suspension& document, std::string& errorText, const MarchStep& row,
              SolveCounts& counts) {
    counts.RackStep = row.Step;
    counts.WheelStep = 1;
    WheelState& start = document.WheelStates(row.Step, 1);
    start.Points = document.StaticPoints();
    if (!SolveRackRow(document, errorText, row.Step, row.Travel)) {
        return false;
    }
    WheelSearch search(start.Points, document.StaticLengths, document.Data.SpringMechanism);
    for (int j = 2; j <= document.NW + 1; ++j) {
        const MarchStep step = WheelStepIndex(document, j);
        counts.WheelStep = step.Step;
        WheelState& state = document.WheelStates(row.Step, step.Step);
        state.Points = start.Points;
        state.PointsPlus = start.Points;
        state.PointsMinus = start.Points;
        if (!SolveWheelStep(document, errorText, search, row.Step, step.Step, step.Neighbour,
                            step.Travel)) {
            return false;
        }
    }
    counts.Solves += search.Solves();
    counts.Locations += search.Locations();
    return true;
}

/// The point that followed a strut's body through the march becomes the chassis pickup again.
void RestoreStrutPickup(Suspension& document) {
    const SuspPoint pickup = document.StaticPoints()[ptSAI];
    for (int r = 2; r <= document.NR + 1; ++r) {
        for (int c = 2; c <= document.NW + 1; ++c) {
            WheelState& state = document.WheelStates(r, c);
            state.Points[ptSAI] = pickup;
            state.PointsPlus[ptSAI] = pickup;
            state.PointsMinus[ptSAI] = pickup;
        }
    }
}

bool Calculate(Suspension& document, const ChannelCatalogue& channels, std::string& errorText,
               SolveCounts& counts, bool& solved) {
    solved = SolveGrid(document, errorText, counts);
    if (!solved) {
        return false;
    }
    counts = {}; // what fails from here on is about no position that is being solved
    if (!CalculateStateProperties(document, errorText)) {
        return false;
    }
    CalculateDynamics(document, document.StaticRack);
    CalculateGridChannels(document, channels);
    document.ResultsValid = document.GeometryValid;
    return true;
}

} // namespace

MarchStep WheelStepIndex(const Suspension& document, int i) {
    return MarchAround(i, document.StaticWheel, document.Data.WheelTravelStepSize);
}

MarchStep RackStepIndex(const Suspension& document, int i) {
    return MarchAround(i, document.StaticRack, document.Data.RackTravelStepSize);
}

bool SolveGrid(Suspension& document, std::string& errorText) {
    SolveCounts counts;
    return SolveGrid(document, errorText, counts);
}

bool SolveGrid(Suspension& document, std::string& errorText, SolveCounts& counts) {
    counts = {};
    errorText = NegativeTravel(document.Data);
    if (!errorText.empty()) {
        return false;
    }
    if (!CheckInputGeometry(document, errorText)) {
        return false;
    }
    PrepareStaticState(document);
    if (!CheckActuatorPlacement(document, errorText)) {
        return false;
    }
    document.WheelStates.Reserve(document.NR + 1);
    for (int i = 2; i <= document.NR + 1; ++i) {
        if (!SolveRow(document, errorText, RackStepIndex(document, i), counts)) {
            return false;
        }
    }
    if (document.Data.SpringMechanism == smMacPhersonStrut) {
        RestoreStrutPickup(document);
    }
    return true;
}

CalculationFailure RunCalculation(Suspension& document, const ChannelCatalogue& channels,
                                  Messages& messages) {
    std::string errorText;
    SolveCounts counts;
    document.FaultyPoints.clear();
    bool solved = false;
    try {
        if (Calculate(document, channels, errorText, counts, solved)) {
            return {};
        }
    } catch (...) {
        const Failure failure = FailureInFlight();
        if (errorText.empty()) {
            errorText = "The following error occurred: " + failure.Description();
        }
        if (!solved) {
            NamePointsOfRaisedFailure(document, counts.RackStep != 0);
        }
    }
    CalculationFailure failure{"Calculations could not be completed.\r\r" + errorText,
                               counts.RackStep, counts.WheelStep};
    messages.ShowMessage(failure.Message, msExclamation);
    return failure;
}

} // namespace corvanta
