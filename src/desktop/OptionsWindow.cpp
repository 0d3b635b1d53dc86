#include "desktop/OptionsWindow.h"

#include <QGroupBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace corvanta {

OptionsWindow::OptionsWindow(Desktop& desktop, frmOptions& window)
    : ModalDialog(desktop, window, "frmOptions"),
      m_window(window) {
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
    QDialogButtonBox* buttons = Foot(
        window.cmdOK, "cmdOK", [this] { m_window.cmdOK_Click(); }, window.cmdCancel,
        window.cmdHelp);
    layout->addWidget(buttons);
    ShowInPlace(false);
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

} // namespace corvanta
