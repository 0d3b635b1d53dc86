#include "platform/DiskFileServices.h"

#include "model/Failure.h"
#include "tests/support/MemoryFileServices.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Testing.h"

#include <csignal>
#include <functional>
#include <thread>

#include <sys/resource.h>
#include <sys/stat.h>

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
    const Failure noFile = FailureOf([&] { (void)m_files.ReadBytes(m_folder / "none.WSP"); });
    EXPECT_EQ(noFile.Number(), fnFileNotFound);
    EXPECT_EQ(noFile.Description(), "File not found");
    EXPECT_EQ(FailureOf([&] { m_files.DeleteFile(m_folder / "none.WSP"); }).Number(),
              fnFileNotFound);
    const Failure noFolder = FailureOf([&] { m_files.WriteBytes(m_folder / "none/x.WSP", "x"); });
    EXPECT_EQ(noFolder.Number(), fnFileAccess);
    EXPECT_EQ(noFolder.Description(), "No such file or directory: " + m_folder / "none/x.WSP");
    EXPECT_FALSE(m_files.FileExists(m_folder.Path()));
    EXPECT_TRUE(m_files.FolderExists(m_folder.Path() + "/"));
    EXPECT_FALSE(m_files.FolderExists(m_folder / "none"));
}

TEST_F(DiskFileServicesTest, AFolderIsNoFile) {
    m_files.MakeFolder(m_folder / "a/b/");
    m_files.MakeFolder(m_folder / "a/b/"); // there already
    for (const auto& work :
         std::vector<std::function<void()>>{[&] { (void)m_files.ReadBytes(m_folder / "a"); },
                                            [&] { m_files.WriteBytes(m_folder / "a", "x"); },
                                            [&] { m_files.AppendBytes(m_folder / "a", "x"); },
                                            [&] { m_files.DeleteFile(m_folder / "a/b"); }}) {
        EXPECT_EQ(FailureOf(work).Number(), fnFileAccess);
        EXPECT_THAT(FailureOf(work).Description(), StartsWith("Is a directory: "));
    }
    EXPECT_THAT(m_folder.Names(), ElementsAre("a"));
    EXPECT_TRUE(m_files.FolderExists(m_folder / "a/b"));
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
    std::thread reader([&] { received = DiskFileServices().ReadBytes(pipe); });
    m_files.WriteBytes(pipe, "through the pipe");
    reader.join();
    EXPECT_EQ(received, "through the pipe");
    EXPECT_TRUE(fs::is_fifo(pipe));
}

/// Lets files grow to a number of bytes only, for the life of the object.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) : m_formerHandler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &m_former);
        const rlimit limit{bytes, m_former.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    FileSizeLimit(FileSizeLimit&&) = delete;
    FileSizeLimit& operator=(FileSizeLimit&&) = delete;
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &m_former);
        std::signal(SIGXFSZ, m_formerHandler);
    }

  private:
    rlimit m_former{};
    void (*m_formerHandler)(int);
};

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
