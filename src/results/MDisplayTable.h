#pragma once

#include "model/Program.h"
#include "platform/DataGrid.h"
#include "platform/Messages.h"
#include "results/ViewTable.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace corvanta {

/// The builders make a view's table in memory; they do not know who asked for it. A grid shows the
/// table through `FillGrid`. Channel tables hold the channel titles in row 0, the unit labels in
/// row 1 and the values from row 2; column 0 is what the table runs along.

/// The table of views 1 to 7, and the table of all channels (16), which has no column to run along.
/// `variable` 1 runs along the rack steps at `wheelStep`, 2 along the wheel steps at `rackStep`; a
/// step of 0 is the static one. `customChannels` are the columns of view 7. Throws Failure for a
/// channel that can't be shown.
[[nodiscard]] ViewTable BuildViewTable(const Program& program, std::int32_t view,
                                       std::int32_t variable, int rackStep, int wheelStep,
                                       const CustomChannels& customChannels);

/// Sub-view 1 to 3 of the link loads along the wheel steps at `rackStep`; a sub-view of 0 counts as
/// 1, a rack step of 0 as the static one.
[[nodiscard]] ViewTable BuildLinkLoadTable(const Program& program, std::int32_t subView,
                                           int rackStep);

/// View 9: the link load table of a sub-view, or nothing, with a message, when the mechanism has no
/// link loads. `warned` is set once the user was warned of loads that are inexact.
[[nodiscard]] std::optional<ViewTable> ShowLinkLoadView(const Program& program,
                                                        std::int32_t subView, int rackStep,
                                                        Messages& messages, bool& warned);

/// View 12: the curves fitted against damper travel.
[[nodiscard]] ViewTable ShowQuadraticCoefficients(const Program& program);

/// View 10: the static lengths of the links that the mechanism has.
[[nodiscard]] ViewTable ShowLinkLengths(const Program& program);

/// Empties a grid and gives it the look of the program's tables.
void ResetGrid(DataGrid& grid);

/// Shows a table in a grid. `columnWidths` in twips; the last one serves all columns behind it, and
/// none sizes the columns to their contents.
void FillGrid(DataGrid& grid, const ViewTable& table, int fixedRows, int fixedColumns,
              std::span<const int> columnWidths);

/// Shades every second row, or column, of a grid from `first` on.
void BandAlternateLines(DataGrid& grid, bool byRows, int first);

/// Fills a grid with the table of views 1 to 7, 9, 10 or 12 in its look: fixed cells, widths,
/// bands.
void ShowTable(DataGrid& grid, std::int32_t view, const ViewTable& table);

} // namespace corvanta
