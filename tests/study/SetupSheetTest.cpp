#include "study/SetupSheet.h"

#include "model/Failure.h"
#include "solver/RideHeight.h"
#include "study/SetupTurns.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <stop_token>

namespace corvanta::test {
namespace {

class SetupSheetTest : public ::testing::Test {
  protected:
    const FundamentalUnits m_units = MetricUnits();
    const ChannelCatalogue m_channels = MetricChannels();
    const SolveSettings m_settings{m_units, m_channels};
    const Design m_pushrod = DesignOf(LoadSample("formula-front-pushrod.WSP"));

    [[nodiscard]] SetupSheet Sheet(const Design& design, const SetupQuestion& question,
                                   const StudyWork& work = {}) const {
        CSampleRunner runner(work);
        return MakeSetupSheet(runner, design, question, m_settings);
    }

    [[nodiscard]] TurnsAnswer Turns(const TurnsQuestion& question,
                                    const StudyWork& work = {}) const {
        CSampleRunner runner(work);
        return FindTurns(runner, m_pushrod, question, m_settings);
    }

    static Adjuster Link(const Design& design, CornerLink link) {
        const std::vector<Adjuster> all = AdjustersOf(design.Data);
        return *std::find_if(all.begin(), all.end(), [&](const Adjuster& adjuster) {
            return adjuster.Kind == AdjusterKind::LinkLength && adjuster.Link == link;
        });
    }

