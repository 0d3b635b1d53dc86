#include "shell/CornerPanel.h"

#include "model/Failure.h"
#include "results/MDisplay3d.h"
#include "solver/MLibMaths.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace corvanta {

namespace {

/// The share of the panel that a fitted corner takes: the names of handles need some room.
constexpr double FittedShare = 0.84;

constexpr double LeastScale = 0.01; // pixels to the mm
constexpr double MostScale = 100;

/// Handles nearer than this to one another are in one place, pixels.
constexpr double OnePlace = 0.5;

/// The share of an axis that must be seen across the line of sight for a point to be dragged along
/// it: below, a pixel would be a leap.
constexpr double LeastSeen = 0.05;

SuspPoint Sum(const SuspPoint& a, const SuspPoint& b) {
    return {a.X + b.X, a.Y + b.Y, a.Z + b.Z};
}

SuspPoint Times(const SuspPoint& a, double factor) {
    return {a.X * factor, a.Y * factor, a.Z * factor};
}

SuspPoint UnitAlong(CornerAxis axis) {
    return {axis == caX ? 1.0 : 0.0, axis == caY ? 1.0 : 0.0, axis == caZ ? 1.0 : 0.0};
}

/// The lines of a corner. Coordinates beyond what lines can be drawn with leave no lines: that the
/// design can't be solved is told elsewhere.
void SetLines(CWireframe& wireframe, const PointSet& points, const CornerShape& shape) {
    wireframe.ClearLines();
    try {
        Draw3d(wireframe, {points, shape.Entered.Points, shape.Entered.Data});
    } catch (const Failure&) {
        wireframe.ClearLines();
    }
}

/// The points of a design as they were entered. Where the arithmetic fails, none is derived.
PointSet AsEntered(const Design& design) {
    try {
        return EnteredPosition(design.Points, design.Data);
    } catch (const Failure&) {
        return design.Points;
    }
}

bool SameMechanisms(const SuspensionData& one, const SuspensionData& other) {
    return one.SpringMechanism == other.SpringMechanism &&
           one.ThirdSpringMechanism == other.ThirdSpringMechanism &&
           one.CentreSpringSystem == other.CentreSpringSystem &&
           one.ARBMechanism == other.ARBMechanism;
}

double Length(const Point2D& way) {
    return std::hypot(way.X, way.Y);
}

Point2D Between(const Point2D& from, const Point2D& to) {
    return {to.X - from.X, to.Y - from.Y};
}

} // namespace

void CornerPanel::Show(CornerContent content) {
    const bool first = !m_content;
    const bool edited = first || m_content->Now.Entered != content.Now.Entered;
    m_content = std::move(content);
    PlaceHandles();
    m_baseline.ClearLines();
    if (const auto& baseline = m_content->Baseline) {
        SetLines(m_baseline, baseline->Solved ? *baseline->Solved : AsEntered(baseline->Entered),
                 *baseline);
    }
    if (m_drag && !HasHandle(m_drag->Point)) {
        m_drag.reset();
    }
    if (m_hovered && !HasHandle(*m_hovered)) {
        m_hovered.reset();
    }
    if (first || (edited && m_fitted && !m_drag && LeavesFrame())) {
        Fit();
    }
}

void CornerPanel::PlaceHandles() {
    const CornerShape& now = m_content->Now;
    if (now.Solved) {
        m_places = *now.Solved;
        m_lastSolved = now;
        SetLines(m_now, m_places, now);
        return;
    }
    if (!m_lastSolved || !SameMechanisms(m_lastSolved->Entered.Data, now.Entered.Data)) {
        m_places = AsEntered(now.Entered);
        SetLines(m_now, m_places, now);
        return;
    }
    m_places = *m_lastSolved->Solved;
    SetLines(m_now, m_places, *m_lastSolved);
    for (const PointNumber point : AllPoints) {
        const SuspPoint& was = m_lastSolved->Entered.Points[point];
        m_places[point] = Sum(m_places[point], VectorSubtract(now.Entered.Points[point], was));
    }
}

void CornerPanel::Resize(double width, double height) {
    m_width = width;
    m_height = height;
    m_projection.Centre = {width / 2, height / 2};
    if (m_fitted && !m_drag) {
        Fit();
    }
}

/// The lines by their ends, and the handles, of which not all are on a line.
std::vector<SuspPoint> CornerPanel::Shown() const {
    std::vector<SuspPoint> shown = m_now.LineEnds();
    const std::vector<SuspPoint> baseline = m_baseline.LineEnds();
    shown.insert(shown.end(), baseline.begin(), baseline.end());
    for (const PointNumber point : AllPoints) {
        if (HasHandle(point)) {
            shown.push_back(m_places[point]);
        }
    }
    return shown;
}

