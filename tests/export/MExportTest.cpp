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

TEST_F(MExportTest, TitlesOfEveryView) {
    m_document.Data.WheelTravelStepSize = 6.25;
    const std::string wheel = "Values at wheel travel from static = 12.5 mm\r\n";
    const std::string rack = "Values at rack travel from static = 15 mm\r\n";
    const auto titles = [&](std::int32_t view, std::int32_t argument = 0) {
        return ExportTitleAdd(m_program, "1\r\n", view, argument, vvAlongRackTravel) +
               ExportTitleAdd(m_program, "2\r\n", view, argument, vvAlongWheelTravel);
    };
    const auto atPosition = [&](std::string_view name) {
        const std::string title = "TITLE:\t" + std::string(name) + "\r\n";
        return title + wheel + "1\r\n" + title + rack + "2\r\n";
    };
    for (std::int32_t view = vwAntis; view <= vwCustomTable; ++view) {
        EXPECT_EQ(titles(view), atPosition(ViewName(view)));
    }
    EXPECT_EQ(titles(vwAllChannels), atPosition("All channels"));
    EXPECT_EQ(titles(vwPlot, 37),
              "TITLE:\tSteer Angle - Bump  v. Rack travel from static\r\n" + wheel + "1\r\n" +
                  "TITLE:\tSteer Angle - Bump  v. Wheel travel from static\r\n" + rack + "2\r\n");
    const std::string both = "TITLE:\tBump & Droop Coordinates\r\n" + wheel + rack;
    EXPECT_EQ(titles(vwCoordinates), both + "1\r\n" + both + "2\r\n");
    const auto alone = [](const std::string& title) {
        return "TITLE:\t" + title + "\r\n1\r\nTITLE:\t" + title + "\r\n2\r\n";
    };
    EXPECT_EQ(titles(vwLinkLoads, 1), alone("Link Loads - Upper Wishbone Loads"));
    EXPECT_EQ(titles(vwLinkLoads, 2), alone("Link Loads - Lower Wishbone Loads"));
    EXPECT_EQ(titles(vwLinkLoads, 3), alone("Link Loads - Spring & Track Rod Loads"));
    EXPECT_EQ(titles(vwLinkLengths), alone("Link Lengths"));
    EXPECT_EQ(titles(vwDynamicsReport), alone("Dynamics Report"));
    EXPECT_EQ(titles(vwQuadraticCoefficients), alone("Quadratic Coefficients"));

    // Droop is negative; the unit follows the user's, the number stays in millimetres.
    m_settings.ViewWheel = m_document.StaticWheel + 1;
    m_program.Units[ucDisplacement].Label = "in";
    m_program.Units.NumberSeparators.Decimal = ",";
    EXPECT_THAT(titles(vwAntis), HasSubstr("wheel travel from static = -6,25 in\r\n"));
}

TEST_F(MExportTest, ABatchTableStandsAtTheStaticPosition) {
    const std::string table =
        "TITLE:\tLateral Geometry\r\nValues at rack travel from static = 0 mm\r\n"
        "Wheel Travel\tCamber Angle\tHalf Track\tKingpin Offset\tKingpin Inclination\t"
        "Roll Centre to Origin\tRoll Centre to Ground\r\nmm\tdeg\tmm\tmm\tdeg\tmm\tmm\r\n"
        "50.00\t";
    EXPECT_THAT(ExportTable(vwLateralGeometry, vvAlongWheelTravel), StartsWith(table));
    EXPECT_THAT(ExportTable(vwLateralGeometry, vvAlongWheelTravel, true),
                StartsWith("CREATED BY:\tCorvanta v5.4.5\r\nFILEPATH:\t/cars/front.WSP\r\n"
                           "TIMESTAMP:\t07/21/24 13:05:09\r\n\r\n" +
                           table));
    // Along the rack at the static wheel position, with its 9 steps of 15 mm.
    const std::string rack = ExportTable(vwAllChannels, vvAlongRackTravel);
    EXPECT_THAT(rack, StartsWith("TITLE:\tAll channels\r\n"
                                 "Values at wheel travel from static = 10 mm\r\nAckerman %\t"))
        << "a table built in memory leaves the window's position";
    EXPECT_EQ(std::count(rack.begin(), rack.end(), '\n'), 2 + 2 + 9 + 2);
    EXPECT_EQ(m_program.Options.ExportFilePath, "/out/");
    EXPECT_TRUE(m_box.Shown.empty());
}

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

