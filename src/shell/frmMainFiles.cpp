// The file commands of the main window, and what it shows of their outcome.

#include "shell/frmMain.h"

#include "model/Failure.h"
#include "shell/MechanismExample.h"

namespace corvanta {

namespace {

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

} // namespace

bool frmMain::ExecuteFileCommand(int command, int tag) {
    switch (command) {
    case mcNew:
        New();
        return true;
    case mcOpen:
        if (const std::optional<std::string> path = Files.AskForFile()) {
            OpenFile(*path);
        }
        return true;
    case mcSave:
        ShowOutcome(Files.Save());
        return true;
    case mcSaveAs:
        ShowOutcome(Files.SaveAs());
        return true;
    case mcRecentFile:
        ShowOutcome(Files.OpenRecent(tag));
        return true;
    case mcOpenStudy:
        Studies.AskAndOpen();
        return true;
    case mcSaveStudy:
        Studies.Save();
        return true;
    case mcSaveStudyAs:
        Studies.SaveAs();
        return true;
    case mcAddVariants:
        Studies.AskAndAddVariants();
        return true;
    case mcRecover:
        OfferRecovery(true);
        return true;
    default:
        return false;
    }
}

void frmMain::New() {
    if (Files.New() == FileOutcome::Replaced) {
        m_desk.Program.Settings.View = vwNone;
        m_viewToCome.reset(); // it is of a document that was opened
        RefreshGUI(false);
        ResetEditDialog();
        EditGeometry.Raise(m_desk, *this);
    }
}

void frmMain::ShowOutcome(FileOutcome outcome) {
    if (outcome == FileOutcome::Nothing) {
        return;
    }
    Program& program = m_desk.Program;
    if (outcome == FileOutcome::Saved) {
        RefreshGUI(false);
    } else if (program.Document.DataLoaded) {
        TakeRememberedView();
        if (program.Settings.View == vwNone) {
            program.Settings.View = vwCoordinates;
        }
        RefreshGUI(true);
    } else {
        ShowNoDocument();
    }
    if (!Files.Note.empty()) {
        stbMain.Note = Files.Note;
    }
}

void frmMain::TakeRememberedView() {
    if (m_viewToCome) {
        ViewSettings& settings = m_desk.Program.Settings;
        settings.View = m_viewToCome->View;
        settings.ViewVariable = m_viewToCome->Variable;
        m_channelLastPlotted = m_viewToCome->Channel;
        m_viewToCome.reset();
    }
}

void frmMain::KeepView() {
    const ViewSettings& settings = m_desk.Program.Settings;
    if (!m_viewToCome && ShownView() != vwNone) {
        WriteView(*m_desk.Store, {settings.View, m_channelLastPlotted, settings.ViewVariable});
    }
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
        request.Several = chosen.Several;
        request.Passing = startFolder == SamplesFolder(m_desk.Process, m_desk.Files);
        const std::optional<FileNameAnswer> answer = m_desk.Windows.Files.Ask(request);
        if (!answer || answer->Path.empty()) {
            return false;
        }
        chosen.Path = answer->Path;
        chosen.Paths = answer->Paths.empty() ? std::vector{answer->Path} : answer->Paths;
        chosen.FilterIndex = answer->FilterIndex;
        chosen.Title = FileServices::FileName(answer->Path);
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

void frmMain::OpenFile(const std::string& path) {
    if (StudyFiles::IsStudy(path)) {
        OpenStudy(path);
    } else {
        ShowOutcome(Files.OpenAsUser(path));
    }
}

void frmMain::OpenStudy(const std::string& path) {
    Studies.Open(path);
    if (Studies.Path() == path) {
        Workbench.Raise(m_desk, *this); // where all of it is in sight
    }
}

std::vector<SampleCard> frmMain::Samples() const {
    return SampleCards(SamplesFolder(m_desk.Process, m_desk.Files), m_desk.Program.Units,
                       m_desk.Files);
}

void frmMain::ShowNoDocument() {
    ShowViewPanels();
    UpdateMenus();
    UpdateToolbar();
    DisplayFormCaption();
    DisplayStatus();
}

bool frmMain::QueryUnload() {
    const Program& program = m_desk.Program;
    const frmEditGeometry* const editor = OpenedEditor();
    const bool pending = editor != nullptr && editor->HasUnappliedChanges();
    bool discards = false;
    if (program.Modified || pending) {
        switch (m_desk.Messages.Ask("Save changes?", {"&Save", "Do&n't Save"},
                                    msYesNoCancel + msExclamation)) {
        case maYes: {
            const FileOutcome outcome = Files.Save();
            ShowOutcome(outcome);
            if (outcome != FileOutcome::Saved) {
                return false;
            }
            break;
        }
        case maNo:
            discards = true;
            break;
        default:
            return false;
        }
    }
    if (!Studies.MayGo()) { // after the document: a study names the file that it has by now
        return false;
    }
    if (discards) {
        Files.Recovery.Drop();
    }
    return true;
}

void frmMain::OfferRecovery(bool asked) {
    RecoveryDialog.Open(m_desk, Files.Recovery, [this](const RecoveredWork& work) {
        ShowOutcome(Files.OpenRecovered(work));
    });
    if (RecoveryDialog.Opened() != nullptr) {
        TakeDownSplash();
    } else if (asked) {
        m_desk.Messages.ShowMessage("There is no unsaved work to recover.", msInformation);
    }
}

} // namespace corvanta
