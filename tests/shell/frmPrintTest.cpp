#include "shell/frmPrint.h"

#include "tests/support/FakeShellHost.h"
#include "tests/support/TestDesk.h"
#include "tests/support/Testing.h"

namespace corvanta::test {
namespace {

class frmPrintTest : public testing::Test, protected TestDesk {
  protected:
    frmPrintTest() {
        m_program.Settings = {vwAntis, 0, vvAlongWheelTravel, 3, 3};
        m_options.PrintChassisDetails = false;
    }

    void ChooseSelected(bool selected) {
        m_form.optSelectedTables.Selected = selected;
        m_form.optPrintCurrent.Selected = !selected;
        m_form.optPrint_Click();
    }

    /// The choices of the options as a row of 0 and 1, the ticks last.
    [[nodiscard]] std::string Stored() const {
        std::string text;
        for (const bool choice : {m_options.PrintSelectedTables, m_options.PageThrow,
                                  m_options.PrintChassisDetails, m_options.PrintCoordinates}) {
            text += choice ? "1" : "0";
        }
        text += " ";
        for (int view = 1; view <= SelectableViewCount; ++view) {
            text += m_options.SelectedTables[view] ? "1" : "0";
        }
        return text;
    }

    FakeShellHost m_main;
    Options& m_options = m_program.Options;
    RecordingPageWriter& m_pages = m_windowSystem.Pages;
    frmPrint m_form{m_desk, m_main};
};

TEST_F(frmPrintTest, ShowsTheOptions) {
    m_options.PrintSelectedTables = m_options.PageThrow = true;
    m_options.SelectedTables.Set(2, true);
    m_options.SelectedTables.Set(12, true);
    m_options.PaperOrientation = 1;
    m_form.Open();
    EXPECT_TRUE(m_form.IsOpen);
    EXPECT_EQ(m_form.Caption, "Print");
    EXPECT_TRUE(m_form.optSelectedTables.Selected && !m_form.optPrintCurrent.Selected);
    EXPECT_TRUE(m_form.chkPageThrow.Checked && m_form.chkPageThrow.Enabled);
    EXPECT_TRUE(!m_form.chkChassisDetails.Checked && m_form.chkChassisDetails.Enabled);
    EXPECT_FALSE(m_form.chkPrintCoordinates.Checked || m_form.picPages.Visible);
    ASSERT_EQ(m_form.tvwTables.Rows.size(), 12U);
    for (int view = 1; view <= SelectableViewCount; ++view) {
        EXPECT_EQ(m_form.tvwTables.Rows[static_cast<std::size_t>(view) - 1],
                  (CheckListRow{std::string(ViewName(view)), view, view == 2 || view == 12}));
    }
    EXPECT_EQ(m_pages.Orientation(), poLandscape);
    const WindowPlacement& place = m_form.Frame.Placement;
    EXPECT_EQ(place.Left, (FakeWindowSystem::Screen.Width - place.Width) / 2);
    EXPECT_EQ(place.Top, (FakeWindowSystem::Screen.Height - place.Height) / 2);
    EXPECT_THAT(m_windowSystem.Shapes, ElementsAre(DefaultCursor, HourglassCursor, DefaultCursor));

    for (const bool selected : {false, true, false}) {
        ChooseSelected(selected);
        EXPECT_EQ(m_form.tvwTables.Enabled, selected);
    }
    m_form.tvwTables_Click(1);
    m_form.tvwTables_Click(4);
    EXPECT_FALSE(m_form.tvwTables.Rows[1].Checked);
    EXPECT_TRUE(m_form.tvwTables.Rows[4].Checked);
    m_form.cmdHelp_Click();
    EXPECT_THAT(m_windowSystem.Topics, ElementsAre(223));
    m_options.PrintSelectedTables = false;
    m_program.Settings.View = vw3d; // does not go to paper
    m_form.Open();
    EXPECT_TRUE(m_form.optSelectedTables.Selected && !m_form.optPrintCurrent.Selected);
}

TEST_F(frmPrintTest, PrintKeepsTheChoicesPrintsAndCloses) {
    m_program.Settings = {vwLinkLoads, 2, vvAlongRackTravel, 3, 4};
    m_program.Document.StaticWheel = 5;
    m_program.Document.StaticRack = 6;
    std::vector<std::int32_t> shown;
    m_main.OnRefresh = [&] {
        EXPECT_EQ(m_windowSystem.Current(), HourglassCursor) << "while a report is built";
        shown.push_back(m_program.Settings.View);
    };
    m_form.Open();
    ChooseSelected(true);
    m_form.tvwTables_Click(2);
    m_form.tvwTables_Click(8);
    m_form.chkPageThrow.Checked = m_form.chkChassisDetails.Checked = true;
    m_form.cmdOK_Click();
    EXPECT_EQ(Stored(), "1110 001000001000");
    EXPECT_THAT(m_pages.Printed, ElementsAre(5U));
    EXPECT_THAT(m_main.Calls,
                ElementsAre("RefreshGUI(false)", "DisplayView 3 0 1 3 4", "DisplayView 9 1 2 5 6",
                            "DisplayView 9 2 2 5 6", "DisplayView 9 3 2 5 6", "RefreshGUI(false)"));
    EXPECT_THAT(shown, ElementsAre(vwNone, vwLinkLoads)) << "no view while the report is built";
    EXPECT_FALSE(m_form.IsOpen);
    EXPECT_EQ(m_windowSystem.Current(), DefaultCursor);
    EXPECT_THAT(m_store.Entries, IsEmpty()) << "it opens in the middle of the screen each time";
}

TEST_F(frmPrintTest, APlotLeavesTheOptionsItHasNoUseForAsTheyWere) {
    m_program.Settings.View = vwPlot;
    m_options.PageThrow = m_options.PrintChassisDetails = true;
    m_form.Open();
    for (const CheckBox* box : {&m_form.chkPageThrow, &m_form.chkChassisDetails}) {
        EXPECT_FALSE(box->Checked || box->Enabled);
    }
    m_form.chkPrintCoordinates.Checked = true;
    m_form.cmdPreview_Click();
    EXPECT_EQ(Stored(), "0111 000000000000");
}

TEST_F(frmPrintTest, ThePreviewStandsInThePlaceOfTheSettings) {
    m_form.Open();
    EXPECT_TRUE(m_form.optPrintCurrent.Selected && !m_form.optSelectedTables.Selected);
    const WindowPlacement settings = m_form.Frame.Placement;
    for (int round = 1; round <= 2; ++round) { // by the button, and by the close box
        m_form.cmdPreview_Click();
        EXPECT_EQ(m_pages.Started, round);
        EXPECT_FALSE(m_pages.Writing) << "the pages are there to be looked at";
        EXPECT_TRUE(m_form.picPages.Visible && m_form.cmdCancel.Visible);
        EXPECT_EQ(m_form.cmdCancel.Caption, "&Close");
        EXPECT_FALSE(m_form.cmdOK.Visible || m_form.tvwTables.Visible || m_form.cmdHelp.Visible);
        const WindowPlacement& place = m_form.Frame.Placement;
        EXPECT_GT(place.Width, settings.Width);
        EXPECT_GT(place.Height, settings.Height);
        EXPECT_GE(place.Left, 0);
        EXPECT_LE(place.Left + place.Width, FakeWindowSystem::Screen.Width);
        EXPECT_GE(place.Top, 0);
        EXPECT_LE(place.Top + place.Height, FakeWindowSystem::Screen.Height);
        EXPECT_EQ(m_windowSystem.Current(), DefaultCursor);

        m_form.cmdCancel_Click();
        EXPECT_TRUE(m_form.IsOpen && m_form.cmdOK.Visible && m_form.tvwTables.Visible);
        EXPECT_FALSE(m_form.picPages.Visible);
        EXPECT_EQ(m_form.cmdCancel.Caption, "Cancel");
        EXPECT_EQ(m_form.Frame.Placement, settings);
    }
    EXPECT_THAT(m_pages.Printed, IsEmpty());
    m_form.cmdOK_Click();
    EXPECT_EQ(m_pages.Started, 3) << "what is printed is built anew";
    EXPECT_THAT(m_pages.Printed, SizeIs(1));
}

TEST_F(frmPrintTest, AFailureIsToldAndTheDialogStaysWithItsSettings) {
    m_form.Open();
    m_pages.FailOnBlock(1);
    m_form.cmdPreview_Click();
    EXPECT_FALSE(m_form.picPages.Visible);
    m_pages.FailOnBlock(2);
    m_form.cmdOK_Click();
    const std::string told = "There was an error while printing.\rError was: Out of paper";
    EXPECT_THAT(m_box.Prompts(), ElementsAre(told, told));
    EXPECT_EQ(m_box.Shown.at(0).Style, msExclamation);
    EXPECT_TRUE(m_form.IsOpen);
    EXPECT_EQ(m_program.Settings.View, vwAntis);
    EXPECT_EQ(m_windowSystem.Current(), DefaultCursor);

    m_pages.CallOff = true;
    m_form.cmdOK_Click();
    EXPECT_TRUE(m_form.IsOpen) << "the user called printing off";
    EXPECT_THAT(m_pages.Printed, IsEmpty());
}

} // namespace
} // namespace corvanta::test
