#pragma once

#include "model/Points.h"
#include "platform/DrawingSurface.h"

#include <string>

namespace corvanta {

/// What a three-dimensional drawing is handed to, line by line, in coordinates of the car, mm.
class DrawingSink {
  public:
    DrawingSink() = default;
    DrawingSink(const DrawingSink&) = delete;
    DrawingSink& operator=(const DrawingSink&) = delete;
    DrawingSink(DrawingSink&&) = delete;
    DrawingSink& operator=(DrawingSink&&) = delete;
    virtual ~DrawingSink() = default;

    /// A circle about a centre, square to the axis from the centre to `axisPoint`.
    virtual void AddCircle(const SuspPoint& centre, const SuspPoint& axisPoint, double radius,
                           Colour colour) = 0;
    virtual void AddLabel(const SuspPoint& at, const std::string& text) = 0;
    virtual void AddLine(const SuspPoint& from, const SuspPoint& to, Colour colour) = 0;
};

} // namespace corvanta
