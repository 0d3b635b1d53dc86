#pragma once

#include "desktop/DialogParts.h"
#include "shell/frmRecovery.h"

class QTreeWidget;

namespace corvanta {

/// The list of unsaved work on the screen.
class RecoveryWindow final : public ModalDialog {
    Q_OBJECT

  public:
    RecoveryWindow(Desktop& desktop, frmRecovery& window);

    void Refresh();
    [[nodiscard]] bool Shows(const frmRecovery& window) const { return &window == &m_window; }

  protected:
    void Cancel() override { m_window.cmdLater_Click(); }
    void Help() override { m_window.cmdHelp_Click(); }

  private:
    frmRecovery& m_window;
    QTreeWidget* m_list = nullptr;
};

} // namespace corvanta
