// The file commands of the main window, and what becomes of unsaved work.

#include "model/Failure.h"
#include "tests/support/MainFormTest.h"
#include "tests/support/Testing.h"

#include <stdexcept>

namespace corvanta::test {
namespace {

const std::string Discard = "Discard any current data?";
const std::string ByAnother = "front.WSP was changed by another program";

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
        main->Files.Recovery.SetFolder("/recovery/");
        main->RefreshGUI(false);
        return main;
    }
};

TEST_F(frmMainFilesTest, NewAsksAndStartsAnEmptyDocumentInTheEditor) {
    m_main.Execute(mcNew, 0);
    EXPECT_TRUE(m_main.EditGeometry->IsOpen);
    EXPECT_THAT(Prompts(), IsEmpty()) << "there is nothing to lose";
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
    EXPECT_TRUE(m_main.panStart.Visible && !m_main.grdDisplay.Visible);
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

TEST_F(frmMainFilesTest, ASampleIsOpenedAsAnUntitledCopyAndNeverWrittenOver) {
    const std::string sample = "/opt/share/corvanta/samples/published/roadster.WSP";
    EXPECT_FALSE(m_main.Files.HasSamples());
    m_files.PutFolder("/opt/share/corvanta/samples"); // as installed
    m_program.Options.LastFolder = "/cars/";
    m_files.Put(sample, SampleBytes());
    EXPECT_TRUE(m_main.Files.HasSamples());
    WillChoose(sample);
    m_main.OpenSample();
    EXPECT_EQ(m_windowSystem.Requests.at(0).StartFolder, "/opt/share/corvanta/samples");
    EXPECT_TRUE(m_windowSystem.Requests[0].Passing);
    EXPECT_TRUE(m_document.ResultsValid);
    EXPECT_EQ(m_program.DocumentPath + m_program.FileMark, "");
    EXPECT_EQ(m_main.stbMain.Document, "New suspension");
    EXPECT_EQ(m_program.Options.LastFolder, "/cars/");
    EXPECT_THAT(RecentFiles(), IsEmpty());

    Edit("3");
    m_files.PutFolder("/cars");
    WillChoose(sample); // by hand all the same
    m_main.Execute(mcSave, 0);
    EXPECT_THAT(Prompts(), ElementsAre(HasSubstr("The samples stay as they came")));
    EXPECT_EQ(m_windowSystem.Requests.at(1).StartFolder, "/cars/");
    EXPECT_FALSE(m_windowSystem.Requests[1].Passing);
    WillChoose("/cars/mine");
    m_main.Execute(mcSave, 0);
    EXPECT_EQ(SavedX("/cars/mine.WSP"), "3");
    EXPECT_EQ(m_files.Bytes(sample), SampleBytes());

    m_main.FileOpen(sample); // a batch run names its input in what it writes
    EXPECT_EQ(m_program.DocumentPath, sample);
}

TEST_F(frmMainFilesTest, SaveGoesToTheDocumentsFileOrAsks) {
    Open(SampleBytes());
    Edit("3");
    m_main.Execute(mcSave, 0);
    EXPECT_EQ(SavedX(Path), "3");
    EXPECT_FALSE(m_program.Modified);
    EXPECT_THAT(m_windowSystem.Requests, IsEmpty());

    WillChoose("/race/rear.v2");
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

    // After a failed open neither the old file nor its name is at hand for what comes then.
    Open("no document", "/cars/bad.WSP");
    EXPECT_EQ(m_main.Caption, "Corvanta 5.4.5");
    EXPECT_EQ(m_program.DocumentPath, "/race/rear.v2.WSP");
    m_main.Execute(mcProperties, 0);
    m_main.EditGeometry->cmdOK_Click();
    m_main.Execute(mcSave, 0);
    ASSERT_EQ(m_windowSystem.Requests.size(), 2U);
    EXPECT_EQ(m_windowSystem.Requests[1].InitialName, "");
    EXPECT_EQ(SavedX("/race/rear.v2.WSP"), "3");
    EXPECT_EQ(m_program.DocumentPath, "");
}

TEST_F(frmMainFilesTest, SaveWritesUnderTheDocumentsOwnNameAndOverNoOtherFile) {
    struct Case {
        std::string Opened;
        std::string Saved;   ///< by Save, the name that is offered taken
        std::string Offered; ///< none where nothing is asked
    };
    for (const Case& name :
         {Case{"/cars/car.wsp", "/cars/car.wsp", ""}, Case{"/cars/car.WsP", "/cars/car.WsP", ""},
          Case{"/cars/car.bak", "/cars/car.WSP", "car.WSP"},
          Case{"/cars/desc.v1.s36", "/cars/desc.v1.WSP", "desc.v1.WSP"}}) {
        SCOPED_TRACE(name.Opened);
        m_windowSystem.Requests.clear();
        Open(SampleBytes(), name.Opened);
        Edit("3");
        m_files.Put("/cars/car.WSP", "another");
        m_main.Execute(mcSave, 0); // the dialog, if any, is cancelled
        EXPECT_EQ(m_files.Bytes("/cars/car.WSP"), "another");
        if (!name.Offered.empty()) {
            EXPECT_EQ(m_windowSystem.Requests.at(0).InitialName, name.Offered);
            WillChoose("/cars/" + name.Offered);
            m_main.Execute(mcSave, 0);
        }
        EXPECT_EQ(SavedX(name.Saved), "3");
        EXPECT_EQ(m_program.DocumentPath, name.Saved);
        EXPECT_THAT(Prompts(), IsEmpty());
    }
}

TEST_F(frmMainFilesTest, AFailedSaveAsKeepsTheDocumentsNameAndTheRecentFiles) {
    Open(SampleBytes());
    Edit("3");
    m_files.RefuseFolder("/race");
    WillChoose("/race/rear.WSP");
    m_main.Execute(mcSaveAs, 0);
    EXPECT_THAT(Prompts(), ElementsAre(HasSubstr("Permission denied")));
    EXPECT_EQ(m_program.DocumentPath, Path);
    EXPECT_EQ(m_program.Options.LastFolder, "/cars/");
    EXPECT_TRUE(m_program.Modified);
    EXPECT_THAT(RecentFiles(), ElementsAre("&1  /cars/front.WSP"));
}

TEST_F(frmMainFilesTest, AFileThatAnotherProgramChangedIsNotOverwrittenUnasked) {
    enum { Overwrite, UnderAnotherName, Reload };
    const std::string other = Changed("ptWTCP", "[ptWTCP]\t9\t750\t0");
    const auto saveWith = [&](std::deque<int> answers) {
        Open(SampleBytes());
        Edit("3");
        m_files.Put(Path, other);
        m_box.Answers = std::move(answers);
        m_main.Execute(mcSave, 0);
        EXPECT_THAT(Prompts(), ElementsAre(StartsWith(ByAnother)));
    };
    saveWith({}); // cancelled
    EXPECT_EQ(m_files.Bytes(Path), other);
    EXPECT_TRUE(m_program.Modified);
    EXPECT_THAT(m_box.Ways, ElementsAre("&Overwrite", "Save &As...", "&Reload"));

    WillChoose("/cars/mine");
    saveWith({UnderAnotherName});
    EXPECT_EQ(m_files.Bytes(Path), other);
    EXPECT_EQ(SavedX("/cars/mine.WSP"), "3");

    saveWith({Reload});
    EXPECT_EQ(m_document.StaticPoints()[ptWTCP].X, 9);
    EXPECT_FALSE(m_program.Modified);
    EXPECT_EQ(m_main.Files.Recovery.List().size(), 2U) << "what was typed here can be recovered";

    saveWith({Overwrite});
    EXPECT_EQ(SavedX(Path), "3");
    Edit("4"); // what it wrote itself is no change by another
    m_main.Execute(mcSave, 0);
    m_files.DeleteFile(Path); // nor is a file that is gone
    m_main.Execute(mcSave, 0);
    EXPECT_EQ(SavedX(Path), "4");
    EXPECT_THAT(Prompts(), IsEmpty());
}

TEST_F(frmMainFilesTest, AChangedFileIsOfferedOnceWhenTheWindowBecomesActive) {
    m_main.Activated(); // with no document
    Open(SampleBytes());
    m_main.Activated();
    EXPECT_THAT(Prompts(), IsEmpty());
    for (const char* x : {"5", "6"}) {
        m_files.Put(Path, Changed("ptWTCP", std::string("[ptWTCP]\t") + x));
        m_main.Activated(); // declined
        m_main.Activated();
        EXPECT_THAT(Prompts(), ElementsAre(ByAnother + ". Reload it?")) << "once for every change";
    }
    EXPECT_NE(m_document.StaticPoints()[ptWTCP].X, 6);
    m_files.Put(Path, Changed("ptWTCP", "[ptWTCP]\t7\t750\t0"));
    Edit("3");
    m_box.Answers = {0};
    m_main.Activated();
    EXPECT_THAT(Prompts(), ElementsAre(HasSubstr("kept under Recover Unsaved Work")));
    EXPECT_EQ(m_document.StaticPoints()[ptWTCP].X, 7);
    EXPECT_EQ(m_main.Files.Recovery.List().size(), 1U);
    m_files.DeleteFile(Path);
    m_main.Activated();
    EXPECT_THAT(Prompts(), IsEmpty());
}

TEST_F(frmMainFilesTest, SaveAppliesWhatIsTypedAndStopsWhenThatFails) {
    Open(SampleBytes());
    TypeInEditor("4");
    m_main.Execute(mcSave, 0);
    EXPECT_EQ(SavedX(Path), "4");
    EXPECT_TRUE(m_main.EditGeometry->IsOpen);
    EXPECT_EQ(m_main.stbMain.Note, "front.WSP saved");
    TypeInEditor("wide");
    m_main.EditGeometry->Raise = false;
    WillChoose("/cars/other.WSP");
    for (const int command : {mcSave, mcSaveAs}) {
        m_main.Execute(command, 0);
        EXPECT_THAT(Prompts(), ElementsAre(HasSubstr("wide")));
        EXPECT_TRUE(m_main.EditGeometry->Raise) << "its fault is to be seen";
    }
    EXPECT_THAT(m_windowSystem.Requests, IsEmpty());
    EXPECT_EQ(SavedX(Path), "4");
}

TEST_F(frmMainFilesTest, TextThatAFileCannotKeepIsToldBeforeItIsLost) {
    Open(SampleBytes());
    m_document.Data.Description = "Lap 3 [wet] tyres";
    const std::string before = *m_files.Bytes(Path);
    m_main.Execute(mcSave, 0); // declined
    EXPECT_THAT(Prompts(), ElementsAre(HasSubstr("This would be lost:\r\r[wet] tyres\r\r")));
    EXPECT_EQ(m_files.Bytes(Path), before);
    m_box.Answers = {maYes};
    m_main.Execute(mcSave, 0);
    m_main.Execute(mcSave, 0); // agreed to already
    EXPECT_EQ(Prompts().size(), 1U);
    EXPECT_NE(m_files.Bytes(Path), before);
}

TEST_F(frmMainFilesTest, AFileThatTheDialogDidNotAskAboutIsNotOverwrittenUnasked) {
    Open(SampleBytes());
    m_files.Put("/cars/rear.WSP", "old");
    for (const char* typed : {"/cars/rear", "/cars/rear.wsp", "/cars/rear.Wsp"}) {
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
}

TEST_F(frmMainFilesTest, GetFileNameTellsPathNameAndExtension) {
    for (const auto& [path, name] : {std::pair("/a/b.WSP", "b.WSP|WSP"),
                                     {"/a.b/c", "c|"},
                                     {"/a/b.c.d", "b.c.d|d"},
                                     {"/a/b.", "b.|"},
                                     {"b.txt", "b.txt|txt"}}) {
        ChosenFile chosen{"", "begin.txt", "dxf"};
        WillChoose(path);
        EXPECT_TRUE(m_main.GetFileName(FileNameMode::SaveAs, "All|*.*", "/start", chosen, false));
        const FileNameRequest& request = m_windowSystem.Requests.back();
        EXPECT_EQ(request.Title + request.Filter + request.StartFolder, "Save AsAll|*.*/start");
        EXPECT_EQ(request.InitialName + request.Extension, "begin.txtdxf");
        EXPECT_EQ(chosen.Path, path);
        EXPECT_EQ(chosen.Title + "|" + chosen.Extension, name);
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
    Desk desk{
        m_program, m_current, m_files, m_messages, m_process, windows, MLibHelp(m_windows.Help),
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
    m_main.FileSave("/cars/c.wsp");
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

    // A file that is gone costs neither the document nor, unasked, its entry.
    m_files.DeleteFile("/cars/c.WSP");
    const std::unique_ptr<frmMain> main = StartAgain();
    main->FileOpen("/cars/a.WSP");
    m_box.Answers = {maNo, maYes};
    for (const std::size_t left : {3U, 2U}) {
        main->Execute(mcRecentFile, 2);
        EXPECT_THAT(m_box.Prompts().back(), StartsWith("There is no file /cars/c.WSP any more."));
        const auto visible = [](const MenuItem& item) {
            return item.Visible && item.Caption != "-";
        };
        EXPECT_EQ(std::count_if(main->mnuFMRU.begin(), main->mnuFMRU.end(), visible), left);
    }
    EXPECT_EQ(m_program.DocumentPath, "/cars/a.WSP");
    EXPECT_EQ(main->mnuFMRU.at(2).ToolTip, "/cars/b.WSP");
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
        m_main.Files.Recovery.Drop();
        m_program.Modified = false;
        m_main.ResetEditDialog();
    }
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
    EXPECT_EQ(m_main.stbMain.Note,
              "Unsaved changes were kept: see Recover Unsaved Work in the File menu");
    EXPECT_EQ(SavedX("/recovery/1.WSP"), "3");
    EXPECT_THAT(m_files.Bytes("/recovery/1.txt").value(), StartsWith(Path + "\n"));

    // A change that no calculation has seen yet is kept as well.
    Edit("5");
    m_program.Document.StaticPoints()[ptWTCP].X = 6;
    Open(SampleBytes());
    EXPECT_EQ(SavedX("/recovery/2.WSP"), "6");

    // Without a copy nothing is lost unasked.
    m_files.RefuseFolder("/recovery");
    Edit("7");
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
    Open(SampleBytes("saloon-front-strut.WSP"), "/cars/b.WSP");
    Edit("5");
    m_files.Put("/recovery/9.WSP", Changed("SpringMechanism", "[SpringMechanism]\t12"));
    const std::unique_ptr<frmMain> main = StartAgain();
    const auto offer = [&]() -> frmRecovery& {
        main->OfferRecovery(true);
        return *main->RecoveryDialog;
    };
    const auto names = [](const frmRecovery& dialog) {
        std::vector<std::string> shown;
        for (const frmRecovery::Row& row : dialog.Rows) {
            shown.push_back(row.Folder + row.Name);
        }
        return shown;
    };
    EXPECT_THAT(names(offer()), ElementsAre("/cars/b.WSP", Path, "New suspension"));
    EXPECT_THAT(main->RecoveryDialog->Rows[0].Time, StartsWith("moment "));
    main->RecoveryDialog->cmdLater_Click();
    EXPECT_FALSE(m_document.DataLoaded || main->RecoveryDialog->IsOpen);

    // Delete asks, and takes the chosen one alone. A copy that can't be read is told and stays.
    frmRecovery& dialog = offer();
    dialog.Selected = 0;
    m_box.Answers = {maNo, maYes};
    dialog.cmdDelete_Click();
    EXPECT_EQ(dialog.Rows.size(), 3U);
    dialog.cmdDelete_Click();
    EXPECT_THAT(names(dialog), ElementsAre(Path, "New suspension"));
    EXPECT_THAT(Prompts().back(), StartsWith("Delete the unsaved work on b.WSP of moment "));
    dialog.Selected = 1;
    dialog.cmdOpen_Click();
    EXPECT_THAT(Prompts(), ElementsAre(HasSubstr("There was an error while processing file")));
    EXPECT_TRUE(main->panStart.Visible && m_files.FileExists("/recovery/9.WSP"));
    EXPECT_THAT(names(offer()), ElementsAre(Path, "New suspension")) << "no place of this run";
    m_files.DeleteFile("/recovery/9.WSP");

    // What is opened is of its file as that was then; what it makes room for comes at once.
    offer().cmdOpen_Click();
    EXPECT_EQ(m_document.StaticPoints()[ptWTCP].X, 3);
    EXPECT_TRUE(m_program.Modified);
    EXPECT_EQ(m_program.DocumentPath, Path);
    EXPECT_EQ(m_settings.View, vwCoordinates);
    EXPECT_EQ(m_files.Bytes(Path), SampleBytes()) << "the user's file is not touched";
    main->OfferRecovery();
    EXPECT_FALSE(main->RecoveryDialog->IsOpen) << "it is in hand";
    main->FileOpen("/cars/b.WSP");
    EXPECT_THAT(names(offer()), ElementsAre(Path));
    m_files.Put(Path, "changed meanwhile");
    main->RecoveryDialog->cmdOpen_Click();
    main->Execute(mcSave, 0); // cancelled
    EXPECT_THAT(Prompts(), ElementsAre(StartsWith(ByAnother)));
    main->Files.Recovery.Drop();
    main->Execute(mcRecover, 0);
    EXPECT_THAT(Prompts(), ElementsAre("There is no unsaved work to recover."));
}

} // namespace
} // namespace corvanta::test
