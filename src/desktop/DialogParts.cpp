#include "desktop/DialogParts.h"

#include "desktop/Desktop.h"
#include "desktop/WindowPlaces.h"

#include <QKeyEvent>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

namespace corvanta {

namespace {

/// Lets a click anywhere on a row turn its tick over, as one on its box does.
class WholeRowTick final : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

  protected:
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override {
        if (!event->isSinglePointEvent()) {
            return QStyledItemDelegate::editorEvent(event, model, option, index);
        }
        if (event->type() != QEvent::MouseButtonRelease ||
            static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton) {
            return false;
        }
        const bool ticked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
        return model->setData(index, ticked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
    }
};

} // namespace

ModalDialog::ModalDialog(Desktop& desktop, Window& window, const char* name)
    : QDialog(desktop.OwnerOfNew()),
      m_desktop(desktop),
      m_binder([&desktop](const auto& event) { desktop.Handle(event); }),
      m_frameOf(window) {
    setObjectName(name);
    setWindowTitle(QString::fromStdString(window.Caption));
    setWindowModality(Qt::WindowModal); // the help stays free
}

QPushButton* ModalDialog::AddButton(QDialogButtonBox& buttons, const Control& control,
                                    QDialogButtonBox::ButtonRole role, const char* name,
                                    Binder::Event clicked) {
    return AddDialogButton(m_binder, buttons, control, role, name, std::move(clicked));
}

QDialogButtonBox* ModalDialog::Foot(const Control& accept, const char* name, Binder::Event accepted,
                                    const Control& cancel, const Control& help) {
    auto* buttons = new QDialogButtonBox(this);
    AddButton(*buttons, accept, QDialogButtonBox::AcceptRole, name, std::move(accepted))
        ->setDefault(true);
    AddButton(*buttons, cancel, QDialogButtonBox::RejectRole, "cmdCancel", [this] { Cancel(); });
    AddButton(*buttons, help, QDialogButtonBox::HelpRole, "cmdHelp", [this] { Help(); });
    return buttons;
}

void ModalDialog::ShowInPlace(bool sized) {
    m_binder.Show();
    if (sized) {
        PlaceWindow(*this, m_frameOf.Frame);
    } else {
        PlaceWindow(*this, m_frameOf.Frame, sizeHint(), false);
    }
    show();
    RememberPlace(*this, m_frameOf.Frame);
}

void ModalDialog::done(int result) {
    QDialog::done(result);
    if (m_frameOf.IsOpen) {
        m_desktop.Handle([this] { Cancel(); });
    }
}

void ModalDialog::moveEvent(QMoveEvent* event) {
    QDialog::moveEvent(event);
    RememberPlace(*this, m_frameOf.Frame);
}

void ModalDialog::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    RememberPlace(*this, m_frameOf.Frame);
}

void ModalDialog::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) {
        RememberPlace(*this, m_frameOf.Frame);
    }
}

void ModalDialog::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1) {
        m_desktop.Handle([this] { Help(); });
        return;
    }
    QDialog::keyPressEvent(event);
}

QPushButton* AddDialogButton(Binder& binder, QDialogButtonBox& buttons, const Control& control,
                             QDialogButtonBox::ButtonRole role, const char* name,
                             Binder::Event clicked) {
    QPushButton* button = buttons.addButton(QString::fromStdString(control.Caption), role);
    button->setObjectName(name);
    binder.Bind(button, control, std::move(clicked));
    return button;
}

void BindCheckList(Binder& binder, QListWidget* shown, CheckList& list,
                   std::function<void(int row)> ticked) {
    binder.Bind(static_cast<QWidget*>(shown), list);
    shown->setItemDelegate(new WholeRowTick(shown));
    shown->setSpacing(1); // the boxes would touch each other
    binder.OnShow([shown, &list] {
        const QSignalBlocker quiet(shown);
        while (shown->count() > static_cast<int>(list.Rows.size())) {
            delete shown->takeItem(shown->count() - 1);
        }
        for (std::size_t n = 0; n < list.Rows.size(); ++n) {
            const int row = static_cast<int>(n);
            if (row == shown->count()) {
                shown->addItem(QString());
            }
            QListWidgetItem* item = shown->item(row);
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
            item->setText(QString::fromStdString(list.Rows[n].Text));
            item->setCheckState(list.Rows[n].Checked ? Qt::Checked : Qt::Unchecked);
        }
    });
    QObject::connect(shown, &QListWidget::itemChanged, shown,
                     [&binder, shown, &list, ticked = std::move(ticked)](QListWidgetItem* item) {
                         binder.Run([&] {
                             const int row = shown->row(item);
                             list.Rows[static_cast<std::size_t>(row)].Checked =
                                 item->checkState() == Qt::Checked;
                             ticked(row);
                         });
                     });
}

void AddHistoryKeys(Desktop& desktop, QWidget& window, const Binder::Event& commit) {
    const auto add = [&](const QKeySequence& keys, MainCommand command) {
        auto* shortcut = new QShortcut(keys, &window);
        QObject::connect(shortcut, &QShortcut::activated, &window, [&desktop, commit, command] {
            commit();
            desktop.Handle([&] { desktop.Main().Execute(command, 0); });
        });
    };
    add({Qt::CTRL | Qt::Key_Z}, mcUndo);
    add({Qt::CTRL | Qt::SHIFT | Qt::Key_Z}, mcRedo);
    add({Qt::CTRL | Qt::Key_Y}, mcRedo);
}

} // namespace corvanta
