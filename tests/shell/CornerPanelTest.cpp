#include "shell/CornerPanel.h"

#include "tests/support/CornerShapes.h"
#include "tests/support/RecordingSurface.h"
#include "tests/support/SampleCorners.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace corvanta::test {
namespace {

constexpr double Width = 450;
constexpr double Height = 500;
constexpr PointNumber Point = ptTRI;

class CornerPanelTest : public testing::Test {
  protected:
    CornerPanelTest() : m_document(DoubleWishboneCorner()) {
        CalculateCorner(m_document);
        m_panel.Events.Moved = [this](PointNumber point, const SuspPoint& place) {
            m_told.push_back(place);
            m_document.StaticPoints()[point] = place;
            if (m_followed) {
                Show();
            }
        };
        m_panel.Events.Ended = [this](PointNumber, bool kept) { m_ends.push_back(kept); };
        m_panel.Resize(Width, Height);
        Show();
        m_panel.LookFrom(FrontSide);
    }

    /// Shows the document, solved as it was: of what is dragged only the static point counts here.
    void Show(int wheelStep = 0) {
        CornerContent content;
        content.Now = ShapeOf(m_document, 0, wheelStep);
        content.Catalogue = m_document.Catalogue;
        m_panel.Show(content);
    }

    /// Drags the point from where it is by a way in pixels; how far it went in the car, mm.
    SuspPoint Dragged(double right, double down, const CornerDragRule& rule = {}) {
        const Point2D from = m_panel.PlaceOf(Point);
        const SuspPoint start = m_document.StaticPoints()[Point];
        m_panel.Press(from);
        m_panel.DragTo({from.X + right / 2, from.Y}, {});
        m_panel.DragTo({from.X + right, from.Y + down}, rule);
        const SuspPoint end = m_document.StaticPoints()[Point];
        m_panel.TakeBack();
        EXPECT_EQ(m_document.StaticPoints()[Point], start);
        return {end.X - start.X, end.Y - start.Y, end.Z - start.Z};
    }

    static void ExpectNear(const SuspPoint& way, const SuspPoint& expected) {
        EXPECT_NEAR(way.X, expected.X, 1e-9);
        EXPECT_NEAR(way.Y, expected.Y, 1e-9);
        EXPECT_NEAR(way.Z, expected.Z, 1e-9);
    }

