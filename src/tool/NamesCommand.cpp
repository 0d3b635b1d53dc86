#include "model/NumberText.h"
#include "study/DesignFields.h"
#include "study/DesignVariable.h"
#include "study/StudySchema.h"
#include "tool/Tool.h"

#include <iostream>

namespace corvanta {

namespace {

void ShowNames(Tool& tool, const std::string& path, const NumberChoice& numbers) {
    FundamentalUnits units = numbers.Chosen();
    const ChannelCatalogue channels =
        ChannelsOf(path.empty() ? Design() : Open(tool, path, units), units);
    std::cout << "Channels, by number or title\n";
    for (int id = 1; id <= ChannelCount; ++id) {
        const ChannelRecord& record = channels[id];
        std::cout << "  " << id << '\t' << TrimBlanks(record.Title) << '\t' << record.UnitLabel
                  << '\n';
    }
    std::cout << "Values of a document\n";
    for (const DesignField& field : DesignFields()) {
        if (const auto* const place = std::get_if<NumberPlace>(&field.Place)) {
            const DataNumber number{place->Member};
            std::cout << "  " << KeyOf(number) << '\t' << field.Caption << '\t'
                      << DisplayOf(number, units).UnitLabel << '\n';
        }
    }
    std::cout << "Links that can be made longer\n";
    for (const auto& word : studyfile::LinkWords) {
        std::cout << "  " << word.Text << '\n';
    }
}

} // namespace

void AddNames(CLI::App& app, Tool& tool) {
    CLI::App& command = *app.add_subcommand(
        "names",
        "Lists the names of channels, values and links; points are those of convert -t csv");
    const auto numbers = std::make_shared<NumberChoice>();
    const auto file = std::make_shared<std::string>();
    command.add_option("FILE", *file, "a document: channels are called as in it");
    numbers->AddTo(command);
    command.callback([&tool, file, numbers] { ShowNames(tool, *file, *numbers); });
}

} // namespace corvanta
