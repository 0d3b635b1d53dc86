#pragma once

#include "model/Program.h"
#include "platform/FileServices.h"
#include "platform/Messages.h"
#include "platform/ProcessServices.h"
#include "results/ViewHost.h"
#include "results/ViewTable.h"

#include <cstdint>
#include <string>

namespace corvanta {

/// What an export writes.
enum ExportTypeValue : std::int32_t {
    etAllChannels = 1,
    etCurrentView = 2, ///< in a batch run the table that is named
    etSelectedViews = 3,
    etSuspvar1_1 = 5,
    etSuspvar2_2 = 6,
};

/// What a batch run says of its export, in the place of the current view's settings.
struct BatchExport {
    std::int32_t Variable = vvAlongRackTravel;
    std::int32_t Table = vwNone;
    bool Header = false;
};

/// What an export works with.
struct ExportPlace {
    Program& Program_;
    ViewHost& Host;
    FileServices& Files;
    Messages& Messages_;
    ProcessServices& Process;
};

/// Exports to a file. `batch` is null for an export of the window. Every failure is reported and
/// stops the export: then nothing is written, the file that was there stays, and the answer is
/// false.
bool ExportResults(const ExportPlace& place, std::int32_t exportType, const std::string& filePath,
                   const BatchExport* batch);

/// A table as text: cells parted by TAB, lines ended by CR LF.
[[nodiscard]] std::string ExportArrayToText(const ViewTable& table);

/// The title, and the subtitle if the view has one, in front of a body. The positions in them are
/// those of the current settings.
[[nodiscard]] std::string ExportTitleAdd(const Program& program, const std::string& body,
                                         std::int32_t view, std::int32_t viewArgument,
                                         std::int32_t variable);

} // namespace corvanta
