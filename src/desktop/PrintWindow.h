#pragma once

#include "desktop/DialogParts.h"
#include "shell/frmPrint.h"

#include <QMargins>

namespace corvanta {

class PagePreview;

/// The dialog that prints, on the screen: its settings, or the pages in their place.
class PrintWindow final : public ModalDialog {
    Q_OBJECT

  public:
    PrintWindow(Desktop& desktop, frmPrint& window);

    void Refresh();
    [[nodiscard]] bool Shows(const frmPrint& window) const { return &window == &m_window; }

  protected:
    void Cancel() override { m_window.cmdCancel_Click(); }
    void Help() override { m_window.cmdHelp_Click(); }
    void closeEvent(QCloseEvent* event) override;
    void done(int result) override;

  private:
    QWidget* BuildSettings();

    frmPrint& m_window;
    PagePreview* m_pages;
    QWidget* m_print = nullptr; ///< the button that prints
    QMargins m_settingsMargins;
    bool m_preview = false;
};

} // namespace corvanta
