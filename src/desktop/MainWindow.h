#pragma once

#include "desktop/Binder.h"
#include "shell/frmMain.h"

#include <QMainWindow>

class QLabel;
class QToolButton;

namespace corvanta {

class Desktop;
class ChartView;
class CornerView;
class GridView;
class ReportView;
class StartPage;
class FailurePage;

/// The main window on the screen.
class MainWindow final : public QMainWindow {
    Q_OBJECT

  public:
    explicit MainWindow(Desktop& desktop);

    /// Brings the window as it is now to the screen.
    void Refresh();

    [[nodiscard]] GridView* Grid() const { return m_grid; }
    [[nodiscard]] ChartView* Chart() const { return m_chart; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void changeEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    struct MenuTie {
        QAction* Action;
        const MenuItem* Item;
    };

    void BuildMenus();
    QMenu* BuildMenu(Menu& menu);
    void AddRecentFiles(QMenu* menu, QAction* before);
    void AddItem(QMenu* menu, const MenuItem& item);
    void BuildToolbar();
    QWidget* BuildStrip();
    QToolButton* StepButton(const char* icon, QComboBox* box, int direction);
    QWidget* BuildBanner();
    QWidget* BuildResultArea();
    void BuildStatusBar();
    void TakePlace();
    void ShowMenus();
    void ShowStatus();
    void GiveFocus();
    bool TakeKey(QKeyEvent* event);
    static void Step(QComboBox* box, int direction);

    Desktop& m_desktop;
    frmMain& m_window;
    Binder m_binder;
    std::vector<MenuTie> m_menuTies;
    std::vector<std::pair<QAction*, int>> m_buttons; ///< with their places in the toolbar
    QWidget* m_strip = nullptr;
    QComboBox* m_wheel = nullptr;
    QComboBox* m_rack = nullptr;
    GridView* m_grid = nullptr;
    ReportView* m_report = nullptr;
    CornerView* m_corner = nullptr;
    ChartView* m_chart = nullptr;
    StartPage* m_start = nullptr;
    FailurePage* m_failure = nullptr;
    QLabel* m_document = nullptr;
    QLabel* m_note = nullptr;
    QLabel* m_position = nullptr;
    QToolButton* m_units = nullptr;
    bool m_resizePending = false;
};

} // namespace corvanta
