#include "calculation/SCalcs.h"
#include "properties/RollCentre.h"
#include "properties/SDampFit.h"
#include "properties/SLinkLds.h"
#include "solver/MLibMaths.h"
#include "tests/support/RecordingMessageBox.h"
#include "tests/support/SampleCorners.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <filesystem>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace corvanta::test {
namespace {

void Calculate(Suspension& document) {
    RecordingMessageBox box;
    Messages messages(box);
    RunCalculation(document, MetricChannels(), messages);
    ASSERT_TRUE(document.ResultsValid) << (box.Shown.empty() ? "" : box.Shown[0].Prompt);
}

/// All samples, set up and calculated after `change`.
template <typename Change, typename Look>
void ForEachSample(Change change, Look look) {
    for (const std::string& path : AllSamplePaths()) {
        const std::string name = std::filesystem::relative(path, SamplePath("")).string();
        SCOPED_TRACE(name);
        Suspension document = LoadSample(name);
        change(document);
        SetUpCorner(document);
        Calculate(document);
        look(document);
    }
}

constexpr std::array<std::pair<PointNumber, PointNumber>, 6> Links{{
    {ptUWO, ptUWIR},
    {ptUWO, ptUWIF},
    {ptLWO, ptLWIR},
    {ptLWO, ptLWIF},
    {ptPRO, ptPRI},
    {ptTRO, ptTRI},
}};

/// What is left over of a force at a point and the pull of the links on the upright, and of their
/// moment about the wheel centre (mm): both vanish in equilibrium.
struct Residual {
    Vector3 Force;
    Vector3 Moment;

