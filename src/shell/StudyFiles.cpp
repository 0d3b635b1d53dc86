#include "shell/StudyFiles.h"

#include "model/Failure.h"
#include "model/NumberText.h"
#include "persistence/DesignFile.h"
#include "persistence/MData.h"
#include "solver/SInitGeo.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace corvanta {

namespace {

constexpr const char* StudyFilter = "Study files (*.study)|*.study| All files (*.*)|*.*";
constexpr std::string_view StudyExtension = ".study";

/// A document read on the side; what there is to say of it stands in `words`. Nothing when it can't
/// be read.
std::optional<Design> ReadAside(const std::string& path, const Desk& desk, std::string& words) {
    try {
        return ReadDesign(path, desk.Program.Units, desk.Files, words);
    } catch (...) {
        words = FailureInFlight().Description();
        return std::nullopt;
    }
}

/// True when one of the things is not among the others.
template <typename Thing>
bool HasMore(const std::vector<Thing>& things, const std::vector<Thing>& others) {
    return std::any_of(things.begin(), things.end(), [&](const Thing& thing) {
        return std::find(others.begin(), others.end(), thing) == others.end();
    });
}

std::string WithoutSeparators(std::string name) {
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == '/' || c == '\\'; }, '-');
    return name;
}

std::string CountOf(std::size_t variants) {
    return std::to_string(variants) + (variants == 1 ? " variant" : " variants");
}

} // namespace

StudyFiles::StudyFiles(Desk& desk, ShellHost& main, DocumentFiles& documents,
                       std::function<void(FileOutcome)> show)
    : m_desk(desk),
      m_main(main),
      m_documents(documents),
      m_show(std::move(show)) {
    m_desk.Current.Watch(*this);
}

StudyFiles::~StudyFiles() {
    m_desk.Current.Unwatch(*this);
}

void StudyFiles::DocumentChanged(DocumentChange change) {
    const int begun = m_desk.Current.StudiesBegun();
    if (change == DocumentChange::Replaced && std::exchange(m_begun, begun) != begun) {
        m_path.clear();
        m_bytes.clear();
        m_kept = m_desk.Current.Study();
    }
}

bool StudyFiles::IsStudy(const std::string& path) {
    return UpperCase(path).ends_with(UpperCase(std::string(StudyExtension)));
}

// --- Opening ------------------------------------------------------------------------------------

std::optional<std::string> StudyFiles::AskForStudy(FileNameMode mode, std::string name) {
    ChosenFile chosen;
    chosen.Title = std::move(name);
    chosen.Extension = StudyExtension.substr(1);
    return m_main.GetFileName(mode, StudyFilter, m_desk.Program.Options.LastFolder, chosen, false)
               ? std::optional(chosen.Path)
               : std::nullopt;
}

void StudyFiles::AskAndOpen() {
    if (const std::optional<std::string> path = AskForStudy(FileNameMode::Open, "")) {
        Open(*path);
    }
}

void StudyFiles::Open(const std::string& path) {
    StudyData study;
    std::string bytes;
    try {
        bytes = m_desk.Files.ReadBytes(path);
        study = ReadStudy(bytes, FileServices::FileName(path));
    } catch (...) {
        m_desk.Messages.ShowMessage("The study could not be opened.\r\r" +
                                        FailureInFlight().Description() + "\r\rThe file: " + path,
                                    msExclamation);
        return;
    }
    m_documents.Note.clear();
    if (!BringDocument(path, study)) {
        return;
    }
    const StudyData& own = m_desk.Current.Study();
    if (!study.Baseline) {
        study.Baseline = own.Baseline;
    }
    if (study.Charts.empty()) {
        study.Charts = own.Charts;
    }
    m_path = path;
    m_bytes = std::move(bytes);
    m_kept = study;
    m_desk.Current.ChangeStudy(std::move(study));
    const std::string& note = m_documents.Note; // of its document, if that had to be opened
    m_main.Confirm(note + (note.empty() ? "" : "   ") + FileServices::FileName(path) + " opened");
}

