#pragma once

#include "model/Suspension.h"

namespace corvanta {

/// Measures the lengths of the static position, mm, from the points alone. Lengths that lead to the
/// foot of a perpendicular are measured by `CalculateStaticPoints`, where the foot is made.
void CalculateStaticLengths(StaticLengthRecord& lengths, const PointSet& points,
                            const SuspensionData& data);

/// Places the stub axle point, inboard of the wheel centre and square to the line from the contact
/// patch to it. Reads the tyre radius and the stub axle length. Throws Failure "Division by zero"
/// for a wheel without a radius.
void PlaceStubAxle(PointSet& points, const StaticLengthRecord& lengths);

/// Derives the stub axle point and the feet of perpendiculars at the static position, and the
/// lengths that lead to them. Runs after `CalculateStaticLengths`, whose tyre radius and stub axle
/// length it reads. Throws Failure "Division by zero" when two points of an axis coincide.
void CalculateStaticPoints(PointSet& points, StaticLengthRecord& lengths,
                           const SuspensionData& data);

/// Gives a strut the upper joint and the fictitious upper wishbone that the solver works with; any
/// other corner keeps its own. Throws Failure "Division by zero" for a strut that lies flat.
void PrepareStrutGeometry(PointSet& points, const SuspensionData& data);

/// Readies the static points of a document for a solve, after `CheckInputGeometry`: the upper end
/// of a strut, the static lengths and the derived points. Run again on the same points it changes
/// nothing. Throws what its steps throw.
void PrepareStaticState(Suspension& document);

} // namespace corvanta
