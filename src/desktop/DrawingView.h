#pragma once

#include "platform/DrawingSurface.h"

#include <QFont>
#include <QWidget>

#include <string>
#include <vector>

class QPainter;

namespace corvanta {

/// Keeps what is drawn on it and paints it as often as a window asks, antialiased.
class RecordedSurface final : public DrawingSurface {
  public:
    RecordedSurface(double width, double height, const QFont& font);

    /// Paints the record on paper of a colour. The pen is in the surface's own units. The texts of
    /// the top edge, a legend, cover the lines behind them.
    void PaintOn(QPainter& painter, double penWidth, const QColor& paper) const;

  protected:
    void Erase() override;
    void PaintLine(double x1, double y1, double x2, double y2, Colour colour) override;
    void PaintCircle(double x, double y, double radius, Colour colour) override;
    void PaintText(double x, double y, const std::string& text, Colour colour) override;
    [[nodiscard]] double TextWidth(const std::string& text) const override;

  private:
    struct Line {
        double X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
        Colour Drawn;
    };
    struct Circle {
        double X = 0, Y = 0, Radius = 0;
        Colour Drawn;
    };
    struct Text {
        double X = 0, Y = 0;
        std::string Written;
        Colour Drawn;
    };

    QFont m_font;
    std::vector<Line> m_lines;
    std::vector<Circle> m_circles;
    std::vector<Text> m_texts;
};

/// A drawing in a window, on its own paper whatever the theme.
class DrawingView : public QWidget {
    Q_OBJECT

  public:
    DrawingView(const QColor& paper, double penWidth, QWidget* parent = nullptr);

    /// The surface to draw on, of the size of the view; `update` shows what was drawn.
    [[nodiscard]] RecordedSurface& Surface() { return m_surface; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QColor m_paper;
    double m_penWidth;
    RecordedSurface m_surface;
};

} // namespace corvanta
