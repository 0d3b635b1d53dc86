#pragma once

#include "frame/CommandLine.h"
#include "model/Program.h"
#include "platform/FileServices.h"
#include "platform/Messages.h"
#include "platform/ProcessServices.h"
#include "platform/SettingsStore.h"
#include "shell/frmMain.h"

#include <memory>
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
    Application(FileServices& files, MessageBox& box, ProcessServices& process);

    /// The entry of the program. Every failure of the start is reported and ends it at once,
    /// nothing saved.
    [[nodiscard]] StartResult AppStart();

    /// Saves what outlives the process. Throws Failure when the settings can't be written.
    void ShutDown();

  private:
    [[nodiscard]] StartResult Start();
    void SetUpFolders();
    void ReadLists();
    void RunBatch();

    FileServices& m_files;
    ProcessServices& m_process;
    Messages m_messages;
    Program m_program;
    BatchRequest m_batch;
    std::unique_ptr<SettingsStore> m_settings;
    std::string m_settingsPath;      ///< the file of the settings store
    std::string m_settingsFolder;    ///< holds the user's list files, ends in a separator
    std::string m_diagnosticsFolder; ///< made at every start, ends in a separator
    frmMain m_main;
};

/// The product's version.
[[nodiscard]] ProductVersion BuiltVersion();

} // namespace corvanta
