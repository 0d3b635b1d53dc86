#pragma once

#include "model/Views.h"
#include "platform/Chart2D.h"
#include "platform/DataGrid.h"

#include <cstdint>
#include <string>

namespace corvanta {

/// The window that shows views, as far as an export or a report needs it: they set the view
/// settings of the program, let the window show that view and take what it shows.
class ViewHost {
  public:
    ViewHost() = default;
    ViewHost(const ViewHost&) = delete;
    ViewHost& operator=(const ViewHost&) = delete;
    ViewHost(ViewHost&&) = delete;
    ViewHost& operator=(ViewHost&&) = delete;
    virtual ~ViewHost() = default;

    /// Shows the view of the current settings; a failure passes through to the caller.
    virtual void ShowCurrentView() = 0;

    /// The same for an event of the window: a failure is reported and ends here. With
    /// `resetPosition` the wheel and rack positions go back to the static ones.
    virtual void RefreshGUI(bool resetPosition) = 0;

    /// Fills the result area with a view whose settings need not be the current ones; a failure
    /// passes through to the caller. A view that has nothing to show leaves grid and report empty.
    /// While the current view is none a view keeps the argument that it is given.
    virtual void DisplayView(std::int32_t view, std::int32_t viewArgument, std::int32_t variable,
                             int wheel, int rack) = 0;

    /// The grid that tables are shown in.
    [[nodiscard]] virtual const DataGrid& Grid() const = 0;

    /// The dynamics report that is shown, lines joined by CR LF.
    [[nodiscard]] virtual const std::string& ReportText() const = 0;

    /// The chart that plots are shown in, none without a window system.
    [[nodiscard]] virtual const Chart2D* Chart() const = 0;
};

/// Shows what the window showed before other views took its place. A view that comes back begins
/// with its first sub-view, so the one that was showing is asked for once more.
inline void ShowAgain(ViewHost& host, ViewSettings& settings, const ViewSettings& former) {
    settings = former;
    host.RefreshGUI(false);
    if (settings.View == former.View && settings.ViewArgument != former.ViewArgument) {
        settings.ViewArgument = former.ViewArgument;
        host.RefreshGUI(false);
    }
}

} // namespace corvanta
