#pragma once

#include "model/Channels.h"
#include "model/NumberText.h"
#include "model/Suspension.h"
#include "model/Units.h"
#include "model/Views.h"
#include "study/Curve.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvanta {

/// What a figure says of a channel along a travel, the other travel static.
enum class FigureKind : std::uint8_t {
    AtStatic,
    GainAtStatic,     ///< slope per length of travel
    ChangeOverTravel, ///< from the lowest travel to the highest
    RangeOverTravel,  ///< from the least value to the greatest
    AtTravel,
};

/// One number that stands for a design.
struct Figure {
    int Channel = 0;
    FigureKind Kind = FigureKind::AtStatic;
    std::int32_t Variable = vvAlongWheelTravel;
    double Travel = 0; ///< of `AtTravel`, mm

    friend bool operator==(const Figure&, const Figure&) = default;
};

/// False for the velocity ratio of a spring that a corner of these mechanisms does not have, which
/// would be 0.
[[nodiscard]] bool HasChannel(const SuspensionData& data, int channel);

/// The figure of a curve of its channel along its travel, stored units (a gain per mm). Nothing
/// without a value at static or, for `AtTravel`, at that travel.
[[nodiscard]] std::optional<double> FigureOf(const Curve& curve, const Figure& figure);

/// The figure of a solved document, stored units (a gain per mm). Nothing when the corner does not
/// have the channel.
[[nodiscard]] std::optional<double> FigureValue(const Suspension& document, const Figure& figure);

/// How a figure is called and shown; a display value is the stored value times the factor.
struct FigureDisplay {
    std::string Title;
    std::string UnitLabel;
    double Factor = 1;
    std::string Format;
};

/// Throws Failure 1000 when a unit has no factor.
[[nodiscard]] FigureDisplay DisplayOf(const Figure& figure, const ChannelCatalogue& channels,
                                      const FundamentalUnits& units);

/// As `FormatNumber`, but what rounds to zero has no sign: beside other numbers it says nothing.
[[nodiscard]] std::string FormatUnsignedZero(double value, std::string_view format,
                                             const Separators& separators);

} // namespace corvanta
