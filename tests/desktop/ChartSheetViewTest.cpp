#include "desktop/ChartSheetView.h"

#include "desktop/ContextMenu.h"
#include "tests/desktop/SampleSheets.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QSvgRenderer>
#include <QTest>
#include <QTimer>

#include <qcustomplot.h>

namespace corvanta::test {
namespace {

class ChartSheetViewTest : public testing::Test {
  protected:
    void Show(const ChartSheet& sheet) {
        m_view.resize(400, 260);
        m_view.show();
        m_view.Show(sheet);
        QTest::qWait(20);
    }

    [[nodiscard]] QPoint PlaceOf(double x, double y) const {
        return {static_cast<int>(std::lround(m_plot.xAxis->coordToPixel(x))),
                static_cast<int>(std::lround(m_plot.yAxis->coordToPixel(y)))};
    }

    [[nodiscard]] QColor ColourAt(double x, double y) {
        return m_view.grab().toImage().pixelColor(PlaceOf(x, y));
    }

    /// Chooses an entry of the menu by its text.
    void Choose(const QString& text) {
        QTimer::singleShot(0, qApp, [text] {
            auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            for (QAction* action : menu->actions()) {
                if (action->text() == text) {
                    menu->setActiveAction(action);
                    QTest::keyClick(menu, Qt::Key_Return);
                    return;
                }
            }
            menu->close();
        });
        QContextMenuEvent key(QContextMenuEvent::Keyboard, {100, 100}, {100, 100});
        QApplication::sendEvent(&m_view, &key);
    }

