#pragma once

#include "desktop/DialogParts.h"
#include "shell/frmCustomChannels.h"

namespace corvanta {

/// The editor of the custom table on the screen.
class CustomChannelsWindow final : public ModalDialog {
    Q_OBJECT

  public:
    CustomChannelsWindow(Desktop& desktop, frmCustomChannels& window);

    void Refresh();
    [[nodiscard]] bool Shows(const frmCustomChannels& window) const { return &window == &m_window; }

  protected:
    void Cancel() override { m_window.cmdCancel_Click(); }
    void Help() override { m_window.cmdHelp_Click(); }

  private:
    frmCustomChannels& m_window;
    QListWidget* m_selected = nullptr;
};

} // namespace corvanta
