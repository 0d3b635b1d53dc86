#include "shell/MLibGUI.h"

#include "model/NumberText.h"

#include <algorithm>
#include <optional>
#include <string>

namespace corvanta {

namespace {

/// A stored number of twips; nothing for a key that is missing or damaged.
std::optional<int> StoredTwips(const SettingsStore& store, const std::string& section,
                               const char* key) {
    constexpr double Most = 1e6; // no screen is as wide
    const std::optional<double> twips = WholeNumberText(store.Read(section, key, ""), ".");
    if (!twips || std::max(*twips, -*twips) > Most) {
        return std::nullopt;
    }
    return ToInteger32(*twips);
}

} // namespace

void CentreWindow(WindowFrame& window, const WindowPlacement& screen) {
    WindowPlacement& placement = window.Placement;
    placement.Left = std::max(0, screen.Width / 2 - placement.Width / 2);
    placement.Top = std::max(0, screen.Height / 2 - placement.Height / 2);
}

void RestoreWindow(WindowFrame& window, const WindowPlacement& screen, const SettingsStore& store,
                   int defaultWidth, int defaultHeight) {
    const std::string section = window.Name;
    WindowPlacement& placement = window.Placement;
    const int width = StoredTwips(store, section, "Width").value_or(defaultWidth);
    const int height = StoredTwips(store, section, "Height").value_or(defaultHeight);
    CentreWindow(window, screen);
    placement.Left = std::max(0, StoredTwips(store, section, "Left").value_or(placement.Left));
    placement.Top = std::max(0, StoredTwips(store, section, "Top").value_or(placement.Top));
    if (width > 0) {
        placement.Width = width;
    }
    if (height > 0) {
        placement.Height = height;
    }
}

void SaveWindow(const WindowFrame& window, SettingsStore& store, bool saveSize) {
    if (!window.IsNormal) {
        return;
    }
    const std::string section = window.Name;
    const WindowPlacement& placement = window.Placement;
    store.Write(section, "Left", std::to_string(placement.Left));
    store.Write(section, "Top", std::to_string(placement.Top));
    store.Write(section, "Width", std::to_string(saveSize ? placement.Width : 0));
    store.Write(section, "Height", std::to_string(saveSize ? placement.Height : 0));
}

} // namespace corvanta