void CornerPanel::Fit() {
    if (m_drag) {
        return;
    }
    m_fitted = true;
    m_projection.Rotation = CornerProjection::RotationOf(m_side);
    CornerProjection plain = m_projection; // one unit of the surface to the mm, about the origin
    plain.Middle = {};
    plain.Centre = {};
    plain.Scale = 1;
    Point2D low{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    Point2D high{-low.X, -low.Y};
    for (const SuspPoint& point : Shown()) {
        const Point2D at = plain.Place(point);
        low = {std::min(low.X, at.X), std::min(low.Y, at.Y)};
        high = {std::max(high.X, at.X), std::max(high.Y, at.Y)};
    }
    const double scale = FittedShare * std::min(m_width / std::max(high.X - low.X, 1.0),
                                                m_height / std::max(high.Y - low.Y, 1.0));
    if (!(high.X >= low.X) || !(scale > 0)) {
        return; // there is nothing to fit, or no room
    }
    m_projection.Centre = {m_width / 2, m_height / 2};
    m_projection.Scale = std::clamp(scale, LeastScale, MostScale);
    m_projection.Middle = plain.InCar({(low.X + high.X) / 2, (low.Y + high.Y) / 2});
}

void CornerPanel::LookFrom(const ViewSide& side) {
    if (!m_drag) {
        m_side = side;
        Fit();
    }
}

void CornerPanel::TurnBy(double turn, double tilt) {
    if (m_drag) {
        return;
    }
    m_side = {std::remainder(m_side.Turn + turn, 360), std::clamp(m_side.Tilt + tilt, 0.0, 180.0)};
    m_projection.Rotation = CornerProjection::RotationOf(m_side);
    m_fitted = false;
}

void CornerPanel::MoveBy(const Point2D& way) {
    if (!m_drag) {
        m_projection.Middle = VectorSubtract(m_projection.Middle, m_projection.InCar(way));
        m_fitted = false;
    }
}

void CornerPanel::Zoom(double factor, const Point2D& at) {
    if (m_drag) {
        return;
    }
    const SuspPoint held = m_projection.InCar(Between(m_projection.Centre, at));
    const double scale = std::clamp(m_projection.Scale * factor, LeastScale, MostScale);
    const double ratio = m_projection.Scale / scale;
    m_projection.Middle = Sum(m_projection.Middle, Times(held, 1 - ratio));
    m_projection.Scale = scale;
    m_fitted = false;
}

void CornerPanel::PointAt(std::optional<Point2D> at) {
    if (!m_drag) {
        m_hovered = at ? HandleAt(*at) : std::nullopt;
    }
}

std::optional<PointNumber> CornerPanel::HandleAt(const Point2D& at) const {
    double nearest = Reach;
    for (const PointNumber point : AllPoints) {
        if (HasHandle(point)) {
            nearest = std::min(nearest, Length(Between(at, PlaceOf(point))));
        }
    }
    std::optional<PointNumber> found;
    for (const PointNumber point : AllPoints) {
        if (HasHandle(point) && Length(Between(at, PlaceOf(point))) <= nearest + OnePlace &&
            Length(Between(at, PlaceOf(point))) <= Reach &&
            (!found ||
             m_projection.Nearness(m_places[point]) > m_projection.Nearness(m_places[*found]))) {
            found = point;
        }
    }
    return found;
}

Point2D CornerPanel::PlaceOf(PointNumber point) const {
    return m_projection.Place(m_places[point]);
}

bool CornerPanel::LeavesFrame() const {
    return std::any_of(AllPoints.begin(), AllPoints.end(), [this](PointNumber point) {
        return HasHandle(point) && !IsInFrame(PlaceOf(point));
    });
}

bool CornerPanel::Press(const Point2D& at) {
    const std::optional<PointNumber> point = HandleAt(at);
    if (!point) {
        return false;
    }
    const SuspPoint& start = m_content->Now.Entered.Points[*point];
    m_drag = {*point, start, start, at, false, {}};
    m_hovered = point;
    if (Events.Picked) {
        Events.Picked(*point);
    }
    return true;
}

/// The way of the car that a way of the pointer stands for. Along an axis it is the one whose end
/// is seen nearest to the pointer.
SuspPoint CornerPanel::WayOf(const Point2D& way, const CornerDragRule& rule) const {
    SuspPoint moved;
    if (rule.Along) {
        const SuspPoint unit = UnitAlong(*rule.Along);
        const Point2D seen = m_projection.OnSurface(unit);
        const double square = seen.X * seen.X + seen.Y * seen.Y;
        const double least = LeastSeen * m_projection.Scale;
        if (square > least * least) {
            moved = Times(unit, (seen.X * way.X + seen.Y * way.Y) / square);
        }
    } else {
        moved = m_projection.InCar(way);
    }
    if (rule.WholeSteps) {
        const auto whole = [this](double value) { return std::round(value / Step) * Step; };
        moved = {whole(moved.X), whole(moved.Y), whole(moved.Z)};
    }
    return moved;
}

void CornerPanel::Tell(const SuspPoint& place) {
    if (m_drag && m_drag->Told != place) {
        m_drag->Told = place;
        if (Events.Moved) {
            Events.Moved(m_drag->Point, place);
        }
    }
}

void CornerPanel::DragTo(const Point2D& at, const CornerDragRule& rule) {
    if (!m_drag) {
        return;
    }
    const Point2D way = Between(m_drag->PressedAt, at);
    m_drag->Rule = rule;
    m_drag->Moving = m_drag->Moving || Length(way) > DragBegins;
    if (m_drag->Moving) {
        Tell(Sum(m_drag->Start, WayOf(way, rule)));
    }
}

void CornerPanel::Release() {
    const std::optional<Drag> ended = std::exchange(m_drag, std::nullopt);
    if (!ended || !ended->Moving) {
        return;
    }
    if (Events.Ended) {
        Events.Ended(ended->Point, true);
    }
    if (m_fitted && LeavesFrame()) {
        Fit();
    }
}

void CornerPanel::TakeBack() {
    if (m_drag && m_drag->Moving) {
        Tell(m_drag->Start);
    }
    const std::optional<Drag> ended = std::exchange(m_drag, std::nullopt);
    if (ended && ended->Moving && Events.Ended) {
        Events.Ended(ended->Point, false);
    }
}

} // namespace corvanta
