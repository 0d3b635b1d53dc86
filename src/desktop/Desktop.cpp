#include "desktop/Desktop.h"

#include "desktop/AboutWindow.h"
#include "desktop/AdjustWindow.h"
#include "desktop/CompareWindow.h"
#include "desktop/CustomChannelsWindow.h"
#include "desktop/EditGeometryWindow.h"
#include "desktop/ExportWindow.h"
#include "desktop/Guard.h"
#include "desktop/MainWindow.h"
#include "desktop/OptionsWindow.h"
#include "desktop/PrintWindow.h"
#include "desktop/RecoveryWindow.h"
#include "desktop/TargetWindow.h"
#include "desktop/WorkbenchWindow.h"

#include <QApplication>
#include <QGuiApplication>
#include <QScreen>

namespace corvanta {

namespace {

/// Other windows follow a hand that moves something when it rests for a moment, and when they are
/// too far behind it, ms.
constexpr int RestTime = 60;
constexpr int FarthestBehind = 250;

WindowPlacement SizeOfScreen() {
    const QSize size = QGuiApplication::primaryScreen()->availableSize();
    return {0, 0, size.width() * TwipsPerPixel, size.height() * TwipsPerPixel};
}

/// Makes a view for a window that opened, brings it up to date, takes it away when it closed.
/// A view that goes away is added to `dying`: an event of its own may be what closed it.
template <typename View, typename Logic>
void Follow(std::unique_ptr<View>& view, Logic* window, Desktop& desktop,
            QList<QPointer<QObject>>& dying) {
    const bool open = window != nullptr && window->IsOpen;
    if (view && (!open || !view->Shows(*window))) {
        View* const closed = view.release(); // hiding it may bring events that come here again
        dying << closed;
        closed->hide();
    }
    if (open && !view) {
        view = std::make_unique<View>(desktop, *window);
    }
    if (view) {
        view->Refresh();
    }
}

} // namespace

Desktop::Desktop(FileServices& files, ProcessServices& process)
    : Desktop(files, process, m_ownBox, m_ownDialog) {}

Desktop::Desktop(FileServices& files, ProcessServices& process, MessageBox& box, FileDialog& dialog)
    : m_windows{dialog, m_clipboard, m_help, m_cursor, m_locks, *this, m_pages, SizeOfScreen()},
      m_application(files, box, process, m_windows) {
    m_follow.setSingleShot(true);
    m_follow.setInterval(RestTime);
    QObject::connect(&m_follow, &QTimer::timeout,
                     [this] { Handle([] {}); }); // which lets all windows catch up
}

Desktop::~Desktop() {
    for (const QPointer<QObject>& view : m_dying) {
        delete view.data();
    }
}

QWidget* Desktop::MainWidget() const {
    return m_main.get();
}

QWidget* Desktop::OwnerOfNew() const {
    for (QWidget* at = QApplication::activeWindow(); at != nullptr; at = at->parentWidget()) {
        if (at == m_workbench.get()) {
            return at;
        }
    }
    return m_main.get();
}

/// Dialogs of the workbench outlive it.
void Desktop::HandOverDialogs() {
    for (QWidget* const dialog : m_workbench->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (dialog->windowType() == Qt::Dialog && dialog->isVisible()) {
            dialog->setParent(m_main.get(), dialog->windowFlags());
            dialog->show();
        }
    }
}

StartResult Desktop::Start() {
    const StartResult result = m_application.AppStart();
    if (result == StartResult::Interactive) {
        Show();
        Handle([this] { m_application.Begin(); });
    }
    return result;
}

/// What other windows show is up to date before the event: a table that is behind would look as if
/// something were typed in it.
void Desktop::Handle(const std::function<void()>& event) {
    if (m_running++ == 0) {
        Guarded(m_application.MessageService(), [this] { m_application.Current().CatchUp(); });
    }
    Guarded(m_application.MessageService(), event);
    if (--m_running == 0) {
        m_application.KeepChanges();
    }
    Show();
}

void Desktop::HandleMotion(const std::function<void()>& event) {
    ++m_running;
    Guarded(m_application.MessageService(), event);
    --m_running;
    if (m_workbench) {
        m_workbench->RefreshSoon();
    }
    if (!m_follow.isActive()) {
        m_behind.start();
        m_follow.start();
    } else if (m_behind.elapsed() < FarthestBehind) {
        m_follow.start();
    }
}

void Desktop::Show() {
    Guarded(m_application.MessageService(), [this] {
        if (Main().IsOpen && !m_main) {
            m_main = std::make_unique<MainWindow>(*this);
            m_main->Refresh();
            Main().Frame.IsMaximised ? m_main->showMaximized() : m_main->show();
        }
        if (m_main) {
            m_main->Refresh();
            m_main->setVisible(Main().IsOpen);
        }
        ShowChildWindows();
    });
}

void Desktop::ShowChildWindows() {
    Follow(m_editor, Main().EditGeometry.get(), *this, m_dying);
    Follow(m_options, Main().OptionsDialog.get(), *this, m_dying);
    Follow(m_print, Main().PrintDialog.get(), *this, m_dying);
    Follow(m_adjust, Main().AdjustDialog.get(), *this, m_dying);
    Follow(m_export, Main().ExportDialog.get(), *this, m_dying);
    Follow(m_channels, Main().CustomChannelsDialog.get(), *this, m_dying);
    Follow(m_recovery, Main().RecoveryDialog.get(), *this, m_dying);
    Follow(m_compare, Main().CompareWindow.get(), *this, m_dying);
    Follow(m_target, Main().TargetDialog.get(), *this, m_dying);
    if (m_workbench && (Main().Workbench == nullptr || !Main().Workbench->IsOpen)) {
        HandOverDialogs();
    }
    Follow(m_workbench, Main().Workbench.get(), *this, m_dying);
    Follow(m_about, &Main().About, *this, m_dying);
    if (m_running == 0) {
        ReleaseClosedWindows();
    }
}

/// Not while an event runs: one that shows a message or brings the screen up to date comes here in
/// its middle, and it may be an event of the very window that closed.
void Desktop::ReleaseClosedWindows() {
    m_dying.removeAll(QPointer<QObject>());
    if (m_dying.isEmpty()) { // what a view shows lives as long as the view
        Main().ReleaseClosedWindows();
    }
    for (const QPointer<QObject>& view : m_dying) {
        view->deleteLater();
    }
}

void Desktop::Update() {
    Show();
    QGuiApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

} // namespace corvanta
