#pragma once

#include "shell/frmWorkbench.h"

#include <QWidget>

#include <optional>
#include <vector>

class QListWidget;
class QListWidgetItem;

namespace corvanta {

class Desktop;

/// The history of the workbench: the steps, each a click away.
class HistoryPanel final : public QWidget {
    Q_OBJECT

  public:
    HistoryPanel(Desktop& desktop, frmWorkbench& window, QWidget* parent);

    void Refresh();

  private:
    Desktop& m_desktop;
    frmWorkbench& m_window;
    QListWidget* m_list;
    std::vector<ListedStep> m_shown;
};

/// The variants of the workbench: ticked ones stand on the charts in their colours.
class VariantsPanel final : public QWidget {
    Q_OBJECT

  public:
    VariantsPanel(Desktop& desktop, frmWorkbench& window, QWidget* parent);

    void Refresh();

  private:
    void ShowMenu(const QPoint& at);
    void ItemChanged(const QListWidgetItem& item);
    void EditNote(std::size_t n);

    Desktop& m_desktop;
    frmWorkbench& m_window;
    QListWidget* m_list;
    std::optional<std::vector<ListedVariant>> m_shown; ///< none: to be listed anew
};

} // namespace corvanta
