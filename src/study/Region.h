#pragma once

#include "calculation/SCalcs.h"
#include "model/Design.h"
#include "study/StudyWork.h"
#include "study/Target.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace corvanta {

/// The places along one axis of a box, mm, both ends included. An axis without width has one.
struct RegionAxis {
    double Low = 0;
    double High = 0;
    int Nodes = 21;

    friend bool operator==(const RegionAxis&, const RegionAxis&) = default;
};

inline constexpr int MostNodesOfAxis = 201;

/// Where may a point go?
struct RegionQuestion {
    PointNumber Point = ptUWIF;
    std::array<RegionAxis, 3> Box;
    std::vector<Target> Targets; ///< all shall hold

    /// All wheel travel must be reached at every rack travel; else at the static one, and rack
    /// travel only where a target is along it.
    bool WholeGrid = false;

    friend bool operator==(const RegionQuestion&, const RegionQuestion&) = default;
};

enum class RegionVerdict : std::uint8_t {
    Unknown, ///< stopped before
    Held,
    OutOfReach,   ///< the travel is not reached, or the point can't be there at all
    MissesTarget, ///< all travel is reached
};

/// What becomes of the corner with the point at a place.
struct RegionNode {
    RegionVerdict Verdict = RegionVerdict::Unknown;
    bool Solved = false;  ///< else told by the nodes around it, and without a deviation
    int Target = -1;      ///< the first one that is missed, in their order, from 0
    double Deviation = 0; ///< of that target, as of `TargetResult`

    friend bool operator==(const RegionNode&, const RegionNode&) = default;
};

/// The nodes of a box, X fastest, then Y.
struct RegionAnswer {
    std::array<std::vector<double>, 3> Places; ///< along each axis, mm
    std::vector<RegionNode> Nodes;
    RegionNode Present;         ///< of the design as it is
    std::string PresentFailure; ///< why it is out of reach
    std::string FirstFailure;   ///< of the first node in order that was found out of reach
    std::size_t Solved = 0;     ///< nodes that were solved
    bool Stopped = false;

    [[nodiscard]] std::size_t Slot(std::size_t x, std::size_t y, std::size_t z) const {
        return (z * Places[1].size() + y) * Places[0].size() + x;
    }
    [[nodiscard]] const RegionNode& At(std::size_t x, std::size_t y, std::size_t z) const {
        return Nodes[Slot(x, y, z)];
    }
};

/// Solves the design with the point at the nodes of a box. A coarse lattice, up to each fourth node
/// of an axis, is solved first. A cell is halved along each axis, until it is a single step, when
/// - its nodes are not all alike, also by what a halved neighbour found on its sides, or
/// - the target that they all miss may hold between them, as far as its deviations in and around
///   the cell tell: a target that holds in a thin layer alone is found this way.
///
/// What lies in any other cell is taken to be like its nodes. Not seen is what is smaller than the
/// coarse lattice and leaves no trace at its nodes: a hole where a target is missed, or an island
/// that reaches its travel.
///
/// Throws Failure `fnInvalidCall` that says what is wrong with the question, or when a target has
/// no travel in common with the curve of the design, if that can be solved, or is of a channel that
/// the corner does not have.
[[nodiscard]] RegionAnswer FindRegion(CSampleRunner& runner, const Design& design,
                                      const RegionQuestion& question,
                                      const SolveSettings& settings);

/// A layer of a region square to one axis.
struct RegionSlice {
    double Place = 0;                ///< of the layer along that axis, mm
    std::vector<double> Across;      ///< places along the first of the other axes
    std::vector<double> Up;          ///< along the second
    std::vector<RegionNode> Nodes{}; ///< `Across` fastest
};

/// The layer nearest to a place along an axis, 0 to 2.
[[nodiscard]] RegionSlice SliceOf(const RegionAnswer& answer, std::size_t axis, double place);

} // namespace corvanta
