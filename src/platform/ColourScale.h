#pragma once

#include "platform/DrawingSurface.h"

#include <vector>

namespace corvanta {

/// What a study adds to charts and tables.
inline constexpr Colour StudyColour{31, 119, 180};

/// The colours of a map's steps, lowest value first, `steps` of them, at least 1. From a dark blue
/// to a pale yellow: every step is as much lighter than the one before, so that equal differences
/// look equal and the order can be read in grey too.
[[nodiscard]] std::vector<Colour> SequentialColours(int steps);

/// The colours of differences, lowest first: blue below zero and red above, the paler the nearer to
/// it, and as pale on both sides. White at the middle one of an odd number of steps.
[[nodiscard]] std::vector<Colour> DivergingColours(int steps);

/// The steps of a colour scale. All are equally high.
struct ColourLevels {
    double Low = 0;
    double High = 1;
    int Steps = 1;

    friend bool operator==(const ColourLevels&, const ColourLevels&) = default;
};

/// Steps that hold all values from `low` to `high`, some 8 to 20 of them, with their borders on
/// round numbers. `least` is the smallest height of a step that means anything, such as one in the
/// last digit shown; above 0.
[[nodiscard]] ColourLevels LevelsOf(double low, double high, double least);

/// Steps of differences: as many below zero as above, and one in the middle, so that what did not
/// change is white. The middles of the steps are round numbers.
[[nodiscard]] ColourLevels LevelsOfDifferences(double low, double high, double least);

} // namespace corvanta
