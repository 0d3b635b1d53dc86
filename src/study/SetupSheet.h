#pragma once

#include "calculation/SCalcs.h"
#include "study/Adjuster.h"
#include "study/Figure.h"
#include "study/StudyWork.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace corvanta {

/// A number of a corner that stands on its wheels.
struct SheetFigure {
    bool RideHeight = false; ///< of the reference point above the contact patch
    Figure Of{};             ///< what else, with the corner's new place as its static position

    friend bool operator==(const SheetFigure&, const SheetFigure&) = default;
};

/// Camber, toe, caster, ride height, kingpin inclination, trail, kingpin offset, roll centre
/// height, half track, spring velocity ratio and wheel rate, as far as the corner has them.
[[nodiscard]] std::vector<SheetFigure> SheetFiguresOf(const SuspensionData& data);

/// The display of a figure; its title, unit, factor and format. Throws Failure 1000 when a unit has
/// no factor.
[[nodiscard]] FigureDisplay DisplayOf(const SheetFigure& figure, const ChannelCatalogue& channels,
                                      const FundamentalUnits& units);

inline constexpr std::size_t MostAdjusters = 100;

/// What one step of each adjuster does to a corner that is built as the design.
struct SetupQuestion {
    std::vector<Adjuster> Adjusters;
    std::vector<SheetFigure> Figures;

    /// Where the corner stands, as wheel travel from the design, mm. Its spring platform brings it
    /// there before any adjuster is turned.
    double RideHeight = 0;

    friend bool operator==(const SetupQuestion&, const SetupQuestion&) = default;
};

/// Why a question can't be answered for a design; empty when it can.
[[nodiscard]] std::string FaultOf(const SetupQuestion& question, const Design& design);

/// A corner on its wheels with its figures, in stored units.
struct SheetState {
    std::string Fault; ///< why it can't stand or be solved; empty when it can
    Design Corner;
    std::vector<std::optional<double>> Values; ///< one for each figure; none that it does not have
};

/// A design as it is set up on the ground: solved anew for every setting of its adjusters.
///
/// The steer angle at static is the wheel's toe against the design, whose wheel stands straight
/// ahead; a design of its own begins with none. All other figures are those of the new design, its
/// wheel taken as straight ahead, which is felt in trail and offset alone: by a thousandth of a mm
/// at a toe of a few minutes.
class CSetupBench {
  public:
    /// All are kept by reference and must outlive it.
    CSetupBench(const Design& design, const SetupQuestion& question, const SolveSettings& settings);

    /// The state with counts of the adjusters, one for each. May be asked from several threads,
    /// each with its own scratch document.
    [[nodiscard]] SheetState StateAt(std::span<const double> counts, Suspension& scratch,
                                     const std::stop_token& stop = {}) const;

  private:
    const SetupQuestion& m_question;
    const SolveSettings& m_settings;
    CRigidCorner m_corner;
    CornerStance m_base;
    GridCut m_cut;
};

/// What a step of an adjuster changes, or why it can't be made.
struct SheetStep {
    std::string Fault;
    std::vector<std::optional<double>> Changes; ///< one for each figure, stored units
};

/// Both steps of an adjuster.
struct SheetRow {
    SheetStep More; ///< one step longer, or towards the positive end of the axis
    SheetStep Less;
};

struct SetupSheet {
    SheetState Base;
    std::vector<SheetRow> Rows; ///< one for each adjuster
    bool Stopped = false;       ///< before it was done; rows may be empty then
};

/// Solves the base and both steps of each adjuster, each anew. Throws Failure `fnInvalidCall` with
/// `FaultOf`'s text, or with why the base can't be solved.
[[nodiscard]] SetupSheet MakeSetupSheet(CSampleRunner& runner, const Design& design,
                                        const SetupQuestion& question,
                                        const SolveSettings& settings);

/// A setup sheet as texts in display units: a line for the base, then two for each adjuster. What a
/// corner does not have is "-"; a step that can't be made has its reason in place of its numbers.
struct SheetTable {
    struct Line {
        std::string Name;
        std::string Step; ///< "+0.5 turn, 1.5 mm"; empty for the base
        std::vector<std::string> Texts;
        std::string Fault;
    };
    std::vector<std::string> Titles; ///< of the figures, with their units below
    std::vector<std::string> Units;
    std::vector<Line> Lines;
};

[[nodiscard]] SheetTable TableOf(const SetupSheet& sheet, const SetupQuestion& question,
                                 const ChannelCatalogue& channels, const FundamentalUnits& units);

} // namespace corvanta
