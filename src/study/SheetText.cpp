#include "study/SheetText.h"

#include "model/Failure.h"

#include <algorithm>

namespace corvanta {

namespace {

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

std::string_view Bare(std::string_view cell) {
    cell = TrimBlanks(cell);
    if (cell.size() >= 2 && cell.front() == '"' && cell.back() == '"') {
        cell = TrimBlanks(cell.substr(1, cell.size() - 2));
    }
    return cell;
}

char SeparatorOf(std::string_view text) {
    for (const char separator : {'\t', ';'}) {
        if (text.find(separator) != std::string_view::npos) {
            return separator;
        }
    }
    return ',';
}

} // namespace

std::vector<SheetLine> SheetLines(std::string_view text, std::size_t columns) {
    if (constexpr std::string_view mark = "\xEF\xBB\xBF"; text.starts_with(mark)) {
        text.remove_prefix(mark.size()); // spreadsheets mark their UTF-8
    }
    const char separator = SeparatorOf(text);
    const std::string lines = ReplaceAll(ReplaceAll(text, "\r\n", "\n"), "\r", "\n");
    std::vector<SheetLine> found;
    std::size_t number = 0;
    for (const std::string_view each : Split(lines, '\n')) {
        SheetLine line{++number, {}};
        for (const std::string_view cell : Split(each, separator)) {
            line.Cells.emplace_back(Bare(cell));
        }
        while (line.Cells.size() > columns && line.Cells.back().empty()) {
            line.Cells.pop_back();
        }
        line.Cells.resize(std::max(line.Cells.size(), columns));
        if (!std::all_of(line.Cells.begin(), line.Cells.end(),
                         [](const std::string& cell) { return cell.empty(); })) {
            found.push_back(std::move(line));
        }
    }
    return found;
}

std::optional<double> SheetNumber(std::string_view cell, const Separators& separators) {
    const std::optional<double> number = WholeNumberText(cell, separators.Decimal);
    return number ? number : WholeNumberText(cell, ".");
}

bool IsHeading(const SheetLine& line, const Separators& separators) {
    return std::none_of(line.Cells.begin(), line.Cells.end(), [&](const std::string& cell) {
        return SheetNumber(cell, separators).has_value();
    });
}

std::string QuotedCell(std::string_view cell) {
    constexpr std::size_t Head = 40;
    return "\"" + std::string(cell.substr(0, Head)) + (cell.size() > Head ? "...\"" : "\"");
}

void RaiseAtCell(const SheetLine& line, std::size_t column, std::string_view head,
                 const std::string& fault) {
    throw Failure(fnTypeMismatch, "Line " + std::to_string(line.Number) + ", column " +
                                      std::to_string(column + 1) + " (" + std::string(head) +
                                      "): " + fault);
}

} // namespace corvanta
