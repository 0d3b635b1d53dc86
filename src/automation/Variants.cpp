#include "automation/Variants.h"

#include "automation/TableText.h"
#include "model/Failure.h"
#include "model/NumberText.h"
#include "study/StudyNumber.h"
#include "study/StudySchema.h"
#include "study/StudySolve.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace corvanta {

namespace {

/// Rows that are solved before they are handed out.
constexpr std::uint64_t ChunkSize = 512;

[[noreturn]] void Refuse(std::string_view text, const std::string& fault) {
    throw Failure(fnInvalidCall, "\"" + std::string(text) + "\": " + fault);
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (std::size_t end = text.find(separator); end != std::string_view::npos;
         end = text.find(separator)) {
        parts.push_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    parts.push_back(text);
    return parts;
}

double NumberIn(std::string_view text, std::string_view whole, const FundamentalUnits& units) {
    const std::optional<double> number = WholeNumberText(text, units.NumberSeparators.Decimal);
    if (!number) {
        Refuse(whole, "\"" + std::string(text) + "\" is no number");
    }
    return *number;
}

std::vector<double> ValuesOf(std::string_view text, std::string_view whole,
                             const FundamentalUnits& units) {
    const std::vector<std::string_view> range = Split(text, ':');
    if (range.size() == 1) {
        const char separator = ListSeparator(units.NumberSeparators);
        std::vector<double> values;
        for (const std::string_view value : Split(text, separator)) {
            values.push_back(NumberIn(value, whole, units));
        }
        return values;
    }
    const double count = range.size() == 3 ? NumberIn(range[2], whole, units) : 0;
    if (count < 1 || count > static_cast<double>(MostSweptDesigns) ||
        count != static_cast<double>(static_cast<std::size_t>(count))) {
        Refuse(whole, "a range is from:to:count, with 1 to " + std::to_string(MostSweptDesigns) +
                          " values");
    }
    return EvenlySpaced(NumberIn(range[0], whole, units), NumberIn(range[1], whole, units),
                        static_cast<std::size_t>(count));
}

GridCut CutFor(const VariantQuestion& question) {
    GridCut cut = StaticCut();
    for (const Figure& figure : question.Figures) {
        AddNumber(cut, figure);
    }
    return cut;
}

std::string FaultOf(const VariantQuestion& question, const Design& design) {
    if (std::string fault = FaultOfAxes(question.Axes, design); !fault.empty()) {
        return fault;
    }
    if (question.Figures.empty()) {
        return "No figure is asked for";
    }
    for (const Figure& figure : question.Figures) {
        if (std::string fault = FaultOfFigure(figure); !fault.empty()) {
            return fault;
        }
    }
    return {};
}

} // namespace

SweptValue SweptOfText(std::string_view name) {
    if (const std::optional<DesignVariable> variable = VariableOf(name)) {
        return *variable;
    }
    for (const auto& word : studyfile::LinkWords) {
        if (UpperCase(word.Text) == UpperCase(name)) {
            return word.Meaning;
        }
    }
    Refuse(name, "there is no such coordinate, value or link");
}

SweepAxis AxisOfText(std::string_view text, const FundamentalUnits& units) {
    const std::size_t mark = text.find('=');
    if (mark == std::string_view::npos) {
        Refuse(text, "an axis is a name, \"=\" and its values");
    }
    SweepAxis axis{SweptOfText(TrimBlanks(text.substr(0, mark))),
                   ValuesOf(text.substr(mark + 1), text, units)};
    const double factor = SweptDisplay(axis.What, units).Factor;
    for (double& value : axis.Values) {
        value /= factor;
    }
    return axis;
}

int ChannelOfText(std::string_view text, const ChannelCatalogue& channels) {
    const std::string wanted = UpperCase(TrimBlanks(text));
    for (int id = 1; id <= ChannelCount; ++id) {
        if (wanted == std::to_string(id) || wanted == UpperCase(TrimBlanks(channels[id].Title))) {
            return id;
        }
    }
    Refuse(text, "there is no such channel");
}

Figure FigureOfText(std::string_view text, const ChannelCatalogue& channels,
                    const FundamentalUnits& units) {
    const std::vector<std::string_view> parts = Split(text, ':');
    Figure figure{ChannelOfText(parts.front(), channels)};
    std::size_t kinds = 0;
    std::size_t racks = 0;
    for (std::size_t n = 1; n < parts.size(); ++n) {
        if (parts[n] == "rack") {
            figure.Variable = vvAlongRackTravel;
            ++racks;
            continue;
        }
        ++kinds;
        if (parts[n] == "gain") {
            figure.Kind = FigureKind::GainAtStatic;
        } else if (parts[n] == "change") {
            figure.Kind = FigureKind::ChangeOverTravel;
        } else if (parts[n] == "range") {
            figure.Kind = FigureKind::RangeOverTravel;
        } else if (parts[n].starts_with("at=")) {
            figure.Kind = FigureKind::AtTravel;
            figure.Travel = NumberIn(parts[n].substr(3), text, units) /
                            static_cast<double>(UsableUnit(units, ucDisplacement).Factor);
        } else {
            Refuse(text, "behind the channel stands gain, change, range, at= or rack");
        }
    }
    if (kinds > 1 || racks > 1) {
        Refuse(text, "gain, change, range and at= exclude each other, and no word stands twice");
    }
    return figure;
}

std::uint64_t VariantQuestion::Count() const {
    constexpr std::uint64_t most = std::uint64_t{1} << 53;
    std::uint64_t count = 1;
    for (const SweepAxis& axis : Axes) {
        if (!axis.Values.empty() && count > most / axis.Values.size()) {
            throw Failure(fnInvalidCall, "There are too many variants");
        }
        count *= axis.Values.size();
    }
    return count;
}

std::vector<double> VariantQuestion::ValuesAt(std::uint64_t number) const {
    std::vector<double> values(Axes.size());
    for (std::size_t n = Axes.size(); n-- > 0;) {
        const std::vector<double>& along = Axes[n].Values;
        values[n] = along[number % along.size()];
        number /= along.size();
    }
    return values;
}

void VariantQuestion::Check(const Design& design) const {
    if (const std::string fault = FaultOf(*this, design); !fault.empty()) {
        throw Failure(fnInvalidCall, fault);
    }
}

VariantRange ShardOf(std::uint64_t count, std::uint64_t part, std::uint64_t parts) {
    const auto end = [&](std::uint64_t shard) { // without a product that overflows
        return count / parts * shard + count % parts * shard / parts;
    };
    return {end(part - 1), end(part)};
}

bool RunVariants(CSampleRunner& runner, const Design& design, const VariantQuestion& question,
                 const SolveSettings& settings, const VariantRange& range,
                 const std::function<void(const VariantRow&)>& take) {
    question.Check(design);
    const GridCut cut = CutFor(question);
    const auto count = static_cast<double>(range.Last - range.First);
    std::vector<VariantRow> rows;
    for (std::uint64_t first = range.First; first < range.Last; first += rows.size()) {
        rows.assign(std::min(ChunkSize, range.Last - first), {});
        const auto solve = [&](std::size_t n, Suspension& scratch) {
            VariantRow& row = rows[n];
            row.Number = first + n;
            row.Values = question.ValuesAt(row.Number);
            const Design variant = DesignWith(design, question.Axes, row.Values, row.Failure);
            if (!row.Failure.empty()) {
                return;
            }
            const SolveResult outcome = Solve(scratch, variant, settings, cut, runner.Work().Stop);
            if (!outcome.Solved) {
                row.Failure = outcome.Stopped ? "Stopped" : ReasonOf(outcome.Failure);
                return;
            }
            for (const Figure& figure : question.Figures) {
                row.Figures.push_back(FigureValue(scratch, figure));
                if (!row.Figures.back()) {
                    row.Failure = "The corner has no value of " +
                                  std::string(TrimBlanks(settings.Channels[figure.Channel].Title)) +
                                  " there";
                }
            }
        };
        const auto share = [&](std::uint64_t number) {
            return static_cast<double>(number - range.First) / count;
        };
        if (!runner.Run(rows.size(), solve, share(first), share(first + rows.size()))) {
            return false;
        }
        std::for_each(rows.begin(), rows.end(), take);
    }
    return true;
}

} // namespace corvanta
