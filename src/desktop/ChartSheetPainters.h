#pragma once

#include "desktop/ChartParts.h"
#include "platform/ChartSheet.h"

#include <QImage>

#include <qcustomplot.h>

namespace corvanta {

// The parts of a chart of the workbench that the library lays out and calls to paint. All read the
// sheet and the paper of their view, which outlives them.

struct SheetLook {
    ChartSheet Sheet;
    ChartPaper Paper;
    QColor Accent;             ///< of the cursor
    bool HasLegend = false;    ///< names the lines below the axes
    bool IsForPicture = false; ///< without what follows the pointer
};

/// Ticks on round numbers, all labelled with the same decimals.
class EvenTicker final : public QCPAxisTicker {
  public:
    explicit EvenTicker(const SheetLook& look) : m_look(look) {}

  protected:
    double getTickStep(const QCPRange& range) override;
    int getSubTickCount(double tickStep) override;
    QString getTickLabel(double tick, const QLocale& locale, QChar formatChar,
                         int precision) override;

  private:
    const SheetLook& m_look;
    double m_step = 1;
};

/// The title with the mark that says whether the target holds.
class SheetHead final : public QCPLayoutElement {
  public:
    SheetHead(QCustomPlot* plot, const SheetLook& look);

    [[nodiscard]] QSize minimumOuterSizeHint() const override;

  protected:
    void applyDefaultAntialiasingHint(QCPPainter* painter) const override;
    void draw(QCPPainter* painter) override;

  private:
    int PaintMark(QPainter& painter, const QRect& area) const;
    int PaintRemark(QPainter& painter, const QRect& area) const;

    const SheetLook& m_look;
};

/// The names of the lines, or of a map's hatching, flowing over as many rows as they need.
class SheetLegend final : public QCPLayoutElement {
  public:
    SheetLegend(QCustomPlot* plot, const SheetLook& look);

    [[nodiscard]] QSize minimumOuterSizeHint() const override;
    [[nodiscard]] QSize maximumOuterSizeHint() const override;

  protected:
    void applyDefaultAntialiasingHint(QCPPainter* painter) const override;
    void draw(QCPPainter* painter) override;

  private:
    /// Goes through the entries, each told its place below the legend's top; answers the height.
    using Entry = std::function<void(const QPoint& at, const SheetCurve* curve)>;
    [[nodiscard]] int Flow(const Entry& entry) const;
    [[nodiscard]] int FlowKinds(const SheetMap& map, const Entry& entry) const;
    [[nodiscard]] int FlowCurves(const std::vector<SheetCurve>& curves, const Entry& entry) const;

    const SheetLook& m_look;
};

/// The bands and lines.
class SheetLines final : public QCPLayerable {
  public:
    SheetLines(QCustomPlot* plot, const SheetLook& look);

  protected:
    [[nodiscard]] QRect clipRect() const override;
    void applyDefaultAntialiasingHint(QCPPainter* painter) const override;
    void draw(QCPPainter* painter) override;

  private:
    void PaintBand(QPainter& painter, const SheetBand& band) const;
    void PaintCurve(QPainter& painter, const SheetCurve& curve) const;
    [[nodiscard]] QPolygonF LineOf(const std::vector<ChartPoint>& points) const;

    const SheetLook& m_look;
};

/// The values of a map in even colour steps, straight between the positions, so that the borders
/// of the steps are lines of equal value. What can't be reached is hatched.
class SheetMapSurface final : public QCPLayerable {
  public:
    SheetMapSurface(QCustomPlot* plot, const SheetLook& look);

    /// The map is another than that painted last.
    void Forget() { m_picture = {}; }

  protected:
    [[nodiscard]] QRect clipRect() const override;
    void applyDefaultAntialiasingHint(QCPPainter* painter) const override;
    void draw(QCPPainter* painter) override;

  private:
    [[nodiscard]] QImage Paint(const SheetMap& map, const QRect& area, double density) const;

    const SheetLook& m_look;
    QImage m_picture;
    QRect m_area;
    AxisRange m_ranges[2];
};

/// What follows the travel and the pointer: lines, boxes, the cross of a map. It has a layer of its
/// own, so that nothing else is painted anew when they move.
class SheetOverlay final : public QCPLayerable {
  public:
    SheetOverlay(QCustomPlot* plot, const SheetLook& look);

  protected:
    [[nodiscard]] QRect clipRect() const override;
    void applyDefaultAntialiasingHint(QCPPainter* painter) const override;
    void draw(QCPPainter* painter) override;

  private:
    void PaintCross(QPainter& painter, const ChartPoint& cross) const;
    void PaintPlace(QPainter& painter, const SheetReadout& readout, const QPen& pen) const;
    void PaintBox(QPainter& painter, const SheetReadout& readout, const QRect& box) const;
    [[nodiscard]] QRect BoxOf(const SheetReadout& readout, int& corner) const;
    [[nodiscard]] int PointsBelow(const QRect& box) const;
    [[nodiscard]] QPointF PixelOf(const ChartPoint& point) const;

    const SheetLook& m_look;
    int m_cursorCorner = 0; ///< on which side of its place a box lies: bit 0 left, bit 1 below
    int m_hoverCorner = 0;
};

} // namespace corvanta
