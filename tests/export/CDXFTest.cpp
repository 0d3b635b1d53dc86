#include "export/CDXF.h"

#include "tests/support/MemoryFileServices.h"
#include "tests/support/RecordingMessageBox.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace corvanta::test {
namespace {

const std::string Path = "/out/corner.dxf";

/// One group of a DXF file.
struct Group {
    int Code = 0;
    std::string Value;
};

/// Reads a text file of DXF as a program that knows only the format: lines in pairs.
std::vector<Group> GroupsOf(const std::string& bytes) {
    std::vector<std::string> lines;
    std::size_t from = 0;
    for (std::size_t end = bytes.find('\n'); end != std::string::npos;
         from = end + 1, end = bytes.find('\n', from)) {
        EXPECT_TRUE(end > 0 && bytes[end - 1] == '\r');
        lines.push_back(bytes.substr(from, end - from - 1));
    }
    EXPECT_EQ(from, bytes.size()) << "the last line has no end";
    EXPECT_EQ(lines.size() % 2, 0U);
    std::vector<Group> groups;
    for (std::size_t n = 0; n + 1 < lines.size(); n += 2) {
        groups.push_back({std::stoi(lines[n]), lines[n + 1]});
    }
    return groups;
}

class CDXFTest : public testing::Test {
  protected:
    CDXFTest() { m_files.PutFolder("/out"); }

    std::string Exported(const Suspension& document, int rackStep, int wheelStep) {
        EXPECT_TRUE(ExportDXF(document, rackStep, wheelStep, Path, m_files, m_messages));
        EXPECT_THAT(m_box.Shown, IsEmpty());
        return m_files.Bytes(Path).value_or("");
    }

    MemoryFileServices m_files;
    RecordingMessageBox m_box;
    Messages m_messages{m_box};
};

TEST_F(CDXFTest, WritesTheFormatToTheByte) {
    CDXF dxf;
    dxf.OpenSection();
    dxf.AddCircle({1, 2, 3}, {4, 5, 6}, 7, {});
    dxf.AddLabel({1, 2, 3}, "X");
    dxf.AddLine({612.5, -0.1, 0}, {-0.0, 1e-7, 123456789012345680.0}, {255, 0, 0});
    dxf.CloseSection();
    EXPECT_EQ(dxf.Text(), " 0 \r\nSECTION\r\n 2 \r\nENTITIES\r\n"
                          " 0 \r\nLINE\r\n 8 \r\nCorvanta\r\n"
                          " 10 \r\n 612.5 \r\n 20 \r\n-0.1 \r\n 30 \r\n 0 \r\n"
                          " 11 \r\n 0 \r\n 21 \r\n 0.0000001 \r\n 31 \r\n 123456789012345680 \r\n"
                          " 0 \r\nENDSEC\r\n 0 \r\nEOF\r\n");
}

TEST_F(CDXFTest, CarriesEveryDoubleExactly) {
    const double most = std::numeric_limits<double>::max();
    const double least = std::numeric_limits<double>::denorm_min();
    const SuspPoint from{0.1 + 0.2, -least, most};
    const SuspPoint to{-most, 1.0 / 3, 277.61900000000003};
    CDXF dxf;
    dxf.OpenSection();
    dxf.AddLine(from, to, {});
    dxf.CloseSection();
    const std::string& bytes = dxf.Text();
    EXPECT_EQ(bytes.find_first_of("eE+", bytes.find("Corvanta") + 8), bytes.find("ENDSEC"));
    // Read by the plain decimal digits alone; the smallest one is beyond what stod takes.
    const std::vector<Group> groups = GroupsOf(bytes);
    const std::array<double, 6> written{from.X, from.Y, from.Z, to.X, to.Y, to.Z};
    for (std::size_t n = 0; n < written.size(); ++n) {
        EXPECT_EQ(std::strtod(groups.at(n + 4).Value.c_str(), nullptr), written.at(n));
    }
    EXPECT_THROW(dxf.AddLine({std::nan(""), 0, 0}, {}, {}), Failure);
}

TEST_F(CDXFTest, AFailedWriteIsToldAndLeavesTheOldFile) {
    Suspension document = LoadSample("roadster-front-links.WSP");
    CalculateCorner(document);
    m_files.Put(Path, "old");
    m_files.FailOnChange(1);
    EXPECT_FALSE(ExportDXF(document, 2, 2, Path, m_files, m_messages));
    EXPECT_THAT(m_box.Prompts(), ElementsAre("There was an error while exporting. \r"
                                             "Error was: No space left on device"));
    EXPECT_EQ(m_box.Shown.at(0).Style, msExclamation);
    EXPECT_EQ(m_files.Bytes(Path), "old");
}

} // namespace
} // namespace corvanta::test
