#pragma once

#include <cstddef>
#include <cstdint>

namespace corvanta {

/// The greatest seed of a study: up to it every whole number is a double, in which boxes of numbers
/// and other readers of files hold it.
inline constexpr std::uint64_t GreatestSeed = std::uint64_t{1} << 53;

/// The random numbers of one sample of a study: they follow from the study's seed and the sample's
/// number alone, the same on every machine and whichever thread draws them.
/// Generator: SplitMix64 (Steele, Lea, Flood, "Fast Splittable Pseudorandom Number Generators",
/// OOPSLA 2014).
class CSampleRandom {
  public:
    CSampleRandom(std::uint64_t seed, std::size_t sample);

    /// Evenly spread over [0, 1).
    [[nodiscard]] double Uniform();

    /// Normal, mean 0 and standard deviation 1: the polar method (Marsaglia and Bray, "A Convenient
    /// Method for Generating Normal Variables", SIAM Review 6, 1964).
    [[nodiscard]] double Normal();

  private:
    [[nodiscard]] std::uint64_t Next();

    std::uint64_t m_state;
    double m_kept = 0; ///< the polar method makes two at a time
    bool m_hasKept = false;
};

} // namespace corvanta
