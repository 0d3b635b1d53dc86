#include "persistence/LegacyImport.h"

#include "model/Failure.h"
#include "persistence/MData.h"
#include "tests/support/Corners.h"
#include "tests/support/MemoryFileServices.h"
#include "tests/support/RecordingMessageBox.h"
#include "tests/support/Testing.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <vector>

namespace corvanta::test {
namespace {

const std::string Path = "/data/OLD.SUS";

using Lines = std::vector<std::string>;

/// The points of a file by place: the whole part tells the point, the fraction the coordinate.
const Lines FirstPoints{"1.1 -1.2 1.3",    "2.1 -2.2 2.3",        "3.1 -3.2 3.3",
                        "4.1 -4.2 4.3",    "5.1 -5.2 5.3",        "6.1 -6.2 6.3",
                        "7.1 -7.2 7.3",    "8.1 -8.2 8.3",        "9.1 -9.2 9.3",
                        "10.1 -10.2 10.3", "11.1 -11.2 11.3",     "12.1 -12.2 12.3",
                        "13.1 -13.2 13.3", "14.1 -14.2 14.3",     "15.1  -15.2 15.3",
                        "16.1 -16.2 16.3", "  17.1 -17.2 17.3  x"};
const Lines SecondRockerPoints{"18.1 -18.2 18.3", "19.1 -19.2 19.3", "20.1 -20.2 20.3",
                               "21.1 -21.2 21.3"};
const std::string LastPoint = "22.1 -22.2 22.3";

const Lines Vehicle{"1700", "310", "2800.5", " 650 ", "1.1", "-2.2", "1000", "5.E3", "+1500", "55"};

Lines Joined(std::initializer_list<Lines> parts) {
    Lines all;
    for (const Lines& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

/// A file of Version 3, which holds the numbers as they are above.
Lines Version3(const std::string& tag, const std::string& mechanism, bool twoRockers) {
    return Joined({{tag, mechanism, "ignored", "TRUE", "#True#"},
                   FirstPoints,
                   twoRockers ? SecondRockerPoints : Lines(),
                   {LastPoint},
                   Vehicle});
}

Lines Untagged() {
    return Joined({{" 8 ", "V3.65", "TRUE", "FALSE", "TRUE"}, FirstPoints, {LastPoint}});
}

Lines Data4(bool twoRockers) {
    Lines lines = Version3("Data 4.0", twoRockers ? "9" : "8", twoRockers);
    lines[21] = "17.1 -17.2,17.3";
    for (std::size_t line = 5; line < lines.size() - Vehicle.size(); ++line) {
        std::replace(lines[line].begin(), lines[line].end(), ' ', ',');
        lines[line] = ReplaceAll(lines[line], ",,", " , ");
    }
    return lines;
}

std::string Text(const Lines& lines, const std::string& lineEnd = "\r\n") {
    std::string text;
    for (const std::string& line : lines) {
        text += line + lineEnd;
    }
    return text;
}

const std::vector<PointNumber> PointsOfFile{
    ptWTCP, ptWC,  ptUWO, ptUWIR, ptUWIF, ptLWO, ptLWIR, ptLWIF, ptTRO,  ptTRI, ptDSO,
    ptDSI,  ptPRO, ptPRI, ptR1P1, ptR1P2, ptR1O, ptR2I,  ptR2P1, ptR2P2, ptR2O, ptSAI};

class LegacyImportTest : public testing::Test {
  protected:
    LegacyImportTest() {
        m_files.PutFolder("/data");
        ChooseUnits("mm", "kg");
    }

    void ChooseUnits(const std::string& displacement, const std::string& mass) {
        m_units = UnitsOf(displacement, "kg", mass, "lb/in");
        m_channels.ChannelsSetup(m_units);
    }

    bool Load(const std::string& text, bool announce = false) {
        m_files.Put(Path, text);
        return DataLoad(m_document, m_channels, Path, announce, m_units, m_files, m_messages);
    }
    bool LoadNew(const Lines& lines) {
        ViewSettings settings;
        ResetDocument(m_document, settings);
        return Load(Text(lines));
    }

    /// The description of a failed load, which must leave the document as it was.
    std::string Reason(const std::string& text) {
        ViewSettings settings;
        ResetDocument(m_document, settings);
        m_document.DataLoaded = true;
        m_document.Data.CGX = 1234;
        m_document.Data.SpringMechanism = 3;
        m_document.StaticPoints()[ptWC] = {1, 2, 3};
        std::string reason = FailureOf([&] { Load(text); }).Description();
        EXPECT_FALSE(m_document.DataLoaded);
        EXPECT_EQ(m_document.Data.CGX, 1234);
        EXPECT_EQ(m_document.Data.SpringMechanism, 3);
        EXPECT_EQ(m_document.StaticPoints()[ptWC], (SuspPoint{1, 2, 3}));
        return reason;
    }

    /// Expects the points by their places in the file, times `scale`.
    void ExpectPoints(double scale, bool twoRockers) {
        PointSet expected;
        for (std::size_t place = 0; place < PointsOfFile.size(); ++place) {
            const double n = static_cast<double>(place) + 1;
            if (twoRockers || place < FirstPoints.size() || place + 1 == PointsOfFile.size()) {
                expected[PointsOfFile[place]] = {n + 0.1, -(n + 0.2), n + 0.3};
            }
        }
        for (const PointNumber point : AllPoints) {
            const SuspPoint& read = m_document.StaticPoints()[point];
            EXPECT_NEAR(read.X, scale * expected[point].X, 1e-4) << point;
            EXPECT_NEAR(read.Y, scale * expected[point].Y, 1e-4) << point;
            EXPECT_NEAR(read.Z, scale * expected[point].Z, 1e-4) << point;
        }
    }

    void ExpectVehicle(double length, double mass, double rate) const {
        const SuspensionData& data = m_document.Data;
        EXPECT_NEAR(data.CGX, 1700 * length, 0.01);
        EXPECT_NEAR(data.CGZ, 310 * length, 0.01);
        EXPECT_NEAR(data.Wheelbase, 2800.5 * length, 0.01);
        EXPECT_NEAR(data.Mass, 650 * mass, 0.01);
        EXPECT_EQ(data.GAccel, 1.1);
        EXPECT_EQ(data.GBrake, -2.2);
        EXPECT_NEAR(data.KTyre, 1000 * rate, 1e-9);
        EXPECT_NEAR(data.KLink, 5000 * rate, 1e-9);
        EXPECT_NEAR(data.KSpring, 1500 * rate, 1e-9);
        EXPECT_EQ(data.FrontBrakeBalanceSplitPC, 55);
    }

    MemoryFileServices m_files;
    RecordingMessageBox m_box;
    Messages m_messages{m_box};
    FundamentalUnits m_units;
    ChannelCatalogue m_channels;
    Suspension m_document;
};

TEST_F(LegacyImportTest, Version3IsInDisplayUnitsAndPoundsPerInch) {
    for (const char* tag : {"V3.61", "V3.62", "V3.63", "V3.64", "v3.65", "V3.66", "v3.67b"}) {
        SCOPED_TRACE(tag);
        ASSERT_TRUE(LoadNew(Version3(tag, "8", false)));
        EXPECT_EQ(m_document.Data.SpringMechanism, smPushrodToLowerWishbone);
        EXPECT_TRUE(m_document.Data.DriveShaftExists);
        EXPECT_TRUE(m_document.Catalogue[ptPRI].Enabled);
        ExpectPoints(1, false);
        ExpectVehicle(1, 1, 1 / 5.708223);
    }
    ChooseUnits("in", "lbs");
    ASSERT_TRUE(LoadNew(Version3("V3.66", "10", true)));
    EXPECT_EQ(m_document.Data.SpringMechanism, smTwoRockersToLowerWishbone);
    ExpectPoints(25.4, true);
    ExpectVehicle(25.4, 0.4535924, 1 / 5.708223);
}

TEST_F(LegacyImportTest, UntaggedHoldsPointsAlone) {
    m_document.Data.KARB = 77; // a reset keeps it
    ASSERT_TRUE(LoadNew(Untagged()));
    EXPECT_EQ(m_document.Data.SpringMechanism, smPushrodToLowerWishbone);
    EXPECT_FALSE(m_document.Data.DriveShaftExists);
    EXPECT_EQ(m_document.Data.CGX, SuspensionData().CGX);
    EXPECT_EQ(m_document.Data.KSpring, SuspensionData().KSpring);
    EXPECT_EQ(m_document.Data.KARB, 77);
    ExpectPoints(1, false);
    ChooseUnits("in", "kg");
    ASSERT_TRUE(LoadNew(Untagged()));
    ExpectPoints(25.4, false);
}

TEST_F(LegacyImportTest, Data4HoldsMillimetrePointsInFreeFormat) {
    ChooseUnits("in", "lbs");
    for (const bool twoRockers : {false, true}) {
        ASSERT_TRUE(LoadNew(Data4(twoRockers)));
        ExpectPoints(1, twoRockers);
        ExpectVehicle(25.4, 0.4535924, 1);
    }
    // The same numbers in other lines, with every separator there is.
    const Lines lines = Data4(true);
    std::string points = Text({lines.begin() + 5, lines.begin() + 27}, ",\r\n");
    points = ReplaceAll(points, ",\r\n1", "  \r\n\r\n1");
    points = ReplaceAll(points, ".2,", ".2 ,\t\n");
    ASSERT_TRUE(
        Load(Text({lines.begin(), lines.begin() + 5}, "\n") + points + Text(Vehicle, "\n")));
    ExpectPoints(1, true);
    ExpectVehicle(25.4, 0.4535924, 1);
    // An empty item stands for no number, as it would shift or zero the others.
    EXPECT_EQ(Reason(ReplaceAll(Text(lines), "9.1,-9.2", "9.1,,-9.2")),
              "Type mismatch in line 14: ptTRO must be a number");
}

TEST_F(LegacyImportTest, AFileCutAnywhereIsToldAndLeavesTheDocument) {
    for (const Lines& lines : {Version3("V3.61", "9", true), Data4(false), Untagged()}) {
        for (std::size_t count = 0; count < lines.size(); ++count) {
            const std::string text =
                Text({lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(count)});
            const std::string expected =
                "Input past end of file" +
                (count == 0 ? "" : " after line " + std::to_string(count) + ": ");
            EXPECT_THAT(Reason(text), StartsWith(expected));
            if (count > 1) {
                EXPECT_THAT(Reason(text.substr(0, text.size() - 2)), StartsWith(expected));
            }
        }
    }
    EXPECT_EQ(Reason(""), "Input past end of file");
    EXPECT_EQ(Reason(Text({"V3.61", "6"})),
              "Input past end of file after line 2: a line is missing");
}

TEST_F(LegacyImportTest, ADamagedLineIsToldByItsNumber) {
    for (const Lines& lines : {Version3("V3.61", "9", true), Data4(false), Untagged()}) {
        const bool tagged = lines.size() > 30;
        for (std::size_t place = 0; place < lines.size(); ++place) {
            const bool typeLine = place > 0 && place < 5 && !(tagged && place == 1);
            for (const char* damage : {"damaged", "1x 2 3"}) {
                SCOPED_TRACE(lines[0] + ", line " + std::to_string(place + 1) + ": " + damage);
                Lines damaged = lines;
                damaged[place] = damage;
                if (typeLine) {
                    EXPECT_TRUE(LoadNew(damaged));
                    EXPECT_EQ(m_document.Data.DriveShaftExists,
                              tagged && place != 4); // no text but "TRUE" says so
                } else {
                    EXPECT_THAT(
                        Reason(Text(damaged)),
                        StartsWith("Type mismatch in line " + std::to_string(place + 1) + ": "));
                }
            }
        }
    }
    Lines lines = Version3("V3.61", "12", true);
    EXPECT_EQ(Reason(Text(lines)), "SpringMechanism is 12 in the file, but only 0 to 11 exist");
    lines[1] = "-1";
    EXPECT_EQ(Reason(Text(lines)), "SpringMechanism is -1 in the file, but only 0 to 11 exist");
    lines[1] = "8"; // leaves the lines of the second rocker over
    EXPECT_EQ(Reason(Text(lines)), "Type mismatch in line 24: CGX must be a number");
}

TEST_F(LegacyImportTest, TheNoticeIsShownForDisplayUnitsAlone) {
    const std::string head =
        "You are loading a Version 3 file.\r\rIf the current units settings do not match those "
        "that the file was made then values will be incorrectly converted.\r\r\tCurrent "
        "displacement setting: in\r\tCurrent mass setting: kg\r\tCurrent spring rate setting: "
        "lb/in";
    const std::string tail =
        "\r\rIf you save this file it will be upgraded to the current file format.";
    ChooseUnits("in", "kg");
    ASSERT_TRUE(Load(Text(Version3("V3.61", "8", false)), true));
    ASSERT_TRUE(Load(Text(Untagged()), true));
    EXPECT_THAT(m_box.Prompts(),
                ElementsAre(head + tail, head +
                                             "\r\rOnly suspension point data can be loaded from "
                                             "this file. You must re-enter vehicle and travel "
                                             "values." +
                                             tail));
    EXPECT_EQ(m_box.Shown[0].Style, msExclamation);
    m_box.Shown.clear();
    ASSERT_TRUE(Load(Text(Data4(true)), true));
    ASSERT_TRUE(Load(Text(Version3("V3.61", "8", false)), false));
    ASSERT_TRUE(Load(Text(Untagged()), false));
    for (const char* other : {"", "a letter\r\n", "%PDF-1.4\r\n", "-1\r\n", "1999\r\n"}) {
        EXPECT_THROW(Load(other, true), Failure) << other;
    }
    EXPECT_THAT(m_box.Shown, IsEmpty()) << "what is no file of ours is not announced as an old one";
}

} // namespace
} // namespace corvanta::test
