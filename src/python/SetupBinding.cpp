#include "python/PythonWork.h"
#include "python/StudyArguments.h"

#include "study/SetupTurns.h"

namespace corvanta {

namespace {

using namespace py::literals;

py::list UsualAdjusters(const Design& design) {
    py::list list;
    for (const Adjuster& adjuster : AdjustersOf(design.Data)) {
        list.append(ArgumentOf(adjuster));
    }
    return list;
}

py::list UsualFigures(const Design& design) {
    const StoredUnits stored(design);
    py::list list;
    for (const SheetFigure& figure : SheetFiguresOf(design.Data)) {
        list.append(NameOf(figure, stored));
    }
    return list;
}

SetupQuestion QuestionIn(const std::vector<AdjusterArgument>& adjusters,
                         const std::vector<std::string>& figures, double rideHeight,
                         const StoredUnits& stored) {
    SetupQuestion question;
    for (const AdjusterArgument& adjuster : adjusters) {
        question.Adjusters.push_back(AdjusterIn(adjuster));
    }
    for (const std::string& figure : figures) {
        question.Figures.push_back(SheetFigureIn(figure, stored));
    }
    question.RideHeight = rideHeight;
    return question;
}

py::tuple StepTuple(const SheetStep& step) {
    return py::make_tuple(ArrayOf(step.Changes), step.Fault);
}

py::dict Sheet(const Design& corner, const std::vector<AdjusterArgument>& adjusters,
               const std::vector<std::string>& figures, double rideHeight, unsigned threads,
               const py::object& progress) {
    const AskedCorner asked(corner);
    const SetupQuestion question = QuestionIn(adjusters, figures, rideHeight, asked);
    const SetupSheet sheet = CPythonWork(threads, progress).Run([&](CSampleRunner& runner) {
        return MakeSetupSheet(runner, asked.Own, question, asked.Settings);
    });
    py::list rows;
    for (const SheetRow& row : sheet.Rows) {
        rows.append(py::make_tuple(StepTuple(row.More), StepTuple(row.Less)));
    }
    return py::dict("base"_a = ArrayOf(sheet.Base.Values), "rows"_a = rows,
                    "stopped"_a = sheet.Stopped);
}

/// `wishes` has the change and its tolerance for each figure.
py::dict Turns(const Design& corner, const std::vector<AdjusterArgument>& adjusters,
               const std::vector<std::pair<int, int>>& ranges,
               const std::vector<std::string>& figures,
               const std::vector<std::pair<double, double>>& wishes, double rideHeight,
               unsigned threads, const py::object& progress) {
    const AskedCorner asked(corner);
    TurnsQuestion question{QuestionIn(adjusters, figures, rideHeight, asked), {}, {}};
    for (const auto& [change, tolerance] : wishes) {
        question.Wishes.push_back({false, change, tolerance});
    }
    for (const auto& [low, high] : ranges) {
        question.Ranges.push_back({low, high});
    }
    const TurnsAnswer answer = CPythonWork(threads, progress).Run([&](CSampleRunner& runner) {
        return FindTurns(runner, asked.Own, question, asked.Settings);
    });
    return py::dict("counts"_a = ArrayOf(answer.Counts, [](int count) { return count; }),
                    "holds"_a = answer.Holds, "base"_a = ArrayOf(answer.Base.Values),
                    "reached"_a = ArrayOf(answer.Reached.Values),
                    "left_over"_a = ArrayOf(answer.LeftOver), "corner"_a = answer.Reached.Corner,
                    "fault"_a = answer.Reached.Fault, "stopped"_a = answer.Stopped);
}

} // namespace

void BindSetup(py::module_& module) {
    module.def("usual_adjusters", &UsualAdjusters);
    module.def("usual_figures", &UsualFigures);
    module.def("setup_sheet", &Sheet);
    module.def("setup_turns", &Turns);
}

} // namespace corvanta
