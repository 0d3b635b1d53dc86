#include "export/Suspvar.h"

#include "calculation/SCalcs.h"
#include "export/Interpolate.h"
#include "model/Failure.h"
#include "tests/support/MemoryFileServices.h"
#include "tests/support/RecordingMessageBox.h"
#include "tests/support/SampleCorners.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace corvanta::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

const std::string Path = "/out/corner.svr";
const Separators Point{".", ","};
const Separators Comma{",", "."};

/// The channels of version 2.2's pages by their numbers; page 1 holds the wheel centre's height.
constexpr std::array<int, 13> PageChannels{0, 0, 34, 14, 2, 7, 2, 7, 9, 16, 25, 13, 11};

class SuspvarTest : public testing::Test {
  protected:
    SuspvarTest() { m_files.PutFolder("/out"); }

    Suspension SolvedSample(const std::string& name) {
        Suspension document = LoadSample(name);
        RunCalculation(document, MetricChannels(), m_messages);
        EXPECT_TRUE(document.ResultsValid);
        return document;
    }

    /// Exports under the separators of one machine and reads the file on another.
    CFileStream Exported(const Suspension& document, int version, const Separators& writer,
                         const Separators& reader) {
        const auto write = version == 1 ? ExportSUSPVAR1_1 : ExportSUSPVAR2_1;
        EXPECT_TRUE(write(document, Path, writer, m_files, m_messages));
        CFileStream stream(m_files, m_messages, reader);
        EXPECT_TRUE(stream.FileRead(Path));
        return stream;
    }

    MemoryFileServices m_files;
    RecordingMessageBox m_box;
    Messages m_messages{m_box};
};

/// A corner of two wheel steps and three rack steps with values that a hand can work with. Spring
/// lengths are 200 and 210 at static and 2 longer per rack step; a channel is 100 times its id at
/// the first wheel step and 10 more at the second.
Suspension HandCorner() {
    Suspension document;
    document.NW = 2;
    document.NR = 3;
    document.StaticWheel = 3;
    document.StaticRack = 3;
    for (int r = 2; r <= 4; ++r) {
        for (int w = 2; w <= 3; ++w) {
            WheelState& state = document.WheelStates(r, w);
            for (int id = 1; id <= ChannelCount; ++id) {
                state.Channels.Set(id, 100 * id + 10 * (w - 2));
            }
            state.Channels.Set(chSpringLength, 200 + 10 * (w - 2) + 2 * (r - 3));
            state.Channels.Set(chRackTravel, 15 * (r - 3));
            state.Channels.Set(chSteerAngle, -1.25 * (r - 3) + 0.5 * (w - 2));
            state.Points[ptWC].Z = 300 - 40 * (w - 2);
        }
    }
    return document;
}

TEST_F(SuspvarTest, RoundsToSignificantFiguresTiesToEven) {
    EXPECT_EQ(RoundToSignificantFigures(0, 7), 0);
    EXPECT_EQ(RoundToSignificantFigures(123.456789, 7), 123.4568);
    EXPECT_EQ(RoundToSignificantFigures(1234567890, 7), 1234568000);
    EXPECT_EQ(RoundToSignificantFigures(-0.000123456789, 7), -0.0001234568);
    EXPECT_EQ(RoundToSignificantFigures(12345665, 7), 12345660);
    EXPECT_EQ(RoundToSignificantFigures(12345675, 7), 12345680);
    EXPECT_EQ(RoundToSignificantFigures(-2.5, 1), -2);
    EXPECT_EQ(RoundToSignificantFigures(0.375, 2), 0.38);
    EXPECT_EQ(RoundToSignificantFigures(0.625, 2), 0.62);
    EXPECT_EQ(RoundToSignificantFigures(9999999.6, 7), 10000000);
    EXPECT_EQ(RoundToSignificantFigures(999.99999, 7), 1000);
    EXPECT_EQ(RoundToSignificantFigures(1000, 7), 1000);
    EXPECT_NEAR(RoundToSignificantFigures(1.23456789e300, 7), 1.234568e300, 1e285);
    EXPECT_NEAR(RoundToSignificantFigures(1.23456789e-30, 7), 1.234568e-30, 1e-45);
    const double least = std::numeric_limits<double>::denorm_min();
    EXPECT_EQ(RoundToSignificantFigures(least, 7), least);
    EXPECT_THROW((void)RoundToSignificantFigures(std::numeric_limits<double>::max(), 1), Failure);
}

