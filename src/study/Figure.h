#pragma once

#include "model/Channels.h"
#include "model/NumberText.h"
#include "model/Suspension.h"
#include "model/Units.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvanta {

/// What a figure says of a channel along wheel travel at static rack travel.
enum class FigureKind : std::uint8_t {
    AtStatic,
    GainAtStatic,     ///< slope per length of wheel travel
    ChangeOverTravel, ///< from full droop to full bump
};

/// One number that stands for a design.
struct Figure {
    int Channel = 0;
    FigureKind Kind = FigureKind::AtStatic;

    friend bool operator==(const Figure&, const Figure&) = default;
};

/// The figure of a solved document, stored units (a gain per mm). Nothing when the corner does not
/// have the channel.
[[nodiscard]] std::optional<double> FigureValue(const Suspension& document, Figure figure);

/// How a figure is called and shown; a display value is the stored value times the factor.
struct FigureDisplay {
    std::string Title;
    std::string UnitLabel;
    double Factor = 1;
    std::string Format;
};

/// Throws Failure 1000 when a unit has no factor.
[[nodiscard]] FigureDisplay DisplayOf(Figure figure, const ChannelCatalogue& channels,
                                      const FundamentalUnits& units);

/// As `FormatNumber`, but what rounds to zero has no sign: beside other numbers it says nothing.
[[nodiscard]] std::string FormatUnsignedZero(double value, std::string_view format,
                                             const Separators& separators);

} // namespace corvanta
