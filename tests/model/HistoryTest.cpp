#include "model/History.h"
#include "tests/support/Corners.h"
#include "tests/support/Testing.h"

namespace corvanta::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

class HistoryTest : public testing::Test {
  protected:
    HistoryTest() { m_history.Begin("Open", At(0), true); }

    /// A design told apart by the height of its wheel.
    static Design At(double z) {
        Design design = DesignOf(DoubleWishboneCorner(smNone));
        design.Points[ptWC].Z = z;
        return design;
    }
    bool Add(const char* name, double z, milliseconds later = seconds(10)) {
        m_time += later;
        return m_history.Add(name, At(z), m_time);
    }
    [[nodiscard]] double Z() const { return m_history.CurrentDesign().Points[ptWC].Z; }
    [[nodiscard]] std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const HistoryStep& step : m_history.Steps()) {
            names.push_back(step.Name);
        }
        return names;
    }

    History m_history;
    History::Time m_time;
};

TEST_F(HistoryTest, GoesBackAndForthUntilAnotherChangeTakesThePlaceOfWhatWasUndone) {
    EXPECT_TRUE(m_history.IsClean() && !m_history.CanUndo() && !m_history.CanRedo());
    EXPECT_FALSE(Add("Nothing", 0)) << "the same design is no step";
    EXPECT_TRUE(Add("A", 1) && Add("B", 2) && Add("C", 3));
    EXPECT_FALSE(m_history.IsClean());
    m_history.Undo();
    m_history.Undo();
    EXPECT_EQ(Z(), 1);
    EXPECT_EQ(m_history.UndoName() + m_history.RedoName(), "AB");
    m_history.Undo();
    EXPECT_TRUE(m_history.IsClean()) << "undone as far as what was saved";
    EXPECT_EQ(m_history.UndoName(), "");
    m_history.GoTo(2);
    EXPECT_EQ(Z(), 2);
    m_history.MarkSaved();
    EXPECT_TRUE(m_history.IsClean());
    EXPECT_TRUE(Add("D", 4));
    EXPECT_THAT(Names(), ElementsAre("Open", "A", "B", "D"));
    EXPECT_FALSE(m_history.CanRedo());
    EXPECT_TRUE(Add("E", 2));
    EXPECT_TRUE(m_history.IsClean()) << "typed back to what was saved";
    m_history.Withdraw();
    EXPECT_EQ(Z(), 4);
    EXPECT_FALSE(m_history.IsClean() || m_history.CanRedo());
}

TEST_F(HistoryTest, QuickChangesOfOneNameAreOneStep) {
    Add("Z", 1);
    Add("Z", 2, milliseconds(900));
    Add("Z", 3, milliseconds(1000));
    EXPECT_THAT(Names(), ElementsAre("Open", "Z"));
    Add("Z", 4, milliseconds(1001));
    Add("X", 5, milliseconds(1));
    Add("Z", 6, milliseconds(1));
    m_history.MarkSaved();
    Add("Z", 7, milliseconds(1));
    EXPECT_THAT(Names(), ElementsAre("Open", "Z", "Z", "X", "Z", "Z"))
        << "later, of another name, and after a save";
    Add("Z", 6, milliseconds(1));
    EXPECT_THAT(Names(), ElementsAre("Open", "Z", "Z", "X", "Z")) << "back again is no step";
    EXPECT_TRUE(m_history.IsClean());
    m_history.Undo();
    Add("X", 8, milliseconds(1));
    EXPECT_THAT(Names(), ElementsAre("Open", "Z", "Z", "X", "X")) << "an undone step is over";
}

TEST_F(HistoryTest, WhatAHandMovesIsOneStepHoweverLongItTakes) {
    Add("Drag", 1);
    m_history.Hold();
    Add("Drag", 2, milliseconds(1));
    Add("Drag", 3, seconds(20));
    Add("Drag", 1, seconds(20));
    Add("Drag", 5, seconds(20));
    m_history.Release();
    Add("Drag", 6, milliseconds(1));
    EXPECT_THAT(Names(), ElementsAre("Open", "Drag", "Drag", "Drag"));
    m_history.Undo();
    EXPECT_EQ(Z(), 5);
    m_history.Hold();
    m_history.CallOff();
    EXPECT_EQ(Z(), 5) << "nothing had moved";
    m_history.Hold();
    Add("Drag", 7);
    m_history.CallOff();
    EXPECT_EQ(Z(), 5);
    m_history.Hold();
    Add("Drag", 8);
    Add("Drag", 5);
    m_history.Release();
    EXPECT_THAT(Names(), ElementsAre("Open", "Drag", "Drag", "Drag"))
        << "it ended where it began, and what was undone before can still be done again";
    EXPECT_EQ(m_history.Current(), 2U);
}

TEST_F(HistoryTest, KeepsToItsBoundsAndForgetsTheOldest) {
    for (int n = 1; n <= 2 * static_cast<int>(History::MostSteps); ++n) {
        Add("Step", n);
    }
    EXPECT_EQ(m_history.Steps().size(), History::MostSteps);
    EXPECT_EQ(Z(), 2 * static_cast<int>(History::MostSteps));
    m_history.GoTo(0);
    EXPECT_EQ(Z(), static_cast<int>(History::MostSteps) + 1);
    EXPECT_FALSE(m_history.IsClean()) << "what was saved is no step any more";
    Design wordy = At(-1);
    for (int n = 0; n < 40; ++n) {
        wordy.Data.Description.assign(std::size_t{1} << 20U, static_cast<char>('a' + n % 26));
        m_history.Add("Edit description", wordy, m_time += seconds(10));
    }
    EXPECT_LE(m_history.Steps().size(), 17U);
    m_history.Undo();
    EXPECT_NE(m_history.CurrentDesign(), wordy);
}

// Points out of play belong to no mechanism in force, so they make no difference; but a mechanism
// that is taken back finds them again.
TEST_F(HistoryTest, ADesignIsWhatADocumentKeeps) {
    Design design = At(0);
    const Design before = design;
    design.Points[ptPRO].X += 1;
    EXPECT_EQ(design, before);
    design.Data.SpringMechanism = smPushrodToUpright;
    EXPECT_NE(design, before);
    m_history.Add("Change type", design, m_time);
    m_history.Undo();
    m_history.Redo();
    EXPECT_EQ(m_history.CurrentDesign().Points[ptPRO].X, design.Points[ptPRO].X);
    EXPECT_LT(sizeof(Design), 3000U);
}

} // namespace
} // namespace corvanta::test
