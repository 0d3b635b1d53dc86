#include "platform/IniSettingsStore.h"

#include "model/Failure.h"
#include "tests/support/MemoryFileServices.h"

#include <gtest/gtest.h>

#include <string>

namespace corvanta::test {
namespace {

using namespace std::string_literals;

constexpr const char* Path = "/settings/Corvanta.ini";

TEST(IniSettingsStoreTest, ValuesComeBackAsTheyWere) {
    MemoryFileServices files;
    files.PutFolder("/settings");
    IniSettingsStore store(files, Path);
    const std::string odd = " = [x] C:\\new\\run\r\nŠkoda\t";
    store.Write("Options", "DataDir", odd);
    store.Write("Units", "Mass", "kg");
    store.Write("Options", "Empty", "");
    store.Write("Units", "Mass", "lbs");
    store.Save();

    const IniSettingsStore again(files, Path);
    EXPECT_EQ(again.Read("Options", "DataDir", "none"), odd);
    EXPECT_EQ(again.Read("Units", "Mass", "none"), "lbs");
    EXPECT_EQ(again.Read("Options", "Empty", "none"), "");
    EXPECT_EQ(again.Read("Options", "Mass", "none"), "none");
    EXPECT_EQ(again.Read("Placement", "Mass", "none"), "none");
}

TEST(IniSettingsStoreTest, TwoProgramsEachSaveWhatTheyChanged) {
    MemoryFileServices files;
    files.Put(Path, "[Options]\nBump=25\nDroop=25\n[Units]\nMass=kg\n");
    IniSettingsStore first(files, Path);
    IniSettingsStore second(files, Path);
    first.Write("Options", "Droop", "30");
    first.Write("Options", "New", "1");
    first.Save();
    EXPECT_EQ(files.Bytes(Path), "[Options]\nBump=25\nDroop=30\nNew=1\n[Units]\nMass=kg\n");
    second.Write("Options", "Droop", "25"); // as it was
    second.Save();
    EXPECT_EQ(files.Changes().size(), 1U) << "nothing changed";
    second.Write("Units", "Mass", "lbs");
    second.Save();
    EXPECT_EQ(files.Bytes(Path), "[Options]\nBump=25\nDroop=30\nNew=1\n[Units]\nMass=lbs\n");
    EXPECT_EQ(second.Read("Options", "Droop", ""), "25") << "until it is asked to look again";
    second.Write("Options", "Bump", "26");
    second.Refresh("Options");
    EXPECT_EQ(second.Read("Options", "Droop", ""), "30");
    EXPECT_EQ(second.Read("Options", "Bump", ""), "26");
    // A file that somebody took away is written whole again.
    files.DeleteFile(Path);
    second.Save();
    EXPECT_EQ(files.Bytes(Path), "[Options]\nBump=26\nDroop=30\nNew=1\n[Units]\nMass=lbs\n");
}

TEST(IniSettingsStoreTest, DamageCostsItsOwnLinesOnly) {
    MemoryFileServices files;
    files.Put(Path, "\xEF\xBB\xBF[Options]\r\nBump=25\r\nrubbish\n=nokey\n\n[]\n[Uni\n"
                    "Droop=a\\qb\\\nPage\0Throw=True\n[Units]\nMass=kg"s);
    const IniSettingsStore store(files, Path);
    EXPECT_EQ(store.Read("Options", "Bump", ""), "25");
    EXPECT_EQ(store.Read("Options", "Droop", ""), "a\\qb\\");
    EXPECT_EQ(store.Read("Units", "Mass", ""), "kg");
    EXPECT_EQ(store.Read("Options", "", "none"), "none");
}

TEST(IniSettingsStoreTest, AFailedSaveLeavesTheOldStore) {
    MemoryFileServices files;
    files.Put(Path, "[Options]\nBump=25\n");
    IniSettingsStore store(files, Path);
    store.Write("Options", "Bump", "30");
    files.FailOnChange(1);
    EXPECT_THROW(store.Save(), Failure);
    EXPECT_EQ(files.Bytes(Path), "[Options]\nBump=25\n");
    store.Save();
    EXPECT_EQ(files.Bytes(Path), "[Options]\nBump=30\n");
}

} // namespace
} // namespace corvanta::test
