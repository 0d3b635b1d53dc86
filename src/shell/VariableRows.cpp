#include "shell/VariableRows.h"

#include "model/Failure.h"
#include "shell/PointWords.h"
#include "shell/TypedNumber.h"
#include "study/Figure.h"

#include <cmath>

namespace corvanta {

void LayOutTable(DataGrid& grid, std::span<const std::string> heads,
                 std::span<const std::string> units, std::size_t rows) {
    const int fixedRows = units.empty() ? 1 : 2;
    grid.Reset();
    grid.Visible = true;
    grid.SetSize(fixedRows + static_cast<int>(rows), static_cast<int>(heads.size()), fixedRows, 1);
    grid.SetBold(0);
    for (std::size_t column = 0; column < heads.size(); ++column) {
        grid.SetCell(0, static_cast<int>(column), heads[column]);
        if (column < units.size()) {
            grid.SetCell(1, static_cast<int>(column), units[column]);
        }
    }
}

std::string RowName(const SuspensionData& data, const DesignVariable& variable) {
    return HasVariable(data, variable) ? ShortenedName(NameOf(data, variable)) : KeyOf(variable);
}

std::string RowName(const SuspensionData& data, const DesignVariable& variable,
                    const FundamentalUnits& units) {
    const bool isLength = std::holds_alternative<PointCoordinate>(variable);
    const std::string unit = isLength ? "" : DisplayOf(variable, units).UnitLabel;
    return RowName(data, variable) + (unit.empty() ? "" : " [" + unit + "]");
}

void ShowVariables(DataGrid& grid, const SuspensionData& data, const FundamentalUnits& units,
                   std::span<const std::string> heads, std::span<const VariableRow> rows) {
    std::vector<std::string> heading(heads.size());
    const std::size_t numbers = rows.empty() ? 0 : rows.front().Numbers.size();
    std::fill_n(heading.begin() + 1, numbers, units[ucDisplacement].Label);
    LayOutTable(grid, heads, heading, rows.size());
    int row = grid.FixedRows();
    for (const VariableRow& shown : rows) {
        const bool has = HasVariable(data, shown.Variable);
        grid.SetCell(row, 0, RowName(data, shown.Variable, units));
        int column = 1;
        for (const std::optional<double>& number : shown.Numbers) {
            grid.SetFaulty(row, column, !has);
            grid.SetCell(row, column++, number ? TextOf(shown.Variable, *number, units) : "-");
        }
        for (const std::string& word : shown.Words) {
            grid.SetCell(row, column++, word);
        }
        ++row;
    }
}

std::string TextOf(const VariableDisplay& display, double stored, const Separators& separators) {
    return FormatUnsignedZero(stored * display.Factor, display.Format, separators);
}

std::string TextOf(const DesignVariable& variable, double stored, const FundamentalUnits& units) {
    return TextOf(DisplayOf(variable, units), stored, units.NumberSeparators);
}

double NumberOfText(const std::string& text, const std::string& place, const std::string& unit,
                    const Separators& separators) {
    const auto typed = ReadTypedNumber(text, separators, unit);
    if (!typed || TrimBlanks(text).empty()) {
        RaiseNoNumber(place, text, separators);
    }
    return LeadingNumber(typed->Text);
}

std::int64_t TypedCount(const std::string& place, const std::string& text, std::int64_t least,
                        std::int64_t most, const Separators& separators) {
    const double number = NumberOfText(text, place, "", separators);
    if (number < static_cast<double>(least) || number > static_cast<double>(most) ||
        number != std::floor(number)) {
        throw Failure(fnInvalidCall, place + " must be a whole number from " +
                                         std::to_string(least) + " to " + std::to_string(most));
    }
    return static_cast<std::int64_t>(number);
}

double TypedNumberOf(const DesignVariable& variable, const std::string& text,
                     const FundamentalUnits& units) {
    const VariableDisplay display = DisplayOf(variable, units);
    return NumberOfText(text, KeyOf(variable), display.UnitLabel, units.NumberSeparators) /
           display.Factor;
}

std::string SpreadWord(Spread spread) {
    return spread == Spread::Normal ? "normal, 3 sd" : "uniform";
}

Spread SpreadOf(const std::string& word) {
    return word == SpreadWord(Spread::Uniform) ? Spread::Uniform : Spread::Normal;
}

void OfferSpreads(DataGrid& grid, int column) {
    grid.SetChoices(column, {SpreadWord(Spread::Normal), SpreadWord(Spread::Uniform)});
}

std::int64_t TypedCount(NumberBox& box, std::int64_t least, std::int64_t most,
                        const Separators& separators) {
    const std::string place = ReplaceAll(box.Caption.substr(0, box.Caption.find(':')), "&", "");
    box.Fault = true;
    const std::int64_t number = TypedCount(place, box.Text, least, most, separators);
    box.Fault = false;
    return number;
}

} // namespace corvanta
