#include "shell/frmCompare.h"

#include "tests/support/MainFormTest.h"
#include "tests/support/Testing.h"

namespace corvanta::test {
namespace {

class frmCompareTest : public MainFormTest {
  protected:
    frmCompareTest() {
        Open(SampleBytes());
        m_main.Execute(mcCompare, 0);
    }

    void AddVariant(const std::string& name, double trackrodZ, bool ticked = true) {
        StudyData study = m_current.Study();
        Design design = DesignOf(m_document);
        design.Points[ptTRI].Z += trackrodZ;
        study.Variants.push_back({name, "", {}, ticked, design});
        m_current.ChangeStudy(study);
    }

    void Tick(std::size_t row, bool ticked) {
        Window().lstDesigns.Rows[row].Checked = ticked;
        Window().lstDesigns_Click();
    }

    [[nodiscard]] frmCompare& Window() { return *m_main.CompareWindow; }

    [[nodiscard]] std::string Row(int row) {
        std::string text;
        for (int column = 0; column < Window().grdCompare.Columns(); ++column) {
            text += (column > 0 ? "|" : "") + Window().grdCompare.Cell(row, column);
        }
        return text;
    }
};

TEST_F(frmCompareTest, FollowsTheDocumentAndItsTicksChooseTheColumns) {
    EXPECT_EQ(Row(0), "|Unit|As it stands|Baseline|Difference");
    EXPECT_THAT(Row(1), StartsWith("Figures"));
    AddVariant("Low rod", -2);
    AddVariant("Hidden", 5, false);
    EXPECT_EQ(Row(0), "|Unit|As it stands|Baseline|Difference|Low rod|Difference");
    EXPECT_THAT(Row(2), StartsWith("Trackrod inboard pickup Z|mm|"));
    EXPECT_THAT(Row(2), EndsWith("|-2.00"));
    Tick(0, false); // the next one is what the others are measured by
    EXPECT_EQ(Row(0), "|Unit|Baseline|Low rod|Difference");
    Tick(0, true);
    Tick(1, false);

    Edit("20"); // by the editor
    EXPECT_EQ(Row(0), "|Unit|As it stands|Low rod|Difference");
    EXPECT_THAT(Row(2), StartsWith("Centre of tyre contact patch X|mm|20.00|"));
    m_main.Execute(mcUndo, 0);
    EXPECT_THAT(Row(2), StartsWith("Trackrod"));
    m_program.Units[ucDisplacement].Label = "in";
    m_program.Channels.ChannelsSetup(m_program.Units);
    m_main.RefreshGUI(false);
    EXPECT_THAT(Row(2), StartsWith("Trackrod inboard pickup Z|in|"));

    Design moved = DesignOf(m_document);
    moved.Points[ptTRI].Z += 1;
    m_current.Hold();
    m_current.Change("Move", moved);
    const std::string before = Row(2);
    m_current.Release();
    EXPECT_NE(Row(2), before); // once the hand lets go
    moved.Points[ptTRI].Z += 1;
    const std::string released = Row(2);
    m_current.Change("Nudge", moved, true);
    m_current.CatchUp();
    EXPECT_NE(Row(2), released); // and once it rests
    ResetDocument(m_document, m_settings);
    m_current.Begin("None", true);
    EXPECT_EQ(Window().labNote.Caption, "There is no suspension to compare.");
    EXPECT_FALSE(Window().cmdCopy.Enabled);
}

TEST_F(frmCompareTest, SaysWhatHasNoFiguresAndGoesOutAsText) {
    AddVariant("Impossible", 9000);
    EXPECT_THAT(Window().labNote.Caption, StartsWith("Impossible: Can't be solved"));
    EXPECT_THAT(Row(2), EndsWith("|+9000.00")); // its coordinates are compared all the same
    Window().cmdCopy_Click();
    EXPECT_EQ(m_windowSystem.Board, Window().grdCompare.Text());
    const std::string path = "/cars/what differs.csv";
    m_windowSystem.Answers = {{path}, {path}, {Path}};
    Window().cmdSave_Click();
    EXPECT_EQ(m_files.Bytes(path), Window().grdCompare.CommaSeparated());
    m_files.FailOnChange(1);
    Window().cmdSave_Click();
    Window().cmdSave_Click(); // over the document
    EXPECT_THAT(Prompts(), ElementsAre(HasSubstr("could not be written"), HasSubstr("replace it")));
    Window().cmdClose_Click();
    m_main.ReleaseClosedWindows();
    EXPECT_EQ(m_main.CompareWindow, nullptr);
    AddVariant("Nobody looks", 1); // the window that went is told nothing
}

} // namespace
} // namespace corvanta::test
