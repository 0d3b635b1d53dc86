#pragma once

#include "platform/Chart2D.h"
#include "platform/ColourScale.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {

enum class CurveStyle { Solid, Dashed, Thin, Broad };

/// A line; its points by rising X.
struct SheetCurve {
    std::string Name; ///< empty for one that no legend lists
    CurveStyle Style = CurveStyle::Solid;
    Colour Drawn;
    bool Faded = false; ///< the last good line of something that fails as it stands now
    std::vector<ChartPoint> Points;

    friend bool operator==(const SheetCurve&, const SheetCurve&) = default;
};

enum class BandKind { Target, Tolerance };

/// The area between two lines, the points of each by rising X.
struct SheetBand {
    std::string Name;
    BandKind Kind = BandKind::Target;
    Colour Drawn;
    std::vector<ChartPoint> Low;
    std::vector<ChartPoint> High;

    friend bool operator==(const SheetBand&, const SheetBand&) = default;
};

enum class TargetMark { None, Holds, Fails };

/// A place with what is to be said of it.
struct SheetReadout {
    double X = 0;
    std::optional<double> Y;        ///< marked on the line, or the place in a map
    std::vector<std::string> Lines; ///< what stands in the box beside it

    friend bool operator==(const SheetReadout&, const SheetReadout&) = default;
};

/// What a place of a map can be where it is no matter of more or less.
struct MapKind {
    std::string Name;
    Colour Drawn;

    friend bool operator==(const MapKind&, const MapKind&) = default;
};

/// Values over two travels. Both run upwards; the values stand row by row, Y by Y, one for each X.
struct SheetMap {
    std::vector<double> X;
    std::vector<double> Y;
    std::vector<std::optional<double>> Values; ///< none where the position can't be reached
    ColourLevels Levels;
    bool Differences = false; ///< the scale is white at 0
    std::string BarTitle;
    std::string UnreachedText; ///< names the hatching, where some is in sight
    std::optional<ChartPoint> Cross;
    std::vector<MapKind> Kinds{}; ///< in place of a scale: the values count them, from 0

    friend bool operator==(const SheetMap&, const SheetMap&) = default;
};

/// A ready-made axis: its ends are those that are painted.
struct SheetAxis {
    std::string Title;
    AxisRange Shown{0, 1};

    friend bool operator==(const SheetAxis&, const SheetAxis&) = default;
};

/// All that one chart of the workbench shows: lines, or a map when there is one.
struct ChartSheet {
    std::string Title; ///< the channel with its unit
    TargetMark Mark = TargetMark::None;
    std::string MarkText;
    SheetAxis AxisX;
    SheetAxis AxisY;
    bool ToScale = false;           ///< both axes reach farther as needed to have one scale
    std::vector<SheetBand> Bands;   ///< the first lies undermost
    std::vector<SheetCurve> Curves; ///< the first lies uppermost
    std::optional<SheetMap> Map;
    std::optional<SheetReadout> Cursor; ///< at the travel that all windows stand at
    std::optional<SheetReadout> Hover;  ///< at the travel below the pointer, in whichever chart
    Separators NumberSeparators;
};

/// The step of an axis, from its index to the next, in which a place lies, and how much of it lies
/// before that, 0 to 1.
struct AxisPlace {
    std::size_t Index = 0;
    double Part = 0;
};

/// None beyond the ends of an axis of rising values.
[[nodiscard]] std::optional<AxisPlace> PlaceOn(const std::vector<double>& axis, double value);

/// The value of a map at a place, straight between the positions around it. None outside it, and
/// where the nearest position can't be reached.
[[nodiscard]] std::optional<double> ValueAt(const SheetMap& map, double x, double y);
[[nodiscard]] std::optional<double> ValueAt(const SheetMap& map, AxisPlace x, AxisPlace y);

/// The colours of a map's steps.
[[nodiscard]] std::vector<Colour> ColoursOf(const SheetMap& map);

/// What a chart shows as tab-separated text under its titles: one column for each line and each
/// border of a band, or a map with its X along the first row and its Y along the first column.
[[nodiscard]] std::string DataText(const ChartSheet& sheet);

} // namespace corvanta
