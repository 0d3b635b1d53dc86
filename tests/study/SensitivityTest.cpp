#include "study/Sensitivity.h"

#include "tests/support/Corners.h"
#include "tests/support/Testing.h"

#include <array>
#include <cmath>
#include <complex>
#include <utility>

namespace corvanta::test {
namespace {

class SensitivityTest : public testing::Test {
  protected:
    [[nodiscard]] SensitivityAnswer Find(const Design& design, const StudyNumber& number,
                                         const StudyWork& work = {}) const {
        CSampleRunner runner(work);
        return FindSensitivity(runner, design, {number}, {m_units, m_channels});
    }

    const FundamentalUnits m_units = MetricUnits();
    const ChannelCatalogue m_channels = MetricChannels();
    const Figure m_camber{chCamberAngle, FigureKind::AtTravel, vvAlongWheelTravel, 15};
};

double SumOf(const SensitivityAnswer& answer, const auto& points, int axis) {
    double sum = 0;
    for (const CoordinateSlope& slope : answer.Slopes) {
        for (const PointNumber point : points) {
            sum +=
                slope.Coordinate == PointCoordinate{point, axis} ? slope.PerMillimetre.value() : 0;
        }
    }
    return sum;
}

/// In front view a four-bar: all axes run along X, and the trackrod lies on the lower wishbone.
Design PlanarCorner() {
    Design design = DesignOf(DoubleWishboneCorner(smNone));
    PointSet& points = design.Points;
    for (const auto& [onto, from] : {std::pair(ptUWIR, ptUWIF), std::pair(ptLWIR, ptLWIF),
                                     std::pair(ptTRO, ptLWO), std::pair(ptTRI, ptLWIF)}) {
        points[onto].Y = points[from].Y;
        points[onto].Z = points[from].Z;
    }
    return design;
}

using Vector = std::complex<double>; // Y + i Z
using Column = std::array<double, 3>;

double Dot(Vector a, Vector b) {
    return (a * std::conj(b)).real();
}
double Determinant(const Column& a, const Column& b, const Column& c) {
    return a[0] * (b[1] * c[2] - b[2] * c[1]) - b[0] * (a[1] * c[2] - a[2] * c[1]) +
           c[0] * (a[1] * b[2] - a[2] * b[1]);
}

/// The four-bar A (lower axis), B (lower joint), C (upper axis), D (upper joint) whose coupler
/// carries the contact patch P. Unknown are the place of B and the turn of the coupler; the closure
/// says that both links keep their length and that P has risen by the travel.
struct FourBar {
    static Vector Front(const SuspPoint& point) { return {point.Y, point.Z}; }
    explicit FourBar(const PointSet& points)
        : A(Front(points[ptLWIF])),
          B(Front(points[ptLWO])),
          C(Front(points[ptUWIF])),
          D(Front(points[ptUWO])),
          P(Front(points[ptWTCP])) {}

    /// Swings the lower link; the coupler turns until the upper link fits (Newton). Gives the
    /// travel.
    double Swing(double angle) {
        Lower = (B - A) * std::polar(1.0, angle);
        for (int n = 0; n < 20; ++n) {
            Upper = A + Lower + (D - B) * Turn - C;
            const double miss = std::norm(Upper) - std::norm(D - C);
            Turn *= std::polar(1.0, -miss / (2 * Dot(Upper, Quarter * (D - B) * Turn)));
        }
        return (A + Lower + (P - B) * Turn - P).imag();
    }
    /// The coupler's angle that answers to a small change of the closure (Cramer's rule).
    [[nodiscard]] double AngleFor(const Column& closure) const {
        const Column y{2 * Lower.real(), 2 * Upper.real(), 0};
        const Column z{2 * Lower.imag(), 2 * Upper.imag(), 1};
        const Column turn{0, 2 * Dot(Upper, Quarter * (D - B) * Turn),
                          (Quarter * (P - B) * Turn).imag()};
        return -Determinant(y, z, closure) / Determinant(y, z, turn);
    }

