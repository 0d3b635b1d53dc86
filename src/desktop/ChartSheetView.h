#pragma once

#include "desktop/ChartParts.h"
#include "platform/ChartSheet.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

class QCPLayoutGrid;
class QCPColorScale;
class QCustomPlot;

namespace corvanta {

class ContextMenu;
class SheetMapSurface;
struct SheetLook;

/// A chart of the workbench on the screen, in the colours of the theme: it paints a sheet and tells
/// what the pointer does to it.
class ChartSheetView final : public QWidget {
    Q_OBJECT

  public:
    /// What the pointer does. Places are in the units of the axes and within them.
    struct Events {
        /// The pointer came to a place, or left the axes.
        std::function<void(std::optional<ChartPoint> place)> Hovered;
        /// A click or drag with the left button; `held` until the button goes up.
        std::function<void(ChartPoint place, bool held)> TravelMoved;
        /// The menu is about to be shown: what the window has to say goes first.
        std::function<void(ContextMenu& menu)> FillMenu;
    };

    explicit ChartSheetView(Events events, QWidget* parent = nullptr);
    ChartSheetView(const ChartSheetView&) = delete;
    ChartSheetView& operator=(const ChartSheetView&) = delete;
    ChartSheetView(ChartSheetView&&) = delete;
    ChartSheetView& operator=(ChartSheetView&&) = delete;
    ~ChartSheetView() override;

    /// Brings a sheet to the screen with the next event. Where no more than cursor, cross or hover
    /// differ from the one before, nothing else is painted.
    void Show(const ChartSheet& sheet);

    /// The sheet as a picture, black on white, without cursor and hover, its lines named.
    [[nodiscard]] QImage Picture(const QSize& size, double density);

    /// Paints the same on any painter, as large as told.
    void PaintOnPaper(QPainter& painter, const QSize& size);

    /// Saves a picture or the data, by the extension: ".png", ".svg" or any other for text. Throws
    /// Failure when the file can't be written.
    void SaveAs(const QString& path);

    [[nodiscard]] QCustomPlot& Plot() { return *m_plot; }

    [[nodiscard]] QSize minimumSizeHint() const override { return {160, 110}; }

  protected:
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    void SetUpAxes();
    void ConnectPointer();
    void SetColours();
    void LoadSheet();
    void KeepScale();
    void LoadMap();
    void LoadSize(const QSize& size);
    void Replot();
    void OnWhitePaper(const PaintOnArea& paint, QPainter& painter, const QSize& size);
    void PressOrDrag(const QPointF& at, bool held);
    void Hover(std::optional<ChartPoint> place);
    [[nodiscard]] bool IsOnAxes(const QPointF& at) const;
    [[nodiscard]] ChartPoint PlaceAt(const QPointF& at) const;
    void ShowMenu(const QPoint& at);

    Events m_events;
    std::unique_ptr<SheetLook> m_look;
    QCustomPlot* m_plot;
    QCPLayoutGrid* m_body; ///< the axes, and the scale of a map beside them
    SheetMapSurface* m_surface;
    QCPColorScale* m_scale = nullptr; ///< while there is a map
    std::optional<ChartPoint> m_hovered;
    bool m_held = false;
    bool m_late = true; ///< the plot does not show the sheet yet
};

/// Paints a sheet on any painter as large as told, black on white, its lines named.
void PaintSheet(const ChartSheet& sheet, QPainter& painter, const QSize& size);

} // namespace corvanta
