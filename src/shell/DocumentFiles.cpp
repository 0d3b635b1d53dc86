#include "shell/DocumentFiles.h"

#include "model/Failure.h"
#include "model/NumberText.h"
#include "persistence/MData.h"
#include "shell/MechanismExample.h"
#include "shell/frmEditGeometry.h"

#include <cstdint>
#include <string_view>

namespace corvanta {

namespace {

constexpr std::string_view DocumentExtension = ".WSP";
constexpr const char* DiscardQuestion = "Discard any current data?";
const AnswerWords DiscardWords{"&Discard"};
constexpr int RecentFileCount = 4;

bool IsOfDocument(const std::string& path) {
    return UpperCase(path).ends_with(DocumentExtension);
}

/// Tells one content of a file from another: its length and the 64-bit hash of Fowler, Noll and Vo
/// (FNV-1a).
std::string MarkOfBytes(std::string_view bytes) {
    constexpr std::uint64_t Basis = 14695981039346656037U;
    constexpr std::uint64_t Prime = 1099511628211U;
    std::uint64_t hash = Basis;
    for (const char byte : bytes) {
        hash = (hash ^ static_cast<unsigned char>(byte)) * Prime;
    }
    return std::to_string(bytes.size()) + "-" + std::to_string(hash);
}

} // namespace

DocumentFiles::DocumentFiles(Desk& desk, ShellHost& main, std::vector<MenuItem>& recentItems)
    : Recovery(desk.Files, desk.Windows.Locks),
      m_desk(desk),
      m_main(main),
      m_recentItems(recentItems) {}

// --- Recent files -------------------------------------------------------------------------------

void DocumentFiles::LoadRecentFiles() {
    m_recentFiles.Initialise(m_recentItems, RecentFileCount, true, "", *m_desk.Store,
                             m_desk.Messages);
    m_recentFiles.ListFiles(m_recentItems);
}

void DocumentFiles::SaveRecentFiles() {
    m_recentFiles.Save(*m_desk.Store);
}

void DocumentFiles::KeepRecentFiles() {
    if (m_recentFiles.Changed()) {
        SaveRecentFiles();
        m_recentFiles.ListFiles(m_recentItems);
    }
}

void DocumentFiles::EnterRecentFile(const std::string& path) {
    m_recentFiles.AddFile(path);
    m_recentFiles.ListFiles(m_recentItems);
}

FileOutcome DocumentFiles::OpenRecent(int index) {
    const std::string path = m_recentFiles.File(index);
    if (m_desk.Files.FileExists(path)) {
        return OpenAsUser(path);
    }
    if (m_desk.Messages.Ask("There is no file " + path +
                                " any more.\rRemove it from the recent files?",
                            {"&Remove", "&Keep"}) == maYes) {
        m_recentFiles.RemoveFile(index);
        m_recentFiles.ListFiles(m_recentItems);
    }
    return FileOutcome::Nothing;
}

// --- Opening ------------------------------------------------------------------------------------

FileOutcome DocumentFiles::New() {
    Program& program = m_desk.Program;
    const frmEditGeometry* const editor = m_main.OpenedEditor();
    const bool empty = !program.Document.DataLoaded && !program.Modified &&
                       (editor == nullptr || !editor->HasUnappliedChanges());
    if (!empty && m_desk.Messages.Ask(DiscardQuestion, DiscardWords) != maYes) {
        return FileOutcome::Nothing;
    }
    if (!m_main.MayDropStudy()) {
        return FileOutcome::Nothing;
    }
    ResetDocument(program.Document, program.Settings);
    Recovery.Drop();
    program.DocumentPath.clear();
    program.FileMark.clear();
    m_desk.Current.Begin("New", true);
    return FileOutcome::Replaced;
}

std::optional<std::string> DocumentFiles::AskForFile() {
    return AskForFile(m_desk.Program.Options.LastFolder);
}

FileOutcome DocumentFiles::AskAndOpenSample() {
    const std::optional<std::string> path = AskForFile(SamplesFolder(m_desk.Process, m_desk.Files));
    return path ? OpenAsUser(*path) : FileOutcome::Nothing;
}

std::optional<std::string> DocumentFiles::AskForFile(const std::string& startFolder) {
    ChosenFile chosen;
    return m_main.GetFileName(FileNameMode::Open, Filter, startFolder, chosen, false)
               ? std::optional(chosen.Path)
               : std::nullopt;
}

/// Unsaved work that makes room for another file, or for its own as it is now, can be recovered.
/// Without a copy it would be lost, and the user decides.
bool DocumentFiles::MakeRoom(bool forItself) {
    Program& program = m_desk.Program;
    Note.clear();
    if (!m_main.MayDropEdits() || (!forItself && !m_main.MayDropStudy())) {
        return false;
    }
    const bool kept = program.Modified && Recovery.Keep(program);
    if (program.Modified && !kept && m_desk.Messages.Ask(DiscardQuestion, DiscardWords) != maYes) {
        return false;
    }
    kept ? Recovery.SetAside() : Recovery.Drop();
    program.Modified = false;
    if (kept) {
        Note = "Unsaved changes were kept: see Recover Unsaved Work in the File menu";
    }
    return true;
}

bool DocumentFiles::Read(const std::string& path) {
    Program& program = m_desk.Program;
    std::string reason;
    bool opened = false;
    m_main.ResetEditDialog();
    ResetDocument(program.Document, program.Settings);
    // Marked before it is read, so that a change in between is found.
    program.FileMark = MarkOf(path);
    try {
        opened = DataLoad(program.Document, program.Channels, path, true, program.Units,
                          m_desk.Files, m_desk.Messages);
    } catch (...) {
        reason = FailureInFlight().Description();
    }
    if (!opened) {
        program.FileMark.clear();
        m_desk.Messages.ShowMessage("There was an error while processing file\r\rError was: " +
                                        reason + "\r\rThe file: " + path,
                                    msExclamation);
    }
    return opened;
}

FileOutcome DocumentFiles::Open(const std::string& path) {
    return Open(path, false);
}

FileOutcome DocumentFiles::OpenAsUser(const std::string& path) {
    return Open(path, LiesWithSamples(path));
}

FileOutcome DocumentFiles::Open(const std::string& path, bool asCopy) {
    Program& program = m_desk.Program;
    // What stands beside a document stays when its file is read again.
    const bool again = !asCopy && program.Document.DataLoaded && path == program.DocumentPath;
    if (!MakeRoom(again)) {
        return FileOutcome::Nothing;
    }
    const bool read = Read(path);
    m_desk.Current.Begin("Open " + FileServices::FileName(path), true, again);
    if (!read) {
        return FileOutcome::Replaced;
    }
    if (asCopy) {
        program.DocumentPath.clear();
        program.FileMark.clear();
        Note += (Note.empty() ? "" : "   ") + ("Untitled copy of " + FileServices::FileName(path));
    } else {
        program.DocumentPath = path;
        program.Options.LastFolder = FileServices::ParentFolder(path);
        EnterRecentFile(path);
    }
    return FileOutcome::Replaced;
}

FileOutcome DocumentFiles::OpenRecovered(const RecoveredWork& work) {
    if (!MakeRoom(false)) {
        return FileOutcome::Nothing;
    }
    if (!Recovery.Adopt(work.Place)) {
        m_desk.Messages.ShowMessage("Another window has opened this work in the meantime.",
                                    msInformation);
        return FileOutcome::Nothing;
    }
    const bool read = Read(work.CopyPath);
    m_desk.Current.Begin("Recover unsaved work", !read);
    if (!read) {
        Recovery.SetAside();
        return FileOutcome::Replaced;
    }
    Program& program = m_desk.Program;
    program.DocumentPath = work.DocumentPath;
    program.FileMark = work.FileMark;
    return FileOutcome::Replaced;
}

bool DocumentFiles::HasNewsOnDisk() const {
    const Program& program = m_desk.Program;
    if (!program.Document.DataLoaded || program.FileMark.empty()) {
        return false;
    }
    const std::string mark = MarkOf(program.DocumentPath);
    return !mark.empty() && mark != program.FileMark && mark != m_offeredMark;
}

FileOutcome DocumentFiles::OfferReload() {
    if (!HasNewsOnDisk()) {
        return FileOutcome::Nothing;
    }
    const Program& program = m_desk.Program;
    const std::string path = program.DocumentPath;
    m_offeredMark = MarkOf(path);
    std::string question =
        FileServices::FileName(path) + " was changed by another program. Reload it?";
    if (program.Modified) {
        question += "\r\rYour own unsaved changes are then kept under Recover Unsaved Work in the "
                    "File menu.";
    }
    return m_desk.Messages.Choose(question, {"&Reload"}) == 0 ? Open(path) : FileOutcome::Nothing;
}

// --- Saving -------------------------------------------------------------------------------------

bool DocumentFiles::ApplyTyped() {
    frmEditGeometry* const editor = m_main.OpenedEditor();
    if (editor == nullptr || !editor->HasUnappliedChanges()) {
        return true;
    }
    const bool applied = editor->Apply();
    editor->Raise = !applied; // its fault is to be seen
    return applied;
}

FileOutcome DocumentFiles::Save() {
    if (!ApplyTyped()) {
        return FileOutcome::Nothing;
    }
    const Program& program = m_desk.Program;
    // With no suspension loaded a save must not end in an old file overwritten with an empty one,
    // nor may one of another format be lost to the current one.
    return program.Document.DataLoaded && IsOfDocument(program.DocumentPath)
               ? SaveTo(program.DocumentPath)
               : SaveAs();
}

FileOutcome DocumentFiles::SaveAs() {
    if (!ApplyTyped()) {
        return FileOutcome::Nothing;
    }
    const Program& program = m_desk.Program;
    std::string name;
    // The name of a file that is not in memory is not offered for what is.
    if (program.Document.DataLoaded && !program.DocumentPath.empty()) {
        name = IsOfDocument(program.DocumentPath)
                   ? FileServices::FileName(program.DocumentPath)
                   : FileServices::BaseName(program.DocumentPath) + std::string(DocumentExtension);
    }
    const std::optional<std::string> path = AskPath(name);
    return path ? SaveTo(*path) : FileOutcome::Nothing;
}

std::optional<std::string> DocumentFiles::AskPath(const std::string& name) {
    ChosenFile chosen;
    chosen.Title = name;
    chosen.Extension = DocumentExtension.substr(1);
    return m_main.GetFileName(FileNameMode::Save, Filter, m_desk.Program.Options.LastFolder, chosen,
                              false) &&
                   MayWrite(chosen.Path)
               ? std::optional(SavePath(chosen.Path))
               : std::nullopt;
}

std::string DocumentFiles::SavePath(const std::string& path) const {
    if (!IsOfDocument(path)) {
        return path + std::string(DocumentExtension);
    }
    return path == m_desk.Program.DocumentPath
               ? path
               : path.substr(0, path.size() - DocumentExtension.size()) +
                     std::string(DocumentExtension);
}

/// The file dialog asked about the name that was typed; the file may get another extension.
bool DocumentFiles::MayWrite(const std::string& chosenPath) {
    const std::string path = SavePath(chosenPath);
    if (!m_desk.Files.FileExists(path)) {
        return true;
    }
    if (LiesWithSamples(path)) {
        m_desk.Messages.ShowMessage("The samples stay as they came with the program.\rSave under "
                                    "another name or in another folder.",
                                    msExclamation);
        return false;
    }
    return path == chosenPath ||
           m_desk.Messages.Ask(FileServices::FileName(path) + " exists already.\rReplace it?",
                               {"&Replace"}) == maYes;
}

/// The format of the file ends a text at a "[".
bool DocumentFiles::MayLoseText() {
    const std::string& text = m_desk.Program.Document.Data.Description;
    const std::size_t bracket = text.find('[');
    const std::string lost = bracket == std::string::npos ? "" : text.substr(bracket);
    if (lost.empty() || lost == m_lostText) {
        return true;
    }
    if (m_desk.Messages.Ask("A file keeps the description only up to the first \"[\". "
                            "This would be lost:\r\r" +
                                lost + "\r\rSave all the same?",
                            {"&Save"}) != maYes) {
        return false;
    }
    m_lostText = lost;
    return true;
}

FileOutcome DocumentFiles::SaveTo(const std::string& path) {
    const Program& program = m_desk.Program;
    const std::string target = SavePath(path);
    Note.clear();
    if (!MayLoseText()) {
        return FileOutcome::Nothing;
    }
    const std::string mark = target == program.DocumentPath ? MarkOf(target) : "";
    if (!mark.empty() && !program.FileMark.empty() && mark != program.FileMark) {
        enum { Overwrite, UnderAnotherName, Reload };
        switch (m_desk.Messages.Choose(FileServices::FileName(target) +
                                           " was changed by another program since it was opened "
                                           "or saved here.",
                                       {"&Overwrite", "Save &As...", "&Reload"})) {
        case Overwrite:
            break;
        case UnderAnotherName:
            return SaveAs();
        case Reload:
            return Open(target);
        default:
            return FileOutcome::Nothing;
        }
    }
    bool written = false;
    Write(target, written);
    return written ? FileOutcome::Saved : FileOutcome::Nothing;
}

void DocumentFiles::Write(const std::string& path, bool& written) {
    Program& program = m_desk.Program;
    try {
        if (!DataWrite(written, program.Document, path, program.Units, m_desk.Files,
                       m_desk.Messages)) {
            throw Failure(fnFileAccess, "The file has no name");
        }
        if (!written) {
            return;
        }
        m_desk.Current.MarkSaved();
        program.DocumentPath = path;
        program.FileMark = MarkOf(path);
        program.Options.LastFolder = FileServices::ParentFolder(path);
        Recovery.Drop();
        EnterRecentFile(path);
        Note = FileServices::FileName(path) + " saved";
    } catch (...) {
        m_desk.Messages.ShowMessage("There was an error while processing file\r\rError was " +
                                        FailureInFlight().Description(),
                                    msExclamation);
    }
}

// --- Files --------------------------------------------------------------------------------------

/// Empty for a file that isn't there or can't be read: whoever needs it finds out and tells.
std::string DocumentFiles::MarkOf(const std::string& path) const {
    try {
        return m_desk.Files.FileExists(path) ? MarkOfBytes(m_desk.Files.ReadBytes(path)) : "";
    } catch (const Failure&) {
        return {};
    }
}

bool DocumentFiles::HasSamples() const {
    return m_desk.Files.FolderExists(SamplesFolder(m_desk.Process, m_desk.Files));
}

bool DocumentFiles::LiesWithSamples(const std::string& path) const {
    const FileServices& files = m_desk.Files;
    return files.FullPath(path).starts_with(
        files.FullPath(SamplesFolder(m_desk.Process, m_desk.Files)) + FileServices::Separator);
}

} // namespace corvanta
