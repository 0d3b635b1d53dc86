#include "shell/frmOptions.h"

#include "tests/support/FakeShellHost.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/TestDesk.h"
#include "tests/support/Testing.h"

namespace corvanta::test {
namespace {

class frmOptionsTest : public testing::Test, protected TestDesk {
  protected:
    frmOptionsTest() {
        m_program.Document = LoadSample("touring-front-wishbone.WSP");
        m_program.Document.ResultsValid = true;
    }

    /// Labels of displacement, force, mass and rate in force.
    [[nodiscard]] std::string Labels() const {
        const FundamentalUnits& units = m_program.Units;
        return units[ucDisplacement].Label + " " + units[ucForce].Label + " " +
               units[ucMass].Label + " " + units[ucRate].Label;
    }

    static void Choose(OptionButton& chosen, std::initializer_list<OptionButton*> others) {
        chosen.Selected = true;
        for (OptionButton* other : others) {
            other->Selected = false;
        }
    }

    FakeShellHost m_main;
    frmOptions m_form{m_desk, m_main};
};

TEST_F(frmOptionsTest, ShowsTheUnitsInForce) {
    m_program.Units[ucForce].Label = "lbs";
    m_program.Units[ucRate].Label = "kg/mm";
    m_form.Open();
    EXPECT_TRUE(m_form.IsOpen);
    EXPECT_EQ(m_form.Caption, "Options");
    EXPECT_TRUE(m_form.optMillimetres.Selected && m_form.optPounds.Selected &&
                m_form.optKilogramsPerMillimetre.Selected);
    EXPECT_FALSE(m_form.optInches.Selected || m_form.optKilograms.Selected ||
                 m_form.optNewtonsPerMillimetre.Selected || m_form.optPoundsPerInch.Selected);
    m_form.cmdHelp_Click();
    EXPECT_THAT(m_windowSystem.Topics, ElementsAre(htOptions));
}

TEST_F(frmOptionsTest, OKPutsTheUnitsInForceAndCalculates) {
    m_form.Open();
    Choose(m_form.optInches, {&m_form.optMillimetres});
    Choose(m_form.optPounds, {&m_form.optKilograms});
    Choose(m_form.optPoundsPerInch,
           {&m_form.optNewtonsPerMillimetre, &m_form.optKilogramsPerMillimetre});
    m_program.Document.Data.CGX = -1e6; // a rear corner, to be titled as such
    m_main.OnRefresh = [&] {
        EXPECT_FALSE(m_program.Document.ResultsValid);
        EXPECT_EQ(Labels(), "in lbs lbs lb/in");
        EXPECT_EQ(m_program.Channels[chWheelTravel].UnitLabel, "in");
        EXPECT_EQ(m_program.Channels[chAntiDivePercent].Title, "Anti-Rise %");
        EXPECT_TRUE(m_form.IsOpen);
    };
    m_form.cmdOK_Click();
    EXPECT_THAT(m_main.Calls, ElementsAre("RefreshGUI(false)", "ResetEditDialog"));
    EXPECT_FALSE(m_form.IsOpen);
    EXPECT_FALSE(m_program.Modified);
    EXPECT_EQ(m_store.Read("frmOptions", "Width", ""), "0") << "a window of fixed size";
    EXPECT_THAT(m_box.Prompts(), IsEmpty());
}

TEST_F(frmOptionsTest, NewtonsHaveNoButtonAndStayUnlessOneIsChosen) {
    m_form.Open();
    EXPECT_FALSE(m_form.optKilograms.Selected || m_form.optPounds.Selected);
    m_form.cmdOK_Click();
    EXPECT_EQ(Labels(), "mm N kg N/mm");
    EXPECT_FALSE(m_program.Document.ResultsValid) << "even with nothing changed";
}

TEST_F(frmOptionsTest, AFailureIsToldAndTheDialogStays) {
    m_program.Document.Data.WheelTravelStepSize = 0;
    m_form.Open();
    m_form.cmdOK_Click();
    EXPECT_THAT(m_box.Prompts(), ElementsAre("There was an error while changing the options.\r"
                                             "Error was: Division by zero"));
    EXPECT_TRUE(m_form.IsOpen);
    EXPECT_FALSE(m_program.Document.ResultsValid) << "they hold the former units";
}

} // namespace
} // namespace corvanta::test
