#pragma once

#include "study/CornerLinkage.h"
#include "study/Curve.h"
#include "study/DesignVariable.h"
#include "study/StudyChart.h"
#include "study/StudyNumber.h"
#include "study/StudyWork.h"

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace corvanta {

/// What a sweep runs through: a variable, or by how much a link is longer than designed, mm. With a
/// link the corner is solved anew as it stands on its wheels, with the load of its spring as it was
/// (`CRigidCorner::OnSpring`); that place is the static position of its curves, straight ahead.
using SweptValue = std::variant<DesignVariable, CornerLink>;

/// "Trackrod inboard pickup Z", "Pushrod, longer by".
[[nodiscard]] std::string SweptName(const SuspensionData& data, const SweptValue& what);

/// Throws Failure 1000 when the unit has no factor.
[[nodiscard]] VariableDisplay SweptDisplay(const SweptValue& what, const FundamentalUnits& units);

/// The value of a design: 0 for a link.
[[nodiscard]] double ValueNow(const Design& design, const SweptValue& what);

struct SweepAxis {
    SweptValue What;
    std::vector<double> Values; ///< in any order, stored units

    friend bool operator==(const SweepAxis&, const SweepAxis&) = default;
};

/// Why values can't be swept in a design; empty when they can: at least one axis, none twice, each
/// of what the design has, with values that are numbers.
[[nodiscard]] std::string FaultOfAxes(std::span<const SweepAxis> axes, const Design& design);

/// The design with a value of each axis in place. Where it can't be built so, `fault` says why.
[[nodiscard]] Design DesignWith(Design design, std::span<const SweepAxis> axes,
                                std::span<const double> values, std::string& fault);

/// `count` values at even distances, both ends among them; the start alone for a count of 1.
[[nodiscard]] std::vector<double> EvenlySpaced(double from, double to, std::size_t count);

/// What if this runs from a to b?
struct SweepQuestion {
    std::vector<SweepAxis> Axes;       ///< one or two
    std::vector<StudyChart> Charts;    ///< for the curves of one axis; maps are passed over
    std::optional<StudyNumber> Number; ///< one that stands for each design

    friend bool operator==(const SweepQuestion&, const SweepQuestion&) = default;
};

inline constexpr std::size_t MostSweptDesigns = 10'000;

/// One design of a sweep.
struct SweptDesign {
    std::array<double, 2> Values{};           ///< along the axes; 0 for an axis that is not there
    std::optional<double> Number;             ///< stored units; none where a solved design has none
    std::vector<std::optional<Curve>> Curves; ///< one for each chart; empty when none are kept
    bool Solved = false;
    std::string Failure; ///< why it is not solved; empty where a stop came first
};

/// The designs, those of the second axis behind each other.
struct SweepAnswer {
    std::size_t FirstCount = 0;  ///< values of the first axis
    std::size_t SecondCount = 1; ///< values of the second; 1 without it
    std::vector<SweptDesign> Designs;
    std::size_t FailedDesigns = 0;
    bool Stopped = false; ///< on request: designs that were not come to are not solved

    /// Of the values `first` and `second` of the axes, from 0.
    [[nodiscard]] const SweptDesign& At(std::size_t first, std::size_t second = 0) const {
        return Designs[first * SecondCount + second];
    }
};

/// Solves the design with every value of the axes in its place. Throws Failure `fnInvalidCall`
/// that says what is wrong with the question.
[[nodiscard]] SweepAnswer RunSweep(CSampleRunner& runner, const Design& design,
                                   const SweepQuestion& question, const SolveSettings& settings);

} // namespace corvanta
