#include "desktop/ChartView.h"

#include "model/Failure.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QSvgRenderer>
#include <QTest>

#include <qcustomplot.h>

namespace corvanta::test {
namespace {

/// The rectangle that holds all that is drawn in the colour of the line.
QRect RedPart(const QImage& image) {
    QRect part;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor colour = image.pixelColor(x, y);
            if (colour.red() > 200 && colour.green() < 80 && colour.blue() < 80) {
                part |= QRect(x, y, 1, 1);
            }
        }
    }
    return part;
}

/// A chart of a line with one corner, on the screen.
class ChartViewTest : public testing::Test {
  protected:
    ChartViewTest() {
        m_chart.AxisX = {"Wheel Travel [mm]", "0.00", true, {}};
        m_chart.AxisY = {"Camber Angle [deg]", "0.000", true, {}};
        m_chart.Series.Drawn = {255, 0, 0};
        m_chart.Series.Points = {{-10, 1}, {0, 2}, {10, -3}};
        m_chart.resize(600, 400);
        m_chart.show();
        Refresh();
    }

    void Refresh() {
        m_chart.Refresh();
        QTest::qWait(20);
    }

    /// Where a point of the data lies on the chart.
    [[nodiscard]] QPoint PlaceOf(double x, double y) const {
        return {static_cast<int>(std::lround(m_plot.xAxis->coordToPixel(x))),
                static_cast<int>(std::lround(m_plot.yAxis->coordToPixel(y)))};
    }

    void BeginBand(const QPoint& from, const QPoint& to) {
        QTest::mousePress(&m_plot, Qt::LeftButton, {}, from);
        QTest::mouseMove(&m_plot, (from + to) / 2);
        QTest::mouseMove(&m_plot, to);
    }

    void DragBand(const QPoint& from, const QPoint& to) {
        BeginBand(from, to);
        QTest::mouseRelease(&m_plot, Qt::LeftButton, {}, to);
        QTest::qWait(20);
    }

    void TurnWheel(int notches, const QPoint& at) {
        for (int turned = 0; turned < 10; ++turned) {
            QWheelEvent notch(at, m_plot.mapToGlobal(at), {}, {0, notches * 120 / 10}, {}, {},
                              Qt::NoScrollPhase, false);
            QApplication::sendEvent(&m_plot, &notch);
        }
        QTest::qWait(20);
    }

    /// The box below the pointer, in pixels, and what it says; empty while there is none.
    std::pair<QRectF, QString> ReadoutAt(const QPoint& pointer) {
        QTest::mouseMove(&m_plot, pointer);
        QTest::qWait(20);
        for (int n = 0; n < m_plot.itemCount(); ++n) {
            const auto* text = qobject_cast<QCPItemText*>(m_plot.item(n));
            if (text != nullptr && text->visible()) {
                return {{text->topLeft->pixelPosition(), text->bottomRight->pixelPosition()},
                        text->text()};
            }
        }
        return {};
    }

    [[nodiscard]] QImage OnPaper() const {
        QImage paper(600, 400, QImage::Format_RGB32);
        QPainter painter(&paper);
        m_chart.PaintOnPaper(painter, paper.size());
        return paper;
    }

    std::vector<ChartPoint> m_clicks;
    ChartView m_chart{[this](double x, double y) { m_clicks.push_back({x, y}); }};
    QCustomPlot& m_plot = m_chart.Plot();
};

TEST_F(ChartViewTest, PlacesAreThoseOfTheDataAndOutsideIsOutside) {
    const QPoint at = PlaceOf(5, -0.5);
    const ChartPoint data = m_chart.DataAt(at.x(), at.y());
    EXPECT_NEAR(data.X, 5, 0.05);
    EXPECT_NEAR(data.Y, -0.5, 0.05);
    EXPECT_EQ(m_chart.DataAt(-999, at.y()).X, Chart2D::Outside);
    EXPECT_EQ(m_chart.DataAt(at.x(), 1e6).Y, Chart2D::Outside);
    QTest::mouseClick(&m_plot, Qt::LeftButton, {}, at);
    ASSERT_EQ(m_clicks.size(), 1U);
    EXPECT_EQ(m_clicks[0].X, at.x() * Chart2D::TwipsPerPixel);
    EXPECT_EQ(m_clicks[0].Y, at.y() * Chart2D::TwipsPerPixel);
}

