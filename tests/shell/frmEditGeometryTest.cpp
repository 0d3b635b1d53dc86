#include "shell/frmEditGeometry.h"

#include "model/Failure.h"
#include "persistence/MData.h"
#include "solver/SInitGeo.h"
#include "tests/support/FakeProcessServices.h"
#include "tests/support/FakeShellHost.h"
#include "tests/support/FakeWindowSystem.h"
#include "tests/support/MemoryFileServices.h"
#include "tests/support/MemorySettingsStore.h"
#include "tests/support/RecordingMessageBox.h"
#include "tests/support/SampleCorners.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <random>

namespace corvanta::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string TypeQuestion =
    "Changes made on the Type page cannot be undone with Cancel. Continue anyway?";
const std::string NotApplied = "There was an error while applying data.\rError was: ";
const std::string NoPoints = "There was an error while getting the points data. Error was: ";
const std::string NoVehicle = "There was an error while setting the dynamics data.\rError was: ";

std::string Texts(const ListControl& list) {
    std::string texts;
    for (const ListEntry& entry : list.Entries()) {
        texts += (texts.empty() ? "" : "|") + entry.Text;
    }
    return texts;
}

class frmEditGeometryTest : public testing::Test {
  protected:
    frmEditGeometryTest() {
        UseUnits("mm", "N", "kg", "N/mm");
        Open("formula-front-pushrod.WSP");
    }

    void UseUnits(const char* displacement, const char* force, const char* mass, const char* rate) {
        FundamentalUnits& units = m_program.Units;
        units[ucDisplacement].Label = displacement;
        units[ucForce].Label = force;
        units[ucMass].Label = mass;
        units[ucRate].Label = rate;
        m_program.Channels.ChannelsSetup(units);
    }

    /// A new editor on the document as it is.
    frmEditGeometry& Reopen() {
        m_form = std::make_unique<frmEditGeometry>(m_desk, m_main);
        m_form->Open();
        return *m_form;
    }
    frmEditGeometry& Open(const std::string& sample) {
        m_document = LoadSample(sample);
        m_document.ResultsValid = true;
        m_program.Modified = false;
        m_main.Calls.clear();
        return Reopen();
    }

    void ChooseMechanism(int mechanism) {
        m_form->cboSpringMechanism.Select(mechanism);
        m_form->cboSpringMechanism_Changed();
    }
    void ChooseSprings(int springs) {
        m_form->cboSpringSystem.Select(springs);
        m_form->cboSpringSystem_Changed();
    }
    void ChooseBar(int value) {
        m_form->cboARB.Select(m_form->cboARB.FindData(value));
        m_form->cboARB_Changed();
    }

    void Type(NumberBox& box, const std::string& text) {
        box.Text = text;
        m_form->NumberBox_Changed(box);
    }

    [[nodiscard]] int RowOf(PointNumber number) const {
        int row = 0;
        while (row < m_form->grdPoints.Rows() && m_form->PointAtRow(row) != number) {
            ++row;
        }
        return row;
    }
    void TypeX(PointNumber number, const std::string& text) {
        m_form->grdPoints_Edited(RowOf(number), 1, text);
    }
    [[nodiscard]] std::string CellX(PointNumber number) const {
        return m_form->grdPoints.Cell(RowOf(number), 1);
    }

    /// The document as a file.
    std::string Saved() {
        bool written = false;
        DataWrite(written, m_document, "/saved.WSP", m_program.Units, m_files, m_messages);
        EXPECT_TRUE(written);
        return m_files.Bytes("/saved.WSP").value_or("");
    }

    /// The messages shown since the last look.
    std::vector<std::string> Prompts() {
        std::vector<std::string> prompts = m_box.Prompts();
        m_box.Shown.clear();
        return prompts;
    }

    Program m_program;
    Suspension& m_document = m_program.Document;
    SuspensionData& m_data = m_document.Data;
    MemoryFileServices m_files;
    RecordingMessageBox m_box;
    Messages m_messages{m_box};
    FakeProcessServices m_process;
    FakeWindowSystem m_windows;
    WindowSystem m_services = m_windows.Services();
    MemorySettingsStore m_store;
    Desk m_desk{m_program,           m_files, m_messages, m_process, m_services,
                MLibHelp(m_windows), &m_store};
    FakeShellHost m_main;
    std::unique_ptr<frmEditGeometry> m_form;
};

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

