#pragma once

#include "platform/DataGrid.h"
#include "shell/Desk.h"
#include "shell/ShellHost.h"

#include <cstdint>
#include <optional>
#include <string>

namespace corvanta {

/// The commands that export: each asks for the name of the file, from the folder of the last export
/// of results on, and writes it. Without a name nothing happens. A failure is reported.

/// Results as text, `exportType` being one of `ExportTypeValue` for results. The folder is
/// remembered.
void AskAndExportResults(Desk& desk, ShellHost& main, std::int32_t exportType);

/// The corner as a component of the lap simulator, in the version that the user chose among the
/// kinds of file.
void AskAndExportComponent(Desk& desk, ShellHost& main);

/// The corner at the current wheel and rack position as a DXF drawing.
void AskAndExportDXF(Desk& desk, ShellHost& main);

/// Asks for the name of a file to export to, beginning with `title` in a folder, or in that of the
/// last export when there is none; nothing on cancel, and for the file of the suspension itself,
/// which is told.
[[nodiscard]] std::optional<ChosenFile> AskForExport(const Desk& desk, ShellHost& main,
                                                     const char* filter, const char* extension,
                                                     const std::string& title = {},
                                                     const std::string& folder = {});

/// A file was exported: says so, and remembers its folder.
void ExportedTo(Desk& desk, ShellHost& main, const std::string& path);

/// Asks for a name and writes a table as comma-separated values, UTF-8. False when it is not
/// written; a failure is told.
bool AskAndExportTable(Desk& desk, ShellHost& main, const DataGrid& table,
                       const std::string& title);

} // namespace corvanta
