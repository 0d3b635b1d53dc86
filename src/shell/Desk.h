#pragma once

#include "model/Program.h"
#include "platform/Controls.h"
#include "platform/FileServices.h"
#include "platform/Messages.h"
#include "platform/ProcessServices.h"
#include "platform/SettingsStore.h"
#include "platform/WindowServices.h"
#include "shell/CDocument.h"
#include "shell/MLibHelp.h"

namespace corvanta {

/// What every window works with: the program's data and its surroundings. It outlives the windows.
struct Desk {
    corvanta::Program& Program;
    CDocument& Current; ///< the program's document as the windows share it
    FileServices& Files;
    corvanta::Messages& Messages;
    ProcessServices& Process;
    WindowSystem& Windows;
    MLibHelp Help;
    SettingsStore* Store = nullptr; ///< there from the loading of the main window on
};

/// What every window is, without a window system. A window that closed is released by the one that
/// opened it.
struct Window {
    std::string Caption;
    WindowFrame Frame;
    bool IsOpen = false;
    bool Raise = false; ///< asks the window system, once, to bring the window to the front
    const Control* Focus = nullptr; ///< the control with the keyboard focus, none when not told
};

} // namespace corvanta