    void Add(const Vector3& force, const SuspPoint& at, const SuspPoint& centre) {
        const Vector3 moment = CrossProduct(VectorSubtract(at, centre), force);
        Force = {Force.X + force.X, Force.Y + force.Y, Force.Z + force.Z};
        Moment = {Moment.X + moment.X, Moment.Y + moment.Y, Moment.Z + moment.Z};
    }
};

Residual LeftOver(const WheelState& state, int column, const Vector3& force, const SuspPoint& at) {
    const SuspPoint& centre = state.Points[ptWC];
    Residual residual;
    residual.Add(force, at, centre);
    for (std::size_t j = 0; j < Links.size(); ++j) {
        const SuspPoint& outer = state.Points[Links[j].first];
        const Vector3 inward = VectorSubtract(state.Points[Links[j].second], outer);
        const double length = std::hypot(inward.X, inward.Y, inward.Z);
        const double tension = state.LinkLoads.Cell(static_cast<int>(j) + 1, column).value_or(NAN);
        residual.Add(
            {inward.X / length * tension, inward.Y / length * tension, inward.Z / length * tension},
            outer, centre);
    }
    return residual;
}

void ExpectVanishing(const Residual& residual) {
    constexpr double force = 1e-9;
    constexpr double moment = 1e-9 * 300; // at the arm of a wheel, mm
    for (const double left : {residual.Force.X, residual.Force.Y, residual.Force.Z}) {
        EXPECT_NEAR(left, 0, force);
    }
    for (const double left : {residual.Moment.X, residual.Moment.Y, residual.Moment.Z}) {
        EXPECT_NEAR(left, 0, moment);
    }
}

TEST(LinkLoadsTest, HoldEveryUnitForceInEquilibrium) {
    for (const double xForce : {-1.0, 1.0}) {
        ForEachSample([&](Suspension& document) { document.Data.XForce = xForce; },
                      [&](const Suspension& document) {
                          for (int r = 2; r <= document.NR + 1; ++r) {
                              for (int w = 2; w <= document.NW + 1; ++w) {
                                  const WheelState& state = document.WheelStates(r, w);
                                  if (!HasLinkLoads(document.Data.SpringMechanism)) {
                                      ASSERT_FALSE(state.LinkLoads.Cell(1, 1));
                                      continue;
                                  }
                                  const SuspPoint& patch = state.Points[ptWTCP];
                                  const SuspPoint& ofX = xForce < 0 ? state.Points[ptWC] : patch;
                                  ExpectVanishing(LeftOver(state, 1, {1, 0, 0}, ofX));
                                  ExpectVanishing(LeftOver(state, 2, {0, 1, 0}, patch));
                                  ExpectVanishing(LeftOver(state, 3, {0, 0, 1}, patch));
                              }
                          }
                      });
    }
}

TEST(LinkLoadsTest, TheCombinedLoadHoldsTheUsersForces) {
    Suspension document = LoadSample("formula-front-pushrod.WSP");
    document.Data.XForce = 1200;
    document.Data.YForce = -2500;
    document.Data.ZForce = 3100;
    Calculate(document);
    const WheelState& state = document.WheelStates(document.StaticRack, document.StaticWheel - 2);
    const Residual residual = LeftOver(state, 4, {1200, -2500, 3100}, state.Points[ptWTCP]);
    EXPECT_NEAR(std::hypot(residual.Force.X, residual.Force.Y, residual.Force.Z), 0, 1e-6);
    EXPECT_NEAR(std::hypot(residual.Moment.X, residual.Moment.Y, residual.Moment.Z), 0, 1e-3);
}

/// Slope of a quantity over the wheel steps next to `w` by the patch's height, a fourth order
/// difference.
template <typename Quantity>
double SlopeOverSteps(const Suspension& document, int r, int w, Quantity quantity) {
    const double step = document.Data.WheelTravelStepSize;
    const auto at = [&](int offset) { return quantity(document.WheelStates(r, w - offset)); };
    return (at(-2) - 8 * at(-1) + 8 * at(1) - at(2)) / (12 * step);
}

TEST(MotionRatiosTest, AgreeWithTheSlopesBetweenTheSteps) {
    ForEachSample(
        [](Suspension& document) {
            // Steps fine enough for a difference over them.
            document.Data.Bump = document.Data.Droop = 10;
            document.Data.WheelTravelStepSize = 2;
        },
        [](const Suspension& document) {
            const SuspensionData& data = document.Data;
            for (int r = 2; r <= document.NR + 1; ++r) {
                for (int w = 4; w <= document.NW - 1; ++w) {
                    const ChannelCells& cells = document.WheelStates(r, w).Channels;
                    const auto channel = [](ChannelId id) {
                        return [id](const WheelState& state) { return state.Channels[id]; };
                    };
                    if (data.SpringMechanism != smNone &&
                        data.ThirdSpringMechanism != tsCentreSpring) {
                        const double slope =
                            -SlopeOverSteps(document, r, w, channel(chSpringLength));
                        const double ratio = cells[chSpringVelocityRatio];
                        EXPECT_NEAR(1 / ratio, slope, 2e-4 * std::abs(slope));
                        // The work of the wheel is the work of the spring.
                        if (ratio > 0 && data.KSpring > 0) {
                            EXPECT_NEAR(cells[chWheelRateSpring], data.KSpring * slope * slope,
                                        5e-4 * data.KSpring * slope * slope);
                        }
                    }
                    if (data.ThirdSpringMechanism != tsCornerSpring &&
                        cells[chCentreSpringVelocityRatio] != 0) {
                        const double slope =
                            -SlopeOverSteps(document, r, w, channel(chCentreSpringLength));
                        // The exported length of a lateral spring under heave spans both rockers.
                        const double ends =
                            HasLateralCentreSpring(data) && data.ChassisMotion == cmHeave ? 2 : 1;
                        EXPECT_NEAR(1 / cells[chCentreSpringVelocityRatio], slope / ends,
                                    2e-4 * std::abs(slope) + 1e-6);
                    }
                }
            }
        });
}

TEST(WheelRatesTest, TyreAndLinksAreInSeriesAndTheRollStiffnessFollows) {
    Suspension document = LoadSample("formula-front-pushrod.WSP");
    Calculate(document);
    const ChannelCells& cells =
        document.WheelStates(document.StaticRack, document.StaticWheel).Channels;
    // Deflections of springs in series add up under one load.
    const double load = 1000;
    const double parallel =
        cells[chWheelRateSpring] + cells[chWheelRateARB] + cells[chWheelRateCentreSpring];
    ASSERT_GT(cells[chWheelRateARB], 0);
    ASSERT_GT(cells[chWheelRateCentreSpring], 0);
    const double deflection =
        load / document.Data.KTyre + load / document.Data.KLink + load / parallel;
    EXPECT_NEAR(cells[chWheelRateTotal], load / deflection, 1e-9);
    // A roll by a small angle lifts one wheel and drops the other by half the track times the
    // angle.
    const double track = 2 * cells[chHalfTrack];
    const double moment = 2 * cells[chWheelRateTotal] * (track / 2) * (track / 2);
    EXPECT_NEAR(cells[chRollStiffness], moment, 1e-9 * moment);

    document.Data.ChassisMotion = cmHeave;
    Calculate(document);
    EXPECT_EQ(cells[chWheelRateARB], 0);
    EXPECT_EQ(cells[chARBRotation], 0);
}

TEST(ARBRotationTest, GrowsIntoBumpInEveryRackStep) {
    ForEachSample([](Suspension& document) { document.Data.ChassisMotion = cmRoll; },
                  [](const Suspension& document) {
                      if (document.Data.ARBMechanism == abNone) {
                          return;
                      }
                      for (int r = 2; r <= document.NR + 1; ++r) {
                          EXPECT_GT(
                              document.WheelStates(r, 2).Channels[chARBRotation],
                              document.WheelStates(r, document.NW + 1).Channels[chARBRotation]);
                      }
                  });
}

TEST(SteeringTest, AnAxleSteersAlikeToBothSides) {
    ForEachSample(
        [](Suspension& document) {
            document.Data.RackTravel = 10;
            document.Data.RackTravelStepSize = 5;
        },
        [](const Suspension& document) {
            for (int w = 2; w <= document.NW + 1; ++w) {
                for (int r = 2; r < document.StaticRack; ++r) {
                    const ChannelCells& one = document.WheelStates(r, w).Channels;
                    const ChannelCells& other =
                        document.WheelStates(2 * document.StaticRack - r, w).Channels;
                    EXPECT_EQ(one[chSteerAngleDelta], other[chSteerAngleDelta]);
                    EXPECT_EQ(one[chAckerman], other[chAckerman]);
                    EXPECT_NEAR(one[chRackTravel], -other[chRackTravel], 1e-9);
                }
                EXPECT_EQ(document.WheelStates(document.StaticRack, w).Channels[chAckerman], 0);
            }
        });
}

/// Where two lines through (y1, z1) and (y2, z2) cross, by Cramer's rule on their normal forms.
Point2D Cross(const Point2D& a1, const Point2D& a2, const Point2D& b1, const Point2D& b2) {
    const double na = a2.Y - a1.Y, ma = a1.X - a2.X, ca = na * a1.X + ma * a1.Y;
    const double nb = b2.Y - b1.Y, mb = b1.X - b2.X, cb = nb * b1.X + mb * b1.Y;
    const double determinant = na * mb - nb * ma;
    return {(ca * mb - cb * ma) / determinant, (na * cb - nb * ca) / determinant};
}

TEST(RollCentreTest, UnderRollLiesWhereTheLinesOfBothWheelsCross) {
    Suspension alone = LoadSample("touring-front-wishbone.WSP");
    alone.Data.ChassisMotion = cmHeave; // an axle that moves as one has each wheel's own height
    ASSERT_GT(alone.Data.Bump, alone.Data.Droop);
    const int mirrored = alone.NW - (alone.StaticWheel - 1); // steps of droop
    Calculate(alone);
    Suspension rolled = alone;
    rolled.Data.ChassisMotion = cmRoll;
    Calculate(rolled);

    const int r = alone.StaticRack;
    const int ws = alone.StaticWheel;
    for (int w = 2; w <= alone.NW + 1; ++w) {
        SCOPED_TRACE(w);
        const ChannelCells& single = alone.WheelStates(r, w).Channels;
        const ChannelCells& result = rolled.WheelStates(r, w).Channels;
        const SuspPoint& patch = alone.WheelStates(r, w).Points[ptWTCP];
        EXPECT_EQ(single[chRollCentreY], 0);
        if (w < ws - mirrored) { // deeper in bump than the other wheel can be in droop
            EXPECT_EQ(result[chRollCentreY], 0);
            EXPECT_EQ(result[chRollCentreToOrigin], single[chRollCentreToOrigin]);
            continue;
        }
        const int mirror = 2 * ws - w;
        const SuspPoint& opposite = alone.WheelStates(r, mirror).Points[ptWTCP];
        // In droop the other wheel's height is the one that its own roll centre has been given.
        const Suspension& other = w > ws ? rolled : alone;
        const Point2D expected =
            Cross({-patch.Y, patch.Z}, {0, single[chRollCentreToOrigin]}, {opposite.Y, opposite.Z},
                  {0, other.WheelStates(r, mirror).Channels[chRollCentreToOrigin]});
        EXPECT_NEAR(result[chRollCentreY], expected.X, 1e-6);
        EXPECT_NEAR(result[chRollCentreToOrigin], expected.Y, 1e-6);
        EXPECT_NEAR(result[chRollCentreToGround], expected.Y - patch.Z, 1e-6);
    }
    const ChannelCells& upright = rolled.WheelStates(r, ws).Channels;
    EXPECT_NEAR(upright[chRollCentreY], 0, 1e-9);
    EXPECT_NEAR(upright[chRollCentreToOrigin],
                alone.WheelStates(r, ws).Channels[chRollCentreToOrigin], 1e-9);
}

/// A corner at rest whose wishbone planes rise rearward by the given slopes, the patch at the
/// origin of X and Z. The inner axes run along the planes, the planes lie level across the car at
/// the axes.
Suspension InclinedCorner(double upperSlope, double lowerSlope, double upperHeight,
                          double lowerHeight) {
    Suspension document = LoadSample("published/DWSWEEP.WSP");
    document.Data.Bump = document.Data.Droop = 0;
    document.Data.RackTravel = 0;
    PointSet& points = document.StaticPoints();
    points[ptWTCP] = {0, 800, 0};
    points[ptWC] = {0, 800, 300};
    const auto place = [&](PointNumber point, double x, double y, double height, double slope) {
        points[point] = {x, y, height + slope * x};
    };
    place(ptUWO, 10, 740, upperHeight, upperSlope);
    place(ptUWIR, 150, 400, upperHeight, upperSlope);
    place(ptUWIF, -150, 400, upperHeight, upperSlope);
    place(ptLWO, -5, 760, lowerHeight, lowerSlope);
    place(ptLWIR, 200, 350, lowerHeight, lowerSlope);
    place(ptLWIF, -200, 350, lowerHeight, lowerSlope);
    points[ptTRO] = {-120, 740, 220};
    points[ptTRI] = {-110, 360, 215};
    points[ptPRO] = {0, 600, lowerHeight + 30};
    document.Data.CGX = 1200;
    document.Data.CGZ = 500;
    document.Data.Wheelbase = 2500;
    document.Data.FrontBrakeBalanceSplitPC = 60;
    SetUpCorner(document);
    return document;
}

TEST(AntiFeaturesTest, OfInclinedWishbonesAreThoseOfTheSideView) {
    // Lines z = 450 + 0.02 x and z = 170 - 0.05 x meet at x = -4000, z = 370.
    Suspension front = InclinedCorner(0.02, -0.05, 450, 170);
    Calculate(front);
    const WheelState& state = front.WheelStates(2, 2);
    const ChannelCells& cells = state.Channels;
    EXPECT_NEAR(state.Points[ptLongFocus].X, -4000, 1e-6);
    EXPECT_NEAR(state.Points[ptLongFocus].Z, 370, 1e-6);
    const double degrees = 180 / 3.14159265358979323846;
    EXPECT_NEAR(cells[chAntiDiveAngle], std::atan(370 / -4000.0) * degrees, 1e-6);
    EXPECT_NEAR(cells[chAntiSquatAngle], std::atan(70 / -4000.0) * degrees, 1e-6);
    EXPECT_NEAR(cells[chAntiDiveLength], std::hypot(4000, 370), 1e-6);
    EXPECT_NEAR(cells[chAntiSquatLength], std::hypot(4000, 70), 1e-6);
    // Percentage of the load transfer that the links carry: the brake force of this axle times the
    // line's slope against the whole force times height by wheelbase.
    EXPECT_NEAR(cells[chAntiDivePercent], 0.6 * (370 / -4000.0) * (2500 / 500.0), 1e-9);
    EXPECT_NEAR(cells[chAntiSquatPercent], (70 / 4000.0) * (2500 / 500.0), 1e-9);
    // Level across the car: the front view lines are parallel and meet at infinity.
    EXPECT_EQ(state.Points[ptLatFocus].Y, SwingAxleAtInfinity);
    EXPECT_NEAR(cells[chAntiRollPercent], 0.5 * (450 - 0) / (800 - 999999.0) / (500 / 1600.0),
                1e-9);

    // The same corner behind the centre of gravity.
    Suspension rear = InclinedCorner(0.02, -0.05, 450, 170);
    rear.Data.CGX = -1300;
    SetUpCorner(rear);
    Calculate(rear);
    const ChannelCells& rearCells = rear.WheelStates(2, 2).Channels;
    EXPECT_NEAR(rearCells[chAntiDiveAngle], std::atan(370 / 4000.0) * degrees, 1e-6);
    EXPECT_NEAR(rearCells[chAntiDivePercent], -0.4 * (370 / -4000.0) * (2500 / 500.0), 1e-9);
    EXPECT_NEAR(rearCells[chAntiSquatPercent], cells[chAntiSquatPercent], 1e-12);
}

TEST(AntiFeaturesTest, ParallelLinesAndMissingBasesGiveWholeNumbers) {
    Suspension document = InclinedCorner(0.03, 0.03, 450, 170);
    document.Data.Wheelbase = 0.5;
    Calculate(document);
    const WheelState& state = document.WheelStates(2, 2);
    EXPECT_EQ(state.Points[ptLongFocus].X, -999999);
    EXPECT_EQ(state.Channels[chAntiDiveLength], 999999);
    EXPECT_EQ(state.Channels[chAntiSquatLength], 999999);
    EXPECT_NEAR(state.Channels[chAntiDiveAngle], 0.03 * 57.29577952, 1e-9);
    EXPECT_EQ(state.Channels[chAntiDivePercent], -999);
    EXPECT_EQ(state.Channels[chAntiSquatPercent], -999);
    EXPECT_NE(state.Channels[chAntiRollPercent], -999);
}

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

TEST(QuadraticFitsTest, AgreeWithOrthogonalPolynomials) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> noise(-1, 1);
    for (const bool line : {false, true}) {
        std::vector<double> x, y;
        for (int k = 0; k < 23; ++k) {
            x.push_back(-30 + 2.6 * k + noise(random));
            y.push_back(0.002 * x.back() * x.back() - 0.9 * x.back() + 14 + noise(random));
        }
        const QuadraticFit fit = FitQuadratic(x, y, line);
        const auto [c, b, a] = OrthogonalFit(x, y, line ? 1 : 2);
        EXPECT_NEAR(fit.A, a, 1e-11);
        EXPECT_NEAR(fit.B, b, 1e-10);
        EXPECT_NEAR(fit.C, c, 1e-9);
    }
    const std::vector<double> still(5, 0.0);
    const QuadraticFit none = FitQuadratic(still, still, false);
    EXPECT_EQ(none.A, -99.9);
    EXPECT_EQ(none.B, -99.9);
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
    const double factor = static_cast<double>(0.03937008F);
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
}

} // namespace
} // namespace corvanta::test
