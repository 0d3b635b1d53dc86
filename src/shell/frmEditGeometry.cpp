#include "shell/frmEditGeometry.h"

#include "model/Failure.h"
#include "model/PointsInPlay.h"
#include "results/PointsTable.h"
#include "shell/BusyScope.h"
#include "shell/EditGeometryFields.h"
#include "shell/MLibGUI.h"
#include "shell/MechanismExample.h"
#include "shell/MechanismLists.h"
#include "shell/PointCells.h"
#include "shell/StepNames.h"
#include "shell/TypedNumber.h"
#include "solver/SInitGeo.h"

#include <algorithm>
#include <cassert>
#include <span>
#include <utility>

namespace corvanta {

namespace {

constexpr WindowPlacement DesignSize{0, 0, 15000, 9600};
constexpr const char* TableWidthKey = "TableWidth";

bool IsFaulty(const NumberBox& box, const Separators& separators) {
    return !ReadTypedNumber(box.Text, separators, box.Unit);
}

} // namespace

frmEditGeometry::frmEditGeometry(Desk& desk, ShellHost& main)
    : Preview(desk),
      m_desk(desk),
      m_main(main) {
    Caption = "Suspension Properties";
    Frame.Name = "frmEditGeometry";
    Frame.Placement = DesignSize;
    Pages = {"&Type", "&Static Points", "&Travel", "&Vehicle", "Load Cases", "Description"};
    labSpringMechanism.Caption = "Spring actuation system:";
    labSpringSystem.Caption = "Springs:";
    labCentreSpringSystem.Caption = "Centre spring actuation system:";
    labARB.Caption = "Anti-roll bar system:";
    chkDriveshaft.Caption = "Include driveshaft";
    cmdCopy.Caption = "&Copy";
    cmdPaste.Caption = "&Paste";
    labMotionType.Caption = "Motion type:";
    optRoll.Caption = "&Single wheel";
    optHeave.Caption = "&Axle";
    labLinkLoads.Caption = "Forces applied at the tyre contact patch:";
    labLinkLoadsNote.Caption = "Note: X is positive backwards so for acceleration the X direction "
                               "force is negative.";
    cmdOK.Caption = "&OK";
    cmdCancel.Caption = "Cancel";
    cmdApply.Caption = "&Apply";
    cmdHelp.Caption = "&Help";

    const auto describe = [](FieldFrame& frame, EditorPage page, const char* caption) {
        frame.Page = page;
        frame.Caption = caption;
    };
    describe(fraSuspensionTravel, pgTravel, "Suspension Travel");
    describe(fraRackTravel, pgTravel, "Steering Rack Travel");
    describe(fraChassis, pgVehicle, "Chassis Details");
    describe(fraRates, pgVehicle, "Rates");
    describe(fraLinkLoads, pgLoadCases, "Link Loads");
    describe(fraDynamics, pgLoadCases, "Dynamics Report");
    for (const auto fields : {TravelFields(), VehicleFields()}) {
        for (const NumberField& field : fields) {
            (this->*field.Box).Caption = field.Caption;
            (this->*field.Frame).Boxes.push_back(&(this->*field.Box));
        }
    }
}

// --- The window ---------------------------------------------------------------------------------

void frmEditGeometry::Open() {
    try {
        LoadForm();
        IsOpen = true;
    } catch (...) {
        ShowFailure("There was an error while loading the Edit Geometry form.\rError was: ");
    }
}

void frmEditGeometry::LoadForm() {
    if (m_desk.Store != nullptr) {
        RestoreWindow(Frame, m_desk.Windows.ScreenSize, *m_desk.Store, -1, -1);
        TableWidth = StoredNumber(*m_desk.Store, Frame.Name, TableWidthKey).value_or(0);
    }
    Preview.Load(Frame.Name);
    Page = pgType;
    ShowUnits();
    {
        const BusyScope busy(ListsBusy);
        Refill(cboSpringMechanism, SpringMechanismEntries());
        cboSpringMechanism.Select(smNone);
    }
    UpdateMechanismLists();
    TypeToForm();
    TravelToForm();
    VehicleToForm();
    PointTableToForm();
    DescriptionToForm();
    m_shown = DesignOf(m_desk.Program.Document);
}

void frmEditGeometry::DescriptionToForm() {
    txtDescription.Text = m_desk.Program.Document.Data.Description;
    txtDescription_Changed();
}

void frmEditGeometry::FollowDocument() {
    const Design now = DesignOf(m_desk.Program.Document);
    SuspensionData ofShownType = now.Data;
    CopyType(ofShownType, m_shown.Data);
    if (ofShownType != now.Data) { // the table is another one
        TypeToForm();
        TravelToForm();
        VehicleToForm();
        PointTableToForm();
        DescriptionToForm();
    } else {
        FollowFields(now.Data);
        FollowPoints(now.Points);
    }
    m_shown = now;
}

/// A field that shows what it showed before has nothing typed in it.
void frmEditGeometry::FollowFields(const SuspensionData& data) {
    const FundamentalUnits& units = m_desk.Program.Units;
    for (const auto fields : {TravelFields(), VehicleFields()}) {
        for (const NumberField& field : fields) {
            NumberBox& box = this->*field.Box;
            if (box.Text == FieldText(field, m_shown.Data.*field.Target, units)) {
                box.Text = FieldText(field, data.*field.Target, units);
            }
        }
    }
    if (data.ChassisMotion != m_shown.Data.ChassisMotion) {
        optHeave.Selected = data.ChassisMotion == cmHeave;
        optRoll.Selected = !optHeave.Selected;
    }
    if (txtDescription.Text == m_shown.Data.Description) {
        DescriptionToForm();
    }
    UpdateTravelSummary();
}

void frmEditGeometry::FollowPoints(const PointSet& points) {
    FollowPointCells(grdPoints, m_desk.Program.Units, m_shown.Points, points);
    MarkPoints();
}

void frmEditGeometry::Close() {
    if (IsOpen && m_desk.Store != nullptr) {
        SaveWindow(Frame, *m_desk.Store, true);
        if (TableWidth > 0) {
            m_desk.Store->Write(Frame.Name, TableWidthKey, std::to_string(TableWidth));
        }
        Preview.Keep(Frame.Name);
    }
    IsOpen = false;
}

void frmEditGeometry::ShowUnits() {
    for (const auto fields : {TravelFields(), VehicleFields()}) {
        for (const NumberField& field : fields) {
            NumberBox& box = this->*field.Box;
            box.Unit = FieldUnit(field, m_desk.Program.Units);
            const std::string hint = field.Hint;
            box.ToolTip = hint.empty() ? hint : box.Unit + ", " + hint;
        }
    }
}

void frmEditGeometry::ShowFailure(std::string_view lead) {
    m_desk.Messages.ShowMessage(std::string(lead) + FailureInFlight().Description(), msExclamation);
}

void frmEditGeometry::cmdOK_Click() {
    if (Apply()) {
        Close();
        ConfirmApply();
    }
}

void frmEditGeometry::cmdApply_Click() {
    if (Apply()) {
        ConfirmApply();
    }
    Raise = true;
}

/// Results are the confirmation that counts; without them the status bar says what is wrong.
void frmEditGeometry::ConfirmApply() {
    if (m_desk.Program.Document.ResultsValid) {
        m_main.Confirm("Applied and calculated");
    }
}

void frmEditGeometry::cmdCancel_Click() {
    Close();
    if (std::exchange(m_resultsLost, false)) {
        m_main.RefreshGUI(false); // what is on show belongs to the document as it was before
    }
}

bool frmEditGeometry::QueryUnload() {
    if (!m_main.MayDropEdits()) {
        return false;
    }
    cmdCancel_Click();
    return true;
}

void frmEditGeometry::cmdHelp_Click() {
    m_desk.Help.ShowHelpTopic(htEditGeometry);
}

// --- Pages --------------------------------------------------------------------------------------

void frmEditGeometry::tabPages_Changed(int newPage) {
    const int left = Page;
    try {
        if (left == pgType && newPage != pgType) {
            LeaveTypePage();
        }
        EnterPage(newPage);
    } catch (...) {
        Page = newPage;
        ShowFailure("There was an error while changing tabs\rError was: ");
    }
}

void frmEditGeometry::LeaveTypePage() {
    const Design before = DesignOf(m_desk.Program.Document);
    if (PointsFromGrid()) { // what was typed is stored before the table is laid out anew
        TypeFromForm(true);
    }
    KeepPagesOf(before);
}

void frmEditGeometry::EnterPage(int page) {
    Page = page;
    labStatus.Caption.clear();
    if (page == pgVehicle) {
        txtKThirdSpring.Enabled =
            m_desk.Program.Document.Data.ThirdSpringMechanism != tsCornerSpring;
    }
    UpdatePreview();
}

std::string frmEditGeometry::StepName(const Design& before) const {
    const std::string name = DescribeChange(before, DesignOf(m_desk.Program.Document));
    return m_pasted && name.starts_with("Move ") ? "Paste points" : name;
}

/// Pages that were taken alone may have changed the document, but the main window is not to
/// calculate yet.
void frmEditGeometry::KeepPagesOf(const Design& before) {
    Program& program = m_desk.Program;
    if (DesignOf(program.Document) == before) {
        return;
    }
    const std::string name = StepName(before);
    if (program.Document.DataLoaded) {
        m_resultsLost = true;
        program.Document.ResultsValid = false;
        InitGeometry(program.Document, program.Channels, program.Units, m_desk.Messages);
    }
    m_desk.Current.Record(name);
}

bool frmEditGeometry::Apply() {
    Program& program = m_desk.Program;
    Suspension& document = program.Document;
    assert(IsOpen); // boxes that were never filled would empty the document
    const Design before = DesignOf(document);
    MarkFaults();
    bool taken = false;
    try {
        taken = TakeAllPages();
        if (taken) {
            SetUpGeometry();
        }
    } catch (...) {
        taken = false;
        ShowFailure("There was an error while applying data.\rError was: ");
    }
    if (!taken) {
        KeepPagesOf(before);
        ShowFirstFault();
        return false;
    }
    document.ResultsValid = false;
    if (document.DataLoaded) {
        m_desk.Current.Record(StepName(before));
    } else {
        program.DocumentPath.clear(); // it was the name of a file that was there before
        document.DataLoaded = true;
        m_desk.Current.Begin("New suspension", false);
    }
    m_resultsLost = m_pasted = false;
    m_main.RefreshGUI(true);
    MarkPoints(); // at which rows the calculation failed
    return true;
}

bool frmEditGeometry::TakeAllPages() {
    Suspension& document = m_desk.Program.Document;
    TravelFromForm();
    if (ChosenType() != m_shownType && !PointsFromGrid()) {
        return false; // the table is about to be laid out anew: nothing typed may be lost with it
    }
    TypeFromForm(false);
    if (!PointsFromGrid() || !VehicleFromForm()) {
        return false;
    }
    document.Data.Description = TakeDescription(document.Data.Description);
    return true;
}

void frmEditGeometry::SetUpGeometry() {
    Program& program = m_desk.Program;
    InitGeometry(program.Document, program.Channels, program.Units, m_desk.Messages);
    ShowTaken();
}

/// Every field and cell shows what the document holds now, in its format: a sum its result, a step
/// size that had to grow the size that it has.
void frmEditGeometry::ShowTaken() {
    TravelToForm();
    VehicleToForm();
    PointsToGrid();
    m_shown.Data = m_desk.Program.Document.Data;
}

bool frmEditGeometry::HasUnappliedChanges() const {
    const Program& program = m_desk.Program;
    const Suspension& document = program.Document;
    if (!IsOpen) {
        return false;
    }
    try {
        std::string corrections;
        SuspensionData data = document.Data;
        TakeTravel(data, corrections);
        if (data != document.Data) { // the step sizes end up as the grid allows
            const TravelGrid grid = CountTravelSteps(data, program.Units);
            data.WheelTravelStepSize = grid.WheelTravelStepSize;
            data.RackTravelStepSize = grid.RackTravelStepSize;
        }
        TakeType(data);
        TakeFields(data, *this, VehicleFields(), program.Units);
        data.Description = TakeDescription(data.Description);
        return data != document.Data ||
               PointsOfCells(grdPoints, program.Units, document.StaticPoints()) !=
                   document.StaticPoints();
    } catch (const Failure&) {
        return true; // the document holds no text that it can't take
    }
}

Suspension frmEditGeometry::Draft() const {
    const Suspension& document = m_desk.Program.Document;
    Suspension draft;
    draft.Data = document.Data;
    TakeType(draft.Data);
    SetPointsInPlay(draft.Catalogue, draft.Data.SpringMechanism, draft.Data);
    DataGrid cells = grdPoints;
    if (m_openCell) {
        cells.SetCell(m_openCell->Row, m_openCell->Column, m_openCell->Text);
    }
    draft.StaticPoints() = DraftOfCells(cells, m_desk.Program.Units, document.StaticPoints());
    DerivePoints(draft.StaticPoints(), draft.Data);
    return draft;
}

Design frmEditGeometry::DraftDesign() const {
    Design design = DesignOf(Draft());
    const auto take = [&](const auto& fields) {
        SuspensionData data = design.Data;
        try {
            fields(data);
            design.Data = std::move(data);
        } catch (const Failure&) {
            return; // half typed: these stay as the document has them
        }
    };
    std::string corrections;
    take([&](SuspensionData& data) { TakeTravel(data, corrections); });
    take([&](SuspensionData& data) {
        TakeFields(data, *this, VehicleFields(), m_desk.Program.Units);
    });
    return design;
}

Suspension frmEditGeometry::Example() {
    SuspensionData choice = m_desk.Program.Document.Data;
    TakeType(choice);
    if (!m_example || m_example->Data != choice) {
        m_example = MechanismExample(choice, SamplesFolder(m_desk.Process, m_desk.Files),
                                     m_desk.Program.Units, m_desk.Files);
    }
    return m_example ? *m_example : Draft();
}

// --- Faults -------------------------------------------------------------------------------------

void frmEditGeometry::MarkFaults() {
    const FundamentalUnits& units = m_desk.Program.Units;
    for (const auto fields : {TravelFields(), VehicleFields()}) {
        for (const NumberField& field : fields) {
            NumberBox& box = this->*field.Box;
            box.Text = CommittedText(box.Text, units.NumberSeparators, box.Unit);
            box.Fault = IsFaulty(box, units.NumberSeparators);
        }
    }
    for (int row = grdPoints.FixedRows(); row < grdPoints.Rows(); ++row) {
        for (int column = grdPoints.FixedColumns(); column < grdPoints.Columns(); ++column) {
            PutPointCell(grdPoints, units, row, column, std::string(grdPoints.Cell(row, column)));
        }
    }
}

/// Turns to the first field that can't be taken, in the order of taking.
void frmEditGeometry::ShowFirstFault() {
    const auto showFaultyBox = [this](std::span<const NumberField> fields) {
        const auto found =
            std::find_if(fields.begin(), fields.end(),
                         [&](const NumberField& field) { return (this->*field.Box).Fault; });
        if (found == fields.end()) {
            return false;
        }
        EnterPage((this->*found->Frame).Page);
        Focus = &(this->*found->Box);
        return true;
    };
    if (showFaultyBox(TravelFields())) {
        return;
    }
    for (int row = grdPoints.FixedRows(); row < grdPoints.Rows(); ++row) {
        for (int column = grdPoints.FixedColumns(); column < grdPoints.Columns(); ++column) {
            if (grdPoints.Faulty(row, column)) {
                EnterPage(pgStaticPoints);
                grdPointsSelection = {row, column, row, column};
                return;
            }
        }
    }
    showFaultyBox(VehicleFields());
}

void frmEditGeometry::MarkPoints() {
    labPointNotes.Caption =
        MarkPointCells(grdPoints, Draft(), m_desk.Program.Document.FaultyPoints);
    labPointNotes.Visible = !labPointNotes.Caption.empty();
    UpdatePreview();
}

/// Only while it is in sight.
void frmEditGeometry::UpdatePreview() {
    if (Page == pgStaticPoints && !Preview.Hidden) {
        Preview.Show(DraftDesign(), m_openCell.has_value());
    }
}

void frmEditGeometry::NumberBox_Changed(NumberBox& box) {
    box.Fault = IsFaulty(box, m_desk.Program.Units.NumberSeparators);
    UpdateTravelSummary();
}

void frmEditGeometry::NumberBox_LostFocus(NumberBox& box) {
    box.Text = CommittedText(box.Text, m_desk.Program.Units.NumberSeparators, box.Unit);
    NumberBox_Changed(box);
}

} // namespace corvanta
