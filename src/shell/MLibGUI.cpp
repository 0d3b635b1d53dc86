#include "shell/MLibGUI.h"

#include "model/NumberText.h"

#include <algorithm>
#include <optional>
#include <string>

namespace corvanta {

namespace {

constexpr const char* MaximisedKey = "Maximised";

/// A stored whole number; nothing for a key that is missing or damaged.
std::optional<int> StoredInteger(const SettingsStore& store, std::string_view section,
                                 std::string_view key) {
    constexpr double Most = 1e6; // no screen is as wide, in twips
    const std::optional<double> number = WholeNumberText(store.Read(section, key, ""), ".");
    if (!number || std::max(*number, -*number) > Most) {
        return std::nullopt;
    }
    return ToInteger32(*number);
}

} // namespace

std::optional<int> StoredNumber(const SettingsStore& store, std::string_view section,
                                std::string_view key) {
    const std::optional<int> number = StoredInteger(store, section, key);
    return number && *number >= 0 ? number : std::nullopt;
}

void CentreWindow(WindowFrame& window, const WindowPlacement& screen) {
    WindowPlacement& placement = window.Placement;
    placement.Left = std::max(0, screen.Width / 2 - placement.Width / 2);
    placement.Top = std::max(0, screen.Height / 2 - placement.Height / 2);
}

void RestoreWindow(WindowFrame& window, const WindowPlacement& screen, const SettingsStore& store,
                   int defaultWidth, int defaultHeight) {
    const std::string section = window.Name;
    WindowPlacement& placement = window.Placement;
    const int width = StoredInteger(store, section, "Width").value_or(defaultWidth);
    const int height = StoredInteger(store, section, "Height").value_or(defaultHeight);
    const std::optional<int> left = StoredInteger(store, section, "Left");
    const std::optional<int> top = StoredInteger(store, section, "Top");
    CentreWindow(window, screen);
    placement.Left = std::max(0, left.value_or(placement.Left));
    placement.Top = std::max(0, top.value_or(placement.Top));
    window.IsPlaced = left && top;
    window.IsMaximised = store.Read(section, MaximisedKey, "") == "True";
    if (width > 0) {
        placement.Width = width;
    }
    if (height > 0) {
        placement.Height = height;
    }
}

void SaveWindow(const WindowFrame& window, SettingsStore& store, bool saveSize) {
    const std::string section = window.Name;
    if (saveSize && (window.IsMaximised || !store.Read(section, MaximisedKey, "").empty())) {
        store.Write(section, MaximisedKey, window.IsMaximised ? "True" : "False");
    }
    if (!window.IsNormal) {
        return;
    }
    const WindowPlacement& placement = window.Placement;
    store.Write(section, "Left", std::to_string(placement.Left));
    store.Write(section, "Top", std::to_string(placement.Top));
    store.Write(section, "Width", std::to_string(saveSize ? placement.Width : 0));
    store.Write(section, "Height", std::to_string(saveSize ? placement.Height : 0));
}

} // namespace corvanta
