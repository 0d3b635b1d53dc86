#include "desktop/DrawingView.h"

#include "desktop/ChartParts.h"

#include <QFontMetricsF>
#include <QPainter>

namespace corvanta {

RecordedSurface::RecordedSurface(double width, double height, const QFont& font)
    : DrawingSurface(width, height),
      m_font(font) {}

void RecordedSurface::Erase() {
    m_lines.clear();
    m_circles.clear();
    m_texts.clear();
}

void RecordedSurface::PaintLine(double x1, double y1, double x2, double y2, Colour colour) {
    m_lines.push_back({x1, y1, x2, y2, colour});
}

void RecordedSurface::PaintCircle(double x, double y, double radius, Colour colour) {
    m_circles.push_back({x, y, radius, colour});
}

void RecordedSurface::PaintText(double x, double y, const std::string& text, Colour colour) {
    m_texts.push_back({x, y, text, colour});
}

double RecordedSurface::TextWidth(const std::string& text) const {
    return QFontMetricsF(m_font).horizontalAdvance(QString::fromStdString(text));
}

void RecordedSurface::PaintOn(QPainter& painter, double penWidth, const QColor& paper) const {
    painter.setRenderHint(QPainter::Antialiasing);
    QPen pen;
    pen.setWidthF(penWidth);
    pen.setCapStyle(Qt::RoundCap);
    for (const Line& line : m_lines) {
        pen.setColor(ColourOf(line.Drawn));
        painter.setPen(pen);
        painter.drawLine(QPointF(line.X1, line.Y1), QPointF(line.X2, line.Y2));
    }
    painter.setBrush(Qt::NoBrush);
    for (const Circle& circle : m_circles) {
        pen.setColor(ColourOf(circle.Drawn));
        painter.setPen(pen);
        painter.drawEllipse(QPointF(circle.X, circle.Y), circle.Radius, circle.Radius);
    }
    painter.setFont(m_font);
    const QFontMetricsF metrics(m_font);
    const double ascent = metrics.ascent();
    for (const Text& text : m_texts) {
        if (text.Y < 1) {
            painter.fillRect(QRectF(text.X, text.Y, TextWidth(text.Written), metrics.height()),
                             paper);
        }
        painter.setPen(ColourOf(text.Drawn));
        painter.drawText(QPointF(text.X, text.Y + ascent), QString::fromStdString(text.Written));
    }
}

DrawingView::DrawingView(const QColor& paper, double penWidth, QWidget* parent)
    : QWidget(parent),
      m_paper(paper),
      m_penWidth(penWidth),
      m_surface(width(), height(), font()) {
    setMinimumSize(200, 160);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void DrawingView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    m_surface.Resize(width(), height());
}

void DrawingView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), m_paper);
    m_surface.PaintOn(painter, m_penWidth, m_paper);
}

} // namespace corvanta
