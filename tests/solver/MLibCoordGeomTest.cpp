#include "solver/MLibCoordGeom.h"

#include "model/Failure.h"
#include "tests/support/Corners.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

namespace corvanta::test {
namespace {

void ExpectPoint(const SuspPoint& point, double x, double y, double z, double tolerance) {
    EXPECT_NEAR(point.X, x, tolerance);
    EXPECT_NEAR(point.Y, y, tolerance);
    EXPECT_NEAR(point.Z, z, tolerance);
}

TEST(MLibCoordGeomTest, PointInPolygon) {
    const std::vector<Point2D> notched{{0, 0}, {4, 0}, {4, 4}, {2, 1}, {0, 4}};
    EXPECT_TRUE(IsPointInPolygon(0.5, 2, notched));
    EXPECT_FALSE(IsPointInPolygon(2, 2, notched)) << "in the notch";
    EXPECT_FALSE(IsPointInPolygon(0, 0, {}));
    const std::vector<Point2D> square{{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    for (const Point2D& p : {Point2D{1, 0.5}, {0.5, 1}, {1, 1}, {1, 0}, {0, 1}}) {
        EXPECT_FALSE(IsPointInPolygon(p.X, p.Y, square)) << p.X << ", " << p.Y;
        EXPECT_TRUE(IsPointInPolygonInclusive(p.X, p.Y, square)) << p.X << ", " << p.Y;
    }
    EXPECT_TRUE(IsPointInPolygon(0, 0.5, square) && IsPointInPolygon(0.5, 0, square));
    EXPECT_FALSE(IsPointInPolygonInclusive(1 + 1e-9, 0.5, square));
    EXPECT_FALSE(IsPointInPolygonInclusive(2, 1, square)) << "in line with an edge, beyond it";
}

TEST(MLibCoordGeomTest, RotationTurnsAboutXThenYThenZ) {
    const SuspPoint p{3, -5, 7};
    const SuspPoint q{-11, 2, 1};
    const Matrix3 m = RotationMatrix(20, -130, 75);
    const SuspPoint steps = TransformPoint(
        TransformPoint(TransformPoint(p, RotationMatrix(20, 0, 0)), RotationMatrix(0, -130, 0)),
        RotationMatrix(0, 0, 75));
    ExpectPoint(TransformPoint(p, m), steps.X, steps.Y, steps.Z, 1e-14);
    EXPECT_NEAR(Dot(TransformPoint(p, m), TransformPoint(q, m)), Dot(p, q), 1e-13);
    ExpectPoint(TransformPoint({100, 0, 0}, RotationMatrix(0, 45, 45)), 50, 50, -70.7106, 5e-4);
    ExpectPoint(TransformPoint({100, 200, 0}, RotationMatrix(30, 30, 0)), 136.6025, 173.2051,
                36.6025, 5e-4);
    // Its degree falls short of the true one by 2.977e-10 rad.
    EXPECT_NEAR(RotationMatrix(0, 0, 90)(1, 1), 90 * 2.977e-10, 1e-11);
    EXPECT_THROW((void)TransformPoint({1.7e308, 1.7e308, 1.7e308}, RotationMatrix(45, 45, 45)),
                 Failure);
}

} // namespace
} // namespace corvanta::test
