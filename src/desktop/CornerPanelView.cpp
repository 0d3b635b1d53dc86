#include "desktop/CornerPanelView.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

namespace corvanta {

namespace {

constexpr double PenWidth = 1.6;
constexpr double DegreesPerPixel = 0.4;
constexpr double DegreesPerKey = 5;
constexpr double ZoomPerStep = 1.15; ///< of a notch of the wheel, or a key

Point2D PlaceOf(const QPointF& at) {
    return {at.x(), at.y()};
}

struct SideChoice {
    ViewSide Side;
    int Key = 0;
    const char* Name = "";
    const char* Title = "";
    const char* Tip = "";
};

constexpr std::array<SideChoice, 4> Sides{{
    {FrontSide, Qt::Key_1, "cmdFrontView", "Front", "From the front (1)"},
    {SideSide, Qt::Key_2, "cmdSideView", "Side", "From the side (2)"},
    {TopSide, Qt::Key_3, "cmdTopView", "Top", "From above (3)"},
    {FreeSide, Qt::Key_0, "cmdFreeView", "Free",
     "From behind and above; drag the view to turn it (0)"},
}};

std::optional<CornerAxis> AxisOfKey(int key) {
    switch (key) {
    case Qt::Key_X:
        return caX;
    case Qt::Key_Y:
        return caY;
    case Qt::Key_Z:
        return caZ;
    default:
        return std::nullopt;
    }
}

} // namespace

CornerCanvas::CornerCanvas(CornerPanel& panel, Handler handle, QWidget* parent)
    : DrawingView(Qt::black, PenWidth, parent),
      m_panel(panel),
      m_handle(std::move(handle)) {
    setObjectName("picCorner");
    setAccessibleName(tr("Corner"));
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
}

void CornerCanvas::Do(const std::function<void()>& event) {
    Look([&] { m_handle(event); });
}

void CornerCanvas::Look(const std::function<void()>& change) {
    change();
    ShowCursor();
    update();
    emit Changed();
}

void CornerCanvas::paintEvent(QPaintEvent* event) {
    m_panel.Draw(Surface());
    DrawingView::paintEvent(event);
    if (hasFocus()) {
        QPainter painter(this);
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void CornerCanvas::resizeEvent(QResizeEvent* event) {
    DrawingView::resizeEvent(event);
    m_panel.Resize(width(), height());
}

/// A panel that is taken away in the midst of a drag leaves nothing half done.
void CornerCanvas::hideEvent(QHideEvent* event) {
    if (m_panel.IsHeld()) {
        m_hand = Hand::None;
        Do([this] { m_panel.TakeBack(); });
    }
    DrawingView::hideEvent(event);
}

void CornerCanvas::leaveEvent(QEvent* event) {
    m_newest.reset();
    Look([this] { m_panel.PointAt(std::nullopt); });
    DrawingView::leaveEvent(event);
}

void CornerCanvas::focusOutEvent(QFocusEvent* event) {
    m_rule = {};
    DrawingView::focusOutEvent(event);
    update();
}

void CornerCanvas::mousePressEvent(QMouseEvent* event) {
    const bool left = event->button() == Qt::LeftButton;
    if (m_hand != Hand::None || (!left && event->button() != Qt::MiddleButton)) {
        return;
    }
    m_last = event->position();
    m_newest.reset();
    m_rule.WholeSteps = event->modifiers().testFlag(Qt::ShiftModifier);
    bool taken = false;
    if (left) {
        Do([&] { taken = m_panel.Press(PlaceOf(m_last)); });
    }
    const bool moves = !left || m_rule.WholeSteps;
    m_hand = taken ? Hand::Handle : moves ? Hand::Move : Hand::Turn;
    ShowCursor();
}

/// Only the newest place counts: while the window is busy with one, those between are passed over.
void CornerCanvas::mouseMoveEvent(QMouseEvent* event) {
    m_newest = event->position();
    m_rule.WholeSteps = event->modifiers().testFlag(Qt::ShiftModifier);
    AskForWork();
}

void CornerCanvas::AskForWork() {
    if (!m_asked) {
        m_asked = true;
        QTimer::singleShot(0, this, [this] {
            m_asked = false;
            Work();
        });
    }
}

void CornerCanvas::Work() {
    if (!m_newest) {
        return;
    }
    const QPointF at = *std::exchange(m_newest, std::nullopt);
    const QPointF way = at - m_last;
    if (m_hand != Hand::None && m_hand != Hand::Handle) {
        m_last = at;
    }
    switch (m_hand) {
    case Hand::Handle:
        m_last = at;
        Do([&] { m_panel.DragTo(PlaceOf(at), m_rule); });
        break;
    case Hand::Turn:
        Look([&] { m_panel.TurnBy(-way.x() * DegreesPerPixel, -way.y() * DegreesPerPixel); });
        break;
    case Hand::Move:
        Look([&] { m_panel.MoveBy(PlaceOf(way)); });
        break;
    case Hand::None:
        Hover(at);
        break;
    }
}

void CornerCanvas::Hover(const QPointF& at) {
    const std::optional<PointNumber> before = m_panel.Hovered();
    m_panel.PointAt(PlaceOf(at));
    if (m_panel.Hovered() != before) {
        ShowCursor();
        update();
    }
}

/// What is held has changed under a hand that stands still.
void CornerCanvas::DragAgain() {
    if (m_panel.IsHeld()) {
        m_newest = m_newest.value_or(m_last);
        AskForWork();
    }
}

void CornerCanvas::mouseReleaseEvent(QMouseEvent* event) {
    if (event->buttons() != Qt::NoButton || m_hand == Hand::None) {
        return;
    }
    m_newest = event->position();
    Work();
    m_hand = Hand::None;
    if (m_panel.IsHeld()) {
        Do([this] { m_panel.Release(); });
    }
    Hover(event->position());
    ShowCursor();
}

void CornerCanvas::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && !m_panel.HandleAt(PlaceOf(event->position()))) {
        Look([this] { m_panel.Fit(); });
    } else {
        mousePressEvent(event);
    }
}

void CornerCanvas::wheelEvent(QWheelEvent* event) {
    constexpr double AngleOfStep = 120;
    Look([&] {
        m_panel.Zoom(std::pow(ZoomPerStep, event->angleDelta().y() / AngleOfStep),
                     PlaceOf(event->position()));
    });
    event->accept();
}

/// Keys that mean something here go before shortcuts of the window.
bool CornerCanvas::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        auto* key = static_cast<QKeyEvent*>(event);
        const bool plain = !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
        if (plain && IsOwnKey(key->key())) {
            event->accept();
            return true;
        }
    }
    return DrawingView::event(event);
}

