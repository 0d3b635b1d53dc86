#pragma once

#include "shell/frmAbout.h"

#include <QDialog>

namespace corvanta {

class Desktop;

/// Name and version of the product: the splash at the start, which goes by itself or by a click,
/// and the about box.
class AboutWindow final : public QDialog {
    Q_OBJECT

  public:
    AboutWindow(Desktop& desktop, frmAbout& window);

    void Refresh() {}
    [[nodiscard]] bool Shows(const frmAbout& window) const {
        return &window == &m_window && window.IsSplash == m_splash;
    }

  protected:
    void done(int result) override;

  private:
    Desktop& m_desktop;
    frmAbout& m_window;
    bool m_splash;
};

} // namespace corvanta
