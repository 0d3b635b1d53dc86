#pragma once

#include "calculation/SCalcs.h"
#include "model/Design.h"
#include "model/Program.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// Why a design has no results.
struct CornerFailure {
    std::string Reason;                ///< in one line
    std::optional<double> WheelTravel; ///< of the position that could not be solved, mm
    std::optional<double> RackTravel;
    std::vector<PointNumber> Points; ///< that it is about
};

/// The failure of a solve that left its scratch document so.
[[nodiscard]] CornerFailure FailureOf(const Suspension& scratch, const SolveResult& outcome);

/// The channels of a design in units, titled by the end of the car.
[[nodiscard]] ChannelCatalogue ChannelsOf(const Design& design, FundamentalUnits& units);

/// The failure in one line, travels and names as the units and the design have them.
[[nodiscard]] std::string TextOf(const CornerFailure& failure, const Design& design,
                                 const FundamentalUnits& units);

/// A design with the results of its whole grid, as tables and exports want them: units and channels
/// as given, no file, the static position on show. Nothing, and why, when it can't be solved.
[[nodiscard]] std::unique_ptr<Program>
SolvedCorner(const Design& design, const FundamentalUnits& units, CornerFailure& failure);

} // namespace corvanta
