#pragma once

#include "desktop/QtServices.h"

#include <QMargins>
#include <QSize>

class QWidget;

namespace corvanta {

/// What the frame of a window adds to it; nothing before the window system has made one.
[[nodiscard]] QMargins FrameMargins(const QWidget& window);

/// Brings a window of a size to the place where its frame is stored, or else to the middle of the
/// window that owns it, or of the screen. With its frame it lies on one screen: it is made smaller
/// and moved as far as that takes. Only a `sized` window gets the size; another one has its own
/// from what is in it.
void PlaceWindow(QWidget& window, const WindowFrame& frame, const QSize& size, bool sized = true);

/// The same, of the size that is stored.
void PlaceWindow(QWidget& window, const WindowFrame& frame);

/// Keeps the frame of a window up to date: where it stands while it is neither maximised nor
/// minimised, and which of these it is.
void RememberPlace(const QWidget& window, WindowFrame& frame);

/// Makes a window that has just come up as small as its screen needs, now that it has its frame.
void FitToScreen(QWidget& window);

} // namespace corvanta
