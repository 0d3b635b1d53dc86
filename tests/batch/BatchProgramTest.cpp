#include "tests/support/Places.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

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
    int Status = -1;
    std::string Output; ///< standard output
    std::string Errors; ///< standard error
};

/// The real program in a process of its own, with its settings in a folder of the test.
class BatchProgramTest : public testing::Test {
  protected:
    /// Runs the program with one argument, under what the shell's env is told to change.
    ProgramRun Run(const std::string& commandLine, const std::string& environment = {},
                   const std::string& program = BatchProgram()) {
        const std::string command = "env -u LC_ALL -u LANG XDG_CONFIG_HOME='" +
                                    m_folder / "config" + "' env " + environment + " '" + program +
                                    "' '" + commandLine + "' >'" + m_folder / "stdout" + "' 2>'" +
                                    m_folder / "stderr" + "'";
        const int status = std::system(command.c_str());
        return {WEXITSTATUS(status), ReadFile(m_folder / "stdout"), ReadFile(m_folder / "stderr")};
    }

    [[nodiscard]] std::string OutputKey(const std::string& name = "out.txt") const {
        return " /output=" + Backslashed(m_folder / name);
    }
    [[nodiscard]] bool HasOutput(const std::string& name = "out.txt") const {
        return fs::exists(m_folder / name);
    }
    [[nodiscard]] std::string OutputText(const std::string& name = "out.txt") const {
        return ReadFile(m_folder / name);
    }

    TemporaryFolder m_folder;
    const std::string m_input = "/input=" + Sample("touring-front-wishbone.WSP");
    const std::string m_table = " /type=2 /table=2 /variable=2";
};

TEST_F(BatchProgramTest, WithoutAKeyItSaysHowToUseIt) {
    const ProgramRun run = Run("front.WSP");
    EXPECT_EQ(run.Status, 2);
    EXPECT_NE(run.Errors.find("usage: corvanta-batch"), std::string::npos);
    EXPECT_FALSE(fs::exists(m_folder / "config")) << "nothing may be set up";
}

TEST_F(BatchProgramTest, WritesATableAndNothingElse) {
    const ProgramRun run = Run(m_input + OutputKey() + m_table);
    EXPECT_EQ(run.Status, 0);
    EXPECT_EQ(run.Output + run.Errors, "");
    EXPECT_EQ(OutputText().substr(0, 25), "TITLE:\tLateral Geometry\r\n");
    EXPECT_TRUE(fs::exists(m_folder / "config/Pewter Lantern/Corvanta/Corvanta.ini"));
    EXPECT_TRUE(
        fs::exists(m_folder / "config/Pewter Lantern/Corvanta/Settings/customchannels.txt"));
}

TEST_F(BatchProgramTest, AFailureShowsOnStandardErrorAndUnderNoGuiNowhere) {
    for (const std::string& bad :
         {std::string("/input=nowhere.WSP /output=x /type=1"), m_input + OutputKey() + " /type=4",
          m_input + OutputKey() + " /type=2 /table=13",
          "/input=" + Backslashed(BatchProgram()) + OutputKey() + " /type=1",
          m_input + " /output=" + Backslashed(m_folder.Path()) + " /type=1"}) {
        SCOPED_TRACE(bad);
        const ProgramRun loud = Run(bad);
        EXPECT_EQ(loud.Status, 0);
        EXPECT_EQ(loud.Output, "");
        EXPECT_NE(loud.Errors.find("rror"), std::string::npos) << loud.Errors;
        const ProgramRun silent = Run("/nogui " + bad);
        EXPECT_EQ(silent.Status, 0);
        EXPECT_EQ(silent.Output + silent.Errors, "");
        EXPECT_FALSE(HasOutput());
    }
}

