#pragma once

#include "platform/DiskFile.h"
#include "platform/FileServices.h"

#include <filesystem>
#include <set>

namespace corvanta {

/// File services on the machine's own disk.
class DiskFileServices : public FileServices {
  public:
    [[nodiscard]] bool FileExists(const std::string& path) const override;
    [[nodiscard]] bool FolderExists(const std::string& path) const override;
    [[nodiscard]] std::int64_t TimeWritten(const std::string& path) const override;
    [[nodiscard]] std::string FullPath(const std::string& path) const override;
    [[nodiscard]] bool SameFile(const std::string& path, const std::string& other) const override;
    void MakeFolder(const std::string& path) override;
    [[nodiscard]] std::string ReadBytes(const std::string& path) override;
    void WriteBytes(const std::string& path, std::string_view bytes) override;
    void WriteBytesSoon(const std::string& path, std::string_view bytes) override;
    void AppendBytes(const std::string& path, std::string_view bytes) override;
    void DeleteFile(const std::string& path) override;

    /// The application data folder: %APPDATA% on Windows, $XDG_CONFIG_HOME or ~/.config elsewhere.
    [[nodiscard]] std::optional<std::string> SpecialFolder(int folderNumber) const override;

  private:
    void Write(const std::string& path, std::string_view bytes, DiskWait wait);

    std::set<std::filesystem::path> m_tidied; ///< folders that were freed of what crashes left
};

} // namespace corvanta
