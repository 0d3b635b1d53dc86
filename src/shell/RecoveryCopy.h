#pragma once

#include "model/Program.h"
#include "platform/FileServices.h"
#include "platform/WindowServices.h"

#include <optional>
#include <string>

namespace corvanta {

/// Unsaved work of a run that is over.
struct RecoveredWork {
    std::string CopyPath;
    std::string DocumentPath; ///< the file that the work belongs to, empty for a new document
};

/// A copy of unsaved work, kept in a folder of its own so that the user's file is never touched.
/// Every running program has a place of its own in it, from 1 to `Places`; a place whose program is
/// gone and that still holds a copy is work to be recovered. What fails here is ignored: it must
/// not disturb the work that it should protect.
class RecoveryCopy {
  public:
    static constexpr int Places = 20;

    RecoveryCopy(FileServices& files, PlaceLocks& locks) : m_files(files), m_locks(locks) {}

    /// Sets the folder, ending in a separator, and makes it.
    void SetFolder(const std::string& folder);

    /// Writes the document over the copy of this program. True when the copy holds it.
    bool Keep(const Program& program);

    /// Deletes the copy of this program, if there is one.
    void Drop();

    /// Leaves the copy for the next start to find; this program takes another place.
    void SetAside();

    /// Work that no running program has in hand. Its place becomes this program's own, so that
    /// `Drop` ends it.
    [[nodiscard]] std::optional<RecoveredWork> Find();

  private:
    [[nodiscard]] std::string PathOf(int place, const char* extension) const;
    bool TakePlace();
    void Delete(const std::string& path);

    FileServices& m_files;
    PlaceLocks& m_locks;
    std::string m_folder; ///< empty: nothing is kept
    int m_place = 0;      ///< of this program; 0 while it has none
};

} // namespace corvanta
