#pragma once

#include "calculation/SCalcs.h"
#include "model/Suspension.h"
#include "model/Units.h"

#include <span>
#include <string>

namespace corvanta {

/// What is said of points of the document, in the names that its table shows.

/// A point by both of its names: "Rocker output (ptR1O)".
[[nodiscard]] std::string PointWords(const PointCatalogue& catalogue, PointNumber number);

/// A name without the word that all pickups have; it takes the room of those that tell them apart.
[[nodiscard]] std::string ShortenedName(const std::string& name);

/// Points by the names of their rows, the first few and how many more there are.
[[nodiscard]] std::string RowWords(const PointCatalogue& catalogue,
                                   std::span<const PointNumber> numbers);

/// The position of a step on both travels, in words with sign and unit; a step below 2 is none.
[[nodiscard]] std::string PositionWords(const Suspension& document, const FundamentalUnits& units,
                                        int wheelStep, int rackStep);

/// Why a solve of a document failed, at which position and which rows, in one line.
[[nodiscard]] std::string FailureLine(const CalculationFailure& failure, const Suspension& document,
                                      const FundamentalUnits& units);

/// Entered points that the calculation does not find where they were entered.
struct DisplacementWords {
    std::string Banner; ///< which, how far, why and what to do; empty when there is none
    std::string Note;   ///< the same in short, for a status bar
};

/// Of a document that has been calculated, or whose calculation failed at a position.
[[nodiscard]] DisplacementWords DescribeDisplacement(const Suspension& document,
                                                     const FundamentalUnits& units);

/// Where a calculation failed, below its message: the rows that it is about, the position, and what
/// stands wrongly already at rest. `position` is empty for a failure before the first one.
[[nodiscard]] std::string DescribeFailure(const Suspension& document, const FundamentalUnits& units,
                                          const std::string& position);

} // namespace corvanta
