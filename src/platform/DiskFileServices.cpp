#include "platform/DiskFileServices.h"

#include "model/Failure.h"
#include "platform/PathText.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <ios>
#include <random>
#include <system_error>

namespace corvanta {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void Refuse(std::error_code reason) {
    throw std::system_error(reason);
}

/// The reason of the stream operation that has just failed. The streams keep none of their own; the
/// platform's error number outlives them.
std::error_code StreamReason() {
    return {errno != 0 ? errno : EIO, std::generic_category()};
}

/// Runs a stream operation and throws with the platform's reason unless `stream` is good after it.
template <typename Stream, typename Operation>
void Checked(Stream& stream, const Operation& operation) {
    errno = 0;
    operation();
    if (!stream) {
        Refuse(StreamReason());
    }
}

/// Writes to the file as it is: `mode` tells whether behind what it holds or in its place.
void WriteStraight(const fs::path& path, std::string_view bytes, std::ios::openmode mode) {
    std::ofstream stream;
    Checked(stream, [&] { stream.open(path, std::ios::binary | mode); });
    Checked(stream,
            [&] { stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size())); });
    Checked(stream, [&] { stream.close(); });
}

std::string ReadStraight(const fs::path& path) {
    std::ifstream stream;
    Checked(stream, [&] { stream.open(path, std::ios::binary); });
    std::string bytes;
    std::array<char, 65536> block{};
    while (stream) {
        errno = 0;
        stream.read(block.data(), static_cast<std::streamsize>(block.size()));
        if (stream.bad()) {
            Refuse(StreamReason());
        }
        bytes.append(block.data(), static_cast<std::size_t>(stream.gcount()));
    }
    return bytes;
}

/// The path with every link at its end followed, whether or not its target exists.
fs::path FollowLinks(fs::path path) {
    constexpr int MostLinks = 40; // as the platforms do, against a ring of links
    for (int links = 0; fs::is_symlink(fs::symlink_status(path)); ++links) {
        if (links == MostLinks) {
            Refuse(std::make_error_code(std::errc::too_many_symbolic_link_levels));
        }
        path = path.parent_path() / fs::read_symlink(path);
    }
    return path;
}

/// A name beside the file that no other writer has: drawn at random, so that programs that write
/// in one folder at the same moment never meet, and short, so that it is valid where the file's own
/// name is.
fs::path TemporaryName(const fs::path& target) {
    constexpr std::string_view Digits = "0123456789abcdef";
    constexpr int Length = 16;
    std::random_device source;
    std::uniform_int_distribution<std::size_t> digit(0, Digits.size() - 1);
    std::string name = ".corvanta-";
    for (int n = 0; n < Length; ++n) {
        name += Digits[digit(source)];
    }
    return target.parent_path() / (name + ".tmp");
}

/// Removes a file at the end of its scope unless it has been let go.
class CTemporaryFile {
  public:
    explicit CTemporaryFile(fs::path path) : m_path(std::move(path)) {}
    CTemporaryFile(const CTemporaryFile&) = delete;
    CTemporaryFile& operator=(const CTemporaryFile&) = delete;
    CTemporaryFile(CTemporaryFile&&) = delete;
    CTemporaryFile& operator=(CTemporaryFile&&) = delete;
    ~CTemporaryFile() {
        if (m_present) {
            std::error_code ignored;
            fs::remove(m_path, ignored);
        }
    }

    [[nodiscard]] const fs::path& Path() const { return m_path; }

    void MoveTo(const fs::path& target) {
        fs::rename(m_path, target);
        m_present = false;
    }

  private:
    fs::path m_path;
    bool m_present = true;
};

/// A file that its owner has locked against writing stays as it is, although its folder would let
/// another file take its place.
void RequireWritable(const fs::path& path) {
    std::ofstream stream;
    Checked(stream, [&] { stream.open(path, std::ios::binary | std::ios::app); });
}

void ReplaceFile(const fs::path& target, std::string_view bytes, const fs::file_status& status) {
    const bool present = fs::exists(status);
    if (present) {
        RequireWritable(target);
    }
    CTemporaryFile temporary(TemporaryName(target));
    WriteStraight(temporary.Path(), bytes, std::ios::trunc);
    if (present) {
        fs::permissions(temporary.Path(), status.permissions());
    }
    temporary.MoveTo(target);
}

