#include "desktop/ChartSheetView.h"

#include "desktop/ChartSheetPainters.h"
#include "desktop/ContextMenu.h"
#include "desktop/QtServices.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>

namespace corvanta {

namespace {

constexpr QColor LightGrid(222, 224, 228);
constexpr int LabelDistanceX = 50; ///< between numbers along the axes, pixels
constexpr int LabelDistanceY = 30;
constexpr int HeightForTitle = 150; ///< of a chart: a smaller one leaves out what its head says
constexpr QSize SizeForLegend(560, 360);
constexpr int BarWidth = 12;
constexpr double LabelScale = 0.9; ///< of the font of the widget

/// The colours of a map with hard borders between them. The library paints a scale of so many
/// levels, the first and the last half as high as the others: with enough of them none can tell.
QCPColorGradient StepsOf(const SheetMap& map) {
    constexpr int LevelsInStep = 24;
    constexpr double Hair = 1e-6; // of the scale
    const std::vector<Colour> colours = ColoursOf(map);
    QCPColorGradient gradient;
    gradient.clearColorStops();
    gradient.setLevelCount(map.Levels.Steps * LevelsInStep);
    for (int n = 0; n < map.Levels.Steps; ++n) {
        const QColor colour = ColourOf(colours[static_cast<std::size_t>(n)]);
        gradient.setColorStopAt(static_cast<double>(n) / map.Levels.Steps + Hair, colour);
        gradient.setColorStopAt(static_cast<double>(n + 1) / map.Levels.Steps - Hair, colour);
    }
    return gradient;
}

/// Whether two sheets differ in no more than what the overlay shows.
bool DifferInOverlayAlone(const ChartSheet& a, const ChartSheet& b) {
    const auto map = [](const ChartSheet& sheet) {
        std::optional<SheetMap> plain = sheet.Map;
        if (plain) {
            plain->Cross.reset();
        }
        return plain;
    };
    return a.Title == b.Title && a.Mark == b.Mark && a.MarkText == b.MarkText &&
           a.AxisX == b.AxisX && a.AxisY == b.AxisY && a.ToScale == b.ToScale &&
           a.Bands == b.Bands && a.Curves == b.Curves && map(a) == map(b);
}

} // namespace

ChartSheetView::ChartSheetView(Events events, QWidget* parent)
    : QWidget(parent),
      m_events(std::move(events)),
      m_look(std::make_unique<SheetLook>()),
      m_plot(new QCustomPlot(this)),
      m_body(new QCPLayoutGrid),
      m_surface(new SheetMapSurface(m_plot, *m_look)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(1, 1, 1, 1); // for the frame of the focus
    layout->addWidget(m_plot);
    m_plot->setFocusProxy(this);
    m_plot->setInteractions({});
    m_plot->setContextMenuPolicy(Qt::CustomContextMenu);
    QCPLayoutGrid* const page = m_plot->plotLayout();
    QCPLayoutElement* const axes = page->takeAt(0);
    page->simplify();
    page->setRowSpacing(0);
    m_body->setColumnSpacing(4);
    page->addElement(0, 0, new SheetHead(m_plot, *m_look));
    page->addElement(1, 0, m_body);
    m_body->addElement(0, 0, axes);
    page->addElement(2, 0, new SheetLegend(m_plot, *m_look));
    page->setRowStretchFactor(0, 0.001); // both as high as they need to be
    page->setRowStretchFactor(2, 0.001);
    new SheetLines(m_plot, *m_look);
    new SheetOverlay(m_plot, *m_look);
    SetUpAxes();
    ConnectPointer();
    SetColours();
}

ChartSheetView::~ChartSheetView() = default;

void ChartSheetView::SetUpAxes() {
    m_plot->axisRect()->setupFullAxesBox();
    m_plot->axisRect()->setMinimumMargins({4, 4, 10, 2});
    for (QCPAxis* frame : {m_plot->xAxis2, m_plot->yAxis2}) {
        frame->setTicks(false);
    }
    for (QCPAxis* axis : {m_plot->xAxis, m_plot->yAxis}) {
        axis->setTicker(QSharedPointer<EvenTicker>::create(*m_look));
        axis->setTickLength(0, 3);
        axis->setTickLabelPadding(3);
        axis->setLabelPadding(1);
        axis->grid()->setAntialiased(false);
        axis->grid()->setAntialiasedZeroLine(false);
    }
    m_plot->setNotAntialiasedElements(QCP::aeAxes | QCP::aeGrid | QCP::aeZeroLine);
}

void ChartSheetView::ConnectPointer() {
    connect(m_plot, &QCustomPlot::mousePress, this, [this](QMouseEvent* event) {
        if (event->button() == Qt::LeftButton && IsOnAxes(event->position())) {
            m_held = true;
            Hover(std::nullopt);
            PressOrDrag(event->position(), true);
        }
    });
    connect(m_plot, &QCustomPlot::mouseMove, this, [this](QMouseEvent* event) {
        if (m_held) {
            PressOrDrag(event->position(), true);
        } else {
            Hover(IsOnAxes(event->position()) ? std::optional(PlaceAt(event->position()))
                                              : std::nullopt);
        }
    });
    connect(m_plot, &QCustomPlot::mouseRelease, this, [this](QMouseEvent* event) {
        if (event->button() == Qt::LeftButton && m_held) {
            m_held = false;
            PressOrDrag(event->position(), false);
        }
    });
    connect(m_plot, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& at) { ShowMenu(m_plot->mapToGlobal(at)); });
}

