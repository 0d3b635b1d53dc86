#include "shell/ViewMemory.h"

#include "model/Channels.h"
#include "shell/MLibGUI.h"

#include <string>

namespace corvanta {

namespace {

constexpr const char* Section = "frmMain";
constexpr const char* ViewKey = "View";
constexpr const char* ChannelKey = "PlotChannel";
constexpr const char* VariableKey = "ViewVariable";

} // namespace

std::optional<RememberedView> ReadView(const SettingsStore& store) {
    RememberedView found;
    found.View = StoredNumber(store, Section, ViewKey).value_or(vwNone);
    if (ViewName(found.View).empty()) {
        return std::nullopt;
    }
    const int channel = StoredNumber(store, Section, ChannelKey).value_or(0);
    if (channel <= ChannelCount && channel != chLinkLoads) {
        found.Channel = channel;
    }
    if (StoredNumber(store, Section, VariableKey) == vvAlongRackTravel) {
        found.Variable = vvAlongRackTravel;
    }
    return found;
}

void WriteView(SettingsStore& store, const RememberedView& view) {
    store.Write(Section, ViewKey, std::to_string(view.View));
    store.Write(Section, VariableKey, std::to_string(view.Variable));
    if (view.Channel > 0) {
        store.Write(Section, ChannelKey, std::to_string(view.Channel));
    }
}

} // namespace corvanta
