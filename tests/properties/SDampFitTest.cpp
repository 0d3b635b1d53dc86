#include "properties/SDampFit.h"

#include "calculation/SCalcs.h"
#include "model/Failure.h"
#include "tests/support/RecordingMessageBox.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <array>
#include <cstddef>
#include <vector>

namespace corvanta::test {
namespace {

/// Least squares by orthogonal polynomials over the points, in long double: coefficients of 1, x,
/// x^2.
std::array<double, 3> OrthogonalFit(const std::vector<double>& x, const std::vector<double>& y,
                                    int degree) {
    using Real = long double;
    std::array<std::array<Real, 3>, 3> basis{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    const auto value = [](const std::array<Real, 3>& p, Real at) {
        return p[0] + at * (p[1] + at * p[2]);
    };
    const auto dot = [&](const auto& p, const auto& q) {
        Real sum = 0;
        for (const double at : x) {
            sum += value(p, at) * value(q, at);
        }
        return sum;
    };
    std::array<Real, 3> fit{};
    for (int k = 0; k <= degree; ++k) {
        auto& p = basis[static_cast<std::size_t>(k)];
        for (int j = 0; j < k; ++j) {
            const auto& q = basis[static_cast<std::size_t>(j)];
            const Real share = dot(p, q) / dot(q, q);
            for (std::size_t n = 0; n < 3; ++n) {
                p[n] -= share * q[n];
            }
        }
        Real along = 0;
        for (std::size_t i = 0; i < x.size(); ++i) {
            along += value(p, x[i]) * y[i];
        }
        along /= dot(p, p);
        for (std::size_t n = 0; n < 3; ++n) {
            fit[n] += along * p[n];
        }
    }
    return {static_cast<double>(fit[0]), static_cast<double>(fit[1]), static_cast<double>(fit[2])};
}

TEST(QuadraticFitsTest, OfADocumentAreInDisplayUnitsAfterTheRollCentreStep) {
    Suspension document = LoadSample("formula-front-pullrod.WSP");
    FundamentalUnits units = MetricUnits();
    units[ucDisplacement].Label = "in";
    ChannelCatalogue inches;
    inches.ChannelsSetup(units);
    RecordingMessageBox box;
    Messages messages(box);
    RunCalculation(document, inches, messages);
    ASSERT_TRUE(document.ResultsValid);
    const auto factor = static_cast<double>(0.03937008F);
    const int r = document.StaticRack;
    std::vector<double> x, y;
    for (int w = 2; w <= document.NW + 1; ++w) {
        const double closing =
            document.WheelStates(r, document.StaticWheel).Channels[chSpringLength] -
            document.WheelStates(r, w).Channels[chSpringLength];
        x.push_back(closing * factor);
        y.push_back(document.WheelStates(r, w).Channels[chRollCentreToOrigin] * factor);
    }
    const auto [c, b, a] = OrthogonalFit(x, y, 2);
    const QuadraticFit& fit = document.QuadraticFits[4];
    EXPECT_NEAR(fit.A, a, 1e-8);
    EXPECT_NEAR(fit.B, b, 1e-8);
    EXPECT_NEAR(fit.C, c, 1e-8);
    EXPECT_EQ(document.QuadraticFits[5].C, 0) << "no driveshaft";
    const std::vector<double> still(5, 0.0);
    EXPECT_EQ(FitQuadratic(still, still, false).A, -99.9);
}

} // namespace
} // namespace corvanta::test
