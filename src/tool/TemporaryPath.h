#pragma once

#include <filesystem>
#include <random>
#include <string>
#include <system_error>

namespace corvanta {

/// A path of this run alone, for a file or a folder, which is gone in the end.
class CTemporaryPath {
  public:
    explicit CTemporaryPath(const std::string& ending)
        : m_path((std::filesystem::temp_directory_path() /
                  ("corvanta-" + std::to_string(std::random_device()()) + "-" +
                   std::to_string(std::random_device()()) + ending))
                     .string()) {}
    CTemporaryPath(const CTemporaryPath&) = delete;
    CTemporaryPath& operator=(const CTemporaryPath&) = delete;
    CTemporaryPath(CTemporaryPath&&) = delete;
    CTemporaryPath& operator=(CTemporaryPath&&) = delete;
    ~CTemporaryPath() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    [[nodiscard]] const std::string& Path() const { return m_path; }

  private:
    std::string m_path;
};

} // namespace corvanta