TEST_F(SuspvarTest, VersionOneToTheByte) {
    Suspension document = HandCorner();
    document.WheelStates(3, 2).Channels.Set(chAntiRollAngle, -1e-50);
    document.WheelStates(4, 3).Channels.Set(chSteerAngle, 0.0004);
    (void)Exported(document, 1, Comma, Comma);
    EXPECT_EQ(m_files.Bytes(Path),
              "[DEC SEP]\t,\r\n[FILEVERSION]\tSUSPVAR 1.1\r\n[DESCRIPTION]\t\r\n[FILEPATH]\t\r\n"
              "[HAND]\t8\r\n[STEERING GEOMETRY TYPE]\t2\r\n"
              "[SUSPVAR TABLE]\t\r\n200\t3400\t1400\t200\t700\t200\t700\t0\r\n"
              "210\t3410\t1410\t210\t710\t210\t710\t910\r\n"
              "[STEERING TABLE]\t\r\n-15,000\t-1,750\r\n0\t-0,500\r\n15,000\t0\r\n\r\n");
    EXPECT_THAT(m_box.Shown, IsEmpty());
}

TEST_F(SuspvarTest, VersionTwoLooksTheStaticLengthsUp) {
    const Suspension document = HandCorner();
    CFileStream stream = Exported(document, 2, Point, Comma);
    EXPECT_THAT(*m_files.Bytes(Path),
                StartsWith("[DEC SEP]\t.\r\n[FILEVERSION]\tSUSPVAR 2.2\r\n[DESCRIPTION]\t\r\n"
                           "[FILEPATH]\t\r\n[HAND]\t8\r\n[STEERING GEOMETRY TYPE]\t2\r\n"
                           "[STEERING DATA TABLE]\t\r\n0\t-15\t0\t15\r\n200\t1.35\t0\t-1.35\r\n"
                           "210\t1.85\t0.5\t-0.85\r\n[STRUT LENGTH COUNT]\t2\r\n"
                           "[RACK TRAVEL COUNT]\t3\r\n[SUSPENSION DATA TYPE COUNT]\t12\r\n"
                           "[SUSPENSION DATA TABLES PAGE 1]\t\r\n0\t-15\t0\t15\r\n"));
    EXPECT_TRUE(stream.GetFieldTable("SUSPENSION DATA TABLES PAGE 13").empty());
    EXPECT_THAT(stream.GetFieldTable("SUSPENSION DATA TABLES PAGE 3"),
                ElementsAre(ElementsAre(0, -15, 0, 15), ElementsAre(200, 1402, 1400, 1398),
                            ElementsAre(210, 1412, 1410, 1408)));
    EXPECT_THAT(stream.GetFieldTable("SUSPENSION DATA TABLES PAGE 1"),
                ElementsAre(ElementsAre(0, -15, 0, 15), ElementsAre(200, 292, 300, 308),
                            ElementsAre(210, 252, 260, 268)));
}

TEST_F(SuspvarTest, SteeringFallsWhicheverWayTheRackIsMounted) {
    Suspension document = HandCorner(); // steer falls with the rack step
    FieldTable table(3, std::vector<double>(4));
    const std::vector<double> lengths{200, 210};
    SuspvarSteeringFill(table, document, lengths);
    const auto falling = ElementsAre(ElementsAre(0, -15, 0, 15), ElementsAre(200, 1.35, 0, -1.35),
                                     ElementsAre(210, 1.85, 0.5, -0.85));
    EXPECT_THAT(table, falling);

    document.NR = 1; // no second rack step, whatever an earlier run left there
    SuspvarSteeringFill(table, document, lengths);
    EXPECT_EQ(table[1][1], -1.35);

    document.NR = 3;
    for (int r = 2; r <= 4; ++r) {
        for (int w = 2; w <= 3; ++w) {
            ChannelCells& channels = document.WheelStates(r, w).Channels;
            channels.Set(chSteerAngle, -channels[chSteerAngle]);
        }
    }
    SuspvarSteeringFill(table, document, lengths);
    EXPECT_THAT(table, falling);
}

