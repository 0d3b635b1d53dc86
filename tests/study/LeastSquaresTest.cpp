#include "study/LeastSquares.h"

#include "tests/support/Testing.h"

#include <cmath>
#include <limits>

namespace corvanta::test {
namespace {

constexpr double Infinite = std::numeric_limits<double>::infinity();

using Residuals = std::optional<std::vector<double>>;

/// An unbounded problem of a plain function.
LeastSquaresProblem ProblemOf(std::vector<double> start,
                              const std::function<Residuals(const std::vector<double>&)>& at) {
    LeastSquaresProblem problem;
    const std::size_t n = start.size();
    problem.Start = std::move(start);
    problem.Low.assign(n, -Infinite);
    problem.High.assign(n, Infinite);
    problem.Step.assign(n, 1e-4);
    problem.Evaluate = [at](std::span<const std::vector<double>> points) {
        ResidualsAtPoints all;
        for (const std::vector<double>& x : points) {
            all.push_back(at(x));
        }
        return all;
    };
    return problem;
}

/// A straight line a + b t through four values.
LeastSquaresProblem LineThrough(const std::vector<double>& values) {
    LeastSquaresProblem problem = ProblemOf({0, 0}, [values](const std::vector<double>& x) {
        std::vector<double> residuals;
        for (std::size_t t = 0; t < values.size(); ++t) {
            residuals.push_back(x[0] + x[1] * static_cast<double>(t) - values[t]);
        }
        return Residuals(residuals);
    });
    problem.Covariance = true;
    return problem;
}

LeastSquaresProblem Rosenbrock() {
    return ProblemOf({-1.2, 1}, [](const std::vector<double>& x) {
        return Residuals({10 * (x[1] - x[0] * x[0]), 1 - x[0]});
    });
}

TEST(LeastSquaresTest, ALineHasItsClosedForm) {
    testing::internal::CaptureStderr();
    // Sums over t = 0 to 3: 4, 6, 14; the normal equations are [4 6; 6 14].
    const LeastSquaresResult line = SolveLeastSquares(LineThrough({1, 3, 2, 6}));
    EXPECT_TRUE(line.Converged) << line.Words;
    EXPECT_NEAR(line.X[0], 0.9, 1e-7);
    EXPECT_NEAR(line.X[1], 1.4, 1e-7);
    EXPECT_NEAR(line.Cost, 4.2 / 2, 1e-9);
    ASSERT_EQ(line.Covariance.size(), 4U);
    EXPECT_NEAR(line.Covariance[0], 14.0 / 20, 1e-8);
    EXPECT_NEAR(line.Covariance[1], -6.0 / 20, 1e-8);
    EXPECT_NEAR(line.Covariance[3], 4.0 / 20, 1e-8);

    // The slope held at 1: what is left is a mean.
    LeastSquaresProblem held = LineThrough({1, 3, 2, 6});
    held.High[1] = 1;
    const LeastSquaresResult bound = SolveLeastSquares(held);
    EXPECT_EQ(bound.X[1], 1);
    EXPECT_NEAR(bound.X[0], 1.5, 1e-6);
    EXPECT_EQ(bound.AtBound, (std::vector{false, true}));

    // Two variables that do the same can't be told apart; nothing crashes or is printed.
    LeastSquaresProblem twins = ProblemOf({0, 0}, [](const std::vector<double>& x) {
        return Residuals({x[0] + x[1] - 1, 2 * (x[0] + x[1]) - 2});
    });
    twins.Covariance = true;
    const LeastSquaresResult unsure = SolveLeastSquares(twins);
    EXPECT_NEAR(unsure.X[0] + unsure.X[1], 1, 1e-8);
    EXPECT_THAT(unsure.Covariance, IsEmpty());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(LeastSquaresTest, AGrossErrorHasNoWeight) {
    std::vector<double> values;
    values.reserve(20);
    for (int t = 0; t < 20; ++t) {
        values.push_back(2 + 0.5 * t + (t % 2 == 0 ? 0.01 : -0.01));
    }
    const LeastSquaresResult sound = SolveLeastSquares(LineThrough(values));
    values[17] += 8;
    LeastSquaresProblem robust = LineThrough(values);
    robust.LossScales.assign(values.size(), 0.5);
    const LeastSquaresResult huber = SolveLeastSquares(robust);
    EXPECT_NEAR(huber.X[1], sound.X[1], 0.02);
    robust.Start = huber.X;
    robust.Loss = RobustLoss::Tukey;
    const LeastSquaresResult tukey = SolveLeastSquares(robust);
    EXPECT_NEAR(tukey.X[1], sound.X[1], 1e-3);
    EXPECT_GT(tukey.Covariance[3], 1.05 * sound.Covariance[3]) << "one reading less";
}

TEST(LeastSquaresTest, FindsItsWayThroughAValley) {
    const LeastSquaresResult free = SolveLeastSquares(Rosenbrock());
    EXPECT_TRUE(free.Converged);
    EXPECT_NEAR(free.X[0], 1, 1e-6);
    EXPECT_NEAR(free.X[1], 1, 1e-6);
    // x no more than 0.5: then y is 0.25.
    LeastSquaresProblem bound = Rosenbrock();
    bound.High[0] = 0.5;
    bound.Start = {3, 1}; // outside
    const LeastSquaresResult held = SolveLeastSquares(bound);
    EXPECT_NEAR(held.X[0], 0.5, 1e-9);
    EXPECT_NEAR(held.X[1], 0.25, 1e-6);
    EXPECT_EQ(held.AtBound, (std::vector{true, false}));
}

TEST(LeastSquaresTest, PointsThatCannotBeEvaluatedAreNotTaken) {
    // The first whole step from 8 leads beyond 0, where there is no logarithm.
    const auto logarithm = [](const std::vector<double>& x) {
        return x[0] > 0 ? Residuals(std::vector{std::log(x[0])}) : std::nullopt;
    };
    const LeastSquaresResult found = SolveLeastSquares(ProblemOf({8}, logarithm));
    EXPECT_TRUE(found.Converged) << found.Words;
    EXPECT_NEAR(found.X[0], 1, 1e-6);
    const LeastSquaresResult none = SolveLeastSquares(ProblemOf({-1}, logarithm));
    EXPECT_FALSE(none.Evaluated || none.Converged);
    EXPECT_EQ(none.Words, "The start can't be evaluated");
    const LeastSquaresResult noNumber =
        SolveLeastSquares(ProblemOf({1}, [](const std::vector<double>& x) {
            return Residuals(std::vector{x[0] > 0.5 ? x[0] : std::sqrt(-1.0)});
        }));
    EXPECT_GE(noNumber.X[0], 0.5);
    // Neither side of the start can be evaluated.
    const LeastSquaresResult stuck =
        SolveLeastSquares(ProblemOf({2, 1}, [](const std::vector<double>& x) {
            return x[0] == 2 ? Residuals(std::vector{x[0], x[1]}) : std::nullopt;
        }));
    EXPECT_NEAR(stuck.X[1], 0, 1e-9);
    EXPECT_EQ(stuck.X[0], 2);
}

TEST(LeastSquaresTest, StopsAndPassesOnWhatIsThrown) {
    for (const int calls : {0, 1, 2, 7}) {
        std::stop_source stop;
        LeastSquaresProblem problem = Rosenbrock();
        problem.Covariance = true;
        problem.Stop = stop.get_token();
        int left = calls;
        problem.Evaluate = [&, at = problem.Evaluate](std::span<const std::vector<double>> points) {
            if (left-- == 0) {
                stop.request_stop();
            }
            return at(points);
        };
        const LeastSquaresResult result = SolveLeastSquares(problem);
        EXPECT_TRUE(result.Stopped);
        EXPECT_FALSE(result.Converged);
        EXPECT_LE(result.Cost, 12.1 + 1e-9) << "the best until then";
    }
    LeastSquaresProblem throwing = Rosenbrock();
    throwing.Evaluate = [at = throwing.Evaluate](std::span<const std::vector<double>> points) {
        if (points.size() > 1) {
            throw Failure(fnInternal, "broken");
        }
        return at(points);
    };
    EXPECT_EQ(FailureOf([&] { static_cast<void>(SolveLeastSquares(throwing)); }).Description(),
              "broken");
    LeastSquaresProblem noBox = Rosenbrock();
    noBox.High[1] = noBox.Low[1] = 3;
    EXPECT_EQ(FailureOf([&] { static_cast<void>(SolveLeastSquares(noBox)); }).Number(),
              fnInvalidCall);
    noBox = Rosenbrock();
    noBox.Start[0] = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(FailureOf([&] { static_cast<void>(SolveLeastSquares(noBox)); }).Number(),
              fnInvalidCall);
}

} // namespace
} // namespace corvanta::test
