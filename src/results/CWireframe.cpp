#include "results/CWireframe.h"

#include "model/Failure.h"
#include "model/NumberText.h"
#include "solver/MLibMaths.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace corvanta {

namespace {

/// Radians per degree of the views' rotations, and the circle's constants. They are fixed: drawings
/// of the system rest on them.
constexpr double RadiansPerDegree = 0.017453292;
constexpr double DegreesPerRadian = 57.29578049;
constexpr double CircleStep = 0.17453292222222; // rad
constexpr int CircleLines = 36;

/// The share of its room that a fitted view takes.
constexpr double FittedShare = 0.9;

/// Where a row of the legend begins.
constexpr double LegendStart = 50;

/// What the name of a guide needs of its view's edge, in units of the surface. At the foot the name
/// of the view stands.
constexpr double NameRoom = 16;

constexpr Colour DividingLine{192, 192, 192};

/// A view of the layout with its middle in shares of the surface.
struct QuadrantView {
    ViewAngles Angles;
    double AnchorX = 0;
    double AnchorY = 0;
};

/// Half a quarter's side from its middle to its edges, in shares of the surface.
constexpr double HalfQuarter = 0.25;

/// In the order of drawing. The first one is the free view in its standard form: its angles make
/// the vertical of the car nearly that of the picture.
constexpr std::array<QuadrantView, 4> QuadrantViews{{
    {{30, 30, 40.7}, 0.75, 0.75},
    {{90, 0, 0}, 0.25, 0.25},
    {{90, -90, 0}, 0.75, 0.25},
    {{0, 0, 0}, 0.25, 0.75},
}};
constexpr const ViewAngles& StandardFreeAngles = QuadrantViews.front().Angles;

double ToSingle(double value) {
    if (std::abs(value) > static_cast<double>(std::numeric_limits<float>::max())) {
        RaiseOverflow();
    }
    return static_cast<double>(static_cast<float>(value));
}

/// A point as the lists keep it.
SuspPoint Stored(const SuspPoint& p) {
    return {ToSingle(p.X), -ToSingle(p.Y), ToSingle(p.Z)};
}

/// A point of the lists in coordinates of the car.
SuspPoint OfCar(const SuspPoint& stored) {
    return {stored.X, -stored.Y, stored.Z};
}

std::int16_t ToInteger16(double value) {
    const std::int32_t rounded = ToInteger32(value);
    if (rounded != static_cast<std::int16_t>(rounded)) {
        RaiseOverflow();
    }
    return static_cast<std::int16_t>(rounded);
}

void RequireRoom(std::size_t count, int most) {
    if (count >= static_cast<std::size_t>(most)) {
        throw Failure(fnSubscript, "Subscript out of range");
    }
}

Matrix3 RotationOf(const ViewAngles& angles) {
    const double s1 = std::sin(angles.A1 * RadiansPerDegree);
    const double c1 = std::cos(angles.A1 * RadiansPerDegree);
    const double s2 = std::sin(angles.A2 * RadiansPerDegree);
    const double c2 = std::cos(angles.A2 * RadiansPerDegree);
    const double s3 = std::sin(angles.A3 * RadiansPerDegree);
    const double c3 = std::cos(angles.A3 * RadiansPerDegree);
    Matrix3 m;
    m(1, 1) = c3 * c2;
    m(1, 2) = c3 * s2 * s1 + c1 * s3;
    m(1, 3) = s3 * s1 - c3 * s2 * c1;
    m(2, 1) = -s3 * c2;
    m(2, 2) = c3 * c1 - s3 * s2 * s1;
    m(2, 3) = s3 * s2 * c1 + c3 * s1;
    m(3, 1) = s2;
    m(3, 2) = -s1 * c2;
    m(3, 3) = c1 * c2;
    return m;
}

Matrix3 Product(const Matrix3& a, const Matrix3& b) {
    Matrix3 product;
    for (int row = 1; row <= 3; ++row) {
        for (int column = 1; column <= 3; ++column) {
            product(row, column) =
                a(row, 1) * b(1, column) + a(row, 2) * b(2, column) + a(row, 3) * b(3, column);
        }
    }
    return product;
}

/// Tilt of a circle about one axis, degrees: the ratio of two components of its own axis, taken as
/// an angle, which is near enough for a wheel.
double CircleTilt(double across, double along) {
    if (across == 0 || along == 0) { // exactly along Y, or with no component along it
        return 0;
    }
    return NormaliseAngle(Divide(across, along)) * DegreesPerRadian;
}

} // namespace

