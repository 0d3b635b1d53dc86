#pragma once

#include "platform/Controls.h"
#include "shell/Desk.h"
#include "shell/ShellHost.h"

#include <array>

namespace corvanta {

/// The dialog that exports results as text. It is shown modally: it ends when it closes.
class frmExport final : public Window {
  public:
    frmExport(Desk& desk, ShellHost& main);

    void Open();

    /// Remembers the place of the dialog and closes it.
    void Close();

    /// Another of the options was chosen: the list of views takes input or not.
    void optExport_Click();

    /// Keeps the choices, asks for a file name, exports and closes. The choices stand even when no
    /// name was given.
    void cmdExport_Click();

    /// Closes and keeps no choice.
    void cmdCancel_Click() { Close(); }
    void cmdHelp_Click();

    static constexpr int HelpTopicNumber = 50;

    /// All channels, the current view, selected views: the export type less 1.
    std::array<OptionButton, 3> optExport;
    CheckList tvwViews; ///< tag: the view
    CheckBox chkHeader;
    Control cmdExport, cmdCancel, cmdHelp;

  private:
    void KeepChoices();

    Desk& m_desk;
    ShellHost& m_main;
};

} // namespace corvanta
