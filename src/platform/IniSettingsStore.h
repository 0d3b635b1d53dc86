#pragma once

#include "platform/FileServices.h"
#include "platform/SettingsStore.h"

#include <string>
#include <utility>
#include <vector>

namespace corvanta {

/// The entries of an INI file by section, in its order.
using IniSections =
    std::vector<std::pair<std::string, std::vector<std::pair<std::string, std::string>>>>;

/// A settings store in one INI file, UTF-8. Sections and keys keep the order in which they were
/// first written. Backslash, CR and LF stand escaped in values; lines that are no entry are skipped
/// on reading, so that a damaged file costs its damaged lines only.
class IniSettingsStore final : public SettingsStore {
  public:
    /// Reads the file, if it exists. Throws Failure when it exists and can't be read.
    IniSettingsStore(FileServices& files, std::string path);

    [[nodiscard]] std::string Read(std::string_view section, std::string_view key,
                                   std::string_view fallback) const override;
    [[nodiscard]] std::string Place() const override { return m_path; }
    void Write(std::string_view section, std::string_view key, std::string_view value) override;
    void Refresh(std::string_view section) override;
    void Save() override;

  private:
    [[nodiscard]] IniSections InFile() const;

    FileServices& m_files;
    std::string m_path;
    IniSections m_known;   ///< as this program read and wrote them
    IniSections m_changed; ///< what it wrote since the last save
};

} // namespace corvanta
