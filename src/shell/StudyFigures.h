#pragma once

#include "model/Program.h"
#include "platform/ChartSheet.h"
#include "platform/Controls.h"
#include "study/Figure.h"
#include "study/StudyFile.h"
#include "study/StudyNumber.h"

#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// What the studies of the workbench ask of a chart, and how they show it.

/// Fills the list of what can be asked of a chart: its value or gain at static, its range, its
/// greatest deviation from the target.
void ListFigures(ListControl& list);

/// What an entry of that list is of a chart; a map stands for its line along wheel travel. Nothing
/// for a deviation from a target that the chart does not have.
[[nodiscard]] std::optional<StudyNumber> NumberOfChart(const StudyChart& chart, int entry,
                                                       const std::vector<Target>& targets);

/// How such a number is called and shown.
[[nodiscard]] FigureDisplay DisplayOf(const StudyNumber& number, const Program& program);

/// A value of a number as it is shown, with its unit or without; "-" for none.
[[nodiscard]] std::string NumberText(const FigureDisplay& display, std::optional<double> stored,
                                     const Separators& separators);
[[nodiscard]] std::string WithUnit(const FigureDisplay& display, std::optional<double> stored,
                                   const Separators& separators);

/// A chart of values, with axes that end on round numbers.
[[nodiscard]] ChartSheet SheetOf(const std::string& title, const std::string& across,
                                 const std::string& up, std::vector<SheetCurve> curves,
                                 const Separators& separators);

} // namespace corvanta