    Suspension m_document;
    const FundamentalUnits m_units = MetricUnits();
    CornerPanel m_panel{m_units};
    std::vector<SuspPoint> m_told;
    std::vector<bool> m_ends;
    bool m_followed = true;
};

TEST_F(CornerPanelTest, DragsInThePlaneOfTheViewByPixelsOverScale) {
    // In front of the car its left is on the right; from the left side its back is; from above its
    // right is up.
    const auto scale = [this] { return m_panel.Projection().Scale; };
    ExpectNear(Dragged(40, -30), {0, 40 / scale(), 30 / scale()});
    m_panel.LookFrom(SideSide);
    ExpectNear(Dragged(40, -30), {40 / scale(), 0, 30 / scale()});
    m_panel.LookFrom(TopSide);
    ExpectNear(Dragged(40, -30), {40 / scale(), -30 / scale(), 0});

    // From anywhere the point follows the pointer, and stays as near to the viewer as it was.
    m_panel.LookFrom(FreeSide);
    m_panel.TurnBy(23, 31);
    m_panel.Zoom(1.7, {100, 80});
    const SuspPoint way = Dragged(25, 60);
    const Point2D seen = m_panel.Projection().OnSurface(way);
    EXPECT_NEAR(seen.X, 25, 1e-9);
    EXPECT_NEAR(seen.Y, 60, 1e-9);
    EXPECT_NEAR(m_panel.Projection().Nearness(way), m_panel.Projection().Nearness({}), 1e-9);
}

TEST_F(CornerPanelTest, HoldsAnAxisAndWholeSteps) {
    const double scale = m_panel.Projection().Scale;
    ExpectNear(Dragged(40, -30, {caY, false}), {0, 40 / scale, 0});
    ExpectNear(Dragged(40, -30, {caZ, false}), {0, 0, 30 / scale});
    ExpectNear(Dragged(40, -30, {caX, false}), {}); // along the line of sight
    m_panel.Step = 5;
    const double steps = std::round(40 / scale / 5) * 5;
    ASSERT_GT(steps, 0);
    ExpectNear(Dragged(40, -30, {caY, true}), {0, steps, 0});
    m_panel.LookFrom(FreeSide);
    const SuspPoint way = Dragged(60, 10, {std::nullopt, true});
    for (const double coordinate : {way.X, way.Y, way.Z}) {
        EXPECT_NEAR(std::remainder(coordinate, 5), 0, 1e-9);
    }
    const SuspPoint along = Dragged(70, 20, {caX, false});
    ExpectNear(along, {along.X, 0, 0});
    // The end of the way is the foot of the pointer on the axis as it is seen.
    const Point2D seen = m_panel.Projection().OnSurface(along);
    EXPECT_NEAR((70 - seen.X) * seen.X + (20 - seen.Y) * seen.Y, 0, 1e-9);
}

TEST_F(CornerPanelTest, AClickMovesNothingAndEscapeBringsBack) {
    const Point2D at = m_panel.PlaceOf(Point);
    std::vector<PointNumber> picked;
    m_panel.Events.Picked = [&](PointNumber point) { picked.push_back(point); };
    ASSERT_TRUE(m_panel.Press(at));
    m_panel.DragTo({at.X + 2, at.Y}, {});
    m_panel.Release();
    EXPECT_EQ(picked, std::vector{Point});
    EXPECT_TRUE(m_told.empty());
    EXPECT_TRUE(m_ends.empty());
    Dragged(40, 0);
    EXPECT_EQ(m_told.size(), 3); // on the way, there and back
    EXPECT_EQ(m_ends, std::vector{false});
    ASSERT_TRUE(m_panel.Press(at));
    m_panel.DragTo({at.X + 20, at.Y}, {});
    m_panel.DragTo({at.X + 20, at.Y}, {});
    m_panel.Release();
    m_panel.DragTo({at.X + 90, at.Y}, {});
    EXPECT_EQ(m_told.size(), 4);
    EXPECT_EQ(m_ends.back(), true);
}

TEST_F(CornerPanelTest, PicksTheNearestHandleAndOfOnePlaceTheFrontMost) {
    const Point2D at = m_panel.PlaceOf(Point);
    EXPECT_EQ(m_panel.HandleAt({at.X + 3, at.Y - 3}), Point);
    EXPECT_EQ(m_panel.HandleAt({5, 5}), std::nullopt);
    // From the front two pickups in line; X runs to the back.
    PointSet& points = m_document.StaticPoints();
    points[ptLWIR] = {points[ptLWIF].X + 300, points[ptLWIF].Y, points[ptLWIF].Z};
    m_document.ResultsValid = false;
    Show();
    ASSERT_EQ(m_panel.PlaceOf(ptLWIR).X, m_panel.PlaceOf(ptLWIF).X);
    m_panel.PointAt(m_panel.PlaceOf(ptLWIF));
    EXPECT_EQ(m_panel.Hovered(), ptLWIF);
    m_panel.LookFrom({90, 90}); // from the back
    EXPECT_EQ(m_panel.HandleAt(m_panel.PlaceOf(ptLWIF)), ptLWIR);
    EXPECT_FALSE(m_document.Catalogue[ptUWCR].Enabled);
    EXPECT_NE(m_panel.HandleAt(m_panel.PlaceOf(ptUWCR)), ptUWCR) << "is not entered";
}

TEST_F(CornerPanelTest, TheFrameStaysWhileAHandMovesAndAnUnsolvedDesignStaysInSight) {
    const Point2D wheel = m_panel.PlaceOf(ptWC);
    m_document.ResultsValid = false; // from now on nothing can be solved
    const Point2D from = m_panel.PlaceOf(Point);
    ASSERT_TRUE(m_panel.Press(from));
    m_panel.DragTo({from.X - 2 * Width, from.Y}, {});
    m_panel.LookFrom(TopSide);
    m_panel.Zoom(2, {0, 0});
    EXPECT_EQ(m_panel.PlaceOf(ptWC).X, wheel.X);
    EXPECT_NEAR(m_panel.PlaceOf(Point).X, from.X - 2 * Width, 1e-9) << "the handle is in the hand";
    m_panel.DragTo({from.X - 30, from.Y}, {});
    m_panel.Release();
    EXPECT_EQ(m_panel.PlaceOf(ptWC).X, wheel.X) << "nothing is outside, so nothing is fitted";

    RecordingSurface surface(Width, Height);
    m_panel.Draw(surface);
    ASSERT_GT(surface.Lines.size(), 40);
    for (const auto& line : surface.Lines) {
        EXPECT_EQ(line.Drawn.Red, line.Drawn.Green) << "grey";
    }
}

TEST_F(CornerPanelTest, EveryHandleOfEverySampleStandsWhereItsPointIs) {
    ForEachSample([](Suspension&) {},
                  [this](const Suspension& document) {
                      CornerContent content;
                      content.Now = ShapeOf(document, 0, 0);
                      content.Catalogue = document.Catalogue;
                      content.Baseline = ShapeOf(document, 0, document.NW + 1);
                      CornerPanel panel(m_units);
                      panel.Resize(Width, Height);
                      panel.Show(content);
                      for (const PointNumber point : AllPoints) {
                          if (!document.Catalogue[point].Enabled) {
                              continue;
                          }
                          const SuspPoint& entered = document.StaticPoints()[point];
                          const SuspPoint& solved = (*content.Now.Solved)[point];
                          EXPECT_LT(Distance(entered, solved), 0.01) << PointShortName(point);
                          const Point2D at = panel.PlaceOf(point);
                          EXPECT_TRUE(at.X > 0 && at.X < Width && at.Y > 0 && at.Y < Height);
                      }
                      RecordingSurface surface(Width, Height);
                      panel.Draw(surface);
                      EXPECT_GE(surface.Circles.size(), 9);
                  });
}

} // namespace
} // namespace corvanta::test
