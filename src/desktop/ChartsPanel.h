#pragma once

#include "desktop/ChartSheetView.h"
#include "shell/frmWorkbench.h"

#include <QWidget>

#include <vector>

class QGridLayout;

namespace corvanta {

class Desktop;

/// The charts of the workbench in a grid that fits its place. A double-click shows one alone and
/// all again; its menu chooses what it shows.
class ChartsPanel final : public QWidget {
    Q_OBJECT

  public:
    ChartsPanel(Desktop& desktop, frmWorkbench& window, QWidget* parent);

    void Refresh();
    [[nodiscard]] ChartSheetView* Chart(std::size_t n) const { return m_charts[n]; }

    /// Asks for the channel of a chart.
    void ChooseChannel(std::size_t n);

  protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    ChartSheetView* NewChart(std::size_t n);
    void FillMenu(std::size_t n, ContextMenu& menu);
    void Change(std::size_t n, const StudyChart& chart);
    void Arrange();
    void ToggleAlone(std::size_t n);
    [[nodiscard]] int BestColumns(int count) const;

    Desktop& m_desktop;
    frmWorkbench& m_window;
    QGridLayout* m_layout;
    std::vector<ChartSheetView*> m_charts;
    std::optional<std::size_t> m_alone;
    int m_columns = 0;
    int m_arranged = 0; ///< charts in the grid
    std::optional<std::size_t> m_arrangedAlone;
};

} // namespace corvanta
