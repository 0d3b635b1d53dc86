#include "desktop/ChartView.h"

#include "desktop/ChartParts.h"
#include "desktop/ChartRubberBand.h"
#include "desktop/ContextMenu.h"
#include "desktop/QtServices.h"

#include <QContextMenuEvent>
#include <QImage>
#include <QVBoxLayout>

#include <qcustomplot.h>

#include <algorithm>
#include <cmath>

namespace corvanta {

namespace {

constexpr double LineWidth = 2;
constexpr double OtherWidth = 1.2;
constexpr double MarkerSize = 5;
constexpr int Line = 0; ///< the library's graphs
constexpr int Steps = 1;
constexpr int FirstOther = 2;
constexpr double WheelFactor = 0.85; ///< of the range, for a notch
constexpr double NotchAngle = 120;   ///< in the toolkit's units
constexpr int ClickDistance = 4;     ///< a longer way of the pressed button is a rubber band
constexpr double HoverDistance = 24;
constexpr double ReadoutDistance = 8; ///< from its point
constexpr int CaptionMargin = 8;      ///< around the caption of a picture

constexpr auto OthersLayer = "others";

AxisRange RangeOf(const QCPAxis& axis) {
    return {axis.range().lower, axis.range().upper};
}

void SetData(QCPGraph& graph, const std::vector<ChartPoint>& points, bool sorted) {
    QVector<double> x;
    QVector<double> y;
    for (const ChartPoint& point : points) {
        x << point.X;
        y << point.Y;
    }
    graph.setData(x, y, sorted);
}

/// The points of a line and of those beside it.
std::vector<ChartPoint> AllPoints(std::vector<ChartPoint> points,
                                  const std::vector<ChartSeries>& others) {
    for (const ChartSeries& other : others) {
        points.insert(points.end(), other.Points.begin(), other.Points.end());
    }
    return points;
}

QPen PenOf(const ChartSeries& other) {
    return {ColourOf(other.Drawn), OtherWidth, other.Dashed ? Qt::DashLine : Qt::SolidLine};
}

/// The title of an axis without the value that is read off.
QString PlainTitle(const ChartAxis& axis) {
    return QString::fromStdString(axis.Title).section(" = ", 0, 0);
}

} // namespace

ChartView::ChartView(Clicked clicked, QWidget* parent)
    : QWidget(parent),
      m_clicked(std::move(clicked)),
      m_plot(new QCustomPlot(this)),
      m_band(new ChartRubberBand(m_plot)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_plot);
    m_plot->addLayer(OthersLayer, m_plot->layer("main"), QCustomPlot::limBelow);
    m_plot->addGraph();
    m_plot->addGraph()->setLineStyle(QCPGraph::lsNone);
    m_plot->axisRect()->setupFullAxesBox();
    for (QCPAxis* frame : {m_plot->xAxis2, m_plot->yAxis2}) {
        frame->setTicks(false);
    }
    m_plot->setInteractions({});
    m_plot->setSelectionRect(m_band);
    m_plot->setContextMenuPolicy(Qt::CustomContextMenu);
    m_markerX = new QCPItemLine(m_plot);
    m_markerY = new QCPItemLine(m_plot);
    m_readout = new QCPItemText(m_plot);
    m_readout->position->setType(QCPItemPosition::ptAbsolute);
    m_readout->position->setCoords(0, 0); // axes without a size have put it nowhere
    m_readout->setClipToAxisRect(false);
    m_readout->setPositionAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_readout->setPadding(QMargins(5, 3, 5, 3));
    m_readout->setVisible(false);
    connect(m_plot, &QCustomPlot::afterLayout, this, &ChartView::PlaceReadout);
    for (QCPAxis* axis : {m_plot->xAxis, m_plot->yAxis}) {
        connect(axis, qOverload<const QCPRange&>(&QCPAxis::rangeChanged), this, [this, axis] {
            axis->setNumberPrecision(DigitsAlong(RangeOf(*axis)));
            ShowLine();
            ShowMarkers();
        });
    }
    ConnectPointer();
}

