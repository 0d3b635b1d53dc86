// The file commands of the main window.

#include "shell/frmMain.h"

#include "model/Failure.h"
#include "persistence/MData.h"
#include "shell/MechanismExample.h"

namespace corvanta {

namespace {

constexpr const char* DocumentFilter = "WSP files (*.wsp)|*.wsp| All files (*.*)|*.*";
constexpr const char* DocumentExtension = "WSP";
constexpr const char* DiscardQuestion = "Discard any current data?";

/// Title of the dialog by what the name is asked for.
const char* TitleOf(FileNameMode mode) {
    switch (mode) {
    case FileNameMode::Open:
        return "Open";
    case FileNameMode::Save:
        return "Save";
    case FileNameMode::SaveAs:
        return "Save As";
    case FileNameMode::Import:
        return "Import";
    default:
        return "Export";
    }
}

/// The name of a path without its folder.
std::string NameOf(const std::string& path) {
    return path.substr(FileServices::ParentFolder(path).size());
}

/// The path that a document is saved under: whatever extension the user typed is replaced.
std::string DocumentPathOf(const std::string& path) {
    return FileServices::ParentFolder(path) + FileServices::BaseName(path) + "." +
           DocumentExtension;
}

} // namespace

bool frmMain::ExecuteFileCommand(int command, int tag) {
    switch (command) {
    case mcNew:
        New();
        return true;
    case mcOpen:
        AskAndOpen(m_desk.Program.Options.LastFolder);
        return true;
    case mcSave:
        Save();
        return true;
    case mcSaveAs:
        SaveAs();
        return true;
    case mcRecentFile:
        FileOpen(m_recentFiles.File(tag));
        return true;
    default:
        return false;
    }
}

void frmMain::New() {
    constexpr int Question = msYesNo + msExclamation;
    if (m_desk.Messages.ShowMessage(DiscardQuestion, Question) != maYes) {
        return;
    }
    Program& program = m_desk.Program;
    ResetDocument(program.Document, program.Settings);
    Recovery.Drop();
    program.DocumentPath.clear();
    program.Modified = false;
    program.Settings.View = vwNone;
    RefreshGUI(false);
    ResetEditDialog();
    OpenEditor();
}

void frmMain::OpenSample() {
    AskAndOpen(SamplesFolder(m_desk.Process));
}

void frmMain::AskAndOpen(const std::string& startFolder) {
    ChosenFile chosen;
    if (GetFileName(FileNameMode::Open, DocumentFilter, startFolder, chosen, false)) {
        FileOpen(chosen.Path);
    }
}

void frmMain::Save() {
    const Program& program = m_desk.Program;
    // With no suspension loaded a save must not end in an old file overwritten with an empty one.
    if (program.DocumentPath.empty() || !program.Document.DataLoaded) {
        SaveAs();
    } else {
        FileSave(program.DocumentPath);
    }
}

void frmMain::SaveAs() {
    const Program& program = m_desk.Program;
    ChosenFile chosen;
    // The name of a file that is not in memory is not offered for what is.
    chosen.Title = program.Document.DataLoaded ? NameOf(program.DocumentPath) : "";
    chosen.Extension = DocumentExtension;
    if (GetFileName(FileNameMode::Save, DocumentFilter, program.Options.LastFolder, chosen,
                    false) &&
        MayWrite(chosen.Path)) {
        FileSave(chosen.Path);
    }
}

/// The file dialog asked about the name that was typed; the file may get another extension.
bool frmMain::MayWrite(const std::string& chosenPath) {
    const std::string path = DocumentPathOf(chosenPath);
    constexpr int Question = msYesNo + msExclamation;
    return path == chosenPath || !m_desk.Files.FileExists(path) ||
           m_desk.Messages.ShowMessage(NameOf(path) + " exists already.\rReplace it?", Question) ==
               maYes;
}

bool frmMain::GetFileName(FileNameMode mode, const std::string& filter,
                          const std::string& startFolder, ChosenFile& chosen, bool quietOnError) {
    try {
        FileNameRequest request;
        request.Mode = mode;
        request.Title = TitleOf(mode);
        request.Filter = filter;
        request.StartFolder = startFolder;
        request.InitialName = chosen.Title;
        request.Extension = chosen.Extension;
        const std::optional<FileNameAnswer> answer = m_desk.Windows.Files.Ask(request);
        if (!answer || answer->Path.empty()) {
            return false;
        }
        chosen.Path = answer->Path;
        chosen.FilterIndex = answer->FilterIndex;
        chosen.Title = NameOf(answer->Path);
        const std::size_t dot = chosen.Title.rfind('.');
        chosen.Extension = dot == std::string::npos ? "" : chosen.Title.substr(dot + 1);
        return true;
    } catch (...) {
        if (!quietOnError) {
            m_desk.Messages.ShowMessage(
                "There was an error getting the file name.\r\n\r\nError was: " +
                    FailureInFlight().Description(),
                msExclamation);
        }
        return false;
    }
}

bool frmMain::ReadDocument(const std::string& path) {
    Program& program = m_desk.Program;
    std::string reason;
    bool opened = false;
    ResetEditDialog();
    ResetDocument(program.Document, program.Settings);
    try {
        opened = DataLoad(program.Document, program.Channels, path, true, program.Units,
                          m_desk.Files, m_desk.Messages);
    } catch (...) {
        reason = FailureInFlight().Description();
    }
    if (!opened) {
        m_desk.Messages.ShowMessage(
            "There was an error while processing file\r\rError was: " + reason, msExclamation);
    }
    return opened;
}

void frmMain::TakeDocument(const std::string& path) {
    Program& program = m_desk.Program;
    program.DocumentPath = path;
    if (program.Settings.View == vwNone) {
        program.Settings.View = vwCoordinates;
    }
    RefreshGUI(true);
}

void frmMain::ShowNoDocument() {
    ShowViewPanels();
    UpdateMenus();
    UpdateToolbar();
    DisplayFormCaption();
    DisplayStatus();
}

void frmMain::FileOpen(const std::string& path) {
    Program& program = m_desk.Program;
    if (!MayDropEdits()) {
        return;
    }
    // Unsaved work that makes room for another file is offered again. Without a copy it would be
    // lost, and the user decides.
    const bool kept = program.Modified && Recovery.Keep(program);
    constexpr int Question = msYesNo + msExclamation;
    if (program.Modified && !kept &&
        m_desk.Messages.ShowMessage(DiscardQuestion, Question) != maYes) {
        return;
    }
    kept ? Recovery.SetAside() : Recovery.Drop();
    program.Modified = false;
    if (!ReadDocument(path)) {
        ShowNoDocument();
        return;
    }
    program.Options.LastFolder = FileServices::ParentFolder(path);
    EnterRecentFile(path);
    TakeDocument(path);
    if (kept) {
        stbMain.Note = "Unsaved changes were kept and are offered at the next start";
    }
}

void frmMain::FileSave(const std::string& path) {
    Program& program = m_desk.Program;
    try {
        const std::string savedPath = DocumentPathOf(path);
        bool written = false;
        if (!DataWrite(written, program.Document, savedPath, program.Units, m_desk.Files,
                       m_desk.Messages)) {
            throw Failure(fnFileAccess, "The file has no name");
        }
        if (written) {
            program.Modified = false;
            Recovery.Drop();
        }
        program.Options.LastFolder = FileServices::ParentFolder(path);
        program.DocumentPath = savedPath;
        RefreshGUI(false);
        EnterRecentFile(savedPath);
    } catch (...) {
        m_desk.Messages.ShowMessage("There was an error while processing file\r\rError was " +
                                        FailureInFlight().Description(),
                                    msExclamation);
    }
}

void frmMain::EnterRecentFile(const std::string& path) {
    m_recentFiles.AddFile(path);
    m_recentFiles.ListFiles(mnuFMRU);
}

bool frmMain::QueryUnload() {
    Program& program = m_desk.Program;
    frmEditGeometry* const editor = OpenedEditor();
    const bool pending = editor != nullptr && editor->HasUnappliedChanges();
    if (!program.Modified && !pending) {
        return true;
    }
    constexpr int Question = msYesNoCancel + msExclamation;
    switch (m_desk.Messages.ShowMessage("Save changes?", Question)) {
    case maYes:
        if (pending) {
            editor->cmdApply_Click();
            if (editor->HasUnappliedChanges()) {
                return false; // what can't be applied must not be lost
            }
        }
        Save();
        return !program.Modified;
    case maNo:
        Recovery.Drop();
        return true;
    default:
        return false;
    }
}

bool frmMain::HasSamples() const {
    return m_desk.Files.FolderExists(SamplesFolder(m_desk.Process));
}

void frmMain::OfferRecovery() {
    const std::optional<RecoveredWork> work = Recovery.Find();
    if (!work) {
        return;
    }
    const std::string name =
        work->DocumentPath.empty() ? "a new suspension" : NameOf(work->DocumentPath);
    constexpr int Question = msYesNoCancel + msExclamation;
    const int answer = m_desk.Messages.ShowMessage(
        "There are unsaved changes to " + name +
            " from an earlier run.\r\rOpen them now? No throws them away, Cancel keeps them for "
            "the next start.",
        Question);
    if (answer == maNo) {
        Recovery.Drop();
        return;
    }
    if (answer != maYes) {
        Recovery.SetAside();
        return;
    }
    if (ReadDocument(work->CopyPath)) {
        m_desk.Program.Modified = true;
        TakeDocument(work->DocumentPath);
    } else {
        Recovery.SetAside();
        ShowNoDocument();
    }
}

} // namespace corvanta
