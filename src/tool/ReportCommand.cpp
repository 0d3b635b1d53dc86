#include "frame/MOptions.h"
#include "frame/MSusp.h"
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
    std::vector<std::string> Files;
    ViewChoice Views;
    std::string Output;
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
    tool.ForEach(choice.Files, [&](const std::string& path) {
        const std::string output =
            OutputFor(tool, choice.Output, path, ".pdf", choice.Files.size() > 1);
        tool.Failed = !RunDesktopProgram({"--report=" + output, path}) || tool.Failed;
    });
}

} // namespace

void AddReport(CLI::App& app, Tool& tool) {
    CLI::App& command =
        *app.add_subcommand("report", "Prints documents into PDF files, by the desktop program");
    const auto choice = std::make_shared<ReportChoice>();
    command.add_option("FILE", choice->Files, "documents")->required();
    choice->Views.AddTo(command, SelectableViewCount);
    command.add_option("-o,--output", choice->Output, "PDF file, or folder for several")
        ->required();
    command.add_flag("--landscape", choice->Landscape, "pages are wider than high");
    command.add_flag("--one-per-page", choice->OnePerPage, "every table begins a page");
    command.add_flag("--no-details", choice->NoDetails, "without the details of the chassis");
    command.add_flag("--coordinates", choice->Coordinates, "with the static coordinates");
    choice->Numbers.AddTo(command);
    command.callback([&tool, choice] { Report(tool, *choice); });
}

} // namespace corvanta
