#pragma once

#include "desktop/ChartRanges.h"
#include "platform/Chart2D.h"

#include <QWidget>

#include <functional>
#include <optional>

class QCPItemLine;
class QCPItemText;
class QCustomPlot;

namespace corvanta {

class ChartRubberBand;
struct ChartPaper;

/// The chart on the screen, in the colours of the theme. The wheel and a rubber band zoom, a band
/// along one axis that axis alone, Esc drops the band; the middle button pans, a double-click fits
/// the axes again, the pointer reads out the nearest solved step, and the context menu copies and
/// saves. Pictures are black on white, whatever the theme: they go into reports.
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

    /// Brings the chart as it is now to the screen. An axis that is zoomed keeps its range as long
    /// as the axes keep their titles, values read off apart, and some of the line is in sight.
    void Refresh();

    [[nodiscard]] ChartPoint DataAt(double pixelX, double pixelY) const override;

    /// The points as tab-separated text under their titles, a column for each line beside the
    /// chart's own.
    [[nodiscard]] QString DataText() const;

    /// The whole line, whatever is zoomed on the screen.
    void PaintOnPaper(QPainter& painter, const QSize& size) const;

    /// Saves what is in sight as a picture, or the points as data, by the extension: ".png", ".svg"
    /// or any other for text. Throws Failure when the file can't be written.
    void SaveAs(const QString& path);

    [[nodiscard]] QCustomPlot& Plot() { return *m_plot; }

  protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;

  private:
    void ConnectPointer();
    void Colour(const ChartPaper& paper) const;
    void OnWhitePaper(const std::function<void()>& paint) const;
    void PaintWithCaption(QPainter& painter, const QSize& size) const;
    [[nodiscard]] QImage Picture(const QSize& size, double density) const;
    void Load() const;
    void LoadOthers() const;
    void ShowLine() const;
    void ShowMarkers() const;
    [[nodiscard]] ChartRanges RangesOfLine(bool other) const;
    [[nodiscard]] ChartRanges ShownRanges() const;
    void ShowRanges(const ChartRanges& ranges) const;
    void ShowWhole() const;
    void ZoomByWheel(const QWheelEvent& event) const;
    void ZoomToBand() const;
    void Hover(const QPointF& at);
    void PlaceReadout() const;
    void PanOrHover(QMouseEvent* event);
    void BeginRubberBand(QMouseEvent* event);
    void EndRubberBand(QMouseEvent* event);
    void ShowMenu(const QPoint& at);

    Clicked m_clicked;
    QCustomPlot* m_plot;
    ChartRubberBand* m_band;
    QCPItemLine* m_markerX;
    QCPItemLine* m_markerY;
    QCPItemText* m_readout;
    std::optional<ChartPoint> m_read; ///< the point below the pointer
    std::vector<ChartPoint> m_shown;  ///< the points on the screen
    std::vector<ChartSeries> m_shownOthers;
    QString m_shownTitles;
    std::optional<QPoint> m_pressed; ///< where the button that is down came to be so
};

} // namespace corvanta
