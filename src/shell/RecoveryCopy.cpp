#include "shell/RecoveryCopy.h"

#include "model/Failure.h"
#include "persistence/MData.h"
#include "platform/NoWindowSystem.h"

#include <algorithm>
#include <utility>

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
    return Write(program, true);
}

bool RecoveryCopy::KeepSoon(const Program& program) {
    return Write(program, false);
}

bool RecoveryCopy::Write(const Program& program, bool wait) {
    return Succeeds([&] {
        if (!TakePlace()) {
            return false;
        }
        Holding holding{DesignOf(program.Document), program.DocumentPath, program.FileMark};
        if (Holds(holding) && (m_onDisk || !wait)) {
            return true;
        }
        m_holding.reset();
        NoMessageBox box;
        Messages silent(box);
        const std::string origin = program.DocumentPath + "\n" + program.FileMark;
        const std::string text = DataText(program.Document, program.Units, m_files, silent);
        if (wait) {
            m_files.WriteBytes(PathOf(m_place, OriginExtension), origin);
            m_files.WriteText(PathOf(m_place, CopyExtension), text);
        } else {
            m_files.WriteBytesSoon(PathOf(m_place, OriginExtension), origin);
            m_files.WriteTextSoon(PathOf(m_place, CopyExtension), text);
        }
        m_holding = std::move(holding);
        m_onDisk = wait;
        return true;
    });
}

bool RecoveryCopy::Holds(const Holding& holding) const {
    return m_holding == holding && m_files.FileExists(PathOf(m_place, CopyExtension));
}

void RecoveryCopy::Drop() {
    m_holding.reset();
    if (m_place != 0) {
        DeleteCopy(m_place);
    }
}

void RecoveryCopy::SetAside() {
    m_holding.reset();
    if (m_place != 0) {
        m_locks.Release(PathOf(m_place, LockExtension));
        m_place = 0;
    }
}

std::vector<RecoveredWork> RecoveryCopy::List() {
    std::vector<RecoveredWork> list;
    for (int place = 1; place <= Places && !m_folder.empty(); ++place) {
        const std::string lock = PathOf(place, LockExtension);
        if (m_files.FileExists(PathOf(place, CopyExtension)) && m_locks.Take(lock)) {
            list.push_back(WorkAt(place));
            m_locks.Release(lock);
        }
    }
    std::stable_sort(list.begin(), list.end(),
                     [](const auto& one, const auto& other) { return one.Time > other.Time; });
    return list;
}

bool RecoveryCopy::Adopt(int place) {
    SetAside();
    if (!m_files.FileExists(PathOf(place, CopyExtension)) ||
        !m_locks.Take(PathOf(place, LockExtension))) {
        return false;
    }
    m_place = place;
    return true;
}

bool RecoveryCopy::Discard(int place) {
    const std::string lock = PathOf(place, LockExtension);
    if (!m_locks.Take(lock)) {
        return false;
    }
    DeleteCopy(place);
    m_locks.Release(lock);
    return !m_files.FileExists(PathOf(place, CopyExtension));
}

std::string RecoveryCopy::PathOf(int place, const char* extension) const {
    return m_folder + std::to_string(place) + extension;
}

/// Of work whose origin can't be read the work counts.
RecoveredWork RecoveryCopy::WorkAt(int place) {
    RecoveredWork work;
    work.Place = place;
    work.CopyPath = PathOf(place, CopyExtension);
    work.Time = m_files.TimeWritten(work.CopyPath);
    static_cast<void>(Succeeds([&] {
        const std::string origin = m_files.ReadBytes(PathOf(place, OriginExtension));
        const std::size_t end = origin.rfind('\n');
        work.DocumentPath = origin.substr(0, end);
        work.FileMark = end == std::string::npos ? "" : origin.substr(end + 1);
        return true;
    }));
    return work;
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

void RecoveryCopy::DeleteCopy(int place) {
    for (const char* extension : {CopyExtension, OriginExtension}) {
        static_cast<void>(Succeeds([&] {
            const std::string path = PathOf(place, extension);
            if (m_files.FileExists(path)) {
                m_files.DeleteFile(path);
            }
            return true;
        }));
    }
}

} // namespace corvanta
