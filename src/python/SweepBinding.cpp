#include "python/PythonWork.h"
#include "python/StudyArguments.h"

#include "automation/Variants.h"
#include "study/Sensitivity.h"
#include "study/Sweep.h"

namespace corvanta {

namespace {

using namespace py::literals;

using AxesArgument = std::vector<std::pair<std::string, std::vector<double>>>;

py::object CurveTuple(const std::optional<Curve>& curve) {
    return curve ? py::object(py::make_tuple(ArrayOf(curve->X), ArrayOf(curve->Y)))
                 : py::object(py::none());
}

/// Design by design, the second axis fastest.
py::dict Sweep(const Design& corner, const AxesArgument& axes,
               const std::optional<NumberArgument>& number,
               const std::vector<CurveArgument>& curves, unsigned threads,
               const py::object& progress) {
    const AskedCorner asked(corner);
    SweepQuestion question{AxesIn(axes), ChartsIn(curves, asked), {}};
    if (number) {
        question.Number = NumberIn(*number, asked);
    }
    const SweepAnswer answer = CPythonWork(threads, progress).Run([&](CSampleRunner& runner) {
        return RunSweep(runner, asked.Own, question, asked.Settings);
    });
    py::list failures;
    py::list drawn;
    for (const SweptDesign& swept : answer.Designs) {
        failures.append(swept.Failure);
        py::list own;
        for (const std::optional<Curve>& curve : swept.Curves) {
            own.append(CurveTuple(curve));
        }
        drawn.append(own);
    }
    return py::dict("number"_a = ArrayOf(answer.Designs,
                                         [](const auto& d) { return d.Number.value_or(NoNumber); }),
                    "solved"_a = ArrayOf(answer.Designs, [](const auto& d) { return d.Solved; }),
                    "failures"_a = failures, "curves"_a = drawn, "stopped"_a = answer.Stopped);
}

/// The rows of variants as columns.
struct VariantColumns {
    std::vector<VariantRow> Rows;
    bool Stopped = false;
};

py::array_t<double> TableOf(const std::vector<VariantRow>& rows, std::size_t columns,
                            const std::function<double(const VariantRow&, std::size_t)>& cell) {
    py::array_t<double> table({rows.size(), columns});
    double* to = table.mutable_data();
    for (const VariantRow& row : rows) {
        for (std::size_t n = 0; n < columns; ++n) {
            *to++ = cell(row, n);
        }
    }
    return table;
}

py::dict Variants(const Design& corner, const AxesArgument& axes,
                  const std::vector<std::string>& figures, std::uint64_t part, std::uint64_t parts,
                  unsigned threads, const py::object& progress) {
    const AskedCorner asked(corner);
    const VariantQuestion question{AxesIn(axes), FiguresIn(figures, asked)};
    const VariantRange range = ShardOf(question.Count(), part, parts);
    const auto found = CPythonWork(threads, progress).Run([&](CSampleRunner& runner) {
        VariantColumns columns;
        columns.Stopped = !RunVariants(runner, asked.Own, question, asked.Settings, range,
                                       [&](const VariantRow& row) { columns.Rows.push_back(row); });
        return columns;
    });
    py::list failures;
    for (const VariantRow& row : found.Rows) {
        failures.append(row.Failure);
    }
    return py::dict(
        "variant"_a = ArrayOf(found.Rows, [](const VariantRow& row) { return row.Number; }),
        "values"_a = TableOf(found.Rows, question.Axes.size(),
                             [](const VariantRow& row, std::size_t n) { return row.Values[n]; }),
        "figures"_a = TableOf(found.Rows, question.Figures.size(),
                              [](const VariantRow& row, std::size_t n) {
                                  return n < row.Figures.size() ? row.Figures[n].value_or(NoNumber)
                                                                : NoNumber;
                              }),
        "failures"_a = failures, "stopped"_a = found.Stopped);
}

py::dict Sensitivity(const Design& corner, const NumberArgument& number, unsigned threads,
                     const py::object& progress) {
    const AskedCorner asked(corner);
    const SensitivityQuestion question{NumberIn(number, asked)};
    const SensitivityAnswer answer = CPythonWork(threads, progress).Run([&](CSampleRunner& runner) {
        return FindSensitivity(runner, asked.Own, question, asked.Settings);
    });
    py::list coordinates;
    py::dict reasons;
    for (const CoordinateSlope& slope : answer.Slopes) {
        const std::string name = KeyOf(slope.Coordinate);
        coordinates.append(name);
        if (!slope.Reason.empty()) {
            reasons[py::str(name)] = slope.Reason;
        }
    }
    return py::dict("value"_a = answer.Value, "coordinates"_a = coordinates,
                    "slopes"_a = ArrayOf(answer.Slopes,
                                         [](const CoordinateSlope& slope) {
                                             return slope.PerMillimetre.value_or(NoNumber);
                                         }),
                    "reasons"_a = reasons, "stopped"_a = answer.Stopped);
}

} // namespace

void BindSweeps(py::module_& module) {
    module.def("sweep", &Sweep);
    module.def("variants", &Variants);
    module.def("sensitivity", &Sensitivity);
}

} // namespace corvanta
