#pragma once

#include <cstdint>
#include <string>

namespace corvanta {

struct Colour {
    std::uint8_t Red = 0;
    std::uint8_t Green = 0;
    std::uint8_t Blue = 0;

    friend bool operator==(const Colour&, const Colour&) = default;
};

/// Something to draw on: a part of a window, a page, a record of what was drawn. Callers draw in
/// the surface's scale, which they may set: it runs from 0 at the left and at the top to the scale
/// width and height at the right and at the bottom, either of which may be negative. A new surface
/// has its own size as its scale. What paints is told places in the surface's own units, down from
/// the top left corner.
class DrawingSurface {
  public:
    DrawingSurface(const DrawingSurface&) = delete;
    DrawingSurface& operator=(const DrawingSurface&) = delete;
    DrawingSurface(DrawingSurface&&) = delete;
    DrawingSurface& operator=(DrawingSurface&&) = delete;
    virtual ~DrawingSurface() = default;

    /// Size in the surface's own units, on a screen its pixels before any magnification.
    [[nodiscard]] double Width() const { return m_width; }
    [[nodiscard]] double Height() const { return m_height; }

    /// Another size, which becomes the scale too.
    void Resize(double width, double height);

    [[nodiscard]] double ScaleWidth() const { return m_scaleWidth; }
    [[nodiscard]] double ScaleHeight() const { return m_scaleHeight; }
    void SetScaleWidth(double width) { m_scaleWidth = width; }
    void SetScaleHeight(double height) { m_scaleHeight = height; }

    /// Where the next text begins: the upper left corner of its first letter.
    [[nodiscard]] double CurrentX() const { return m_currentX; }
    [[nodiscard]] double CurrentY() const { return m_currentY; }
    void SetCurrentX(double x) { m_currentX = x; }
    void SetCurrentY(double y) { m_currentY = y; }

    /// The colour of text.
    void SetForeColour(Colour colour) { m_foreColour = colour; }

    void Clear() { Erase(); }
    void DrawLine(double x1, double y1, double x2, double y2, Colour colour);

    /// A ring with its radius in the surface's own units, so that it is round in any scale.
    void DrawCircle(double x, double y, double radius, Colour colour);

    /// How wide a text will be, in the surface's own units.
    [[nodiscard]] double WidthOf(const std::string& text) const { return TextWidth(text); }

    /// Writes a text, UTF-8, at the current position and leaves that behind it.
    void Print(const std::string& text);

  protected:
    DrawingSurface(double width, double height);

    virtual void Erase() = 0;
    virtual void PaintLine(double x1, double y1, double x2, double y2, Colour colour) = 0;
    virtual void PaintCircle(double x, double y, double radius, Colour colour) = 0;
    virtual void PaintText(double x, double y, const std::string& text, Colour colour) = 0;

    /// Width of a text as it would be painted, blanks at its end counted.
    [[nodiscard]] virtual double TextWidth(const std::string& text) const = 0;

  private:
    /// The surface's own units in one unit of the scale.
    [[nodiscard]] double UnitX() const;
    [[nodiscard]] double UnitY() const;

    double m_width;
    double m_height;
    double m_scaleWidth;
    double m_scaleHeight;
    double m_currentX = 0;
    double m_currentY = 0;
    Colour m_foreColour;
};

} // namespace corvanta