void CWireframe::AddCircle(const SuspPoint& centre, const SuspPoint& axisPoint, double radius,
                           Colour colour) {
    const Vector3 axis = VectorSubtract(centre, axisPoint);
    SetRotation({-CircleTilt(axis.Z, axis.Y), 0, CircleTilt(axis.X, axis.Y)});
    SuspPoint previous;
    for (int i = 0; i <= CircleLines; ++i) {
        const double t = i * CircleStep;
        const SuspPoint spoke =
            TransformPoint({radius * std::cos(t), 0, radius * std::sin(t)}, m_rotation);
        const SuspPoint next{spoke.X + centre.X, spoke.Y + centre.Y, spoke.Z + centre.Z};
        if (i > 0) {
            AddLine(previous, next, colour);
        }
        previous = next;
    }
}

void CWireframe::AddLabel(const SuspPoint& at, const std::string& text) {
    RequireRoom(m_labels.size(), MostLabels);
    m_labels.push_back({Stored(at), text});
}

void CWireframe::AddLine(const SuspPoint& from, const SuspPoint& to, Colour colour) {
    RequireRoom(m_lines.size(), MostLines);
    m_lines.push_back({Stored(from), Stored(to), colour, {}});
}

void CWireframe::AddGuide(const SuspPoint& from, const SuspPoint& to, Colour colour,
                          const std::string& name) {
    AddLine(from, to, colour);
    m_lines.back().GuideName = name;
}

void CWireframe::Init(DrawingSurface& surface) {
    ClearLines();
    ClearLabels();
    surface.SetScaleHeight(-std::abs(surface.ScaleHeight()));
    surface.SetScaleWidth(std::abs(surface.ScaleWidth()));
}

void CWireframe::SetRotation(const ViewAngles& angles) {
    m_rotation = RotationOf(angles);
}

std::vector<CWireframe::WireLine> CWireframe::Rotated() const {
    std::vector<WireLine> rotated = m_lines;
    for (WireLine& line : rotated) {
        line.From = TransformPoint(line.From, m_rotation);
        line.To = TransformPoint(line.To, m_rotation);
    }
    return rotated;
}

std::vector<CWireframe::WireLine> CWireframe::ProjectLines(const ViewAngles& angles) {
    SetRotation(angles);
    return Rotated();
}

CWireframe::Extents CWireframe::GetExtents(const std::vector<WireLine>& lines) {
    SuspPoint low;
    SuspPoint high;
    const auto counts = [](const WireLine& line) { return line.GuideName.empty(); };
    const auto first = std::find_if(lines.begin(), lines.end(), counts);
    if (first != lines.end()) {
        low = high = first->From;
    }
    const auto include = [&](const SuspPoint& p) {
        low = {std::min(low.X, p.X), std::min(low.Y, p.Y), std::min(low.Z, p.Z)};
        high = {std::max(high.X, p.X), std::max(high.Y, p.Y), std::max(high.Z, p.Z)};
    };
    for (const WireLine& line : lines) {
        if (counts(line)) {
            include(line.From);
            include(line.To);
        }
    }
    return {{(high.X + low.X) / 2, (high.Y + low.Y) / 2, (high.Z + low.Z) / 2},
            VectorSubtract(high, low)};
}

