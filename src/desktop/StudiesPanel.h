#pragma once

#include "shell/frmWorkbench.h"

#include <QTimer>
#include <QWidget>

#include <vector>

class QTabBar;
class QStackedLayout;

namespace corvanta {

class Desktop;
class StudyPanelView;

/// The studies of the workbench: a row of their names, and below it the one in sight.
class StudiesPanel final : public QWidget {
    Q_OBJECT

  public:
    StudiesPanel(Desktop& desktop, frmWorkbench& window, QWidget* parent);

    void Refresh();

  signals:
    /// What came out has to be brought to the screen.
    void Changed();

  private:
    void Poll();

    Desktop& m_desktop;
    frmWorkbench& m_window;
    QTabBar* m_names;
    QStackedLayout* m_pages;
    std::vector<StudyPanelView*> m_views;
    QTimer m_poll; ///< runs while a study does
};

} // namespace corvanta
