#include "export/Suspvar.h"

#include "model/Failure.h"
#include "tests/support/MemoryFileServices.h"
#include "tests/support/RecordingMessageBox.h"
#include "tests/support/Testing.h"

#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace corvanta::test {
namespace {

const std::string Path = "/out/corner.svr";
const Separators Point{".", ","};
const Separators Comma{",", "."};

class SuspvarTest : public testing::Test {
  protected:
    SuspvarTest() { m_files.PutFolder("/out"); }

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
    // The channels of the pages by their numbers; page 1 holds the wheel centre's height.
    constexpr std::array pages{34, 14, 2, 7, 2, 7, 9, 16, 25, 13, 11};
    const auto page = [&](std::size_t number) {
        return stream.GetFieldTable("SUSPENSION DATA TABLES PAGE " + std::to_string(number));
    };
    for (std::size_t n = 0; n < pages.size(); ++n) {
        EXPECT_EQ(page(n + 2).at(1).at(2), 100 * pages[n]) << "page " << n + 2;
    }
    EXPECT_TRUE(page(13).empty());
    EXPECT_THAT(page(3), ElementsAre(ElementsAre(0, -15, 0, 15), ElementsAre(200, 1402, 1400, 1398),
                                     ElementsAre(210, 1412, 1410, 1408)));
    EXPECT_THAT(page(1), ElementsAre(ElementsAre(0, -15, 0, 15), ElementsAre(200, 292, 300, 308),
                                     ElementsAre(210, 252, 260, 268)));
}

} // namespace
} // namespace corvanta::test
