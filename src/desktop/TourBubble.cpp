#include "desktop/TourBubble.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace corvanta {

namespace {

constexpr int Width = 330;
constexpr int Tip = 12; ///< how far the tip stands out
constexpr int Inside = 12;
constexpr int OutlineWidth = 2;
constexpr int Rounding = 6;

/// The edge of a part. All but the edge is cut out of it, so that it covers nothing.
class PartOutline final : public QWidget {
  public:
    explicit PartOutline(QWidget* window) : QWidget(window) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setAutoFillBackground(true);
        setBackgroundRole(QPalette::Highlight);
        hide();
    }

  protected:
    void resizeEvent(QResizeEvent* /*event*/) override {
        setMask(QRegion(rect()) -
                QRegion(rect().adjusted(OutlineWidth, OutlineWidth, -OutlineWidth, -OutlineWidth)));
    }
};

} // namespace

TourBubble::TourBubble(Binder& binder, CWorkbenchTour& tour, QWidget* window)
    : QWidget(window),
      m_binder(binder),
      m_tour(tour),
      m_outline(new PartOutline(window)),
      m_title(new QLabel(this)),
      m_text(new QLabel(this)) {
    setObjectName("panTour");
    setFixedWidth(Width);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(Tip + Inside, Tip + Inside, Tip + Inside, Tip + Inside);
    QFont bold = font();
    bold.setBold(true);
    m_title->setFont(bold);
    auto* count = new QLabel(this);
    binder.OnShow(
        [count, &tour] { SetTextOnce(count, QString::fromStdString(tour.labCount.Caption)); });
    auto* head = new QHBoxLayout;
    head->addWidget(m_title, 1);
    head->addWidget(count);
    layout->addLayout(head);
    m_text->setWordWrap(true);
    layout->addWidget(m_text);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(Button(tour.cmdSkip, "cmdTourSkip", [&tour] { tour.cmdSkip_Click(); }));
    buttons->addStretch(1);
    buttons->addWidget(Button(tour.cmdBack, "cmdTourBack", [&tour] { tour.cmdBack_Click(); }));
    m_next = Button(tour.cmdNext, "cmdTourNext", [&tour] { tour.cmdNext_Click(); });
    buttons->addWidget(m_next);
    layout->addLayout(buttons);
    hide();
}

QPushButton* TourBubble::Button(const Control& control, const char* name, Binder::Event clicked) {
    auto* button = new QPushButton(this);
    button->setObjectName(name);
    m_binder.Bind(button, control, std::move(clicked));
    return button;
}

void TourBubble::Refresh(QWidget* part, bool visible) {
    const bool shown = visible && m_tour.IsOpen();
    if (!shown) {
        if (m_before && isAncestorOf(parentWidget()->focusWidget())) {
            m_before->setFocus();
        }
        hide();
        m_outline->hide();
        Follow(nullptr);
        return;
    }
    const bool appears = isHidden();
    if (part == m_part && !appears) {
        return;
    }
    const TourStep& step = m_tour.Step();
    SetTextOnce(m_title, QString::fromUtf8(step.Title.data(), qsizetype(step.Title.size())));
    SetTextOnce(m_text, QString::fromUtf8(step.Text.data(), qsizetype(step.Text.size())));
    Follow(part);
    Place();
    m_outline->show();
    m_outline->raise();
    show();
    raise();
    if (appears) {
        m_before = parentWidget()->focusWidget();
        m_next->setFocus();
    }
}

void TourBubble::Follow(QWidget* part) {
    const auto watch = [this](QWidget* from, auto change) { // what moves it may be around it
        for (QWidget* widget = from; widget != nullptr && widget != parentWidget();
             widget = widget->parentWidget()) {
            change(widget);
        }
    };
    watch(m_part, [this](QWidget* widget) { widget->removeEventFilter(this); });
    m_part = part;
    watch(m_part, [this](QWidget* widget) { widget->installEventFilter(this); });
}

/// Beside the part where there is room, or above it; where there is none, upon it.
void TourBubble::Place() {
    const QRect around = parentWidget()->rect();
    const QRect part(m_part->mapTo(parentWidget(), QPoint()), m_part->size());
    m_outline->setGeometry(part);
    const int height = layout()->totalHeightForWidth(Width);
    resize(Width, height);
    QPoint at = part.center() - rect().center();
    m_side = Side::None;
    if (part.right() + Width <= around.right()) {
        m_side = Side::Right;
        at.setX(part.right() + 1);
    } else if (part.left() >= Width) {
        m_side = Side::Left;
        at.setX(part.left() - Width);
    } else if (part.top() >= height) {
        m_side = Side::Above;
        at.setY(part.top() - height);
    }
    at.setX(std::clamp(at.x(), 0, std::max(0, around.width() - Width)));
    at.setY(std::clamp(at.y(), 0, std::max(0, around.height() - height)));
    m_tip = m_side == Side::Above ? part.center().x() - at.x() : part.center().y() - at.y();
    move(at);
    update();
}

void TourBubble::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(rect()).adjusted(Tip, Tip, -Tip, -Tip);
    QPainterPath shape;
    shape.addRoundedRect(frame, Rounding, Rounding);
    const auto tip = [&](QPointF end, QPointF side) { // `side` from the middle of its foot
        const QPointF foot = end + QPointF(end.x() < frame.left()    ? Tip
                                           : end.x() > frame.right() ? -Tip
                                                                     : 0,
                                           end.y() > frame.bottom() ? -Tip : 0);
        QPainterPath path;
        path.addPolygon(QPolygonF({end, foot + side, foot - side, end}));
        shape = shape.united(path);
    };
    constexpr double Half = Tip * 0.8;
    const double across = std::clamp(double(m_tip), Tip + 2 * Half, height() - Tip - 2 * Half);
    const double along = std::clamp(double(m_tip), Tip + 2 * Half, width() - Tip - 2 * Half);
    if (m_side == Side::Right) {
        tip({1, across}, {0, Half});
    } else if (m_side == Side::Left) {
        tip({width() - 1.0, across}, {0, Half});
    } else if (m_side == Side::Above) {
        tip({along, height() - 1.0}, {Half, 0});
    }
    painter.setPen(QPen(palette().color(QPalette::Highlight), OutlineWidth));
    painter.setBrush(palette().base());
    painter.drawPath(shape);
}

void TourBubble::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        m_binder.Run([this] { m_tour.cmdSkip_Click(); });
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        auto* button = qobject_cast<QPushButton*>(focusWidget());
        (button == nullptr ? m_next : button)->click();
    } else {
        QWidget::keyPressEvent(event);
    }
}

bool TourBubble::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (m_part && (type == QEvent::Resize || type == QEvent::Move)) {
        Place();
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace corvanta
