#pragma once

#include "calculation/SCalcs.h"
#include "study/StudyChart.h"

#include <cstdint>
#include <string>

namespace corvanta {

/// A cut of nothing but the static position, for `AddCurve` to begin with.
[[nodiscard]] inline GridCut StaticCut() {
    return {false, {}, {}, false};
}

/// Adds what a channel's curve along wheel or rack travel needs, the other travel static.
void AddCurve(GridCut& cut, int channel, std::int32_t variable);

/// What a study tells of a design that can't be solved: the reason alone, in one line.
[[nodiscard]] std::string ReasonOf(const CalculationFailure& failure);

} // namespace corvanta
