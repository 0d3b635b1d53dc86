#include "study/Figure.h"

#include "model/NumberText.h"
#include "study/Curve.h"

namespace corvanta {

namespace {

/// A slope per mm is small; bump steer of a thousandth of a degree per mm matters.
constexpr const char* GainFormat = "0.0000";

/// Tables show whole rates, but designs differ by less.
constexpr const char* RateFormat = "0.0";

/// A spring that is not there has a velocity ratio of 0.
bool HasChannel(const SuspensionData& data, int channel) {
    if (channel == chSpringVelocityRatio) {
        return MovingSpringEnd(data).has_value();
    }
    return channel != chCentreSpringVelocityRatio || HasCentreSpring(data);
}

} // namespace

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

std::optional<double> FigureValue(const Suspension& document, Figure figure) {
    if (!HasChannel(document.Data, figure.Channel)) {
        return std::nullopt;
    }
    const Curve curve = CurveOf(document, figure.Channel, vvAlongWheelTravel);
    if (!curve.Static) {
        return std::nullopt;
    }
    switch (figure.Kind) {
    case FigureKind::GainAtStatic:
        return GainAtStatic(curve);
    case FigureKind::ChangeOverTravel:
        return curve.Y.back() - curve.Y.front();
    default:
        return curve.Y[*curve.Static];
    }
}

FigureDisplay DisplayOf(Figure figure, const ChannelCatalogue& channels,
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
        return {title + " change, droop to bump", unit.Label, factor, format};
    default:
        return {title, unit.Label, factor, format};
    }
}

} // namespace corvanta
