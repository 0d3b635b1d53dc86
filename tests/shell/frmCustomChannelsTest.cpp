#include "shell/frmCustomChannels.h"

#include "tests/support/FakeShellHost.h"
#include "tests/support/TestDesk.h"
#include "tests/support/Testing.h"

namespace corvanta::test {
namespace {

class frmCustomChannelsTest : public testing::Test, protected TestDesk {
  protected:
    void Open(const std::vector<int>& channels) {
        m_program.CustomChannels.Clear();
        for (const int id : channels) {
            m_program.CustomChannels.Add(id);
        }
        m_form.Open();
    }

    /// Changes the tick of a channel's row.
    void Tick(int id, bool checked) {
        const int row = id < chLinkLoads ? id - 1 : id - 2;
        m_form.tvwChannels.Rows.at(static_cast<std::size_t>(row)).Checked = checked;
        m_form.tvwChannels_NodeCheck(row);
    }

    /// The ids in the list of selected channels.
    [[nodiscard]] std::vector<int> Selected() const {
        std::vector<int> ids;
        for (const ListEntry& entry : m_form.lstSelected.Entries()) {
            EXPECT_EQ(entry.Text, m_program.Channels[entry.ItemData].Title);
            ids.push_back(entry.ItemData);
        }
        return ids;
    }

    /// The ids of the ticked rows.
    [[nodiscard]] std::vector<int> Ticked() const {
        std::vector<int> ids;
        for (const CheckListRow& row : m_form.tvwChannels.Rows) {
            if (row.Checked) {
                ids.push_back(row.Tag);
            }
        }
        return ids;
    }

