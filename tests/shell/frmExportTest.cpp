#include "shell/frmExport.h"

#include "tests/support/FakeShellHost.h"
#include "tests/support/TestDesk.h"
#include "tests/support/Testing.h"

namespace corvanta::test {
namespace {

const std::string Output = "/out/results.txt";

class frmExportTest : public testing::Test, protected TestDesk {
  protected:
    frmExportTest() {
        m_program.Document = DoubleWishboneCorner();
        CalculateCorner(m_program.Document);
        m_program.Settings = {vwAntis, 0, vvAlongWheelTravel, 3, 3};
        m_program.Options.ExportFilePath = "/cars/";
        m_files.PutFolder("/out");
    }

    void Choose(std::size_t index) {
        for (std::size_t n = 0; n < m_form.optExport.size(); ++n) {
            m_form.optExport[n].Selected = n == index;
        }
        m_form.optExport_Click();
    }

    /// The options as a row of 0 and 1.
    [[nodiscard]] std::string Chosen() const {
        std::string text;
        for (const OptionButton& option : m_form.optExport) {
            text += option.Selected ? "1" : "0";
        }
        return text;
    }

    FakeShellHost m_main;
    frmExport m_form{m_desk, m_main};
};

TEST_F(frmExportTest, ShowsTheChoicesOfTheLastTime) {
    m_program.ExportViews.Set(2, true);
    m_program.ExportViews.Set(12, true);
    m_program.Options.ExportHeaderOn = true;
    m_form.Open();
    EXPECT_TRUE(m_form.IsOpen);
    EXPECT_EQ(m_form.Caption, "Export Results");
    EXPECT_TRUE(m_form.chkHeader.Checked);
    ASSERT_EQ(m_form.tvwViews.Rows.size(), 12U);
    for (int view = 1; view <= SelectableViewCount; ++view) {
        EXPECT_EQ(m_form.tvwViews.Rows[static_cast<std::size_t>(view) - 1],
                  (CheckListRow{std::string(ViewName(view)), view, view == 2 || view == 12}));
    }
    m_form.cmdHelp_Click();
    EXPECT_THAT(m_windowSystem.Topics, ElementsAre(50));
}

TEST_F(frmExportTest, TheViewsTakeInputOnlyWhileTheyAreExported) {
    for (const std::int32_t type : {1, 2, 3, 0, 6}) {
        m_program.Options.ExportType = type;
        m_form.Open();
        EXPECT_EQ(Chosen(), type == 2 ? "010" : type == 3 ? "001" : "100") << type;
        EXPECT_EQ(m_form.tvwViews.Enabled, type == 3) << type;
        EXPECT_TRUE(m_form.optExport[1].Enabled);
    }
    for (const std::size_t index : {2U, 0U, 2U, 1U}) {
        Choose(index);
        EXPECT_EQ(m_form.tvwViews.Enabled, index == 2);
    }
    m_program.Settings.View = vw3d; // a drawing has no text
    m_program.Options.ExportType = 2;
    m_form.Open();
    EXPECT_EQ(Chosen(), "100");
    EXPECT_FALSE(m_form.optExport[1].Enabled);
}

TEST_F(frmExportTest, ExportKeepsTheChoicesAsksAndWrites) {
    m_form.Open();
    m_form.chkHeader.Checked = true;
    m_form.tvwViews.Rows[4].Checked = true;
    m_main.Names = {{Output, "results.txt", "txt", 1}};
    m_main.OnAsk = [&] {
        EXPECT_TRUE(m_program.Options.ExportHeaderOn && m_program.ExportViews[5]);
        EXPECT_EQ(m_program.Options.ExportType, 1);
        EXPECT_EQ(m_windowSystem.Current(), HourglassCursor);
    };
    m_form.cmdExport_Click();
    EXPECT_THAT(m_main.Asked, ElementsAre(AskedName{FileNameMode::SaveAs, "*.txt|*.txt", "/cars/",
                                                    "", "txt", false}));
    EXPECT_THAT(m_files.Bytes(Output).value_or("no file"), StartsWith("CREATED BY:\tCorvanta v"));
    EXPECT_EQ(m_program.Options.ExportFilePath, "/out/");
    EXPECT_FALSE(m_form.IsOpen);
    EXPECT_EQ(m_windowSystem.Current(), DefaultCursor);
    EXPECT_EQ(m_store.Read("frmExport", "Width", ""), "0") << "a window of fixed size";
    EXPECT_THAT(m_box.Prompts(), IsEmpty());
}

TEST_F(frmExportTest, WritesWhatTheOptionSays) {
    const std::vector<std::vector<std::string>> expected{
        {"All channels"}, {"Anti-Dive, -Squat & -Roll"}, {"Lateral Geometry", "Link Lengths"}};
    for (std::size_t option = 0; option < expected.size(); ++option) {
        m_form.Open();
        Choose(option);
        m_form.tvwViews.Rows[1].Checked = m_form.tvwViews.Rows[9].Checked = true;
        m_main.Names = {{Output, "results.txt", "txt", 1}};
        m_form.cmdExport_Click();
        const std::string text = m_files.Bytes(Output).value_or("no file");
        std::vector<std::string> titles;
        for (std::size_t at = text.find("TITLE:\t"); at != std::string::npos;
             at = text.find("TITLE:\t", at + 1)) {
            titles.push_back(text.substr(at + 7, text.find("\r\n", at) - at - 7));
        }
        EXPECT_EQ(titles, expected[option]);
        EXPECT_EQ(m_program.Options.ExportType, static_cast<std::int32_t>(option) + 1);
    }
}

} // namespace
} // namespace corvanta::test