TEST_F(ChartViewTest, ARubberBandZoomsAndADoubleClickFitsAgain) {
    const QCPRange whole = m_plot.xAxis->range();
    EXPECT_LT(whole.lower, -10);
    EXPECT_GT(whole.upper, 10);
    DragBand(PlaceOf(0, 2), PlaceOf(5, -1));
    EXPECT_NEAR(m_plot.xAxis->range().lower, 0, 0.3);
    EXPECT_NEAR(m_plot.xAxis->range().upper, 5, 0.3);
    EXPECT_TRUE(m_clicks.empty()) << "a rubber band is no click";
    Refresh(); // the same points keep the zoom
    EXPECT_NEAR(m_plot.xAxis->range().upper, 5, 0.3);
    QTest::mouseDClick(&m_plot, Qt::LeftButton, {}, PlaceOf(2, 0));
    EXPECT_EQ(m_plot.xAxis->range(), whole);
}

TEST_F(ChartViewTest, ANarrowBandZoomsOneAxisAndOneThatLeavesTheAxesEndsAtThem) {
    const QCPRange wholeX = m_plot.xAxis->range();
    const QCPRange wholeY = m_plot.yAxis->range();
    DragBand(PlaceOf(-5, 0), PlaceOf(5, 0) + QPoint(0, 3));
    EXPECT_NEAR(m_plot.xAxis->range().lower, -5, 0.1);
    EXPECT_NEAR(m_plot.xAxis->range().upper, 5, 0.1);
    EXPECT_EQ(m_plot.yAxis->range(), wholeY);
    QTest::mouseDClick(&m_plot, Qt::LeftButton, {}, PlaceOf(2, 0));
    const QPoint corner = PlaceOf(0, 0);
    DragBand(corner, corner + QPoint(6, 6));
    EXPECT_EQ(m_plot.xAxis->range(), wholeX) << "a dot is no band";
    EXPECT_EQ(m_plot.yAxis->range(), wholeY);

    DragBand(corner, QPoint(5000, 5000));
    EXPECT_NEAR(m_plot.xAxis->range().lower, 0, 0.1);
    EXPECT_NEAR(m_plot.xAxis->range().upper, wholeX.upper, 1e-9);
    EXPECT_NEAR(m_plot.yAxis->range().lower, wholeY.lower, 1e-9);
    EXPECT_NEAR(m_plot.yAxis->range().upper, 0, 0.1);
}

TEST_F(ChartViewTest, EscapeDropsTheBand) {
    const QCPRange whole = m_plot.xAxis->range();
    const QPoint from = PlaceOf(0, 2);
    for (const QPoint& released : {PlaceOf(5, -1), from}) {
        BeginBand(from, PlaceOf(5, -1));
        QTest::keyClick(&m_plot, Qt::Key_Escape);
        QTest::mouseMove(&m_plot, released);
        QTest::mouseRelease(&m_plot, Qt::LeftButton, {}, released);
        EXPECT_EQ(m_plot.xAxis->range(), whole);
        EXPECT_TRUE(m_clicks.empty());
    }
    DragBand(from, PlaceOf(5, -1));
    EXPECT_NE(m_plot.xAxis->range(), whole) << "the next band is another";
}

