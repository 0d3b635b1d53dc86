#include "automation/PointsText.h"
#include "model/Failure.h"
#include "persistence/DesignFile.h"
#include "tool/Tool.h"

namespace corvanta {

namespace {

struct ConvertChoice {
    FileChoice Documents;
    std::string To = "WSP";
    std::string Points;
    NumberChoice Numbers;
};

/// Puts a file of points into a design.
void TakePointsOf(const std::string& path, Tool& tool, const FundamentalUnits& units,
                  Design& design) {
    try {
        TakePoints(design, tool.Files.ReadBytes(path), units);
    } catch (...) {
        throw Failure(fnInvalidCall, path + ": " + FailureInFlight().Description());
    }
}

void Convert(Tool& tool, const ConvertChoice& choice) {
    const FundamentalUnits units = choice.Numbers.Chosen();
    const auto work = [&](const std::string& path, const std::string& output) {
        Design design = Open(tool, path, units);
        if (!choice.Points.empty()) {
            KeepInput(tool, choice.Points, output);
            TakePointsOf(choice.Points, tool, units, design);
        }
        if (choice.To == "csv") {
            tool.Files.WriteBytes(output, PointsText(design, units));
        } else {
            tool.Files.WriteText(output, DesignText(design, units, tool.Files));
        }
    };
    choice.Documents.ForEach(tool, "." + choice.To, work, choice.To == "WSP");
}

} // namespace

void AddConvert(CLI::App& app, Tool& tool) {
    CLI::App& command = *app.add_subcommand(
        "convert", "Writes documents of any version as present ones, or their points as a table");
    const auto choice = std::make_shared<ConvertChoice>();
    choice->Documents.AddTo(command);
    command.add_option("-t,--to", choice->To, "a document, or a table of its points")
        ->check(CLI::IsMember({"WSP", "csv"}))
        ->capture_default_str();
    command.add_option("-p,--points", choice->Points, "a table of points to put in first");
    choice->Numbers.AddTo(command);
    command.callback([&tool, choice] { Convert(tool, *choice); });
}

} // namespace corvanta
