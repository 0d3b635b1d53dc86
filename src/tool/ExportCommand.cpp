#include "automation/Variants.h"
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
    FileChoice Documents;
    ViewChoice Views;
    std::vector<std::string> Channels;
    TableChoice Tables;
    std::string Along = "wheel";
    PlaceChoice Place;
    NumberChoice Numbers;
};

std::vector<ResultTable> Wanted(Program& corner, const ExportChoice& choice) {
    for (const std::string& channel : choice.Channels) {
        corner.CustomChannels.Add(ChannelOfText(channel, corner.Channels));
    }
    const TablePlace place{choice.Along == "rack" ? vvAlongRackTravel : vvAlongWheelTravel,
                           choice.Place.WheelStep(corner), choice.Place.RackStep(corner)};
    std::vector<ResultTable> tables;
    for (const std::int32_t view : choice.Views.Views(!choice.Channels.empty())) {
        std::vector<ResultTable> more = TablesOf(corner, view, place);
        std::move(more.begin(), more.end(), std::back_inserter(tables));
    }
    return tables;
}

void Export(Tool& tool, const ExportChoice& choice) {
    const FundamentalUnits units = choice.Numbers.Chosen();
    const auto work = [&](const std::string& path, const std::string& output) {
        const std::unique_ptr<Program> corner = OpenSolved(tool, path, units);
        tool.Files.WriteBytes(
            output, choice.Tables.BytesOf(Wanted(*corner, choice), units.NumberSeparators));
    };
    choice.Documents.ForEach(tool, "." + choice.Tables.Format, work);
}

} // namespace

void AddExport(CLI::App& app, Tool& tool) {
    CLI::App& command = *app.add_subcommand("export", "Calculates documents and writes tables");
    const auto choice = std::make_shared<ExportChoice>();
    choice->Documents.AddTo(command);
    choice->Views.AddTo(command, vwAllChannels);
    command
        .add_option("-c,--channels", choice->Channels,
                    "channels of the custom table, by title or number, parted by commas")
        ->delimiter(',')
        ->allow_extra_args(false);
    choice->Tables.AddTo(command);
    command.add_option("--along", choice->Along, "what tables run along")
        ->check(CLI::IsMember({"wheel", "rack"}))
        ->capture_default_str();
    choice->Place.AddTo(command);
    choice->Numbers.AddTo(command);
    command.callback([&tool, choice] { Export(tool, *choice); });
}

} // namespace corvanta
