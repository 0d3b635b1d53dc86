#pragma once

#include "model/Program.h"
#include "platform/DiskFileServices.h"
#include "platform/MachineServices.h"
#include "platform/Messages.h"
#include "platform/NoWindowSystem.h"
#include "shell/frmMain.h"

#include <string>

namespace corvanta::benchmarks {

/// A program with a document of the samples in it, its grid cut to `steps` by `steps` (an odd
/// number up to 49) over the document's own travels; 0 leaves the document's own grid. Throws
/// Failure when the document can't be read.
class LoadedProgram {
  public:
    LoadedProgram(const std::string& sample, int steps);

    [[nodiscard]] Program& operator*() { return m_program; }
    [[nodiscard]] Program* operator->() { return &m_program; }
    [[nodiscard]] Messages& MessageSink() { return m_messages; }
    [[nodiscard]] FileServices& Files() { return m_files; }

    /// The document's file.
    [[nodiscard]] const std::string& Path() const { return m_path; }

  private:
    NoMessageBox m_box;
    Messages m_messages{m_box};
    DiskFileServices m_files;
    Program m_program;
    std::string m_path;
};

/// The corners that stand for their kinds.
inline constexpr const char* Strut = "published/STRUTGEN.WSP";
inline constexpr const char* Pushrod = "published/FSPUSHF.WSP";
inline constexpr const char* TBar = "published/FSTBARF.WSP";
inline constexpr const char* TwoRockers = "prototype-front-two-rockers.WSP";

/// The main window over a loaded program, with no window system below it.
class WindowOver {
  public:
    explicit WindowOver(LoadedProgram& program)
        : m_current(*program, program.MessageSink()),
          m_desk{*program,  m_current, program.Files(),         program.MessageSink(),
                 m_process, m_windows, MLibHelp(m_windows.Help)} {}

    [[nodiscard]] frmMain& operator*() { return m_window; }
    [[nodiscard]] frmMain* operator->() { return &m_window; }
    [[nodiscard]] ProcessServices& Process() { return m_process; }

  private:
    static constexpr const char* Name = "corvanta";

    MachineServices m_process{1, &Name, ProductVersion{}};
    NoWindowSystem m_noWindows;
    WindowSystem m_windows = m_noWindows.Services();
    CDocument m_current;
    Desk m_desk;
    frmMain m_window{m_desk};
};

} // namespace corvanta::benchmarks
