#include "study/Variant.h"

#include "tests/support/Testing.h"

#include <cmath>

namespace corvanta::test {
namespace {

/// Relative luminance of a colour, 0 to 1 (Web Content Accessibility Guidelines 2.1).
double Luminance(const Colour& colour) {
    const auto linear = [](std::uint8_t part) {
        const double value = part / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.Red) + 0.7152 * linear(colour.Green) +
           0.0722 * linear(colour.Blue);
}

TEST(VariantTest, ColoursReadOnWhiteAndBlackAndApart) {
    const auto palette = VariantPalette();
    for (const Colour& colour : palette) {
        // What the guidelines ask of lines in a drawing is a contrast of 3.
        EXPECT_GE(1.05 / (Luminance(colour) + 0.05), 3) << &colour - palette.data();
        EXPECT_GE((Luminance(colour) + 0.05) / 0.05, 3) << &colour - palette.data();
        for (const Colour& other : palette) {
            const double distance = std::hypot(colour.Red - other.Red, colour.Green - other.Green,
                                               colour.Blue - other.Blue);
            EXPECT_TRUE(&colour == &other || distance > 50);
        }
    }
}

TEST(VariantTest, ColoursAndNamesComeInTurn) {
    std::vector<Variant> variants;
    for (std::size_t i = 0; i < 2 * VariantPalette().size(); ++i) {
        variants.push_back(NewVariant(variants, "", {}));
        EXPECT_EQ(variants.back().Name, "Variant " + std::to_string(i + 1));
        EXPECT_EQ(variants.back().Drawn, VariantPalette()[i % VariantPalette().size()]);
    }
    const Colour freed = variants[3].Drawn;
    variants.erase(variants.begin() + 3);
    const Variant next = NewVariant(variants, "", {});
    EXPECT_EQ(next.Name, "Variant 17") << "Variant 16 still stands";
    EXPECT_EQ(next.Drawn, freed);
}

TEST(VariantTest, NamesAreUniqueLines) {
    std::vector<Variant> variants{NewVariant({}, " front\tpushrod\r\n", {})};
    EXPECT_EQ(variants[0].Name, "front pushrod");
    variants.push_back(NewVariant(variants, "front pushrod", {}));
    variants.push_back(NewVariant(variants, "front pushrod", {}));
    EXPECT_EQ(variants[2].Name, "front pushrod (3)");
    EXPECT_EQ(FaultOfVariantName(variants, "rear"), "");
    EXPECT_NE(FaultOfVariantName(variants, "front pushrod (2)"), "");
    EXPECT_NE(FaultOfVariantName(variants, "  "), "");
    EXPECT_NE(FaultOfVariantName(variants, "two\nlines"), "");
}

} // namespace
} // namespace corvanta::test
