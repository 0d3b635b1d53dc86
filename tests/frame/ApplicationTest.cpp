#include "frame/MSusp.h"

#include "platform/DiskFileServices.h"
#include "tests/support/FakeProcessServices.h"
#include "tests/support/FakeWindowSystem.h"
#include "tests/support/MemoryFileServices.h"
#include "tests/support/RecordingMessageBox.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <algorithm>
#include <optional>
#include <regex>

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
        Process.Arguments = keys;
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

std::vector<std::string> Split(const std::string& text, const std::string& mark) {
    std::vector<std::string> pieces;
    for (std::size_t from = 0; from <= text.size();) {
        const std::size_t end = std::min(text.find(mark, from), text.size());
        pieces.push_back(text.substr(from, end - from));
        from = end + mark.size();
    }
    return pieces;
}

using TableText = std::vector<std::vector<std::string>>;

/// The rows of a file with one block, after its title and `subtitles` lines, held to be a
/// rectangle.
TableText Rows(const std::string& file, std::size_t subtitles) {
    std::vector<std::string> lines = Split(file, "\r\n");
    TableText rows;
    for (std::size_t n = 1 + subtitles; n + 3 < lines.size(); ++n) {
        rows.push_back(Split(lines[n], "\t"));
        EXPECT_EQ(rows.back().size(), rows.front().size()) << lines[n];
    }
    EXPECT_THAT(file, EndsWith("\r\n\r\n\r\n"));
    return rows;
}

void ExpectNumbers(const TableText& rows, std::size_t firstRow, std::size_t firstColumn) {
    static const std::regex Number("-?[0-9]+(,[0-9]{3})*([.][0-9]+)?");
    for (std::size_t row = firstRow; row < rows.size(); ++row) {
        for (std::size_t column = firstColumn; column < rows[row].size(); ++column) {
            EXPECT_TRUE(std::regex_match(rows[row][column], Number)) << rows[row][column];
        }
    }
}

/// Every table of a sample, along both travels, by the whole road from the command line to the
/// file.
class BatchRoadTest : public testing::TestWithParam<std::string> {
  protected:
    std::string Run(const std::string& keys) {
        std::string text = m_machine.Batch(keys);
        EXPECT_THAT(text, StartsWith("TITLE:\t"));
        EXPECT_EQ(text.find("nan"), std::string::npos);
        EXPECT_EQ(text.find("inf"), std::string::npos);
        return text;
    }

    /// The number of rows of a table below its heads; none for a table without a fixed number.
    [[nodiscard]] std::optional<int> RowsOf(std::int32_t view, bool alongRack) const {
        switch (view) {
        case vwCoordinates:
            return std::count_if(AllPoints.begin(), AllPoints.end(),
                                 [&](auto n) { return m_document.Catalogue[n].Enabled; });
        case vwQuadraticCoefficients:
            return m_document.Data.DriveShaftExists ? 10 : 9;
        case vwLinkLengths:
            return std::nullopt;
        default:
            return alongRack ? m_document.NR : m_document.NW;
        }
    }

    /// A table is a rectangle of numbers with as many rows as the document asks for.
    void ExpectTable(std::int32_t view, const std::string& text, bool alongRack) const {
        if (view == vwDynamicsReport || view == vwLinkLoads) {
            return;
        }
        const bool ofChannels = view <= vwCustomTable || view == vwAllChannels;
        const std::size_t subtitles = view == vwCoordinates ? 2 : (ofChannels ? 1 : 0);
        const std::size_t heads = view == vwQuadraticCoefficients ? 1 : 2;
        const TableText rows = Rows(text, subtitles);
        ExpectNumbers(rows, heads, ofChannels ? 0 : 1);
        if (const std::optional<int> count = RowsOf(view, alongRack)) {
            EXPECT_EQ(rows.size(), heads + static_cast<std::size_t>(*count));
        }
    }

    Machine m_machine{SamplePath(GetParam())};
    Suspension m_document = LoadSample(GetParam());
};

