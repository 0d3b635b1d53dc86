#include "study/Readings.h"

#include "model/Failure.h"
#include "model/NumberText.h"
#include "study/Curve.h"
#include "study/SheetText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>

namespace corvanta {

namespace {

constexpr std::array<std::string_view, 5> Columns{"Wheel travel", "Rack travel", "Channel", "Value",
                                                  "Uncertainty"};

std::string TitleOf(const ChannelCatalogue& channels, int channel) {
    return std::string(TrimBlanks(channels[channel].Title));
}

std::string FaultOfReading(const Reading& reading) {
    if (!HasCurve(reading.Channel)) {
        return "There is no such channel";
    }
    if (reading.Channel == chWheelTravel || reading.Channel == chRackTravel) {
        return "A travel is where it is read, not what is read";
    }
    if (reading.Channel == chARBRotation) {
        return "The rotation of the bar has no sign of its own";
    }
    if (!std::isfinite(reading.WheelTravel) || !std::isfinite(reading.RackTravel) ||
        !std::isfinite(reading.Value)) {
        return "A travel or the value is no number";
    }
    return reading.Uncertainty > 0 && std::isfinite(reading.Uncertainty)
               ? ""
               : "The uncertainty must be above 0";
}

/// Reads the cells of one text.
class CReadingsReader {
  public:
    CReadingsReader(const ChannelCatalogue& channels, const FundamentalUnits& units)
        : m_channels(channels),
          m_units(units) {}

    [[nodiscard]] Reading ReadingOf(const SheetLine& line) const {
        Reading reading;
        reading.WheelTravel = Stored(line, 0, ucDisplacement);
        reading.RackTravel = Stored(line, 1, ucDisplacement);
        reading.Channel = ChannelOf(line, 2);
        const std::int32_t unitClass = m_channels[reading.Channel].Class;
        reading.Value = Stored(line, 3, unitClass);
        reading.Uncertainty = Stored(line, 4, unitClass);
        if (const std::string fault = FaultOfReading(reading); !fault.empty()) {
            Raise(line, reading.Uncertainty > 0 ? 2 : 4, fault);
        }
        return reading;
    }

  private:
    [[noreturn]] static void Raise(const SheetLine& line, std::size_t column,
                                   const std::string& fault) {
        RaiseAtCell(line, column, Columns.at(column), fault);
    }

    [[nodiscard]] double Stored(const SheetLine& line, std::size_t column,
                                std::int32_t unitClass) const {
        const std::string& cell = line.Cells[column];
        const std::optional<double> number = SheetNumber(cell, m_units.NumberSeparators);
        if (!number) {
            Raise(line, column,
                  cell.empty() ? "there is no number" : QuotedCell(cell) + " is no number");
        }
        return *number / static_cast<double>(UsableUnit(m_units, unitClass).Factor);
    }

    [[nodiscard]] int ChannelOf(const SheetLine& line, std::size_t column) const {
        const std::string& cell = line.Cells[column];
        const std::optional<double> number = WholeNumberText(cell, ".");
        for (int channel = 1; channel <= ChannelCount; ++channel) {
            if (HasCurve(channel) &&
                (number == channel || UpperCase(TitleOf(m_channels, channel)) == UpperCase(cell))) {
                return channel;
            }
        }
        Raise(line, column, QuotedCell(cell) + " is no channel");
    }

    const ChannelCatalogue& m_channels;
    const FundamentalUnits& m_units;
};

} // namespace

std::string FaultOfReadings(std::span<const Reading> readings, const ChannelCatalogue& channels) {
    for (std::size_t n = 0; n < readings.size(); ++n) {
        if (const std::string fault = FaultOfReading(readings[n]); !fault.empty()) {
            return "Reading " + std::to_string(n + 1) +
                   (HasCurve(readings[n].Channel)
                        ? " (" + TitleOf(channels, readings[n].Channel) + ")"
                        : "") +
                   ": " + fault;
        }
    }
    return {};
}

std::vector<Reading> ParseReadings(std::string_view text, const ChannelCatalogue& channels,
                                   const FundamentalUnits& units) {
    const CReadingsReader reader(channels, units);
    std::vector<Reading> readings;
    bool first = true;
    for (const SheetLine& line : SheetLines(text, Columns.size())) {
        if (!std::exchange(first, false) || !IsHeading(line, units.NumberSeparators)) {
            if (line.Cells.size() > Columns.size()) {
                throw Failure(fnTypeMismatch,
                              "Line " + std::to_string(line.Number) + " has " +
                                  std::to_string(line.Cells.size()) + " columns, not " +
                                  std::to_string(Columns.size()) +
                                  ". Where the comma is the decimal separator, part the columns "
                                  "by tabs or semicolons.");
            }
            readings.push_back(reader.ReadingOf(line));
        }
    }
    return readings;
}

std::string ReadingsText(std::span<const Reading> readings, const ChannelCatalogue& channels,
                         const FundamentalUnits& units) {
    std::string text;
    for (const std::string_view column : Columns) {
        text += (text.empty() ? "" : "\t") + std::string(column);
    }
    text += "\n";
    const auto shown = [&](double value, std::int32_t unitClass) {
        return NumberToText(value * static_cast<double>(UsableUnit(units, unitClass).Factor),
                            units.NumberSeparators);
    };
    for (const Reading& reading : readings) {
        const std::int32_t unitClass = channels[reading.Channel].Class;
        text += shown(reading.WheelTravel, ucDisplacement) + "\t" +
                shown(reading.RackTravel, ucDisplacement) + "\t" +
                TitleOf(channels, reading.Channel) + "\t" + shown(reading.Value, unitClass) + "\t" +
                shown(reading.Uncertainty, unitClass) + "\n";
    }
    return text;
}

} // namespace corvanta
