#pragma once

#include "model/Design.h"
#include "model/Suspension.h"
#include "platform/Controls.h"
#include "platform/DataGrid.h"
#include "shell/CurvePreview.h"
#include "shell/Desk.h"
#include "shell/PointCells.h"
#include "shell/ShellHost.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

/// The pages of the geometry editor, in their order.
enum EditorPage : int {
    pgType,
    pgStaticPoints,
    pgTravel,
    pgVehicle,
    pgLoadCases,
    pgDescription,
};

/// A frame of a page with the boxes in it, from top to bottom.
struct FieldFrame : Control {
    EditorPage Page = pgTravel;
    std::vector<NumberBox*> Boxes;
};

/// The geometry editor: mechanisms, static points, travels, vehicle data, load cases and the
/// description of the document. Its controls speak the user's units; the document changes when they
/// are applied, and when the page of mechanisms is left.
class frmEditGeometry final : public Window {
  public:
    frmEditGeometry(Desk& desk, ShellHost& main);
    frmEditGeometry(const frmEditGeometry&) = delete;
    frmEditGeometry& operator=(const frmEditGeometry&) = delete;
    frmEditGeometry(frmEditGeometry&&) = delete;
    frmEditGeometry& operator=(frmEditGeometry&&) = delete;
    ~frmEditGeometry() = default;

    /// Opens the window on the document. A failure is told, and leaves the window closed unless
    /// only the vehicle data could not be shown.
    void Open();

    /// Remembers the place of the window and closes it; nothing is stored.
    void Close();

    /// Takes every page into the document and lets the main window calculate. False when a page
    /// could not be taken: the user was told, the pages before it are taken, and the fault is on
    /// show.
    bool Apply();

    /// The document changed elsewhere: what is shown follows, and what is typed stays.
    void FollowDocument();

    /// The exchange between a page and the document. Those that read the page throw Failure, and
    /// change nothing, for a text that is no number; those with a result tell the user of a failure
    /// themselves and give false.
    void TravelToForm();
    void TravelFromForm();
    void VehicleToForm();
    bool VehicleFromForm();
    bool PointsFromGrid();

    /// Writes the static points of the document into the table that stands.
    void PointsToGrid();

    /// Takes the page of mechanisms, if it differs, and lays out the table of points anew. With
    /// `confirm` the user is asked first; declined, the page goes back to the document's choices.
    void TypeFromForm(bool confirm);

    /// Lets every list of mechanisms offer what the choices above it allow.
    void UpdateMechanismLists();

    // Events. The control already holds what the user chose or typed.
    void cboSpringMechanism_Changed() { UpdateMechanismLists(); }
    void cboSpringSystem_Changed() { UpdateMechanismLists(); }
    void cboARB_Changed() { UpdateMechanismLists(); }
    void tabPages_Changed(int newPage);
    void NumberBox_Changed(NumberBox& box);   ///< after each keystroke
    void NumberBox_LostFocus(NumberBox& box); ///< typing has ended
    void txtDescription_Changed();
    void grdPoints_Edited(int row, int column, const std::string& text);
    void grdPoints_Typing(int row, int column,
                          const std::string& text); ///< each keystroke in a cell
    void grdPoints_TypingEnded();                   ///< whatever became of the text
    void cboPreviewChannel_Changed() { UpdatePreview(); }
    void cmdOK_Click();
    void cmdApply_Click();
    void cmdCancel_Click();

    /// The window's close box: as Cancel, but what is typed and not applied is asked about. False
    /// when the editor stays.
    bool QueryUnload();
    void cmdHelp_Click();
    void cmdCopy_Click();
    void cmdPaste_Click();  ///< over the whole table
    void grdPoints_Paste(); ///< from the first selected cell on

    /// The corner as the controls stand, for a drawing: the mechanisms chosen, with their points in
    /// play, and the points typed; a cell that holds no number keeps what is stored. It is not set
    /// up to be solved.
    [[nodiscard]] Suspension Draft() const;

    /// The corner as the controls stand, with the fields that hold numbers, to be solved.
    [[nodiscard]] Design DraftDesign() const;

