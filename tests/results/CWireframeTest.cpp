#include "results/CWireframe.h"

#include "solver/MLibMaths.h"
#include "tests/support/RecordingSurface.h"
#include "tests/support/Testing.h"

#include <algorithm>
#include <cmath>

namespace corvanta::test {
namespace {

constexpr Colour Red{255, 0, 0};
constexpr Colour Green{0, 255, 0};
constexpr Colour Blue{0, 0, 255};
constexpr Colour Grey{192, 192, 192};

/// Rotation constants of ten digits and offsets of whole units are as near as a drawing gets.
constexpr double Near = 1e-4;

void ExpectLine(const RecordingSurface::Line& line, double x1, double y1, double x2, double y2) {
    EXPECT_NEAR(line.X1, x1, Near);
    EXPECT_NEAR(line.Y1, y1, Near);
    EXPECT_NEAR(line.X2, x2, Near);
    EXPECT_NEAR(line.Y2, y2, Near);
}

double Length(const RecordingSurface::Line& line) {
    return std::hypot(line.X2 - line.X1, line.Y2 - line.Y1);
}

class CWireframeTest : public testing::Test {
  protected:
    CWireframeTest() { m_wire.Init(m_surface); }

    /// The axes of the car from its origin, `length` long, moved by `dx`.
    void AddAxes(double length = 1000, double dx = 0) {
        m_wire.AddLine({dx, 0, 0}, {dx + length, 0, 0}, Red);
        m_wire.AddLine({dx, 0, 0}, {dx, length, 0}, Green);
        m_wire.AddLine({dx, 0, 0}, {dx, 0, length}, Blue);
    }

    /// The line `n` of a quadrant of the layout, in the order of drawing.
    [[nodiscard]] const RecordingSurface::Line& LineOf(std::size_t quadrant, std::size_t n) const {
        const std::size_t perQuadrant = (m_surface.Lines.size() - 2) / 4;
        return m_surface.Lines.at(quadrant * perQuadrant + n);
    }

