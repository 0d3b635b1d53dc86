#include "tests/desktop/DesktopUser.h"

#include "desktop/GuardedApplication.h"
#include "tests/support/Places.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenuBar>
#include <QProcess>
#include <QPushButton>
#include <QTest>

namespace corvanta::test {

namespace {

void ReportEventsTo(Messages* messages) {
    static_cast<GuardedApplication*>(qApp)->ReportTo(messages);
}

} // namespace

std::optional<FileNameAnswer> ScriptedFileDialog::Ask(const FileNameRequest& request) {
    Requests.push_back(request);
    if (Paths.empty()) {
        return std::nullopt;
    }
    FileNameAnswer answer{Paths.front(), 1};
    do {
        answer.Paths.push_back(Paths.front());
        Paths.pop_front();
    } while (request.Several && !Paths.empty());
    return answer;
}

WaitingUser::WaitingUser() {
    constexpr int Interval = 5; // ms
    m_timer.setInterval(Interval);
    m_timer.setSingleShot(true);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { Look(); });
    m_timer.start();
}

void WaitingUser::Look() {
    m_timer.start(); // anew each time: an answer may bring up the next dialog before it ends
    QWidget* const popup = QApplication::activePopupWidget();
    QWidget* const waiting = popup != nullptr ? popup : QApplication::activeModalWidget();
    const bool waits = qobject_cast<QMenu*>(waiting) != nullptr ||
                       qobject_cast<QMessageBox*>(waiting) != nullptr ||
                       (waiting != nullptr && waiting->windowModality() == Qt::ApplicationModal);
    if (!waits) {
        return;
    }
    const auto answer = m_answers.empty() ? [](QWidget&) { return false; } : m_answers.front();
    if (!m_answers.empty()) {
        m_answers.pop_front();
    }
    if (!answer(*waiting)) {
        ADD_FAILURE() << "Unexpected: " << waiting->metaObject()->className();
        waiting->close();
    }
}

void WaitingUser::Expect(std::function<bool(QWidget& dialog)> look) {
    m_answers.push_back(std::move(look));
}

void WaitingUser::Pick(const QString& entry) {
    Expect([entry](QWidget& waiting) {
        auto* const menu = qobject_cast<QMenu*>(&waiting);
        const QList<QAction*> actions = menu != nullptr ? menu->actions() : QList<QAction*>();
        for (QAction* const action : actions) {
            if (action->text() == entry && action->isEnabled()) {
                menu->setActiveAction(action);
                QTest::keyClick(menu, Qt::Key_Return);
                return true;
            }
        }
        return false;
    });
}

void WaitingUser::SaveAs(const QString& path, const QString& kind) {
    Expect([path, kind](QWidget& waiting) {
        auto* const dialog = qobject_cast<QFileDialog*>(&waiting);
        if (dialog == nullptr) {
            return false;
        }
        const QStringList kinds = dialog->nameFilters().filter(kind);
        if (kinds.size() != 1) {
            return false;
        }
        dialog->findChild<QComboBox*>("fileTypeCombo")->setCurrentText(kinds.constFirst());
        dialog->selectNameFilter(kinds.constFirst());
        dialog->findChild<QLineEdit*>("fileNameEdit")->setText(path);
        dialog->findChild<QDialogButtonBox*>("buttonBox")->button(QDialogButtonBox::Save)->click();
        return true;
    });
}

void WaitingUser::Press(QMessageBox::StandardButton button) {
    Expect([button](QWidget& waiting) {
        auto* const box = qobject_cast<QMessageBox*>(&waiting);
        if (box == nullptr || box->button(button) == nullptr) {
            return false;
        }
        box->button(button)->click();
        return true;
    });
}

std::string Output(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0) {
        ADD_FAILURE() << program.toStdString() << ": "
                      << process.readAllStandardError().toStdString();
    }
    return process.readAllStandardOutput().toStdString();
}

DesktopUser::DesktopUser(const std::string& userFolder)
    : Settings("XDG_CONFIG_HOME", userFolder),
      Desk(Files, Process, Box, Dialog) {
    Process.Folder = ProgramFolder(); // help and samples lie beside the program
}

DesktopUser::~DesktopUser() {
    ReportEventsTo(nullptr);
}

void DesktopUser::Start() {
    ReportEventsTo(&Desk.Program().MessageService());
    static_cast<void>(Desk.Start());
    Desk.Handle([this] { Logic().TakeDownSplash(); });
    static_cast<void>(QTest::qWaitForWindowActive(Desk.MainView()));
}

void DesktopUser::Open(const std::string& path) {
    Dialog.Paths.push_back(path);
    Choose(mcOpen);
}

void DesktopUser::Choose(int command, int tag) const {
    const QList<QAction*> actions = Window().findChildren<QAction*>();
    for (QAction* action : actions) {
        if (action->data().toPoint() == QPoint(command, tag)) {
            action->trigger();
            return;
        }
    }
    throw std::runtime_error("No entry of a menu has the command " + std::to_string(command));
}

} // namespace corvanta::test
