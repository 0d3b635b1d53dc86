#pragma once

#include "model/Design.h"
#include "model/NumberText.h"
#include "model/Units.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace corvanta {

/// One coordinate of a static point.
struct PointCoordinate {
    PointNumber Point = ptWC;
    int Axis = 0; ///< 0 to 2 for X to Z

    friend bool operator==(const PointCoordinate&, const PointCoordinate&) = default;
};

/// One number of a design beside its points, such as a rate or the wheelbase.
struct DataNumber {
    double SuspensionData::*Member = &SuspensionData::Wheelbase;

    friend bool operator==(const DataNumber&, const DataNumber&) = default;
};

/// What a study may change of a design.
using DesignVariable = std::variant<PointCoordinate, DataNumber>;

/// The value of a variable, and another in its place; stored units.
[[nodiscard]] double ValueOf(const Design& design, const DesignVariable& variable);
void SetValue(Design& design, const DesignVariable& variable, double value);

/// Puts values in the place of those that a design has of some variables.
void SetValues(Design& design, std::span<const DesignVariable> variables,
               std::span<const double> values);

/// The step of central differences against a variable of that value, stored units.
[[nodiscard]] double DifferenceStep(const DesignVariable& variable, double value);

/// The name in files: "ptTRI.Z", or the name that documents use for a number, "KSpring".
[[nodiscard]] std::string KeyOf(const DesignVariable& variable);

/// The variable of such a name; none for any other text.
[[nodiscard]] std::optional<DesignVariable> VariableOf(std::string_view key);

/// The name on display: "Trackrod inboard pickup Z", "Spring stiffness".
[[nodiscard]] std::string NameOf(const SuspensionData& data, const DesignVariable& variable);

/// True when a design of these mechanisms has the variable: the point is in play.
[[nodiscard]] bool HasVariable(const SuspensionData& data, const DesignVariable& variable);

/// True for the travels and their steps: where the corner is calculated, not how it is made.
/// Designs that differ in them have no travels in common.
[[nodiscard]] bool IsTravel(const DesignVariable& variable);

/// The coordinates of all points in play, in the order of the catalogue, X to Z of each.
[[nodiscard]] std::vector<PointCoordinate> CoordinatesInPlay(const SuspensionData& data);

/// How a variable is shown; a display value is the stored value times the factor.
struct VariableDisplay {
    std::string UnitLabel;
    double Factor = 1;
    std::string Format;
};

/// Throws Failure 1000 when the unit has no factor.
[[nodiscard]] VariableDisplay DisplayOf(const DesignVariable& variable,
                                        const FundamentalUnits& units);

/// A variable that a study may move within its box, stored units.
struct FreeVariable {
    DesignVariable Variable;
    double Low = 0;
    double High = 0;

    friend bool operator==(const FreeVariable&, const FreeVariable&) = default;
};

/// Why a study can't vary a design in a variable; empty when it can. It must be in play, have a
/// value to begin with, and be no travel.
[[nodiscard]] std::string FaultOfVariable(const Design& design, const DesignVariable& variable);

/// The same for several at a time: at least one, and none twice.
[[nodiscard]] std::string FaultOfVariables(const Design& design,
                                           std::span<const DesignVariable> variables);

/// The variables of entries that are each about one.
template <typename Entry>
[[nodiscard]] std::vector<DesignVariable> VariablesOf(const std::vector<Entry>& entries) {
    std::vector<DesignVariable> variables;
    for (const Entry& entry : entries) {
        variables.push_back(entry.Variable);
    }
    return variables;
}

} // namespace corvanta
