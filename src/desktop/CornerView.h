#pragma once

#include "desktop/DrawingView.h"
#include "results/CWireframe.h"

namespace corvanta {

class Desktop;

/// View 15 on the screen: the four views, named in small type in their corners. Dragging turns the
/// free view, with the middle button it moves it, the wheel zooms it about the pointer, a
/// double-click brings back the standard one.
class CornerView final : public DrawingView {
    Q_OBJECT

  public:
    explicit CornerView(Desktop& desktop, QWidget* parent = nullptr);

    /// Saves the drawing as it is, ".svg" as a drawing, any other as a picture. Throws Failure when
    /// it can't be written.
    void SaveAs(const QString& path);

  protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    [[nodiscard]] bool InFreeView(const QPointF& at) const;
    /// A way or place on the view in the scale of its surface.
    [[nodiscard]] Point2D InScale(const QPointF& way);
    void ShowStandardView();
    void DrawAgain();

    Desktop& m_desktop;
    QPointF m_last; ///< where the pointer was at the last step of a drag
    bool m_dragging = false;
};

} // namespace corvanta
