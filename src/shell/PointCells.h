#pragma once

#include "model/Points.h"
#include "model/Units.h"
#include "platform/DataGrid.h"

#include <optional>
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

/// What became of a text that was pasted.
struct PasteResult {
    int RowsTaken = 0;
    int RowsLeftOver = 0; ///< more than the table has
    int RowsEmpty = 0;    ///< of the table, behind those taken
    int FaultyCells = 0;
};

/// Empties the cells, then lays a text into them from the first one on: rows end with CR, LF or
/// both, cells are parted by TAB. What does not fit is left out.
PasteResult PastePointCells(DataGrid& grid, const FundamentalUnits& units, std::string_view text);

/// A cell's meaning in words, for instance "Z of Centre of wheel, mm, up positive"; empty for
/// another cell of the grid.
[[nodiscard]] std::string PointCellToolTip(const DataGrid& grid, const FundamentalUnits& units,
                                           int row, int column);

} // namespace corvanta
