#include "model/Views.h"

#include "model/SuspensionData.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

namespace corvanta {
namespace {

TEST(ViewsTest, AChannelStandsOnceInTheCustomList) {
    CustomChannels channels;
    channels.Add(5);
    channels.Add(2);
    channels.Add(5);
    EXPECT_EQ(channels.Ids(), (std::vector<int>{5, 2}));
    SelectedViews views;
    EXPECT_THROW((void)views[0], std::out_of_range);
    EXPECT_THROW(views.Set(13, true), std::out_of_range);
}

} // namespace
} // namespace corvanta
