#include "study/Sensitivity.h"

#include "tests/support/Corners.h"
#include "tests/support/Testing.h"

#include <array>
#include <cmath>
#include <initializer_list>
#include <limits>

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

double SumOf(const SensitivityAnswer& answer, std::initializer_list<PointNumber> points, int axis) {
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
    for (const auto& [front, rear] : {std::pair(ptUWIF, ptUWIR), std::pair(ptLWIF, ptLWIR)}) {
        points[rear].Y = points[front].Y;
        points[rear].Z = points[front].Z;
    }
    points[ptTRO].Y = points[ptLWO].Y;
    points[ptTRO].Z = points[ptLWO].Z;
    points[ptTRI].Y = points[ptLWIF].Y;
    points[ptTRI].Z = points[ptLWIF].Z;
    return design;
}

using Vector = std::array<double, 2>; // Y and Z
using Column = std::array<double, 3>;

Vector operator-(const Vector& a, const Vector& b) {
    return {a[0] - b[0], a[1] - b[1]};
}
double operator*(const Vector& a, const Vector& b) {
    return a[0] * b[0] + a[1] * b[1];
}
Vector Turned(const Vector& a, double angle) {
    return {std::cos(angle) * a[0] - std::sin(angle) * a[1],
            std::sin(angle) * a[0] + std::cos(angle) * a[1]};
}
double Determinant(const Column& a, const Column& b, const Column& c) {
    return a[0] * (b[1] * c[2] - b[2] * c[1]) - b[0] * (a[1] * c[2] - a[2] * c[1]) +
           c[0] * (a[1] * b[2] - a[2] * b[1]);
}

/// The four-bar A (lower axis), B (lower joint), C (upper axis), D (upper joint) whose coupler
/// carries the contact patch P. Unknown are the place of B and the turn of the coupler; the closure
/// says that both links keep their length and that P has risen by the travel.
struct FourBar {
    Vector A, B, C, D, P;
    Vector Joint = B; ///< B at the travel
    double Turn = 0;

    explicit FourBar(const PointSet& points)
        : A(Front(points[ptLWIF])),
          B(Front(points[ptLWO])),
          C(Front(points[ptUWIF])),
          D(Front(points[ptUWO])),
          P(Front(points[ptWTCP])) {}
    static Vector Front(const SuspPoint& point) { return {point.Y, point.Z}; }

    [[nodiscard]] Vector Lower() const { return Joint - A; }
    [[nodiscard]] Vector Upper() const {
        const Vector coupler = Turned(D - B, Turn);
        return {Joint[0] + coupler[0] - C[0], Joint[1] + coupler[1] - C[1]};
    }
    /// The turn that answers to a small change of the closure (Cramer's rule).
    [[nodiscard]] double TurnFor(const Column& closure) const {
        const Vector lower = Lower();
        const Vector upper = Upper();
        const double right = std::acos(0.0);
        const Vector swing = Turned(D - B, Turn + right);
        const Column y{2 * lower[0], 2 * upper[0], 0};
        const Column z{2 * lower[1], 2 * upper[1], 1};
        const Column turn{0, 2 * (upper * swing), Turned(P - B, Turn + right)[1]};
        return -Determinant(y, z, closure) / Determinant(y, z, turn);
    }
    /// The joint swings about A step by step, and the coupler follows by bisection.
    void MoveTo(double travel);
    [[nodiscard]] double PatchRise() const { return Joint[1] + Turned(P - B, Turn)[1] - P[1]; }
};

void FourBar::MoveTo(double travel) {
    const Vector start = B - A;
    const auto lift = [&](double swing) {
        const Vector arm = Turned(start, swing);
        Joint = {A[0] + arm[0], A[1] + arm[1]};
        double low = -0.3;
        double high = 0.3;
        const auto miss = [&] { return Upper() * Upper() - (D - C) * (D - C); };
        Turn = low;
        const bool grows = miss() < 0;
        for (int n = 0; n < 100; ++n) {
            Turn = (low + high) / 2;
            ((miss() < 0) == grows ? low : high) = Turn;
        }
        return PatchRise();
    };
    double low = -0.2;
    double high = 0.2;
    for (int n = 0; n < 100; ++n) {
        const double swing = (low + high) / 2;
        (lift(swing) < travel ? low : high) = swing;
    }
}

