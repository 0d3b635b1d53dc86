#include "shell/WorkbenchCharts.h"

#include "model/NumberText.h"
#include "platform/ColourScale.h"
#include "study/Figure.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace corvanta {

namespace {

constexpr Colour CurveColour{214, 39, 40};
constexpr Colour TargetColour{44, 160, 44};
constexpr double Nowhere = std::numeric_limits<double>::quiet_NaN();

bool AlongRack(const StudyChart& chart) {
    return chart.Kind == ChartKind::AlongRackTravel;
}

/// Lowest and highest of values.
struct Extent {
    double Low = std::numeric_limits<double>::infinity();
    double High = -std::numeric_limits<double>::infinity();

    void Add(double value) {
        Low = std::min(Low, value);
        High = std::max(High, value);
    }
};

/// The wheel is found at its travel but for a hair, which would push the last number of an axis out
/// of it and back in from one design to the next.
double RoundTravel(double shown) {
    constexpr double PerUnit = 1000;
    return std::round(shown * PerUnit) / PerUnit;
}

const Curve* CurveIn(const DesignResults* results, std::size_t n) {
    return results != nullptr && n < results->Curves.size() && results->Curves[n]
               ? &*results->Curves[n]
               : nullptr;
}

const ChannelMap* MapIn(const DesignResults* results, std::size_t n) {
    return results != nullptr && n < results->Maps.size() && results->Maps[n] ? &*results->Maps[n]
                                                                              : nullptr;
}

const BesideResults* BaselineIn(const ChartsContent& content) {
    const auto found = std::find_if(content.Beside.begin(), content.Beside.end(),
                                    [](const BesideResults& each) { return each.IsBaseline; });
    return found == content.Beside.end() ? nullptr : &*found;
}

const DesignResults* BaselineOf(const ChartsContent& content) {
    const BesideResults* const baseline = BaselineIn(content);
    return baseline == nullptr ? nullptr : baseline->Results;
}

std::vector<double> Scaled(const std::vector<double>& values, double factor) {
    std::vector<double> scaled;
    scaled.reserve(values.size());
    for (const double value : values) {
        scaled.push_back(value * factor);
    }
    return scaled;
}

/// The values of a map, or what they differ by from those of another on the same grid.
std::vector<std::optional<double>> MapValues(const ChannelMap& map, const ChannelMap* from,
                                             double factor) {
    const bool same = from != nullptr && from->RackTravel.size() == map.RackTravel.size() &&
                      from->WheelTravel.size() == map.WheelTravel.size();
    std::vector<std::optional<double>> values;
    values.reserve(map.Values.size());
    for (std::size_t k = 0; k < map.Values.size(); ++k) {
        const std::optional<double> subtracted = from == nullptr ? std::optional(0.0)
                                                 : same          ? from->Values[k]
                                                                 : std::nullopt;
        values.push_back(map.Values[k] && subtracted
                             ? std::optional((*map.Values[k] - *subtracted) * factor)
                             : std::nullopt);
    }
    return values;
}

/// Titles of tables may end in a blank.
std::string TitleOf(const ChannelRecord& record) {
    return record.Title.substr(0, record.Title.find_last_not_of(' ') + 1);
}

/// With its sign, unless it shows as nothing.
std::string Signed(const std::string& text) {
    const bool isZero = text.find_first_of("123456789") == std::string::npos;
    return isZero || text.front() == '-' ? text : "+" + text;
}

/// A ratio has no unit to name behind its value.
std::string WithUnit(const std::string& text, const ChannelRecord& record) {
    return record.UnitLabel == "-" ? text : text + " " + record.UnitLabel;
}

} // namespace

double WorkbenchCharts::LengthFactor() const {
    return UsableUnit(m_program.Units, ucDisplacement).Factor;
}

std::string WorkbenchCharts::Text(const ChannelRecord& record, double stored) const {
    return FormatUnsignedZero(stored * static_cast<double>(record.Factor), record.Format,
                              m_program.Units.NumberSeparators);
}

void WorkbenchCharts::KeepAxes(std::span<const StudyChart> charts) {
    std::vector<Axis> axes;
    for (std::size_t n = 0; n < charts.size(); ++n) {
        const ChannelRecord& record = m_program.Channels[charts[n].Channel];
        const bool stays =
            n < m_axes.size() && m_axes[n].Chart == charts[n] && m_axes[n].Unit == record.UnitLabel;
        axes.push_back(stays ? m_axes[n]
                             : Axis{charts[n], record.UnitLabel, CAxisRange(record.Format)});
    }
    m_axes = std::move(axes);
}

