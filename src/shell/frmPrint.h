#pragma once

#include "platform/Controls.h"
#include "shell/Desk.h"
#include "shell/ShellHost.h"

#include <functional>

namespace corvanta {

/// The dialog that prints views, with a preview. It is shown modally: it ends when it closes.
/// Either it shows its settings, or the preview in their place.
class frmPrint final : public Window {
  public:
    frmPrint(Desk& desk, ShellHost& main);

    void Open();
    void Close() { IsOpen = false; }

    /// The current view or the selected ones were chosen: the list of views takes input or not.
    void optPrint_Click();

    /// A click on a row of the list, from 0, turns its tick over.
    void tvwTables_Click(int row);

    /// Keeps the choices, prints and closes. The dialog stays open when printing fails or the user
    /// calls it off.
    void cmdOK_Click();

    /// Keeps the choices and shows what would be printed.
    void cmdPreview_Click();

    /// Lets the user set the printer up, and keeps the orientation of the paper.
    void cmdSetup_Click();

    /// Also the window's close box: leaves the preview, or closes and keeps no choice.
    void cmdCancel_Click();
    void cmdHelp_Click();

    static constexpr int HelpTopicNumber = 223;

    OptionButton optPrintCurrent, optSelectedTables;
    CheckList tvwTables; ///< tag: the view
    CheckBox chkPageThrow, chkChassisDetails, chkPrintCoordinates;
    Control cmdOK, cmdPreview, cmdSetup, cmdCancel, cmdHelp;

    /// The pages of the report, visible during a preview: as large as the dialog, `PageMargin` from
    /// its edges and above `cmdCancel`, which then stands in the lower right corner.
    Control picPages;
    static constexpr int PageMargin = 100; ///< twips

  private:
    void KeepChoices();
    void Build();
    void ShowPreview(bool shown);
    void ReportFailure(const std::function<void()>& command);

    Desk& m_desk;
    ShellHost& m_main;
    WindowPlacement m_settingsPlacement; ///< of the dialog before the preview
};

} // namespace corvanta
