#pragma once

#include <cstddef>
#include <filesystem>
#include <ios>
#include <string>
#include <string_view>

namespace corvanta {

/// The bytes of a file. Throws std::system_error with the platform's reason, which for a file of
/// more than `most` bytes is that it is too large.
[[nodiscard]] std::string ReadStraight(const std::filesystem::path& path, std::size_t most);

/// Writes to a file as it is: `mode` tells whether behind what it holds or in its place. Throws
/// std::system_error with the platform's reason.
void WriteStraight(const std::filesystem::path& path, std::string_view bytes,
                   std::ios::openmode mode);

/// Whether a write ends when the bytes are on the disk, or when the system has them.
enum class DiskWait { UntilWritten, None };

/// Writes a regular file, new or old, so that a failure leaves what was there and so that it stands
/// on the disk when this returns, if it is to wait: to a temporary name in the same folder that
/// then takes the file's place, with the permissions of the old file where the disk knows any. A
/// folder that takes no new file has its writable files written in place.
///
/// Throws std::system_error with the reason that lies with the file, and Failure for one that lies
/// with its folder.
void WriteWhole(const std::filesystem::path& target, std::string_view bytes, DiskWait wait);

/// Removes the temporary files that writers who never came to their end left in a folder more than
/// a day ago. What can't be removed stays.
void RemoveForgottenTemporaries(const std::filesystem::path& folder);

} // namespace corvanta
