#include "export/ListFiles.h"

#include "tests/support/MemoryFileServices.h"
#include "tests/support/RecordingMessageBox.h"
#include "tests/support/Testing.h"

#include <vector>

namespace corvanta::test {
namespace {

const std::string LegacyChannels = "/program/customchannels.txt";
const std::string ChannelsPath = "/settings/customchannels.txt";
const std::string LegacyViews = "/program/exporttables.txt";
const std::string ViewsPath = "/settings/exporttables.txt";

class ListFilesTest : public testing::Test {
  protected:
    ListFilesTest() {
        m_files.PutFolder("/program");
        m_files.PutFolder("/settings");
        m_catalogue.ChannelsSetup(m_units);
        m_channels.Add(99); // a list from before
    }

    const std::vector<int>& ReadChannels() {
        m_stands = CustomChannelsRead(m_channels, m_catalogue, LegacyChannels, ChannelsPath,
                                      m_separators, m_files, m_messages);
        return m_channels.Ids();
    }
    const std::vector<int>& ReadChannels(const std::string& bytes) {
        m_files.Put(ChannelsPath, bytes);
        return ReadChannels();
    }
    std::vector<int> ReadViews() {
        m_stands =
            ExportTablesRead(m_views, LegacyViews, ViewsPath, m_separators, m_files, m_messages);
        std::vector<int> ticked;
        for (int view = 1; view <= SelectableViewCount; ++view) {
            if (m_views[view]) {
                ticked.push_back(view);
            }
        }
        return ticked;
    }

