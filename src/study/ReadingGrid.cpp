#include "study/ReadingGrid.h"

#include "solver/SInitGeo.h"
#include "study/Curve.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace corvanta {

namespace {

/// Positions along a travel.
constexpr int MostPositions = 49;

/// A common step below this would spoil the differences that velocity ratios are, mm.
constexpr double LeastCommonStep = 0.5;

/// Steps of a grid with readings between them: as many as leave room for four on a side and for two
/// more at each end.
constexpr double SpanningSteps = MostPositions - 7;
constexpr double LeastSteps = 4;

/// One travel of a grid, mm. Both ends are distances from static.
struct Axis {
    double Up = 0;
    double Down = 0;
    double Step = 0;
};

bool OnStep(double travel, double step) {
    return std::abs(travel - std::round(travel / step) * step) <= TravelResolution;
}

bool Fits(const Axis& axis, const std::vector<double>& travels) {
    return axis.Step > 0 && std::all_of(travels.begin(), travels.end(), [&](double travel) {
               return travel <= axis.Up + TravelResolution &&
                      travel >= -axis.Down - TravelResolution && OnStep(travel, axis.Step);
           });
}

/// How far travels reach to both sides, equally far where they are mirrored.
Axis Span(const std::vector<double>& travels, bool mirrored) {
    Axis span;
    for (const double travel : travels) {
        span.Up = std::max(span.Up, travel);
        span.Down = std::max(span.Down, -travel);
    }
    if (mirrored) {
        span.Up = span.Down = std::max(span.Up, span.Down);
    }
    return span;
}

/// The span in a common step: the longest one no longer than `wanted`, or else the shortest.
std::optional<Axis> InCommonStep(const std::vector<double>& travels, bool mirrored, double wanted) {
    Axis axis = Span(travels, mirrored);
    const double farthest = std::max(axis.Up, axis.Down);
    if (farthest <= TravelResolution) {
        return Axis{0, 0, wanted};
    }
    std::optional<Axis> found;
    for (int count = 1; count < MostPositions; ++count) {
        axis.Step = farthest / count;
        const bool room =
            std::round(axis.Up / axis.Step) + std::round(axis.Down / axis.Step) < MostPositions;
        if (axis.Step < LeastCommonStep || !room || (found && found->Step <= wanted)) {
            break;
        }
        if (Fits(axis, travels)) {
            found = axis;
        }
    }
    return found;
}

/// A grid that holds at least four steps about every travel.
Axis Spanning(const std::vector<double>& travels, bool mirrored) {
    Axis axis = Span(travels, mirrored);
    axis.Step = std::max(LeastCommonStep, (axis.Up + axis.Down) / SpanningSteps);
    for (double* const end : {&axis.Up, &axis.Down}) { // whole steps, as the grid has no others
        *end = std::max(std::ceil(*end / axis.Step) + 1, LeastSteps) * axis.Step;
    }
    return axis;
}

Axis AxisFor(const Axis& own, const std::vector<double>& travels, bool mirrored) {
    if (Fits(own, travels)) {
        return own;
    }
    const std::optional<Axis> common = InCommonStep(travels, mirrored, own.Step);
    return common ? *common : Spanning(travels, mirrored);
}

/// The shares of the steps around a travel. Step `i` of `count`, from 0, is `first + i` steps from
/// static. With a jump at static the steps are all on the travel's side of it.
std::vector<StepShare> SharesAt(double travel, double step, int first, int count, bool jump) {
    if (OnStep(travel, step)) {
        return {{static_cast<int>(std::round(travel / step)) - first, 1}};
    }
    constexpr int Nodes = 4;
    const double at = travel / step - first;
    const int low = jump && travel > 0 ? 1 - first : 0;
    const int high = (jump && travel < 0 ? -first : count) - Nodes;
    const int lowest = std::clamp(static_cast<int>(std::floor(at)) - 1, low, high);
    std::vector<StepShare> shares;
    for (int i = lowest; i < lowest + Nodes; ++i) { // Lagrange's form
        StepShare share{i, 1};
        for (int k = lowest; k < lowest + Nodes; ++k) {
            share.Share *= k == i ? 1 : (at - k) / (i - k);
        }
        shares.push_back(share);
    }
    return shares;
}

bool IsRollCentre(int channel) {
    return channel == chRollCentreY || channel == chRollCentreToOrigin ||
           channel == chRollCentreToGround;
}

/// The design's own axes, its steps as its grid has them.
std::array<Axis, 2> OwnAxes(const SuspensionData& data, const TravelGrid& grid) {
    const double wheel = grid.WheelTravelStepSize; // bump and droop may end within its last steps
    const double rack = std::abs(data.RackTravel);
    return {Axis{(grid.StaticWheel - 2) * wheel, (grid.NW + 1 - grid.StaticWheel) * wheel, wheel},
            Axis{rack, rack, grid.RackTravelStepSize}};
}

} // namespace

