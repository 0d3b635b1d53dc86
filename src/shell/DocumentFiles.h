#pragma once

#include "platform/Controls.h"
#include "shell/CMRUFileList.h"
#include "shell/Desk.h"
#include "shell/RecoveryCopy.h"
#include "shell/ShellHost.h"

#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// What a file command came to.
enum class FileOutcome {
    Nothing,  ///< the user backed out, or was told what failed; the document is as it was
    Saved,    ///< the document's file holds it
    Replaced, ///< another document is there, or, after a file that could not be read, an empty one
};

/// The document and its files: opening, saving, the copy of unsaved work, the recent files, and
/// what other programs do to the document's file meanwhile. It asks and tells the user; what the
/// main window shows of the outcome is the window's.
class DocumentFiles {
  public:
    /// The kinds of files that a document is asked for with.
    static constexpr const char* Filter = "WSP files (*.wsp)|*.wsp| All files (*.*)|*.*";

    /// `recentItems` is the menu of the recent files.
    DocumentFiles(Desk& desk, ShellHost& main, std::vector<MenuItem>& recentItems);

    void LoadRecentFiles();
    void SaveRecentFiles();

    /// The same where the list has changed; the menu then shows what other programs have added too.
    void KeepRecentFiles();

    /// Asks whether what is there may go, and empties the document.
    FileOutcome New();

    /// Asks for a file to open; the folder it begins in is that of the last one.
    [[nodiscard]] std::optional<std::string> AskForFile();
    [[nodiscard]] std::optional<std::string> AskForFile(const std::string& startFolder);

    /// Asks for one of the samples and opens it.
    FileOutcome AskAndOpenSample();

    /// Opens an entry of the recent files. One without a file is offered for removal instead.
    FileOutcome OpenRecent(int index);

    /// Opens a document in the place of the current one. A file that can't be used is reported and
    /// leaves an empty document. Unsaved work is kept to be recovered; only when that fails, or for
    /// values not applied yet, is the user asked.
    FileOutcome Open(const std::string& path);

    /// The same, but a document that came with the program becomes an untitled copy.
    FileOutcome OpenAsUser(const std::string& path);

    /// Opens work of the list of `Recovery`.
    FileOutcome OpenRecovered(const RecoveredWork& work);

    /// True when another program has changed the document's file, and the user was not asked about
    /// that yet.
    [[nodiscard]] bool HasNewsOnDisk() const;

    /// Offers, once for every change by another program, to read the document's file again.
    FileOutcome OfferReload();

    /// Takes what is typed in the open editor, and saves to the document's file; asks for a name
    /// when the document has none of its own, or its file is none of the current format.
    FileOutcome Save();
    FileOutcome SaveAs();

    /// Saves as the path with the extension ".WSP" behind it, in the place of another spelling of
    /// it. The document's own file keeps its spelling. What another program has written there since
    /// is not overwritten unasked.
    FileOutcome SaveTo(const std::string& path);

    /// Asks for the path of a document to be written, beginning with a name. Nothing when the user
    /// backs out, and for a sample.
    [[nodiscard]] std::optional<std::string> AskPath(const std::string& name);

    /// Takes what is typed in the open editor and not applied; false when that failed and was told.
    bool ApplyTyped();

    /// True when the documents that come with the program are there.
    [[nodiscard]] bool HasSamples() const;

    RecoveryCopy Recovery;

    std::string Note; ///< what the last command has to say, for the status bar

  private:
    [[nodiscard]] FileOutcome Open(const std::string& path, bool asCopy);
    [[nodiscard]] bool MakeRoom(bool forItself);
    [[nodiscard]] bool Read(const std::string& path);
    [[nodiscard]] std::string SavePath(const std::string& path) const;
    [[nodiscard]] bool MayWrite(const std::string& chosenPath);
    [[nodiscard]] bool MayLoseText();
    [[nodiscard]] std::string MarkOf(const std::string& path) const;
    [[nodiscard]] bool LiesWithSamples(const std::string& path) const;
    void Write(const std::string& path, bool& written);
    void EnterRecentFile(const std::string& path);

    Desk& m_desk;
    ShellHost& m_main;
    std::vector<MenuItem>& m_recentItems;
    CMRUFileList m_recentFiles;
    std::string m_offeredMark; ///< of the changed file that the user was asked about last
    std::string m_lostText;    ///< what the user has agreed to lose by saving
};

} // namespace corvanta