TEST_P(BatchRoadTest, EveryTableIsThereAndWhole) {
    m_machine.Files.Put(ChannelsList, "[COUNT]\t2\r\n[0]\t31\r\n[1]\t5\r\n\r\n");
    m_machine.Files.Put(ViewsList, "[Lateral Geometry]\tTrue\r\n[Link Loads]\tTrue\r\n"
                                   "[Bump & Droop Coordinates]\tTrue\r\n[Custom Table]\tTrue\r\n"
                                   "[Quadratic Coefficients]\tTrue\r\n\r\n");
    for (const bool alongRack : {true, false}) {
        const std::string variable = alongRack ? "" : " /variable=2";
        std::string selected;
        for (const std::int32_t view : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 16}) {
            SCOPED_TRACE(view);
            const std::string text = Run("/type=2 /table=" + std::to_string(view) + variable);
            ExpectTable(view, text, alongRack);
            if (view != vwLinkLoads && view != vwDynamicsReport) { // which have a word to say
                EXPECT_THAT(m_machine.Box.Prompts(), IsEmpty());
            }
            if (view == 2 || (view >= 7 && view <= 9) || view == 12) {
                selected += text;
            }
            if (view == vwAllChannels) {
                EXPECT_EQ(Run("/type=1" + variable), text);
            }
        }
        EXPECT_EQ(Run("/type=3" + variable), selected);
    }
}

std::vector<std::string> SampleNames() {
    std::vector<std::string> names = AllSamplePaths();
    for (std::string& name : names) {
        name.erase(0, SamplePath("").size());
    }
    return names;
}

INSTANTIATE_TEST_SUITE_P(Samples, BatchRoadTest, testing::ValuesIn(SampleNames()),
                         [](const auto& sample) {
                             return std::regex_replace(sample.param, std::regex("[^A-Za-z0-9]"),
                                                       "_");
                         });

class ApplicationTest : public testing::Test {
  protected:
    static std::string StartFailed(const std::string& what) {
        return "Error " + what + " in procedure AppStart of Module MSusp";
    }

    Machine m_machine;
    MemoryFileServices& m_files = m_machine.Files;
    const std::string m_table = "/type=2 /table=10";
};

TEST_F(ApplicationTest, WithoutKeysItWaitsForItsUserAndSavesWhenItIsShutDown) {
    m_machine.Process.Arguments = "front.WSP";
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
                ElementsAre(StartsWith("Calculations could not be completed.\r\r")));
}

TEST_F(ApplicationTest, SettingsThatCannotBeUsedEndTheStartAndStayAsTheyAre) {
    const std::string damaged = "[Options]\nBump=much\n";
    m_files.Put(Ini, damaged);
    EXPECT_EQ(m_machine.Batch(m_table), "");
    EXPECT_THAT(m_machine.Box.Prompts(),
                ElementsAre(StartFailed("13 (Type mismatch in option Bump)")));
    EXPECT_EQ(m_machine.Box.Shown.at(0).Style, msOK);
    EXPECT_EQ(m_machine.Box.Shown.at(0).Title, "");
    EXPECT_EQ(m_files.Bytes(Ini), damaged);
    EXPECT_FALSE(m_files.FileExists(ChannelsList));
    // A unit that does not exist fails where it is first used.
    m_files.Put(Ini, "[Units]\nDisplacement=ell\n");
    EXPECT_EQ(m_machine.Batch(m_table), "");
    const std::string reason = "There was a problem converting units.";
    EXPECT_THAT(m_machine.Box.Prompts(),
                ElementsAre("There was an error while displaying results. Error was: " + reason,
                            "There was an error while exporting. \rError was: " + reason));

    m_files.RefuseReading(Ini);
    EXPECT_EQ(m_machine.Batch(m_table), "");
    EXPECT_THAT(m_machine.Box.Prompts(), ElementsAre(StartFailed("75 (Permission denied)")));
}

