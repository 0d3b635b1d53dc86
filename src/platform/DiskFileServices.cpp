#include "platform/DiskFileServices.h"

#include "model/Failure.h"
#include "platform/DiskFile.h"
#include "platform/PathText.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <ios>
#include <system_error>
#include <vector>

namespace corvanta {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void Refuse(std::errc reason) {
    throw std::system_error(std::make_error_code(reason));
}

/// The path with every link at its end followed, whether or not its target exists.
fs::path FollowLinks(fs::path path) {
    constexpr int MostLinks = 40; // as the platforms do, against a ring of links
    for (int links = 0; fs::is_symlink(fs::symlink_status(path)); ++links) {
        if (links == MostLinks) {
            Refuse(std::errc::too_many_symbolic_link_levels);
        }
        path = path.parent_path() / fs::read_symlink(path);
    }
    return path;
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
        Refuse(std::errc::is_a_directory);
    }
}

/// Reading a pipe would wait for its writer, and a device has no end.
void RequireReadable(const std::string& path, const fs::path& file, const fs::file_status& status) {
    RefuseFolder(status);
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        throw Failure(fnFileAccess, "Not a file that can be read whole: " + path);
    }
    std::error_code unreachable; // tells its own reason when the file is opened
    const std::uintmax_t size = fs::file_size(file, unreachable);
    if (!unreachable && size > LargestFile) {
        throw Failure(fnFileAccess, "The file is larger than 16 MB: " + path);
    }
}

/// The path with no ".." in it. One behind a link leads to the parent of the link's target, so the
/// folders before it are looked up; those behind it stay as they are named.
fs::path WithoutParents(const fs::path& path) {
    const std::vector<fs::path> parts(path.begin(), path.end());
    const auto last = std::find(parts.rbegin(), parts.rend(), fs::path("..")).base();
    fs::path folder;
    for (auto part = parts.begin(); part != last; ++part) {
        folder /= *part;
    }
    fs::path whole = folder.empty() ? folder : fs::weakly_canonical(folder);
    for (auto part = last; part != parts.end(); ++part) {
        whole /= *part;
    }
    return whole.lexically_normal();
}

/// The folder that an environment variable names, or an empty path.
#ifdef _WIN32
fs::path FolderFrom(const wchar_t* variable) {
    const wchar_t* const value = _wgetenv(variable);
    return value == nullptr ? fs::path() : fs::path(value);
}
#else
fs::path FolderFrom(const char* variable) {
    const char* const value = std::getenv(variable);
    return value == nullptr ? fs::path() : PathOf(value);
}
#endif

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
    try {
        return PathText(WithoutParents(fs::absolute(PathOf(path))));
    } catch (const fs::filesystem_error&) {
        return path; // opening it will tell the reason
    }
}

bool DiskFileServices::SameFile(const std::string& path, const std::string& other) const {
    std::error_code missing;
    return fs::equivalent(PathOf(path), PathOf(other), missing);
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
        RequireReadable(path, file, status);
        bytes = ReadStraight(file, LargestFile);
    });
    return bytes;
}

void DiskFileServices::WriteBytes(const std::string& path, std::string_view bytes) {
    Write(path, bytes, DiskWait::UntilWritten);
}

void DiskFileServices::WriteBytesSoon(const std::string& path, std::string_view bytes) {
    Write(path, bytes, DiskWait::None);
}

void DiskFileServices::Write(const std::string& path, std::string_view bytes, DiskWait wait) {
    Translated(path, [&] {
        const fs::path target = FollowLinks(PathOf(path));
        const fs::file_status status = fs::status(target);
        RefuseFolder(status);
        if (fs::exists(status) && !fs::is_regular_file(status)) {
            WriteStraight(target, bytes, std::ios::out);
        } else {
            if (m_tidied.insert(target.parent_path()).second) {
                RemoveForgottenTemporaries(target.parent_path());
            }
            WriteWhole(target, bytes, wait);
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
    const fs::path folder = FolderFrom(L"APPDATA");
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