std::string FaultOfPlaces(const Design& design, std::span<const Reading> readings,
                          const SolveSettings& settings) {
    const Axis wheel = OwnAxes(design.Data, CountTravelSteps(design.Data, settings.Units)).front();
    const double mirrored = std::min(wheel.Up, wheel.Down) + TravelResolution;
    for (std::size_t n = 0; n < readings.size(); ++n) {
        if (design.Data.ChassisMotion == cmRoll && IsRollCentre(readings[n].Channel) &&
            std::abs(readings[n].WheelTravel) > mirrored) {
            return "Reading " + std::to_string(n + 1) + " (" +
                   std::string(TrimBlanks(settings.Channels[readings[n].Channel].Title)) +
                   "): the opposite wheel has no such travel";
        }
    }
    return {};
}

ReadingGrid GridOfReadings(const Design& design, std::span<const Reading> readings,
                           const FundamentalUnits& units) {
    std::vector<double> wheelTravels;
    std::vector<double> rackTravels;
    for (const Reading& reading : readings) {
        wheelTravels.push_back(reading.WheelTravel);
        rackTravels.push_back(reading.RackTravel);
    }
    const auto [ownWheel, ownRack] = OwnAxes(design.Data, CountTravelSteps(design.Data, units));
    const Axis wheel = AxisFor(ownWheel, wheelTravels, design.Data.ChassisMotion == cmRoll);
    const Axis rack = AxisFor(ownRack, rackTravels, true);
    ReadingGrid grid{wheel.Up, wheel.Down, wheel.Step, rack.Up, rack.Step, {}, {}};
    Design copy = design;
    SetTravels(copy, grid);
    const TravelGrid counted = CountTravelSteps(copy.Data, units);

    grid.Cut = {false, {}, {}, false};
    for (const Reading& reading : readings) {
        ReadingPlace place{reading.Channel, {}, {}};
        const bool jump = reading.Channel == chAckerman; // 0 straight ahead, and beside it not
        place.Rack =
            SharesAt(reading.RackTravel, rack.Step, 2 - counted.StaticRack, counted.NR, jump);
        place.Wheel = SharesAt(reading.WheelTravel, wheel.Step,
                               counted.StaticWheel - counted.NW - 1, counted.NW, false);
        for (StepShare& share : place.Rack) {
            share.Step += 2;
            grid.Cut.RackTravels.push_back((share.Step - counted.StaticRack) * rack.Step);
        }
        for (StepShare& share : place.Wheel) { // wheel steps run from bump to droop
            share.Step = counted.NW + 1 - share.Step;
        }
        grid.Exact = grid.Exact && place.Rack.size() == 1 && place.Wheel.size() == 1;
        grid.Places.push_back(std::move(place));
    }
    std::sort(grid.Cut.RackTravels.begin(), grid.Cut.RackTravels.end());
    const auto doubled = std::unique(grid.Cut.RackTravels.begin(), grid.Cut.RackTravels.end());
    grid.Cut.RackTravels.erase(doubled, grid.Cut.RackTravels.end());
    return grid;
}

void SetTravels(Design& design, const ReadingGrid& grid) {
    SuspensionData& data = design.Data;
    data.Bump = grid.Bump;
    data.Droop = grid.Droop;
    data.WheelTravelStepSize = grid.WheelTravelStepSize;
    data.RackTravel = grid.RackTravel;
    data.RackTravelStepSize = grid.RackTravelStepSize;
}

std::optional<double> ValueAt(const Suspension& solved, const ReadingPlace& place) {
    double value = 0;
    for (const StepShare& rack : place.Rack) {
        for (const StepShare& wheel : place.Wheel) {
            const std::optional<double> cell =
                solved.WheelStates(rack.Step, wheel.Step).Channels.Cell(place.Channel);
            if (!cell) {
                return std::nullopt;
            }
            value += rack.Share * wheel.Share * *cell;
        }
    }
    return value;
}

} // namespace corvanta
