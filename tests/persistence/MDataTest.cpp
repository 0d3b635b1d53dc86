#include "persistence/MData.h"

#include "model/Failure.h"
#include "tests/support/MemoryFileServices.h"
#include "tests/support/RecordingMessageBox.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <limits>

namespace corvanta::test {
namespace {

const std::string Path = "/data/front.WSP";

class MDataTest : public testing::Test {
  protected:
    MDataTest() {
        m_files.PutFolder("/data");
        m_channels.ChannelsSetup(m_units);
    }

    bool Load(const std::string& path = Path) {
        return DataLoad(m_document, m_channels, path, true, m_units, m_files, m_messages);
    }
    bool LoadBytes(const std::string& bytes) {
        m_files.Put(Path, bytes);
        return Load();
    }
    /// The failure of a load, which must leave the document as it was.
    Failure LoadFailure(const std::string& path = Path) {
        m_document.DataLoaded = true;
        m_document.Data.CGX = 1234;
        m_document.StaticPoints()[ptWC] = {1, 2, 3};
        Failure failure = FailureOf([&] { Load(path); });
        EXPECT_FALSE(m_document.DataLoaded);
        EXPECT_EQ(m_document.Data.CGX, 1234);
        EXPECT_EQ(m_document.StaticPoints()[ptWC], (SuspPoint{1, 2, 3}));
        return failure;
    }
    bool Write(const Suspension& document, const std::string& path = Path) {
        return DataWrite(m_written, document, path, m_units, m_files, m_messages);
    }

    static std::string File(const std::string& fields) {
        return "[DEC SEP]\t.\r\n[FILEVERSION]\tData 4.1\r\n" + fields + "\r\n";
    }

