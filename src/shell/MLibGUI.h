#pragma once

#include "platform/SettingsStore.h"
#include "platform/WindowServices.h"

namespace corvanta {

/// Puts a window in the middle of the screen. No part of it lies left of or above the screen.
void CentreWindow(WindowFrame& window, const WindowPlacement& screen);

/// Puts a window where the store says, in the section of its name; a window seen for the first time
/// in the middle of the screen. No part of it lies left of or above the screen. A stored or default
/// size that is not above 0 leaves the window's own: windows of a fixed size pass -1 for both.
void RestoreWindow(WindowFrame& window, const WindowPlacement& screen, const SettingsStore& store,
                   int defaultWidth, int defaultHeight);

/// Remembers the place of a window, and its size if that counts; a maximised or minimised window
/// keeps what was remembered before.
void SaveWindow(const WindowFrame& window, SettingsStore& store, bool saveSize);

} // namespace corvanta