/// The part of a line inside a box, if there is any. Source: Y.-D. Liang and B. A. Barsky, "A new
/// concept and method for line clipping", ACM Transactions on Graphics 3 (1984).
std::optional<std::array<Point2D, 2>> CWireframe::PartInside(const Point2D& from, const Point2D& to,
                                                             const Box& box) {
    const double dx = to.X - from.X;
    const double dy = to.Y - from.Y;
    double first = 0; // the shares of the line at which it comes in and goes out
    double last = 1;
    // Inside one edge the share t of the line obeys t p <= q.
    const auto cut = [&](double p, double q) {
        if (p == 0) { // exactly along the edge: on the one side or on the other as a whole
            return q >= 0;
        }
        if (p < 0) {
            first = std::max(first, q / p);
        } else {
            last = std::min(last, q / p);
        }
        return first <= last;
    };
    if (!cut(-dx, from.X - box.Low.X) || !cut(dx, box.High.X - from.X) ||
        !cut(-dy, from.Y - box.Low.Y) || !cut(dy, box.High.Y - from.Y)) {
        return std::nullopt;
    }
    if (first == 0 && last == 1) { // exactly: whole inside
        return std::array{from, to};
    }
    return std::array{Point2D{from.X + first * dx, from.Y + first * dy},
                      Point2D{from.X + last * dx, from.Y + last * dy}};
}

void CWireframe::DrawLines(DrawingSurface& surface, const std::vector<WireLine>& projected,
                           const Placing& placing, const Box* frame) {
    for (const WireLine& line : projected) {
        std::optional ends = std::array{placing(line.From), placing(line.To)};
        if (frame != nullptr) {
            ends = PartInside(ends->front(), ends->back(), *frame);
        }
        if (ends) {
            surface.DrawLine(ends->front().X, ends->front().Y, ends->back().X, ends->back().Y,
                             line.Drawn);
        }
        if (ends && frame != nullptr && !line.GuideName.empty()) {
            surface.SetForeColour(line.Drawn);
            surface.SetCurrentX(std::min(ends->back().X, frame->High.X - NameRoom));
            surface.SetCurrentY(std::max(std::min(ends->back().Y, frame->High.Y - NameRoom),
                                         frame->Low.Y + 2 * NameRoom));
            surface.Print(line.GuideName);
        }
    }
}

void CWireframe::PrintLabels(DrawingSurface& surface, const Placing& placing,
                             const Box* frame) const {
    for (const WireLabel& label : m_labels) {
        const Point2D at = placing(TransformPoint(label.At, m_rotation));
        if (frame == nullptr || frame->Holds(at)) {
            surface.SetCurrentX(at.X);
            surface.SetCurrentY(at.Y);
            surface.Print(label.Text);
        }
    }
}

void CWireframe::DrawLabels(DrawingSurface& surface, double scale, double offsetX,
                            double offsetY) const {
    PrintLabels(surface, {scale, offsetX, offsetY}, nullptr);
}

void CWireframe::Draw(DrawingSurface& surface, const ViewAngles& angles, double scale,
                      bool drawLabels) {
    surface.Clear();
    const Placing placing{scale == 0 ? 1 : scale, // exactly 0 stands for no scale
                          static_cast<double>(ToInteger16(surface.ScaleWidth() / 4)),
                          static_cast<double>(ToInteger16(surface.ScaleHeight() / 4))};
    DrawLines(surface, ProjectLines(angles), placing, nullptr);
    if (drawLabels) {
        PrintLabels(surface, placing, nullptr);
    }
}