void ChartSheetView::SetColours() {
    if (m_look->IsForPicture) {
        m_look->Paper = {Qt::white, Qt::black, LightGrid};
    } else {
        m_look->Paper = ThemePaper(palette(), LightGrid);
    }
    const ChartPaper& paper = m_look->Paper;
    m_look->Accent = palette().color(QPalette::Highlight);
    SetPaper(*m_plot, paper);
    QFont font = this->font();
    if (font.pointSizeF() > 0) {
        font.setPointSizeF(font.pointSizeF() * LabelScale);
    }
    m_plot->setFont(font);
    QList<QCPAxis*> axes{m_plot->xAxis, m_plot->yAxis, m_plot->xAxis2, m_plot->yAxis2};
    if (m_scale != nullptr) {
        axes << m_scale->axis()->axisRect()->axes();
    }
    const QPen frame(paper.IsDark() ? paper.Grid.lighter(170) : paper.Grid.darker(150));
    for (QCPAxis* axis : axes) {
        axis->grid()->setZeroLinePen(QPen(axis->grid()->zeroLinePen().color(), 1));
        axis->setBasePen(frame);
        axis->setTickPen(frame);
        axis->setSubTickPen(frame);
        axis->setTickLabelColor(paper.Ink);
        axis->setLabelColor(paper.Ink);
        axis->setTickLabelFont(font);
        axis->setLabelFont(font);
    }
}

void ChartSheetView::Show(const ChartSheet& sheet) {
    const bool overlayAlone = !m_late && DifferInOverlayAlone(m_look->Sheet, sheet);
    m_look->Sheet = sheet;
    if (!isVisible()) {
        m_late = true;
    } else if (overlayAlone) {
        m_plot->layer("overlay")->replot();
    } else {
        LoadSheet();
        Replot();
    }
}

void ChartSheetView::Replot() {
    m_late = false;
    m_plot->replot(QCustomPlot::rpQueuedRefresh);
}

/// Gives the library the sheet as it is now.
void ChartSheetView::LoadSheet() {
    const ChartSheet& sheet = m_look->Sheet;
    m_plot->xAxis->setRange(sheet.AxisX.Shown.Lower, sheet.AxisX.Shown.Upper);
    m_plot->yAxis->setRange(sheet.AxisY.Shown.Lower, sheet.AxisY.Shown.Upper);
    LoadMap();
    LoadSize(m_look->IsForPicture ? m_plot->viewport().size() : size());
}

