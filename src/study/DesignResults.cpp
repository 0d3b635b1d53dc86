#include "study/DesignResults.h"

#include <algorithm>

namespace corvanta {

namespace {

GridCut CutFor(std::span<const StudyChart> charts, const TravelPlace& place) {
    GridCut cut{TakeWholeGrid(charts), {place.Rack}, {}, false};
    for (const StudyChart& chart : charts) {
        cut.BarRotation = cut.BarRotation || chart.Channel == chARBRotation;
        if (chart.Kind == ChartKind::AlongRackTravel) {
            cut.WheelTravels = {place.Wheel};
        }
    }
    return cut;
}

void DescribeGrid(DesignResults& results, const Suspension& solved, int wheelStep, int rackStep) {
    results.Place = {WheelTravelAtStep(solved, wheelStep), RackTravelAtStep(solved, rackStep)};
    results.FirstStep = {WheelTravelAtStep(solved, solved.NW + 1), RackTravelAtStep(solved, 2)};
    results.LastStep = {WheelTravelAtStep(solved, 2), RackTravelAtStep(solved, solved.NR + 1)};
    results.StepSize = {solved.Data.WheelTravelStepSize, solved.Data.RackTravelStepSize};
}

/// The maps of a design that fails somewhere, without values where it does.
void MapWhatIsReached(DesignResults& results, Suspension& scratch, const Design& design,
                      const SolveSettings& settings, std::span<const StudyChart> charts) {
    if (!TakeWholeGrid(charts)) {
        return;
    }
    GridCut cut;
    cut.Tolerant = true;
    results.Outcome.Reached = Solve(scratch, design, settings, cut).Reached;
    if (!results.Outcome.Reached.Has(scratch.StaticRack, scratch.StaticWheel)) {
        return;
    }
    for (std::size_t n = 0; n < charts.size(); ++n) {
        if (charts[n].Kind == ChartKind::Map) {
            results.Maps[n] = MapOf(scratch, charts[n].Channel);
        }
    }
}

} // namespace

bool TakeWholeGrid(std::span<const StudyChart> charts) {
    return std::any_of(charts.begin(), charts.end(),
                       [](const StudyChart& chart) { return chart.Kind == ChartKind::Map; });
}

void ReadAt(DesignResults& results, const Suspension& scratch, std::span<const StudyChart> charts,
            const TravelPlace& place) {
    const int wheel = NearestWheelStep(scratch, place.Wheel);
    const int rack = NearestRackStep(scratch, place.Rack);
    DescribeGrid(results, scratch, wheel, rack);
    if (!results.Outcome.Solved) {
        return;
    }
    for (std::size_t n = 0; n < charts.size(); ++n) {
        const StudyChart& chart = charts[n];
        if (IsLine(chart)) {
            results.Curves[n] = CurveOf(scratch, chart.Channel, TravelOf(chart), rack, wheel);
        }
    }
    results.Points = scratch.WheelStates(rack, wheel).Points;
}

DesignResults ResultsOf(Suspension& scratch, const Design& design, const SolveSettings& settings,
                        std::span<const StudyChart> charts, const TravelPlace& place) {
    DesignResults results;
    results.Outcome = Solve(scratch, design, settings, CutFor(charts, place));
    results.Curves.resize(charts.size());
    results.Maps.resize(charts.size());
    ReadAt(results, scratch, charts, place);
    if (!results.Outcome.Solved) {
        results.Faulty = scratch.FaultyPoints;
        MapWhatIsReached(results, scratch, design, settings, charts);
        return results;
    }
    for (std::size_t n = 0; n < charts.size(); ++n) {
        if (charts[n].Kind == ChartKind::Map) {
            results.Maps[n] = MapOf(scratch, charts[n].Channel);
        }
    }
    return results;
}

std::optional<Curve> CurveOfDesign(Suspension& scratch, const Design& design,
                                   const SolveSettings& settings, int channel,
                                   std::int32_t variable, const TravelPlace& place) {
    const StudyChart chart{channel, variable == vvAlongRackTravel ? ChartKind::AlongRackTravel
                                                                  : ChartKind::AlongWheelTravel};
    return ResultsOf(scratch, design, settings, {&chart, 1}, place).Curves.front();
}

} // namespace corvanta