bool CornerCanvas::IsOwnKey(int key) const {
    if (m_panel.IsHeld()) {
        return key == Qt::Key_Escape || AxisOfKey(key);
    }
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Plus:
    case Qt::Key_Equal:
    case Qt::Key_Minus:
    case Qt::Key_F:
        return true;
    default:
        return std::any_of(Sides.begin(), Sides.end(),
                           [key](const SideChoice& choice) { return choice.Key == key; });
    }
}

void CornerCanvas::keyPressEvent(QKeyEvent* event) {
    if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) {
        DrawingView::keyPressEvent(event);
        return;
    }
    if (const std::optional<CornerAxis> axis = AxisOfKey(event->key())) {
        if (!event->isAutoRepeat()) {
            m_rule.Along = axis; // also before the button goes down
            DragAgain();
        }
    } else if (event->key() == Qt::Key_Shift) {
        m_rule.WholeSteps = true;
        DragAgain();
    } else if (event->key() == Qt::Key_Escape && m_panel.IsHeld()) {
        m_newest.reset();
        m_hand = Hand::None;
        Do([this] { m_panel.TakeBack(); });
    } else if (!DoViewKey(event->key())) {
        DrawingView::keyPressEvent(event);
    }
}

void CornerCanvas::keyReleaseEvent(QKeyEvent* event) {
    if (event->isAutoRepeat()) {
        return;
    }
    if (event->key() == Qt::Key_Shift) {
        m_rule.WholeSteps = false;
        DragAgain();
    } else if (m_rule.Along && AxisOfKey(event->key()) == m_rule.Along) {
        m_rule.Along.reset();
        DragAgain();
    } else {
        DrawingView::keyReleaseEvent(event);
    }
}

