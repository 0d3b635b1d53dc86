#include "frame/CommandLine.h"

#include "frame/StartRequest.h"
#include "model/Failure.h"
#include "tests/support/MemoryFileServices.h"

#include <gtest/gtest.h>

namespace corvanta::test {
namespace {

class CommandLineTest : public testing::Test {
  protected:
    CommandLineTest() {
        m_files.Put("/data/a front.WSP", "");
        m_files.Put("/front.WSP", "");
        m_files.PutFolder("/out");
    }

    bool Parse(const std::string& commandLine) {
        m_request = {};
        return ParseCommandLine(m_request, commandLine, m_files, m_separators);
    }

    /// Number and text that the command line is refused with.
    std::string Refusal(const std::string& commandLine) {
        try {
            return Parse(commandLine) ? "a batch run" : "a normal start";
        } catch (const Failure& failure) {
            return std::to_string(failure.Number()) + " " + failure.Description();
        }
    }

    MemoryFileServices m_files;
    Separators m_separators;
    BatchRequest m_request;
    const std::string m_paths = "/input=front.WSP /output=out.txt ";
};

TEST_F(CommandLineTest, WithoutAKeyTheProgramStartsNormally) {
    for (const char* text : {"", "   ", "front.WSP", "nogui", "input=front.WSP type=1"}) {
        EXPECT_EQ(Refusal(text), "a normal start");
        EXPECT_FALSE(HasCommandLineKeys(text));
        EXPECT_FALSE(HasNoGuiKey(text));
    }
}

TEST_F(CommandLineTest, ReadsAWholeCall) {
    ASSERT_TRUE(Parse("x.WSP / nogui /input = \\data\\a front.WSP /output=\\out\\t.txt/type= 2 "
                      "/table=-8 /variable=7=1 /hdr=0"));
    EXPECT_TRUE(m_request.NoGui);
    EXPECT_EQ(m_request.InputPath, "/data/a front.WSP");
    EXPECT_EQ(m_request.OutputPath, "/out/t.txt");
    EXPECT_EQ(m_request.ExportType, 2);
    EXPECT_EQ(m_request.Export.Table, -8); // not checked here, nor is the variable
    EXPECT_EQ(m_request.Export.Variable, 7);
    EXPECT_TRUE(m_request.Export.Header);

    ASSERT_TRUE(Parse(m_paths + "/type=3 /HDR /colour=red"));
    EXPECT_FALSE(m_request.NoGui);
    EXPECT_EQ(m_request.InputPath, "/front.WSP");
    EXPECT_EQ(m_request.ExportType, 3);
    EXPECT_EQ(m_request.Export.Variable, 1);
    EXPECT_FALSE(m_request.Export.Header) << "keys are lower case";
    for (const char* type : {"1", "3", "5", "6", "0.5e1", "2.5 /table=1"}) {
        EXPECT_EQ(Refusal(m_paths + "/type=" + type), "a batch run") << type;
    }
    EXPECT_EQ(m_request.ExportType, 2); // halves go to the even number
}

TEST_F(CommandLineTest, RefusesWhatIsMissingOrWrong) {
    const std::string output = "/input=front.WSP /output=";
    const std::string type = m_paths + "/type=";
    struct Case {
        std::string Text;
        std::string Expected;
    };
    for (const Case& bad : std::initializer_list<Case>{
             {"/nogui", "10000 No input filepath"},
             {"/input=front.WSP /output=\\front.WSP", "10000 The output file is the input file"},
             {"/ ", "10000 No input filepath"},
             {"/Input=front.WSP", "10000 No input filepath"},
             {"/input", "10000 Invalid input filepath specified"},
             {"/input=missing.WSP", "10000 Invalid input filepath specified"},
             {"/input=\\data", "10000 Invalid input filepath specified"},
             {"/input=C:/data/a front.WSP", "10000 Invalid input filepath specified"},
             {"/input=front.WSP", "10000 No output filepath"},
             {output, "10000 Invalid output filepath"},
             {output + "\\missing\\out.txt", "10000 Invalid output filepath"},
             {m_paths, "10000 No export type"},
             {type + "4", "10000 Invalid export type"},
             {type + "7", "10000 Invalid export type"},
             {type + "2", "10000 Invalid export table"},
             {type + "2 /table", "13 Type mismatch"},
             {type + "2 /table=eight", "13 Type mismatch"},
             {type, "13 Type mismatch"},
             {type + "1,5", "13 Type mismatch"},
             {type + "nan", "13 Type mismatch"},
             {type + "3000000000", "6 Overflow"},
             {type + "4 /variable=x", "13 Type mismatch"}, // which is read before the type is held
             {type + "1 /type=1", "10000 The key \"type\" is given twice"},
             {"//nogui", "10000 The command line holds a \"/\" without a key"},
             {type + "1/", "10000 The command line holds a \"/\" without a key"},
         }) {
        EXPECT_EQ(Refusal(bad.Text), bad.Expected) << bad.Text;
        EXPECT_TRUE(HasCommandLineKeys(bad.Text));
    }
    m_separators.Decimal = ",";
    EXPECT_EQ(Refusal(type + "2,0 /table=1"), "a batch run");
}

TEST_F(CommandLineTest, TellsAFileAndTheWorkbenchFromKeys) {
    m_files.Put("/data/x=1/type", "");
    const auto told = [&](const std::vector<std::string>& arguments) {
        const StartRequest request = ParseStart(arguments, m_files);
        return std::string(request.Help ? "help " : "") + (request.Version ? "version " : "") +
               (request.Workbench ? "workbench " : "") + (request.Batch ? "batch " : "") +
               (request.Refusal.empty() ? "" : "refused ") + request.File;
    };
    struct Case {
        std::vector<std::string> Arguments;
        std::string Expected;
    };
    for (const Case& each : std::initializer_list<Case>{
             {{}, ""},
             {{" "}, ""},
             {{"/data/a front.WSP"}, "/data/a front.WSP"},
             {{"/data/x=1/type"}, "/data/x=1/type"},
             {{"/data/missing.wsp"}, "/data/missing.wsp"},
             {{"cars/corner.Study"}, "cars/corner.Study"},
             {{"missing"}, "missing"},
             {{"/data/missing.txt"}, "batch "},
             {{"/input=front.WSP"}, "batch "},
             {{"/nogui", "/input=front.WSP"}, "batch "},
             {{"front.WSP", "/nogui"}, "batch "},
             {{"/data/a", "front.WSP"}, "batch "}, // as one name without quotes comes
             {{"/front.WSP", "/data/a front.WSP"}, "refused "},
             {{"--workbench"}, "workbench "},
             {{"--workbench", "/front.WSP"}, "workbench /front.WSP"},
             {{"/nowhere/else", "--workbench"}, "workbench /nowhere/else"},
             {{"--workbench", "a.WSP", "b.WSP"}, "workbench refused "},
             {{"/nogui", "--help"}, "help "},
             {{"--version", "front.WSP"}, "version "},
         }) {
        EXPECT_EQ(told(each.Arguments), each.Expected) << testing::PrintToString(each.Arguments);
    }
}

} // namespace
} // namespace corvanta::test
