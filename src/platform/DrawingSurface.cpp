#include "platform/DrawingSurface.h"

namespace corvanta {

namespace {

/// Nothing can be seen on a surface without an extent, so any unit will do there.
double UnitOf(double size, double scale) {
    return size == 0 || scale == 0 ? 1 : size / scale; // exactly 0: not laid out yet
}

} // namespace

DrawingSurface::DrawingSurface(double width, double height)
    : m_width(width),
      m_height(height),
      m_scaleWidth(width),
      m_scaleHeight(height) {}

double DrawingSurface::UnitX() const {
    return UnitOf(m_width, m_scaleWidth);
}

double DrawingSurface::UnitY() const {
    return UnitOf(m_height, m_scaleHeight);
}

void DrawingSurface::Resize(double width, double height) {
    m_width = m_scaleWidth = width;
    m_height = m_scaleHeight = height;
}

void DrawingSurface::DrawLine(double x1, double y1, double x2, double y2, Colour colour) {
    PaintLine(x1 * UnitX(), y1 * UnitY(), x2 * UnitX(), y2 * UnitY(), colour);
}

void DrawingSurface::DrawCircle(double x, double y, double radius, Colour colour) {
    PaintCircle(x * UnitX(), y * UnitY(), radius, colour);
}

void DrawingSurface::Print(const std::string& text) {
    PaintText(m_currentX * UnitX(), m_currentY * UnitY(), text, m_foreColour);
    m_currentX += TextWidth(text) / UnitX();
}

} // namespace corvanta
