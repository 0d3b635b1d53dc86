#pragma once

#include "calculation/SCalcs.h"
#include "model/Design.h"
#include "study/Readings.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace corvanta {

/// A step of the grid and its share in a value between the steps.
struct StepShare {
    int Step = 0;
    double Share = 1;
};

/// Where a reading lies on a grid: at one step of a travel, or among the four around it.
struct ReadingPlace {
    int Channel = 0;
    std::vector<StepShare> Rack;
    std::vector<StepShare> Wheel;
};

/// The grid on which readings are calculated. Along each travel it is the design's own where all
/// readings lie on its steps; otherwise one of at most 49 positions in a common step of the
/// readings' travels, not below 0.5 mm, where there is one; and otherwise one that spans them, with
/// a cubic through the four steps around each reading that lies between. On a grid other than the
/// design's the velocity ratios, which are differences over a tenth of the wheel step and at most
/// 1 mm to either side, change with the square of that distance.
struct ReadingGrid {
    double Bump = 0;
    double Droop = 0;
    double WheelTravelStepSize = 0;
    double RackTravel = 0;
    double RackTravelStepSize = 0;
    std::vector<ReadingPlace> Places; ///< of the readings
    GridCut Cut;
    bool Exact = true; ///< no reading lies between the steps
};

/// Why readings have no place on a grid of a design; empty when they have. Under roll there is no
/// roll centre where the opposite wheel does not get to. Throws Failure as `CountTravelSteps`.
[[nodiscard]] std::string FaultOfPlaces(const Design& design, std::span<const Reading> readings,
                                        const SolveSettings& settings);

/// The grid of readings that have a place. Throws Failure as `CountTravelSteps`.
[[nodiscard]] ReadingGrid GridOfReadings(const Design& design, std::span<const Reading> readings,
                                         const FundamentalUnits& units);

/// Gives a design the travels of a grid.
void SetTravels(Design& design, const ReadingGrid& grid);

/// What a document that is solved on the grid has at a place; nothing where the channel has no
/// value.
[[nodiscard]] std::optional<double> ValueAt(const Suspension& solved, const ReadingPlace& place);

} // namespace corvanta
