#pragma once

#include "model/Channels.h"
#include "model/Suspension.h"
#include "model/Units.h"
#include "platform/Messages.h"

#include <cstdint>
#include <string_view>

namespace corvanta {

/// The number of a mechanism that a file holds, rounded to a whole one, halves to even. Throws
/// Failure, naming `key`, when it is none of 0 to `highest`.
[[nodiscard]] std::int32_t MechanismNumber(std::string_view key, double value,
                                           std::int32_t highest);

/// Makes the settings and static points of a file the document's, sets the geometry up and counts
/// the document as loaded. Throws Failure, with both as they were, when the travels can't be
/// set up.
void AdoptDocument(Suspension& document, ChannelCatalogue& channels, SuspensionData data,
                   PointSet points, const FundamentalUnits& units, Messages& messages);

} // namespace corvanta
