#include "tests/support/MainFormTest.h"
#include "tests/support/Testing.h"

namespace corvanta::test {
namespace {

/// A window that counts what it is told.
class CountingWatcher final : public DocumentWatcher {
  public:
    void DocumentChanged(DocumentChange change) override { Told.push_back(change); }
    std::vector<DocumentChange> Told;
};

class CDocumentTest : public MainFormTest {
  protected:
    CDocumentTest() { m_current.Watch(m_watcher); }

    [[nodiscard]] std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const HistoryStep& step : m_current.Steps().Steps()) {
            names.push_back(step.Name);
        }
        return names;
    }
    void Move(double dz) {
        Design design = DesignOf(m_document);
        design.Points[ptTRI].Z += dz;
        m_current.Change("Move Trackrod inboard pickup Z", design);
    }
    [[nodiscard]] std::string UndoCaption() { return ItemOf(m_main.mnuEdit, mcUndo).Caption; }

    CountingWatcher m_watcher;
};

TEST_F(CDocumentTest, EveryWindowsChangeIsANamedStepThatCanBeTakenBack) {
    Open(SampleBytes("formula-front-pushrod.WSP"));
    const Design opened = DesignOf(m_document);
    EXPECT_EQ(UndoCaption(), "&Undo");
    Edit("1.25");
    m_main.Execute(mcProperties, 0);
    frmEditGeometry* editor = m_main.EditGeometry.get();
    editor->tabPages_Changed(pgStaticPoints);
    m_windowSystem.Board = "ptWC\t2\t600\t300\r\n";
    m_box.Answers = {maYes};
    editor->grdPoints_Paste();
    editor->cmdApply_Click();
    editor->tabPages_Changed(pgType);
    editor->cboSpringMechanism.Select(smNone);
    editor->cboSpringMechanism_Changed();
    m_box.Answers = {maYes};
    editor->tabPages_Changed(pgTravel);
    editor->txtBump.Text = "30";
    editor->cmdApply_Click();
    editor->txtForceX.Text = "100";
    editor->cmdOK_Click();
    m_main.Execute(mcAdjust, 0);
    m_main.AdjustDialog->txtTarget.Text = std::to_string(opened.Points[ptRHM].Z + 2);
    m_main.AdjustDialog->cmdOK_Click();
    EXPECT_THAT(Names(),
                ElementsAre("Open front.WSP", "Move Centre of tyre contact patch X", "Paste points",
                            "Change type", "Edit travel", "Edit load cases", "Adjust ride height"));
    EXPECT_EQ(UndoCaption(), "&Undo Adjust ride height");
    EXPECT_TRUE(m_program.Modified);
    const Design reached = DesignOf(m_document);
    for (std::size_t n = 1; n < Names().size(); ++n) {
        m_main.Execute(mcUndo, 0);
        EXPECT_TRUE(m_document.ResultsValid);
    }
    EXPECT_EQ(DesignOf(m_document), opened);
    EXPECT_FALSE(m_program.Modified || ItemOf(m_main.mnuEdit, mcUndo).Enabled);
    m_main.Execute(mcUndo, 0);
    m_current.GoTo(Names().size() - 1);
    EXPECT_EQ(DesignOf(m_document), reached);
    EXPECT_THAT(Prompts(), Not(Contains(HasSubstr("error"))));
}

// What undo leaves behind must not show in the results: they are those of the document opened anew.
TEST_F(CDocumentTest, ResultsAfterUndoAreThoseOfTheFileToTheLastBit) {
    Open(SampleBytes("published/FSTBARF.WSP"));
    const Suspension fresh = m_document;
    Design other = DesignOf(m_document);
    other.Data.ARBMechanism = abNone;
    other.Data.SpringMechanism = smNone;
    m_current.Change("Change type", other);
    m_main.Execute(mcUndo, 0);
    ASSERT_TRUE(m_document.ResultsValid);
    for (int w = 2; w <= fresh.NW + 1; ++w) {
        for (int id = 1; id <= ChannelCount; ++id) {
            const auto& cells = m_document.WheelStates(m_document.StaticRack, w).Channels;
            EXPECT_EQ(cells.Cell(id), fresh.WheelStates(fresh.StaticRack, w).Channels.Cell(id));
        }
    }
}

