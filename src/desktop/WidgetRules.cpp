#include "desktop/WidgetRules.h"

#include "desktop/WindowPlaces.h"

#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QLabel>

namespace corvanta {

WidgetRules::WidgetRules() {
    qApp->installEventFilter(this);
}

/// A window has its frame by the time it becomes active. Later its user may push it where he
/// likes.
void WidgetRules::FitOnce(QWidget& window) {
    constexpr const char* Fitted = "fitted";
    if (window.isWindow() && window.isVisible() && !window.property(Fitted).toBool()) {
        window.setProperty(Fitted, true);
        FitToScreen(window);
    }
}

bool WidgetRules::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Polish) { // labels, and tooltips, which the toolkit makes of them
        auto* const label = qobject_cast<QLabel*>(watched);
        if (label != nullptr && label->textFormat() == Qt::AutoText) {
            label->setTextFormat(Qt::PlainText);
        }
    } else if (event->type() == QEvent::WindowActivate && watched->isWidgetType()) {
        FitOnce(*static_cast<QWidget*>(watched));
    } else if (event->type() == QEvent::Wheel && qobject_cast<QComboBox*>(watched) != nullptr) {
        event->ignore(); // what the list lies in may scroll
        return true;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace corvanta
