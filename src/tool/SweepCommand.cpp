#include "automation/SolvedCorner.h"
#include "automation/TableText.h"
#include "automation/Variants.h"
#include "model/Failure.h"
#include "model/NumberText.h"
#include "platform/PathText.h"
#include "tool/ProgressLine.h"
#include "tool/Tool.h"

#include <charconv>
#include <fstream>
#include <iostream>
#include <limits>
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
            AddColumn(display.Title, display.UnitLabel, display.Factor);
        }
        m_head += m_comma + "failure\n";
    }

    [[nodiscard]] const std::string& Head() const { return m_head; }

    [[nodiscard]] std::string LineOf(const VariantRow& row) const {
        std::string line = std::to_string(row.Number);
        std::size_t column = 0;
        const auto add = [&](const std::optional<double>& value) {
            line += m_comma + (value ? NumberToText(*value * m_factors[column], m_separators) : "");
            ++column;
        };
        for (const double value : row.Values) {
            add(value);
        }
        for (std::size_t n = 0; column < m_factors.size(); ++n) {
            add(n < row.Figures.size() ? row.Figures[n] : std::nullopt);
        }
        return line + m_comma +
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

/// How many rows a run that ended early has left: the whole lines that belong to the range. The
/// file is cut behind them. One that begins with another head, or whose last row is not what
/// `lineOf` its number gives, is refused.
std::uint64_t KeptRows(const std::string& path, const std::string& head, const VariantRange& range,
                       const std::function<std::string(std::uint64_t number)>& lineOf) {
    std::ifstream file(PathOf(path), std::ios::binary);
    std::string line;
    if (!std::getline(file, line) || (file.eof() && head.starts_with(line))) {
        return 0; // there is nothing, or less than the head
    }
    if (line + '\n' != head) {
        throw Failure(fnInvalidCall, path + " holds another table and can't be resumed");
    }
    std::uint64_t rows = 0;
    auto size = static_cast<std::uintmax_t>(head.size());
    std::string last;
    while (std::getline(file, line) && !file.eof()) { // a last line without its end is not whole
        last = line + '\n';
        ++rows;
        size += last.size();
    }
    file.close();
    if (rows > range.Last - range.First || (rows > 0 && lineOf(range.First + rows - 1) != last)) {
        throw Failure(fnInvalidCall, path + " holds other variants and can't be resumed");
    }
    std::filesystem::resize_file(PathOf(path), size);
    return rows;
}

void Sweep(Tool& tool, const SweepChoice& choice) {
    FundamentalUnits units = choice.Numbers.Chosen();
    const Design design = Open(tool, choice.File, units);
    const ChannelCatalogue channels = ChannelsOf(design, units);
    VariantQuestion question;
    for (const std::string& text : choice.Axes) {
        question.Axes.push_back(AxisOfText(text, units));
    }
    for (const std::string& text : choice.Figures) {
        question.Figures.push_back(FigureOfText(text, channels, units));
    }
    if (const std::string fault = FaultOf(question, design); !fault.empty()) {
        throw Failure(fnInvalidCall, fault); // before an older file is touched
    }
    VariantRange range = RangeOf(choice.Shard, question.Count());
    const CVariantLines lines(question, design, channels, units);
    const bool toFile = !choice.Output.empty() && choice.Output != StreamPath;
    if (choice.Resume && !toFile) {
        throw Failure(fnInvalidCall, "Only a file can be resumed: name it by --output");
    }
    KeepInput(tool, choice.File, choice.Output);
    CProgressLine progress;
    CSampleRunner runner({choice.Jobs, {}, [&](double share) { progress.Show(share); }});
    const SolveSettings settings{units, channels};
    const auto lineOf = [&](std::uint64_t number) {
        std::string line;
        RunVariants(runner, design, question, settings, {number, number + 1},
                    [&](const VariantRow& row) { line = lines.LineOf(row); });
        return line;
    };
    const std::uint64_t kept =
        choice.Resume ? KeptRows(choice.Output, lines.Head(), range, lineOf) : 0;
    range.First += kept;
    std::ofstream file;
    if (toFile) {
        file.open(PathOf(choice.Output),
                  kept > 0 ? std::ios::binary | std::ios::app : std::ios::binary);
    }
    std::ostream& out = toFile ? file : std::cout;
    if (kept == 0) {
        out << lines.Head();
    }
    const bool done =
        RunVariants(runner, design, question, settings, range, [&](const VariantRow& row) {
            if (!(out << lines.LineOf(row))) {
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
