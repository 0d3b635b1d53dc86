#include "shell/RecoveryCopy.h"

#include "persistence/MData.h"
#include "platform/NoWindowSystem.h"
#include "tests/support/FakeWindowSystem.h"
#include "tests/support/MemoryFileServices.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

namespace corvanta::test {
namespace {

const std::string Folder = "/recovery/";
const std::string Copy = "/recovery/1.WSP";

class RecoveryCopyTest : public testing::Test {
  protected:
    RecoveryCopyTest() {
        m_work.Units = MetricUnits();
        m_work.Document = LoadSample("touring-front-wishbone.WSP");
        m_work.DocumentPath = "/cars/front.WSP";
    }

    [[nodiscard]] RecoveryCopy Started() {
        RecoveryCopy copy(m_files, m_locks);
        copy.SetFolder(Folder);
        return copy;
    }

    /// The documents kept, of all programs.
    [[nodiscard]] std::vector<std::string> Kept() const {
        std::vector<std::string> kept;
        for (const std::string& path : m_files.Paths()) {
            if (path.ends_with(".WSP")) {
                kept.push_back(path);
            }
        }
        return kept;
    }

    MemoryFileServices m_files;
    FakeWindowSystem m_locks;
    Program m_work;
};

TEST_F(RecoveryCopyTest, WorkIsListedNewestFirstAndEndsOneByOne) {
    RecoveryCopy first = Started();
    RecoveryCopy second = Started();
    m_work.FileMark = "12-34";
    ASSERT_TRUE(first.Keep(m_work));
    m_work.DocumentPath.clear();
    m_work.FileMark.clear();
    ASSERT_TRUE(second.Keep(m_work));
    RecoveryCopy next = Started();
    EXPECT_THAT(next.List(), IsEmpty()) << "their programs run";
    m_locks.Locked.clear(); // they crashed
    const std::vector<RecoveredWork> list = next.List();
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].CopyPath + list[0].DocumentPath + list[0].FileMark, "/recovery/2.WSP");
    EXPECT_EQ(list[1].CopyPath, Copy);
    EXPECT_EQ(list[1].DocumentPath, "/cars/front.WSP");
    EXPECT_EQ(list[1].FileMark, "12-34");
    EXPECT_GT(list[0].Time, list[1].Time);

    RecoveryCopy other = Started();
    EXPECT_TRUE(next.Adopt(1));
    EXPECT_FALSE(other.Adopt(1) || other.Discard(1)) << "it is in hand";
    EXPECT_EQ(other.List().size(), 1U);
    EXPECT_TRUE(other.Discard(2));
    EXPECT_FALSE(other.Adopt(2));
    EXPECT_THAT(Kept(), ElementsAre(Copy)) << "the other one alone";
    EXPECT_TRUE(next.Keep(m_work)) << "in the place that is its own now";
    EXPECT_THAT(Kept(), ElementsAre(Copy));
    next.Drop();
    EXPECT_THAT(m_files.Paths(), IsEmpty());
}

TEST_F(RecoveryCopyTest, EveryProgramHasAPlaceOfItsOwn) {
    std::vector<RecoveryCopy> programs;
    for (int n = 0; n < RecoveryCopy::Places; ++n) {
        programs.push_back(Started());
        EXPECT_TRUE(programs.back().Keep(m_work));
        EXPECT_TRUE(programs.back().Keep(m_work)) << "over its own copy";
    }
    EXPECT_EQ(Kept().size(), static_cast<std::size_t>(RecoveryCopy::Places));
    EXPECT_FALSE(Started().Keep(m_work)) << "no place is free";
    programs[6].Drop();
    EXPECT_FALSE(m_files.FileExists("/recovery/7.WSP"));
    EXPECT_FALSE(Started().Keep(m_work)) << "its program runs on and needs the place again";
    EXPECT_TRUE(programs[6].Keep(m_work));
}

