#include "desktop/CornerPanelView.h"

#include "tests/support/CornerShapes.h"
#include "tests/support/SampleCorners.h"

#include <QPixmap>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

namespace corvanta::test {
namespace {

TEST(CornerPanelViewTest, AHandleIsDraggedWithTheMouseAndTheKeys) {
    Suspension document = DoubleWishboneCorner();
    CalculateCorner(document);
    const SuspPoint start = document.StaticPoints()[ptTRI];
    const FundamentalUnits units = MetricUnits();
    CornerPanel panel(units);
    const auto show = [&] {
        panel.Show({ShapeOf(document, 0, 0), std::nullopt, document.Catalogue, {}, {}});
    };
    int moves = 0;
    panel.Events.Moved = [&](PointNumber point, const SuspPoint& place) {
        ++moves;
        document.StaticPoints()[point] = place;
        CalculateCorner(document);
        show();
    };
    int events = 0;
    CornerPanelView view(panel, [&](const std::function<void()>& event) {
        ++events;
        event();
    });
    view.resize(450, 520);
    show();
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    CornerCanvas& canvas = view.Canvas();
    QTest::mouseClick(view.findChild<QToolButton*>("cmdFrontView"), Qt::LeftButton);
    EXPECT_EQ(panel.Side(), FrontSide);
    const auto handle = [&] {
        const Point2D at = panel.PlaceOf(ptTRI);
        return QPoint(qRound(at.X), qRound(at.Y));
    };
    const double scale = panel.Projection().Scale;
    const QPoint from = handle();
    const QImage before = canvas.grab().toImage();
    QTest::mouseMove(&canvas, from);
    QTest::qWait(1);
    EXPECT_EQ(panel.Hovered(), ptTRI);
    EXPECT_EQ(canvas.cursor().shape(), Qt::OpenHandCursor);
    EXPECT_NE(canvas.grab().toImage(), before) << "the name is written";

    QTest::mousePress(&canvas, Qt::LeftButton, {}, from);
    for (int pixel = 1; pixel <= 6; ++pixel) { // as fast as no window could follow
        QTest::mouseMove(&canvas, from + QPoint(pixel, -2));
    }
    QTest::qWait(1);
    const auto expectWay = [&](double y, double z) {
        const SuspPoint& now = document.StaticPoints()[ptTRI];
        EXPECT_NEAR(now.X, start.X, 1e-9);
        EXPECT_NEAR(now.Y, start.Y + y / scale, 1e-9);
        EXPECT_NEAR(now.Z, start.Z + z / scale, 1e-9);
    };
    expectWay(6, 2);
    QTest::keyPress(&canvas, Qt::Key_Z);
    QTest::qWait(1);
    expectWay(0, 2);
    QTest::keyRelease(&canvas, Qt::Key_Z);
    QTest::mouseRelease(&canvas, Qt::LeftButton, {}, from + QPoint(5, 0));
    expectWay(5, 0);

    QTest::mousePress(&canvas, Qt::LeftButton, {}, handle());
    QTest::mouseMove(&canvas, handle() + QPoint(20, 20));
    QTest::keyClick(&canvas, Qt::Key_Escape);
    QTest::mouseRelease(&canvas, Qt::LeftButton, {}, from);
    expectWay(5, 0);
    EXPECT_FALSE(panel.IsHeld());

    // Elsewhere the hand turns the view and is no business of other windows.
    const int told = moves;
    const int ran = events;
    QTest::keyClick(&canvas, Qt::Key_0);
    EXPECT_TRUE(view.findChild<QToolButton*>("cmdFreeView")->isChecked());
    QTest::keyClick(&canvas, Qt::Key_Left);
    EXPECT_FALSE(view.findChild<QToolButton*>("cmdFreeView")->isChecked());
    EXPECT_EQ(moves, told);
    EXPECT_EQ(events, ran);
}

} // namespace
} // namespace corvanta::test
