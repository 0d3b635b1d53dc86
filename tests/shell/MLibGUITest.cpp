#include "shell/MLibGUI.h"
#include "tests/support/MemorySettingsStore.h"

#include <gtest/gtest.h>

namespace corvanta::test {
namespace {

constexpr WindowPlacement Screen{0, 0, 20000, 12000};

/// A window of a fixed design size that was not placed yet.
WindowFrame FakeFrame() {
    return {"frmFake", {0, 0, 6000, 4000}};
}

TEST(WindowPlacementTest, AWindowSeenForTheFirstTimeStandsInTheMiddle) {
    MemorySettingsStore store;
    WindowFrame sized = FakeFrame();
    RestoreWindow(sized, Screen, store, 8000, 6000);
    EXPECT_EQ(sized.Placement, (WindowPlacement{7000, 4000, 8000, 6000}));
    WindowFrame fixed = FakeFrame();
    RestoreWindow(fixed, Screen, store, -1, -1);
    EXPECT_EQ(fixed.Placement, (WindowPlacement{7000, 4000, 6000, 4000}));
}

TEST(WindowPlacementTest, IsRememberedUnlessTheWindowIsMaximised) {
    MemorySettingsStore store;
    WindowFrame window = FakeFrame();
    window.Placement = {-300, 500, 7000, 5000};
    SaveWindow(window, store, true);
    window.IsNormal = false;
    window.Placement = {0, 0, 20000, 12000};
    SaveWindow(window, store, true);

    WindowFrame again = FakeFrame();
    RestoreWindow(again, Screen, store, 8000, 6000);
    EXPECT_EQ(again.Placement, (WindowPlacement{0, 500, 7000, 5000})) << "never left of the screen";

    again.Placement.Width = 9000;
    SaveWindow(again, store, false);
    WindowFrame sizeless = FakeFrame();
    RestoreWindow(sizeless, Screen, store, 8000, 6000);
    EXPECT_EQ(sizeless.Placement, (WindowPlacement{0, 500, 6000, 4000}));

    store.Write("frmFake", "Left", "far out");
    RestoreWindow(sizeless, Screen, store, -1, -1);
    EXPECT_EQ(sizeless.Placement.Left, 7000) << "a damaged entry is none";
    EXPECT_FALSE(sizeless.IsPlaced);
}

} // namespace
} // namespace corvanta::test