void ChartSheetView::LoadMap() {
    const auto& map = m_look->Sheet.Map;
    m_surface->Forget();
    for (QCPAxis* axis : {m_plot->xAxis, m_plot->yAxis}) {
        axis->grid()->setVisible(!map);
    }
    const bool hasScale = map && map->Kinds.empty();
    if (hasScale != (m_scale != nullptr)) {
        if (hasScale) {
            m_scale = new QCPColorScale(m_plot);
            m_scale->setBarWidth(BarWidth);
            m_scale->axis()->setTicker(QSharedPointer<EvenTicker>::create(*m_look));
            m_scale->axis()->setTickLength(0, 3);
            m_scale->setMarginGroup(QCP::msTop | QCP::msBottom, new QCPMarginGroup(m_plot));
            m_plot->axisRect()->setMarginGroup(QCP::msTop | QCP::msBottom,
                                               m_scale->marginGroup(QCP::msTop));
            m_body->addElement(0, 1, m_scale);
            SetColours();
        } else {
            QCPMarginGroup* const group = m_scale->marginGroup(QCP::msTop);
            m_body->remove(m_scale);
            m_body->simplify();
            delete group;
            m_scale = nullptr;
        }
    }
    if (!hasScale) {
        return;
    }
    m_scale->setGradient(StepsOf(*map));
    m_scale->setDataRange({map->Levels.Low, map->Levels.High});
    m_scale->setLabel(QString::fromStdString(map->BarTitle));
}

/// What a chart of a size has room for.
void ChartSheetView::LoadSize(const QSize& size) {
    const ChartSheet& sheet = m_look->Sheet;
    const bool roomy = size.height() >= HeightForTitle;
    const bool titled = sheet.AxisY.Title != sheet.Title; // else the head says it
    m_plot->xAxis->setLabel(roomy ? QString::fromStdString(sheet.AxisX.Title) : QString());
    m_plot->yAxis->setLabel(roomy && titled ? QString::fromStdString(sheet.AxisY.Title)
                                            : QString());
    m_plot->xAxis->ticker()->setTickCount(std::clamp(size.width() / LabelDistanceX, 2, 12));
    m_plot->yAxis->ticker()->setTickCount(std::clamp(size.height() / LabelDistanceY, 2, 12));
    if (m_scale != nullptr) {
        m_scale->axis()->ticker()->setTickCount(m_plot->yAxis->ticker()->tickCount());
    }
    m_look->HasLegend = m_look->IsForPicture || (size.width() >= SizeForLegend.width() &&
                                                 size.height() >= SizeForLegend.height());
    KeepScale();
}

/// Has the axis with more room for its units reach farther, so that both are of one scale.
void ChartSheetView::KeepScale() {
    if (!m_look->Sheet.ToScale) {
        return;
    }
    const AxisRange& across = m_look->Sheet.AxisX.Shown;
    const AxisRange& up = m_look->Sheet.AxisY.Shown;
    for (int pass = 0; pass < 2; ++pass) { // other numbers along the axes leave them other room
        for (const auto phase : {QCPLayoutElement::upPreparation, QCPLayoutElement::upMargins,
                                 QCPLayoutElement::upLayout}) {
            m_plot->plotLayout()->update(phase);
        }
        const QSize room = m_plot->axisRect()->size().expandedTo({1, 1});
        const double unitsPerPixel = std::max((across.Upper - across.Lower) / room.width(),
                                              (up.Upper - up.Lower) / room.height());
        m_plot->xAxis->setRange((across.Lower + across.Upper) / 2, unitsPerPixel * room.width(),
                                Qt::AlignCenter);
        m_plot->yAxis->setRange((up.Lower + up.Upper) / 2, unitsPerPixel * room.height(),
                                Qt::AlignCenter);
    }
}

