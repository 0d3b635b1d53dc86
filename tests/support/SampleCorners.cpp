#include "tests/support/SampleCorners.h"

#include "persistence/MData.h"
#include "platform/DiskFileServices.h"
#include "platform/Messages.h"
#include "shell/MechanismExample.h"
#include "tests/support/Places.h"
#include "tests/support/RecordingMessageBox.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <stdexcept>

namespace corvanta::test {

namespace {

/// The centre spring choices that go with a third spring choice.
std::vector<std::int32_t> CentreSprings(std::int32_t thirdSpring) {
    return thirdSpring == tsCornerSpring
               ? std::vector<std::int32_t>{csLongitudinalViaTBar}
               : std::vector<std::int32_t>{csLongitudinalViaTBar, csLateralViaRocker};
}

std::vector<std::int32_t> Bars(std::int32_t spring) {
    switch (spring) {
    case smOutboardToUpright:
    case smOutboardToLowerWishbone:
    case smMacPhersonStrut:
        return {abNone, abToLowerWishbone, abToUpright};
    case smPullrodToUpright:
    case smPushrodToUpright:
    case smPullrodToUpperWishbone:
    case smPushrodToLowerWishbone:
        return {abNone, abToLowerWishbone, abToRocker, abTBar};
    case smTwoRockersToUpright:
    case smTwoRockersToLowerWishbone:
        return {abNone, abToLowerWishbone, abToRocker};
    default:
        return {abNone, abToLowerWishbone};
    }
}

} // namespace

std::string SamplePath(const std::string& name) {
    return SourceFolder() + "/samples/" + name;
}

std::vector<std::string> AllSamplePaths() {
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(SamplePath(""))) {
        if (entry.path().extension() == ".WSP") {
            paths.push_back(entry.path().string());
        }
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

Suspension LoadSample(const std::string& name) {
    Suspension document;
    ViewSettings settings;
    const FundamentalUnits units = MetricUnits();
    ChannelCatalogue channels = MetricChannels();
    DiskFileServices files;
    RecordingMessageBox box;
    Messages messages(box);
    ResetDocument(document, settings);
    if (!DataLoad(document, channels, SamplePath(name), false, units, files, messages)) {
        throw std::runtime_error("can't load " + name);
    }
    return document;
}

void ForEachSample(const std::function<void(Suspension&)>& change,
                   const std::function<void(const Suspension&)>& look) {
    for (const std::string& path : AllSamplePaths()) {
        const std::string name = std::filesystem::relative(path, SamplePath("")).string();
        SCOPED_TRACE(name);
        Suspension document = LoadSample(name);
        change(document);
        SetUpCorner(document);
        CalculateCorner(document);
        look(document);
    }
}

std::string MechanismChoice::Text() const {
    return "spring " + std::to_string(Spring) + ", springs " + std::to_string(ThirdSpring) +
           ", centre spring " + std::to_string(CentreSpring) + ", bar " + std::to_string(ARB) +
           ", motion " + std::to_string(Motion) + (DriveShaft ? ", driveshaft" : "");
}

std::vector<MechanismChoice> OfferedChoices() {
    std::vector<MechanismChoice> choices;
    for (std::int32_t spring = smNone; spring <= smMacPhersonStrut; ++spring) {
        const std::int32_t lastThird = HasSingleRodRocker(spring) ? tsCentreSpring : tsCornerSpring;
        for (std::int32_t third = tsCornerSpring; third <= lastThird; ++third) {
            for (const std::int32_t centre : CentreSprings(third)) {
                for (const std::int32_t bar : Bars(spring)) {
                    choices.push_back({spring, third, centre, bar, cmRoll, false});
                    choices.push_back({spring, third, centre, bar, cmHeave, true});
                    choices.push_back({spring, third, centre, bar, cmHeave, false});
                    choices.push_back({spring, third, centre, bar, cmRoll, true});
                }
            }
        }
    }
    return choices;
}

Suspension CornerOf(const MechanismChoice& choice) {
    Suspension document = LoadSample(ExampleName(choice.Spring));
    SuspensionData& data = document.Data;
    data.ThirdSpringMechanism = choice.ThirdSpring;
    data.CentreSpringSystem = choice.CentreSpring;
    data.ARBMechanism = choice.ARB;
    data.ChassisMotion = choice.Motion;
    data.DriveShaftExists = choice.DriveShaft;
    data.Bump = 20;
    data.Droop = 15;
    data.WheelTravelStepSize = 5;
    data.RackTravel = 12;
    data.RackTravelStepSize = 4;
    PlaceOptionalPoints(document.StaticPoints(), document.Data);
    SetUpCorner(document);
    return document;
}

} // namespace corvanta::test
