#include "study/DesignFields.h"

#include "model/Mechanisms.h"
#include "model/PointsInPlay.h"
#include "model/TextTable.h"
#include "model/Units.h"

#include <array>

namespace corvanta {

namespace {

using SD = SuspensionData;

std::string_view BarName(std::int32_t mechanism) {
    static constexpr std::array<std::string_view, 5> names{
        "None", "Lateral bar via drop link to lower wishbone",
        "Lateral bar via drop link to rocker", "T-bar via drop link to rocker",
        "Lateral bar via drop link to upright"};
    return EntryOrEmpty(names, mechanism);
}

std::string_view MotionName(std::int32_t motion) {
    static constexpr std::array<std::string_view, 2> names{"Single wheel", "Axle"};
    return EntryOrEmpty(names, motion);
}

constexpr NumberPlace Length(double SuspensionData::*member) {
    return {member, ucDisplacement, ""};
}
constexpr NumberPlace Rate(double SuspensionData::*member) {
    return {member, ucRate, ""};
}
constexpr NumberPlace Force(double SuspensionData::*member, std::string_view suffix = "") {
    return {member, ucForce, suffix};
}

constexpr std::array<DesignField, 27> Fields{{
    {"SpringMechanism", "Mechanism",
     MechanismPlace{&SD::SpringMechanism, smMacPhersonStrut, SpringMechanismName}},
    {"ThirdSpringMechanism", "Springs",
     MechanismPlace{&SD::ThirdSpringMechanism, tsCentreSpring, ThirdSpringName}},
    {"CentreSpringSystem", "Centre spring",
     MechanismPlace{&SD::CentreSpringSystem, csLateralViaRocker, CentreSpringSystemName}},
    {"ChassisMotion", "Motion type", MechanismPlace{&SD::ChassisMotion, cmHeave, MotionName}},
    {"DriveShaftExists", "Driveshaft", FlagPlace{&SD::DriveShaftExists}},
    {"ARBMechanism", "Anti-roll bar", MechanismPlace{&SD::ARBMechanism, abToUpright, BarName}},
    {"Bump", "Bump travel", Length(&SD::Bump)},
    {"Droop", "Droop travel", Length(&SD::Droop)},
    {"WheelTravelStepSize", "Step of wheel travel", Length(&SD::WheelTravelStepSize)},
    {"RackTravel", "Rack travel", Length(&SD::RackTravel)},
    {"RackTravelStepSize", "Step of rack travel", Length(&SD::RackTravelStepSize)},
    {"CGX", "Centre of gravity X position", Length(&SD::CGX)},
    {"CGZ", "Centre of gravity height", Length(&SD::CGZ)},
    {"Wheelbase", "Wheelbase", Length(&SD::Wheelbase)},
    {"Mass", "Total mass", NumberPlace{&SD::Mass, ucMass, ""}},
    {"GAccel", "Acceleration", NumberPlace{&SD::GAccel, PlainNumber, "g"}},
    {"GBrake", "Braking", NumberPlace{&SD::GBrake, PlainNumber, "g"}},
    {"KTyre", "Tyre stiffness", Rate(&SD::KTyre)},
    {"KLink", "Suspension link stiffness", Rate(&SD::KLink)},
    {"KSpring", "Spring stiffness", Rate(&SD::KSpring)},
    {"KThirdSpring", "Third spring stiffness", Rate(&SD::KThirdSpring)},
    {"KARB", "ARB rate", Force(&SD::KARB, "/deg")},
    {"FrontBrakeBalanceSplitPC", "Front brake balance",
     NumberPlace{&SD::FrontBrakeBalanceSplitPC, PlainNumber, "%"}},
    {"Description", "Description", TextPlace{&SD::Description}},
    {"XForce", "Force in X direction", Force(&SD::XForce)},
    {"YForce", "Force in Y direction", Force(&SD::YForce)},
    {"ZForce", "Force in Z direction", Force(&SD::ZForce)},
}};

constexpr std::array<PointAxis, 3> Axes{
    {{"X", &SuspPoint::X}, {"Y", &SuspPoint::Y}, {"Z", &SuspPoint::Z}}};

} // namespace

std::span<const DesignField> DesignFields() {
    return Fields;
}

std::span<const PointAxis> PointAxes() {
    return Axes;
}

PointCatalogue CatalogueOf(const SuspensionData& data) {
    PointCatalogue catalogue;
    SetPointsInPlay(catalogue, data.SpringMechanism, data);
    return catalogue;
}

} // namespace corvanta
