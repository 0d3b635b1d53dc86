#include "study/Region.h"

#include "model/Failure.h"
#include "solver/MLibMaths.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <cmath>
#include <stop_token>
#include <string>

namespace corvanta::test {
namespace {

class RegionTest : public ::testing::Test {
  protected:
    const FundamentalUnits m_units = MetricUnits();
    const ChannelCatalogue m_channels = MetricChannels();
    const SolveSettings m_settings{m_units, m_channels};

    [[nodiscard]] RegionAnswer Find(const Design& design, const RegionQuestion& question,
                                    const StudyWork& work = {}) const {
        CSampleRunner runner(work);
        return FindRegion(runner, design, question, m_settings);
    }

    /// A box around where a point is.
    static RegionQuestion Around(const Design& design, PointNumber point, double half, int nodes) {
        const SuspPoint& at = design.Points[point];
        return {point,
                {{{at.X - half, at.X + half, nodes},
                  {at.Y - half, at.Y + half, nodes},
                  {at.Z - half, at.Z + half, nodes}}},
                {}};
    }

    /// A target that the design meets by its channel at a travel, plus or minus.
    [[nodiscard]] Target Held(const Design& design, int channel, double from, double to,
                              double tolerance) const {
        Suspension scratch;
        (void)Solve(scratch, design, m_settings);
        const double value = *ValueAt(CurveOf(scratch, channel, vvAlongWheelTravel), 0);
        return PlainTarget(channel, vvAlongWheelTravel, value, tolerance, from, to);
    }
};

/// Caster and the swapped trackrod follow from coordinates by hand.
TEST_F(RegionTest, BordersStandWhereGeometryPutsThem) {
    const Design design = DesignOf(DoubleWishboneCorner(smNone));
    RegionQuestion question = Around(design, ptUWO, 9, 13);
    const Target caster = Held(design, chCasterAngle, 0, 0, 1.1);
    question.Targets = {caster};
    const RegionAnswer answer = Find(design, question);
    EXPECT_EQ(answer.Present.Verdict, RegionVerdict::Held);
    const SuspPoint& lower = design.Points[ptLWO];
    int held = 0;
    for (std::size_t z = 0; z < 13; ++z) {
        for (std::size_t x = 0; x < 13; ++x) {
            const double angle =
                std::atan2(answer.Places[0][x] - lower.X, answer.Places[2][z] - lower.Z) *
                57.295779513;
            const BandCorner& band = caster.Band.front();
            const bool inside = angle >= band.Low && angle <= band.High;
            const double over = inside              ? 0
                                : angle > band.High ? angle - band.High
                                                    : angle - band.Low;
            held += inside ? 1 : 0;
            for (std::size_t y = 0; y < 13; ++y) {
                const RegionNode& node = answer.At(x, y, z);
                EXPECT_EQ(node.Verdict == RegionVerdict::Held, inside) << x << ' ' << z;
                if (!inside && node.Solved) {
                    EXPECT_EQ(node.Target, 0);
                    EXPECT_NEAR(node.Deviation, over, 1e-4);
                }
            }
        }
    }
    EXPECT_GT(held, 20);
    EXPECT_LT(held, 150);
    EXPECT_LT(answer.Solved, answer.Nodes.size());

    RegionQuestion rod = Around(design, ptTRI, 0, 1);
    const double outer = design.Points[ptTRO].Y;
    rod.Box[1] = {outer - 10, outer + 10, 21};
    const RegionAnswer swapped = Find(design, rod);
    const RegionSlice slice = SliceOf(swapped, 2, 0);
    ASSERT_EQ(slice.Nodes.size(), 21U);
    for (std::size_t n = 10; n < 21; ++n) {
        EXPECT_EQ(slice.Nodes[n].Verdict, RegionVerdict::OutOfReach);
    }
    EXPECT_THAT(swapped.FirstFailure,
                testing::AllOf(HasSubstr("swapped"), testing::Not(HasSubstr("\r"))));
}

/// Every node solved on the whole grid and judged cell by cell.
TEST_F(RegionTest, TheRefinedLatticeSaysWhatEveryNodeSaysByItself) {
    struct Box {
        const char* Sample;
        PointNumber Point;
        double Half;
        bool WholeGrid;
        int Channel;
        double Tolerance;
    };
    std::size_t left = 0; // unsolved by the lattice
    for (const Box& box :
         {Box{"formula-front-pushrod.WSP", ptUWIF, 40, false, chRollCentreToGround, 30},
          Box{"touring-front-wishbone.WSP", ptTRI, 12, false, chSteerAngleBump, 0.02},
          Box{"formula-front-pullrod.WSP", ptPRI, 60, true, chSpringVelocityRatio, 0.1},
          Box{"saloon-front-strut.WSP", ptSAI, 90, false, chCamberAngle, 0.3}}) {
        SCOPED_TRACE(box.Sample);
        Design design = DesignOf(LoadSample(box.Sample));
        design.Data.WheelTravelStepSize = 12.5;
        if (!box.WholeGrid) { // the row of the static rack travel is the whole grid
            design.Data.RackTravel = 0;
        }
        RegionQuestion question = Around(design, box.Point, box.Half, 11);
        question.Box[0].Nodes = 3;
        question.WholeGrid = box.WholeGrid;
        question.Targets = {Held(design, box.Channel, -12.5, 12.5, box.Tolerance)};
        const BandCorner& band = question.Targets.front().Band.front();
        const RegionAnswer refined = Find(design, question);
        left += refined.Nodes.size() - refined.Solved;
        Suspension scratch;
        std::size_t held = 0;
        for (std::size_t n = 0; n < refined.Nodes.size(); ++n) {
            Design moved = design;
            moved.Points[box.Point] = {refined.Places[0][n % 3], refined.Places[1][n / 3 % 11],
                                       refined.Places[2][n / 33]};
            RegionVerdict expected = RegionVerdict::OutOfReach;
            if (Solve(scratch, moved, m_settings).Solved) {
                expected = RegionVerdict::Held;
                for (int k = 2; k <= scratch.NW + 1; ++k) {
                    const ChannelCells& cells = scratch.WheelStates(scratch.StaticRack, k).Channels;
                    const double value = *cells.Cell(box.Channel);
                    if (std::abs(*cells.Cell(chWheelTravel)) < 13 &&
                        (value < band.Low || value > band.High)) {
                        expected = RegionVerdict::MissesTarget;
                    }
                }
            }
            held += expected == RegionVerdict::Held ? 1 : 0;
            EXPECT_EQ(refined.Nodes[n].Verdict, expected) << n;
        }
        EXPECT_GT(held, 0U);
        EXPECT_LT(held, refined.Nodes.size());
    }
    EXPECT_GT(left, 0U);
}

TEST_F(RegionTest, ThreadsAndStopChangeNothingThatIsTold) {
    const Design design = DesignOf(LoadSample("formula-front-pushrod.WSP"));
    RegionQuestion question = Around(design, ptUWIF, 60, 7);
    question.Box[1].Nodes = 11;
    question.Targets = {Held(design, chRollCentreToGround, 0, 0, 10)};
    const RegionAnswer one = Find(design, question, {1});
    for (const unsigned threads : {2U, 7U}) {
        const RegionAnswer other = Find(design, question, {threads});
        EXPECT_TRUE(other.Nodes == one.Nodes);
        EXPECT_EQ(other.FirstFailure, one.FirstFailure);
        EXPECT_EQ(other.Solved, one.Solved);
    }
    std::stop_source stop;
    StudyWork work{2, stop.get_token()};
    double last = 0;
    work.Progress = [&](double share) {
        EXPECT_GE(share, last);
        last = share;
        if (share > 0.3) {
            stop.request_stop();
        }
    };
    const RegionAnswer stopped = Find(design, question, work);
    EXPECT_TRUE(stopped.Stopped);
    EXPECT_LT(stopped.Solved, one.Solved);
    for (std::size_t n = 0; n < one.Nodes.size(); ++n) {
        EXPECT_TRUE(stopped.Nodes[n] == one.Nodes[n] || !stopped.Nodes[n].Solved);
    }
}

TEST_F(RegionTest, HostileQuestionsAreToldAbout) {
    const Design design = DesignOf(LoadSample("formula-front-pushrod.WSP"));
    RegionQuestion outside = Around(design, ptTRI, 5, 11);
    outside.Box[1] = {5000, 6000, 2};
    const RegionAnswer none = Find(design, outside);
    EXPECT_EQ(none.Present.Verdict, RegionVerdict::Held);
    for (const RegionNode& node : none.Nodes) {
        EXPECT_EQ(node.Verdict, RegionVerdict::OutOfReach);
    }
    EXPECT_LT(none.Solved, none.Nodes.size());

    Design broken = design;
    broken.Points[ptTRI] = broken.Points[ptTRO];
    EXPECT_EQ(Find(broken, Around(design, ptTRI, 5, 5)).Present.Verdict, RegionVerdict::OutOfReach);

    const auto faultOf = [&](auto change) {
        RegionQuestion question = Around(design, ptTRI, 5, 5);
        change(question);
        return FailureOf([&] { (void)Find(design, question); }).Description();
    };
    EXPECT_THAT(faultOf([](RegionQuestion& q) { q.Point = ptDSO; }), HasSubstr("is not in play"));
    EXPECT_THAT(faultOf([](RegionQuestion& q) { q.Box[0].Low = std::nan(""); }),
                HasSubstr("numbers"));
    EXPECT_THAT(faultOf([](RegionQuestion& q) { q.Box[2].High = -1e9; }), HasSubstr("ends before"));
    EXPECT_THAT(faultOf([](RegionQuestion& q) { q.Box[1].Nodes = 0; }), HasSubstr("1 to 201"));
    EXPECT_THAT(
        faultOf([](RegionQuestion& q) { q.Box[0].Nodes = q.Box[1].Nodes = q.Box[2].Nodes = 201; }),
        HasSubstr("too many"));
    RegionQuestion beyond = Around(design, ptTRI, 5, 3);
    beyond.Targets = {PlainTarget(chCamberAngle, vvAlongWheelTravel, 0, 1, 400, 500)};
    EXPECT_THROW((void)Find(design, beyond), Failure);
}

} // namespace
} // namespace corvanta::test
