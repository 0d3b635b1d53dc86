#include "results/MDisplay.h"

#include "model/Failure.h"
#include "results/PointsTable.h"
#include "tests/support/MainFormTest.h"
#include "tests/support/RecordingChart.h"
#include "tests/support/Testing.h"

namespace corvanta::test {
namespace {

using Blocks = std::vector<std::string>;

const std::string WheelText = "Values at wheel travel from static = 10 mm";
const std::string RackText = "Values at rack travel from static = 15 mm";
const std::string Gap = "[Normal]  ";

Blocks operator+(Blocks first, const Blocks& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

/// The lines above a view.
Blocks Titles(const std::string& title, const std::string& subtitle = {}) {
    return {"[Title1] " + title, "[CloseSpaced] " + subtitle, Gap};
}

/// The window with a solved corner, whose wheel stands two steps of 5 mm above static and whose
/// rack one step of 15 mm beside it.
class MDisplayTest : public MainFormTest {
  protected:
    MDisplayTest() {
        m_main.chtSurface = &m_chart;
        OpenOffStatic("touring-front-wishbone.WSP");
        m_options.PrintChassisDetails = false;
    }

    /// The blocks of a view that is a table.
    static Blocks Table(const std::string& title, const std::string& subtitle,
                        const std::string& grid) {
        return Titles(title, subtitle) + Blocks{"[Normal] table\r\n" + grid, Gap};
    }

    /// The blocks of the link loads at the static position, from which the window then goes back.
    Blocks LinkLoadTables() {
        const ViewSettings former = m_settings;
        m_settings.ViewRack = m_document.StaticRack;
        Blocks blocks;
        for (std::int32_t subView = 1; subView <= LinkLoadViewCount; ++subView) {
            blocks = blocks + Table("Link Loads - " + LinkLoadViewName(subView, m_document.Data),
                                    "", Show(vwLinkLoads, subView));
        }
        m_settings = former;
        m_main.RefreshGUI(false);
        return blocks;
    }

    void Tick(std::initializer_list<int> views) {
        m_options.PrintSelectedTables = true;
        for (int view = 1; view <= SelectableViewCount; ++view) {
            m_options.SelectedTables.Set(view, false);
        }
        for (const int view : views) {
            m_options.SelectedTables.Set(view, true);
        }
    }

    /// Builds the report and returns all that stands on its pages, page by page.
    std::vector<Blocks> Build() {
        BuildReport(m_place);
        EXPECT_FALSE(m_pages.Writing);
        std::vector<Blocks> pages;
        for (const RecordingPageWriter::Page& page : m_pages.Pages) {
            pages.push_back(page.Blocks);
        }
        return pages;
    }

    /// What the user sees of the window and the writer.
    std::string Seen() {
        const ViewSettings& s = m_settings;
        std::string text;
        for (const int number : {int{s.View}, int{s.ViewArgument}, int{s.ViewVariable}, s.ViewWheel,
                                 s.ViewRack, int{m_pages.Orientation()}}) {
            text += std::to_string(number) + " ";
        }
        return text + m_main.Caption + m_main.cboType.Text() + m_main.Grid().Text() +
               m_main.ReportText() + m_chart.AxisY.Title;
    }

    RecordingChart m_chart;
    Options& m_options = m_program.Options;
    RecordingPageWriter& m_pages = m_windowSystem.Pages;
    ReportPlace m_place{m_program, m_main, m_pages, m_process.Version()};
};

TEST_F(MDisplayTest, SelectedViewsStandInOrderAtThePositionOfTheWindow) {
    const std::string rows = Show(vwLateralGeometry);
    const std::string points = Show(vwCoordinates);
    const std::string curves = Show(vwQuadraticCoefficients);
    const Blocks loads = LinkLoadTables();
    Show(vwLinkLoads, 2);
    Show(vwPlot, chCamberAngle);
    const std::string plot = Seen();

    Tick({vwQuadraticCoefficients, vwLinkLoads, vwLateralGeometry, vwCoordinates});
    const Blocks lateral = Table("Lateral Geometry", RackText, rows);
    const Blocks coordinates =
        Table("Bump & Droop Coordinates", WheelText + "\r\n" + RackText, points);
    const Blocks quadratic = Table("Quadratic Coefficients", "", curves);
    EXPECT_THAT(Build(), ElementsAre(lateral + coordinates + loads + quadratic));
    EXPECT_EQ(Seen(), plot);

    m_options.PageThrow = true;
    const auto sub = [&](std::ptrdiff_t n) {
        return Blocks(loads.begin() + 5 * n, loads.begin() + 5 * n + 5);
    };
    EXPECT_THAT(Build(), ElementsAre(lateral, coordinates, sub(0), sub(1), sub(2), quadratic));
    EXPECT_EQ(Seen(), plot);

    m_settings.ViewVariable = vvAlongRackTravel;
    Tick({vwLateralGeometry});
    Build();
    EXPECT_EQ(m_pages.Blocks()[1], "[CloseSpaced] " + WheelText);
    EXPECT_THAT(m_pages.Blocks()[3], StartsWith("[Normal] table\r\nRack Travel\t"));
}

TEST_F(MDisplayTest, APlotFillsALandscapePage) {
    Show(vwPlot, chSteerAngle);
    m_main.chtChart_Click(120 * Chart2D::TwipsPerPixel, 50 * Chart2D::TwipsPerPixel);
    ASSERT_THAT(m_chart.AxisX.Title, HasSubstr(" = ")) << "a readout stands on the chart";
    const std::vector<ChartPoint> points = m_chart.Series.Points;
    ASSERT_THAT(points, SizeIs(m_document.NW));
    const Blocks plot = Titles("Steer Angle v. Wheel travel from static", RackText) + Blocks{Gap};
    m_options.PrintChassisDetails = m_options.PageThrow = true;

    EXPECT_THAT(Build(), ElementsAre(plot));
    EXPECT_EQ(m_pages.Started, 2) << "a portrait page had been started";
    EXPECT_THAT(m_pages.Pages[0].Header.Right, StartsWith("13:06  ")) << "set up once more";
    EXPECT_EQ(m_pages.Pages[0].Orientation, poLandscape);
    ASSERT_THAT(m_pages.Pages[0].Pictures, SizeIs(1));
    const RecordingPageWriter::Picture& picture = m_pages.Pages[0].Pictures[0];
    EXPECT_EQ(picture.Points, points);
    EXPECT_EQ(picture.TitleX, "Wheel Travel [mm]") << "without the readout";
    EXPECT_EQ(picture.Place, (PageRectangle{20, 25 + 3 * 5, 297 - 20 - 10, 210 - 25 - 25}));
    EXPECT_EQ(m_pages.Orientation(), poPortrait);
    EXPECT_EQ(m_settings.ViewArgument, chSteerAngle);
    EXPECT_EQ(m_main.cboType.Text(), "Steer Angle");

    m_options.PrintCoordinates = true;
    const std::vector<Blocks> pages = Build();
    EXPECT_EQ(m_pages.Started, 3);
    ASSERT_THAT(pages, SizeIs(2));
    EXPECT_EQ(pages[0].front(), "[Title1] Static coordinates");
    EXPECT_EQ(pages[1], plot);
    EXPECT_EQ(m_pages.Pages[0].Orientation, poPortrait);
    EXPECT_EQ(m_pages.Pages[1].Orientation, poLandscape);
    EXPECT_THAT(m_pages.Pages[1].Pictures, SizeIs(1));

    // From the plot, selected views have no page of chassis details either.
    Tick({vwLinkLengths});
    EXPECT_THAT(Build(), SizeIs(2));
    EXPECT_THAT(m_pages.Blocks(), testing::Not(testing::Contains("[Title1] Chassis details")));

    m_options.PrintSelectedTables = false;
    Show(vwPlot, 0); // the first channel, as in a plot that no channel was chosen for yet
    Build();
    EXPECT_EQ(m_pages.Pages[1].Blocks[0], "[Title1] Ackerman % v. Wheel travel from static");
}

TEST_F(MDisplayTest, AFailureOfTheWriterLeavesTheWindowAsItWas) {
    m_options.PrintCoordinates = m_options.PrintChassisDetails = true;
    m_pages.SetOrientation(poPortrait);
    int failures = 0;
    for (const std::int32_t view : {vwLinkLoads, vwPlot}) {
        Show(view, 2);
        const std::string before = Seen();
        for (int block = 1;; ++block) {
            m_pages.FailOnBlock(block);
            try {
                BuildReport(m_place);
                break;
            } catch (const Failure& failure) {
                EXPECT_EQ(failure.Description(), "Out of paper");
            }
            ++failures;
            ASSERT_EQ(Seen(), before) << "at block " << block;
            ASSERT_FALSE(m_pages.Writing);
            ASSERT_THAT(m_pages.Pages, IsEmpty());
        }
        m_pages.FailOnBlock(0);
    }
    EXPECT_EQ(failures, (4 + 3 * 5 + 2) + (4 + 3 + 1 + 1));
}

TEST_F(MDisplayTest, ChassisDetailsSpeakTheUnitsOfTheUser) {
    SuspensionData& data = m_document.Data;
    data.CGX = 1750;
    data.CGZ = -12.345;
    data.Wheelbase = 2540;
    data.Mass = 600.25;
    data.KTyre = 175.6;
    data.KLink = 1751.8;
    data.KSpring = 262.4;
    EXPECT_EQ(ChassisDetailsText(m_program),
              "Centre of gravity X position = 1750.00 mm\rCentre of gravity height = -12.35 mm\r"
              "Wheelbase = 2540.00 mm\rTotal mass = 600.3 kg\rTyre stiffness = 176 N/mm\r"
              "Suspension link stiffness = 1752 N/mm\rSpring stiffness = 262 N/mm");
}

} // namespace
} // namespace corvanta::test
