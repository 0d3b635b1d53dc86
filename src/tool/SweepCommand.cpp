#include "automation/SolvedCorner.h"
#include "automation/TableText.h"
#include "automation/Variants.h"
#include "model/Failure.h"
#include "model/NumberText.h"
#include "platform/PathText.h"
#include "tool/ProgressLine.h"
#include "tool/Tool.h"

#include <cerrno>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <limits>
#include <system_error>
#include <utility>

namespace corvanta {

namespace {

struct SweepChoice {
    std::string File;
    std::vector<std::string> Axes;
    std::vector<std::string> Figures;
    std::string Output;
    std::string Shard = "1/1";
    bool Resume = false;
    unsigned Jobs = 0;
    NumberChoice Numbers;
};

/// Rows as lines of a table.
class CVariantLines {
  public:
    CVariantLines(const VariantQuestion& question, const Design& design,
                  const ChannelCatalogue& channels, const FundamentalUnits& units)
        : m_separators(units.NumberSeparators),
          m_comma(1, ListSeparator(units.NumberSeparators)) {
        m_head = "variant";
        for (const SweepAxis& axis : question.Axes) {
            const VariableDisplay display = SweptDisplay(axis.What, units);
            AddColumn(SweptName(design.Data, axis.What), display.UnitLabel, display.Factor);
        }
        for (const Figure& figure : question.Figures) {
            const FigureDisplay display = DisplayOf(figure, channels, units);
            const bool needsRack = figure.Variable == vvAlongRackTravel &&
                                   figure.Kind != FigureKind::AtStatic &&
                                   figure.Kind != FigureKind::ChangeOverTravel; // its title has it
            AddColumn(display.Title + (needsRack ? ", rack" : ""), display.UnitLabel,
                      display.Factor);
        }
        m_head += m_comma + "failure\n";
    }

    [[nodiscard]] const std::string& Head() const { return m_head; }

    /// What stands in a line before its figures.
    [[nodiscard]] std::string BeginOf(std::uint64_t number,
                                      const std::vector<double>& values) const {
        std::string line = std::to_string(number) + m_comma;
        for (std::size_t n = 0; n < values.size(); ++n) {
            line += NumberToText(values[n] * m_factors[n], m_separators) + m_comma;
        }
        return line;
    }

    [[nodiscard]] std::string LineOf(const VariantRow& row) const {
        std::string line = BeginOf(row.Number, row.Values);
        for (std::size_t n = 0; row.Values.size() + n < m_factors.size(); ++n) {
            if (n < row.Figures.size() && row.Figures[n]) {
                line +=
                    NumberToText(*row.Figures[n] * m_factors[row.Values.size() + n], m_separators);
            }
            line += m_comma;
        }
        return line +
               (row.Failure.empty() ? "" : '"' + ReplaceAll(row.Failure, "\"", "\"\"") + '"') +
               '\n';
    }

  private:
    void AddColumn(const std::string& title, const std::string& unit, double factor) {
        m_head += m_comma + '"' + title + (unit.empty() ? "" : " [" + unit + "]") + '"';
        m_factors.push_back(factor);
    }

