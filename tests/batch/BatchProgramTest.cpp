#include "frame/MSusp.h"
#include "platform/FileServices.h"
#include "tests/support/Places.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace corvanta::test {
namespace {

namespace fs = std::filesystem;

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::stringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

/// A path as the command line takes it: a "/" would begin a key.
std::string Backslashed(std::string path) {
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

std::string Sample(const std::string& name) {
    return Backslashed(SourceFolder() + "/samples/" + name);
}

struct ProgramRun {
    int Status = -1;    ///< -1 when a signal ended it
    std::string Output; ///< standard output and standard error
};

const std::string Settings = "config/Pewter Lantern/Corvanta/";

/// The batch program, which tells of failures, and the desktop program without its windows, which
/// is silent, each in a process of its own with its settings in a folder of the test.
class BatchProgramTest : public testing::TestWithParam<std::string> {
  protected:
    /// Runs the program with one argument, under what the shell's env is told to change.
    ProgramRun Run(const std::string& commandLine, const std::string& environment = {},
                   std::string program = {}) {
        program = program.empty() ? ProgramFolder() + "/" + GetParam() : program;
        const std::string command = "env -u LC_ALL -u LANG XDG_CONFIG_HOME='" +
                                    m_folder / "config" + "' env " + environment + " '" + program +
                                    "' '" + m_silence + commandLine + "' >'" + m_folder / "said" +
                                    "' 2>&1";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadFile(m_folder / "said")};
    }

    /// Expects a run that ended well and told `message`, where the program tells anything.
    void ExpectTold(const ProgramRun& run, const std::string& message) const {
        EXPECT_EQ(run.Status, 0);
        if (m_silence.empty() && !message.empty()) {
            EXPECT_THAT(run.Output, testing::HasSubstr(message));
        } else {
            EXPECT_EQ(run.Output, "");
        }
    }

    [[nodiscard]] std::string OutputKey(const std::string& name = "out.txt") const {
        return " /output=" + Backslashed(m_folder / name);
    }
    [[nodiscard]] std::string InputKey(const std::string& name) const {
        return "/input=" + Backslashed(m_folder / name);
    }
    [[nodiscard]] bool Has(const std::string& name) const { return fs::exists(m_folder / name); }
    [[nodiscard]] std::string Text(const std::string& name = "out.txt") const {
        return ReadFile(m_folder / name);
    }
    void Write(const std::string& name, const std::string& text) const {
        std::ofstream(m_folder / name, std::ios::binary) << text;
    }

    TemporaryFolder m_folder;
    const std::string m_silence = GetParam() == "corvanta" ? "/nogui " : "";
    const std::string m_input = "/input=" + Sample("touring-front-wishbone.WSP");
    const std::string m_table = " /type=2 /table=2 /variable=2";
};

TEST_P(BatchProgramTest, WritesATableAndItsSettingsAndNothingElse) {
    ExpectTold(Run(m_input + OutputKey() + m_table), "");
    EXPECT_EQ(Text().substr(0, 25), "TITLE:\tLateral Geometry\r\n");
    EXPECT_TRUE(Has(Settings + "Settings/customchannels.txt"));
    EXPECT_THAT(Text(Settings + "Corvanta.ini"), testing::HasSubstr("[MRU]"));
    EXPECT_THAT(Text(Settings + "Corvanta.ini"), testing::Not(testing::HasSubstr("[frmMain]")))
        << "a window that stood nowhere";
}

TEST_P(BatchProgramTest, AFailureIsToldAndLeavesNoOutput) {
    Write("unsolved.WSP", "[FILEVERSION]\tData 4.1\r\n[SpringMechanism]\t0\r\n\r\n");
    Write("large.WSP", std::string(LargestFile + 1, 'x'));
    ASSERT_EQ(mkfifo((m_folder / "pipe").c_str(), 0600), 0);
    const std::vector<std::pair<std::string, std::string>> failures{
        {"/input=nowhere.WSP /output=x /type=1", "Invalid input filepath specified"},
        {m_input + OutputKey() + " /type=4", "Invalid export type"},
        {m_input + OutputKey() + " /type=2 /table=13", "rror"},
        {InputKey("unsolved.WSP") + OutputKey() + " /type=1", "could not be completed"},
        {InputKey("large.WSP") + OutputKey() + " /type=1", "The file is larger than 16 MB: "},
        {InputKey("pipe") + OutputKey() + " /type=1", "Not a file that can be read whole: "},
        {"/input=\\dev\\zero" + OutputKey() + " /type=1", "Not a file that can be read whole: "},
        {m_input + " /output=" + Backslashed(m_folder.Path()) + " /type=1", "rror"}};
    for (const auto& [keys, message] : failures) {
        SCOPED_TRACE(keys);
        ExpectTold(Run(keys), message);
        EXPECT_EQ(Run("/nogui " + keys).Output, "");
        EXPECT_FALSE(Has("out.txt"));
    }
    EXPECT_TRUE(Has(Settings + "Corvanta.ini")) << "a failed run ends as any other does";
}

TEST_P(BatchProgramTest, NeverWritesOverItsInput) {
    const std::string document = ReadFile(SourceFolder() + "/samples/touring-front-wishbone.WSP");
    Write("car.WSP", document);
    fs::create_symlink("car.WSP", m_folder / "link.txt");
    for (const std::string name : {"car.WSP", "link.txt"}) {
        ExpectTold(Run(InputKey("car.WSP") + OutputKey(name) + m_table),
                   "The output file is the input file");
        EXPECT_EQ(Text("car.WSP"), document);
    }
}

TEST_P(BatchProgramTest, WritesComponentFilesAndTheDynamicsReport) {
    const std::string rear = "/input=" + Sample("formula-rear-pushrod.WSP");
    const std::vector<std::pair<std::string, std::string>> files{
        {" /type=5", "[DEC SEP]\t.\r\n[FILEVERSION]\tSUSPVAR 1.1\r\n"},
        {" /type=6", "[DEC SEP]\t.\r\n[FILEVERSION]\tSUSPVAR 2.2\r\n"},
        {" /type=2 /table=11", "TITLE:\tDynamics Report\r\nRear suspension with o"}};
    for (const auto& [keys, head] : files) {
        const std::string call = rear + OutputKey();
        ExpectTold(Run(call + keys), "");
        EXPECT_THAT(Text(), testing::StartsWith(head));
    }
    // A corner without a spring has no report to show, and says so.
    const std::string bare = "/input=" + Sample("roadster-front-links.WSP");
    ExpectTold(Run(bare + OutputKey() + " /type=2 /table=11"), "not valid");
    EXPECT_EQ(Text(), "TITLE:\tDynamics Report\r\n\r\n\r\n");
    ExpectTold(Run(rear + " /output=" + Backslashed(m_folder.Path()) + " /type=6"),
               "An error occurred while writing file: ");
}

TEST_P(BatchProgramTest, AMachineWithADecimalCommaReadsAndWritesItsOwnNumbers) {
    const std::string make = "localedef -i de_DE -f UTF-8 '" + m_folder / "de_DE.UTF-8" + "'";
    ASSERT_EQ(std::system(make.c_str()), 0) << "the package locales is needed";
    // The C library keeps what it makes of LOCPATH to the end of the process: no leak of ours.
    const std::string german =
        "LOCPATH='" + m_folder.Path() + "' LC_ALL=de_DE.UTF-8 ASAN_OPTIONS=detect_leaks=0";

    ExpectTold(Run(m_input + OutputKey("comma.txt") + m_table + " /hdr", german), "");
    ExpectTold(Run(m_input + OutputKey("point.txt") + m_table), "");
    std::string comma = Text("comma.txt");
    comma.erase(0, comma.find("TITLE:"));
    std::string point = Text("point.txt");
    ASSERT_NE(comma.find(','), std::string::npos);
    EXPECT_EQ(comma.find('.'), std::string::npos);
    std::replace(point.begin(), point.end(), '.', ',');
    EXPECT_EQ(comma, point);
}

TEST_P(BatchProgramTest, AMachineWithoutAHomeFolderKeepsItsSettingsBesideTheProgram) {
    const std::string program = m_folder / "program/" + GetParam();
    fs::create_directories(m_folder / "program");
    fs::copy_file(ProgramFolder() + "/" + GetParam(), program);
    const std::string homeless = "-u XDG_CONFIG_HOME -u HOME";
    ExpectTold(Run(m_input + OutputKey() + m_table, homeless, program), "");
    EXPECT_TRUE(Has("out.txt"));
    for (const char* name : {"Settings/exporttables.txt", "Diagnostics", "Corvanta.ini"}) {
        EXPECT_TRUE(Has("program/" + std::string(name)));
    }
}

TEST_P(BatchProgramTest, WithoutAPlaceForSettingsItTakesTheDefaultsAndSaysSoOnce) {
    ExpectTold(Run(m_input + OutputKey("whole.txt") + m_table), "");
    const ProgramRun run = Run(m_input + OutputKey() + m_table, "XDG_CONFIG_HOME=/dev/null/no");
    ExpectTold(run,
               "There is no place for settings, so the run takes the defaults and keeps none.\n"
               "Error was: Not a directory: /dev/null/no/Pewter Lantern/Corvanta/Settings/\n");
    EXPECT_EQ(run.Output.find("rror"), run.Output.rfind("rror")) << run.Output;
    EXPECT_EQ(Text(), Text("whole.txt"));
}

TEST_P(BatchProgramTest, AnswersHelpAndVersionOnTheTerminalAndLeavesNothing) {
    const std::string program = "'" + ProgramFolder() + "/" + GetParam() + "' ";
    const auto answer = [&](const std::string& option) {
        const std::string command = "env -u DISPLAY XDG_CONFIG_HOME='" + m_folder / "config" +
                                    "' " + program + option + " >'" + m_folder / "said" + "'";
        EXPECT_EQ(std::system(command.c_str()), 0);
        return Text("said");
    };
    EXPECT_EQ(answer("--version"), GetParam() + " " + BuiltVersion().Text() + "\n");
    EXPECT_THAT(answer("--help"), testing::StartsWith("usage: " + GetParam() + " "));
    EXPECT_THAT(answer("x.WSP --help"), testing::HasSubstr("/variable"));
    EXPECT_FALSE(Has("config"));
}

INSTANTIATE_TEST_SUITE_P(Programs, BatchProgramTest, testing::ValuesIn(BatchPrograms()),
                         [](const auto& program) {
                             return program.param == "corvanta" ? "Desktop" : "Batch";
                         });

TEST(BatchProgramUsageTest, WithoutAKeyTheBatchProgramSaysHowToUseIt) {
    const std::string program = ProgramFolder() + "/corvanta-batch";
    const int status = std::system(("'" + program + "' front.WSP 2>/dev/null").c_str());
    EXPECT_EQ(WEXITSTATUS(status), 2);
}

} // namespace
} // namespace corvanta::test
