#pragma once

#include "platform/Chart2D.h"

#include <QByteArray>
#include <QColor>
#include <QFont>
#include <QSize>
#include <QString>

#include <functional>

class QCustomPlot;
class QImage;
class QPainter;
class QPalette;
class QPen;
class QPoint;
class QWidget;

namespace corvanta {

class ContextMenu;

// What every chart on the screen has in common: its paper, its pictures, its menu.

/// The colours of a chart but for those of its lines.
struct ChartPaper {
    QColor Background;
    QColor Ink;
    QColor Grid;

    [[nodiscard]] bool IsDark() const { return Background.lightness() < 128; }
};

[[nodiscard]] QColor ColourOf(const Colour& colour);

[[nodiscard]] QFont FontOf(const ChartFont& font);

/// The paper of a theme. `grid` is the colour of the grid on a light one.
[[nodiscard]] ChartPaper ThemePaper(const QPalette& palette, const QColor& grid);

void SetPaper(QCustomPlot& plot, const ChartPaper& paper);

/// Paints a plot on any painter, as large as told.
void PaintPlot(QCustomPlot& plot, QPainter& painter, const QSize& size);

inline constexpr int SwatchWidth = 16; ///< of what stands before a name, pixels
inline constexpr int SwatchDistance = 6;

/// Paints a piece of a line and its name to the right of and below a place, the name with the pen
/// of the painter. Answers the width.
int PaintNamedLine(QPainter& painter, const QPoint& at, const QPen& pen, const QString& name);

using PaintOnArea = std::function<void(QPainter& painter, const QSize& size)>;

[[nodiscard]] QImage PictureOf(const QSize& size, double density, const PaintOnArea& paint);

/// A picture as a file of the kind that a path ends in: ".png" or ".svg"; none for any other.
[[nodiscard]] QByteArray PictureFileOf(const QString& path, const PaintOnArea& paint);

/// What the entries of a chart's menu do.
struct ChartCommands {
    std::function<QImage(const QSize& size, double density)> Picture;
    std::function<QString()> Data;
    std::function<void(const QString& path)> SaveAs;
};

/// Adds the entries that copy and save a chart as it is on the screen.
void AddChartCommands(ContextMenu& menu, QWidget* chart, const ChartCommands& commands);

} // namespace corvanta
