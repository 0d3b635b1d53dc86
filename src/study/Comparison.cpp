#include "study/Comparison.h"

#include "model/NumberText.h"
#include "results/MDisplayTable.h"
#include "study/DesignFields.h"
#include "study/Figure.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <functional>
#include <optional>
#include <utility>
#include <variant>

namespace corvanta {

namespace {

using Designs = std::span<const ComparedDesign>;

constexpr const char* Missing = "-";
constexpr const char* PlainFormat = "0.00";

constexpr std::array<Figure, 18> HeadlineFigures{{
    {chCamberAngle, FigureKind::AtStatic},
    {chSteerAngle, FigureKind::AtStatic},
    {chCasterAngle, FigureKind::AtStatic},
    {chKingpinInclination, FigureKind::AtStatic},
    {chKingpinOffset, FigureKind::AtStatic},
    {chCasterOffset, FigureKind::AtStatic},
    {chHalfTrack, FigureKind::AtStatic},
    {chCamberAngle, FigureKind::GainAtStatic},
    {chSteerAngle, FigureKind::GainAtStatic},
    {chHalfTrack, FigureKind::GainAtStatic},
    {chRollCentreToGround, FigureKind::GainAtStatic},
    {chSpringVelocityRatio, FigureKind::AtStatic},
    {chSpringVelocityRatio, FigureKind::ChangeOverTravel},
    {chCentreSpringVelocityRatio, FigureKind::AtStatic},
    {chCentreSpringVelocityRatio, FigureKind::ChangeOverTravel},
    {chAntiDivePercent, FigureKind::AtStatic},
    {chAntiSquatPercent, FigureKind::AtStatic},
    {chWheelRateTotal, FigureKind::AtStatic},
}};

/// How the numbers of a row become texts.
struct NumberLook {
    double Factor = 1; ///< to display units
    std::string Format;
    bool Entered = true; ///< the user's own number: no difference is too small to be meant
};

/// A number to two significant digits.
double Rounded(double value) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                   std::chars_format::scientific, 1);
    std::from_chars(digits.data(), end.ptr, value);
    return value;
}

/// With its sign, so that it can't be taken for a value.
std::string DifferenceText(double first, double value, const NumberLook& look,
                           const Separators& separators) {
    const double difference = value * look.Factor - first * look.Factor;
    const double size = difference < 0 ? -difference : difference;
    const std::string zero = FormatNumber(0, look.Format, separators);
    std::string text = FormatNumber(size, look.Format, separators);
    if (text == zero && look.Entered && size > 0) {
        text = NumberToText(Rounded(size), separators);
    }
    return text == zero ? text : (difference < 0 ? "-" : "+") + text;
}

using NumberOf = std::function<std::optional<double>(const ComparedDesign&)>;

ComparisonRow NumberRow(std::string name, std::string unit, Designs designs,
                        const NumberOf& numberOf, const NumberLook& look,
                        const Separators& separators) {
    ComparisonRow row{std::move(name), std::move(unit), {}, {}};
    const std::optional<double> first = numberOf(designs.front());
    for (const ComparedDesign& design : designs) {
        const std::optional<double> value = numberOf(design);
        row.Texts.push_back(
            value ? FormatUnsignedZero(*value * look.Factor, look.Format, separators) : Missing);
        const bool compared = first && value && &design != &designs.front();
        row.Differences.push_back(compared ? DifferenceText(*first, *value, look, separators) : "");
    }
    return row;
}

/// True when not all designs have the same value as the first.
bool Differs(Designs designs, const auto& valueOf) {
    return std::any_of(designs.begin(), designs.end(), [&](const ComparedDesign& design) {
        return !(valueOf(design) == valueOf(designs.front()));
    });
}

// --- Coordinates --------------------------------------------------------------------------------

ComparisonSection Coordinates(Designs designs, const FundamentalUnits& units) {
    std::vector<PointCatalogue> catalogues;
    for (const ComparedDesign& design : designs) {
        catalogues.push_back(CatalogueOf(design.Design.Data));
    }
    const UnitRecord& unit = UsableUnit(units, ucDisplacement);
    const NumberLook look{static_cast<double>(unit.Factor), unit.Format, true};
    ComparisonSection section{"Coordinates", {}};
    for (const PointNumber number : AllPoints) {
        const auto named = std::find_if(
            catalogues.begin(), catalogues.end(),
            [&](const PointCatalogue& catalogue) { return catalogue[number].Enabled; });
        if (named == catalogues.end()) {
            continue;
        }
        for (const PointAxis& axis : PointAxes()) {
            const auto place = [&](const ComparedDesign& design) -> std::optional<double> {
                const auto slot = static_cast<std::size_t>(&design - designs.data());
                return catalogues[slot][number].Enabled
                           ? std::optional(design.Design.Points[number].*axis.Member)
                           : std::nullopt;
            };
            if (Differs(designs, place)) {
                section.Rows.push_back(
                    NumberRow((*named)[number].LongName + " " + std::string(axis.Name), unit.Label,
                              designs, place, look, units.NumberSeparators));
            }
        }
    }
    return section;
}

// --- Settings -----------------------------------------------------------------------------------

