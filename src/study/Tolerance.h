#pragma once

#include "study/DesignVariable.h"
#include "study/StudyChart.h"
#include "study/StudyNumber.h"
#include "study/StudyWork.h"
#include "study/Target.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {

enum class Spread : std::uint8_t {
    Uniform, ///< evenly between both ends
    Normal,  ///< the half width is three standard deviations; 3 of 1,000 parts lie beyond it
};

/// The half width of a normal spread in standard deviations.
inline constexpr double NormalDeviations = 3;

/// The ends of a band: what share of the samples lies below.
inline constexpr double LowProbability = 0.05;
inline constexpr double HighProbability = 0.95;

/// How exactly a variable is built.
struct Tolerance {
    DesignVariable Variable;
    double HalfWidth = 0; ///< to either side of the design's value, above 0, stored units
    Spread Distribution = Spread::Normal;

    friend bool operator==(const Tolerance&, const Tolerance&) = default;
};

/// Tolerances of all coordinates that a workshop decides, by kind of point: brackets on the chassis
/// 0.5 mm, joints of the upright 0.2 mm, pickups of rockers, springs and bars 0.3 mm; normal.
/// The wheel, the ride height's reference point and the pivots of a T-bar have none.
[[nodiscard]] std::vector<Tolerance> DefaultTolerances(const SuspensionData& data);

/// Why these can't be the tolerances of a design; empty when they can.
[[nodiscard]] std::string FaultOfTolerances(const Design& design,
                                            const std::vector<Tolerance>& tolerances);

/// The value and the gain at static and the range over travel of the channel of every chart that is
/// no map, each once. The value alone would tell little, as many are 0 at static or decided by the
/// wheel; nor would the range, which is no straight line where a curve is nearly level.
[[nodiscard]] std::vector<Figure> DefaultFigures(const std::vector<StudyChart>& charts);

/// How much do tolerances spread the curves?
struct ToleranceQuestion {
    std::vector<Tolerance> Tolerances;
    std::vector<StudyChart> Charts;
    std::vector<Figure> Figures;
    std::vector<Target> Targets;
    std::size_t Samples = 500;
    std::uint64_t Seed = 1; ///< fewer samples of the same seed are the first of more

    friend bool operator==(const ToleranceQuestion&, const ToleranceQuestion&) = default;
};

inline constexpr std::size_t LeastToleranceSamples = 2;
inline constexpr std::size_t MostToleranceSamples = 10'000;

/// How samples spread the curve of a chart, at each travel at which the design has a value; stored
/// units. Quantiles are straight between the sorted values (type 7 of Hyndman and Fan, "Sample
/// Quantiles in Statistical Packages", The American Statistician 50, 1996). Empty for a map, and
/// when no sample can be built.
struct ToleranceBand {
    std::vector<double> Travel;  ///< growing, mm
    std::vector<double> Nominal; ///< the design itself
    std::vector<double> Low;     ///< 5 % of the samples lie below
    std::vector<double> High;    ///< 5 % lie above
    std::vector<double> Least;
    std::vector<double> Greatest;
};

/// How samples spread a figure; stored units.
struct FigureSpread {
    std::optional<double> Nominal;             ///< of the design itself
    std::vector<std::optional<double>> Values; ///< one for each sample, none where it is not built
    std::size_t Count = 0;                     ///< of values
    double Mean = 0;
    double StandardDeviation = 0; ///< of the samples; 0 with fewer than two

    /// The share of each tolerance in the variance, 0 to 1, in the question's order: that of its
    /// standardised regression coefficient squared (Saltelli et al., "Global Sensitivity Analysis:
    /// The Primer", 2008, section 1.2.5) in what the regression explains, the adjusted R^2. Empty
    /// when nothing varies, and when there are fewer than two samples for each coefficient, which
    /// would explain anything.
    std::vector<double> Shares;
    double Unexplained = 1; ///< the rest, which follows from no coordinate in a straight line
};

/// How samples keep to a target.
struct TargetCount {
    std::size_t Judged = 0; ///< samples that are built and have a travel in common with it
    std::size_t Leave = 0;  ///< of these outside the band somewhere
    bool NominalHolds = false;
};

struct ToleranceAnswer {
    std::size_t Built = 0;             ///< samples that can be solved
    std::size_t NotBuilt = 0;          ///< samples that can't; nothing else counts them
    std::string FirstReason;           ///< why the first of these can't, in one line
    std::vector<ToleranceBand> Bands;  ///< one for each chart
    std::vector<FigureSpread> Spreads; ///< one for each figure
    std::vector<TargetCount> Targets;  ///< one for each target
    bool Stopped = false;              ///< on request: there is nothing else in the answer then
};

/// Solves samples of the design as it may be built, each variable drawn for itself. Throws Failure
/// `fnInvalidCall` that says what is wrong with the question, or why the design itself can't be
/// solved.
[[nodiscard]] ToleranceAnswer FindTolerance(CSampleRunner& runner, const Design& design,
                                            const ToleranceQuestion& question,
                                            const SolveSettings& settings);

} // namespace corvanta
