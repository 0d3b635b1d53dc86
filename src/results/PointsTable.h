#pragma once

#include "model/Program.h"
#include "platform/DataGrid.h"

namespace corvanta {

/// Lays out the table of coordinates: two fixed rows of heads, a fixed column of long names, one
/// row for each point in play under the mechanisms of the document, whose catalogue is brought up
/// to date. An editable table takes typing and selection.
void SetupPointsTableBlank(DataGrid& grid, Suspension& document, const FundamentalUnits& units,
                           bool editable);

/// Writes the coordinates of the state at a wheel and rack step into the table, in the user's unit,
/// and the points' short names as the rows' data. A step of 0 is the static one; 1 and 1 are the
/// static points. The static state decides which points are shown.
void DataPointsGet(DataGrid& grid, const Suspension& document, const FundamentalUnits& units,
                   int wheelStep, int rackStep);

} // namespace corvanta
