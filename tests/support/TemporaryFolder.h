#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace corvanta::test {

/// An empty folder on disk for the life of a test, with all that the test leaves in it.
class TemporaryFolder {
  public:
    TemporaryFolder()
        : m_path(std::filesystem::path(testing::TempDir()) /
                 ("corvanta-test-" + std::to_string(std::random_device{}()))) {
        std::filesystem::create_directories(m_path);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    TemporaryFolder(TemporaryFolder&&) = delete;
    TemporaryFolder& operator=(TemporaryFolder&&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    /// The path of a name in the folder.
    [[nodiscard]] std::string operator/(const std::string& name) const {
        return (m_path / name).string();
    }

    [[nodiscard]] std::string Path() const { return m_path.string(); }

    /// The names in the folder itself, sorted.
    [[nodiscard]] std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(m_path)) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

  private:
    std::filesystem::path m_path;
};

} // namespace corvanta::test
