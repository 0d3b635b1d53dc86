#pragma once

#include "model/Points.h"
#include "solver/MLibCoordGeom.h"

namespace corvanta {

/// From where the car is looked at, degrees. The vertical of the car stays upright in the picture.
struct ViewSide {
    double Turn = 0; ///< about the vertical; at 0 the picture runs to the right as X does
    double Tilt = 0; ///< 0 from above, 90 level with the car, 180 from below

    friend bool operator==(const ViewSide&, const ViewSide&) = default;
};

/// The sides of the three standard views, those of the layout of four views. The free one looks
/// along the same line as that layout's, with the vertical exactly upright.
inline constexpr ViewSide FrontSide{-90, 90};
inline constexpr ViewSide SideSide{0, 90};
inline constexpr ViewSide TopSide{0, 0};
inline constexpr ViewSide FreeSide{49.10660535, 41.40962211};

/// A parallel projection of the car on a surface whose scale runs down from the top left corner,
/// and the way back from it. Where a side is a multiple of 90 degrees its axes are exact, so that
/// the coordinate along the line of sight does not take part.
struct CornerProjection {
    Matrix3 Rotation; ///< of coordinates whose Y runs the other way; see `RotationOf`
    SuspPoint Middle; ///< the point of the car that is shown at `Centre`, mm
    Point2D Centre;   ///< on the surface
    double Scale = 1; ///< units of the surface to the mm, greater than 0

    /// The rotation from the car, with Y the other way, to the picture: right, up, to the viewer.
    [[nodiscard]] static Matrix3 RotationOf(const ViewSide& side);

    [[nodiscard]] Point2D Place(const SuspPoint& point) const;

    /// How near a point is to the viewer, mm from the middle.
    [[nodiscard]] double Nearness(const SuspPoint& point) const;

    /// What a way of the car is on the surface.
    [[nodiscard]] Point2D OnSurface(const SuspPoint& way) const;

    /// The way of the car, square to the line of sight, that looks like a way on the surface.
    [[nodiscard]] SuspPoint InCar(const Point2D& way) const;
};

} // namespace corvanta
