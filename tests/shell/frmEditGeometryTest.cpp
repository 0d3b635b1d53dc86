#include "shell/frmEditGeometry.h"

#include "solver/SInitGeo.h"
#include "tests/support/EditGeometryTest.h"
#include "tests/support/Testing.h"

#include <random>

namespace corvanta::test {
namespace {

const std::string TypeQuestion =
    "Changes made on the Type page cannot be undone with Cancel. Continue anyway?";
const std::string NotApplied = "There was an error while applying data.\rError was: ";
const std::string NoPoints = "There was an error while getting the points data. Error was: ";
const std::string NoVehicle = "There was an error while setting the dynamics data.\rError was: ";

using frmEditGeometryTest = EditGeometryTest;

TEST_F(frmEditGeometryTest, OpensOnTheDocumentInTheUsersUnits) {
    UseUnits("in", "lbs", "lbs", "kg/mm");
    m_data.KARB = 36000;
    m_data.Description = "A car";
    const frmEditGeometry& form = Reopen();
    EXPECT_TRUE(form.IsOpen);
    EXPECT_EQ(form.Frame.Placement, (WindowPlacement{6900, 3300, 15000, 9600}));
    EXPECT_EQ(form.Page, pgType);
    EXPECT_EQ(form.Pages[static_cast<std::size_t>(pgLoadCases)], "Load Cases");
    EXPECT_EQ(form.txtBump.Unit + form.txtTotalMass.Unit + form.txtKThirdSpring.Unit, "inlbskg/mm");
    EXPECT_EQ(form.txtARBRate.Unit + " " + form.txtForceZ.Unit, "lbs/deg lbs");
    EXPECT_EQ(form.txtAccel.Unit + form.txtBrakeBalance.Unit, "g");
    EXPECT_EQ(form.txtARBRate.Text, "8090");
    EXPECT_EQ(form.txtBrakeBalance.Text, FormatNumber(m_data.FrontBrakeBalanceSplitPC, "0.00", {}));
    EXPECT_EQ(form.fraRates.Boxes.size(), 5U);
    EXPECT_EQ(form.fraRates.Boxes[3]->Caption, "ARB rate:");
    EXPECT_EQ(form.fraRates.Page, pgVehicle);
    EXPECT_EQ(form.grdPoints.Cell(1, 3), "in");
    EXPECT_TRUE(form.grdPoints.Editable);
    EXPECT_EQ(form.txtDescription.Text, "A car");
    EXPECT_EQ(form.grdPoints_ToolTip(RowOf(ptWC), 3), "Z of Centre of wheel, in, up positive");
    EXPECT_THAT(Prompts(), IsEmpty());
}

TEST_F(frmEditGeometryTest, OpeningTellsOfUnitsThatAreUnknown) {
    m_program.Units[ucMass].Factor = 0;
    EXPECT_TRUE(Reopen().IsOpen);
    EXPECT_THAT(Prompts(), ElementsAre("There was an error while getting the dynamics data.\r"
                                       "Error was: There was a problem converting units."));
    const std::string before = Saved();
    EXPECT_FALSE(m_form->Apply());
    EXPECT_EQ(Saved(), before) << "boxes that were never filled stand for nothing";
    Prompts();
    m_program.Units[ucDisplacement].Factor = 0;
    EXPECT_FALSE(Reopen().IsOpen);
    EXPECT_THAT(Prompts(), ElementsAre("There was an error while loading the Edit Geometry form.\r"
                                       "Error was: There was a problem converting units."));
}

TEST_F(frmEditGeometryTest, OpeningAndOKChangesNoBit) {
    std::mt19937 random(5);
    std::uniform_int_distribution<int> micrometre(-900'000'000, 900'000'000);
    for (const char* const displacement : {"mm", "in"}) {
        for (const char* const decimal : {".", ","}) {
            for (const std::string& path : AllSamplePaths()) {
                SCOPED_TRACE(path + " " + displacement + decimal);
                UseUnits(displacement, "kg", "lbs", "lb/in");
                m_program.Units.NumberSeparators.Decimal = decimal;
                Open(path.substr(SamplePath("").size()));
                for (const PointNumber number : AllPoints) {
                    if (m_document.Catalogue[number].Enabled) {
                        m_document.StaticPoints()[number].Y = micrometre(random) / 1e6;
                    }
                }
                m_data.FrontBrakeBalanceSplitPC = 57.123456;
                m_data.GAccel = 1.23456789012;
                m_data.Description = "two\r\nlines";
                InitGeometry(m_document, m_program.Channels, m_program.Units, m_messages);
                m_current.Begin("Open", true);
                const std::string before = Saved();
                const SuspensionData data = m_data;
                frmEditGeometry& form = Reopen();
                form.txtDescription.Text = "two\nlines"; // as a text box has them
                EXPECT_FALSE(form.HasUnappliedChanges());
                for (const int page : {pgStaticPoints, pgTravel, pgVehicle, pgType, pgLoadCases}) {
                    form.tabPages_Changed(page);
                }
                form.cmdOK_Click();
                EXPECT_FALSE(form.IsOpen);
                EXPECT_EQ(Saved(), before);
                EXPECT_TRUE(m_data == data) << "beyond the digits of a file";
                EXPECT_FALSE(m_program.Modified);
                EXPECT_THAT(Prompts(), IsEmpty());
            }
        }
    }
}

TEST_F(frmEditGeometryTest, LeavingTheTypePageAsksAndStores) {
    const SuspPoint wheel = m_document.StaticPoints()[ptWC];
    const std::string rows = m_form->grdPoints.Text();
    m_form->tabPages_Changed(pgStaticPoints);
    TypeX(ptWC, "10+2.5");
    m_form->tabPages_Changed(pgType);
    EXPECT_EQ(m_document.StaticPoints()[ptWC], wheel) << "only leaving the Type page stores";

    ChooseMechanism(smMacPhersonStrut);
    m_form->chkDriveshaft.Checked = !m_data.DriveShaftExists;
    m_box.Answers = {maNo};
    m_form->tabPages_Changed(pgStaticPoints);
    ASSERT_EQ(m_box.Shown.size(), 1U);
    EXPECT_EQ(m_box.Shown[0].Style, msYesNo + msExclamation);
    EXPECT_THAT(Prompts(), ElementsAre(TypeQuestion));
    EXPECT_EQ(m_form->Page, pgStaticPoints) << "the page changes all the same";
    EXPECT_EQ(m_form->cboSpringMechanism.Index(), m_data.SpringMechanism);
    EXPECT_EQ(m_form->chkDriveshaft.Checked, m_data.DriveShaftExists);
    EXPECT_EQ(m_document.StaticPoints()[ptWC].X, 12.5) << "the table is stored first";
    EXPECT_TRUE(m_program.Modified);
    EXPECT_FALSE(m_document.ResultsValid);

    m_form->tabPages_Changed(pgType);
    ChooseMechanism(smMacPhersonStrut);
    m_box.Answers = {maYes};
    m_form->tabPages_Changed(pgTravel);
    EXPECT_THAT(Prompts(), ElementsAre(TypeQuestion));
    EXPECT_EQ(m_data.SpringMechanism, smMacPhersonStrut);
    EXPECT_EQ(RowOf(ptUWO), m_form->grdPoints.Rows());
    EXPECT_EQ(CellX(ptWC), "12.50");
    EXPECT_THAT(m_main.Calls, IsEmpty());

    m_form->cmdCancel_Click();
    EXPECT_FALSE(m_form->IsOpen);
    EXPECT_THAT(m_main.Calls, ElementsAre("RefreshGUI(false)")) << "the results are of another car";
}

TEST_F(frmEditGeometryTest, AFaultyCellDoesNotHoldUpThePageChange) {
    TypeX(ptWC, "abc");
    ChooseMechanism(smMacPhersonStrut);
    m_form->tabPages_Changed(pgStaticPoints);
    EXPECT_THAT(Prompts(),
                ElementsAre(HasSubstr("Type mismatch: X of Centre of wheel is \"abc\"")));
    EXPECT_EQ(m_form->Page, pgStaticPoints);
    EXPECT_NE(m_data.SpringMechanism, smMacPhersonStrut) << "the table was not stored";
    EXPECT_EQ(CellX(ptWC), "abc");

    m_form->tabPages_Changed(pgType);
    TypeX(ptWC, "5");
    m_data.RackTravelStepSize = 0; // nothing that the window itself would store
    m_box.Answers = {maYes};
    m_form->tabPages_Changed(pgTravel);
    EXPECT_THAT(Prompts(), ElementsAre(TypeQuestion, "There was an error while changing tabs\r"
                                                     "Error was: Division by zero"));
    EXPECT_EQ(m_form->Page, pgTravel);
}

TEST_F(frmEditGeometryTest, ApplyTakesEveryPageAndCalculates) {
    const bool driveshaft = !m_data.DriveShaftExists;
    m_form->txtDescription.Text = "one";
    EXPECT_TRUE(m_form->HasUnappliedChanges());
    Reopen().chkDriveshaft.Checked = driveshaft;
    EXPECT_TRUE(m_form->HasUnappliedChanges());
    TypeX(ptWC, "1,5");
    Type(m_form->txtBump, "30 mm");
    Type(m_form->txtARBRate, "");
    Type(m_form->txtAccel, "0.9");
    Type(m_form->txtBrakeBalance, "57.126");
    m_form->optHeave.Selected = true;
    m_form->optRoll.Selected = false;
    m_form->txtDescription.Text = "one\ntwo";
    ChooseBar(abNone); // applied without a question
    EXPECT_TRUE(m_form->HasUnappliedChanges());
    m_document.NW = 0;
    m_main.OnRefresh = [&] {
        EXPECT_FALSE(m_document.ResultsValid);
        EXPECT_TRUE(m_program.Modified) << "the caption may show it";
        EXPECT_GT(m_document.NW, 0) << "set up";
    };
    m_form->cmdApply_Click();
    EXPECT_THAT(Prompts(), IsEmpty());
    EXPECT_THAT(m_main.Calls, ElementsAre("RefreshGUI(true)"));
    EXPECT_TRUE(m_form->Raise && m_form->IsOpen);
    EXPECT_FALSE(m_form->HasUnappliedChanges());
    EXPECT_EQ(m_document.StaticPoints()[ptWC].X, 1.5);
    EXPECT_EQ(CellX(ptWC) + " " + m_form->txtBump.Text, "1.50 30.00") << "as it was taken";
    EXPECT_EQ(m_data.Bump, 30);
    EXPECT_EQ(m_data.KARB, 0);
    EXPECT_EQ(m_data.GAccel, static_cast<double>(0.9F));
    EXPECT_EQ(m_data.FrontBrakeBalanceSplitPC, 57.13);
    EXPECT_EQ(m_data.ChassisMotion, cmHeave);
    EXPECT_EQ(m_data.Description, "one\r\ntwo");
    EXPECT_EQ(m_data.ARBMechanism, abNone);
    EXPECT_EQ(m_data.DriveShaftExists, driveshaft);
    m_main.OnRefresh = [] {};
    EXPECT_EQ(Reopen().txtAccel.Text, "0.9") << "without the dust of single precision";

    m_current.MarkSaved();
    EXPECT_TRUE(m_form->Apply());
    EXPECT_FALSE(m_program.Modified);
    m_document.DataLoaded = false;
    EXPECT_TRUE(m_form->Apply());
    EXPECT_TRUE(m_program.Modified && m_document.DataLoaded) << "a document came into being";
}

TEST_F(frmEditGeometryTest, ApplyOnTheTypePageLosesNothingTyped) {
    TypeX(ptWC, "77");
    TypeX(ptUWO, "88");
    ChooseMechanism(smMacPhersonStrut);
    EXPECT_TRUE(m_form->Apply());
    EXPECT_EQ(m_document.StaticPoints()[ptWC].X, 77);
    EXPECT_EQ(m_document.StaticPoints()[ptUWO].X, 88) << "should the wishbone come back";
    EXPECT_EQ(m_data.SpringMechanism, smMacPhersonStrut);
}

TEST_F(frmEditGeometryTest, TextThatIsNoNumberStopsApplyAndIsNamed) {
    struct Case {
        NumberBox frmEditGeometry::*Box;
        const char* Name;
        const std::string& Lead;
        int Page;
    };
    using Form = frmEditGeometry;
    for (const Case& c :
         {Case{&Form::txtDroop, "Maximum droop travel of tyre contact patch", NotApplied, pgTravel},
          {&Form::txtTyreStiffness, "Tyre stiffness", NoVehicle, pgVehicle},
          {&Form::txtBraking, "Braking", NoVehicle, pgLoadCases},
          {&Form::txtBrakeBalance, "% Front brake balance", NoVehicle, pgLoadCases}}) {
        frmEditGeometry& form = Open("formula-front-pushrod.WSP");
        NumberBox& box = form.*c.Box;
        Type(box, "1.5x");
        EXPECT_TRUE(box.Fault);
        EXPECT_TRUE(form.HasUnappliedChanges());
        form.cmdOK_Click();
        EXPECT_EQ(Prompts(), std::vector<std::string>{c.Lead + "Type mismatch: " + c.Name +
                                                      " is \"1.5x\", which is no number."});
        EXPECT_TRUE(form.IsOpen);
        EXPECT_EQ(form.Page, c.Page);
        EXPECT_EQ(form.Focus, &box);
        EXPECT_THAT(m_main.Calls, IsEmpty());
        EXPECT_FALSE(m_program.Modified);
        EXPECT_TRUE(m_document.ResultsValid);
        Type(box, "3*4");
        EXPECT_FALSE(box.Fault);
        EXPECT_EQ(box.Text, "3*4") << "still being typed";
        form.NumberBox_LostFocus(box);
        EXPECT_EQ(box.Text, "12");
    }
}

TEST_F(frmEditGeometryTest, AFailedApplyKeepsWhatEarlierPagesStored) {
    Type(m_form->txtBump, "30");
    Type(m_form->txtTotalMass, "7");
    TypeX(ptWC, "1e");
    const double mass = m_data.Mass;
    m_form->cmdApply_Click();
    EXPECT_THAT(Prompts(),
                ElementsAre(NoPoints + "Type mismatch: X of Centre of wheel is \"1e\", which is no "
                                       "number."));
    EXPECT_EQ(m_form->Page, pgStaticPoints);
    EXPECT_EQ(m_form->grdPointsSelection, (CellRange{RowOf(ptWC), 1, RowOf(ptWC), 1}));
    EXPECT_EQ(m_data.Bump, 30);
    EXPECT_EQ(m_data.Mass, mass);
    EXPECT_TRUE(m_program.Modified);
    EXPECT_FALSE(m_document.ResultsValid) << "they are of another travel";
    EXPECT_THAT(m_main.Calls, IsEmpty());

    Type(m_form->txtBump, "1E20");
    m_form->cmdApply_Click();
    EXPECT_THAT(Prompts(), ElementsAre(NotApplied + "Overflow"));
    EXPECT_EQ(m_data.Bump, 30) << "travel that makes no grid is not stored";
}

TEST_F(frmEditGeometryTest, CloseRemembersThePlaceAndStoresNothing) {
    Type(m_form->txtBump, "40");
    const std::string before = Saved();
    m_form->Frame.Placement = {100, 200, 16000, 9900};
    m_form->cmdCancel_Click();
    EXPECT_FALSE(m_form->IsOpen || m_form->HasUnappliedChanges());
    EXPECT_EQ(Saved(), before);
    EXPECT_THAT(m_main.Calls, IsEmpty());
    EXPECT_EQ(Reopen().Frame.Placement, (WindowPlacement{100, 200, 16000, 9900}));
    m_form->cmdHelp_Click();
    EXPECT_THAT(m_windowSystem.Topics, ElementsAre(htEditGeometry));
    m_form->txtDescription.Text = "a [b]";
    m_form->txtDescription_Changed();
    EXPECT_TRUE(m_form->txtDescription.Fault);
    EXPECT_NE(m_form->labDescriptionNote.Caption, "");
}

} // namespace
} // namespace corvanta::test
