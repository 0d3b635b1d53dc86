#include "study/Curve.h"

#include "results/GridCourse.h"

#include <algorithm>
#include <cmath>

namespace corvanta {

bool HasCurve(int channel) {
    return channel >= 1 && channel <= ChannelCount && channel != chLinkLoads;
}

Curve CurveOf(const Suspension& document, int channel, std::int32_t variable, int rackStep,
              int wheelStep) {
    const GridCourse course = CourseOf(document, variable, rackStep, wheelStep);
    const bool alongRack = course.Variable == vvAlongRackTravel;
    const int travel = alongRack ? chRackTravel : chWheelTravel;
    const int staticStep = alongRack ? document.StaticRack : document.StaticWheel;
    Curve curve{channel, course.Variable, course.RackStep, course.WheelStep, {}, {}, {}};
    for (int i = 1; i <= course.Count; ++i) {
        const int k = alongRack ? i : course.Count + 1 - i; // wheel steps run from bump to droop
        const ChannelCells& cells = course.State(document, k).Channels;
        const std::optional<double> value = cells.Cell(channel);
        if (!value) {
            continue;
        }
        if (k + 1 == staticStep) {
            curve.Static = curve.X.size();
        }
        curve.X.push_back(cells[travel]);
        curve.Y.push_back(*value);
    }
    return curve;
}

std::optional<double> ValueAt(const Curve& curve, double travel) {
    if (curve.X.empty() || !(travel >= curve.X.front() - TravelResolution) ||
        travel > curve.X.back() + TravelResolution) {
        return std::nullopt;
    }
    const auto above = std::lower_bound(curve.X.begin(), curve.X.end(), travel);
    if (above == curve.X.begin()) {
        return curve.Y.front();
    }
    if (above == curve.X.end()) {
        return curve.Y.back();
    }
    const auto right = static_cast<std::size_t>(above - curve.X.begin());
    for (const std::size_t step :
         {right - 1, right}) { // at a step stands what was calculated there
        if (std::abs(curve.X[step] - travel) <= TravelResolution) {
            return curve.Y[step];
        }
    }
    const double run = curve.X[right] - curve.X[right - 1]; // above 0, as the left one lies below
    const double share = (travel - curve.X[right - 1]) / run;
    return std::lerp(curve.Y[right - 1], curve.Y[right], share);
}

std::optional<double> GainAtStatic(const Curve& curve) {
    if (!curve.Static || curve.X.size() < 2) {
        return std::nullopt;
    }
    const std::size_t below = *curve.Static == 0 ? 0 : *curve.Static - 1;
    const std::size_t above = std::min(*curve.Static + 1, curve.X.size() - 1);
    const double run = curve.X[above] - curve.X[below];
    return run > 0 ? std::optional((curve.Y[above] - curve.Y[below]) / run) : std::nullopt;
}

ChannelMap MapOf(const Suspension& document, int channel) {
    ChannelMap map;
    map.Channel = channel;
    for (int wheel = document.NW + 1; wheel > 1; --wheel) {
        map.WheelTravel.push_back(WheelTravelAtStep(document, wheel));
    }
    for (int rack = 2; rack <= document.NR + 1; ++rack) {
        map.RackTravel.push_back(RackTravelAtStep(document, rack));
        for (int wheel = document.NW + 1; wheel > 1; --wheel) {
            map.Values.push_back(document.WheelStates(rack, wheel).Channels.Cell(channel));
        }
    }
    return map;
}

} // namespace corvanta
