#include "persistence/CFileStream.h"

#include "tests/support/MemoryFileServices.h"
#include "tests/support/RecordingMessageBox.h"
#include "tests/support/Testing.h"

#include <array>
#include <cmath>
#include <limits>

namespace corvanta::test {
namespace {

const Separators Point{".", ","};
const std::string Path = "/data/stream.txt";

class CFileStreamTest : public testing::Test {
  protected:
    CFileStreamTest() { m_files.PutFolder("/data"); }

    CFileStream Stream(const Separators& separators = Point) {
        return {m_files, m_messages, separators};
    }
    CFileStream NewStream(const std::string& version = "Data 4.1",
                          const Separators& separators = Point) {
        CFileStream stream = Stream(separators);
        stream.Initialise(version, std::array{std::string()});
        return stream;
    }
    CFileStream StreamOf(const std::string& contents, const Separators& separators = Point) {
        CFileStream stream = Stream(separators);
        stream.SetContents(contents);
        return stream;
    }
    CFileStream FileOf(const std::string& bytes, const Separators& separators = Point) {
        m_files.Put(Path, bytes);
        CFileStream stream = Stream(separators);
        EXPECT_TRUE(stream.FileRead(Path));
        return stream;
    }

    static bool AddPoint(CFileStream& stream, const std::string& name, double x, double y,
                         double z) {
        return stream.AddField(name, std::array<FieldValue, 3>{x, y, z});
    }

