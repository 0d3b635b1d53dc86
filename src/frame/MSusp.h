#pragma once

#include "frame/CommandLine.h"
#include "frame/StartRequest.h"
#include "model/Program.h"
#include "platform/FileServices.h"
#include "platform/Messages.h"
#include "platform/ProcessServices.h"
#include "platform/SettingsStore.h"
#include "shell/frmMain.h"

#include <memory>
#include <optional>
#include <string>

namespace corvanta {

/// How a start ended.
enum class StartResult {
    Interactive, ///< the program is up and waits for its user
    Ended,       ///< a batch run is over, or the start failed and was reported
};

/// One running program: it owns the document, everything that is remembered beside it and the main
/// window, and takes them from nothing to the first event, or through a batch run to its end.
class Application {
  public:
    /// The surroundings outlive the program. A program without a window system has its services
    /// from `NoWindowSystem`.
    Application(FileServices& files, MessageBox& box, ProcessServices& process,
                WindowSystem& windows);

    /// The entry of the program. Every failure of the start is reported and ends it at once,
    /// nothing saved.
    [[nodiscard]] StartResult AppStart();

    /// The user closes the main window, or a batch run does: asks what to do with unsaved changes,
    /// and saves what outlives the process. False when the window stays open. What can't be saved
    /// is reported.
    bool CloseMainWindow();

    /// Writes what outlives the process and changed since it was last written, so that a crash
    /// doesn't cost it. What can't be written is told when the window closes. The places of windows
    /// and the view on show change with every click and are written at the end alone.
    void KeepChanges();

    /// An interactive start goes on with its window shown: opens what the command line names, or
    /// says what is wrong with it, shows the workbench where that was asked for, and offers the
    /// unsaved work of an earlier run.
    void Begin();

    [[nodiscard]] const Program& Data() const { return m_program; }
    [[nodiscard]] CDocument& Current() { return m_current; }
    [[nodiscard]] frmMain& MainWindow() { return m_main; }
    [[nodiscard]] Messages& MessageService() { return m_messages; }

  private:
    [[nodiscard]] StartResult Start();
    void SetUpFolders();
    void MakeSettingsFolders(bool batch);
    void SetUpMainWindow();
    void ReadSettings();
    void ReadLists();
    void RunBatch();
    void OpenAsked();
    void CloseWindow();
    bool ShutDown();
    [[nodiscard]] bool KeepsSettings() const { return !m_settingsFolder.empty(); }
    [[nodiscard]] bool IsBatch() const { return m_request.Batch; }
    bool WriteLists(Messages& messages);

    FileServices& m_files;
    ProcessServices& m_process;
    WindowSystem& m_windows;
    Messages m_messages;
    Program m_program;
    StartRequest m_request;
    BatchRequest m_batch;
    std::unique_ptr<SettingsStore> m_settings;
    std::string m_settingsPath;      ///< the file of the settings store
    std::string m_settingsFolder;    ///< the user's list files, ends in a separator; empty when a
                                     ///< batch run has no place for settings
    std::string m_diagnosticsFolder; ///< made at every start, ends in a separator
    std::string m_recoveryFolder;    ///< copies of unsaved work, ends in a separator
    bool m_canKeep = true;           ///< until keeping a change fails, and then at the end again
    std::optional<CustomChannels> m_channelsInFile; ///< of the lists, what their files stand for
    std::optional<SelectedViews> m_viewsInFile;
    CDocument m_current;
    Desk m_desk;
    frmMain m_main;
};

/// The file in which a program keeps its settings, in the per-user folder or, where there is none,
/// beside the program. It need not exist.
[[nodiscard]] std::string SettingsPath(const FileServices& files, const ProcessServices& process);

/// The product's version.
[[nodiscard]] ProductVersion BuiltVersion();

} // namespace corvanta
