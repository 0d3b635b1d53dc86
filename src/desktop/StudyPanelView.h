#pragma once

#include "desktop/Binder.h"
#include "shell/frmWorkbench.h"

#include <QWidget>

#include <vector>

class QGridLayout;
class QHBoxLayout;
class QLabel;
class QProgressBar;
class QSplitter;
class QTabWidget;

namespace corvanta {

class ChartSheetView;
class Desktop;
class GridView;

/// One study of the workbench on the screen: what is asked at the left, what came out at the right,
/// and above them how the work goes.
class StudyPanelView final : public QWidget {
    Q_OBJECT

  public:
    StudyPanelView(Desktop& desktop, frmWorkbench& window, CStudyPanel& panel, QWidget* parent);

    void Refresh();

    /// Brings the progress alone to the screen.
    void ShowProgress();

  private:
    struct Table {
        StudyTable* Shown = nullptr;
        GridView* View = nullptr;
    };

    QWidget* BuildHead();
    QWidget* BuildQuestion();
    QWidget* BuildFields();
    void BuildField(QGridLayout& grid, std::size_t n);
    QWidget* BuildRowButtons();
    GridView* BuildTable(std::vector<Table>& tables, StudyTable& table, QTabWidget& pages);
    void BuildAnswer();
    void DivideRoom();
    void ShowSheets();
    void ShowPages();
    [[nodiscard]] std::size_t AskedTable() const;

    Desktop& m_desktop;
    frmWorkbench& m_window;
    CStudyPanel& m_panel;
    Binder m_binder;
    QProgressBar* m_progress = nullptr;
    QSplitter* m_halves = nullptr;
    QTabWidget* m_asked = nullptr;
    QTabWidget* m_answer = nullptr;
    QWidget* m_charts = nullptr;
    QHBoxLayout* m_sheetRow = nullptr;
    QLabel* m_kinds = nullptr; ///< names the colours of maps of kinds
    std::vector<Table> m_askedTables;
    std::vector<Table> m_answerTables;
    std::vector<ChartSheetView*> m_sheets;
    bool m_moved = false; ///< a hand has divided the room
};

} // namespace corvanta
