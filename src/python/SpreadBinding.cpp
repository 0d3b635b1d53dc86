#include "python/PythonWork.h"
#include "python/StudyArguments.h"

#include "automation/Variants.h"
#include "study/Fit.h"
#include "study/Tolerance.h"

namespace corvanta {

namespace {

using namespace py::literals;

py::list BandDicts(const std::vector<ToleranceBand>& bands) {
    py::list list;
    for (const ToleranceBand& band : bands) {
        list.append(py::dict("travel"_a = ArrayOf(band.Travel), "nominal"_a = ArrayOf(band.Nominal),
                             "low"_a = ArrayOf(band.Low), "high"_a = ArrayOf(band.High),
                             "least"_a = ArrayOf(band.Least),
                             "greatest"_a = ArrayOf(band.Greatest)));
    }
    return list;
}

py::list SpreadDicts(const std::vector<FigureSpread>& spreads) {
    py::list list;
    for (const FigureSpread& spread : spreads) {
        list.append(py::dict(
            "nominal"_a = spread.Nominal.value_or(NoNumber), "values"_a = ArrayOf(spread.Values),
            "mean"_a = spread.Mean, "standard_deviation"_a = spread.StandardDeviation,
            "shares"_a = ArrayOf(spread.Shares), "unexplained"_a = spread.Unexplained));
    }
    return list;
}

py::list CountDicts(const std::vector<TargetCount>& counts) {
    py::list list;
    for (const TargetCount& count : counts) {
        list.append(py::dict("judged"_a = count.Judged, "leave"_a = count.Leave,
                             "nominal_holds"_a = count.NominalHolds));
    }
    return list;
}

py::dict RunTolerance(const Design& corner, const std::vector<ToleranceArgument>& tolerances,
                      const std::vector<CurveArgument>& curves,
                      const std::vector<std::string>& figures,
                      const std::vector<TargetArgument>& targets, std::size_t samples,
                      std::uint64_t seed, unsigned threads, const py::object& progress) {
    const AskedCorner asked(corner);
    const ToleranceQuestion question{TolerancesIn(tolerances),
                                     ChartsIn(curves, asked),
                                     FiguresIn(figures, asked),
                                     TargetsIn(targets, asked),
                                     samples,
                                     seed};
    const ToleranceAnswer answer = CPythonWork(threads, progress).Run([&](CSampleRunner& runner) {
        return FindTolerance(runner, asked.Own, question, asked.Settings);
    });
    return py::dict("built"_a = answer.Built, "not_built"_a = answer.NotBuilt,
                    "first_reason"_a = answer.FirstReason, "bands"_a = BandDicts(answer.Bands),
                    "spreads"_a = SpreadDicts(answer.Spreads),
                    "targets"_a = CountDicts(answer.Targets), "stopped"_a = answer.Stopped);
}

std::vector<ToleranceArgument> UsualTolerances(const Design& design) {
    std::vector<ToleranceArgument> list;
    for (const Tolerance& tolerance : DefaultTolerances(design.Data)) {
        list.emplace_back(KeyOf(tolerance.Variable), tolerance.HalfWidth,
                          tolerance.Distribution == Spread::Uniform);
    }
    return list;
}

py::dict AnswerDict(const FitAnswer& answer) {
    const std::vector<FittedVariable>& variables = answer.Variables;
    const std::vector<FittedReading>& readings = answer.Readings;
    return py::dict(
        "fitted"_a = answer.Fitted,
        "before"_a = ArrayOf(variables, [](const auto& v) { return v.Before; }),
        "after"_a = ArrayOf(variables, [](const auto& v) { return v.After; }),
        "prior"_a = ArrayOf(variables, [](const auto& v) { return v.Prior; }),
        "deviation"_a =
            ArrayOf(variables, [](const auto& v) { return v.Deviation.value_or(NoNumber); }),
        "told"_a = ArrayOf(variables, [](const auto& v) { return v.Told; }),
        "correlations"_a = ArrayOf(answer.Correlations),
        "readings"_a =
            py::dict("before"_a = ArrayOf(readings, [](const auto& r) { return r.Before; }),
                     "after"_a = ArrayOf(readings, [](const auto& r) { return r.After; }),
                     "residual"_a = ArrayOf(readings, [](const auto& r) { return r.Residual; }),
                     "in_uncertainties"_a =
                         ArrayOf(readings, [](const auto& r) { return r.InUncertainties; }),
                     "outlier"_a = ArrayOf(readings, [](const auto& r) { return r.Outlier; })),
        "chi_squared"_a = answer.ChiSquared, "degrees_of_freedom"_a = answer.DegreesOfFreedom,
        "exact"_a = answer.Exact, "converged"_a = answer.Converged, "words"_a = answer.Words,
        "stopped"_a = answer.Stopped);
}

py::dict
RunFit(const Design& corner, const std::vector<ToleranceArgument>& free,
       const std::vector<std::tuple<double, double, std::string, double, double>>& readings,
       unsigned threads, const py::object& progress) {
    const AskedCorner asked(corner);
    FitQuestion question{TolerancesIn(free), {}};
    for (const auto& [wheel, rack, channel, value, uncertainty] : readings) {
        question.Readings.push_back(
            {wheel, rack, ChannelOfText(channel, asked.Channels), value, uncertainty});
    }
    return AnswerDict(CPythonWork(threads, progress).Run([&](CSampleRunner& runner) {
        return Fit(runner, asked.Own, question, asked.Settings);
    }));
}

} // namespace

void BindSpreads(py::module_& module) {
    module.def("tolerance", &RunTolerance);
    module.def("usual_tolerances", &UsualTolerances);
    module.def("fit", &RunFit);
}

} // namespace corvanta
