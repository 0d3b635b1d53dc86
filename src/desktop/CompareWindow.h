#pragma once

#include "desktop/Binder.h"
#include "shell/frmCompare.h"

#include <QWidget>

namespace corvanta {

class Desktop;
class GridView;

/// The comparison of designs on the screen, beside the other windows.
class CompareWindow final : public QWidget {
    Q_OBJECT

  public:
    CompareWindow(Desktop& desktop, frmCompare& window);

    void Refresh();
    [[nodiscard]] bool Shows(const frmCompare& window) const { return &window == &m_window; }

  protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    QWidget* BuildDesigns();
    QWidget* BuildButtons();

    Desktop& m_desktop;
    frmCompare& m_window;
    Binder m_binder;
    GridView* m_table = nullptr;
};

} // namespace corvanta
