#pragma once

#include "platform/FileServices.h"

namespace corvanta {

/// File services on the machine's own disk.
class DiskFileServices final : public FileServices {
  public:
    [[nodiscard]] bool FileExists(const std::string& path) const override;
    [[nodiscard]] bool FolderExists(const std::string& path) const override;
    [[nodiscard]] std::int64_t TimeWritten(const std::string& path) const override;
    [[nodiscard]] std::string FullPath(const std::string& path) const override;
    void MakeFolder(const std::string& path) override;
    [[nodiscard]] std::string ReadBytes(const std::string& path) override;
    void WriteBytes(const std::string& path, std::string_view bytes) override;
    void AppendBytes(const std::string& path, std::string_view bytes) override;
    void DeleteFile(const std::string& path) override;

    /// The application data folder: %APPDATA% on Windows, $XDG_CONFIG_HOME or ~/.config elsewhere.
    [[nodiscard]] std::optional<std::string> SpecialFolder(int folderNumber) const override;
};

} // namespace corvanta
