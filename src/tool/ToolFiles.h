#pragma once

#include "platform/DiskFileServices.h"

#include <string>
#include <string_view>

namespace corvanta {

/// The path that stands for standard input where a file is read, for standard output where one is
/// written.
inline constexpr std::string_view StreamPath = "-";

/// The machine's disk, and `StreamPath` as a file.
class CToolFiles final : public DiskFileServices {
  public:
    [[nodiscard]] bool FileExists(const std::string& path) const override;

    /// Standard input is read once and kept.
    [[nodiscard]] std::string ReadBytes(const std::string& path) override;

    /// Throws Failure when standard output is closed.
    void WriteBytes(const std::string& path, std::string_view bytes) override;

  private:
    std::string m_input;
    bool m_hasRead = false;
};

} // namespace corvanta
