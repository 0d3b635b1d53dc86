#include "shell/StudyFigures.h"

#include "shell/AxisRange.h"
#include "study/StudyChart.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace corvanta {

namespace {

/// What can be asked of a chart, in the order of the list; the target stands behind them.
constexpr std::array<std::pair<FigureKind, const char*>, 3> Kinds{{
    {FigureKind::AtStatic, "Value at static"},
    {FigureKind::GainAtStatic, "Gain at static"},
    {FigureKind::RangeOverTravel, "Range over the travel"},
}};

AxisRange RangeOf(const std::vector<SheetCurve>& curves, double ChartPoint::*member) {
    double low = std::numeric_limits<double>::infinity();
    double high = -low;
    for (const SheetCurve& curve : curves) {
        for (const ChartPoint& point : curve.Points) {
            low = std::min(low, point.*member);
            high = std::max(high, point.*member);
        }
    }
    return CAxisRange("0.0000").Take(low, high, false);
}

} // namespace

void ListFigures(ListControl& list) {
    for (const auto& [kind, text] : Kinds) {
        list.Add(text);
    }
    list.Add("Greatest deviation from the target");
    list.Select(0);
}

std::optional<StudyNumber> NumberOfChart(const StudyChart& chart, int entry,
                                         const std::vector<Target>& targets) {
    const std::int32_t variable = TravelOf(chart);
    const auto kind = static_cast<std::size_t>(std::max(0, entry));
    if (kind < Kinds.size()) {
        return Figure{chart.Channel, Kinds.at(kind).first, variable};
    }
    for (const Target& target : targets) {
        if (target.Channel == chart.Channel && target.Variable == variable) {
            return target;
        }
    }
    return std::nullopt;
}

FigureDisplay DisplayOf(const StudyNumber& number, const Program& program) {
    if (const auto* const figure = std::get_if<Figure>(&number)) {
        return DisplayOf(*figure, program.Channels, program.Units);
    }
    FigureDisplay display = DisplayOf({std::get<Target>(number).Channel, FigureKind::AtStatic},
                                      program.Channels, program.Units);
    display.Title += " outside its target";
    return display;
}

std::string NumberText(const FigureDisplay& display, std::optional<double> stored,
                       const Separators& separators) {
    return stored ? FormatUnsignedZero(*stored * display.Factor, display.Format, separators) : "-";
}

std::string WithUnit(const FigureDisplay& display, std::optional<double> stored,
                     const Separators& separators) {
    return NumberText(display, stored, separators) + " " + display.UnitLabel;
}

ChartSheet SheetOf(const std::string& title, const std::string& across, const std::string& up,
                   std::vector<SheetCurve> curves, const Separators& separators) {
    ChartSheet sheet;
    sheet.Title = title;
    sheet.AxisX = {across, RangeOf(curves, &ChartPoint::X)};
    sheet.AxisY = {up, RangeOf(curves, &ChartPoint::Y)};
    sheet.Curves = std::move(curves);
    sheet.NumberSeparators = separators;
    return sheet;
}

} // namespace corvanta
