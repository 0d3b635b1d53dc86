#include "study/StudyNode.h"

#include "model/Channels.h"
#include "model/Failure.h"
#include "platform/Utf8.h"
#include "study/Curve.h"

#include <algorithm>

namespace corvanta::studyfile {

std::string ShortName(const std::string& name) {
    constexpr std::size_t longest = 60;
    if (name.size() <= longest) {
        return name;
    }
    std::size_t length = 0;
    for (std::size_t next = 0; next <= longest;) {
        length = next;
        next += std::max<std::size_t>(FirstUtf8Character(name.substr(next)).Length, 1);
    }
    return name.substr(0, length) + "...";
}

void RefuseToRead(const std::string& place, const std::string& why) {
    throw Failure(fnInvalidCall, place.empty() ? why : place + ": " + why);
}

int ReadChannel(const Node& node) {
    const int channel = node.WholeNumber(1, ChannelCount);
    node.Require(HasCurve(channel), "this channel makes no curve");
    return channel;
}

} // namespace corvanta::studyfile
