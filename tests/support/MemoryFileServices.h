#pragma once

#include "model/Failure.h"
#include "platform/FileServices.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta::test {

/// File services in memory. The changes made (MakeFolder, WriteBytes, AppendBytes, DeleteFile) are
/// counted and recorded, and any of them can be made to fail. A whole-file write that fails leaves
/// the old file as it was; an append that fails leaves half of its bytes behind.
class MemoryFileServices final : public FileServices {
  public:
    /// Where `SpecialFolder` finds the application data folder; nothing when the machine has none.
    std::optional<std::string> ApplicationData = "/home/user/.config";

    /// Puts a file, and its folders, without counting as a change.
    void Put(const std::string& path, std::string_view bytes) {
        PutFolder(ParentFolder(path));
        m_files[path] = bytes;
    }

    /// Takes a file away without counting as a change.
    void Remove(const std::string& path) { m_files.erase(path); }

    /// Puts a folder with its parents, without counting as a change.
    void PutFolder(std::string folder) {
        for (folder = Bare(std::move(folder)); !folder.empty();
             folder = Bare(ParentFolder(folder))) {
            m_folders.insert(folder);
        }
    }

    /// The n-th change from now fails, n from 1; 0 lets all pass.
    void FailOnChange(int n) { m_changesUntilFailure = n; }

    /// Every change in a folder or below it fails.
    void RefuseFolder(const std::string& folder) {
        m_refusedFolders.push_back(Bare(folder) + Separator);
    }

    /// The next reads of a file fail, though the file exists.
    void RefuseReading(const std::string& path, int times = 1000) { m_unreadable[path] = times; }

    /// The bytes of a file, nothing when there is none.
    [[nodiscard]] std::optional<std::string> Bytes(const std::string& path) const {
        const auto found = m_files.find(path);
        return found == m_files.end() ? std::nullopt : std::optional(found->second);
    }

    /// The paths of all files, in order.
    [[nodiscard]] std::vector<std::string> Paths() const {
        std::vector<std::string> paths;
        for (const auto& [path, bytes] : m_files) {
            paths.push_back(path);
        }
        return paths;
    }

    /// The changes asked for, failed ones included: "write ", "append ", "delete " or "folder " and
    /// the path.
    [[nodiscard]] const std::vector<std::string>& Changes() const { return m_changes; }

    [[nodiscard]] bool FileExists(const std::string& path) const override {
        return m_files.contains(path);
    }

    [[nodiscard]] bool FolderExists(const std::string& path) const override {
        const std::string folder = Bare(path);
        return folder.empty() ? !path.empty() : m_folders.contains(folder);
    }

    /// The number of the change that wrote the file; 0 for one that was put.
    [[nodiscard]] std::int64_t TimeWritten(const std::string& path) const override {
        const auto found = std::find(m_changes.rbegin(), m_changes.rend(), "write " + path);
        return std::distance(found, m_changes.rend());
    }

    [[nodiscard]] std::string FullPath(const std::string& path) const override {
        return path.empty() || path.front() == '/' ? path : '/' + path;
    }

    [[nodiscard]] bool SameFile(const std::string& path, const std::string& other) const override {
        return path == other && FileExists(path);
    }

    void MakeFolder(const std::string& path) override {
        Change("folder", path);
        PutFolder(path);
    }

    [[nodiscard]] std::string ReadBytes(const std::string& path) override {
        const auto found = m_files.find(path);
        if (found == m_files.end() && !FolderExists(path)) {
            throw Failure(fnFileNotFound, "File not found");
        }
        RefuseFolderAsFile(path);
        if (m_unreadable[path]-- > 0) {
            throw Failure(fnFileAccess, "Permission denied");
        }
        return found->second;
    }

    void WriteBytes(const std::string& path, std::string_view bytes) override {
        Change("write", path);
        RequireParent(path);
        m_files[path] = bytes;
    }

    void WriteBytesSoon(const std::string& path, std::string_view bytes) override {
        WriteBytes(path, bytes);
    }

    void AppendBytes(const std::string& path, std::string_view bytes) override {
        try {
            Change("append", path);
        } catch (const Failure&) {
            m_files[path] += bytes.substr(0, bytes.size() / 2);
            throw;
        }
        RequireParent(path);
        m_files[path] += bytes;
    }

    void DeleteFile(const std::string& path) override {
        Change("delete", path);
        if (m_files.erase(path) == 0) {
            throw Failure(fnFileNotFound, "File not found");
        }
    }

    [[nodiscard]] std::optional<std::string> SpecialFolder(int folderNumber) const override {
        return folderNumber == ApplicationDataFolder ? ApplicationData : std::nullopt;
    }

  private:
    static std::string Bare(std::string folder) {
        while (!folder.empty() && folder.back() == Separator) {
            folder.pop_back();
        }
        return folder;
    }

    void Change(const std::string& kind, const std::string& path) {
        m_changes.push_back(kind + " " + path);
        if (m_changesUntilFailure > 0 && --m_changesUntilFailure == 0) {
            throw Failure(fnFileAccess, "No space left on device");
        }
        for (const std::string& folder : m_refusedFolders) {
            if (path.substr(0, folder.size()) == folder) {
                throw Failure(fnFileAccess, "Permission denied");
            }
        }
        RefuseFolderAsFile(kind == "folder" ? std::string() : path);
    }

    void RefuseFolderAsFile(const std::string& path) const {
        if (FolderExists(path)) {
            throw Failure(fnFileAccess, "Is a directory");
        }
    }

    void RequireParent(const std::string& path) const {
        const std::string folder = ParentFolder(path);
        if (!folder.empty() && !FolderExists(folder)) {
            throw Failure(fnFileAccess, "No such file or directory");
        }
    }

    std::map<std::string, std::string> m_files;
    std::set<std::string> m_folders;
    std::map<std::string, int> m_unreadable;
    std::vector<std::string> m_refusedFolders;
    std::vector<std::string> m_changes;
    int m_changesUntilFailure = 0;
};

} // namespace corvanta::test
