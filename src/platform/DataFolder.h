#pragma once

#include "platform/FileServices.h"
#include "platform/ProcessServices.h"

#include <string>

namespace corvanta {

/// The folder of what comes with the program, help and samples, without a separator at its end:
/// share/corvanta beside the program's folder where it is installed so, else the program's folder.
[[nodiscard]] std::string DataFolder(const ProcessServices& process, const FileServices& files);

} // namespace corvanta
