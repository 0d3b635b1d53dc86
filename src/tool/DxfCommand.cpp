#include "calculation/SCalcs.h"
#include "export/CDXF.h"
#include "results/MDisplay3d.h"
#include "tool/Tool.h"

namespace corvanta {

namespace {

struct DxfChoice {
    FileChoice Documents;
    std::string Form = "r12";
    double Wheel = 0;
    double Rack = 0;
    NumberChoice Numbers;
};

void WriteDrawings(Tool& tool, const DxfChoice& choice) {
    const FundamentalUnits units = choice.Numbers.Chosen();
    const double factor = units[ucDisplacement].Factor;
    tool.ForEach(choice.Documents.Files, [&](const std::string& path) {
        const std::string output = choice.Documents.OutputFor(tool, path, ".dxf");
        const std::unique_ptr<Program> corner = OpenSolved(tool, path, units);
        const Suspension& document = corner->Document;
        const int rack = NearestRackStep(document, choice.Rack / factor);
        const int wheel = NearestWheelStep(document, choice.Wheel / factor);
        CDXF dxf(choice.Form == "r12" ? DxfForm::R12 : DxfForm::Classic);
        dxf.OpenSection();
        Draw3d(dxf, PositionAt(document, rack, wheel));
        dxf.CloseSection();
        tool.Files.WriteBytes(output, dxf.Text());
    });
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
    command.add_option("--wheel", choice->Wheel, "wheel travel, of the step nearest to it");
    command.add_option("--rack", choice->Rack, "rack travel, of the step nearest to it");
    choice->Numbers.AddTo(command);
    command.callback([&tool, choice] { WriteDrawings(tool, *choice); });
}

} // namespace corvanta
