#include "results/PointsTable.h"

#include "model/PointsInPlay.h"
#include "results/MDisplayTable.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace corvanta {

namespace {

constexpr int HeadRows = 2;
constexpr int NameWidth = 3500;
constexpr int CoordinateWidth = 750;
constexpr std::array<std::string_view, 4> Heads{"Point", "X", "Y", "Z"};

} // namespace

void SetupPointsTableBlank(DataGrid& grid, Suspension& document, const FundamentalUnits& units,
                           bool editable) {
    SetPointsInPlay(document.Catalogue, document.Data.SpringMechanism, document.Data);
    const auto rows = std::count_if(AllPoints.begin(), AllPoints.end(), [&](PointNumber number) {
        return document.Catalogue[number].Enabled;
    });
    ResetGrid(grid);
    grid.SetSize(HeadRows + static_cast<int>(rows), static_cast<int>(Heads.size()), HeadRows, 1);
    grid.Editable = editable;
    grid.SetBold(0);
    for (int column = 0; column < grid.Columns(); ++column) {
        grid.SetColumnWidth(column, column == 0 ? NameWidth : CoordinateWidth);
        grid.SetCell(0, column, std::string(Heads[static_cast<std::size_t>(column)]));
        if (column > 0) {
            grid.SetCell(1, column, units[ucDisplacement].Label);
        }
    }
    int row = HeadRows;
    for (const PointNumber number : AllPoints) {
        if (document.Catalogue[number].Enabled) {
            grid.SetCell(row++, 0, document.Catalogue[number].LongName);
        }
    }
    BandAlternateLines(grid, true, HeadRows);
}

void DataPointsGet(DataGrid& grid, const Suspension& document, const FundamentalUnits& units,
                   int wheelStep, int rackStep) {
    const WheelState& state =
        document.WheelStates(rackStep == 0 ? document.StaticRack : rackStep,
                             wheelStep == 0 ? document.StaticWheel : wheelStep);
    int row = HeadRows;
    for (const PointNumber number : AllPoints) {
        if (!document.Catalogue[number].Enabled) {
            continue;
        }
        const SuspPoint& point = state.Points[number];
        grid.SetCell(row, 1, FormatChannelValue(units, point.X, ucDisplacement));
        grid.SetCell(row, 2, FormatChannelValue(units, point.Y, ucDisplacement));
        grid.SetCell(row, 3, FormatChannelValue(units, point.Z, ucDisplacement));
        grid.SetRowData(row, std::string(PointShortName(number)));
        ++row;
    }
}

} // namespace corvanta