/// The document of a study becomes the open one; the study before may go then. False when it is
/// not, and the user knows.
bool StudyFiles::BringDocument(const std::string& path, const StudyData& study) {
    const std::optional<std::string> found =
        FindDocument(m_desk.Files.FullPath(path), study.Document, m_desk.Files);
    if (!found) {
        return AskForDocument(path, study);
    }
    return IsOpenDocument(*found) ? MayGo() : OpenDocument(*found);
}

bool StudyFiles::AskForDocument(const std::string& path, const StudyData& study) {
    const std::string question = study.Document.empty()
                                     ? FileServices::FileName(path) + " names no document."
                                     : "The document " + study.Document + " of " +
                                           FileServices::FileName(path) + " is not there.";
    std::vector<std::string> ways{"&Choose Document..."};
    if (m_desk.Program.Document.DataLoaded) {
        ways.emplace_back("&Use Open Document");
    }
    switch (m_desk.Messages.Choose(question, ways)) {
    case 0: {
        const std::optional<std::string> chosen =
            m_documents.AskForFile(FileServices::ParentFolder(path));
        return chosen && (IsOpenDocument(*chosen) ? MayGo() : OpenDocument(*chosen));
    }
    case 1:
        return MayGo();
    default:
        return false;
    }
}

bool StudyFiles::OpenDocument(const std::string& path) {
    const FileOutcome outcome = m_documents.OpenAsUser(path);
    m_show(outcome);
    return outcome == FileOutcome::Replaced && m_desk.Program.Document.DataLoaded;
}

bool StudyFiles::IsOpenDocument(const std::string& path) const {
    const Program& program = m_desk.Program;
    return program.Document.DataLoaded && !program.DocumentPath.empty() &&
           m_desk.Files.SameFile(path, program.DocumentPath);
}

// --- Saving -------------------------------------------------------------------------------------

bool StudyFiles::Save() {
    if (m_path.empty()) {
        return SaveAs();
    }
    std::string onDisk = m_bytes;
    try {
        if (m_desk.Files.FileExists(m_path)) {
            onDisk = m_desk.Files.ReadBytes(m_path);
        }
    } catch (const Failure&) {
        onDisk.clear(); // it is not what it was
    }
    if (onDisk != m_bytes) {
        enum { Overwrite, UnderAnotherName };
        switch (m_desk.Messages.Choose(FileServices::FileName(m_path) +
                                           " was changed by another program since it was opened "
                                           "or saved here.",
                                       {"&Overwrite", "Save &As..."})) {
        case Overwrite:
            break;
        case UnderAnotherName:
            return SaveAs();
        default:
            return false;
        }
    }
    return Write(m_path);
}

bool StudyFiles::SaveAs() {
    std::string name = FileServices::FileName(m_path);
    if (m_path.empty() && !m_desk.Program.DocumentPath.empty()) {
        name = FileServices::BaseName(m_desk.Program.DocumentPath) + std::string(StudyExtension);
    }
    const std::optional<std::string> chosen = AskForStudy(FileNameMode::SaveAs, std::move(name));
    if (!chosen) {
        return false;
    }
    const std::string path = IsStudy(*chosen) ? *chosen : *chosen + std::string(StudyExtension);
    return MayWrite(*chosen, path) && Write(path);
}

/// The file dialog asked about the name that was typed; the file may get its extension.
bool StudyFiles::MayWrite(const std::string& chosen, const std::string& path) {
    return path == chosen || !m_desk.Files.FileExists(path) ||
           m_desk.Messages.Ask(FileServices::FileName(path) + " exists already.\rReplace it?",
                               {"&Replace"}) == maYes;
}

/// What a study file calls the open document; empty for one without a file.
std::string StudyFiles::NameOfDocument(const std::string& path) const {
    const std::string& document = m_desk.Program.DocumentPath;
    return document.empty()
               ? ""
               : StudyPathOfDocument(m_desk.Files.FullPath(path), m_desk.Files.FullPath(document));
}

