#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvanta {

/// Folder number of the per-user application data folder, for `SpecialFolder`.
inline constexpr int ApplicationDataFolder = 26;

/// Files beyond this size are not read: no document, list or settings file comes near it.
inline constexpr std::size_t LargestFile = std::size_t{16} * 1024 * 1024;

/// All plain file and folder work of the program. Paths are UTF-8 in the platform's own form. The
/// operations on disk are virtual so that a test can let the n-th of them fail.
///
/// Failing operations throw Failure: "File not found" for a missing file, otherwise number
/// `fnFileAccess` and the platform's reason.
class FileServices {
  public:
    FileServices() = default;
    FileServices(const FileServices&) = delete;
    FileServices& operator=(const FileServices&) = delete;
    FileServices(FileServices&&) = delete;
    FileServices& operator=(FileServices&&) = delete;
    virtual ~FileServices() = default;

    /// True when the path names a file; a folder is none.
    [[nodiscard]] virtual bool FileExists(const std::string& path) const = 0;
    [[nodiscard]] virtual bool FolderExists(const std::string& path) const = 0;

    /// When a file was last written, seconds since 1970; 0 when that can't be told.
    [[nodiscard]] virtual std::int64_t TimeWritten(const std::string& path) const = 0;

    /// The path from the root on, with no "." or ".." in it; a relative one counts from the current
    /// folder, and ".." behind a link leads to where the link does.
    [[nodiscard]] virtual std::string FullPath(const std::string& path) const = 0;

    /// True when both paths lead to one file that exists, by whatever links.
    [[nodiscard]] virtual bool SameFile(const std::string& path,
                                        const std::string& other) const = 0;

    /// Makes a folder with its parents. A folder that exists is no failure.
    virtual void MakeFolder(const std::string& path) = 0;

    /// The bytes of a regular file of at most `LargestFile` bytes; anything else is refused.
    [[nodiscard]] virtual std::string ReadBytes(const std::string& path) = 0;

    /// Writes a whole file: to a temporary name in the same folder that then takes the file's
    /// place, so that a failed write or a crash leaves the old file as it was. A writable file in a
    /// folder that takes no new one is written in place. A link is followed; a device or a pipe is
    /// written to.
    virtual void WriteBytes(const std::string& path, std::string_view bytes) = 0;

    /// The same without waiting for the disk: a crash of the program costs nothing either, a loss
    /// of power may cost both files.
    virtual void WriteBytesSoon(const std::string& path, std::string_view bytes) = 0;
    virtual void AppendBytes(const std::string& path, std::string_view bytes) = 0;
    virtual void DeleteFile(const std::string& path) = 0;

    /// A folder of the platform by its number, ending without a separator; nothing when this
    /// machine has none. Only `ApplicationDataFolder` is known.
    [[nodiscard]] virtual std::optional<std::string> SpecialFolder(int folderNumber) const = 0;

    /// The text of a file of the system: code page 1252 on disk, UTF-8 in memory.
    [[nodiscard]] std::string ReadText(const std::string& path);

    /// Writes a whole text file in code page 1252; a character that the page lacks becomes "?".
    void WriteText(const std::string& path, std::string_view text);
    void WriteTextSoon(const std::string& path, std::string_view text);
    void AppendText(const std::string& path, std::string_view text);

    /// The folder of a path, ending in a separator; the empty string when the path names none.
    [[nodiscard]] static std::string ParentFolder(const std::string& path);

    /// The file name of a path without folder.
    [[nodiscard]] static std::string FileName(const std::string& path);

    /// The file name of a path without folder and extension.
    [[nodiscard]] static std::string BaseName(const std::string& path);

    /// The platform's folder separator.
    static const char Separator;
};

/// The path with every backslash as the platform's folder separator: stored names of folders, and
/// paths on the command line, come with backslashes on every platform.
[[nodiscard]] std::string NativePath(std::string_view path);

} // namespace corvanta
