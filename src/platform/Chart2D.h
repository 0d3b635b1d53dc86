#pragma once

#include "model/NumberText.h"
#include "platform/DrawingSurface.h"

#include <optional>
#include <string>
#include <vector>

namespace corvanta {

struct ChartPoint {
    double X = 0;
    double Y = 0;

    friend bool operator==(const ChartPoint&, const ChartPoint&) = default;
};

/// The part of an axis that a chart shows, in the units of the axis.
struct AxisRange {
    double Lower = 0;
    double Upper = 0;

    [[nodiscard]] double Size() const { return Upper - Lower; }

    friend bool operator==(const AxisRange&, const AxisRange&) = default;
};

struct ChartFont {
    std::string Family;
    int Size = 0; ///< points
    bool Bold = false;

    friend bool operator==(const ChartFont&, const ChartFont&) = default;
};

struct ChartAxis {
    std::string Title;
    std::string Format = "0.00"; ///< of a value that is read off, as `FormatNumber` takes it
    bool GridLines = false;
    std::optional<double> Marker; ///< the value that is marked on the axis, none while hidden
};

/// Points in the order in which a line joins them.
struct ChartSeries {
    Colour Drawn;
    std::vector<ChartPoint> Points;
    std::string Name;    ///< in copied data, needed beside others only
    bool Dashed = false; ///< of a line beside the chart's own

    friend bool operator==(const ChartSeries&, const ChartSeries&) = default;
};

/// A line chart with two axes, one series and others behind it for comparison. It holds what is to
/// be shown; a window system shows it, the axes fitted to the points, and answers what lies where.
class Chart2D {
  public:
    Chart2D() = default;
    Chart2D(const Chart2D&) = delete;
    Chart2D& operator=(const Chart2D&) = delete;
    Chart2D(Chart2D&&) = delete;
    Chart2D& operator=(Chart2D&&) = delete;
    virtual ~Chart2D() = default;

    ChartAxis AxisX;
    ChartAxis AxisY;
    Colour GridColour;
    ChartFont AnnotationFont; ///< of the numbers along the axes
    ChartFont TitleFont;      ///< of the titles of the axes
    Separators NumberSeparators;
    ChartSeries Series;
    std::vector<ChartSeries> Others; ///< thin lines behind the series
    std::string Caption;             ///< what a picture of the chart says of it, lines parted by LF

    void ClearSeries() {
        Series.Points.clear();
        Others.clear();
    }

    /// What `DataAt` answers for a coordinate outside the plot area.
    static constexpr double Outside = 1E308;

    /// Twips in one pixel of the screen.
    static constexpr double TwipsPerPixel = 15;

    /// The data coordinates at a place in pixels, right and down from the chart's top left corner.
    /// A coordinate that lies outside the plot area is `Outside`.
    [[nodiscard]] virtual ChartPoint DataAt(double pixelX, double pixelY) const = 0;
};

} // namespace corvanta
