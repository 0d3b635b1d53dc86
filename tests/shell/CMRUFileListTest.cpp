#include "shell/CMRUFileList.h"

#include "platform/IniSettingsStore.h"
#include "tests/support/MemoryFileServices.h"
#include "tests/support/MemorySettingsStore.h"
#include "tests/support/RecordingMessageBox.h"
#include "tests/support/Testing.h"

namespace corvanta::test {
namespace {

class CMRUFileListTest : public testing::Test {
  protected:
    CMRUFileListTest() { m_list.Initialise(m_items, 4, true, "", m_store, m_messages); }

    [[nodiscard]] std::vector<std::string> Files() const {
        std::vector<std::string> files;
        for (int i = 1; i <= m_list.FileCount(); ++i) {
            files.push_back(m_list.File(i));
        }
        return files;
    }

    MemorySettingsStore m_store;
    RecordingMessageBox m_box;
    Messages m_messages{m_box};
    std::vector<MenuItem> m_items;
    CMRUFileList m_list;
};

TEST_F(CMRUFileListTest, KeepsTheLatestFilesFirstAndEachOnce) {
    for (const char* path : {"/a", "/b", "/c", "", "/d", "/B"}) {
        m_list.AddFile(path);
    }
    EXPECT_THAT(Files(), ElementsAre("/B", "/d", "/c", "/a"));
    m_list.AddFile("/e");
    EXPECT_THAT(Files(), ElementsAre("/e", "/B", "/d", "/c"));
    EXPECT_EQ(m_list.File(0), "");
    EXPECT_FALSE(m_list.FileExists(5));
}

TEST_F(CMRUFileListTest, ADamagedStoreIsToldAndLeavesAnEmptyList) {
    m_store.Write("MRU", "Count", "many");
    CMRUFileList list;
    list.Initialise(m_items, 4, true, "", m_store, m_messages);
    EXPECT_EQ(list.FileCount(), 0);
    ASSERT_EQ(m_box.Shown.size(), 1U);
    EXPECT_EQ(m_box.Shown[0].Prompt, "There was an error while initialising the MRU object.\r"
                                     "Error was Type mismatch in key Count of section MRU of "
                                     "/settings.ini");
    EXPECT_EQ(m_box.Shown[0].Style, msInformation);
}

TEST_F(CMRUFileListTest, TwoProgramsShareTheList) {
    MemoryFileServices files;
    files.Put("/settings.ini", "[MRU]\nCount=3\nFile1=/a\nFile2=/b\nFile3=/c\n");
    IniSettingsStore stores[2]{{files, "/settings.ini"}, {files, "/settings.ini"}};
    CMRUFileList lists[2];
    for (int n = 0; n < 2; ++n) {
        lists[n].Initialise(m_items, 4, true, "", stores[n], m_messages);
    }
    const auto enter = [&](int n, const std::string& path) {
        lists[n].AddFile(path);
        lists[n].Save(stores[n]);
        stores[n].Save();
    };
    enter(0, "/first");
    enter(1, "/second");
    enter(1, "/c");
    lists[0].Save(stores[0]); // at its end, with nothing new
    m_list = lists[0];
    EXPECT_THAT(Files(), ElementsAre("/c", "/second", "/first", "/a"));
    EXPECT_EQ(IniSettingsStore(files, "/settings.ini").Read("MRU", "File3", ""), "/first");
}

TEST_F(CMRUFileListTest, ShowsItsFilesBetweenTwoLines) {
    m_list.AddFile("/cars/R&D/front.WSP");
    m_list.ListFiles(m_items);
    ASSERT_EQ(m_items.size(), 6U);
    EXPECT_EQ(m_items[0].Caption, "-");
    EXPECT_TRUE(m_items[0].Visible && m_items[5].Visible);
    EXPECT_EQ(m_items[1].Caption, "&1  /cars/R&&D/front.WSP");
    EXPECT_EQ(m_items[1].Tag, 1);
    EXPECT_TRUE(m_items[1].Visible && m_items[1].Enabled);
    EXPECT_FALSE(m_items[2].Visible);
}

TEST(MenuPathTest, IsCutAtAFolderThatLeavesAtMost32Characters) {
    EXPECT_EQ(MenuPath("/team/gt3-cars/twenty-twenty-six/front.WSP"),
              ".../twenty-twenty-six/front.WSP");
    EXPECT_EQ(MenuPath("/cars/twenty-twenty-six/front.WSP"), "/cars/twenty-twenty-six/front.WSP")
        << "nothing stands before the only cut";
    EXPECT_EQ(MenuPath("/cars/twenty-twenty-5/front.WSP2"), "/cars/twenty-twenty-5/front.WSP2");
    EXPECT_EQ(MenuPath("/some/folder/with/a/long/name/front-suspension.WSP"),
              ".../a/long/name/front-suspension.WSP");
    // A name too long for the room is left with its whole path: nothing stands before the cut.
    const std::string longName(40, 'n');
    EXPECT_EQ(MenuPath("/" + longName), "/" + longName);
    EXPECT_EQ(MenuPath("/cars/" + longName), "/cars/" + longName);
    EXPECT_EQ(MenuPath(longName), longName);
}

} // namespace
} // namespace corvanta::test
