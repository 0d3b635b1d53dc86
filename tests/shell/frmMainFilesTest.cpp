// The file commands of the main window, and what becomes of unsaved work.

#include "model/Failure.h"
#include "tests/support/MainFormTest.h"
#include "tests/support/Testing.h"

#include <stdexcept>

namespace corvanta::test {
namespace {

const std::string Discard = "Discard any current data?";
const std::string Offer = "There are unsaved changes to front.WSP from an earlier run.\r\r"
                          "Open them now? No throws them away, Cancel keeps them for the next "
                          "start.";

/// A file dialog that can't be shown.
class BrokenDialog final : public FileDialog {
  public:
    std::optional<FileNameAnswer> Ask(const FileNameRequest& /*request*/) override {
        throw Failure(fnInternal, "No dialog");
    }
};

class frmMainFilesTest : public MainFormTest {
  protected:
    /// The next file dialog answers with a path.
    void WillChoose(const std::string& path) { m_windowSystem.Answers.push_back({path, 2}); }

    /// Captions of the recent files in the menu.
    [[nodiscard]] std::vector<std::string> RecentFiles() const {
        std::vector<std::string> captions;
        for (const MenuItem& item : m_main.mnuFMRU) {
            if (item.Visible && item.Caption != "-") {
                captions.push_back(item.Caption);
            }
        }
        return captions;
    }

    /// The X of the contact patch in a file; none when there is no such file.
    std::string SavedX(const std::string& path) {
        const std::string bytes = m_files.Bytes(path).value_or("[ptWTCP]\tnone\t");
        const std::size_t from = bytes.find("[ptWTCP]\t") + 9;
        return bytes.substr(from, bytes.find('\t', from) - from);
    }

