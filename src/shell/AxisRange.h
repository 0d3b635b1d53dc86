#pragma once

#include "platform/Chart2D.h"

#include <string_view>

namespace corvanta {

/// An axis that does not jump about while a hand changes what it shows: it grows at once, and
/// shrinks when the hand lets go. Its ends are round numbers.
class CAxisRange {
  public:
    /// An axis of values that are shown in a format, as `FormatNumber` takes it: it never gets so
    /// short that the differences along it could not be read off.
    explicit CAxisRange(std::string_view format);

    /// The range for values from `low` to `high`, at least as long as it was while the hand holds
    /// what it moves. Values that are no numbers, or none at all (`low` above `high`), leave the
    /// range as it is.
    const AxisRange& Take(double low, double high, bool held);

    /// As after construction: what is shown next has nothing to do with what was.
    void Forget() { m_taken = false; }

    [[nodiscard]] const AxisRange& Range() const { return m_range; }

    /// One in the last digit of the format.
    [[nodiscard]] double LastDigit() const { return m_lastDigit; }

  private:
    double m_lastDigit;
    bool m_taken = false;
    AxisRange m_range{0, 1};
};

} // namespace corvanta