TEST_F(RecoveryCopyTest, WorkSetAsideIsNeverWrittenOver) {
    RecoveryCopy program = Started();
    program.SetAside(); // nothing yet
    ASSERT_TRUE(program.Keep(m_work));
    program.SetAside();
    const std::string aside = *m_files.Bytes(Copy);
    m_work.Document.Data.Description = "other work";
    ASSERT_TRUE(program.Keep(m_work));
    EXPECT_THAT(Kept(), ElementsAre(Copy, "/recovery/2.WSP"));
    program.Drop();
    EXPECT_EQ(m_files.Bytes(Copy), aside);
    EXPECT_EQ(program.List().at(0).CopyPath, Copy) << "offered while its program still runs";
}

TEST_F(RecoveryCopyTest, ACopyIsOldOrNewWhicheverWriteFails) {
    RecoveryCopy program = Started();
    m_work.Document.Data.Description = "old";
    ASSERT_TRUE(program.Keep(m_work));
    const std::string old = *m_files.Bytes(Copy);
    m_work.Document.Data.Description = "new";
    int n = 1;
    for (m_files.FailOnChange(n); !program.Keep(m_work); m_files.FailOnChange(++n)) {
        EXPECT_EQ(m_files.Bytes(Copy), old);
        ASSERT_LT(n, 5);
    }
    EXPECT_EQ(n, 3) << "two files are written";
    EXPECT_THAT(*m_files.Bytes(Copy), HasSubstr("new"));
    m_work.Document.Data.KARB = std::numeric_limits<double>::quiet_NaN();
    m_files.FailOnChange(0);
    EXPECT_FALSE(program.Keep(m_work)) << "no number to write";
}

TEST_F(RecoveryCopyTest, WhatTheCopyHoldsIsNotWrittenAgain) {
    RecoveryCopy program = Started();
    const auto writes = [&](bool soon) {
        const std::size_t before = m_files.Changes().size();
        EXPECT_TRUE(soon ? program.KeepSoon(m_work) : program.Keep(m_work));
        return m_files.Changes().size() - before;
    };
    EXPECT_EQ(writes(true), 2);
    EXPECT_EQ(writes(true), 0);
    EXPECT_EQ(writes(false), 2) << "the disk has not been waited for";
    EXPECT_EQ(writes(false), 0);
    m_work.Document.StaticPoints()[ptTRI].Z += 1e-9;
    EXPECT_EQ(writes(true), 2);
    m_work.FileMark = "56-78";
    EXPECT_EQ(writes(true), 2);
    EXPECT_EQ(m_files.Bytes("/recovery/1.txt"), "/cars/front.WSP\n56-78");
    m_files.Remove(Copy);
    EXPECT_EQ(writes(true), 2);
    program.Drop();
    EXPECT_EQ(writes(true), 2);
    // The copy is the file that a save writes.
    NoMessageBox box;
    Messages silent(box);
    bool written = false;
    EXPECT_TRUE(
        DataWrite(written, m_work.Document, "/recovery/saved.WSP", m_work.Units, m_files, silent));
    EXPECT_EQ(m_files.Bytes(Copy), m_files.Bytes("/recovery/saved.WSP"));
}

TEST_F(RecoveryCopyTest, WhatFailsDisturbsNothing) {
    RecoveryCopy program(m_files, m_locks);
    EXPECT_FALSE(program.Keep(m_work)) << "no folder was set";
    EXPECT_THAT(program.List(), IsEmpty());
    m_files.FailOnChange(1);
    program.SetFolder(Folder);
    EXPECT_FALSE(program.Keep(m_work)) << "the folder could not be made";
    program.SetFolder(Folder);
    ASSERT_TRUE(program.Keep(m_work));
    m_files.FailOnChange(1);
    program.Drop();
    EXPECT_THAT(m_files.Paths(), ElementsAre(Copy)) << "the other file is deleted all the same";
    program.Drop();
    program.Drop();
    EXPECT_THAT(m_files.Paths(), IsEmpty());

    // Of work whose origin can't be read the work counts.
    ASSERT_TRUE(program.Keep(m_work));
    m_files.RefuseReading("/recovery/1.txt");
    m_locks.Locked.clear();
    EXPECT_EQ(Started().List().at(0).DocumentPath, "");
}

} // namespace
} // namespace corvanta::test
