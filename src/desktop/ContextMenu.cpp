#include "desktop/ContextMenu.h"

namespace corvanta {

QAction* ContextMenu::Add(const QString& text, std::function<void()> chosen) {
    QAction* const action = m_menu.addAction(text);
    m_entries.emplace_back(action, std::move(chosen));
    return action;
}

void ContextMenu::Run(const QPoint& at) {
    const QAction* const chosen = m_menu.exec(at);
    for (const auto& [action, run] : m_entries) {
        if (action == chosen) {
            run();
            return;
        }
    }
}

} // namespace corvanta