bool StudyFiles::Write(const std::string& path) {
    StudyData study = m_desk.Current.Study();
    study.Document = NameOfDocument(path);
    try {
        std::string bytes = WriteStudy(study);
        m_desk.Files.WriteBytes(path, bytes);
        m_bytes = std::move(bytes);
    } catch (...) {
        m_desk.Messages.ShowMessage("The study could not be saved.\rError was: " +
                                        FailureInFlight().Description(),
                                    msExclamation);
        return false;
    }
    m_path = path;
    m_kept = study;
    m_desk.Current.ChangeStudy(std::move(study));
    m_main.Confirm(FileServices::FileName(path) + " saved");
    if (m_kept.Document.empty()) {
        m_desk.Messages.ShowMessage("The study is saved, but names no document, as this one has no "
                                    "file yet.\rSave the document, then the study again.",
                                    msInformation);
    }
    return true;
}

bool StudyFiles::HoldsUnsaved() const {
    const StudyData& study = m_desk.Current.Study();
    const bool asksMore =
        study.Questions != m_kept.Questions && study.Questions != StudyQuestions{};
    return asksMore || HasMore(study.Variants, m_kept.Variants) ||
           HasMore(study.Targets, m_kept.Targets);
}

bool StudyFiles::MayGo() {
    if (!HoldsUnsaved()) {
        return true;
    }
    switch (m_desk.Messages.Ask("Save the study?\rIt holds variants, targets or questions that "
                                "are in no study file.",
                                {"&Save", "Do&n't Save"}, msYesNoCancel + msExclamation)) {
    case maYes:
        return Save();
    case maNo:
        return true;
    default:
        return false;
    }
}

// --- Variants -----------------------------------------------------------------------------------

void StudyFiles::AskAndAddVariants() {
    ChosenFile chosen;
    chosen.Several = true;
    if (m_main.GetFileName(FileNameMode::Open, DocumentFiles::Filter,
                           m_desk.Program.Options.LastFolder, chosen, false)) {
        AddVariants(chosen.Paths);
    }
}

void StudyFiles::AddVariants(const std::vector<std::string>& paths) {
    if (!m_desk.Program.Document.DataLoaded) {
        m_desk.Messages.ShowMessage("Variants stand beside a document.\rOpen one first.",
                                    msInformation);
        return;
    }
    StudyData study = m_desk.Current.Study();
    std::string failed;
    std::string doubtful;
    std::size_t added = 0;
    for (const std::string& path : paths) {
        std::string words;
        const std::optional<Design> design = ReadAside(path, m_desk, words);
        if (design) {
            study.Variants.push_back(
                NewVariant(study.Variants, FileServices::BaseName(path), *design));
            ++added;
        }
        if (!design || !words.empty()) {
            (design ? doubtful : failed) += "\r\r" + FileServices::FileName(path) + ": " + words;
        }
    }
    if (added > 0) {
        m_desk.Current.ChangeStudy(std::move(study));
        m_main.Confirm(CountOf(added) + " added");
    }
    std::string message = failed.empty() ? "" : "These files could not be added:" + failed;
    if (!doubtful.empty()) {
        message +=
            (failed.empty() ? "" : "\r\r") + ("These were added, but look at them:" + doubtful);
    }
    if (!message.empty()) {
        m_desk.Messages.ShowMessage(message, msExclamation);
    }
}

void StudyFiles::SaveVariant(std::size_t variant) {
    const std::vector<Variant>& variants = m_desk.Current.Study().Variants;
    if (variant >= variants.size()) {
        return;
    }
    const Variant saved = variants[variant];
    const std::optional<std::string> path =
        m_documents.AskPath(WithoutSeparators(saved.Name) + ".WSP");
    if (!path || (IsOpenDocument(*path) &&
                  m_desk.Messages.Ask(FileServices::FileName(*path) +
                                          " is the open document.\rReplace its file by "
                                          "the variant?",
                                      {"&Replace"}) != maYes)) {
        return;
    }
    try {
        Suspension document;
        SetDesign(document, saved.Design, m_desk.Program.Units);
        bool written = false;
        if (!DataWrite(written, document, *path, m_desk.Program.Units, m_desk.Files,
                       m_desk.Messages)) {
            throw Failure(fnFileAccess, "The file has no name");
        }
        if (written) {
            m_main.Confirm(FileServices::FileName(*path) + " saved");
        }
    } catch (...) {
        m_desk.Messages.ShowMessage(
            "The variant " + saved.Name +
                " could not be saved.\rError was: " + FailureInFlight().Description(),
            msExclamation);
    }
}

} // namespace corvanta
