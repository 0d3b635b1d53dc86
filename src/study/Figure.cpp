#include "study/Figure.h"

#include "model/NumberText.h"

#include <algorithm>

namespace corvanta {

namespace {

/// A slope per mm is small; bump steer of a thousandth of a degree per mm matters.
constexpr const char* GainFormat = "0.0000";

/// Tables show whole rates, but designs differ by less.
constexpr const char* RateFormat = "0.0";

} // namespace

bool HasChannel(const SuspensionData& data, int channel) {
    if (channel == chSpringVelocityRatio) {
        return MovingSpringEnd(data).has_value();
    }
    return channel != chCentreSpringVelocityRatio || HasCentreSpring(data);
}

std::string FormatUnsignedZero(double value, std::string_view format,
                               const Separators& separators) {
    std::string text = FormatNumber(value, format, separators);
    if (value < 0) {
        std::string zero = FormatNumber(0, format, separators);
        if (text == "-" + zero) {
            return zero;
        }
    }
    return text;
}

std::optional<double> FigureOf(const Curve& curve, const Figure& figure) {
    if (figure.Kind == FigureKind::AtTravel) {
        return ValueAt(curve, figure.Travel);
    }
    if (!curve.Static) {
        return std::nullopt;
    }
    switch (figure.Kind) {
    case FigureKind::GainAtStatic:
        return GainAtStatic(curve);
    case FigureKind::ChangeOverTravel:
        return curve.Y.back() - curve.Y.front();
    case FigureKind::RangeOverTravel: {
        const auto [least, greatest] = std::minmax_element(curve.Y.begin(), curve.Y.end());
        return *greatest - *least;
    }
    default:
        return curve.Y[*curve.Static];
    }
}

std::optional<double> FigureValue(const Suspension& document, const Figure& figure) {
    return HasChannel(document.Data, figure.Channel)
               ? FigureOf(CurveOf(document, figure.Channel, figure.Variable), figure)
               : std::nullopt;
}

FigureDisplay DisplayOf(const Figure& figure, const ChannelCatalogue& channels,
                        const FundamentalUnits& units) {
    const ChannelRecord& record = channels[figure.Channel];
    const UnitRecord& unit = UsableUnit(units, record.Class);
    const std::string title(TrimBlanks(record.Title));
    const auto factor = static_cast<double>(unit.Factor);
    const std::string format = record.Class == ucRate ? RateFormat : unit.Format;
    switch (figure.Kind) {
    case FigureKind::GainAtStatic: {
        const UnitRecord& length = UsableUnit(units, ucDisplacement);
        return {title + " gain", unit.Label + "/" + length.Label,
                factor / static_cast<double>(length.Factor), GainFormat};
    }
    case FigureKind::ChangeOverTravel:
        return {title + (figure.Variable == vvAlongRackTravel ? " change over rack travel"
                                                              : " change, droop to bump"),
                unit.Label, factor, format};
    case FigureKind::RangeOverTravel:
        return {title + " range", unit.Label, factor, format};
    case FigureKind::AtTravel: {
        const double travel =
            figure.Travel * static_cast<double>(UsableUnit(units, ucDisplacement).Factor);
        return {title + " at " + NumberToText(travel, units.NumberSeparators) + " " +
                    units[ucDisplacement].Label,
                unit.Label, factor, format};
    }
    default:
        return {title, unit.Label, factor, format};
    }
}

} // namespace corvanta