void WorkbenchCharts::Compose(const ChartsContent& content) {
    KeepAxes(content.Charts);
    m_sheets.clear();
    for (std::size_t n = 0; n < content.Charts.size(); ++n) {
        m_sheets.push_back(content.Charts[n].Kind == ChartKind::Map ? MapSheet(content, n)
                                                                    : LineSheet(content, n));
    }
}

ChartSheet WorkbenchCharts::LineSheet(const ChartsContent& content, std::size_t n) {
    const StudyChart& chart = content.Charts[n];
    const ChannelRecord& record = m_program.Channels[chart.Channel];
    const double factor = UsableUnit(m_program.Units, record.Class).Factor;
    ChartSheet sheet;
    sheet.NumberSeparators = m_program.Units.NumberSeparators;
    sheet.Title = sheet.AxisY.Title = TitleOf(record) + " [" + record.UnitLabel + "]";
    sheet.AxisX.Title = m_program.Channels[AlongRack(chart) ? chRackTravel : chWheelTravel].Title +
                        " [" + m_program.Units[ucDisplacement].Label + "]";
    const auto add = [&](const DesignResults* results, const std::string& name, CurveStyle style,
                         Colour colour, bool faded) {
        if (const Curve* const curve = CurveIn(results, n)) {
            SheetCurve line{name, style, colour, faded, {}};
            for (std::size_t k = 0; k < curve->X.size(); ++k) {
                line.Points.push_back({curve->X[k] * LengthFactor(), curve->Y[k] * factor});
            }
            sheet.Curves.push_back(std::move(line));
        }
    };
    add(content.Now, "Design", CurveStyle::Solid, CurveColour, content.Faded);
    for (const BesideResults& beside : content.Beside) {
        add(beside.Results, beside.Name, beside.IsBaseline ? CurveStyle::Dashed : CurveStyle::Thin,
            beside.Drawn, false);
    }
    if (const Curve* const own = CurveIn(content.Now, n); own != nullptr && own->X.empty()) {
        sheet.MarkText = "none in this corner";
    }
    AddTargets(sheet, content, n);
    AddStudy(sheet, content, n);
    FitAxes(sheet, content, n);
    if (content.Now != nullptr) {
        const TravelPlace& place = content.Now->Place;
        sheet.Cursor = ReadoutAt(content, n, AlongRack(chart) ? place.Rack : place.Wheel);
    }
    if (content.Hover) {
        sheet.Hover =
            ReadoutAt(content, n, AlongRack(chart) ? content.Hover->Rack : content.Hover->Wheel);
    }
    return sheet;
}

/// A target is about the other travel at static, so it is judged only there.
void WorkbenchCharts::AddTargets(ChartSheet& sheet, const ChartsContent& content,
                                 std::size_t n) const {
    const StudyChart& chart = content.Charts[n];
    const ChannelRecord& record = m_program.Channels[chart.Channel];
    const double factor = record.Factor;
    for (const Target& target : content.Targets) {
        const Curve* const curve = CurveIn(content.Now, n);
        if (target.Channel != chart.Channel || curve == nullptr ||
            (target.Variable == vvAlongRackTravel) != AlongRack(chart)) {
            continue;
        }
        SheetBand band{"Target", BandKind::Target, TargetColour, {}, {}};
        for (const BandCorner& corner : target.Band) {
            band.Low.push_back({corner.Travel * LengthFactor(), corner.Low * factor});
            band.High.push_back({corner.Travel * LengthFactor(), corner.High * factor});
        }
        sheet.Bands.push_back(std::move(band));
        if (content.Faded) {
            continue; // the curve is not that of the design
        }
        const TravelPlace& place = content.Now->Place;
        if ((AlongRack(chart) ? place.Wheel : place.Rack) != 0) {
            sheet.MarkText =
                AlongRack(chart) ? "target at static wheel travel" : "target at static rack travel";
            continue;
        }
        const TargetResult result = JudgeTarget(target, *curve);
        const bool failed = sheet.Mark == TargetMark::Fails;
        if (result.Judged && !failed) {
            sheet.Mark = result.Holds ? TargetMark::Holds : TargetMark::Fails;
            sheet.MarkText = result.Holds ? "within target"
                                          : Signed(Text(record, result.Deviation)) + " at " +
                                                FormatChannelValue(m_program.Units, result.Travel,
                                                                   ucDisplacement);
        }
    }
}

