#include "tests/support/SampleCorners.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace corvanta::test {
namespace {

/// One line of a file of published results.
struct PublishedValue {
    std::string Quantity;
    double RackTravel = 0;
    double WheelTravel = 0;
    double Value = 0;
    double Tolerance = 0;
};

std::vector<PublishedValue> ReadPublished(const std::string& name) {
    std::ifstream file(SamplePath("published/" + name));
    std::vector<PublishedValue> values;
    for (std::string line; std::getline(file, line);) {
        std::istringstream cells(line);
        std::string quantity, rack, wheel, value, unit, tolerance, compare;
        if (line.empty() || line[0] == '#' || line.rfind("quantity", 0) == 0) {
            continue;
        }
        for (std::string* cell : {&quantity, &rack, &wheel, &value, &unit, &tolerance, &compare}) {
            std::getline(cells, *cell, '\t');
        }
        EXPECT_EQ(compare, "yes");
        values.push_back(
            {quantity, std::stod(rack), std::stod(wheel), std::stod(value), std::stod(tolerance)});
    }
    return values;
}

/// Cuts the grid so that a state stands at exactly these travels, and calculates. Returns that
/// state.
const WheelState& StateAt(Suspension& document, double rackTravel, double wheelTravel) {
    SuspensionData& data = document.Data;
    data.Bump = std::max(std::abs(wheelTravel), 1.0);
    data.Droop = data.Bump;
    data.WheelTravelStepSize = data.Bump;
    data.RackTravel = std::max(std::abs(rackTravel), 1.0);
    data.RackTravelStepSize = data.RackTravel;
    SetUpCorner(document);
    CalculateCorner(document);
    const auto step = [](double travel) { return travel > 0 ? 1 : (travel < 0 ? -1 : 0); };
    return document.WheelStates(document.StaticRack + step(rackTravel),
                                document.StaticWheel - step(wheelTravel));
}

using Reader = std::function<double(const WheelState&)>;

Reader Channel(ChannelId id) {
    return [id](const WheelState& state) { return state.Channels[id]; };
}

Reader Coordinate(PointNumber point, double SuspPoint::*coordinate) {
    return [=](const WheelState& state) { return state.Points[point].*coordinate; };
}

/// How the program tells each published quantity.
const std::map<std::string, Reader>& Readers() {
    static const std::map<std::string, Reader> readers{
        {"camber", Channel(chCamberAngle)},
        {"steer", Channel(chSteerAngle)},
        {"caster", Channel(chCasterAngle)},
        {"kingpin", Channel(chKingpinInclination)},
        {"caster_offset", Channel(chCasterOffset)},
        {"kingpin_offset", Channel(chKingpinOffset)},
        {"half_track", Channel(chHalfTrack)},
        {"roll_centre_height", Channel(chRollCentreToOrigin)},
        {"cp_x", Coordinate(ptWTCP, &SuspPoint::X)},
        {"cp_z", Coordinate(ptWTCP, &SuspPoint::Z)},
        {"wc_x", Coordinate(ptWC, &SuspPoint::X)},
        {"wc_y", Coordinate(ptWC, &SuspPoint::Y)},
        {"wc_z", Coordinate(ptWC, &SuspPoint::Z)},
        {"uwo_x", Coordinate(ptUWO, &SuspPoint::X)},
        {"uwo_y", Coordinate(ptUWO, &SuspPoint::Y)},
        {"uwo_z", Coordinate(ptUWO, &SuspPoint::Z)},
        {"lwo_x", Coordinate(ptLWO, &SuspPoint::X)},
        {"lwo_y", Coordinate(ptLWO, &SuspPoint::Y)},
        {"lwo_z", Coordinate(ptLWO, &SuspPoint::Z)},
        {"tro_x", Coordinate(ptTRO, &SuspPoint::X)},
        {"tro_y", Coordinate(ptTRO, &SuspPoint::Y)},
        {"tro_z", Coordinate(ptTRO, &SuspPoint::Z)},
    };
    return readers;
}

TEST(PublishedCornersTest, TheSweepOfAnOpenKinematicsLibraryIsMet) {
    const std::vector<PublishedValue> published = ReadPublished("DWSWEEP.expected.tsv");
    ASSERT_EQ(published.size(), 21U * Readers().size());
    Suspension document = LoadSample("published/DWSWEEP.WSP");
    const WheelState* state = nullptr;
    const PublishedValue* solved = nullptr;
    for (const PublishedValue& value : published) {
        if (solved == nullptr || solved->RackTravel != value.RackTravel) {
            state = &StateAt(document, value.RackTravel, value.WheelTravel);
            solved = &value;
        }
        EXPECT_NEAR(Readers().at(value.Quantity)(*state), value.Value, value.Tolerance)
            << value.Quantity << " at rack travel " << value.RackTravel << ", wheel travel "
            << value.WheelTravel;
    }
}

} // namespace
} // namespace corvanta::test
