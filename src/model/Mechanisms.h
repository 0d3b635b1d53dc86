#pragma once

#include <cstdint>
#include <string_view>

namespace corvanta {

/// How the spring of the corner is actuated. The values are stored in documents and options and
/// never change. A field that holds one is a plain 32-bit integer.
enum SpringMechanismValue : std::int32_t {
    smNone = 0,
    smOutboardToUpright = 1,
    smOutboardToLowerWishbone = 2,
    smDirectToUpperWishbone = 3,
    smRockerToUpperWishbone = 4,
    smPullrodToUpright = 5,
    smPushrodToUpright = 6,
    smPullrodToUpperWishbone = 7,
    smPushrodToLowerWishbone = 8,
    smTwoRockersToUpright = 9,
    smTwoRockersToLowerWishbone = 10,
    smMacPhersonStrut = 11,
};

/// Which springs the corner has.
enum ThirdSpringValue : std::int32_t {
    tsCornerSpring = 0,
    tsCornerAndCentreSpring = 1,
    tsCentreSpring = 2,
};

/// How the centre spring is actuated; in use with `tsCornerAndCentreSpring` and `tsCentreSpring`.
enum CentreSpringValue : std::int32_t {
    csLongitudinalViaTBar = 0,
    csLateralViaRocker = 1,
};

/// How the anti-roll bar is actuated.
enum ARBMechanismValue : std::int32_t {
    abNone = 0,
    abToLowerWishbone = 1,
    abToRocker = 2,
    abTBar = 3,
    abToUpright = 4,
};

/// How the chassis moves against the wheels: one wheel moves, or the axle does.
enum ChassisMotionValue : std::int32_t {
    cmRoll = 0,
    cmHeave = 1,
};

/// True for the mechanisms with a rocker driven by the outer actuator point: 4 to 10.
[[nodiscard]] constexpr bool HasRocker(std::int32_t mechanism) {
    return mechanism >= smRockerToUpperWishbone && mechanism <= smTwoRockersToLowerWishbone;
}

/// True for the mechanisms with a second rocker: 9 and 10.
[[nodiscard]] constexpr bool HasSecondRocker(std::int32_t mechanism) {
    return mechanism == smTwoRockersToUpright || mechanism == smTwoRockersToLowerWishbone;
}

/// True for the mechanisms whose single rocker can also drive a T-bar or a centre spring: 5 to 8.
[[nodiscard]] constexpr bool HasSingleRodRocker(std::int32_t mechanism) {
    return mechanism >= smPullrodToUpright && mechanism <= smPushrodToLowerWishbone;
}

/// True for the mechanisms whose link loads can be told: 1, 2 and 5 to 11.
[[nodiscard]] constexpr bool HasLinkLoads(std::int32_t mechanism) {
    return mechanism == smOutboardToUpright || mechanism == smOutboardToLowerWishbone ||
           (mechanism >= smPullrodToUpright && mechanism <= smMacPhersonStrut);
}

/// True when the bar is a lateral one with a drop link and an input lever: 1, 2 and 4.
[[nodiscard]] constexpr bool IsLateralBar(std::int32_t arbMechanism) {
    return arbMechanism == abToLowerWishbone || arbMechanism == abToRocker ||
           arbMechanism == abToUpright;
}

/// Display texts. A number out of range gives the empty string.
[[nodiscard]] std::string_view SpringMechanismName(std::int32_t mechanism);
[[nodiscard]] std::string_view ThirdSpringName(std::int32_t thirdSpring);
[[nodiscard]] std::string_view CentreSpringSystemName(std::int32_t system);

/// The word that heads the third link load table: "Pushrod", "Strut" and the like.
[[nodiscard]] std::string_view SpringShortWordOf(std::int32_t mechanism);

} // namespace corvanta
