#include "frame/MSusp.h"

#include "platform/DiskFileServices.h"
#include "tests/support/FakeProcessServices.h"
#include "tests/support/FakeWindowSystem.h"
#include "tests/support/MemoryFileServices.h"
#include "tests/support/RecordingMessageBox.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <algorithm>

namespace corvanta::test {
namespace {

const std::string Output = "/out/results.txt";
const std::string Base = "/home/user/.config/Pewter Lantern/Corvanta/";
const std::string Ini = Base + "Corvanta.ini";
const std::string ChannelsList = Base + "Settings/customchannels.txt";
const std::string ViewsList = Base + "Settings/exporttables.txt";

/// A machine on which the program starts as often as a test likes.
class Machine {
  public:
    explicit Machine(const std::string& sample = SamplePath("touring-front-wishbone.WSP")) {
        Files.Put("/cars/c.WSP", DiskFileServices().ReadBytes(sample));
        Files.PutFolder("/out");
    }

    /// One start with the keys, and the messages of it in `Box`.
    StartResult Start(const std::string& keys) {
        Process.Called = {keys};
        Box.Shown.clear();
        WindowSystem windows = Windows.Services();
        Application application(Files, Box, Process, windows);
        return application.AppStart();
    }

    /// A batch run of the sample; the file that it left, empty when there is none.
    std::string Batch(const std::string& keys) {
        EXPECT_EQ(Start("/input=cars\\c.WSP /output=out\\results.txt " + keys), StartResult::Ended);
        return Files.Bytes(Output).value_or("");
    }

    MemoryFileServices Files;
    RecordingMessageBox Box;
    FakeProcessServices Process;
    FakeWindowSystem Windows;
};

class ApplicationTest : public testing::Test {
  protected:
    static std::string StartFailed(const std::string& what) {
        return "Error " + what + " in procedure AppStart of Module MSusp";
    }
    static std::string NoPlace(const std::string& reason) {
        return "There is no place for settings, so the run takes the defaults and keeps none.\r"
               "Error was: " +
               reason;
    }

