#include "shell/AxisRange.h"

#include "platform/NiceNumbers.h"

#include <algorithm>
#include <cmath>

namespace corvanta {

namespace {

constexpr double FewestDigits = 10;  ///< of the format's last, along an axis
constexpr double LeastExtent = 1e-9; ///< of the values: less of it is rounding noise
constexpr double MostSteps = 10;     ///< that a range is rounded to
constexpr double Hair = 1e-6;        ///< of a step: no further step for a rounding error

double LastDigitOf(std::string_view format) {
    const std::size_t point = format.find('.');
    const auto decimals =
        point == std::string_view::npos
            ? 0
            : std::count(format.begin() + static_cast<std::ptrdiff_t>(point), format.end(), '0');
    return std::pow(10, -static_cast<double>(decimals));
}

AxisRange RoundRange(double low, double high, double least) {
    const double magnitude = std::max(std::abs(low), std::abs(high));
    const double shortest = std::max(least, magnitude * LeastExtent);
    if (high - low < shortest) {
        const double middle = low / 2 + high / 2;
        low = middle - shortest / 2;
        high = middle + shortest / 2;
    }
    const double step = NiceStep(high / MostSteps - low / MostSteps, NiceWay::Up);
    return {Multiple(std::floor(low / step + Hair), step),
            Multiple(std::ceil(high / step - Hair), step)};
}

} // namespace

CAxisRange::CAxisRange(std::string_view format) : m_lastDigit(LastDigitOf(format)) {}

const AxisRange& CAxisRange::Take(double low, double high, bool held) {
    if (!std::isfinite(low) || !std::isfinite(high) || low > high) {
        return m_range;
    }
    if (held && m_taken) {
        if (low >= m_range.Lower && high <= m_range.Upper) {
            return m_range;
        }
        low = std::min(low, m_range.Lower);
        high = std::max(high, m_range.Upper);
    }
    m_range = RoundRange(low, high, FewestDigits * m_lastDigit);
    m_taken = true;
    return m_range;
}

} // namespace corvanta
