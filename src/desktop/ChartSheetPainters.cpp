#include "desktop/ChartSheetPainters.h"

#include "desktop/ChartRanges.h"
#include "platform/NiceNumbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace corvanta {

namespace {

constexpr double SolidWidth = 2;
constexpr double DashedWidth = 1.5;
constexpr double BroadWidth = 9;
constexpr double ThinWidth = 1.2;
constexpr int Spacing = 6;
constexpr int MarkSize = 11;
constexpr double PictureDensity = 2;

QColor Mixed(const QColor& a, const QColor& b, double partOfB) {
    const auto mix = [&](int from, int to) {
        return static_cast<int>(std::lround(std::lerp(from, to, partOfB)));
    };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

QColor WithAlpha(QColor colour, int alpha) {
    colour.setAlpha(alpha);
    return colour;
}

/// Dark colours are lifted off a dark paper, pale ones darkened on a light one.
QColor OnPaper(const Colour& colour, const ChartPaper& paper) {
    const QColor drawn = ColourOf(colour);
    constexpr int DarkestOnDark = 110;
    constexpr int LightestOnLight = 200;
    if (paper.IsDark() && drawn.lightness() < DarkestOnDark) {
        return Mixed(drawn, Qt::white, 0.4);
    }
    return !paper.IsDark() && drawn.lightness() > LightestOnLight ? Mixed(drawn, Qt::black, 0.3)
                                                                  : drawn;
}

QPen PenOf(const SheetCurve& curve, const ChartPaper& paper) {
    const QColor drawn =
        curve.Faded ? Mixed(paper.Background, paper.Ink, 0.35) : OnPaper(curve.Drawn, paper);
    switch (curve.Style) {
    case CurveStyle::Solid:
        return {drawn, SolidWidth, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin};
    case CurveStyle::Dashed: {
        QPen pen(drawn, DashedWidth, Qt::CustomDashLine, Qt::FlatCap, Qt::BevelJoin);
        pen.setDashPattern({4, 3});
        return pen;
    }
    case CurveStyle::Broad:
        return {drawn, BroadWidth, Qt::SolidLine, Qt::FlatCap, Qt::BevelJoin};
    case CurveStyle::Thin:
        break;
    }
    return {drawn, ThinWidth, Qt::SolidLine, Qt::FlatCap, Qt::BevelJoin};
}

/// Slanted lines in a rectangle, cut off by hand: the toolkit's drawings in files know neither a
/// clip nor a pattern that its own reader understands.
void PaintHatch(QPainter& painter, const QRect& area, const ChartPaper& paper) {
    constexpr int Distance = 7;
    painter.setPen(QPen(Mixed(paper.Background, paper.Ink, 0.45), 1));
    const QPoint corner = area.topLeft();
    const int width = area.width();
    const int height = area.height();
    for (int n = Distance; n < width + height; n += Distance) {
        painter.drawLine(corner + QPoint(std::max(0, n - height), std::min(n, height)),
                         corner + QPoint(std::min(n, width), std::max(0, n - width)));
    }
}

bool HasUnreached(const SheetMap& map) {
    return std::find(map.Values.begin(), map.Values.end(), std::nullopt) != map.Values.end();
}

/// The places of a map's positions below a row or column of pixels. A pixel at the border, the
/// middle of which lies just beyond, belongs to it.
std::vector<std::optional<AxisPlace>> PlacesAlong(const QCPAxis& axis,
                                                  const std::vector<double>& positions, int begin,
                                                  int count, double density) {
    std::vector<std::optional<AxisPlace>> places;
    const double pixel = std::abs(axis.pixelToCoord(1) - axis.pixelToCoord(0)) / density;
    for (int n = 0; n < count; ++n) {
        const double at = axis.pixelToCoord(begin + (n + 0.5) / density);
        const double kept = std::clamp(at, positions.front(), positions.back());
        places.push_back(std::abs(kept - at) < pixel ? PlaceOn(positions, kept) : std::nullopt);
    }
    return places;
}

/// The values at each X for one place along Y, not a number beside what can't be reached.
void ValuesAcross(const SheetMap& map, const AxisPlace& row, std::vector<double>& across) {
    const std::size_t up = row.Index + 1 < map.Y.size() ? map.X.size() : 0;
    for (std::size_t n = 0; n < across.size(); ++n) {
        const auto& low = map.Values[row.Index * map.X.size() + n];
        const auto& high = map.Values[row.Index * map.X.size() + n + up];
        across[n] = low && high ? *low + (*high - *low) * row.Part
                                : std::numeric_limits<double>::quiet_NaN();
    }
}

AxisRange RangeOf(const QCPAxis& axis) {
    return {axis.range().lower, axis.range().upper};
}

} // namespace

double EvenTicker::getTickStep(const QCPRange& range) {
    m_step = std::min(NiceStep(range.size() / mTickCount, NiceWay::Up),
                      NiceStep(range.size() / 2, NiceWay::Down)); // one number alone tells no scale
    return m_step;
}

int EvenTicker::getSubTickCount(double /*tickStep*/) {
    return 0;
}

QString EvenTicker::getTickLabel(double tick, const QLocale& /*locale*/, QChar /*formatChar*/,
                                 int /*precision*/) {
    const double shown = std::abs(tick) < m_step / 2 ? 0 : tick; // never "-0.0"
    return QString::number(shown, 'f', DecimalsOf(m_step))
        .replace('.', QString::fromStdString(m_look.Sheet.NumberSeparators.Decimal));
}

SheetHead::SheetHead(QCustomPlot* plot, const SheetLook& look)
    : QCPLayoutElement(plot),
      m_look(look) {
    setMargins({});
    setAutoMargins(QCP::msNone);
}

QSize SheetHead::minimumOuterSizeHint() const {
    return {0, QFontMetrics(mParentPlot->font()).height() + Spacing};
}

void SheetHead::applyDefaultAntialiasingHint(QCPPainter* painter) const {
    painter->setAntialiasing(true);
}

void SheetHead::draw(QCPPainter* painter) {
    QRect area = mRect.adjusted(Spacing, 0, -Spacing, 0);
    area.setRight(PaintMark(*painter, area));
    QFont font = mParentPlot->font();
    font.setBold(true);
    painter->setFont(font);
    painter->setPen(m_look.Paper.Ink);
    painter->drawText(area, Qt::AlignVCenter | Qt::AlignLeft,
                      QFontMetrics(font).elidedText(QString::fromStdString(m_look.Sheet.Title),
                                                    Qt::ElideRight, area.width()));
}

/// Paints the mark at the right and answers where it begins: a check or a cross besides the
/// colour, which not every eye tells apart.
int SheetHead::PaintMark(QPainter& painter, const QRect& area) const {
    if (m_look.Sheet.Mark == TargetMark::None) {
        return PaintRemark(painter, area);
    }
    const bool holds = m_look.Sheet.Mark == TargetMark::Holds;
    const QColor colour = m_look.Paper.IsDark()
                              ? (holds ? QColor(98, 196, 118) : QColor(240, 120, 105))
                              : (holds ? QColor(30, 125, 55) : QColor(190, 40, 25));
    painter.setFont(mParentPlot->font());
    painter.setPen(colour);
    const QFontMetrics metrics(mParentPlot->font());
    const QString text = metrics.elidedText(QString::fromStdString(m_look.Sheet.MarkText),
                                            Qt::ElideRight, area.width() / 2);
    const int width = metrics.horizontalAdvance(text);
    painter.drawText(area, Qt::AlignVCenter | Qt::AlignRight, text);
    const QRectF sign(area.right() - width - Spacing - MarkSize,
                      area.center().y() - MarkSize / 2.0 + 1, MarkSize, MarkSize);
    painter.setPen(QPen(colour, SolidWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const auto at = [&](double x, double y) { return sign.topLeft() + QPointF(x, y) * MarkSize; };
    if (holds) {
        painter.drawPolyline(QPolygonF{at(0.05, 0.55), at(0.38, 0.88), at(0.95, 0.12)});
    } else {
        painter.drawLine(at(0.1, 0.1), at(0.9, 0.9));
        painter.drawLine(at(0.9, 0.1), at(0.1, 0.9));
    }
    return static_cast<int>(sign.left()) - Spacing;
}

/// Paints what is said without a mark and answers where it begins.
int SheetHead::PaintRemark(QPainter& painter, const QRect& area) const {
    if (m_look.Sheet.MarkText.empty()) {
        return area.right();
    }
    QColor colour = m_look.Paper.Ink;
    colour.setAlphaF(0.65F);
    painter.setFont(mParentPlot->font());
    painter.setPen(colour);
    const QFontMetrics metrics(painter.font());
    const QString text = metrics.elidedText(QString::fromStdString(m_look.Sheet.MarkText),
                                            Qt::ElideRight, area.width() / 2);
    painter.drawText(area, Qt::AlignVCenter | Qt::AlignRight, text);
    return area.right() - metrics.horizontalAdvance(text) - Spacing;
}

SheetLegend::SheetLegend(QCustomPlot* plot, const SheetLook& look)
    : QCPLayoutElement(plot),
      m_look(look) {
    setMargins({});
    setAutoMargins(QCP::msNone);
}

int SheetLegend::Flow(const Entry& entry) const {
    const ChartSheet& sheet = m_look.Sheet;
    const QFontMetrics metrics(mParentPlot->font());
    if (sheet.Map && !sheet.Map->Kinds.empty()) { // whose window lists those of all its charts
        return m_look.IsForPicture ? FlowKinds(*sheet.Map, entry) : 0;
    }
    if (sheet.Map) {
        const bool names = HasUnreached(*sheet.Map) && !sheet.Map->UnreachedText.empty();
        if (names) {
            entry({Spacing, 0}, nullptr);
        }
        return names ? metrics.height() + Spacing : 0;
    }
    if (!m_look.HasLegend || sheet.Curves.empty()) {
        return 0;
    }
    return FlowCurves(sheet.Curves, entry);
}

/// The kinds of places as pieces of broad lines.
int SheetLegend::FlowKinds(const SheetMap& map, const Entry& entry) const {
    std::vector<SheetCurve> kinds;
    for (const MapKind& kind : map.Kinds) {
        kinds.push_back({kind.Name, CurveStyle::Broad, kind.Drawn, false, {}});
    }
    return FlowCurves(kinds, entry);
}

int SheetLegend::FlowCurves(const std::vector<SheetCurve>& curves, const Entry& entry) const {
    const QFontMetrics metrics(mParentPlot->font());
    QPoint at(Spacing, 0);
    for (const SheetCurve& curve : curves) {
        if (curve.Name.empty()) {
            continue;
        }
        const int width = SwatchWidth + SwatchDistance +
                          metrics.horizontalAdvance(QString::fromStdString(curve.Name));
        if (at.x() > Spacing && at.x() + width > mParentPlot->plotLayout()->rect().width()) {
            at = {Spacing, at.y() + metrics.height()};
        }
        entry(at, &curve);
        at.rx() += width + 2 * Spacing;
    }
    return at.y() + metrics.height() + Spacing;
}

QSize SheetLegend::minimumOuterSizeHint() const {
    return {0, Flow([](const QPoint&, const SheetCurve*) {})};
}

QSize SheetLegend::maximumOuterSizeHint() const {
    return {QWIDGETSIZE_MAX, minimumOuterSizeHint().height()};
}

void SheetLegend::applyDefaultAntialiasingHint(QCPPainter* painter) const {
    painter->setAntialiasing(true);
}

void SheetLegend::draw(QCPPainter* painter) {
    painter->setFont(mParentPlot->font());
    static_cast<void>(Flow([&](const QPoint& at, const SheetCurve* curve) {
        const QPoint place = mRect.topLeft() + at;
        painter->setPen(m_look.Paper.Ink);
        if (curve != nullptr) {
            PaintNamedLine(*painter, place, PenOf(*curve, m_look.Paper),
                           QString::fromStdString(curve->Name));
            return;
        }
        const QFontMetrics metrics(mParentPlot->font());
        const QRect box(place + QPoint(0, 2), QSize(SwatchWidth, metrics.height() - 5));
        PaintHatch(*painter, box, m_look.Paper);
        painter->setPen(m_look.Paper.Ink);
        painter->drawRect(box);
        painter->drawText(place + QPoint(SwatchWidth + SwatchDistance, metrics.ascent()),
                          QString::fromStdString(m_look.Sheet.Map->UnreachedText));
    }));
}

SheetLines::SheetLines(QCustomPlot* plot, const SheetLook& look)
    : QCPLayerable(plot, "main"),
      m_look(look) {}

QRect SheetLines::clipRect() const {
    return mParentPlot->axisRect()->rect().adjusted(0, -1, 0, 2); // a line along the border, whole
}

void SheetLines::applyDefaultAntialiasingHint(QCPPainter* painter) const {
    painter->setAntialiasing(true);
}

QPolygonF SheetLines::LineOf(const std::vector<ChartPoint>& points) const {
    QPolygonF line;
    line.reserve(static_cast<qsizetype>(points.size()));
    for (const ChartPoint& point : points) {
        line << QPointF(mParentPlot->xAxis->coordToPixel(point.X),
                        mParentPlot->yAxis->coordToPixel(point.Y));
    }
    return line;
}

void SheetLines::draw(QCPPainter* painter) {
    for (const SheetBand& band : m_look.Sheet.Bands) {
        PaintBand(*painter, band);
    }
    painter->setBrush(Qt::NoBrush);
    const auto& curves = m_look.Sheet.Curves;
    std::for_each(curves.rbegin(), curves.rend(),
                  [&](const SheetCurve& curve) { PaintCurve(*painter, curve); });
}

/// Its borders may lie far outside the axes, where a target knows no limit.
void SheetLines::PaintBand(QPainter& painter, const SheetBand& band) const {
    if (band.Low.empty() || band.High.empty()) {
        return;
    }
    const QRectF area =
        QRectF(clipRect()).adjusted(-SolidWidth, -SolidWidth, SolidWidth, SolidWidth);
    const auto inside = [&](QPolygonF line) {
        for (QPointF& point : line) {
            point.setY(std::clamp(point.y(), area.top(), area.bottom()));
        }
        return line;
    };
    const QPolygonF low = inside(LineOf(band.Low));
    const QPolygonF high = inside(LineOf(band.High));
    const QColor drawn = OnPaper(band.Drawn, m_look.Paper);
    const bool target = band.Kind == BandKind::Target;
    painter.setPen(Qt::NoPen);
    painter.setBrush(WithAlpha(drawn, target ? 38 : 64));
    QPolygonF shape = low;
    std::for_each(high.rbegin(), high.rend(), [&](const QPointF& point) { shape << point; });
    painter.drawPolygon(shape);
    if (target) {
        painter.setPen(QPen(WithAlpha(drawn, 150), 1));
        painter.drawPolyline(low);
        painter.drawPolyline(high);
    }
}

/// What is out of sight is left out: the toolkit paints a line that is far longer than the screen
/// slowly, and its drawings in files can't clip.
void SheetLines::PaintCurve(QPainter& painter, const SheetCurve& curve) const {
    const ChartRanges shown{RangeOf(*mParentPlot->xAxis), RangeOf(*mParentPlot->yAxis)};
    painter.setPen(PenOf(curve, m_look.Paper));
    const std::vector<ChartPoint> line = LineInSight(curve.Points, shown);
    const auto isGap = [](const ChartPoint& point) { return std::isnan(point.Y); };
    for (auto from = line.begin(); from != line.end();) {
        from = std::find_if_not(from, line.end(), isGap);
        const auto to = std::find_if(from, line.end(), isGap);
        if (from != to) {
            painter.drawPolyline(LineOf({from, to}));
        }
        from = to;
    }
}

SheetMapSurface::SheetMapSurface(QCustomPlot* plot, const SheetLook& look)
    : QCPLayerable(plot, "main"),
      m_look(look) {}

QRect SheetMapSurface::clipRect() const {
    return mParentPlot->axisRect()->rect();
}

void SheetMapSurface::applyDefaultAntialiasingHint(QCPPainter* painter) const {
    painter->setAntialiasing(false);
}

void SheetMapSurface::draw(QCPPainter* painter) {
    if (!m_look.Sheet.Map || m_look.Sheet.Map->Values.empty()) {
        return;
    }
    const SheetMap& map = *m_look.Sheet.Map;
    const QRect area = clipRect();
    if (HasUnreached(map)) {
        const auto at = [this](double x, double y) {
            return QPointF(mParentPlot->xAxis->coordToPixel(x),
                           mParentPlot->yAxis->coordToPixel(y));
        };
        const QRectF box(at(map.X.front(), map.Y.back()), at(map.X.back(), map.Y.front()));
        PaintHatch(*painter, box.toRect().intersected(area).adjusted(1, 1, -1, -1), // broad lines
                   m_look.Paper);
    }
    if (m_look.IsForPicture) {
        painter->drawImage(area, Paint(map, area, PictureDensity));
        return;
    }
    const AxisRange ranges[] = {RangeOf(*mParentPlot->xAxis), RangeOf(*mParentPlot->yAxis)};
    const double density = mParentPlot->bufferDevicePixelRatio();
    if (m_picture.isNull() || area != m_area || ranges[0] != m_ranges[0] ||
        ranges[1] != m_ranges[1] || m_picture.width() != std::lround(area.width() * density)) {
        m_picture = Paint(map, area, density);
        m_area = area;
        std::copy(std::begin(ranges), std::end(ranges), std::begin(m_ranges));
    }
    painter->drawImage(area, m_picture);
}

QImage SheetMapSurface::Paint(const SheetMap& map, const QRect& area, double density) const {
    const int width = static_cast<int>(std::lround(area.width() * density));
    const int height = static_cast<int>(std::lround(area.height() * density));
    QImage picture(width, height, QImage::Format_ARGB32_Premultiplied);
    std::vector<QRgb> colours;
    for (const Colour& colour : ColoursOf(map)) {
        colours.push_back(ColourOf(colour).rgb());
    }
    const double stepsPerUnit = map.Levels.Steps / (map.Levels.High - map.Levels.Low);
    const auto colourOf = [&](double value) {
        return colours[static_cast<std::size_t>(
            std::clamp((value - map.Levels.Low) * stepsPerUnit, 0.0, map.Levels.Steps - 1.0))];
    };
    const auto columns = PlacesAlong(*mParentPlot->xAxis, map.X, area.left(), width, density);
    const auto rows = PlacesAlong(*mParentPlot->yAxis, map.Y, area.top(), height, density);
    std::vector<double> across(map.X.size()); // the values of a row of pixels at each X
    for (int y = 0; y < height; ++y) {
        auto* const line = reinterpret_cast<QRgb*>(picture.scanLine(y));
        std::fill(line, line + width, qRgba(0, 0, 0, 0));
        const auto& row = rows[static_cast<std::size_t>(y)];
        if (!row) {
            continue;
        }
        ValuesAcross(map, *row, across);
        for (int x = 0; x < width; ++x) {
            const auto& column = columns[static_cast<std::size_t>(x)];
            if (!column) {
                continue;
            }
            const double left = across[column->Index];
            const double right = across[std::min(column->Index + 1, across.size() - 1)];
            const double between = left + (right - left) * column->Part;
            if (map.Kinds.empty() && !std::isnan(between)) {
                line[x] = colourOf(between);
            } else if (const auto value = ValueAt(map, *column, *row)) {
                line[x] = colourOf(*value);
            }
        }
    }
    return picture;
}

} // namespace corvanta