    /// A corner that shows the mechanisms chosen, for a drawing: a sample, or without one `Draft`.
    /// The sample is read again only when the choice has changed.
    [[nodiscard]] Suspension Example();

    /// The point of a row of the table; none for its heads.
    [[nodiscard]] std::optional<PointNumber> PointAtRow(int row) const;

    /// What a cell of the table holds, in words.
    [[nodiscard]] std::string grdPoints_ToolTip(int row, int column) const;

    /// True while the controls hold something that the document does not.
    [[nodiscard]] bool HasUnappliedChanges() const;

    std::vector<std::string> Pages; ///< captions
    int Page = pgType;

    int TableWidth = 0; ///< of the table of points beside its drawing, twips; 0 as it needs

    Control labSpringMechanism, labSpringSystem, labCentreSpringSystem, labARB;
    ListControl cboSpringMechanism, cboSpringSystem, cboCentreSpringSystem, cboARB;
    CheckBox chkDriveshaft;

    /// Set while the lists are refilled, so that their own changes are no events.
    bool ListsBusy = false;

    DataGrid grdPoints;
    CellRange grdPointsSelection; ///< the window system keeps it up to date
    Control cmdCopy, cmdPaste;
    CurvePreview Preview;  ///< below the drawing of the points
    Control labStatus;     ///< what the last copy or paste did
    Control labPointNotes; ///< what is to be said of marked cells

    Control labMotionType;
    OptionButton optRoll, optHeave;
    NumberBox txtBump, txtDroop, txtWheelStep, txtRackTravel, txtRackStep;
    Control labTravelSummary; ///< the grid that the fields make, empty while a field is faulty

    NumberBox txtCoGX, txtCoGZ, txtWheelbase, txtTotalMass;
    NumberBox txtSpringStiffness, txtLinkStiffness, txtTyreStiffness, txtARBRate, txtKThirdSpring;

    Control labLinkLoads, labLinkLoadsNote;
    NumberBox txtForceX, txtForceY, txtForceZ;
    NumberBox txtAccel, txtBraking, txtBrakeBalance;

    TextBox txtDescription; ///< lines may end in any way
    Control labDescriptionNote;

    FieldFrame fraSuspensionTravel, fraRackTravel, fraChassis, fraRates, fraLinkLoads, fraDynamics;

    Control cmdOK, cmdCancel, cmdApply, cmdHelp;

  private:
    /// A cell that is being typed into.
    struct OpenCell {
        int Row = 0;
        int Column = 0;
        std::string Text;
    };

    void ConfirmApply();
    /// The four lists and the check box as numbers.
    using TypeChoices = std::array<int, 5>;

    void LoadForm();
    void ShowUnits();
    void TypeToForm();
    void PointTableToForm();
    void DescriptionToForm();
    [[nodiscard]] TypeChoices ChosenType() const;
    void TakeType(SuspensionData& data) const;
    void TakeTravel(SuspensionData& data, std::string& message) const;
    [[nodiscard]] std::string TakeDescription(const std::string& stored) const;
    bool TakeAllPages();
    void SetUpGeometry();
    void LeaveTypePage();
    void EnterPage(int page);
    void MarkFaults();
    void MarkPoints();
    void UpdatePreview();
    void ShowTaken();
    void TellOfPaste(const PasteResult& result);
    void ShowFirstFault();
    void UpdateTravelSummary();
    [[nodiscard]] std::string TravelSummary() const;
    void ShowFailure(std::string_view lead);

    [[nodiscard]] std::string StepName(const Design& before) const;
    void KeepPagesOf(const Design& before);
    void FollowFields(const SuspensionData& data);
    void FollowPoints(const PointSet& points);

    Desk& m_desk;
    ShellHost& m_main;
    std::optional<Suspension> m_example; ///< of the choices in its data
    TypeChoices m_shownType{};           ///< as the document's choices show
    Design m_shown;                      ///< what the controls show but for what is typed
    std::optional<OpenCell> m_openCell;
    bool m_pasted = false;      ///< since the document took the table of points last
    bool m_resultsLost = false; ///< leaving a page changed a document that had been calculated
};

} // namespace corvanta
