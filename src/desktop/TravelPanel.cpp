#include "desktop/TravelPanel.h"

#include "desktop/Desktop.h"
#include "desktop/NumberField.h"

#include <QGridLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QSlider>
#include <QToolButton>

#include <cmath>

namespace corvanta {

namespace {

constexpr int FrameTime = 25; ///< of playing, ms
constexpr double Mark = 5;    ///< radius of the place in the pad, pixels

double Share(const TravelSlider& travel, int value) {
    return travel.Last > 0 ? double(value) / travel.Last : 0.5;
}

} // namespace

TravelPad::TravelPad(Desktop& desktop, frmWorkbench& window, QWidget* parent)
    : QWidget(parent),
      m_desktop(desktop),
      m_window(window) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    setToolTip(tr("Bump upwards, rack sideways: drag to move both"));
}

QRectF TravelPad::Field() const {
    return QRectF(rect()).adjusted(Mark + 1, Mark + 1, -Mark - 1, -Mark - 1);
}

void TravelPad::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF field = Field();
    const auto x = [&](int value) {
        return field.left() + Share(m_window.sldRack, value) * field.width();
    };
    const auto y = [&](int value) {
        return field.bottom() - Share(m_window.sldBump, value) * field.height();
    };
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(palette().base());
    painter.drawRect(field);
    painter.drawLine(QPointF(x(m_window.sldRack.Static), field.top()),
                     QPointF(x(m_window.sldRack.Static), field.bottom()));
    painter.drawLine(QPointF(field.left(), y(m_window.sldBump.Static)),
                     QPointF(field.right(), y(m_window.sldBump.Static)));
    if (m_window.sldBump.Enabled || m_window.sldRack.Enabled) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette().highlight());
        painter.drawEllipse(QPointF(x(m_window.sldRack.Value), y(m_window.sldBump.Value)), Mark,
                            Mark);
    }
}

void TravelPad::Take(const QPointF& at) {
    const QRectF field = Field();
    const auto step = [](const TravelSlider& travel, double share) {
        return static_cast<int>(std::lround(std::clamp(share, 0.0, 1.0) * travel.Last));
    };
    const int rack = step(m_window.sldRack, (at.x() - field.left()) / field.width());
    const int bump = step(m_window.sldBump, (field.bottom() - at.y()) / field.height());
    m_desktop.HandleMotion([&] {
        m_window.sldRack_Moved(rack);
        m_window.sldBump_Moved(bump);
    });
}

void TravelPad::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        Take(event->position());
    }
}

void TravelPad::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons().testFlag(Qt::LeftButton)) {
        Take(event->position());
    }
}

TravelPanel::TravelPanel(Desktop& desktop, frmWorkbench& window, Binder& binder, QWidget* parent)
    : QWidget(parent),
      m_desktop(desktop),
      m_window(window),
      m_bump(Slider(window.sldBump, &frmWorkbench::sldBump_Moved, "sldBump")),
      m_rack(Slider(window.sldRack, &frmWorkbench::sldRack_Moved, "sldRack")),
      m_pad(new TravelPad(desktop, window, this)) {
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(4, 2, 4, 2);
    const auto addRow = [&](int row, QSlider* slider, NumberBox& box, const QString& hint) {
        auto* label = new QLabel(QString::fromStdString(box.Caption), this);
        auto* field = new NumberField(
            binder, box, [this, &box] { m_window.txtTravel_Changed(box); },
            [this, &box] { m_window.txtTravel_LostFocus(box); }, this);
        field->setToolTip(hint);
        field->setObjectName(row == 0 ? "txtBump" : "txtRack");
        field->setFixedWidth(fontMetrics().horizontalAdvance("-000.00") + 16);
        label->setBuddy(field);
        auto* unit = new QLabel(this);
        binder.OnShow([unit, &box] { SetTextOnce(unit, QString::fromStdString(box.Unit)); });
        slider->setToolTip(hint);
        layout->addWidget(label, row, 0);
        layout->addWidget(slider, row, 1);
        layout->addWidget(field, row, 2);
        layout->addWidget(unit, row, 3);
    };
    addRow(0, m_bump, window.txtBump, tr("Wheel travel, bump positive (Alt+B)"));
    addRow(1, m_rack, window.txtRack, tr("Rack travel (Alt+R)"));
    layout->addWidget(m_pad, 0, 4, 2, 1);
    m_buttons = {PlayButton(PlayMode::Heave, tr("Heave"), tr("Play wheel travel")),
                 PlayButton(PlayMode::Steer, tr("Steer"), tr("Play rack travel")),
                 PlayButton(PlayMode::Both, tr("Both"), tr("Play both travels"))};
    auto* buttons = new QHBoxLayout;
    for (QToolButton* button : m_buttons) {
        buttons->addWidget(button);
    }
    layout->addWidget(new QLabel(tr("Play"), this), 0, 5, Qt::AlignBottom);
    layout->addLayout(buttons, 1, 5);
    layout->setColumnStretch(1, 1);
    m_timer.setInterval(FrameTime);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        const double seconds = static_cast<double>(m_clock.restart()) / 1000;
        m_desktop.HandleMotion([&] { m_window.PlayOn(seconds); });
    });
}

QSlider* TravelPanel::Slider(TravelSlider& travel, void (frmWorkbench::*moved)(int),
                             const char* name) {
    auto* slider = new QSlider(Qt::Horizontal, this);
    slider->setObjectName(name);
    slider->setTickPosition(QSlider::TicksBelow);
    connect(slider, &QSlider::valueChanged, this, [this, &travel, moved](int value) {
        if (value != travel.Value) {
            m_desktop.HandleMotion([&] { (m_window.*moved)(value); });
        }
    });
    return slider;
}

QToolButton* TravelPanel::PlayButton(PlayMode mode, const QString& text, const QString& hint) {
    auto* button = new QToolButton(this);
    button->setText(text);
    button->setCheckable(true);
    button->setToolTip(hint + tr("; Space stops and goes on"));
    connect(button, &QToolButton::clicked, this,
            [this, mode](bool checked) { Play(checked ? mode : PlayMode::None); });
    return button;
}

void TravelPanel::Play(PlayMode mode) {
    if (mode != PlayMode::None) {
        m_last = mode;
    }
    m_desktop.Handle([&] { m_window.Play(mode); });
}

void TravelPanel::TogglePlay() {
    Play(m_window.Playing() == PlayMode::None ? m_last : PlayMode::None);
}

void TravelPanel::Show(QSlider& slider, const TravelSlider& travel) {
    const QSignalBlocker quiet(slider);
    slider.setEnabled(travel.Enabled);
    slider.setRange(0, travel.Last);
    slider.setPageStep(std::max(1, travel.Last / 10));
    slider.setValue(travel.Value);
}

void TravelPanel::Refresh() {
    Show(*m_bump, m_window.sldBump);
    Show(*m_rack, m_window.sldRack);
    m_pad->update();
    const PlayMode playing = m_window.Playing();
    for (std::size_t n = 0; n < m_buttons.size(); ++n) {
        m_buttons[n]->setChecked(static_cast<std::size_t>(playing) == n + 1);
    }
    if (playing == PlayMode::None) {
        m_timer.stop();
    } else if (!m_timer.isActive()) {
        m_clock.start();
        m_timer.start();
    }
}

} // namespace corvanta
