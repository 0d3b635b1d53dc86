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
    bool Tolerant = false;
    GridPart Reached{};   ///< of a tolerant run
    StateFailure First{}; ///< the same
    std::vector<PointNumber> FirstFaulty{};
};

std::string TextOfRaised(const Failure& failure) {
    return "The following error occurred: " + failure.Description();
}

/// The last step of the march over the wheel steps that a rack step of a run needs.
int LastMarchStep(const Suspension& document, const GridPart& part, int rackStep) {
    int j = document.NW + 1;
    while (j > 1 && !part.Has(rackStep, WheelStepIndex(document, j).Step)) {
        --j;
    }
    return j;
}

/// The start state of a rack step.
bool SetUpRow(Suspension& document, std::string& errorText, const MarchStep& row, Run& run) {
    run.Counts.RackStep = row.Step;
    run.Counts.WheelStep = 1;
    document.WheelStates(row.Step, 1).Points = document.StaticPoints();
    return SolveRackRow(document, errorText, row.Step, row.Travel);
}

/// One wheel step of a rack step that is set up.
bool SolveStep(Suspension& document, std::string& errorText, WheelSearch& search, int rackStep,
               const MarchStep& step) {
    WheelState& state = document.WheelStates(rackStep, step.Step);
    state.Points = search.Start();
    state.PointsPlus = search.Start();
    state.PointsMinus = search.Start();
    return SolveWheelStep(document, errorText, search, rackStep, step.Step, step.Neighbour,
                          step.Travel);
}

bool SolveRow(Suspension& document, std::string& errorText, const MarchStep& row, Run& run) {
    SolveCounts& counts = run.Counts;
    if (!SetUpRow(document, errorText, row, run)) {
        return false;
    }
    const WheelState& start = document.WheelStates(row.Step, 1);
    WheelSearch search(start.Points, document.StaticLengths, document.Data.SpringMechanism);
    const int last = LastMarchStep(document, run.Part, row.Step);
    for (int j = 2; j <= last; ++j) {
        if (run.Stop.stop_requested()) {
            run.Stopped = true;
            return false;
        }
        const MarchStep step = WheelStepIndex(document, j);
        counts.WheelStep = step.Step;
        if (!SolveStep(document, errorText, search, row.Step, step)) {
            return false;
        }
    }
    counts.Solves += search.Solves();
    counts.Locations += search.Locations();
    return true;
}

/// Runs a step of a tolerant run. False when it fails; the run keeps the first failure.
template <typename Step>
bool Try(Suspension& document, Run& run, Step step) {
    std::string errorText;
    bool raised = false;
    try {
        if (step(errorText)) {
            return true;
        }
    } catch (const Failure& failure) {
        raised = true;
        errorText = TextOfRaised(failure);
    }
    if (run.First.Message.empty()) {
        if (raised) {
            NamePointsOfRaisedFailure(document, true);
        }
        run.First = {errorText, run.Counts.RackStep, run.Counts.WheelStep};
        run.FirstFaulty = document.FaultyPoints;
    }
    return false;
}

/// The march over a rack step as if each direction had no more steps than can be solved: what
/// failed leaves no trace in the search, and the static step takes the start state for a bump step
/// that is not there.
void MarchAsFarAsPossible(Suspension& document, WheelSearch& search, int rackStep, Run& run) {
    const int last = LastMarchStep(document, run.Part, rackStep);
    bool onwards = true;
    bool besideStatic = false;
    for (int j = 2; j <= last; ++j) {
        MarchStep step = WheelStepIndex(document, j);
        if (step.Step == document.StaticWheel) {
            step.Neighbour = besideStatic ? step.Neighbour : 1;
        }
        onwards = onwards || step.Step == document.StaticWheel || step.Neighbour == 1;
        if (!onwards) {
            continue;
        }
        run.Stopped = run.Stop.stop_requested();
        if (run.Stopped) {
            return;
        }
        run.Counts.WheelStep = step.Step;
        const double factor = search.TravelFactor();
        onwards = Try(document, run, [&](std::string& errorText) {
            return SolveStep(document, errorText, search, rackStep, step);
        });
        if (!onwards) {
            search.SetTravelFactor(factor);
            if (step.Step == document.StaticWheel) {
                run.Reached.RemoveRow(rackStep);
                return;
            }
        } else if (run.Part.Has(rackStep, step.Step)) {
            run.Reached.Add(rackStep, step.Step);
        }
        besideStatic = besideStatic || (onwards && step.Step == document.StaticWheel - 1);
    }
}

/// As `SolveRow`, as far as the rack step can be solved. False when the run was stopped.
bool ReachRow(Suspension& document, const MarchStep& row, Run& run) {
    static_cast<void>(Try(document, run, [&](std::string& errorText) {
        if (!SetUpRow(document, errorText, row, run)) {
            return false;
        }
        WheelSearch search(document.WheelStates(row.Step, 1).Points, document.StaticLengths,
                           document.Data.SpringMechanism);
        run.Reached.Add(row.Step, 1);
        MarchAsFarAsPossible(document, search, row.Step, run);
        return true;
    }));
    return !run.Stopped;
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
        if (run.Part.HasRow(row.Step) &&
            !(run.Tolerant ? ReachRow(document, row, run)
                           : SolveRow(document, errorText, row, run))) {
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

/// The same as far as the design can be solved. Without the static position it has nothing to
/// compare any other with.
bool CalculateTolerantly(Suspension& document, std::string& errorText, Run& run) {
    run.Solved = SolvePositions(document, errorText, run);
    if (!run.Solved) {
        run.Reached = {};
        return false;
    }
    run.Counts = {};
    if (!run.Reached.Has(document.StaticRack, document.StaticWheel)) {
        run.Reached = {};
    }
    CalculateWhatCanBe(document, run.Reached, run.First);
    document.FaultyPoints = run.FirstFaulty;
    return run.First.Message.empty();
}

/// Leaves nothing of the states that are not reached.
void ForgetUnreached(Suspension& document, const GridPart& reached) {
    for (int r = 1; r <= document.NR + 1; ++r) {
        for (int w = 1; w <= document.NW + 1; ++w) {
            if (!reached.Has(r, w)) {
                WheelState& state = document.WheelStates(r, w);
                state.Channels = {};
                state.LinkLoads = {};
            }
        }
    }
}

/// Runs a calculation on a document and says what became of it; throws nothing for any document.
SolveResult RunOn(Suspension& document, const ChannelCatalogue& channels, const GridCut& cut,
                  const std::stop_token& stop) {
    std::string errorText;
    SolveCounts counts;
    Run run{PartOf(document, cut), counts, stop};
    run.Tolerant = cut.Tolerant;
    document.FaultyPoints.clear();
    bool calculated = false;
    try {
        calculated = cut.Tolerant ? CalculateTolerantly(document, errorText, run)
                                  : Calculate(document, channels, cut.Whole, errorText, run);
    } catch (...) {
        if (errorText.empty()) {
            errorText = TextOfRaised(FailureInFlight());
        }
        run.Reached = {};
        if (!run.Solved) {
            NamePointsOfRaisedFailure(document, run.Counts.RackStep != 0);
        }
    }
    if (cut.Tolerant) {
        ForgetUnreached(document, run.Reached);
    }
    if (calculated || run.Stopped) {
        return {calculated, run.Stopped, {}, run.Reached};
    }
    if (errorText.empty()) {
        counts = {run.First.RackStep, run.First.WheelStep};
        errorText = run.First.Message;
    }
    return {
        false,
        false,
        {"Calculations could not be completed.\r\r" + errorText, counts.RackStep, counts.WheelStep},
        run.Reached};
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
