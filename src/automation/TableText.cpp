#include "automation/TableText.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <utility>

namespace corvanta {

namespace {

using Json = nlohmann::ordered_json;

std::string HeadOf(const ResultTable& table, std::size_t column) {
    const std::string& unit = table.Units[column];
    return table.Heads[column] + (unit.empty() ? "" : " [" + unit + "]");
}

/// A cell that holds what parts cells stands in quotes, and its quotes are doubled.
std::string Quoted(const std::string& cell, char separator) {
    if (cell.find_first_of(std::string("\"\r\n") + separator) == std::string::npos) {
        return cell;
    }
    return '"' + ReplaceAll(cell, "\"", "\"\"") + '"';
}

std::string Separated(const ResultTable& table, char separator) {
    std::string text;
    const auto line = [&](auto cellOf) {
        for (std::size_t column = 0; column < table.Heads.size(); ++column) {
            text +=
                (column == 0 ? "" : std::string(1, separator)) + Quoted(cellOf(column), separator);
        }
        text += '\n';
    };
    line([&](std::size_t column) { return HeadOf(table, column); });
    for (const std::vector<std::string>& row : table.Rows) {
        line([&](std::size_t column) { return row[column]; });
    }
    return text;
}

Json JsonTable(const ResultTable& table, const Separators& separators) {
    Json rows = Json::array();
    for (const std::vector<std::string>& row : table.Rows) {
        Json cells = Json::array();
        for (const std::string& cell : row) {
            const std::optional<double> number = NumberOfCell(cell, separators);
            cells.push_back(number ? Json(*number) : Json(cell));
        }
        rows.push_back(std::move(cells));
    }
    return {{"view", table.Key},    {"title", table.Title}, {"position", table.Position},
            {"heads", table.Heads}, {"units", table.Units}, {"rows", std::move(rows)}};
}

} // namespace

std::string TableText(std::span<const ResultTable> tables, TableForm form,
                      const Separators& separators) {
    if (form == TableForm::Json) {
        Json list = Json::array();
        for (const ResultTable& table : tables) {
            list.push_back(JsonTable(table, separators));
        }
        return list.dump(1) + '\n';
    }
    const char comma = ListSeparator(separators);
    std::string text;
    for (const ResultTable& table : tables) {
        text +=
            (text.empty() ? "" : "\n") + Separated(table, form == TableForm::Tsv ? '\t' : comma);
    }
    return text;
}

std::optional<double> NumberOfCell(const std::string& cell, const Separators& separators) {
    return WholeNumberText(cell, separators.Decimal);
}

} // namespace corvanta
