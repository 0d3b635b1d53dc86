#pragma once

#include "model/Views.h"
#include "platform/SettingsStore.h"

#include <cstdint>
#include <optional>

namespace corvanta {

/// The view that was last shown, for the next start.
struct RememberedView {
    std::int32_t View = vwNone;
    std::int32_t Channel = 0; ///< the one last plotted, 0 for none
    std::int32_t Variable = vvAlongWheelTravel;
};

/// The view in the store; nothing when none is remembered. Of what is damaged it is the default.
[[nodiscard]] std::optional<RememberedView> ReadView(const SettingsStore& store);

void WriteView(SettingsStore& store, const RememberedView& view);

} // namespace corvanta
