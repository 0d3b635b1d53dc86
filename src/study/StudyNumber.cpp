#include "study/StudyNumber.h"

#include "study/StudySolve.h"

#include <cmath>

namespace corvanta {

std::string FaultOfFigure(const Figure& figure) {
    if (!HasCurve(figure.Channel)) {
        return "There is no such channel";
    }
    if (figure.Variable != vvAlongWheelTravel && figure.Variable != vvAlongRackTravel) {
        return "It runs along neither wheel nor rack travel";
    }
    return std::isfinite(figure.Travel) ? "" : "The travel is no number";
}

std::string FaultOfNumber(const StudyNumber& number) {
    const Figure* const figure = std::get_if<Figure>(&number);
    return figure != nullptr ? FaultOfFigure(*figure) : FaultOfTarget(std::get<Target>(number));
}

void AddNumber(GridCut& cut, const StudyNumber& number) {
    std::visit([&](const auto& wanted) { AddCurve(cut, wanted.Channel, wanted.Variable); }, number);
}

std::optional<double> NumberOf(const Suspension& document, const StudyNumber& number) {
    if (const Figure* const figure = std::get_if<Figure>(&number)) {
        return FigureValue(document, *figure);
    }
    const auto& target = std::get<Target>(number);
    return ExcessOf(target, CurveOf(document, target.Channel, target.Variable));
}

std::optional<double> SolveNumber(Suspension& scratch, const Design& design,
                                  const SolveSettings& settings, const GridCut& cut,
                                  const StudyNumber& number, std::string& reason,
                                  const std::stop_token& stop) {
    const SolveResult outcome = Solve(scratch, design, settings, cut, stop);
    if (!outcome.Solved) {
        reason = outcome.Stopped ? "" : ReasonOf(outcome.Failure);
        return std::nullopt;
    }
    const std::optional<double> value = NumberOf(scratch, number);
    reason = value ? "" : "The corner has no value of this channel there";
    return value;
}

} // namespace corvanta
