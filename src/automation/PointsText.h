#pragma once

#include "model/Design.h"
#include "model/Units.h"

#include <string>
#include <string_view>

namespace corvanta {

/// The points in play of a design as a table for spreadsheets: "ptUWIF,Upper wishbone front inboard
/// pickup,x,y,z", in the user's unit of lengths with all digits, below a line of heads. Commas part
/// the columns, semicolons where the comma is the decimal separator.
[[nodiscard]] std::string PointsText(const Design& design, const FundamentalUnits& units);

/// Gives a design the points of such a table: those that it names, by their short names; the long
/// names are not read. Throws Failure, naming line and column, for a point that is unknown, not in
/// play or named twice, and for a coordinate that is no number; the design stays as it was then.
void TakePoints(Design& design, std::string_view text, const FundamentalUnits& units);

} // namespace corvanta