void ChartView::ConnectPointer() {
    connect(m_plot, &QCustomPlot::mousePress, this, &ChartView::BeginRubberBand);
    connect(m_plot, &QCustomPlot::mouseRelease, this, &ChartView::EndRubberBand);
    connect(m_plot, &QCustomPlot::mouseMove, this, &ChartView::PanOrHover);
    connect(m_plot, &QCustomPlot::mouseWheel, this,
            [this](QWheelEvent* event) { ZoomByWheel(*event); });
    connect(m_band, &QCPSelectionRect::accepted, this, &ChartView::ZoomToBand);
    connect(m_plot, &QCustomPlot::mouseDoubleClick, this, &ChartView::ShowWhole);
    connect(m_plot, &QWidget::customContextMenuRequested, this, &ChartView::ShowMenu);
}

ChartView::~ChartView() = default;

void ChartView::Colour(const ChartPaper& paper) const {
    SetPaper(*m_plot, paper);
    for (QCPItemLine* line : {m_markerX, m_markerY}) {
        line->setPen(QPen(paper.Ink, 1, Qt::DashLine));
    }
    m_readout->setColor(paper.Ink);
    m_readout->setBrush(paper.Background);
    m_readout->setPen(QPen(paper.Grid));
}

void ChartView::Refresh() {
    const QString titles = PlainTitle(AxisX) + "\n" + PlainTitle(AxisY);
    const bool other = titles != m_shownTitles;
    if (other || Series.Points != m_shown) {
        m_read.reset();
    }
    LoadOthers(); // another range shows the lines again, and there may be fewer of them now
    if (!Series.Points.empty()) {
        ShowRanges(RangesOfLine(other));
    }
    m_shown = Series.Points;
    m_shownOthers = Others;
    m_shownTitles = titles;
    Load();
    Colour(ThemePaper(palette(), ColourOf(GridColour)));
    m_plot->replot(QCustomPlot::rpQueuedReplot);
}

/// Ranges for the line that is about to be shown. An axis that shows all of the one before goes on
/// doing so.
ChartRanges ChartView::RangesOfLine(bool other) const {
    const ChartRanges fitted = FittedRanges(AllPoints(Series.Points, Others));
    if (other || m_shown.empty()) {
        return fitted;
    }
    const ChartRanges before = FittedRanges(AllPoints(m_shown, m_shownOthers));
    ChartRanges kept = ShownRanges();
    kept.X = kept.X == before.X ? fitted.X : kept.X;
    kept.Y = kept.Y == before.Y ? fitted.Y : kept.Y;
    return IsInSight(Series.Points, kept) ? kept : fitted;
}

/// Gives the library the chart as it is now.
void ChartView::Load() const {
    m_plot->xAxis->setLabel(QString::fromStdString(AxisX.Title));
    m_plot->yAxis->setLabel(QString::fromStdString(AxisY.Title));
    m_plot->xAxis->grid()->setVisible(AxisX.GridLines);
    m_plot->yAxis->grid()->setVisible(AxisY.GridLines);
    m_plot->xAxis->setTickLabelFont(FontOf(AnnotationFont));
    m_plot->yAxis->setTickLabelFont(FontOf(AnnotationFont));
    m_plot->xAxis->setLabelFont(FontOf(TitleFont));
    m_plot->yAxis->setLabelFont(FontOf(TitleFont));
    m_plot->graph(Line)->setPen(QPen(ColourOf(Series.Drawn), LineWidth));
    m_plot->graph(Steps)->setScatterStyle(
        QCPScatterStyle(QCPScatterStyle::ssDisc, ColourOf(Series.Drawn), MarkerSize));
    LoadOthers();
    ShowLine();
    ShowMarkers();
}

/// Behind the chart's own line, on a layer that has nothing to do with the grid's.
void ChartView::LoadOthers() const {
    while (m_plot->graphCount() > FirstOther + static_cast<int>(Others.size())) {
        m_plot->removeGraph(m_plot->graphCount() - 1);
    }
    for (std::size_t n = 0; n < Others.size(); ++n) {
        const int graph = FirstOther + static_cast<int>(n);
        if (graph == m_plot->graphCount()) {
            m_plot->addGraph()->setLayer(OthersLayer);
        }
        m_plot->graph(graph)->setPen(PenOf(Others[n]));
    }
}