    RecordingSurface m_surface{800, 600};
    CWireframe m_wire;
};

TEST_F(CWireframeTest, OneViewScalesAndLabels) {
    m_wire.AddLine({0, 0, 0}, {100, 0, 0}, Red);
    m_wire.AddLabel({100, 0, 50}, "end");
    m_surface.SetForeColour(Blue);
    m_wire.Draw(m_surface, {90, 0, 0}, 0.5, true);
    ASSERT_THAT(m_surface.Lines, SizeIs(1));
    ExpectLine(m_surface.Lines[0], 200, 150, 250, 150);
    ASSERT_THAT(m_surface.Texts, SizeIs(1));
    EXPECT_NEAR(m_surface.Texts[0].X, 250, Near);
    EXPECT_NEAR(m_surface.Texts[0].Y, 125, Near);
    EXPECT_EQ(m_surface.Texts[0].Words, "end");
    EXPECT_EQ(m_surface.Texts[0].Drawn, Blue);

    m_wire.Draw(m_surface, {90, 0, 0}, 0, false); // no scale is scale 1
    ExpectLine(m_surface.Lines.at(0), 200, 150, 300, 150);
    EXPECT_THAT(m_surface.Texts, SizeIs(0));
    m_wire.DrawLabels(m_surface, 2, 10, -20);
    EXPECT_NEAR(m_surface.Texts.at(0).X, 210, Near);
    EXPECT_NEAR(m_surface.Texts.at(0).Y, -80, Near);
}

TEST_F(CWireframeTest, LaysOutFourViewsInTheScaleOfTheFreeOne) {
    AddAxes();
    m_wire.DrawAutoLayout(m_surface, false, true);
    ASSERT_THAT(m_surface.Lines, SizeIs(14));
    // By hand: the free view of the axes is 1410.831 wide and 1226.168 high, so its height rules,
    // 0.9 x 300 / 1226.168 = 0.2201982, and its origin comes to (611, 461).
    ExpectLine(LineOf(0, 0), 611, 461, 755.5742, 585.3534);
    ExpectLine(LineOf(0, 1), 611, 461, 444.9117, 569.6764);
    ExpectLine(LineOf(0, 2), 611, 461, 610.5084, 315.3534);
    EXPECT_EQ(LineOf(0, 0).Drawn, Red);
    EXPECT_EQ(LineOf(0, 2).Drawn, Blue);
    // The others are centred: an axis of 1000 is 220.1982 long, half of that from the anchor.
    ExpectLine(LineOf(1, 0), 90, 260, 310.1982, 260);
    ExpectLine(LineOf(1, 2), 90, 260, 90, 39.8018);
    ExpectLine(LineOf(2, 1), 490, 260, 710.1982, 260);
    ExpectLine(LineOf(3, 0), 90, 340, 310.1982, 340);
    ExpectLine(LineOf(3, 1), 90, 340, 90, 560.1982);
    EXPECT_EQ(m_surface.Lines[12], (RecordingSurface::Line{400, 0, 400, 600, Grey}));
    EXPECT_EQ(m_surface.Lines[13], (RecordingSurface::Line{0, 300, 800, 300, Grey}));
}

TEST_F(CWireframeTest, WithoutForceTheDrawingMovesInAFixedFrame) {
    AddAxes();
    m_wire.DrawAutoLayout(m_surface, false, true);
    const RecordingSurface::Line before = LineOf(1, 0);
    const auto redrawn = [&](bool force) {
        m_wire.Init(m_surface);
        AddAxes(500, 100);
        m_wire.DrawAutoLayout(m_surface, false, force);
        return LineOf(1, 0);
    };
    const RecordingSurface::Line moved = redrawn(false);
    EXPECT_NEAR(moved.X1 - before.X1, 22.01982, Near);
    EXPECT_NEAR(Length(moved), 110.0991, Near);
    // Another size forces the layout, once.
    m_surface.Resize(1600, 1200);
    const RecordingSurface::Line resized = redrawn(false);
    EXPECT_NEAR(Length(resized), 440.3965, Near);
    EXPECT_NEAR(resized.X1 + resized.X2, 800, 1);
    EXPECT_EQ(redrawn(false), resized);
    m_surface.Resize(800, 600);
    EXPECT_NEAR(Length(redrawn(false)), 220.1982, Near);
}

TEST_F(CWireframeTest, TheViewThatNeedsMostRoomRules) {
    m_surface.Resize(400, 600);
    m_wire.Init(m_surface);
    m_wire.AddLine({900, 300, 40}, {2400, 760, 610}, Red);
    m_wire.AddLine({1700, -750, 0}, {1500, 120, 900}, Green);
    m_wire.DrawAutoLayout(m_surface, false, true);
    double widest = 0;
    for (std::size_t quadrant = 0; quadrant < 4; ++quadrant) {
        const double left = quadrant == 0 || quadrant == 2 ? 200 : 0;
        const RecordingSurface::Line& a = LineOf(quadrant, 0);
        const RecordingSurface::Line& b = LineOf(quadrant, 1);
        const double least = std::min({a.X1, a.X2, b.X1, b.X2});
        const double most = std::max({a.X1, a.X2, b.X1, b.X2});
        EXPECT_NEAR(most + least, 2 * (left + 100), 1.01); // centred to half a unit
        widest = std::max(widest, most - least);
    }
    EXPECT_NEAR(widest, 0.9 * 200, Near);
}

TEST_F(CWireframeTest, AFailedLayoutLeavesTheOneInForce) {
    AddAxes();
    m_wire.DrawAutoLayout(m_surface, false, true);
    const std::vector<RecordingSurface::Line> before = m_surface.Lines;
    const auto failureOf = [&](const SuspPoint& from, const SuspPoint& to) {
        m_wire.Init(m_surface);
        const auto layOut = [&] {
            m_wire.AddLine(from, to, Red);
            m_wire.DrawAutoLayout(m_surface, false, true);
        };
        return FailureOf(layOut).Description();
    };
    EXPECT_EQ(failureOf({5, 5, 5}, {5, 5, 5}), "Division by zero");
    EXPECT_EQ(failureOf({1e6, 0, 0}, {1e6, 10, 10}), "Overflow"); // beyond 16 bits of offset
    EXPECT_EQ(failureOf({1e300, 0, 0}, {0, 0, 0}), "Overflow");   // beyond single precision
    m_wire.Init(m_surface);
    AddAxes();
    m_wire.DrawAutoLayout(m_surface, false, false);
    EXPECT_TRUE(m_surface.Lines == before);
}

TEST_F(CWireframeTest, ASurfaceNotLaidOutYetIsNoFailure) {
    RecordingSurface surface(0, 0);
    m_wire.Init(surface);
    AddAxes();
    m_wire.DrawAutoLayout(surface, true, false);
    m_wire.DrawAutoLayout(surface, true, true);
    m_wire.DrawFreeView(surface, true);
    CWireframe::DrawLegend(surface, "a", Red, true);
    for (const RecordingSurface::Line& line : surface.Lines) {
        EXPECT_TRUE(std::isfinite(line.X1 + line.Y1 + line.X2 + line.Y2));
    }
}

/// The directions from a centre to the ends of the lines drawn, from views of all three axes.
class CircleTest : public CWireframeTest {
  protected:
    std::vector<SuspPoint> Spokes(const SuspPoint& centre, const SuspPoint& axisPoint,
                                  double radius) {
        m_wire.Init(m_surface);
        m_wire.AddCircle(centre, axisPoint, radius, Red);
        m_wire.Draw(m_surface, {}, 1, false);
        const std::vector<RecordingSurface::Line> top = m_surface.Lines;
        m_wire.Draw(m_surface, {90, 0, 0}, 1, false);
        const std::vector<RecordingSurface::Line> side = m_surface.Lines;
        EXPECT_THAT(top, SizeIs(36));
        std::vector<SuspPoint> spokes;
        for (std::size_t n = 0; n < top.size(); ++n) {
            EXPECT_EQ(top[n].X1, top[(n + 35) % 36].X2) << "the ring has a gap";
            spokes.push_back({top[n].X2 - 200 - centre.X, top[n].Y2 - 150 - centre.Y,
                              150 - side[n].Y2 - centre.Z});
        }
        return spokes;
    }
};

TEST_F(CircleTest, IsSquareToItsAxis) {
    const SuspPoint centre{10, 700, 300};
    for (const SuspPoint& spoke : Spokes(centre, {10, 100, 300}, 250)) {
        EXPECT_NEAR(std::hypot(spoke.X, spoke.Z), 250, 0.001);
        EXPECT_NEAR(spoke.Y, 0, 0.001);
    }
    // Camber of 2 degrees and steer of 4: the small angles are good for a part in thousands.
    const SuspPoint axisPoint{52, 101, 321};
    const Vector3 axis = VectorSubtract(centre, axisPoint);
    const double length = VectorMagnitude(axis.X, axis.Y, axis.Z);
    for (const SuspPoint& spoke : Spokes(centre, axisPoint, 250)) {
        EXPECT_NEAR(VectorMagnitude(spoke.X, spoke.Y, spoke.Z), 250, 0.001);
        const double along = (spoke.X * axis.X + spoke.Y * axis.Y + spoke.Z * axis.Z) / length;
        EXPECT_NEAR(along, 0, 250 * 0.004);
    }
    EXPECT_THAT(Spokes(centre, {10, 700, 0}, 250), SizeIs(36)); // nothing along Y: not tilted
}

TEST_F(CWireframeTest, TheLegendRunsAlongTheTopInOneRow) {
    m_surface.SetCurrentY(77);
    CWireframe::DrawLegend(m_surface, "Lower", Blue, true);
    CWireframe::DrawLegend(m_surface, "ARB", Red, false);
    CWireframe::DrawLegend(m_surface, "New row", Red, true);
    using Text = RecordingSurface::Text;
    EXPECT_THAT(m_surface.Texts,
                ElementsAre(Text{50, 0, "Lower   ", Blue}, Text{50 + 8 * 8, 0, "ARB   ", Red},
                            Text{50, 0, "New row   ", Red}));
}

class FreeViewTest : public CWireframeTest {
  protected:
    std::vector<RecordingSurface::Line> Layout(const FreeView& view, bool force = false) {
        m_wire.SetFreeView(view);
        m_wire.Init(m_surface);
        AddAxes();
        m_wire.AddLabel({0, 0, 1000}, "Z");
        m_wire.DrawAutoLayout(m_surface, true, force);
        return m_surface.Lines;
    }
    /// The middle of the axes' box, which a turned view keeps in its place.
    [[nodiscard]] Point2D Middle() const { return m_wire.PlaceInFreeView({500, 500, 500}); }
};

TEST_F(FreeViewTest, TurnAndTiltGoTheWayTheyAreNamed) {
    (void)Layout({}, true);
    const auto place = [&](const FreeView& view, const SuspPoint& p) {
        (void)Layout(view);
        return m_wire.PlaceInFreeView(p);
    };
    // A quarter anticlockwise from above brings the front end to where the left side was.
    const SuspPoint front{0, 500, 500};
    const SuspPoint left{500, 1000, 500};
    EXPECT_NEAR(place({90, 0, 1}, front).X, place({}, left).X, Near);
    EXPECT_NEAR(place({90, 0, 1}, front).Y, place({}, left).Y, Near);
    // Tilted, the corner is seen more from above: the upright axis looks shorter.
    const auto height = [&](double tilt) {
        return place({0, tilt, 1}, {0, 0, 1000}).Y - place({0, tilt, 1}, {0, 0, 0}).Y;
    };
    EXPECT_LT(height(20), height(0));
    EXPECT_GT(height(-20), height(0));
}

TEST_F(FreeViewTest, ZoomsAboutAPlaceAndMovesByAWay) {
    (void)Layout({30, 10, 1}, true);
    const SuspPoint point{200, -100, 700};
    const Point2D at = m_wire.PlaceInFreeView(point);
    const double length = Length(m_surface.Lines.at(0));
    for (const double factor : {1.5, 1.2, 0.5}) {
        m_wire.ZoomFreeView(factor, at);
        (void)Layout(m_wire.CurrentFreeView());
        EXPECT_NEAR(m_wire.PlaceInFreeView(point).X, at.X, 1e-9);
        EXPECT_NEAR(m_wire.PlaceInFreeView(point).Y, at.Y, 1e-9);
    }
    EXPECT_NEAR(Length(m_surface.Lines.at(0)), 0.9 * length, Near);
    m_wire.MoveFreeView({13, -7});
    (void)Layout(m_wire.CurrentFreeView());
    EXPECT_NEAR(m_wire.PlaceInFreeView(point).X, at.X + 13, 1e-9);
    EXPECT_NEAR(m_wire.PlaceInFreeView(point).Y, at.Y - 7, 1e-9);
    m_wire.ZoomFreeView(1e6, at);
    EXPECT_EQ(m_wire.CurrentFreeView().Zoom, CWireframe::MostZoom);
}

TEST_F(FreeViewTest, ZoomedLinesAreCutAtTheEdgeOfTheView) {
    const std::vector<RecordingSurface::Line> standard = Layout({}, true);
    const Point2D middle = Middle();
    (void)Layout({0, 0, 0.5});
    EXPECT_THAT(m_surface.Texts, SizeIs(4));
    for (std::size_t n = 0; n < 3; ++n) {
        EXPECT_NEAR(Length(m_surface.Lines[n]), Length(standard[n]) / 2, Near);
    }
    (void)Layout({0, 0, 8});
    EXPECT_NEAR(Middle().X, middle.X, 1e-9);
    EXPECT_THAT(m_surface.Texts, SizeIs(3)); // the label of the free view is out of sight
    const std::size_t shown = m_surface.Lines.size() - 11;
    EXPECT_LT(shown, 3U);
    for (std::size_t n = 0; n < shown; ++n) {
        const RecordingSurface::Line& line = m_surface.Lines[n];
        for (const double x : {line.X1, line.X2}) {
            EXPECT_GE(x, 400 - Near);
            EXPECT_LE(x, 800 + Near);
        }
        for (const double y : {line.Y1, line.Y2}) {
            EXPECT_GE(y, 300 - Near);
            EXPECT_LE(y, 600 + Near);
        }
    }
}

TEST_F(FreeViewTest, AloneItFillsTheSurface) {
    AddAxes();
    m_wire.DrawFreeView(m_surface, false);
    ASSERT_THAT(m_surface.Lines, SizeIs(3));
    // By hand, as in the layout: 0.9 x 600 / 1226.168 in height.
    const double scale = 0.4403965;
    EXPECT_NEAR(m_surface.Lines[2].Y1 - m_surface.Lines[2].Y2, 661.4341 * scale, Near);
    EXPECT_NEAR(m_surface.Lines[0].Y2 + m_surface.Lines[2].Y2, 600, Near);
    EXPECT_NEAR(m_surface.Lines[0].X2 + m_surface.Lines[1].X2, 800, Near);
    // One point alone stands in the middle.
    m_wire.Init(m_surface);
    m_wire.AddLine({5, 6, 7}, {5, 6, 7}, Red);
    m_wire.DrawFreeView(m_surface, false);
    ExpectLine(m_surface.Lines.at(0), 400, 300, 400, 300);
}

} // namespace
} // namespace corvanta::test
