#include "shell/frmTarget.h"

#include "tests/support/MainFormTest.h"
#include "tests/support/Testing.h"

#include <optional>

namespace corvanta::test {
namespace {

class frmTargetTest : public MainFormTest {
  protected:
    frmTargetTest() { Open(SampleBytes()); }

    frmTarget& OpenDialog(int channel = chCamberAngle, std::int32_t variable = vvAlongWheelTravel) {
        m_main.EditTarget(channel, variable);
        return *m_main.TargetDialog;
    }

    static void Type(NumberBox& box, const std::string& text) { box.Text = text; }

    void SetTargets(const std::vector<Target>& targets) {
        StudyData study = m_current.Study();
        study.Targets = targets;
        m_current.ChangeStudy(study);
    }

    [[nodiscard]] const std::vector<Target>& Targets() const { return m_current.Study().Targets; }
};

TEST_F(frmTargetTest, BeginsWithTheCurveAndStoresWhatIsTyped) {
    frmTarget& form = OpenDialog();
    const double camber = m_document.WheelStates(m_document.StaticRack, m_document.StaticWheel)
                              .Channels[chCamberAngle];
    EXPECT_EQ(form.txtValue.Text, FormatChannelValue(m_program.Units, camber, ucAngle));
    EXPECT_EQ(form.txtFrom.Text,
              FormatChannelValue(m_program.Units, -m_document.Data.Droop, ucDisplacement));
    EXPECT_EQ(form.txtTo.Text,
              FormatChannelValue(m_program.Units, m_document.Data.Bump, ucDisplacement));
    EXPECT_EQ(form.txtWeight.Text, "1");
    EXPECT_FALSE(form.cmdRemove.Enabled);
    form.cmdOK_Click();
    ASSERT_THAT(Targets(), SizeIs(1));
    EXPECT_GT(Targets()[0].Band[0].High, Targets()[0].Band[0].Low);

    Type(OpenDialog().txtWeight, "2");
    m_main.TargetDialog->cmdCancel_Click();
    EXPECT_EQ(Targets()[0].Weight, 1);

    m_program.Units[ucDisplacement].Label = "in";
    m_program.Channels.ChannelsSetup(m_program.Units);
    frmTarget& inches = OpenDialog(chHalfTrack, vvAlongRackTravel);
    Type(inches.txtValue, "20+10");
    Type(inches.txtTolerance, "0.1 in");
    Type(inches.txtFrom, "0.5");
    Type(inches.txtTo, "-0.5");
    Type(inches.txtWeight, "2.5");
    inches.cmdOK_Click();
    EXPECT_THAT(Prompts(), IsEmpty());
    EXPECT_FALSE(inches.IsOpen);
    ASSERT_THAT(Targets(), SizeIs(2));
    const Target& target = Targets()[1];
    EXPECT_EQ(target.Channel, chHalfTrack);
    EXPECT_EQ(target.Variable, vvAlongRackTravel);
    EXPECT_EQ(target.Weight, 2.5);
    ASSERT_THAT(target.Band, SizeIs(2));
    EXPECT_NEAR(target.Band[0].Travel, -12.7, 1e-5);
    EXPECT_NEAR(target.Band[1].Travel, 12.7, 1e-5);
    EXPECT_NEAR(target.Band[1].Low, 759.46, 1e-4);
    EXPECT_NEAR(target.Band[1].High, 764.54, 1e-4);

    OpenDialog(chCamberAngle).cmdRemove_Click();
    ASSERT_THAT(Targets(), SizeIs(1));
    EXPECT_EQ(Targets()[0].Channel, chHalfTrack);
}

TEST_F(frmTargetTest, ABandOfManyCornersAndEveryDigitStayUnlessReplaced) {
    const Target band{
        chCamberAngle, vvAlongWheelTravel, {{-20, -1.00001, 0}, {0, -0.5, 0.5}, {20, 0, 1}}, 1};
    const Target plain{chSteerAngle, vvAlongWheelTravel, {{-1.23456789, 0.1, 0.3}}, 1.0 / 3};
    SetTargets({band, plain});
    OpenDialog(chSteerAngle).cmdOK_Click();
    frmTarget& form = OpenDialog();
    EXPECT_THAT(form.labBand.Caption, HasSubstr("3 corners"));
    EXPECT_TRUE(form.labBand.Visible && form.txtWeight.Enabled && !form.txtValue.Enabled);
    form.cmdOK_Click();
    EXPECT_THAT(Targets(), ElementsAre(band, plain));

    frmTarget& replaced = OpenDialog();
    replaced.chkReplace.Checked = true;
    replaced.chkReplace_Click();
    EXPECT_TRUE(replaced.txtValue.Enabled);
    for (const auto& [box, text] : {std::pair{&replaced.txtTolerance, ""},
                                    {&replaced.txtTolerance, "wide"},
                                    {&replaced.txtWeight, "0"},
                                    {&replaced.txtTo, "1/0"}}) {
        SCOPED_TRACE(text);
        const std::string stood = box->Text;
        box->Text = text;
        replaced.cmdOK_Click();
        EXPECT_TRUE(replaced.IsOpen && box->Fault);
        EXPECT_EQ(replaced.Focus, box);
        EXPECT_THAT(Prompts(), SizeIs(1));
        box->Text = stood;
        replaced.NumberBox_Changed(*box);
        EXPECT_FALSE(box->Fault);
    }
    EXPECT_THAT(Targets(), ElementsAre(band, plain));
    Type(replaced.txtValue, "-1");
    Type(replaced.txtTolerance, "0.25");
    replaced.cmdOK_Click();
    EXPECT_THAT(Targets()[0].Band,
                ElementsAre(BandCorner{-20, -1.25, -0.75}, BandCorner{20, -1.25, -0.75}));
}

} // namespace
} // namespace corvanta::test
