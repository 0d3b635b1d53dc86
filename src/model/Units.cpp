#include "model/Units.h"

#include "model/Failure.h"

#include <cmath>
#include <cstddef>

namespace corvanta {

namespace {

struct UnitChoice {
    std::int32_t Class;
    std::string_view Label;
    double Factor;
    std::string_view Format;
};

/// Classes without a choice.
constexpr std::array<UnitChoice, 5> FixedUnits{{
    {ucWholeNumber, "-", 1, "0"},
    {ucTwoDecimals, "-", 1, "0.00"},
    {ucRatio, "-", 1, "0.000"},
    {ucAngle, "deg", 1, "0.000"},
    {ucPercentage, "%", 100, "0.0"},
}};

/// Classes that the user chooses by label. A kilogram of force is 9.81 N here, and the factors of
/// pounds are those that all documents and results of the system rest on.
constexpr std::array<UnitChoice, 10> ChosenUnits{{
    {ucDisplacement, "mm", 1, "0.00"},
    {ucDisplacement, "in", 0.03937008, "0.000"},
    {ucForce, "lbs", 0.2247319, "###0"},
    {ucForce, "kg", 0.1019368, "###0.0"},
    {ucForce, "N", 1, "###0"},
    {ucMass, "kg", 1, "0.0"},
    {ucMass, "lbs", 2.20462, "0.0"},
    {ucRate, "lb/in", 5.708223, "####0"},
    {ucRate, "kg/mm", 0.1019368, "####0"},
    {ucRate, "N/mm", 1, "####0"},
}};

/// The bar rate follows the label of the spring rate.
struct BarRateChoice {
    std::string_view RateLabel;
    UnitChoice Unit;
};

constexpr std::array<BarRateChoice, 3> BarRateUnits{{
    {"lb/in", {ucBarRate, "lb.in/deg", 0.2247319 / 25.4, "###,##0"}},
    {"kg/mm", {ucBarRate, "kg.mm/deg", 1 / 9.81, "###,##0"}},
    {"N/mm", {ucBarRate, "N.mm/deg", 1, "###,##0"}},
}};

void Take(FundamentalUnits& units, const UnitChoice& choice) {
    UnitRecord& record = units[choice.Class];
    record.Label = choice.Label;
    record.Factor = static_cast<float>(choice.Factor);
    record.Format = choice.Format;
}

std::size_t ClassSlot(std::int32_t unitClass) {
    if (unitClass < 0 || unitClass >= UnitClassCount) {
        throw Failure(fnSubscript, "Subscript out of range");
    }
    return static_cast<std::size_t>(unitClass);
}

} // namespace

UnitRecord& FundamentalUnits::operator[](std::int32_t unitClass) {
    return m_records[ClassSlot(unitClass)];
}

const UnitRecord& FundamentalUnits::operator[](std::int32_t unitClass) const {
    return m_records[ClassSlot(unitClass)];
}

void FundamentalUnits::SetFundUnitsData() {
    for (const UnitChoice& unit : FixedUnits) {
        Take(*this, unit);
    }
    for (const UnitChoice& unit : ChosenUnits) {
        if (m_records[ClassSlot(unit.Class)].Label == unit.Label) {
            Take(*this, unit);
        }
    }
    for (const BarRateChoice& choice : BarRateUnits) {
        if (m_records[ClassSlot(ucRate)].Label == choice.RateLabel) {
            Take(*this, choice.Unit);
        }
    }
}

const UnitRecord& UsableUnit(const FundamentalUnits& units, std::int32_t unitClass) {
    const UnitRecord& record = units[unitClass];
    if (record.Factor == 0) {
        throw Failure(fnUnitConversion, "There was a problem converting units.");
    }
    return record;
}

std::string FormatChannelValue(const FundamentalUnits& units, std::optional<double> value,
                               std::int32_t unitClass) {
    if (!value) {
        return "0";
    }
    const UnitRecord& unit = UsableUnit(units, unitClass);
    return FormatNumber(*value * static_cast<double>(unit.Factor), unit.Format,
                        units.NumberSeparators);
}

double ParseChannelValue(const FundamentalUnits& units, std::string_view text,
                         std::int32_t unitClass) {
    const UnitRecord& unit = UsableUnit(units, unitClass);
    const double value = LeadingNumber(text) / static_cast<double>(unit.Factor);
    if (!std::isfinite(value)) {
        throw Failure(fnOverflow, "Overflow");
    }
    return value;
}

} // namespace corvanta