/// What the study in sight has found of this channel along this travel.
void WorkbenchCharts::AddStudy(ChartSheet& sheet, const ChartsContent& content,
                               std::size_t n) const {
    const StudyChart& chart = content.Charts[n];
    if (content.Study == nullptr || content.Now == nullptr) {
        return;
    }
    const TravelPlace& place = content.Now->Place;
    const bool isStatic = (AlongRack(chart) ? place.Wheel : place.Rack) == 0;
    const double factor = m_program.Channels[chart.Channel].Factor;
    const auto line = [&](const std::vector<double>& travel, const std::vector<double>& values) {
        std::vector<ChartPoint> points;
        for (std::size_t k = 0; k < travel.size(); ++k) {
            points.push_back({travel[k] * LengthFactor(), values[k] * factor});
        }
        return points;
    };
    if (!isStatic) { // studies are about the other travel at static
        if (content.Study->IsOn(chart) && sheet.MarkText.empty()) {
            sheet.MarkText =
                AlongRack(chart) ? "study at static wheel travel" : "study at static rack travel";
        }
        return;
    }
    for (const OverlayBand& band : content.Study->Bands) {
        if (IsSameLine(band.Chart, chart)) {
            sheet.Bands.push_back({band.Name, BandKind::Tolerance, StudyColour,
                                   line(band.Travel, band.Low), line(band.Travel, band.High)});
        }
    }
    for (const OverlayCurve& curve : content.Study->Curves) {
        if (IsSameLine(curve.Chart, chart)) {
            sheet.Curves.push_back({curve.Name, CurveStyle::Thin, curve.Drawn, false,
                                    line(curve.Travel, curve.Values)});
        }
    }
}

void WorkbenchCharts::FitAxes(ChartSheet& sheet, const ChartsContent& content, std::size_t n) {
    Extent across;
    Extent up;
    for (const SheetCurve& curve : sheet.Curves) {
        for (const ChartPoint& point : curve.Points) {
            across.Add(point.X);
            up.Add(point.Y);
        }
    }
    for (const SheetBand& band : sheet.Bands) {
        for (std::size_t k = 0; k < band.Low.size(); ++k) {
            up.Add(band.Low[k].Y);
            up.Add(band.High[k].Y);
        }
    }
    if (across.Low < across.High) {
        sheet.AxisX.Shown = {RoundTravel(across.Low), RoundTravel(across.High)};
    }
    sheet.AxisY.Shown = m_axes[n].Range.Take(up.Low, up.High, content.Held);
}

std::optional<SheetReadout> WorkbenchCharts::ReadoutAt(const ChartsContent& content, std::size_t n,
                                                       double travel) const {
    const Curve* const curve = CurveIn(content.Now, n);
    const std::optional<double> value =
        curve == nullptr || std::isnan(travel) ? std::nullopt : ValueAt(*curve, travel);
    if (!value) {
        return std::nullopt;
    }
    const ChannelRecord& record = m_program.Channels[content.Charts[n].Channel];
    if (content.Faded) { // the line is not that of the design
        return SheetReadout{travel * LengthFactor(), std::nullopt, {}};
    }
    SheetReadout readout{travel * LengthFactor(),
                         *value * static_cast<double>(record.Factor),
                         {WithUnit(Text(record, *value), record)}};
    const Curve* const baseline = CurveIn(BaselineOf(content), n);
    if (const auto was = baseline == nullptr ? std::nullopt : ValueAt(*baseline, travel)) {
        readout.Lines.push_back(BaselineIn(content)->Name + " " + Text(record, *was));
        readout.Lines.push_back("Difference " + Signed(Text(record, *value - *was)));
    }
    return readout;
}

