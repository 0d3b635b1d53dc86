#include "tests/desktop/SampleSheets.h"

#include <algorithm>

namespace corvanta::test {
namespace {

constexpr int Positions = 49;
constexpr double Travel = 60; ///< mm, up and down

double TravelAt(int n) {
    return Travel * (2.0 * n / (Positions - 1) - 1);
}

double Camber(double wheel, double gain) {
    return -0.5 - gain * wheel - 0.00012 * wheel * wheel;
}

std::vector<ChartPoint> Curve(double gain, double offset = 0) {
    std::vector<ChartPoint> points;
    points.reserve(Positions);
    for (int n = 0; n < Positions; ++n) {
        points.push_back({TravelAt(n), Camber(TravelAt(n), gain) + offset});
    }
    return points;
}

} // namespace

ChartSheet LineSheet(double change) {
    ChartSheet sheet;
    sheet.Title = "Camber Angle [deg]";
    sheet.Mark = TargetMark::Holds;
    sheet.MarkText = "holds";
    sheet.AxisX = {"Wheel Travel [mm]", {-60, 60}};
    sheet.AxisY = {"Camber Angle [deg]", {-3, 1}};
    sheet.Bands = {
        {"Target", BandKind::Target, {30, 140, 70}, Curve(0.02, -0.25), Curve(0.02, 0.25)},
        {"Tolerance", BandKind::Tolerance, {200, 40, 40}, Curve(0.019, -0.1), Curve(0.021, 0.1)}};
    sheet.Curves = {
        {"As it stands", CurveStyle::Solid, {210, 30, 30}, false, Curve(0.02 + change)},
        {"Baseline", CurveStyle::Dashed, {90, 90, 90}, false, Curve(0.016)},
        {"Lower wishbone 5 mm up", CurveStyle::Thin, {40, 100, 200}, false, Curve(0.012)},
        {"Short upper link", CurveStyle::Thin, {150, 80, 180}, false, Curve(0.03)}};
    sheet.Cursor = {15, Camber(15, 0.02 + change), {"-0.83 deg", "-0.77 baseline", "-0.06"}};
    return sheet;
}

ChartSheet MapSheet(double change) {
    ChartSheet sheet;
    sheet.Title = "Camber Angle [deg]";
    sheet.AxisX = {"Wheel Travel [mm]", {-Travel, Travel}};
    sheet.AxisY = {"Rack Travel [mm]", {-Travel, Travel}};
    SheetMap map;
    for (int n = 0; n < Positions; ++n) {
        map.X.push_back(TravelAt(n));
        map.Y.push_back(TravelAt(n));
    }
    double low = 1e9;
    double high = -1e9;
    for (const double rack : map.Y) {
        for (const double wheel : map.X) {
            const double value = Camber(wheel, 0.02 + change) + 0.03 * rack + 0.0003 * rack * wheel;
            const bool reached = wheel + rack < 95;
            map.Values.push_back(reached ? std::optional(value) : std::nullopt);
            low = reached ? std::min(low, value) : low;
            high = reached ? std::max(high, value) : high;
        }
    }
    map.Levels = LevelsOf(low, high, 0.01);
    map.UnreachedText = "can't be reached";
    map.Cross = {15, -10};
    sheet.Map = map;
    return sheet;
}

} // namespace corvanta::test
