#include "study/Sensitivity.h"

#include "model/Failure.h"
#include "study/StudySolve.h"

namespace corvanta {

SensitivityAnswer FindSensitivity(CSampleRunner& runner, const Design& design,
                                  const SensitivityQuestion& question,
                                  const SolveSettings& settings) {
    if (const std::string fault = FaultOfNumber(question.Number); !fault.empty()) {
        throw Failure(fnInvalidCall, fault);
    }
    GridCut cut = StaticCut();
    AddNumber(cut, question.Number);
    const std::stop_token& stop = runner.Work().Stop;
    SensitivityAnswer answer;
    std::string reason;
    const std::optional<double> value =
        SolveNumber(runner.Scratch(), design, settings, cut, question.Number, reason, stop);
    for (const PointCoordinate& coordinate : CoordinatesInPlay(design.Data)) {
        answer.Slopes.push_back({coordinate, std::nullopt, {}});
    }
    if (!value && !reason.empty()) {
        throw Failure(fnInvalidCall, reason);
    }
    if (!value) {
        answer.Stopped = true;
        return answer;
    }
    answer.Value = *value;
    answer.Stopped = !runner.Run(answer.Slopes.size(), [&](std::size_t n, Suspension& scratch) {
        CoordinateSlope& slope = answer.Slopes[n];
        Design moved = design;
        const double place = ValueOf(design, slope.Coordinate);
        const auto at = [&](double there) {
            SetValue(moved, slope.Coordinate, there);
            return SolveNumber(scratch, moved, settings, cut, question.Number, slope.Reason, stop);
        };
        const double step = DifferenceStep(slope.Coordinate, place);
        const double low = place - step;
        const double high = place + step; // what they truly differ by is rounded
        const std::optional<double> below = at(low);
        const std::optional<double> above = below ? at(high) : std::nullopt;
        if (above) {
            slope.PerMillimetre = (*above - *below) / (high - low);
        }
    });
    return answer;
}

} // namespace corvanta
