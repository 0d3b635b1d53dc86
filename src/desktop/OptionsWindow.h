#pragma once

#include "desktop/Binder.h"
#include "shell/frmOptions.h"

#include <QDialog>

namespace corvanta {

class Desktop;

/// The options on the screen.
class OptionsWindow final : public QDialog {
    Q_OBJECT

  public:
    OptionsWindow(Desktop& desktop, frmOptions& window);

    void Refresh() { m_binder.Show(); }
    [[nodiscard]] bool Shows(const frmOptions& window) const { return &window == &m_window; }

  protected:
    void done(int result) override;
    void moveEvent(QMoveEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QWidget* Group(const Control& frame,
                   const std::vector<std::pair<OptionButton*, const char*>>& options);

    Desktop& m_desktop;
    frmOptions& m_window;
    Binder m_binder;
};

} // namespace corvanta
