#pragma once

#include "model/Channels.h"
#include "model/Points.h"

#include <array>
#include <cassert>
#include <cstddef>
#include <vector>

namespace corvanta {

/// Link loads of one state: link 1 to 6 by column 1 to 4. Columns 1 to 3 are the load per unit
/// force in X, Y and Z, column 4 the combined load, N; tension is positive.
class LinkLoadTable {
  public:
    /// Cell (link, column), nothing when it was never written.
    [[nodiscard]] std::optional<double> Cell(int link, int column) const {
        return m_written ? std::optional(m_cells[Slot(link, column)]) : std::nullopt;
    }
    void Set(int link, int column, double value) {
        m_cells[Slot(link, column)] = value;
        m_written = true;
    }

  private:
    static constexpr int Links = 6;
    static constexpr int Columns = 4;

    static std::size_t Slot(int link, int column) {
        assert(link >= 1 && link <= Links && column >= 1 && column <= Columns);
        return static_cast<std::size_t>((link - 1) * Columns + column - 1);
    }

    std::array<double, static_cast<std::size_t>(Links) * Columns> m_cells{};
    bool m_written = false;
};

/// One solved state of the corner: the position, the positions a little further into bump and into
/// droop from which slopes are taken, and the values derived from them.
struct WheelState {
    PointSet Points;
    PointSet PointsPlus;  ///< at the state's wheel travel plus the offset of the slopes
    PointSet PointsMinus; ///< at the state's wheel travel minus the offset of the slopes
    ChannelCells Channels;
    LinkLoadTable LinkLoads;
};

/// The grid of states, rack step first, wheel step second, both 1 to 50. Element (1, 1) holds the
/// document's static points; (r, 1) is the start state of rack step r; the states of the grid
/// proper have steps from 2. Rack steps grow with rack travel, wheel steps from bump towards droop.
///
/// A rack step takes memory from its first writing on: a full grid is 10 MB, and most documents use
/// a fraction of it.
class WheelStateGrid {
  public:
    static constexpr int Steps = 50;

    [[nodiscard]] WheelState& operator()(int rackStep, int wheelStep) {
        Row& row = m_rows[Slot(rackStep)];
        if (row.empty()) {
            row.resize(Steps);
        }
        return row[Slot(wheelStep)];
    }
    [[nodiscard]] const WheelState& operator()(int rackStep, int wheelStep) const {
        const Row& row = m_rows[Slot(rackStep)];
        return row.empty() ? NewState() : row[Slot(wheelStep)];
    }

    /// Takes the memory of a rack step now.
    void Reserve(int rackStep) { m_rows[Slot(rackStep)].resize(Steps); }

    /// No channel and no link load of any state was ever written; memory and points stay.
    void ForgetResults();

    /// Every state as new.
    void Clear() { m_rows = {}; }

  private:
    using Row = std::vector<WheelState>;

    static std::size_t Slot(int step) {
        assert(step >= 1 && step <= Steps);
        return static_cast<std::size_t>(step) - 1;
    }
    [[nodiscard]] static const WheelState& NewState();

    std::array<Row, Steps> m_rows;
};

} // namespace corvanta
