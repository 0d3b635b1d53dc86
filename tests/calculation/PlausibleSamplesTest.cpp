// The samples are what a newcomer sees first, so every quantity of each must be that of a car of
// its kind. The bounds are round figures of what such cars are built to.

#include "model/Mechanisms.h"
#include "tests/support/SampleCorners.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <map>
#include <numbers>
#include <optional>
#include <string>
#include <vector>

namespace corvanta::test {
namespace {

struct Bounds {
    double Least = 0;
    double Most = 0;
};

/// What tells one kind of car from another.
struct Kind {
    Bounds Mass;        ///< whole car, kg
    Bounds Wheelbase;   ///< mm
    Bounds HalfTrack;   ///< mm
    Bounds TyreRate;    ///< N/mm
    Bounds Ride;        ///< natural frequency of the body on springs and centre springs, Hz
    Bounds BarRate;     ///< of the bar at the wheel, N/mm
    Bounds StaticAngle; ///< camber, deg
};

const Kind ClassicSingleSeater{{500, 700}, {2300, 2700}, {700, 900}, {150, 250},
                               {1.5, 3.5}, {3, 20},      {-2, 0.5}};
const Kind JuniorSingleSeater{{400, 600}, {2400, 2850}, {650, 760}, {150, 230},
                              {2, 4},     {5, 30},      {-4, 0}};
const Kind SingleSeater{{580, 800}, {2750, 3600}, {680, 850}, {180, 270},
                        {3, 6.5},   {8, 80},      {-4.5, 0}};
const Kind Prototype{{750, 1150}, {2650, 3000}, {750, 850}, {220, 350}, {2.5, 5}, {8, 60}, {-4, 0}};
const Kind TouringCar{{900, 1300}, {2500, 2850}, {750, 870}, {220, 350},
                      {2, 3.5},    {10, 70},     {-5, 0}};
const Kind RallyCar{{1100, 1400}, {2400, 2700}, {720, 850}, {180, 280},
                    {1.5, 2.6},   {4, 30},      {-3, 0}};
const Kind RoadCar{{700, 1900}, {2200, 3000}, {680, 850}, {150, 260}, {1, 2}, {5, 30}, {-2, 0.5}};
const Kind StudentCar{{180, 340}, {1500, 1700}, {500, 650}, {80, 150},
                      {2, 5.5},   {2, 60},      {-3, 0.5}};

/// The kind of each sample. Two of the published corners are mechanisms of nobody's car and one has
/// a spring that its source states and no car has; they stand here without a kind.
const std::map<std::string, std::optional<Kind>>& Kinds() {
    static const std::map<std::string, std::optional<Kind>> kinds{
        {"classic-front-inboard-rocker.WSP", ClassicSingleSeater},
        {"classic-front-rocker-link.WSP", ClassicSingleSeater},
        {"formula-front-monoshock.WSP", JuniorSingleSeater},
        {"formula-front-pullrod.WSP", SingleSeater},
        {"formula-front-pushrod.WSP", SingleSeater},
        {"formula-rear-pullrod.WSP", SingleSeater},
        {"formula-rear-pushrod.WSP", SingleSeater},
        {"hillclimb-rear-centre-spring.WSP", JuniorSingleSeater},
        {"prototype-front-two-rockers.WSP", Prototype},
        {"prototype-rear-two-rockers.WSP", Prototype},
        {"rally-rear-upright-spring.WSP", RallyCar},
        {"roadster-front-links.WSP", RoadCar},
        {"saloon-front-strut.WSP", RoadCar},
        {"touring-front-wishbone.WSP", TouringCar},
        {"published/DWSWEEP.WSP", std::nullopt},
        {"published/FSARBR.WSP", StudentCar},
        {"published/FSPUSHF.WSP", StudentCar},
        {"published/FSREARDS.WSP", StudentCar},
        {"published/FSTBARF.WSP", StudentCar},
        {"published/OFFROAD3.WSP", std::nullopt},
        {"published/STRUTGEN.WSP", std::nullopt},
    };
    return kinds;
}

void ExpectWithin(const char* quantity, double value, const Bounds& bounds) {
    EXPECT_GE(value, bounds.Least) << quantity;
    EXPECT_LE(value, bounds.Most) << quantity;
}

const ChannelCells& StaticChannels(const Suspension& document) {
    return document.WheelStates(document.StaticRack, document.StaticWheel).Channels;
}

/// Of the mass on this corner, which is a twelfth of the car's lighter for wheel and links.
double RideFrequency(const Suspension& document) {
    const SuspensionData& data = document.Data;
    const double rear = data.CGX / data.Wheelbase;
    const double axle = IsFrontCorner(document) ? 1 - rear : rear;
    const double sprung = data.Mass * axle / 2 * (1 - 1.0 / 12);
    const ChannelCells& channels = StaticChannels(document);
    const double rate = channels[chWheelRateSpring] + channels[chWheelRateCentreSpring];
    return std::sqrt(rate * 1000 / sprung) / (2 * std::numbers::pi);
}

void ExpectOfItsKind(const Suspension& document, const Kind& kind) {
    const SuspensionData& data = document.Data;
    const ChannelCells& channels = StaticChannels(document);
    ExpectWithin("mass, kg", data.Mass, kind.Mass);
    ExpectWithin("wheelbase, mm", data.Wheelbase, kind.Wheelbase);
    ExpectWithin("half track, mm", channels[chHalfTrack], kind.HalfTrack);
    ExpectWithin("tyre rate, N/mm", data.KTyre, kind.TyreRate);
    ExpectWithin("camber, deg", channels[chCamberAngle], kind.StaticAngle);
    if (data.SpringMechanism != smNone) {
        ExpectWithin("ride frequency, Hz", RideFrequency(document), kind.Ride);
    }
    if (data.ARBMechanism != abNone) {
        Suspension single = document;
        single.Data.ChassisMotion = cmRoll;
        CalculateCorner(single);
        ExpectWithin("bar at the wheel, N/mm", StaticChannels(single)[chWheelRateARB],
                     kind.BarRate);
    }
}

/// What holds for every car with wheels at its corners.
void ExpectOfACar(const Suspension& document) {
    const SuspensionData& data = document.Data;
    const ChannelCells& channels = StaticChannels(document);
    const StaticLengthRecord& lengths = document.StaticLengths;
    const bool front = IsFrontCorner(document);
    ExpectWithin("weight on the rear wheels", data.CGX / data.Wheelbase, {0.35, 0.7});
    ExpectWithin("height of the centre of gravity, mm", data.CGZ, {220, 800});
    ExpectWithin("acceleration, g", data.GAccel, {0.3, 1.5});
    ExpectWithin("braking, g", data.GBrake, {0.8, 5});
    ExpectWithin("brakes in front, %", data.FrontBrakeBalanceSplitPC, {50, 75});
    ExpectWithin("patch forces by weight",
                 std::hypot(data.XForce, data.YForce, data.ZForce) / (data.Mass * 9.81), {0, 2});
    ExpectWithin("tyre radius, mm", lengths.TyreRadius, {195, 480});
    ExpectWithin("caster, deg", channels[chCasterAngle], front ? Bounds{2, 10} : Bounds{-2, 8});
    ExpectWithin("roll centre above ground, mm", channels[chRollCentreToGround], {-50, 320});
    for (const double ratio : {channels[chSpringVelocityRatio], channels[chPushrodVelocityRatio]}) {
        ExpectWithin("velocity ratio", ratio, {0, 3});
    }
    for (const double lever : {lengths.RockerInputLever, lengths.RockerOutputLever,
                               lengths.SecondRockerInputLever, lengths.SecondRockerOutputLever}) {
        ExpectWithin("lever of a rocker or of a wishbone in its place, mm", lever, {0, 450});
    }
    for (const double link : {lengths.UpperFrontLink, lengths.UpperRearLink, lengths.LowerFrontLink,
                              lengths.LowerRearLink, lengths.TrackRodLength}) {
        ExpectWithin("link, mm", link, {150, 1100});
    }
}

TEST(PlausibleSamplesTest, EveryQuantityIsThatOfACarOfItsKind) {
    for (const std::string& path : AllSamplePaths()) {
        const std::string name = std::filesystem::relative(path, SamplePath("")).generic_string();
        SCOPED_TRACE(name);
        ASSERT_TRUE(Kinds().contains(name)) << "tell its kind here";
        Suspension document = LoadSample(name);
        CalculateCorner(document);
        ExpectOfACar(document);
        if (const std::optional<Kind>& kind = Kinds().at(name)) {
            ExpectOfItsKind(document, *kind);
        }
    }
}

} // namespace
} // namespace corvanta::test
