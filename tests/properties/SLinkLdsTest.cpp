#include "properties/SLinkLds.h"

#include "solver/MLibMaths.h"
#include "tests/support/SampleCorners.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

namespace corvanta::test {
namespace {

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
    for (const double xForce : {-1.0, 0.0, 1.0}) {
        ForEachSample([&](Suspension& document) { document.Data.XForce = xForce; },
                      [&](const Suspension& document) {
                          for (int r = 2; r <= document.NR + 1; ++r) {
                              ASSERT_FALSE(document.WheelStates(r, 1).LinkLoads.Cell(1, 1));
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

} // namespace
} // namespace corvanta::test