ChartSheet WorkbenchCharts::MapSheet(const ChartsContent& content, std::size_t n) {
    const StudyChart& chart = content.Charts[n];
    const ChannelRecord& record = m_program.Channels[chart.Channel];
    const std::string length = " [" + m_program.Units[ucDisplacement].Label + "]";
    ChartSheet sheet;
    sheet.NumberSeparators = m_program.Units.NumberSeparators;
    sheet.Title =
        TitleOf(record) + (chart.Difference ? " less baseline [" : " [") + record.UnitLabel + "]";
    sheet.AxisX.Title = m_program.Channels[chWheelTravel].Title + length;
    sheet.AxisY.Title = m_program.Channels[chRackTravel].Title + length;
    const ChannelMap* const ownMap = MapIn(content.Maps, n);
    const bool own =
        ownMap != nullptr && std::any_of(ownMap->Values.begin(), ownMap->Values.end(),
                                         [](const auto& value) { return bool(value); });
    const ChannelMap* const map = own ? ownMap : MapIn(content.Now, n);
    if (map == nullptr || map->WheelTravel.size() < 2 || map->RackTravel.size() < 2) {
        sheet.MarkText = map == nullptr ? "" : "one travel has no steps: there is no map";
        return sheet;
    }
    SheetMap shown = MapOn(content, n, *map);
    const TravelPlace& place = (own ? content.Maps : content.Now)->Place;
    shown.Cross = ChartPoint{place.Wheel * LengthFactor(), place.Rack * LengthFactor()};
    sheet.AxisX.Shown = {shown.X.front(), shown.X.back()};
    sheet.AxisY.Shown = {shown.Y.front(), shown.Y.back()};
    if (content.Faded && !own) {
        sheet.MarkText = "of the last design that could be solved";
    } else {
        sheet.Cursor = ReadoutOn(shown, record, place);
        if (content.Hover) {
            sheet.Hover = ReadoutOn(shown, record, *content.Hover);
        }
    }
    sheet.Map = std::move(shown);
    return sheet;
}

/// A map in the units of its axes, with even steps of colour that stay while a hand moves
/// something.
SheetMap WorkbenchCharts::MapOn(const ChartsContent& content, std::size_t n,
                                const ChannelMap& map) {
    const StudyChart& chart = content.Charts[n];
    const ChannelRecord& record = m_program.Channels[chart.Channel];
    const ChannelMap* const from = MapIn(BaselineOf(content), n);
    SheetMap shown;
    shown.X = Scaled(map.WheelTravel, LengthFactor());
    shown.Y = Scaled(map.RackTravel, LengthFactor());
    // Without a baseline beside it, the design is its own.
    shown.Values = MapValues(map, chart.Difference ? (from != nullptr ? from : &map) : nullptr,
                             UsableUnit(m_program.Units, record.Class).Factor);
    shown.Differences = chart.Difference;
    shown.BarTitle = record.UnitLabel;
    shown.UnreachedText = "can't be reached";
    Extent extent;
    for (const std::optional<double>& value : shown.Values) {
        if (value) {
            extent.Add(*value);
        }
    }
    const AxisRange& range = m_axes[n].Range.Take(extent.Low, extent.High, content.Held);
    const double least = m_axes[n].Range.LastDigit();
    shown.Levels = chart.Difference ? LevelsOfDifferences(range.Lower, range.Upper, least)
                                    : LevelsOf(range.Lower, range.Upper, least);
    return shown;
}

std::optional<SheetReadout> WorkbenchCharts::ReadoutOn(const SheetMap& map,
                                                       const ChannelRecord& record,
                                                       const TravelPlace& at) const {
    const double x = at.Wheel * LengthFactor();
    const double y = at.Rack * LengthFactor();
    if (std::isnan(x) || std::isnan(y)) {
        return std::nullopt;
    }
    const std::optional<double> value = ValueAt(map, x, y);
    return SheetReadout{x,
                        y,
                        {value ? WithUnit(FormatUnsignedZero(*value, record.Format,
                                                             m_program.Units.NumberSeparators),
                                          record)
                               : map.UnreachedText}};
}

TravelPlace WorkbenchCharts::TravelAt(const Program& program, const StudyChart& chart,
                                      const ChartPoint& place) {
    const double factor = UsableUnit(program.Units, ucDisplacement).Factor;
    switch (chart.Kind) {
    case ChartKind::Map:
        return {place.X / factor, place.Y / factor};
    case ChartKind::AlongRackTravel:
        return {Nowhere, place.X / factor};
    default:
        return {place.X / factor, Nowhere};
    }
}

} // namespace corvanta
