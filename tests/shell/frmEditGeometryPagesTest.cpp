#include "shell/frmEditGeometry.h"

#include "model/Failure.h"
#include "tests/support/EditGeometryTest.h"
#include "tests/support/Testing.h"

#include <cmath>

namespace corvanta::test {
namespace {

std::string Texts(const ListControl& list) {
    std::string texts;
    for (const ListEntry& entry : list.Entries()) {
        texts += (texts.empty() ? "" : "|") + entry.Text;
    }
    return texts;
}

using frmEditGeometryPagesTest = EditGeometryTest;

TEST_F(frmEditGeometryPagesTest, ListsOfferWhatTheMechanismAllows) {
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

TEST_F(frmEditGeometryPagesTest, ListsKeepAChoiceThatIsStillOffered) {
    m_data.ThirdSpringMechanism = tsCentreSpring;
    m_data.CentreSpringSystem = csLateralViaRocker;
    EXPECT_EQ(Reopen().cboCentreSpringSystem.Text(), "Lateral via rocker");
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

TEST_F(frmEditGeometryPagesTest, ChoicesThatAreNotOfferedStayUntilOthersAreMade) {
    Open("touring-front-wishbone.WSP");
    m_data.CentreSpringSystem = csLateralViaRocker; // inherited from the document before
    m_data.ARBMechanism = abTBar;
    Reopen().tabPages_Changed(pgTravel);
    EXPECT_FALSE(m_form->HasUnappliedChanges());
    EXPECT_EQ(m_form->Draft().Data.ARBMechanism, abTBar);
    EXPECT_TRUE(m_form->Apply());
    EXPECT_THAT(Prompts(), IsEmpty());
    EXPECT_EQ(m_data.CentreSpringSystem, csLateralViaRocker);
    EXPECT_EQ(m_data.ARBMechanism, abTBar);
    ChooseMechanism(smOutboardToUpright);
    EXPECT_TRUE(m_form->Apply());
    EXPECT_EQ(m_data.CentreSpringSystem, 0);
    EXPECT_EQ(m_data.ARBMechanism, abNone);
}

TEST_F(frmEditGeometryPagesTest, TravelIsCorrectedInOneMessage) {
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
        EXPECT_EQ(m_data.Bump, std::abs(LeadingNumber(c.Bump)));
        EXPECT_EQ(m_data.Droop, std::abs(LeadingNumber(c.Droop)));
        EXPECT_EQ(m_data.RackTravel, LeadingNumber(c.RackTravel));
        EXPECT_EQ(m_form->txtBump.Text, FormatNumber(m_data.Bump, "0.00", {})) << "as taken";
        EXPECT_FALSE(m_form->HasUnappliedChanges());
    }
    UseUnits("in", "N", "kg", "N/mm");
    Type(Reopen().txtWheelStep, "0");
    EXPECT_TRUE(m_form->Apply());
    EXPECT_THAT(Prompts(), ElementsAre(wheel + "0.197in"));
    EXPECT_EQ(m_data.WheelTravelStepSize, 5);
}

TEST_F(frmEditGeometryPagesTest, TheGridIsToldInWordsBeforeItIsApplied) {
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
    EXPECT_THAT(m_form->labTravelSummary.Caption, EndsWith("positions"));
}

TEST_F(frmEditGeometryPagesTest, PasteTakesWhatCopyGivesInAnyOrder) {
    const std::string before = m_form->grdPoints.Text();
    m_form->cmdCopy_Click();
    const std::string copied = m_windowSystem.Board;
    EXPECT_THAT(copied, StartsWith("Point\tX\tY\tZ\r\n\tmm\tmm\tmm\r\nCentre of tyre"));
    EXPECT_EQ(copied + "\r\n", before);
    EXPECT_EQ(m_form->grdPointsSelection, (CellRange{0, 0, m_form->grdPoints.Rows() - 1, 3}));

    std::string reversed = "Unknown\t1\t2\t3\r\n";
    for (int row = m_form->grdPoints.Rows() - 1; row > 1; --row) {
        for (int column = 0; column < 4; ++column) {
            reversed += m_form->grdPoints.Cell(row, column) + (column < 3 ? "\t" : "\r\n");
        }
    }
    for (const std::string& text : {copied, reversed, "Point\tX\tY\tZ\r" + reversed}) {
        for (const bool whole : {true, false}) {
            TypeX(ptWC, "9");
            m_windowSystem.Board = text;
            m_form->grdPointsSelection = {5, 2, 5, 2}; // of no account to rows with names
            m_box.Answers = {maYes};
            whole ? m_form->cmdPaste_Click() : m_form->grdPoints_Paste();
            EXPECT_EQ(m_form->grdPoints.Text(), before) << text;
            EXPECT_THAT(m_form->labStatus.Caption, StartsWith("23 rows pasted."));
        }
    }
    EXPECT_THAT(m_form->labStatus.Caption, HasSubstr("1 row with a name that the table has not."));

    const auto pasteAt = [&](const std::string& text, CellRange at) {
        m_windowSystem.Board = text;
        m_form->grdPointsSelection = at;
        m_form->grdPoints_Paste();
        return m_form->labStatus.Caption;
    };
    pasteAt("1\t2\r\n3\t4", {3, 2, 3, 2});
    EXPECT_EQ(m_form->grdPoints.Cell(3, 1), "0.00") << "nothing is emptied";
    EXPECT_EQ(m_form->grdPoints.Cell(3, 3) + m_form->grdPoints.Cell(4, 2), "23");
    pasteAt("Point\tZ\r\n ptWC \t77", {0, 0, 0, 0});
    EXPECT_EQ(m_form->grdPoints.Cell(RowOf(ptWC), 3), "77") << "by heads and short names";
    EXPECT_EQ(pasteAt("Point\tX\r\n\tin\r\nptWC\t1", {2, 1, 2, 1}),
              "Nothing pasted: the copied table is in another unit.");
}

TEST_F(frmEditGeometryPagesTest, PasteLaysRowsIntoTheCells) {
    const int rows = m_form->grdPoints.Rows() - 2;
    m_windowSystem.Board = "1\t2\t3";
    const std::string before = m_form->grdPoints.Text();
    m_form->cmdPaste_Click();
    EXPECT_THAT(Prompts(),
                ElementsAre("This operation pastes data from the Windows Clipboard into "
                            "the grid.\rAny existing data will be cleared.\r\rProceed?"));
    EXPECT_EQ(m_form->grdPoints.Text(), before) << "declined";

    const auto paste = [&](const std::string& text) {
        m_windowSystem.Board = text;
        m_box.Answers = {maYes};
        m_form->cmdPaste_Click();
        Prompts();
        const DataGrid& grid = m_form->grdPoints;
        return grid.Cell(2, 1) + "|" + grid.Cell(2, 2) + "|" + grid.Cell(2, 3) + "|" +
               grid.Cell(3, 1) + "|" + grid.Cell(3, 2) + ": " + m_form->labStatus.Caption;
    };
    const std::string short2 = "2 rows pasted. " + std::to_string(rows - 2) + " rows stayed empty.";
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

TEST_F(frmEditGeometryPagesTest, DoubtfulCellsAndTheRowsOfAFailureAreMarked) {
    EXPECT_FALSE(m_form->labPointNotes.Visible);
    const int row = RowOf(ptTRO);
    const auto type = [&](const char* y) { m_form->grdPoints_Edited(row, 2, y); };
    type("-645");
    const std::string sentence =
        "Trackrod outboard  pickup is across the centreline of the car: its Y is negative.";
    EXPECT_EQ(m_form->grdPoints.Note(row, 2), sentence);
    EXPECT_EQ(m_form->grdPoints.Note(row, 1), "");
    EXPECT_EQ(m_form->labPointNotes.Caption, sentence);
    EXPECT_EQ(m_form->grdPoints_ToolTip(row, 2),
              sentence + "\nY of Trackrod outboard  pickup, mm, left positive");
    type("645");
    EXPECT_FALSE(m_form->labPointNotes.Visible);

    m_main.OnRefresh = [&] { m_document.FaultyPoints = {ptR1P1, ptPRI}; };
    EXPECT_TRUE(m_form->Apply());
    EXPECT_NE(m_form->grdPoints.Note(RowOf(ptPRI), 3), "");
    EXPECT_EQ(m_form->labPointNotes.Caption, "The last calculation failed at Rocker pivot point on "
                                             "chassis and Pushrod inboard  pickup on rocker.");
}

TEST_F(frmEditGeometryPagesTest, AClipboardThatFailsIsTold) {
    class BrokenBoard final : public Clipboard {
        void SetText(const std::string& /*text*/) override { throw Failure(fnInternal, "in use"); }
        [[nodiscard]] std::string Text() const override { throw Failure(fnInternal, "in use"); }
    } board;
    FakeWindowSystem& rest = m_windowSystem;
    WindowSystem services{rest, board, rest, rest, rest, rest, rest.Pages, {}};
    Desk desk{m_program, m_current, m_files, m_messages, m_process, services, MLibHelp(rest)};
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

} // namespace
} // namespace corvanta::test
