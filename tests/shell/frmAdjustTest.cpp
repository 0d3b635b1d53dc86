#include "shell/frmAdjust.h"

#include "calculation/SCalcs.h"
#include "solver/RideHeight.h"
#include "tests/support/EditGeometryTest.h"
#include "tests/support/Testing.h"

#include <cmath>
#include <string>

namespace corvanta::test {
namespace {

const std::string Unable = "Unable to complete calculations for adjusted geometry.\rReason: ";

class frmAdjustTest : public testing::Test, protected TestDesk {
  protected:
    frmAdjustTest() {
        m_main.OnRefresh = [this] {
            if (!m_document.ResultsValid) {
                CalculateCorner(m_document);
            }
        };
        Load("formula-front-pushrod.WSP"); // its reference point is at 132 mm
    }

    /// Opens the dialog on a calculated sample.
    void Load(const std::string& sample) {
        m_document = LoadSample(sample);
        CalculateCorner(m_document);
        m_program.Modified = false;
        m_form.Open();
    }

    void Type(const std::string& target) {
        m_form.txtTarget.Text = target;
        m_form.txtTarget_Changed();
    }

    void Apply(const std::string& target) {
        Type(target);
        m_form.cmdApply_Click();
    }

    void ChooseRod(bool chosen) { m_form.chkAdjustRHByPushRodLength.Checked = chosen; }

