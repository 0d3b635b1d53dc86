#pragma once

#include "model/Design.h"
#include "model/Points.h"
#include "model/Units.h"

#include <string>
#include <vector>

namespace corvanta {

/// What is wrong with a design, or can hardly be meant.
struct Finding {
    bool IsError = false; ///< the design has no results because of it; else it is a warning
    std::string Text;     ///< in one line
    std::vector<PointNumber> Points{};
};

/// All that is to be said of a design: what keeps it from being calculated, values that no car has,
/// and points that the calculation does not find where they were entered. Errors come first.
[[nodiscard]] std::vector<Finding> CheckDesign(const Design& design, const FundamentalUnits& units);

} // namespace corvanta
