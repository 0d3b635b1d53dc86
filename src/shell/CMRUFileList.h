#pragma once

#include "platform/Controls.h"
#include "platform/Messages.h"
#include "platform/SettingsStore.h"

#include <string>
#include <vector>

namespace corvanta {

/// The recently used files, most recent first, and their entries in a menu.
class CMRUFileList {
  public:
    /// Prepares `capacity` hidden menu items, numbered from 1, and loads the list from the section
    /// `sectionPrefix` + "MRU" of the store. With separators the items 0 and capacity + 1 are
    /// lines. A failure shows its message and leaves an empty list.
    void Initialise(std::vector<MenuItem>& items, int capacity, bool separators,
                    const std::string& sectionPrefix, const SettingsStore& store,
                    Messages& messages);

    /// Puts a path at the top. A path that is there already, in whatever case, moves; otherwise the
    /// last one of a full list drops out. An empty path is ignored.
    void AddFile(const std::string& path);

    /// Takes an entry, 1 to `FileCount`, off the list.
    void RemoveFile(int index);

    /// Path of an entry, 1 to `FileCount`; empty for another index.
    [[nodiscard]] std::string File(int index) const;

    [[nodiscard]] int FileCount() const { return static_cast<int>(m_files.size()); }
    [[nodiscard]] int MaxFileCount() const { return m_capacity; }

    /// True when the entry isn't empty. It does not look at the disk.
    [[nodiscard]] bool FileExists(int index) const { return !File(index).empty(); }

    /// Shows the list in the menu.
    void ListFiles(std::vector<MenuItem>& items) const;

    /// True when the list changed since it was last written.
    [[nodiscard]] bool Changed() const { return !m_touched.empty(); }

    /// Writes the list to the store, with what another program has entered there since: the files
    /// of this one come first.
    void Save(SettingsStore& store);

  private:
    void Load(const SettingsStore& store);
    void TakeOthers(const SettingsStore& store);

    std::vector<std::string> m_files;
    std::vector<std::string> m_touched; ///< entered since the list was last written
    int m_capacity = 0;
    std::string m_section;
};

/// A path as a menu shows it: whole up to 32 characters, otherwise "..." and as many of its last
/// folders as fit in 32 characters.
[[nodiscard]] std::string MenuPath(const std::string& path);

} // namespace corvanta
