#pragma once

#include "model/Channels.h"
#include "model/Design.h"
#include "model/Suspension.h"
#include "model/Units.h"
#include "platform/DataGrid.h"

#include <span>
#include <string>
#include <vector>

namespace corvanta {

/// A design that is compared.
struct ComparedDesign {
    std::string Name;
    corvanta::Design Design;
    const Suspension* Solved = nullptr; ///< its results; none when it can't be solved
};

/// One line of a comparison, in display units. What a design does not have is "-".
struct ComparisonRow {
    std::string Name;
    std::string Unit;                     ///< empty for words
    std::vector<std::string> Texts;       ///< one for each design
    std::vector<std::string> Differences; ///< to the first design, empty where there is none
};

struct ComparisonSection {
    std::string Title;
    std::vector<ComparisonRow> Rows; ///< never empty
};

/// What differs between designs. The first one is what the others are measured by.
struct Comparison {
    std::vector<std::string> Names; ///< of the designs
    std::vector<ComparisonSection> Sections;
};

/// Lists the coordinates of points in play and the settings that are not the same in all designs,
/// and the headline figures of each, whether they differ or not: static camber, steer, caster,
/// kingpin inclination, scrub, trail and half track; gains at static of camber, steer, half track
/// and roll centre height; spring velocity ratio and its change; anti features; wheel rate. A
/// difference that rounds to nothing in the unit's format is written in two significant digits
/// where the user entered it. Throws Failure 1000 when a unit has no factor.
[[nodiscard]] Comparison CompareDesigns(std::span<const ComparedDesign> designs,
                                        const ChannelCatalogue& channels,
                                        const FundamentalUnits& units);

/// Fills a grid with a comparison: a fixed title row, fixed columns of names and units, a bold line
/// above each section, and beside each design but the first its differences. The texts of the grid
/// are the table for the clipboard and for a file.
void ShowComparison(DataGrid& grid, const Comparison& comparison);

} // namespace corvanta