TEST_F(ChartViewTest, AZoomStaysWhileTheSameIsPlotted) {
    DragBand(PlaceOf(-5, 0), PlaceOf(5, 0)); // X alone
    const QCPRange zoomed = m_plot.xAxis->range();
    m_chart.Series.Points = {{-10, 11}, {0, 12}, {10, 7}};
    m_chart.AxisX.Title = "Wheel Travel [mm] = 2.50";
    Refresh();
    EXPECT_EQ(m_plot.xAxis->range(), zoomed);
    EXPECT_LT(m_plot.yAxis->range().lower, 7) << "an axis that is not zoomed follows the line";
    EXPECT_GT(m_plot.yAxis->range().upper, 12);

    m_chart.Series.Points = {{20, 11}, {100, 12}};
    Refresh();
    EXPECT_GT(m_plot.xAxis->range().upper, 100) << "an empty chart shows nothing";

    for (ChartAxis* axis : {&m_chart.AxisX, &m_chart.AxisY}) {
        DragBand(PlaceOf(40, 11.8), PlaceOf(80, 11.1));
        EXPECT_LT(m_plot.xAxis->range().upper, 90);
        EXPECT_LT(m_plot.yAxis->range().upper, 12);
        axis->Title = "Other";
        Refresh();
        EXPECT_GT(m_plot.xAxis->range().upper, 100);
        EXPECT_GT(m_plot.yAxis->range().upper, 12);
    }
}

TEST_F(ChartViewTest, TheWheelZoomsAroundThePointerWithinLimits) {
    m_chart.Series.Points = {{1234, -0.5}, {1235, 0.5}};
    Refresh();
    const double sizeX = m_plot.xAxis->range().size();
    const double sizeY = m_plot.yAxis->range().size();
    const QPoint pointer = PlaceOf(1234.25, -0.25);
    const ChartPoint below = m_chart.DataAt(pointer.x(), pointer.y());
    TurnWheel(150, pointer);
    EXPECT_NEAR(m_plot.xAxis->range().size(), sizeX / 1000, sizeX * 1e-6);
    EXPECT_NEAR(m_plot.yAxis->range().size(), sizeY / 1000, sizeY * 1e-6);
    // Longer numbers along the axes may move these by some pixels.
    EXPECT_NEAR(m_chart.DataAt(pointer.x(), pointer.y()).X, below.X, sizeX / 1000 * 0.05);
    EXPECT_NEAR(m_chart.DataAt(pointer.x(), pointer.y()).Y, below.Y, 1e-9);
    const QVector<QString> labels = m_plot.xAxis->tickVectorLabels();
    EXPECT_GT(labels.size(), 2);
    EXPECT_EQ(QSet<QString>(labels.begin(), labels.end()).size(), labels.size());

    QTest::mouseDClick(&m_plot, Qt::LeftButton, {}, pointer);
    DragBand(pointer, pointer + QPoint(9, 9));
    for (int n = 0; n < 3; ++n) {
        DragBand({300, 200}, {309, 209});
    }
    EXPECT_NEAR(m_plot.xAxis->range().size(), sizeX / 1000, sizeX * 1e-6);
}

TEST_F(ChartViewTest, ThePointerReadsOutItsPointBesideIt) {
    const QRectF area = m_plot.axisRect()->rect();
    for (const auto& [point, words] : {std::pair{ChartPoint{-10, 1}, "-10.00, 1.000"},
                                       {{0, 2}, "0.00, 2.000"},
                                       {{10, -3}, "10.00, -3.000"}}) {
        const QPoint at = PlaceOf(point.X, point.Y);
        const auto [box, text] = ReadoutAt(at + QPoint(3, 2));
        EXPECT_EQ(text.toStdString(), words);
        EXPECT_TRUE(area.contains(box)) << words;
        EXPECT_GT(box.width(), 40);
        EXPECT_GT(box.height(), 10);
        EXPECT_FALSE(box.adjusted(-4, -4, 4, 4).contains(at)) << words << " hides its point";
        EXPECT_TRUE(box.adjusted(-20, -20, 20, 20).contains(at)) << words << " is far away";
    }
    m_chart.NumberSeparators = {",", "."};
    ReadoutAt(PlaceOf(5, 2));
    EXPECT_EQ(ReadoutAt(PlaceOf(0, 2)).second, "0,00, 2,000");

    const QPoint wasThere = PlaceOf(0, 2);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&m_chart, &leave);
    EXPECT_EQ(ReadoutAt({1, 1}).second, "");
    m_plot.xAxis->setRange(0.1, 5); // the point is just out of sight
    EXPECT_EQ(ReadoutAt({m_plot.axisRect()->left(), wasThere.y()}).second, "");
}

