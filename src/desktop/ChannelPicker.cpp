#include "desktop/ChannelPicker.h"

#include "study/Curve.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace corvanta {

ChannelPicker::ChannelPicker(const ChannelCatalogue& channels, int chosen, QWidget* parent)
    : QDialog(parent),
      m_filter(new QLineEdit(this)),
      m_list(new QListWidget(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this)) {
    setWindowTitle(tr("Channel"));
    auto* layout = new QVBoxLayout(this);
    m_filter->setPlaceholderText(tr("Words of a title"));
    m_filter->setClearButtonEnabled(true);
    layout->addWidget(m_filter);
    layout->addWidget(m_list, 1);
    for (int id = 1; id <= ChannelCount; ++id) {
        if (HasCurve(id)) {
            const ChannelRecord& record = channels[id];
            auto* item = new QListWidgetItem(
                QString("%1 [%2]").arg(QString::fromStdString(record.Title).trimmed(),
                                       QString::fromStdString(record.UnitLabel)),
                m_list);
            item->setData(Qt::UserRole, id);
        }
    }
    m_list->sortItems();
    for (int row = 0; row < m_list->count(); ++row) {
        if (m_list->item(row)->data(Qt::UserRole).toInt() == chosen) {
            m_list->setCurrentRow(row);
        }
    }
    layout->addWidget(m_buttons);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_list, &QListWidget::itemActivated, this, &QDialog::accept);
    connect(m_filter, &QLineEdit::textChanged, this, &ChannelPicker::Narrow);
    m_filter->installEventFilter(this);
    m_filter->setFocus();
    resize(360, 460);
}

int ChannelPicker::Chosen() const {
    return m_list->currentItem()->data(Qt::UserRole).toInt();
}

void ChannelPicker::Narrow(const QString& words) {
    const QStringList parts = words.split(' ', Qt::SkipEmptyParts);
    int first = -1;
    for (int row = 0; row < m_list->count(); ++row) {
        const QString title = m_list->item(row)->text();
        const bool holds = std::all_of(parts.begin(), parts.end(), [&](const QString& part) {
            return title.contains(part, Qt::CaseInsensitive);
        });
        m_list->item(row)->setHidden(!holds);
        first = holds && first < 0 ? row : first;
    }
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(first >= 0);
    if (first >= 0 && m_list->currentItem()->isHidden()) {
        m_list->setCurrentRow(first);
    }
}

/// The arrows go through the list while the filter has the keyboard.
bool ChannelPicker::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_filter && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp ||
            key == Qt::Key_PageDown) {
            QApplication::sendEvent(m_list, event);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace corvanta
