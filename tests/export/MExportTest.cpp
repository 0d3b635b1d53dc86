#include "export/MExport.h"

#include "tests/support/MainFormTest.h"
#include "tests/support/Testing.h"

namespace corvanta::test {
namespace {

const std::string Output = "/out/results.txt";
const std::string Failed = "There was an error while exporting. \rError was: ";

/// The window with a solved corner, whose wheel stands two steps of 5 mm above static and whose
/// rack one step of 15 mm beside it.
class MExportTest : public MainFormTest {
  protected:
    MExportTest() {
        m_files.PutFolder("/out");
        OpenOffStatic("touring-front-wishbone.WSP");
    }

    /// Exports and returns the file.
    std::string Export(std::int32_t type, const BatchExport* batch = nullptr) {
        ExportResults(m_place, type, Output, batch);
        return m_files.Bytes(Output).value_or("no file");
    }
    std::string ExportTable(std::int32_t table, std::int32_t variable, bool header = false) {
        const BatchExport batch{variable, table, header};
        return Export(etCurrentView, &batch);
    }

    ExportPlace m_place{m_program, m_main, m_files, m_messages, m_process};
};

TEST_F(MExportTest, TheCurrentViewGoesOutAsTheWindowShowsIt) {
    m_program.CustomChannels.Add(chCamberAngle);
    for (const std::int32_t variable : {vvAlongRackTravel, vvAlongWheelTravel}) {
        m_settings.ViewVariable = variable;
        for (const std::int32_t view : {1, 2, 3, 4, 5, 6, 7, 8, 10, 12}) {
            SCOPED_TRACE(view);
            const std::string grid = Show(view);
            ASSERT_GT(grid.size(), 50U);
            const std::string text = Export(etCurrentView);
            EXPECT_EQ(text, ExportTitleAdd(m_program, grid, view, 0, variable) + "\r\n\r\n");
            EXPECT_EQ(m_main.Grid().Text(), grid);
        }
    }
    m_program.Options.ExportHeaderOn = true;
    EXPECT_THAT(Export(etAllChannels), StartsWith("CREATED BY:\tCorvanta v5.4.5\r\n"));
}

TEST_F(MExportTest, APlotGoesOutAsATableAndADrawingNotAtAll) {
    Show(vwPlot, chSteerAngle);
    const std::string plot = Export(etCurrentView);
    EXPECT_THAT(plot, StartsWith("TITLE:\tSteer Angle v. Wheel travel from static\r\n"
                                 "Values at rack travel from static = 15 mm\r\n"
                                 "Wheel Travel\tSteer Angle\r\nmm\tdeg\r\n50.00\t"));
    EXPECT_EQ(std::count(plot.begin(), plot.end(), '\n'), 2 + 2 + 19 + 2);
    Show(vw3d);
    EXPECT_EQ(Export(etCurrentView), "");
    m_program.Options.ExportHeaderOn = true;
    EXPECT_THAT(Export(etCurrentView), EndsWith("13:05:09\r\n\r\n"));
}

TEST_F(MExportTest, AFailureLeavesTheOldFileAndTheViewAsItStood) {
    m_files.Put(Output, "old");
    const std::string shown = Show(vwLateralGeometry);
    m_files.FailOnChange(1);
    EXPECT_EQ(Export(etCurrentView), "old");
    m_program.ExportViews.Set(vwAntis, true);
    m_program.ExportViews.Set(vwCustomTable, true);
    m_program.CustomChannels.Add(52);
    EXPECT_EQ(Export(etSelectedViews), "old");
    EXPECT_EQ(m_settings.View, vwLateralGeometry);
    EXPECT_EQ(m_main.Grid().Text(), shown);
    m_settings.View = vwPlot;
    EXPECT_EQ(Export(etCurrentView), "old") << "channel 0";
    m_program.Units[ucAngle].Factor = 0;
    EXPECT_EQ(Export(etAllChannels), "old");
    for (const std::int32_t table : {-1, 0, 13, 14, 15, 17, 2147483647}) {
        EXPECT_EQ(ExportTable(table, vvAlongRackTravel), "old") << table;
    }
    std::vector<std::string> prompts = m_box.Prompts();
    ASSERT_EQ(prompts.size(), 11U);
    EXPECT_EQ(m_box.Shown.front().Style, msExclamation);
    EXPECT_EQ(prompts[0], Failed + "No space left on device");
    EXPECT_EQ(prompts[1], Failed + "Subscript out of range: there is no channel 52");
    EXPECT_EQ(prompts[2], Failed + "Subscript out of range: there is no channel 0");
    EXPECT_EQ(prompts[3], Failed + "There was a problem converting units.");
    EXPECT_EQ(prompts[4], Failed + "Invalid export table");
    EXPECT_EQ(prompts[10], Failed + "Invalid export table");
    EXPECT_TRUE(m_program.Options.ExportFilePath.empty());
    EXPECT_THAT(m_files.Changes(), ElementsAre("folder /recovery/", "write " + Output))
        << "nothing else was tried";
}

} // namespace
} // namespace corvanta::test
