#include "solver/SInitGeo.h"

#include "model/Failure.h"
#include "model/PointsInPlay.h"
#include "solver/MLibMaths.h"

#include <cmath>
#include <string>

namespace corvanta {

namespace {

/// Any fraction of a step above about 0.01 counts as one more step.
constexpr double StepRounding = 0.99;

/// By how much a step size that is too small grows at a time, mm.
constexpr double GrowthInMillimetres = 0.5;
constexpr double GrowthInInches = 0.05;

/// Step sizes so far from the travel that growing takes more passes than this are nonsense.
constexpr int MostGrowths = 1'000'000;

/// Steps of a grid counted with its start step.
constexpr int MostSteps = WheelStateGrid::Steps;

double WholeSteps(double travel, double stepSize) {
    return std::floor(Divide(travel, stepSize) + StepRounding);
}

/// A step size and the whole steps on either side of static that it makes of two travels.
struct StepCount {
    double StepSize = 0;
    int First = 0;
    int Second = 0;
    bool Grown = false;
};

/// Counts the steps of the travels on both sides, growing the step size until the grid holds them.
StepCount CountSteps(double firstTravel, double secondTravel, double stepSize, double growth) {
    StepCount count{stepSize};
    for (int pass = 0; pass <= MostGrowths; ++pass) {
        const double first = WholeSteps(firstTravel, count.StepSize);
        const double second = WholeSteps(secondTravel, count.StepSize);
        if (first + second + 2 <= MostSteps) {
            count.First = static_cast<int>(first);
            count.Second = static_cast<int>(second);
            return count;
        }
        count.Grown = true;
        count.StepSize += growth;
    }
    RaiseOverflow();
}

/// The number with the place of its sign in front: a blank where there is no minus.
std::string SignedText(double value, const Separators& separators) {
    const std::string text = NumberToText(value, separators);
    return value < 0 ? text : " " + text;
}

/// The grid of any travel settings. A file may hold a `NegativeTravel`: the static position stands
/// alone then until the user has mended it.
TravelGrid GridOf(const SuspensionData& data, const FundamentalUnits& units) {
    return NegativeTravel(data).empty()
               ? CountTravelSteps(data, units)
               : TravelGrid{data.WheelTravelStepSize, data.RackTravelStepSize};
}

void TakeGrid(Suspension& document, const TravelGrid& grid) {
    document.Data.WheelTravelStepSize = grid.WheelTravelStepSize;
    document.Data.RackTravelStepSize = grid.RackTravelStepSize;
    document.NW = grid.NW;
    document.NR = grid.NR;
    document.StaticWheel = grid.StaticWheel;
    document.StaticRack = grid.StaticRack;
}

} // namespace

std::string NegativeTravel(const SuspensionData& data) {
    if (data.WheelTravelStepSize < 0) {
        return "The step size of wheel travel must be greater than 0.";
    }
    if (data.RackTravelStepSize < 0) {
        return "The step size of rack travel must be greater than 0.";
    }
    if (data.Bump < 0 || data.Droop < 0) {
        return "Wheel bump and droop travel must be positive.";
    }
    return {};
}

TravelGrid CountTravelSteps(const SuspensionData& data, const FundamentalUnits& units) {
    if (const std::string reason = NegativeTravel(data); !reason.empty()) {
        throw Failure(fnInvalidCall, reason);
    }
    const double growth =
        units[ucDisplacement].Label == "mm" ? GrowthInMillimetres : GrowthInInches;
    const StepCount wheel = CountSteps(data.Bump, data.Droop, data.WheelTravelStepSize, growth);
    // The rack travels as far to one side as to the other, whatever the sign that is given.
    const double rackTravel = std::abs(data.RackTravel);
    const StepCount rack = CountSteps(rackTravel, rackTravel, data.RackTravelStepSize, growth);
    return {wheel.StepSize,  rack.StepSize,  wheel.First + wheel.Second + 1, 2 * rack.First + 1,
            wheel.First + 2, rack.First + 2, wheel.Grown || rack.Grown};
}

void SetStepSizes(Suspension& document, const FundamentalUnits& units, Messages& messages) {
    const TravelGrid grid = GridOf(document.Data, units);
    TakeGrid(document, grid);
    if (grid.Grown) {
        messages.ShowMessage("Max number of wheel travel points exceeded so step size reset to " +
                                 SignedText(grid.WheelTravelStepSize, units.NumberSeparators),
                             msInformation);
    }
}

void DerivePoints(PointSet& points, const SuspensionData& data) {
    points[ptTBDLO2] = {points[ptTBDLO].X, -points[ptTBDLO].Y, points[ptTBDLO].Z};
    if (data.ThirdSpringMechanism == tsCornerSpring) {
        points[ptTSI] = {points[ptTBDLO].X, 0, points[ptTBDLO].Z};
    }
    if (data.ThirdSpringMechanism == tsCentreSpring) {
        points[ptR1O] = points[ptTBDLI];
    }
}

void InitGeometry(Suspension& document, ChannelCatalogue& channels, const FundamentalUnits& units,
                  Messages& messages) {
    SetStepSizes(document, units, messages);
    channels.SetFrontRearTitles(IsFrontCorner(document));
    SetPointsInPlay(document.Catalogue, document.Data.SpringMechanism, document.Data);
    DerivePoints(document.StaticPoints(), document.Data);
}

void SetDesign(Suspension& document, const Design& design, const FundamentalUnits& units) {
    const TravelGrid grid = GridOf(design.Data, units);
    document.Data = design.Data;
    document.StaticPoints() = design.Points;
    TakeGrid(document, grid);
    SetPointsInPlay(document.Catalogue, document.Data.SpringMechanism, document.Data);
    DerivePoints(document.StaticPoints(), document.Data);
    document.WheelStates.ForgetResults();
    document.StaticLengths = {};
    document.QuadraticFits = {};
    document.Dynamics = {};
    document.DataLoaded = true;
    document.ResultsValid = false;
    document.GeometryValid = false;
    document.DynamicsValid = false;
    document.FaultyPoints.clear();
}

} // namespace corvanta
