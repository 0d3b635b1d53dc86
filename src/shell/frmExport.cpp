#include "shell/frmExport.h"

#include "export/MExport.h"
#include "shell/CMousePointer.h"
#include "shell/ExportCommands.h"
#include "shell/MLibGUI.h"

#include <string>

namespace corvanta {

namespace {

constexpr WindowPlacement DesignSize{0, 0, 6000, 6600};

constexpr std::size_t SelectedViewsIndex = etSelectedViews - 1;

} // namespace

frmExport::frmExport(Desk& desk, ShellHost& main) : m_desk(desk), m_main(main) {
    Caption = "Export Results";
    Frame.Name = "frmExport";
    Frame.Placement = DesignSize;
    optExport[0].Caption = "&All Channels";
    optExport[1].Caption = "&Current View";
    optExport[2].Caption = "&Selected Views:";
    chkHeader.Caption = "&Write header";
    cmdExport.Caption = "&Export...";
    cmdCancel.Caption = "Cancel";
    cmdHelp.Caption = "&Help";
}

void frmExport::Open() {
    const Program& program = m_desk.Program;
    if (m_desk.Store != nullptr) {
        RestoreWindow(Frame, m_desk.Windows.ScreenSize, *m_desk.Store, -1, -1);
    }
    chkHeader.Checked = program.Options.ExportHeaderOn;
    std::int32_t type = program.Options.ExportType;
    const bool drawing = program.Settings.View == vw3d; // has no text to export
    optExport[etCurrentView - 1].Enabled = !drawing;
    if (type < etAllChannels || type > etSelectedViews || (type == etCurrentView && drawing)) {
        type = etAllChannels;
    }
    for (std::size_t index = 0; index < optExport.size(); ++index) {
        optExport[index].Selected = static_cast<std::int32_t>(index) + 1 == type;
    }
    tvwViews.Rows.clear();
    for (int view = 1; view <= SelectableViewCount; ++view) {
        tvwViews.Rows.push_back({std::string(ViewName(view)), view, program.ExportViews[view]});
    }
    optExport_Click();
    IsOpen = true;
}

void frmExport::Close() {
    if (IsOpen && m_desk.Store != nullptr) {
        SaveWindow(Frame, *m_desk.Store, false);
    }
    IsOpen = false;
}

void frmExport::optExport_Click() {
    tvwViews.Enabled = optExport[SelectedViewsIndex].Selected;
}

void frmExport::cmdExport_Click() {
    const CMousePointer wait(m_desk.Windows.Cursor, HourglassCursor);
    KeepChoices();
    AskAndExportResults(m_desk, m_main, m_desk.Program.Options.ExportType);
    Close();
}

void frmExport::KeepChoices() {
    Program& program = m_desk.Program;
    for (const CheckListRow& row : tvwViews.Rows) {
        program.ExportViews.Set(row.Tag, row.Checked);
    }
    program.Options.ExportHeaderOn = chkHeader.Checked;
    for (std::size_t index = 0; index < optExport.size(); ++index) {
        if (optExport[index].Selected) {
            program.Options.ExportType = static_cast<std::int32_t>(index) + 1;
        }
    }
}

void frmExport::cmdHelp_Click() {
    m_desk.Help.ShowHelpTopic(HelpTopicNumber);
}

} // namespace corvanta
