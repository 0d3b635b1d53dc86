#include "study/Optimise.h"

#include "model/Failure.h"
#include "study/Curve.h"
#include "study/LeastSquares.h"
#include "study/SampleRandom.h"
#include "study/SearchSideBySide.h"
#include "study/StudySolve.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <span>
#include <tuple>
#include <utility>

namespace corvanta {

namespace {

/// How far into a band the search aims, in its half width.
constexpr double Margin = 0.2;

/// What a curve may be short of leaving its band by and the search still ends.
constexpr double WithinBand = 0.98;

/// Residual of a variable that stands at half the width of its box from where the design has it.
constexpr double Pull = 1e-4;

/// Half widths beyond which a deviation counts linearly.
constexpr double LinearBeyond = 10;

/// Costs that differ by a lesser share are one.
constexpr double CostTolerance = 1e-6;

/// Steps in which the best solution may come further into its bands and nearer to where the design
/// stands; what the starts take of the whole work.
constexpr int MostStepsMore = 15;
constexpr double ShareOfStarts = 0.9;

/// Two solutions nearer than this share of each box are one.
constexpr double SamePlaceShare = 0.01;

/// What a band's half width counts at least, by the unit of the channel, stored units.
double LeastHalfWidth(std::int32_t unitClass) {
    switch (unitClass) {
    case ucAngle:
        return 0.005; // deg
    case ucDisplacement:
        return 0.05;   // mm
    case ucPercentage: // of 1
    case ucRatio:
    case ucTwoDecimals:
        return 0.0005;
    default:
        return 0.05;
    }
}

/// Where a target's curve is held against its band.
struct Site {
    BandCorner Aim;       ///< the band with its margin
    double PerUnit = 0;   ///< residual for a deviation of 1
    double LossScale = 0; ///< of that residual
    double Soft = 0;      ///< from the aim to the edge of the band
};

/// A question with all that its residuals need.
struct Search {
    const Design& Base;
    const OptimiseQuestion& Question;
    const SolveSettings& Settings;
    std::vector<DesignVariable> Variables{};
    GridCut Cut = StaticCut();
    std::vector<TargetResult> Before{};
    std::vector<std::vector<Site>> Sites{}; ///< of each target
};

std::string TargetName(const Search& search, std::size_t n) {
    return "Target " + std::to_string(n + 1) + " (" +
           NameOf(search.Question.Targets[n], search.Settings.Channels) + ")";
}

std::string FaultOfWords(const Search& search) {
    const OptimiseQuestion& question = search.Question;
    if (std::string fault = FaultOfVariables(search.Base, search.Variables); !fault.empty()) {
        return fault;
    }
    for (const FreeVariable& free : question.Free) {
        if (!std::isfinite(free.Low) || !std::isfinite(free.High) || free.Low >= free.High) {
            return "The box of " + NameOf(search.Base.Data, free.Variable) + " is empty";
        }
    }
    if (question.Targets.empty()) {
        return "There is no target";
    }
    for (std::size_t n = 0; n < question.Targets.size(); ++n) {
        if (const std::string fault = FaultOfTarget(question.Targets[n]); !fault.empty()) {
            return TargetName(search, n) + ": " + fault;
        }
    }
    return question.Starts < 1 || question.Starts > MostStarts
               ? "The number of starts must be from 1 to " + std::to_string(MostStarts)
               : "";
}

std::vector<Site> SitesOf(const Target& target, const Curve& curve, std::int32_t unitClass) {
    std::vector<Site> sites;
    const std::vector<double> travels = TravelsInCommon(target, curve);
    for (const double travel : travels) {
        BandCorner aim = *BandAt(target, travel);
        const double halfWidth = (aim.High - aim.Low) / 2;
        aim.Travel = travel;
        aim.Low += Margin * halfWidth;
        aim.High -= Margin * halfWidth;
        const double share = std::sqrt(target.Weight / static_cast<double>(travels.size()));
        const double perUnit = share / std::max(halfWidth, LeastHalfWidth(unitClass));
        sites.push_back({aim, perUnit, LinearBeyond * share, Margin * halfWidth});
    }
    return sites;
}

Curve CurveOfTarget(const Suspension& solved, const Target& target) {
    return CurveOf(solved, target.Channel, target.Variable);
}

/// Solves the design and sees where its curves meet the bands; returns what is wrong with the
/// question.
std::string FaultOfBase(Search& search, Suspension& scratch) {
    if (std::string fault = FaultOfWords(search); !fault.empty()) {
        return fault;
    }
    for (const Target& target : search.Question.Targets) {
        AddCurve(search.Cut, target.Channel, target.Variable);
    }
    const SolveResult result = Solve(scratch, search.Base, search.Settings, search.Cut);
    if (!result.Solved) {
        return "The design can't be calculated: " + ReasonOf(result.Failure);
    }
    for (std::size_t n = 0; n < search.Question.Targets.size(); ++n) {
        const Target& target = search.Question.Targets[n];
        const Curve curve = CurveOfTarget(scratch, target);
        search.Before.push_back(JudgeTarget(target, curve));
        if (!search.Before.back().Judged) {
            return TargetName(search, n) + (curve.X.empty()
                                                ? ": the corner has no such curve"
                                                : ": curve and band have no travel in common");
        }
        search.Sites.push_back(
            SitesOf(target, curve, search.Settings.Channels[target.Channel].Class));
    }
    return {};
}

/// How far a value lies outside what the search aims at. Up to the edge of the band it grows with
/// the square: where it had a kink, a step would not see the bands that it is about to leave.
double Excess(const Site& site, double value) {
    const double beyond = value - std::clamp(value, site.Aim.Low, site.Aim.High);
    const double size = std::abs(beyond);
    return size < site.Soft ? beyond * size / (2 * site.Soft)
                            : std::copysign(size - site.Soft / 2, beyond);
}

/// How a design at a point of the variables lies to the targets, and how far it is from the base.
std::optional<std::vector<double>> ResidualsAt(const Search& search, const std::vector<double>& x,
                                               Suspension& scratch, const std::stop_token& stop) {
    Design design = search.Base;
    SetValues(design, search.Variables, x);
    if (!Solve(scratch, design, search.Settings, search.Cut, stop).Solved) {
        return std::nullopt;
    }
    std::vector<double> residuals;
    for (std::size_t n = 0; n < search.Sites.size(); ++n) {
        const Curve curve = CurveOfTarget(scratch, search.Question.Targets[n]);
        for (const Site& site : search.Sites[n]) {
            const std::optional<double> value = ValueAt(curve, site.Aim.Travel);
            if (!value) {
                return std::nullopt;
            }
            residuals.push_back(Excess(site, *value) * site.PerUnit);
        }
    }
    for (std::size_t i = 0; i < x.size(); ++i) {
        const FreeVariable& free = search.Question.Free[i];
        residuals.push_back((x[i] - ValueOf(search.Base, free.Variable)) * 2 * Pull /
                            (free.High - free.Low));
    }
    return residuals;
}

LeastSquaresProblem ProblemOf(const Search& search) {
    LeastSquaresProblem problem;
    for (const FreeVariable& free : search.Question.Free) {
        const double value = ValueOf(search.Base, free.Variable);
        problem.Low.push_back(free.Low);
        problem.High.push_back(free.High);
        problem.Step.push_back(
            std::min(DifferenceStep(free.Variable, value), (free.High - free.Low) / 4));
    }
    for (const std::vector<Site>& sites : search.Sites) {
        for (const Site& site : sites) {
            problem.LossScales.push_back(site.LossScale);
            problem.Enough.push_back(WithinBand * site.Soft / 2 * site.PerUnit);
        }
    }
    problem.Enough.resize(problem.Enough.size() + search.Question.Free.size(),
                          std::numeric_limits<double>::infinity());
    problem.CostTolerance = CostTolerance;
    problem.LossScales.resize(problem.LossScales.size() + search.Question.Free.size(), 0);
    return problem;
}

/// The place of a start: where the design stands, or drawn in the boxes.
std::vector<double> StartPoint(const Search& search, int start) {
    CSampleRandom random(search.Question.Seed, static_cast<std::size_t>(start));
    std::vector<double> x;
    for (const FreeVariable& free : search.Question.Free) {
        x.push_back(start == 0 ? ValueOf(search.Base, free.Variable)
                               : std::lerp(free.Low, free.High, random.Uniform()));
    }
    return x;
}

/// A start and where it came to.
struct Arrival {
    OptimisedStart Start;
    LeastSquaresResult Result;
};

/// How a design at a point of the variables lies to the targets.
std::vector<TargetResult> Judge(const Search& search, const std::vector<double>& x,
                                Suspension& scratch) {
    Design design = search.Base;
    SetValues(design, search.Variables, x);
    static_cast<void>(Solve(scratch, design, search.Settings, search.Cut)); // it was solved before
    std::vector<TargetResult> results;
    for (const Target& target : search.Question.Targets) {
        results.push_back(JudgeTarget(target, CurveOfTarget(scratch, target)));
    }
    return results;
}

bool AllHold(const std::vector<TargetResult>& results) {
    return std::all_of(results.begin(), results.end(),
                       [](const TargetResult& result) { return result.Holds; });
}

/// Solves from the starts of problems, as the study's progress from one share to another.
std::vector<LeastSquaresResult> SolveAll(CSampleRunner& runner, const Search& search,
                                         std::span<const LeastSquaresProblem> problems,
                                         double fromShare, double toShare) {
    return SearchSideBySide(
        runner,
        [&](const std::vector<double>& x, Suspension& scratch) {
            return ResidualsAt(search, x, scratch, runner.Work().Stop);
        },
        problems, fromShare, toShare);
}

std::vector<Arrival> RunStarts(CSampleRunner& runner, const Search& search) {
    std::vector<LeastSquaresProblem> problems(static_cast<std::size_t>(search.Question.Starts),
                                              ProblemOf(search));
    int number = 0;
    for (LeastSquaresProblem& problem : problems) {
        problem.Start = StartPoint(search, number++);
    }
    std::vector<Arrival> arrivals;
    number = 0;
    for (LeastSquaresResult& result : SolveAll(runner, search, problems, 0, ShareOfStarts)) {
        Arrival arrival{{++number}, std::move(result)};
        if (arrival.Result.Stopped && !arrival.Result.Evaluated) {
            continue; // it was not begun
        }
        arrival.Start.Evaluated = arrival.Result.Evaluated;
        arrival.Start.Converged = arrival.Result.Converged;
        arrival.Start.Cost = arrival.Result.Cost;
        arrival.Start.AllHold =
            arrival.Result.Evaluated && AllHold(Judge(search, arrival.Result.X, runner.Scratch()));
        arrivals.push_back(std::move(arrival));
    }
    const auto rank = [](const OptimisedStart& start) {
        return std::tuple(!start.Evaluated, !start.AllHold, start.Cost);
    };
    std::stable_sort(arrivals.begin(), arrivals.end(), [&](const Arrival& a, const Arrival& b) {
        return rank(a.Start) < rank(b.Start);
    });
    return arrivals;
}

/// Lets a solution that ended as soon as its targets held go on for some steps.
LeastSquaresResult GoOn(CSampleRunner& runner, const Search& search, const Arrival& best) {
    if (!best.Start.AllHold || best.Result.Stopped) {
        return best.Result;
    }
    LeastSquaresProblem problem = ProblemOf(search);
    problem.Enough.clear();
    problem.MostIterations = MostStepsMore;
    problem.Start = best.Result.X;
    LeastSquaresResult more = SolveAll(runner, search, {&problem, 1}, ShareOfStarts, 1).front();
    const bool better = more.Evaluated && AllHold(Judge(search, more.X, runner.Scratch()));
    return better ? more : best.Result;
}

bool SamePlace(const Search& search, const std::vector<double>& a, const std::vector<double>& b) {
    for (std::size_t i = 0; i < a.size(); ++i) {
        const FreeVariable& free = search.Question.Free[i];
        if (std::abs(a[i] - b[i]) > SamePlaceShare * (free.High - free.Low)) {
            return false;
        }
    }
    return true;
}

/// Why the first start that could not be calculated could not be.
std::string FailureOfStart(const Search& search, int start, Suspension& scratch) {
    std::vector<double> x = StartPoint(search, start - 1);
    for (std::size_t i = 0; i < x.size(); ++i) {
        x[i] = std::clamp(x[i], search.Question.Free[i].Low, search.Question.Free[i].High);
    }
    Design design = search.Base;
    SetValues(design, search.Variables, x);
    const SolveResult result = Solve(scratch, design, search.Settings, search.Cut);
    return result.Solved ? "A curve does not reach its band" : ReasonOf(result.Failure);
}

void TellStarts(OptimiseAnswer& answer, const Search& search, const std::vector<Arrival>& arrivals,
                Suspension& scratch) {
    int firstFailed = 0;
    for (const Arrival& arrival : arrivals) {
        answer.Starts.push_back(arrival.Start);
        OptimisedStart& start = answer.Starts.back();
        if (start.Evaluated) {
            start.SamePlace = SamePlace(search, arrival.Result.X, arrivals.front().Result.X);
            answer.SamePlace += start.SamePlace ? 1 : 0;
        } else if (!arrival.Result.Stopped) {
            ++answer.NotEvaluated;
            firstFailed = firstFailed == 0 ? start.Number : std::min(firstFailed, start.Number);
        }
    }
    if (firstFailed != 0) {
        answer.FirstFailure = FailureOfStart(search, firstFailed, scratch);
    }
}

void TellBest(OptimiseAnswer& answer, const Search& search, const LeastSquaresResult& best,
              Suspension& scratch) {
    SetValues(answer.Best, search.Variables, best.X);
    for (std::size_t i = 0; i < search.Variables.size(); ++i) {
        answer.Variables.push_back({search.Variables[i], ValueOf(search.Base, search.Variables[i]),
                                    best.X[i], best.AtBound[i]});
    }
    const std::vector<TargetResult> after = Judge(search, best.X, scratch);
    for (std::size_t n = 0; n < after.size(); ++n) {
        answer.Targets.push_back({search.Before[n], after[n]});
    }
    answer.AllHold = AllHold(after);
}

/// The design as it stands: the answer of a search that was stopped before its first step.
LeastSquaresResult Unmoved(const Search& search) {
    LeastSquaresResult result;
    result.X = StartPoint(search, 0);
    result.AtBound.assign(result.X.size(), false);
    return result;
}

} // namespace

OptimiseAnswer Optimise(CSampleRunner& runner, const Design& design,
                        const OptimiseQuestion& question, const SolveSettings& settings) {
    Search search{design, question, settings, VariablesOf(question.Free)};
    if (const std::string fault = FaultOfBase(search, runner.Scratch()); !fault.empty()) {
        throw Failure(fnInvalidCall, fault);
    }
    const std::vector<Arrival> arrivals = RunStarts(runner, search);
    OptimiseAnswer answer;
    answer.Best = design;
    TellStarts(answer, search, arrivals, runner.Scratch());
    const bool arrived = !arrivals.empty() && arrivals.front().Start.Evaluated;
    if (!arrived && !runner.Work().Stop.stop_requested()) {
        throw Failure(fnInvalidCall, "No design within the boxes can be calculated, of " +
                                         std::to_string(question.Starts) +
                                         " starts: " + answer.FirstFailure);
    }
    TellBest(answer, search, arrived ? GoOn(runner, search, arrivals.front()) : Unmoved(search),
             runner.Scratch());
    answer.Stopped = runner.Work().Stop.stop_requested();
    return answer;
}

} // namespace corvanta
