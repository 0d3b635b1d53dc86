#include "study/StudyFile.h"

#include "model/Mechanisms.h"
#include "tests/support/MemoryFileServices.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <random>

namespace corvanta::test {
namespace {

StudyData Study() {
    StudyData study;
    study.Document = "../cars/Größe.WSP";
    study.Baseline = DesignOf(LoadSample("formula-front-pushrod.WSP"));
    study.Variants.push_back(NewVariant({}, "low \"roll\" centre", *study.Baseline));
    study.Variants[0].Note = "lower\ninner \\ pickups";
    study.Variants[0].Ticked = false;
    study.Targets = {PlainTarget(chSteerAngleBump, vvAlongWheelTravel, 0, 0.02, -25, 25),
                     {chAckerman, vvAlongRackTravel, {{1, 0.1, 0.2}, {9, 0.3, 0.5}}, 2.5}};
    study.Charts = {{chCamberAngle, ChartKind::Map, true},
                    {chSteerAngleBump, ChartKind::AlongWheelTravel, false},
                    {chAckerman, ChartKind::AlongRackTravel, false}};
    return study;
}

std::string Reason(const std::string& bytes) {
    return FailureOf([&] { (void)ReadStudy(bytes, "front.study"); }).Description();
}

/// The study's text with one place changed.
std::string Changed(const std::string& from, const std::string& to) {
    std::string text = WriteStudy(Study());
    const std::size_t place = text.find(from);
    EXPECT_NE(place, std::string::npos) << from;
    return text.replace(place, from.size(), to);
}

/// All 49 points to the last bit, signs of zero and points out of play too.
void ExpectSameBits(const Design& one, const Design& other) {
    EXPECT_EQ(one.Data, other.Data);
    for (const PointNumber number : AllPoints) {
        for (double SuspPoint::*const axis : {&SuspPoint::X, &SuspPoint::Y, &SuspPoint::Z}) {
            EXPECT_EQ(std::bit_cast<std::uint64_t>(one.Points[number].*axis),
                      std::bit_cast<std::uint64_t>(other.Points[number].*axis))
                << PointShortName(number);
        }
    }
}

TEST(StudyFileTest, KeepsEverySampleToTheLastBit) {
    StudyData study;
    for (const std::string& path : AllSamplePaths()) {
        const std::string name = path.substr(SamplePath("").size());
        study.Variants.push_back(NewVariant(study.Variants, name, DesignOf(LoadSample(name))));
    }
    ASSERT_GT(study.Variants.size(), 10U);
    const StudyData read = ReadStudy(WriteStudy(study), "");
    EXPECT_EQ(read, study);
    for (std::size_t i = 0; i < study.Variants.size(); ++i) {
        ExpectSameBits(read.Variants.at(i).Design, study.Variants[i].Design);
    }
}

TEST(StudyFileTest, KeepsAllPartsAndEveryNumber) {
    StudyData study = Study();
    SuspensionData& data = study.Baseline->Data;
    data.SpringMechanism = smTwoRockersToUpright;
    data.ThirdSpringMechanism = tsCentreSpring;
    data.CentreSpringSystem = csLateralViaRocker;
    data.ChassisMotion = cmHeave;
    data.DriveShaftExists = true;
    data.ARBMechanism = abTBar;
    data.Description = "two\r\nlines, ü";
    std::mt19937_64 random(7);
    const auto anyNumber = [&] {
        double value = std::nan("");
        while (!std::isfinite(value)) {
            value = std::bit_cast<double>(random());
        }
        return value;
    };
    for (double SuspensionData::*const member : {&SuspensionData::Bump,
                                                 &SuspensionData::Droop,
                                                 &SuspensionData::WheelTravelStepSize,
                                                 &SuspensionData::RackTravel,
                                                 &SuspensionData::RackTravelStepSize,
                                                 &SuspensionData::CGX,
                                                 &SuspensionData::CGZ,
                                                 &SuspensionData::Wheelbase,
                                                 &SuspensionData::Mass,
                                                 &SuspensionData::GAccel,
                                                 &SuspensionData::GBrake,
                                                 &SuspensionData::KTyre,
                                                 &SuspensionData::KLink,
                                                 &SuspensionData::KSpring,
                                                 &SuspensionData::KThirdSpring,
                                                 &SuspensionData::KARB,
                                                 &SuspensionData::FrontBrakeBalanceSplitPC,
                                                 &SuspensionData::XForce,
                                                 &SuspensionData::YForce,
                                                 &SuspensionData::ZForce}) {
        data.*member = anyNumber();
    }
    for (int round = 0; round < 50; ++round) {
        for (const PointNumber number : AllPoints) {
            study.Baseline->Points[number] = {anyNumber(), anyNumber(), anyNumber()};
        }
        study.Baseline->Points[ptUWO_MACPH] = {-0.0, 0, 0};
        const StudyData read = ReadStudy(WriteStudy(study), "");
        ASSERT_EQ(read, study);
        ExpectSameBits(*read.Baseline, *study.Baseline);
    }
}

TEST(StudyFileTest, IsWrittenForTheReadersEye) {
    const std::string text = WriteStudy(Study());
    EXPECT_THAT(text, StartsWith("{\n  \"schema\": \"corvanta-study\",\n  \"version\": 1,\n"
                                 "  \"document\": \"../cars/Größe.WSP\",\n"));
    EXPECT_THAT(text, HasSubstr("\n      \"SpringMechanism\": {\"number\": 6, \"words\": \"Inboard "
                                "spring via rocker and pushrod to upright\"},\n"));
    EXPECT_THAT(text, testing::ContainsRegex("\n      \"ptWC\": \\[[0-9.]+, [0-9.]+, [0-9.]+\\]"));
    EXPECT_THAT(text, HasSubstr("\"channel\": 37,\n      \"title\": \"Steer Angle - Bump\",\n"
                                "      \"along\": \"wheel travel\",\n      \"band\": [\n"
                                "        [-25.0, -0.02, 0.02],\n"));
}

TEST(StudyFileTest, CutAnywhereIsRefusedWhole) {
    StudyData small = Study();
    small.Variants.clear();
    const std::string text = WriteStudy(small);
    for (std::size_t length = 0; length + 1 < text.size(); ++length) {
        ASSERT_THAT(Reason(text.substr(0, length)), HasSubstr("front.study can't be read"))
            << length;
    }
    EXPECT_THAT(Reason(text.substr(0, 100)), EndsWith("the text ends too early."));
    // With a byte changed it is refused or read, and what is read can be written.
    std::mt19937 random(3);
    for (int round = 0; round < 1000; ++round) {
        std::string damaged = text;
        damaged[random() % damaged.size()] = static_cast<char>(random() % 256);
        try {
            const StudyData study = ReadStudy(damaged, "");
            EXPECT_EQ(ReadStudy(WriteStudy(study), ""), study);
        } catch (const Failure&) { // refused
        }
    }
}

TEST(StudyFileTest, NamesThePlaceOfWhatItRefuses) {
    struct Damage {
        std::string From;
        std::string To;
        std::string Place;
    };
    for (const Damage& damage : std::vector<Damage>{
             {R"("version": 1,)", R"("version": 1;)", "line 3, column 15: this is no JSON"},
             {"cars/", "\xFF", "line 4, column 19: this is no JSON"},
             {"corvanta-study", "other", "this is no study file"},
             {R"("version": 1)", R"("version": 2)",
              "newer version of the program wrote it (schema 2"},
             {R"("version": 1)", R"("version": 18446744073709551615)", "newer version"},
             {R"("version": 1)", R"("version": 0)", "version: must be 1 to 1"},
             {R"("version": 1)", R"("version": "1")", "version: must be a whole number"},
             {R"("document")", R"("version")", "version: stands here twice"},
             {R"("ptWTCP")", R"("ptWC")", "baseline.points.ptWC: stands here twice"},
             {R"("ptWTCP")", R"("ptXY")", "baseline.points.ptXY: there is no such member"},
             {R"("ptWTCP")", R"("ptUWCR")", "baseline.points: ptWTCP is missing"},
             {R"("ptWTCP": [)", R"("ptWTCP": [1, )",
              "baseline.points.ptWTCP: must be a list of three"},
             {R"("ptWTCP": [)", R"("ptWTCP": [null, 1, 2], "ptUWCR": [)",
              "baseline.points.ptWTCP[0]: must be a number"},
             {R"("ptWTCP": [)", R"("ptWTCP": [1e999, )",
              "baseline.points.ptWTCP[0]: the number is too large"},
             {R"("number": 6)", R"("number": 12)", "data.SpringMechanism.number: must be 0 to 11"},
             {R"("number": 6)", R"("number": 6.5)", "must be a whole number"},
             {R"("number": 6)", R"("nummer": 8)", "data.SpringMechanism.nummer: there is no such"},
             {R"("Mass")", R"(")" + std::string(500, 'm') + R"(")",
              "mmm...: there is no such member"},
             {R"("Bump":)", R"("Bump": "much", "x":)", "baseline.data.x: there is no such member"},
             {R"("colour": "#)", R"("colour": ")", "variants[0].colour: must be a colour"},
             {R"("ticked": false)", R"("ticked": 0)", "variants[0].ticked: must be true or false"},
             {R"(low \"roll\" centre)", " ", "variants[0].name: a variant needs a name"},
             {R"("channel": 37)", R"("channel": 26)", "targets[0].channel: this channel makes no"},
             {R"("channel": 37)", R"("channel": -1)", "targets[0].channel: must be 1 to 51"},
             {"[9.0,", "[1.0,", "targets[1]: the travels of the band don't grow at corner 2"},
             {R"("kind": "map")", R"("kind": "pie")",
              R"(charts[0].kind: must be "wheel travel" or "rack travel" or "map")"},
             {R"("targets": [)", R"("targets": {}, "more": [)", "targets: must be a list"},
         }) {
        EXPECT_THAT(Reason(Changed(damage.From, damage.To)), HasSubstr(damage.Place));
    }
    StudyData twins = Study();
    twins.Variants.push_back(NewVariant(twins.Variants, "other", {}));
    std::string text = WriteStudy(twins);
    text.replace(text.find("\"other\""), 7, R"("low \"roll\" centre")");
    EXPECT_THAT(Reason(text), HasSubstr("variants[1].name: another variant has this name"));
}

TEST(StudyFileTest, StandsUpToHostileText) {
    for (const char open : {'[', '{'}) {
        std::string deep = R"({"schema": "corvanta-study", "version": 1, "x": )";
        for (int i = 0; i < 200000; ++i) {
            deep += open == '{' ? "{\"a\":" : "[";
        }
        EXPECT_THAT(Reason(deep), HasSubstr("nested too deeply"));
    }
    EXPECT_THAT(Reason(std::string("\0\0", 2)), HasSubstr("line 1, column 1: this is no JSON"));
    EXPECT_THAT(Reason("[]"), HasSubstr("must be an object"));
    EXPECT_THAT(Reason(""), HasSubstr("ends too early"));
}

TEST(StudyFileTest, KeepsWhatItDoesNotKnow) {
    const std::string text =
        Changed("\"charts\": [", "\"tolerances\": {\"ptWC\": [0.1, null, [1e-3, {}]], \"ü\": "
                                 "18446744073709551615},\n  \"adjusters\": [],\n  \"charts\": [");
    const StudyData read = ReadStudy(text, "");
    ASSERT_EQ(read.Unknown.size(), 2U);
    EXPECT_EQ(read.Unknown[0].Name, "tolerances");
    EXPECT_EQ(read.Unknown[0].Json, "{\"ptWC\":[0.1,null,[0.001,{}]],\"ü\":18446744073709551615}");
    EXPECT_EQ(ReadStudy(WriteStudy(read), ""), read);
    StudyData known = read;
    known.Unknown.clear();
    EXPECT_EQ(known, Study());
}

TEST(StudyFileTest, WritesNothingThatItWouldRefuse) {
    const auto reason = [](const auto& change) {
        StudyData study = Study();
        change(study);
        return FailureOf([&] { (void)WriteStudy(study); }).Description();
    };
    EXPECT_THAT(reason([](StudyData& study) { study.Baseline->Points[ptWC].Y = std::nan(""); }),
                HasSubstr("baseline.points.ptWC"));
    EXPECT_THAT(reason([](StudyData& study) { study.Baseline->Data.Mass = INFINITY; }),
                HasSubstr("baseline.data.Mass"));
    EXPECT_THAT(reason([](StudyData& study) { study.Variants[0].Note = "\xFF"; }),
                HasSubstr("variants[0].note"));
    EXPECT_THAT(reason([](StudyData& study) { study.Variants.push_back(study.Variants[0]); }),
                HasSubstr("variants[1].name"));
    EXPECT_THAT(reason([](StudyData& study) { study.Targets[1].Weight = 0; }),
                HasSubstr("targets[1]"));
    EXPECT_THAT(reason([](StudyData& study) { study.Charts[2].Channel = 0; }),
                HasSubstr("charts[2]"));
    EXPECT_THAT(reason([](StudyData& study) {
                    study.Unknown = {{"charts", "1"}};
                }),
                HasSubstr("charts"));
}

TEST(StudyFileTest, FindsADocumentThatMovedWithItOrToIt) {
    const std::string path =
        StudyPathOfDocument("/cars/2024/studies/front.study", "/cars/2024/front.WSP");
    EXPECT_EQ(path, "../front.WSP");
    EXPECT_EQ(StudyPathOfDocument("/cars/front.study", "/cars/ä/front.WSP"), "ä/front.WSP");
    MemoryFileServices files;
    EXPECT_EQ(FindDocument("/cars/2024/studies/front.study", path, files), std::nullopt);
    files.Put("/usb/front.WSP", "");
    EXPECT_EQ(FindDocument("/usb/studies/front.study", path, files), "/usb/front.WSP");
    files.Put("/usb/studies/front.WSP", "");
    EXPECT_EQ(FindDocument("/usb/studies/front.study", path, files), "/usb/front.WSP");
    files.Remove("/usb/front.WSP");
    EXPECT_EQ(FindDocument("/usb/studies/front.study", path, files), "/usb/studies/front.WSP");
    EXPECT_EQ(FindDocument("/usb/front.study", "/usb/studies/front.WSP", files),
              "/usb/studies/front.WSP");
    EXPECT_EQ(FindDocument("/usb/front.study", "", files), std::nullopt);
}

} // namespace
} // namespace corvanta::test
