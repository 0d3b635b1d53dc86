#pragma once

#include "calculation/SCalcs.h"
#include "study/Figure.h"
#include "study/Target.h"

#include <optional>
#include <string>
#include <variant>

namespace corvanta {

/// The number of a design that a study looks at: a figure, or how far a curve lies outside a target
/// (`ExcessOf`).
using StudyNumber = std::variant<Figure, Target>;

/// Why a number means nothing for any design, for a message; empty when it has a meaning.
[[nodiscard]] std::string FaultOfFigure(const Figure& figure);
[[nodiscard]] std::string FaultOfNumber(const StudyNumber& number);

/// Adds to a cut what a number needs.
void AddNumber(GridCut& cut, const StudyNumber& number);

/// The number of a document that is solved as far as it needs, stored units. Nothing when the
/// corner does not have its channel, or no such travel.
[[nodiscard]] std::optional<double> NumberOf(const Suspension& document, const StudyNumber& number);

/// The number of a design; where there is none `reason` says why, in one line, unless the solve was
/// stopped. The cut must be good for the number.
[[nodiscard]] std::optional<double> SolveNumber(Suspension& scratch, const Design& design,
                                                const SolveSettings& settings, const GridCut& cut,
                                                const StudyNumber& number, std::string& reason,
                                                const std::stop_token& stop);

} // namespace corvanta
