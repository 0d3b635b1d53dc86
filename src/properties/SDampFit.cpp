#include "properties/SDampFit.h"

#include "solver/MLibMaths.h"

#include <array>
#include <cstddef>

namespace corvanta {

namespace {

struct FittedChannel {
    ChannelId Channel;
    bool StraightLine;
};

constexpr std::array<FittedChannel, QuadraticFitCount> FittedChannels{{
    {chWheelTravel, false},
    {chCamberAngle, true},
    {chSteerAngleBump, true},
    {chPushrodVelocityRatio, false},
    {chRollCentreToOrigin, false},
    {chDriveshaftTotalAngle, false},
    {chAntiDiveAngle, false},
    {chAntiSquatAngle, false},
    {chAntiRollLength, false},
    {chAntiRollAngle, false},
}};

/// Means of the powers of x and of their products with y.
struct Means {
    double X = 0;
    double X2 = 0;
    double X3 = 0;
    double X4 = 0;
    double Y = 0;
    double XY = 0;
    double X2Y = 0;
};

Means MeansOf(std::span<const double> x, std::span<const double> y) {
    Means sum;
    for (std::size_t k = 0; k < x.size(); ++k) {
        const double square = x[k] * x[k];
        sum.X += x[k];
        sum.X2 += square;
        sum.X3 += square * x[k];
        sum.X4 += square * square;
        sum.Y += y[k];
        sum.XY += x[k] * y[k];
        sum.X2Y += square * y[k];
    }
    const auto n = static_cast<double>(x.size());
    return {Checked(sum.X / n), Checked(sum.X2 / n), Checked(sum.X3 / n), Checked(sum.X4 / n),
            Checked(sum.Y / n), Checked(sum.XY / n), Checked(sum.X2Y / n)};
}

double QuotientOrNone(double dividend, double divisor) {
    // An overflow of the divisor would pass for a quotient of 0.
    return divisor == 0 ? NoCoefficient : Divide(dividend, Checked(divisor)); // exactly 0
}

QuadraticFit FitLine(const Means& m) {
    const double b = QuotientOrNone(m.XY - m.X * m.Y, m.X2 - m.X * m.X);
    return {0, b, Checked(m.Y - m.X * b)};
}

/// Cramer's rule; a coefficient that can't be had goes into the next one as it stands.
QuadraticFit FitParabola(const Means& m) {
    const double determinant =
        m.X2 * m.X2 * m.X2 + m.X3 * m.X3 + m.X * m.X * m.X4 - m.X2 * m.X4 - 2 * m.X * m.X2 * m.X3;
    const double a = QuotientOrNone((m.X2 * m.X2 - m.X * m.X3) * m.Y + (m.X * m.X - m.X2) * m.X2Y +
                                        (m.X3 - m.X2 * m.X) * m.XY,
                                    determinant);
    const double b = QuotientOrNone(m.X * m.Y + (m.X3 - m.X2 * m.X) * a - m.XY, m.X * m.X - m.X2);
    return {a, b, Checked(m.Y - m.X2 * a - m.X * b)};
}

QuadraticFit FitChannelToDamperTravel(const Suspension& document, const ChannelCatalogue& channels,
                                      int rackRow, const FittedChannel& fitted) {
    const auto factor = [&](ChannelId channel) {
        return static_cast<double>(channels[channel].Factor);
    };
    const double staticLength =
        document.WheelStates(rackRow, document.StaticWheel).Channels[chSpringLength];
    std::array<double, WheelStateGrid::Steps> x{};
    std::array<double, WheelStateGrid::Steps> y{};
    const auto count = static_cast<std::size_t>(document.NW);
    for (std::size_t k = 0; k < count; ++k) {
        const ChannelCells& cells = document.WheelStates(rackRow, static_cast<int>(k) + 2).Channels;
        x[k] = (staticLength - cells[chSpringLength]) * factor(chSpringLength);
        y[k] = cells[fitted.Channel] * factor(fitted.Channel);
    }
    return FitQuadratic(std::span(x).first(count), std::span(y).first(count), fitted.StraightLine);
}

} // namespace

QuadraticFit FitQuadratic(std::span<const double> x, std::span<const double> y, bool straightLine) {
    const Means means = MeansOf(x, y);
    return straightLine ? FitLine(means) : FitParabola(means);
}

void CalculateQuadraticFits(Suspension& document, const ChannelCatalogue& channels, int rackRow) {
    for (std::size_t record = 0; record < FittedChannels.size(); ++record) {
        const FittedChannel& fitted = FittedChannels[record];
        const bool absent =
            fitted.Channel == chDriveshaftTotalAngle && !document.Data.DriveShaftExists;
        document.QuadraticFits[record] =
            absent ? QuadraticFit{} : FitChannelToDamperTravel(document, channels, rackRow, fitted);
    }
}

} // namespace corvanta
