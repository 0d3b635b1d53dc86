#pragma once

#include "model/Views.h"

#include <cstdint>
#include <string>

namespace corvanta {

/// What the program remembers between runs, beside the units and the start values of a document.
struct Options {
    bool AdjustRHByPushRodLength = true; ///< ride height adjustment works by push rod length
    std::string LastFolder;              ///< folder of the last document
    std::string ExportFilePath;          ///< folder of the last export
    bool ExportHeaderOn = false;
    std::int32_t ExportType = 1;
    bool DrawAxes = true;  ///< the 3-D view draws its axes
    bool AutoScale = true; ///< the 3-D view refits at each refresh
    std::int32_t PaperOrientation = 0;
    bool PrintCoordinates = false;
    bool PageThrow = false;
    bool PrintChassisDetails = true;
    bool PrintSelectedTables = false;
    SelectedViews SelectedTables; ///< the views selected for printing
};

} // namespace corvanta
