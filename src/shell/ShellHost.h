#pragma once

#include "results/ViewHost.h"

namespace corvanta {

/// The main window, as far as the other windows need it.
class ShellHost : public ViewHost {
  public:
    /// Closes the geometry editor and the window that adjusts the geometry, if they are open.
    virtual void ResetEditDialog() = 0;
};

} // namespace corvanta
