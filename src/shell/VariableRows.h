#pragma once

#include "model/Design.h"
#include "model/Units.h"
#include "platform/Controls.h"
#include "platform/DataGrid.h"
#include "study/DesignVariable.h"
#include "study/Tolerance.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace corvanta {

/// A row of a table of variables: its numbers are in the variable's unit, its words as they are.
struct VariableRow {
    DesignVariable Variable;
    std::vector<std::optional<double>> Numbers; ///< stored units; "-" for none
    std::vector<std::string> Words;             ///< in the columns behind the numbers
};

/// Fills a table with a row for each variable: its name, with its unit unless that is the one of
/// lengths, which heads the numbers, then the columns under their heads. Variables that the design
/// does not have are marked as faulty.
void ShowVariables(DataGrid& grid, const SuspensionData& data, const FundamentalUnits& units,
                   std::span<const std::string> heads, std::span<const VariableRow> rows);

/// The coordinates of these that no entry is about yet.
template <typename Entry>
[[nodiscard]] std::vector<PointCoordinate> NewAmong(std::vector<PointCoordinate> coordinates,
                                                    const std::vector<Entry>& entries) {
    std::erase_if(coordinates, [&](const PointCoordinate& coordinate) {
        return std::any_of(entries.begin(), entries.end(), [&](const Entry& entry) {
            return entry.Variable == DesignVariable(coordinate);
        });
    });
    return coordinates;
}

template <typename Entry>
void EraseRow(std::vector<Entry>& entries, std::size_t row) {
    entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(row));
}

/// A number of a variable that was typed, stored units. Throws Failure that shows the text when it
/// is none.
[[nodiscard]] double TypedNumberOf(const DesignVariable& variable, const std::string& text,
                                   const FundamentalUnits& units);

/// A variable as the rows of tables call it, with its unit or without; coordinates are lengths.
[[nodiscard]] std::string RowName(const SuspensionData& data, const DesignVariable& variable);
[[nodiscard]] std::string RowName(const SuspensionData& data, const DesignVariable& variable,
                                  const FundamentalUnits& units);

/// A number as it is shown.
[[nodiscard]] std::string TextOf(const VariableDisplay& display, double stored,
                                 const Separators& separators);

/// A number of a variable as it is shown.
[[nodiscard]] std::string TextOf(const DesignVariable& variable, double stored,
                                 const FundamentalUnits& units);

/// The word of a distribution, and the distribution of a word.
[[nodiscard]] std::string SpreadWord(Spread spread);
[[nodiscard]] Spread SpreadOf(const std::string& word);

/// Offers the words of the distributions in the cells of a column.
void OfferSpreads(DataGrid& grid, int column);

/// A number that was typed in a place, in the unit behind it. Throws Failure that names the place
/// when it is none.
[[nodiscard]] double NumberOfText(const std::string& text, const std::string& place,
                                  const std::string& unit, const Separators& separators);

/// A whole number that was typed in a place, from `least` to `most`; throws Failure for any other.
[[nodiscard]] std::int64_t TypedCount(const std::string& place, const std::string& text,
                                      std::int64_t least, std::int64_t most,
                                      const Separators& separators);

/// The same of a box, which shows a text that can't be taken as a fault.
[[nodiscard]] std::int64_t TypedCount(NumberBox& box, std::int64_t least, std::int64_t most,
                                      const Separators& separators);

/// Lays out a table of a study: a head row, a row of units when there are any, and the first
/// column fixed.
void LayOutTable(DataGrid& grid, std::span<const std::string> heads,
                 std::span<const std::string> units, std::size_t rows);

} // namespace corvanta
