#pragma once

#include "results/CornerProjection.h"
#include "results/DrawingSink.h"
#include "solver/MLibCoordGeom.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// Angles of a view, degrees.
struct ViewAngles {
    double A1 = 0;
    double A2 = 0;
    double A3 = 0;
};

/// How the user has turned the free view away from the standard one, which is the default.
struct FreeView {
    double Turn = 0; ///< about the vertical, degrees, anticlockwise seen from above
    double Tilt = 0; ///< about the level line across the view, degrees, top towards the viewer
    double Zoom = 1; ///< magnification, greater than 0
    double ShiftX = 0, ShiftY = 0; ///< of the middle, mm in the standard view, right and up

    friend bool operator==(const FreeView&, const FreeView&) = default;
};

/// Draws lines, circles and labels of a three-dimensional drawing on a surface, seen from
/// infinitely far and with nothing hidden: one view, or the layout of four views. Coordinates are
/// those of the car, mm; inside, Y runs the other way, which makes the axes right-handed. Every
/// drawing begins with `Init`.
///
/// The lists hold 100 lines and 100 labels. One more throws Failure "Subscript out of range".
class CWireframe final : public DrawingSink {
  public:
    static constexpr int MostLines = 100;
    static constexpr int MostLabels = 100;
    static constexpr double LeastZoom = 0.2;
    static constexpr double MostZoom = 50;

    /// Adds 36 lines. The plane is square to an axis along Y and nearly so for one close to it.
    void AddCircle(const SuspPoint& centre, const SuspPoint& axisPoint, double radius,
                   Colour colour) override;
    /// Coordinates are kept in single precision. Throws Failure "Overflow" beyond its range.
    void AddLabel(const SuspPoint& at, const std::string& text) override;
    void AddLine(const SuspPoint& from, const SuspPoint& to, Colour colour) override;

    /// A line that has no say in scale and place. It is drawn as far as there is room, with its
    /// name at the end of what is seen.
    void AddGuide(const SuspPoint& from, const SuspPoint& to, Colour colour,
                  const std::string& name);

    void ClearLabels() { m_labels.clear(); }
    void ClearLines() { m_lines.clear(); }

    /// Empties the lists and makes the surface's scale run up from the bottom: heights are negative
    /// below the top edge. The layout stays.
    void Init(DrawingSurface& surface);

    /// One view on an empty surface, the origin at its first quarter point; a scale of 0 counts as
    /// 1.
    void Draw(DrawingSurface& surface, const ViewAngles& angles, double scale, bool drawLabels);

    /// The four views on an empty surface: side at the top left, front at the top right, top at the
    /// bottom left, and the free view at the bottom right. A forced layout takes the largest scale
    /// at which each fits into its quarter and centres them; without force scale and places stay as
    /// they were, so that the drawing moves in a fixed frame. A surface of another size forces it.
    /// What leaves the quarter of its view is cut off.
    ///
    /// Throws Failure "Division by zero" for a forced layout of lines without an extent, "Overflow"
    /// for one too far from the origin; the layout then stays as it was.
    void DrawAutoLayout(DrawingSurface& surface, bool drawLabels, bool forceLayout);

    /// The free view alone on an empty surface, fitted to it.
    void DrawFreeView(DrawingSurface& surface, bool drawLabels);

    /// The labels as the last rotation shows them.
    void DrawLabels(DrawingSurface& surface, double scale, double offsetX, double offsetY) const;

    /// Draws the lines over what stands on a surface whose scale runs down from the top, all of
    /// them in one colour if one is given. Lists, layout and views stay.
    void DrawThrough(DrawingSurface& surface, const CornerProjection& projection,
                     std::optional<Colour> onlyColour = std::nullopt) const;

    /// The ends of all lines, in coordinates of the car.
    [[nodiscard]] std::vector<SuspPoint> LineEnds() const;

    /// An entry of the legend, which runs along the top edge; the next one follows it there.
    static void DrawLegend(DrawingSurface& surface, const std::string& text, Colour colour,
                           bool startOfRow);

    /// How the free view is turned and zoomed, about the middle of what was laid out; other views
    /// stay.
    void SetFreeView(const FreeView& view) { m_freeView = view; }
    [[nodiscard]] const FreeView& CurrentFreeView() const { return m_freeView; }

    /// Zooms the free view by a factor greater than 0, up to `LeastZoom` and `MostZoom`. What it
    /// shows at a place in the surface's scale stays there.
    void ZoomFreeView(double factor, const Point2D& at);

    /// Moves the free view by a way in the surface's scale.
    void MoveFreeView(const Point2D& way);

    /// Where the free view that was drawn last shows a point of the car, in the surface's scale.
    [[nodiscard]] Point2D PlaceInFreeView(const SuspPoint& point) const;

  private:
    static constexpr std::size_t Quadrants = 4;

    struct WireLine {
        SuspPoint From;
        SuspPoint To;
        Colour Drawn;
        std::string GuideName; ///< empty for a line that is no guide
    };
    struct WireLabel {
        SuspPoint At;
        std::string Text;
    };
    struct Extents {
        SuspPoint Centre;
        SuspPoint Size;
    };
    struct ScreenOffset {
        std::int16_t X = 0;
        std::int16_t Y = 0;
    };
    struct Layout {
        float Scale = 0;
        std::int32_t LastWidth = 0;
        std::int32_t LastHeight = 0;
        std::array<ScreenOffset, Quadrants> Offsets{};
        SuspPoint Middle; ///< of the lines as they were laid out; the free view turns about it
    };
    /// From rotated coordinates to the surface.
    struct Placing {
        double Scale = 1;
        double OffsetX = 0;
        double OffsetY = 0;

        [[nodiscard]] Point2D operator()(const SuspPoint& p) const {
            return {Scale * p.X + OffsetX, Scale * p.Y + OffsetY};
        }
    };
    struct Box {
        Point2D Low;
        Point2D High;

        [[nodiscard]] bool Holds(const Point2D& p) const {
            return p.X >= Low.X && p.X <= High.X && p.Y >= Low.Y && p.Y <= High.Y;
        }
    };

    [[nodiscard]] static Extents GetExtents(const std::vector<WireLine>& lines);
    [[nodiscard]] static std::optional<std::array<Point2D, 2>>
    PartInside(const Point2D& from, const Point2D& to, const Box& box);
    static void DrawLines(DrawingSurface& surface, const std::vector<WireLine>& projected,
                          const Placing& placing, const Box* frame);

    void SetRotation(const ViewAngles& angles);
    [[nodiscard]] std::vector<WireLine> Rotated() const;
    [[nodiscard]] std::vector<WireLine> ProjectLines(const ViewAngles& angles);
    void FitLayout(Layout& layout, const DrawingSurface& surface);
    [[nodiscard]] static Box FrameOf(std::size_t quadrant, const DrawingSurface& surface);
    void PrintLabels(DrawingSurface& surface, const Placing& placing, const Box* frame) const;

    /// Draws the free view, whose standard form has the given place; `frame` is what it may fill.
    void DrawFree(DrawingSurface& surface, const Placing& standard, const SuspPoint& middle,
                  const Box& frame, bool drawLabels);

    std::vector<WireLine> m_lines;
    std::vector<WireLabel> m_labels;
    Matrix3 m_rotation;
    Layout m_layout;
    FreeView m_freeView;
    Matrix3 m_freeRotation; ///< of the free view drawn last
    Placing m_freePlacing;
    Placing m_standardMiddle; ///< scale of the standard free view and where it has its middle
};

} // namespace corvanta
