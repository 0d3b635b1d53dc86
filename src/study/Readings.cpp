#include "study/Readings.h"

#include "model/Failure.h"
#include "model/NumberText.h"
#include "study/Curve.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>

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

std::vector<std::string_view> Split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (;;) {
        const std::size_t end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            return parts;
        }
        text.remove_prefix(end + 1);
    }
}

/// A cell without the blanks and quotes that sheets put around it.
std::string_view Bare(std::string_view cell) {
    cell = TrimBlanks(cell);
    if (cell.size() >= 2 && cell.front() == '"' && cell.back() == '"') {
        cell = TrimBlanks(cell.substr(1, cell.size() - 2));
    }
    return cell;
}

/// What parts the columns of a text.
char SeparatorOf(std::string_view text) {
    for (const char separator : {'\t', ';'}) {
        if (text.find(separator) != std::string_view::npos) {
            return separator;
        }
    }
    return ',';
}

/// A cell and its place, from 1.
struct Cell {
    std::string_view Text;
    std::size_t Line = 0;
    std::size_t Column = 0;
};

[[noreturn]] void RaiseAt(const Cell& cell, const std::string& fault) {
    throw Failure(fnTypeMismatch, "Line " + std::to_string(cell.Line) + ", column " +
                                      std::to_string(cell.Column) + " (" +
                                      std::string(Columns.at(cell.Column - 1)) + "): " + fault);
}

std::string Quoted(std::string_view text) {
    constexpr std::size_t Head = 40;
    return "\"" + std::string(text.substr(0, Head)) + (text.size() > Head ? "...\"" : "\"");
}

std::optional<double> NumberOf(std::string_view text, const Separators& separators) {
    const std::optional<double> number = WholeNumberText(text, separators.Decimal);
    return number ? number : WholeNumberText(text, ".");
}

/// Reads the cells of one text.
class CReadingsReader {
  public:
    CReadingsReader(const ChannelCatalogue& channels, const FundamentalUnits& units)
        : m_channels(channels),
          m_units(units) {}

    [[nodiscard]] bool IsHeading(const std::vector<Cell>& cells) const {
        return std::none_of(cells.begin(), cells.end(), [&](const Cell& cell) {
            return NumberOf(cell.Text, m_units.NumberSeparators).has_value();
        });
    }

    [[nodiscard]] Reading ReadingOf(const std::vector<Cell>& cells) const {
        Reading reading;
        reading.WheelTravel = Stored(cells[0], ucDisplacement);
        reading.RackTravel = Stored(cells[1], ucDisplacement);
        reading.Channel = ChannelOf(cells[2]);
        const std::int32_t unitClass = m_channels[reading.Channel].Class;
        reading.Value = Stored(cells[3], unitClass);
        reading.Uncertainty = Stored(cells[4], unitClass);
        if (const std::string fault = FaultOfReading(reading); !fault.empty()) {
            RaiseAt(reading.Uncertainty > 0 ? cells[2] : cells[4], fault);
        }
        return reading;
    }

  private:
    [[nodiscard]] double Stored(const Cell& cell, std::int32_t unitClass) const {
        const std::optional<double> number = NumberOf(cell.Text, m_units.NumberSeparators);
        if (!number) {
            RaiseAt(cell,
                    cell.Text.empty() ? "there is no number" : Quoted(cell.Text) + " is no number");
        }
        return *number / static_cast<double>(UsableUnit(m_units, unitClass).Factor);
    }

    [[nodiscard]] int ChannelOf(const Cell& cell) const {
        const std::optional<double> number = WholeNumberText(cell.Text, ".");
        for (int channel = 1; channel <= ChannelCount; ++channel) {
            if (HasCurve(channel) &&
                (number == channel ||
                 UpperCase(TitleOf(m_channels, channel)) == UpperCase(cell.Text))) {
                return channel;
            }
        }
        RaiseAt(cell, Quoted(cell.Text) + " is no channel");
    }

    const ChannelCatalogue& m_channels;
    const FundamentalUnits& m_units;
};

/// The cells of a line, at least one for each column.
std::vector<Cell> CellsOf(std::string_view line, std::size_t number, char separator) {
    std::vector<Cell> cells;
    for (const std::string_view part : Split(line, separator)) {
        cells.push_back({Bare(part), number, cells.size() + 1});
    }
    while (cells.size() > Columns.size() && cells.back().Text.empty()) {
        cells.pop_back();
    }
    while (cells.size() < Columns.size()) {
        cells.push_back({"", number, cells.size() + 1});
    }
    return cells;
}

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
    const char separator = SeparatorOf(text);
    const std::string lines = ReplaceAll(ReplaceAll(text, "\r\n", "\n"), "\r", "\n");
    std::vector<Reading> readings;
    std::size_t number = 0;
    bool first = true;
    for (const std::string_view line : Split(lines, '\n')) {
        const std::vector<Cell> cells = CellsOf(line, ++number, separator);
        if (std::all_of(cells.begin(), cells.end(),
                        [](const Cell& cell) { return cell.Text.empty(); })) {
            continue;
        }
        const bool heading = first && reader.IsHeading(cells);
        first = false;
        if (heading) {
            continue;
        }
        if (cells.size() > Columns.size()) {
            throw Failure(fnTypeMismatch,
                          "Line " + std::to_string(number) + " has " +
                              std::to_string(cells.size()) + " columns, not " +
                              std::to_string(Columns.size()) +
                              ". Where the comma is the decimal separator, part the columns by "
                              "tabs or semicolons.");
        }
        readings.push_back(reader.ReadingOf(cells));
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