    Suspension& m_document = m_program.Document;
    FakeShellHost m_main;
    frmAdjust m_form{m_desk, m_main};
};

TEST_F(frmAdjustTest, ShowsTheHeightInTheUnitOfTheUser) {
    EXPECT_TRUE(m_form.IsOpen);
    EXPECT_EQ(m_form.Caption, "Adjust Geometry");
    EXPECT_EQ(m_form.labCurrent.Text, "132.00");
    EXPECT_EQ(m_form.txtTarget.Text, "132.00");
    EXPECT_EQ(m_form.labDifference.Text, "0");
    EXPECT_EQ(m_form.labCurrent.Unit + m_form.txtTarget.Unit + m_form.labDifference.Unit, "mmmmmm");
    EXPECT_FALSE(m_form.chkMaintainCamber.Enabled);

    m_program.Units[ucDisplacement].Label = "in";
    m_program.Channels.ChannelsSetup(m_program.Units);
    m_form.Open();
    EXPECT_EQ(m_form.labCurrent.Text, "5.197");
    EXPECT_EQ(m_form.labDifference.Unit, "in");
    Apply("5");
    EXPECT_NEAR(m_document.StaticPoints()[ptRHM].Z, 127, 1e-4);
    EXPECT_EQ(m_form.labCurrent.Text, "5.000");
}

TEST_F(frmAdjustTest, TheCheckBoxNamesWhatTakesUpTheChange) {
    const CheckBox& box = m_form.chkAdjustRHByPushRodLength;
    EXPECT_EQ(box.Caption, "Adjust using Pushrod length");
    EXPECT_TRUE(box.Checked && box.Visible && box.Enabled);
    m_program.Options.AdjustRHByPushRodLength = false;
    Load("saloon-front-strut.WSP");
    EXPECT_EQ(box.Caption, "Adjust using Strut length");
    EXPECT_FALSE(box.Checked);
    m_document.Data.SpringMechanism = smNone;
    m_form.Open();
    EXPECT_EQ(box.Caption, "Adjust using push rod length");
    EXPECT_FALSE(box.Visible || box.Enabled);
}

TEST_F(frmAdjustTest, ApplyMovesTheCornerAndCalculates) {
    const PointSet before = m_document.StaticPoints();
    ChooseRod(false);
    m_main.OnRefresh = [&] {
        EXPECT_FALSE(m_document.ResultsValid);
        EXPECT_TRUE(m_program.Modified);
        // The far side of the T-bar, which nobody enters, has followed.
        EXPECT_EQ(m_document.StaticPoints()[ptTBDLO2].Y, -m_document.StaticPoints()[ptTBDLO].Y);
    };
    Apply("127");
    EXPECT_THAT(m_main.Calls, ElementsAre("RefreshGUI(true)"));
    EXPECT_EQ(m_document.StaticPoints()[ptRHM].Z, 127);
    EXPECT_NEAR(m_document.StaticPoints()[ptWTCP].Z, before[ptWTCP].Z + 5, 1e-6)
        << "lower is into bump";
    EXPECT_NE(m_document.StaticPoints()[ptPRI], before[ptPRI]);
    EXPECT_FALSE(m_program.Options.AdjustRHByPushRodLength);
    EXPECT_EQ(m_form.labCurrent.Text, "127.00");
    EXPECT_EQ(m_form.labDifference.Text, "0");
    EXPECT_TRUE(m_form.IsOpen);
    EXPECT_EQ(m_windowSystem.Current(), DefaultCursor);
    EXPECT_THAT(m_box.Prompts(), IsEmpty());
}

TEST_F(frmAdjustTest, OKClosesAndCancelKeepsWhatWasApplied) {
    ChooseRod(false);
    m_form.cmdOK_Click(); // with nothing to do
    EXPECT_FALSE(m_form.IsOpen || m_program.Modified || m_program.Options.AdjustRHByPushRodLength);
    EXPECT_THAT(m_main.Calls, IsEmpty());
    EXPECT_THAT(m_box.Prompts(), IsEmpty());

    m_form.Open();
    ChooseRod(true);
    Type("130");
    m_form.cmdOK_Click();
    EXPECT_EQ(m_document.StaticPoints()[ptRHM].Z, 130);
    EXPECT_FALSE(m_form.IsOpen);
    EXPECT_EQ(m_store.Read("frmAdjust", "Width", ""), "0") << "a window of fixed size";

    m_form.Open();
    Apply("131");
    Type("90");
    ChooseRod(false);
    m_form.cmdCancel_Click();
    EXPECT_EQ(m_document.StaticPoints()[ptRHM].Z, 131);
    EXPECT_TRUE(m_program.Options.AdjustRHByPushRodLength);
    EXPECT_FALSE(m_form.IsOpen);
    m_form.cmdHelp_Click();
    EXPECT_THAT(m_windowSystem.Topics, ElementsAre(60));
}

TEST_F(frmAdjustTest, ATargetThatIsNoNumberChangesNoPoint) {
    const PointSet before = m_document.StaticPoints();
    for (const char* target : {"low", ""}) {
        Apply(target);
        EXPECT_TRUE(m_form.txtTarget.Fault);
        EXPECT_THAT(Prompts(), ElementsAre(Unable + "Type mismatch: Target is \"" + target +
                                           "\", which is no number."));
    }
    EXPECT_EQ(m_document.StaticPoints(), before);
    EXPECT_TRUE(m_document.ResultsValid);
    EXPECT_FALSE(m_program.Modified);
    EXPECT_THAT(m_main.Calls, IsEmpty());
    EXPECT_TRUE(m_form.IsOpen);
}

TEST_F(frmAdjustTest, AfterATargetOutOfReachTheNextOneCountsFromWhereTheWheelIs) {
    PointSet before = m_document.StaticPoints();
    Suspension expected = m_document;
    ChooseRod(false);
    Apply("252");
    EXPECT_THAT(m_box.Prompts(),
                ElementsAre(Unable +
                            "Rocker input lever length locus tracking error.\rThis can be due to "
                            "a geometry that cannot achieve the required travel.\rTry reduced "
                            "travel or smaller step size. Check units."));
    before[ptRHM].Z = 252; // the target stays while the dialog is open
    EXPECT_EQ(m_document.StaticPoints(), before);
    EXPECT_TRUE(m_program.Modified);
    EXPECT_FALSE(m_program.Options.AdjustRHByPushRodLength);
    EXPECT_TRUE(m_document.GeometryValid);
    EXPECT_THAT(m_main.Calls, ElementsAre("RefreshGUI(false)")) << "the tables show the target";
    EXPECT_TRUE(m_form.IsOpen);
    EXPECT_EQ(m_form.labCurrent.Text, "132.00");

    for (const char* way : {"typed back", "closed"}) { // and it goes when there is an end of it
        way == std::string("closed") ? m_form.cmdCancel_Click() : Apply("132");
        EXPECT_EQ(m_document.StaticPoints(), expected.StaticPoints()) << way;
        m_box.Shown.clear();
        m_form.Open();
        Apply("252");
        EXPECT_EQ(m_document.StaticPoints()[ptRHM].Z, 252);
    }
    std::string errorText;
    ASSERT_TRUE(AdjustRideHeight(expected, errorText, 5, false));
    m_main.OnRefresh = [] {};
    Apply("127");
    EXPECT_EQ(m_document.StaticPoints()[ptPRO], expected.StaticPoints()[ptPRO]);
    EXPECT_EQ(m_document.StaticPoints()[ptRHM].Z, 127);
}

TEST_F(frmAdjustTest, AFailureOfTheSearchIsToldInItsWordsAndOKClosesAllTheSame) {
    Load("published/OFFROAD3.WSP");
    Type("320.025+120");
    m_form.cmdOK_Click();
    EXPECT_THAT(m_box.Prompts(), ElementsAre(Unable + "Invalid procedure call or argument"));
    EXPECT_FALSE(m_form.IsOpen);
}

TEST_F(frmAdjustTest, TheDialogFollowsADocumentThatChangesElsewhere) {
    Type("127");
    m_form.FollowDocument();
    EXPECT_EQ(m_form.txtTarget.Text, "127") << "nothing changed";
    m_document.StaticPoints()[ptRHM].Z = 140;
    m_document.Data.SpringMechanism = smPullrodToUpright;
    m_form.FollowDocument();
    EXPECT_EQ(m_form.labCurrent.Text, "140.00");
    EXPECT_EQ(m_form.labDifference.Text, "-13");
    EXPECT_EQ(m_form.chkAdjustRHByPushRodLength.Caption, "Adjust using Pullrod length");

    Type("140.00");
    m_document.StaticPoints()[ptRHM].Z = 150;
    m_form.FollowDocument();
    EXPECT_EQ(m_form.txtTarget.Text, "150.00") << "none was typed";
}

/// The dialog beside an open editor.
class frmAdjustWithEditorTest : public EditGeometryTest {
  protected:
    frmAdjustWithEditorTest() {
        CalculateCorner(m_document);
        m_main.Editor = m_form.get();
        m_main.OnRefresh = [this] { CalculateCorner(m_document); };
        m_adjust.Open();
    }

