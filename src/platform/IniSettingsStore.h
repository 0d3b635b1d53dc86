#pragma once

#include "platform/FileServices.h"
#include "platform/SettingsStore.h"

#include <string>
#include <utility>
#include <vector>

namespace corvanta {

/// A settings store in one INI file, UTF-8. Sections and keys keep the order in which they were
/// first written. Backslash, CR and LF stand escaped in values; lines that are no entry are skipped
/// on reading, so that a damaged file costs its damaged lines only.
class IniSettingsStore final : public SettingsStore {
  public:
    /// Reads the file, if it exists. Throws Failure when it exists and can't be read.
    IniSettingsStore(FileServices& files, std::string path);

    [[nodiscard]] std::string Read(std::string_view section, std::string_view key,
                                   std::string_view fallback) const override;
    void Write(std::string_view section, std::string_view key, std::string_view value) override;
    void Save() override;

  private:
    using Entries = std::vector<std::pair<std::string, std::string>>;

    Entries& Section(std::string_view name);

    FileServices& m_files;
    std::string m_path;
    std::string m_saved; ///< the text of the last save; saving it once more is no work
    std::vector<std::pair<std::string, Entries>> m_sections;
};

} // namespace corvanta
