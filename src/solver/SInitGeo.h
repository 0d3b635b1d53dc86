#pragma once

#include "model/Channels.h"
#include "model/Suspension.h"
#include "model/Units.h"
#include "platform/Messages.h"

namespace corvanta {

/// Turns the travel settings into the shape of the solved grid: `NW`, `NR`, `StaticWheel` and
/// `StaticRack`. A step size that asks for more than 49 steps is enlarged by 0.5, or by 0.05 when
/// the user works in inches, until they fit; the user is told once.
///
/// Throws Failure, and changes nothing, for a step size of 0 ("Division by zero") or below, for a
/// negative bump or droop travel, and for travels that a million enlargements do not fit
/// ("Overflow").
void SetStepSizes(Suspension& document, const FundamentalUnits& units, Messages& messages);

/// Places the points that the user does not enter and that need no calculation: the far side of a
/// T-bar, its middle where no spring stands on it, and the output of a rocker that drives a centre
/// spring alone.
void DerivePoints(PointSet& points, const SuspensionData& data);

/// The set-up after every change of the document: step sizes, titles of the channels that depend on
/// the end of the car, points in play, and the points that the user does not enter.
void InitGeometry(Suspension& document, ChannelCatalogue& channels, const FundamentalUnits& units,
                  Messages& messages);

} // namespace corvanta