    void ApplyTarget(const std::string& target) {
        m_adjust.txtTarget.Text = target;
        m_adjust.cmdApply_Click();
    }

    frmAdjust m_adjust{m_desk, m_main};
};

TEST_F(frmAdjustWithEditorTest, WhatIsTypedIsAppliedFirstAndTheEditorTakesTheNewPoints) {
    Type(m_form->txtTotalMass, "700");
    const double lower = m_document.StaticPoints()[ptLWO].X + 3;
    TypeX(ptLWO, std::to_string(lower));
    Suspension expected = m_document;
    expected.StaticPoints()[ptLWO].X = lower;
    CalculateCorner(expected);
    std::string errorText;
    ASSERT_TRUE(AdjustRideHeight(expected, errorText, 5, true));
    ApplyTarget("127");
    EXPECT_THAT(m_main.Calls, ElementsAre("RefreshGUI(true)", "RefreshGUI(true)"));
    EXPECT_EQ(m_document.StaticPoints()[ptLWO], expected.StaticPoints()[ptLWO])
        << "no digit is lost on the way through the table";
    EXPECT_EQ(CellX(ptLWO), FormatChannelValue(m_program.Units, expected.StaticPoints()[ptLWO].X,
                                               ucDisplacement));
    EXPECT_EQ(m_data.Mass, 700);
    EXPECT_FALSE(m_form->HasUnappliedChanges());
    EXPECT_TRUE(m_program.Modified);
    EXPECT_THAT(Prompts(), IsEmpty());
}

TEST_F(frmAdjustWithEditorTest, AnEditorThatCantApplyTellsItAndNothingMoves) {
    const PointSet before = m_document.StaticPoints();
    Type(m_form->txtBump, "much");
    ApplyTarget("127");
    EXPECT_THAT(Prompts(), ElementsAre(HasSubstr("There was an error while applying data.")));
    EXPECT_EQ(m_document.StaticPoints(), before);
    EXPECT_EQ(m_adjust.txtTarget.Text, "127") << "to be applied once the fault is mended";
    EXPECT_EQ(m_form->txtBump.Text, "much");
}

TEST_F(frmAdjustWithEditorTest, WhatIsTypedAndCantBeCalculatedStopsItWithOneMessage) {
    TypeX(ptLWIF, "900"); // behind the rear one
    m_main.OnRefresh = [this] { RunCalculation(m_document, MetricChannels(), m_messages); };
    ApplyTarget("127");
    EXPECT_THAT(Prompts(), ElementsAre(HasSubstr("Lower wishbone inboard points back to front")));
    EXPECT_EQ(m_document.StaticPoints()[ptRHM].Z, 132);
    ApplyTarget("128");
    EXPECT_THAT(Prompts(), ElementsAre(HasSubstr("Lower wishbone inboard points back to front")));
}

TEST_F(frmAdjustWithEditorTest, AfterATargetOutOfReachTheEditorShowsWhatIsStored) {
    ApplyTarget("900");
    EXPECT_THAT(Prompts(), ElementsAre(HasSubstr("Unable to complete calculations")));
    EXPECT_EQ(m_document.StaticPoints()[ptRHM].Z, 900);
    EXPECT_EQ(m_form->grdPoints.Cell(RowOf(ptRHM), 3), "900.00");
    EXPECT_FALSE(m_form->HasUnappliedChanges());
}

} // namespace
} // namespace corvanta::test
