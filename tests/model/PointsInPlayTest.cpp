#include "model/PointsInPlay.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace corvanta {
namespace {

using Points = std::set<PointNumber>;

Points InPlay(const SuspensionData& data) {
    PointCatalogue catalogue;
    SetPointsInPlay(catalogue, data.SpringMechanism, data);
    Points points;
    for (const PointNumber number : AllPoints) {
        if (catalogue[number].Enabled) {
            EXPECT_NE(catalogue[number].LongName, "") << PointShortName(number);
            points.insert(number);
        }
    }
    return points;
}

Points Without(Points points, const Points& others) {
    for (const PointNumber number : others) {
        points.erase(number);
    }
    return points;
}

const Points Linkage{ptWTCP, ptWC,   ptUWO, ptUWIR, ptUWIF, ptLWO,
                     ptLWIR, ptLWIF, ptTRO, ptTRI,  ptRHM};

SuspensionData With(std::int32_t spring, std::int32_t thirdSpring = 0, std::int32_t system = 0,
                    std::int32_t bar = 0) {
    SuspensionData data;
    data.SpringMechanism = spring;
    data.ThirdSpringMechanism = thirdSpring;
    data.CentreSpringSystem = system;
    data.ARBMechanism = bar;
    return data;
}

TEST(PointsInPlayTest, BarsAndCentreSpringsBringTheirPoints) {
    const Points base = InPlay(With(smPushrodToUpright));
    const auto added = [&](std::int32_t third, std::int32_t system, std::int32_t bar) {
        return Without(InPlay(With(smPushrodToUpright, third, system, bar)), base);
    };
    const Points bar{ptARDL, ptARI, ptARP1, ptARP2};
    const Points tBar{ptTBP1, ptTBP2, ptTBDLI, ptTBDLO};
    EXPECT_EQ(added(0, 0, abToLowerWishbone), bar);
    EXPECT_EQ(added(0, 1, abToUpright), bar);
    EXPECT_EQ(added(0, 0, abTBar), tBar);
    EXPECT_EQ(Without(added(1, 0, 0), tBar), (Points{ptTSO, ptTSI}));
    EXPECT_EQ(Without(added(1, 1, abToRocker), bar), (Points{ptLCSI}));
    EXPECT_EQ(Without(added(1, 1, abTBar), tBar), (Points{ptLCSI}));
}

} // namespace
} // namespace corvanta
