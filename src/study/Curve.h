#pragma once

#include "model/Suspension.h"
#include "model/Views.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace corvanta {

/// True for the ids of channels that have one value in each state: all but the link loads.
[[nodiscard]] bool HasCurve(int channel);

/// One channel of a solved corner along its wheel or rack travel, stored units. Travels grow: from
/// droop to bump, from the lowest rack travel to the highest.
struct Curve {
    int Channel = 0;
    std::int32_t Variable = vvAlongWheelTravel;
    int RackStep = 0;      ///< the fixed one along wheel travel; unused along rack travel
    int WheelStep = 0;     ///< the fixed one along rack travel; unused along wheel travel
    std::vector<double> X; ///< travel, mm
    std::vector<double> Y; ///< the channel, one for each travel
    std::optional<std::size_t> Static; ///< place of the static step, none when it has no value
};

/// The curve of a channel of a document whose states along it are solved. `variable` 1 runs along
/// the rack steps at `wheelStep`, any other along the wheel steps at `rackStep`; a step of 0 is the
/// static one. States without a value of the channel are left out, so that a channel that the
/// corner does not have gives a curve without points. Throws Failure "Subscript out of range" for
/// an id that is no channel.
[[nodiscard]] Curve CurveOf(const Suspension& document, int channel, std::int32_t variable,
                            int rackStep = 0, int wheelStep = 0);

/// Value at a travel, linear between the steps; nothing beyond the ends. A travel that misses a
/// step by no more than the search for the wheel may (`TravelResolution`) counts as the step's.
[[nodiscard]] std::optional<double> ValueAt(const Curve& curve, double travel);

/// Slope at static, stored units of the channel per mm: the central difference of the neighbouring
/// steps, at an end of the travel the difference of the last two. Nothing with fewer than two
/// steps.
[[nodiscard]] std::optional<double> GainAtStatic(const Curve& curve);

/// What two travels may differ by and still be meant as one, mm.
inline constexpr double TravelResolution = 0.001;

/// One channel over both travels: rows by rack travel, columns by wheel travel, both growing,
/// counted from 0. Stored units.
struct ChannelMap {
    int Channel = 0;
    std::vector<double> RackTravel;            ///< of the rows, mm
    std::vector<double> WheelTravel;           ///< of the columns, mm
    std::vector<std::optional<double>> Values; ///< row by row; none where there is no value

    [[nodiscard]] const std::optional<double>& At(std::size_t row, std::size_t column) const {
        return Values[row * WheelTravel.size() + column];
    }
};

/// The map of a channel of a document whose grid is solved, as a whole or tolerantly; the travels
/// are those of the steps.
/// Throws Failure "Subscript out of range" for an id that is no channel.
[[nodiscard]] ChannelMap MapOf(const Suspension& document, int channel);

} // namespace corvanta
