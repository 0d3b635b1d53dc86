#include "frame/MSusp.h"

#include "export/ListFiles.h"
#include "frame/MOptions.h"
#include "model/Failure.h"
#include "platform/DataFolder.h"
#include "platform/IniSettingsStore.h"
#include "platform/NoWindowSystem.h"
#include "shell/CMousePointer.h"
#include "shell/MLibGUI.h"

namespace corvanta {

namespace {

/// Folders below the per-user application data folder, as stored.
constexpr const char* ProductFolder = R"(\Pewter Lantern\Corvanta\)";

constexpr const char* CustomChannelsFile = "customchannels.txt";
constexpr const char* ExportTablesFile = "exporttables.txt";
constexpr const char* SettingsFile = "Corvanta.ini";
constexpr const char* HelpFile = "susp.chm";

/// Where everything that outlives the process is kept, ends in a separator.
std::string UserFolder(const FileServices& files, const ProcessServices& process) {
    const std::optional<std::string> userData = files.SpecialFolder(ApplicationDataFolder);
    return userData ? *userData + NativePath(ProductFolder)
                    : process.ProgramFolder() + FileServices::Separator;
}

} // namespace

std::string SettingsPath(const FileServices& files, const ProcessServices& process) {
    return UserFolder(files, process) + SettingsFile;
}

ProductVersion BuiltVersion() {
    return {CORVANTA_VERSION_MAJOR, CORVANTA_VERSION_MINOR, CORVANTA_VERSION_REVISION};
}

Application::Application(FileServices& files, MessageBox& box, ProcessServices& process,
                         WindowSystem& windows)
    : m_files(files),
      m_process(process),
      m_windows(windows),
      m_messages(box),
      m_current(m_program, m_messages),
      m_desk{m_program, m_current, files, m_messages, process, windows, MLibHelp(windows.Help)},
      m_main(m_desk) {
    m_messages.BeforeMessage([this] {
        if (m_main.About.IsSplash) {
            m_main.TakeDownSplash();
            m_windows.Screen.Update(); // a message must not wait below it
        }
    });
}

StartResult Application::AppStart() {
    try {
        return Start();
    } catch (...) {
        const Failure failure = FailureInFlight();
        m_messages.ShowMessage("Error " + std::to_string(failure.Number()) + " (" +
                               failure.Description() + ") in procedure AppStart of Module MSusp");
        return StartResult::Ended;
    }
}

StartResult Application::Start() {
    const std::string commandLine = m_process.CommandLine();
    m_request = ParseStart(m_process.Arguments(), m_files);
    if (m_request.Batch && HasNoGuiKey(commandLine)) {
        m_messages.Silence(); // before anything can fail: no one is there to close a message
    }
    const Separators separators = m_process.NumberSeparators();
    m_program.Units.NumberSeparators = separators;
    SetUpFolders();
    MakeSettingsFolders(IsBatch());
    m_settings = std::make_unique<IniSettingsStore>(m_files, m_settingsPath);
    m_desk.Store = m_settings.get();
    m_main.Load();
    const bool batch = IsBatch() && ParseCommandLine(m_batch, commandLine, m_files, separators);
    const bool hidden = m_batch.NoGui;
    if (!hidden) {
        m_main.About.ShowSplash(m_process.Version().Text());
        m_windows.Screen.Update();
    }
    const CMousePointer wait(m_windows.Cursor, HourglassCursor);
    SetUpMainWindow();
    ReadSettings();
    m_main.RefreshGUI(false);
    if (!hidden) {
        m_main.IsOpen = true;
        m_windows.Screen.Update();
    }
    m_desk.Help.SetHelpFile(DataFolder(m_process, m_files) + FileServices::Separator + HelpFile);
    if (!batch) {
        return StartResult::Interactive;
    }
    RunBatch();
    return StartResult::Ended;
}

void Application::SetUpMainWindow() {
    constexpr int DefaultWidth = 8000;
    constexpr int DefaultHeight = 6000;
    m_main.BuildToolbar();
    m_main.Caption = "Corvanta";
    for (Control* area :
         {&m_main.chtChart, &m_main.picComboContainer, static_cast<Control*>(&m_main.picResults)}) {
        area->Visible = false;
    }
    m_main.grdDisplay.Visible = false;
    RestoreWindow(m_main.Frame, m_windows.ScreenSize, *m_settings, DefaultWidth, DefaultHeight);
}

void Application::ReadSettings() {
    ResetDocument(m_program.Document, m_program.Settings);
    OptionsRead(m_program.Options, m_program.Document.Data, m_program.Units, *m_settings,
                m_process.ProgramFolder());
    m_program.Channels.ChannelsSetup(m_program.Units);
    ReadLists(); // the old list of channels is keyed by channel names, so the channels come first
    m_main.chk3dDrawAxes.Checked = m_program.Options.DrawAxes;
    m_main.chk3dAutoScale.Checked = m_program.Options.AutoScale;
    if (!IsBatch()) { // what a batch run writes does not depend on what was looked at
        m_main.RestoreView();
    }
}

void Application::SetUpFolders() {
    const std::string base = UserFolder(m_files, m_process);
    m_settingsFolder = base + "Settings" + FileServices::Separator;
    m_diagnosticsFolder = base + "Diagnostics" + FileServices::Separator;
    m_settingsPath = SettingsPath(m_files, m_process);
    m_recoveryFolder = base + "Recovery" + FileServices::Separator;
}

void Application::MakeSettingsFolders(bool batch) {
    try {
        m_files.MakeFolder(m_settingsFolder);
        m_files.MakeFolder(m_diagnosticsFolder);
    } catch (const Failure& failure) {
        if (!batch) {
            throw;
        }
        m_settingsFolder.clear();
        m_settingsPath.clear();
        m_messages.ShowMessage("There is no place for settings, so the run takes the defaults and "
                               "keeps none.\rError was: " +
                                   failure.Description(),
                               msExclamation);
    }
}

void Application::ReadLists() {
    if (!KeepsSettings()) {
        return;
    }
    const std::string programFolder = m_process.ProgramFolder() + FileServices::Separator;
    const Separators& separators = m_program.Units.NumberSeparators;
    if (CustomChannelsRead(
            m_program.CustomChannels, m_program.Channels, programFolder + CustomChannelsFile,
            m_settingsFolder + CustomChannelsFile, separators, m_files, m_messages)) {
        m_channelsInFile = m_program.CustomChannels;
    }
    if (ExportTablesRead(m_program.ExportViews, programFolder + ExportTablesFile,
                         m_settingsFolder + ExportTablesFile, separators, m_files, m_messages)) {
        m_viewsInFile = m_program.ExportViews;
    }
}

void Application::RunBatch() {
    m_main.FileOpen(m_batch.InputPath);
    if (m_program.Document.ResultsValid) {
        const ExportPlace place{m_program, m_main, m_files, m_messages, m_process};
        ExportResults(place, m_batch.ExportType, m_batch.OutputPath, &m_batch.Export);
    }
    CloseWindow();
}

void Application::Begin() {
    m_main.Files.Recovery.SetFolder(m_recoveryFolder);
    OpenAsked();
    if (m_request.Workbench) { // on nothing, too, where there was no file or it could not be read
        m_main.Execute(mcWorkbench, 0);
    }
    m_main.OfferRecovery();
}

/// The one place at which what the command line names is opened, after the window came up.
void Application::OpenAsked() {
    if (!m_request.Refusal.empty()) {
        m_messages.ShowMessage(m_request.Refusal, msExclamation);
    } else if (m_request.File.empty()) {
        return;
    } else if (!m_files.FileExists(m_request.File)) {
        m_messages.ShowMessage(
            "There is no file of this name:\r" + m_files.FullPath(m_request.File), msExclamation);
    } else if (StudyFiles::IsStudy(m_request.File)) {
        m_main.OpenStudy(m_files.FullPath(m_request.File));
    } else {
        m_main.FileOpen(m_files.FullPath(m_request.File));
    }
}

bool Application::CloseMainWindow() {
    if (!m_main.QueryUnload()) {
        return false;
    }
    try {
        CloseWindow();
    } catch (...) {
        m_messages.ShowMessage("The settings could not be saved.\rError was: " +
                                   FailureInFlight().Description(),
                               msExclamation);
        m_main.IsOpen = false;
    }
    return true;
}

void Application::CloseWindow() {
    const bool written = ShutDown();
    m_main.Unload();
    // A window's user loses nothing that can be saved; a batch run tells of the place once.
    if (written || !IsBatch()) {
        m_settings->Save();
    }
}

bool Application::ShutDown() {
    OptionsWrite(*m_settings, m_program.Options, m_program.Document.Data, m_program.Units);
    if (!IsBatch()) {
        m_main.KeepView();
    }
    const bool written = WriteLists(m_messages);
    if (m_windows.ScreenSize.Width > 0) { // without a screen the window stands nowhere
        SaveWindow(m_main.Frame, *m_settings, true);
    }
    m_main.ResetEditDialog();
    return written;
}

void Application::KeepChanges() {
    if (!m_main.IsOpen || !m_canKeep) {
        return;
    }
    NoMessageBox box;
    Messages silent(box);
    try {
        OptionsWrite(*m_settings, m_program.Options, m_program.Document.Data, m_program.Units);
        m_main.Files.KeepRecentFiles();
        m_canKeep = WriteLists(silent);
        m_settings->Save();
    } catch (const Failure&) {
        m_canKeep = false;
    }
}

bool Application::WriteLists(Messages& messages) {
    if (!KeepsSettings()) {
        return false;
    }
    const Separators& separators = m_program.Units.NumberSeparators;
    const auto write = [&](auto& inFile, const auto& list, const char* file, const auto& writer) {
        if (inFile != list &&
            writer(list, m_settingsFolder + file, separators, m_files, messages)) {
            inFile = list;
        }
        return inFile == list;
    };
    const bool channels =
        write(m_channelsInFile, m_program.CustomChannels, CustomChannelsFile, CustomChannelsWrite);
    if (!channels && IsBatch()) {
        return false;
    }
    return write(m_viewsInFile, m_program.ExportViews, ExportTablesFile, ExportTablesWrite) &&
           channels;
}

} // namespace corvanta
