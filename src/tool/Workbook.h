#pragma once

#include "automation/ResultTable.h"
#include "model/NumberText.h"

#include <span>
#include <string>

namespace corvanta {

/// Tables as the bytes of an Office Open XML workbook, a sheet for each with its title, position,
/// heads and units above the rows. Cells that are numbers are numbers there, shown with the digits
/// of the table. Throws Failure when the workbook can't be made.
[[nodiscard]] std::string WorkbookOf(std::span<const ResultTable> tables,
                                     const Separators& separators);

} // namespace corvanta
