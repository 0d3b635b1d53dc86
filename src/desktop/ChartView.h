#pragma once

#include "platform/Chart2D.h"

#include <QWidget>

#include <functional>
#include <memory>

class QCPItemLine;
class QCPItemText;
class QCustomPlot;

namespace corvanta {

/// The chart on the screen, in the colours of the theme. The wheel and a rubber band zoom, the
/// middle button pans, a double-click fits the axes again, the pointer reads out the nearest solved
/// step, and the context menu copies and saves.
class ChartView final : public QWidget, public Chart2D {
    Q_OBJECT

  public:
    /// A click, twips right and down from the chart's top left corner.
    using Clicked = std::function<void(double x, double y)>;

    explicit ChartView(Clicked clicked, QWidget* parent = nullptr);
    ChartView(const ChartView&) = delete;
    ChartView& operator=(const ChartView&) = delete;
    ChartView(ChartView&&) = delete;
    ChartView& operator=(ChartView&&) = delete;
    ~ChartView() override;

    /// Brings the chart as it is now to the screen. Points that differ from those shown fit the
    /// axes anew.
    void Refresh();

    [[nodiscard]] ChartPoint DataAt(double pixelX, double pixelY) const override;

    /// The points as tab-separated text under their titles.
    [[nodiscard]] QString DataText() const;

    /// The whole line, black on white: for paper and for drawings in files.
    void PaintOnPaper(QPainter& painter, const QSize& size) const;

    /// Saves as a picture or as data, by the extension: ".png", ".svg" or any other for text.
    /// Throws Failure when the file can't be written.
    void SaveAs(const QString& path);

    [[nodiscard]] QCustomPlot& Plot() { return *m_plot; }

  protected:
    void changeEvent(QEvent* event) override;

  private:
    struct Paper {
        QColor Background;
        QColor Ink;
        QColor Grid;
    };

    [[nodiscard]] Paper ThemePaper() const;
    void Colour(const Paper& paper) const;
    void Load() const;
    void ShowMarkers() const;
    void Fit() const;
    void Hover(const QPointF& at);
    void PanOrHover(QMouseEvent* event);
    void BeginRubberBand(QMouseEvent* event);
    void EndRubberBand(QMouseEvent* event);
    void ShowMenu(const QPoint& at);
    void AskAndSave();

    Clicked m_clicked;
    QCustomPlot* m_plot;
    QCPItemLine* m_markerX;
    QCPItemLine* m_markerY;
    QCPItemText* m_readout;
    mutable std::vector<ChartPoint> m_shown; ///< what the library holds of the series
    mutable QString m_shownTitles;
    QPoint m_pressed;
};

} // namespace corvanta