TEST_F(CDocumentTest, RecoveredWorkBeginsAHistoryThatNoFileHolds) {
    Open(SampleBytes());
    Edit("1.25");
    m_main.Files.Recovery.SetAside();
    Open(SampleBytes("saloon-front-strut.WSP"), "/cars/strut.WSP");
    EXPECT_FALSE(m_program.Modified);
    m_main.OfferRecovery(true);
    m_main.RecoveryDialog->cmdOpen_Click();
    EXPECT_THAT(Names(), ElementsAre("Recover unsaved work"));
    EXPECT_TRUE(m_program.Modified) << "no file holds it";
    EXPECT_EQ(m_document.StaticPoints()[ptWTCP].X, 1.25);
}

TEST_F(CDocumentTest, UndoKeepsWhatIsTypedAndNotAppliedAsAStep) {
    Open(SampleBytes());
    TypeInEditor("1.25");
    m_main.Execute(mcUndo, 0);
    EXPECT_FALSE(m_main.EditGeometry->HasUnappliedChanges());
    EXPECT_FALSE(m_program.Modified);
    m_main.Execute(mcRedo, 0);
    EXPECT_EQ(m_document.StaticPoints()[ptWTCP].X, 1.25);
    EXPECT_FALSE(m_main.EditGeometry->HasUnappliedChanges()) << "the table follows";
    TypeInEditor("no number");
    m_main.Execute(mcUndo, 0);
    EXPECT_EQ(m_document.StaticPoints()[ptWTCP].X, 1.25) << "nothing is lost to a slip";
}

TEST_F(CDocumentTest, TheClassicWindowsFollowAndTypedCellsStay) {
    Open(SampleBytes());
    const double before = m_document.StaticPoints()[ptTRI].Z;
    TypeInEditor("1.25");
    m_watcher.Told.clear();
    m_current.Hold();
    Move(1);
    Move(1);
    EXPECT_FALSE(m_document.ResultsValid) << "the main window waits for the hand";
    m_current.CatchUp();
    EXPECT_TRUE(m_document.ResultsValid);
    Move(1);
    m_current.Release();
    EXPECT_TRUE(m_document.ResultsValid);
    m_current.CatchUp();
    EXPECT_THAT(m_watcher.Told, ElementsAre(DocumentChange::InMotion, DocumentChange::InMotion,
                                            DocumentChange::Changed, DocumentChange::InMotion,
                                            DocumentChange::Changed));
    EXPECT_EQ(m_document.StaticPoints()[ptTRI].Z, before + 3);
    EXPECT_TRUE(m_main.EditGeometry->HasUnappliedChanges());
    m_main.EditGeometry->cmdOK_Click();
    EXPECT_EQ(m_document.StaticPoints()[ptTRI].Z, before + 3) << "not put back by the table";
    EXPECT_EQ(m_document.StaticPoints()[ptWTCP].X, 1.25);
}

TEST_F(CDocumentTest, ADesignThatFailsOnTheWayIsToldWithoutABoxAndTheViewComesBack) {
    Open(SampleBytes());
    Show(vwPlot, chCamberAngle);
    m_box.Shown.clear();
    m_current.Hold();
    Move(2000);
    m_current.CatchUp();
    EXPECT_TRUE(m_main.panFailure.Visible);
    EXPECT_THAT(m_main.panFailure.Caption, HasSubstr("could not be completed"));
    m_current.CallOff();
    EXPECT_EQ(m_settings.View, vwPlot);
    EXPECT_EQ(m_settings.ViewArgument, chCamberAngle);
    EXPECT_TRUE(m_document.ResultsValid);
    EXPECT_FALSE(m_program.Modified || m_current.Steps().CanRedo());
    EXPECT_THAT(m_box.Shown, IsEmpty());
    EXPECT_EQ(m_process.Beeps, 0);
}

TEST_F(CDocumentTest, ARefusedRideHeightThatIsPutBackIsNoStep) {
    Open(SampleBytes());
    m_main.Execute(mcAdjust, 0);
    m_main.AdjustDialog->txtTarget.Text = "5000";
    m_main.AdjustDialog->cmdApply_Click();
    EXPECT_EQ(Names().back(), "Adjust ride height");
    m_main.AdjustDialog->Close();
    EXPECT_FALSE(m_program.Modified || m_current.Steps().CanUndo());
}

} // namespace
} // namespace corvanta::test