    MemoryFileServices m_files;
    RecordingMessageBox m_box;
    Messages m_messages{m_box};
    FundamentalUnits m_units;
    ChannelCatalogue m_channels;
    Suspension m_document;
    bool m_written = false;
};

TEST_F(MDataTest, ADocumentComesBackUnderAnyDecimalSeparator) {
    Suspension document = LoadSample("formula-rear-pushrod.WSP"); // with a drive shaft
    document.Data.Description = "Front\r\nsecond line, 5 €";
    document.Data.ZForce = 1e-7;
    document.StaticPoints()[ptR2I] = {9, 9, 9}; // not in play
    m_units.NumberSeparators = {",", "."};
    Write(document);
    m_units.NumberSeparators = {".", ","};
    ASSERT_TRUE(Load());
    EXPECT_TRUE(m_document.DataLoaded);
    EXPECT_TRUE(m_document.Data == document.Data);
    EXPECT_EQ(m_document.StaticPoints()[ptWC], document.StaticPoints()[ptWC]);
    EXPECT_EQ(m_document.StaticPoints()[ptR2I], SuspPoint()) << "what is not in play is not saved";
    EXPECT_THAT(m_box.Shown, IsEmpty());
}

TEST_F(MDataTest, MissingFieldsTakeTheirDefaults) {
    m_document.Data.ChassisMotion = cmHeave;
    m_document.Data.KARB = 5;
    ASSERT_TRUE(LoadBytes(File("[SpringMechanism]\t0\r\n")));
    EXPECT_EQ(m_document.Data.ChassisMotion, cmHeave);
    EXPECT_EQ(m_document.Data.RackTravel, 25);
    EXPECT_EQ(m_document.Data.WheelTravelStepSize, 5);
    EXPECT_EQ(m_document.Data.CGX, 0);
    EXPECT_EQ(m_document.Data.KARB, 0);
    EXPECT_EQ(m_document.StaticPoints(), PointSet());
    EXPECT_TRUE(m_document.Catalogue[ptUWO].Enabled);
}

TEST_F(MDataTest, FillsPointsThatAreNotInPlayAndZeroesTextsThatAreNoNumbers) {
    ASSERT_TRUE(LoadBytes(File("[SpringMechanism]\t1\r\n[ptR2I]\t1\t2\t3\r\n[CGZ]\t12abc\r\n"
                               "[ptWC]\t4\t5\r\n[DriveShaftExists]\tTrue\r\n")));
    EXPECT_EQ(m_document.StaticPoints()[ptR2I], (SuspPoint{1, 2, 3}));
    EXPECT_EQ(m_document.StaticPoints()[ptWC], (SuspPoint{4, 5, 0}));
    EXPECT_EQ(m_document.Data.CGZ, 0);
    EXPECT_TRUE(m_document.Data.DriveShaftExists);
}

TEST_F(MDataTest, WhatMayBeDamagedIsToldOnceOnOpening) {
    Write(LoadSample("saloon-front-strut.WSP"));
    const std::string whole = *m_files.Bytes(Path);
    const std::string cut = "The last line of the file has no end.";
    const std::string withoutPlace = "all three coordinates, were read as 0: ";
    struct Case {
        std::string Bytes;
        std::vector<std::string> Told; ///< parts of the one message, none when nothing is told
    };
    for (const Case& file :
         {Case{whole, {}}, Case{whole.substr(0, whole.size() - 2), {}},
          Case{whole.substr(0, whole.size() - 4), {cut}},
          Case{whole.substr(0, whole.size() - 5), {cut}},
          Case{whole.substr(0, whole.find("[ptARP2]")),
               {withoutPlace + "ARB axis point 2, Ride height reference point"}},
          Case{whole.substr(0, whole.find("\t192\r\n")) + "\r\n\r\n",
               {withoutPlace + "Ride height reference point"}},
          Case{File("[SpringMechanism]\tx\r\n[CGX]\tnan\r\n[KARB]\t\r\n[ptWC]\t1\tabc\tinf\r\n"),
               {"read as 0: SpringMechanism (x), CGX (nan), ptWC (abc), ptWC (inf)"}},
          Case{"[FILEVERSION]\tData 4.1\r\n[SpringMechanism]\t1\r\n[CGX]\tfar",
               {cut, "CGX (far)"}}}) {
        SCOPED_TRACE(file.Bytes);
        m_box.Shown.clear();
        EXPECT_TRUE(LoadBytes(file.Bytes));
        ASSERT_EQ(m_box.Shown.size(), file.Told.empty() ? 0U : 1U);
        for (const std::string& part : file.Told) {
            EXPECT_THAT(m_box.Shown[0].Prompt, HasSubstr(part));
            EXPECT_THAT(m_box.Shown[0].Prompt, HasSubstr(Path));
        }
    }
}

TEST_F(MDataTest, WhatIsNoDocumentIsRefused) {
    const Failure missing = LoadFailure("/data/none.WSP");
    EXPECT_EQ(missing.Number(), fnFileNotFound);
    EXPECT_EQ(missing.Description(), "File not found");
    EXPECT_EQ(LoadFailure("/data").Description(), "Is a directory");
    // What is no tagged stream, or holds no mechanism, is taken for a file of the old layouts.
    m_files.Put(Path, "");
    EXPECT_EQ(LoadFailure().Description(), "Input past end of file");
    for (const std::string& bytes :
         {std::string(5000, '\0'), std::string("not a corner\r\n"), std::string("[SpringMechanism"),
          std::string("[SpringMechanism]\t\r\n\r\n"), File("[Bump]\t25\r\n")}) {
        m_files.Put(Path, bytes);
        EXPECT_EQ(LoadFailure().Description(),
                  "Type mismatch in line 1: a suspension file begins with its version or with the "
                  "number of its SpringMechanism");
    }
    m_files.RefuseReading(Path);
    EXPECT_EQ(LoadFailure().Description(), "Permission denied");
    m_files.RefuseReading(Path, 1);
    EXPECT_EQ(LoadFailure().Description(), "The file can't be read") << "nor is it an old file";
    EXPECT_THROW(DataRead(m_document, m_channels, "/data/none.WSP", m_units, m_files, m_messages),
                 Failure);
}

TEST_F(MDataTest, MechanismsOutOfTheCatalogueAreRefusedByName) {
    struct Case {
        std::string Field;
        std::string Description;
    };
    for (const Case& bad : {Case{"[SpringMechanism]\t12",
                                 "SpringMechanism is 12 in the file, but only 0 to 11 exist"},
                            Case{"[SpringMechanism]\t1\r\n[ThirdSpringMechanism]\t-1",
                                 "ThirdSpringMechanism is -1 in the file, but only 0 to 2 exist"},
                            Case{"[SpringMechanism]\t1\r\n[CentreSpringSystem]\t1.6",
                                 "CentreSpringSystem is 2 in the file, but only 0 to 1 exist"},
                            Case{"[SpringMechanism]\t1\r\n[ChassisMotion]\t2",
                                 "ChassisMotion is 2 in the file, but only 0 to 1 exist"},
                            Case{"[SpringMechanism]\t1\r\n[ARBMechanism]\t1E+300",
                                 "ARBMechanism is 1E+300 in the file, but only 0 to 4 exist"}}) {
        m_files.Put(Path, File(bad.Field + "\r\n"));
        EXPECT_EQ(LoadFailure().Description(), bad.Description);
    }
    EXPECT_TRUE(LoadBytes(File("[SpringMechanism]\t10.6\r\n")));
    EXPECT_EQ(m_document.Data.SpringMechanism, smMacPhersonStrut);
}

TEST_F(MDataTest, AFailedSetUpLeavesTheDocumentAlone) {
    m_files.Put(Path, File("[SpringMechanism]\t1\r\n[WheelTravelStepSize]\t0\r\n[CGX]\t1\r\n"));
    EXPECT_EQ(LoadFailure().Number(), fnDivisionByZero);
}

TEST_F(MDataTest, WritesNothingWithoutANameOrWithANumberThatIsNone) {
    EXPECT_FALSE(Write(m_document, "/data/"));
    EXPECT_FALSE(Write(m_document, ""));
    m_document.Data.Mass = std::numeric_limits<double>::infinity();
    EXPECT_THROW(Write(m_document), Failure);
    EXPECT_THAT(m_files.Changes(), IsEmpty());
}

TEST(ParseBooleanTest, NumbersByTheirTruthAndTrueAlone) {
    for (const char* yes : {"True", "-1", "1", " 0.5 ", "0,5"}) {
        EXPECT_TRUE(ParseBoolean(yes)) << yes;
    }
    for (const char* no : {"", "0", "False", "true", "TRUE", "0,0", "yes", "1x"}) {
        EXPECT_FALSE(ParseBoolean(no)) << no;
    }
}

} // namespace
} // namespace corvanta::test
