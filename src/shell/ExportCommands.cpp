#include "shell/ExportCommands.h"

#include "export/CDXF.h"
#include "export/MExport.h"
#include "model/Failure.h"

#include <optional>
#include <string>

namespace corvanta {

namespace {

/// Filter of the component files; its second pair is version 1.1.
constexpr const char* ComponentFilter = "Sorvent SuspVariable SUSPVAR 2.2 files (*.svr)|*.svr|"
                                        "Sorvent SuspVariable SUSPVAR 1.1 files (*.svr)|*.svr";
constexpr int FilterOfVersion1_1 = 2;

void ConfirmWritten(ShellHost& main, const std::string& path) {
    main.Confirm(FileServices::FileName(path) + " written");
}

void ExportTo(Desk& desk, ShellHost& main, std::int32_t exportType, const std::string& path) {
    if (ExportResults({desk.Program, main, desk.Files, desk.Messages, desk.Process}, exportType,
                      path, nullptr)) {
        ConfirmWritten(main, path);
    }
}

} // namespace

std::optional<ChosenFile> AskForExport(const Desk& desk, ShellHost& main, const char* filter,
                                       const char* extension, const std::string& title,
                                       const std::string& folder) {
    ChosenFile chosen;
    chosen.Title = title;
    chosen.Extension = extension;
    const bool named = main.GetFileName(
        FileNameMode::SaveAs, filter, folder.empty() ? desk.Program.Options.ExportFilePath : folder,
        chosen, false);
    if (named && desk.Files.SameFile(chosen.Path, desk.Program.DocumentPath)) {
        desk.Messages.ShowMessage("That is the file of the suspension itself: results would "
                                  "replace it.\rExport under another name.",
                                  msExclamation);
        return std::nullopt;
    }
    return named ? std::optional(chosen) : std::nullopt;
}

void ExportedTo(Desk& desk, ShellHost& main, const std::string& path) {
    desk.Program.Options.ExportFilePath = FileServices::ParentFolder(path);
    ConfirmWritten(main, path);
}

void AskAndExportResults(Desk& desk, ShellHost& main, std::int32_t exportType) {
    const std::optional<ChosenFile> file = AskForExport(desk, main, "*.txt|*.txt", "txt");
    if (file) {
        ExportTo(desk, main, exportType, file->Path);
    }
}

void AskAndExportComponent(Desk& desk, ShellHost& main) {
    const std::optional<ChosenFile> file = AskForExport(desk, main, ComponentFilter, "svr");
    if (file) {
        ExportTo(desk, main, file->FilterIndex == FilterOfVersion1_1 ? etSuspvar1_1 : etSuspvar2_2,
                 file->Path);
    }
}

bool AskAndExportTable(Desk& desk, ShellHost& main, const DataGrid& table,
                       const std::string& title) {
    const std::optional<ChosenFile> file =
        AskForExport(desk, main, "CSV table (*.csv)|*.csv", "csv", title);
    if (!file) {
        return false;
    }
    try {
        desk.Files.WriteBytes(file->Path, table.CommaSeparated());
    } catch (...) {
        desk.Messages.ShowMessage("The table could not be written to " + file->Path +
                                      ".\rError was: " + FailureInFlight().Description(),
                                  msExclamation);
        return false;
    }
    ExportedTo(desk, main, file->Path);
    return true;
}

void AskAndExportDXF(Desk& desk, ShellHost& main) {
    const std::optional<ChosenFile> file = AskForExport(desk, main, "*.dxf|*.dxf", "dxf");
    if (file) {
        const ViewSettings& settings = desk.Program.Settings;
        if (ExportDXF(desk.Program.Document, settings.ViewRack, settings.ViewWheel, file->Path,
                      desk.Files, desk.Messages)) {
            ConfirmWritten(main, file->Path);
        }
    }
}

} // namespace corvanta
