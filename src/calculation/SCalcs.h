#pragma once

#include "model/Channels.h"
#include "model/Suspension.h"
#include "platform/Messages.h"

#include <cstdint>
#include <string>

namespace corvanta {

/// One step of the march over the grid.
struct MarchStep {
    int Step = 0;
    double Travel = 0;
    int Neighbour = 0; ///< the step solved before it that lies next to it; 1 is the start state
};

/// Step number `i` (from 2) of the march over the wheel steps: from static outward into bump, then
/// the static step itself, then outward into droop.
[[nodiscard]] MarchStep WheelStepIndex(const Suspension& document, int i);

/// Step number `i` (from 2) of the march over the rack steps, in the same order. The rows are
/// solved each from the static position, so that the neighbour has no use.
[[nodiscard]] MarchStep RackStepIndex(const Suspension& document, int i);

/// What a solve of the grid took, and how far it came.
struct SolveCounts {
    int RackStep = 0;           ///< of the position solved last, 0 before the first
    int WheelStep = 0;          ///< the same; 1 while the rack row is set up
    std::int64_t Solves = 0;    ///< positions searched in their wheel steps
    std::int64_t Locations = 0; ///< points located in their wheel steps
};

/// Checks the input and solves every position of the grid, without any derived property. Returns
/// false with `errorText` for bad input and for a mechanism that cannot follow. Throws Failure for
/// arithmetic failures and for a search that does not converge.
[[nodiscard]] bool SolveGrid(Suspension& document, std::string& errorText);
[[nodiscard]] bool SolveGrid(Suspension& document, std::string& errorText, SolveCounts& counts);

/// Why and where a calculation failed; no message when it succeeded. The points that it is about
/// are the document's `FaultyPoints`.
struct CalculationFailure {
    std::string Message;
    int RackStep = 0;  ///< of the position that could not be solved; 0 when it is about none
    int WheelStep = 0; ///< the same; 1 for a rack row that could not be set up
};

/// Turns a document into results: solves the grid and derives all properties; the fitted curves are
/// in the display units of `channels`. Shows its own failure message; `ResultsValid` is set only
/// when everything succeeded.
CalculationFailure RunCalculation(Suspension& document, const ChannelCatalogue& channels,
                                  Messages& messages);

} // namespace corvanta
