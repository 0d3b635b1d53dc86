#include "shell/frmRecovery.h"

#include "shell/MLibGUI.h"

#include <algorithm>

namespace corvanta {

namespace {

constexpr WindowPlacement DesignSize{0, 0, 9900, 5400};

} // namespace

frmRecovery::frmRecovery(Desk& desk, RecoveryCopy& recovery,
                         std::function<void(const RecoveredWork&)> open)
    : m_desk(desk),
      m_recovery(recovery),
      m_open(std::move(open)) {
    Caption = "Recover Unsaved Work";
    Frame.Name = "frmRecovery";
    Frame.Placement = DesignSize;
    labHead.Caption = "This work was never saved. Opening it changes no file; only Save does.";
    cmdOpen.Caption = "&Open";
    cmdDelete.Caption = "&Delete...";
    cmdLater.Caption = "&Later";
    cmdHelp.Caption = "&Help";
}

void frmRecovery::Open() {
    if (m_desk.Store != nullptr) {
        RestoreWindow(Frame, m_desk.Windows.ScreenSize, *m_desk.Store, -1, -1);
    }
    IsOpen = true;
    ShowList();
}

void frmRecovery::Close() {
    if (IsOpen && m_desk.Store != nullptr) {
        SaveWindow(Frame, *m_desk.Store, false);
    }
    IsOpen = false;
}

void frmRecovery::ShowList() {
    m_list = m_recovery.List();
    Rows.clear();
    for (const RecoveredWork& work : m_list) {
        const std::string folder = FileServices::ParentFolder(work.DocumentPath);
        const std::string name = work.DocumentPath.substr(folder.size());
        Rows.push_back({name.empty() ? "New suspension" : name, folder,
                        m_desk.Process.DateAndTimeOf(work.Time)});
    }
    Selected = std::clamp(Selected, 0, std::max(static_cast<int>(Rows.size()) - 1, 0));
    if (Rows.empty()) {
        Close();
    }
}

const RecoveredWork* frmRecovery::Chosen() const {
    const bool chosen = Selected >= 0 && Selected < static_cast<int>(m_list.size());
    return chosen ? &m_list[static_cast<std::size_t>(Selected)] : nullptr;
}

void frmRecovery::cmdOpen_Click() {
    if (const RecoveredWork* const chosen = Chosen()) {
        const RecoveredWork work = *chosen;
        Close();
        m_open(work);
    }
}

void frmRecovery::cmdDelete_Click() {
    const RecoveredWork* const chosen = Chosen();
    if (chosen == nullptr) {
        return;
    }
    const Row& row = Rows[static_cast<std::size_t>(Selected)];
    if (m_desk.Messages.Ask("Delete the unsaved work on " + row.Name + " of " + row.Time +
                                "?\rIt can't be brought back. The document's own file "
                                "stays as it is.",
                            {"&Delete"}) != maYes) {
        return;
    }
    if (!m_recovery.Discard(chosen->Place)) {
        m_desk.Messages.ShowMessage("The unsaved work could not be deleted: another window has it, "
                                    "or its folder may not be written.",
                                    msExclamation);
    }
    ShowList();
}

void frmRecovery::cmdHelp_Click() {
    m_desk.Help.ShowHelpTopic(HelpTopicNumber);
}

} // namespace corvanta
