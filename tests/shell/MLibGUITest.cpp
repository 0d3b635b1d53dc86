#include "shell/MLibGUI.h"
#include "shell/CMousePointer.h"
#include "tests/support/MemorySettingsStore.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace corvanta::test {
namespace {

class FakeFrame final : public WindowFrame {
  public:
    WindowPlacement Where{0, 0, 6000, 4000};
    bool Normal = true;

    [[nodiscard]] std::string Name() const override { return "frmFake"; }
    [[nodiscard]] WindowPlacement Placement() const override { return Where; }
    void Place(const WindowPlacement& placement) override { Where = placement; }
    [[nodiscard]] bool IsNormal() const override { return Normal; }
    [[nodiscard]] WindowPlacement Screen() const override { return {0, 0, 20000, 12000}; }
};

TEST(WindowPlacementTest, AWindowSeenForTheFirstTimeStandsInTheMiddle) {
    MemorySettingsStore store;
    FakeFrame sized;
    RestoreWindow(sized, store, 8000, 6000);
    EXPECT_EQ(sized.Where, (WindowPlacement{7000, 4000, 8000, 6000}));
    FakeFrame fixed;
    RestoreWindow(fixed, store, -1, -1);
    EXPECT_EQ(fixed.Where, (WindowPlacement{7000, 4000, 6000, 4000}));
}

TEST(WindowPlacementTest, IsRememberedUnlessTheWindowIsMaximised) {
    MemorySettingsStore store;
    FakeFrame window;
    window.Where = {-300, 500, 7000, 5000};
    SaveWindow(window, store, true);
    window.Normal = false;
    window.Where = {0, 0, 20000, 12000};
    SaveWindow(window, store, true);

    FakeFrame again;
    RestoreWindow(again, store, 8000, 6000);
    EXPECT_EQ(again.Where, (WindowPlacement{0, 500, 7000, 5000})) << "never left of the screen";

    again.Where.Width = 9000;
    SaveWindow(again, store, false);
    FakeFrame sizeless;
    RestoreWindow(sizeless, store, 8000, 6000);
    EXPECT_EQ(sizeless.Where, (WindowPlacement{0, 500, 6000, 4000}));

    store.Write("frmFake", "Left", "far out");
    RestoreWindow(sizeless, store, -1, -1);
    EXPECT_EQ(sizeless.Where.Left, 7000) << "a damaged entry is none";
}

class FakeCursor final : public ScreenCursor {
  public:
    int Shape = 3;

    [[nodiscard]] int Current() const override { return Shape; }
    void Set(int cursor) override { Shape = cursor; }
};

TEST(CMousePointerTest, TheFormerCursorComesBackByAnyRoad) {
    FakeCursor cursor;
    try {
        CMousePointer pointer(cursor, HourglassCursor);
        EXPECT_EQ(cursor.Shape, HourglassCursor);
        pointer.SetPointer(DefaultCursor);
        EXPECT_EQ(cursor.Shape, DefaultCursor);
        throw std::runtime_error("out of a routine");
    } catch (const std::runtime_error&) {
        EXPECT_EQ(cursor.Shape, 3);
    }
}

} // namespace
} // namespace corvanta::test
