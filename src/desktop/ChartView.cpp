#include "desktop/ChartView.h"

#include "desktop/QtServices.h"
#include "model/Failure.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QSvgGenerator>
#include <QVBoxLayout>

#include <qcustomplot.h>

#include <algorithm>
#include <cmath>

namespace corvanta {

namespace {

constexpr double LineWidth = 2;
constexpr double MarkerSize = 5;
constexpr double Margin = 0.04;  ///< of the range, beside the points
constexpr int ClickDistance = 4; ///< a longer way of the pressed button is a rubber band
constexpr double HoverDistance = 24;
constexpr QSize PictureSize(1200, 800);

QColor ColourOf(const corvanta::Colour& colour) {
    return {colour.Red, colour.Green, colour.Blue};
}

/// A chart that was not set up yet has no fonts, and one without a family can't be recorded.
QFont FontOf(const ChartFont& font) {
    QFont shown = QApplication::font();
    if (!font.Family.empty()) {
        shown.setFamily(QString::fromStdString(font.Family));
    }
    if (font.Size > 0) {
        shown.setPointSize(font.Size);
    }
    shown.setBold(font.Bold);
    return shown;
}

QCPRange FittedRange(double low, double high) {
    // A line without an extent lies in the middle of a small one.
    const double size = high > low ? high - low : std::max(1.0, std::abs(low) * 0.1);
    const double middle = (low + high) / 2;
    return {middle - size * (0.5 + Margin), middle + size * (0.5 + Margin)};
}

} // namespace

ChartView::ChartView(Clicked clicked, QWidget* parent)
    : QWidget(parent),
      m_clicked(std::move(clicked)),
      m_plot(new QCustomPlot(this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_plot);
    m_plot->addGraph();
    m_plot->axisRect()->setupFullAxesBox();
    for (QCPAxis* frame : {m_plot->xAxis2, m_plot->yAxis2}) {
        frame->setTicks(false);
    }
    m_plot->setInteractions(QCP::iRangeZoom);
    m_plot->setSelectionRectMode(QCP::srmNone);
    m_plot->setContextMenuPolicy(Qt::CustomContextMenu);
    m_markerX = new QCPItemLine(m_plot);
    m_markerY = new QCPItemLine(m_plot);
    m_readout = new QCPItemText(m_plot);
    m_readout->setPositionAlignment(Qt::AlignLeft | Qt::AlignBottom);
    m_readout->setPadding(QMargins(5, 3, 5, 3));
    m_readout->setVisible(false);
    connect(m_plot, &QCustomPlot::mousePress, this, &ChartView::BeginRubberBand);
    connect(m_plot, &QCustomPlot::mouseRelease, this, &ChartView::EndRubberBand);
    connect(m_plot, &QCustomPlot::mouseMove, this, &ChartView::PanOrHover);
    for (QCPAxis* axis : {m_plot->xAxis, m_plot->yAxis}) {
        connect(axis, qOverload<const QCPRange&>(&QCPAxis::rangeChanged), this,
                [this] { ShowMarkers(); });
    }
    connect(m_plot, &QCustomPlot::mouseDoubleClick, this, [this] {
        Fit();
        m_plot->replot();
    });
    connect(m_plot, &QWidget::customContextMenuRequested, this, &ChartView::ShowMenu);
}

ChartView::~ChartView() = default;

ChartView::Paper ChartView::ThemePaper() const {
    const QColor base = palette().color(QPalette::Base);
    const QColor text = palette().color(QPalette::Text);
    const bool dark = base.lightness() < 128;
    return {base, text, dark ? QColor(62, 64, 70) : ColourOf(GridColour)};
}

void ChartView::Colour(const Paper& paper) const {
    m_plot->setBackground(paper.Background);
    QColor zero = paper.Grid;
    zero = paper.Background.lightness() < 128 ? zero.lighter(160) : zero.darker(140);
    for (QCPAxis* axis : {m_plot->xAxis, m_plot->yAxis, m_plot->xAxis2, m_plot->yAxis2}) {
        const QPen pen(paper.Ink);
        axis->setBasePen(pen);
        axis->setTickPen(pen);
        axis->setSubTickPen(pen);
        axis->setTickLabelColor(paper.Ink);
        axis->setLabelColor(paper.Ink);
        axis->grid()->setPen(QPen(paper.Grid, 1));
        axis->grid()->setZeroLinePen(QPen(zero, 1.6));
    }
    for (QCPItemLine* line : {m_markerX, m_markerY}) {
        line->setPen(QPen(paper.Ink, 1, Qt::DashLine));
    }
    m_readout->setColor(paper.Ink);
    m_readout->setBrush(paper.Background);
    m_readout->setPen(QPen(paper.Grid));
}

void ChartView::Refresh() {
    Load();
    Colour(ThemePaper());
    m_plot->replot(QCustomPlot::rpQueuedReplot);
}

/// Gives the library the chart as it is now.
void ChartView::Load() const {
    const QString titles = QString::fromStdString(AxisX.Title).section(" = ", 0, 0) + "\n" +
                           QString::fromStdString(AxisY.Title).section(" = ", 0, 0);
    m_plot->xAxis->setLabel(QString::fromStdString(AxisX.Title));
    m_plot->yAxis->setLabel(QString::fromStdString(AxisY.Title));
    m_plot->xAxis->grid()->setVisible(AxisX.GridLines);
    m_plot->yAxis->grid()->setVisible(AxisY.GridLines);
    m_plot->xAxis->setTickLabelFont(FontOf(AnnotationFont));
    m_plot->yAxis->setTickLabelFont(FontOf(AnnotationFont));
    m_plot->xAxis->setLabelFont(FontOf(TitleFont));
    m_plot->yAxis->setLabelFont(FontOf(TitleFont));
    QCPGraph* graph = m_plot->graph(0);
    graph->setPen(QPen(ColourOf(Series.Drawn), LineWidth));
    graph->setScatterStyle(
        QCPScatterStyle(QCPScatterStyle::ssDisc, ColourOf(Series.Drawn), MarkerSize));
    if (Series.Points != m_shown || titles != m_shownTitles) {
        QVector<double> x;
        QVector<double> y;
        for (const ChartPoint& point : Series.Points) {
            x << point.X;
            y << point.Y;
        }
        graph->setData(x, y);
        m_shown = Series.Points;
        m_shownTitles = titles;
        m_readout->setVisible(false);
        Fit();
    }
    ShowMarkers();
}

void ChartView::ShowMarkers() const {
    m_markerX->setVisible(AxisX.Marker.has_value());
    m_markerY->setVisible(AxisY.Marker.has_value());
    const QCPRange ranges[] = {m_plot->xAxis->range(), m_plot->yAxis->range()};
    if (AxisX.Marker) {
        m_markerX->start->setCoords(*AxisX.Marker, ranges[1].lower);
        m_markerX->end->setCoords(*AxisX.Marker, ranges[1].upper);
    }
    if (AxisY.Marker) {
        m_markerY->start->setCoords(ranges[0].lower, *AxisY.Marker);
        m_markerY->end->setCoords(ranges[0].upper, *AxisY.Marker);
    }
}

void ChartView::Fit() const {
    if (m_shown.empty()) {
        return;
    }
    const auto [lowX, highX] =
        std::minmax_element(m_shown.begin(), m_shown.end(),
                            [](const ChartPoint& a, const ChartPoint& b) { return a.X < b.X; });
    const auto [lowY, highY] =
        std::minmax_element(m_shown.begin(), m_shown.end(),
                            [](const ChartPoint& a, const ChartPoint& b) { return a.Y < b.Y; });
    m_plot->xAxis->setRange(FittedRange(lowX->X, highX->X));
    m_plot->yAxis->setRange(FittedRange(lowY->Y, highY->Y));
}

ChartPoint ChartView::DataAt(double pixelX, double pixelY) const {
    const QRect area = m_plot->axisRect()->rect();
    const bool inX = pixelX >= area.left() && pixelX <= area.right();
    const bool inY = pixelY >= area.top() && pixelY <= area.bottom();
    return {inX && !m_shown.empty() ? m_plot->xAxis->pixelToCoord(pixelX) : Outside,
            inY && !m_shown.empty() ? m_plot->yAxis->pixelToCoord(pixelY) : Outside};
}

void ChartView::Hover(const QPointF& at) {
    const ChartPoint* nearest = nullptr;
    double distance = HoverDistance;
    for (const ChartPoint& point : m_shown) {
        const double far = std::hypot(m_plot->xAxis->coordToPixel(point.X) - at.x(),
                                      m_plot->yAxis->coordToPixel(point.Y) - at.y());
        if (far < distance) {
            distance = far;
            nearest = &point;
        }
    }
    if (nearest == nullptr && !m_readout->visible()) {
        return;
    }
    m_readout->setVisible(nearest != nullptr);
    if (nearest != nullptr) {
        m_readout->position->setCoords(nearest->X, nearest->Y);
        m_readout->setText(QString("%1, %2").arg(nearest->X, 0, 'g', 6).arg(nearest->Y, 0, 'g', 6));
    }
    m_plot->replot(QCustomPlot::rpQueuedReplot);
}

/// The left button draws the rubber band, so it is the middle one that moves the paper.
void ChartView::PanOrHover(QMouseEvent* event) {
    if (!event->buttons().testFlag(Qt::MiddleButton)) {
        Hover(event->position());
        return;
    }
    const auto moved = [](const QCPAxis& axis, double from, double to) {
        return axis.pixelToCoord(from) - axis.pixelToCoord(to);
    };
    m_plot->xAxis->moveRange(moved(*m_plot->xAxis, m_pressed.x(), event->pos().x()));
    m_plot->yAxis->moveRange(moved(*m_plot->yAxis, m_pressed.y(), event->pos().y()));
    m_pressed = event->pos();
    m_plot->replot(QCustomPlot::rpQueuedReplot);
}

void ChartView::BeginRubberBand(QMouseEvent* event) {
    m_pressed = event->pos();
    const bool left = event->button() == Qt::LeftButton;
    m_plot->setSelectionRectMode(left ? QCP::srmZoom : QCP::srmNone);
}

void ChartView::EndRubberBand(QMouseEvent* event) {
    const bool click = (event->pos() - m_pressed).manhattanLength() <= ClickDistance;
    if (event->button() == Qt::LeftButton && click) {
        m_plot->selectionRect()->cancel();
        m_clicked(event->position().x() * TwipsPerPixel, event->position().y() * TwipsPerPixel);
    }
}

QString ChartView::DataText() const {
    QString text = QString::fromStdString(AxisX.Title).section(" = ", 0, 0) + '\t' +
                   QString::fromStdString(AxisY.Title).section(" = ", 0, 0) + '\n';
    for (const ChartPoint& point : m_shown) {
        text += QString::number(point.X, 'g', 15) + '\t' + QString::number(point.Y, 'g', 15) + '\n';
    }
    return text;
}

void ChartView::PaintOnPaper(QPainter& painter, const QSize& size) const {
    Load();
    m_readout->setVisible(false); // the pointer's, not the report's
    const QCPRange shown[] = {m_plot->xAxis->range(), m_plot->yAxis->range()};
    Fit(); // paper shows the whole line, whatever is zoomed on the screen
    Colour({Qt::white, Qt::black, ColourOf(GridColour)});
    QPicture picture; // the library paints on devices of its own kind of painter
    QCPPainter paper;
    paper.begin(&picture);
    m_plot->toPainter(&paper, size.width(), size.height());
    paper.end();
    // The toolkit enlarges a picture by the resolutions of the device and of the picture.
    const double resolution =
        static_cast<double>(picture.logicalDpiX()) / painter.device()->logicalDpiX();
    painter.save();
    painter.scale(resolution, resolution);
    painter.drawPicture(0, 0, picture);
    painter.restore();
    m_plot->xAxis->setRange(shown[0]);
    m_plot->yAxis->setRange(shown[1]);
    Colour(ThemePaper());
    m_plot->replot(QCustomPlot::rpQueuedReplot);
}

void ChartView::SaveAs(const QString& path) {
    bool saved = false;
    if (path.endsWith(".svg", Qt::CaseInsensitive)) {
        QSvgGenerator svg;
        svg.setFileName(path);
        svg.setSize(PictureSize);
        svg.setViewBox(QRect(QPoint(0, 0), PictureSize));
        QPainter painter;
        saved = painter.begin(&svg);
        if (saved) {
            PaintOnPaper(painter, PictureSize);
        }
    } else if (path.endsWith(".png", Qt::CaseInsensitive)) {
        saved = m_plot->savePng(path, PictureSize.width(), PictureSize.height(), 2);
    } else {
        WriteFile(path, DataText().toUtf8());
        saved = true;
    }
    if (!saved) {
        throw Failure(fnFileAccess, "The file could not be written: " + path.toStdString());
    }
}

void ChartView::AskAndSave() {
    const QString path = AskSavePath(this, tr("Save Plot"),
                                     tr("PNG picture (*.png);;SVG drawing (*.svg);;Data (*.txt)"));
    if (!path.isEmpty()) {
        SaveAs(path);
    }
}

void ChartView::ShowMenu(const QPoint& at) {
    QMenu menu(this);
    menu.addAction(tr("Copy Picture"),
                   [this] { QApplication::clipboard()->setPixmap(m_plot->toPixmap()); });
    menu.addAction(tr("Copy Data"), [this] { QApplication::clipboard()->setText(DataText()); });
    menu.addAction(tr("Save As..."), [this] { AskAndSave(); });
    menu.addSeparator();
    menu.addAction(tr("Whole Plot"), [this] {
        Fit();
        m_plot->replot();
    });
    menu.exec(m_plot->mapToGlobal(at));
}

void ChartView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        Refresh();
    }
}

} // namespace corvanta
