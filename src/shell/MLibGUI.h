#pragma once

#include "platform/SettingsStore.h"
#include "platform/WindowServices.h"

#include <optional>
#include <string_view>

namespace corvanta {

/// Puts a window in the middle of the screen. No part of it lies left of or above the screen.
void CentreWindow(WindowFrame& window, const WindowPlacement& screen);

/// A stored whole number from 0 on; nothing for a key that is missing or damaged.
[[nodiscard]] std::optional<int> StoredNumber(const SettingsStore& store, std::string_view section,
                                              std::string_view key);

/// Puts a window where the store says, in the section of its name; a window seen for the first time
/// in the middle of the screen. No part of it lies left of or above the screen. A stored or default
/// size that is not above 0 leaves the window's own: windows of a fixed size pass -1 for both. The
/// frame says whether there was a place in the store, and whether the window was maximised.
void RestoreWindow(WindowFrame& window, const WindowPlacement& screen, const SettingsStore& store,
                   int defaultWidth, int defaultHeight);

/// Remembers the place of a window, and its size if that counts; a maximised or minimised window
/// keeps what was remembered before, beside that it was maximised.
void SaveWindow(const WindowFrame& window, SettingsStore& store, bool saveSize);

} // namespace corvanta