    Machine m_machine;
    MemoryFileServices& m_files = m_machine.Files;
    const std::string m_table = "/type=2 /table=10";
};

TEST_F(ApplicationTest, WithoutKeysItWaitsForItsUserAndSavesWhenItIsShutDown) {
    m_machine.Process.Called = {"front.WSP"};
    m_files.Put("/opt/corvanta/customchannels.txt", "[Camber Angle]\tTrue\r\n\r\n");
    WindowSystem windows = m_machine.Windows.Services();
    Application application(m_files, m_machine.Box, m_machine.Process, windows);
    EXPECT_EQ(application.AppStart(), StartResult::Interactive);
    EXPECT_TRUE(m_files.FolderExists(Base + "Diagnostics"));
    EXPECT_FALSE(m_files.FileExists(Ini));
    EXPECT_TRUE(application.CloseMainWindow());
    EXPECT_THAT(*m_files.Bytes(Ini), HasSubstr("\nDataDir=/opt/corvanta/Data\n"));
    EXPECT_THAT(*m_files.Bytes(ChannelsList), HasSubstr("[COUNT]\t1\r\n[0]\t14\r\n"));
    EXPECT_THAT(*m_files.Bytes(ViewsList), HasSubstr("[Link Loads]\tFalse\r\n"));
    EXPECT_FALSE(m_files.FileExists("/opt/corvanta/customchannels.txt"));
    EXPECT_THAT(m_machine.Box.Shown, IsEmpty());
    EXPECT_EQ(m_machine.Process.Beeps, 0);
}

TEST_F(ApplicationTest, ABatchRunSavesWhatOutlivesIt) {
    m_files.Put(ChannelsList, "[COUNT]\t2\r\n[0]\t47\r\n[1]\t52\r\n\r\n");
    m_files.Put(ViewsList, "[Link Loads]\tTrue\r\n\r\n");
    m_files.Put(Ini, "[Units]\nDisplacement=in\n[Other]\nkept=1\n[Options]\nExportType=3\n");
    EXPECT_THAT(m_machine.Batch(m_table), HasSubstr("\r\nLink\tLength\r\n\tin\r\n"));
    const std::string saved = *m_files.Bytes(Ini);
    for (const char* line : {"Displacement=in", "kept=1", "ExportType=3", "SpringMechanism=2",
                             "Bump=50", "DataDir=/cars/", "ExportFilePath=/out/", "Rate=lb/in"}) {
        EXPECT_THAT(saved, HasSubstr("\n" + std::string(line) + "\n"));
    }
    EXPECT_THAT(*m_files.Bytes(ChannelsList),
                HasSubstr("[COUNT]\t2\r\n[0]\t47\r\n[1]\t52\r\n\r\n"));
    EXPECT_THAT(*m_files.Bytes(ViewsList), HasSubstr("[Link Loads]\tTrue\r\n"));
    m_machine.Batch(m_table);
    EXPECT_EQ(*m_files.Bytes(Ini), saved);

    // A document that can't be read, and one that can't be solved, leave no output.
    m_files.DeleteFile(Output);
    m_files.Put("/cars/c.WSP", "no document");
    EXPECT_EQ(m_machine.Batch(m_table), "");
    EXPECT_THAT(m_machine.Box.Prompts().back(),
                StartsWith("There was an error while processing file\r\rError was: Type mismatch"));
    EXPECT_THAT(*m_files.Bytes(Ini), HasSubstr("\nSpringMechanism=0\n")) << "and it shuts down";
    m_files.Put("/cars/c.WSP", "[FILEVERSION]\tData 4.1\r\n[SpringMechanism]\t0\r\n\r\n");
    EXPECT_EQ(m_machine.Batch(m_table), "");
    EXPECT_THAT(m_machine.Box.Prompts(),
                ElementsAre(testing::_, StartsWith("Calculations could not be completed.\r\r")));
}

TEST_F(ApplicationTest, SettingsThatCannotBeUsedEndTheStartAndStayAsTheyAre) {
    const std::string damaged = "[Options]\nBump=much\n";
    m_files.Put(Ini, damaged);
    EXPECT_EQ(m_machine.Batch(m_table), "");
    EXPECT_THAT(m_machine.Box.Prompts(),
                ElementsAre(StartFailed("13 (Type mismatch in option Bump of " + Ini + ")")));
    EXPECT_EQ(m_machine.Box.Shown.at(0).Style, msOK);
    EXPECT_EQ(m_machine.Box.Shown.at(0).Title, "");
    EXPECT_EQ(m_files.Bytes(Ini), damaged);
    EXPECT_FALSE(m_files.FileExists(ChannelsList));
    m_files.RefuseReading(Ini);
    EXPECT_EQ(m_machine.Batch(m_table), "");
    EXPECT_THAT(m_machine.Box.Prompts(), ElementsAre(StartFailed("75 (Permission denied)")));
}

TEST_F(ApplicationTest, AListThatCannotBeReadIsToldAndStaysAsItIs) {
    m_files.Put(ViewsList, "[Link Loads]\tTrue\r\n");
    m_files.RefuseReading(ViewsList);
    EXPECT_EQ(m_machine.Batch("/type=3"), "") << "no view is ticked";
    EXPECT_THAT(m_machine.Box.Prompts(),
                ElementsAre("An error occurred while reading file: " + ViewsList));
    EXPECT_EQ(m_files.Bytes(ViewsList), "[Link Loads]\tTrue\r\n");
}

TEST_F(ApplicationTest, AChangeThatFailsIsToldOnceAndEveryFileIsOldOrNew) {
    const std::string whole = m_machine.Batch(m_table);
    const std::string full = "No space left on device";
    const std::vector<std::string> expected{
        NoPlace(full), // the two folders
        NoPlace(full),
        "There was an error while exporting. \rError was: " + full,
        "An error occurred while writing file: " + ChannelsList + "\r\nError was: " + full,
        "An error occurred while writing file: " + ViewsList + "\r\nError was: " + full,
        StartFailed("75 (" + full + ")"), // the settings
    };
    for (std::size_t n = 1; n <= expected.size() + 1; ++n) {
        for (const std::string silence : {"", " /nogui"}) {
            SCOPED_TRACE(std::to_string(n) + silence);
            Machine machine;
            machine.Files.Put(Output, "");
            machine.Files.FailOnChange(static_cast<int>(n));
            EXPECT_EQ(machine.Batch(m_table + silence), n == 3 ? "" : whole);
            EXPECT_THAT(machine.Box.Prompts(), silence.empty() && n <= expected.size()
                                                   ? std::vector<std::string>{expected[n - 1]}
                                                   : std::vector<std::string>());
            EXPECT_EQ(machine.Files.FileExists(Ini), n == 3 || n == 7);
            EXPECT_EQ(machine.Files.Changes().size(), n <= 2   ? n + 1
                                                      : n == 3 ? 6U
                                                               : std::min(n, 6UL));
        }
    }
}

TEST_F(ApplicationTest, WithoutAPlaceForSettingsABatchRunGoesOnAndAUserIsTold) {
    m_files.RefuseFolder("/home");
    EXPECT_THAT(m_machine.Batch(m_table), StartsWith("TITLE:\tLink Lengths\r\n"));
    EXPECT_THAT(m_machine.Box.Prompts(), ElementsAre(NoPlace("Permission denied")));
    EXPECT_THAT(m_files.Paths(), ElementsAre("/cars/c.WSP", Output));
    EXPECT_EQ(m_machine.Start(""), StartResult::Ended);
    EXPECT_THAT(m_machine.Box.Prompts(), ElementsAre(StartFailed("75 (Permission denied)")));
}

TEST_F(ApplicationTest, AFolderOfSettingsKeepsItsName) {
    m_files.ApplicationData = "/home/back\\slash";
    m_machine.Batch(m_table);
    EXPECT_TRUE(m_files.FileExists("/home/back\\slash/Pewter Lantern/Corvanta/Corvanta.ini"));
}

} // namespace
} // namespace corvanta::test
