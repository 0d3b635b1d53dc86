#pragma once

#include "desktop/Binder.h"
#include "shell/frmAdjust.h"

#include <QWidget>

namespace corvanta {

class Desktop;
class NumberField;

/// The adjustment of the ride height on the screen, beside the main window.
class AdjustWindow final : public QWidget {
    Q_OBJECT

  public:
    AdjustWindow(Desktop& desktop, frmAdjust& window);

    void Refresh();
    [[nodiscard]] bool Shows(const frmAdjust& window) const { return &window == &m_window; }

  protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void moveEvent(QMoveEvent* event) override;

  private:
    QWidget* BuildHeights();

    Desktop& m_desktop;
    frmAdjust& m_window;
    Binder m_binder;
    NumberField* m_target = nullptr;
};

} // namespace corvanta
