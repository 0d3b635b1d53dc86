#include "desktop/ExportWindow.h"

#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace corvanta {

ExportWindow::ExportWindow(Desktop& desktop, frmExport& window)
    : ModalDialog(desktop, window, "frmExport"),
      m_window(window) {
    auto* layout = new QVBoxLayout(this);
    for (std::size_t n = 0; n < window.optExport.size(); ++n) {
        auto* option = new QRadioButton(this);
        option->setObjectName(QString("optExport%1").arg(n));
        m_binder.Bind(option, window.optExport[n], [this, n] {
            for (std::size_t other = 0; other < m_window.optExport.size(); ++other) {
                m_window.optExport[other].Selected = other == n;
            }
            m_window.optExport_Click();
        });
        layout->addWidget(option);
    }
    auto* views = new QListWidget(this);
    views->setObjectName("tvwViews");
    views->setMinimumSize(320, 250);
    BindCheckList(m_binder, views, window.tvwViews, [](int) {});
    layout->addWidget(views, 1);
    auto* header = new QCheckBox(this);
    header->setObjectName("chkHeader");
    m_binder.Bind(header, window.chkHeader, [] {});
    layout->addWidget(header);
    QDialogButtonBox* buttons = Foot(
        window.cmdExport, "cmdExport", [this] { m_window.cmdExport_Click(); }, window.cmdCancel,
        window.cmdHelp);
    layout->addWidget(buttons);
    ShowInPlace(false);
}

} // namespace corvanta