TEST_F(frmEditGeometryTest, ListsOfferWhatTheMechanismAllows) {
    const std::string bar = "None|Lateral bar via drop link to lower wishbone";
    for (int m = smNone; m <= smMacPhersonStrut; ++m) {
        SCOPED_TRACE(m);
        ChooseMechanism(m);
        const bool rods = m >= 5 && m <= 8;
        EXPECT_EQ(Texts(m_form->cboSpringSystem),
                  m == 0 ? "None"
                         : (rods ? "Corner springs|Corner and centre springs|Centre spring"
                                 : "Corner springs"));
        EXPECT_EQ(m_form->cboSpringSystem.Enabled, m != 0);
        for (const Control* control :
             {&m_form->labSpringSystem, static_cast<Control*>(&m_form->cboSpringSystem),
              &m_form->labCentreSpringSystem,
              static_cast<Control*>(&m_form->cboCentreSpringSystem)}) {
            EXPECT_EQ(control->Visible, m != 11);
        }
        EXPECT_TRUE(m_form->cboARB.Visible && m_form->labARB.Visible);
        EXPECT_EQ(Texts(m_form->cboCentreSpringSystem), "None");
        EXPECT_FALSE(m_form->cboCentreSpringSystem.Enabled);
        std::string more;
        if (m == 1 || m == 2) {
            more = "|Lateral bar via drop link to upright";
        } else if (rods) {
            more = "|Lateral bar via drop link to rocker|T-bar via drop link to rocker";
        } else if (m == 9 || m == 10) {
            more = "|Lateral bar via drop link to first rocker";
        } else if (m == 11) {
            more = "|Lateral bar via drop link to Macpherson strut";
        }
        EXPECT_EQ(Texts(m_form->cboARB), bar + more);
        EXPECT_EQ(m_form->cboARB.FindData(4), m == 1 || m == 2 || m == 11 ? 2 : -1);
        EXPECT_EQ(m_form->cboARB.FindData(2), rods || m == 9 || m == 10 ? 2 : -1);
        EXPECT_EQ(m_form->cboARB.FindData(3), rods ? 3 : -1);
    }
}

