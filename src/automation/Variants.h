#pragma once

#include "study/Figure.h"
#include "study/Sweep.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

/// What an axis runs through by its name: "ptTRI.Z", "KSpring", "trackrod". Throws Failure that
/// names it.
[[nodiscard]] SweptValue SweptOfText(std::string_view name);

/// An axis as it is typed, in the units of the user: a coordinate "ptTRI.Z", a value "KSpring" or
/// a link "trackrod", then "=" and a list "100,120,150" or a range "190:200:11", both ends and how
/// many. Throws Failure that names the text.
[[nodiscard]] SweepAxis AxisOfText(std::string_view text, const FundamentalUnits& units);

/// A figure as it is typed: a channel by title or number, at static; or with ":gain", ":change",
/// ":range" or ":at=10" behind, and ":rack" for rack travel in place of wheel travel. Throws
/// Failure that names the text.
[[nodiscard]] Figure FigureOfText(std::string_view text, const ChannelCatalogue& channels,
                                  const FundamentalUnits& units);

/// A channel by its title or its number. Throws Failure that names the text.
[[nodiscard]] int ChannelOfText(std::string_view text, const ChannelCatalogue& channels);

/// Every combination of the values of some axes, the last one fastest.
struct VariantQuestion {
    std::vector<SweepAxis> Axes;
    std::vector<Figure> Figures;

    /// How many there are. Throws Failure for more than 2^53.
    [[nodiscard]] std::uint64_t Count() const;

    /// The values of a variant, one for each axis.
    [[nodiscard]] std::vector<double> ValuesAt(std::uint64_t number) const;

    /// Throws Failure `fnInvalidCall` that says what is wrong with the question.
    void Check(const Design& design) const;
};

/// Those of all variants that are worked on, from the first to below the last.
struct VariantRange {
    std::uint64_t First = 0;
    std::uint64_t Last = 0;
};

/// Part `part` of `parts`, from 1, equal to one variant.
[[nodiscard]] VariantRange ShardOf(std::uint64_t count, std::uint64_t part, std::uint64_t parts);

/// What came of one variant, stored units.
struct VariantRow {
    std::uint64_t Number = 0; ///< from 0
    std::vector<double> Values;
    std::vector<std::optional<double>> Figures; ///< empty when it can't be solved
    std::string Failure; ///< why not, or which figure a solved corner does not have
};

/// Solves variants and hands their rows out in order, some at a time, whatever the threads: memory
/// does not grow with their number. False when it was stopped, after the last row that was handed
/// out. Throws Failure `fnInvalidCall` that says what is wrong with the question.
bool RunVariants(CSampleRunner& runner, const Design& design, const VariantQuestion& question,
                 const SolveSettings& settings, const VariantRange& range,
                 const std::function<void(const VariantRow&)>& take);

} // namespace corvanta
