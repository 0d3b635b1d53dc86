// The start and the end of the program as its user sees them.

#include "frame/MSusp.h"

#include "platform/DiskFileServices.h"
#include "study/StudyFile.h"
#include "tests/support/FakeProcessServices.h"
#include "tests/support/FakeWindowSystem.h"
#include "tests/support/MemoryFileServices.h"
#include "tests/support/RecordingMessageBox.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <algorithm>

namespace corvanta::test {
namespace {

const std::string Base = "/home/user/.config/Pewter Lantern/Corvanta/";
const std::string Ini = Base + "Corvanta.ini";
const std::string ChannelsList = Base + "Settings/customchannels.txt";
const std::string ViewsList = Base + "Settings/exporttables.txt";
const std::string Document = "/cars/front.WSP";

/// A machine with a screen. It writes down what stands on the screen whenever that is brought up to
/// date, and what stands there while a message waits.
class ApplicationWindowTest : public testing::Test, public ScreenUpdate, public MessageBox {
  protected:
    ApplicationWindowTest() {
        m_files.Put(Document,
                    DiskFileServices().ReadBytes(SamplePath("touring-front-wishbone.WSP")));
        m_files.PutFolder("/out");
    }

    Application& NewApplication() {
        Seen.clear();
        m_windows.Locked.clear(); // a program before it is gone
        m_application = std::make_unique<Application>(m_files, *this, m_process, m_services);
        return *m_application;
    }
    Application& Started(const std::string& keys = "") {
        m_process.Called = {keys};
        Application& application = NewApplication();
        static_cast<void>(application.AppStart());
        return application;
    }

    /// A line of the settings.
    [[nodiscard]] static std::string Setting(const std::string& line) { return "\n" + line + "\n"; }

    std::vector<std::string> Seen; ///< the screen, and messages on it
    MemoryFileServices m_files;
    RecordingMessageBox m_box;
    FakeProcessServices m_process;
    FakeWindowSystem m_windows;
    WindowSystem m_services{m_windows, m_windows, m_windows,       m_windows,
                            m_windows, *this,     m_windows.Pages, FakeWindowSystem::Screen};
    std::unique_ptr<Application> m_application;

