#pragma once

#include "shell/Desk.h"
#include "shell/DocumentFiles.h"
#include "shell/ShellHost.h"
#include "study/StudyFile.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// The study of the open document and its file: opening, saving, and variants that come from
/// documents or go to one. It asks and tells the user as `DocumentFiles` does; what a command has
/// to say otherwise goes to the status bar.
class StudyFiles final : private DocumentWatcher {
  public:
    /// `show` shows what became of the document, where a study brings its own.
    StudyFiles(Desk& desk, ShellHost& main, DocumentFiles& documents,
               std::function<void(FileOutcome)> show);
    StudyFiles(const StudyFiles&) = delete;
    StudyFiles& operator=(const StudyFiles&) = delete;
    StudyFiles(StudyFiles&&) = delete;
    StudyFiles& operator=(StudyFiles&&) = delete;
    ~StudyFiles() override;

    /// True for the name of a study file.
    [[nodiscard]] static bool IsStudy(const std::string& path);

    /// Asks for a study file and opens it.
    void AskAndOpen();

    /// Opens a study with its document, unless that is the open one. A study that can't be used is
    /// reported, and nothing changes. Where the document is missing the user says which to take.
    void Open(const std::string& path);

    /// Saves to the study's file; asks for a name when there is none. False when nothing was
    /// written.
    bool Save();
    bool SaveAs();

    /// Asks for documents and makes a variant of each; those that can't be read are told in one
    /// message.
    void AskAndAddVariants();
    void AddVariants(const std::vector<std::string>& paths);

    /// Asks for a name and saves a variant as a document of its own. `variant` counts from 0.
    void SaveVariant(std::size_t variant);

    /// Asks what to do with variants, targets and questions that no file has. False when they must
    /// stay.
    [[nodiscard]] bool MayGo();

    /// The study's file, empty for none.
    [[nodiscard]] const std::string& Path() const { return m_path; }

  private:
    void DocumentChanged(DocumentChange change) override;
    [[nodiscard]] std::optional<std::string> AskForStudy(FileNameMode mode, std::string name);
    [[nodiscard]] bool BringDocument(const std::string& path, const StudyData& study);
    [[nodiscard]] bool AskForDocument(const std::string& path, const StudyData& study);
    [[nodiscard]] bool OpenDocument(const std::string& path);
    [[nodiscard]] bool IsOpenDocument(const std::string& path) const;
    [[nodiscard]] bool MayWrite(const std::string& chosen, const std::string& path);
    [[nodiscard]] bool HoldsUnsaved() const;
    [[nodiscard]] std::string NameOfDocument(const std::string& path) const;
    bool Write(const std::string& path);

    Desk& m_desk;
    ShellHost& m_main;
    DocumentFiles& m_documents;
    std::function<void(FileOutcome)> m_show;
    std::string m_path;
    std::string m_bytes; ///< of that file as it was read or written
    int m_begun = 0;     ///< studies up to this one
    StudyData m_kept;    ///< what it holds; without a file, what the document began with
};

} // namespace corvanta