/// What is out of sight is left out: the toolkit paints a line that is far longer than the screen
/// slowly, and its drawings in files can't clip.
void ChartView::ShowLine() const {
    const ChartRanges shown = ShownRanges();
    std::vector<ChartPoint> steps = Series.Points;
    std::erase_if(steps, [&](const ChartPoint& step) { return !Contains(shown, step); });
    SetData(*m_plot->graph(Line), LineInSight(Series.Points, shown), true);
    SetData(*m_plot->graph(Steps), steps, false);
    for (int graph = FirstOther; graph < m_plot->graphCount(); ++graph) {
        const auto n = static_cast<std::size_t>(graph - FirstOther);
        SetData(*m_plot->graph(graph), LineInSight(Others[n].Points, shown), true);
    }
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

ChartRanges ChartView::ShownRanges() const {
    return {RangeOf(*m_plot->xAxis), RangeOf(*m_plot->yAxis)};
}

void ChartView::ShowRanges(const ChartRanges& ranges) const {
    m_plot->xAxis->setRange(ranges.X.Lower, ranges.X.Upper);
    m_plot->yAxis->setRange(ranges.Y.Lower, ranges.Y.Upper);
}

void ChartView::ShowWhole() const {
    if (!m_shown.empty()) {
        ShowRanges(FittedRanges(AllPoints(m_shown, m_shownOthers)));
        m_plot->replot();
    }
}

/// The place below the pointer stays.
void ChartView::ZoomByWheel(const QWheelEvent& event) const {
    if (m_shown.empty()) {
        return;
    }
    const double factor = std::pow(WheelFactor, event.angleDelta().y() / NotchAngle);
    const QRectF area = m_plot->axisRect()->rect();
    const auto zoom = [&](QCPAxis& axis, const AxisRange& fitted, double pixel) {
        const double size = axis.range().size();
        axis.scaleRange(ZoomedSize(size * factor, fitted) / size, axis.pixelToCoord(pixel));
    };
    const auto [x, y] = FittedRanges(AllPoints(m_shown, m_shownOthers));
    zoom(*m_plot->xAxis, x, std::clamp(event.position().x(), area.left(), area.right()));
    zoom(*m_plot->yAxis, y, std::clamp(event.position().y(), area.top(), area.bottom()));
    m_plot->replot(QCustomPlot::rpQueuedReplot);
}

void ChartView::ZoomToBand() const {
    const QRect band = m_band->Area();
    const QRect axes = m_band->Axes();
    const auto zoom = [](QCPAxis& axis, const AxisRange& fitted, int from, int to) {
        const QCPRange range(axis.pixelToCoord(from), axis.pixelToCoord(to));
        const double half = ZoomedSize(range.size(), fitted) / 2;
        axis.setRange(range.center() - half, range.center() + half);
    };
    if (!band.isEmpty() && !m_shown.empty()) {
        const auto [x, y] = FittedRanges(AllPoints(m_shown, m_shownOthers));
        if (band.width() < axes.width()) {
            zoom(*m_plot->xAxis, x, band.left(), band.left() + band.width());
        }
        if (band.height() < axes.height()) {
            zoom(*m_plot->yAxis, y, band.top() + band.height(), band.top());
        }
    }
    m_plot->replot(QCustomPlot::rpQueuedReplot);
}

ChartPoint ChartView::DataAt(double pixelX, double pixelY) const {
    const QRect area = m_plot->axisRect()->rect();
    const bool inX = pixelX >= area.left() && pixelX <= area.right();
    const bool inY = pixelY >= area.top() && pixelY <= area.bottom();
    return {inX && !m_shown.empty() ? m_plot->xAxis->pixelToCoord(pixelX) : Outside,
            inY && !m_shown.empty() ? m_plot->yAxis->pixelToCoord(pixelY) : Outside};
}

void ChartView::Hover(const QPointF& at) {
    std::optional<ChartPoint> nearest;
    double distance = HoverDistance;
    for (const ChartPoint& point : m_shown) {
        const double far = std::hypot(m_plot->xAxis->coordToPixel(point.X) - at.x(),
                                      m_plot->yAxis->coordToPixel(point.Y) - at.y());
        if (far < distance) {
            distance = far;
            nearest = point;
        }
    }
    if (nearest != m_read) {
        m_read = nearest;
        m_plot->replot(QCustomPlot::rpQueuedReplot);
    }
}

/// Right above the point that is read out, or on its other sides where the axes end. A point that
/// is out of sight is not read out.
void ChartView::PlaceReadout() const {
    const bool read = m_read && Contains(ShownRanges(), *m_read);
    m_readout->setVisible(read);
    if (!read) {
        return;
    }
    m_readout->setText(
        QString::fromStdString(FormatNumber(m_read->X, AxisX.Format, NumberSeparators) + ", " +
                               FormatNumber(m_read->Y, AxisY.Format, NumberSeparators)));
    const QPointF size =
        m_readout->bottomRight->pixelPosition() - m_readout->topLeft->pixelPosition();
    const QRectF area = m_plot->axisRect()->rect();
    QPointF corner(m_plot->xAxis->coordToPixel(m_read->X) + ReadoutDistance,
                   m_plot->yAxis->coordToPixel(m_read->Y) - ReadoutDistance - size.y());
    if (corner.x() + size.x() > area.right()) {
        corner.rx() -= 2 * ReadoutDistance + size.x();
    }
    if (corner.y() < area.top()) {
        corner.ry() += 2 * ReadoutDistance + size.y();
    }
    m_readout->position->setCoords(corner);
}

/// The left button draws the rubber band, so it is the middle one that moves the paper.
void ChartView::PanOrHover(QMouseEvent* event) {
    if (!m_pressed || !event->buttons().testFlag(Qt::MiddleButton)) {
        Hover(event->position());
        return;
    }
    const auto moved = [](const QCPAxis& axis, double from, double to) {
        return axis.pixelToCoord(from) - axis.pixelToCoord(to);
    };
    m_plot->xAxis->moveRange(moved(*m_plot->xAxis, m_pressed->x(), event->pos().x()));
    m_plot->yAxis->moveRange(moved(*m_plot->yAxis, m_pressed->y(), event->pos().y()));
    m_pressed = event->pos();
    m_plot->replot(QCustomPlot::rpQueuedReplot);
}

void ChartView::BeginRubberBand(QMouseEvent* event) {
    m_pressed = event->pos();
    const bool left = event->button() == Qt::LeftButton;
    m_plot->setSelectionRectMode(left ? QCP::srmCustom : QCP::srmNone);
}

void ChartView::EndRubberBand(QMouseEvent* event) {
    const bool click = m_pressed && (event->pos() - *m_pressed).manhattanLength() <= ClickDistance;
    m_pressed.reset();
    if (event->button() == Qt::LeftButton && click) {
        m_band->cancel();
        m_clicked(event->position().x() * TwipsPerPixel, event->position().y() * TwipsPerPixel);
    }
}

void ChartView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && m_band->isActive()) {
        m_band->cancel();
        m_pressed.reset(); // what is still to be released is no click
        m_plot->replot(QCustomPlot::rpQueuedReplot);
    } else {
        QWidget::keyPressEvent(event);
    }
}

