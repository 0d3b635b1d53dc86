#include "calculation/SCalcs.h"

#include "model/Failure.h"
#include "properties/Dynamics.h"
#include "properties/SDampFit.h"
#include "properties/SGeoProp.h"
#include "solver/FaultyPoints.h"
#include "solver/SInitGeo.h"
#include "solver/SSums.h"
#include "solver/StaticState.h"
#include "solver/WheelPosition.h"

#include <algorithm>
#include <cmath>

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

/// What a run of the solver is for, and how far it came.
struct Run {
    GridPart Part;
    SolveCounts& Counts;
    std::stop_token Stop{};
    bool Solved = false; ///< all positions are found; what fails then is a property
    bool Stopped = false;
};

/// The last step of the march over the wheel steps that a rack step of a run needs.
int LastMarchStep(const Suspension& document, const GridPart& part, int rackStep) {
    int j = document.NW + 1;
    while (j > 1 && !part.Has(rackStep, WheelStepIndex(document, j).Step)) {
        --j;
    }
    return j;
}

bool SolveRow(Suspension& document, std::string& errorText, const MarchStep& row, Run& run) {
    SolveCounts& counts = run.Counts;
    counts.RackStep = row.Step;
    counts.WheelStep = 1;
    WheelState& start = document.WheelStates(row.Step, 1);
    start.Points = document.StaticPoints();
    if (!SolveRackRow(document, errorText, row.Step, row.Travel)) {
        return false;
    }
    WheelSearch search(start.Points, document.StaticLengths, document.Data.SpringMechanism);
    const int last = LastMarchStep(document, run.Part, row.Step);
    for (int j = 2; j <= last; ++j) {
        if (run.Stop.stop_requested()) {
            run.Stopped = true;
            return false;
        }
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
void RestoreStrutPickup(Suspension& document, const GridPart& part) {
    const SuspPoint pickup = document.StaticPoints()[ptSAI];
    for (int r = 2; r <= document.NR + 1; ++r) {
        for (int c = 2; c <= document.NW + 1 && part.HasRow(r); ++c) {
            WheelState& state = document.WheelStates(r, c);
            state.Points[ptSAI] = pickup;
            state.PointsPlus[ptSAI] = pickup;
            state.PointsMinus[ptSAI] = pickup;
        }
    }
}

bool SolvePositions(Suspension& document, std::string& errorText, Run& run) {
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
    for (int r = 1; r <= document.NR + 1; ++r) { // the march takes no memory
        if (r == 1 || run.Part.HasRow(r)) {
            document.WheelStates.Reserve(r);
        }
    }
    for (int i = 2; i <= document.NR + 1; ++i) {
        const MarchStep row = RackStepIndex(document, i);
        if (run.Part.HasRow(row.Step) && !SolveRow(document, errorText, row, run)) {
            return false;
        }
    }
    if (document.Data.SpringMechanism == smMacPhersonStrut) {
        RestoreStrutPickup(document, run.Part);
    }
    return true;
}

/// The positions of a run and their channels.
bool CalculateChannels(Suspension& document, std::string& errorText, Run& run) {
    run.Solved = SolvePositions(document, errorText, run);
    if (!run.Solved) {
        return false;
    }
    run.Counts = {}; // what fails from here on is about no position that is being solved
    return CalculateStateProperties(document, run.Part, errorText);
}

bool Calculate(Suspension& document, const ChannelCatalogue& channels, bool whole,
               std::string& errorText, Run& run) {
    if (!CalculateChannels(document, errorText, run)) {
        return false;
    }
    if (whole) {
        CalculateDynamics(document, document.StaticRack);
    }
    CalculateGridChannels(document, run.Part);
    if (whole) {
        CalculateQuadraticFits(document, channels, document.StaticRack);
        document.ResultsValid = document.GeometryValid;
    }
    return true;
}

/// Runs a calculation on a document and says what became of it; throws nothing for any document.
SolveResult RunOn(Suspension& document, const ChannelCatalogue& channels, const GridCut& cut,
                  const std::stop_token& stop) {
    std::string errorText;
    SolveCounts counts;
    Run run{PartOf(document, cut), counts, stop};
    document.FaultyPoints.clear();
    try {
        if (Calculate(document, channels, cut.Whole, errorText, run)) {
            return {true};
        }
    } catch (...) {
        const Failure failure = FailureInFlight();
        if (errorText.empty()) {
            errorText = "The following error occurred: " + failure.Description();
        }
        if (!run.Solved) {
            NamePointsOfRaisedFailure(document, run.Counts.RackStep != 0);
        }
    }
    if (run.Stopped) {
        return {false, true};
    }
    return {false,
            false,
            {"Calculations could not be completed.\r\r" + errorText, run.Counts.RackStep,
             run.Counts.WheelStep}};
}

/// Adds a wheel step of a rack step with what its channels need of the same rack step. Those of an
/// opposite rack travel are the caller's.
void AddWithMirror(GridPart& part, const Suspension& document, int rackStep, int wheelStep) {
    part.Add(rackStep, 1);
    part.Add(rackStep, document.StaticWheel);
    part.Add(rackStep, wheelStep);
    const int mirror = 2 * document.StaticWheel - wheelStep;
    if (mirror >= 2 && mirror <= document.NW + 1) {
        part.Add(rackStep, mirror);
    }
}

void AddRow(GridPart& part, const Suspension& document, int rackStep) {
    for (int w = 1; w <= document.NW + 1; ++w) {
        part.Add(rackStep, w);
    }
}

/// The step of a march nearest to a travel, its static step `centre` and `count` steps from 2.
int NearestStep(double stepsFromCentre, int centre, int count) {
    const double farthest = WheelStateGrid::Steps;
    const double steps = std::round(std::clamp(stepsFromCentre, -farthest, farthest));
    return std::clamp(centre + static_cast<int>(steps), 2, count + 1);
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
    Run run{WholeGrid(document.NR, document.NW), counts};
    return SolvePositions(document, errorText, run);
}

int NearestWheelStep(const Suspension& document, double travel) {
    const double step = document.Data.WheelTravelStepSize;
    return step > 0 ? NearestStep(-travel / step, document.StaticWheel, document.NW)
                    : document.StaticWheel;
}

int NearestRackStep(const Suspension& document, double travel) {
    const double step = document.Data.RackTravelStepSize;
    return step > 0 ? NearestStep(travel / step, document.StaticRack, document.NR)
                    : document.StaticRack;
}

GridPart PartOf(const Suspension& document, const GridCut& cut) {
    if (cut.Whole) {
        return WholeGrid(document.NR, document.NW);
    }
    GridPart part;
    AddWithMirror(part, document, document.StaticRack, document.StaticWheel);
    int lastRow = 0;
    for (const double travel : cut.RackTravels) {
        const int row = NearestRackStep(document, travel);
        AddRow(part, document, row);
        AddRow(part, document, 2 * document.StaticRack - row);
        lastRow = std::max(lastRow, row);
    }
    for (const double travel : cut.WheelTravels) {
        const int column = NearestWheelStep(document, travel);
        for (int r = 2; r <= document.NR + 1; ++r) {
            AddWithMirror(part, document, r, column);
        }
        lastRow = document.NR + 1;
    }
    const SuspensionData& data = document.Data;
    if (cut.BarRotation && data.ARBMechanism != abNone && data.ChassisMotion != cmHeave) {
        for (int r = 2; r <= lastRow; ++r) {
            AddWithMirror(part, document, r, 2);
            AddWithMirror(part, document, r, document.NW + 1);
        }
    }
    return part;
}

SolveResult Solve(Suspension& scratch, const Design& design, const SolveSettings& settings,
                  const GridCut& cut, const std::stop_token& stop) {
    try {
        SetDesign(scratch, design, settings.Units);
    } catch (...) {
        return {false,
                false,
                {"Calculations could not be completed.\r\rThe following error occurred: " +
                 FailureInFlight().Description()}};
    }
    return RunOn(scratch, settings.Channels, cut, stop);
}

CalculationFailure RunCalculation(Suspension& document, const ChannelCatalogue& channels,
                                  Messages& messages) {
    const SolveResult result = RunOn(document, channels, {}, {});
    if (!result.Solved) {
        messages.ShowMessage(result.Failure.Message, msExclamation);
    }
    return result.Failure;
}

} // namespace corvanta
