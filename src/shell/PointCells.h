#pragma once

#include "model/Points.h"
#include "model/Suspension.h"
#include "model/Units.h"
#include "platform/DataGrid.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace corvanta {

/// The editable cells of the table of coordinates: columns 1 to 3 of a row are X, Y and Z of the
/// point that the row's data names.

/// The point of a row; none for a row of heads or one outside the table.
[[nodiscard]] std::optional<PointNumber> PointOfRow(const DataGrid& grid, int row);

/// True for a cell that can be typed into.
[[nodiscard]] bool IsPointCell(const DataGrid& grid, int row, int column);

/// Puts a text into a cell as typing has ended there: a sum becomes its result, and a cell that
/// holds no number is marked.
void PutPointCell(DataGrid& grid, const FundamentalUnits& units, int row, int column,
                  std::string_view text);

/// The cells as coordinates in mm. `stored` are the coordinates that the document holds: a cell
/// whose text is the one that such a coordinate shows stands for it in full precision, and points
/// without a row keep theirs. Throws Failure "Type mismatch" for a cell that holds no number.
[[nodiscard]] PointSet PointsOfCells(const DataGrid& grid, const FundamentalUnits& units,
                                     PointSet stored);

/// The same for a table in the midst of typing: a cell that holds no number keeps what is stored.
[[nodiscard]] PointSet DraftOfCells(const DataGrid& grid, const FundamentalUnits& units,
                                    PointSet stored);

/// Brings coordinates that changed elsewhere into the table: from `shown`, what the cells stand
/// for, to `now`. A cell that shows something else was typed into and stays.
void FollowPointCells(DataGrid& grid, const FundamentalUnits& units, const PointSet& shown,
                      const PointSet& now);

/// What became of a text that was pasted.
struct PasteResult {
    int RowsTaken = 0;
    int RowsLeftOver = 0; ///< more than the table has
    int RowsEmpty = 0;    ///< of the table, that the text did not reach after they were emptied
    int RowsUnknown = 0;  ///< whose name the table does not have
    int FaultyCells = 0;
    bool OtherUnit = false; ///< the text has heads in another unit, and nothing was taken
};

/// Where a text is laid into the table.
struct PastePlace {
    int Row = 0;
    int Column = 0;
};

/// Lays a text into the cells: rows end with CR, LF or both, cells are parted by TAB, heads like
/// those of the table are passed over, and what does not fit is left out. Where a first column
/// holds names of points, each row goes to its point. Without a place the cells are emptied before,
/// and a text without names is laid from the first one on; with one it is laid from there on.
PasteResult PastePointCells(DataGrid& grid, const FundamentalUnits& units, std::string_view text,
                            std::optional<PastePlace> place);

/// Marks cells of which there is something to say: values that can hardly be meant, and the rows
/// that the last failure is about. Returns the same in words, empty when there is nothing.
std::string MarkPointCells(DataGrid& grid, const Suspension& draft,
                           std::span<const PointNumber> faulty);

/// A cell's meaning in words, for instance "Z of Centre of wheel, mm, up positive"; empty for
/// another cell of the grid.
[[nodiscard]] std::string PointCellToolTip(const DataGrid& grid, const FundamentalUnits& units,
                                           int row, int column);

} // namespace corvanta
