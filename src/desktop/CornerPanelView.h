#pragma once

#include "desktop/DrawingView.h"
#include "shell/CornerPanel.h"

#include <QPointF>

#include <array>
#include <functional>
#include <optional>

class QToolButton;

namespace corvanta {

/// The drawing of the corner panel under the mouse and the keyboard. A handle is dragged with the
/// left button, with X, Y or Z held along that axis, with Shift in whole steps; Escape takes it
/// back. Dragging elsewhere turns the view, with the middle button or with Shift it moves it; the
/// wheel zooms about the pointer, a double-click fits. Arrows turn, + and - zoom, 1, 2, 3 and 0
/// choose a standard view, F fits.
class CornerCanvas final : public DrawingView {
    Q_OBJECT

  public:
    /// Runs an event with all that follows it, as `Desktop::Handle` does.
    using Handler = std::function<void(const std::function<void()>&)>;

    CornerCanvas(CornerPanel& panel, Handler handle, QWidget* parent);

    /// Does something with the panel as an event, and shows the outcome.
    void Do(const std::function<void()>& event);

    /// The same for what is about the view of the panel alone, which no other window shows.
    void Look(const std::function<void()>& change);

  signals:
    /// Something about the view of the panel may have changed.
    void Changed();

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;

  private:
    enum class Hand { None, Handle, Turn, Move };

    [[nodiscard]] bool IsOwnKey(int key) const;
    bool DoViewKey(int key);
    void AskForWork();
    void Work();
    void Hover(const QPointF& at);
    void DragAgain();
    void ShowCursor();

    CornerPanel& m_panel;
    Handler m_handle;
    Hand m_hand = Hand::None;
    QPointF m_last;                  ///< where the pointer was at the last step of a turn or move
    std::optional<QPointF> m_newest; ///< where the pointer went since work was last done
    bool m_asked = false;            ///< work is on its way
    CornerDragRule m_rule;
};

/// The corner panel of the workbench: the standard views as buttons above the drawing.
class CornerPanelView final : public QWidget {
    Q_OBJECT

  public:
    CornerPanelView(CornerPanel& panel, CornerCanvas::Handler handle, QWidget* parent = nullptr);
    CornerPanelView(const CornerPanelView&) = delete;
    CornerPanelView& operator=(const CornerPanelView&) = delete;
    CornerPanelView(CornerPanelView&&) = delete;
    CornerPanelView& operator=(CornerPanelView&&) = delete;
    ~CornerPanelView() override;

    /// Brings to the screen what the panel shows now.
    void Refresh();
    [[nodiscard]] CornerCanvas& Canvas() { return *m_canvas; }

  private:
    void ShowSide();

    CornerPanel& m_panel;
    CornerCanvas* m_canvas;
    std::array<QToolButton*, 4> m_sides{};
};

} // namespace corvanta
