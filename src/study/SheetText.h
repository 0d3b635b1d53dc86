#pragma once

#include "model/NumberText.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

/// A line of a table that comes from a spreadsheet.
struct SheetLine {
    std::size_t Number = 0; ///< from 1, empty lines counted
    std::vector<std::string> Cells;
};

/// The lines of a text that hold something. Tabs part its cells, or semicolons where it has no tab,
/// or commas where it has neither. Cells are without the blanks and quotes around them; there are
/// as many as `columns` at least, and empty ones beyond that are left out.
[[nodiscard]] std::vector<SheetLine> SheetLines(std::string_view text, std::size_t columns);

/// The number that a cell is, in the user's decimal separator or with a point.
[[nodiscard]] std::optional<double> SheetNumber(std::string_view cell,
                                                const Separators& separators);

/// True for a line without any number: it heads the table.
[[nodiscard]] bool IsHeading(const SheetLine& line, const Separators& separators);

/// A cell in a message: in quotes, a long one cut.
[[nodiscard]] std::string QuotedCell(std::string_view cell);

/// Throws Failure "Type mismatch" that names line, column, from 0, and the column's head.
[[noreturn]] void RaiseAtCell(const SheetLine& line, std::size_t column, std::string_view head,
                              const std::string& fault);

} // namespace corvanta