TEST_F(SensitivityTest, IsTheDerivativeOfAPlanarFourBar) {
    constexpr double Degrees = 57.295779513082320877;
    const Design design = PlanarCorner();
    FourBar bar(design.Points);
    bar.MoveTo(m_camber.Travel);
    ASSERT_NEAR(bar.PatchRise(), m_camber.Travel, 1e-9);
    const SensitivityAnswer answer = Find(design, m_camber);
    const Vector lower = bar.Lower();
    const Vector upper = bar.Upper();
    const Vector upperInBody = Turned(upper, -bar.Turn);
    for (const int axis : {1, 2}) {
        const auto k = static_cast<std::size_t>(axis - 1);
        const double rise = axis == 1 ? -std::sin(bar.Turn) : -std::cos(bar.Turn);
        const Column byA{2 * (bar.B - bar.A)[k] - 2 * lower[k], 0, 0};
        const Column byB{-2 * (bar.B - bar.A)[k], -2 * upperInBody[k], rise};
        const Column byC{0, 2 * (bar.D - bar.C)[k] - 2 * upper[k], 0};
        const Column byD{0, 2 * upperInBody[k] - 2 * (bar.D - bar.C)[k], 0};
        const auto camberFor = [&](const Column& closure) {
            return -Degrees * bar.TurnFor(closure); // the top outward is positive camber
        };
        EXPECT_NEAR(SumOf(answer, {ptLWIF, ptLWIR, ptTRI}, axis), camberFor(byA), 2e-6);
        EXPECT_NEAR(SumOf(answer, {ptLWO, ptTRO}, axis), camberFor(byB), 2e-6);
        EXPECT_NEAR(SumOf(answer, {ptUWIF, ptUWIR}, axis), camberFor(byC), 2e-6);
        EXPECT_NEAR(SumOf(answer, {ptUWO}, axis), camberFor(byD), 2e-6);
        EXPECT_GT(std::abs(camberFor(byD)), 1e-4) << "nothing would be compared";
    }
}

TEST_F(SensitivityTest, NothingChangesWhereAllPointsMoveTogether) {
    const Design design = DesignOf(DoubleWishboneCorner());
    const SensitivityAnswer answer = Find(design, m_camber);
    EXPECT_EQ(answer.Slopes.size(), CoordinatesInPlay(design.Data).size());
    for (int axis = 0; axis < 3; ++axis) {
        double sum = 0;
        for (const CoordinateSlope& slope : answer.Slopes) {
            sum += slope.Coordinate.Axis == axis ? slope.PerMillimetre.value() : 0;
        }
        EXPECT_NEAR(sum, 0, 1e-5) << "axis " << axis;
    }
}

TEST_F(SensitivityTest, OfATargetIsThatOfItsWorstPlaceWithinTheBandToo) {
    const Design design = DesignOf(DoubleWishboneCorner());
    const Target wide = PlainTarget(chCamberAngle, vvAlongWheelTravel, 40, 100, 15, 15);
    const SensitivityAnswer figure = Find(design, m_camber);
    const SensitivityAnswer target = Find(design, wide);
    EXPECT_DOUBLE_EQ(target.Value, -60 - figure.Value) << "the room under the curve";
    EXPECT_LT(target.Value, 0);
    for (std::size_t n = 0; n < figure.Slopes.size(); ++n) {
        EXPECT_NEAR(*target.Slopes[n].PerMillimetre, -*figure.Slopes[n].PerMillimetre, 1e-9);
    }
    EXPECT_EQ(ExcessOf(PlainTarget(chCamberAngle, vvAlongWheelTravel, 0, 1, 5, 6), Curve{}),
              std::nullopt);
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
    EXPECT_EQ(fault(design, Figure{chLinkLoads}), "there is no such channel");
    EXPECT_EQ(fault(design, Target{chCamberAngle, vvAlongWheelTravel, {}, 1}), "the band has no corner");
    Figure nowhere = m_camber;
    nowhere.Travel = std::numeric_limits<double>::quiet_NaN();
    EXPECT_NE(fault(design, nowhere), "");

    std::stop_source source;
    const SensitivityAnswer stopped =
        Find(design, ackerman, {1, source.get_token(), [&](double share) {
                                    if (share > 0.5) {
                                        source.request_stop();
                                    }
                                }});
    EXPECT_TRUE(stopped.Stopped);
    EXPECT_TRUE(stopped.Slopes.front().PerMillimetre.has_value());
    EXPECT_FALSE(stopped.Slopes.back().PerMillimetre.has_value());
    EXPECT_EQ(stopped.Slopes.back().Reason, "");
    EXPECT_TRUE(Find(design, ackerman, {1, source.get_token()}).Stopped) << "before it began";
}

} // namespace
} // namespace corvanta::test
