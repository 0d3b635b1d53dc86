#include "python/PythonWork.h"
#include "python/StudyArguments.h"

#include "study/Optimise.h"
#include "study/Region.h"

#include <algorithm>

namespace corvanta {

namespace {

using namespace py::literals;

py::dict ResultDict(const TargetResult& result) {
    return py::dict("judged"_a = result.Judged, "holds"_a = result.Holds,
                    "deviation"_a = result.Deviation, "travel"_a = result.Travel,
                    "share"_a = result.Share);
}

py::dict AnswerDict(const OptimiseAnswer& answer) {
    py::list targets;
    for (const TargetGain& gain : answer.Targets) {
        targets.append(py::make_tuple(ResultDict(gain.Before), ResultDict(gain.After)));
    }
    py::list starts;
    for (const OptimisedStart& start : answer.Starts) {
        starts.append(py::dict("number"_a = start.Number, "evaluated"_a = start.Evaluated,
                               "converged"_a = start.Converged, "all_hold"_a = start.AllHold,
                               "same_place"_a = start.SamePlace, "cost"_a = start.Cost));
    }
    const std::vector<OptimisedVariable>& variables = answer.Variables;
    return py::dict("best"_a = answer.Best,
                    "before"_a = ArrayOf(variables, [](const auto& v) { return v.Before; }),
                    "after"_a = ArrayOf(variables, [](const auto& v) { return v.After; }),
                    "at_bound"_a = ArrayOf(variables, [](const auto& v) { return v.AtBound; }),
                    "targets"_a = targets, "all_hold"_a = answer.AllHold, "starts"_a = starts,
                    "first_failure"_a = answer.FirstFailure, "stopped"_a = answer.Stopped);
}

py::dict RunOptimise(const Design& corner, const std::vector<BoxArgument>& free,
                     const std::vector<TargetArgument>& targets, int starts, std::uint64_t seed,
                     unsigned threads, const py::object& progress) {
    const AskedCorner asked(corner);
    OptimiseQuestion question{{}, TargetsIn(targets, asked), starts, seed};
    for (const auto& [name, low, high] : free) {
        question.Free.push_back({VariableIn(name), low, high});
    }
    return AnswerDict(CPythonWork(threads, progress).Run([&](CSampleRunner& runner) {
        return Optimise(runner, asked.Own, question, asked.Settings);
    }));
}

PointNumber PointIn(const std::string& name) {
    const DesignVariable variable = VariableIn(name + ".X");
    return std::get<PointCoordinate>(variable).Point;
}

py::dict NodeDict(const std::vector<RegionNode>& nodes) {
    return py::dict(
        "verdict"_a = ArrayOf(
            nodes, [](const auto& node) { return static_cast<std::uint8_t>(node.Verdict); }),
        "solved"_a = ArrayOf(nodes, [](const auto& node) { return node.Solved; }),
        "missed"_a = ArrayOf(nodes, [](const auto& node) { return node.Target; }),
        "deviation"_a = ArrayOf(nodes, [](const auto& node) {
            const bool judged = node.Solved && node.Verdict == RegionVerdict::MissesTarget;
            return judged ? node.Deviation : NoNumber;
        }));
}

/// Nodes with X fastest.
py::dict Region(const Design& corner, const std::string& point,
                const std::array<std::tuple<double, double, int>, 3>& box,
                const std::vector<TargetArgument>& targets, bool wholeGrid, unsigned threads,
                const py::object& progress) {
    const AskedCorner asked(corner);
    RegionQuestion question{PointIn(point), {}, TargetsIn(targets, asked), wholeGrid};
    std::ranges::transform(box, question.Box.begin(), [](const auto& axis) {
        return RegionAxis{std::get<0>(axis), std::get<1>(axis), std::get<2>(axis)};
    });
    const RegionAnswer answer = CPythonWork(threads, progress).Run([&](CSampleRunner& runner) {
        return FindRegion(runner, asked.Own, question, asked.Settings);
    });
    return py::dict(
        "places"_a = py::make_tuple(ArrayOf(answer.Places[0]), ArrayOf(answer.Places[1]),
                                    ArrayOf(answer.Places[2])),
        "nodes"_a = NodeDict(answer.Nodes), "present"_a = static_cast<int>(answer.Present.Verdict),
        "present_failure"_a = answer.PresentFailure, "first_failure"_a = answer.FirstFailure,
        "stopped"_a = answer.Stopped);
}

} // namespace

void BindSearches(py::module_& module) {
    module.def("optimise", &RunOptimise);
    module.def("region", &Region);
}

} // namespace corvanta
