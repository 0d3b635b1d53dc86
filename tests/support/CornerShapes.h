#pragma once

#include "results/MDisplay3d.h"
#include "shell/CornerPanel.h"

namespace corvanta::test {

/// The design of a document at a rack and wheel step, as the corner panel takes it; a step of 0 is
/// the static one. Not solved when the document has no valid results.
inline CornerShape ShapeOf(const Suspension& document, int rackStep, int wheelStep) {
    CornerShape shape{DesignOf(document), std::nullopt};
    if (document.ResultsValid) {
        shape.Solved = PositionAt(document, rackStep, wheelStep).Points;
    }
    return shape;
}

} // namespace corvanta::test
