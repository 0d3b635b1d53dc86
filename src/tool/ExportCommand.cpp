#include "automation/Variants.h"
#include "calculation/SCalcs.h"
#include "model/Failure.h"
#include "tool/TableOutput.h"
#include "tool/Tool.h"
#include "tool/ViewChoice.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace corvanta {

namespace {

struct ExportChoice {
    std::vector<std::string> Files;
    ViewChoice Views;
    std::vector<std::string> Channels;
    TableChoice Tables;
    std::string Output;
    std::string Along = "wheel";
    double Wheel = 0;
    double Rack = 0;
    NumberChoice Numbers;
};

std::vector<ResultTable> Wanted(Program& corner, const ExportChoice& choice) {
    for (const std::string& channel : choice.Channels) {
        corner.CustomChannels.Add(ChannelOfText(channel, corner.Channels));
    }
    const double factor = corner.Units[ucDisplacement].Factor;
    const TablePlace place{choice.Along == "rack" ? vvAlongRackTravel : vvAlongWheelTravel,
                           NearestWheelStep(corner.Document, choice.Wheel / factor),
                           NearestRackStep(corner.Document, choice.Rack / factor)};
    std::vector<ResultTable> tables;
    for (const std::int32_t view : choice.Views.Views(!choice.Channels.empty())) {
        std::vector<ResultTable> more = TablesOf(corner, view, place);
        std::move(more.begin(), more.end(), std::back_inserter(tables));
    }
    return tables;
}

void Export(Tool& tool, const ExportChoice& choice) {
    const FundamentalUnits units = choice.Numbers.Chosen();
    tool.ForEach(choice.Files, [&](const std::string& path) {
        const std::string output = OutputFor(tool, choice.Output, path, "." + choice.Tables.Format,
                                             choice.Files.size() > 1);
        const std::unique_ptr<Program> corner = OpenSolved(tool, path, units);
        tool.Files.WriteBytes(
            output, choice.Tables.BytesOf(Wanted(*corner, choice), units.NumberSeparators));
    });
}

} // namespace

void AddExport(CLI::App& app, Tool& tool) {
    CLI::App& command = *app.add_subcommand("export", "Calculates documents and writes tables");
    const auto choice = std::make_shared<ExportChoice>();
    command.add_option("FILE", choice->Files, "documents; - for standard input")->required();
    choice->Views.AddTo(command, vwAllChannels);
    command
        .add_option("-c,--channels", choice->Channels,
                    "channels of the custom table, by title or number, parted by commas")
        ->delimiter(',')
        ->allow_extra_args(false);
    choice->Tables.AddTo(command);
    command.add_option("-o,--output", choice->Output,
                       "file, or folder for several; standard output without it");
    command.add_option("--along", choice->Along, "what tables run along")
        ->check(CLI::IsMember({"wheel", "rack"}))
        ->capture_default_str();
    command.add_option("--wheel", choice->Wheel, "wheel travel of what runs along rack travel");
    command.add_option("--rack", choice->Rack, "rack travel of what runs along wheel travel");
    choice->Numbers.AddTo(command);
    command.callback([&tool, choice] { Export(tool, *choice); });
}

} // namespace corvanta
