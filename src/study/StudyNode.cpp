#include "study/StudyNode.h"

#include "model/Channels.h"
#include "model/Failure.h"
#include "platform/Utf8.h"
#include "study/Curve.h"

namespace corvanta::studyfile {

namespace {

/// A name from a file as part of a message: no longer than a reader wants to read.
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

} // namespace

void RefuseToRead(const std::string& place, const std::string& why) {
    throw Failure(fnInvalidCall, place.empty() ? why : place + ": " + why);
}

std::string MemberPlace(const std::string& owner, const std::string& name) {
    return (owner.empty() ? "" : owner + ".") + ShortName(name);
}

std::string ElementPlace(const std::string& list, std::size_t index) {
    return list + "[" + std::to_string(index) + "]";
}

int ReadChannel(const Node& node) {
    const int channel = node.WholeNumber(1, ChannelCount);
    node.Require(HasCurve(channel), "this channel makes no curve");
    return channel;
}

} // namespace corvanta::studyfile
