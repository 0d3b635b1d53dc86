#include "shell/frmCompare.h"

#include "calculation/SCalcs.h"
#include "model/Failure.h"
#include "results/MDisplayTable.h"
#include "shell/CMousePointer.h"
#include "shell/ExportCommands.h"
#include "shell/MLibGUI.h"
#include "shell/PointWords.h"

namespace corvanta {

namespace {

constexpr WindowPlacement DesignSize{0, 0, 13500, 9000};

enum Kind : int { AsItStands, Baseline, OfVariant };

/// All that the figures are read from: wheel travel with the rack at its centre.
const GridCut FiguresCut{false, {0}, {}, false};

} // namespace

frmCompare::frmCompare(Desk& desk, ShellHost& main) : m_desk(desk), m_main(main) {
    Caption = "Compare";
    Frame.Name = "frmCompare";
    Frame.Placement = DesignSize;
    labDesigns.Caption = "&Designs, measured by the first one that is ticked:";
    cmdCopy.Caption = "C&opy";
    cmdCopy.ToolTip = "The whole table, for a spreadsheet";
    cmdSave.Caption = "&Save As...";
    cmdSave.ToolTip = "The whole table as comma-separated values";
    cmdClose.Caption = "&Close";
    cmdHelp.Caption = "&Help";
    m_desk.Current.Watch(*this);
}

frmCompare::~frmCompare() {
    m_desk.Current.Unwatch(*this);
}

void frmCompare::Open() {
    if (m_desk.Store != nullptr) {
        RestoreWindow(Frame, m_desk.Windows.ScreenSize, *m_desk.Store, -1, -1);
    }
    IsOpen = true;
    Update();
}

void frmCompare::Close() {
    if (IsOpen && m_desk.Store != nullptr) {
        SaveWindow(Frame, *m_desk.Store, true);
    }
    IsOpen = false;
    m_designs.clear();
    grdCompare.Reset();
}

void frmCompare::DocumentChanged(DocumentChange change) {
    if (change != DocumentChange::InMotion) { // a whole table can't be read while it moves
        Update();
    }
}

void frmCompare::FollowUnits() {
    if (IsOpen && m_units != ShownUnits()) {
        Update();
    }
}

std::vector<std::string> frmCompare::ShownUnits() const {
    std::vector<std::string> labels;
    for (const UnitClass unit : {ucDisplacement, ucForce, ucMass, ucRate}) {
        labels.push_back(m_desk.Program.Units[unit].Label);
    }
    return labels;
}

void frmCompare::Update() {
    if (!IsOpen) {
        return;
    }
    try {
        labStatus.Caption.clear();
        m_units = ShownUnits();
        ListDesigns();
        ShowTable();
    } catch (...) {
        grdCompare.Reset();
        m_desk.Messages.ShowMessage("There was an error while comparing designs.\rError was: " +
                                        FailureInFlight().Description(),
                                    msExclamation);
    }
}

void frmCompare::ListDesigns() {
    m_designs.clear();
    lstDesigns.Rows.clear();
    const auto add = [this](Kind kind, const std::string& name, const Design& design) {
        m_designs.push_back({name, design});
        lstDesigns.Rows.push_back({name, kind, !m_leftOut.contains({kind, name})});
    };
    if (!m_desk.Program.Document.DataLoaded) {
        return;
    }
    const StudyData& study = m_desk.Current.Study();
    add(AsItStands, "As it stands", DesignOf(m_desk.Program.Document));
    if (study.Baseline) {
        add(Baseline, "Baseline", *study.Baseline);
    }
    for (const Variant& variant : study.Variants) {
        if (variant.Ticked) {
            add(OfVariant, variant.Name, variant.Design);
        }
    }
}

std::vector<ComparedDesign> frmCompare::Chosen() const {
    std::vector<ComparedDesign> chosen;
    for (std::size_t n = 0; n < m_designs.size(); ++n) {
        if (lstDesigns.Rows[n].Checked) {
            chosen.push_back(m_designs[n]);
        }
    }
    return chosen;
}

void frmCompare::ShowTable() {
    const CMousePointer wait(m_desk.Windows.Cursor, HourglassCursor);
    std::vector<ComparedDesign> chosen = Chosen();
    std::vector<Suspension> solved(chosen.size());
    labNote.Caption.clear();
    for (std::size_t n = 0; n < chosen.size(); ++n) {
        const SolveResult result =
            Solve(solved[n], chosen[n].Design, m_desk.Current.Settings(), FiguresCut);
        if (result.Solved) {
            chosen[n].Solved = &solved[n];
        } else {
            labNote.Caption += (labNote.Caption.empty() ? "" : "\n") + chosen[n].Name + ": " +
                               FailureLine(result.Failure, solved[n], m_desk.Program.Units);
        }
    }
    ShowComparison(grdCompare,
                   CompareDesigns(chosen, m_desk.Program.Channels, m_desk.Program.Units));
    if (grdCompare.Rows() > 0) { // the units go with the values; the names stay in sight
        grdCompare.SetSize(grdCompare.Rows(), grdCompare.Columns(), 1, 1);
    }
    grdCompare.Visible = true;
    if (m_designs.empty()) {
        labNote.Caption = "There is no suspension to compare.";
    } else if (chosen.size() < 2) {
        labNote.Caption += std::string(labNote.Caption.empty() ? "" : "\n") +
                           "Tick two designs or more to see what differs between them.";
    }
    labNote.Visible = !labNote.Caption.empty();
    cmdCopy.Enabled = cmdSave.Enabled = grdCompare.Rows() > 0;
}

void frmCompare::lstDesigns_Click() {
    for (const CheckListRow& row : lstDesigns.Rows) {
        if (row.Checked) {
            m_leftOut.erase({row.Tag, row.Text});
        } else {
            m_leftOut.insert({row.Tag, row.Text});
        }
    }
    Update();
}

void frmCompare::cmdCopy_Click() {
    m_desk.Windows.Board.SetText(grdCompare.Text());
    labStatus.Caption = "Copied.";
}

void frmCompare::cmdSave_Click() {
    const std::string name = FileServices::BaseName(m_desk.Program.DocumentPath);
    if (AskAndExportTable(m_desk, m_main, grdCompare,
                          name + (name.empty() ? "" : " ") + "comparison.csv")) {
        labStatus.Caption = "Written.";
    }
}

void frmCompare::cmdHelp_Click() {
    m_desk.Help.ShowHelpTopic(HelpTopicNumber);
}

} // namespace corvanta
