#include "study/Fit.h"

#include "model/Failure.h"
#include "study/Figure.h"
#include "study/LeastSquares.h"
#include "study/ReadingGrid.h"
#include "study/SearchSideBySide.h"
#include "study/StudySolve.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

namespace corvanta {

namespace {

/// Huber's usual constant, in uncertainties.
constexpr double LinearBeyond = 1.345;

/// Where the first of the two searches ends, of the whole work.
constexpr double ShareOfFirst = 0.6;

/// Costs that differ by a lesser share are one, when the search begins and in the end.
constexpr double FirstCostTolerance = 1e-3;
constexpr double CostTolerance = 1e-8;

/// Below this share of the standard deviation before, one after tells something.
constexpr double ToldBelow = 0.9;

/// A question with all that its residuals need.
struct Measured {
    const Design& Base;
    const FitQuestion& Question;
    const SolveSettings& Settings;
    std::vector<DesignVariable> Variables{};
    ReadingGrid Grid{};
    std::vector<double> Before{}; ///< what the base has of the readings
};

std::string FaultOfWords(const Measured& measured) {
    const FitQuestion& question = measured.Question;
    if (std::string fault = FaultOfTolerances(measured.Base, question.Free); !fault.empty()) {
        return fault;
    }
    if (question.Readings.empty()) {
        return "There is no reading";
    }
    return FaultOfReadings(question.Readings, measured.Settings.Channels);
}

/// What a design at a point of the variables has of the readings; nothing when it can't be solved.
std::optional<std::vector<double>> Calculated(const Measured& measured,
                                              const std::vector<double>& x, Suspension& scratch,
                                              const std::stop_token& stop) {
    Design design = measured.Base;
    SetValues(design, measured.Variables, x);
    SetTravels(design, measured.Grid);
    if (!Solve(scratch, design, measured.Settings, measured.Grid.Cut, stop).Solved) {
        return std::nullopt;
    }
    std::vector<double> values;
    for (const ReadingPlace& place : measured.Grid.Places) {
        const std::optional<double> value = ValueAt(scratch, place);
        if (!value) {
            return std::nullopt;
        }
        values.push_back(*value);
    }
    return values;
}

std::vector<double> BasePoint(const Measured& measured) {
    std::vector<double> x;
    for (const DesignVariable& variable : measured.Variables) {
        x.push_back(ValueOf(measured.Base, variable));
    }
    return x;
}

/// What the corner of a solved base has not, of all that was read.
std::string FaultOfChannels(const Measured& measured, const Suspension& solved) {
    for (std::size_t n = 0; n < measured.Question.Readings.size(); ++n) {
        const int channel = measured.Question.Readings[n].Channel;
        if (!FigureValue(solved, {channel}) || !ValueAt(solved, measured.Grid.Places[n])) {
            return "Reading " + std::to_string(n + 1) + ": the corner has no " +
                   std::string(TrimBlanks(measured.Settings.Channels[channel].Title));
        }
    }
    return {};
}

/// Solves the design where it was read; returns what is wrong with the question.
std::string FaultOfBase(Measured& measured, Suspension& scratch) {
    if (std::string fault = FaultOfWords(measured); !fault.empty()) {
        return fault;
    }
    // What fails on any grid is told first, so that the travels of the readings are not blamed.
    SolveResult result = Solve(scratch, measured.Base, measured.Settings, StaticCut());
    if (!result.Solved) {
        return "The design can't be calculated: " + ReasonOf(result.Failure);
    }
    if (std::string fault =
            FaultOfPlaces(measured.Base, measured.Question.Readings, measured.Settings);
        !fault.empty()) {
        return fault;
    }
    measured.Grid =
        GridOfReadings(measured.Base, measured.Question.Readings, measured.Settings.Units);
    Design design = measured.Base;
    SetTravels(design, measured.Grid);
    result = Solve(scratch, design, measured.Settings, measured.Grid.Cut);
    if (!result.Solved) {
        return "The design can't be calculated at the travels of the readings: " +
               ReasonOf(result.Failure);
    }
    if (std::string fault = FaultOfChannels(measured, scratch); !fault.empty()) {
        return fault;
    }
    for (const ReadingPlace& place : measured.Grid.Places) {
        measured.Before.push_back(*ValueAt(scratch, place));
    }
    return {};
}

/// Residuals of the readings, then the moves of the variables, all in standard deviations.
std::optional<std::vector<double>> ResidualsAt(const Measured& measured,
                                               const std::vector<double>& x, Suspension& scratch,
                                               const std::stop_token& stop) {
    std::optional<std::vector<double>> residuals = Calculated(measured, x, scratch, stop);
    for (std::size_t n = 0; residuals && n < measured.Question.Readings.size(); ++n) {
        const Reading& reading = measured.Question.Readings[n];
        (*residuals)[n] = ((*residuals)[n] - reading.Value) / reading.Uncertainty;
    }
    for (std::size_t i = 0; residuals && i < x.size(); ++i) {
        residuals->push_back((x[i] - ValueOf(measured.Base, measured.Variables[i])) /
                             PriorDeviation(measured.Question.Free[i]));
    }
    return residuals;
}

LeastSquaresProblem ProblemOf(const Measured& measured) {
    constexpr double Infinite = std::numeric_limits<double>::infinity();
    LeastSquaresProblem problem;
    problem.Start = BasePoint(measured);
    problem.Low.assign(problem.Start.size(), -Infinite);
    problem.High.assign(problem.Start.size(), Infinite);
    for (std::size_t i = 0; i < problem.Start.size(); ++i) {
        problem.Step.push_back(DifferenceStep(measured.Variables[i], problem.Start[i]));
    }
    return problem;
}

/// The search that is robust from anywhere, and from where that ends the one without a say for
/// gross errors.
LeastSquaresResult Search(CSampleRunner& runner, const Measured& measured) {
    LeastSquaresProblem problem = ProblemOf(measured);
    const ResidualsOfDesign residuals = [&](const std::vector<double>& x, Suspension& scratch) {
        return ResidualsAt(measured, x, scratch, runner.Work().Stop);
    };
    const auto solve = [&](RobustLoss loss, double scale, double from, double to) {
        problem.Loss = loss;
        problem.CostTolerance = problem.Covariance ? CostTolerance : FirstCostTolerance;
        problem.LossScales.assign(measured.Before.size(), scale);
        problem.LossScales.resize(measured.Before.size() + problem.Start.size(), 0);
        return SearchSideBySide(runner, residuals, {&problem, 1}, from, to).front();
    };
    LeastSquaresResult first = solve(RobustLoss::Huber, LinearBeyond, 0, ShareOfFirst);
    if (first.Stopped || !first.Evaluated) {
        return first;
    }
    problem.Start = first.X;
    problem.Covariance = true;
    LeastSquaresResult second = solve(RobustLoss::Tukey, OutlierBeyond, ShareOfFirst, 1);
    if (!second.Evaluated) {
        first.Stopped = second.Stopped;
        first.Converged = false;
        first.Words = second.Words;
        return first;
    }
    return second;
}

void TellVariables(FitAnswer& answer, const Measured& measured, const LeastSquaresResult& found) {
    const std::size_t count = measured.Variables.size();
    for (std::size_t i = 0; i < count; ++i) {
        FittedVariable variable{measured.Variables[i],
                                ValueOf(measured.Base, measured.Variables[i]), found.X[i],
                                PriorDeviation(measured.Question.Free[i]), std::nullopt};
        if (!found.Covariance.empty()) {
            variable.Deviation = std::sqrt(found.Covariance[i * count + i]);
            variable.Told = *variable.Deviation < ToldBelow * variable.Prior;
        }
        const double moved = (variable.After - variable.Before) / variable.Prior;
        answer.ChiSquared += moved * moved;
        answer.Variables.push_back(variable);
    }
    for (std::size_t i = 0; !found.Covariance.empty() && i < count; ++i) {
        for (std::size_t j = 0; j < count; ++j) {
            answer.Correlations.push_back(
                found.Covariance[i * count + j] /
                (*answer.Variables[i].Deviation * *answer.Variables[j].Deviation));
        }
    }
}

void TellReadings(FitAnswer& answer, const Measured& measured, const LeastSquaresResult& found) {
    for (std::size_t n = 0; n < measured.Before.size(); ++n) {
        const Reading& reading = measured.Question.Readings[n];
        FittedReading fitted;
        fitted.Before = measured.Before[n];
        fitted.InUncertainties = -found.Residuals[n];
        fitted.Residual = fitted.InUncertainties * reading.Uncertainty;
        fitted.After = reading.Value - fitted.Residual;
        fitted.Outlier = found.Converged && std::abs(fitted.InUncertainties) > OutlierBeyond;
        if (fitted.Outlier) {
            ++answer.Outliers;
        } else {
            answer.ChiSquared += fitted.InUncertainties * fitted.InUncertainties;
            ++answer.DegreesOfFreedom;
        }
        answer.Readings.push_back(fitted);
    }
}

/// The design as it stands: what a fit has found that was stopped before its first step.
LeastSquaresResult Unmoved(const Measured& measured) {
    LeastSquaresResult result;
    result.X = BasePoint(measured);
    for (std::size_t n = 0; n < measured.Before.size(); ++n) {
        const Reading& reading = measured.Question.Readings[n];
        result.Residuals.push_back((measured.Before[n] - reading.Value) / reading.Uncertainty);
    }
    return result;
}

} // namespace

double PriorDeviation(const Tolerance& tolerance) {
    return tolerance.HalfWidth /
           (tolerance.Distribution == Spread::Normal ? NormalDeviations : std::sqrt(3.0));
}

FitAnswer Fit(CSampleRunner& runner, const Design& design, const FitQuestion& question,
              const SolveSettings& settings) {
    Measured measured{design, question, settings, VariablesOf(question.Free)};
    if (const std::string fault = FaultOfBase(measured, runner.Scratch()); !fault.empty()) {
        throw Failure(fnInvalidCall, fault);
    }
    const LeastSquaresResult found = Search(runner, measured);
    FitAnswer answer;
    answer.Stopped = found.Stopped;
    answer.Converged = found.Converged;
    answer.Words = found.Words;
    answer.Exact = measured.Grid.Exact;
    answer.Fitted = design;
    const LeastSquaresResult& told = found.Evaluated ? found : Unmoved(measured);
    SetValues(answer.Fitted, measured.Variables, told.X);
    TellVariables(answer, measured, told);
    TellReadings(answer, measured, told);
    return answer;
}

} // namespace corvanta
