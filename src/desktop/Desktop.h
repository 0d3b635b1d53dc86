#pragma once

#include "desktop/HelpWindow.h"
#include "desktop/QtPageWriter.h"
#include "desktop/QtServices.h"
#include "desktop/WidgetRules.h"
#include "frame/MSusp.h"
#include "platform/FileServices.h"
#include "platform/NoWindowSystem.h"

#include <QElapsedTimer>
#include <QList>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <memory>

namespace corvanta {

class AboutWindow;
class AdjustWindow;
class CompareWindow;
class CustomChannelsWindow;
class EditGeometryWindow;
class ExportWindow;
class MainWindow;
class OptionsWindow;
class PrintWindow;
class RecoveryWindow;
class TargetWindow;
class WorkbenchWindow;

/// The program's windows on the screen. They are made, brought up to date and taken away by what
/// the windows of the program are, after every event.
class Desktop final : private ScreenUpdate {
  public:
    Desktop(FileServices& files, ProcessServices& process);
    Desktop(FileServices& files, ProcessServices& process, MessageBox& box, FileDialog& dialog);
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;
    Desktop(Desktop&&) = delete;
    Desktop& operator=(Desktop&&) = delete;
    ~Desktop() override;

    /// Starts the program. `Interactive` when its window is up, with unsaved work of an earlier run
    /// offered.
    [[nodiscard]] StartResult Start();

    /// Runs an event, reports what it throws, and brings the outcome to the screen.
    void Handle(const std::function<void()>& event);

    /// Runs an event that comes many times a second while a hand moves something. The workbench
    /// shows its outcome once for all events that are waiting, the other windows follow some times
    /// a second.
    void HandleMotion(const std::function<void()>& event);

    /// True while no event runs.
    [[nodiscard]] bool IsIdle() const { return m_running == 0; }

    /// Brings the windows as they are now to the screen.
    void Show();

    [[nodiscard]] Application& Program() { return m_application; }
    [[nodiscard]] frmMain& Main() { return m_application.MainWindow(); }

    /// The windows that are up, none otherwise.
    [[nodiscard]] QWidget* MainWidget() const;

    /// The window that one that comes up now belongs to: the workbench where the user is there, so
    /// that the main window does not come up over it too.
    [[nodiscard]] QWidget* OwnerOfNew() const;
    [[nodiscard]] MainWindow* MainView() const { return m_main.get(); }
    [[nodiscard]] EditGeometryWindow* EditorView() const { return m_editor.get(); }
    [[nodiscard]] OptionsWindow* OptionsView() const { return m_options.get(); }
    [[nodiscard]] ExportWindow* ExportView() const { return m_export.get(); }
    [[nodiscard]] PrintWindow* PrintView() const { return m_print.get(); }
    [[nodiscard]] AdjustWindow* AdjustView() const { return m_adjust.get(); }
    [[nodiscard]] CustomChannelsWindow* CustomChannelsView() const { return m_channels.get(); }
    [[nodiscard]] RecoveryWindow* RecoveryView() const { return m_recovery.get(); }
    [[nodiscard]] CompareWindow* CompareView() const { return m_compare.get(); }
    [[nodiscard]] TargetWindow* TargetView() const { return m_target.get(); }
    [[nodiscard]] WorkbenchWindow* WorkbenchView() const { return m_workbench.get(); }
    [[nodiscard]] AboutWindow* AboutView() const { return m_about.get(); }
    [[nodiscard]] HelpWindow& Help() { return m_help; }
    [[nodiscard]] QtPageWriter& Pages() { return m_pages; }

  private:
    void Update() override;
    void ShowChildWindows();
    void HandOverDialogs();
    void ReleaseClosedWindows();

    WidgetRules m_rules;
    QtMessageBox m_ownBox;
    QtFileDialog m_ownDialog;
    QtClipboard m_clipboard;
    QtScreenCursor m_cursor;
    QtPlaceLocks m_locks;
    HelpWindow m_help;
    QtPageWriter m_pages;
    WindowSystem m_windows;
    Application m_application;
    std::unique_ptr<MainWindow> m_main;
    std::unique_ptr<WorkbenchWindow> m_workbench; ///< goes after the dialogs that it may own
    std::unique_ptr<EditGeometryWindow> m_editor;
    std::unique_ptr<OptionsWindow> m_options;
    std::unique_ptr<ExportWindow> m_export;
    std::unique_ptr<PrintWindow> m_print;
    std::unique_ptr<AdjustWindow> m_adjust;
    std::unique_ptr<CustomChannelsWindow> m_channels;
    std::unique_ptr<RecoveryWindow> m_recovery;
    std::unique_ptr<CompareWindow> m_compare;
    std::unique_ptr<TargetWindow> m_target;
    std::unique_ptr<AboutWindow> m_about;
    QTimer m_follow;        ///< runs while the other windows are behind a hand that moves something
    QElapsedTimer m_behind; ///< how long they are
    QList<QPointer<QObject>> m_dying; ///< views that closed and are not gone yet
    int m_running = 0;                ///< events that have not ended, one within the other
};

} // namespace corvanta
