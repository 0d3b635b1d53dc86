#include "desktop/StudiesPanel.h"

#include "desktop/Desktop.h"
#include "desktop/StudyPanelView.h"

#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QStackedLayout>
#include <QTabBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace corvanta {

namespace {

constexpr int PollTime = 25; ///< ms

} // namespace

StudiesPanel::StudiesPanel(Desktop& desktop, frmWorkbench& window, QWidget* parent)
    : QWidget(parent),
      m_desktop(desktop),
      m_window(window),
      m_names(new QTabBar(this)),
      m_pages(new QStackedLayout) {
    setMinimumHeight(150);
    m_names->setObjectName("tabStudies");
    m_names->setDrawBase(false);
    m_names->setExpanding(false);
    for (const auto& panel : window.Studies.All()) {
        const int n = m_names->addTab(QString::fromStdString(panel->Page.Caption));
        m_names->setTabToolTip(n, QString::fromStdString(panel->Page.ToolTip));
        m_views.push_back(new StudyPanelView(desktop, window, *panel, this));
        m_pages->addWidget(m_views.back());
    }
    connect(m_names, &QTabBar::currentChanged, this, [this](int n) {
        m_desktop.Handle([&] { m_window.ShowStudy(static_cast<std::size_t>(n)); });
    });
    auto* close = new QToolButton(this);
    close->setObjectName("cmdCloseStudies");
    close->setAutoRaise(true);
    close->setText(QString(QChar(0x2715)));
    close->setToolTip(tr("Close the studies (F7)"));
    connect(close, &QToolButton::clicked, this,
            [this] { m_desktop.Handle([this] { m_window.ShowStudy(std::nullopt); }); });
    auto* head = new QHBoxLayout;
    head->addWidget(m_names, 1);
    head->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 2, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(head);
    layout->addLayout(m_pages, 1);
    m_poll.setInterval(PollTime);
    connect(&m_poll, &QTimer::timeout, this, &StudiesPanel::Poll);
}

void StudiesPanel::Poll() {
    if (m_window.PollStudies()) {
        emit Changed();
    } else if (const std::optional<std::size_t> shown = m_window.Studies.Shown()) {
        m_views[*shown]->ShowProgress();
    }
    if (!m_window.Studies.IsRunning()) {
        m_poll.stop();
    }
}

void StudiesPanel::Refresh() {
    const std::optional<std::size_t> shown = m_window.Studies.Shown();
    setVisible(shown.has_value());
    if (shown) {
        const QSignalBlocker quiet(m_names);
        m_names->setCurrentIndex(static_cast<int>(*shown));
        m_pages->setCurrentIndex(static_cast<int>(*shown));
        m_views[*shown]->Refresh();
    }
    if (m_window.Studies.IsRunning() && !m_poll.isActive()) {
        m_poll.start();
    }
}

} // namespace corvanta
