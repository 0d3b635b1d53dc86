#pragma once

#include "model/Design.h"
#include "platform/DrawingSurface.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

/// A design that is kept under a name beside the one in hand.
struct Variant {
    std::string Name; ///< unique among the variants of a document
    std::string Note;
    Colour Drawn;       ///< of its lines
    bool Ticked = true; ///< its lines stand on the charts
    corvanta::Design Design;

    friend bool operator==(const Variant&, const Variant&) = default;
};

/// Colours of lines that can be told apart and read on white and on black paper.
[[nodiscard]] std::span<const Colour> VariantPalette();

/// The colour of the palette for one variant more: of those that the fewest variants have, the
/// first.
[[nodiscard]] Colour NextVariantColour(std::span<const Variant> variants);

/// The name of a variant that is kept without one: "Variant 1" and so on, counted on from the
/// number of variants, so that a name that was just deleted does not come back with another
/// meaning while later ones stand.
[[nodiscard]] std::string NextVariantName(std::span<const Variant> variants);

/// A name that no variant has yet: the wanted one, or with " (2)" and so on behind it. An empty one
/// gives the next name.
[[nodiscard]] std::string UniqueVariantName(std::span<const Variant> variants,
                                            std::string_view wanted);

/// Why a text can't be the name of one variant more; empty when it can. A name is a line of text
/// that no other variant has.
[[nodiscard]] std::string FaultOfVariantName(std::span<const Variant> variants,
                                             std::string_view name);

/// A new variant with the next colour, under the wanted name or one like it.
[[nodiscard]] Variant NewVariant(std::span<const Variant> variants, std::string_view wantedName,
                                 const Design& design);

} // namespace corvanta