TEST_F(frmEditGeometryTest, ListsKeepAChoiceThatIsStillOffered) {
    ChooseMechanism(5);
    ChooseSprings(2);
    EXPECT_EQ(Texts(m_form->cboCentreSpringSystem), "Longitudinal via T-bar|Lateral via rocker");
    EXPECT_TRUE(m_form->cboCentreSpringSystem.Enabled);
    m_form->cboCentreSpringSystem.Select(1);
    ChooseBar(abTBar);
    ChooseMechanism(8);
    EXPECT_EQ(m_form->cboSpringSystem.Text(), "Centre spring");
    EXPECT_EQ(m_form->cboCentreSpringSystem.Text(), "Lateral via rocker");
    EXPECT_EQ(m_form->cboARB.Text(), "T-bar via drop link to rocker");
    ChooseMechanism(1);
    EXPECT_EQ(m_form->cboSpringSystem.Text(), "Corner springs");
    EXPECT_EQ(m_form->cboCentreSpringSystem.Text(), "None");
    EXPECT_EQ(m_form->cboARB.Text(), "None");
    ChooseMechanism(5);
    EXPECT_EQ(m_form->cboSpringSystem.Text(), "Corner springs") << "lost is lost";

    m_form->ListsBusy = true;
    ChooseMechanism(0);
    EXPECT_EQ(m_form->cboSpringSystem.Count(), 3) << "no event of the user's";
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

TEST_F(frmEditGeometryTest, ChoicesThatAreNotOfferedStayUntilOthersAreMade) {
    Open("touring-front-wishbone.WSP");
    m_data.CentreSpringSystem = csLateralViaRocker; // inherited from the document before
    m_data.ARBMechanism = abTBar;
    Reopen().tabPages_Changed(pgTravel);
    EXPECT_TRUE(m_form->Apply());
    EXPECT_THAT(Prompts(), IsEmpty());
    EXPECT_EQ(m_data.CentreSpringSystem, csLateralViaRocker);
    EXPECT_EQ(m_data.ARBMechanism, abTBar);
    ChooseMechanism(smOutboardToUpright);
    EXPECT_TRUE(m_form->Apply());
    EXPECT_EQ(m_data.CentreSpringSystem, 0);
    EXPECT_EQ(m_data.ARBMechanism, abNone);
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

TEST_F(frmEditGeometryTest, TheThirdSpringIsOpenWithACentreSpring) {
    m_box.Answers = {maYes, maYes};
    for (const int springs : {tsCentreSpring, tsCornerSpring}) {
        m_form->tabPages_Changed(pgType);
        ChooseSprings(springs);
        m_form->tabPages_Changed(pgVehicle);
        EXPECT_EQ(m_form->txtKThirdSpring.Enabled, springs != 0);
    }
}

TEST_F(frmEditGeometryTest, ApplyTakesEveryPageAndCalculates) {
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
    EXPECT_EQ(m_data.Bump, 30);
    EXPECT_EQ(m_data.KARB, 0);
    EXPECT_EQ(m_data.GAccel, static_cast<double>(0.9F));
    EXPECT_EQ(m_data.FrontBrakeBalanceSplitPC, 57.13);
    EXPECT_EQ(m_data.ChassisMotion, cmHeave);
    EXPECT_EQ(m_data.Description, "one\r\ntwo");
    EXPECT_EQ(m_data.ARBMechanism, abNone);
    m_main.OnRefresh = [] {};
    EXPECT_EQ(Reopen().txtAccel.Text, "0.9") << "without the dust of single precision";

    m_program.Modified = false;
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

TEST_F(frmEditGeometryTest, TravelIsCorrectedInOneMessage) {
    const std::string bump =
        "Wheel bump travel must be positive. It has been changed to a positive value.";
    const std::string droop =
        "\rWheel droop travel must be positive. It has been changed to a positive value.";
    const std::string wheel = "\rWheel step size must be greater than 0. It has been reset to ";
    const std::string rack = "\rRack step size must be greater than 0. It has been reset to ";
    struct Case {
        const char *Bump, *Droop, *WheelStep, *RackTravel, *RackStep;
        std::vector<std::string> Messages;
    };
    for (const Case& c : {Case{"-30", "20", "0", "10", "5", {bump + wheel + "5.00mm"}},
                          {"0", "0", "5", "-10", "5", {}},
                          {"30", "-20", "5", "10", "-1", {droop + rack + "5.00mm"}},
                          {"30", "20", "5", "10", "", {rack + "5.00mm"}}}) {
        Type(m_form->txtBump, c.Bump);
        Type(m_form->txtDroop, c.Droop);
        Type(m_form->txtWheelStep, c.WheelStep);
        Type(m_form->txtRackTravel, c.RackTravel);
        Type(m_form->txtRackStep, c.RackStep);
        EXPECT_TRUE(m_form->Apply());
        EXPECT_TRUE(m_box.Shown.empty() || m_box.Shown[0].Style == msInformation);
        EXPECT_EQ(Prompts(), c.Messages);
        EXPECT_EQ(m_data.WheelTravelStepSize, 5);
        EXPECT_EQ(m_data.RackTravelStepSize, 5);
        EXPECT_EQ(m_data.Bump, std::abs(std::atof(c.Bump)));
        EXPECT_EQ(m_data.Droop, std::abs(std::atof(c.Droop)));
        EXPECT_EQ(m_data.RackTravel, std::atof(c.RackTravel));
        EXPECT_EQ(m_form->txtBump.Text, c.Bump) << "the boxes are not rewritten";
        EXPECT_FALSE(m_form->HasUnappliedChanges());
    }
    UseUnits("in", "N", "kg", "N/mm");
    Type(Reopen().txtWheelStep, "0");
    EXPECT_TRUE(m_form->Apply());
    EXPECT_THAT(Prompts(), ElementsAre(wheel + "0.197in"));
    EXPECT_EQ(m_data.WheelTravelStepSize, 5);
}

TEST_F(frmEditGeometryTest, TheGridIsToldInWordsBeforeItIsApplied) {
    struct Case {
        const char *Bump, *Droop, *WheelStep, *RackTravel, *RackStep;
        const char* Summary;
    };
    for (const Case& c : {
             Case{"25", "25", "5", "25", "5", "11 wheel steps x 11 rack steps, 121 positions"},
             {"0", "0", "5", "0", "5", "1 wheel step x 1 rack step, 1 position"},
             {"-25", "20+5", "5", "-25", "5", "11 wheel steps x 11 rack steps, 121 positions"},
             {"100", "100", "1", "25", "1",
              "47 wheel steps x 35 rack steps, 1645 positions; the wheel step will become 4.50 mm; "
              "the rack step will become 1.50 mm"},
             {"25", "25", "0", "25", "5",
              "11 wheel steps x 11 rack steps, 121 positions; the wheel step will become 5.00 mm"},
             {"25", "2x", "5", "25", "5", ""},
             {"1E20", "25", "5", "25", "5", ""},
         }) {
        m_form->txtBump.Text = c.Bump;
        m_form->txtDroop.Text = c.Droop;
        m_form->txtWheelStep.Text = c.WheelStep;
        m_form->txtRackTravel.Text = c.RackTravel;
        Type(m_form->txtRackStep, c.RackStep);
        EXPECT_EQ(m_form->labTravelSummary.Caption, c.Summary);
    }
    Type(m_form->txtDroop, "100");
    Type(m_form->txtBump, "100");
    Type(m_form->txtWheelStep, "1");
    EXPECT_TRUE(m_form->Apply());
    EXPECT_THAT(Prompts(), ElementsAre(HasSubstr("step size reset to  4.5")));
    EXPECT_EQ(m_form->txtWheelStep.Text, "4.50");
    EXPECT_THAT(m_form->labTravelSummary.Caption, testing::EndsWith("positions"));
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

TEST_F(frmEditGeometryTest, CellsTakeSumsAndMarkWhatIsNoNumber) {
    const int row = RowOf(ptLWO);
    struct Case {
        const char *Typed, *Shown;
        bool Faulty;
        double Draft;
    };
    const double stored = m_document.StaticPoints()[ptLWO].X;
    for (const Case& c : {Case{"612.5+3", "615.5", false, 615.5},
                          {"12 mm", "12", false, 12},
                          {"", "", false, 0},
                          {"12 in", "12 in", true, stored},
                          {"-", "-", true, stored}}) {
        m_form->grdPoints_Edited(row, 1, c.Typed);
        EXPECT_EQ(m_form->grdPoints.Cell(row, 1), c.Shown);
        EXPECT_EQ(m_form->grdPoints.Faulty(row, 1), c.Faulty);
        EXPECT_EQ(m_form->Draft().StaticPoints()[ptLWO].X, c.Draft) << c.Typed;
    }
    m_form->grdPoints_Edited(0, 1, "head");
    m_form->grdPoints_Edited(2, 0, "name");
    m_form->grdPoints_Edited(99, 1, "below");
    EXPECT_EQ(m_form->grdPoints.Cell(0, 1), "X");
    EXPECT_EQ(m_form->PointAtRow(1), std::nullopt);
    EXPECT_EQ(m_form->PointAtRow(2), ptWTCP);
    EXPECT_EQ(m_form->PointAtRow(99), std::nullopt);
}

TEST_F(frmEditGeometryTest, TheDraftFollowsTheListsAtOnce) {
    ChooseMechanism(smPullrodToUpright);
    ChooseSprings(tsCentreSpring);
    TypeX(ptWC, "9");
    const Suspension draft = m_form->Draft();
    EXPECT_EQ(draft.Data.SpringMechanism, smPullrodToUpright);
    EXPECT_TRUE(draft.Catalogue[ptTSO].Enabled);
    EXPECT_FALSE(draft.Catalogue[ptSAI].Enabled);
    EXPECT_EQ(draft.StaticPoints()[ptWC].X, 9);
    EXPECT_EQ(m_data.SpringMechanism, smPushrodToUpright);
}

TEST_F(frmEditGeometryTest, CopyTakesTheWholeGrid) {
    m_form->cmdCopy_Click();
    EXPECT_THAT(m_windows.Board,
                testing::StartsWith("Point\tX\tY\tZ\r\tmm\tmm\tmm\rCentre of tyre"));
    EXPECT_THAT(m_windows.Board, testing::Not(HasSubstr("\n")));
    EXPECT_THAT(m_windows.Board, testing::Not(testing::EndsWith("\r")));
    EXPECT_EQ(m_form->grdPointsSelection, (CellRange{0, 0, m_form->grdPoints.Rows() - 1, 3}));
}

TEST_F(frmEditGeometryTest, PasteLaysRowsIntoTheCells) {
    const int rows = m_form->grdPoints.Rows() - 2;
    m_windows.Board = "1\t2\t3";
    const std::string before = m_form->grdPoints.Text();
    m_form->cmdPaste_Click();
    EXPECT_THAT(Prompts(),
                ElementsAre("This operation pastes data from the Windows Clipboard into "
                            "the grid.\rAny existing data will be cleared.\r\rProceed?"));
    EXPECT_EQ(m_form->grdPoints.Text(), before) << "declined";

    const auto paste = [&](const std::string& text) {
        m_windows.Board = text;
        m_box.Answers = {maYes};
        m_form->cmdPaste_Click();
        Prompts();
        const DataGrid& grid = m_form->grdPoints;
        return grid.Cell(2, 1) + "|" + grid.Cell(2, 2) + "|" + grid.Cell(2, 3) + "|" +
               grid.Cell(3, 1) + "|" + grid.Cell(3, 2) + ": " + m_form->labStatus.Caption;
    };
    const std::string short2 =
        "2 rows pasted. The last " + std::to_string(rows - 2) + " rows stayed empty.";
    EXPECT_EQ(paste("1\t2\t3\r\n4\t5\t6\r\n"), "1|2|3|4|5: " + short2);
    EXPECT_EQ(paste("1\t2\t3\r4\t5\t6"), "1|2|3|4|5: " + short2);
    EXPECT_EQ(paste("1\n4\t5+1\t6\t7\t8\n"), "1|||4|6: " + short2) << "ragged";
    EXPECT_EQ(paste("a\t2\t3\r\n4\tb\t6"), "a|2|3|4|b: " + short2 + " 2 cells with no number.");
    EXPECT_TRUE(m_form->grdPoints.Faulty(2, 1) && m_form->grdPoints.Faulty(3, 2));
    std::string huge;
    for (int n = 0; n < rows + 100'000; ++n) {
        huge += "7\t8\t9\n";
    }
    EXPECT_EQ(paste(huge),
              "7|8|9|7|8: " + std::to_string(rows) + " rows pasted. 100000 more rows did not fit.");
    paste(std::string(1'000'000, '\t') + std::string(1'000'000, '('));
    EXPECT_EQ(m_form->grdPointsSelection, (CellRange{2, 1, 2, 1}));

    paste("1\t2\t3\r\n4\t5\t6\r\n");
    EXPECT_TRUE(m_form->Apply());
    EXPECT_EQ(m_document.StaticPoints()[ptWTCP], (SuspPoint{1, 2, 3}));
    EXPECT_EQ(m_document.StaticPoints()[ptLWO], SuspPoint()) << "an empty cell is 0";
}

TEST_F(frmEditGeometryTest, AClipboardThatFailsIsTold) {
    class BrokenBoard final : public Clipboard {
        void SetText(const std::string& /*text*/) override { throw Failure(fnInternal, "in use"); }
        [[nodiscard]] std::string Text() const override { throw Failure(fnInternal, "in use"); }
    } board;
    WindowSystem services{m_windows, board, m_windows, m_windows, {}};
    Desk desk{m_program, m_files, m_messages, m_process, services, MLibHelp(m_windows)};
    frmEditGeometry form(desk, m_main);
    form.Open();
    const std::string before = form.grdPoints.Text();
    form.cmdCopy_Click();
    m_box.Answers = {maYes};
    form.cmdPaste_Click();
    EXPECT_EQ(m_box.Shown.front().Prompt, "There was an error copying data.\r\rError was: in use");
    EXPECT_EQ(m_box.Shown.back().Prompt, "There was an error pasting data.\r\rError was: in use");
    EXPECT_EQ(form.grdPoints.Text(), before);
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
    EXPECT_THAT(m_windows.Topics, ElementsAre(htEditGeometry));
    m_form->txtDescription.Text = "a [b]";
    m_form->txtDescription_Changed();
    EXPECT_TRUE(m_form->txtDescription.Fault);
    EXPECT_NE(m_form->labDescriptionNote.Caption, "");
}

} // namespace
} // namespace corvanta::test
