#include "study/StudyFile.h"
#include "study/SampleRandom.h"

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

/// Each question another than at first in every part that is kept.
StudyQuestions AskedOf(const Design& design) {
    const PointCoordinate rod{ptTRI, 2};
    StudyQuestions asked;
    asked.Sweep = {{{CornerLink::TrackRod, EvenlySpaced(-1, 1.1, 4)},
                    {DesignVariable(DataNumber{&SuspensionData::KSpring}), {0.1 + 0.2}}},
                   {},
                   {}};
    asked.Tolerance.Tolerances = {{PointCoordinate{ptUWO, 0}, 1.0 / 3, Spread::Uniform},
                                  {rod, 0.25, Spread::Normal}};
    asked.Tolerance.Samples = 20;
    asked.Tolerance.Seed = GreatestSeed;
    asked.Optimise.Free = {{rod, -1e-310, 101.5}, {PointCoordinate{ptTRO, 1}, 7, -7}};
    asked.Optimise.Starts = 7;
    asked.Optimise.Seed = 9007199254740991U;
    asked.Fit = {{{rod, -0.5, Spread::Uniform}},
                 {{-25, 3, chCamberAngle, -1.1, 0.05}, {1e300, -2.5, chSteerAngle, 1, 0}}};
    asked.Region = {ptLWIF, {{{-1, 1.7, 201}, {5, 5, 1}, {3, 2, 4}}}, {}, true};
    SetupQuestion& sheet = asked.Setup.Sheet;
    sheet = {AdjustersOf(design.Data), SheetFiguresOf(design.Data), 12.5};
    for (std::size_t n = 0; n < CornerLinkCount; ++n) {
        sheet.Adjusters.push_back({"ü", AdjusterKind::LinkLength, static_cast<CornerLink>(n)});
        sheet.Adjusters.back().Part = 1.0 / 6;
    }
    for (const FigureKind kind : {FigureKind::GainAtStatic, FigureKind::ChangeOverTravel,
                                  FigureKind::RangeOverTravel, FigureKind::AtTravel}) {
        sheet.Figures.push_back({false, {chAckerman, kind, vvAlongRackTravel}});
    }
    sheet.Figures.back().Of.Travel = 8.1;
    asked.Setup.Ranges.assign(sheet.Adjusters.size(), {-3, 4});
    asked.Setup.Wishes.assign(sheet.Figures.size(), {false, 3.3, 0.1});
    return asked;
}

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
    study.Questions = AskedOf(*study.Baseline);
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
    EXPECT_THAT(text, HasSubstr("\"variable\": \"ptTRI.Z\",\n        \"low\": -1e-310,\n"));
    EXPECT_THAT(text, HasSubstr("\"kind\": \"link length\",\n        \"link\": \"trackrod\",\n"));
}

TEST(StudyFileTest, QuestionsAsAtFirstAreLeftOut) {
    EXPECT_EQ(WriteStudy({}), "{\n  \"schema\": \"corvanta-study\",\n  \"version\": 1,\n"
                              "  \"document\": \"\",\n  \"variants\": [],\n  \"targets\": [],\n"
                              "  \"charts\": []\n}\n");
}

TEST(StudyFileTest, AQuestionReadBackHasTheSameAnswer) {
    const StudyData study = Study();
    const auto curve = [&](const StudyData& asking) {
        ToleranceQuestion question = asking.Questions.Tolerance;
        question.Charts = asking.Charts;
        const FundamentalUnits units = MetricUnits();
        const ChannelCatalogue channels = MetricChannels();
        CSampleRunner runner({});
        return FindTolerance(runner, *asking.Baseline, question, {units, channels})
            .Bands.at(1)
            .High;
    };
    EXPECT_THAT(curve(study), SizeIs(testing::Gt(10U)));
    EXPECT_EQ(curve(ReadStudy(WriteStudy(study), "")), curve(study));
}

TEST(StudyFileTest, CutAnywhereIsRefusedWhole) {
    StudyData small = Study();
    small.Variants.clear();
    const std::string text = WriteStudy(small);
    constexpr std::size_t step = 7; // meets every kind of place in so long a text
    for (std::size_t length = 0; length + 1 < text.size(); length += step) {
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

struct Damage {
    std::string From;
    std::string To;
    std::string Place; ///< and reason
};

TEST(StudyFileTest, SaysWhyAFileIsNoStudyOfThisProgram) {
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
         }) {
        EXPECT_THAT(Reason(Changed(damage.From, damage.To)), HasSubstr(damage.Place));
    }
}

