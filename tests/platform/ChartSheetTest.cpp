#include "platform/ChartSheet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvanta {
namespace {

TEST(ChartSheetTest, AMapIsReadStraightBetweenItsPositions) {
    const SheetMap map{{0, 1, 3}, {0, 10}, {0, 1, 3, 20, 21, std::nullopt}, {}, false, {}, {}, {}};
    EXPECT_DOUBLE_EQ(ValueAt(map, 0.5, 5).value(), 10.5);
    EXPECT_DOUBLE_EQ(ValueAt(map, 2, 0).value(), 2);
    EXPECT_DOUBLE_EQ(ValueAt(map, 3, 0).value(), 3) << "the end of an axis is of it";
    EXPECT_FALSE(ValueAt(map, 2.5, 9)) << "nearest to what can't be reached";
    const double beside = ValueAt(map, 1.2, 9).value();
    EXPECT_GT(beside, 1);
    EXPECT_LT(beside, 21) << "from the others alone";
    EXPECT_FALSE(ValueAt(map, 3.01, 5));
    EXPECT_FALSE(ValueAt(map, 1, -0.01));
    EXPECT_FALSE(ValueAt(SheetMap{}, 0, 0));
}

TEST(ChartSheetTest, CopiedLinesShareTheRowsOfOneTable) {
    ChartSheet sheet;
    sheet.Title = "Camber [deg]";
    sheet.AxisX.Title = "Wheel [mm]";
    sheet.Curves = {{"Now", CurveStyle::Solid, {}, false, {{-1, 0.5}, {0, 0}, {1, -0.25}}},
                    {"Base", CurveStyle::Dashed, {}, false, {{-2, 9}, {0, 1}}}};
    sheet.Bands = {{"Target", BandKind::Target, {}, {{0, -3}}, {{0, 3}}}};
    sheet.NumberSeparators.Decimal = ",";
    EXPECT_EQ(DataText(sheet), "Camber [deg]\n"
                               "Wheel [mm]\tNow\tBase\tTarget, low\tTarget, high\n"
                               "-2\t\t9\t\t\n"
                               "-1\t0,5\t\t\t\n"
                               "0\t0\t1\t-3\t3\n"
                               "1\t-0,25\t\t\t\n");
}

} // namespace
} // namespace corvanta