void ChartView::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    if (m_read) {
        m_read.reset();
        m_plot->replot(QCustomPlot::rpQueuedReplot);
    }
}

QString ChartView::DataText() const {
    QString text = PlainTitle(AxisX) + '\t' + PlainTitle(AxisY);
    for (const ChartSeries& other : m_shownOthers) {
        text += '\t' + QString::fromStdString(other.Name);
    }
    text += '\n';
    std::vector<std::pair<double, QStringList>> rows; // the chart's own points first
    const auto fill = [&rows](const std::vector<ChartPoint>& points, qsizetype column) {
        for (const ChartPoint& point : points) {
            const auto is = [&](const auto& row) {
                return row.first == point.X && row.second.size() <= column;
            };
            auto row = std::find_if(rows.begin(), rows.end(), is);
            if (row == rows.end()) {
                row = rows.insert(rows.end(), {point.X, {}});
            }
            row->second.resize(column);
            row->second << QString::number(point.Y, 'g', 15);
        }
    };
    for (const ChartPoint& point : m_shown) {
        rows.emplace_back(point.X, QStringList(QString::number(point.Y, 'g', 15)));
    }
    for (std::size_t n = 0; n < m_shownOthers.size(); ++n) {
        fill(m_shownOthers[n].Points, static_cast<qsizetype>(n) + 1);
    }
    for (auto& [x, cells] : rows) {
        cells.resize(static_cast<qsizetype>(m_shownOthers.size()) + 1);
        text += QString::number(x, 'g', 15) + '\t' + cells.join('\t') + '\n';
    }
    return text;
}

