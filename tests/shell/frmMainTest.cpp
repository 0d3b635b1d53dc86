#include "shell/frmMain.h"

#include "tests/support/MainFormTest.h"
#include "tests/support/Testing.h"

#include <functional>
#include <random>

namespace corvanta::test {
namespace {

const std::string Refused = "There was an error while processing file\r\rError was: ";
const std::string Named = "\r\rThe file: ";
const std::string NotCalculated = "Calculations could not be completed.\r\r";

/// A message box during which another event of the window comes in.
class InterruptingBox final : public MessageBox {
  public:
    std::function<void()> Event;
    int Shows = 0;

    int Show(const std::string& /*prompt*/, int /*style*/, const std::string& /*title*/) override {
        ++Shows;
        Event();
        return maOK;
    }
};

class frmMainTest : public MainFormTest {
  protected:
    /// Everything of the document is as a reset leaves it, and the program as it was before.
    void ExpectReset(std::int32_t view) const {
        const Suspension& document = m_program.Document;
        EXPECT_FALSE(document.DataLoaded || document.GeometryValid || document.ResultsValid);
        EXPECT_EQ(document.StaticPoints(), PointSet());
        EXPECT_EQ(document.Data.SpringMechanism, smNone);
        EXPECT_EQ(document.Data.CGX, 1750);
        EXPECT_EQ(document.Data.Description, "");
        EXPECT_EQ(m_program.Settings.View, view);
        EXPECT_EQ(m_program.DocumentPath, "/before.WSP");
        EXPECT_EQ(m_program.Options.LastFolder, "/before/");
    }

