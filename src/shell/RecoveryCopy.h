#pragma once

#include "model/Design.h"
#include "model/Program.h"
#include "platform/FileServices.h"
#include "platform/WindowServices.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// Unsaved work that no running program has in hand.
struct RecoveredWork {
    int Place = 0; ///< of the copy
    std::string CopyPath;
    std::string DocumentPath; ///< the file that the work belongs to, empty for a new document
    std::string FileMark;     ///< of that file when the work on it began; see `Program`
    std::int64_t Time = 0;    ///< when the copy was written, seconds since 1970
};

/// A copy of unsaved work, kept in a folder of its own so that the user's file is never touched.
/// Every running program has a place of its own in it, from 1 to `Places`; a place that holds a
/// copy and whose program is gone, or has set it aside, is work to be recovered. What fails here is
/// ignored: it must not disturb the work that it should protect.
class RecoveryCopy {
  public:
    static constexpr int Places = 20;

    RecoveryCopy(FileServices& files, PlaceLocks& locks) : m_files(files), m_locks(locks) {}

    /// Sets the folder, ending in a separator, and makes it.
    void SetFolder(const std::string& folder);

    /// Writes the document over the copy of this program, unless it stands there already. True when
    /// the copy holds it.
    bool Keep(const Program& program);

    /// The same without waiting for the disk, so that it may be called as often as there is time:
    /// it outlives a crash of the program at once, and a loss of power soon.
    bool KeepSoon(const Program& program);

    /// Deletes the copy of this program, if there is one.
    void Drop();

    /// Leaves the copy to be recovered; this program takes another place.
    void SetAside();

    /// The work to be recovered, newest first.
    [[nodiscard]] std::vector<RecoveredWork> List();

    /// Makes the place of a copy this program's own, so that `Drop` ends it. False when another
    /// program was faster.
    [[nodiscard]] bool Adopt(int place);

    /// Deletes one copy of the list. False when it is still there.
    bool Discard(int place);

  private:
    /// What a copy was written of.
    struct Holding {
        Design Held;
        std::string DocumentPath;
        std::string FileMark;

        friend bool operator==(const Holding&, const Holding&) = default;
    };

    [[nodiscard]] std::string PathOf(int place, const char* extension) const;
    [[nodiscard]] RecoveredWork WorkAt(int place);
    bool TakePlace();
    bool Write(const Program& program, bool wait);
    [[nodiscard]] bool Holds(const Holding& holding) const;
    void DeleteCopy(int place);

    FileServices& m_files;
    PlaceLocks& m_locks;
    std::string m_folder;             ///< empty: nothing is kept
    int m_place = 0;                  ///< of this program; 0 while it has none
    std::optional<Holding> m_holding; ///< of this program's copy, none when that is not known
    bool m_onDisk = false;            ///< the disk was waited for
};

} // namespace corvanta
