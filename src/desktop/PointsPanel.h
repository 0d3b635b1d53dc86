#pragma once

#include "desktop/GridView.h"
#include "shell/frmWorkbench.h"

#include <QPoint>
#include <QWidget>

class QLineEdit;
class QToolButton;

namespace corvanta {

class Desktop;
class NumberField;
class Binder;

/// The points of the workbench: a filter, the table in which cells are typed into, nudged and
/// scrubbed, and the step.
class PointsPanel final : public QWidget {
    Q_OBJECT

  public:
    PointsPanel(Desktop& desktop, frmWorkbench& window, Binder& binder, QWidget* parent);

    void Refresh();
    [[nodiscard]] GridView& Table() const { return *m_table; }
    void FocusFilter();

  signals:
    /// The key that plays and stops the travel.
    void SpacePressed();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QWidget* BuildSteps(Binder& binder);
    void ShowSteps();
    bool TakeKey(const QKeyEvent& event);
    bool TakeMouse(const QMouseEvent& event);
    void EndScrub(bool kept);
    void SelectionChanged();

    Desktop& m_desktop;
    frmWorkbench& m_window;
    QLineEdit* m_filter;
    GridView* m_table;
    std::vector<QToolButton*> m_steps;
    std::optional<QPoint> m_pressed; ///< where the button went down on a cell
    bool m_onSelected = false;       ///< on one of several selected cells, which stay so
    bool m_scrubbing = false;
    CellRange m_shownSelection;
};

} // namespace corvanta
