#pragma once

#include "desktop/DialogParts.h"
#include "shell/frmExport.h"

namespace corvanta {

/// The export of results on the screen.
class ExportWindow final : public ModalDialog {
    Q_OBJECT

  public:
    ExportWindow(Desktop& desktop, frmExport& window);

    void Refresh() { m_binder.Show(); }
    [[nodiscard]] bool Shows(const frmExport& window) const { return &window == &m_window; }

  protected:
    void Cancel() override { m_window.cmdCancel_Click(); }
    void Help() override { m_window.cmdHelp_Click(); }

  private:
    frmExport& m_window;
};

} // namespace corvanta