/// Runs work on a file and turns the failures of the platform into ours, which name the file.
template <typename Work>
void Translated(const std::string& path, const Work& work) {
    try {
        work();
    } catch (const std::system_error& error) {
        throw Failure(fnFileAccess, error.code().message() + ": " + path);
    }
}

void RefuseFolder(const fs::file_status& status) {
    if (fs::is_directory(status)) {
        Refuse(std::make_error_code(std::errc::is_a_directory));
    }
}

/// The folder that an environment variable names, or an empty path.
fs::path FolderFrom(const char* variable) {
    const char* const value = std::getenv(variable);
    return value == nullptr ? fs::path() : PathOf(value);
}

} // namespace

bool DiskFileServices::FileExists(const std::string& path) const {
    std::error_code unreachable;
    const fs::file_status status = fs::status(PathOf(path), unreachable);
    return fs::exists(status) && !fs::is_directory(status);
}

bool DiskFileServices::FolderExists(const std::string& path) const {
    std::error_code unreachable;
    return fs::is_directory(PathOf(path), unreachable);
}

std::int64_t DiskFileServices::TimeWritten(const std::string& path) const {
    std::error_code unreachable;
    const fs::file_time_type written = fs::last_write_time(PathOf(path), unreachable);
    if (unreachable) {
        return 0;
    }
    const auto sinceEpoch = std::chrono::file_clock::to_sys(written).time_since_epoch();
    return std::chrono::duration_cast<std::chrono::seconds>(sinceEpoch).count();
}

std::string DiskFileServices::FullPath(const std::string& path) const {
    if (path.empty()) {
        return {};
    }
    std::error_code reason;
    const fs::path full = fs::absolute(PathOf(path), reason);
    return reason ? path : PathText(full.lexically_normal());
}

void DiskFileServices::MakeFolder(const std::string& path) {
    Translated(path, [&] { fs::create_directories(PathOf(path)); });
}

std::string DiskFileServices::ReadBytes(const std::string& path) {
    const fs::path file = PathOf(path);
    std::error_code unreachable;
    const fs::file_status status = fs::status(file, unreachable);
    if (status.type() == fs::file_type::not_found) {
        throw Failure(fnFileNotFound, "File not found");
    }
    std::string bytes;
    Translated(path, [&] {
        RefuseFolder(status);
        bytes = ReadStraight(file);
    });
    return bytes;
}

void DiskFileServices::WriteBytes(const std::string& path, std::string_view bytes) {
    Translated(path, [&] {
        const fs::path target = FollowLinks(PathOf(path));
        const fs::file_status status = fs::status(target);
        RefuseFolder(status);
        if (fs::exists(status) && !fs::is_regular_file(status)) {
            WriteStraight(target, bytes, std::ios::out);
        } else {
            ReplaceFile(target, bytes, status);
        }
    });
}

void DiskFileServices::AppendBytes(const std::string& path, std::string_view bytes) {
    Translated(path, [&] {
        RefuseFolder(fs::status(PathOf(path)));
        WriteStraight(PathOf(path), bytes, std::ios::app);
    });
}

void DiskFileServices::DeleteFile(const std::string& path) {
    Translated(path, [&] {
        const fs::path file = PathOf(path);
        RefuseFolder(fs::symlink_status(file));
        if (!fs::remove(file)) {
            throw Failure(fnFileNotFound, "File not found");
        }
    });
}

std::optional<std::string> DiskFileServices::SpecialFolder(int folderNumber) const {
    if (folderNumber != ApplicationDataFolder) {
        return std::nullopt;
    }
#ifdef _WIN32
    const fs::path folder = FolderFrom("APPDATA");
#else
    fs::path folder = FolderFrom("XDG_CONFIG_HOME");
    // A relative path here is invalid by the base directory rules of freedesktop.org.
    if (!folder.is_absolute()) {
        const fs::path home = FolderFrom("HOME");
        folder = home.empty() ? fs::path() : home / ".config";
    }
#endif
    if (folder.empty()) {
        return std::nullopt;
    }
    return PathText(folder.has_filename() ? folder : folder.parent_path());
}

} // namespace corvanta
