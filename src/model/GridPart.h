#pragma once

#include "model/WheelState.h"

#include <array>
#include <bitset>
#include <cstddef>

namespace corvanta {

/// Which states of a grid are in question: rack steps and, in each, wheel steps, both 1 to 50 as in
/// `WheelStateGrid`.
class GridPart {
  public:
    void Add(int rackStep, int wheelStep) { m_rows[Slot(rackStep)].set(Slot(wheelStep)); }
    [[nodiscard]] bool Has(int rackStep, int wheelStep) const {
        return m_rows[Slot(rackStep)].test(Slot(wheelStep));
    }
    void Remove(int rackStep, int wheelStep) { m_rows[Slot(rackStep)].reset(Slot(wheelStep)); }
    void RemoveRow(int rackStep) { m_rows[Slot(rackStep)].reset(); }
    [[nodiscard]] bool HasRow(int rackStep) const { return m_rows[Slot(rackStep)].any(); }

  private:
    static std::size_t Slot(int step) {
        assert(step >= 1 && step <= WheelStateGrid::Steps);
        return static_cast<std::size_t>(step) - 1;
    }

    std::array<std::bitset<WheelStateGrid::Steps>, WheelStateGrid::Steps> m_rows;
};

/// Every state of a grid of `nr` rack steps and `nw` wheel steps, start states included.
[[nodiscard]] inline GridPart WholeGrid(int nr, int nw) {
    GridPart part;
    for (int r = 1; r <= nr + 1; ++r) {
        for (int w = 1; w <= nw + 1; ++w) {
            part.Add(r, w);
        }
    }
    return part;
}

} // namespace corvanta
