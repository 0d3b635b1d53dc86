#pragma once

#include "desktop/DialogParts.h"
#include "shell/frmOptions.h"

#include <utility>
#include <vector>

namespace corvanta {

/// The options on the screen.
class OptionsWindow final : public ModalDialog {
    Q_OBJECT

  public:
    OptionsWindow(Desktop& desktop, frmOptions& window);

    void Refresh() { m_binder.Show(); }
    [[nodiscard]] bool Shows(const frmOptions& window) const { return &window == &m_window; }

  protected:
    void Cancel() override { m_window.cmdCancel_Click(); }
    void Help() override { m_window.cmdHelp_Click(); }

  private:
    QWidget* Group(const Control& frame,
                   const std::vector<std::pair<OptionButton*, const char*>>& options);

    frmOptions& m_window;
};

} // namespace corvanta
