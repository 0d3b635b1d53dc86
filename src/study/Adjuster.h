#pragma once

#include "study/DesignVariable.h"
#include "study/RigidCorner.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace corvanta {

enum class AdjusterKind : std::uint8_t {
    LinkLength,     ///< a link made longer
    Shim,           ///< a joint or pickup moved along an axis of the car
    SpringPlatform, ///< the spring made longer from seat to seat, its load the same
};

/// What a mechanic can turn or put in. Counts are whole numbers of its smallest step; more of them
/// make a link or spring longer, or move a point towards the positive end of its axis.
struct Adjuster {
    std::string Name;
    AdjusterKind Kind = AdjusterKind::LinkLength;
    CornerLink Link = CornerLink::TrackRod; ///< of `LinkLength`
    PointCoordinate Place{};                ///< of `Shim`
    double Pitch = 1;                       ///< mm per turn, or per shim; above 0
    double Part = 1; ///< the smallest part of a turn that can be made; above 0 to 1

    friend bool operator==(const Adjuster&, const Adjuster&) = default;
};

/// The smallest step of an adjuster, mm.
[[nodiscard]] inline double StepOf(const Adjuster& adjuster) {
    return adjuster.Pitch * adjuster.Part;
}

/// The adjusters that a corner of these mechanisms usually has: its legs by half turns of one
/// thread, its rods by half turns of a left and a right one, the spring platform, and shims of 1 mm
/// below the usual joints.
[[nodiscard]] std::vector<Adjuster> AdjustersOf(const SuspensionData& data);

/// Why a corner of these mechanisms can't have an adjuster; empty when it can.
[[nodiscard]] std::string FaultOf(const SuspensionData& data, const Adjuster& adjuster);

/// What counts of adjusters change, one count for each. Between whole numbers lies what no mechanic
/// can set, but a search goes through.
[[nodiscard]] CornerChange ChangeOf(std::span<const Adjuster> adjusters,
                                    std::span<const double> counts);

} // namespace corvanta
