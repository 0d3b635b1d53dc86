#include "desktop/PrintWindow.h"

#include "desktop/Desktop.h"
#include "desktop/PagePreview.h"
#include "desktop/WindowPlaces.h"

#include <QCloseEvent>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace corvanta {

PrintWindow::PrintWindow(Desktop& desktop, frmPrint& window)
    : ModalDialog(desktop, window, "frmPrint"),
      m_window(window),
      m_pages(new PagePreview(desktop.Pages(), this)) {
    auto* layout = new QVBoxLayout(this);
    m_settingsMargins = layout->contentsMargins();
    layout->addWidget(BuildSettings());
    layout->addWidget(m_pages, 1);
    m_binder.Bind(static_cast<QWidget*>(m_pages), window.picPages);
    QDialogButtonBox* buttons = Foot(
        window.cmdOK, "cmdOK", [this] { m_window.cmdOK_Click(); }, window.cmdCancel,
        window.cmdHelp);
    AddButton(*buttons, window.cmdPreview, QDialogButtonBox::ActionRole, "cmdPreview",
              [this] { m_window.cmdPreview_Click(); });
    AddButton(*buttons, window.cmdSetup, QDialogButtonBox::ActionRole, "cmdSetup",
              [this] { m_window.cmdSetup_Click(); });
    layout->addWidget(buttons);
    m_print = buttons->findChild<QPushButton*>("cmdOK");
    ShowInPlace(false);
}

QWidget* PrintWindow::BuildSettings() {
    auto* settings = new QWidget(this);
    auto* layout = new QVBoxLayout(settings);
    layout->setContentsMargins(0, 0, 0, 0);
    const auto addOption = [&](OptionButton& option, OptionButton& other, const char* name) {
        auto* button = new QRadioButton(settings);
        button->setObjectName(name);
        m_binder.Bind(button, option, [this, &other] {
            other.Selected = false;
            m_window.optPrint_Click();
        });
        layout->addWidget(button);
    };
    addOption(m_window.optPrintCurrent, m_window.optSelectedTables, "optPrintCurrent");
    addOption(m_window.optSelectedTables, m_window.optPrintCurrent, "optSelectedTables");
    auto* tables = new QListWidget(settings);
    tables->setObjectName("tvwTables");
    tables->setMinimumSize(320, 230);
    // The click turns the tick over by itself; the window does it again from the former state.
    BindCheckList(m_binder, tables, m_window.tvwTables, [this](int row) {
        CheckListRow& clicked = m_window.tvwTables.Rows[static_cast<std::size_t>(row)];
        clicked.Checked = !clicked.Checked;
        m_window.tvwTables_Click(row);
    });
    layout->addWidget(tables, 1);
    const auto addCheck = [&](CheckBox& check, const char* name) {
        auto* box = new QCheckBox(settings);
        box->setObjectName(name);
        m_binder.Bind(box, check, [] {});
        layout->addWidget(box);
    };
    addCheck(m_window.chkPageThrow, "chkPageThrow");
    addCheck(m_window.chkChassisDetails, "chkChassisDetails");
    addCheck(m_window.chkPrintCoordinates, "chkPrintCoordinates");
    m_binder.OnShow([this, settings] { settings->setVisible(!m_window.picPages.Visible); });
    return settings;
}

void PrintWindow::Refresh() {
    m_binder.Show();
    if (m_preview != m_window.picPages.Visible) {
        m_preview = m_window.picPages.Visible;
        constexpr int Margin = frmPrint::PageMargin / TwipsPerPixel;
        layout()->setContentsMargins(m_preview ? QMargins(Margin, Margin, Margin, Margin)
                                               : m_settingsMargins);
        const WindowFrame frame = m_window.Frame; // which resizing changes
        layout()->activate();
        PlaceWindow(*this, frame);
        m_pages->Refresh();
        (m_preview ? static_cast<QWidget*>(m_pages) : m_print)->setFocus();
    }
}

void PrintWindow::done(int result) {
    if (m_window.picPages.Visible) {
        m_desktop.Handle([this] { m_window.cmdCancel_Click(); }); // back to the settings
        return;
    }
    ModalDialog::done(result);
}

void PrintWindow::closeEvent(QCloseEvent* event) {
    event->ignore(); // what the close box does is told to `done`
    reject();
}

} // namespace corvanta