TEST_F(MExportTest, LinkLoadsAlwaysGoOutAsThreeTablesAtTheStaticRackStep) {
    Suspension& document = m_document;
    for (int r = 2; r <= document.NR + 1; ++r) {
        for (int link = 1; link <= 6; ++link) {
            document.WheelStates(r, 2).LinkLoads.Set(link, 1, r + link / 10.0);
        }
    }
    m_settings.ViewRack = document.StaticRack;
    std::string expected;
    for (std::int32_t subView = 1; subView <= 3; ++subView) {
        expected += ExportTitleAdd(m_program, Show(vwLinkLoads, subView), vwLinkLoads, subView, 1) +
                    "\r\n\r\n";
    }
    m_settings.ViewRack = document.StaticRack + 1;
    const std::string shown = Show(vwLinkLoads, 2);
    EXPECT_EQ(Export(etCurrentView), expected);
    EXPECT_EQ(ExportTable(vwLinkLoads, vvAlongWheelTravel), expected);

    EXPECT_EQ(Export(etSelectedViews), "") << "no view is ticked";
    m_program.ExportViews.Set(vwLinkLoads, true);
    m_program.ExportViews.Set(vwLinkLengths, true);
    m_program.ExportViews.Set(vwAntis, true);
    const std::string text = Export(etSelectedViews);
    const std::size_t loads = text.find("TITLE:\tLink Loads - Upper");
    EXPECT_THAT(text, StartsWith("TITLE:\tAnti-Dive, -Squat & -Roll\r\n"
                                 "Values at rack travel from static = 15 mm\r\nWheel Travel\t"));
    EXPECT_EQ(text.substr(loads, expected.size()), expected);
    EXPECT_THAT(text.substr(loads + expected.size()),
                StartsWith("TITLE:\tLink Lengths\r\nLink\tLength\r\n\tmm\r\nTyre Radius\t"));

    // The window shows again what it showed, its sub-view included.
    EXPECT_EQ(m_settings.View, vwLinkLoads);
    EXPECT_EQ(m_settings.ViewArgument, 2);
    EXPECT_EQ(m_settings.ViewRack, document.StaticRack + 1);
    EXPECT_EQ(m_settings.ViewVariable, vvAlongWheelTravel);
    EXPECT_EQ(m_main.Grid().Text(), shown);
    EXPECT_EQ(m_box.Shown.size(), 1U) << "the warning of loads that are inexact";
}

TEST_F(MExportTest, AViewWithNothingToShowGivesItsTitleAlone) {
    OpenOffStatic("roadster-front-links.WSP");
    Show(vwLateralGeometry); // which must not be taken for the table of the next
    const std::string unavailable = "This option is not available for the current suspension setup";
    EXPECT_EQ(ExportTable(vwLinkLoads, vvAlongRackTravel),
              "TITLE:\tLink Loads - Upper Wishbone Loads\r\n\r\n\r\n"
              "TITLE:\tLink Loads - Lower Wishbone Loads\r\n\r\n\r\n"
              "TITLE:\tLink Loads - None & Track Rod Loads\r\n\r\n\r\n");
    m_document.DynamicsValid = false;
    EXPECT_EQ(ExportTable(vwDynamicsReport, vvAlongRackTravel),
              "TITLE:\tDynamics Report\r\n\r\n\r\n");
    EXPECT_THAT(m_box.Prompts(), ElementsAre(unavailable, unavailable, unavailable,
                                             "Current settings are not valid for this report."));
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
    EXPECT_EQ(m_settings.View, vwCustomTable);
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
