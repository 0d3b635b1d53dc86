#pragma once

#include <qcustomplot.h>

#include <algorithm>
#include <cstdlib>

namespace corvanta {

/// The rubber band, cut off at the axes. One that is narrow in a direction shows what it will zoom
/// to: all of that direction.
class ChartRubberBand final : public QCPSelectionRect {
  public:
    using QCPSelectionRect::QCPSelectionRect;

    /// The pixels at which the axes end: the library counts Y from the last row upwards.
    [[nodiscard]] QRect Axes() const { return mParentPlot->axisRect()->rect().translated(0, -1); }

    /// Empty for a band that is narrow in both directions.
    [[nodiscard]] QRect Area() const {
        const QRect axes = Axes();
        const int endX = axes.left() + axes.width();
        const int endY = axes.top() + axes.height();
        const int fromX = std::clamp(mRect.left(), axes.left(), endX);
        const int toX = std::clamp(mRect.right(), axes.left(), endX);
        const int fromY = std::clamp(mRect.top(), axes.top(), endY);
        const int toY = std::clamp(mRect.bottom(), axes.top(), endY);
        const QSize size(std::abs(toX - fromX), std::abs(toY - fromY));
        const bool alongX = size.height() < BandWidth;
        const bool alongY = size.width() < BandWidth;
        if (alongX && alongY) {
            return {};
        }
        return {alongY ? axes.left() : std::min(fromX, toX),
                alongX ? axes.top() : std::min(fromY, toY), alongY ? axes.width() : size.width(),
                alongX ? axes.height() : size.height()};
    }

  private:
    static constexpr int BandWidth = 8; ///< a narrower band runs along one axis

    void draw(QCPPainter* painter) override {
        const QRect area = Area();
        if (mActive && !area.isEmpty()) {
            painter->setPen(mPen);
            painter->setBrush(mBrush);
            painter->drawRect(area);
        }
    }
};

} // namespace corvanta
