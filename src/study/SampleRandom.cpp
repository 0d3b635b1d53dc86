#include "study/SampleRandom.h"

#include <cmath>
#include <utility>

namespace corvanta {

namespace {

std::uint64_t Mixed(std::uint64_t bits) {
    bits = (bits ^ (bits >> 30U)) * 0xBF58476D1CE4E5B9U;
    bits = (bits ^ (bits >> 27U)) * 0x94D049BB133111EBU;
    return bits ^ (bits >> 31U);
}

} // namespace

CSampleRandom::CSampleRandom(std::uint64_t seed, std::size_t sample)
    : m_state(Mixed(Mixed(seed) + sample)) {}

std::uint64_t CSampleRandom::Next() {
    m_state += 0x9E3779B97F4A7C15U;
    return Mixed(m_state);
}

double CSampleRandom::Uniform() {
    constexpr double PerStep = 0x1p-53;
    return static_cast<double>(Next() >> 11U) * PerStep;
}

double CSampleRandom::Normal() {
    if (std::exchange(m_hasKept, false)) {
        return m_kept;
    }
    for (;;) {
        const double u = 2 * Uniform() - 1;
        const double v = 2 * Uniform() - 1;
        const double s = u * u + v * v;
        if (s > 0 && s < 1) {
            const double stretch = std::sqrt(-2 * std::log(s) / s);
            m_kept = v * stretch;
            m_hasKept = true;
            return u * stretch;
        }
    }
}

} // namespace corvanta
