#include "automation/SolvedCorner.h"
#include "automation/Variants.h"
#include "model/Failure.h"
#include "persistence/DesignFile.h"
#include "tool/ProgressLine.h"
#include "tool/StudyDesk.h"
#include "tool/TableOutput.h"
#include "tool/Tool.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace corvanta {

namespace {

/// What is asked of the chart in hand, in the order of the workbench.
constexpr std::array<std::string_view, 4> FigureNames{"static", "gain", "range", "deviation"};

struct StudyChoice {
    FileChoice Documents;
    std::vector<std::string> Studies;
    std::string Document;
    std::string Chart;
    std::string Along = "wheel";
    std::string Figure = std::string(FigureNames[1]);
    std::string Keep;
    TableChoice Tables;
    NumberChoice Numbers;
};

template <std::size_t Count>
std::size_t PlaceOf(const std::array<std::string_view, Count>& names, const std::string& name) {
    return static_cast<std::size_t>(std::ranges::find(names, name) - names.begin());
}

template <std::size_t Count>
CLI::IsMember OneOf(const std::array<std::string_view, Count>& names) {
    return CLI::IsMember(std::vector<std::string>(names.begin(), names.end()));
}

StudyAim AimOf(const StudyChoice& choice, const Design& design, FundamentalUnits& units) {
    StudyAim aim;
    aim.Figure = static_cast<int>(PlaceOf(FigureNames, choice.Figure));
    if (!choice.Chart.empty()) {
        aim.Chart = {ChannelOfText(choice.Chart, ChannelsOf(design, units)),
                     choice.Along == "rack" ? ChartKind::AlongRackTravel
                                            : ChartKind::AlongWheelTravel};
    }
    return aim;
}

/// The document that was named, or the one that the study file names.
std::string DocumentOf(Tool& tool, const StudyChoice& choice, const std::string& path,
                       const StudyData& study) {
    if (!choice.Document.empty()) {
        return choice.Document;
    }
    const std::optional<std::string> found =
        FindDocument(tool.Files.FullPath(path), study.Document, tool.Files);
    if (!found) {
        throw Failure(fnFileNotFound, study.Document.empty()
                                          ? "names no document; name one by --document"
                                          : "The document " + study.Document + " is not there");
    }
    return *found;
}

std::vector<std::size_t> WantedOf(const StudyChoice& choice, const CStudyDesk& desk) {
    std::vector<std::size_t> wanted;
    for (const std::string& name : choice.Studies) {
        wanted.push_back(PlaceOf(StudyNames, name));
    }
    wanted = choice.Studies.empty() ? desk.Asked() : wanted;
    if (wanted.empty()) {
        throw Failure(fnInvalidCall, "asks nothing; name a study by --study");
    }
    return wanted;
}

void RunStudies(Tool& tool, const StudyChoice& choice, const std::string& path,
                const std::string& output) {
    FundamentalUnits units = choice.Numbers.Chosen();
    const StudyData study = ReadStudy(tool.Files.ReadBytes(path), path);
    const std::string document = DocumentOf(tool, choice, path, study);
    KeepInput(tool, document, output);
    const Design design = Open(tool, document, units);
    CStudyDesk desk(design, study, units, AimOf(choice, design, units));
    std::vector<ResultTable> tables;
    std::vector<Design> found;
    for (const std::size_t wanted : WantedOf(choice, desk)) {
        CProgressLine progress;
        try {
            std::vector<ResultTable> answer =
                desk.Answer(wanted, [&](double share) { progress.Show(share); });
            std::move(answer.begin(), answer.end(), std::back_inserter(tables));
            if (desk.Found()) {
                found.push_back(*desk.Found());
            }
        } catch (...) { // the other studies of the file have their answers all the same
            tool.Report(path, std::string(StudyNames.at(wanted)) + ": " +
                                  FailureInFlight().Description());
        }
    }
    if (!tables.empty()) {
        tool.Files.WriteBytes(output, choice.Tables.BytesOf(tables, units.NumberSeparators));
    }
    if (!choice.Keep.empty()) {
        if (found.size() != 1) {
            throw Failure(fnInvalidCall,
                          found.empty() ? "No study found a design to keep"
                                        : "Several studies found designs, and one can be kept: "
                                          "name a study by --study");
        }
        KeepInput(tool, path, choice.Keep);
        tool.Files.WriteText(choice.Keep, DesignText(found.front(), units, tool.Files));
    }
}

} // namespace

void AddStudy(CLI::App& app, Tool& tool) {
    CLI::App& command = *app.add_subcommand("study", "Answers what study files ask");
    const auto choice = std::make_shared<StudyChoice>();
    choice->Documents.AddTo(command, "study files");
    command
        .add_option("-s,--study", choice->Studies,
                    "which studies, parted by commas; without it those that the file asks for")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->check(OneOf(StudyNames));
    command.add_option("-d,--document", choice->Document,
                       "the document, in place of the one that the file names");
    command.add_option("-c,--chart", choice->Chart,
                       "the channel, by title or number, that sensitivity and sweep look at; the "
                       "first chart of the file without it");
    command.add_option("--along", choice->Along, "what that chart runs along")
        ->check(CLI::IsMember({"wheel", "rack"}))
        ->capture_default_str();
    command.add_option("--figure", choice->Figure, "what they look at of it")
        ->check(OneOf(FigureNames))
        ->capture_default_str();
    command.add_option("--keep", choice->Keep,
                       "a document to write the design to that optimise, fit or setup found");
    choice->Tables.AddTo(command);
    choice->Numbers.AddTo(command);
    command.callback([&tool, choice] {
        if (!choice->Keep.empty() && choice->Documents.Files.size() > 1) {
            throw Failure(fnInvalidCall, "One study file at a time can keep a design");
        }
        choice->Documents.ForEach(tool, "." + choice->Tables.Format,
                                  [&](const std::string& path, const std::string& output) {
                                      RunStudies(tool, *choice, path, output);
                                  });
    });
}

} // namespace corvanta
