#include "study/RegionCells.h"

#include <algorithm>

namespace corvanta {

namespace {

/// Nodes of the fine lattice from one node of the coarse lattice to the next at most, and the
/// stretches that the coarse lattice has at least.
constexpr int CoarseStride = 4;
constexpr int LeastStretches = 5;

/// The stretches of an axis between its coarse nodes; one of a single node where it has no more.
std::vector<std::pair<int, int>> CoarseOf(int nodes) {
    std::vector<std::pair<int, int>> stretches;
    const int stride = std::clamp((nodes - 1) / LeastStretches, 1, CoarseStride);
    for (int from = 0; from < nodes - 1; from += stride) {
        stretches.emplace_back(from, std::min(from + stride, nodes - 1));
    }
    if (stretches.empty()) {
        stretches.emplace_back(0, 0);
    }
    return stretches;
}

std::vector<std::pair<int, int>> Halves(int first, int last) {
    if (last - first < 2) {
        return {{first, last}};
    }
    const int middle = (first + last) / 2;
    return {{first, middle}, {middle, last}};
}

} // namespace

Stretches CoarseStretches(const std::array<int, 3>& nodes) {
    return {CoarseOf(nodes[0]), CoarseOf(nodes[1]), CoarseOf(nodes[2])};
}

Stretches HalvesOf(const LatticeCell& cell) {
    return {Halves(cell.First[0], cell.Last[0]), Halves(cell.First[1], cell.Last[1]),
            Halves(cell.First[2], cell.Last[2])};
}

void AddCells(std::vector<LatticeCell>& cells, const Stretches& stretches,
              std::optional<std::size_t> coarse) {
    for (const auto& z : stretches[2]) {
        for (const auto& y : stretches[1]) {
            for (const auto& x : stretches[0]) {
                cells.push_back({{x.first, y.first, z.first},
                                 {x.second, y.second, z.second},
                                 coarse.value_or(cells.size())});
            }
        }
    }
}

void CCoarseSlopes::Spread() {
    std::size_t stride = 1;
    for (const std::size_t count : m_counts) {
        const std::vector<double> before = m_slopes;
        const std::size_t numbers = stride * m_targets * 3;
        for (std::size_t n = 0; n < m_slopes.size(); ++n) {
            const std::size_t place = n / numbers % count;
            if (place > 0) {
                m_slopes[n] = std::max(m_slopes[n], before[n - numbers]);
            }
            if (place + 1 < count) {
                m_slopes[n] = std::max(m_slopes[n], before[n + numbers]);
            }
        }
        stride *= count;
    }
}

} // namespace corvanta
