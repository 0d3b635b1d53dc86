#include "export/CDXF.h"

#include "tests/support/MemoryFileServices.h"
#include "tests/support/RecordingMessageBox.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <array>
#include <cmath>
#include <limits>
#include <sstream>
#include <string>

namespace corvanta::test {
namespace {

TEST(CDXFTest, WritesTheFormatToTheByte) {
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

TEST(CDXFTest, CarriesEveryDoubleExactly) {
    const double most = std::numeric_limits<double>::max();
    const double least = std::numeric_limits<double>::denorm_min();
    const std::array<double, 6> written{0.1 + 0.2, -least,  most,
                                        -most,     1.0 / 3, 277.61900000000003};
    CDXF dxf;
    dxf.AddLine({written[0], written[1], written[2]}, {written[3], written[4], written[5]}, {});
    std::istringstream lines(dxf.Text());
    std::string line;
    for (int n = 0; n < 4; ++n) { // the kind and the layer
        std::getline(lines, line);
    }
    for (const double value : written) {
        std::getline(lines, line);
        std::getline(lines, line);
        EXPECT_EQ(line.find_first_of("eE+"), std::string::npos);
        EXPECT_EQ(std::strtod(line.c_str(), nullptr), value);
    }
    EXPECT_THROW(dxf.AddLine({std::nan(""), 0, 0}, {}, {}), Failure);
}

TEST(CDXFTest, AFailedWriteIsToldAndLeavesTheOldFile) {
    Suspension document = LoadSample("roadster-front-links.WSP");
    CalculateCorner(document);
    MemoryFileServices files;
    RecordingMessageBox box;
    Messages messages{box};
    const std::string path = "/out/corner.dxf";
    files.Put(path, "old");
    files.FailOnChange(1);
    EXPECT_FALSE(ExportDXF(document, 2, 2, path, files, messages));
    EXPECT_THAT(box.Prompts(), ElementsAre("There was an error while exporting. \r"
                                           "Error was: No space left on device"));
    EXPECT_EQ(box.Shown.at(0).Style, msExclamation);
    EXPECT_EQ(files.Bytes(path), "old");
}

} // namespace
} // namespace corvanta::test
