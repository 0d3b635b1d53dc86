#pragma once

#include "platform/Controls.h"
#include "shell/Desk.h"
#include "shell/ShellHost.h"

namespace corvanta {

/// The dialog in which the user chooses units. It is shown modally: it ends when it closes.
class frmOptions final : public Window {
  public:
    frmOptions(Desk& desk, ShellHost& main);

    void Open();

    /// Remembers the place of the dialog and closes it.
    void Close();

    /// Puts the chosen units in force, lets the main window calculate and closes.
    void cmdOK_Click();
    void cmdCancel_Click() { Close(); }
    void cmdHelp_Click();

    Control fraDisplacement;
    OptionButton optInches, optMillimetres;
    Control fraMassAndForce;
    OptionButton optKilograms, optPounds; ///< none selected while forces are in newtons
    Control fraSpringRate;
    OptionButton optKilogramsPerMillimetre, optNewtonsPerMillimetre, optPoundsPerInch;
    Control cmdOK, cmdCancel, cmdHelp;

  private:
    void TakeUnits();

    Desk& m_desk;
    ShellHost& m_main;
};

} // namespace corvanta
