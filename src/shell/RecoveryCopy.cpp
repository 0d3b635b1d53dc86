#include "shell/RecoveryCopy.h"

#include "model/Failure.h"
#include "persistence/MData.h"
#include "platform/NoWindowSystem.h"

namespace corvanta {

namespace {

constexpr const char* CopyExtension = ".WSP";
constexpr const char* OriginExtension = ".txt";
constexpr const char* LockExtension = ".lock";

/// Runs a step that may fail; false when it did.
template <typename Step>
bool Succeeds(const Step& step) {
    try {
        return step();
    } catch (...) {
        static_cast<void>(FailureInFlight());
        return false;
    }
}

} // namespace

void RecoveryCopy::SetFolder(const std::string& folder) {
    const bool made = Succeeds([&] {
        m_files.MakeFolder(folder);
        return true;
    });
    m_folder = made ? folder : std::string();
}

bool RecoveryCopy::Keep(const Program& program) {
    return Succeeds([&] {
        if (!TakePlace()) {
            return false;
        }
        NoMessageBox box;
        Messages silent(box);
        bool written = false;
        m_files.WriteBytes(PathOf(m_place, OriginExtension), program.DocumentPath);
        return DataWrite(written, program.Document, PathOf(m_place, CopyExtension), program.Units,
                         m_files, silent) &&
               written;
    });
}

void RecoveryCopy::Drop() {
    if (m_place != 0) {
        Delete(PathOf(m_place, CopyExtension));
        Delete(PathOf(m_place, OriginExtension));
    }
}

void RecoveryCopy::SetAside() {
    if (m_place != 0) {
        m_locks.Release(PathOf(m_place, LockExtension));
        m_place = 0;
    }
}

std::optional<RecoveredWork> RecoveryCopy::Find() {
    for (int place = 1; place <= Places && !m_folder.empty(); ++place) {
        const std::string copy = PathOf(place, CopyExtension);
        if (!m_files.FileExists(copy) || !m_locks.Take(PathOf(place, LockExtension))) {
            continue;
        }
        SetAside();
        m_place = place;
        RecoveredWork work{copy, {}};
        static_cast<void>(Succeeds([&] {
            work.DocumentPath = m_files.ReadBytes(PathOf(place, OriginExtension));
            return true;
        }));
        return work;
    }
    return std::nullopt;
}

std::string RecoveryCopy::PathOf(int place, const char* extension) const {
    return m_folder + std::to_string(place) + extension;
}

bool RecoveryCopy::TakePlace() {
    for (int place = 1; place <= Places && m_place == 0 && !m_folder.empty(); ++place) {
        // A place that holds another program's unsaved work is not free.
        if (!m_files.FileExists(PathOf(place, CopyExtension)) &&
            m_locks.Take(PathOf(place, LockExtension))) {
            m_place = place;
        }
    }
    return m_place != 0;
}

void RecoveryCopy::Delete(const std::string& path) {
    static_cast<void>(Succeeds([&] {
        if (m_files.FileExists(path)) {
            m_files.DeleteFile(path);
        }
        return true;
    }));
}

} // namespace corvanta
