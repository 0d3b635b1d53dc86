#include "desktop/RecoveryWindow.h"

#include "desktop/Desktop.h"

#include <QHeaderView>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace corvanta {

namespace {

constexpr QSize ListSize{620, 220};

} // namespace

RecoveryWindow::RecoveryWindow(Desktop& desktop, frmRecovery& window)
    : ModalDialog(desktop, window, "frmRecovery"),
      m_window(window) {
    auto* layout = new QVBoxLayout(this);
    auto* head = new QLabel(this);
    m_binder.Bind(head, window.labHead);
    layout->addWidget(head);
    m_list = new QTreeWidget(this);
    m_list->setObjectName("lstWork");
    m_list->setMinimumSize(ListSize);
    m_list->setRootIsDecorated(false);
    m_list->setHeaderLabels({tr("Suspension"), tr("Folder"), tr("Kept")});
    connect(m_list, &QTreeWidget::currentItemChanged, this, [this](const QTreeWidgetItem* item) {
        m_window.Selected = m_list->indexOfTopLevelItem(const_cast<QTreeWidgetItem*>(item));
    });
    connect(m_list, &QTreeWidget::itemActivated, this,
            [this] { m_desktop.Handle([this] { m_window.cmdOpen_Click(); }); });
    layout->addWidget(m_list, 1);
    auto* buttons = new QDialogButtonBox(this);
    AddButton(*buttons, window.cmdOpen, QDialogButtonBox::AcceptRole, "cmdOpen", [this] {
        m_window.cmdOpen_Click();
    })->setDefault(true);
    AddButton(*buttons, window.cmdDelete, QDialogButtonBox::DestructiveRole, "cmdDelete", [this] {
        m_window.cmdDelete_Click();
    })->setAutoDefault(false);
    AddButton(*buttons, window.cmdLater, QDialogButtonBox::RejectRole, "cmdLater",
              [this] { Cancel(); });
    AddButton(*buttons, window.cmdHelp, QDialogButtonBox::HelpRole, "cmdHelp", [this] { Help(); });
    layout->addWidget(buttons);
    Refresh();
    ShowInPlace(false);
}

void RecoveryWindow::Refresh() {
    m_binder.Show();
    const int selected = m_window.Selected;
    const QSignalBlocker quiet(m_list);
    m_list->clear();
    for (const frmRecovery::Row& row : m_window.Rows) {
        new QTreeWidgetItem(m_list,
                            {QString::fromStdString(row.Name), QString::fromStdString(row.Folder),
                             QString::fromStdString(row.Time)});
    }
    m_list->setCurrentItem(m_list->topLevelItem(selected));
    for (int column = 0; column < m_list->columnCount(); ++column) {
        m_list->resizeColumnToContents(column);
    }
}

} // namespace corvanta
