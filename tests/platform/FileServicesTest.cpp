#include "platform/DiskFileServices.h"

#include "model/Failure.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Testing.h"

#include <chrono>
#include <fstream>
#include <functional>
#include <thread>

#include <sys/stat.h>
#include <unistd.h>

namespace corvanta::test {
namespace {

namespace fs = std::filesystem;

TEST(FileServicesTest, PathsFallApart) {
    EXPECT_EQ(FileServices::ParentFolder("/data/front.WSP"), "/data/");
    EXPECT_EQ(FileServices::ParentFolder("/front.WSP"), "/");
    EXPECT_EQ(FileServices::ParentFolder("front.WSP"), "");
    EXPECT_EQ(FileServices::BaseName("/da.ta/front"), "front");
    EXPECT_EQ(FileServices::BaseName("/data/front.v2.WSP"), "front.v2");
    EXPECT_EQ(FileServices::BaseName("/data/.WSP"), "");
    EXPECT_EQ(FileServices::BaseName("/data/"), "");
    EXPECT_EQ(FileServices::BaseName("/data/.."), "");
    EXPECT_EQ(NativePath("\\data\\front.WSP"), "/data/front.WSP");
}

class DiskFileServicesTest : public testing::Test {
  protected:
    TemporaryFolder m_folder;
    DiskFileServices m_files;
};

TEST_F(DiskFileServicesTest, WritesAndReadsWholeFiles) {
    const std::string path = m_folder / "Größe.txt";
    std::string bytes(200000, 'x');
    bytes[100] = '\0';
    bytes[101] = '\r';
    m_files.WriteBytes(path, bytes);
    EXPECT_EQ(m_files.ReadBytes(path), bytes);
    m_files.WriteBytes(path, "");
    EXPECT_EQ(m_files.ReadBytes(path), "");
    m_files.WriteBytesSoon(path, bytes);
    EXPECT_EQ(m_files.ReadBytes(path), bytes);
    m_files.WriteBytesSoon(path, "");
    EXPECT_THAT(m_folder.Names(), SizeIs(1)) << "no temporary stays";
    m_files.AppendBytes(path, "one");
    m_files.AppendBytes(path, "two");
    EXPECT_EQ(m_files.ReadBytes(path), "onetwo");
    m_files.WriteText(path, "5 €");
    EXPECT_EQ(m_files.ReadBytes(path), "5 \x80");
    EXPECT_EQ(m_files.ReadText(path), "5 €");
    EXPECT_THAT(m_folder.Names(), ElementsAre("Größe.txt"));
    m_files.DeleteFile(path);
    EXPECT_FALSE(m_files.FileExists(path));
}

TEST_F(DiskFileServicesTest, MissingFilesAndFoldersAreToldApart) {
    const std::string none = m_folder / "none.WSP";
    EXPECT_EQ(FailureOf([&] { (void)m_files.ReadBytes(none); }).Number(), fnFileNotFound);
    EXPECT_EQ(FailureOf([&] { m_files.DeleteFile(none); }).Number(), fnFileNotFound);
    EXPECT_EQ(FailureOf([&] { m_files.WriteBytes(m_folder / "none/x.WSP", "x"); }).Description(),
              "No such file or directory: " + m_folder / "none/x.WSP");
    m_files.MakeFolder(m_folder / "a/b/");
    m_files.MakeFolder(m_folder / "a/b/"); // there already
    EXPECT_FALSE(m_files.FileExists(m_folder / "a"));
    EXPECT_TRUE(m_files.FolderExists(m_folder / "a/b/"));
    for (const auto& work :
         std::vector<std::function<void()>>{[&] { (void)m_files.ReadBytes(m_folder / "a"); },
                                            [&] { m_files.WriteBytes(m_folder / "a", "x"); },
                                            [&] { m_files.AppendBytes(m_folder / "a", "x"); },
                                            [&] { m_files.DeleteFile(m_folder / "a/b"); }}) {
        EXPECT_THAT(FailureOf(work).Description(), StartsWith("Is a directory: "));
    }
    EXPECT_THAT(m_folder.Names(), ElementsAre("a"));
    m_files.WriteBytes(m_folder / "file", "x");
    EXPECT_EQ(FailureOf([&] { m_files.MakeFolder(m_folder / "file/sub"); }).Number(), fnFileAccess);
}

TEST_F(DiskFileServicesTest, AWriteFollowsLinksAndKeepsPermissions) {
    const std::string target = m_folder / "target";
    m_files.WriteBytes(target, "old");
    fs::permissions(target, fs::perms::owner_read | fs::perms::owner_write);
    m_files.MakeFolder(m_folder / "links");
    fs::create_symlink("../target", m_folder / "links/near");
    fs::create_symlink(m_folder / "links/near", m_folder / "far");
    m_files.WriteBytes(m_folder / "far", "new");
    EXPECT_EQ(m_files.ReadBytes(target), "new");
    EXPECT_EQ(fs::status(target).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_TRUE(fs::is_symlink(m_folder / "far"));
    EXPECT_TRUE(fs::is_symlink(m_folder / "links/near"));

    fs::create_symlink("later", m_folder / "dangling");
    m_files.WriteBytes(m_folder / "dangling", "made");
    EXPECT_EQ(m_files.ReadBytes(m_folder / "later"), "made");

    fs::create_symlink("ring", m_folder / "ring");
    EXPECT_EQ(FailureOf([&] { m_files.WriteBytes(m_folder / "ring", "x"); }).Number(),
              fnFileAccess);
    EXPECT_TRUE(fs::is_symlink(m_folder / "ring"));
}

TEST_F(DiskFileServicesTest, DevicesAndPipesAreWrittenTo) {
    m_files.WriteBytes("/dev/null", "x");
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    if (fs::is_character_file("/dev/full")) {
        const Failure full = FailureOf([&] { m_files.WriteBytes("/dev/full", "x"); });
        EXPECT_EQ(full.Number(), fnFileAccess);
        EXPECT_EQ(full.Description(), "No space left on device: /dev/full");
    }
    const std::string pipe = m_folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::string received;
    std::thread reader([&] { std::getline(std::ifstream(pipe), received); });
    m_files.WriteBytes(pipe, "through the pipe");
    reader.join();
    EXPECT_EQ(received, "through the pipe");
    EXPECT_TRUE(fs::is_fifo(pipe));
    // Read are regular files alone, of a size that has a purpose.
    const std::string large = m_folder / "large";
    m_files.WriteBytes(large, std::string(LargestFile, 'x'));
    EXPECT_EQ(m_files.ReadBytes(large).size(), LargestFile);
    fs::resize_file(large, 200'000'000);
    EXPECT_EQ(FailureOf([&] { (void)m_files.ReadBytes(large); }).Description(),
              "The file is larger than 16 MB: " + large);
    for (const std::string& path : {pipe, std::string("/dev/zero")}) {
        EXPECT_EQ(FailureOf([&] { (void)m_files.ReadBytes(path); }).Description(),
                  "Not a file that can be read whole: " + path);
    }
}

TEST_F(DiskFileServicesTest, AParentBehindALinkIsTheParentOfItsTarget) {
    m_files.MakeFolder(m_folder / "team/cars");
    fs::create_symlink("team/cars", m_folder / "link");
    m_files.WriteBytes(m_folder / "team/front.WSP", "meant");
    m_files.WriteBytes(m_folder / "front.WSP", "another");
    const std::string path = m_files.FullPath(m_folder / "link/../front.WSP");
    EXPECT_EQ(m_files.ReadBytes(path), "meant");
    EXPECT_EQ(path, fs::canonical(m_folder.Path()).string() + "/team/front.WSP");
    EXPECT_EQ(m_files.FullPath(m_folder / "link/./none/new.WSP"), m_folder / "link/none/new.WSP");
    EXPECT_TRUE(m_files.SameFile(path, m_folder / "link/../front.WSP"));
    EXPECT_FALSE(m_files.SameFile(path, m_folder / "front.WSP"));
    EXPECT_FALSE(m_files.SameFile(m_folder / "none", m_folder / "none"));
}

/// The rights of a user who is not the system's, for the life of the object.
class CommonUser {
  public:
    CommonUser() : m_former(geteuid()) { EXPECT_EQ(seteuid(m_former == 0 ? 65534 : m_former), 0); }
    CommonUser(const CommonUser&) = delete;
    CommonUser& operator=(const CommonUser&) = delete;
    CommonUser(CommonUser&&) = delete;
    CommonUser& operator=(CommonUser&&) = delete;
    ~CommonUser() { EXPECT_EQ(seteuid(m_former), 0); }

  private:
    uid_t m_former;
};

TEST_F(DiskFileServicesTest, AWritableFileInALockedFolderIsWrittenInPlace) {
    const std::string folder = m_folder / "locked";
    const std::string path = folder + "/front.WSP";
    m_files.MakeFolder(folder);
    m_files.WriteBytes(path, "old bytes");
    ASSERT_EQ(chmod(path.c_str(), 0666), 0);
    ASSERT_EQ(chmod(folder.c_str(), 0555), 0);
    {
        const CommonUser user;
        m_files.WriteBytes(path, "new");
        EXPECT_EQ(m_files.ReadBytes(path), "new");
        const FileSizeLimit full(1000);
        EXPECT_EQ(
            FailureOf([&] { m_files.WriteBytes(path, std::string(5000, 'x')); }).Description(),
            "File too large: " + path);
        EXPECT_EQ(m_files.ReadBytes(path), "new");
        EXPECT_EQ(FailureOf([&] { m_files.WriteBytes(folder + "/rear.WSP", "x"); }).Description(),
                  "Permission denied: the folder " + folder + " takes no new file");
    }
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
    const CommonUser user;
    EXPECT_EQ(FailureOf([&] { m_files.WriteBytes(path, "x"); }).Description(),
              "Permission denied: " + path);
}

TEST_F(DiskFileServicesTest, WhatKilledWritersLeftIsRemovedAfterADay) {
    const std::string forgotten = ".corvanta-0123456789abcdef.tmp";
    const std::string fresh = ".corvanta-0123456789abcdee.tmp";
    const std::string another = ".corvanta-notes.tmp";
    for (const std::string& name : {forgotten, fresh, another}) {
        std::ofstream(m_folder / name) << "x";
        const auto age = std::chrono::hours(name == fresh ? 23 : 25);
        fs::last_write_time(m_folder / name, fs::file_time_type::clock::now() - age);
    }
    m_files.WriteBytes(m_folder / "front.WSP", "x");
    EXPECT_THAT(m_folder.Names(), ElementsAre(fresh, another, "front.WSP"));
}

TEST_F(DiskFileServicesTest, AWriteThatFailsHalfWayLeavesTheOldFileAlone) {
    const std::string path = m_folder / "front.WSP";
    m_files.WriteBytes(path, "old");
    {
        const FileSizeLimit limit(1000);
        const Failure large = FailureOf([&] { m_files.WriteBytes(path, std::string(5000, 'x')); });
        EXPECT_EQ(large.Number(), fnFileAccess);
        EXPECT_EQ(large.Description(), "File too large: " + path);
    }
    EXPECT_THAT(m_folder.Names(), ElementsAre("front.WSP"));
    EXPECT_EQ(m_files.ReadBytes(path), "old");
    EXPECT_EQ(
        FailureOf([&] { m_files.WriteBytes(m_folder / std::string(300, 'n'), "x"); }).Number(),
        fnFileAccess);
    EXPECT_THAT(m_folder.Names(), ElementsAre("front.WSP"));
}

TEST_F(DiskFileServicesTest, TheApplicationDataFolderIsTheEnvironments) {
    const ScopedEnvironment home("HOME", "/home/driver");
    const auto folderWith = [&](const std::optional<std::string>& settings) {
        const ScopedEnvironment variable("XDG_CONFIG_HOME", settings);
        return m_files.SpecialFolder(ApplicationDataFolder);
    };
    EXPECT_EQ(folderWith("/settings/"), "/settings");
    EXPECT_EQ(folderWith("relative"), "/home/driver/.config");
    EXPECT_EQ(folderWith(std::nullopt), "/home/driver/.config");
    EXPECT_EQ(m_files.SpecialFolder(5), std::nullopt);
    const ScopedEnvironment homeless("HOME", std::nullopt);
    EXPECT_EQ(folderWith(std::nullopt), std::nullopt);
}

} // namespace
} // namespace corvanta::test
