#include "model/Views.h"

#include "model/SuspensionData.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

namespace corvanta {
namespace {

TEST(ViewsTest, NamesStandAtTheirNumbers) {
    EXPECT_EQ(ViewName(vwAntis), "Anti-Dive, -Squat & -Roll");
    EXPECT_EQ(ViewName(vwQuadraticCoefficients), "Quadratic Coefficients");
    EXPECT_EQ(ViewName(vwPlot), "Plot");
    EXPECT_EQ(ViewName(vw3d), "3d View");
    for (const std::int32_t none : {-1, 0, 13, 16}) {
        EXPECT_EQ(ViewName(none), "");
    }
    SuspensionData data;
    EXPECT_EQ(LinkLoadViewName(1, data), "Upper Wishbone Loads");
    EXPECT_EQ(LinkLoadViewName(3, data), "None & Track Rod Loads");
    data.SpringMechanism = smMacPhersonStrut;
    EXPECT_EQ(LinkLoadViewName(3, data), "Strut & Track Rod Loads");
    EXPECT_EQ(LinkLoadViewName(4, data), "");
}

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
