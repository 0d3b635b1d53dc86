#pragma once

#include "model/SuspensionData.h"
#include "model/Units.h"
#include "shell/frmEditGeometry.h"

#include <cstdint>
#include <span>
#include <string>

namespace corvanta {

/// Class of a field without one: an acceleration in g, kept in single precision.
inline constexpr std::int32_t AccelerationClass = -1;

/// A number box of the geometry editor and where its value lives in the document.
struct NumberField {
    NumberBox frmEditGeometry::*Box;
    FieldFrame frmEditGeometry::*Frame;
    double SuspensionData::*Target;
    std::int32_t Class; ///< of its unit; values of `ucTwoDecimals` are stored as they are shown
    const char* Caption;
    const char* UnitSuffix; ///< behind the label of the class
    const char* Hint;       ///< the sign and limits, empty where there is nothing to say
};

/// The fields from top to bottom, in the order in which they are taken.
[[nodiscard]] std::span<const NumberField> TravelFields();
[[nodiscard]] std::span<const NumberField> VehicleFields();

/// The unit behind a box.
[[nodiscard]] std::string FieldUnit(const NumberField& field, const FundamentalUnits& units);

/// The text in which a stored value shows.
[[nodiscard]] std::string FieldText(const NumberField& field, double stored,
                                    const FundamentalUnits& units);

/// The stored value of a text. The text that `stored` shows stands for `stored`, in full precision.
/// Throws Failure "Type mismatch" that names the field for a text that is no number.
[[nodiscard]] double FieldValue(const NumberField& field, const std::string& text, double stored,
                                const FundamentalUnits& units);

/// The fields of the page as they stand, into `data`, which holds the stored values.
void TakeFields(SuspensionData& data, const frmEditGeometry& form,
                std::span<const NumberField> fields, const FundamentalUnits& units);

} // namespace corvanta
