#pragma once

#include "desktop/Binder.h"
#include "shell/frmWorkbench.h"

#include <QMainWindow>

#include <vector>

class QLabel;
class QSpinBox;
class QSplitter;
class QTabWidget;

namespace corvanta {

class ChartsPanel;
class CornerPanelView;
class Desktop;
class HistoryPanel;
class PointsPanel;
class StudiesPanel;
class TourBubble;
class TravelPanel;
class VariantsPanel;

/// The workbench on the screen.
class WorkbenchWindow final : public QMainWindow {
    Q_OBJECT

  public:
    WorkbenchWindow(Desktop& desktop, frmWorkbench& window);

    /// Brings the workbench up to date and to the screen.
    void Refresh();

    /// The same with the next turn of the event loop, however many events ask for it until then.
    void RefreshSoon();

    [[nodiscard]] bool Shows(const frmWorkbench& window) const { return &window == &m_window; }

    [[nodiscard]] PointsPanel& Points() const { return *m_points; }
    [[nodiscard]] ChartsPanel& Charts() const { return *m_charts; }
    [[nodiscard]] CornerPanelView& Corner() const { return *m_corner; }

  protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void BuildTools();
    QAction* AddTool(const Control& control, const char* icon, const QKeySequence& keys,
                     Binder::Event chosen);
    QAction* AddCommand(const QString& caption, const QString& hint, const char* icon,
                        const QKeySequence& keys, int command);
    void BuildPanels();
    void BuildKeys();
    QWidget* BuildViews();
    QWidget* BuildLists();
    QWidget* BuildEmptyPage();
    void ShowHead();
    void ShowTour();
    void RestorePanels();
    void RememberPanels();

    Desktop& m_desktop;
    frmWorkbench& m_window;
    Binder m_binder;
    QLabel* m_head = nullptr;
    QSpinBox* m_count = nullptr;
    QSplitter* m_columns = nullptr;
    QSplitter* m_left = nullptr;
    QSplitter* m_right = nullptr; ///< charts and corner above, the studies below
    QSplitter* m_views = nullptr; ///< charts and corner
    QTabWidget* m_lists = nullptr;
    PointsPanel* m_points = nullptr;
    ChartsPanel* m_charts = nullptr;
    CornerPanelView* m_corner = nullptr;
    TravelPanel* m_travel = nullptr;
    StudiesPanel* m_studies = nullptr;
    HistoryPanel* m_history = nullptr;
    VariantsPanel* m_variants = nullptr;
    TourBubble* m_tour = nullptr;
    bool m_refreshAsked = false;
};

} // namespace corvanta
