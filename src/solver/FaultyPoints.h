#pragma once

#include "model/Suspension.h"

#include <span>

namespace corvanta {

/// The point of the table that a point stands for: itself where it is entered, otherwise the one
/// that it is derived from.
[[nodiscard]] PointNumber EnteredPoint(PointNumber number, const SuspensionData& data);

/// Remembers in the document what its failure is about: the entered points in play behind
/// `numbers`, each once.
void NameFaultyPoints(Suspension& document, std::span<const PointNumber> numbers);

/// The same for a failure that was raised while the static state was readied or a position was
/// searched, and names no points itself: the ends of axes that have no length and of a strut that
/// lies flat, or without either the wishbone that drives the search.
void NamePointsOfRaisedFailure(Suspension& document, bool atAPosition);

} // namespace corvanta
