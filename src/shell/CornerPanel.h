#pragma once

#include "model/Design.h"
#include "model/Points.h"
#include "model/Suspension.h"
#include "model/Units.h"
#include "platform/DrawingSurface.h"
#include "results/CWireframe.h"
#include "results/CornerProjection.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// A design in one position of its travel.
struct CornerShape {
    Design Entered;
    std::optional<PointSet> Solved; ///< where its points are, mm; none for a design or a position
                                    ///< that can't be solved
};

/// A place that is marked in the drawing, mm.
struct MarkedPlace {
    SuspPoint Place;
    Colour Drawn;
};

/// What the panel shows.
struct CornerContent {
    CornerShape Now;
    std::optional<CornerShape> Baseline;
    PointCatalogue Catalogue;          ///< the points in play have handles
    std::vector<PointNumber> Selected; ///< are ringed
    std::vector<PointNumber> Faulty;   ///< are ringed in red
    std::vector<MarkedPlace> Places{}; ///< are dots
};

enum CornerAxis { caX, caY, caZ };

/// What is held while a point is dragged.
struct CornerDragRule {
    std::optional<CornerAxis> Along; ///< only along this axis of the car
    bool WholeSteps = false;         ///< the way of each coordinate is a multiple of the step

    friend bool operator==(const CornerDragRule&, const CornerDragRule&) = default;
};

/// What a hand on the panel tells. All of them may be empty.
struct CornerEvents {
    std::function<void(PointNumber)> Picked; ///< a handle was clicked, or its dragging begins
    std::function<void(PointNumber, const SuspPoint& newStatic)> Moved; ///< mm
    std::function<void(PointNumber, bool kept)> Ended; ///< a drag; not kept: it was taken back, and
                                                       ///< `Moved` has told the old place
};

/// The corner of the workbench: the car seen from a side that can be chosen, with the points that
/// are entered as handles. It changes no document; it tells where the hand wants a point.
///
/// The corner stands where the cursor of travel has it. So does the handle of a point, and dragging
/// it moves the static point by the same way: at static the point follows the pointer exactly, away
/// from it nearly, as the mechanism turns the way of a part with the part.
///
/// Of a design that can't be solved the last position that could be stays, grey, with its handles
/// moved by as much as the entered points have moved since.
///
/// Places are in pixels, right and down from the top left corner. The frame of the picture stays
/// while travel changes and while a point is dragged. Until it is zoomed, moved or turned by hand
/// it is fitted anew where the panel changes its size, and where a change has put a point outside.
class CornerPanel {
  public:
    /// How near to a handle the pointer takes it, pixels.
    static constexpr double Reach = 8;
    /// How far the pointer goes before a click becomes a drag, pixels.
    static constexpr double DragBegins = 3;

    /// The units are those of the texts; they outlive the panel.
    explicit CornerPanel(const FundamentalUnits& units) : m_units(units) {}

    CornerEvents Events;
    double Step = 1; ///< of dragging in whole steps, mm, greater than 0

    /// Shows a corner in the place of the one before it. A drag goes on as long as its point stays.
    void Show(CornerContent content);

    void Resize(double width, double height);

    /// Fits what is shown into the panel, baseline and all.
    void Fit();
    /// Looks from a side and fits.
    void LookFrom(const ViewSide& side);
    [[nodiscard]] const ViewSide& Side() const { return m_side; }
    [[nodiscard]] const CornerProjection& Projection() const { return m_projection; }

    /// Turns what is shown under the hand. None of these three does anything during a drag.
    void TurnBy(double turn, double tilt);
    void MoveBy(const Point2D& way);
    /// Zooms by a factor; what stands at a place stays there.
    void Zoom(double factor, const Point2D& at);

    /// The pointer is at a place, or nowhere.
    void PointAt(std::optional<Point2D> at);
    [[nodiscard]] std::optional<PointNumber> Hovered() const { return m_hovered; }

    /// The handle within reach of a place: the nearest, of those in one place the front-most.
    [[nodiscard]] std::optional<PointNumber> HandleAt(const Point2D& at) const;
    [[nodiscard]] Point2D PlaceOf(PointNumber point) const;

    /// Takes the handle at a place. False when there is none.
    bool Press(const Point2D& at);
    void DragTo(const Point2D& at, const CornerDragRule& rule);
    /// Lets go; the point stays.
    void Release();
    /// Brings the point back to where it was taken.
    void TakeBack();
    [[nodiscard]] bool IsHeld() const { return m_drag.has_value(); }

    /// Draws the panel on a surface of its size.
    void Draw(DrawingSurface& surface) const;

  private:
    struct Drag {
        PointNumber Point = ptWC;
        SuspPoint Start; ///< of the static point
        SuspPoint Told;  ///< the same, as it was told last
        Point2D PressedAt;
        bool Moving = false; ///< the pointer has gone far enough
        CornerDragRule Rule;
    };

    [[nodiscard]] SuspPoint WayOf(const Point2D& way, const CornerDragRule& rule) const;
    [[nodiscard]] bool HasHandle(PointNumber point) const {
        return m_content && m_content->Catalogue[point].Enabled;
    }
    [[nodiscard]] bool IsInFrame(const Point2D& at) const {
        return at.X >= 0 && at.Y >= 0 && at.X <= m_width && at.Y <= m_height;
    }
    [[nodiscard]] std::vector<SuspPoint> Shown() const;
    [[nodiscard]] bool LeavesFrame() const;
    void PlaceHandles();
    void Tell(const SuspPoint& place);
    void DrawHandle(DrawingSurface& surface, PointNumber point) const;
    void DrawName(DrawingSurface& surface, PointNumber point) const;
    void DrawHeldAxis(DrawingSurface& surface) const;
    void DrawTriad(DrawingSurface& surface) const;
    [[nodiscard]] std::string MovedText() const;

    const FundamentalUnits& m_units;
    std::optional<CornerContent> m_content;
    std::optional<CornerShape> m_lastSolved;
    PointSet m_places; ///< of the handles, mm
    CWireframe m_now;
    CWireframe m_baseline;
    ViewSide m_side = FreeSide;
    CornerProjection m_projection;
    double m_width = 0;
    double m_height = 0;
    bool m_fitted = true; ///< the frame was not changed by hand since it was fitted
    std::optional<PointNumber> m_hovered;
    std::optional<Drag> m_drag;
};

} // namespace corvanta