TEST_F(ApplicationTest, DamagedFilesOfSettingsCostWhatTheyHold) {
    m_files.Put(Ini, std::string("\xFF\xFE\0[[Options\n=\nBump=1\n]", 23));
    m_files.Put(ChannelsList, std::string(5000, '['));
    m_files.Put(ViewsList, std::string("\0\r\n[Link Loads", 14));
    EXPECT_THAT(m_machine.Batch(m_table), StartsWith("TITLE:\tLink Lengths\r\n"));
    EXPECT_THAT(m_machine.Box.Prompts(), IsEmpty());
    m_files.RefuseReading(ViewsList);
    EXPECT_EQ(m_machine.Batch("/type=3"), "") << "no view is ticked";
    EXPECT_THAT(m_machine.Box.Prompts(),
                ElementsAre("An error occurred while reading file: " + ViewsList));
}

TEST_F(ApplicationTest, AChangeThatFailsIsToldAndEveryFileIsOldOrNew) {
    const std::string whole = m_machine.Batch(m_table);
    const std::string ini = *m_files.Bytes(Ini);
    const std::string keys = "/input=cars\\c.WSP /output=out\\results.txt " + m_table;
    const std::string full = "No space left on device";
    const std::vector<std::string> expected{
        StartFailed("75 (" + full + ")"), // the two folders
        StartFailed("75 (" + full + ")"),
        "There was an error while exporting. \rError was: " + full,
        "An error occurred while writing file: " + ChannelsList + "\r\nError was: " + full,
        "An error occurred while writing file: " + ViewsList + "\r\nError was: " + full,
        StartFailed("75 (" + full + ")"), // the settings
        // The closing of the window shuts down once more.
        "An error occurred while writing file: " + ChannelsList + "\r\nError was: " + full,
        "An error occurred while writing file: " + ViewsList + "\r\nError was: " + full,
        StartFailed("75 (" + full + ")"), // the settings with the recent files
    };
    for (std::size_t n = 1; n <= expected.size(); ++n) {
        SCOPED_TRACE(n);
        for (const std::string& path : {Output, Ini, ChannelsList, ViewsList}) {
            m_files.Put(path, "");
        }
        m_files.FailOnChange(static_cast<int>(n));
        EXPECT_EQ(m_machine.Start(keys), StartResult::Ended);
        EXPECT_THAT(m_machine.Box.Prompts(), ElementsAre(expected[n - 1]));
        EXPECT_EQ(*m_files.Bytes(Output), n <= 3 ? "" : whole);
        EXPECT_THAT(*m_files.Bytes(Ini), testing::AnyOf("", HasSubstr("\nRate=lb/in\n")));

        m_files.FailOnChange(static_cast<int>(n));
        EXPECT_EQ(m_machine.Start(keys + " /nogui"), StartResult::Ended);
        EXPECT_THAT(m_machine.Box.Prompts(), IsEmpty());
    }
    m_files.FailOnChange(static_cast<int>(expected.size()) + 1);
    EXPECT_EQ(m_machine.Batch(m_table), whole) << "there is no further change";
    EXPECT_EQ(*m_files.Bytes(Ini), ini);
}

TEST_F(ApplicationTest, NoGuiIsSilentWhateverHappens) {
    const std::string run = "/input=cars\\c.WSP /output=out\\results.txt ";
    m_files.Put("/cars/bad.WSP", "no document");
    for (const std::string& keys :
         std::vector<std::string>{"/nogui", "/type=x /nogui", "//nogui",
                                  run + "/type=2 /table=13/nogui", run + "/type=2 /table=9 /nogui",
                                  "/nogui/input=cars\\bad.WSP/output=out\\results.txt/type=1"}) {
        EXPECT_EQ(m_machine.Start(keys), StartResult::Ended) << keys;
        EXPECT_THAT(m_machine.Box.Prompts(), IsEmpty()) << keys;
    }
    m_files.RefuseFolder("/home");
    EXPECT_EQ(m_machine.Start("/nogui " + run + m_table), StartResult::Ended);
    EXPECT_THAT(m_machine.Box.Prompts(), IsEmpty());
    EXPECT_EQ(m_machine.Start(run + m_table), StartResult::Ended);
    EXPECT_THAT(m_machine.Box.Prompts(), ElementsAre(StartFailed("75 (Permission denied)")));
}

} // namespace
} // namespace corvanta::test
