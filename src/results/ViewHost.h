#pragma once

#include "platform/DataGrid.h"

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

    /// The grid that tables are shown in.
    [[nodiscard]] virtual const DataGrid& Grid() const = 0;
};

} // namespace corvanta
