#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <string>
#include <string_view>

namespace corvanta {

/// The catalogue of the points of a corner. The numbers are part of the model: every routine
/// addresses points by them.
///
/// `ptPRO` is always the outermost pickup of the spring train, `ptSAI` the chassis end of the
/// damper or strut; what the others of the train are depends on the mechanism.
enum PointNumber : int {
    ptWSA = 1,
    ptWTCP,
    ptWC,
    ptUWO,
    ptUWO_MACPH,
    ptUWIR,
    ptUWIF,
    ptLWO,
    ptLWIR,
    ptLWIF,
    ptTRO,
    ptTRI,
    ptDSO,
    ptDSI,
    ptPRO,
    ptPRI,
    ptR1P1,
    ptR1P2,
    ptR1O,
    ptSAI,
    ptUWCR,
    ptSNextA,
    ptTNextA,
    ptR2I,
    ptR2P1,
    ptR2P2,
    ptR2O,
    ptLWCR,
    ptST,
    ptPROCR,
    ptPRICR,
    ptSAOCR,
    ptLWTCP,
    ptuWTCP,
    ptLongFocus,
    ptLatFocus,
    ptARDL,
    ptARI,
    ptARP1,
    ptARP2,
    ptRHM,
    ptTSO,
    ptTSI,
    ptTBDLI,
    ptTBDLO,
    ptTBDLO2,
    ptTBP1,
    ptTBP2,
    ptLCSI,
};

inline constexpr int PointCount = 49;

/// All point numbers in catalogue order, for loops over a point set.
inline constexpr std::array<PointNumber, PointCount> AllPoints = [] {
    std::array<PointNumber, PointCount> all{};
    for (int n = 0; n < PointCount; ++n) {
        all[static_cast<std::size_t>(n)] = static_cast<PointNumber>(n + 1);
    }
    return all;
}();

/// A place in the car, mm: X positive to the back, Y positive to the left, Z positive upwards.
struct SuspPoint {
    double X = 0;
    double Y = 0;
    double Z = 0;

    /// Exact comparison, for tests of identity; never a test of nearness.
    friend bool operator==(const SuspPoint&, const SuspPoint&) = default;
};

/// One position of the whole corner: the 49 points, addressed by their numbers.
class PointSet {
  public:
    [[nodiscard]] SuspPoint& operator[](PointNumber number) { return m_points[Slot(number)]; }
    [[nodiscard]] const SuspPoint& operator[](PointNumber number) const {
        return m_points[Slot(number)];
    }

    friend bool operator==(const PointSet&, const PointSet&) = default;

  private:
    static std::size_t Slot(PointNumber number) {
        assert(number >= 1 && number <= PointCount);
        return static_cast<std::size_t>(number) - 1;
    }

    std::array<SuspPoint, PointCount> m_points{};
};

/// The name of a point that stands in documents: "ptWC" and the like.
[[nodiscard]] std::string_view PointShortName(PointNumber number);

/// What the catalogue says of a point for the mechanisms in force.
struct PointEntry {
    bool Enabled = false; ///< the point is in play: it is shown, edited and saved
    std::string LongName; ///< the name on display, by mechanism
};

/// The flags and display names of the 49 points. They are held once for the document, not in each
/// of its point sets.
class PointCatalogue {
  public:
    [[nodiscard]] PointEntry& operator[](PointNumber number) {
        assert(number >= 1 && number <= PointCount);
        return m_entries[static_cast<std::size_t>(number) - 1];
    }
    [[nodiscard]] const PointEntry& operator[](PointNumber number) const {
        assert(number >= 1 && number <= PointCount);
        return m_entries[static_cast<std::size_t>(number) - 1];
    }

  private:
    std::array<PointEntry, PointCount> m_entries{};
};

} // namespace corvanta
