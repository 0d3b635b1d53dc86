#pragma once

#include "desktop/Desktop.h"
#include "desktop/EditGeometryWindow.h"
#include "desktop/MainWindow.h"
#include "desktop/OptionsWindow.h"
#include "platform/DiskFileServices.h"
#include "tests/support/FakeProcessServices.h"
#include "tests/support/RecordingMessageBox.h"
#include "tests/support/ScopedEnvironment.h"

#include <QMessageBox>
#include <QTimer>

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace corvanta::test {

/// A file dialog that answers from a script; without an answer left it is cancelled. One that takes
/// several files takes all that are left.
class ScriptedFileDialog final : public FileDialog {
  public:
    std::deque<std::string> Paths;
    std::vector<FileNameRequest> Requests;

    std::optional<FileNameAnswer> Ask(const FileNameRequest& request) override;
};

/// Answers the menus and dialogs of the toolkit that wait for a user, one after the other as they
/// come up. One that is not the next expected is closed and fails the test.
class WaitingUser {
  public:
    WaitingUser();

    /// Picks an entry of a context menu.
    void Pick(const QString& entry);

    /// Saves under a name, in the kind of file that begins as told.
    void SaveAs(const QString& path, const QString& kind);

    /// Presses a button of a message.
    void Press(QMessageBox::StandardButton button);

    /// Looks at a dialog and closes it; `look` tells whether it is the one expected.
    void Expect(std::function<bool(QWidget& dialog)> look);

    /// Whether everything expected came.
    [[nodiscard]] bool Done() const { return m_answers.empty(); }

  private:
    void Look();

    QTimer m_timer;
    std::deque<std::function<bool(QWidget&)>> m_answers;
};

/// What a program of the system writes; fails the test when it does not run.
std::string Output(const QString& program, const QStringList& arguments);

/// The program in front of a user: real windows, with the message boxes and file dialogs that
/// would wait for the user answered from scripts.
class DesktopUser {
  public:
    /// `userFolder` holds the user's settings.
    explicit DesktopUser(const std::string& userFolder);
    ~DesktopUser();
    DesktopUser(const DesktopUser&) = delete;
    DesktopUser& operator=(const DesktopUser&) = delete;
    DesktopUser(DesktopUser&&) = delete;
    DesktopUser& operator=(DesktopUser&&) = delete;

    /// Starts the program, which reports what its events throw, and clicks the splash away.
    void Start();

    [[nodiscard]] frmMain& Logic() { return Desk.Main(); }
    [[nodiscard]] MainWindow& Window() const { return *Desk.MainView(); }

    /// Opens a document through the menu.
    void Open(const std::string& path);

    /// Chooses the entry of a menu with a command and tag, as a click does.
    void Choose(int command, int tag = 0) const;

    /// The child of a window by the name of its control.
    template <typename Widget>
    [[nodiscard]] static Widget& Child(QWidget& window, const char* name) {
        auto* child = window.findChild<Widget*>(name);
        if (child == nullptr) {
            throw std::runtime_error(std::string("There is no ") + name);
        }
        return *child;
    }

    ScopedEnvironment Settings; ///< the per-user folder, where a test wants it
    DiskFileServices Files;
    FakeProcessServices Process;
    RecordingMessageBox Box;
    ScriptedFileDialog Dialog;
    Desktop Desk;
};

} // namespace corvanta::test
