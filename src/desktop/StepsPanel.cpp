#include "desktop/StepsPanel.h"

#include "desktop/ContextMenu.h"
#include "desktop/Desktop.h"

#include <QInputDialog>
#include <QKeyEvent>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace corvanta {

namespace {

QIcon Swatch(const Colour& colour) {
    constexpr int Size = 12;
    QPixmap picture(Size, Size);
    picture.fill(QColor(colour.Red, colour.Green, colour.Blue));
    return picture;
}

} // namespace

HistoryPanel::HistoryPanel(Desktop& desktop, frmWorkbench& window, QWidget* parent)
    : QWidget(parent),
      m_desktop(desktop),
      m_window(window),
      m_list(new QListWidget(this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_list);
    m_list->setObjectName("lstHistory");
    m_list->setToolTip(tr("A click goes to the step"));
    const auto go = [this](const QListWidgetItem* item) {
        const int row = m_list->row(item);
        m_desktop.Handle([&] { m_window.GoToStep(static_cast<std::size_t>(row)); });
    };
    connect(m_list, &QListWidget::itemClicked, this, go);
    connect(m_list, &QListWidget::itemActivated, this, go);
}

void HistoryPanel::Refresh() {
    const QSignalBlocker quiet(m_list);
    if (m_shown != m_window.Steps) {
        m_shown = m_window.Steps;
        while (m_list->count() > static_cast<int>(m_shown.size())) {
            delete m_list->takeItem(m_list->count() - 1);
        }
        for (std::size_t n = 0; n < m_shown.size(); ++n) {
            if (static_cast<int>(n) == m_list->count()) {
                m_list->addItem(QString());
            }
            QListWidgetItem* const item = m_list->item(static_cast<int>(n));
            item->setText(QString::fromStdString(m_shown[n].Name));
            item->setForeground(palette().brush(
                m_shown[n].IsUndone ? QPalette::Disabled : QPalette::Active, QPalette::Text));
        }
    }
    if (m_list->currentRow() != m_window.CurrentStep && !m_shown.empty()) {
        m_list->setCurrentRow(m_window.CurrentStep);
        m_list->scrollToItem(m_list->currentItem());
    }
}

VariantsPanel::VariantsPanel(Desktop& desktop, frmWorkbench& window, QWidget* parent)
    : QWidget(parent),
      m_desktop(desktop),
      m_window(window),
      m_list(new QListWidget(this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_list);
    m_list->setObjectName("lstVariants");
    m_list->setToolTip(tr("Ticked variants stand on the charts. Enter restores one, F2 renames "
                          "it, Delete removes it; more in the menu of the right button"));
    m_list->setContextMenuPolicy(Qt::CustomContextMenu);
    m_list->setEditTriggers(QAbstractItemView::EditKeyPressed);
    connect(m_list->itemDelegate(), &QAbstractItemDelegate::closeEditor, this,
            &VariantsPanel::Refresh, Qt::QueuedConnection);
    connect(m_list, &QListWidget::itemChanged, this,
            [this](const QListWidgetItem* item) { ItemChanged(*item); });
    connect(m_list, &QListWidget::itemActivated, this, [this](const QListWidgetItem* item) {
        const int row = m_list->row(item);
        m_desktop.Handle([&] { m_window.RestoreVariant(static_cast<std::size_t>(row)); });
    });
    connect(m_list, &QListWidget::customContextMenuRequested, this, &VariantsPanel::ShowMenu);
    // Not the standard key: with it goes Ctrl+D on some desktops, which keeps a variant here.
    auto* remove = new QShortcut(Qt::Key_Delete, m_list);
    remove->setContext(Qt::WidgetShortcut);
    connect(remove, &QShortcut::activated, this, [this] {
        if (const int row = m_list->currentRow(); row >= 0) {
            m_desktop.Handle([&] { m_window.DeleteVariant(static_cast<std::size_t>(row)); });
        }
    });
}

void VariantsPanel::ItemChanged(const QListWidgetItem& item) {
    const auto n = static_cast<std::size_t>(m_list->row(&item));
    const bool ticked = item.checkState() == Qt::Checked;
    const std::string name = item.text().trimmed().toStdString();
    m_desktop.Handle([&] {
        if (m_shown && n < m_shown->size() && (*m_shown)[n].Ticked != ticked) {
            m_window.TickVariant(n, ticked);
        } else {
            m_window.RenameVariant(n, name);
            m_shown.reset(); // a refused name goes back
        }
    });
}

void VariantsPanel::EditNote(std::size_t n) {
    bool taken = false;
    const QString note = QInputDialog::getMultiLineText(
        this, tr("Note"), tr("Note of %1:").arg(QString::fromStdString(m_window.Variants[n].Name)),
        QString::fromStdString(m_window.Variants[n].Note), &taken);
    if (taken) {
        m_desktop.Handle([&] { m_window.SetVariantNote(n, note.toStdString()); });
    }
}

void VariantsPanel::ShowMenu(const QPoint& at) {
    const QListWidgetItem* const item = m_list->itemAt(at);
    if (item == nullptr) {
        return;
    }
    const auto n = static_cast<std::size_t>(m_list->row(item));
    ContextMenu menu(this);
    menu.Add(tr("Restore"), [this, n] { m_desktop.Handle([&] { m_window.RestoreVariant(n); }); });
    menu.Add(tr("Rename"), [this, n] { m_list->editItem(m_list->item(static_cast<int>(n))); });
    menu.Add(tr("Note..."), [this, n] { EditNote(n); });
    menu.Add(tr("Save As Document..."),
             [this, n] { m_desktop.Handle([&] { m_desktop.Main().Studies.SaveVariant(n); }); });
    menu.AddSeparator();
    menu.Add(tr("Delete"), [this, n] { m_desktop.Handle([&] { m_window.DeleteVariant(n); }); });
    menu.Run(m_list->mapToGlobal(at));
}

void VariantsPanel::Refresh() {
    if (m_shown == m_window.Variants || (m_list->currentItem() != nullptr &&
                                         m_list->isPersistentEditorOpen(m_list->currentItem()))) {
        return;
    }
    const QSignalBlocker quiet(m_list);
    const int row = m_list->currentRow();
    m_shown = m_window.Variants;
    m_list->clear();
    for (const ListedVariant& variant : *m_shown) {
        auto* item = new QListWidgetItem(Swatch(variant.Drawn),
                                         QString::fromStdString(variant.Name), m_list);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable | Qt::ItemIsEditable);
        item->setCheckState(variant.Ticked ? Qt::Checked : Qt::Unchecked);
        item->setToolTip(QString::fromStdString(variant.Note));
    }
    m_list->setCurrentRow(std::min(row, m_list->count() - 1));
}

} // namespace corvanta
