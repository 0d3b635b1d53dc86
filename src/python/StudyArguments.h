#pragma once

#include "python/Module.h"
#include "study/Adjuster.h"
#include "study/DesignVariable.h"
#include "study/Figure.h"
#include "study/SetupSheet.h"
#include "study/StudyChart.h"
#include "study/StudyNumber.h"
#include "study/Sweep.h"
#include "study/Tolerance.h"

#include <array>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace corvanta {

// What studies ask, as the Python side of the module hands it over: names and numbers, in stored
// units. All of these throw Failure that names what is not known.

/// Channel, rack travel instead of wheel travel, corners of travel, low and high, and weight.
using TargetArgument = std::tuple<std::string, bool, std::vector<std::array<double, 3>>, double>;

/// A figure, as `FigureOfText` reads it, or a target.
using NumberArgument = std::variant<std::string, TargetArgument>;

/// Channel, and rack travel instead of wheel travel.
using CurveArgument = std::pair<std::string, bool>;

/// A variable with two numbers, such as the ends of its box.
using BoxArgument = std::tuple<std::string, double, double>;

/// A variable, the half width of its tolerance, and whether that is evenly spread.
using ToleranceArgument = std::tuple<std::string, double, bool>;

/// Name, kind, link, place, pitch and part of an adjuster; the kinds and links are the words of
/// study files.
using AdjusterArgument =
    std::tuple<std::string, std::string, std::string, std::string, double, double>;

/// The figure that is asked for by this name is the height of the reference point.
inline constexpr std::string_view RideHeightName = "Ride Height";

[[nodiscard]] DesignVariable VariableIn(const std::string& name);
[[nodiscard]] Target TargetIn(const TargetArgument& target, const StoredUnits& stored);
[[nodiscard]] std::vector<Target> TargetsIn(const std::vector<TargetArgument>& targets,
                                            const StoredUnits& stored);
[[nodiscard]] StudyNumber NumberIn(const NumberArgument& number, const StoredUnits& stored);
[[nodiscard]] std::vector<Figure> FiguresIn(const std::vector<std::string>& figures,
                                            const StoredUnits& stored);
[[nodiscard]] std::vector<StudyChart> ChartsIn(const std::vector<CurveArgument>& curves,
                                               const StoredUnits& stored);
[[nodiscard]] std::vector<SweepAxis>
AxesIn(const std::vector<std::pair<std::string, std::vector<double>>>& axes);
[[nodiscard]] std::vector<Tolerance> TolerancesIn(const std::vector<ToleranceArgument>& tolerances);
[[nodiscard]] Adjuster AdjusterIn(const AdjusterArgument& argument);
[[nodiscard]] AdjusterArgument ArgumentOf(const Adjuster& adjuster);
[[nodiscard]] SheetFigure SheetFigureIn(const std::string& figure, const StoredUnits& stored);

/// The name by which `SheetFigureIn` finds a figure at static.
[[nodiscard]] std::string NameOf(const SheetFigure& figure, const StoredUnits& stored);

} // namespace corvanta