    const Vector Quarter{0, 1};
    Vector A, B, C, D, P;
    Vector Lower, Upper; ///< the links at the travel
    Vector Turn{1};      ///< of the coupler, a factor
};

TEST_F(SensitivityTest, IsTheDerivativeOfAPlanarFourBar) {
    constexpr double Degrees = 57.295779513082320877;
    Design design = PlanarCorner();
    FourBar bar(design.Points);
    const double travel = bar.Swing(0.05);
    SuspensionData& data = design.Data;
    data.Bump = data.Droop = data.WheelTravelStepSize = travel; // a step stands there
    const SensitivityAnswer answer =
        Find(design, Figure{chCamberAngle, FigureKind::AtTravel, vvAlongWheelTravel, travel});
    const Vector inBody = bar.Upper / bar.Turn;
    for (const int axis : {1, 2}) {
        const Vector way = axis == 1 ? Vector(1, 0) : Vector(0, 1);
        const auto camberFor = [&](const Column& closure) {
            return -Degrees * bar.AngleFor(closure); // the top outward is positive camber
        };
        const double byA = camberFor({2 * Dot(bar.B - bar.A - bar.Lower, way), 0, 0});
        const double byB = camberFor(
            {-2 * Dot(bar.B - bar.A, way), -2 * Dot(inBody, way), -(way * bar.Turn).imag()});
        const double byC = camberFor({0, 2 * Dot(bar.D - bar.C - bar.Upper, way), 0});
        const double byD = camberFor({0, 2 * Dot(inBody - (bar.D - bar.C), way), 0});
        EXPECT_NEAR(SumOf(answer, std::array{ptLWIF, ptLWIR, ptTRI}, axis), byA, 2e-6);
        EXPECT_NEAR(SumOf(answer, std::array{ptLWO, ptTRO}, axis), byB, 2e-6);
        EXPECT_NEAR(SumOf(answer, std::array{ptUWIF, ptUWIR}, axis), byC, 2e-6);
        EXPECT_NEAR(SumOf(answer, std::array{ptUWO}, axis), byD, 2e-6);
        EXPECT_GT(std::abs(byD), 1e-4) << "nothing would be compared";
    }
}

TEST_F(SensitivityTest, NothingChangesWhereAllPointsMoveTogether) {
    const Design design = DesignOf(DoubleWishboneCorner());
    const SensitivityAnswer answer = Find(design, m_camber);
    EXPECT_EQ(answer.Slopes.size(), CoordinatesInPlay(design.Data).size());
    for (int axis = 0; axis < 3; ++axis) {
        EXPECT_NEAR(SumOf(answer, AllPoints, axis), 0, 1e-5) << "axis " << axis;
    }
}

TEST_F(SensitivityTest, OfATargetIsThatOfItsWorstPlaceWithinTheBandToo) {
    const Design design = DesignOf(DoubleWishboneCorner());
    const Target wide = PlainTarget(chCamberAngle, vvAlongWheelTravel, 40, 100, 15, 15);
    const SensitivityAnswer figure = Find(design, m_camber);
    const SensitivityAnswer target = Find(design, wide);
    EXPECT_DOUBLE_EQ(target.Value, -60 - figure.Value) << "the room under the curve";
    for (std::size_t n = 0; n < figure.Slopes.size(); ++n) {
        EXPECT_NEAR(*target.Slopes[n].PerMillimetre, -*figure.Slopes[n].PerMillimetre, 1e-9);
    }
}

TEST_F(SensitivityTest, ThreadsChangeNothing) {
    const Design design = DesignOf(DoubleWishboneCorner());
    const SensitivityAnswer one = Find(design, m_camber, {1});
    const SensitivityAnswer two = Find(design, m_camber, {2});
    for (std::size_t n = 0; n < one.Slopes.size(); ++n) {
        EXPECT_EQ(two.Slopes[n].PerMillimetre, one.Slopes[n].PerMillimetre);
    }
}

TEST_F(SensitivityTest, TellsWhatHasNoSlopeAndWhatHasNoAnswer) {
    // The bar is straight across the car or nothing is calculated.
    const Design design = DesignOf(DoubleWishboneCorner(smPushrodToLowerWishbone, abTBar));
    const Figure ackerman{chAckerman, FigureKind::RangeOverTravel, vvAlongRackTravel};
    const SensitivityAnswer answer = Find(design, ackerman, {2});
    for (const CoordinateSlope& slope : answer.Slopes) {
        const auto [point, axis] = slope.Coordinate;
        const bool skew = (point == ptTBP1 || point == ptTBP2) && axis != 1;
        EXPECT_EQ(slope.PerMillimetre.has_value(), !skew) << PointShortName(point) << axis;
        EXPECT_EQ(slope.Reason.find("T-Bar pivot axis must be horizontal") != std::string::npos,
                  skew);
    }
    Design reversed = design;
    std::swap(reversed.Points[ptLWIF], reversed.Points[ptLWIR]);
    const auto fault = [&](const Design& asked, const StudyNumber& number) {
        return FailureOf([&] { (void)Find(asked, number); }).Description();
    };
    EXPECT_THAT(fault(reversed, ackerman),
                testing::AllOf(EndsWith("wishbone inboard points back to front"),
                               testing::Not(HasSubstr("\r"))));
    EXPECT_THAT(fault(design, Figure{chCentreSpringVelocityRatio}), HasSubstr("no value"));
    EXPECT_EQ(fault(design, Figure{chLinkLoads}), "There is no such channel");
    std::stop_source source;
    const auto stop = [&](double share) { share > 0.5 && source.request_stop(); };
    const SensitivityAnswer stopped = Find(design, ackerman, {1, source.get_token(), stop});
    EXPECT_TRUE(stopped.Stopped);
    EXPECT_TRUE(stopped.Slopes.front().PerMillimetre.has_value());
    EXPECT_FALSE(stopped.Slopes.back().PerMillimetre.has_value());
    EXPECT_EQ(stopped.Slopes.back().Reason, "");
    EXPECT_TRUE(Find(design, ackerman, {1, source.get_token()}).Stopped) << "before it began";
}

} // namespace
} // namespace corvanta::test
