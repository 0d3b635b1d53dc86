#include "automation/ResultTable.h"

#include "model/NumberText.h"
#include "platform/NoWindowSystem.h"
#include "results/DynamicsReport.h"
#include "results/MDisplayTable.h"
#include "results/PointsTable.h"
#include "results/ViewTitles.h"

#include <algorithm>
#include <array>
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

/// A report is a table of its lines.
void TakeLines(ResultTable& table, const std::string& text) {
    table.Heads = {"Line"};
    table.Units = {""};
    std::string rest = ReplaceAll(text, "\r\n", "\n");
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        table.Rows.push_back({rest.substr(0, end)});
        rest.erase(0, end + 1);
    }
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
        TakeLines(table, ShowDynamicsReport(corner, messages));
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