    Separators m_separators;
    std::string m_comma;
    std::string m_head;
    std::vector<double> m_factors; ///< one for each column of numbers
};

VariantRange RangeOf(const std::string& shard, std::uint64_t count) {
    std::uint64_t part = 0;
    std::uint64_t parts = 0;
    const char* const end = shard.data() + shard.size();
    const auto first = std::from_chars(shard.data(), end, part);
    const bool sound = first.ptr != end && *first.ptr == '/' &&
                       std::from_chars(first.ptr + 1, end, parts).ptr == end;
    if (!sound || part < 1 || part > parts || parts > std::numeric_limits<std::uint32_t>::max()) {
        throw Failure(fnInvalidCall, "A shard is part/parts, as 2/8, not " + shard);
    }
    return ShardOf(count, part, parts);
}

/// What is asked, and how it is written.
struct SweepTask {
    Design Of;
    VariantQuestion Question;
    SolveSettings Settings;
    CVariantLines Lines;
};

/// What a run that ended early has left.
struct KeptLines {
    std::uint64_t Rows = 0;
    std::uintmax_t Size = 0; ///< of the file with these rows
    std::string Last;
};

[[noreturn]] void RefuseToResume(const std::string& path, const char* what) {
    throw Failure(fnInvalidCall, path + " holds " + what + " and can't be resumed");
}

/// The whole lines of a file. One that does not begin as this sweep does is refused.
KeptLines LinesIn(const std::string& path, const SweepTask& task, const VariantRange& range) {
    std::ifstream file(PathOf(path), std::ios::binary);
    const std::string& head = task.Lines.Head();
    std::string line;
    if (!std::getline(file, line) || (file.eof() && head.starts_with(line))) {
        return {}; // there is nothing, or less than the head
    }
    if (line + '\n' != head) {
        RefuseToResume(path, "another table");
    }
    KeptLines kept{0, head.size(), {}};
    while (std::getline(file, line) && !file.eof()) { // a last line without its end is not whole
        const std::uint64_t number = range.First + kept.Rows;
        if (number >= range.Last ||
            !line.starts_with(task.Lines.BeginOf(number, task.Question.ValuesAt(number)))) {
            RefuseToResume(path, "other variants");
        }
        ++kept.Rows;
        kept.Size += line.size() + 1;
        kept.Last = line + '\n';
    }
    return kept;
}

/// How many rows of the range a file has; it is cut behind them. The last of them is solved again,
/// because rows of another document are numbered alike.
std::uint64_t KeptRows(const std::string& path, const SweepTask& task, const VariantRange& range) {
    const KeptLines kept = LinesIn(path, task, range);
    if (kept.Rows > 0) {
        CSampleRunner runner({1, {}, {}});
        const std::uint64_t end = range.First + kept.Rows;
        RunVariants(runner, task.Of, task.Question, task.Settings, {end - 1, end},
                    [&](const VariantRow& row) {
                        if (task.Lines.LineOf(row) != kept.Last) {
                            RefuseToResume(path, "figures of another corner");
                        }
                    });
        std::filesystem::resize_file(PathOf(path), kept.Size);
    }
    return kept.Rows;
}

std::ofstream OpenRows(const std::string& path, std::ios::openmode mode) {
    std::ofstream file(PathOf(path), std::ios::binary | mode);
    if (!file) {
        throw Failure(fnFileAccess,
                      path + " can't be written: " + std::generic_category().message(errno));
    }
    return file;
}

VariantQuestion QuestionOf(const SweepChoice& choice, const Design& design,
                           const SolveSettings& settings) {
    VariantQuestion question;
    for (const std::string& text : choice.Axes) {
        question.Axes.push_back(AxisOfText(text, settings.Units));
    }
    for (const std::string& text : choice.Figures) {
        question.Figures.push_back(FigureOfText(text, settings.Channels, settings.Units));
    }
    question.Check(design);
    return question;
}

void Sweep(Tool& tool, const SweepChoice& choice) {
    FundamentalUnits units = choice.Numbers.Chosen();
    const Design design = Open(tool, choice.File, units);
    const ChannelCatalogue channels = ChannelsOf(design, units);
    const SolveSettings settings{units, channels};
    const VariantQuestion question = QuestionOf(choice, design, settings);
    const SweepTask task{design, question, settings, {question, design, channels, units}};
    VariantRange range = RangeOf(choice.Shard, question.Count());
    const bool toFile = !choice.Output.empty() && choice.Output != StreamPath;
    if (choice.Resume && !toFile) {
        throw Failure(fnInvalidCall, "Only a file can be resumed: name it by --output");
    }
    KeepInput(tool, choice.File, choice.Output);
    const std::uint64_t kept = choice.Resume ? KeptRows(choice.Output, task, range) : 0;
    range.First += kept;
    std::ofstream file;
    if (toFile) {
        file = OpenRows(choice.Output, kept > 0 ? std::ios::app : std::ios::trunc);
    }
    std::ostream& out = toFile ? file : std::cout;
    if (kept == 0) {
        out << task.Lines.Head();
    }
    CProgressLine progress;
    CSampleRunner runner({choice.Jobs, {}, [&](double share) { progress.Show(share); }});
    const bool done =
        RunVariants(runner, design, question, settings, range, [&](const VariantRow& row) {
            if (!(out << task.Lines.LineOf(row))) {
                throw Failure(fnFileAccess, "The rows can't be written");
            }
        });
    if (!done || !out.flush()) {
        throw Failure(fnFileAccess, "The rows can't be written");
    }
}

} // namespace

void AddSweep(CLI::App& app, Tool& tool) {
    CLI::App& command = *app.add_subcommand(
        "sweep", "Varies coordinates, values and links of a document: a row for each combination");
    const auto choice = std::make_shared<SweepChoice>();
    command.add_option("FILE", choice->File, "the document; - for standard input")->required();
    command
        .add_option("--vary", choice->Axes,
                    "ptTRI.Z=190:200:11, KSpring=100,120,150 or trackrod=-1:1:3; the last one "
                    "runs fastest")
        ->required()
        ->allow_extra_args(false);
    command
        .add_option("--figure", choice->Figures,
                    "a channel at static, by title or number; behind it :gain, :change, :range or "
                    ":at=TRAVEL, and :rack")
        ->required()
        ->allow_extra_args(false);
    command.add_option("-o,--output", choice->Output, "file; standard output without it");
    command.add_option("--shard", choice->Shard, "part/parts of the variants")
        ->capture_default_str();
    command.add_flag("--resume", choice->Resume, "go on where the file ends");
    command.add_option("-j,--jobs", choice->Jobs, "threads; 0 for as many as the machine has")
        ->capture_default_str();
    choice->Numbers.AddTo(command);
    command.callback([&tool, choice] {
        tool.ForEach({choice->File}, [&](const std::string&) { Sweep(tool, *choice); });
    });
}

} // namespace corvanta
