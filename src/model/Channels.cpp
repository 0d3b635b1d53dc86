#include "model/Channels.h"

#include "model/Failure.h"

namespace corvanta {

namespace {

struct ChannelEntry {
    std::string_view Title;
    std::int32_t Class;
};

/// In id order, from 1.
constexpr std::array<ChannelEntry, ChannelCount> Entries{{
    {"Ackerman %", ucPercentage},
    {"Anti-Dive Angle", ucAngle},
    {"Anti-Dive Swing Axle Length", ucDisplacement},
    {"Anti-Dive %", ucPercentage},
    {"Anti-Roll %", ucPercentage},
    {"Anti-Squat Swing Axle Length", ucDisplacement},
    {"Anti-Squat Angle", ucAngle},
    {"Anti-Squat %", ucPercentage},
    {"Anti-Roll Swing Axle Angle", ucAngle},
    {"Anti-Roll Swing Axle Length", ucDisplacement},
    {"ARB Rotation", ucAngle},
    {"ARB Velocity Ratio", ucRatio},
    {"ARB Ratio", ucRatio},
    {"Camber Angle", ucAngle},
    {"Caster Angle", ucAngle},
    {"Caster Offset", ucDisplacement},
    {"Centre Spring Vel. Ratio", ucRatio},
    {"Centre Spring Length", ucDisplacement},
    {"Driveshaft Angle XY", ucAngle},
    {"Driveshaft Angle YZ", ucAngle},
    {"Driveshaft Total Angle", ucAngle},
    {"Driveshaft Length", ucDisplacement},
    {"Half Track", ucDisplacement},
    {"Kingpin Inclination", ucAngle},
    {"Kingpin Offset", ucDisplacement},
    {"Link Load Coefficient", ucRatio},
    {"Pushrod Velocity Ratio", ucRatio},
    {"Rack Travel", ucDisplacement},
    {"Roll Centre to Origin", ucDisplacement},
    {"Roll Centre to Ground", ucDisplacement},
    {"Roll Centre Y position", ucDisplacement},
    {"Roll Stiffness", ucBarRate},
    {"Roll Stiffness Change", ucPercentage},
    {"Spring Velocity Ratio", ucRatio},
    {"Spring Length", ucDisplacement},
    {"Steer Angle", ucAngle},
    {"Steer Angle - Bump ", ucAngle},
    {"Steer Angle - Delta", ucAngle},
    {"W'Rate ARB", ucRate},
    {"W'Rate Change ARB", ucPercentage},
    {"W'Rate Spring", ucRate},
    {"W'Rate Change Spring", ucPercentage},
    {"W'Rate Centre Spring", ucRate},
    {"W'Rate Change Centre Spring", ucPercentage},
    {"W'Rate Total", ucRate},
    {"W'Rate Change Total", ucPercentage},
    {"Wheel Travel", ucDisplacement},
    {"W'bone Long. Angle Upper", ucAngle},
    {"W'bone Long. Angle Lower", ucAngle},
    {"W'bone Lat. Angle Upper", ucAngle},
    {"W'bone Lat. Angle Lower", ucAngle},
}};

struct EndTitles {
    int Id;
    std::string_view Front;
    std::string_view Rear;
};

constexpr std::array<EndTitles, 6> TitlesByEnd{{
    {chAntiDiveAngle, "Anti-Dive Angle", "Anti-Rise Angle"},
    {chAntiDiveLength, "Anti-Dive Swing Axle Length", "Anti-Rise Swing Axle Length"},
    {chAntiDivePercent, "Anti-Dive %", "Anti-Rise %"},
    {chAntiSquatAngle, "Anti-Lift Angle", "Anti-Squat Angle"},
    {chAntiSquatLength, "Anti-Lift Swing Axle Length", "Anti-Squat Swing Axle Length"},
    {chAntiSquatPercent, "Anti-Lift %", "Anti-Squat %"},
}};

} // namespace

void ChannelCells::RaiseSubscript() {
    throw Failure(fnSubscript, "Subscript out of range");
}

const ChannelRecord& ChannelCatalogue::operator[](int id) const {
    if (id < 1 || id > ChannelCount) {
        throw Failure(fnSubscript, "Subscript out of range");
    }
    return m_records[static_cast<std::size_t>(id) - 1];
}

ChannelRecord& ChannelCatalogue::Record(int id) {
    return m_records[static_cast<std::size_t>(id) - 1];
}

void ChannelCatalogue::ChannelsSetup(FundamentalUnits& units) {
    units.SetFundUnitsData();
    for (int id = 1; id <= ChannelCount; ++id) {
        const ChannelEntry& entry = Entries[static_cast<std::size_t>(id) - 1];
        AddChannel(id, entry.Title, entry.Class, units);
    }
}

void ChannelCatalogue::AddChannel(int id, std::string_view title, std::int32_t unitClass,
                                  const FundamentalUnits& units) {
    const UnitRecord& unit = units[unitClass];
    Record(id) = {std::string(title), unit.Label, unitClass, unit.Factor, unit.Format};
}

void ChannelCatalogue::SetFrontRearTitles(bool isFrontCorner) {
    for (const EndTitles& titles : TitlesByEnd) {
        Record(titles.Id).Title = isFrontCorner ? titles.Front : titles.Rear;
    }
}

} // namespace corvanta
