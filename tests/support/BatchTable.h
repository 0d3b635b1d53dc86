#pragma once

#include "model/Design.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace corvanta::test {

/// The table of all channels that the batch program of the build exports of a document.
struct BatchTable {
    std::vector<std::string> Titles;
    std::vector<std::vector<double>> Rows; ///< display units; no number for what is none

    [[nodiscard]] double Cell(std::size_t row, const std::string& title) const;
};

/// Saves the design, runs the program and reads what it wrote. `variable` is `vvAlongRackTravel` or
/// `vvAlongWheelTravel`.
[[nodiscard]] BatchTable BatchTableOf(const Design& design, std::int32_t variable);

} // namespace corvanta::test
