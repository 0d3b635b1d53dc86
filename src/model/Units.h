#pragma once

#include "model/NumberText.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvanta {

/// The classes of display units. Class 1 is not used.
enum UnitClass : std::int32_t {
    ucWholeNumber = 0,
    ucTwoDecimals = 2,
    ucRatio = 3,
    ucAngle = 4,
    ucDisplacement = 5,
    ucForce = 6,
    ucMass = 7,
    ucPercentage = 8,
    ucRate = 9,
    ucBarRate = 10,
};

inline constexpr int UnitClassCount = 11;

/// One display unit: a display value is the stored value times the factor.
struct UnitRecord {
    std::string Label;
    float Factor = 0; ///< 0 while the class has had no known label
    std::string Format;
};

/// The units that the user reads and types, by class. The labels of displacement, force, mass and
/// rate are the user's choices; `SetFundUnitsData` makes the rest follow them. Stored units are mm,
/// N, kg, deg, g, N/mm and N.mm/deg.
class FundamentalUnits {
  public:
    /// Record of a class. Throws Failure "Subscript out of range" for a number that is no class.
    [[nodiscard]] UnitRecord& operator[](std::int32_t unitClass);
    [[nodiscard]] const UnitRecord& operator[](std::int32_t unitClass) const;

    /// Fills the table from the labels chosen. A label that is not in the table leaves its record
    /// as it was, so that at a first fill the factor stays 0.
    void SetFundUnitsData();

    /// The machine's number characters, used by `FormatChannelValue`.
    Separators NumberSeparators;

  private:
    std::array<UnitRecord, UnitClassCount> m_records{};
};

/// The record of a class that values can be converted with. Throws Failure 1000 when the class has
/// no factor.
[[nodiscard]] const UnitRecord& UsableUnit(const FundamentalUnits& units, std::int32_t unitClass);

/// The display text of a stored value: times the factor of its class, in the format of its class.
/// No value gives "0". Throws Failure 1000 when the class has no factor.
[[nodiscard]] std::string FormatChannelValue(const FundamentalUnits& units,
                                             std::optional<double> value, std::int32_t unitClass);

/// The stored value of a display text: the leading number of the text, "." the decimal point on any
/// machine, divided by the factor of the class. Throws Failure 1000 when the class has no factor,
/// and "Overflow" beyond the range of a double.
[[nodiscard]] double ParseChannelValue(const FundamentalUnits& units, std::string_view text,
                                       std::int32_t unitClass);

} // namespace corvanta
