#include "desktop/CustomChannelsWindow.h"

#include "desktop/Desktop.h"
#include "desktop/Icons.h"

#include <QGridLayout>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>

namespace corvanta {

CustomChannelsWindow::CustomChannelsWindow(Desktop& desktop, frmCustomChannels& window)
    : ModalDialog(desktop, window, "frmCustomChannels"),
      m_window(window) {
    auto* grid = new QGridLayout(this);
    auto* channelsLabel = new QLabel(this);
    auto* selectedLabel = new QLabel(this);
    m_binder.Bind(channelsLabel, window.labChannels);
    m_binder.Bind(selectedLabel, window.labSelected);
    auto* channels = new QListWidget(this);
    channels->setObjectName("tvwChannels");
    BindCheckList(m_binder, channels, window.tvwChannels,
                  [this](int row) { m_window.tvwChannels_NodeCheck(row); });
    m_selected = new QListWidget(this); // behind the channels in the order of the Tab key
    m_selected->setObjectName("lstSelected");
    m_binder.Bind(static_cast<QWidget*>(m_selected), window.lstSelected);
    connect(m_selected, &QListWidget::currentRowChanged, this,
            [this](int row) { m_desktop.Handle([&] { m_window.lstSelected.Select(row); }); });
    const auto move = [&](const Control& control, const char* name, const char* icon,
                          Binder::Event clicked) {
        auto* button = new QPushButton(ThemedIcon(icon), {}, this);
        button->setObjectName(name);
        button->setAutoDefault(false);
        m_binder.Bind(button, control, std::move(clicked));
        return button;
    };
    auto* moves = new QVBoxLayout;
    moves->addWidget(
        move(window.cmdMoveUp, "cmdMoveUp", "up", [this] { m_window.cmdMoveUp_Click(); }));
    moves->addWidget(
        move(window.cmdMoveDown, "cmdMoveDown", "down", [this] { m_window.cmdMoveDown_Click(); }));
    moves->addStretch(1);
    grid->addWidget(channelsLabel, 0, 0);
    grid->addWidget(selectedLabel, 0, 1);
    grid->addWidget(channels, 1, 0);
    grid->addWidget(m_selected, 1, 1);
    grid->addLayout(moves, 1, 2);
    QDialogButtonBox* buttons = Foot(
        window.cmdOk, "cmdOk", [this] { m_window.cmdOk_Click(); }, window.cmdCancel,
        window.cmdHelp);
    grid->addWidget(buttons, 2, 0, 1, 3);
    ShowInPlace(true);
    channels->setCurrentRow(0);
    channels->setFocus();
}

void CustomChannelsWindow::Refresh() {
    m_binder.Show();
    const QSignalBlocker quiet(m_selected);
    m_selected->clear();
    for (const ListEntry& entry : m_window.lstSelected.Entries()) {
        m_selected->addItem(QString::fromStdString(entry.Text));
    }
    m_selected->setCurrentRow(m_window.lstSelected.Index());
}

} // namespace corvanta