    MemoryFileServices m_files;
    RecordingMessageBox m_box;
    Messages m_messages{m_box};
};

TEST_F(CFileStreamTest, WritesTheSyntaxCharacterByCharacter) {
    CFileStream stream = NewStream(" Data 4.1 ");
    EXPECT_TRUE(stream.AddField("Description", "A car"));
    EXPECT_TRUE(AddPoint(stream, "ptWC", 0, 762.5, 300));
    EXPECT_TRUE(stream.AddField("Flag", true));
    EXPECT_TRUE(stream.AddField("Small", 1.5e-5));
    EXPECT_TRUE(stream.AddField("Large", 1e20));
    EXPECT_TRUE(stream.AddField("Whole", -7));
    EXPECT_TRUE(stream.FileWrite(Path));
    EXPECT_EQ(m_files.Bytes(Path), "[DEC SEP]\t.\r\n[FILEVERSION]\tData 4.1\r\n"
                                   "[Description]\tA car\r\n[ptWC]\t0\t762.5\t300\r\n"
                                   "[Flag]\tTrue\r\n[Small]\t1.5E-05\r\n[Large]\t1E+20\r\n"
                                   "[Whole]\t-7\r\n\r\n");
    CFileStream again = Stream();
    std::string text;
    EXPECT_TRUE(again.FileRead(Path, &text));
    EXPECT_EQ(again.GetContents(), stream.GetContents());
    EXPECT_EQ(text, again.GetContents().substr(0, text.size()));
    EXPECT_THAT(m_box.Shown, IsEmpty());
}

TEST_F(CFileStreamTest, AFieldAddedAgainGoesToTheEnd) {
    CFileStream stream = NewStream();
    stream.AddField("A", 1);
    stream.AddField("B", 2);
    stream.AddField("A", 3);
    EXPECT_EQ(stream.GetContents(),
              "[DEC SEP]\t.\r\n[FILEVERSION]\tData 4.1\r\n[B]\t2\r\n[A]\t3\r\n");
    EXPECT_TRUE(stream.RemoveField("A"));
    EXPECT_FALSE(stream.RemoveField("A"));
    EXPECT_TRUE(stream.RemoveField("DEC SEP"));
    EXPECT_EQ(stream.GetContents(), "[FILEVERSION]\tData 4.1\r\n[B]\t2\r\n[DEC SEP]\t.\r\n");
}

TEST_F(CFileStreamTest, MissingAndEmptyFieldsTakeTheFallback) {
    CFileStream stream = FileOf("[Empty]\t\r\n[Two]\t1\t2\r\n[Odd]\ta\t\tc\r\n[Word]\tx1\r\n\r\n");
    EXPECT_EQ(stream.GetFieldNumber("None"), 0);
    EXPECT_EQ(stream.GetFieldNumber("None", 25), 25);
    EXPECT_EQ(stream.GetFieldNumber("Empty", 25), 25);
    EXPECT_EQ(stream.GetFieldNumber("Word", 25), 0);
    EXPECT_EQ(stream.GetFieldString("None", "x"), "x");
    EXPECT_EQ(stream.GetFieldString("Empty"), "");
    EXPECT_EQ(stream.GetFieldString("two"), "");
    EXPECT_THAT(stream.GetFieldNumber("Two", {}, 3), ElementsAre(1, 2, 0));
    EXPECT_THAT(stream.GetFieldNumber("Two", std::array{7.0, 8.0, 9.0}, 3), ElementsAre(1, 2, 9));
    EXPECT_THAT(stream.GetFieldNumber("Two", {}, 1), ElementsAre(0)); // "1 TAB 2" as one number
    EXPECT_THAT(stream.GetFieldString("Odd", {}, 3), ElementsAre("a", "\tc", ""));
    const std::array<std::string, 4> fallbacks{"p", "q", "r", "s"};
    EXPECT_THAT(stream.GetFieldString("Odd", fallbacks, 4), ElementsAre("a", "\tc", "r", "s"));
    EXPECT_THAT(m_box.Shown, IsEmpty());
}

TEST_F(CFileStreamTest, TextsWithoutEscapesLoseWhatIsTold) {
    CFileStream stream = NewStream();
    stream.AddField("Lines", "one\r\n\r\ntwo\r\n\r\n");
    stream.AddField("Tabs", "\t\ta\tb\t\t");
    stream.AddField("Bracket", "before [ptWC]\t9\t9\t9");
    AddPoint(stream, "ptWC", 1, 2, 3);
    EXPECT_EQ(stream.GetFieldString("Lines"), "one\r\n\r\ntwo");
    EXPECT_EQ(stream.GetFieldString("Tabs"), "a\tb");
    EXPECT_EQ(stream.GetFieldString("Bracket"), "before ");
    // Adding took the earlier "[ptWC]", which stands in the other field's text, for the field.
    EXPECT_THAT(stream.GetFieldNumber("ptWC", {}, 3), ElementsAre(1, 2, 3));
    stream.AddField("Bracket", "shadow [ptWC]\t9\t9\t9");
    AddPoint(stream, "Last", 4, 5, 6);
    EXPECT_THAT(stream.GetFieldNumber("Last", {}, 3), ElementsAre(4, 5, 6));
    EXPECT_EQ(StreamOf("[D]\tx [P]\t9\r\n[P]\t1\r\n").GetFieldNumber("P"), 9);
}

TEST_F(CFileStreamTest, PagesCountFromOne) {
    CFileStream stream = NewStream();
    FieldTable3d table(3, std::vector(3, std::vector<double>(3)));
    for (std::size_t n = 0; n < 27; ++n) {
        table[n / 9][n / 3 % 3][n % 3] = static_cast<double>(n) + 0.5;
    }
    EXPECT_TRUE(stream.AddTable3d("T", table));
    EXPECT_FALSE(stream.RemoveField("T PAGE 0"));
    EXPECT_EQ(stream.GetFieldTable("T PAGE 2"),
              (FieldTable{{2.5, 5.5, 8.5}, {11.5, 14.5, 17.5}, {20.5, 23.5, 26.5}}));
    for (auto& row : table) {
        for (auto& cells : row) {
            cells[0] = 0;
        }
    }
    EXPECT_EQ(stream.GetTable3d("T", 2, 2, 2), table);
    EXPECT_TRUE(stream.AddTable3d("Empty", {}));
    EXPECT_THAT(m_box.Shown, IsEmpty());
}

TEST_F(CFileStreamTest, ReadingAFileThatIsNotThereIsSilent) {
    CFileStream stream = StreamOf("[A]\t1\r\n");
    std::string text = "left over";
    EXPECT_FALSE(stream.FileRead("/data/none.txt", &text));
    EXPECT_EQ(text, "");
    EXPECT_FALSE(stream.FileRead("/data"));
    EXPECT_FALSE(stream.FileRead("/data/"));
    EXPECT_FALSE(stream.FileRead("C:\\data\\"));
    EXPECT_EQ(stream.GetFieldNumber("A"), 1);
    EXPECT_THAT(m_box.Shown, IsEmpty());
}

TEST_F(CFileStreamTest, OnlyLineEndsAreTakenOffTheEndOfAFile) {
    EXPECT_EQ(FileOf("[A]\t1\r\n[B]\t300").GetFieldNumber("B"), 300);
    EXPECT_EQ(FileOf("[A]\t1\n[B]\t300\n").GetFieldNumber("B"), 300);
    EXPECT_EQ(FileOf("[A]\t1\n[B]\t300\n").GetFieldNumber("A"), 1);
    EXPECT_EQ(FileOf("").GetFieldString("A"), "");
    EXPECT_EQ(FileOf("[").GetFieldString(""), "");
    EXPECT_EQ(FileOf("[A]").GetFieldString("A"), "");
    EXPECT_EQ(FileOf("[A]\r\n\r\n").GetFieldString("A"), "");
}

TEST_F(CFileStreamTest, CharactersThatTheFileLacksAreTold) {
    CFileStream stream = NewStream();
    stream.AddField("Description", "Lap at 鈴鹿, [second] Škoda Čáp");
    stream.AddField("Author", "Müller");
    stream.AddField("Team", "Αθήνα");
    EXPECT_TRUE(stream.FileWrite(Path));
    EXPECT_THAT(*m_files.Bytes(Path), HasSubstr("Lap at ??, [second]"));
    ASSERT_EQ(m_box.Shown.size(), 1U);
    EXPECT_EQ(m_box.Shown[0].Prompt, "Some characters can't be kept in the file and were written "
                                     "as \"?\": Description, Team");
    EXPECT_EQ(m_box.Shown[0].Style, msExclamation);
}

TEST_F(CFileStreamTest, AppendsBehindAFile) {
    CFileStream stream = StreamOf("[FILEVERSION]\tX\r\n[DEC SEP]\t.\r\n");
    EXPECT_TRUE(stream.FileWrite(Path));
    EXPECT_TRUE(stream.FileWrite(Path, true));
    const std::string once = stream.GetContents() + "\r\n";
    EXPECT_EQ(m_files.Bytes(Path), once + once);
}

TEST_F(CFileStreamTest, FailuresStayInTheOperationAndAreTold) {
    CFileStream stream = NewStream();
    m_files.Put(Path, "[A]\t1\r\n\r\n");
    m_files.RefuseReading(Path);
    EXPECT_FALSE(stream.FileRead(Path));
    m_files.FailOnChange(1);
    EXPECT_FALSE(stream.FileWrite(Path));
    const double none = std::numeric_limits<double>::quiet_NaN();
    stream.AddField("A", 1);
    EXPECT_FALSE(stream.AddField("A", none));
    EXPECT_EQ(stream.GetFieldNumber("A"), 1);
    EXPECT_FALSE(stream.AddTable("T", FieldTable{{1, 2}, {3}}));
    EXPECT_FALSE(stream.AddTable3d("T", {{{1, 2}}}, 0, 0, 5));
    EXPECT_THAT(stream.GetTable3d("T", 1, 1, 1), IsEmpty());
    EXPECT_THAT(stream.GetFieldTable("DEC SEP", -2), IsEmpty());
    EXPECT_THAT(stream.GetFieldNumber("A", std::array{1.0}, 2), IsEmpty());
    EXPECT_THAT(stream.GetFieldString("A", {}, 0), IsEmpty());
    EXPECT_THAT(m_box.Prompts(),
                ElementsAre("An error occurred while reading file: /data/stream.txt",
                            "An error occurred while writing file: /data/stream.txt\r\nError was: "
                            "No space left on device",
                            "An error occurred while adding field: A to the filestream",
                            "An error occurred while adding table: T to the filestream",
                            "An error occurred while adding 3d table: T to the filestream",
                            "An error occurred while getting 3d table: T",
                            "An error occurred while getting table: DEC SEP",
                            "An error occurred while getting field: A\r\nError was: Subscript out "
                            "of range",
                            "An error occurred while getting sub field: A"));
}

TEST_F(CFileStreamTest, VersionsAreHeldAgainstThoseAccepted) {
    std::string message = "left over";
    CFileStream stream = NewStream();
    EXPECT_TRUE(stream.IsCompatibleVersion(false, message));
    EXPECT_EQ(message, "");
    EXPECT_TRUE(stream.IsCompatibleVersion(true, message, {.File = "dATA 4.1"}));
    EXPECT_TRUE(stream.IsCompatibleVersion(true, message, {.File = "TA 4.1"}));
    EXPECT_THAT(m_box.Shown, IsEmpty());

    // What is shown of a wrong one is seen in the main window.
    EXPECT_TRUE(stream.IsCompatibleVersion(
        true, message, {.File = "B 1", .Required = "C 1", .Compatible = "A 1 B 1"}));

    stream.SetContents("[FILE VERSION]\tData 3\r\n");
    EXPECT_FALSE(stream.IsCompatibleVersion(true, message));
    EXPECT_THAT(message, EndsWith("available = Data 3 "));
    stream.SetContents("[FILE VERSION]\tData 3\r\n[FILEVERSION]\tData 5\r\n");
    EXPECT_TRUE(stream.IsCompatibleVersion(true, message)); // it is now the stream's own
}

} // namespace
} // namespace corvanta::test