TEST(StudyFileTest, NamesThePlaceOfWhatItRefuses) {
    for (const Damage& damage : std::vector<Damage>{
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
             {R"(low \"roll\" centre)", " ", "variants[0].name: A variant needs a name"},
             {R"("channel": 37)", R"("channel": 26)", "targets[0].channel: this channel makes no"},
             {R"("channel": 37)", R"("channel": -1)", "targets[0].channel: must be 1 to 51"},
             {"[9.0,", "[1.0,", "targets[1]: The travels of the band don't grow at corner 2"},
             {R"("kind": "map")", R"("kind": "pie")",
              R"(charts[0].kind: must be "wheel travel" or "rack travel" or "map")"},
             {R"("targets": [)", R"("targets": {}, "more": [)", "targets: must be a list"},
             {R"("link": "trackrod")", R"("link": "track")",
              "sweep.axes[0].link: must be \"lower f"},
             {R"("variable": "KSpring")", R"("variable": "ptTRI.W")",
              "sweep.axes[1].variable: there is no such coordinate or value"},
             {"[0.30000000000000004]", "[]", "sweep.axes[1].values: must hold 1 to 10000 numbers"},
             {R"("axes": [)", R"("axes": [{"variable": "KARB", "values": [1]},)",
              "sweep.axes: a sweep has two axes at most"},
             {R"("samples": 20)", R"("samples": 10001)", "tolerance.samples: must be 2 to 10000"},
             {"9007199254740992", "9007199254740993",
              "tolerance.seed: must be 0 to 9007199254740992"},
             {R"("spread": "uniform")", R"("spread": "flat")",
              R"(tolerance.tolerances[0].spread: must be "normal" or "uniform")"},
             {R"("starts": 7)", R"("starts": 0)", "optimise.starts: must be 1 to 1000"},
             {R"("low": 7.0)", R"("low": "7")", "optimise.free[1].low: must be a number"},
             {R"("low": 7.0,)", "", "optimise.free[1]: low is missing"},
             {R"("rackTravel": -2.5)", R"("rack": -2.5)", "fit.readings[1].rack: there is no such"},
             {R"("point": "ptLWIF")", R"("point": "ptXYZ")",
              "region.point: there is no such point"},
             {R"("nodes": 201)", R"("nodes": 202)", "region.box.X.nodes: must be 1 to 201"},
             {R"("link": "lower rear leg")", R"("place": "ptTRO.Z")",
              "setup.adjusters[1]: link is missing"},
             {R"("place": "ptUWO.Y")", R"("place": "KARB")", "must be a coordinate of a point"},
             {R"("figure": "at travel")", R"("figure": "at static")",
              ".travel: there is no such member"},
         }) {
        EXPECT_THAT(Reason(Changed(damage.From, damage.To)), HasSubstr(damage.Place));
    }
    StudyData twins = Study();
    twins.Variants.push_back(NewVariant(twins.Variants, "other", {}));
    std::string text = WriteStudy(twins);
    text.replace(text.find("\"other\""), 7, R"("low \"roll\" centre")");
    EXPECT_THAT(Reason(text), HasSubstr("variants[1].name: Another variant has this name"));
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
    EXPECT_THAT(reason([](StudyData& study) { study.Questions.Setup.Ranges.pop_back(); }),
                HasSubstr("setup.adjusters: every adjuster needs a range"));
    EXPECT_THAT(reason([](StudyData& study) { study.Questions.Setup.Wishes.clear(); }),
                HasSubstr("setup.figures"));
    EXPECT_THAT(reason([](StudyData& study) { study.Questions.Sweep.Axes[1].Values.clear(); }),
                HasSubstr("sweep.axes[1].values: must hold 1 to 10000"));
    EXPECT_THAT(reason([](StudyData& study) { study.Questions.Tolerance.Samples = 1U << 31; }),
                HasSubstr("tolerance.samples: must be 2 to 10000"));
    EXPECT_THAT(reason([](StudyData& study) { study.Questions.Fit.Readings[1].Channel = 0; }),
                HasSubstr("fit.readings[1]"));
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
