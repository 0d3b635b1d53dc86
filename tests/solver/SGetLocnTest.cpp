#include "solver/SGetLocn.h"

#include "solver/MLibCoordGeom.h"
#include "tests/support/Corners.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

namespace corvanta::test {
namespace {

/// Three references and, as the fourth, the point to be located, in an old and a new place.
struct MovedBody {
    std::array<SuspPoint, 4> Old;
    std::array<SuspPoint, 4> New;
};

SuspPoint Along(const SuspPoint& p, const Vector3& d, double share = 1) {
    return {p.X + share * d.X, p.Y + share * d.Y, p.Z + share * d.Z};
}

/// The unit normal of the plane of the references.
Vector3 Normal(const std::array<SuspPoint, 4>& p) {
    const Vector3 n = CrossProduct(VectorSubtract(p[1], p[0]), VectorSubtract(p[2], p[0]));
    return UnitVector(n.X, n.Y, n.Z);
}

class SGetLocnTest : public testing::Test {
  protected:
    SuspPoint RandomPoint() { return {m_c(m_random), m_c(m_random), m_c(m_random)}; }

    /// A body that is neither a needle nor flat, rotated and translated at random.
    MovedBody RandomBody() {
        MovedBody body;
        do {
            std::generate(body.Old.begin(), body.Old.end(), [this] { return RandomPoint(); });
        } while (DistancePointToLine(body.Old[0], body.Old[1], body.Old[2]) < 50 ||
                 std::abs(Dot(Normal(body.Old), VectorSubtract(body.Old[3], body.Old[0]))) < 30);
        const SuspPoint angles = RandomPoint();
        const SuspPoint shift = RandomPoint();
        const Matrix3 rotation = RotationMatrix(angles.X, angles.Y, angles.Z);
        std::transform(body.Old.begin(), body.Old.end(), body.New.begin(), [&](const SuspPoint& p) {
            return Along(TransformPoint(p, rotation), shift);
        });
        return body;
    }

  private:
    std::mt19937 m_random{3};
    std::uniform_real_distribution<double> m_c{-400, 400};
};

/// Locates the fourth point with the references taken in the order i, j, k.
SuspPoint Located(const MovedBody& b, const SuspPoint& near, std::size_t i = 0, std::size_t j = 1,
                  std::size_t k = 2) {
    return LocatePoint(b.Old[i], b.New[i], b.Old[j], b.New[j], b.Old[k], b.New[k], b.Old[3], near);
}

TEST_F(SGetLocnTest, FollowsARigidMotion) {
    for (int n = 0; n < 3000; ++n) {
        const MovedBody body = RandomBody();
        const SuspPoint& moved = body.New[3];
        const SuspPoint near = Along(moved, {3, -2, 4});
        ASSERT_LT(Distance(Located(body, near), moved), 1e-9);
        ASSERT_LT(Distance(Located(body, near, 0, 2, 1), moved), 1e-9) << "order of 2 and 3";
        ASSERT_LT(Distance(Located(body, near, 2, 0, 1), moved), 1e-9) << "choice of the first";
        const Vector3 normal = Normal(body.New);
        const double height = Dot(normal, VectorSubtract(moved, body.New[0]));
        const SuspPoint mirror = Along(moved, normal, -2 * height);
        ASSERT_LT(Distance(Located(body, Along(mirror, {1, 1, -2})), mirror), 1e-9);
    }
}

TEST_F(SGetLocnTest, ReferencesInCoordinatePlanes) {
    // Each plane leaves one coordinate free; the forms of the other two are degenerate.
    MovedBody body{{{{10, 20, 0}, {310, 20, 0}, {10, 220, 0}, {60, 120, 75}}}, {}};
    const auto turned = [](const SuspPoint& p, int turns) {
        return turns == 0 ? p : (turns == 1 ? SuspPoint{p.Z, p.X, p.Y} : SuspPoint{p.Y, p.Z, p.X});
    };
    for (int turns = 0; turns < 3; ++turns) {
        std::transform(body.Old.begin(), body.Old.end(), body.New.begin(),
                       [&](const SuspPoint& p) { return turned(p, turns); });
        EXPECT_LT(Distance(Located(body, turned({60, 120, 1}, turns)), body.New[3]), 1e-12);
        // As near to the one as to the other: the root with the minus sign, on the negative side.
        const SuspPoint below = turned({60, 120, -75}, turns);
        EXPECT_LT(Distance(Located(body, turned({60, 120, 0}, turns)), below), 1e-12);
    }
}

TEST_F(SGetLocnTest, SpheresThatDoNotMeet) {
    int apart = 0;
    for (int n = 0; n < 3000; ++n) {
        MovedBody body = RandomBody();
        body.New[1] = RandomPoint(); // moved on its own: the spheres may meet or not
        if (DistancePointToLine(body.New[0], body.New[1], body.New[2]) < 50) {
            continue;
        }
        const SuspPoint located = Located(body, RandomPoint());
        const auto squares = [&](const SuspPoint& p, const std::array<SuspPoint, 4>& refs) {
            return MeasureBody(refs[0], refs[1], refs[2], p);
        };
        // Whether they meet or not, it lies in the planes in which pairs of the spheres cross.
        const BodyDistances is = squares(located, body.New);
        const BodyDistances due = squares(body.Old[3], body.Old);
        ASSERT_NEAR(is.First - is.Second, due.First - due.Second, 1e-6);
        ASSERT_NEAR(is.First - is.Third, due.First - due.Third, 1e-6);
        // Over the plane of the references it is as high as the spheres cross, or fall short.
        const double height = Dot(Normal(body.New), VectorSubtract(located, body.New[0]));
        const double foot = is.First - height * height;
        ASSERT_NEAR(height * height, std::abs(due.First - foot), 1e-6);
        apart += due.First < foot - 1 ? 1 : 0;
    }
    EXPECT_GT(apart, 300) << "the case must have been met";
    // References in one line: whichever determinant is the largest, X is the free coordinate, from
    // which lines that rise to 1e16 lead nowhere.
    for (const SuspPoint& bend : {SuspPoint{0, 5e-5, 0}, SuspPoint{5e-5, 0, 0}, SuspPoint{}}) {
        const MovedBody onALine{RandomBody().Old,
                                {{{7, 8, 9}, {7, 8, 109}, {7 + bend.X, 8 + bend.Y, 209}, {}}}};
        EXPECT_EQ(Located(onALine, {}), (SuspPoint{6, 8, 9})) << "of no meaning, but no failure";
    }
}

} // namespace
} // namespace corvanta::test
