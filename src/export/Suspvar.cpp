#include "export/Suspvar.h"

#include "export/Interpolate.h"
#include "solver/MLibMaths.h"

#include <array>
#include <cassert>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace corvanta {

namespace {

constexpr std::int32_t Hand = 8;            ///< a constant of the simulator, for every corner
constexpr std::int32_t SteeredGeometry = 2; ///< type of a corner that steers
constexpr std::int32_t FixedGeometry = 0;
constexpr int Figures = 7;
constexpr std::string_view SteeringFormat = "0.000";

/// The columns of version 1.1's properties. The pair of angles stands twice.
constexpr std::array<ChannelId, 8> PropertyColumns{
    chSpringLength,   chSpringVelocityRatio, chCamberAngle,    chAntiDiveAngle,
    chAntiSquatAngle, chAntiDiveAngle,       chAntiSquatAngle, chAntiRollAngle,
};

/// The pages of version 2.2 from page 1, which is the height of the wheel centre: its channel only
/// names it. The pair of angles stands twice.
constexpr std::array<ChannelId, 12> PropertyPages{
    chSpringLength,   chSpringVelocityRatio, chCamberAngle,    chAntiDiveAngle,
    chAntiSquatAngle, chAntiDiveAngle,       chAntiSquatAngle, chAntiRollAngle,
    chCasterOffset,   chKingpinOffset,       chARBRatio,       chARBRotation,
};

/// State at the k-th rack step and the k-th wheel step, both counted from 1.
const WheelState& StateAt(const Suspension& document, int rack, int wheel) {
    return document.WheelStates(rack + 1, wheel + 1);
}

std::size_t Place(int index) {
    return static_cast<std::size_t>(index);
}

/// The values of one rack step along the wheel steps.
template <typename Value>
std::vector<double> AlongWheel(const Suspension& document, int rack, Value value) {
    std::vector<double> values;
    for (int k = 1; k <= document.NW; ++k) {
        values.push_back(value(StateAt(document, rack, k)));
    }
    return values;
}

std::vector<double> ChannelAlongWheel(const Suspension& document, int rack, int channel) {
    return AlongWheel(document, rack,
                      [channel](const WheelState& state) { return state.Channels[channel]; });
}

std::vector<double> StrutLengths(const Suspension& document) {
    return ChannelAlongWheel(document, document.StaticRack - 1, chSpringLength);
}

/// Fills a table over spring length and rack travel. `cell(i, r)` is the place of a cell,
/// `value(state)` what is looked up.
template <typename Cell, typename Value>
void FillOverStrutLength(const Suspension& document, std::span<const double> strutLengths,
                         Cell cell, Value value) {
    assert(strutLengths.size() == Place(document.NW));
    const auto rounded = [](double number) { return RoundToSignificantFigures(number, Figures); };
    for (int i = 1; i <= document.NW; ++i) {
        cell(i, 0) = rounded(strutLengths[Place(i - 1)]);
    }
    for (int r = 1; r <= document.NR; ++r) {
        cell(0, r) =
            rounded(document.WheelStates(r + 1, document.StaticWheel).Channels[chRackTravel]);
        const std::vector<double> x = ChannelAlongWheel(document, r, chSpringLength);
        const CCurve curve(x, AlongWheel(document, r, value));
        for (int i = 1; i <= document.NW; ++i) {
            cell(i, r) = rounded(curve.At(strutLengths[Place(i - 1)]));
        }
    }
}

FieldTable PropertyTable(const Suspension& document) {
    FieldTable table;
    for (int k = 1; k <= document.NW; ++k) {
        const ChannelCells& channels = document.WheelStates(document.StaticRack, k + 1).Channels;
        std::vector<double>& row = table.emplace_back();
        for (const ChannelId channel : PropertyColumns) {
            row.push_back(channels[channel]);
        }
    }
    return table;
}

FormattedTable SteeringCurve(const Suspension& document, const Separators& separators) {
    FormattedTable table;
    for (int k = 1; k <= document.NR; ++k) {
        const ChannelCells& channels = document.WheelStates(k + 1, document.StaticWheel).Channels;
        table.push_back({FormatNumber(channels[chRackTravel], SteeringFormat, separators),
                         FormatNumber(-channels[chSteerAngle], SteeringFormat, separators)});
    }
    return table;
}

/// A stream with the fields that head both versions. False when one could not be added.
bool BeginComponent(CFileStream& stream, std::string_view version, std::int32_t steeringGeometry) {
    stream.Initialise(version, {});
    return stream.AddField("DESCRIPTION", "") && stream.AddField("FILEPATH", "") &&
           stream.AddField("HAND", Hand) &&
           stream.AddField("STEERING GEOMETRY TYPE", steeringGeometry);
}

} // namespace