TEST_F(ChartViewTest, LinesBesideTheChartsOwnLieBehindItAndInItsData) {
    const QImage alone = OnPaper();
    const QRect red = RedPart(alone);
    const QString data = m_chart.DataText();
    m_chart.Others = {{{0, 0, 255}, {{-10, 1}, {0, 2}, {10, -3}}, "Baseline", true},
                      {{0, 160, 0}, {{-10, 0}, {4, 6}}, "Softer", false}};
    Refresh();
    EXPECT_GT(m_plot.yAxis->range().upper, 6);
    EXPECT_EQ(m_chart.DataText(), "Wheel Travel [mm]\tCamber Angle [deg]\tBaseline\tSofter\n"
                                  "-10\t1\t1\t0\n0\t2\t2\t\n10\t-3\t-3\t\n4\t\t\t6\n");
    EXPECT_NEAR(RedPart(OnPaper()).width(), red.width(), 2) << "the line hides the one behind it";
    m_chart.Others.clear();
    Refresh();
    EXPECT_EQ(OnPaper(), alone);
    EXPECT_EQ(m_chart.DataText(), data);
}

TEST_F(ChartViewTest, PicturesShowWhatIsOnTheScreenInBlackOnWhite) {
    const TemporaryFolder folder;
    const auto path = [&](const char* name) { return QString::fromStdString(folder / name); };
    m_chart.setPalette(QPalette(Qt::white, Qt::black, Qt::gray, Qt::black, Qt::gray, Qt::white,
                                Qt::white, Qt::black, Qt::black));
    const QImage whole = OnPaper();
    DragBand(PlaceOf(-5, -4), PlaceOf(5, 2.5)); // the line ends at the sides, not below
    const QCPRange zoomed = m_plot.xAxis->range();
    ReadoutAt(PlaceOf(0, 2));
    EXPECT_EQ(OnPaper(), whole) << "a report shows the whole line";
    m_chart.SaveAs(path("plot.png"));
    m_chart.SaveAs(path("plot.svg"));
    EXPECT_EQ(m_plot.xAxis->range(), zoomed);
    EXPECT_EQ(m_chart.grab().toImage().pixelColor(2, 2), QColor(Qt::black)) << "the theme's again";

    const QImage png(path("plot.png"));
    QFile file(path("plot.svg"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    QImage svg(png.size(), QImage::Format_RGB32);
    svg.fill(Qt::gray);
    QPainter painter(&svg);
    QSvgRenderer(text).render(&painter);
    painter.end();
    EXPECT_GT(png.width(), 1000);
    EXPECT_EQ(png.pixelColor(2, 2), QColor(Qt::white));
    EXPECT_EQ(svg.pixelColor(2, 2), QColor(Qt::white));
    const QRect inPng = RedPart(png);
    const QRect inSvg = RedPart(svg);
    EXPECT_GT(inPng.width(), png.width() * 0.85) << "from side to side";
    EXPECT_LT(std::abs(inPng.left() - inSvg.left()), 8);
    EXPECT_LT(std::abs(inPng.right() - inSvg.right()), 8);
    EXPECT_LT(std::abs(inPng.top() - inSvg.top()), 8);
    EXPECT_LT(std::abs(inPng.bottom() - inSvg.bottom()), 8);
    const auto width = QRegularExpression(R"(width="([\d.]+)mm")").match(text).captured(1);
    EXPECT_NEAR(width.toDouble(), png.width() * 1000.0 / png.dotsPerMeterX(), 0.1);
}

} // namespace
} // namespace corvanta::test
