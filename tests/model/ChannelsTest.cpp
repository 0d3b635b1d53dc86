#include "model/Channels.h"

#include "model/Failure.h"

#include <gtest/gtest.h>

namespace corvanta {
namespace {

TEST(ChannelsTest, RecordsCopyTheUnitsWhenTheyAreSetUp) {
    FundamentalUnits units;
    units[ucDisplacement].Label = "mm";
    units[ucRate].Label = "N/mm";
    ChannelCatalogue channels;
    channels.ChannelsSetup(units);
    EXPECT_EQ(channels[chHalfTrack].UnitLabel, "mm");
    EXPECT_EQ(channels[chRollStiffness].Class, ucBarRate);
    units[ucDisplacement].Label = "in";
    EXPECT_EQ(channels[chHalfTrack].UnitLabel, "mm");
    channels.ChannelsSetup(units);
    EXPECT_EQ(channels[chHalfTrack].UnitLabel, "in");
    EXPECT_EQ(channels[chHalfTrack].Factor, 0.03937008F);
    EXPECT_EQ(channels[chHalfTrack].Format, "0.000");
    // Ids stand in stored lists; these anchor the enumeration at both ends and in the middle.
    EXPECT_EQ(channels[1].Title, "Ackerman %");
    EXPECT_EQ(channels[26].Title, "Link Load Coefficient");
    EXPECT_EQ(channels[37].Title, "Steer Angle - Bump ");
    EXPECT_EQ(channels[51].Title, "W'bone Lat. Angle Lower");
    EXPECT_EQ(chLowerLatAngle, 51);
    EXPECT_THROW((void)channels[0], Failure);
    EXPECT_THROW((void)channels[52], Failure);
}

} // namespace
} // namespace corvanta
