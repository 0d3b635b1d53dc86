#include "shell/frmAdjust.h"

#include "model/Failure.h"
#include "shell/CMousePointer.h"
#include "shell/MLibGUI.h"
#include "shell/TypedNumber.h"
#include "shell/frmEditGeometry.h"
#include "solver/RideHeight.h"
#include "solver/SInitGeo.h"

#include <cmath>
#include <utility>

namespace corvanta {

namespace {

constexpr WindowPlacement DesignSize{0, 0, 5400, 4200};
constexpr const char* StepName = "Adjust ride height";

/// The difference of two heights without the noise that subtraction leaves in its last digits.
double Tidy(double difference) {
    constexpr double Resolution = 1e9;
    return std::round(difference * Resolution) / Resolution;
}

} // namespace

frmAdjust::frmAdjust(Desk& desk, ShellHost& main) : m_desk(desk), m_main(main) {
    Caption = "Adjust Geometry";
    Frame.Name = "frmAdjust";
    Frame.Placement = DesignSize;
    fraStaticRideHeight.Caption = "Static Ride Height";
    labCurrent.Caption = "Current:";
    txtTarget.Caption = "Target:";
    labDifference.Caption = "Difference:";
    chkMaintainCamber.Caption = "Maintain current camber";
    chkMaintainCamber.Enabled = false;
    cmdApply.Caption = "&Apply";
    cmdOK.Caption = "&OK";
    cmdCancel.Caption = "Cancel";
    cmdHelp.Caption = "&Help";
}

void frmAdjust::Open() {
    if (m_desk.Store != nullptr) {
        RestoreWindow(Frame, m_desk.Windows.ScreenSize, *m_desk.Store, -1, -1);
    }
    const std::string& unit = m_desk.Program.Units[ucDisplacement].Label;
    labCurrent.Unit = txtTarget.Unit = labDifference.Unit = unit;
    txtTarget.ToolTip = unit + ", Z of the ride height reference point, up positive";
    labDifference.ToolTip = unit + ", target minus current: negative is into bump";
    ShowMechanism();
    Refresh();
    Focus = &txtTarget;
    IsOpen = true;
}

void frmAdjust::Close() {
    if (IsOpen && m_desk.Store != nullptr) {
        SaveWindow(Frame, *m_desk.Store, false);
    }
    const bool wasOpen = std::exchange(IsOpen, false);
    if (wasOpen && PutBackHeight()) {
        ShowHeightElsewhere();
    }
}

/// The reference point gets back the height where the wheel stands, if a refused target took its
/// place. True when it did.
bool frmAdjust::PutBackHeight() {
    double& height = m_desk.Program.Document.StaticPoints()[ptRHM].Z;
    if (m_storedHeight == m_currentHeight || height != m_storedHeight) { // exactly: see its setting
        return false;
    }
    height = m_storedHeight = m_currentHeight;
    m_desk.Current.TakeBack(StepName);
    return true;
}

void frmAdjust::ShowMechanism() {
    const std::int32_t mechanism = m_desk.Program.Document.Data.SpringMechanism;
    const bool offered = mechanism != smNone;
    chkAdjustRHByPushRodLength.Visible = chkAdjustRHByPushRodLength.Enabled = offered;
    chkAdjustRHByPushRodLength.Caption =
        "Adjust using " + (offered ? std::string(SpringShortWordOf(mechanism)) : "push rod") +
        " length";
}

void frmAdjust::Refresh() {
    chkAdjustRHByPushRodLength.Checked = m_desk.Program.Options.AdjustRHByPushRodLength;
    ShowHeight();
    txtTarget.Text = labCurrent.Text;
    txtTarget_Changed();
}

void frmAdjust::FollowDocument() {
    ShowMechanism();
    if (m_desk.Program.Document.StaticPoints()[ptRHM].Z != m_storedHeight) { // exactly: changed
        const bool typed = txtTarget.Text != labCurrent.Text;
        ShowHeight();
        if (!typed) {
            txtTarget.Text = labCurrent.Text;
        }
        txtTarget_Changed();
    }
}

void frmAdjust::ShowHeight() {
    const Program& program = m_desk.Program;
    m_currentHeight = m_storedHeight = program.Document.StaticPoints()[ptRHM].Z;
    labCurrent.Text = FormatChannelValue(program.Units, m_currentHeight, ucDisplacement);
}

/// Throws Failure "Type mismatch" for a target that is no number.
double frmAdjust::TargetHeight() const {
    if (txtTarget.Text == labCurrent.Text) {
        return m_currentHeight; // with the digits that are not on show
    }
    const FundamentalUnits& units = m_desk.Program.Units;
    const auto typed = ReadTypedNumber(txtTarget.Text, units.NumberSeparators, txtTarget.Unit);
    if (!typed || txtTarget.Text.find_first_not_of(" \t\r\n") == std::string::npos) {
        RaiseNoNumber("Target", txtTarget.Text, units.NumberSeparators);
    }
    return ParseChannelValue(units, typed->Text, ucDisplacement);
}

void frmAdjust::UpdateDifference() {
    const FundamentalUnits& units = m_desk.Program.Units;
    m_difference = m_currentHeight - TargetHeight();
    const double shown = Tidy(-m_difference * UsableUnit(units, ucDisplacement).Factor);
    labDifference.Text = NumberToText(shown == 0 ? 0 : shown, units.NumberSeparators); // no "-0"
}

void frmAdjust::txtTarget_Changed() {
    txtTarget.Fault = false;
    try {
        UpdateDifference();
    } catch (const Failure&) {
        txtTarget.Fault = true; // half typed
        labDifference.Text.clear();
    }
}

void frmAdjust::txtTarget_LostFocus() {
    txtTarget.Text =
        CommittedText(txtTarget.Text, m_desk.Program.Units.NumberSeparators, txtTarget.Unit);
    txtTarget_Changed();
}

void frmAdjust::Apply() {
    const CMousePointer wait(m_desk.Windows.Cursor, HourglassCursor);
    std::string errorText;
    try {
        if (Stands() || !TakeTypedEdits()) {
            return;
        }
        FollowDocument();
        TakeTarget(errorText);
        TakeOver();
        Refresh();
        Focus = &txtTarget;
    } catch (...) {
        std::string report = "Unable to complete calculations for adjusted geometry.\rReason: " +
                             FailureInFlight().Description();
        if (!errorText.empty()) {
            report += "\r\n" + errorText;
        }
        m_desk.Messages.ShowMessage(report, msExclamation);
        txtTarget_LostFocus(); // marks a target that is no number
        ShowKeptTarget();
        Focus = &txtTarget;
    }
}

/// The reference point keeps a target out of reach, and every table shows it there.
void frmAdjust::ShowKeptTarget() {
    if (m_desk.Program.Document.StaticPoints()[ptRHM].Z != m_currentHeight) { // exactly: it took it
        m_desk.Current.Record(StepName);
        ShowHeightElsewhere();
    }
}

void frmAdjust::ShowHeightElsewhere() {
    Suspension& document = m_desk.Program.Document;
    if (frmEditGeometry* const editor = m_main.OpenedEditor()) {
        editor->PointsToGrid();
    }
    if (document.ResultsValid) { // otherwise no table shows it, and why was told
        document.ResultsValid = false;
        m_main.RefreshGUI(false);
    }
}

/// True when the target is where the wheel stands: there is nothing to solve then.
bool frmAdjust::Stands() {
    FollowDocument();
    UpdateDifference();
    if (m_difference != 0) { // exactly: a height is the same or it is not
        return false;
    }
    m_desk.Program.Options.AdjustRHByPushRodLength = chkAdjustRHByPushRodLength.Checked;
    if (PutBackHeight()) {
        ShowHeightElsewhere();
    }
    return true;
}

/// What is typed in an open editor belongs to the corner that the user sees, and the new points
/// would take its place in the table. False when the editor can't apply it, or what it applied
/// can't be calculated; either was told.
bool frmAdjust::TakeTypedEdits() {
    frmEditGeometry* const editor = m_main.OpenedEditor();
    return editor == nullptr || !editor->HasUnappliedChanges() ||
           (editor->Apply() && m_desk.Program.Document.ResultsValid);
}

/// Solves the corner at the target. Throws Failure when it can't be; the reference point keeps the
/// target then.
void frmAdjust::TakeTarget(std::string& errorText) {
    Program& program = m_desk.Program;
    program.Options.AdjustRHByPushRodLength = chkAdjustRHByPushRodLength.Checked;
    UpdateDifference();
    m_storedHeight = TargetHeight();
    program.Document.StaticPoints()[ptRHM].Z = m_storedHeight;
    if (!AdjustRideHeight(program.Document, errorText, m_difference,
                          program.Options.AdjustRHByPushRodLength)) {
        throw Failure(fnInvalidCall, std::exchange(errorText, {}));
    }
    m_desk.Current.Record(StepName);
    program.Document.ResultsValid = false;
    ShowHeight(); // from here on the wheel stands there, whatever follows
}

/// Brings the new points to the other windows, which calculate.
void frmAdjust::TakeOver() {
    Program& program = m_desk.Program;
    if (frmEditGeometry* const editor = m_main.OpenedEditor()) {
        editor->PointsToGrid();
        if (editor->Apply()) {
            return;
        }
        // It told why it could not apply; the new points stand all the same.
    }
    InitGeometry(program.Document, program.Channels, program.Units, m_desk.Messages);
    m_main.RefreshGUI(true);
}

void frmAdjust::cmdOK_Click() {
    Apply();
    Close();
}

void frmAdjust::cmdHelp_Click() {
    m_desk.Help.ShowHelpTopic(HelpTopicNumber);
}

} // namespace corvanta
