#include "model/PointsInPlay.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

namespace corvanta {
namespace {

using testing::IsSupersetOf;
using testing::UnorderedElementsAre;

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

TEST(PointsInPlayTest, TheLinkageAloneWithoutASpring) {
    EXPECT_EQ(InPlay(With(smNone)), Linkage);
    SuspensionData driven = With(smNone);
    driven.DriveShaftExists = true;
    EXPECT_THAT(Without(InPlay(driven), Linkage), UnorderedElementsAre(ptDSO, ptDSI));
}

TEST(PointsInPlayTest, EachMechanismHasItsSpringTrain) {
    for (const std::int32_t direct : {1, 2, 3}) {
        EXPECT_THAT(Without(InPlay(With(direct)), Linkage), UnorderedElementsAre(ptPRO, ptSAI));
    }
    const Points rocker{ptPRO, ptPRI, ptR1P1, ptR1P2, ptR1O, ptSAI};
    for (const std::int32_t single : {4, 5, 6, 7, 8}) {
        EXPECT_EQ(Without(InPlay(With(single)), Linkage), rocker);
    }
    for (const std::int32_t twin : {9, 10}) {
        EXPECT_THAT(Without(Without(InPlay(With(twin)), Linkage), rocker),
                    UnorderedElementsAre(ptR2I, ptR2P1, ptR2P2, ptR2O));
    }
    EXPECT_THAT(InPlay(With(smMacPhersonStrut)),
                UnorderedElementsAre(ptWTCP, ptWC, ptLWO, ptLWIR, ptLWIF, ptTRO, ptTRI, ptRHM,
                                     ptPRO, ptSAI));
}

TEST(PointsInPlayTest, ACentreSpringAloneTakesTheCornerSpringOfASingleRocker) {
    for (const std::int32_t single : {5, 6, 7, 8}) {
        const Points points = InPlay(With(single, tsCentreSpring));
        EXPECT_THAT(points, IsSupersetOf({ptPRO, ptPRI, ptR1P1, ptR1P2, ptTSO, ptTSI}));
        EXPECT_EQ(points.count(ptR1O) + points.count(ptSAI), 0U) << single;
    }
    for (const std::int32_t other : {4, 9, 10}) {
        EXPECT_THAT(InPlay(With(other, tsCentreSpring)), IsSupersetOf({ptR1O, ptSAI}));
    }
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

TEST(PointsInPlayTest, NamesFollowTheMechanismAskedFor) {
    PointCatalogue catalogue;
    const SuspensionData data = With(smNone, 0, 0, abToRocker);
    SetPointsInPlay(catalogue, smTwoRockersToUpright, data);
    EXPECT_EQ(catalogue[ptR1O].LongName, "Rocker output");
    EXPECT_EQ(catalogue[ptR2O].LongName, "Second rocker ouput");
    EXPECT_EQ(catalogue[ptARDL].LongName, "ARB drop link pickup on rocker");
    EXPECT_EQ(catalogue[ptWSA].LongName, "Fictitious stub axle");
    EXPECT_FALSE(catalogue[ptWSA].Enabled);
    SetPointsInPlay(catalogue, smPushrodToUpright, data);
    EXPECT_EQ(catalogue[ptPRI].LongName, "Pushrod inboard  pickup on rocker");
    EXPECT_EQ(catalogue[ptR1O].LongName, "Shock absorber pickup on rocker");
    EXPECT_EQ(catalogue[ptR2O].LongName, "Second rocker ouput"); // stays, out of play
    EXPECT_FALSE(catalogue[ptR2O].Enabled);
    SetPointsInPlay(catalogue, smTwoRockersToLowerWishbone, data);
    EXPECT_EQ(catalogue[ptR2P2].LongName, "Second rocker axis ref point ");
    SetPointsInPlay(catalogue, smMacPhersonStrut, data);
    EXPECT_EQ(catalogue[ptSAI].LongName, "Strut pickup on chassis");
    EXPECT_EQ(catalogue[ptTRO].LongName, "Trackrod outboard  pickup");
}

TEST(PointsTest, ShortNamesStandAtTheirNumbers) {
    std::set<std::string_view> names;
    for (const PointNumber number : AllPoints) {
        names.insert(PointShortName(number));
    }
    EXPECT_EQ(names.size(), 49U);
    EXPECT_EQ(PointShortName(static_cast<PointNumber>(34)), "ptuWTCP");
    EXPECT_EQ(PointShortName(static_cast<PointNumber>(49)), "ptLCSI");
    EXPECT_EQ(ptARDL, 37);
    EXPECT_EQ(PointShortName(ptTBDLO2), "ptTBDLO2");
}

} // namespace
} // namespace corvanta
