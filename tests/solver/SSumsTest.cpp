#include "solver/SSums.h"

#include "solver/FaultyPoints.h"
#include "tests/support/Corners.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace corvanta::test {
namespace {

const std::string Head = "The following problem/s were found with the input geometry: \r";

/// One check: a corner to which it applies, and what sets the first value that fires it or the last
/// one that passes.
struct InputCase {
    const char* Message;
    std::int32_t Spring;
    std::int32_t Bar;
    void (*Set)(PointSet& p, bool broken);
};

double JustAbove(double value) {
    return std::nextafter(value, 1e9);
}

/// Two points that must be 1 mm apart or more.
template <PointNumber Moved, PointNumber Anchor>
InputCase Apart(const char* message, std::int32_t spring, std::int32_t bar = abNone) {
    return {message, spring, bar, [](PointSet& p, bool broken) {
                p[Moved] = p[Anchor];
                p[Moved].X += broken ? 0.9999999 : 1; // exact: whole coordinates
            }};
}

/// Two points of which the first must have the greater coordinate.
template <PointNumber Greater, PointNumber Smaller, double SuspPoint::*Coordinate>
InputCase Above(const char* message) {
    return {message, smNone, abNone, [](PointSet& p, bool broken) {
                const double smaller = p[Smaller].*Coordinate;
                p[Greater].*Coordinate = broken ? smaller : JustAbove(smaller);
            }};
}

/// The T-bar's axis, which may not be 1e-6 out of true.
template <double SuspPoint::*Coordinate>
InputCase Straight() {
    return {"T-Bar pivot axis must be horizontal", smPullrodToUpright, abTBar,
            [](PointSet& p, bool broken) {
                p[ptTBP1].*Coordinate = 0;
                p[ptTBP2].*Coordinate = broken ? -1e-6 : -0.999e-6;
            }};
}

std::vector<InputCase> InputCases() {
    constexpr std::int32_t strut = smMacPhersonStrut;
    constexpr std::int32_t two = smTwoRockersToUpright;
    constexpr std::int32_t pull = smPullrodToUpright;
    constexpr auto* spring = "Two distinct points needed for the spring";
    constexpr auto* input = "Rocker input & pivot axis are coincident";
    constexpr auto* output = "Rocker output & pivot axis are coincident";
    constexpr auto* input2 = "2nd rocker input & pivot axis is coincident";
    constexpr auto* output2 = "2nd rockr output & pivot axis is coincident";
    return {
        Apart<ptWTCP, ptWC>("Tyre centre & contact patch points coincident", strut),
        Apart<ptUWO, ptTRO>("Trackrod & Upper wishbone outboard points coincident", strut),
        Apart<ptLWO, ptTRO>("Trackrod & Lower wishbone outboard points coincident", smNone),
        {"Trackrod has no length - check trackrod coordinates", smNone, abNone,
         [](PointSet& p, bool broken) {
             p[ptTRI] = p[ptTRO];
             p[ptTRI].Y -= broken ? 0.9999999 : 1; // in Y, as the next check asks
         }},
        Above<ptTRO, ptTRI, &SuspPoint::Y>("Trackrod points swapped inboard for outboard"),
        Apart<ptUWO, ptLWO>("Upper & Lower wishbone outboard points coincident", smNone),
        Above<ptUWIR, ptUWIF, &SuspPoint::X>("Upper wishbone inboard points back to front"),
        Above<ptLWIR, ptLWIF, &SuspPoint::X>("Lower wishbone inboard points back to front"),
        Apart<ptARP1, ptARP2>("Two distinct points needed for rocker axis", strut, abToUpright),
        {"Anti-roll bar input lever length is 0", strut, abToLowerWishbone,
         [](PointSet& p, bool broken) {
             p[ptARI] = p[ptARP1];
             p[ptARI].X += broken ? 0 : 1e-9;
         }},
        {"Two distinct points needed for T-Bar pivot axis", pull, abTBar,
         [](PointSet& p, bool broken) { p[ptTBP2].Y = p[ptTBP1].Y + (broken ? 0.9999999 : 1); }},
        Straight<&SuspPoint::X>(),
        Straight<&SuspPoint::Z>(),
        {"T-Bar input lever length must be greater than 0", pull, abTBar,
         [](PointSet& p, bool broken) { p[ptTBDLO].Y = broken ? 0 : 1e-300; }},
        Apart<ptPRO, ptSAI>(spring, smOutboardToUpright),
        Apart<ptPRO, ptSAI>(spring, smOutboardToLowerWishbone),
        Apart<ptPRO, ptSAI>(spring, smDirectToUpperWishbone),
        Apart<ptPRO, ptSAI>(spring, strut),
        Apart<ptSAI, ptR1O>(spring, smRockerToUpperWishbone),
        Apart<ptSAI, ptR1O>(spring, smPushrodToLowerWishbone),
        Apart<ptSAI, ptR2O>(spring, two),
        Apart<ptPRI, ptR1P1>(input, smRockerToUpperWishbone),
        Apart<ptPRI, ptR1P2>(input, smTwoRockersToLowerWishbone),
        Apart<ptR1O, ptR1P1>(output, smPushrodToUpright),
        Apart<ptR1O, ptR1P2>(output, smPullrodToUpperWishbone),
        Apart<ptR1P2, ptR1P1>("Two distinct points needed for rocker axis", pull),
        Apart<ptR2I, ptR2P1>(input2, two),
        Apart<ptR2I, ptR2P2>(input2, smTwoRockersToLowerWishbone),
        Apart<ptR2O, ptR2P1>(output2, two),
        Apart<ptR2O, ptR2P2>(output2, two),
        Apart<ptR2P2, ptR2P1>("Two distinct points needed for 2nd rocker axis", two),
        Apart<ptDSI, ptDSO>("Two distinct points needed to define driveshaft", smNone),
    };
}

std::string InputReport(Suspension& document) {
    std::string report;
    const bool sound = CheckInputGeometry(document, report);
    EXPECT_EQ(sound, report.empty());
    return report;
}

TEST(SSumsTest, EveryInputCheckFiresAloneAndPassesAtItsBoundary) {
    for (const InputCase& c : InputCases()) {
        Suspension corner = c.Spring == smMacPhersonStrut ? StrutCorner(c.Bar)
                                                          : DoubleWishboneCorner(c.Spring, c.Bar);
        PointSet& points = corner.StaticPoints();
        const PointSet sound = points;
        corner.GeometryValid = true;
        ASSERT_EQ(InputReport(corner), "") << c.Message;
        c.Set(points, false);
        EXPECT_EQ(InputReport(corner), "") << c.Message;
        EXPECT_TRUE(corner.GeometryValid);

        points = sound;
        c.Set(points, true);
        corner.FaultyPoints.clear();
        EXPECT_EQ(InputReport(corner), Head + "\r" + c.Message);
        EXPECT_FALSE(corner.GeometryValid);
        // Named are points of the table, one of which stands for a point that the change moved.
        const bool named = std::any_of(AllPoints.begin(), AllPoints.end(), [&](PointNumber number) {
            const PointNumber entered = EnteredPoint(number, corner.Data);
            return points[number] != sound[number] && corner.Catalogue[entered].Enabled &&
                   std::count(corner.FaultyPoints.begin(), corner.FaultyPoints.end(), entered);
        });
        EXPECT_TRUE(named) << c.Message;
    }
}

TEST(SSumsTest, ActuatorPlacement) {
    constexpr auto* pullrod = "Pullrod outer point is nearer lower wishbone than upper";
    constexpr auto* pushrod = "Pushrod outer point is nearer upper wishbone than lower";
    // What is said of a point near the upper joint and outboard of its axis, by mechanism, and of
    // one near the lower joint and inboard of the axis.
    const std::array<const char*, 12> nearUpper{
        nullptr,
        nullptr,
        "Spring connection is nearer upper wishbone than lower",
        nullptr,
        "Pickup off top rocker is outboard of its pivot axis",
        nullptr,
        pushrod,
        nullptr,
        pushrod,
        pushrod,
        pushrod,
        nullptr};
    const std::array<const char*, 12> nearLower{nullptr, nullptr, nullptr, nullptr,
                                                nullptr, pullrod, nullptr, pullrod};
    Suspension document;
    PointSet& p = document.StaticPoints();
    p[ptUWO] = {0, 600, 400};
    p[ptLWO] = {0, 600, 200};
    p[ptUWCR] = {0, 300, 400};
    const auto report = [&](double y, double z) {
        p[ptPRO] = {30, y, z};
        document.GeometryValid = true;
        std::string text;
        const bool sound = CheckActuatorPlacement(document, text);
        EXPECT_EQ(sound, text.empty());
        EXPECT_TRUE(document.GeometryValid) << "is left alone";
        return text;
    };
    const auto expected = [](const char* message) {
        return message == nullptr ? std::string()
                                  : Head + "\r\r" + message + "\r\rCheck system definition";
    };
    for (std::size_t m = 0; m < nearUpper.size(); ++m) {
        document.Data.SpringMechanism = static_cast<std::int32_t>(m);
        EXPECT_EQ(report(JustAbove(300), 300.001), expected(nearUpper[m])) << m;
        EXPECT_EQ(report(300, 299.999), expected(nearLower[m])) << m;
        EXPECT_EQ(report(300, 300), "") << "midway and on the axis " << m;
    }
}

} // namespace
} // namespace corvanta::test