bool ExportSUSPVAR1_1(const Suspension& document, const std::string& filePath,
                      const Separators& separators, FileServices& files, Messages& messages) {
    const FieldTable properties = PropertyTable(document);
    const FormattedTable steering = SteeringCurve(document, separators);

    CFileStream stream(files, messages, separators);
    return BeginComponent(stream, "SUSPVAR 1.1", SteeredGeometry) &&
           stream.AddTable("SUSPVAR TABLE", properties) &&
           stream.AddTable("STEERING TABLE", steering) && stream.FileWrite(filePath);
}

bool ExportSUSPVAR2_1(const Suspension& document, const std::string& filePath,
                      const Separators& separators, FileServices& files, Messages& messages) {
    const std::size_t rows = Place(document.NW + 1);
    const std::size_t columns = Place(document.NR + 1);
    const auto pages = static_cast<std::int32_t>(PropertyPages.size());
    const std::vector<double> strutLengths = StrutLengths(document);

    FieldTable steering(rows, std::vector<double>(columns));
    SuspvarSteeringFill(steering, document, strutLengths);
    FieldTable3d tables(rows, FieldTable(columns, std::vector<double>(Place(pages + 1))));
    for (int page = 1; page <= pages; ++page) {
        SuspvarPageFill(tables, document, PropertyPages[Place(page - 1)], page, strutLengths,
                        page == 1);
    }

    CFileStream stream(files, messages, separators);
    return BeginComponent(stream, "SUSPVAR 2.2",
                          IsFrontCorner(document) ? SteeredGeometry : FixedGeometry) &&
           stream.AddTable("STEERING DATA TABLE", steering) &&
           stream.AddField("STRUT LENGTH COUNT", document.NW) &&
           stream.AddField("RACK TRAVEL COUNT", document.NR) &&
           stream.AddField("SUSPENSION DATA TYPE COUNT", pages) &&
           stream.AddTable3d("SUSPENSION DATA TABLES", tables) && stream.FileWrite(filePath);
}

void SuspvarPageFill(FieldTable3d& tables, const Suspension& document, int channel, int page,
                     std::span<const double> strutLengths, bool useWheelCentreHeight) {
    const auto cell = [&](int row, int column) -> double& {
        return tables[Place(row)][Place(column)][Place(page)];
    };
    const auto value = [=](const WheelState& state) {
        return useWheelCentreHeight ? state.Points[ptWC].Z : state.Channels[channel];
    };
    FillOverStrutLength(document, strutLengths, cell, value);
}

void SuspvarSteeringFill(FieldTable& table, const Suspension& document,
                         std::span<const double> strutLengths) {
    // One rack step alone has no way to turn; it counts as rising.
    const bool falls = document.NR > 1 && StateAt(document, 2, 1).Channels[chSteerAngle] <
                                              StateAt(document, 1, 1).Channels[chSteerAngle];
    const double sign = falls ? 1 : -1;
    const auto cell = [&](int row, int column) -> double& {
        return table[Place(row)][Place(column)];
    };
    const auto value = [sign](const WheelState& state) {
        return sign * state.Channels[chSteerAngle];
    };
    FillOverStrutLength(document, strutLengths, cell, value);
}

double RoundToSignificantFigures(double value, int figures) {
    if (value == 0) { // exactly 0 has no first figure
        return 0;
    }
    const double log10 = std::log(std::abs(value)) / std::log(10.0);
    const double decimals = -std::floor(log10 + 1 - figures);
    if (decimals <= 0) {
        const double unit = std::pow(10.0, -decimals);
        return Checked(std::nearbyint(value / unit) * unit);
    }
    const double scale = std::pow(10.0, decimals);
    if (!std::isfinite(value * scale)) { // so near to 0 that a double has no such decimals
        return value;
    }
    return std::nearbyint(value * scale) / scale;
}

} // namespace corvanta
