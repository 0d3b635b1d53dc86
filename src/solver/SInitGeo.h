#pragma once

#include "model/Channels.h"
#include "model/Design.h"
#include "model/Suspension.h"
#include "model/Units.h"
#include "platform/Messages.h"

#include <string>

namespace corvanta {

/// What travel settings make of the solved grid.
struct TravelGrid {
    double WheelTravelStepSize = 0; ///< mm, grown where the one asked for makes too many steps
    double RackTravelStepSize = 0;
    int NW = 1;
    int NR = 1;
    int StaticWheel = 2;
    int StaticRack = 2;
    bool Grown = false; ///< a step size is not the one asked for
};

/// Why travels or steps with a minus sign make no grid; empty when they are none.
[[nodiscard]] std::string NegativeTravel(const SuspensionData& data);

/// The grid of travel settings. A step size that asks for more than 49 steps grows by 0.5, or by
/// 0.05 when the user works in inches, until they fit.
///
/// Throws Failure for a step size of 0 ("Division by zero") or below, for a negative bump or droop
/// travel, and for travels that a million growths do not fit ("Overflow").
[[nodiscard]] TravelGrid CountTravelSteps(const SuspensionData& data,
                                          const FundamentalUnits& units);

/// Gives the document the grid of its travel settings, with the step sizes of that grid; the user
/// is told once when one had to grow. With a `NegativeTravel` the grid is the static position
/// alone. Otherwise throws Failure as `CountTravelSteps`, and changes nothing then.
void SetStepSizes(Suspension& document, const FundamentalUnits& units, Messages& messages);

/// Places the points that the user does not enter and that need no calculation: the far side of a
/// T-bar, its middle where no spring stands on it, and the output of a rocker that drives a centre
/// spring alone.
void DerivePoints(PointSet& points, const SuspensionData& data);

/// The set-up after every change of the document: step sizes, titles of the channels that depend on
/// the end of the car, points in play, and the points that the user does not enter.
void InitGeometry(Suspension& document, ChannelCatalogue& channels, const FundamentalUnits& units,
                  Messages& messages);

/// Puts a design in the place of what the document holds and sets the document up: its results are
/// gone, and those of another calculation don't show through in it. Throws Failure as
/// `CountTravelSteps` does and changes nothing then.
void SetDesign(Suspension& document, const Design& design, const FundamentalUnits& units);

} // namespace corvanta
