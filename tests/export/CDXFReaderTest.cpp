#include "export/CDXF.h"

#include "platform/DiskFileServices.h"
#include "tests/support/Places.h"
#include "tests/support/RecordingMessageBox.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Testing.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

namespace corvanta::test {
namespace {

/// What the reader found in one file.
struct ReadDrawing {
    int Errors = -1;
    std::vector<double> Lengths;
};

/// Reads every drawing of a folder with a reader of DXF that is none of ours.
std::map<std::string, ReadDrawing> ReadDrawings(const TemporaryFolder& folder) {
    const std::string report = folder / "report.txt";
    const std::string command = "/usr/bin/python3 " + SourceFolder() +
                                "/tests/export/dxf_audit.py " + folder.Path() + " > " + report;
    EXPECT_EQ(std::system(command.c_str()), 0) << "the system's python3 needs ezdxf";
    std::map<std::string, ReadDrawing> drawings;
    std::ifstream lines(report);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string name;
        ReadDrawing drawing;
        words >> name >> drawing.Errors;
        for (double length = 0; words >> length;) {
            drawing.Lengths.push_back(length);
        }
        drawings[name] = drawing;
    }
    return drawings;
}

bool Holds(const ReadDrawing& drawing, double length) {
    constexpr double Tolerance = 1e-4;
    return std::any_of(drawing.Lengths.begin(), drawing.Lengths.end(),
                       [&](double found) { return std::abs(found - length) < Tolerance; });
}

TEST(CDXFReaderTest, EverySampleOpensWithoutAnErrorAndHoldsItsLinks) {
    const TemporaryFolder folder;
    DiskFileServices files;
    RecordingMessageBox box;
    Messages messages(box);
    std::map<std::string, StaticLengthRecord> lengths;
    std::map<std::string, std::int32_t> mechanisms;
    for (const std::string& path : AllSamplePaths()) {
        const std::string name = std::filesystem::path(path).stem().string();
        Suspension document = LoadSample(std::filesystem::relative(path, SamplePath("")).string());
        CalculateCorner(document);
        // At the end of bump, where every link has moved.
        ASSERT_TRUE(
            ExportDXF(document, document.StaticRack, 2, folder / (name + ".dxf"), files, messages));
        lengths[name] = document.StaticLengths;
        mechanisms[name] = document.Data.SpringMechanism;
    }
    const std::map<std::string, ReadDrawing> drawings = ReadDrawings(folder);
    ASSERT_EQ(drawings.size(), lengths.size());
    for (const auto& [name, drawing] : drawings) {
        SCOPED_TRACE(name);
        const StaticLengthRecord& links = lengths[name];
        EXPECT_EQ(drawing.Errors, 0);
        EXPECT_TRUE(Holds(drawing, links.LowerFrontLink) && Holds(drawing, links.LowerRearLink));
        EXPECT_TRUE(Holds(drawing, links.TrackRodLength));
        if (mechanisms[name] != smMacPhersonStrut) {
            EXPECT_TRUE(Holds(drawing, links.UpperFrontLink) &&
                        Holds(drawing, links.UpperRearLink));
        }
        if (HasSingleRodRocker(mechanisms[name])) {
            EXPECT_TRUE(Holds(drawing, links.PushrodLength));
        }
    }
}

} // namespace
} // namespace corvanta::test
