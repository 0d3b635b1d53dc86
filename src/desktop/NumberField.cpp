#include "desktop/NumberField.h"

#include <QKeyEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QTimer>

namespace corvanta {

namespace {

constexpr int FieldWidth = 116;
const QColor FaultColour(214, 48, 40);

} // namespace

NumberField::NumberField(Binder& binder, NumberBox& box, Binder::Event typed, Binder::Event left,
                         QWidget* parent)
    : QLineEdit(parent),
      m_binder(binder),
      m_box(box),
      m_typed(std::move(typed)) {
    setFixedWidth(FieldWidth);
    setAlignment(Qt::AlignRight);
    binder.Bind(static_cast<QWidget*>(this), box);
    binder.OnShow([this] { ShowBox(); });
    connect(this, &QLineEdit::textEdited, this, [this](const QString& text) {
        m_binder.Run([&] {
            m_box.Text = text.toStdString();
            m_typed();
        });
    });
    connect(this, &QLineEdit::editingFinished, this, [this, left = std::move(left)] {
        if (isModified()) {
            setModified(false);
            m_binder.Run(left);
        }
    });
}

void NumberField::ShowBox() {
    const QString shown = QString::fromStdString(m_box.Text);
    if (text() != shown) {
        const QSignalBlocker quiet(this);
        setText(shown);
    }
    update();
}

/// A field in which nothing was typed leaves the keys of undo and redo to its window.
bool NumberField::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if ((key.matches(QKeySequence::Undo) && !isUndoAvailable()) ||
            (key.matches(QKeySequence::Redo) && !isRedoAvailable())) {
            event->ignore();
            return true;
        }
    }
    return QLineEdit::event(event);
}

void NumberField::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    Begin();
}

void NumberField::Begin() {
    if (!m_box.Fault) { // Esc goes back to what the box could take
        m_former = text();
    }
    // After the click that brought the focus has placed its cursor.
    QTimer::singleShot(0, this, &QLineEdit::selectAll);
}

void NumberField::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && text() != m_former) {
        m_binder.Run([this] {
            m_box.Text = m_former.toStdString();
            m_typed();
        });
        selectAll();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void NumberField::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    if (m_box.Fault) {
        QPainter painter(this);
        painter.setPen(QPen(FaultColour, 2));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
}

} // namespace corvanta
