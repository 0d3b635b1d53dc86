#include "desktop/GuardedApplication.h"

#include "desktop/WidgetRules.h"

/// The resources lie in a library, which a program would otherwise link without them. The toolkit
/// wants this outside every namespace.
static void UseResources() {
    Q_INIT_RESOURCE(desktop);
}

namespace corvanta {

GuardedApplication::GuardedApplication(int& argc, char** argv) : QApplication(argc, argv) {
    UseResources();
    setStyle(new PlainButtonStyle);
    setApplicationName("Corvanta");
    setApplicationDisplayName({});    // the windows' own captions name the product
    setQuitOnLastWindowClosed(false); // the main window says when
}

bool GuardedApplication::notify(QObject* receiver, QEvent* event) {
    if (m_messages == nullptr) {
        return QApplication::notify(receiver, event);
    }
    bool handled = true;
    Guarded(*m_messages, [&] { handled = QApplication::notify(receiver, event); });
    return handled;
}

bool HasDisplay() {
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
           qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
#else
    return true;
#endif
}

} // namespace corvanta
