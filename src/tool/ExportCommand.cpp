#include "automation/TableText.h"
#include "automation/Variants.h"
#include "calculation/SCalcs.h"
#include "model/Failure.h"
#include "tool/Tool.h"
#include "tool/Workbook.h"

#include <array>
#include <cmath>
#include <utility>

namespace corvanta {

namespace {

constexpr const char* AllViews = "all";

/// How results leave, by the ending of the file.
enum class ExportForm : std::uint8_t { Tsv, Csv, Json, Xlsx };

const std::map<std::string, ExportForm>& Forms() {
    static const std::map<std::string, ExportForm> forms{{"tsv", ExportForm::Tsv},
                                                         {"csv", ExportForm::Csv},
                                                         {"json", ExportForm::Json},
                                                         {"xlsx", ExportForm::Xlsx}};
    return forms;
}

struct ExportChoice {
    std::vector<std::string> Files;
    std::vector<std::string> Views{AllViews};
    std::vector<std::string> Channels;
    std::string Format = "tsv";
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
    for (const std::string_view key : ViewKeys()) {
        const bool named =
            std::find(choice.Views.begin(), choice.Views.end(), key) != choice.Views.end();
        const bool all = choice.Views.front() == AllViews && key != "all-channels" &&
                         (key != "custom" || !choice.Channels.empty());
        if (named || all) {
            std::vector<ResultTable> more = TablesOf(corner, *ViewOfKey(key), place);
            std::move(more.begin(), more.end(), std::back_inserter(tables));
        }
    }
    return tables;
}

std::string BytesOf(std::span<const ResultTable> tables, ExportForm form,
                    const Separators& separators) {
    switch (form) {
    case ExportForm::Xlsx:
        return WorkbookOf(tables, separators);
    case ExportForm::Json:
        return TableText(tables, TableForm::Json, separators);
    case ExportForm::Csv:
        return TableText(tables, TableForm::Csv, separators);
    default:
        return TableText(tables, TableForm::Tsv, separators);
    }
}

void Export(Tool& tool, const ExportChoice& choice) {
    const FundamentalUnits units = choice.Numbers.Chosen();
    tool.ForEach(choice.Files, [&](const std::string& path) {
        const std::string output =
            OutputFor(tool, choice.Output, path, "." + choice.Format, choice.Files.size() > 1);
        const std::unique_ptr<Program> corner = OpenSolved(tool, path, units);
        tool.Files.WriteBytes(output, BytesOf(Wanted(*corner, choice), Forms().at(choice.Format),
                                              units.NumberSeparators));
    });
}

} // namespace

void AddExport(CLI::App& app, Tool& tool) {
    CLI::App& command = *app.add_subcommand("export", "Calculates documents and writes tables");
    const auto choice = std::make_shared<ExportChoice>();
    std::vector<std::string> views{AllViews};
    for (const std::string_view key : ViewKeys()) {
        views.emplace_back(key);
    }
    command.add_option("FILE", choice->Files, "documents; - for standard input")->required();
    command.add_option("-v,--view", choice->Views, "which tables")
        ->delimiter(',')
        ->check(CLI::IsMember(views))
        ->capture_default_str();
    command
        .add_option("-c,--channels", choice->Channels,
                    "channels of the custom table, by title or number")
        ->delimiter(',');
    command.add_option("-f,--format", choice->Format, "of what is written")
        ->check(CLI::IsMember({"tsv", "csv", "json", "xlsx"}))
        ->capture_default_str();
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
