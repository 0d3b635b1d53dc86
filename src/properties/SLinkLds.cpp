#include "properties/SLinkLds.h"

#include "solver/MLibMaths.h"
#include "solver/SGetLocn.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

namespace corvanta {

namespace {

constexpr std::size_t LinkCount = 6;

struct LinkEnds {
    PointNumber Outer;
    PointNumber Inner;
};

constexpr std::array<LinkEnds, LinkCount> Links{{
    {ptUWO, ptUWIR},
    {ptUWO, ptUWIF},
    {ptLWO, ptLWIR},
    {ptLWO, ptLWIF},
    {ptPRO, ptPRI},
    {ptTRO, ptTRI},
}};

/// A force and its moment about the origin, in the order and the signs of the equations.
using Wrench = std::array<double, LinkCount>;

/// The forces that the links are solved for: a unit force along each axis.
constexpr std::size_t ForceCount = 3;
constexpr std::size_t ColumnCount = LinkCount + ForceCount;

/// Rows of the system: three forces, three moments; a column per link, then a right-hand side per
/// force. The three systems have their links in common, so they are solved as one.
using EquationSystem = std::array<std::array<double, ColumnCount>, LinkCount>;

/// Loads by link and force.
using LoadTable = std::array<std::array<double, ForceCount>, LinkCount>;

/// The wrench of a force along `direction` at `at`.
Wrench WrenchOf(const Vector3& direction, const SuspPoint& at) {
    return {direction.X,
            direction.Y,
            direction.Z,
            at.Z * direction.Y - at.Y * direction.Z,
            -direction.X * at.Z + at.X * direction.Z,
            at.Y * direction.X - at.X * direction.Y};
}

/// The wrench of a unit tension in each link, applied where it holds the upright.
std::array<Wrench, LinkCount> LinkWrenches(const PointSet& points) {
    std::array<Wrench, LinkCount> wrenches{};
    for (std::size_t j = 0; j < LinkCount; ++j) {
        const SuspPoint& outer = points[Links[j].Outer];
        const SuspPoint& inner = points[Links[j].Inner];
        const double length = PointDistance(outer, inner).Distance;
        const Vector3 along = VectorSubtract(outer, inner);
        wrenches[j] = WrenchOf(
            {Divide(along.X, length), Divide(along.Y, length), Divide(along.Z, length)}, outer);
    }
    return wrenches;
}

EquationSystem BuildSystem(const std::array<Wrench, LinkCount>& links,
                           const std::array<Wrench, ForceCount>& forces) {
    EquationSystem system{};
    for (std::size_t row = 0; row < LinkCount; ++row) {
        for (std::size_t link = 0; link < LinkCount; ++link) {
            system[row][link] = links[link][row];
        }
        for (std::size_t force = 0; force < ForceCount; ++force) {
            system[row][LinkCount + force] = forces[force][row];
        }
    }
    return system;
}

std::size_t PivotRow(const EquationSystem& system, std::size_t column) {
    std::size_t best = column;
    for (std::size_t row = column + 1; row < LinkCount; ++row) {
        if (std::abs(system[row][column]) > std::abs(system[best][column])) {
            best = row;
        }
    }
    return best;
}

/// Gaussian elimination with partial pivoting on the link columns.
void Eliminate(EquationSystem& system) {
    for (std::size_t column = 0; column + 1 < LinkCount; ++column) {
        std::swap(system[column], system[PivotRow(system, column)]);
        for (std::size_t row = column + 1; row < LinkCount; ++row) {
            if (system[row][column] == 0) { // exactly 0: nothing to eliminate
                continue;
            }
            const double factor = Divide(system[row][column], system[column][column]);
            for (std::size_t k = column + 1; k < ColumnCount; ++k) {
                system[row][k] -= factor * system[column][k];
            }
        }
    }
}

LoadTable SubstituteBack(const EquationSystem& system) {
    LoadTable loads{};
    for (std::size_t row = LinkCount; row-- > 0;) {
        for (std::size_t force = 0; force < ForceCount; ++force) {
            double known = 0;
            for (std::size_t k = LinkCount; k-- > row + 1;) {
                known += system[row][k] * loads[k][force];
            }
            loads[row][force] = Divide(system[row][LinkCount + force] - known, system[row][row]);
        }
    }
    return loads;
}

} // namespace

void CalculateLinkLoads(WheelState& state, const SuspensionData& data) {
    const SuspPoint& patch = state.Points[ptWTCP];
    const SuspPoint& ofX = data.XForce < 0 ? state.Points[ptWC] : patch;
    const std::array<Wrench, LinkCount> links = LinkWrenches(state.Points);
    const std::array<Wrench, ForceCount> forces{
        WrenchOf({1, 0, 0}, ofX), WrenchOf({0, 1, 0}, patch), WrenchOf({0, 0, 1}, patch)};
    EquationSystem system = BuildSystem(links, forces);
    Eliminate(system);
    const LoadTable loads = SubstituteBack(system);
    for (std::size_t j = 0; j < LinkCount; ++j) {
        const auto& [x, y, z] = loads[j];
        const int link = static_cast<int>(j) + 1;
        state.LinkLoads.Set(link, 1, x);
        state.LinkLoads.Set(link, 2, y);
        state.LinkLoads.Set(link, 3, z);
        state.LinkLoads.Set(link, 4, Checked(data.XForce * x + data.YForce * y + data.ZForce * z));
    }
}

} // namespace corvanta