    /// Camber, toe and ride height wished for; all else free.
    [[nodiscard]] TurnsQuestion Question(std::vector<Adjuster> adjusters, double camber, double toe,
                                         double rideHeight) const {
        TurnsQuestion question;
        question.Sheet.Figures = SheetFiguresOf(m_pushrod.Data);
        question.Wishes.resize(question.Sheet.Figures.size());
        question.Wishes[0] = {false, camber, 0.01};
        question.Wishes[1] = {false, toe, 0.01};
        question.Wishes[3] = {false, rideHeight, 0.1};
        question.Ranges.resize(adjusters.size());
        question.Sheet.Adjusters = std::move(adjusters);
        return question;
    }
};

/// The classic grid of the same corner stands at the travel that the rod's new length gives.
TEST_F(SetupSheetTest, AStepOfTheRodGivesWhatTheGridHasAtThatTravel) {
    constexpr double Travel = 5;
    Suspension document = LoadSample("formula-front-pushrod.WSP");
    SetUpCorner(document);
    CalculateCorner(document);
    const WheelState& there =
        document.WheelStates(document.StaticRack, NearestWheelStep(document, Travel));
    const WheelState& still = document.WheelStates(document.StaticRack, document.StaticWheel);
    Suspension adjusted = document;
    std::string errorText;
    ASSERT_TRUE(AdjustRideHeight(adjusted, errorText, Travel, true));

    Adjuster rod = Link(m_pushrod, CornerLink::SpringRod);
    rod.Part = 1;
    rod.Pitch = Distance(adjusted.StaticPoints()[ptPRO], adjusted.StaticPoints()[ptPRI]) -
                Distance(m_pushrod.Points[ptPRO], m_pushrod.Points[ptPRI]);
    const bool shorter = rod.Pitch < 0;
    rod.Pitch = std::abs(rod.Pitch);
    SetupQuestion question{{rod}, SheetFiguresOf(m_pushrod.Data)};
    SetupQuestion raised = question;
    raised.RideHeight = Travel;
    const SetupSheet sheet = Sheet(m_pushrod, question);
    const SetupSheet stood = Sheet(m_pushrod, raised);
    const SheetStep& step = shorter ? sheet.Rows[0].Less : sheet.Rows[0].More;
    ASSERT_THAT(step.Fault, IsEmpty());
    for (std::size_t n = 0; n < question.Figures.size(); ++n) {
        const SheetFigure& figure = question.Figures[n];
        const int channel = figure.Of.Channel;
        if (figure.RideHeight) {
            EXPECT_NEAR(*step.Changes[n], -Travel, 1e-5);
        } else if (channel != chSpringVelocityRatio && channel != chWheelRateTotal &&
                   channel != chRollCentreToGround) { // the rocker stands elsewhere in the grid,
                                                      // and there the other wheel has moved too
            // Trail lies along the wheel, which a design of its own takes as straight ahead.
            const double near = channel == chCasterOffset ? 1e-3 : 2e-5;
            EXPECT_NEAR(*step.Changes[n], there.Channels[channel] - still.Channels[channel], near)
                << channel;
            EXPECT_NEAR(*stood.Base.Values[n], there.Channels[channel], near) << channel;
        }
    }
    const SheetTable table = TableOf(sheet, question, m_channels, m_units);
    ASSERT_EQ(table.Lines.size(), 3U);
    EXPECT_THAT(table.Lines[shorter ? 2 : 1].Texts[3], ::testing::StrEq("-5.00"));
    EXPECT_THAT(table.Lines[1].Step, HasSubstr("+1 turn, +"));
}

TEST_F(SetupSheetTest, AllAdjustersOfAllSamplesCanBeTurned) {
    for (const std::string& path : AllSamplePaths()) {
        const std::string name = path.substr(SamplePath("").size());
        SCOPED_TRACE(name);
        const Design design = DesignOf(LoadSample(name));
        const SetupQuestion question{AdjustersOf(design.Data), SheetFiguresOf(design.Data)};
        const SetupSheet sheet = Sheet(design, question);
        for (std::size_t n = 0; n < sheet.Rows.size(); ++n) {
            EXPECT_THAT(sheet.Rows[n].More.Fault + sheet.Rows[n].Less.Fault, IsEmpty())
                << question.Adjusters[n].Name;
        }
    }
}

TEST_F(SetupSheetTest, AStepThatCantBeMadeIsToldAndTheOthersStand) {
    SetupQuestion question{
        {Link(m_pushrod, CornerLink::TrackRod), Link(m_pushrod, CornerLink::UpperRear)},
        SheetFiguresOf(m_pushrod.Data)};
    question.Adjusters[0].Pitch = 700;
    const SetupSheet sheet = Sheet(m_pushrod, question);
    EXPECT_THAT(sheet.Rows[0].Less.Fault, HasSubstr("Trackrod can't be"));
    EXPECT_THAT(sheet.Rows[1].Less.Fault, IsEmpty());
    const SheetTable table = TableOf(sheet, question, m_channels, m_units);
    EXPECT_EQ(table.Lines[2].Fault, sheet.Rows[0].Less.Fault);
    EXPECT_THAT(table.Lines[2].Texts, ::testing::Each("-"));

    const auto faultOf = [&](auto change) {
        SetupQuestion changed = question;
        change(changed);
        return FailureOf([&] { (void)Sheet(m_pushrod, changed); }).Description();
    };
    EXPECT_THAT(faultOf([](SetupQuestion& q) { q.Adjusters.clear(); }), HasSubstr("adjuster"));
    EXPECT_THAT(faultOf([](SetupQuestion& q) { q.Figures.clear(); }), HasSubstr("figure"));
    EXPECT_THAT(faultOf([](SetupQuestion& q) { q.RideHeight = 900; }), HasSubstr("travel"));
    EXPECT_THAT(faultOf([](SetupQuestion& q) { q.Adjusters[0].Pitch = 0; }), HasSubstr("pitch"));
    EXPECT_THAT(faultOf([](SetupQuestion& q) { q.Adjusters[0].Link = CornerLink::BarDropLink; }),
                HasSubstr("does not have"));
}

TEST_F(SetupSheetTest, PlantedCountsAreFound) {
    const std::vector<Adjuster> adjusters{Link(m_pushrod, CornerLink::SpringRod),
                                          Link(m_pushrod, CornerLink::TrackRod),
                                          Link(m_pushrod, CornerLink::UpperFront)};
    for (const std::vector<int>& planted :
         {std::vector{3, -2, 1}, std::vector{-7, 5, -4}, std::vector{0, 0, 2}}) {
        TurnsQuestion question = Question(adjusters, 0, 0, 0);
        const CSetupBench bench(m_pushrod, question.Sheet, m_settings);
        Suspension scratch;
        const std::vector<double> counts(planted.begin(), planted.end());
        const SheetState base = bench.StateAt(std::vector<double>(3), scratch);
        const SheetState there = bench.StateAt(counts, scratch);
        for (const std::size_t n : {0U, 1U, 3U}) {
            question.Wishes[n].Change = *there.Values[n] - *base.Values[n];
        }
        const TurnsAnswer answer = Turns(question);
        EXPECT_EQ(answer.Counts, planted);
        EXPECT_TRUE(answer.Holds);
    }
}

TEST_F(SetupSheetTest, RideHeightByPushrodWithToeHeldByTheTrackRod) {
    TurnsQuestion question = Question(
        {Link(m_pushrod, CornerLink::SpringRod), Link(m_pushrod, CornerLink::TrackRod)}, 0, 0, 3);
    question.Wishes[0].Free = true;
    question.Wishes[1].Tolerance = 0.1;
    question.Wishes[3].Tolerance = 1;
    TurnsAnswer answer = Turns(question);
    EXPECT_NE(answer.Counts[0], 0);
    EXPECT_TRUE(answer.Holds) << *answer.LeftOver[1] << " deg, " << *answer.LeftOver[3] << " mm";
    EXPECT_FALSE(answer.LeftOver[0]);
    // Of all settings none holds with fewer steps.
    const CSetupBench bench(m_pushrod, question.Sheet, m_settings);
    Suspension scratch;
    int fewest = std::numeric_limits<int>::max();
    for (int rod = -6; rod <= 6; ++rod) {
        for (int track = -6; track <= 6; ++track) {
            const SheetState other = bench.StateAt(std::array{double(rod), double(track)}, scratch);
            if (other.Fault.empty() && std::abs(*other.Values[1] - *answer.Base.Values[1]) <= 0.1 &&
                std::abs(*other.Values[3] - *answer.Base.Values[3] - 3) <= 1) {
                fewest = std::min(fewest, std::abs(rod) + std::abs(track));
            }
        }
    }
    EXPECT_EQ(std::abs(answer.Counts[0]) + std::abs(answer.Counts[1]), fewest);

    // Out of its range it goes as far as it may, and says what is left.
    question.Ranges[0] = {0, 0};
    answer = Turns(question);
    EXPECT_EQ(answer.Counts[0], 0);
    EXPECT_FALSE(answer.Holds);
    EXPECT_LT(*answer.LeftOver[3], -0.5);
}

TEST_F(SetupSheetTest, ThreadsAndStopChangeNothingThatIsTold) {
    TurnsQuestion question = Question(AdjustersOf(m_pushrod.Data), -0.4, 0, -2);
    question.Ranges[0] = {0, 0};
    const TurnsAnswer one = Turns(question, {1});
    EXPECT_TRUE(one.Holds);
    for (const unsigned threads : {2U, 7U}) {
        const TurnsAnswer other = Turns(question, {threads});
        EXPECT_EQ(other.Counts, one.Counts);
        EXPECT_EQ(other.Reached.Values, one.Reached.Values);
        EXPECT_EQ(other.Solved, one.Solved);
    }
    const SetupSheet alone = Sheet(m_pushrod, question.Sheet, {1});
    const SetupSheet shared = Sheet(m_pushrod, question.Sheet, {2});
    for (std::size_t n = 0; n < alone.Rows.size(); ++n) {
        EXPECT_EQ(shared.Rows[n].More.Changes, alone.Rows[n].More.Changes);
        EXPECT_EQ(shared.Rows[n].Less.Changes, alone.Rows[n].Less.Changes);
    }
    std::stop_source stop;
    StudyWork work{2, stop.get_token()};
    work.Progress = [&](double share) {
        if (share > 0) {
            stop.request_stop();
        }
    };
    const TurnsAnswer stopped = Turns(question, work);
    EXPECT_TRUE(stopped.Stopped);
    EXPECT_LT(stopped.Solved, one.Solved);
    // Stopped before or after the base is solved: what is reached is the base or has its reason.
    std::size_t standing = 0;
    for (const int calls : {0, 1, 2, 5, 20}) {
        std::stop_source early;
        int left = calls;
        work.Stop = early.get_token();
        work.Progress = [&](double) {
            if (--left <= 0) {
                early.request_stop();
            }
        };
        if (calls == 0) {
            early.request_stop();
        }
        const TurnsAnswer answer = Turns(question, work);
        EXPECT_TRUE(answer.Stopped);
        EXPECT_THAT(answer.Counts, SizeIs(question.Ranges.size()));
        EXPECT_EQ(answer.Reached.Fault.empty(), !answer.Reached.Values.empty()) << calls;
        if (answer.Reached.Fault.empty()) {
            ++standing;
            EXPECT_EQ(answer.Reached.Corner.Points[ptWC].Y, m_pushrod.Points[ptWC].Y) << calls;
            EXPECT_EQ(answer.Reached.Values, answer.Base.Values);
        }
    }
    EXPECT_GT(standing, 0U);

    question.Wishes[1].Tolerance = 0;
    EXPECT_THAT(FailureOf([&] { (void)Turns(question); }).Description(), HasSubstr("tolerance"));
    question.Wishes[1].Tolerance = 1;
    question.Ranges[1] = {1, 2};
    EXPECT_THAT(FailureOf([&] { (void)Turns(question); }).Description(), HasSubstr("must hold 0"));
}

} // namespace
} // namespace corvanta::test