    std::vector<std::pair<ChartPoint, bool>> m_moves;
    std::vector<std::optional<ChartPoint>> m_hovers;
    int m_chosen = 0;
    ChartSheetView m_view{
        {[this](std::optional<ChartPoint> place) { m_hovers.push_back(place); },
         [this](ChartPoint place, bool held) { m_moves.emplace_back(place, held); },
         [this](ContextMenu& menu) { menu.Add("Camber Angle", [this] { ++m_chosen; }); }}};
    QCustomPlot& m_plot = m_view.Plot();
};

TEST_F(ChartSheetViewTest, TheCrossIsDraggedAndStaysWithinTheAxes) {
    Show(MapSheet());
    QTest::mousePress(&m_plot, Qt::LeftButton, {}, PlaceOf(15, -10));
    QTest::mouseMove(&m_plot, PlaceOf(-20, 30));
    QTest::mouseMove(&m_plot, {-500, 5000});
    QTest::mouseRelease(&m_plot, Qt::LeftButton, {}, PlaceOf(40, 0));
    QTest::mouseMove(&m_plot, PlaceOf(0, 0));
    ASSERT_EQ(m_moves.size(), 4U);
    EXPECT_NEAR(m_moves[1].first.X, -20, 0.5);
    EXPECT_NEAR(m_moves[1].first.Y, 30, 0.5);
    EXPECT_EQ(m_moves[2].first, (ChartPoint{-60, -60}));
    EXPECT_TRUE(m_moves[2].second);
    EXPECT_NEAR(m_moves[3].first.X, 40, 0.5);
    EXPECT_FALSE(m_moves[3].second) << "the hand let go";
}

TEST_F(ChartSheetViewTest, ThePointerIsToldWhileItIsOnTheAxes) {
    Show(LineSheet());
    QTest::mouseMove(&m_plot, PlaceOf(-30, -1));
    QTest::mouseMove(&m_plot, PlaceOf(30, -1));
    QTest::mouseMove(&m_plot, {2, 2});
    QTest::mouseMove(&m_plot, {3, 2});
    ASSERT_EQ(m_hovers.size(), 3U);
    EXPECT_NEAR(m_hovers[1]->X, 30, 0.5);
    EXPECT_FALSE(m_hovers[2]) << "once";
    EXPECT_TRUE(m_moves.empty());
}

TEST_F(ChartSheetViewTest, WhatFollowsThePointerPaintsNothingElseAnew) {
    ChartSheet sheet = LineSheet();
    Show(sheet);
    int replots = 0;
    QObject::connect(&m_plot, &QCustomPlot::afterReplot, [&] { ++replots; });
    const QImage before = m_view.grab().toImage();
    sheet.Hover = SheetReadout{-40, {}, {"0.12 deg"}};
    m_view.Show(sheet);
    EXPECT_EQ(replots, 0);
    EXPECT_NE(m_view.grab().toImage(), before) << "the line is there";
    sheet.Hover.reset();
    m_view.Show(sheet);
    EXPECT_EQ(m_view.grab().toImage(), before);
    m_view.Show(LineSheet(0.004));
    EXPECT_EQ(replots, 1);
}

TEST_F(ChartSheetViewTest, AMapShowsItsStepsAndWhatCannotBeReached) {
    ChartSheet sheet = MapSheet();
    Show(sheet);
    const auto colours = ColoursOf(*sheet.Map);
    const auto& levels = sheet.Map->Levels;
    const auto colourOf = [&](double x, double y) {
        const double value = ValueAt(*sheet.Map, x, y).value();
        const auto step = static_cast<std::size_t>((value - levels.Low) /
                                                   ((levels.High - levels.Low) / levels.Steps));
        return ColourOf(colours.at(step));
    };
    EXPECT_EQ(ColourAt(-40, -40), colourOf(-40, -40));
    EXPECT_EQ(ColourAt(-30, 50), colourOf(-30, 50));
    for (const ChartPoint& place : {ChartPoint{57, 57}, {55, 50}}) {
        const QColor hatched = ColourAt(place.X, place.Y);
        EXPECT_LT(hatched.saturation(), 30) << "grey or paper";
    }
    for (auto& value : sheet.Map->Values) {
        value = 0;
    }
    sheet.Map->Differences = true;
    sheet.Map->Levels = LevelsOfDifferences(0, 0, 0.01);
    Show(sheet);
    EXPECT_EQ(ColourAt(-40, -40), QColor(Qt::white)) << "nothing changed";
    Show(LineSheet()); // the scale of colours goes
    EXPECT_GT(m_plot.axisRect()->rect().right(), 380);
}

TEST_F(ChartSheetViewTest, AMapToScaleKeepsItInEverySizeAndIsHatchedInItsBoxAlone) {
    ChartSheet sheet = MapSheet();
    sheet.ToScale = true;
    Show(sheet);
    for (const QSize& size : {QSize(400, 260), QSize(300, 420)}) {
        m_view.resize(size);
        QTest::qWait(20);
        EXPECT_NEAR(PlaceOf(40, 0).x() - PlaceOf(-40, 0).x(),
                    PlaceOf(0, -40).y() - PlaceOf(0, 40).y(), 2);
        for (const double end : {-59.0, 59.0}) {
            EXPECT_TRUE(m_plot.axisRect()->rect().contains(PlaceOf(end, end)));
        }
    }
    std::fill(sheet.Map->Values.begin(), sheet.Map->Values.end(), std::nullopt);
    Show(sheet);
    const QImage picture = m_view.grab().toImage();
    const QPoint corner = PlaceOf(-60, 30);
    const int beside = corner.x() - m_plot.axisRect()->rect().left();
    ASSERT_GT(beside, 20);
    for (int n = 3; n < beside - 1; ++n) {
        EXPECT_EQ(picture.pixelColor(corner - QPoint(n, 0)),
                  picture.pixelColor(corner - QPoint(3, 0)));
    }
}

TEST_F(ChartSheetViewTest, TheMenuBeginsWithTheWindowsOwnEntriesAndCopies) {
    Show(LineSheet());
    QTest::mouseMove(&m_plot, PlaceOf(-30, -1));
    Choose("Camber Angle");
    EXPECT_EQ(m_chosen, 1);
    EXPECT_FALSE(m_hovers.back()) << "the pointer may be anywhere by now";
    Choose("Copy Data");
    const QStringList lines = QApplication::clipboard()->text().split('\n');
    ASSERT_EQ(lines.size(), 52);
    EXPECT_TRUE(lines[1].startsWith("Wheel Travel [mm]\tAs it stands\tBaseline\t"));
    EXPECT_TRUE(lines[26].startsWith("0\t-0.5\t-0.5\t"));
    const QImage screen = m_view.grab().toImage();
    Choose("Copy Picture");
    EXPECT_EQ(QApplication::clipboard()->image().pixelColor(1, 1), QColor(Qt::white));
    EXPECT_EQ(m_view.grab().toImage(), screen) << "the chart is as it was";
}

TEST_F(ChartSheetViewTest, PicturesAreFilesThatOthersRead) {
    const TemporaryFolder folder;
    m_view.Show(MapSheet()); // never on the screen
    const QString path = QString::fromStdString(folder.Path() + "/map");
    m_view.SaveAs(path + ".png");
    m_view.SaveAs(path + ".svg");
    const QImage picture(path + ".png");
    EXPECT_EQ(picture.size(), QSize(2400, 1600));
    QSvgRenderer drawing(path + ".svg");
    QImage drawn(1200, 800, QImage::Format_RGB32);
    drawn.fill(Qt::red);
    QPainter painter(&drawn);
    drawing.render(&painter);
    for (const QPoint& at : {QPoint(300, 500), QPoint(700, 300), QPoint(100, 700)}) {
        const QColor a = drawn.pixelColor(at);
        const QColor b = picture.pixelColor(at * 2);
        EXPECT_NEAR(a.lightness(), b.lightness(), 12) << at.x();
        EXPECT_LT(a.lightness(), 245) << "a part of the map";
    }
}

} // namespace
} // namespace corvanta::test
