#pragma once

#include "platform/FileServices.h"
#include "platform/ProcessServices.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

/// How the program is asked to start.
struct StartRequest {
    bool Batch = false;     ///< the command line holds keys; `ParseCommandLine` reads them
    bool Workbench = false; ///< the workbench is to open, with the file or without
    bool Help = false;      ///< only the usage is asked for
    bool Version = false;   ///< only the version is asked for
    std::string Report;  ///< the PDF file that the file's report goes to; no window is shown then
    std::string File;    ///< what is to be opened, as it was named; it may not exist
    std::string Refusal; ///< why what stands there can't be done, for the user; else empty
};

/// Reads the arguments of the process. "--help" and "--version" count wherever they stand.
/// "--workbench" and "--report=PATH" stand before or behind one file, the first also alone. A
/// single argument is a file when there is one of that name, when it holds no "/", and when it ends
/// as a document does and holds no "=". All else that holds a "/" is a batch run.
[[nodiscard]] StartRequest ParseStart(const std::vector<std::string>& arguments,
                                      const FileServices& files);

/// What "--help" answers.
[[nodiscard]] std::string HelpText(std::string_view program);

/// What "--version" answers.
[[nodiscard]] std::string VersionText(std::string_view program, const ProductVersion& version);

/// The keys of a batch run in short.
[[nodiscard]] std::string BatchUsage(std::string_view program);

} // namespace corvanta