/// Holds version 1.1 of a document, as read back, against its states.
void ExpectVersionOne(const Suspension& document, CFileStream& stream) {
    const FieldTable properties = stream.GetFieldTable("SUSPVAR TABLE");
    ASSERT_EQ(properties.size(), static_cast<std::size_t>(document.NW));
    constexpr std::array<int, 8> columns{35, 34, 14, 2, 7, 2, 7, 9};
    for (std::size_t k = 0; k < properties.size(); ++k) {
        const ChannelCells& channels =
            document.WheelStates(document.StaticRack, static_cast<int>(k) + 2).Channels;
        ASSERT_EQ(properties[k].size(), columns.size());
        for (std::size_t column = 0; column < columns.size(); ++column) {
            const double value = channels[columns[column]];
            EXPECT_NEAR(properties[k][column], value, 1e-14 * std::abs(value) + 1e-45);
        }
    }
    const FieldTable steering = stream.GetFieldTable("STEERING TABLE");
    ASSERT_EQ(steering.size(), static_cast<std::size_t>(document.NR));
    for (std::size_t k = 0; k < steering.size(); ++k) {
        const ChannelCells& channels =
            document.WheelStates(static_cast<int>(k) + 2, document.StaticWheel).Channels;
        ASSERT_EQ(steering[k].size(), 2U);
        EXPECT_NEAR(steering[k][0], channels[chRackTravel], 0.000500001);
        EXPECT_NEAR(steering[k][1], -channels[chSteerAngle], 0.000500001);
    }
    EXPECT_EQ(stream.GetFieldNumber("STEERING GEOMETRY TYPE"), 2);
}

/// Holds a table over strut length and rack travel against the values that it stands for.
template <typename Value>
void ExpectTable(const Suspension& document, const FieldTable& table, Value value) {
    ASSERT_EQ(table.size(), static_cast<std::size_t>(document.NW) + 1);
    const auto near = [](double cell, double exact) {
        return std::abs(cell - exact) <= 5.0001e-7 * std::abs(exact) + 1e-11;
    };
    EXPECT_EQ(table[0][0], 0);
    for (std::size_t r = 1; r < table[0].size(); ++r) {
        const int rack = static_cast<int>(r) + 1;
        std::vector<double> x;
        std::vector<double> y;
        for (int w = 2; w <= document.NW + 1; ++w) {
            x.push_back(document.WheelStates(rack, w).Channels[chSpringLength]);
            y.push_back(value(document.WheelStates(rack, w)));
        }
        EXPECT_TRUE(near(table[0][r],
                         document.WheelStates(rack, document.StaticWheel).Channels[chRackTravel]));
        for (std::size_t i = 1; i < table.size(); ++i) {
            ASSERT_EQ(table[i].size(), static_cast<std::size_t>(document.NR) + 1);
            const WheelState& atStatic =
                document.WheelStates(document.StaticRack, static_cast<int>(i) + 1);
            const double length = atStatic.Channels[chSpringLength];
            EXPECT_TRUE(near(table[i][0], length));
            EXPECT_TRUE(near(table[i][r], Interpolate(x, y, length)))
                << "row " << i << ", column " << r << ": " << table[i][r];
            if (rack == document.StaticRack && length > 0) {
                EXPECT_TRUE(near(table[i][r], value(atStatic))); // nothing to look up there
            }
        }
    }
}

