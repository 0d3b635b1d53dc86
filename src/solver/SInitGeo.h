#pragma once

#include "model/Channels.h"
#include "model/Suspension.h"
#include "model/Units.h"
#include "platform/Messages.h"

namespace corvanta {

/// Stand-in until the set-up of the grid is merged.
void InitGeometry(Suspension& document, ChannelCatalogue& channels, const FundamentalUnits& units,
                  Messages& messages);

} // namespace corvanta
