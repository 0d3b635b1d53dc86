#include "tests/desktop/DesktopUser.h"

#include <QAction>
#include <QMenuBar>
#include <QTest>

namespace corvanta::test {

std::optional<FileNameAnswer> ScriptedFileDialog::Ask(const FileNameRequest& request) {
    Requests.push_back(request);
    if (Paths.empty()) {
        return std::nullopt;
    }
    FileNameAnswer answer{Paths.front(), 1};
    Paths.pop_front();
    return answer;
}

DesktopUser::DesktopUser(const std::string& userFolder)
    : Files(userFolder),
      Desk(Files, Process, Box, Dialog) {
    Process.Folder = CORVANTA_PROGRAM_FOLDER; // help and samples lie beside the program
}

void DesktopUser::Start() {
    static_cast<void>(Desk.Start());
    Desk.Handle([this] { Logic().TakeDownSplash(); });
    static_cast<void>(QTest::qWaitForWindowActive(Desk.MainView()));
}

void DesktopUser::Open(const std::string& path) {
    Dialog.Paths.push_back(path);
    Choose(mcOpen);
}

void DesktopUser::Choose(int command, int tag) {
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
