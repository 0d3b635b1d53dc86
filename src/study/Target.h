#pragma once

#include "model/Channels.h"
#include "model/Views.h"
#include "study/Curve.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// The band of a target at one travel, stored units.
struct BandCorner {
    double Travel = 0; ///< mm
    double Low = 0;
    double High = 0;

    friend bool operator==(const BandCorner&, const BandCorner&) = default;
};

/// What a curve shall be: a channel along wheel or rack travel, the other travel static, within a
/// band. The band runs straight from corner to corner; there is none outside the stretch from the
/// first corner to the last. One corner alone is a demand at one travel.
struct Target {
    int Channel = 0;
    std::int32_t Variable = vvAlongWheelTravel;
    std::vector<BandCorner> Band; ///< travels strictly growing
    double Weight = 1;            ///< above 0; how much it counts beside other targets

    friend bool operator==(const Target&, const Target&) = default;
};

/// The target "value, plus or minus tolerance, from one travel to another"; the ends may come in
/// either order, and two equal ones make a demand at one travel. Stored units; the sign of the
/// tolerance does not matter.
[[nodiscard]] Target PlainTarget(int channel, std::int32_t variable, double value, double tolerance,
                                 double from, double to);

/// "Camber Angle", "Steer Angle along rack travel".
[[nodiscard]] std::string NameOf(const Target& target, const ChannelCatalogue& channels);

/// Why a target can't be judged, for a message; empty when it can.
[[nodiscard]] std::string FaultOfTarget(const Target& target);

/// The band at a travel; nothing outside its stretch.
[[nodiscard]] std::optional<BandCorner> BandAt(const Target& target, double travel);

/// The steps of a curve and the corners of a band at which both have a value: the greatest
/// deviation stands at one of them.
[[nodiscard]] std::vector<double> TravelsInCommon(const Target& target, const Curve& curve);

/// How a curve lies to a target. The target must be one that can be judged.
struct TargetResult {
    bool Judged = false;  ///< curve and band have a travel in common
    bool Holds = false;   ///< the curve is within the band wherever both are
    double Deviation = 0; ///< greatest one: above 0 over the band, below 0 under it, 0 within
    double Travel = 0;    ///< where that is, mm
    double Share = 0;     ///< of the band's stretch that the curve's travel covers, 0 to 1
};

/// Curve and band are straight between their corners, so that the greatest deviation stands at a
/// step of the curve, at a corner of the band, or at an end of what they have in common.
[[nodiscard]] TargetResult JudgeTarget(const Target& target, const Curve& curve);

/// How far a curve goes beyond a band: the most that it stands over the upper end or under the
/// lower one. Above 0 outside; within, below 0, the least room that is left, so that it tells
/// something there too. Nothing where `JudgeTarget` finds no travel in common.
[[nodiscard]] std::optional<double> ExcessOf(const Target& target, const Curve& curve);

/// True when the curve has a travel in common with the band and is within it there.
[[nodiscard]] bool Holds(const Target& target, const Curve& curve);

} // namespace corvanta
