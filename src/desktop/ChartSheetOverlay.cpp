#include "desktop/ChartSheetPainters.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace corvanta {

namespace {

constexpr int BoxPadding = 4;
constexpr int BoxDistance = 7; ///< from its place
constexpr int Corners = 4;
constexpr int OutOfSight = 1000; ///< points: worse than all that a box can hide

QColor WithAlpha(QColor colour, int alpha) {
    colour.setAlpha(alpha);
    return colour;
}

} // namespace

SheetOverlay::SheetOverlay(QCustomPlot* plot, const SheetLook& look)
    : QCPLayerable(plot, "overlay"),
      m_look(look) {}

QRect SheetOverlay::clipRect() const {
    return mParentPlot->axisRect()->rect().adjusted(0, 0, 1, 1);
}

void SheetOverlay::applyDefaultAntialiasingHint(QCPPainter* painter) const {
    painter->setAntialiasing(true);
}

QPointF SheetOverlay::PixelOf(const ChartPoint& point) const {
    return {mParentPlot->xAxis->coordToPixel(point.X), mParentPlot->yAxis->coordToPixel(point.Y)};
}

void SheetOverlay::draw(QCPPainter* painter) {
    const ChartSheet& sheet = m_look.Sheet;
    if (m_look.IsForPicture) {
        return;
    }
    if (sheet.Map && sheet.Map->Cross) {
        PaintCross(*painter, *sheet.Map->Cross);
    }
    QRect hoverBox;
    if (sheet.Hover) {
        PaintPlace(*painter, *sheet.Hover, QPen(WithAlpha(m_look.Paper.Ink, 130), 1));
        hoverBox = BoxOf(*sheet.Hover, m_hoverCorner);
    }
    if (sheet.Cursor) {
        PaintPlace(*painter, *sheet.Cursor, QPen(m_look.Accent, 1));
        const QRect box = BoxOf(*sheet.Cursor, m_cursorCorner);
        if (!box.intersects(hoverBox)) {
            PaintBox(*painter, *sheet.Cursor, box);
        }
    }
    if (sheet.Hover) {
        PaintBox(*painter, *sheet.Hover, hoverBox);
    }
}

/// Dark within light, to be seen on every colour of the scale.
void SheetOverlay::PaintCross(QPainter& painter, const ChartPoint& cross) const {
    const QPointF at = PixelOf(cross);
    const QRectF area = clipRect();
    constexpr double Radius = 5;
    painter.setBrush(Qt::NoBrush);
    for (const QPen& pen : {QPen(QColor(255, 255, 255, 190), 3), QPen(Qt::black, 1.2)}) {
        painter.setPen(pen);
        painter.drawLine(QPointF(area.left(), at.y()), QPointF(at.x() - Radius, at.y()));
        painter.drawLine(QPointF(at.x() + Radius, at.y()), QPointF(area.right(), at.y()));
        painter.drawLine(QPointF(at.x(), area.top()), QPointF(at.x(), at.y() - Radius));
        painter.drawLine(QPointF(at.x(), at.y() + Radius), QPointF(at.x(), area.bottom()));
        painter.drawEllipse(at, Radius, Radius);
    }
}

void SheetOverlay::PaintPlace(QPainter& painter, const SheetReadout& readout,
                              const QPen& pen) const {
    const QRectF area = clipRect();
    const QPointF at = PixelOf({readout.X, readout.Y.value_or(0)});
    if (m_look.Sheet.Map) {
        return;
    }
    const double x = std::round(at.x()) + 0.5; // a line of one pixel
    painter.setPen(pen);
    painter.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
    if (readout.Y) {
        constexpr double Radius = 3.5;
        painter.setPen(QPen(m_look.Paper.Background, 1.5));
        painter.setBrush(pen.color());
        painter.drawEllipse(at, Radius, Radius);
    }
}

int SheetOverlay::PointsBelow(const QRect& box) const {
    const auto inBox = [&](int count, const SheetCurve& curve) {
        return count + static_cast<int>(std::count_if(
                           curve.Points.begin(), curve.Points.end(), [&](const ChartPoint& point) {
                               return box.contains(PixelOf(point).toPoint());
                           }));
    };
    return std::accumulate(m_look.Sheet.Curves.begin(), m_look.Sheet.Curves.end(), 0, inBox);
}

/// Beside its place, where it hides the fewest points of the lines. It stays in its corner until
/// another is free of all: a box that jumps can't be read.
QRect SheetOverlay::BoxOf(const SheetReadout& readout, int& corner) const {
    if (readout.Lines.empty()) {
        return {};
    }
    const QFontMetrics metrics(mParentPlot->font());
    int width = 0;
    for (const std::string& line : readout.Lines) {
        width = std::max(width, metrics.horizontalAdvance(QString::fromStdString(line)));
    }
    const QSize size(width + 2 * BoxPadding,
                     static_cast<int>(readout.Lines.size()) * metrics.height() + 2 * BoxPadding);
    const QRect area = clipRect();
    const QPoint at = PixelOf({readout.X, readout.Y.value_or(0)}).toPoint();
    const bool free = m_look.Sheet.Map.has_value(); // beside the pointer in both directions
    const auto boxAt = [&](int where) {
        const bool left = (where & 1) != 0;
        const bool below = (where & 2) != 0;
        const int x = left ? at.x() - BoxDistance - size.width() : at.x() + BoxDistance;
        int y = below ? area.bottom() - BoxPadding - size.height() : area.top() + BoxPadding;
        if (free) {
            y = below ? at.y() + BoxDistance : at.y() - BoxDistance - size.height();
        }
        return QRect(QPoint(x, y), size);
    };
    const auto hides = [&](int where) {
        const QRect box = boxAt(where);
        return box.left() < area.left() || box.right() > area.right() || box.top() < area.top() ||
                       box.bottom() > area.bottom()
                   ? OutOfSight
                   : PointsBelow(box);
    };
    const int hidden = hides(corner);
    if (hidden > 0) {
        for (int where = 0, least = hidden; where < Corners; ++where) {
            const int count = hides(where);
            if (count < least && (count == 0 || hidden >= OutOfSight)) {
                least = count;
                corner = where;
            }
        }
    }
    // Where it fits nowhere it lies over its place, and in a chart smaller than itself not at all.
    QRect box = boxAt(corner);
    if (box.width() > area.width() || box.height() > area.height()) {
        return {};
    }
    box.moveLeft(std::clamp(box.left(), area.left(), area.right() - box.width()));
    box.moveTop(std::clamp(box.top(), area.top(), area.bottom() - box.height()));
    return box;
}

void SheetOverlay::PaintBox(QPainter& painter, const SheetReadout& readout,
                            const QRect& box) const {
    if (box.isEmpty()) {
        return;
    }
    const QFontMetrics metrics(mParentPlot->font());
    painter.setPen(QPen(m_look.Paper.Grid, 1));
    painter.setBrush(WithAlpha(m_look.Paper.Background, 225));
    painter.drawRoundedRect(QRectF(box).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    painter.setFont(mParentPlot->font());
    painter.setPen(m_look.Paper.Ink);
    int baseLine = box.top() + BoxPadding + metrics.ascent();
    for (const std::string& line : readout.Lines) {
        painter.drawText(box.left() + BoxPadding, baseLine, QString::fromStdString(line));
        baseLine += metrics.height();
    }
}

} // namespace corvanta
