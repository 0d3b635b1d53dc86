#pragma once

#include "automation/ResultTable.h"
#include "model/NumberText.h"

#include <cstdint>
#include <span>
#include <string>

namespace corvanta {

/// How tables are written as text.
enum class TableForm : std::uint8_t {
    Tsv, ///< cells parted by tabs
    Csv, ///< cells parted by commas, or by semicolons with a decimal comma
    Json,
};

/// Tables as text, lines ended by LF, UTF-8. Of tab and comma separated tables the first line holds
/// the heads with their units, "Camber Angle [deg]"; cells are quoted as in RFC 4180, and an empty
/// line parts two tables. JSON is a list of objects; a cell that is a number is one there, always
/// with a decimal point.
[[nodiscard]] std::string TableText(std::span<const ResultTable> tables, TableForm form,
                                    const Separators& separators);

/// What parts cells and values: a comma, or a semicolon where the comma is the decimal separator.
[[nodiscard]] inline char ListSeparator(const Separators& separators) {
    return separators.Decimal == "," ? ';' : ',';
}

/// The number that a cell holds; nothing for any other text.
[[nodiscard]] std::optional<double> NumberOfCell(const std::string& cell,
                                                 const Separators& separators);

} // namespace corvanta
