#pragma once

#include "calculation/SCalcs.h"
#include "model/Design.h"
#include "study/DesignVariable.h"
#include "study/Readings.h"
#include "study/StudyWork.h"
#include "study/Tolerance.h"

#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// The standard deviation of a tolerance: a third of the half width, or its share of an even
/// distribution, the root of a third. The fit takes either for that of a normal distribution.
[[nodiscard]] double PriorDeviation(const Tolerance& tolerance);

/// Which pickups were really built?
struct FitQuestion {
    std::vector<Tolerance> Free; ///< what is known of them before any reading: they were built to
                                 ///< the design within these
    std::vector<Reading> Readings;

    friend bool operator==(const FitQuestion&, const FitQuestion&) = default;
};

struct FittedVariable {
    DesignVariable Variable;
    double Before = 0; ///< of the design, stored units
    double After = 0;
    double Prior = 0;                ///< standard deviation before the readings
    std::optional<double> Deviation; ///< the one after; none when the search was stopped, or was
                                     ///< too far from its end to tell

    /// The readings tell something of it: they have brought its standard deviation below nine
    /// tenths of the one before. Without a `Deviation` it is not known whether they do, and false.
    bool Told = false;
};

struct FittedReading {
    double Before = 0;          ///< as the design has it, stored units
    double After = 0;           ///< as the fitted design has it
    double Residual = 0;        ///< the reading less that
    double InUncertainties = 0; ///< the residual in standard deviations of the reading
    bool Outlier = false;       ///< more than `OutlierBeyond` of them in a search that converged:
                                ///< it has no say in the fit
};

/// The biweight's usual constant, with which normal readings lose 5 per cent of their say.
inline constexpr double OutlierBeyond = 4.685;

struct FitAnswer {
    bool Stopped = false;
    bool Converged = false;
    std::string Words; ///< how the search ended
    Design Fitted;
    std::vector<FittedVariable> Variables; ///< in the order of the question
    std::vector<double> Correlations;    ///< of the variables, row by row; empty without deviations
    std::vector<FittedReading> Readings; ///< in the order of the question
    int Outliers = 0;

    /// Squares of the residuals of readings that are no outliers, and of the moves of the
    /// variables, all in standard deviations. As every variable brings its tolerance as a reading
    /// of its own, as many are free as there are such readings: where uncertainties and tolerances
    /// are honest, the quotient is about 1.
    double ChiSquared = 0;
    int DegreesOfFreedom = 0;

    /// Every reading was calculated at its own travels, none between the steps of a grid.
    bool Exact = true;
};

/// The variables that explain the readings best, by least squares of the residuals and of the moves
/// in standard deviations. Large residuals count linearly at first (Huber) and then, from there,
/// less and less (Tukey's biweight), so that a gross error is named and not followed. Standard
/// deviations and correlations are those of the posterior in its linear approximation: the inverse
/// of the weighted normal matrix, the tolerances within. Travels that the document's grid does not
/// hold are those of a `ReadingGrid`.
///
/// Throws Failure (`fnInvalidCall`) that says what is wrong with the question.
[[nodiscard]] FitAnswer Fit(CSampleRunner& runner, const Design& design,
                            const FitQuestion& question, const SolveSettings& settings);

} // namespace corvanta
