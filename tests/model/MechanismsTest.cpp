#include "model/Mechanisms.h"

#include <gtest/gtest.h>

namespace corvanta {
namespace {

TEST(MechanismsTest, TextsEndWhereTheCatalogueEnds) {
    EXPECT_EQ(SpringMechanismName(11), "Macpherson strut");
    EXPECT_EQ(SpringMechanismName(12), "");
    EXPECT_EQ(SpringMechanismName(-1), "");
    EXPECT_EQ(ThirdSpringName(2), "Centre spring");
    EXPECT_EQ(ThirdSpringName(3), "");
    EXPECT_EQ(CentreSpringSystemName(1), "Lateral via rocker");
    EXPECT_EQ(CentreSpringSystemName(2), "");
}

} // namespace
} // namespace corvanta
