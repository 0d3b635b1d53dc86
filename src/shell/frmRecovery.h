#pragma once

#include "platform/Controls.h"
#include "shell/Desk.h"
#include "shell/RecoveryCopy.h"

#include <functional>
#include <string>
#include <vector>

namespace corvanta {

/// The dialog with the unsaved work that can be recovered. It is shown modally: it ends when it
/// closes.
class frmRecovery final : public Window {
  public:
    /// One piece of work, as its row in the list shows it.
    struct Row {
        std::string Name;
        std::string Folder;
        std::string Time;
    };

    /// `open` takes the work that the user chose; the dialog has closed before.
    frmRecovery(Desk& desk, RecoveryCopy& recovery, std::function<void(const RecoveredWork&)> open);

    /// Opens on the list, newest first. Stays closed when there is nothing in it.
    void Open();

    /// Remembers the place of the dialog and closes it.
    void Close();

    void cmdOpen_Click();

    /// Asks, and deletes the chosen work alone.
    void cmdDelete_Click();

    /// Closes; all work stays for another time.
    void cmdLater_Click() { Close(); }
    void cmdHelp_Click();

    static constexpr int HelpTopicNumber = 190;

    Control labHead;
    std::vector<Row> Rows;
    int Selected = 0; ///< row; the window system keeps it up to date
    Control cmdOpen, cmdDelete, cmdLater, cmdHelp;

  private:
    void ShowList();
    [[nodiscard]] const RecoveredWork* Chosen() const;

    Desk& m_desk;
    RecoveryCopy& m_recovery;
    std::function<void(const RecoveredWork&)> m_open;
    std::vector<RecoveredWork> m_list;
};

} // namespace corvanta
