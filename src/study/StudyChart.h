#pragma once

#include <cstdint>

namespace corvanta {

/// What a chart of the workbench runs along.
enum class ChartKind : std::uint8_t { AlongWheelTravel, AlongRackTravel, Map };

/// A chart by what it shows.
struct StudyChart {
    int Channel = 0;
    ChartKind Kind = ChartKind::AlongWheelTravel;
    bool Difference = false; ///< to the baseline, instead of the values

    friend bool operator==(const StudyChart&, const StudyChart&) = default;
};

} // namespace corvanta
