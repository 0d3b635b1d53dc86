#pragma once

#include <QMenu>

#include <functional>
#include <utility>
#include <vector>

namespace corvanta {

/// The menu of the right mouse button. What an entry does runs once the menu is gone: what it
/// throws must not pass through the toolkit's own loop.
class ContextMenu {
  public:
    explicit ContextMenu(QWidget* parent) : m_menu(parent) {}

    QAction* Add(const QString& text, std::function<void()> chosen);
    void AddSeparator() { m_menu.addSeparator(); }

    /// Shows the menu at a place of the screen and runs what the user chooses, if anything.
    void Run(const QPoint& at);

  private:
    QMenu m_menu;
    std::vector<std::pair<QAction*, std::function<void()>>> m_entries;
};

} // namespace corvanta
