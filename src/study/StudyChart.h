#pragma once

#include "model/Views.h"

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

/// True for a chart that shows a curve.
[[nodiscard]] inline bool IsLine(const StudyChart& chart) {
    return chart.Kind != ChartKind::Map;
}

/// What the curve of a chart runs along.
[[nodiscard]] inline std::int32_t TravelOf(const StudyChart& chart) {
    return chart.Kind == ChartKind::AlongRackTravel ? vvAlongRackTravel : vvAlongWheelTravel;
}

} // namespace corvanta
