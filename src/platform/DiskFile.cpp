#include "platform/DiskFile.h"

#include "model/Failure.h"
#include "platform/PathText.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <fstream>
#include <limits>
#include <random>
#include <system_error>

#ifndef _WIN32
#include <fcntl.h>
#include <unistd.h>
#endif

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

constexpr std::string_view TemporaryHead = ".corvanta-";
constexpr std::string_view TemporaryTail = ".tmp";
constexpr std::string_view HexDigits = "0123456789abcdef";
constexpr std::size_t RandomLength = 16;

/// A name beside the file that no other writer has: drawn at random, so that programs that write
/// in one folder at the same moment never meet, and short, so that it is valid where the file's own
/// name is.
fs::path TemporaryName(const fs::path& target) {
    std::random_device source;
    std::uniform_int_distribution<std::size_t> digit(0, HexDigits.size() - 1);
    std::string name(TemporaryHead);
    for (std::size_t n = 0; n < RandomLength; ++n) {
        name += HexDigits[digit(source)];
    }
    return target.parent_path() / name.append(TemporaryTail);
}

bool IsTemporaryName(const std::string& name) {
    return name.size() == TemporaryHead.size() + RandomLength + TemporaryTail.size() &&
           name.starts_with(TemporaryHead) && name.ends_with(TemporaryTail) &&
           name.find_first_not_of(HexDigits, TemporaryHead.size()) ==
               TemporaryHead.size() + RandomLength;
}

/// Removes a file at the end of its scope unless it has been moved away.
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

    [[nodiscard]] std::error_code MoveTo(const fs::path& target) {
        std::error_code reason;
        fs::rename(m_path, target, reason);
        m_present = static_cast<bool>(reason);
        return reason;
    }

  private:
    fs::path m_path;
    bool m_present = true;
};

/// Waits until what was written to a file, or the names in a folder, are on the disk. A disk that
/// knows no such wait has none to offer.
void Synchronise([[maybe_unused]] const fs::path& path) {
#ifndef _WIN32
    const int handle = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (handle < 0) {
        return; // a folder may be written without being readable
    }
    const int failure = ::fsync(handle) == 0 ? 0 : errno;
    ::close(handle);
    if (failure == EIO || failure == ENOSPC || failure == EDQUOT) {
        Refuse({failure, std::generic_category()});
    }
#endif
}

/// True for the reasons of a folder that takes no new file, or lets none take another's place.
bool IsRefusal(std::error_code reason) {
    return reason == std::errc::permission_denied || reason == std::errc::operation_not_permitted ||
           reason == std::errc::read_only_file_system;
}

/// A file that its owner has locked against writing stays as it is, although its folder would let
/// another file take its place.
void RequireWritable(const fs::path& path) {
    std::ofstream stream;
    Checked(stream, [&] { stream.open(path, std::ios::binary | std::ios::app); });
}

/// The folder's reason not to take a file of this program, none when it takes one.
std::error_code RefusalOf(const fs::path& temporary) {
    errno = 0;
    const std::ofstream stream(temporary, std::ios::binary);
    if (stream) {
        return {};
    }
    const std::error_code reason = StreamReason();
    if (!IsRefusal(reason)) {
        Refuse(reason);
    }
    return reason;
}

/// Puts a new file in the target's place. Returns the folder's reason when it does not let it.
std::error_code TakePlace(const fs::path& target, std::string_view bytes,
                          const fs::file_status& former, DiskWait wait) {
    CTemporaryFile temporary(TemporaryName(target));
    if (const std::error_code refusal = RefusalOf(temporary.Path())) {
        return refusal;
    }
    WriteStraight(temporary.Path(), bytes, std::ios::trunc);
    if (wait == DiskWait::UntilWritten) {
        Synchronise(temporary.Path());
    }
    if (fs::exists(former)) {
        std::error_code ignored; // disks of other systems keep no permissions
        fs::permissions(temporary.Path(), former.permissions(), ignored);
    }
    const std::error_code refusal = temporary.MoveTo(target);
    if (refusal && !IsRefusal(refusal)) {
        Refuse(refusal);
    }
    if (!refusal && wait == DiskWait::UntilWritten) {
        Synchronise(target.has_parent_path() ? target.parent_path() : fs::path("."));
    }
    return refusal;
}

/// Writes over what a file holds. Nothing is cut off before all is written, so that the former
/// bytes find their room again when the new ones find none.
void WriteOver(const fs::path& path, std::string_view bytes) {
    WriteStraight(path, bytes, std::ios::in);
    fs::resize_file(path, bytes.size());
    Synchronise(path);
}

void WriteInPlace(const fs::path& path, std::string_view bytes) {
    const std::string former = ReadStraight(path, std::numeric_limits<std::size_t>::max());
    try {
        WriteOver(path, bytes);
    } catch (const std::system_error&) {
        try {
            WriteOver(path, former);
        } catch (const std::system_error&) {
            // The reason of the first failure is the one to tell.
        }
        throw;
    }
}

} // namespace

std::string ReadStraight(const fs::path& path, std::size_t most) {
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
        if (bytes.size() > most) {
            Refuse(std::make_error_code(std::errc::file_too_large));
        }
    }
    return bytes;
}

void WriteStraight(const fs::path& path, std::string_view bytes, std::ios::openmode mode) {
    std::ofstream stream;
    Checked(stream, [&] { stream.open(path, std::ios::binary | mode); });
    Checked(stream,
            [&] { stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size())); });
    Checked(stream, [&] { stream.close(); });
}

void WriteWhole(const fs::path& target, std::string_view bytes, DiskWait wait) {
    const fs::file_status former = fs::status(target);
    const bool present = fs::exists(former);
    if (present) {
        RequireWritable(target);
    }
    const std::error_code refusal = TakePlace(target, bytes, former, wait);
    if (!refusal) {
        return;
    }
    if (!present) {
        throw Failure(fnFileAccess, refusal.message() + ": the folder " +
                                        PathText(target.parent_path()) + " takes no new file");
    }
    WriteInPlace(target, bytes);
}

void RemoveForgottenTemporaries(const fs::path& folder) {
    constexpr std::chrono::hours Age(24);
    const auto latest = fs::file_time_type::clock::now() - Age;
    std::error_code failed;
    for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end;
         entry.increment(failed)) {
        std::error_code ignored;
        if (IsTemporaryName(PathText(entry->path().filename())) &&
            fs::symlink_status(entry->path(), ignored).type() == fs::file_type::regular) {
            const fs::file_time_type written = fs::last_write_time(entry->path(), ignored);
            if (!ignored && written < latest) {
                fs::remove(entry->path(), ignored);
            }
        }
    }
}

} // namespace corvanta