    /// Opens bytes that may be damaged in any way: either there is a document, or a reason.
    void ExpectDocumentOrReason(const std::string& bytes) {
        const std::vector<std::string> prompts = Open(bytes);
        const auto refusals = std::count_if(prompts.begin(), prompts.end(), [](const auto& text) {
            return text.starts_with(Refused);
        });
        const Suspension& document = m_program.Document;
        ASSERT_EQ(refusals, document.DataLoaded ? 0 : 1);
        if (!document.DataLoaded) {
            ASSERT_EQ(document.StaticPoints(), PointSet());
        } else if (!document.ResultsValid) {
            ASSERT_FALSE(prompts.empty());
            ASSERT_THAT(prompts.back(), StartsWith(NotCalculated));
            ASSERT_EQ(m_program.Settings.View, vwNone);
        } else {
            ASSERT_EQ(m_program.Settings.View, vwCoordinates);
        }
    }
};

TEST_F(frmMainTest, FileOpenShowsTheDocumentAtItsStaticPosition) {
    m_program.Settings.ViewWheel = 3;
    m_program.Settings.ViewRack = 3;
    EXPECT_THAT(Open(SampleBytes()), IsEmpty());
    EXPECT_TRUE(m_program.Document.DataLoaded && m_program.Document.ResultsValid);
    EXPECT_EQ(m_program.DocumentPath, Path);
    EXPECT_EQ(m_program.Options.LastFolder, "/cars/");
    EXPECT_EQ(m_program.Settings.View, vwCoordinates);
    EXPECT_EQ(m_program.Settings.ViewWheel, m_program.Document.StaticWheel);
    EXPECT_EQ(m_program.Settings.ViewRack, m_program.Document.StaticRack);
    EXPECT_THAT(m_main.Grid().Text(),
                HasSubstr("\r\nUpper wishbone outer pickup\t31.60\t714.10\t452.00\r\n"));

    const PointSet points = m_program.Document.StaticPoints();
    std::string comma = SampleBytes().substr(13); // behind "[DEC SEP]\t.\r\n"
    std::replace(comma.begin() + static_cast<std::ptrdiff_t>(comma.find("[Bump]")), comma.end(),
                 '.', ',');
    EXPECT_THAT(Open("[DEC SEP]\t,\r\n" + comma), IsEmpty());
    EXPECT_EQ(m_program.Document.StaticPoints(), points);

    m_program.Settings.View = vwSpringDetails; // stays over another document
    EXPECT_THAT(Open(SampleBytes("saloon-front-strut.WSP")), IsEmpty());
    EXPECT_THAT(m_main.Grid().Text(), StartsWith("Wheel Travel\tSpring Length\t"));
}

TEST_F(frmMainTest, AFileThatIsNoDocumentLeavesAResetOneAndSaysWhy) {
    struct Case {
        std::string Bytes;
        std::string Reason;
    };
    const std::vector<Case> cases{
        {"", "Input past end of file"},
        {Changed("ARBMechanism", "[ARBMechanism]\t-1"),
         "ARBMechanism is -1 in the file, but only 0 to 4 exist"},
        {Changed("WheelTravelStepSize", "[WheelTravelStepSize]\t0"), "Division by zero"},
        {Changed("Bump", "[Bump]\t1E+300"), "Overflow"},
    };
    for (const Case& bad : cases) {
        SCOPED_TRACE(bad.Reason);
        Open(SampleBytes());
        m_program.Settings.View = vwAngles;
        m_program.DocumentPath = "/before.WSP";
        m_program.Options.LastFolder = "/before/";
        std::string told = Refused;
        told.append(bad.Reason).append(Named).append(Path);
        EXPECT_EQ(Open(bad.Bytes).back(), told);
        EXPECT_EQ(m_box.Shown.back().Style, msExclamation);
        ExpectReset(vwAngles);
        m_main.RefreshGUI(false); // the next event
        EXPECT_EQ(m_program.Settings.View, vwNone);
    }
    m_box.Shown.clear();
    m_main.FileOpen("/cars/missing.WSP");
    m_main.FileOpen("/cars");
    m_files.RefuseReading(Path);
    m_main.FileOpen(Path);
    EXPECT_THAT(m_box.Prompts(),
                ElementsAre(Refused + "File not found" + Named + "/cars/missing.WSP",
                            Refused + "Is a directory" + Named + "/cars",
                            "An error occurred while reading file: " + Path,
                            Refused + "Permission denied" + Named + Path));
}

TEST_F(frmMainTest, AFileOfAnotherVersionIsRefused) {
    m_program.DocumentPath = "/before.WSP";
    m_program.Options.LastFolder = "/before/";
    const std::string required =
        "Wrong file version\r\n\r\nFile version required =   Data 4.1 \r\n";
    EXPECT_THAT(
        Open(Changed("FILEVERSION", "[FILEVERSION]\tData 4.2")),
        ElementsAre(required + "File version available = Data 4.2 ", Refused + Named + Path));
    ExpectReset(vwNone);
    EXPECT_THAT(Open(Changed("FILEVERSION", "")),
                ElementsAre(required + "No file version available", Refused + Named + Path));
    ExpectReset(vwNone);
}

TEST_F(frmMainTest, ADocumentThatCannotBeCalculatedIsLoadedAndShowsNoView) {
    const auto expectNotCalculated = [&](const std::string& bytes, const std::string& reason) {
        Open(SampleBytes());
        const int beeps = m_process.Beeps;
        EXPECT_EQ(Open(bytes).back(), NotCalculated + "The following error occurred: " + reason);
        EXPECT_TRUE(m_program.Document.DataLoaded);
        EXPECT_FALSE(m_program.Document.ResultsValid);
        EXPECT_EQ(m_program.Settings.View, vwNone);
        EXPECT_EQ(m_process.Beeps, beeps + 1);
        EXPECT_EQ(m_main.Grid().Text(), "");
    };
    expectNotCalculated(Changed("ptWC", "[ptWC]\t0\t1E+300\t0"), "Overflow");
    expectNotCalculated(Changed("ptUWO", ""), "Unable to iterate wheel position");
    expectNotCalculated(Changed("Bump", "[Bump]\t400"), "Unable to iterate wheel position");
    // That travel made the step grow, and said so.
    EXPECT_EQ(m_box.Shown.front().Prompt,
              "Max number of wheel travel points exceeded so step size reset to  9.5");
    EXPECT_EQ(m_box.Shown.size(), 2U);

    // The page keeps the words; they are said again for another state, and when it is tried again.
    const std::string words = Prompts().back();
    const int beeps = m_process.Beeps;
    m_main.Resized();
    m_main.Execute(mcSave, 0);
    EXPECT_THAT(Prompts(), IsEmpty());
    EXPECT_EQ(m_process.Beeps, beeps);
    EXPECT_TRUE(m_main.panFailure.Visible);
    EXPECT_EQ(m_main.panFailure.Caption, words);
    m_main.KeyDown(MainKey::F5, {false, true, false}, nullptr);
    EXPECT_THAT(Prompts(), ElementsAre(words));
    Edit("3");
    EXPECT_THAT(Prompts(), ElementsAre(words));
    m_main.FileOpen(Path);
    EXPECT_THAT(Prompts(), ElementsAre(words));
}

TEST_F(frmMainTest, NegativeTravelOpensAndTheEditorMendsIt) {
    const std::string field = "Wheel bump and droop travel must be positive.";
    for (const auto& [key, reason] :
         {std::pair<std::string, std::string>("Bump", field),
          {"Droop", field},
          {"WheelTravelStepSize", "The step size of wheel travel must be greater than 0."},
          {"RackTravelStepSize", "The step size of rack travel must be greater than 0."}}) {
        SCOPED_TRACE(key);
        EXPECT_THAT(Open(Changed(key, "[" + key + "]\t-5")), ElementsAre(NotCalculated + reason));
        EXPECT_TRUE(m_document.DataLoaded && m_main.panFailure.Visible);
        m_main.Execute(mcProperties, 0);
        EXPECT_TRUE(m_main.EditGeometry->IsOpen);
        m_main.EditGeometry->cmdOK_Click();
        EXPECT_TRUE(m_document.ResultsValid);
        EXPECT_EQ(Prompts().size(), 2U) << "the editor says what it changed";
        m_program.Modified = false;
        m_main.Files.Recovery.Drop();
    }
}

TEST_F(frmMainTest, ADamagedFileGivesADocumentOrAReason) {
    const std::string sample = SampleBytes();
    for (std::size_t length = 0; length < sample.size(); length += 5) {
        SCOPED_TRACE(length);
        ExpectDocumentOrReason(sample.substr(0, length));
    }
    for (unsigned seed = 1; seed <= 150; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::string rubbish(random() % 3000, '\0');
        for (char& byte : rubbish) {
            byte = static_cast<char>(random() % 256);
        }
        ExpectDocumentOrReason(rubbish);
        std::string flipped = sample;
        for (int n = 0; n < 3; ++n) {
            char& byte = flipped[random() % flipped.size()];
            byte = static_cast<char>(static_cast<unsigned char>(byte) ^ (1U << random() % 8));
        }
        ExpectDocumentOrReason(flipped);
    }
}

TEST_F(frmMainTest, RefreshGUIKeepsThePositionOnTheGrid) {
    Open(SampleBytes());
    const Suspension& document = m_program.Document;
    ViewSettings& settings = m_program.Settings;
    const auto after = [&](int wheel, int rack, bool reset) {
        settings.ViewWheel = wheel;
        settings.ViewRack = rack;
        m_main.RefreshGUI(reset);
        return std::pair(settings.ViewWheel, settings.ViewRack);
    };
    const std::pair atStatic(document.StaticWheel, document.StaticRack);
    EXPECT_EQ(after(3, 4, true), atStatic);
    EXPECT_EQ(after(3, 4, false), std::pair(3, 4));
    const std::pair last(document.NW + 1, document.NR + 1);
    EXPECT_EQ(after(last.first, last.second, false), last);
    EXPECT_EQ(after(last.first + 1, last.second + 1, false), atStatic);
    EXPECT_EQ(after(0, 0, false), atStatic);
}

TEST_F(frmMainTest, AnEventDuringARefreshIsIgnored) {
    InterruptingBox box;
    Messages messages(box);
    Desk desk{
        m_program, m_current, m_files, messages, m_process, m_windows, MLibHelp(m_windows.Help),
        &m_store};
    frmMain window(desk);
    window.Load();
    box.Event = [&] { window.RefreshGUI(true); };
    m_files.Put(Path, SampleBytes("roadster-front-links.WSP"));
    window.FileOpen(Path);
    m_program.Settings.View = vwLinkLoads; // not available: shows a message while it refreshes
    m_program.Settings.ViewWheel = 3;
    window.RefreshGUI(false);
    EXPECT_EQ(box.Shows, 1);
    EXPECT_EQ(m_program.Settings.ViewWheel, 3);
}

TEST_F(frmMainTest, AFailureWhileResultsAreDisplayedIsReportedAndTheNextEventWorks) {
    Open(SampleBytes());
    m_program.Settings.View = vwLateralGeometry;
    const float factor = m_program.Units[ucAngle].Factor;
    m_program.Units[ucAngle].Factor = 0;
    m_main.RefreshGUI(false);
    EXPECT_THAT(m_box.Prompts(), ElementsAre("There was an error while displaying results. Error "
                                             "was: There was a problem converting units."));
    EXPECT_EQ(m_box.Shown.front().Style, msExclamation);
    EXPECT_EQ(m_main.Grid().Rows(), 0);
    m_program.Units[ucAngle].Factor = factor;
    m_main.RefreshGUI(false);
    EXPECT_EQ(m_main.Grid().Cell(0, 1), "Camber Angle");
    EXPECT_EQ(m_box.Shown.size(), 1U);
}

TEST_F(frmMainTest, AViewArgumentLastsAsLongAsItsViewAndAPlotComesBackWithItsChannel) {
    Open(SampleBytes());
    ViewSettings& settings = m_program.Settings;
    const auto change = [&](std::int32_t view) {
        settings.View = view;
        m_main.RefreshGUI(false);
        return settings.ViewArgument;
    };
    const auto choose = [&](std::int32_t argument) {
        settings.ViewArgument = argument;
        m_main.RefreshGUI(false);
        return settings.ViewArgument;
    };
    EXPECT_EQ(change(vwLinkLoads), 0);
    EXPECT_THAT(m_main.Grid().Cell(0, 1), StartsWith("Upper Rear")); // 0 shows the first
    EXPECT_EQ(choose(2), 2);
    EXPECT_THAT(m_main.Grid().Cell(0, 1), StartsWith("Lower Rear"));
    EXPECT_EQ(change(vwPlot), 1);
    EXPECT_EQ(choose(chSteerAngle), chSteerAngle);
    EXPECT_EQ(change(vwLinkLoads), 0);
    EXPECT_EQ(change(vwPlot), chSteerAngle);
    EXPECT_EQ(change(vwAntis), 0);

    // While the window shows nothing, a view that is asked for keeps the argument it was given.
    settings.View = vwNone;
    m_main.RefreshGUI(false);
    m_main.DisplayView(vwLinkLoads, 3, vvAlongWheelTravel, 2, 2);
    EXPECT_EQ(m_main.Grid().Cell(0, 1), "Spring Load Factors");
}

TEST_F(frmMainTest, FileSaveWritesEverySampleByteForByte) {
    for (const std::string& sample : AllSamplePaths()) {
        SCOPED_TRACE(sample);
        const std::string bytes = DiskFileServices().ReadBytes(sample);
        EXPECT_THAT(Open(bytes), IsEmpty());
        m_main.FileSave("/cars/copy.dat");
        EXPECT_EQ(m_files.Bytes("/cars/copy.dat.WSP"), bytes);
        EXPECT_EQ(m_program.DocumentPath, "/cars/copy.dat.WSP");
        EXPECT_EQ(m_program.Options.LastFolder, "/cars/");
        EXPECT_TRUE(m_program.Document.ResultsValid);
        EXPECT_THAT(m_box.Shown, IsEmpty());
    }
}

TEST_F(frmMainTest, ASaveThatFailsIsToldAndKeepsTheOldFile) {
    Open(SampleBytes());
    m_files.Put("/cars/rear.WSP", "old");
    m_files.FailOnChange(1);
    m_main.FileSave("/cars/rear.WSP");
    EXPECT_EQ(m_files.Bytes("/cars/rear.WSP"), "old");
    m_main.FileSave("/cars/.WSP");
    m_program.Document.Data.KARB = std::numeric_limits<double>::infinity();
    m_main.FileSave("/cars/rear.WSP");
    EXPECT_EQ(m_files.Bytes("/cars/rear.WSP"), "old");
    const std::string refused = "There was an error while processing file\r\rError was ";
    EXPECT_THAT(m_box.Prompts(),
                ElementsAre("An error occurred while writing file: /cars/rear.WSP\r\n"
                            "Error was: No space left on device",
                            refused + "The file has no name",
                            "An error occurred while adding field: KARB to the filestream",
                            refused + "KARB can't be written"));
    EXPECT_EQ(m_files.Paths(), std::vector<std::string>({Path, "/cars/rear.WSP"}));
}

TEST_F(frmMainTest, TheDynamicsReportIsTextInThePicture) {
    Open(SampleBytes("formula-rear-pushrod.WSP"));
    m_program.Settings.View = vwDynamicsReport;
    m_main.RefreshGUI(true);
    EXPECT_THAT(m_main.picResults.Text, StartsWith("Rear suspension with outboard brakes\r\n"));
    EXPECT_EQ(m_main.Grid().Text(), "");
    m_program.Settings.View = vwLateralGeometry;
    m_main.RefreshGUI(false);
    EXPECT_EQ(m_main.picResults.Text, "");
    m_program.Document.DynamicsValid = false;
    m_program.Settings.View = vwDynamicsReport;
    m_main.RefreshGUI(false);
    const std::string nothing = "Current settings are not valid for this report.";
    m_main.Resized();
    m_settings.View = vwAntis;
    m_main.RefreshGUI(false);
    EXPECT_FALSE(m_main.panFailure.Visible);
    m_settings.View = vwDynamicsReport;
    m_main.RefreshGUI(false);
    EXPECT_THAT(m_box.Prompts(), ElementsAre(nothing)) << "once for each state";
    EXPECT_TRUE(m_main.panFailure.Visible && !m_main.picResults.Visible);
    EXPECT_EQ(m_main.panFailure.Caption, nothing);
}

} // namespace
} // namespace corvanta::test
