#include "shell/frmEditGeometry.h"

#include "model/Failure.h"
#include "results/PointsTable.h"
#include "shell/BusyScope.h"
#include "shell/EditGeometryFields.h"
#include "shell/MechanismLists.h"
#include "shell/PointCells.h"
#include "solver/SInitGeo.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

// The pages of the editor, each with its own controls; the window around them is in
// frmEditGeometry.cpp.

namespace corvanta {

namespace {

/// Steps of 0 or below are replaced by this, mm.
constexpr double DefaultStepSize = 5.0;

/// Stored lines end CR LF, in whatever way the lines of a text box end.
std::string WithStoredLineEnds(std::string_view text) {
    return ReplaceAll(ReplaceAll(ReplaceAll(text, "\r\n", "\n"), "\r", "\n"), "\n", "\r\n");
}

std::string Counted(int count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

} // namespace

// --- Mechanisms ---------------------------------------------------------------------------------

void frmEditGeometry::UpdateMechanismLists() {
    if (ListsBusy) {
        return;
    }
    const BusyScope busy(ListsBusy);
    const int mechanism = cboSpringMechanism.Index();
    const bool springsTold = mechanism != smMacPhersonStrut;
    labSpringSystem.Visible = cboSpringSystem.Visible = springsTold;
    labCentreSpringSystem.Visible = cboCentreSpringSystem.Visible = springsTold;

    Refill(cboSpringSystem, SpringSystemEntries(mechanism));
    cboSpringSystem.Enabled = mechanism != smNone;
    Refill(cboCentreSpringSystem, CentreSpringEntries(cboSpringSystem.Index()));
    cboCentreSpringSystem.Enabled = cboSpringSystem.Index() > tsCornerSpring;
    Refill(cboARB, BarEntries(mechanism));
}

frmEditGeometry::TypeChoices frmEditGeometry::ChosenType() const {
    return {cboSpringMechanism.Index(), cboSpringSystem.Index(), cboCentreSpringSystem.Index(),
            cboARB.Index(), chkDriveshaft.Checked ? 1 : 0};
}

void frmEditGeometry::TypeToForm() {
    const SuspensionData& data = m_desk.Program.Document.Data;
    // A number that is not offered under the choices above it leaves its list at the first entry.
    const auto select = [this](ListControl& list, int index) {
        list.Select(index >= 0 && index < list.Count() ? index : 0);
        UpdateMechanismLists();
    };
    select(cboSpringMechanism, data.SpringMechanism);
    select(cboSpringSystem, data.ThirdSpringMechanism);
    select(cboCentreSpringSystem, data.CentreSpringSystem);
    select(cboARB, cboARB.FindData(data.ARBMechanism));
    chkDriveshaft.Checked = data.DriveShaftExists;
    m_shownType = ChosenType();
}

/// Lists that still show the document's choices stand for them, also where a number of the document
/// is not offered.
void frmEditGeometry::TakeType(SuspensionData& data) const {
    if (ChosenType() == m_shownType) {
        return;
    }
    data.SpringMechanism = cboSpringMechanism.Index();
    data.ThirdSpringMechanism = cboSpringSystem.Index();
    data.CentreSpringSystem = cboCentreSpringSystem.Index();
    data.ARBMechanism = cboARB.Entry(cboARB.Index()).ItemData;
    data.DriveShaftExists = chkDriveshaft.Checked;
}

void frmEditGeometry::TypeFromForm(bool confirm) {
    if (ChosenType() == m_shownType) {
        return;
    }
    if (confirm && m_desk.Messages.Ask("Changes made on the Type page cannot be undone "
                                       "with Cancel. Continue anyway?",
                                       {"&Continue"}) != maYes) {
        TypeToForm();
        return;
    }
    TakeType(m_desk.Program.Document.Data);
    CopyType(m_shown.Data, m_desk.Program.Document.Data);
    m_shownType = ChosenType();
    PointTableToForm();
}

// --- Travel -------------------------------------------------------------------------------------

void frmEditGeometry::TravelToForm() {
    const Program& program = m_desk.Program;
    const SuspensionData& data = program.Document.Data;
    for (const NumberField& field : TravelFields()) {
        NumberBox& box = this->*field.Box;
        box.Text = FieldText(field, data.*field.Target, program.Units);
        box.Fault = false;
    }
    optHeave.Selected = data.ChassisMotion == cmHeave;
    optRoll.Selected = !optHeave.Selected;
    UpdateTravelSummary();
}

void frmEditGeometry::TakeTravel(SuspensionData& data, std::string& message) const {
    const FundamentalUnits& units = m_desk.Program.Units;
    TakeFields(data, *this, TravelFields(), units);
    const auto makePositive = [&](double& travel, const char* line) {
        if (travel < 0) {
            travel = std::abs(travel);
            message += line;
        }
    };
    const auto makeStep = [&](double& step, const char* line) {
        if (step <= 0) {
            step = DefaultStepSize;
            message += line + FormatChannelValue(units, step, ucDisplacement) +
                       units[ucDisplacement].Label;
        }
    };
    makePositive(data.Bump, "Wheel bump travel must be positive. It has been changed to a positive "
                            "value.");
    makePositive(data.Droop, "\rWheel droop travel must be positive. It has been changed to a "
                             "positive value.");
    makeStep(data.WheelTravelStepSize,
             "\rWheel step size must be greater than 0. It has been reset to ");
    makeStep(data.RackTravelStepSize,
             "\rRack step size must be greater than 0. It has been reset to ");
    data.ChassisMotion = optHeave.Selected ? cmHeave : cmRoll;
}

void frmEditGeometry::TravelFromForm() {
    std::string message;
    SuspensionData data = m_desk.Program.Document.Data;
    TakeTravel(data, message);
    (void)CountTravelSteps(data, m_desk.Program.Units); // fails for travel that makes no grid
    m_desk.Program.Document.Data = std::move(data);
    if (!message.empty()) {
        m_desk.Messages.ShowMessage(message, msInformation);
    }
}

void frmEditGeometry::UpdateTravelSummary() {
    try {
        labTravelSummary.Caption = TravelSummary();
    } catch (const Failure&) {
        labTravelSummary.Caption.clear(); // half typed, or travel that makes no grid
    }
}

std::string frmEditGeometry::TravelSummary() const {
    const Program& program = m_desk.Program;
    std::string corrections;
    SuspensionData asked = program.Document.Data;
    SuspensionData data = asked;
    TakeFields(asked, *this, TravelFields(), program.Units);
    TakeTravel(data, corrections);
    const TravelGrid grid = CountTravelSteps(data, program.Units);
    std::string text = Counted(grid.NW, "wheel step") + " x " + Counted(grid.NR, "rack step") +
                       ", " + Counted(grid.NW * grid.NR, "position");
    const auto addStep = [&](const char* name, double wanted, double step) {
        if (step != wanted) { // exactly: it is the same number unless it was replaced
            text += std::string("; the ") + name + " will become " +
                    FormatChannelValue(program.Units, step, ucDisplacement) + " " +
                    program.Units[ucDisplacement].Label;
        }
    };
    addStep("wheel step", asked.WheelTravelStepSize, grid.WheelTravelStepSize);
    addStep("rack step", asked.RackTravelStepSize, grid.RackTravelStepSize);
    return text;
}

// --- Vehicle, load cases, description -----------------------------------------------------------

void frmEditGeometry::VehicleToForm() {
    const Program& program = m_desk.Program;
    try {
        for (const NumberField& field : VehicleFields()) {
            NumberBox& box = this->*field.Box;
            box.Text = FieldText(field, program.Document.Data.*field.Target, program.Units);
            box.Fault = false;
        }
    } catch (...) {
        ShowFailure("There was an error while getting the dynamics data.\rError was: ");
    }
}

bool frmEditGeometry::VehicleFromForm() {
    Program& program = m_desk.Program;
    try {
        SuspensionData data = program.Document.Data;
        TakeFields(data, *this, VehicleFields(), program.Units);
        program.Document.Data = std::move(data);
        return true;
    } catch (...) {
        ShowFailure("There was an error while setting the dynamics data.\rError was: ");
        return false;
    }
}

std::string frmEditGeometry::TakeDescription(const std::string& stored) const {
    std::string text = WithStoredLineEnds(txtDescription.Text);
    return text == WithStoredLineEnds(stored) ? stored : text;
}

void frmEditGeometry::txtDescription_Changed() {
    txtDescription.Fault = txtDescription.Text.find('[') != std::string::npos;
    labDescriptionNote.Caption =
        txtDescription.Fault ? "A file keeps the description only up to the first \"[\"." : "";
}

// --- Static points ------------------------------------------------------------------------------

void frmEditGeometry::PointTableToForm() {
    SetupPointsTableBlank(grdPoints, m_desk.Program.Document, m_desk.Program.Units, true);
    grdPoints.Visible = true;
    m_openCell.reset();
    grdPointsSelection = {grdPoints.FixedRows(), grdPoints.FixedColumns(), grdPoints.FixedRows(),
                          grdPoints.FixedColumns()};
    PointsToGrid();
}

void frmEditGeometry::PointsToGrid() {
    DataPointsGet(grdPoints, m_desk.Program.Document, m_desk.Program.Units, 1, 1);
    m_shown.Points = m_desk.Program.Document.StaticPoints();
    MarkPoints();
}

bool frmEditGeometry::PointsFromGrid() {
    Suspension& document = m_desk.Program.Document;
    try {
        document.StaticPoints() =
            PointsOfCells(grdPoints, m_desk.Program.Units, document.StaticPoints());
        return true;
    } catch (...) {
        ShowFailure("There was an error while getting the points data. Error was: ");
        return false;
    }
}

void frmEditGeometry::grdPoints_Edited(int row, int column, const std::string& text) {
    if (IsPointCell(grdPoints, row, column)) {
        m_openCell.reset();
        PutPointCell(grdPoints, m_desk.Program.Units, row, column, text);
        labStatus.Caption.clear();
        MarkPoints();
    }
}

void frmEditGeometry::grdPoints_Typing(int row, int column, const std::string& text) {
    if (IsPointCell(grdPoints, row, column)) {
        m_openCell = {row, column, text};
        UpdatePreview();
    }
}

void frmEditGeometry::grdPoints_TypingEnded() {
    if (m_openCell) {
        m_openCell.reset();
        UpdatePreview();
    }
}

void frmEditGeometry::cmdCopy_Click() {
    try {
        grdPointsSelection = {0, 0, grdPoints.Rows() - 1, grdPoints.Columns() - 1};
        std::string text = grdPoints.Text();
        text.resize(text.size() - (text.ends_with("\r\n") ? 2 : 0));
        m_desk.Windows.Board.SetText(text);
        labStatus.Caption = Counted(grdPoints.Rows() - grdPoints.FixedRows(), "point") + " copied.";
    } catch (...) {
        ShowFailure("There was an error copying data.\r\rError was: ");
    }
}

void frmEditGeometry::cmdPaste_Click() {
    try {
        if (m_desk.Messages.Ask(
                "This operation pastes data from the Windows Clipboard into the grid.\r"
                "Any existing data will be cleared.\r\rProceed?",
                {"&Paste"}) != maYes) {
            return;
        }
        const PasteResult result = PastePointCells(grdPoints, m_desk.Program.Units,
                                                   m_desk.Windows.Board.Text(), std::nullopt);
        if (!result.OtherUnit) {
            grdPointsSelection = {grdPoints.FixedRows(), grdPoints.FixedColumns(),
                                  grdPoints.FixedRows(), grdPoints.FixedColumns()};
        }
        TellOfPaste(result);
    } catch (...) {
        ShowFailure("There was an error pasting data.\r\rError was: ");
    }
}

void frmEditGeometry::grdPoints_Paste() {
    try {
        const CellRange& at = grdPointsSelection;
        const PastePlace place{std::max(at.FirstRow, grdPoints.FixedRows()),
                               std::max(at.FirstColumn, grdPoints.FixedColumns())};
        TellOfPaste(
            PastePointCells(grdPoints, m_desk.Program.Units, m_desk.Windows.Board.Text(), place));
    } catch (...) {
        ShowFailure("There was an error pasting data.\r\rError was: ");
    }
}

void frmEditGeometry::TellOfPaste(const PasteResult& result) {
    if (result.OtherUnit) {
        labStatus.Caption = "Nothing pasted: the copied table is in another unit.";
        return;
    }
    m_pasted = m_pasted || result.RowsTaken > 0;
    labStatus.Caption = Counted(result.RowsTaken, "row") + " pasted.";
    const auto add = [this](int count, const char* what, const char* became) {
        if (count > 0) {
            labStatus.Caption += " " + Counted(count, what) + became;
        }
    };
    add(result.RowsLeftOver, "more row", " did not fit.");
    add(result.RowsUnknown, "row", " with a name that the table has not.");
    add(result.RowsEmpty, "row", " stayed empty.");
    add(result.FaultyCells, "cell", " with no number.");
    MarkPoints();
}

std::optional<PointNumber> frmEditGeometry::PointAtRow(int row) const {
    return PointOfRow(grdPoints, row);
}

std::string frmEditGeometry::grdPoints_ToolTip(int row, int column) const {
    return PointCellToolTip(grdPoints, m_desk.Program.Units, row, column);
}

} // namespace corvanta
