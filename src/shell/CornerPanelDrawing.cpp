// What the corner of the workbench looks like.

#include "shell/CornerPanel.h"

#include "solver/MLibMaths.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {

namespace {

// On black, as every drawing of the corner.
constexpr Colour ColourBaseline{96, 96, 96};
constexpr Colour ColourUnsolved{140, 140, 140};
constexpr Colour ColourHandle{200, 200, 200};
constexpr Colour ColourHovered{255, 255, 255};
constexpr Colour ColourSelected{255, 220, 120};
constexpr Colour ColourFaulty{255, 70, 70};
constexpr Colour ColourAxes{150, 150, 150};

constexpr double DotRadius = 1.2;
constexpr double HandleRadius = 3.5;
constexpr double HoveredRadius = 6;
constexpr double RingRadius = 9;

constexpr double TriadArm = 22;   ///< pixels
constexpr double TriadPlace = 34; ///< from the left and the bottom edge

constexpr std::array<const char*, 3> AxisNames{"X", "Y", "Z"};
constexpr std::array<SuspPoint, 3> AxisUnits{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

void PrintAt(DrawingSurface& surface, const Point2D& at, const std::string& text, Colour colour) {
    surface.SetForeColour(colour);
    surface.SetCurrentX(at.X);
    surface.SetCurrentY(at.Y);
    surface.Print(text);
}

bool Holds(const std::vector<PointNumber>& points, PointNumber point) {
    return std::find(points.begin(), points.end(), point) != points.end();
}

} // namespace

void CornerPanel::Draw(DrawingSurface& surface) const {
    surface.Clear();
    if (!m_content) {
        return;
    }
    m_baseline.DrawThrough(surface, m_projection, ColourBaseline);
    m_now.DrawThrough(surface, m_projection,
                      m_content->Now.Solved ? std::nullopt : std::optional(ColourUnsolved));
    DrawHeldAxis(surface);
    for (const MarkedPlace& marked : m_content->Places) {
        const Point2D at = m_projection.Place(marked.Place);
        surface.DrawCircle(at.X, at.Y, DotRadius, marked.Drawn);
    }
    for (const PointNumber point : AllPoints) {
        if (HasHandle(point) && IsInFrame(PlaceOf(point))) {
            DrawHandle(surface, point);
        }
    }
    DrawTriad(surface);
    if (m_hovered) {
        DrawName(surface, *m_hovered);
    }
}

void CornerPanel::DrawHandle(DrawingSurface& surface, PointNumber point) const {
    const Point2D at = PlaceOf(point);
    const bool hovered = point == m_hovered;
    surface.DrawCircle(at.X, at.Y, hovered ? HoveredRadius : HandleRadius,
                       hovered ? ColourHovered : ColourHandle);
    if (Holds(m_content->Selected, point)) {
        surface.DrawCircle(at.X, at.Y, RingRadius, ColourSelected);
    }
    if (Holds(m_content->Faulty, point)) {
        surface.DrawCircle(at.X, at.Y, HandleRadius, ColourFaulty);
        surface.DrawCircle(at.X, at.Y, RingRadius + 2, ColourFaulty);
    }
}

/// Beside the handle, on the side that has room; while it is dragged, with its way so far.
void CornerPanel::DrawName(DrawingSurface& surface, PointNumber point) const {
    constexpr double Away = 12;
    constexpr double Above = 18;
    const std::string& name = m_content->Catalogue[point].LongName;
    const Point2D at = PlaceOf(point);
    const auto print = [&](const std::string& text, double below) {
        const double width = surface.WidthOf(text);
        double left = at.X + Away;
        if (left + width > m_width) {
            left = std::max(0.0, std::min(at.X - Away, m_width) - width);
        }
        const double top = std::clamp(at.Y - Above + below, 2.0, std::max(2.0, m_height - Above));
        PrintAt(surface, {left, top}, text, ColourHovered);
    };
    print(name.empty() ? std::string(PointShortName(point)) : name, 0);
    print(MovedText(), Above);
}

std::string CornerPanel::MovedText() const {
    std::string text;
    if (!m_drag || !m_drag->Moving) {
        return text;
    }
    const SuspPoint moved = VectorSubtract(m_drag->Told, m_drag->Start);
    const std::array<double, 3> ways{moved.X, moved.Y, moved.Z};
    for (std::size_t axis = 0; axis < ways.size(); ++axis) {
        if (ways.at(axis) != 0) { // exactly 0: held, or along the line of sight
            text += std::string("  ") + AxisNames.at(axis) + (ways.at(axis) > 0 ? " +" : " ") +
                    FormatChannelValue(m_units, ways.at(axis), ucDisplacement);
        }
    }
    return text;
}

void CornerPanel::DrawHeldAxis(DrawingSurface& surface) const {
    if (!m_drag || !m_drag->Rule.Along) {
        return;
    }
    const Point2D at = PlaceOf(m_drag->Point);
    const Point2D way =
        m_projection.OnSurface(AxisUnits.at(static_cast<std::size_t>(*m_drag->Rule.Along)));
    const double reach = (m_width + m_height) / m_projection.Scale;
    surface.DrawLine(at.X - reach * way.X, at.Y - reach * way.Y, at.X + reach * way.X,
                     at.Y + reach * way.Y, ColourAxes);
}

/// Which way the axes of the car run, small in the corner. One that runs along the line of sight
/// has no arm.
void CornerPanel::DrawTriad(DrawingSurface& surface) const {
    constexpr double ShortestNamed = 6;
    const Point2D origin{TriadPlace, m_height - TriadPlace};
    for (std::size_t axis = 0; axis < AxisUnits.size(); ++axis) {
        const Point2D unit = m_projection.OnSurface(AxisUnits.at(axis));
        const Point2D arm{unit.X * TriadArm / m_projection.Scale,
                          unit.Y * TriadArm / m_projection.Scale};
        surface.DrawLine(origin.X, origin.Y, origin.X + arm.X, origin.Y + arm.Y, ColourAxes);
        if (std::abs(arm.X) + std::abs(arm.Y) > ShortestNamed) {
            PrintAt(surface, {origin.X + 1.35 * arm.X - 4, origin.Y + 1.35 * arm.Y - 8},
                    AxisNames.at(axis), ColourAxes);
        }
    }
}

} // namespace corvanta
