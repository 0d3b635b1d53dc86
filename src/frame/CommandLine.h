#pragma once

#include "export/MExport.h"
#include "model/NumberText.h"
#include "platform/FileServices.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace corvanta {

/// What the command line asks for.
struct BatchRequest {
    bool NoGui = false; ///< no window is shown and no message is displayed
    std::string InputPath;
    std::string OutputPath;
    std::int32_t ExportType = 0;
    BatchExport Export;
};

/// True when the command line holds a key, so that a batch run is asked for.
[[nodiscard]] bool HasCommandLineKeys(std::string_view commandLine);

/// True when the key "nogui" stands on the command line, whatever else is wrong with it: then no
/// message is displayed from the start on.
[[nodiscard]] bool HasNoGuiKey(std::string_view commandLine);

/// Reads the command line: keys behind "/", each with a value behind "=" or none. Returns false
/// when it holds no key and the program starts normally, true when a batch run follows.
///
/// Throws Failure: number 10000 for a key or value that is missing or wrong, for a key given twice
/// and for an empty key; "Type mismatch" for a value that is due to be a number and is none.
[[nodiscard]] bool ParseCommandLine(BatchRequest& request, std::string_view commandLine,
                                    const FileServices& files, const Separators& separators);

} // namespace corvanta
