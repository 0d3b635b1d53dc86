#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace corvanta {

/// A block of a lattice of nodes, both ends included.
struct LatticeCell {
    std::array<int, 3> First{};
    std::array<int, 3> Last{};
    std::size_t Coarse = 0; ///< number of the coarse cell that it is of

    [[nodiscard]] bool Divisible() const {
        return Last[0] - First[0] > 1 || Last[1] - First[1] > 1 || Last[2] - First[2] > 1;
    }
};

/// The stretches from node to node along each axis; a single node is a stretch in itself.
using Stretches = std::array<std::vector<std::pair<int, int>>, 3>;

/// The coarse lattice over so many nodes along each axis.
[[nodiscard]] Stretches CoarseStretches(const std::array<int, 3>& nodes);

/// A cell halved along each axis that is longer than a step.
[[nodiscard]] Stretches HalvesOf(const LatticeCell& cell);

/// Adds the cells of stretches, X fastest, then Y: parts of a coarse cell, or coarse ones in their
/// own right.
void AddCells(std::vector<LatticeCell>& cells, const Stretches& stretches,
              std::optional<std::size_t> coarse = {});

/// How fast the deviations of targets change in each cell of the coarse lattice, per node of the
/// fine one.
class CCoarseSlopes {
  public:
    CCoarseSlopes() = default;
    CCoarseSlopes(const Stretches& stretches, std::size_t targets)
        : m_counts{stretches[0].size(), stretches[1].size(), stretches[2].size()},
          m_targets(targets),
          m_slopes(m_counts[0] * m_counts[1] * m_counts[2] * targets * 3) {}

    [[nodiscard]] double At(std::size_t cell, std::size_t target, std::size_t axis) const {
        assert((cell * m_targets + target) * 3 + axis < m_slopes.size());
        return m_slopes[(cell * m_targets + target) * 3 + axis];
    }

    void Take(std::size_t cell, std::size_t target, std::size_t axis, double slope) {
        double& kept = m_slopes[(cell * m_targets + target) * 3 + axis];
        kept = std::max(kept, slope);
    }

    /// Gives each cell the greatest slopes of the cells around it.
    void Spread();

  private:
    std::array<std::size_t, 3> m_counts{};
    std::size_t m_targets = 0;
    std::vector<double> m_slopes;
};

} // namespace corvanta
