#include "study/Variant.h"

#include "model/NumberText.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace corvanta {

namespace {

/// Of middle lightness, each at least three times as light as black paper and as dark as white.
constexpr std::array<Colour, 8> Palette{{
    {0, 114, 206},   // blue
    {213, 94, 0},    // orange
    {0, 140, 90},    // green
    {190, 60, 190},  // violet
    {150, 116, 20},  // ochre
    {0, 144, 160},   // turquoise
    {220, 50, 90},   // crimson
    {124, 124, 124}, // grey
}};

bool Has(std::span<const Variant> variants, std::string_view name) {
    return std::any_of(variants.begin(), variants.end(),
                       [&](const Variant& variant) { return variant.Name == name; });
}

bool IsControl(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

} // namespace

std::span<const Colour> VariantPalette() {
    return Palette;
}

Colour NextVariantColour(std::span<const Variant> variants) {
    const auto uses = [&](const Colour& colour) {
        return std::count_if(variants.begin(), variants.end(),
                             [&](const Variant& variant) { return variant.Drawn == colour; });
    };
    return *std::min_element(
        Palette.begin(), Palette.end(),
        [&](const Colour& one, const Colour& other) { return uses(one) < uses(other); });
}

std::string NextVariantName(std::span<const Variant> variants) {
    std::size_t number = variants.size();
    std::string name;
    do {
        name = "Variant " + std::to_string(++number);
    } while (Has(variants, name));
    return name;
}

std::string UniqueVariantName(std::span<const Variant> variants, std::string_view wanted) {
    std::string line(wanted);
    std::replace_if(line.begin(), line.end(), IsControl, ' ');
    const std::string base(TrimBlanks(line));
    if (base.empty()) {
        return NextVariantName(variants);
    }
    std::string name = base;
    for (int number = 2; Has(variants, name); ++number) {
        name = base + " (" + std::to_string(number) + ")";
    }
    return name;
}

std::string FaultOfVariantName(std::span<const Variant> variants, std::string_view name) {
    if (TrimBlanks(name).empty()) {
        return "A variant needs a name";
    }
    if (std::any_of(name.begin(), name.end(), IsControl)) {
        return "The name must be one line of text";
    }
    return Has(variants, name) ? "Another variant has this name" : "";
}

Variant NewVariant(std::span<const Variant> variants, std::string_view wantedName,
                   const Design& design) {
    return {UniqueVariantName(variants, wantedName), {}, NextVariantColour(variants), true, design};
}

} // namespace corvanta
