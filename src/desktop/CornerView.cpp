#include "desktop/CornerView.h"

#include "desktop/ContextMenu.h"
#include "desktop/Desktop.h"
#include "desktop/Guard.h"
#include "desktop/QtServices.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPainter>

#include <cmath>

namespace corvanta {

namespace {

constexpr double DegreesPerPixel = 0.4;
constexpr double ZoomPerStep = 1.15; ///< of a notch of the wheel
constexpr double PenWidth = 2;
constexpr int NameMargin = 8;
const QColor NameColour(150, 150, 150);

} // namespace

CornerView::CornerView(Desktop& desktop, QWidget* parent)
    : DrawingView(Qt::black, PenWidth, parent),
      m_desktop(desktop) {}

void CornerView::paintEvent(QPaintEvent* event) {
    DrawingView::paintEvent(event);
    QPainter painter(this);
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    painter.setFont(small);
    painter.setPen(NameColour);
    const QRect whole = rect().adjusted(NameMargin, NameMargin, -NameMargin, -NameMargin);
    const QRect upper(whole.left(), whole.top(), whole.width(), height() / 2 - 2 * NameMargin);
    painter.drawText(upper, Qt::AlignLeft | Qt::AlignBottom, tr("Side"));
    painter.drawText(upper, Qt::AlignRight | Qt::AlignBottom, tr("Front"));
    painter.drawText(whole, Qt::AlignLeft | Qt::AlignBottom, tr("Top"));
    painter.drawText(whole, Qt::AlignRight | Qt::AlignBottom, tr("Free"));
}

void CornerView::SaveAs(const QString& path) {
    const bool drawing = path.endsWith(".svg", Qt::CaseInsensitive);
    WriteFile(path, drawing ? SvgOf(size(), [this](QPainter& painter) { render(&painter); })
                            : PngOf(grab().toImage()));
}

void CornerView::contextMenuEvent(QContextMenuEvent* event) {
    ContextMenu menu(this);
    menu.Add(tr("Copy Picture"), [this] { QApplication::clipboard()->setPixmap(grab()); });
    menu.Add(tr("Save As..."), [this] {
        AskAndSave(this, tr("Save Drawing"), tr("PNG picture (*.png);;SVG drawing (*.svg)"),
                   [this](const QString& path) { SaveAs(path); });
    });
    menu.AddSeparator();
    menu.Add(tr("Standard View"), [this] { ShowStandardView(); });
    menu.Run(event->globalPos());
}

bool CornerView::InFreeView(const QPointF& at) const {
    return at.x() > width() / 2.0 && at.y() > height() / 2.0;
}

Point2D CornerView::InScale(const QPointF& way) {
    return {way.x() * Surface().ScaleWidth() / width(),
            way.y() * Surface().ScaleHeight() / height()};
}

void CornerView::DrawAgain() {
    m_desktop.Handle([this] { m_desktop.Main().DrawAgain(); });
}

void CornerView::resizeEvent(QResizeEvent* event) {
    DrawingView::resizeEvent(event);
    // The size of its place comes just before the view is visible.
    if (m_desktop.Main().picResults.Visible && m_desktop.Main().picResults.Inverted) {
        Guarded(m_desktop.Program().MessageService(), [this] { m_desktop.Main().DrawAgain(); });
    }
}

void CornerView::mousePressEvent(QMouseEvent* event) {
    const bool drags = event->button() == Qt::LeftButton || event->button() == Qt::MiddleButton;
    m_dragging = drags && InFreeView(event->position());
    m_last = event->position();
}

void CornerView::mouseMoveEvent(QMouseEvent* event) {
    if (!m_dragging || !(event->buttons() & (Qt::LeftButton | Qt::MiddleButton))) {
        return;
    }
    const QPointF moved = event->position() - m_last;
    m_last = event->position();
    CWireframe& wireframe = m_desktop.Main().Wireframe;
    if (event->buttons().testFlag(Qt::MiddleButton)) {
        wireframe.MoveFreeView(InScale(moved));
    } else {
        FreeView view = wireframe.CurrentFreeView();
        view.Turn += moved.x() * DegreesPerPixel;
        view.Tilt += moved.y() * DegreesPerPixel;
        wireframe.SetFreeView(view);
    }
    DrawAgain();
}

void CornerView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && InFreeView(event->position())) {
        ShowStandardView();
    }
}

void CornerView::ShowStandardView() {
    m_desktop.Main().Wireframe.SetFreeView({});
    DrawAgain();
}

void CornerView::wheelEvent(QWheelEvent* event) {
    if (!InFreeView(event->position())) {
        return;
    }
    constexpr double AngleOfStep = 120;
    m_desktop.Main().Wireframe.ZoomFreeView(
        std::pow(ZoomPerStep, event->angleDelta().y() / AngleOfStep), InScale(event->position()));
    DrawAgain();
}

} // namespace corvanta
