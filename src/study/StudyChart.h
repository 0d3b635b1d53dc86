#pragma once

#include "model/Channels.h"
#include "model/Views.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

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

/// The charts that are offered one after the other.
inline constexpr std::array DefaultCharts{
    StudyChart{chCamberAngle, ChartKind::AlongWheelTravel},
    StudyChart{chSteerAngleBump, ChartKind::AlongWheelTravel},
    StudyChart{chRollCentreToGround, ChartKind::AlongWheelTravel},
    StudyChart{chSpringVelocityRatio, ChartKind::AlongWheelTravel},
    StudyChart{chAckerman, ChartKind::AlongRackTravel},
    StudyChart{chCamberAngle, ChartKind::Map},
    StudyChart{chHalfTrack, ChartKind::AlongWheelTravel},
    StudyChart{chCasterAngle, ChartKind::AlongWheelTravel},
    StudyChart{chWheelRateTotal, ChartKind::AlongWheelTravel},
};

/// Those that the workbench begins with.
[[nodiscard]] inline std::vector<StudyChart> FirstCharts() {
    constexpr std::ptrdiff_t Count = 6;
    return {DefaultCharts.begin(), DefaultCharts.begin() + Count};
}

} // namespace corvanta