bool CornerCanvas::DoViewKey(int key) {
    if (!IsOwnKey(key) || m_panel.IsHeld()) {
        return false;
    }
    const Point2D middle{width() / 2.0, height() / 2.0};
    Look([&] {
        switch (key) {
        case Qt::Key_Left:
            m_panel.TurnBy(DegreesPerKey, 0);
            break;
        case Qt::Key_Right:
            m_panel.TurnBy(-DegreesPerKey, 0);
            break;
        case Qt::Key_Up:
            m_panel.TurnBy(0, DegreesPerKey);
            break;
        case Qt::Key_Down:
            m_panel.TurnBy(0, -DegreesPerKey);
            break;
        case Qt::Key_Plus:
        case Qt::Key_Equal:
            m_panel.Zoom(ZoomPerStep, middle);
            break;
        case Qt::Key_Minus:
            m_panel.Zoom(1 / ZoomPerStep, middle);
            break;
        case Qt::Key_F:
            m_panel.Fit();
            break;
        default:
            for (const SideChoice& choice : Sides) {
                if (choice.Key == key) {
                    m_panel.LookFrom(choice.Side);
                }
            }
            break;
        }
    });
    return true;
}

void CornerCanvas::ShowCursor() {
    Qt::CursorShape shape = m_panel.Hovered() ? Qt::OpenHandCursor : Qt::ArrowCursor;
    if (m_hand == Hand::Handle) {
        shape = Qt::ClosedHandCursor;
    } else if (m_hand != Hand::None) {
        shape = Qt::SizeAllCursor;
    }
    if (cursor().shape() != shape) {
        setCursor(shape);
    }
}

CornerPanelView::CornerPanelView(CornerPanel& panel, CornerCanvas::Handler handle, QWidget* parent)
    : QWidget(parent),
      m_panel(panel),
      m_canvas(new CornerCanvas(panel, std::move(handle), this)) {
    auto* buttons = new QHBoxLayout;
    buttons->setContentsMargins(0, 0, 0, 0);
    buttons->setSpacing(2);
    const auto add = [&](const char* name, const char* title, const char* tip) {
        auto* button = new QToolButton(this);
        button->setObjectName(name);
        button->setText(tr(title));
        button->setToolTip(tr(tip));
        button->setAutoRaise(true);
        buttons->addWidget(button);
        return button;
    };
    for (std::size_t n = 0; n < Sides.size(); ++n) {
        const SideChoice& choice = Sides.at(n);
        QToolButton* button = m_sides.at(n) = add(choice.Name, choice.Title, choice.Tip);
        button->setCheckable(true);
        connect(button, &QToolButton::clicked, this,
                [this, &choice] { m_canvas->Look([&] { m_panel.LookFrom(choice.Side); }); });
    }
    buttons->addStretch(1);
    connect(add("cmdFitView", "Fit", "Fit the corner into the view (F, or a double-click)"),
            &QToolButton::clicked, this, [this] { m_canvas->Look([this] { m_panel.Fit(); }); });
    connect(m_canvas, &CornerCanvas::Changed, this, &CornerPanelView::ShowSide);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addLayout(buttons);
    layout->addWidget(m_canvas, 1);
    ShowSide();
}

/// The drawing goes first: it tells of its end, and the buttons are still there then.
CornerPanelView::~CornerPanelView() {
    delete m_canvas;
}

void CornerPanelView::Refresh() {
    ShowSide();
    m_canvas->update();
}

void CornerPanelView::ShowSide() {
    for (std::size_t n = 0; n < Sides.size(); ++n) {
        m_sides.at(n)->setChecked(m_panel.Side() == Sides.at(n).Side);
    }
}

} // namespace corvanta
