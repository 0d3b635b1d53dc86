#pragma once

#include "shell/Desk.h"
#include "tests/support/Corners.h"
#include "tests/support/FakeProcessServices.h"
#include "tests/support/FakeWindowSystem.h"
#include "tests/support/MemoryFileServices.h"
#include "tests/support/MemorySettingsStore.h"
#include "tests/support/RecordingMessageBox.h"

namespace corvanta::test {

/// A desk in metric units whose surroundings are all in memory: the base of the tests of a window.
class TestDesk {
  protected:
    TestDesk() {
        m_program.Units = MetricUnits();
        m_program.Channels.ChannelsSetup(m_program.Units);
    }

    /// The messages shown since the last look.
    std::vector<std::string> Prompts() {
        std::vector<std::string> prompts = m_box.Prompts();
        m_box.Shown.clear();
        return prompts;
    }

    Program m_program;
    MemoryFileServices m_files;
    RecordingMessageBox m_box;
    Messages m_messages{m_box};
    FakeProcessServices m_process;
    FakeWindowSystem m_windowSystem;
    WindowSystem m_windows = m_windowSystem.Services();
    MemorySettingsStore m_store;
    CDocument m_current{m_program, m_messages};
    Desk m_desk{
        m_program, m_current, m_files, m_messages, m_process, m_windows, MLibHelp(m_windows.Help),
        &m_store};
};

} // namespace corvanta::test
