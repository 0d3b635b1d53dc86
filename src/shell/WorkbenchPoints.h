#pragma once

#include "model/Design.h"
#include "platform/Controls.h"
#include "platform/DataGrid.h"
#include "shell/Desk.h"
#include "study/DesignVariable.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace corvanta {

/// The points of the workbench: a table of the points in play in which cells are typed into, nudged
/// and scrubbed. Every change goes to the open document as a step of its history.
class WorkbenchPoints {
  public:
    explicit WorkbenchPoints(Desk& desk);

    DataGrid grdPoints;
    CellRange Selection; ///< the window system keeps it up to date
    TextBox txtFilter;   ///< only points whose names hold all of its words have a row
    NumberBox txtStep;   ///< of a nudge
    std::string Note;    ///< what became of the last typing; empty when all is well

    /// Shows the document: a cell that differs from the baseline is marked and tells what it was
    /// and by how much it moved; the rows of `faulty` points are marked as faulty.
    void Show(std::span<const PointNumber> faulty);

    /// The sizes of a nudge that are offered, in the user's unit.
    [[nodiscard]] std::vector<std::string> StepTexts() const;

    /// The size of a nudge, mm. What can't be read is the last one that could.
    [[nodiscard]] double Step() const { return m_step; }

    // Events.
    void txtStep_Changed();   ///< after each keystroke
    void txtStep_LostFocus(); ///< typing has ended

    /// A cell was typed into: a number or a sum is the new coordinate, and one with "+" in front is
    /// added to the old one, as "+1.5" or "+-1.5".
    void grdPoints_Edited(int row, int column, const std::string& text);

    /// Moves the selected cells by the step, 1 up or -1 down, or by ten.
    void Nudge(int direction, bool byTen);

    /// The selected cells follow a hand: by a number of steps from where it took them, until
    /// `EndScrub`, which keeps what it came to or takes it back.
    void BeginScrub();
    void ScrubTo(double steps);
    void EndScrub(bool kept);

    [[nodiscard]] std::string ToolTip(int row, int column) const;

    /// The points of the selected rows.
    [[nodiscard]] std::vector<PointNumber> SelectedPoints() const;

    /// The coordinates of the selected cells.
    [[nodiscard]] std::vector<PointCoordinate> SelectedCoordinates() const;

    /// Selects a cell of a point, the column of the selection kept; false when it has no row.
    bool Select(PointNumber number);
    bool Select(const PointCoordinate& coordinate);

  private:
    void LayOut(const PointCatalogue& catalogue);
    void ShowCell(int row, int column, const Design& now);
    [[nodiscard]] bool Holds(const std::string& name) const;
    void MoveCells(const std::vector<PointCoordinate>& cells, const Design& from, double way);
    [[nodiscard]] const FundamentalUnits& Units() const { return m_desk.Program.Units; }

    Desk& m_desk;
    double m_step;
    std::string m_unit; ///< that the table shows
    std::string m_filter;
    std::optional<SuspensionData> m_laidOut; ///< whose points have the rows
    std::optional<Design> m_scrubbed;        ///< as the hand took it
};

} // namespace corvanta
