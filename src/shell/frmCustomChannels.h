#pragma once

#include "platform/Controls.h"
#include "shell/Desk.h"
#include "shell/ShellHost.h"

#include <vector>

namespace corvanta {

/// The editor of the custom table: which channels it shows, and in which order. It works on a copy
/// of the list. It is shown modally: it ends when it closes.
class frmCustomChannels final : public Window {
  public:
    frmCustomChannels(Desk& desk, ShellHost& main);

    /// Opens the editor with the list as it is. A failure is reported and leaves it open with what
    /// had been filled.
    void Open();

    /// Remembers the place of the editor, closes it and lets the main window show its view anew.
    void Close();

    /// The tick of a row of `tvwChannels` changed: its channel goes to the end of the list or
    /// leaves it.
    void tvwChannels_NodeCheck(int row);

    /// The selected channel goes one place up or down, if there is one, and stays selected.
    void cmdMoveUp_Click();
    void cmdMoveDown_Click();

    /// Takes the list over and closes.
    void cmdOk_Click();
    void cmdCancel_Click() { Close(); }
    void cmdHelp_Click();

    static constexpr int HelpTopicNumber = 233;

    Control labChannels;
    CheckList tvwChannels; ///< tag: the channel id
    Control labSelected;
    ListControl lstSelected; ///< item data: the channel id
    Control cmdMoveUp, cmdMoveDown;
    Control cmdOk, cmdCancel, cmdHelp;

  private:
    void FillLists();
    void ShowSelected(const std::vector<ListEntry>& entries, int index);
    void Swap(int index, int delta);

    Desk& m_desk;
    ShellHost& m_main;
};

} // namespace corvanta
