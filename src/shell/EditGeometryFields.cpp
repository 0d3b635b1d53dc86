#include "shell/EditGeometryFields.h"

#include "shell/TypedNumber.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

namespace corvanta {

namespace {

using Form = frmEditGeometry;
using SD = SuspensionData;

constexpr const char* AtMostSteps = "at most 49 steps fit, a smaller step grows";

constexpr std::array<NumberField, 5> TravelFieldTable{{
    {&Form::txtBump, &Form::fraSuspensionTravel, &SD::Bump, ucDisplacement,
     "Maximum bump travel of tyre contact patch:", "", "upwards from static"},
    {&Form::txtDroop, &Form::fraSuspensionTravel, &SD::Droop, ucDisplacement,
     "Maximum droop travel of tyre contact patch:", "", "downwards from static, positive"},
    {&Form::txtWheelStep, &Form::fraSuspensionTravel, &SD::WheelTravelStepSize, ucDisplacement,
     "Step size to increment tyre contact patch postion by:", "", AtMostSteps},
    {&Form::txtRackTravel, &Form::fraRackTravel, &SD::RackTravel, ucDisplacement,
     "Maximum rack travel either side of central position:", "", ""},
    {&Form::txtRackStep, &Form::fraRackTravel, &SD::RackTravelStepSize, ucDisplacement,
     "Step size to increment rack position by:", "", AtMostSteps},
}};

constexpr std::array<NumberField, 15> VehicleFieldTable{{
    {&Form::txtCoGX, &Form::fraChassis, &SD::CGX, ucDisplacement,
     "Centre of gravity X position:", "", "positive to the back"},
    {&Form::txtCoGZ, &Form::fraChassis, &SD::CGZ, ucDisplacement, "Centre of gravity height:", "",
     "positive upwards"},
    {&Form::txtWheelbase, &Form::fraChassis, &SD::Wheelbase, ucDisplacement, "Wheelbase:", "", ""},
    {&Form::txtTotalMass, &Form::fraChassis, &SD::Mass, ucMass, "Total mass:", "",
     "of the whole car"},
    {&Form::txtSpringStiffness, &Form::fraRates, &SD::KSpring, ucRate, "Spring stiffness:", "", ""},
    {&Form::txtLinkStiffness, &Form::fraRates, &SD::KLink, ucRate, "Suspension link stiffness:", "",
     ""},
    {&Form::txtTyreStiffness, &Form::fraRates, &SD::KTyre, ucRate, "Tyre stiffness:", "", ""},
    {&Form::txtARBRate, &Form::fraRates, &SD::KARB, ucForce, "ARB rate:", "/deg", ""},
    {&Form::txtKThirdSpring, &Form::fraRates, &SD::KThirdSpring, ucRate,
     "Third spring stiffness:", "", "of the centre spring"},
    {&Form::txtForceX, &Form::fraLinkLoads, &SD::XForce, ucForce, "X direction:", "",
     "positive to the back"},
    {&Form::txtForceY, &Form::fraLinkLoads, &SD::YForce, ucForce, "Y direction:", "",
     "positive to the left"},
    {&Form::txtForceZ, &Form::fraLinkLoads, &SD::ZForce, ucForce, "Z direction:", "",
     "positive upwards"},
    {&Form::txtAccel, &Form::fraDynamics, &SD::GAccel, AccelerationClass, "Acceleration:", "g", ""},
    {&Form::txtBraking, &Form::fraDynamics, &SD::GBrake, AccelerationClass, "Braking:", "g", ""},
    {&Form::txtBrakeBalance, &Form::fraDynamics, &SD::FrontBrakeBalanceSplitPC, ucTwoDecimals,
     "% Front brake balance:", "", ""},
}};

/// Its value is within the range of single precision.
double InSinglePrecision(double value) {
    return static_cast<double>(static_cast<float>(value));
}

/// A number of single precision without the digits that only its double precision has.
std::string SinglePrecisionText(double value, const Separators& separators) {
    constexpr int SingleDigits = 7;
    if (std::abs(value) <= static_cast<double>(std::numeric_limits<float>::max()) &&
        InSinglePrecision(value) == value) { // exactly: any other value is not of single precision
        std::array<char, 32> digits{};
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                       std::chars_format::general, SingleDigits);
        std::from_chars(digits.data(), end.ptr, value);
    }
    return NumberToText(value, separators);
}

/// The name of a field in a message.
std::string_view PlainCaption(const NumberField& field) {
    std::string_view caption = field.Caption;
    caption.remove_suffix(caption.ends_with(':') ? 1 : 0);
    return caption;
}

} // namespace

std::span<const NumberField> TravelFields() {
    return TravelFieldTable;
}

std::span<const NumberField> VehicleFields() {
    return VehicleFieldTable;
}

std::string FieldUnit(const NumberField& field, const FundamentalUnits& units) {
    const bool labelled = field.Class != AccelerationClass && field.Class != ucTwoDecimals;
    return (labelled ? units[field.Class].Label : std::string()) + field.UnitSuffix;
}

std::string FieldText(const NumberField& field, double stored, const FundamentalUnits& units) {
    return field.Class == AccelerationClass ? SinglePrecisionText(stored, units.NumberSeparators)
                                            : FormatChannelValue(units, stored, field.Class);
}

double FieldValue(const NumberField& field, const std::string& text, double stored,
                  const FundamentalUnits& units) {
    if (text == FieldText(field, stored, units)) {
        return stored;
    }
    const auto typed = ReadTypedNumber(text, units.NumberSeparators, FieldUnit(field, units));
    if (!typed) {
        RaiseNoNumber(PlainCaption(field), text, units.NumberSeparators);
    }
    if (field.Class == AccelerationClass) {
        return InSinglePrecision(LeadingNumber(typed->Text));
    }
    const double value = ParseChannelValue(units, typed->Text, field.Class);
    if (field.Class == ucTwoDecimals) {
        return LeadingNumber(FormatNumber(value, units[ucTwoDecimals].Format, {}));
    }
    return value;
}

void TakeFields(SuspensionData& data, const frmEditGeometry& form,
                std::span<const NumberField> fields, const FundamentalUnits& units) {
    for (const NumberField& field : fields) {
        double& value = data.*field.Target;
        value = FieldValue(field, (form.*field.Box).Text, value, units);
    }
}

} // namespace corvanta
