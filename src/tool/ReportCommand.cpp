#include "frame/MOptions.h"
#include "frame/MSusp.h"
#include "model/Failure.h"
#include "platform/IniSettingsStore.h"
#include "platform/MachineServices.h"
#include "platform/PageWriter.h"
#include "tool/DesktopProgram.h"
#include "tool/TemporaryPath.h"
#include "tool/Tool.h"
#include "tool/ViewChoice.h"

namespace corvanta {

namespace {

struct ReportChoice {
    FileChoice Documents;
    ViewChoice Views;
    bool Landscape = false;
    bool OnePerPage = false;
    bool NoDetails = false;
    bool Coordinates = false;
    NumberChoice Numbers;
};

/// Settings of a program's own with what is to be printed, so that the user's stay as they are.
void WriteSettings(Tool& tool, const ReportChoice& choice) {
    const MachineServices process(0, nullptr, BuiltVersion());
    IniSettingsStore store(tool.Files, SettingsPath(tool.Files, process));
    Options options;
    SuspensionData data;
    FundamentalUnits units;
    OptionsRead(options, data, units, store, process.ProgramFolder());
    options.PrintSelectedTables = true;
    for (const std::int32_t view : choice.Views.Views(false)) {
        options.SelectedTables.Set(view, true);
    }
    options.PaperOrientation = choice.Landscape ? poLandscape : poPortrait;
    options.PageThrow = choice.OnePerPage;
    options.PrintChassisDetails = !choice.NoDetails;
    options.PrintCoordinates = choice.Coordinates;
    OptionsWrite(store, options, data, choice.Numbers.Chosen());
    tool.Files.MakeFolder(FileServices::ParentFolder(store.Place()));
    store.Save();
}

void Report(Tool& tool, const ReportChoice& choice) {
    const CTemporaryPath settings("");
    KeepSettingsIn(settings.Path());
    WriteSettings(tool, choice);
    if (choice.Documents.Output.empty() || choice.Documents.Output == StreamPath) {
        throw Failure(fnInvalidCall, "Reports go to files: use --output");
    }
    choice.Documents.ForEach(tool, ".pdf", [&](const std::string& path, const std::string& output) {
        if (!RunDesktopProgram({"--report=" + output, path})) {
            throw Failure(fnInvalidCall, "The report could not be made");
        }
    });
}

} // namespace

void AddReport(CLI::App& app, Tool& tool) {
    CLI::App& command =
        *app.add_subcommand("report", "Prints documents into PDF files, by the desktop program");
    const auto choice = std::make_shared<ReportChoice>();
    choice->Documents.AddTo(command, "documents");
    choice->Views.AddTo(command, SelectableViewCount);
    command.add_flag("--landscape", choice->Landscape, "pages are wider than high");
    command.add_flag("--one-per-page", choice->OnePerPage, "every table begins a page");
    command.add_flag("--no-details", choice->NoDetails, "without the details of the chassis");
    command.add_flag("--coordinates", choice->Coordinates, "with the static coordinates");
    choice->Numbers.AddTo(command);
    command.callback([&tool, choice] { Report(tool, *choice); });
}

} // namespace corvanta