bool ChartSheetView::IsOnAxes(const QPointF& at) const {
    return m_plot->axisRect()->rect().contains(at.toPoint());
}

ChartPoint ChartSheetView::PlaceAt(const QPointF& at) const {
    const auto within = [](const QCPAxis& axis, double pixel) {
        return std::clamp(axis.pixelToCoord(pixel), axis.range().lower, axis.range().upper);
    };
    return {within(*m_plot->xAxis, at.x()), within(*m_plot->yAxis, at.y())};
}

void ChartSheetView::PressOrDrag(const QPointF& at, bool held) {
    if (m_events.TravelMoved) {
        m_events.TravelMoved(PlaceAt(at), held);
    }
}

void ChartSheetView::Hover(std::optional<ChartPoint> place) {
    if (place != m_hovered) {
        m_hovered = place;
        if (m_events.Hovered) {
            m_events.Hovered(place);
        }
    }
}

void ChartSheetView::OnWhitePaper(const PaintOnArea& paint, QPainter& painter, const QSize& size) {
    const QRect viewport = m_plot->viewport();
    m_look->IsForPicture = true;
    m_plot->setViewport(QRect({0, 0}, size));
    SetColours();
    LoadSheet();
    paint(painter, size);
    m_look->IsForPicture = false;
    m_plot->setViewport(viewport);
    SetColours();
    LoadSheet();
    if (isVisible()) {
        Replot();
    } else {
        m_late = true;
    }
}

QImage ChartSheetView::Picture(const QSize& size, double density) {
    return PictureOf(size, density,
                     [this](QPainter& painter, const QSize& area) { PaintOnPaper(painter, area); });
}

void ChartSheetView::PaintOnPaper(QPainter& painter, const QSize& size) {
    OnWhitePaper([this](QPainter& paper, const QSize& whole) { PaintPlot(*m_plot, paper, whole); },
                 painter, size);
}

void PaintSheet(const ChartSheet& sheet, QPainter& painter, const QSize& size) {
    ChartSheetView view({});
    view.Show(sheet);
    view.PaintOnPaper(painter, size);
}

void ChartSheetView::SaveAs(const QString& path) {
    const QByteArray file = PictureFileOf(
        path, [this](QPainter& painter, const QSize& area) { PaintOnPaper(painter, area); });
    WriteFile(path, file.isEmpty() ? QByteArray::fromStdString(DataText(m_look->Sheet)) : file);
}

void ChartSheetView::ShowMenu(const QPoint& at) {
    Hover(std::nullopt); // nobody tells where the pointer goes while the menu is open
    ContextMenu menu(this);
    if (m_events.FillMenu) {
        m_events.FillMenu(menu);
        menu.AddSeparator();
    }
    AddChartCommands(menu, this,
                     {[this](const QSize& size, double density) { return Picture(size, density); },
                      [this] { return QString::fromStdString(DataText(m_look->Sheet)); },
                      [this](const QString& path) { SaveAs(path); }});
    menu.Run(at);
}

void ChartSheetView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
        SetColours();
        if (isVisible()) {
            Replot();
        }
    }
}

/// The menu by its key; the plot lets nothing of the mouse through.
void ChartSheetView::contextMenuEvent(QContextMenuEvent* event) {
    ShowMenu(event->globalPos());
}

void ChartSheetView::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    update();
}

void ChartSheetView::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    update();
}

void ChartSheetView::paintEvent(QPaintEvent* event) {
    QWidget::paintEvent(event);
    if (hasFocus()) {
        QPainter painter(this);
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void ChartSheetView::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    Hover(std::nullopt);
}

void ChartSheetView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    LoadSize(size());
    if (isVisible()) {
        Replot(); // the layout has given the plot its new size before it knew what has room in it
    }
}

void ChartSheetView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (m_late) {
        LoadSheet();
        Replot();
    }
}

} // namespace corvanta
