#pragma once

#include "model/Options.h"
#include "model/Suspension.h"
#include "results/CWireframe.h"
#include "results/DrawingSink.h"

#include <optional>

namespace corvanta {

/// What a drawing of the corner shows: one position of it against the static one.
struct CornerPosition {
    const PointSet& Points;
    const PointSet& StaticPoints;
    const SuspensionData& Data;
};

/// The position at a rack and wheel step of the solved grid; a step of 0 is the static one. It
/// refers to the document.
[[nodiscard]] CornerPosition PositionAt(const Suspension& document, int rackStep, int wheelStep);

/// Draws the parts of the corner that its mechanisms have: what goes to a file.
void Draw3d(DrawingSink& sink, const CornerPosition& corner);

/// View 15: draws the corner, and its axes if the options say so, in the layout of four views, with
/// the legend. The options also say whether the layout is fitted anew. Throws Failure as
/// `CWireframe::DrawAutoLayout` does.
void Draw3d(CWireframe& wireframe, DrawingSurface& surface, const CornerPosition& corner,
            const Options& options);

/// Entered points with those that a drawing derives from them, calculated or not.
[[nodiscard]] PointSet EnteredPosition(const PointSet& entered, const SuspensionData& data);

/// Draws static points as they were entered, calculated or not, in the free view alone, fitted to
/// the surface, without axes and legend; while all are 0, the directions of the axes instead. The
/// point `ringed` stands in a ring. Points that do not make a suspension are drawn all the same.
/// Throws Failure "Overflow" for coordinates beyond single precision.
void DrawPreview(CWireframe& wireframe, DrawingSurface& surface, const PointSet& staticPoints,
                 const SuspensionData& data, std::optional<PointNumber> ringed = std::nullopt);

} // namespace corvanta