/// A text in one line: line ends and tabs would break a table.
std::string OneLine(const std::string& text) {
    std::string line = ReplaceAll(text, "\r\n", " ");
    std::replace_if(
        line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
    return line;
}

/// The row of a setting.
class SettingRow {
  public:
    SettingRow(const DesignField& field, Designs designs, const FundamentalUnits& units)
        : m_name(field.Caption),
          m_designs(designs),
          m_units(units) {}

    ComparisonRow operator()(const NumberPlace& place) const {
        NumberLook look{1, PlainFormat, true};
        std::string label;
        if (place.Class != PlainNumber) {
            const UnitRecord& unit = UsableUnit(m_units, place.Class);
            look = {static_cast<double>(unit.Factor), unit.Format, true};
            label = unit.Label;
        }
        const auto number = [&](const ComparedDesign& design) {
            return std::optional(design.Design.Data.*place.Member);
        };
        return NumberRow(m_name, label + std::string(place.UnitSuffix), m_designs, number, look,
                         m_units.NumberSeparators);
    }
    ComparisonRow operator()(const MechanismPlace& place) const {
        return Words([&](const SuspensionData& data) {
            return std::string(place.Words(data.*place.Member));
        });
    }
    ComparisonRow operator()(const FlagPlace& place) const {
        return Words([&](const SuspensionData& data) { return data.*place.Member ? "Yes" : "No"; });
    }
    ComparisonRow operator()(const TextPlace& place) const {
        return Words([&](const SuspensionData& data) { return OneLine(data.*place.Member); });
    }

  private:
    [[nodiscard]] ComparisonRow Words(const auto& wordsOf) const {
        ComparisonRow row{m_name, {}, {}, std::vector<std::string>(m_designs.size())};
        for (const ComparedDesign& design : m_designs) {
            row.Texts.emplace_back(wordsOf(design.Design.Data));
        }
        return row;
    }

    std::string m_name;
    Designs m_designs;
    const FundamentalUnits& m_units;
};

ComparisonSection Settings(Designs designs, const FundamentalUnits& units) {
    ComparisonSection section{"Settings", {}};
    for (const DesignField& field : DesignFields()) {
        std::visit(
            [&](const auto& place) {
                if (Differs(designs, [&](const ComparedDesign& design) {
                        return design.Design.Data.*place.Member;
                    })) {
                    section.Rows.push_back(SettingRow(field, designs, units)(place));
                }
            },
            field.Place);
    }
    return section;
}

// --- Figures ------------------------------------------------------------------------------------

ComparisonSection Figures(Designs designs, const ChannelCatalogue& channels,
                          const FundamentalUnits& units) {
    const bool centreSpring =
        std::any_of(designs.begin(), designs.end(), [](const ComparedDesign& design) {
            return HasCentreSpring(design.Design.Data);
        });
    ComparisonSection section{"Figures", {}};
    for (const Figure& figure : HeadlineFigures) {
        if (figure.Channel == chCentreSpringVelocityRatio && !centreSpring) {
            continue;
        }
        const FigureDisplay display = DisplayOf(figure, channels, units);
        const auto value = [&](const ComparedDesign& design) {
            return design.Solved ? FigureValue(*design.Solved, figure) : std::nullopt;
        };
        section.Rows.push_back(NumberRow(display.Title, display.UnitLabel, designs, value,
                                         {display.Factor, display.Format, false},
                                         units.NumberSeparators));
    }
    return section;
}

void AddRow(DataGrid& grid, const std::vector<std::string>& cells) {
    const int row = grid.Rows();
    grid.SetSize(row + 1, grid.Columns(), grid.FixedRows(), grid.FixedColumns());
    for (std::size_t column = 0; column < cells.size(); ++column) {
        grid.SetCell(row, static_cast<int>(column), cells[column]);
    }
}

std::vector<std::string> CellsOf(const ComparisonRow& row) {
    std::vector<std::string> cells{row.Name, row.Unit, row.Texts.front()};
    for (std::size_t i = 1; i < row.Texts.size(); ++i) {
        cells.push_back(row.Texts[i]);
        cells.push_back(row.Differences[i]);
    }
    return cells;
}

} // namespace

Comparison CompareDesigns(std::span<const ComparedDesign> designs, const ChannelCatalogue& channels,
                          const FundamentalUnits& units) {
    Comparison comparison;
    if (designs.empty()) {
        return comparison;
    }
    for (const ComparedDesign& design : designs) {
        comparison.Names.push_back(design.Name);
    }
    for (ComparisonSection& section :
         std::array{Coordinates(designs, units), Settings(designs, units),
                    Figures(designs, channels, units)}) {
        if (!section.Rows.empty()) {
            comparison.Sections.push_back(std::move(section));
        }
    }
    return comparison;
}

void ShowComparison(DataGrid& grid, const Comparison& comparison) {
    constexpr int FixedColumns = 2;
    ResetGrid(grid);
    if (comparison.Names.empty()) {
        return;
    }
    const auto designs = static_cast<int>(comparison.Names.size());
    grid.SetSize(1, FixedColumns + 2 * designs - 1, 1, FixedColumns);
    ComparisonRow head{"", "Unit", comparison.Names,
                       std::vector<std::string>(comparison.Names.size(), "Difference")};
    const std::vector<std::string> titles = CellsOf(head);
    for (std::size_t column = 0; column < titles.size(); ++column) {
        grid.SetCell(0, static_cast<int>(column), titles[column]);
    }
    grid.SetBold(0);
    for (const ComparisonSection& section : comparison.Sections) {
        AddRow(grid, {section.Title});
        grid.SetBold(grid.Rows() - 1);
        for (const ComparisonRow& row : section.Rows) {
            AddRow(grid, CellsOf(row));
        }
    }
    BandAlternateLines(grid, true, 1);
}

} // namespace corvanta
