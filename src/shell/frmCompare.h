#pragma once

#include "platform/Controls.h"
#include "platform/DataGrid.h"
#include "shell/Desk.h"
#include "shell/ShellHost.h"
#include "study/Comparison.h"

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace corvanta {

/// The window that lists what differs between the document as it stands, the baseline and the
/// ticked variants. It is not modal and follows the document.
class frmCompare final : public Window, private DocumentWatcher {
  public:
    frmCompare(Desk& desk, ShellHost& main);
    frmCompare(const frmCompare&) = delete;
    frmCompare& operator=(const frmCompare&) = delete;
    frmCompare(frmCompare&&) = delete;
    frmCompare& operator=(frmCompare&&) = delete;
    ~frmCompare() override;

    void Open();

    /// Remembers the place of the window and closes it.
    void Close();

    /// The units may have changed: the table is in those in force.
    void FollowUnits();

    // Events. The control already holds what the user chose.
    void lstDesigns_Click(); ///< a tick has changed
    void cmdCopy_Click();
    void cmdSave_Click(); ///< asks for a name and writes comma-separated values
    void cmdClose_Click() { Close(); }
    void cmdHelp_Click();

    static constexpr int HelpTopicNumber = 250;

    Control labDesigns;
    CheckList lstDesigns; ///< tag: what kind of design, in the order of the kinds
    DataGrid grdCompare;
    Control labNote;   ///< what can't be compared, and why
    Control labStatus; ///< what the last copy or save did
    Control cmdCopy, cmdSave, cmdClose, cmdHelp;

  private:
    void DocumentChanged(DocumentChange change) override;
    void Update();
    void ListDesigns();
    void ShowTable();
    [[nodiscard]] std::vector<ComparedDesign> Chosen() const;
    [[nodiscard]] std::vector<std::string> ShownUnits() const;

    Desk& m_desk;
    ShellHost& m_main;
    using Choice = std::pair<int, std::string>; ///< what kind of design, and its name

    std::vector<ComparedDesign> m_designs; ///< that can be chosen, in the order of the list
    std::set<Choice> m_leftOut;            ///< those without a tick
    std::vector<std::string> m_units;      ///< of the table
};

} // namespace corvanta
