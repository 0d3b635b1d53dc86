#include "platform/ColourScale.h"

#include "platform/NiceNumbers.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace corvanta {

namespace {

constexpr int FewestSteps = 8; ///< of a scale whose step is not held up by the least one

/// A colour by what is seen of it.
struct Seen {
    double Lightness = 0; ///< 0 black to 1 white
    double Chroma = 0;    ///< 0 grey
    double Hue = 0;       ///< degrees
};

std::uint8_t ScreenPart(double linear) {
    const double kept = std::clamp(linear, 0.0, 1.0);
    const double part = kept <= 0.0031308 ? 12.92 * kept : 1.055 * std::pow(kept, 1 / 2.4) - 0.055;
    return static_cast<std::uint8_t>(std::lround(part * 255));
}

/// From the polar form of OKLab to the colours of a screen: B. Ottosson, "A perceptual color space
/// for image processing", 2020.
Colour OnScreen(const Seen& seen) {
    const double angle = seen.Hue * std::numbers::pi / 180;
    const double a = seen.Chroma * std::cos(angle);
    const double b = seen.Chroma * std::sin(angle);
    const auto cube = [](double root) { return root * root * root; };
    const double l = cube(seen.Lightness + 0.3963377774 * a + 0.2158037573 * b);
    const double m = cube(seen.Lightness - 0.1055613458 * a - 0.0638541728 * b);
    const double s = cube(seen.Lightness - 0.0894841775 * a - 1.2914855480 * b);
    return {ScreenPart(4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s),
            ScreenPart(-1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s),
            ScreenPart(-0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s)};
}

/// The chroma sags in the middle, where a screen has no stronger green of that lightness.
Seen SequentialAt(double part) {
    return {0.30 + 0.63 * part, 0.095 - 0.05 * part * (1 - part), 285 - 180 * part};
}

Seen DivergingAt(double part) {
    const double away = std::abs(2 * part - 1); // from the middle, 0 to 1
    return part < 0.5 ? Seen{1 - 0.46 * away, 0.15 * away, 250}
                      : Seen{1 - 0.46 * away, 0.14 * away, 40};
}

template <typename Scale>
std::vector<Colour> Colours(int steps, const Scale& scale) {
    std::vector<Colour> colours;
    colours.reserve(static_cast<std::size_t>(steps));
    for (int step = 0; step < steps; ++step) {
        colours.push_back(
            OnScreen(scale(steps == 1 ? 0.5 : static_cast<double>(step) / (steps - 1))));
    }
    return colours;
}

} // namespace

std::vector<Colour> SequentialColours(int steps) {
    return Colours(steps, SequentialAt);
}

std::vector<Colour> DivergingColours(int steps) {
    return Colours(steps, DivergingAt);
}

ColourLevels LevelsOf(double low, double high, double least) {
    const double step = NiceStep(std::max(least, (high - low) / FewestSteps), NiceWay::Down);
    const double first = std::floor(low / step);
    const double last = std::max(std::ceil(high / step), first + 1);
    return {Multiple(first, step), Multiple(last, step), static_cast<int>(last - first)};
}

ColourLevels LevelsOfDifferences(double low, double high, double least) {
    const double most = std::max(std::abs(low), std::abs(high));
    const double step = NiceStep(std::max(least, 2 * most / FewestSteps), NiceWay::Down);
    const int beside = std::max(1, static_cast<int>(std::ceil(most / step - 0.5)));
    const double end = Multiple(beside + 0.5, step);
    return {-end, end, 2 * beside + 1};
}

} // namespace corvanta
