#include "desktop/ChartView.h"

#include "model/Failure.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QSvgRenderer>
#include <QTest>

#include <qcustomplot.h>

namespace corvanta::test {
namespace {

/// A chart of a line with one corner, on the screen.
class ChartViewTest : public testing::Test {
  protected:
    ChartViewTest() {
        m_chart.AxisX.Title = "Wheel Travel [mm]";
        m_chart.AxisY.Title = "Camber Angle [deg]";
        m_chart.Series = {{255, 0, 0}, {{-10, 1}, {0, 2}, {10, -3}}};
        m_chart.resize(600, 400);
        m_chart.show();
        m_chart.Refresh();
        QTest::qWait(20);
    }

    /// Where a point of the data lies on the chart.
    [[nodiscard]] QPoint PlaceOf(double x, double y) {
        return {static_cast<int>(std::lround(m_chart.Plot().xAxis->coordToPixel(x))),
                static_cast<int>(std::lround(m_chart.Plot().yAxis->coordToPixel(y)))};
    }

    std::vector<ChartPoint> m_clicks;
    ChartView m_chart{[this](double x, double y) { m_clicks.push_back({x, y}); }};
};

TEST_F(ChartViewTest, PlacesAreThoseOfTheDataAndOutsideIsOutside) {
    const QPoint at = PlaceOf(5, -0.5);
    const ChartPoint data = m_chart.DataAt(at.x(), at.y());
    EXPECT_NEAR(data.X, 5, 0.05);
    EXPECT_NEAR(data.Y, -0.5, 0.05);
    EXPECT_EQ(m_chart.DataAt(-999, at.y()).X, Chart2D::Outside);
    EXPECT_EQ(m_chart.DataAt(at.x(), 1e6).Y, Chart2D::Outside);
    QTest::mouseClick(&m_chart.Plot(), Qt::LeftButton, {}, at);
    ASSERT_EQ(m_clicks.size(), 1U);
    EXPECT_EQ(m_clicks[0].X, at.x() * Chart2D::TwipsPerPixel);
    EXPECT_EQ(m_clicks[0].Y, at.y() * Chart2D::TwipsPerPixel);
}

TEST_F(ChartViewTest, ARubberBandZoomsAndADoubleClickFitsAgain) {
    const QCPRange whole = m_chart.Plot().xAxis->range();
    EXPECT_LT(whole.lower, -10);
    EXPECT_GT(whole.upper, 10);
    QTest::mousePress(&m_chart.Plot(), Qt::LeftButton, {}, PlaceOf(0, 2));
    QTest::mouseMove(&m_chart.Plot(), PlaceOf(3, 1));
    QTest::mouseMove(&m_chart.Plot(), PlaceOf(5, -1));
    QTest::mouseRelease(&m_chart.Plot(), Qt::LeftButton, {}, PlaceOf(5, -1));
    EXPECT_NEAR(m_chart.Plot().xAxis->range().lower, 0, 0.3);
    EXPECT_NEAR(m_chart.Plot().xAxis->range().upper, 5, 0.3);
    EXPECT_TRUE(m_clicks.empty()) << "a rubber band is no click";
    m_chart.Refresh(); // the same points keep the zoom
    EXPECT_NEAR(m_chart.Plot().xAxis->range().upper, 5, 0.3);
    QTest::mouseDClick(&m_chart.Plot(), Qt::LeftButton, {}, PlaceOf(2, 0));
    EXPECT_EQ(m_chart.Plot().xAxis->range(), whole);
}

TEST_F(ChartViewTest, IsSavedAsPictureDrawingAndData) {
    const TemporaryFolder folder;
    const auto path = [&](const char* name) { return QString::fromStdString(folder / name); };
    m_chart.SaveAs(path("plot.png"));
    EXPECT_GT(QImage(path("plot.png")).width(), 1000);
    m_chart.SaveAs(path("plot.svg"));
    EXPECT_TRUE(QSvgRenderer(path("plot.svg")).isValid());
    m_chart.SaveAs(path("plot.txt"));
    QFile data(path("plot.txt"));
    ASSERT_TRUE(data.open(QIODevice::ReadOnly));
    EXPECT_EQ(data.readAll(), "Wheel Travel [mm]\tCamber Angle [deg]\n-10\t1\n0\t2\n10\t-3\n");
    EXPECT_THROW(m_chart.SaveAs(path("no/folder/plot.txt")), Failure);
}

} // namespace
} // namespace corvanta::test
