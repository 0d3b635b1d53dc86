#include "desktop/WindowPlaces.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace corvanta {

namespace {

/// A frame at a corner, moved as far as it takes to lie in a room that is no smaller.
QPoint Inside(const QRect& room, const QPoint& corner, const QSize& frame) {
    return {std::clamp(corner.x(), room.left(),
                       std::max(room.left(), room.right() + 1 - frame.width())),
            std::clamp(corner.y(), room.top(),
                       std::max(room.top(), room.bottom() + 1 - frame.height()))};
}

QPoint CornerInMiddle(const QRect& of, const QSize& frame) {
    return of.center() - QPoint(frame.width() / 2, frame.height() / 2);
}

/// Lets a window be as small as a room needs: its least size is for screens that have the room.
void BoundLeastSize(QWidget& window, const QSize& room) {
    const QSize least = window.minimumSize().boundedTo(room);
    if (least != window.minimumSize()) { // told once, it no longer follows what is in the window
        window.setMinimumSize(least);
    }
}

} // namespace

QMargins FrameMargins(const QWidget& window) {
    const QRect inner = window.geometry();
    const QRect outer = window.frameGeometry();
    return {inner.left() - outer.left(), inner.top() - outer.top(), outer.right() - inner.right(),
            outer.bottom() - inner.bottom()};
}

void PlaceWindow(QWidget& window, const WindowFrame& frame, const QSize& size, bool sized) {
    const QWidget* const owner = window.parentWidget();
    const bool owned = owner != nullptr && owner->isVisible();
    // A window that is not up yet has no frame. That of its owner is as good.
    const QMargins margins = FrameMargins(owned && !window.isVisible() ? *owner : window);
    QPoint corner(frame.Placement.Left / TwipsPerPixel, frame.Placement.Top / TwipsPerPixel);
    const QScreen* screen = QGuiApplication::screenAt(corner);
    if (!frame.IsPlaced || screen == nullptr) {
        screen = owned ? owner->screen() : QGuiApplication::primaryScreen();
    }
    const QRect room = screen->availableGeometry();
    const QSize shown = size.boundedTo(room.marginsRemoved(margins).size());
    const QSize outer = shown.grownBy(margins);
    if (!frame.IsPlaced) {
        corner = CornerInMiddle(owned ? owner->frameGeometry() : room, outer);
    }
    if (sized) {
        BoundLeastSize(window, shown);
        window.resize(shown);
    }
    window.move(Inside(room, corner, outer));
}

void PlaceWindow(QWidget& window, const WindowFrame& frame) {
    const WindowPlacement& place = frame.Placement;
    PlaceWindow(window, frame, {place.Width / TwipsPerPixel, place.Height / TwipsPerPixel});
}

void RememberPlace(const QWidget& window, WindowFrame& frame) {
    if (!window.isVisible()) {
        return;
    }
    frame.IsMaximised = window.isMaximized();
    frame.IsNormal = !window.isMaximized() && !window.isMinimized() && !window.isFullScreen();
    if (frame.IsNormal) {
        frame.Placement = {window.pos().x() * TwipsPerPixel, window.pos().y() * TwipsPerPixel,
                           window.width() * TwipsPerPixel, window.height() * TwipsPerPixel};
        frame.IsPlaced = true;
    }
}

void FitToScreen(QWidget& window) {
    if (window.isMaximized() || window.isFullScreen() || window.isMinimized()) {
        return;
    }
    const QRect room = window.screen()->availableGeometry();
    const QSize most = room.marginsRemoved(FrameMargins(window)).size();
    BoundLeastSize(window, most);
    const QSize fitting = window.size().boundedTo(most);
    if (fitting != window.size()) {
        window.resize(fitting);
    }
    const QPoint corner = Inside(room, window.pos(), fitting.grownBy(FrameMargins(window)));
    if (corner != window.pos()) {
        window.move(corner);
    }
}

} // namespace corvanta
