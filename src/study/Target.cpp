#include "study/Target.h"

#include "model/NumberText.h"

#include <algorithm>
#include <cmath>

namespace corvanta {

namespace {

bool Finite(const BandCorner& corner) {
    return std::isfinite(corner.Travel) && std::isfinite(corner.Low) && std::isfinite(corner.High);
}

/// Signed distance of a value from a band: 0 within.
double Outside(const BandCorner& band, double value) {
    return value > band.High ? value - band.High : std::min(value - band.Low, 0.0);
}

double CoveredShare(const Target& target, const Curve& curve) {
    const double first = target.Band.front().Travel;
    const double last = target.Band.back().Travel;
    const double length = last - first;
    if (length <= TravelResolution) {
        return 1;
    }
    const double common = std::min(last, curve.X.back()) - std::max(first, curve.X.front());
    return common > length - 2 * TravelResolution ? 1 : std::max(common / length, 0.0);
}

} // namespace

Target PlainTarget(int channel, std::int32_t variable, double value, double tolerance, double from,
                   double to) {
    const double low = value - std::abs(tolerance);
    const double high = value + std::abs(tolerance);
    Target target{channel, variable, {{std::min(from, to), low, high}}, 1};
    if (from < to || to < from) {
        target.Band.push_back({std::max(from, to), low, high});
    }
    return target;
}

std::string NameOf(const Target& target, const ChannelCatalogue& channels) {
    return (HasCurve(target.Channel) ? std::string(TrimBlanks(channels[target.Channel].Title))
                                     : "unknown channel") +
           (target.Variable == vvAlongRackTravel ? " along rack travel" : "");
}

std::string FaultOfTarget(const Target& target) {
    if (!HasCurve(target.Channel)) {
        return "There is no such channel";
    }
    if (target.Variable != vvAlongWheelTravel && target.Variable != vvAlongRackTravel) {
        return "It runs along neither wheel nor rack travel";
    }
    if (!(target.Weight > 0) || !std::isfinite(target.Weight)) {
        return "The weight must be above 0";
    }
    if (target.Band.empty()) {
        return "The band has no corner";
    }
    for (std::size_t i = 0; i < target.Band.size(); ++i) {
        const BandCorner& corner = target.Band[i];
        const std::string place = " at corner " + std::to_string(i + 1);
        if (!Finite(corner)) {
            return "The band holds no number" + place;
        }
        if (corner.Low > corner.High) {
            return "The lower end of the band lies above the upper one" + place;
        }
        if (i > 0 && corner.Travel <= target.Band[i - 1].Travel) {
            return "The travels of the band don't grow" + place;
        }
    }
    return {};
}

std::optional<BandCorner> BandAt(const Target& target, double travel) {
    const std::vector<BandCorner>& band = target.Band;
    const auto right =
        std::lower_bound(band.begin(), band.end(), travel,
                         [](const BandCorner& corner, double x) { return corner.Travel < x; });
    if (right == band.end() || (right == band.begin() && right->Travel > travel)) {
        return std::nullopt;
    }
    if (right->Travel <= travel) { // a corner is its own value, to the last bit
        return *right;
    }
    const BandCorner& left = *(right - 1);
    const double share = (travel - left.Travel) / (right->Travel - left.Travel);
    return BandCorner{travel, std::lerp(left.Low, right->Low, share),
                      std::lerp(left.High, right->High, share)};
}

std::vector<double> TravelsInCommon(const Target& target, const Curve& curve) {
    std::vector<double> travels = curve.X;
    for (const BandCorner& corner : target.Band) {
        travels.push_back(corner.Travel);
    }
    std::erase_if(
        travels, [&](double travel) { return !BandAt(target, travel) || !ValueAt(curve, travel); });
    return travels;
}

TargetResult JudgeTarget(const Target& target, const Curve& curve) {
    TargetResult result;
    for (const double travel : TravelsInCommon(target, curve)) {
        const double deviation = Outside(*BandAt(target, travel), *ValueAt(curve, travel));
        if (!result.Judged || std::abs(deviation) > std::abs(result.Deviation)) {
            result.Deviation = deviation;
            result.Travel = travel;
        }
        result.Judged = true;
    }
    result.Holds = result.Judged && result.Deviation == 0; // exactly: within is 0
    result.Share = result.Judged ? CoveredShare(target, curve) : 0;
    return result;
}

std::optional<double> ExcessOf(const Target& target, const Curve& curve) {
    std::optional<double> excess;
    for (const double travel : TravelsInCommon(target, curve)) {
        const BandCorner band = *BandAt(target, travel);
        const double value = *ValueAt(curve, travel);
        const double here = std::max(value - band.High, band.Low - value);
        excess = std::max(excess.value_or(here), here);
    }
    return excess;
}

bool Holds(const Target& target, const Curve& curve) {
    return JudgeTarget(target, curve).Holds;
}

} // namespace corvanta
