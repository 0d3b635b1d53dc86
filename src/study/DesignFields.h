#pragma once

#include "model/Points.h"
#include "model/SuspensionData.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <variant>

namespace corvanta {

/// A choice of mechanism: its number runs from 0 to `Highest`, and each has its words.
struct MechanismPlace {
    std::int32_t SuspensionData::*Member;
    std::int32_t Highest;
    std::string_view (*Words)(std::int32_t number);
};

/// A number: the class of its display unit, or `PlainNumber` with the unit behind it.
struct NumberPlace {
    double SuspensionData::*Member;
    std::int32_t Class;
    std::string_view UnitSuffix; ///< behind the label of the class
};

struct FlagPlace {
    bool SuspensionData::*Member;
};

struct TextPlace {
    std::string SuspensionData::*Member;
};

/// Class of a number that every unit shows alike.
inline constexpr std::int32_t PlainNumber = -1;

/// A value of a design beside its points: its name in files, the one that documents use too, and
/// its name to the user's eye.
struct DesignField {
    std::string_view Key;
    std::string_view Caption;
    std::variant<MechanismPlace, NumberPlace, FlagPlace, TextPlace> Place;
};

/// All values of a design beside its points, in the order of a document.
[[nodiscard]] std::span<const DesignField> DesignFields();

/// The axes of a point by their names.
struct PointAxis {
    std::string_view Name;
    double SuspPoint::*Member;
};

[[nodiscard]] std::span<const PointAxis> PointAxes();

/// The points in play of a design's mechanisms, with their names on display.
[[nodiscard]] PointCatalogue CatalogueOf(const SuspensionData& data);

} // namespace corvanta
