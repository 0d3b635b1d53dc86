#include "automation/PointsText.h"

#include "automation/TableText.h"
#include "model/Failure.h"
#include "study/DesignFields.h"
#include "study/SheetText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace corvanta {

namespace {

constexpr std::array<std::string_view, 5> Heads{"Point", "Name", "X", "Y", "Z"};
constexpr std::size_t FirstAxis = 2;

/// Of a line of the table, whose name is that of a point in play that was not named before.
PointNumber PointOf(const SheetLine& line, const PointCatalogue& catalogue,
                    std::vector<PointNumber>& named) {
    const auto* const found = std::ranges::find_if(
        AllPoints, [&](PointNumber number) { return PointShortName(number) == line.Cells[0]; });
    const auto refuse = [&](const char* fault) {
        RaiseAtCell(line, 0, Heads[0], QuotedCell(line.Cells[0]) + fault);
    };
    if (found == AllPoints.end()) {
        refuse(" is no point");
    }
    if (!catalogue[*found].Enabled) {
        refuse(" is not in play");
    }
    if (std::ranges::find(named, *found) != named.end()) {
        refuse(" is named twice");
    }
    return named.emplace_back(*found);
}

/// What a length of a column is to be divided by: for the unit in its heading, "X [in]", or for
/// that of the user where the heading has none.
double FactorOf(const SheetLine& heading, std::size_t column, FundamentalUnits units) {
    const std::string& cell = heading.Cells[column];
    const std::size_t begin = cell.find('[');
    const std::size_t end = cell.find(']');
    if (begin < end && end != std::string::npos) {
        const std::string label = cell.substr(begin + 1, end - begin - 1);
        FundamentalUnits named;
        named[ucDisplacement].Label = label;
        named.SetFundUnitsData();
        if (named[ucDisplacement].Factor == 0) {
            RaiseAtCell(heading, column, Heads[column],
                        QuotedCell(label) + " is no unit of length");
        }
        units = named;
    }
    return UsableUnit(units, ucDisplacement).Factor;
}

} // namespace

std::string PointsText(const Design& design, const FundamentalUnits& units) {
    const std::string separator(1, ListSeparator(units.NumberSeparators));
    const UnitRecord& length = UsableUnit(units, ucDisplacement);
    std::string text;
    for (std::size_t n = 0; n < Heads.size(); ++n) {
        text += (n == 0 ? "" : separator) + std::string(Heads[n]) +
                (n < FirstAxis ? "" : " [" + length.Label + "]");
    }
    text += '\n';
    const PointCatalogue catalogue = CatalogueOf(design.Data);
    for (const PointNumber number : AllPoints) {
        if (!catalogue[number].Enabled) {
            continue;
        }
        text += std::string(PointShortName(number)) + separator + catalogue[number].LongName;
        for (const PointAxis& axis : PointAxes()) {
            text += separator + NumberToText(design.Points[number].*axis.Member *
                                                 static_cast<double>(length.Factor),
                                             units.NumberSeparators);
        }
        text += '\n';
    }
    return text;
}

void TakePoints(Design& design, std::string_view text, const FundamentalUnits& units) {
    SheetLine heading{0, std::vector<std::string>(Heads.size())};
    const PointCatalogue catalogue = CatalogueOf(design.Data);
    PointSet points = design.Points;
    std::vector<PointNumber> named;
    bool first = true;
    for (const SheetLine& line : SheetLines(text, Heads.size())) {
        if (std::exchange(first, false) && IsHeading(line, units.NumberSeparators)) {
            heading = line;
            continue;
        }
        const PointNumber number = PointOf(line, catalogue, named);
        for (std::size_t axis = 0; axis < PointAxes().size(); ++axis) {
            const std::string& cell = line.Cells[FirstAxis + axis];
            const std::optional<double> value = SheetNumber(cell, units.NumberSeparators);
            if (!value) {
                RaiseAtCell(line, FirstAxis + axis, Heads[FirstAxis + axis],
                            cell.empty() ? "there is no number"
                                         : QuotedCell(cell) + " is no number");
            }
            points[number].*PointAxes()[axis].Member =
                *value / FactorOf(heading, FirstAxis + axis, units);
        }
        if (line.Cells.size() > Heads.size() &&
            SheetNumber(line.Cells[Heads.size()], units.NumberSeparators)) {
            RaiseAtCell(line, Heads.size(), "behind Z",
                        "there is a number too many; a decimal comma asks for semicolons or tabs");
        }
    }
    if (named.empty()) {
        throw Failure(fnInvalidCall, "The table has no points");
    }
    design.Points = points;
}

} // namespace corvanta
