#pragma once

#include "model/Program.h"
#include "platform/DataGrid.h"
#include "platform/FileServices.h"
#include "platform/Messages.h"
#include "platform/ProcessServices.h"
#include "results/ViewHost.h"

#include <cstdint>
#include <string>

namespace corvanta {

/// The main window, without a window system: it decides when to calculate and what to show.
class frmMain final : public ViewHost {
  public:
    frmMain(Program& program, FileServices& files, Messages& messages, ProcessServices& process);

    /// Every event ends here: calculates if results are stale, and shows the current view. A
    /// failure is reported, and the next event works.
    void RefreshGUI(bool resetPosition) override;

    void ShowCurrentView() override;

    [[nodiscard]] const DataGrid& Grid() const override { return grdDisplay; }

    /// Fills the result area with a view. A view that has nothing to show leaves the grid empty.
    void DisplayView(std::int32_t view, std::int32_t viewArgument, std::int32_t variable, int wheel,
                     int rack);

    /// Opens a document in the place of the current one, and calculates. A file that can't be used
    /// is reported and leaves an empty document.
    void FileOpen(const std::string& path);

    /// Saves the document as folder and base name of `path` with the extension ".WSP".
    void FileSave(const std::string& path);

    DataGrid grdDisplay;

    /// The text in the result picture: the dynamics report, empty for other views.
    std::string picResultsText;

  private:
    void Refresh(bool resetPosition);
    void FillGridWithView(std::int32_t view, std::int32_t viewArgument, std::int32_t variable,
                          int wheel, int rack);
    void ResetPosition(bool always);

    Program& m_program;
    FileServices& m_files;
    Messages& m_messages;
    ProcessServices& m_process;
    std::int32_t m_viewLastDisplayed = vwNone;
    std::int32_t m_channelLastPlotted = 0;
    bool m_linkLoadsWarned = false;
    bool m_refreshBusy = false;
};

} // namespace corvanta
