#include "study/StudyJson.h"

#include "model/Channels.h"
#include "model/Failure.h"
#include "model/NumberText.h"
#include "model/Units.h"
#include "study/Curve.h"

#include <cmath>

namespace corvanta::studyfile {

namespace {

/// The titles of a list in its own right: those of the document's end of the car are a matter of
/// the screen.
std::string TitleOf(int channel) {
    ChannelCatalogue channels;
    FundamentalUnits units;
    channels.ChannelsSetup(units);
    return std::string(TrimBlanks(channels[channel].Title));
}

} // namespace

void RefuseToWrite(const std::string& place, const std::string& why) {
    throw Failure(fnInvalidCall, "The study can't be written: " + place + ": " + why + ".");
}

std::string Key(std::string_view key) {
    return std::string(key);
}

Json Number(double value, const std::string& place) {
    if (!std::isfinite(value)) {
        RefuseToWrite(place, "it is no number");
    }
    return value;
}

Json Text(const std::string& text, const std::string& place) {
    Json json = text;
    try {
        (void)json.dump();
    } catch (const Json::exception&) {
        RefuseToWrite(place, "the text is not UTF-8");
    }
    return json;
}

void AddChannel(Json& owner, int channel, const std::string& place) {
    if (!HasCurve(channel)) {
        RefuseToWrite(place, "there is no such channel");
    }
    owner[Key(ChannelKey)] = channel;
    owner[Key(TitleKey)] = TitleOf(channel);
}

} // namespace corvanta::studyfile
