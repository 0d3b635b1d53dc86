#pragma once

#include "desktop/Binder.h"
#include "shell/frmWorkbench.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

#include <array>

class QSlider;
class QToolButton;

namespace corvanta {

class Desktop;

/// Both travels at once: a place in a field.
class TravelPad final : public QWidget {
    Q_OBJECT

  public:
    TravelPad(Desktop& desktop, frmWorkbench& window, QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override { return {110, 72}; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

  private:
    void Take(const QPointF& at);
    [[nodiscard]] QRectF Field() const;

    Desktop& m_desktop;
    frmWorkbench& m_window;
};

/// The travel of the workbench: a slider and a field for each, a pad for both, and what plays.
class TravelPanel final : public QWidget {
    Q_OBJECT

  public:
    TravelPanel(Desktop& desktop, frmWorkbench& window, Binder& binder, QWidget* parent);

    void Refresh();

    /// Plays what was played last, or stops.
    void TogglePlay();

  private:
    QSlider* Slider(TravelSlider& travel, void (frmWorkbench::*moved)(int), const char* name);
    QToolButton* PlayButton(PlayMode mode, const QString& text, const QString& hint);
    void Play(PlayMode mode);
    static void Show(QSlider& slider, const TravelSlider& travel);

    Desktop& m_desktop;
    frmWorkbench& m_window;
    QSlider* m_bump;
    QSlider* m_rack;
    TravelPad* m_pad;
    std::array<QToolButton*, 3> m_buttons{};
    PlayMode m_last = PlayMode::Heave;
    QTimer m_timer;
    QElapsedTimer m_clock;
};

} // namespace corvanta