  private:
    [[nodiscard]] std::string Screen() {
        const frmMain& main = m_application->MainWindow();
        std::string screen = main.About.IsOpen ? "splash " : "";
        screen += main.IsOpen ? "main " + std::to_string(main.tbrMain.size()) + " buttons " : "";
        return screen + (m_windows.Current() == HourglassCursor ? "waiting" : "");
    }
    void Update() override { Seen.push_back(Screen()); }
    int Show(const std::string& prompt, int style, const std::string& title) override {
        Seen.push_back("message over " + (Seen.empty() ? std::string("nothing") : Seen.back()));
        return m_box.Show(prompt, style, title);
    }
};

TEST_F(ApplicationWindowTest, TheSplashStandsFirstAndTheWindowComesWhenItIsWhole) {
    Application& application = Started("front.WSP");
    EXPECT_THAT(Seen, ElementsAre("splash ", "splash main 18 buttons waiting"));
    EXPECT_EQ(m_windows.Current(), DefaultCursor);
    frmMain& main = application.MainWindow();
    EXPECT_EQ(main.Caption, "Corvanta 5.4.5");
    EXPECT_TRUE(main.panStart.Visible);
    EXPECT_TRUE(main.chk3dDrawAxes.Checked && main.chk3dAutoScale.Checked);
    EXPECT_TRUE(main.About.IsSplash);
    EXPECT_EQ(main.About.Version, "5.4.5");
    main.Execute(mcHelpTopics, 0);
    EXPECT_EQ(m_windows.HelpFile, "/opt/corvanta/susp.chm");

    main.TakeDownSplash(); // a click on it, or its time is over
    EXPECT_FALSE(main.About.IsOpen);
    main.TakeDownSplash();
    EXPECT_THAT(m_box.Shown, IsEmpty());
}

TEST_F(ApplicationWindowTest, AMessageNeverWaitsBelowTheSplash) {
    Application& application = Started();
    application.MessageService().ShowMessage("first");
    application.MessageService().ShowMessage("second");
    EXPECT_THAT(Seen, ElementsAre("splash ", "splash main 18 buttons waiting", "main 18 buttons ",
                                  "message over main 18 buttons ",
                                  "message over message over main 18 buttons "));
    EXPECT_FALSE(application.MainWindow().About.IsOpen);

    // The same in a start that fails.
    m_files.Put(Ini, "[Options]\nBump=much\n");
    EXPECT_EQ(NewApplication().AppStart(), StartResult::Ended);
    EXPECT_THAT(Seen, ElementsAre("splash ", "", "message over "));
    EXPECT_EQ(m_windows.Current(), DefaultCursor);
    EXPECT_FALSE(m_application->MainWindow().IsOpen);

    // A list of recent files that is damaged is told before there is a splash.
    m_files.Put(Ini, "[MRU]\nCount=many\n");
    EXPECT_EQ(NewApplication().AppStart(), StartResult::Interactive);
    EXPECT_THAT(Seen,
                ElementsAre("message over nothing", "splash ", "splash main 18 buttons waiting"));
    EXPECT_THAT(m_box.Prompts().back(), StartsWith("There was an error while initialising"));
}

TEST_F(ApplicationWindowTest, ABatchRunShowsItselfUnlessItIsToldNotTo) {
    const std::string keys = "/input=cars\\front.WSP /output=out\\r.txt /type=2 /table=10";
    Started(keys);
    EXPECT_THAT(Seen, ElementsAre("splash ", "splash main 18 buttons waiting"));
    EXPECT_FALSE(m_application->MainWindow().IsOpen) << "it closes by itself";
    EXPECT_TRUE(m_files.FileExists("/out/r.txt"));
    EXPECT_THAT(*m_files.Bytes(Ini), HasSubstr("File1=" + Document));
    Started(keys + " /nogui");
    EXPECT_THAT(Seen, IsEmpty());
    EXPECT_FALSE(m_application->MainWindow().About.IsOpen);
}

TEST_F(ApplicationWindowTest, TheWindowComesUpAsItWasLeft) {
    frmMain& main = Started().MainWindow();
    EXPECT_FALSE(main.Frame.IsPlaced || main.Frame.IsMaximised);
    main.FileOpen(Document);
    main.Execute(mcView, vwPlot);
    main.cboType.Select(6);
    main.cboType_Changed();
    main.optRack_Click();
    main.Execute(mcView, vwLateralGeometry);
    EXPECT_TRUE(m_application->CloseMainWindow());
    const auto comesUp = [&](std::int32_t view, std::int32_t variable, std::int32_t channel) {
        frmMain& next = m_application->MainWindow();
        next.FileOpen(Document);
        const ViewSettings& shown = m_application->Data().Settings;
        EXPECT_EQ(shown.View, view);
        EXPECT_EQ(shown.ViewVariable, variable);
        next.Execute(mcView, vwPlot);
        EXPECT_EQ(shown.ViewArgument, channel);
    };
    EXPECT_TRUE(Started().MainWindow().Frame.IsPlaced);
    EXPECT_TRUE(m_application->CloseMainWindow()); // with nothing opened, which costs nothing
    Started();
    comesUp(vwLateralGeometry, vvAlongRackTravel, 7);
    m_files.Put(Ini, "[frmMain]\nView=13\nPlotChannel=7\nViewVariable=1\n");
    Started();
    comesUp(vwCoordinates, vvAlongWheelTravel, 1);
    m_files.Put(Ini, "[frmMain]\nView=14\nPlotChannel=900\nViewVariable=x\nMaximised=True\n");
    EXPECT_TRUE(Started().MainWindow().Frame.IsMaximised);
    comesUp(vwPlot, vvAlongWheelTravel, 1);
}

TEST_F(ApplicationWindowTest, ClosingSavesWhatOutlivesTheProgram) {
    Application& application = Started();
    frmMain& main = application.MainWindow();
    main.FileOpen(Document);
    main.chk3dDrawAxes.Checked = false;
    main.chk3dDrawAxes_Click();
    main.Execute(mcOptions, 0);
    main.OptionsDialog->optInches.Selected = true;
    main.OptionsDialog->optMillimetres.Selected = false;
    main.OptionsDialog->cmdOK_Click();
    main.Execute(mcProperties, 0);
    EXPECT_EQ(main.Frame.Placement.Width, 8000);
    main.Frame.Placement = {300, 450, 15000, 9000};
    EXPECT_FALSE(m_files.FileExists(Ini));
    EXPECT_TRUE(application.CloseMainWindow());
    EXPECT_FALSE(main.IsOpen || main.EditGeometry->IsOpen);
    for (const char* line : {"DrawAxes=False", "Displacement=in", "SpringMechanism=2", "Bump=50",
                             "DataDir=/cars/", "MaxCount=4", "Count=1", "[frmEditGeometry]"}) {
        EXPECT_THAT(*m_files.Bytes(Ini), HasSubstr(Setting(line)));
    }
    EXPECT_TRUE(m_files.FileExists(ChannelsList) && m_files.FileExists(ViewsList));

    frmMain& next = Started().MainWindow();
    EXPECT_EQ(next.Frame.Placement, (WindowPlacement{300, 450, 15000, 9000}));
    EXPECT_FALSE(next.chk3dDrawAxes.Checked);
    EXPECT_EQ(next.stbMain.Units, "in  kg  lb/in");
    EXPECT_EQ(next.mnuFMRU.at(1).Caption, "&1  " + Document);
    EXPECT_EQ(m_application->Data().Document.Data.Bump, 50) << "the next new document's start";
    EXPECT_THAT(m_box.Shown, IsEmpty());
}

TEST_F(ApplicationWindowTest, AWindowWithUnsavedChangesStaysOpenWhenItsUserBacksOut) {
    Application& application = Started();
    frmMain& main = application.MainWindow();
    main.FileOpen(Document);
    main.Execute(mcProperties, 0);
    main.EditGeometry->txtBump.Text = "40";
    m_box.Answers = {maCancel};
    EXPECT_FALSE(application.CloseMainWindow());
    EXPECT_TRUE(main.IsOpen && main.EditGeometry->IsOpen);
    EXPECT_FALSE(m_files.FileExists(Ini));
    m_box.Answers = {maYes};
    EXPECT_TRUE(application.CloseMainWindow());
    EXPECT_THAT(*m_files.Bytes(Document), HasSubstr("[Bump]\t40\r\n"));
}

TEST_F(ApplicationWindowTest, AFailureWhileSavingIsToldAndTheWindowCloses) {
    const std::string full = "Error was: No space left on device";
    const std::string settings = "The settings could not be saved.\r" + full;
    const std::vector<std::string> expected{
        "An error occurred while writing file: " + ChannelsList + "\r\n" + full,
        "An error occurred while writing file: " + ViewsList + "\r\n" + full, settings};
    for (int n = 1; n <= 4; ++n) {
        SCOPED_TRACE(n);
        for (const std::string& path : {Ini, ChannelsList, ViewsList}) {
            m_files.Remove(path);
        }
        frmMain& main = Started().MainWindow();
        main.FileOpen(Document);
        m_box.Shown.clear();
        m_files.FailOnChange(n);
        EXPECT_TRUE(m_application->CloseMainWindow());
        EXPECT_FALSE(main.IsOpen);
        EXPECT_THAT(m_box.Prompts(),
                    testing::ElementsAreArray(expected.data() + n - 1, n == 4 ? 0U : 1U));
        // What could be saved is saved.
        EXPECT_EQ(m_files.FileExists(ChannelsList), n != 1);
        EXPECT_EQ(m_files.FileExists(ViewsList), n != 2);
        EXPECT_EQ(m_files.Bytes(Ini).value_or("").find("File1=" + Document) == std::string::npos,
                  n == 3);
    }
}

TEST_F(ApplicationWindowTest, WhatChangedOutlivesACrashAndAnotherProgram) {
    Application& crashing = Started();
    crashing.KeepChanges();
    auto other = std::make_unique<Application>(m_files, m_box, m_process, m_services);
    static_cast<void>(other->AppStart());
    crashing.MainWindow().FileOpen(Document);
    crashing.MainWindow().chk3dDrawAxes.Checked = false;
    crashing.MainWindow().chk3dDrawAxes_Click();
    crashing.KeepChanges();
    const std::size_t changes = m_files.Changes().size();
    crashing.KeepChanges();
    EXPECT_EQ(m_files.Changes().size(), changes) << "nothing changed since";
    EXPECT_TRUE(other->CloseMainWindow()); // which knows nothing of it, and the first ends nowhere
    other.reset();
    for (const std::string line : {"DrawAxes=False", "DataDir=/cars/", "File1=/cars/front.WSP"}) {
        EXPECT_THAT(*m_files.Bytes(Ini), HasSubstr(Setting(line)));
    }
    // What can't be kept is not told at every event, but at the end.
    Application& locked = Started();
    m_files.RefuseFolder(Base);
    locked.MainWindow().chk3dDrawAxes.Checked = true;
    locked.MainWindow().chk3dDrawAxes_Click();
    locked.KeepChanges();
    EXPECT_THAT(m_box.Prompts(), IsEmpty());
    EXPECT_TRUE(locked.CloseMainWindow());
    EXPECT_THAT(m_box.Prompts(), ElementsAre(StartsWith("The settings could not be saved.")));
}

TEST_F(ApplicationWindowTest, UnsavedWorkOutlivesACrash) {
    Application& crashing = Started();
    crashing.Begin();
    crashing.MainWindow().FileOpen(Document);
    crashing.MainWindow().Execute(mcProperties, 0);
    crashing.MainWindow().EditGeometry->txtBump.Text = "40";
    crashing.MainWindow().EditGeometry->cmdOK_Click();
    EXPECT_TRUE(m_files.FileExists(Base + "Recovery/1.WSP"));

    Application& next = Started(); // nothing was closed
    next.Begin();
    EXPECT_FALSE(next.MainWindow().About.IsOpen) << "the list does not wait below the splash";
    ASSERT_EQ(next.MainWindow().RecoveryDialog->Rows.size(), 1U);
    EXPECT_EQ(next.MainWindow().RecoveryDialog->Rows[0].Name, "front.WSP");
    next.MainWindow().RecoveryDialog->cmdOpen_Click();
    EXPECT_EQ(next.Data().Document.Data.Bump, 40);
    EXPECT_TRUE(next.Data().Modified);
}

TEST_F(ApplicationWindowTest, AFileOnTheCommandLineIsOpenedOnceTheWindowIsThere) {
    Application& application = Started(Document);
    EXPECT_FALSE(application.Data().Document.DataLoaded);
    application.Begin();
    EXPECT_EQ(application.Data().DocumentPath, Document);
    EXPECT_TRUE(application.Data().Document.ResultsValid);

    StudyData study;
    study.Document = "front.WSP";
    const std::string path = "/cars/corner.study";
    m_files.Put(path, WriteStudy(study));
    Application& beside = Started(path);
    beside.Begin();
    EXPECT_EQ(beside.Data().DocumentPath, Document);
    EXPECT_EQ(beside.MainWindow().Studies.Path(), path);

    Application& other = Started("/cars/nowhere.WSP");
    other.Begin();
    EXPECT_THAT(m_box.Prompts(),
                ElementsAre(HasSubstr("no file of this name:\r/cars/nowhere.WSP")));
    EXPECT_FALSE(other.Data().Document.DataLoaded);
    EXPECT_TRUE(other.MainWindow().IsOpen);
}

TEST_F(ApplicationWindowTest, TheWorkbenchOpensWhereItIsAskedForWhateverBecomesOfTheFile) {
    const auto begin = [this](std::vector<std::string> arguments) -> frmMain& {
        m_process.Called = std::move(arguments);
        Application& application = NewApplication();
        EXPECT_EQ(application.AppStart(), StartResult::Interactive);
        EXPECT_EQ(application.MainWindow().Workbench.get(), nullptr)
            << "the main window comes first";
        application.Begin();
        return application.MainWindow();
    };
    frmMain& opened = begin({"--workbench", Document});
    ASSERT_TRUE(opened.Workbench.Opened() != nullptr);
    EXPECT_EQ(opened.Workbench->Caption, "front.WSP - Workbench");
    EXPECT_FALSE(opened.Workbench->panEmpty.Visible);
    EXPECT_THAT(m_box.Prompts(), IsEmpty());

    m_files.Put("/cars/damaged.WSP", "no document");
    const std::vector<std::pair<std::vector<std::string>, std::string>> nothings{
        {{"--workbench"}, ""},
        {{"/cars/nowhere.WSP", "--workbench"}, "no file of this name"},
        {{"--workbench", "/cars/damaged.WSP"}, "damaged.WSP"}};
    for (const auto& [arguments, message] : nothings) {
        m_box.Shown.clear();
        frmMain& empty = begin(arguments);
        ASSERT_TRUE(empty.Workbench.Opened() != nullptr);
        EXPECT_TRUE(empty.Workbench->panEmpty.Visible);
        EXPECT_EQ(m_box.Shown.size(), message.empty() ? 0U : 1U);
        EXPECT_THAT(m_box.Prompts(), testing::Each(HasSubstr(message)));
    }
    EXPECT_EQ(begin({Document}).Workbench.get(), nullptr);
}

} // namespace
} // namespace corvanta::test
