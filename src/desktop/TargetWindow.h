#pragma once

#include "desktop/DialogParts.h"
#include "shell/frmTarget.h"

namespace corvanta {

class NumberField;

/// The target of a curve on the screen.
class TargetWindow final : public ModalDialog {
    Q_OBJECT

  public:
    TargetWindow(Desktop& desktop, frmTarget& window);

    void Refresh();
    [[nodiscard]] bool Shows(const frmTarget& window) const { return &window == &m_window; }

  protected:
    void Cancel() override { m_window.cmdCancel_Click(); }
    void Help() override { m_window.cmdHelp_Click(); }

  private:
    QWidget* BuildFields();

    frmTarget& m_window;
};

} // namespace corvanta
