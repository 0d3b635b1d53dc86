#include "export/CDXF.h"
#include "tool/Tool.h"

namespace corvanta {

namespace {

struct DxfChoice {
    FileChoice Documents;
    std::string Form = "r12";
    PlaceChoice Place;
    NumberChoice Numbers;
};

void WriteDrawings(Tool& tool, const DxfChoice& choice) {
    const FundamentalUnits units = choice.Numbers.Chosen();
    const auto work = [&](const std::string& path, const std::string& output) {
        const std::unique_ptr<Program> corner = OpenSolved(tool, path, units);
        const DxfForm form = choice.Form == "r12" ? DxfForm::R12 : DxfForm::Classic;
        tool.Files.WriteBytes(output, DxfText(corner->Document, choice.Place.RackStep(*corner),
                                              choice.Place.WheelStep(*corner), form));
    };
    choice.Documents.ForEach(tool, ".dxf", work);
}

} // namespace

void AddDxf(CLI::App& app, Tool& tool) {
    CLI::App& command = *app.add_subcommand("dxf", "Calculates documents and draws the corner");
    const auto choice = std::make_shared<DxfChoice>();
    choice->Documents.AddTo(command);
    command
        .add_option("--form", choice->Form,
                    "r12, with a header, or classic, as the program exports it")
        ->check(CLI::IsMember({"r12", "classic"}))
        ->capture_default_str();
    choice->Place.AddTo(command);
    choice->Numbers.AddTo(command);
    command.callback([&tool, choice] { WriteDrawings(tool, *choice); });
}

} // namespace corvanta