    /// The program as it starts again after a crash: no lock of it is left.
    [[nodiscard]] std::unique_ptr<frmMain> StartAgain() {
        m_windowSystem.Locked.clear();
        m_program = Program();
        m_program.Units = MetricUnits();
        m_program.Channels.ChannelsSetup(m_program.Units);
        m_box.Shown.clear();
        auto main = std::make_unique<frmMain>(m_desk);
        main->Load();
        main->Recovery.SetFolder("/recovery/");
        main->RefreshGUI(false);
        return main;
    }
};

TEST_F(frmMainFilesTest, NewAsksAndStartsAnEmptyDocumentInTheEditor) {
    Open(SampleBytes());
    Edit("3");
    EXPECT_TRUE(m_files.FileExists("/recovery/1.WSP"));
    TypeInEditor("4");
    const frmEditGeometry* former = m_main.EditGeometry.get();
    m_main.Execute(mcNew, 0); // declined
    EXPECT_TRUE(m_document.DataLoaded && former->IsOpen);
    EXPECT_EQ(m_box.Shown.back().Style, msYesNo + msExclamation);
    EXPECT_EQ(m_program.DocumentPath, Path);
    m_box.Answers = {maYes};
    m_main.Execute(mcNew, 0);
    EXPECT_THAT(Prompts(), ElementsAre(Discard, Discard));
    EXPECT_FALSE(m_document.DataLoaded || m_document.ResultsValid || m_program.Modified);
    EXPECT_EQ(m_program.DocumentPath, "");
    EXPECT_EQ(m_settings.View, vwNone);
    EXPECT_FALSE(former->IsOpen) << "still there for its view on the screen";
    EXPECT_NE(m_main.EditGeometry.get(), former);
    EXPECT_TRUE(m_main.EditGeometry->IsOpen && m_main.EditGeometry->Raise);
    EXPECT_FALSE(m_files.FileExists("/recovery/1.WSP")) << "discarded by the user's word";

    m_main.EditGeometry->cmdOK_Click(); // a corner of nothing: it is a document all the same
    EXPECT_TRUE(m_document.DataLoaded && m_program.Modified);
    EXPECT_EQ(m_main.stbMain.Document, "New suspension  modified");
    m_main.Execute(mcSave, 0);
    ASSERT_EQ(m_windowSystem.Requests.size(), 1U) << "Save asks for a name";
    EXPECT_EQ(m_windowSystem.Requests[0].InitialName, "");
}

TEST_F(frmMainFilesTest, OpenAsksForADocumentInTheLastFolder) {
    m_program.Options.LastFolder = "/garage/";
    m_main.Execute(mcOpen, 0); // cancelled
    EXPECT_FALSE(m_document.DataLoaded);
    m_files.Put(Path, SampleBytes());
    WillChoose(Path);
    m_main.Execute(mcOpen, 0);
    EXPECT_TRUE(m_document.DataLoaded);
    ASSERT_EQ(m_windowSystem.Requests.size(), 2U);
    const FileNameRequest& request = m_windowSystem.Requests[1];
    EXPECT_EQ(request.Mode, FileNameMode::Open);
    EXPECT_EQ(request.Title, "Open");
    EXPECT_EQ(request.Filter, "WSP files (*.wsp)|*.wsp| All files (*.*)|*.*");
    EXPECT_EQ(request.StartFolder, "/garage/");
    EXPECT_EQ(m_program.Options.LastFolder, "/cars/");
}

TEST_F(frmMainFilesTest, OpenAsksForASampleWhereTheyLie) {
    EXPECT_FALSE(m_main.HasSamples());
    m_files.PutFolder("/opt/corvanta/samples");
    EXPECT_TRUE(m_main.HasSamples());
    m_main.OpenSample();
    ASSERT_EQ(m_windowSystem.Requests.size(), 1U);
    EXPECT_EQ(m_windowSystem.Requests[0].StartFolder, "/opt/corvanta/samples");
}

TEST_F(frmMainFilesTest, SaveGoesToTheDocumentsFileOrAsks) {
    Open(SampleBytes());
    Edit("3");
    m_main.Execute(mcSave, 0);
    EXPECT_EQ(SavedX(Path), "3");
    EXPECT_FALSE(m_program.Modified);
    EXPECT_THAT(m_windowSystem.Requests, IsEmpty());

    WillChoose("/race/rear.v2.txt");
    m_files.PutFolder("/race");
    m_main.Execute(mcSaveAs, 0);
    EXPECT_EQ(SavedX("/race/rear.v2.WSP"), "3");
    EXPECT_EQ(m_program.DocumentPath, "/race/rear.v2.WSP");
    EXPECT_EQ(m_program.Options.LastFolder, "/race/");
    EXPECT_EQ(m_main.Caption, "Corvanta 5.4.5 - rear.v2 - [Bump & Droop Coordinates]");
    ASSERT_EQ(m_windowSystem.Requests.size(), 1U);
    const FileNameRequest& request = m_windowSystem.Requests[0];
    EXPECT_EQ(request.Mode, FileNameMode::Save);
    EXPECT_EQ(request.Title, "Save");
    EXPECT_EQ(request.Filter, "WSP files (*.wsp)|*.wsp| All files (*.*)|*.*");
    EXPECT_EQ(request.StartFolder, "/cars/");
    EXPECT_EQ(request.InitialName, "front.WSP");
    EXPECT_EQ(request.Extension, "WSP") << "so that the dialog asks about the file that is written";

    // After a failed open neither the old file nor its name is at hand for the empty document.
    Open("no document", "/cars/bad.WSP");
    m_main.Execute(mcSave, 0);
    ASSERT_EQ(m_windowSystem.Requests.size(), 2U);
    EXPECT_EQ(m_windowSystem.Requests[1].InitialName, "");
    EXPECT_EQ(SavedX("/race/rear.v2.WSP"), "3");
    EXPECT_EQ(m_program.DocumentPath, "/race/rear.v2.WSP");
}

TEST_F(frmMainFilesTest, AFileThatTheDialogDidNotAskAboutIsNotOverwrittenUnasked) {
    Open(SampleBytes());
    m_files.Put("/cars/rear.WSP", "old");
    for (const char* typed : {"/cars/rear", "/cars/rear.txt", "/cars/rear.wsp"}) {
        WillChoose(typed);
        m_main.Execute(mcSaveAs, 0);
        EXPECT_THAT(Prompts(), ElementsAre("rear.WSP exists already.\rReplace it?")) << typed;
        EXPECT_EQ(m_files.Bytes("/cars/rear.WSP"), "old");
        EXPECT_EQ(m_program.DocumentPath, Path);
    }
    WillChoose("/cars/rear");
    m_box.Answers = {maYes};
    m_main.Execute(mcSaveAs, 0);
    EXPECT_EQ(m_files.Bytes("/cars/rear.WSP"), SampleBytes());
    Prompts();
    WillChoose("/cars/rear.WSP"); // which the dialog has asked about
    m_main.Execute(mcSaveAs, 0);
    EXPECT_THAT(Prompts(), IsEmpty());
}

TEST_F(frmMainFilesTest, GetFileNameTellsPathNameAndExtension) {
    struct Case {
        FileNameMode Mode;
        std::string Title;
        std::string Path;
        std::string Name;
        std::string Extension;
    };
    for (const Case& asked : std::initializer_list<Case>{
             {FileNameMode::Open, "Open", "/a/b.WSP", "b.WSP", "WSP"},
             {FileNameMode::Save, "Save", "/a.b/c", "c", ""},
             {FileNameMode::SaveAs, "Save As", "/a/b.c.svr", "b.c.svr", "svr"},
             {FileNameMode::Import, "Import", "/a/b.", "b.", ""},
             {FileNameMode::Export, "Export", "b.txt", "b.txt", "txt"},
         }) {
        SCOPED_TRACE(asked.Title);
        ChosenFile chosen;
        chosen.Title = "begin.txt";
        chosen.Extension = "dxf";
        WillChoose(asked.Path);
        EXPECT_TRUE(m_main.GetFileName(asked.Mode, "All|*.*", "/start", chosen, false));
        const FileNameRequest& request = m_windowSystem.Requests.back();
        EXPECT_EQ(request.Title, asked.Title);
        EXPECT_EQ(request.Filter, "All|*.*");
        EXPECT_EQ(request.StartFolder, "/start");
        EXPECT_EQ(request.InitialName, "begin.txt");
        EXPECT_EQ(request.Extension, "dxf");
        EXPECT_EQ(chosen.Path, asked.Path);
        EXPECT_EQ(chosen.Title, asked.Name);
        EXPECT_EQ(chosen.Extension, asked.Extension);
        EXPECT_EQ(chosen.FilterIndex, 2);
    }
    ChosenFile chosen;
    WillChoose("");
    EXPECT_FALSE(m_main.GetFileName(FileNameMode::Open, "", "", chosen, false));
    EXPECT_FALSE(m_main.GetFileName(FileNameMode::Open, "", "", chosen, false)) << "cancelled";
    EXPECT_THAT(m_box.Shown, IsEmpty());
}

TEST_F(frmMainFilesTest, ADialogThatFailsIsToldUnlessItIsToBeQuiet) {
    BrokenDialog dialog;
    WindowSystem windows{dialog,         m_windowSystem, m_windowSystem,       m_windowSystem,
                         m_windowSystem, m_windowSystem, m_windowSystem.Pages, {}};
    Desk desk{m_program, m_files, m_messages, m_process, windows, MLibHelp(m_windows.Help),
              &m_store};
    frmMain main(desk);
    ChosenFile chosen;
    EXPECT_FALSE(main.GetFileName(FileNameMode::Open, "", "", chosen, true));
    EXPECT_THAT(Prompts(), IsEmpty());
    EXPECT_FALSE(main.GetFileName(FileNameMode::Open, "", "", chosen, false));
    main.Execute(mcOpen, 0);
    const std::string told =
        "There was an error getting the file name.\r\n\r\nError was: No dialog";
    EXPECT_THAT(Prompts(), ElementsAre(told, told));
}

TEST_F(frmMainFilesTest, RecentFilesAreThoseOpenedAndSaved) {
    EXPECT_THAT(RecentFiles(), IsEmpty());
    Open(SampleBytes(), "/cars/a.WSP");
    Open(SampleBytes("saloon-front-strut.WSP"), "/cars/b.WSP");
    Open("no document", "/cars/bad.WSP");
    EXPECT_THAT(RecentFiles(), ElementsAre("&1  /cars/b.WSP", "&2  /cars/a.WSP"));
    m_main.Execute(m_main.mnuFMRU.at(2));
    EXPECT_EQ(m_program.DocumentPath, "/cars/a.WSP");
    EXPECT_EQ(m_document.Data.SpringMechanism, smOutboardToLowerWishbone);
    m_main.FileSave("/cars/c.txt");
    EXPECT_THAT(RecentFiles(),
                ElementsAre("&1  /cars/c.WSP", "&2  /cars/a.WSP", "&3  /cars/b.WSP"));
    EXPECT_EQ(m_store.Read("MRU", "Count", "none"), "none") << "kept until the window closes";
    m_main.IsOpen = true;
    m_main.Unload();
    EXPECT_FALSE(m_main.IsOpen);
    EXPECT_EQ(m_store.Read("MRU", "Count", ""), "3");
    EXPECT_EQ(m_store.Read("MRU", "File1", ""), "/cars/c.WSP");
    StartAgain()->Execute(mcRecentFile, 3);
    EXPECT_EQ(m_program.DocumentPath, "/cars/b.WSP");
    EXPECT_THAT(m_box.Prompts(), IsEmpty());
}

TEST_F(frmMainFilesTest, TheDocumentIsModifiedFromAChangeUntilItIsSaved) {
    Open(SampleBytes());
    EXPECT_FALSE(m_program.Modified);
    m_main.Execute(mcProperties, 0);
    m_main.EditGeometry->cmdOK_Click();
    EXPECT_FALSE(m_program.Modified) << "nothing was typed";
    Edit("3");
    EXPECT_TRUE(m_program.Modified);
    m_main.Execute(mcOptions, 0);
    m_main.OptionsDialog->cmdOK_Click();
    EXPECT_TRUE(m_program.Modified);
    m_files.RefuseFolder("/cars");
    m_main.Execute(mcSave, 0);
    EXPECT_TRUE(m_program.Modified) << "nothing was saved";
    EXPECT_EQ(SavedX("/recovery/1.WSP"), "3");
    m_files.PutFolder("/race");
    m_main.FileSave("/race/front.WSP");
    EXPECT_FALSE(m_program.Modified);
    EXPECT_FALSE(m_files.FileExists("/recovery/1.WSP"));
}

TEST_F(frmMainFilesTest, ClosingAsksAboutWhatWouldBeLost) {
    struct Case {
        const char* What;
        bool Applied;   ///< a change is in the document
        bool Typed;     ///< a change is in the editor alone
        int Answer;     ///< none when nothing is asked
        bool DiskFails; ///< of the folder of the document
        bool Closes;
        std::string Saved; ///< what the file holds then
    };
    for (const Case& close : std::initializer_list<Case>{
             {"nothing to lose", false, false, maNone, false, true, "0"},
             {"cancelled", true, false, maCancel, false, false, "0"},
             {"not saved", true, false, maNo, false, true, "0"},
             {"saved", true, false, maYes, false, true, "3"},
             {"typed alone, cancelled", false, true, maCancel, false, false, "0"},
             {"typed alone, saved", false, true, maYes, false, true, "4"},
             {"typed on top, saved", true, true, maYes, false, true, "4"},
             {"typed, not saved", true, true, maNo, false, true, "0"},
             {"the disk fails", true, false, maYes, true, false, "0"},
         }) {
        SCOPED_TRACE(close.What);
        Open(Changed("ptWTCP", "[ptWTCP]\t0\t750\t0"), close.DiskFails ? "/full/f.WSP" : Path);
        if (close.Applied) {
            Edit("3");
        }
        if (close.Typed) {
            TypeInEditor("4");
        }
        if (close.DiskFails) {
            m_files.RefuseFolder("/full");
        }
        m_box.Shown.clear();
        m_box.Answers = {};
        if (close.Answer != maNone) {
            m_box.Answers = {close.Answer};
        }
        EXPECT_EQ(m_main.QueryUnload(), close.Closes);
        ASSERT_EQ(m_box.Shown.size(), (close.Answer == maNone ? 0U : 1U) + close.DiskFails);
        if (close.Answer != maNone) {
            EXPECT_EQ(m_box.Shown[0].Prompt, "Save changes?");
            EXPECT_EQ(m_box.Shown[0].Style, msYesNoCancel + msExclamation);
        }
        EXPECT_EQ(SavedX(m_program.DocumentPath), close.Saved);
        EXPECT_EQ(m_files.FileExists("/recovery/1.WSP"), close.Applied && !close.Closes);
        m_main.Recovery.Drop();
        m_program.Modified = false;
        m_main.ResetEditDialog();
    }
}

TEST_F(frmMainFilesTest, ClosingStaysWhenWhatIsTypedCannotBeTakenOrTheNameIsNotGiven) {
    Open(SampleBytes());
    TypeInEditor("wide");
    m_box.Answers = {maYes};
    EXPECT_FALSE(m_main.QueryUnload());
    EXPECT_TRUE(m_main.EditGeometry->IsOpen);
    EXPECT_EQ(m_files.Bytes(Path), SampleBytes());
    m_main.ResetEditDialog();
    Edit("3");
    m_program.DocumentPath.clear();
    m_box.Answers = {maYes}; // and then the file dialog is cancelled
    EXPECT_FALSE(m_main.QueryUnload());
    EXPECT_EQ(m_windowSystem.Requests.size(), 1U);
}

TEST_F(frmMainFilesTest, WhatIsTypedAndNotAppliedIsAskedAboutBeforeItGoes) {
    const std::string question =
        "Suspension Properties holds changes that are not applied.\rDiscard them?";
    Open(SampleBytes());
    TypeInEditor("4");
    const auto openOther = [this](int answer) {
        m_box.Answers = {answer};
        return Open(SampleBytes("saloon-front-strut.WSP"), "/cars/b.WSP");
    };
    EXPECT_THAT(openOther(maNo), ElementsAre(question));
    EXPECT_EQ(m_program.DocumentPath, Path);
    ASSERT_NE(m_main.OpenedEditor(), nullptr);
    EXPECT_TRUE(m_main.OpenedEditor()->HasUnappliedChanges());

    m_main.Execute(mcOptions, 0);
    m_box.Answers = {maNo};
    m_main.OptionsDialog->cmdOK_Click();
    EXPECT_THAT(m_box.Prompts(), ElementsAre(question, question));
    EXPECT_TRUE(m_main.OptionsDialog->IsOpen && m_main.OpenedEditor() != nullptr);
    m_main.OptionsDialog->Close();

    EXPECT_THAT(openOther(maYes), ElementsAre(question));
    EXPECT_EQ(m_program.DocumentPath, "/cars/b.WSP");
    EXPECT_EQ(m_main.OpenedEditor(), nullptr);
}

TEST_F(frmMainFilesTest, UnsavedWorkThatMakesRoomIsKeptAndSaysSo) {
    Open(SampleBytes());
    Edit("3");
    EXPECT_THAT(Open(SampleBytes("saloon-front-strut.WSP"), "/cars/b.WSP"), IsEmpty());
    EXPECT_FALSE(m_program.Modified);
    EXPECT_EQ(m_main.stbMain.Note, "Unsaved changes were kept and are offered at the next start");
    EXPECT_EQ(SavedX("/recovery/1.WSP"), "3");
    EXPECT_EQ(m_files.Bytes("/recovery/1.txt"), Path);

    // A change that no calculation has seen yet is kept as well.
    Edit("5");
    m_program.Document.StaticPoints()[ptWTCP].X = 6;
    Open(SampleBytes());
    EXPECT_EQ(SavedX("/recovery/2.WSP"), "6");

    // Without a copy nothing is lost unasked.
    Edit("7");
    m_files.RefuseFolder("/recovery");
    EXPECT_THAT(Open(SampleBytes("saloon-front-strut.WSP"), "/cars/b.WSP"), ElementsAre(Discard));
    EXPECT_EQ(m_program.DocumentPath, Path);
    EXPECT_TRUE(m_program.Modified);
    EXPECT_EQ(m_document.StaticPoints()[ptWTCP].X, 7);
    m_box.Answers = {maYes};
    Open(SampleBytes("saloon-front-strut.WSP"), "/cars/b.WSP");
    EXPECT_EQ(m_program.DocumentPath, "/cars/b.WSP");
    EXPECT_EQ(m_main.stbMain.Note, "");
}

TEST_F(frmMainFilesTest, WorkOfARunThatDidNotEndWellIsOffered) {
    Open(SampleBytes());
    Edit("3");
    struct Case {
        int Answer;
        bool Opens;
        bool StaysForTheNextStart;
    };
    for (const Case& offer :
         {Case{maCancel, false, true}, Case{maYes, true, true}, Case{maNo, false, false}}) {
        SCOPED_TRACE(offer.Answer);
        const std::unique_ptr<frmMain> main = StartAgain();
        m_box.Answers = {offer.Answer};
        main->OfferRecovery();
        EXPECT_THAT(m_box.Prompts(), ElementsAre(Offer));
        EXPECT_EQ(m_program.Modified, offer.Opens);
        EXPECT_EQ(m_program.DocumentPath, offer.Opens ? Path : "");
        EXPECT_EQ(m_document.StaticPoints()[ptWTCP].X, offer.Opens ? 3 : 0);
        EXPECT_EQ(m_settings.View, offer.Opens ? vwCoordinates : vwNone);
        EXPECT_EQ(m_files.FileExists("/recovery/1.WSP"), offer.StaysForTheNextStart);
        EXPECT_EQ(m_files.Bytes(Path), SampleBytes()) << "the user's file is not touched";
    }
    const std::unique_ptr<frmMain> main = StartAgain();
    main->OfferRecovery();
    EXPECT_THAT(m_box.Prompts(), IsEmpty());

    // A copy that can't be read is told and kept.
    m_files.Put("/recovery/1.WSP", Changed("SpringMechanism", "[SpringMechanism]\t12"));
    m_box.Answers = {maYes};
    main->OfferRecovery();
    EXPECT_THAT(m_box.Prompts(),
                ElementsAre(StartsWith("There are unsaved changes to a new "
                                       "suspension from an earlier run."),
                            HasSubstr("There was an error while processing file")));
    EXPECT_FALSE(m_program.Modified);
    EXPECT_TRUE(main->panStart.Visible);
    EXPECT_TRUE(m_files.FileExists("/recovery/1.WSP"));
}

} // namespace
} // namespace corvanta::test
