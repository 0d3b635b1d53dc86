#include "study/Sweep.h"

#include "model/Failure.h"
#include "study/RigidCorner.h"
#include "study/StudySolve.h"

#include <algorithm>
#include <cmath>

namespace corvanta {

namespace {

/// Why a value can't be swept in a design; empty when it can.
std::string FaultOfValue(const SweptValue& what, const Design& design) {
    if (const auto* const link = std::get_if<CornerLink>(&what)) {
        return HasLink(design.Data, *link) ? "" : "The corner has no such link";
    }
    return FaultOfVariable(design, std::get<DesignVariable>(what));
}

/// The number of designs, or more than may be.
std::size_t DesignCount(const std::vector<SweepAxis>& axes) {
    std::size_t count = 1;
    for (const SweepAxis& axis : axes) {
        count *= std::min(axis.Values.size(), MostSweptDesigns + 1);
    }
    return count;
}

bool KeepsCurves(const SweepQuestion& question) {
    return question.Axes.size() == 1;
}

GridCut CutFor(const SweepQuestion& question) {
    GridCut cut = StaticCut();
    for (const StudyChart& chart : question.Charts) {
        if (IsLine(chart) && KeepsCurves(question)) {
            AddCurve(cut, chart.Channel, TravelOf(chart));
        }
    }
    if (question.Number) {
        AddNumber(cut, *question.Number);
    }
    return cut;
}

void Read(SweptDesign& swept, const Suspension& solved, const SweepQuestion& question) {
    if (question.Number) {
        swept.Number = NumberOf(solved, *question.Number);
    }
    swept.Curves.resize(KeepsCurves(question) ? question.Charts.size() : 0);
    for (std::size_t n = 0; n < swept.Curves.size(); ++n) {
        const StudyChart& chart = question.Charts[n];
        if (IsLine(chart)) {
            swept.Curves[n] = CurveOf(solved, chart.Channel, TravelOf(chart));
        }
    }
}

std::string FaultOf(const SweepQuestion& question, const Design& design) {
    if (question.Axes.size() > 2) {
        return "A sweep has one axis or two";
    }
    if (std::string fault = FaultOfAxes(question.Axes, design); !fault.empty()) {
        return fault;
    }
    if (DesignCount(question.Axes) > MostSweptDesigns) {
        return "A sweep has at most " + std::to_string(MostSweptDesigns) + " designs";
    }
    if (!std::all_of(question.Charts.begin(), question.Charts.end(),
                     [](const StudyChart& chart) { return HasCurve(chart.Channel); })) {
        return "There is no such channel";
    }
    if (question.Number) {
        return FaultOfNumber(*question.Number);
    }
    return KeepsCurves(question) &&
                   std::any_of(question.Charts.begin(), question.Charts.end(), IsLine)
               ? ""
               : "Neither a curve nor a figure is asked for";
}

} // namespace

std::string SweptName(const SuspensionData& data, const SweptValue& what) {
    const auto* const link = std::get_if<CornerLink>(&what);
    return link == nullptr ? NameOf(data, std::get<DesignVariable>(what))
                           : NameOf(data, *link) + ", longer by";
}

VariableDisplay SweptDisplay(const SweptValue& what, const FundamentalUnits& units) {
    const auto* const variable = std::get_if<DesignVariable>(&what);
    return DisplayOf(variable == nullptr ? DesignVariable(PointCoordinate{}) : *variable, units);
}

double ValueNow(const Design& design, const SweptValue& what) {
    const auto* const variable = std::get_if<DesignVariable>(&what);
    return variable == nullptr ? 0 : ValueOf(design, *variable);
}

std::vector<double> EvenlySpaced(double from, double to, std::size_t count) {
    std::vector<double> values(count, from);
    for (std::size_t n = 1; n < count; ++n) { // this way a 0 between them is met exactly
        const auto last = static_cast<double>(count - 1);
        const auto place = static_cast<double>(n);
        values[n] = n == count - 1 ? to : (from * (last - place) + to * place) / last;
    }
    return values;
}

Design DesignWith(Design design, std::span<const SweepAxis> axes, std::span<const double> values,
                  std::string& fault) {
    CornerChange change;
    bool changed = false;
    for (std::size_t n = 0; n < axes.size(); ++n) {
        if (const auto* const link = std::get_if<CornerLink>(&axes[n].What)) {
            change[*link] += values[n];
            changed = true;
        } else {
            SetValue(design, std::get<DesignVariable>(axes[n].What), values[n]);
        }
    }
    if (!changed) {
        return design;
    }
    const CRigidCorner corner(design);
    CornerStance stance = corner.AtTravel(0);
    if (stance.Closed) {
        stance = corner.OnSpring(stance, change);
    }
    fault = stance.Fault;
    return stance.Corner;
}

std::string FaultOfAxes(std::span<const SweepAxis> axes, const Design& design) {
    if (axes.empty()) {
        return "There is no axis";
    }
    for (auto axis = axes.begin(); axis != axes.end(); ++axis) {
        if (std::string fault = FaultOfValue(axis->What, design); !fault.empty()) {
            return fault;
        }
        if (axis->Values.empty()) {
            return "An axis has no values";
        }
        if (!std::all_of(axis->Values.begin(), axis->Values.end(),
                         [](double value) { return std::isfinite(value); })) {
            return "A value of an axis is no number";
        }
        if (std::any_of(axes.begin(), axis,
                        [&](const SweepAxis& other) { return other.What == axis->What; })) {
            return "Two axes are the same";
        }
    }
    return {};
}

SweepAnswer RunSweep(CSampleRunner& runner, const Design& design, const SweepQuestion& question,
                     const SolveSettings& settings) {
    if (const std::string fault = FaultOf(question, design); !fault.empty()) {
        throw Failure(fnInvalidCall, fault);
    }
    const std::vector<SweepAxis>& axes = question.Axes;
    SweepAnswer answer;
    answer.FirstCount = axes[0].Values.size();
    answer.SecondCount = axes.size() == 2 ? axes[1].Values.size() : 1;
    answer.Designs.resize(answer.FirstCount * answer.SecondCount);
    const GridCut cut = CutFor(question);
    for (std::size_t n = 0; n < answer.Designs.size(); ++n) {
        answer.Designs[n].Values[0] = axes[0].Values[n / answer.SecondCount];
        answer.Designs[n].Values[1] = axes.size() == 2 ? axes[1].Values[n % answer.SecondCount] : 0;
    }
    answer.Stopped = !runner.Run(answer.Designs.size(), [&](std::size_t n, Suspension& scratch) {
        SweptDesign& swept = answer.Designs[n];
        const Design moved = DesignWith(design, axes, swept.Values, swept.Failure);
        if (!swept.Failure.empty()) {
            return;
        }
        const SolveResult outcome = Solve(scratch, moved, settings, cut, runner.Work().Stop);
        swept.Solved = outcome.Solved;
        if (outcome.Solved) {
            Read(swept, scratch, question);
        } else if (!outcome.Stopped) {
            swept.Failure = ReasonOf(outcome.Failure);
        }
    });
    answer.FailedDesigns = static_cast<std::size_t>(
        std::count_if(answer.Designs.begin(), answer.Designs.end(),
                      [](const SweptDesign& swept) { return !swept.Failure.empty(); }));
    return answer;
}

} // namespace corvanta
