#pragma once

#include "platform/FileServices.h"
#include "platform/ProcessServices.h"

#include <string>

namespace corvanta {

/// Opens the document of the command line and prints it into a PDF file as the print dialog last
/// was, with the toolkit but no window. What goes wrong is told on standard error; false then.
[[nodiscard]] bool RunReport(FileServices& files, ProcessServices& process,
                             const std::string& pdfPath);

} // namespace corvanta
