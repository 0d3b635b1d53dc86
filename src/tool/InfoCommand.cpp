#include "model/NumberText.h"
#include "study/Comparison.h"
#include "study/DesignFields.h"
#include "study/DesignVariable.h"
#include "tool/Tool.h"

#include <iostream>

namespace corvanta {

namespace {

struct InfoChoice {
    std::vector<std::string> Files;
    NumberChoice Numbers;
};

void Line(std::string_view name, std::string_view value, std::string_view unit = {}) {
    std::cout << "  " << name << ": " << value << (unit.empty() ? "" : " ") << unit << '\n';
}

/// A value of a design as it is entered.
struct FieldLine {
    const Design& Of;
    const FundamentalUnits& Units;
    std::string_view Caption;

    void operator()(const MechanismPlace& place) const {
        Line(Caption, place.Words(Of.Data.*place.Member));
    }
    void operator()(const FlagPlace& place) const {
        Line(Caption, Of.Data.*place.Member ? "yes" : "no");
    }
    void operator()(const TextPlace& place) const { Line(Caption, Of.Data.*place.Member); }
    void operator()(const NumberPlace& place) const {
        const DataNumber number{place.Member};
        const VariableDisplay display = DisplayOf(number, Units);
        Line(Caption,
             FormatNumber(ValueOf(Of, number) * display.Factor, display.Format,
                          Units.NumberSeparators),
             display.UnitLabel);
    }
};

void ShowHeadlines(const Program& corner, const Design& design) {
    const ComparedDesign compared{"", design, &corner.Document};
    for (const ComparisonSection& section :
         CompareDesigns({&compared, 1}, corner.Channels, corner.Units).Sections) {
        std::cout << section.Title << '\n';
        for (const ComparisonRow& row : section.Rows) {
            Line(row.Name, row.Texts.front(), row.Unit);
        }
    }
}

void Info(Tool& tool, const InfoChoice& choice) {
    const FundamentalUnits units = choice.Numbers.Chosen();
    tool.ForEach(choice.Files, [&](const std::string& path) {
        const Design design = Open(tool, path, units);
        std::cout << path << "\nEntered\n";
        for (const DesignField& field : DesignFields()) {
            std::visit(FieldLine{design, units, field.Caption}, field.Place);
        }
        Line("Points in play", std::to_string(CoordinatesInPlay(design.Data).size() / 3));
        CornerFailure failure;
        if (const std::unique_ptr<Program> corner = SolvedCorner(design, units, failure)) {
            ShowHeadlines(*corner, design);
        } else {
            tool.Report(path, TextOf(failure, design, units));
        }
    });
}

} // namespace

void AddInfo(CLI::App& app, Tool& tool) {
    CLI::App& command =
        *app.add_subcommand("info", "Shows what documents hold and their headline figures");
    const auto choice = std::make_shared<InfoChoice>();
    command.add_option("FILE", choice->Files, "documents; - for standard input")->required();
    choice->Numbers.AddTo(command);
    command.callback([&tool, choice] { Info(tool, *choice); });
}

} // namespace corvanta
