#pragma once

#include "calculation/SCalcs.h"
#include "study/DesignVariable.h"
#include "study/StudyWork.h"
#include "study/Target.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace corvanta {

/// Which variables bring all curves into their bands?
struct OptimiseQuestion {
    std::vector<FreeVariable> Free;
    std::vector<Target> Targets; ///< each with the other travel static
    int Starts = 5;              ///< 1 to `MostStarts`; the first is the design as it stands
    std::uint64_t Seed = 1;      ///< of the other starts, drawn evenly in the boxes

    friend bool operator==(const OptimiseQuestion&, const OptimiseQuestion&) = default;
};

inline constexpr int MostStarts = 1000;

struct OptimisedVariable {
    DesignVariable Variable;
    double Before = 0; ///< stored units
    double After = 0;
    bool AtBound = false; ///< of its box

    friend bool operator==(const OptimisedVariable&, const OptimisedVariable&) = default;
};

/// How a target's curve lay and lies.
struct TargetGain {
    TargetResult Before;
    TargetResult After;
};

/// What one start came to.
struct OptimisedStart {
    int Number = 0; ///< from 1
    bool Evaluated = false;
    bool Converged = false;
    bool AllHold = false;   ///< all targets
    bool SamePlace = false; ///< as the best one, each variable to a hundredth of its box
    double Cost = 0;
};

struct OptimiseAnswer {
    bool Stopped = false;
    Design Best;
    std::vector<OptimisedVariable> Variables; ///< in the order of the question
    std::vector<TargetGain> Targets;          ///< the same
    bool AllHold = false;
    std::vector<OptimisedStart> Starts; ///< those that hold first, each by cost, failed ones last
    int SamePlace = 0;                  ///< how many starts came to the best one's place
    int NotEvaluated = 0;               ///< how many starts could not be calculated
    std::string FirstFailure;           ///< why, of the first of them
};

/// Bounded robust least squares from each start. A residual is how far the curve lies outside the
/// band at one of `TravelsInCommon`, in half widths of the band there (but never less than what the
/// channel's unit can show), times the root of the target's weight over the number of its travels;
/// beyond ten half widths it counts linearly, so that one target out of reach does not spoil the
/// others. The search aims a fifth of the half width into the bands, and from there to their edges
/// a residual grows with the square. A start ends when all targets hold, or at the least sum; the
/// best one goes on for some steps. A pull to where the design stands, too weak to keep a curve out
/// of its band, leaves variables that don't matter in their places and chooses one of many
/// solutions. Of targets that contradict each other those that don't hold say so.
///
/// The best design is that of the least cost, of the starts with which all targets hold where there
/// are any; when it is stopped, until then. Throws Failure (`fnInvalidCall`) with the fault of the
/// question, and when no start can be calculated.
[[nodiscard]] OptimiseAnswer Optimise(CSampleRunner& runner, const Design& design,
                                      const OptimiseQuestion& question,
                                      const SolveSettings& settings);

} // namespace corvanta
