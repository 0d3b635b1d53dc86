#include "automation/DesignCheck.h"
#include "persistence/DesignFile.h"
#include "tool/Tool.h"

#include <iostream>

namespace corvanta {

namespace {

struct CheckChoice {
    std::vector<std::string> Files;
    bool Strict = false;
    NumberChoice Numbers;
};

void Check(Tool& tool, const CheckChoice& choice) {
    const FundamentalUnits units = choice.Numbers.Chosen();
    tool.ForEach(choice.Files, [&](const std::string& path) {
        std::string words;
        const Design design = ReadDesign(path, units, tool.Files, words);
        std::vector<Finding> findings = CheckDesign(design, units);
        if (!words.empty()) { // of what the document lacks
            findings.push_back({false, OneLine(words)});
        }
        for (const Finding& finding : findings) {
            tool.Failed = tool.Failed || finding.IsError || choice.Strict;
            std::cout << path << ": " << (finding.IsError ? "error: " : "warning: ") << finding.Text
                      << '\n';
        }
        if (findings.empty()) {
            std::cout << path << ": nothing found\n";
        }
    });
}

} // namespace

void AddCheck(CLI::App& app, Tool& tool) {
    CLI::App& command = *app.add_subcommand("check", "Lists every problem and doubt of documents");
    const auto choice = std::make_shared<CheckChoice>();
    command.add_option("FILE", choice->Files, "documents; - for standard input")->required();
    command.add_flag("--strict", choice->Strict, "a warning fails as an error does");
    choice->Numbers.AddTo(command);
    command.callback([&tool, choice] { Check(tool, *choice); });
}

} // namespace corvanta
