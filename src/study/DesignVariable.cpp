#include "study/DesignVariable.h"

#include "model/Failure.h"
#include "study/DesignFields.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace corvanta {

namespace {

constexpr const char* PlainFormat = "0.00";

/// How far a coordinate is moved to either side, mm. Camber and steer pass through single
/// precision, some 1e-7 deg, and a wheel's position is known to 1e-6 mm, so a shorter step drowns
/// in noise; with a longer one the curvature of the shortest levers shows, and figures that have a
/// kink, such as the range of a curve that is all but flat, are blurred. At a tenth of a
/// millimetre, the finest step that is built to, both errors stay below a thousandth of the
/// greatest slope.
constexpr double CoordinateStep = 0.1;

/// The step of any other number as a share of it, and the least of it.
constexpr double NumberShare = 1e-3;
constexpr double LeastNumber = 1;

const PointAxis& AxisOf(const PointCoordinate& coordinate) {
    return PointAxes()[static_cast<std::size_t>(coordinate.Axis)];
}

struct NumberField {
    const DesignField* Field = nullptr;
    const NumberPlace* Place = nullptr;
};

template <typename Fits>
NumberField FindNumber(Fits fits) {
    for (const DesignField& field : DesignFields()) {
        const NumberPlace* const place = std::get_if<NumberPlace>(&field.Place);
        if (place != nullptr && fits(field, *place)) {
            return {&field, place};
        }
    }
    return {};
}

NumberField FieldOf(const DataNumber& number) {
    return FindNumber([&](const DesignField&, const NumberPlace& place) {
        return place.Member == number.Member;
    });
}

} // namespace

double ValueOf(const Design& design, const DesignVariable& variable) {
    if (const auto* const coordinate = std::get_if<PointCoordinate>(&variable)) {
        return design.Points[coordinate->Point].*AxisOf(*coordinate).Member;
    }
    return design.Data.*std::get<DataNumber>(variable).Member;
}

void SetValue(Design& design, const DesignVariable& variable, double value) {
    if (const auto* const coordinate = std::get_if<PointCoordinate>(&variable)) {
        design.Points[coordinate->Point].*AxisOf(*coordinate).Member = value;
    } else {
        design.Data.*std::get<DataNumber>(variable).Member = value;
    }
}

void SetValues(Design& design, std::span<const DesignVariable> variables,
               std::span<const double> values) {
    for (std::size_t i = 0; i < variables.size(); ++i) {
        SetValue(design, variables[i], values[i]);
    }
}

double DifferenceStep(const DesignVariable& variable, double value) {
    return std::holds_alternative<PointCoordinate>(variable)
               ? CoordinateStep
               : NumberShare * std::max(std::abs(value), LeastNumber);
}

std::string KeyOf(const DesignVariable& variable) {
    if (const auto* const coordinate = std::get_if<PointCoordinate>(&variable)) {
        return std::string(PointShortName(coordinate->Point)) + "." +
               std::string(AxisOf(*coordinate).Name);
    }
    return std::string(FieldOf(std::get<DataNumber>(variable)).Field->Key);
}

std::optional<DesignVariable> VariableOf(std::string_view key) {
    for (const PointNumber number : AllPoints) {
        for (int axis = 0; axis < 3; ++axis) {
            if (const PointCoordinate coordinate{number, axis}; KeyOf(coordinate) == key) {
                return coordinate;
            }
        }
    }
    const NumberField found =
        FindNumber([&](const DesignField& field, const NumberPlace&) { return field.Key == key; });
    return found.Place == nullptr ? std::nullopt
                                  : std::optional<DesignVariable>(DataNumber{found.Place->Member});
}

std::string NameOf(const SuspensionData& data, const DesignVariable& variable) {
    if (const auto* const coordinate = std::get_if<PointCoordinate>(&variable)) {
        return CatalogueOf(data)[coordinate->Point].LongName + " " +
               std::string(AxisOf(*coordinate).Name);
    }
    return std::string(FieldOf(std::get<DataNumber>(variable)).Field->Caption);
}

bool HasVariable(const SuspensionData& data, const DesignVariable& variable) {
    const auto* const coordinate = std::get_if<PointCoordinate>(&variable);
    return coordinate == nullptr || CatalogueOf(data)[coordinate->Point].Enabled;
}

bool IsTravel(const DesignVariable& variable) {
    using Data = SuspensionData;
    constexpr std::array<double Data::*, 5> travels{&Data::Bump, &Data::Droop,
                                                    &Data::WheelTravelStepSize, &Data::RackTravel,
                                                    &Data::RackTravelStepSize};
    const auto* const number = std::get_if<DataNumber>(&variable);
    return number != nullptr &&
           std::find(travels.begin(), travels.end(), number->Member) != travels.end();
}

std::vector<PointCoordinate> CoordinatesInPlay(const SuspensionData& data) {
    const PointCatalogue catalogue = CatalogueOf(data);
    std::vector<PointCoordinate> coordinates;
    for (const PointNumber number : AllPoints) {
        for (int axis = 0; axis < 3 && catalogue[number].Enabled; ++axis) {
            coordinates.push_back({number, axis});
        }
    }
    return coordinates;
}

VariableDisplay DisplayOf(const DesignVariable& variable, const FundamentalUnits& units) {
    const auto ofClass = [&](std::int32_t unitClass) {
        const UnitRecord& unit = UsableUnit(units, unitClass);
        return VariableDisplay{unit.Label, static_cast<double>(unit.Factor), unit.Format};
    };
    const auto* const number = std::get_if<DataNumber>(&variable);
    if (number == nullptr) {
        return ofClass(ucDisplacement);
    }
    const NumberPlace& place = *FieldOf(*number).Place;
    VariableDisplay display =
        place.Class == PlainNumber ? VariableDisplay{"", 1, PlainFormat} : ofClass(place.Class);
    display.UnitLabel += place.UnitSuffix;
    return display;
}

std::string FaultOfVariable(const Design& design, const DesignVariable& variable) {
    if (!HasVariable(design.Data, variable)) { // the catalogue has no name for it
        return KeyOf(variable) + " is not in play";
    }
    const std::string name = NameOf(design.Data, variable);
    if (IsTravel(variable)) {
        return name + " can't vary: it is where the corner is calculated, not how it is made";
    }
    return std::isfinite(ValueOf(design, variable)) ? "" : name + " has no value to begin with";
}

std::string FaultOfVariables(const Design& design, std::span<const DesignVariable> variables) {
    if (variables.empty()) {
        return "No coordinate is chosen";
    }
    for (auto each = variables.begin(); each != variables.end(); ++each) {
        if (std::string fault = FaultOfVariable(design, *each); !fault.empty()) {
            return fault;
        }
        if (std::find(variables.begin(), each, *each) != each) {
            return NameOf(design.Data, *each) + " is chosen twice";
        }
    }
    return {};
}

} // namespace corvanta