    FakeShellHost m_main;
    frmCustomChannels m_form{m_desk, m_main};
};

TEST_F(frmCustomChannelsTest, OffersEveryChannelButTheLinkLoads) {
    m_program.Channels.SetFrontRearTitles(false);
    Open({chSteerAngle, chAntiDivePercent});
    EXPECT_TRUE(m_form.IsOpen);
    EXPECT_EQ(m_form.Caption, "Define Custom Table");
    int id = 0;
    for (const CheckListRow& row : m_form.tvwChannels.Rows) {
        id += id + 1 == chLinkLoads ? 2 : 1;
        EXPECT_EQ(row.Tag, id);
        EXPECT_EQ(row.Text, m_program.Channels[id].Title);
    }
    EXPECT_EQ(id, ChannelCount);
    EXPECT_THAT(Ticked(), ElementsAre(chAntiDivePercent, chSteerAngle));
    EXPECT_THAT(Selected(), ElementsAre(chSteerAngle, chAntiDivePercent));
    EXPECT_EQ(m_form.lstSelected.Entry(1).Text, "Anti-Rise %");

    m_form.cmdHelp_Click();
    EXPECT_THAT(m_windowSystem.Topics, ElementsAre(233));
}

TEST_F(frmCustomChannelsTest, ATickAppendsAndItsLossRemoves) {
    Open({40, 3, 12});
    m_form.lstSelected.Select(2);
    Tick(27, true);
    EXPECT_THAT(Selected(), ElementsAre(40, 3, 12, 27));
    EXPECT_EQ(m_form.lstSelected.Index(), 2);
    Tick(40, false);
    EXPECT_THAT(Selected(), ElementsAre(3, 12, 27));
    EXPECT_EQ(m_form.lstSelected.Text(), m_program.Channels[12].Title) << "stays selected";
    Tick(12, false);
    EXPECT_EQ(m_form.lstSelected.Index(), ListControl::NoSelection);
    Tick(3, false);
    Tick(3, true);
    EXPECT_THAT(Selected(), ElementsAre(27, 3)) << "back at the end";
    EXPECT_THAT(m_program.CustomChannels.Ids(), ElementsAre(40, 3, 12)) << "not before OK";
}

TEST_F(frmCustomChannelsTest, MovesTheSelectedChannel) {
    const auto move = [&](int selected, bool up) {
        Open({1, 2, 3, 4});
        m_form.lstSelected.Select(selected);
        up ? m_form.cmdMoveUp_Click() : m_form.cmdMoveDown_Click();
        return std::pair(Selected(), m_form.lstSelected.Index());
    };
    using Ids = std::vector<int>;
    EXPECT_EQ(move(2, true), std::pair(Ids({1, 3, 2, 4}), 1));
    EXPECT_EQ(move(1, false), std::pair(Ids({1, 3, 2, 4}), 2));
    for (const bool up : {true, false}) { // at the end, and with nothing selected
        EXPECT_EQ(move(up ? 0 : 3, up), std::pair(Ids({1, 2, 3, 4}), up ? 0 : 3));
        EXPECT_EQ(move(-1, up), std::pair(Ids({1, 2, 3, 4}), -1));
    }
    Open({1, 2, 3, 4});
    m_form.lstSelected.Select(0);
    m_form.cmdMoveDown_Click();
    m_form.cmdMoveDown_Click();
    EXPECT_THAT(Selected(), ElementsAre(2, 3, 1, 4)) << "the same channel moves on";
}

TEST_F(frmCustomChannelsTest, OKTakesTheListOverInItsOrder) {
    Open({5, 6});
    Tick(1, true);
    m_form.lstSelected.Select(2);
    m_form.cmdMoveUp_Click();
    m_main.OnRefresh = [&] {
        EXPECT_FALSE(m_form.IsOpen);
        EXPECT_THAT(m_program.CustomChannels.Ids(), ElementsAre(5, 1, 6));
    };
    m_form.cmdOk_Click();
    EXPECT_THAT(m_main.Calls, ElementsAre("RefreshGUI(false)"));
    EXPECT_FALSE(m_form.IsOpen || m_program.Modified);
    EXPECT_THAT(m_files.Changes(), IsEmpty()) << "the list file waits for the end of the program";

    m_main.OnRefresh = [] {};
    Open({5});
    Tick(5, false);
    m_form.cmdOk_Click();
    EXPECT_THAT(m_program.CustomChannels.Ids(), IsEmpty());
}

TEST_F(frmCustomChannelsTest, ClosingByAnyWayKeepsThePlaceAndShowsTheViewAnew) {
    m_store.Write("frmCustomChannels", "Left", "150");
    m_store.Write("frmCustomChannels", "Height", "9000");
    Open({5, 6});
    EXPECT_EQ(m_form.Frame.Placement.Left, 150);
    EXPECT_EQ(m_form.Frame.Placement.Height, 9000);
    m_form.Frame.Placement = {300, 450, 8000, 9100};
    Tick(5, false);
    m_form.cmdCancel_Click();
    EXPECT_THAT(m_program.CustomChannels.Ids(), ElementsAre(5, 6));
    EXPECT_EQ(m_store.Read("frmCustomChannels", "Left", ""), "300");
    EXPECT_EQ(m_store.Read("frmCustomChannels", "Height", ""), "9100");
    EXPECT_THAT(m_main.Calls, ElementsAre("RefreshGUI(false)"));
    m_form.Close();
    EXPECT_THAT(m_main.Calls, ElementsAre("RefreshGUI(false)")) << "closed already";
}

TEST_F(frmCustomChannelsTest, AFailureOnOpeningIsToldAndLeavesTheDialogOpen) {
    Open({5, 52, 6});
    EXPECT_THAT(m_box.Prompts(),
                ElementsAre("There was an error while loading frmCustomChannels. Error was: "
                            "Subscript out of range"));
    EXPECT_EQ(m_box.Shown.at(0).Style, msCritical);
    EXPECT_TRUE(m_form.IsOpen);
    EXPECT_THAT(Selected(), ElementsAre(5));
    EXPECT_THAT(Ticked(), ElementsAre(5, 6));
}

} // namespace
} // namespace corvanta::test