    MemoryFileServices m_files;
    RecordingMessageBox m_box;
    Messages m_messages{m_box};
    Separators m_separators;
    FundamentalUnits m_units;
    ChannelCatalogue m_catalogue;
    CustomChannels m_channels;
    SelectedViews m_views;
    bool m_stands = false; ///< a file for the list that was read last
};

TEST_F(ListFilesTest, ChannelsKeepTheUsersOrder) {
    CustomChannels list;
    list.Add(47);
    list.Add(14);
    list.Add(1);
    EXPECT_TRUE(CustomChannelsWrite(list, ChannelsPath, m_separators, m_files, m_messages));
    EXPECT_EQ(m_files.Bytes(ChannelsPath), "[DEC SEP]\t.\r\n"
                                           "[FILEVERSION]\tSUSP CUSTOM EXPORT LIST 2.0\r\n"
                                           "[COUNT]\t3\r\n[0]\t47\r\n[1]\t14\r\n[2]\t1\r\n\r\n");
    EXPECT_THAT(ReadChannels(), ElementsAre(47, 14, 1));
}

TEST_F(ListFilesTest, ViewsKeepTheirTicksAndAFirstStartHasNone) {
    m_views.Set(3, true);
    EXPECT_EQ(ReadChannels().size() + ReadViews().size(), 0U);
    EXPECT_FALSE(m_stands);
    m_views.Set(2, true);
    m_views.Set(12, true);
    EXPECT_TRUE(ExportTablesWrite(m_views, ViewsPath, m_separators, m_files, m_messages));
    EXPECT_THAT(*m_files.Bytes(ViewsPath),
                HasSubstr("[FILEVERSION]\tSUSP CUSTOM VIEWS LIST 1.0\r\n"
                          "[Anti-Dive, -Squat & -Roll]\tFalse\r\n[Lateral Geometry]\tTrue\r\n"));
    m_views = {};
    EXPECT_THAT(ReadViews(), ElementsAre(2, 12));
}

TEST_F(ListFilesTest, OldFilesWinAndMoveToTheSettings) {
    m_files.Put(LegacyChannels, "[Wheel Travel]\tTrue\r\n[Camber Angle]\tTrue\r\n"
                                "[Steer Angle - Bump ]\tTrue\r\n[Link Load Coefficient]\tTrue\r\n"
                                "[Caster Angle]\tFalse\r\n[Half Track]\ttrue\r\n\r\n");
    m_files.Put(ChannelsPath, "[COUNT]\t1\r\n[0]\t1\r\n\r\n");
    EXPECT_THAT(ReadChannels(), ElementsAre(14, 37, 47));
    m_files.Put(LegacyViews, "[Link Loads]\tTrue\r\n\r\n");
    m_files.Put(ViewsPath, "[Lateral Geometry]\tTrue\r\n\r\n");
    EXPECT_THAT(ReadViews(), ElementsAre(9));
    EXPECT_THAT(m_files.Paths(), ElementsAre(ChannelsPath, ViewsPath));
    // The next start, before anything else was saved.
    EXPECT_THAT(ReadChannels(), ElementsAre(14, 37, 47));
    EXPECT_THAT(ReadViews(), ElementsAre(9));
}

TEST_F(ListFilesTest, AMoveThatFailsLosesNothing) {
    for (int n = 1; n <= 4; ++n) {
        SCOPED_TRACE(n);
        m_files.Put(LegacyChannels, "[Camber Angle]\tTrue\r\n\r\n");
        m_files.Put(LegacyViews, "[Link Loads]\tTrue\r\n\r\n");
        m_files.FailOnChange(n);
        EXPECT_THAT(ReadChannels(), ElementsAre(14));
        EXPECT_EQ(m_stands, n != 1);
        EXPECT_THAT(ReadViews(), ElementsAre(9));
        EXPECT_EQ(m_stands, n != 3);
        m_files.FailOnChange(0);
        EXPECT_THAT(ReadChannels(), ElementsAre(14));
        EXPECT_THAT(ReadViews(), ElementsAre(9));
    }
    EXPECT_THAT(m_box.Shown, IsEmpty());
    EXPECT_THAT(m_files.Paths(), ElementsAre(ChannelsPath, ViewsPath));
}

TEST_F(ListFilesTest, AnOldFileThatCannotBeReadStaysAndTheNewOneCounts) {
    m_files.Put(LegacyChannels, "[Camber Angle]\tTrue\r\n\r\n");
    m_files.RefuseReading(LegacyChannels);
    EXPECT_THAT(ReadChannels("[COUNT]\t1\r\n[0]\t2\r\n\r\n"), ElementsAre(2));
    EXPECT_THAT(m_box.Prompts(),
                ElementsAre("An error occurred while reading file: " + LegacyChannels));
    EXPECT_TRUE(m_files.FileExists(LegacyChannels));
    m_files.RefuseReading(ChannelsPath);
    EXPECT_THAT(ReadChannels(), IsEmpty());
    EXPECT_TRUE(m_stands) << "an empty list must not take the place of what can't be read";
}

TEST_F(ListFilesTest, DamageCostsItsOwnEntriesOnly) {
    EXPECT_THAT(ReadChannels("[COUNT]\t11\r\n[0]\t3\r\n[1]\tx\r\n[2]\t52\r\n[3]\t26\r\n[4]\t-1\r\n"
                             "[5]\t1E+300\r\n[6]\t3\r\n[7]\t4.5\r\n[8]\t32767\r\n[9]\t32768\r\n"
                             "[10]\t51\r\n\r\n"),
                ElementsAre(3, 52, 26, 32767, 51));
    EXPECT_THAT(ReadChannels("[COUNT]\t1E+300\r\n[0]\t3\r\n[2]\t4\r\n"), ElementsAre(3, 4));
    EXPECT_THAT(ReadChannels("[COUNT]\t-5\r\n[0]\t3\r\n"), IsEmpty());
    EXPECT_THAT(ReadChannels(std::string(3000, '[')), IsEmpty());
    m_files.Put(ViewsPath, "[Lateral Geometry\tTrue\r\n[Link Loads]\tTrue\r\n[Link Leng");
    EXPECT_THAT(ReadViews(), ElementsAre(9));
    EXPECT_THAT(m_box.Shown, IsEmpty());
}

} // namespace
} // namespace corvanta::test