void CWireframe::FitLayout(Layout& layout, const DrawingSurface& surface) {
    const double width = surface.ScaleWidth();
    const double height = surface.ScaleHeight();
    std::array<SuspPoint, Quadrants> centres;
    double room = std::numeric_limits<double>::infinity();
    for (std::size_t quadrant = 0; quadrant < Quadrants; ++quadrant) {
        const Extents extents = GetExtents(ProjectLines(QuadrantViews.at(quadrant).Angles));
        centres.at(quadrant) = extents.Centre;
        // The free view shows every extent there is; another may see a line as a point.
        const auto fits = [&](double side, double size) {
            return size == 0 && quadrant != 0 ? room : std::abs(Divide(side / 2, size));
        };
        room = std::min({room, fits(width, extents.Size.X), fits(height, extents.Size.Y)});
    }
    layout.Scale = static_cast<float>(ToSingle(FittedShare * room));
    layout.Middle = GetExtents(m_lines).Centre;
    const auto scale = static_cast<double>(layout.Scale);
    for (std::size_t quadrant = 0; quadrant < Quadrants; ++quadrant) {
        const QuadrantView& view = QuadrantViews.at(quadrant);
        const SuspPoint& centre = centres.at(quadrant);
        layout.Offsets.at(quadrant) = {ToInteger16(width * view.AnchorX - centre.X * scale),
                                       ToInteger16(height * view.AnchorY - centre.Y * scale)};
    }
}

CWireframe::Box CWireframe::FrameOf(std::size_t quadrant, const DrawingSurface& surface) {
    const QuadrantView& view = QuadrantViews.at(quadrant);
    const double width = surface.ScaleWidth();
    const double height = surface.ScaleHeight();
    // The scale's heights are negative, so the lower edge is the lesser one.
    return {{(view.AnchorX - HalfQuarter) * width, (view.AnchorY + HalfQuarter) * height},
            {(view.AnchorX + HalfQuarter) * width, (view.AnchorY - HalfQuarter) * height}};
}

void CWireframe::DrawAutoLayout(DrawingSurface& surface, bool drawLabels, bool forceLayout) {
    surface.Clear();
    Layout layout = m_layout;
    if (layout.Scale == 0) { // exactly 0: nothing was laid out yet
        layout.Scale = 1;
    }
    const std::int32_t width = ToInteger32(surface.Width());
    const std::int32_t height = ToInteger32(surface.Height());
    const bool fit = forceLayout || width != layout.LastWidth || height != layout.LastHeight;
    layout.LastWidth = width;
    layout.LastHeight = height;
    if (fit) {
        FitLayout(layout, surface);
    }
    for (std::size_t quadrant = 0; quadrant < Quadrants; ++quadrant) {
        const ScreenOffset& offset = layout.Offsets.at(quadrant);
        const Placing placing{static_cast<double>(layout.Scale), static_cast<double>(offset.X),
                              static_cast<double>(offset.Y)};
        const Box frame = FrameOf(quadrant, surface);
        if (quadrant == 0) {
            DrawFree(surface, placing, layout.Middle, frame, drawLabels);
            continue;
        }
        DrawLines(surface, ProjectLines(QuadrantViews.at(quadrant).Angles), placing, &frame);
        if (drawLabels) {
            PrintLabels(surface, placing, &frame);
        }
    }
    m_layout = layout;
    const Point2D middle{surface.ScaleWidth() / 2, surface.ScaleHeight() / 2};
    surface.DrawLine(middle.X, 0, middle.X, surface.ScaleHeight(), DividingLine);
    surface.DrawLine(0, middle.Y, surface.ScaleWidth(), middle.Y, DividingLine);
}

void CWireframe::DrawFreeView(DrawingSurface& surface, bool drawLabels) {
    surface.Clear();
    const Extents extents = GetExtents(ProjectLines(StandardFreeAngles));
    const double width = surface.ScaleWidth();
    const double height = surface.ScaleHeight();
    double room = std::numeric_limits<double>::infinity();
    if (extents.Size.X > 0) {
        room = std::abs(width) / extents.Size.X;
    }
    if (extents.Size.Y > 0) {
        room = std::min(room, std::abs(height) / extents.Size.Y);
    }
    // Lines without an extent fit at any scale.
    const double scale = std::isfinite(room) ? FittedShare * room : 1;
    const Placing placing{scale, width / 2 - extents.Centre.X * scale,
                          height / 2 - extents.Centre.Y * scale};
    DrawFree(surface, placing, GetExtents(m_lines).Centre, {{0, height}, {width, 0}}, drawLabels);
}

