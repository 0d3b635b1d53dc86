#pragma once

#include "model/Channels.h"
#include "model/Design.h"
#include "model/GridPart.h"
#include "model/Suspension.h"
#include "model/Units.h"
#include "platform/Messages.h"

#include <cstdint>
#include <stop_token>
#include <string>
#include <vector>

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

/// What of the grid a solve is for, in travels from static, mm: the rack steps and wheel steps that
/// lie nearest to these. Each comes out as it does with the whole grid, to the last bit.
struct GridCut {
    bool Whole = true;
    std::vector<double> RackTravels;  ///< rack steps with all their wheel steps
    std::vector<double> WheelTravels; ///< wheel steps at all rack steps

    /// The sign of a bar's rotation follows from all rack steps before, so a cut without
    /// `chARBRotation` is solved faster.
    bool BarRotation = true;

    /// Goes on where a position can't be solved, for maps alone: that position ends the march in
    /// its direction of its rack step, a static one or a row that can't be set up the whole rack
    /// step. No fitted curves and no dynamics.
    bool Tolerant = false;
};

/// The states that a cut stands for, with those that their channels need.
[[nodiscard]] GridPart PartOf(const Suspension& document, const GridCut& cut);

/// The wheel or rack step whose travel is nearest to one given, mm.
[[nodiscard]] int NearestWheelStep(const Suspension& document, double travel);
[[nodiscard]] int NearestRackStep(const Suspension& document, double travel);

/// Why and where a calculation failed; no message when it succeeded. The points that it is about
/// are the document's `FaultyPoints`.
struct CalculationFailure {
    std::string Message;
    int RackStep = 0;  ///< of the position that could not be solved; 0 when it is about none
    int WheelStep = 0; ///< the same; 1 for a rack row that could not be set up
};

/// What became of a solve.
struct SolveResult {
    bool Solved = false;
    bool Stopped = false;         ///< on request, before it was done
    CalculationFailure Failure{}; ///< the first one

    /// Of a tolerant solve the states that were reached and calculated, with the start states of
    /// their rack steps. All others are without any channel. A reached state whose opposite rack or
    /// wheel travel was not reached is without the channels that compare it with that.
    GridPart Reached{};
};

/// What a solve takes from its surroundings; both outlive it.
struct SolveSettings {
    const FundamentalUnits& Units;    ///< by their label of lengths a step size grows
    const ChannelCatalogue& Channels; ///< in whose display units the fitted curves are
};

/// Solves a design in a scratch document, which holds the results then; a failure is told with its
/// place, and nothing is thrown for a design of any kind. Without the whole grid only the channels
/// of the states in question are filled: no fitted curves, no dynamics, and `ResultsValid` stays
/// clear. The scratch document may have solved any other design before; used again it takes no new
/// memory. Different scratch documents can be solved at the same time.
SolveResult Solve(Suspension& scratch, const Design& design, const SolveSettings& settings,
                  const GridCut& cut = {}, const std::stop_token& stop = {});

/// Turns a document into results: solves the grid and derives all properties; the fitted curves are
/// in the display units of `channels`. Shows its own failure message; `ResultsValid` is set only
/// when everything succeeded.
CalculationFailure RunCalculation(Suspension& document, const ChannelCatalogue& channels,
                                  Messages& messages);

} // namespace corvanta