void ExpectVersionTwo(const Suspension& document, CFileStream& stream) {
    for (int page = 1; page <= 12; ++page) {
        SCOPED_TRACE("page " + std::to_string(page));
        const int channel = PageChannels.at(static_cast<std::size_t>(page));
        ExpectTable(document,
                    stream.GetFieldTable("SUSPENSION DATA TABLES PAGE " + std::to_string(page)),
                    [&](const WheelState& state) {
                        return page == 1 ? state.Points[ptWC].Z : state.Channels[channel];
                    });
    }
    const FieldTable steering = stream.GetFieldTable("STEERING DATA TABLE");
    const auto steer = [&](int rackStep) {
        return document.WheelStates(rackStep, 2).Channels[chSteerAngle];
    };
    const double sign = document.NR > 1 && steer(3) < steer(2) ? 1 : -1;
    ExpectTable(document, steering,
                [sign](const WheelState& state) { return sign * state.Channels[chSteerAngle]; });
    EXPECT_EQ(stream.GetFieldNumber("STRUT LENGTH COUNT"), document.NW);
    EXPECT_EQ(stream.GetFieldNumber("RACK TRAVEL COUNT"), document.NR);
    EXPECT_EQ(stream.GetFieldNumber("STEERING GEOMETRY TYPE"),
              document.StaticPoints()[ptWTCP].X <= document.Data.CGX ? 2 : 0);
}

TEST_F(SuspvarTest, EverySampleReadsBackCellByCellOnAnyMachine) {
    int rear = 0;
    for (const std::string& path : AllSamplePaths()) {
        SCOPED_TRACE(path);
        const Suspension document = SolvedSample(path.substr(SamplePath("").size()));
        for (const Separators& writer : {Point, Comma}) {
            CFileStream one = Exported(document, 1, writer, Point);
            ExpectVersionOne(document, one);
            CFileStream two = Exported(document, 2, writer, Point);
            ExpectVersionTwo(document, two);
            rear += two.GetFieldNumber("STEERING GEOMETRY TYPE") == 0;
        }
        EXPECT_THAT(m_box.Shown, IsEmpty());
    }
    EXPECT_GT(rear, 0);
}

TEST_F(SuspvarTest, ACornerWithoutASpringHasTheValuesOfFullBump) {
    const Suspension document = SolvedSample("roadster-front-links.WSP");
    ASSERT_EQ(document.Data.SpringMechanism, smNone);
    CFileStream stream = Exported(document, 2, Point, Point);
    const FieldTable camber = stream.GetFieldTable("SUSPENSION DATA TABLES PAGE 3");
    for (std::size_t i = 1; i < camber.size(); ++i) {
        EXPECT_EQ(camber[i][0], 0);
        EXPECT_NEAR(camber[i][1], document.WheelStates(2, 2).Channels[chCamberAngle], 1e-6);
    }
    EXPECT_THAT(m_box.Shown, IsEmpty());
}

TEST_F(SuspvarTest, AFailureLeavesTheFileThatWasThere) {
    Suspension document = HandCorner();
    m_files.Put(Path, "old");
    m_files.FailOnChange(1);
    EXPECT_FALSE(ExportSUSPVAR2_1(document, Path, Point, m_files, m_messages));
    EXPECT_THAT(m_box.Prompts(), ElementsAre("An error occurred while writing file: " + Path +
                                             "\r\nError was: No space left on device"));
    const double huge = std::numeric_limits<double>::max();
    document.WheelStates(2, 2).Channels.Set(chCamberAngle, huge);
    document.WheelStates(2, 3).Channels.Set(chCamberAngle, -huge);
    EXPECT_THROW((void)ExportSUSPVAR2_1(document, Path, Point, m_files, m_messages), Failure);
    document.WheelStates(3, 2).Channels.Set(chCamberAngle, std::nan(""));
    m_box.Shown.clear();
    EXPECT_FALSE(ExportSUSPVAR1_1(document, Path, Point, m_files, m_messages));
    EXPECT_THAT(
        m_box.Prompts(),
        ElementsAre("An error occurred while adding table: SUSPVAR TABLE to the filestream"));
    EXPECT_EQ(m_files.Bytes(Path), "old");
    EXPECT_EQ(m_files.Changes().size(), 1U);
}

} // namespace
} // namespace corvanta::test