void CWireframe::DrawFree(DrawingSurface& surface, const Placing& standard, const SuspPoint& middle,
                          const Box& frame, bool drawLabels) {
    const Matrix3 rotation = RotationOf(StandardFreeAngles);
    m_rotation = rotation;
    m_freePlacing = standard;
    const SuspPoint from = TransformPoint(middle, rotation);
    const Point2D at = standard(from);
    m_standardMiddle = {standard.Scale, at.X, at.Y};
    const bool turned = m_freeView != FreeView{};
    if (turned) {
        m_rotation = Product(RotationMatrix(m_freeView.Tilt, 0, 0),
                             Product(rotation, RotationMatrix(0, 0, m_freeView.Turn)));
        const SuspPoint to = TransformPoint(middle, m_rotation);
        const double scale = standard.Scale * m_freeView.Zoom;
        m_freePlacing = {scale, at.X + standard.Scale * m_freeView.ShiftX - scale * to.X,
                         at.Y + standard.Scale * m_freeView.ShiftY - scale * to.Y};
    }
    m_freeRotation = m_rotation;
    DrawLines(surface, Rotated(), m_freePlacing, &frame);
    if (drawLabels) {
        PrintLabels(surface, m_freePlacing, &frame);
    }
}

void CWireframe::ZoomFreeView(double factor, const Point2D& at) {
    const double zoom = std::clamp(m_freeView.Zoom * factor, LeastZoom, MostZoom);
    const double ratio = zoom / m_freeView.Zoom;
    const auto kept = [&](double shift, double place, double middle) {
        const double fromMiddle = (place - middle) / m_standardMiddle.Scale;
        return fromMiddle - ratio * (fromMiddle - shift);
    };
    m_freeView.ShiftX = kept(m_freeView.ShiftX, at.X, m_standardMiddle.OffsetX);
    m_freeView.ShiftY = kept(m_freeView.ShiftY, at.Y, m_standardMiddle.OffsetY);
    m_freeView.Zoom = zoom;
}

void CWireframe::MoveFreeView(const Point2D& way) {
    m_freeView.ShiftX += way.X / m_standardMiddle.Scale;
    m_freeView.ShiftY += way.Y / m_standardMiddle.Scale;
}

Point2D CWireframe::PlaceInFreeView(const SuspPoint& point) const {
    return m_freePlacing(TransformPoint(Stored(point), m_freeRotation));
}

void CWireframe::DrawThrough(DrawingSurface& surface, const CornerProjection& projection,
                             std::optional<Colour> onlyColour) const {
    const Box frame{{0, 0}, {surface.ScaleWidth(), surface.ScaleHeight()}};
    for (const WireLine& line : m_lines) {
        const std::optional ends =
            PartInside(projection.Place(OfCar(line.From)), projection.Place(OfCar(line.To)), frame);
        if (ends) {
            surface.DrawLine(ends->front().X, ends->front().Y, ends->back().X, ends->back().Y,
                             onlyColour.value_or(line.Drawn));
        }
    }
}

std::vector<SuspPoint> CWireframe::LineEnds() const {
    std::vector<SuspPoint> ends;
    for (const WireLine& line : m_lines) {
        ends.push_back(OfCar(line.From));
        ends.push_back(OfCar(line.To));
    }
    return ends;
}

void CWireframe::DrawLegend(DrawingSurface& surface, const std::string& text, Colour colour,
                            bool startOfRow) {
    if (startOfRow) {
        surface.SetCurrentX(LegendStart);
    }
    surface.SetCurrentY(0);
    surface.SetForeColour(colour);
    surface.Print(text + "   ");
}

} // namespace corvanta
