#include "desktop/OptionsWindow.h"

#include "desktop/Desktop.h"

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>

namespace corvanta {

OptionsWindow::OptionsWindow(Desktop& desktop, frmOptions& window)
    : QDialog(desktop.MainWidget()),
      m_desktop(desktop),
      m_window(window),
      m_binder([&desktop](const auto& event) { desktop.Handle(event); }) {
    setObjectName("frmOptions");
    setWindowTitle(QString::fromStdString(window.Caption));
    setWindowModality(Qt::ApplicationModal);
    auto* layout = new QVBoxLayout(this);
    auto* groups = new QHBoxLayout;
    groups->addWidget(Group(window.fraDisplacement, {{&window.optInches, "optInches"},
                                                     {&window.optMillimetres, "optMillimetres"}}));
    groups->addWidget(Group(window.fraMassAndForce, {{&window.optKilograms, "optKilograms"},
                                                     {&window.optPounds, "optPounds"}}));
    groups->addWidget(Group(window.fraSpringRate,
                            {{&window.optKilogramsPerMillimetre, "optKilogramsPerMillimetre"},
                             {&window.optNewtonsPerMillimetre, "optNewtonsPerMillimetre"},
                             {&window.optPoundsPerInch, "optPoundsPerInch"}}));
    layout->addLayout(groups);
    layout->addStretch(1);
    auto* buttons = new QDialogButtonBox(this);
    const auto add = [&](const Control& control, QDialogButtonBox::ButtonRole role,
                         const char* name, Binder::Event clicked) {
        QPushButton* button = buttons->addButton(QString::fromStdString(control.Caption), role);
        button->setObjectName(name);
        m_binder.Bind(button, control, std::move(clicked));
        return button;
    };
    add(window.cmdOK, QDialogButtonBox::AcceptRole, "cmdOK", [this] {
        m_window.cmdOK_Click();
    })->setDefault(true);
    add(window.cmdCancel, QDialogButtonBox::RejectRole, "cmdCancel",
        [this] { m_window.cmdCancel_Click(); });
    add(window.cmdHelp, QDialogButtonBox::HelpRole, "cmdHelp",
        [this] { m_window.cmdHelp_Click(); });
    layout->addWidget(buttons);
    move(window.Frame.Placement.Left / TwipsPerPixel, window.Frame.Placement.Top / TwipsPerPixel);
    m_binder.Show();
    show();
}

QWidget* OptionsWindow::Group(const Control& frame,
                              const std::vector<std::pair<OptionButton*, const char*>>& options) {
    auto* group = new QGroupBox(QString::fromStdString(frame.Caption), this);
    auto* layout = new QVBoxLayout(group);
    for (const auto& [option, name] : options) {
        auto* button = new QRadioButton(group);
        button->setObjectName(name);
        OptionButton* chosen = option;
        m_binder.Bind(button, *chosen, [options, chosen] {
            for (const auto& other : options) {
                other.first->Selected = other.first == chosen;
            }
        });
        layout->addWidget(button);
    }
    layout->addStretch(1);
    return group;
}

void OptionsWindow::done(int result) {
    QDialog::done(result);
    if (m_window.IsOpen) {
        m_desktop.Handle([this] { m_window.cmdCancel_Click(); });
    }
}

void OptionsWindow::moveEvent(QMoveEvent* event) {
    QDialog::moveEvent(event);
    if (isVisible()) {
        m_window.Frame.Placement.Left = pos().x() * TwipsPerPixel;
        m_window.Frame.Placement.Top = pos().y() * TwipsPerPixel;
    }
}

void OptionsWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1) {
        m_desktop.Handle([this] { m_window.cmdHelp_Click(); });
        return;
    }
    QDialog::keyPressEvent(event);
}

} // namespace corvanta
