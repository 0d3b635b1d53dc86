#pragma once

#include "model/Points.h"
#include "model/SuspensionData.h"

#include <cstdint>

namespace corvanta {

/// Decides which points are in play and what they are called. `springMechanism` is the mechanism to
/// judge by (an editor asks for one that is not applied yet); the other mechanisms are those of
/// `data`. Long names stay as they were unless the mechanisms write them.
void SetPointsInPlay(PointCatalogue& catalogue, std::int32_t springMechanism,
                     const SuspensionData& data);

} // namespace corvanta
