#include "shell/frmCustomChannels.h"

#include "model/Failure.h"
#include "shell/MLibGUI.h"

#include <utility>

namespace corvanta {

namespace {

constexpr WindowPlacement DesignSize{0, 0, 9000, 7500};

} // namespace

frmCustomChannels::frmCustomChannels(Desk& desk, ShellHost& main) : m_desk(desk), m_main(main) {
    Caption = "Define Custom Table";
    Frame.Name = "frmCustomChannels";
    Frame.Placement = DesignSize;
    labChannels.Caption = "Available channels:";
    labSelected.Caption = "Selected channels:";
    cmdMoveUp.Caption = "Move &Up";
    cmdMoveDown.Caption = "Move &Down";
    cmdOk.Caption = "OK";
    cmdCancel.Caption = "Cancel";
    cmdHelp.Caption = "&Help";
}

void frmCustomChannels::Open() {
    IsOpen = true;
    try {
        if (m_desk.Store != nullptr) {
            RestoreWindow(Frame, m_desk.Windows.ScreenSize, *m_desk.Store, -1, -1);
        }
        FillLists();
    } catch (...) {
        m_desk.Messages.ShowMessage(
            "There was an error while loading frmCustomChannels. Error was: " +
                FailureInFlight().Description(),
            msCritical);
    }
}

void frmCustomChannels::FillLists() {
    const Program& program = m_desk.Program;
    tvwChannels.Rows.clear();
    for (int id = 1; id <= ChannelCount; ++id) {
        if (id != chLinkLoads) {
            tvwChannels.Rows.push_back(
                {program.Channels[id].Title, id, program.CustomChannels.Contains(id)});
        }
    }
    lstSelected.Clear();
    for (const int id : program.CustomChannels.Ids()) {
        lstSelected.Add(program.Channels[id].Title, id);
    }
}

void frmCustomChannels::Close() {
    if (!IsOpen) {
        return;
    }
    if (m_desk.Store != nullptr) {
        SaveWindow(Frame, *m_desk.Store, true);
    }
    IsOpen = false;
    m_main.RefreshGUI(false);
}

void frmCustomChannels::tvwChannels_NodeCheck(int row) {
    const CheckListRow& changed =
        tvwChannels.Rows[SlotOf(row, static_cast<int>(tvwChannels.Rows.size()))];
    if (changed.Checked) {
        lstSelected.Add(changed.Text, changed.Tag);
        return;
    }
    std::vector<ListEntry> left;
    int selected = ListControl::NoSelection;
    for (int n = 0; n < lstSelected.Count(); ++n) {
        if (lstSelected.Entry(n).Text != changed.Text) {
            if (n == lstSelected.Index()) {
                selected = static_cast<int>(left.size());
            }
            left.push_back(lstSelected.Entry(n));
        }
    }
    ShowSelected(left, selected);
}

void frmCustomChannels::ShowSelected(const std::vector<ListEntry>& entries, int index) {
    lstSelected.Clear();
    for (const ListEntry& entry : entries) {
        lstSelected.Add(entry.Text, entry.ItemData);
    }
    lstSelected.Select(index);
}

void frmCustomChannels::cmdMoveUp_Click() {
    if (lstSelected.Index() != 0) {
        Swap(lstSelected.Index(), -1);
    }
}

void frmCustomChannels::cmdMoveDown_Click() {
    if (lstSelected.Index() != lstSelected.Count() - 1) {
        Swap(lstSelected.Index(), +1);
    }
}

void frmCustomChannels::Swap(int index, int delta) {
    if (index == ListControl::NoSelection) {
        return;
    }
    std::vector<ListEntry> entries = lstSelected.Entries();
    std::swap(entries[SlotOf(index, lstSelected.Count())],
              entries[SlotOf(index + delta, lstSelected.Count())]);
    ShowSelected(entries, index + delta);
}

void frmCustomChannels::cmdOk_Click() {
    CustomChannels& channels = m_desk.Program.CustomChannels;
    channels.Clear();
    for (const ListEntry& entry : lstSelected.Entries()) {
        channels.Add(entry.ItemData);
    }
    Close();
}

void frmCustomChannels::cmdHelp_Click() {
    m_desk.Help.ShowHelpTopic(HelpTopicNumber);
}

} // namespace corvanta
