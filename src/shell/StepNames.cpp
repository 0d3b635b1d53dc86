#include "shell/StepNames.h"

#include "model/NumberText.h"
#include "model/PointsInPlay.h"

#include <algorithm>
#include <array>
#include <initializer_list>

namespace corvanta {

namespace {

using Field = double SuspensionData::*;

bool AnyDiffers(const SuspensionData& one, const SuspensionData& other,
                std::initializer_list<Field> fields) {
    return std::any_of(fields.begin(), fields.end(),
                       [&](Field field) { return one.*field != other.*field; });
}

bool TypeDiffers(const SuspensionData& one, const SuspensionData& other) {
    SuspensionData ofOtherType = one;
    CopyType(ofOtherType, other);
    return ofOtherType != one;
}

bool TravelDiffers(const SuspensionData& one, const SuspensionData& other) {
    using Data = SuspensionData;
    return one.ChassisMotion != other.ChassisMotion ||
           AnyDiffers(one, other,
                      {&Data::Bump, &Data::Droop, &Data::WheelTravelStepSize, &Data::RackTravel,
                       &Data::RackTravelStepSize});
}

bool VehicleDiffers(const SuspensionData& one, const SuspensionData& other) {
    using Data = SuspensionData;
    return AnyDiffers(one, other,
                      {&Data::CGX, &Data::CGZ, &Data::Wheelbase, &Data::Mass, &Data::KTyre,
                       &Data::KLink, &Data::KSpring, &Data::KThirdSpring, &Data::KARB});
}

bool LoadCasesDiffer(const SuspensionData& one, const SuspensionData& other) {
    using Data = SuspensionData;
    return AnyDiffers(one, other,
                      {&Data::XForce, &Data::YForce, &Data::ZForce, &Data::GAccel, &Data::GBrake,
                       &Data::FrontBrakeBalanceSplitPC});
}

/// What became of the points in play of the later design; empty when they are the same.
std::string DescribeMove(const Design& before, const Design& after) {
    PointCatalogue catalogue;
    SetPointsInPlay(catalogue, after.Data.SpringMechanism, after.Data);
    std::string name;
    for (const PointNumber number : AllPoints) {
        const SuspPoint& from = before.Points[number];
        const SuspPoint& to = after.Points[number];
        if (!catalogue[number].Enabled || from == to) {
            continue;
        }
        if (!name.empty()) {
            return "Move points";
        }
        const std::array moved{from.X != to.X, from.Y != to.Y, from.Z != to.Z};
        const auto* const first = std::find(moved.begin(), moved.end(), true);
        const bool one = std::count(moved.begin(), moved.end(), true) == 1;
        name = MoveName(after.Data, number, one ? static_cast<int>(first - moved.begin()) : -1);
    }
    return name;
}

} // namespace

std::string MoveName(const SuspensionData& data, PointNumber number, int axis) {
    constexpr std::array Axes{" X", " Y", " Z"};
    PointCatalogue catalogue;
    SetPointsInPlay(catalogue, data.SpringMechanism, data);
    return "Move " + ReplaceAll(catalogue[number].LongName, "  ", " ") +
           (axis < 0 ? "" : Axes[static_cast<std::size_t>(axis)]);
}

std::string DescribeChange(const Design& before, const Design& after) {
    if (TypeDiffers(before.Data, after.Data)) {
        return "Change type"; // which brings points into play and takes others out
    }
    std::string name = DescribeMove(before, after);
    const auto add = [&](bool differs, const char* what) {
        if (differs) {
            name = name.empty() ? what : "Edit properties";
        }
    };
    add(TravelDiffers(before.Data, after.Data), "Edit travel");
    add(VehicleDiffers(before.Data, after.Data), "Edit vehicle");
    add(LoadCasesDiffer(before.Data, after.Data), "Edit load cases");
    add(before.Data.Description != after.Data.Description, "Edit description");
    return name;
}

} // namespace corvanta
