#include "automation/ResultTable.h"

#include "model/NumberText.h"
#include "platform/NoWindowSystem.h"
#include "results/DynamicsReport.h"
#include "results/MDisplayTable.h"
#include "results/PointsTable.h"
#include "results/ViewTitles.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace corvanta {

namespace {

struct KeyedView {
    std::string_view Key;
    std::int32_t View = vwNone;
};

constexpr std::array<KeyedView, 13> KeyedViews{{{"antis", vwAntis},
                                                {"lateral", vwLateralGeometry},
                                                {"plan", vwPlanGeometry},
                                                {"spring", vwSpringDetails},
                                                {"bar", vwBarDetails},
                                                {"angles", vwAngles},
                                                {"custom", vwCustomTable},
                                                {"coordinates", vwCoordinates},
                                                {"loads", vwLinkLoads},
                                                {"lengths", vwLinkLengths},
                                                {"dynamics", vwDynamicsReport},
                                                {"coefficients", vwQuadraticCoefficients},
                                                {"all-channels", vwAllChannels}}};

constexpr std::array<std::string_view, LinkLoadViewCount> LoadKeys{"loads-upper", "loads-lower",
                                                                   "loads-spring"};

/// Heads and, where the view has them, units stand above the rows.
void TakeCells(ResultTable& table, const auto& cells, int heads) {
    const auto row = [&](int number) {
        std::vector<std::string> texts;
        for (int column = 0; column < cells.Columns(); ++column) {
            texts.emplace_back(TrimBlanks(cells.Cell(number, column)));
        }
        return texts;
    };
    table.Heads = row(0);
    table.Units = heads > 1 ? row(1) : std::vector<std::string>(table.Heads.size());
    for (int number = heads; number < cells.Rows(); ++number) {
        table.Rows.push_back(row(number));
    }
}

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::string rest = ReplaceAll(text, "\r\n", "\n");
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        lines.push_back(rest.substr(0, end));
        rest.erase(0, end + 1);
    }
    return lines;
}

void TakePoints(ResultTable& table, Program& corner, const TablePlace& place) {
    DataGrid grid;
    SetupPointsTableBlank(grid, corner.Document, corner.Units, false);
    DataPointsGet(grid, corner.Document, corner.Units, place.WheelStep, place.RackStep);
    TakeCells(table, grid, 2);
}

} // namespace

std::vector<std::string_view> ViewKeys() {
    std::vector<std::string_view> keys;
    for (const KeyedView& each : KeyedViews) {
        keys.push_back(each.Key);
    }
    return keys;
}

std::optional<std::int32_t> ViewOfKey(std::string_view key) {
    const auto found = std::ranges::find(KeyedViews, key, &KeyedView::Key);
    return found == KeyedViews.end() ? std::nullopt : std::optional(found->View);
}

ResultTable TableOfGrid(std::string key, std::string title, const DataGrid& grid) {
    ResultTable table{std::move(key), std::move(title), {}, {}, {}, {}};
    TakeCells(table, grid, grid.FixedRows());
    const auto notesOf = [&](int row) {
        std::string notes;
        for (int column = 0; column < grid.Columns(); ++column) {
            const std::string& note = grid.Note(row, column);
            notes += (notes.empty() || note.empty() ? "" : "; ") + note;
        }
        return notes;
    };
    bool noted = false;
    for (std::size_t row = 0; row < table.Rows.size(); ++row) {
        table.Rows[row].push_back(notesOf(grid.FixedRows() + static_cast<int>(row)));
        noted = noted || !table.Rows[row].back().empty();
    }
    table.Heads.emplace_back(noted ? "Note" : "");
    table.Units.emplace_back();
    for (std::size_t column = table.Heads.size(); column-- > 0;) {
        const auto isEmpty = [&](const auto& row) { return row[column].empty(); };
        if (table.Heads[column].empty() && std::ranges::all_of(table.Rows, isEmpty)) {
            const auto erase = [&](std::vector<std::string>& cells) {
                cells.erase(cells.begin() + static_cast<std::ptrdiff_t>(column));
            };
            erase(table.Heads);
            erase(table.Units);
            std::ranges::for_each(table.Rows, erase);
        }
    }
    return table;
}

ResultTable TableOfLines(std::string key, std::string title, std::string head,
                         std::vector<std::string> lines) {
    ResultTable table{std::move(key), std::move(title), {}, {std::move(head)}, {""}, {}};
    for (std::string& line : lines) {
        table.Rows.push_back({std::move(line)});
    }
    return table;
}

std::vector<ResultTable> TablesOf(Program& corner, std::int32_t view, const TablePlace& place) {
    corner.Settings = {view, 0, place.Variable, place.WheelStep, place.RackStep};
    const auto blank = [&](std::string_view key, std::int32_t argument) {
        const ViewTitles titles = TitlesOfView(corner, view, argument, place.Variable);
        return ResultTable{
            std::string(key), titles.Title, ReplaceAll(titles.Subtitle, "\r\n", ", "), {}, {}, {}};
    };
    const auto key = std::ranges::find(KeyedViews, view, &KeyedView::View)->Key;
    ResultTable table = blank(key, 0);
    NoMessageBox box;
    Messages messages(box);
    switch (view) {
    case vwCoordinates:
        TakePoints(table, corner, place);
        break;
    case vwLinkLoads: {
        std::vector<ResultTable> loads;
        for (std::int32_t subView = 1;
             subView <= LinkLoadViewCount && HasLinkLoads(corner.Document.Data.SpringMechanism);
             ++subView) {
            loads.push_back(blank(LoadKeys[static_cast<std::size_t>(subView - 1)], subView));
            TakeCells(loads.back(), BuildLinkLoadTable(corner, subView, 0), 2);
        }
        return loads;
    }
    case vwLinkLengths:
        TakeCells(table, ShowLinkLengths(corner), 2);
        break;
    case vwDynamicsReport:
        table = TableOfLines(std::move(table.Key), std::move(table.Title), "Line",
                             LinesOf(ShowDynamicsReport(corner, messages)));
        break;
    case vwQuadraticCoefficients:
        TakeCells(table, ShowQuadraticCoefficients(corner), 1);
        break;
    default:
        TakeCells(table,
                  BuildViewTable(corner, view, place.Variable, place.RackStep, place.WheelStep,
                                 corner.CustomChannels),
                  2);
    }
    return table.Rows.empty() ? std::vector<ResultTable>() : std::vector{std::move(table)};
}

} // namespace corvanta
