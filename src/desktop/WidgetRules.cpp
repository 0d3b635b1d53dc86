#include "desktop/WidgetRules.h"

#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QLabel>

namespace corvanta {

WidgetRules::WidgetRules() {
    qApp->installEventFilter(this);
}

bool WidgetRules::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Polish) { // labels, and tooltips, which the toolkit makes of them
        auto* const label = qobject_cast<QLabel*>(watched);
        if (label != nullptr && label->textFormat() == Qt::AutoText) {
            label->setTextFormat(Qt::PlainText);
        }
    } else if (event->type() == QEvent::Wheel && qobject_cast<QComboBox*>(watched) != nullptr) {
        event->ignore(); // what the list lies in may scroll
        return true;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace corvanta
