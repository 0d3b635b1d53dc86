#pragma once

#include "study/SetupSheet.h"

#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// What a figure of the sheet shall do.
struct FigureWish {
    bool Free = true;  ///< it may go where it will
    double Change = 0; ///< from the base, stored units; 0 holds it
    double Tolerance =
        1; ///< above 0; so much off is as good as met, and the less the more it counts

    friend bool operator==(const FigureWish&, const FigureWish&) = default;
};

/// The counts that an adjuster may take, both included; 0 is the base.
struct CountRange {
    int Low = -20;
    int High = 20;

    friend bool operator==(const CountRange&, const CountRange&) = default;
};

/// The greatest count to either side.
inline constexpr int MostCount = 10'000;

/// Which counts of the adjusters give the changes that are wanted?
struct TurnsQuestion {
    SetupQuestion Sheet;
    std::vector<FigureWish> Wishes; ///< one for each figure of the sheet
    std::vector<CountRange> Ranges; ///< one for each adjuster

    friend bool operator==(const TurnsQuestion&, const TurnsQuestion&) = default;
};

/// The whole counts that come nearest, and what is left.
struct TurnsAnswer {
    std::vector<int> Counts; ///< one for each adjuster, of its smallest step
    bool Holds = false;      ///< every wish is met within its tolerance
    SheetState Base;
    SheetState Reached; ///< with these counts; with a fault when stopped before the base
    std::vector<std::optional<double>> LeftOver; ///< reached less wanted; none for a free figure
    std::size_t Solved = 0;                      ///< corners that were solved on the way
    bool Stopped = false;                        ///< what was found up to then stands
};

/// Goes to the least squares of what is left, in tolerances, by Newton steps on effects that are
/// solved anew, then looks through the whole numbers around it and around the settings of few
/// adjusters that the effects promise most of. Every candidate is solved anew. Of settings that
/// meet all wishes the one with the fewest steps is taken, otherwise the one that leaves least.
///
/// The search goes downhill from several places, one or two adjusters at a time; with many
/// adjusters of like effect it may miss a setting that is a little better still.
///
/// Throws Failure `fnInvalidCall` that says what is wrong with the question, or why the base can't
/// be solved.
[[nodiscard]] TurnsAnswer FindTurns(CSampleRunner& runner, const Design& design,
                                    const TurnsQuestion& question, const SolveSettings& settings);

} // namespace corvanta
