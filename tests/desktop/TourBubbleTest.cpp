#include "desktop/TourBubble.h"

#include "desktop/GridView.h"
#include "desktop/PointsPanel.h"
#include "desktop/WorkbenchWindow.h"
#include "tests/desktop/DesktopUser.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QPushButton>
#include <QTest>

namespace corvanta::test {
namespace {

/// Where a widget lies in the workbench.
QRect PlaceOf(const QWidget& widget, const QWidget& window) {
    return {widget.mapTo(&window, QPoint()), widget.size()};
}

TEST(TourBubbleTest, StandsBesideThePartsAndBlocksNothing) {
    const TemporaryFolder folder;
    DesktopUser user(folder.Path());
    user.Start();
    user.Choose(mcWorkbench);
    WorkbenchWindow& window = *user.Desk.WorkbenchView();
    auto& bubble = DesktopUser::Child<TourBubble>(window, "panTour");
    EXPECT_FALSE(bubble.isVisible());
    EXPECT_TRUE(DesktopUser::Child<QWidget>(window, "panEmpty").isVisible());
    user.Open(SamplePath("touring-front-wishbone.WSP"));
    EXPECT_FALSE(DesktopUser::Child<QWidget>(window, "panEmpty").isVisible());
    ASSERT_TRUE(bubble.isVisible());

    // Also once the window has another size.
    for (const QSize& size : {QSize(1280, 800), QSize(1024, 640)}) {
        QTest::qWait(50);
        window.resize(size);
        QTest::qWait(50);
        EXPECT_FALSE(PlaceOf(bubble, window).intersects(PlaceOf(window.Points(), window)));
        EXPECT_TRUE(window.rect().contains(PlaceOf(bubble, window)));
    }
    // What it speaks of can be tried.
    GridView& table = window.Points().Table();
    const QModelIndex cell = table.model()->index(0, 0);
    table.setCurrentIndex(cell);
    const QString before = cell.data().toString();
    QTest::keyClick(&table, Qt::Key_Up, Qt::ControlModifier);
    QTest::qWait(50);
    EXPECT_NE(cell.data().toString(), before);
    EXPECT_TRUE(bubble.isVisible());

    auto& next = DesktopUser::Child<QPushButton>(window, "cmdTourNext");
    QTest::keyClick(&next, Qt::Key_Return);
    EXPECT_EQ(user.Logic().Workbench->Tour.labCount.Caption, "2 of 5");
    QTest::keyClick(&next, Qt::Key_Escape);
    EXPECT_FALSE(bubble.isVisible());
    EXPECT_TRUE(table.hasFocus()) << "as before the tour";
    user.Choose(mcWorkbenchTour);
    EXPECT_TRUE(bubble.isVisible());
    EXPECT_TRUE(next.hasFocus());
    QTest::mouseClick(&DesktopUser::Child<QPushButton>(window, "cmdTourSkip"), Qt::LeftButton);
    EXPECT_FALSE(bubble.isVisible());
}

} // namespace
} // namespace corvanta::test