TEST_F(BatchProgramTest, WritesComponentFilesAndTheDynamicsReport) {
    const std::string rear = "/input=" + Sample("formula-rear-pushrod.WSP");
    EXPECT_EQ(Run(rear + OutputKey() + " /type=5").Errors, "");
    EXPECT_TRUE(OutputText().starts_with("[DEC SEP]\t.\r\n[FILEVERSION]\tSUSPVAR 1.1\r\n"));
    EXPECT_EQ(Run(rear + OutputKey() + " /type=6").Errors, "");
    EXPECT_TRUE(OutputText().starts_with("[DEC SEP]\t.\r\n[FILEVERSION]\tSUSPVAR 2.2\r\n"));
    EXPECT_EQ(Run(rear + OutputKey() + " /type=2 /table=11").Errors, "");
    EXPECT_TRUE(OutputText().starts_with("TITLE:\tDynamics Report\r\nRear suspension with o"));

    // A corner without a spring has no report to show, and says so.
    const std::string bare = "/input=" + Sample("roadster-front-links.WSP");
    EXPECT_NE(Run(bare + OutputKey() + " /type=2 /table=11").Errors.find("not valid"),
              std::string::npos);
    EXPECT_EQ(OutputText(), "TITLE:\tDynamics Report\r\n\r\n\r\n");
    EXPECT_NE(Run(rear + " /output=" + Backslashed(m_folder.Path()) + " /type=6")
                  .Errors.find("An error occurred while writing file: "),
              std::string::npos);
}

TEST_F(BatchProgramTest, AMachineWithADecimalCommaReadsAndWritesItsOwnNumbers) {
    const std::string make = "localedef -i de_DE -f UTF-8 '" + m_folder / "de_DE.UTF-8" + "'";
    ASSERT_EQ(std::system(make.c_str()), 0) << "the package locales is needed";
    // The C library keeps what it makes of LOCPATH to the end of the process: no leak of ours.
    const std::string german =
        "LOCPATH='" + m_folder.Path() + "' LC_ALL=de_DE.UTF-8 ASAN_OPTIONS=detect_leaks=0";

    ASSERT_EQ(Run(m_input + OutputKey("comma.txt") + m_table + " /hdr", german).Errors, "");
    ASSERT_EQ(Run(m_input + OutputKey("point.txt") + m_table).Errors, "");
    std::string comma = OutputText("comma.txt");
    comma.erase(0, comma.find("TITLE:"));
    std::string point = OutputText("point.txt");
    ASSERT_NE(comma.find(','), std::string::npos);
    EXPECT_EQ(comma.find('.'), std::string::npos);
    std::replace(point.begin(), point.end(), '.', ',');
    EXPECT_EQ(comma, point);

    // A document that such a machine wrote reads the same on both.
    std::string document = ReadFile(SourceFolder() + "/samples/touring-front-wishbone.WSP");
    const std::size_t fields = document.find("[SpringMechanism]");
    std::string body = document.substr(fields);
    for (std::size_t at = 1; at + 1 < body.size(); ++at) {
        if (body[at] == '.' && isdigit(body[at - 1]) != 0 && isdigit(body[at + 1]) != 0) {
            body[at] = ',';
        }
    }
    std::ofstream(m_folder / "comma.WSP", std::ios::binary)
        << "[DEC SEP]\t,\r\n[FILEVERSION]\tData 4.1\r\n"
        << body;
    const std::string input = "/input=" + Backslashed(m_folder / "comma.WSP");
    Run(input + OutputKey("comma2.txt") + m_table, german);
    Run(input + OutputKey("point2.txt") + m_table);
    EXPECT_EQ(OutputText("comma2.txt"), comma);
    EXPECT_EQ(OutputText("point2.txt"), OutputText("point.txt"));
}

TEST_F(BatchProgramTest, AMachineWithoutAHomeFolderKeepsItsSettingsBesideTheProgram) {
    fs::create_directories(m_folder / "program");
    const std::string program = m_folder / "program/corvanta-batch";
    fs::copy_file(BatchProgram(), program);
    const ProgramRun run =
        Run(m_input + OutputKey() + m_table, "-u XDG_CONFIG_HOME -u HOME", program);
    EXPECT_EQ(run.Errors, "");
    EXPECT_TRUE(HasOutput());
    EXPECT_TRUE(fs::exists(m_folder / "program/Settings/exporttables.txt"));
    EXPECT_TRUE(fs::is_directory(m_folder / "program/Diagnostics"));
    EXPECT_TRUE(fs::exists(m_folder / "program/Corvanta.ini"));
}

} // namespace
} // namespace corvanta::test
