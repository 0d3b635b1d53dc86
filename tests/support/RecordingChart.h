#pragma once

#include "platform/Chart2D.h"

#include <algorithm>

namespace corvanta::test {

/// A chart without a screen. Its plot area has its upper left corner at (`Left`, `Top`) and is
/// `Width` by `Height` pixels; the axes run from the smallest to the largest value of the points.
/// A chart without points has no plot area.
class RecordingChart final : public Chart2D {
  public:
    static constexpr double Left = 40;
    static constexpr double Top = 10;
    static constexpr double Width = 200;
    static constexpr double Height = 100;

    /// Places asked for, in pixels.
    mutable std::vector<ChartPoint> Asked;

    [[nodiscard]] ChartPoint DataAt(double pixelX, double pixelY) const override {
        Asked.push_back({pixelX, pixelY});
        const double across = (pixelX - Left) / Width;
        const double up = 1 - (pixelY - Top) / Height;
        return {Along(across, &ChartPoint::X), Along(up, &ChartPoint::Y)};
    }

  private:
    [[nodiscard]] double Along(double part, double ChartPoint::*coordinate) const {
        if (Series.Points.empty() || part < 0 || part > 1) {
            return Outside;
        }
        const auto [least, most] = std::minmax_element(
            Series.Points.begin(), Series.Points.end(),
            [&](const auto& a, const auto& b) { return a.*coordinate < b.*coordinate; });
        return *least.*coordinate + part * (*most.*coordinate - *least.*coordinate);
    }
};

} // namespace corvanta::test
