#include "results/MDisplayPlot.h"

#include "model/NumberText.h"
#include "platform/FileServices.h"
#include "results/GridCourse.h"
#include "solver/MLibMaths.h"

#include <algorithm>
#include <utility>

namespace corvanta {

namespace {

constexpr std::uint8_t GridGrey = 192;
constexpr Colour GridLineColour{GridGrey, GridGrey, GridGrey};
constexpr Colour SeriesColour{255, 0, 0};
constexpr int FontSize = 8;

/// A place that no chart covers, twips.
constexpr double Nowhere = -999;

/// A channel along the course: its title with its unit, and its values.
PlotColumn ColumnOf(const Program& program, int channel, const GridCourse& course) {
    const ChannelRecord& record = program.Channels[channel];
    PlotColumn column{record.Title + " [" + record.UnitLabel + "]",
                      record.Format,
                      {},
                      static_cast<double>(UsableUnit(program.Units, record.Class).Factor)};
    for (int k = 1; k <= course.Count; ++k) {
        column.Values.push_back(course.State(program.Document, k).Channels[channel]);
    }
    return column;
}

void SetUpChart(Chart2D& chart) {
    chart.AxisX.GridLines = chart.AxisY.GridLines = true;
    chart.GridColour = GridLineColour;
    chart.AnnotationFont = {"Courier New", FontSize, false};
    chart.TitleFont = {"Arial", FontSize, true};
    chart.Series.Drawn = SeriesColour;
}

/// A value to five decimals.
double RoundedValue(double value) {
    const Separators separators;
    return WholeNumberText(FormatNumber(value, "0.00000", separators), separators.Decimal)
        .value_or(value);
}

void HideReadout(const PlotState& plot, Chart2D& chart) {
    chart.AxisX.Marker = chart.AxisY.Marker = std::nullopt;
    chart.AxisX.Title = plot.PlotTitleX;
    chart.AxisY.Title = plot.PlotTitleY;
}

/// A value of an axis as its title shows it: the axis is in the user's units already.
std::string Readout(const Program& program, int channel, double value) {
    return " = " +
           FormatNumber(value, program.Channels[channel].Format, program.Units.NumberSeparators);
}

/// Car, channel and fixed position.
std::string CaptionOf(const Program& program, const std::string& channel, std::int32_t variable,
                      int rack, int wheel) {
    const Suspension& document = program.Document;
    const bool alongRack = variable == vvAlongRackTravel;
    const double travel = alongRack ? WheelTravelAtStep(document, WheelStepOf(document, wheel))
                                    : RackTravelAtStep(document, RackStepOf(document, rack));
    const std::string name = FileServices::BaseName(program.DocumentPath);
    const std::string& description = document.Data.Description;
    return name + (name.empty() || description.empty() ? "" : ": ") + description + "\n" + channel +
           (alongRack ? " along rack travel, at wheel travel "
                      : " along wheel travel, at rack travel ") +
           FormatChannelValue(program.Units, travel, ucDisplacement) + " " +
           program.Units[ucDisplacement].Label;
}

} // namespace

void PlotDisplay(PlotState& plot, Chart2D& chart, const Program& program, int channel,
                 std::int32_t variable, int rack, int wheel) {
    GridCourse course = CourseOf(program.Document, variable, rack, wheel);
    int channelX = plot.PlotChannelX;
    if (variable == vvAlongRackTravel) {
        channelX = chRackTravel;
    } else if (variable == vvAlongWheelTravel) {
        channelX = chWheelTravel;
    } else {
        course.Count = 0;
    }
    const int channelY = channel == 0 ? chAckerman : channel;
    const PlotColumn columnX = ColumnOf(program, channelX, course);
    const PlotColumn columnY = ColumnOf(program, channelY, course);
    plot.PlotChannelX = channelX;
    plot.PlotChannelY = channelY;
    chart.Caption = CaptionOf(program, columnY.Title, variable, rack, wheel);
    PlotChart(plot, chart, program, columnX, columnY);
}

std::vector<ChartPoint> PlotPoints(const PlotColumn& columnX, const PlotColumn& columnY) {
    std::vector<ChartPoint> points;
    const std::size_t count = std::min(columnX.Values.size(), columnY.Values.size());
    for (std::size_t n = 0; n < count; ++n) {
        points.push_back({Checked(RoundedValue(columnX.Values[n]) * columnX.Factor),
                          Checked(columnY.Values[n] * columnY.Factor)});
    }
    return points;
}

void PlotChart(PlotState& plot, Chart2D& chart, const Program& program, const PlotColumn& columnX,
               const PlotColumn& columnY) {
    std::vector<ChartPoint> points = PlotPoints(columnX, columnY);
    plot.PlotTitleX = columnX.Title;
    plot.PlotTitleY = columnY.Title;
    SetUpChart(chart);
    chart.AxisX.Format = columnX.Format;
    chart.AxisY.Format = columnY.Format;
    chart.NumberSeparators = program.Units.NumberSeparators;
    if (points.size() >= 2) {
        chart.Series.Points = std::move(points);
    }
    PlotClick(plot, chart, program, Nowhere, Nowhere);
}

void PlotClick(const PlotState& plot, Chart2D& chart, const Program& program, double x, double y) {
    HideReadout(plot, chart);
    try {
        const ChartPoint at = chart.DataAt(x / Chart2D::TwipsPerPixel, y / Chart2D::TwipsPerPixel);
        if (at.X == Chart2D::Outside || at.Y == Chart2D::Outside) {
            return;
        }
        const std::string readoutX = Readout(program, plot.PlotChannelX, at.X);
        const std::string readoutY = Readout(program, plot.PlotChannelY, at.Y);
        chart.AxisX.Marker = at.X;
        chart.AxisY.Marker = at.Y;
        chart.AxisX.Title += readoutX;
        chart.AxisY.Title += readoutY;
    } catch (...) {
        return; // a missing readout harms nothing
    }
}

} // namespace corvanta
