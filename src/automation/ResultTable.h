#pragma once

#include "model/Program.h"
#include "platform/DataGrid.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

/// A table of results as other programs read it. Numbers are texts with the digits of the screen.
struct ResultTable {
    std::string Key;      ///< of the view: "lateral", or "loads-upper"
    std::string Title;    ///< "Lateral Geometry"
    std::string Position; ///< "Values at rack travel from static = 0 mm"; empty where there is none
    std::vector<std::string> Heads; ///< one for each column
    std::vector<std::string> Units; ///< one for each column, "" for none
    std::vector<std::vector<std::string>> Rows;
};

/// A grid of the program as a table: its fixed rows are heads and units. Columns of nothing but
/// drawings are left out; notes at cells follow in a column of their own.
[[nodiscard]] ResultTable TableOfGrid(std::string key, std::string title, const DataGrid& grid);

/// Lines of text as a table of one column.
[[nodiscard]] ResultTable TableOfLines(std::string key, std::string title, std::string head,
                                       std::vector<std::string> lines);

/// What tables run along, and where they stand.
struct TablePlace {
    std::int32_t Variable = vvAlongWheelTravel;
    int WheelStep = 0; ///< 0 for the static one
    int RackStep = 0;
};

/// The keys by which views are asked for, in the order of the views; "all-channels" is the last.
[[nodiscard]] std::vector<std::string_view> ViewKeys();

/// The view of a key; nothing for any other text.
[[nodiscard]] std::optional<std::int32_t> ViewOfKey(std::string_view key);

/// The tables of a view of a solved corner, with its units and the custom channels of the program:
/// three for the link loads, none where the corner has nothing to show. Those of loads, lengths,
/// the dynamics report and coefficients know no place. Throws Failure for a channel that can't be
/// shown.
[[nodiscard]] std::vector<ResultTable> TablesOf(Program& corner, std::int32_t view,
                                                const TablePlace& place);

} // namespace corvanta