/// Paints with the chart black on white, the way it is on the screen else, but for the readout of
/// the pointer.
void ChartView::OnWhitePaper(const std::function<void()>& paint) const {
    {
        const QSignalBlocker noReadout(m_plot);
        m_readout->setVisible(false);
        Colour({Qt::white, Qt::black, ColourOf(GridColour)});
        paint();
    }
    Colour(ThemePaper(palette(), ColourOf(GridColour)));
    m_plot->replot(); // at once: the picture has left the axes where they lie on it
}

/// The chart below its caption.
void ChartView::PaintWithCaption(QPainter& painter, const QSize& size) const {
    const QFontMetrics metrics(painter.font());
    const QStringList lines = QString::fromStdString(Caption).split('\n');
    painter.fillRect(QRect({0, 0}, size), Qt::white);
    painter.setPen(Qt::black);
    int bottom = CaptionMargin;
    for (const QString& line : lines) {
        painter.drawText(
            CaptionMargin, bottom + metrics.ascent(),
            metrics.elidedText(line, Qt::ElideRight, size.width() - 2 * CaptionMargin));
        bottom += metrics.height();
    }
    for (const ChartSeries& other : Others) {
        PaintNamedLine(painter, {CaptionMargin, bottom}, PenOf(other),
                       QString::fromStdString(other.Name));
        bottom += metrics.height();
    }
    painter.translate(0, bottom);
    PaintPlot(*m_plot, painter, {size.width(), size.height() - bottom});
}

QImage ChartView::Picture(const QSize& size, double density) const {
    QImage picture;
    OnWhitePaper([&] {
        picture = PictureOf(size, density, [this](QPainter& painter, const QSize& area) {
            PaintWithCaption(painter, area);
        });
    });
    return picture;
}

void ChartView::PaintOnPaper(QPainter& painter, const QSize& size) const {
    OnWhitePaper([&] {
        const ChartRanges shown = ShownRanges();
        Load();
        if (!Series.Points.empty()) {
            ShowRanges(FittedRanges(AllPoints(Series.Points, Others)));
        }
        PaintPlot(*m_plot, painter, size);
        ShowRanges(shown);
    });
}

void ChartView::SaveAs(const QString& path) {
    QByteArray file;
    OnWhitePaper([&] {
        file = PictureFileOf(path, [this](QPainter& painter, const QSize& size) {
            PaintWithCaption(painter, size);
        });
    });
    WriteFile(path, file.isEmpty() ? DataText().toUtf8() : file);
}

void ChartView::ShowMenu(const QPoint& at) {
    ContextMenu menu(this);
    AddChartCommands(menu, this,
                     {[this](const QSize& size, double density) { return Picture(size, density); },
                      [this] { return DataText(); },
                      [this](const QString& path) { SaveAs(path); }});
    menu.AddSeparator();
    menu.Add(tr("Whole Plot"), [this] { ShowWhole(); });
    menu.Run(m_plot->mapToGlobal(at));
}

void ChartView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        Refresh();
    }
}

} // namespace corvanta
