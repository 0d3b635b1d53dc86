// What the main window shows and how the user steers it.

#include "solver/SInitGeo.h"
#include "tests/support/Corners.h"
#include "tests/support/MainFormTest.h"
#include "tests/support/RecordingChart.h"
#include "tests/support/Testing.h"

#include <algorithm>
#include <vector>

namespace corvanta::test {
namespace {

constexpr std::int32_t Views[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 14, 15};

class frmMainViewsTest : public MainFormTest {
  protected:
    void GoTo(std::int32_t view, std::int32_t variable = vvAlongWheelTravel) {
        m_settings.ViewVariable = variable;
        m_main.Execute(mcView, view);
    }

    void ChooseWheel(int entry) {
        m_main.cboWheel.Select(entry);
        m_main.cboWheel_Changed();
    }
    void ChooseRack(int entry) {
        m_main.cboRack.Select(entry);
        m_main.cboRack_Changed();
    }
    void ChooseType(int entry) {
        m_main.cboType.Select(entry);
        m_main.cboType_Changed();
    }

    /// Names of the parts of the result area that are visible.
    [[nodiscard]] std::string Area() const {
        std::string area = m_main.grdDisplay.Visible ? "grid " : "";
        area += m_main.panEmptyTable.Visible ? "what to do " : "";
        area += m_main.chtChart.Visible ? "chart " : "";
        area += m_main.picResults.Visible ? "picture " : "";
        area += m_main.panStart.Visible ? "start " : "";
        return area + (m_main.panFailure.Visible ? "failure " : "");
    }

    /// The controls of the strip that are visible, from left to right.
    [[nodiscard]] std::string Strip() const {
        if (!m_main.picComboContainer.Visible) {
            return "none";
        }
        const std::pair<const Control*, const char*> controls[] = {
            {&m_main.labType, "TypeLabel "},   {&m_main.cboType, "Type "},
            {&m_main.labWheel, "WheelLabel "}, {&m_main.cboWheel, "Wheel "},
            {&m_main.labUpDown, "UpDown "},    {&m_main.labRack, "RackLabel "},
            {&m_main.cboRack, "Rack "},        {&m_main.labLeftRight, "LeftRight "},
            {&m_main.chk3dDrawAxes, "Axes "},  {&m_main.chk3dAutoScale, "Scale "},
            {&m_main.optRack, "FixWheel "},    {&m_main.optWheel, "FixRack "}};
        std::string strip;
        for (const auto& [control, name] : controls) {
            strip += control->Visible ? name : "";
        }
        return strip;
    }

    /// How often a refresh ran.
    [[nodiscard]] auto Refreshes() const {
        return std::count(m_windowSystem.Shapes.begin(), m_windowSystem.Shapes.end(),
                          HourglassCursor);
    }
};

TEST_F(frmMainViewsTest, EveryViewHasItsAreaItsStripAndItsFocus) {
    Open(SampleBytes());
    const std::string wheel = "WheelLabel Wheel UpDown ";
    const std::string rack = "RackLabel Rack LeftRight ";
    for (const std::int32_t variable : {vvAlongRackTravel, vvAlongWheelTravel}) {
        const bool alongRack = variable == vvAlongRackTravel;
        const std::string fixed = alongRack ? wheel : rack;
        const Control* fixedList = alongRack ? &m_main.cboWheel : &m_main.cboRack;
        for (const std::int32_t view : Views) {
            SCOPED_TRACE(view);
            m_main.Focus = nullptr;
            GoTo(view, variable);
            std::string area = "grid ";
            std::string strip = fixed + "FixWheel FixRack ";
            const Control* focus = fixedList;
            switch (view) {
            case vwCoordinates:
                strip = wheel + rack;
                focus = &m_main.cboRack;
                break;
            case vwLinkLoads:
                strip = "TypeLabel Type ";
                focus = &m_main.cboType;
                break;
            case vwLinkLengths:
            case vwDynamicsReport:
                area = view == vwLinkLengths ? "grid " : "picture ";
                strip = "none";
                focus = nullptr;
                break;
            case vwQuadraticCoefficients:
                strip = "";
                focus = nullptr;
                break;
            case vwCustomTable:
                area = "what to do "; // no channel is chosen
                break;
            case vwPlot:
                area = "chart ";
                strip.insert(0, "TypeLabel Type ");
                break;
            case vw3d:
                area = "picture ";
                strip = wheel + rack + "Axes Scale ";
                focus = &m_main.cboRack;
                break;
            default:
                break;
            }
            EXPECT_EQ(Area(), area);
            EXPECT_EQ(Strip(), strip);
            EXPECT_EQ(m_main.Focus, focus);
            EXPECT_EQ(m_main.picResults.Inverted, view == vw3d);
            EXPECT_EQ(m_main.optRack.Selected, alongRack);
            EXPECT_EQ(m_main.optWheel.Selected, !alongRack);
        }
    }
}

TEST_F(frmMainViewsTest, WithoutAViewTheAreaSaysWhatToDoNext) {
    EXPECT_EQ(Area(), "start ");
    EXPECT_EQ(Strip(), "none");
    Open(Changed("Bump", "[Bump]\t400"));
    EXPECT_EQ(Area(), "failure ");
    EXPECT_EQ(Strip(), "none");
    EXPECT_EQ(m_main.panFailure.Caption, m_box.Prompts().back());
    EXPECT_TRUE(m_main.labFailurePlace.Visible);
    EXPECT_THAT(m_main.labFailurePlace.Caption,
                StartsWith("Rows of the table: Upper wishbone outer pickup (ptUWO), Upper wishbone "
                           "inner front pickup (ptUWIF) and Upper wishbone inner rear pickup "
                           "(ptUWIR).\rPosition: Bump +"));
    EXPECT_THAT(m_main.stbMain.Note, StartsWith("Stopped at Bump +"));
    EXPECT_THAT(m_main.stbMain.Note, HasSubstr("Upper wishbone outer pickup"));
    EXPECT_EQ(m_main.Caption, "Corvanta 5.4.5 - front - []");
    Open("no document");
    EXPECT_EQ(Area(), "start ");
}

TEST_F(frmMainViewsTest, PointsThatTheCalculationMissesAreToldAboveTheResults) {
    for (const std::string& path : AllSamplePaths()) {
        Open(DiskFileServices().ReadBytes(path));
        EXPECT_FALSE(m_main.labBanner.Visible) << path << m_main.labBanner.Caption;
        EXPECT_EQ(m_main.stbMain.Note, "") << path;
    }
    // Pivot, pushrod and output of the rocker in one line, as round numbers give.
    Open(SampleBytes("published/FSARBR.WSP"));
    PointSet& points = m_document.StaticPoints();
    const SuspPoint pivot = points[ptR1P1];
    const SuspPoint rod = points[ptPRI];
    points[ptR1O] = {2 * pivot.X - rod.X, 2 * pivot.Y - rod.Y, 2 * pivot.Z - rod.Z};
    m_document.ResultsValid = false;
    m_main.RefreshGUI(false);
    EXPECT_TRUE(m_main.labBanner.Visible);
    EXPECT_THAT(m_main.labBanner.Caption,
                StartsWith("The results are not those of the points entered. At rest the "
                           "calculation misses ARB drop link pickup on rocker (ptARDL) by "));
    EXPECT_THAT(m_main.labBanner.Caption,
                HasSubstr("Rocker pivot point on chassis (ptR1P1), Pushrod inboard pickup on "
                          "rocker (ptPRI) and Shock absorber pickup on rocker (ptR1O) lie in one "
                          "line, so they can't tell where ARB drop link pickup on rocker (ptARDL) "
                          "is. Move one of them out of the line."));
    EXPECT_EQ(m_main.stbMain.Note, "Not where entered: ARB drop link pickup on rocker and ARB "
                                   "drop link pickup on input lever");
    EXPECT_EQ(Area(), "grid ");
    GoTo(vwNone);
    EXPECT_FALSE(m_main.labBanner.Visible);
}

TEST_F(frmMainViewsTest, TheListsOfferThePositionsOfTheGridAndShowTheCurrentOne) {
    Open(SampleBytes());
    const int wheels = m_document.NW;
    const int racks = m_document.NR;
    ASSERT_GT(wheels, 2);
    ASSERT_GT(racks, 2);
    GoTo(vwCoordinates);
    ASSERT_EQ(m_main.cboWheel.Count(), wheels);
    ASSERT_EQ(m_main.cboRack.Count(), racks);
    EXPECT_EQ(m_main.cboWheel.Entry(0).Text, "50.00") << "bump first";
    EXPECT_EQ(m_main.cboRack.Entry(0).Text, "60.00") << "the highest step first";
    EXPECT_EQ(m_main.cboRack.Entry(racks - 1).Text, "-60.00");
    EXPECT_EQ(m_main.cboWheel.Text(), "0.00");
    EXPECT_EQ(m_main.cboRack.Text(), "0.00");

    const auto shown = [&](int wheel, int rack) {
        m_main.DisplayView(vwCoordinates, 0, vvAlongWheelTravel, wheel, rack);
        return std::pair(m_main.cboWheel.Index(), m_main.cboRack.Index());
    };
    EXPECT_EQ(shown(2, 2), std::pair(0, racks - 1));
    EXPECT_EQ(shown(wheels + 1, racks + 1), std::pair(wheels - 1, 0));
    EXPECT_EQ(shown(wheels + 2, racks + 2), std::pair(0, 0)) << "beyond the lists";
    EXPECT_EQ(shown(0, 0), std::pair(0, 0));

    m_program.Units[ucDisplacement].Label = "in";
    m_program.Channels.ChannelsSetup(m_program.Units);
    m_main.RefreshGUI(false);
    EXPECT_EQ(m_main.cboWheel.Entry(0).Text, "1.969");
}

TEST_F(frmMainViewsTest, AChosenPositionIsShownAndItsListKeepsTheFocus) {
    Open(SampleBytes());
    GoTo(vwCoordinates);
    ChooseWheel(0);
    EXPECT_EQ(m_settings.ViewWheel, 2);
    EXPECT_EQ(m_main.Focus, &m_main.cboWheel);
    ChooseRack(1);
    EXPECT_EQ(m_settings.ViewRack, m_document.NR);
    EXPECT_EQ(m_main.Focus, &m_main.cboRack);
    const SuspPoint& patch = m_document.WheelStates(m_document.NR, 2).Points[ptWTCP];
    EXPECT_THAT(m_main.Grid().Text(),
                HasSubstr("\t" + FormatChannelValue(m_program.Units, patch.Y, ucDisplacement) +
                          "\t" + FormatChannelValue(m_program.Units, patch.Z, ucDisplacement) +
                          "\r\n"));
    EXPECT_GT(patch.Z, m_document.StaticPoints()[ptWTCP].Z + 40) << "in bump";

    // The position survives another view and another variable.
    GoTo(vwLateralGeometry, vvAlongRackTravel);
    EXPECT_EQ(m_main.cboWheel.Index(), 0);
    m_main.optWheel_Click();
    EXPECT_EQ(m_settings.ViewVariable, vvAlongWheelTravel);
    EXPECT_EQ(m_main.cboRack.Index(), 1);
    m_main.optRack_Click();
    EXPECT_EQ(m_settings.ViewVariable, vvAlongRackTravel);
    EXPECT_EQ(m_main.cboWheel.Index(), 0);

    // A click on what is shown already does nothing.
    const auto refreshes = Refreshes();
    ChooseWheel(0);
    EXPECT_EQ(Refreshes(), refreshes);

    // The table of link loads has no position to choose.
    GoTo(vwLinkLoads);
    ChooseWheel(3);
    ChooseRack(3);
    EXPECT_EQ(m_settings.ViewWheel, 2);
    EXPECT_EQ(m_settings.ViewRack, m_document.NR);
}

TEST_F(frmMainViewsTest, TheListOfTypesOffersSubViewsAndChannels) {
    Open(SampleBytes());
    GoTo(vwLinkLoads);
    EXPECT_EQ(m_main.labType.Caption, "Show link loads for:");
    EXPECT_EQ(m_main.cboType.Count(), 3);
    EXPECT_EQ(m_main.cboType.Index(), 0);
    ChooseType(1);
    EXPECT_EQ(m_settings.ViewArgument, 2);
    EXPECT_EQ(m_main.cboType.Text(), "Lower Wishbone Loads");
    EXPECT_THAT(m_main.Grid().Cell(0, 1), StartsWith("Lower"));

    GoTo(vwPlot);
    EXPECT_EQ(m_main.labType.Caption, "Plot channel:");
    ASSERT_EQ(m_main.cboType.Count(), ChannelCount - 1);
    EXPECT_EQ(m_main.cboType.Index(), 0);
    for (const int id : {1, 25, 27, 51}) {
        const int entry = id < chLinkLoads ? id - 1 : id - 2;
        EXPECT_EQ(m_main.cboType.Entry(entry).Text, m_program.Channels[id].Title);
        if (entry > 0) { // the first one is shown already
            ChooseType(entry);
            EXPECT_EQ(m_settings.ViewArgument, id);
        }
        EXPECT_EQ(m_main.cboType.Index(), entry);
    }
    EXPECT_EQ(m_main.cboType.FindData(chLinkLoads), ListControl::NoSelection);
}

/// The line of a design by a run of its own, at the step of another travel.
std::vector<ChartPoint> LineOf(Suspension document, std::int32_t variable, int step, int channel) {
    CalculateCorner(document);
    std::vector<ChartPoint> line;
    const bool alongRack = variable == vvAlongRackTravel;
    for (int n = (alongRack ? document.NR : document.NW) + 1; n >= 2; --n) {
        const ChannelCells& cells =
            (alongRack ? document.WheelStates(n, step) : document.WheelStates(step, n)).Channels;
        line.push_back({cells[alongRack ? chRackTravel : chWheelTravel] / 25.4, cells[channel]});
    }
    return line;
}

TEST_F(frmMainViewsTest, ThePlotShowsBaselineAndTickedVariantsAtTheSameTravel) {
    RecordingChart chart;
    m_main.chtSurface = &chart;
    m_program.Units[ucDisplacement].Label = "in";
    m_program.Channels.ChannelsSetup(m_program.Units);
    Open(SampleBytes());
    m_settings.ViewWheel = m_document.StaticWheel - 1;
    m_settings.ViewRack = m_document.StaticRack + 2;
    GoTo(vwPlot);
    ChooseType(m_main.cboType.FindData(chCamberAngle));
    EXPECT_THAT(chart.Others, IsEmpty()); // the baseline is what the main line shows

    const Suspension opened = m_document;
    Suspension coarse = opened; // its steps are others
    coarse.StaticPoints()[ptTRI].Z += 3;
    coarse.Data.RackTravelStepSize *= 2;
    coarse.Data.WheelTravelStepSize *= 2;
    InitGeometry(coarse, m_program.Channels, m_program.Units, m_messages);
    Suspension impossible = opened;
    impossible.StaticPoints()[ptTRO] = {9000, 9000, 9000};
    StudyData study = m_current.Study();
    study.Variants = {{"Coarse", "", {1, 2, 3}, true, DesignOf(coarse)},
                      {"Impossible", "", {}, true, DesignOf(impossible)},
                      {"Hidden", "", {}, false, DesignOf(coarse)}};
    m_current.ChangeStudy(study);
    ASSERT_THAT(chart.Others, SizeIs(1));
    Edit("20");
    ASSERT_THAT(chart.Others, SizeIs(2));
    for (const std::int32_t variable : {vvAlongRackTravel, vvAlongWheelTravel}) {
        SCOPED_TRACE(variable);
        m_settings.ViewWheel = m_document.StaticWheel - 2;
        m_settings.ViewRack = m_document.StaticRack + 2;
        GoTo(vwPlot, variable);
        const bool alongRack = variable == vvAlongRackTravel;
        const int fixed = alongRack ? m_settings.ViewWheel : m_settings.ViewRack;
        const int fixedCoarse = alongRack ? coarse.StaticWheel - 1 : coarse.StaticRack + 1;
        const auto same = [](std::vector<ChartPoint> points, std::vector<ChartPoint> expected) {
            for (auto* line : {&points, &expected}) {
                std::sort(line->begin(), line->end(),
                          [](const auto& a, const auto& b) { return a.X < b.X; });
            }
            ASSERT_EQ(points.size(), expected.size());
            for (std::size_t n = 0; n < points.size(); ++n) {
                EXPECT_NEAR(points[n].X, expected[n].X, 1e-6); // an inch in single precision
                EXPECT_EQ(points[n].Y, expected[n].Y);
            }
        };
        ASSERT_THAT(chart.Others, SizeIs(2));
        EXPECT_EQ(chart.Others[0].Name + chart.Others[1].Name, "BaselineCoarse");
        EXPECT_TRUE(chart.Others[0].Dashed && !chart.Others[1].Dashed);
        EXPECT_EQ(chart.Others[1].Drawn, (Colour{1, 2, 3}));
        same(chart.Others[0].Points, LineOf(opened, variable, fixed, chCamberAngle));
        same(chart.Others[1].Points, LineOf(coarse, variable, fixedCoarse, chCamberAngle));
        same(chart.Series.Points, LineOf(m_document, variable, fixed, chCamberAngle));
    }
    // To be printed, the document alone.
    m_main.DisplayView(vwPlot, chCamberAngle, vvAlongWheelTravel, 0, 0);
    EXPECT_THAT(chart.Others, IsEmpty());
}

TEST_F(frmMainViewsTest, F5RedrawsAndWithCtrlCalculates) {
    struct Case {
        KeyModifiers Pressed;
        bool Taken = false;
        bool Calculates = false;
    };
    for (const Case& key :
         {Case{{}, true, false}, Case{{false, true, false}, true, true},
          Case{{true, false, false}, false, false}, Case{{false, false, true}, false, false},
          Case{{true, true, false}, false, false}, Case{{false, true, true}, false, false}}) {
        Open(SampleBytes());
        const double camber = m_document.WheelStates(3, 3).Channels[chCamberAngle];
        m_document.WheelStates(3, 3).Channels.Set(chCamberAngle, 77);
        m_settings.ViewWheel = 3;
        const auto refreshes = Refreshes();
        EXPECT_EQ(m_main.KeyDown(MainKey::F5, key.Pressed, nullptr), key.Taken);
        EXPECT_EQ(Refreshes() - refreshes, key.Taken ? 1 : 0);
        EXPECT_EQ(m_document.WheelStates(3, 3).Channels[chCamberAngle],
                  key.Calculates ? camber : 77);
        EXPECT_EQ(m_settings.ViewWheel, key.Calculates ? m_document.StaticWheel : 3);
    }
    // After a failed calculation it tries again.
    Open(Changed("Bump", "[Bump]\t400"));
    EXPECT_EQ(m_settings.View, vwNone);
    m_document.Data.Bump = 50;
    InitGeometry(m_document, m_program.Channels, m_program.Units, m_messages);
    m_main.KeyDown(MainKey::F5, {false, true, false}, nullptr);
    EXPECT_EQ(m_settings.View, vwCoordinates);
    EXPECT_EQ(Area(), "grid ");
}

TEST_F(frmMainViewsTest, ArrowKeysGoToTheListTheyStep) {
    struct Case {
        std::int32_t View;
        std::int32_t Variable;
        MainKey Key;
        const Control* From;
        const Control* To; ///< none when the focus stays
        bool Swallowed;
    };
    const Control* wheel = &m_main.cboWheel;
    const Control* rack = &m_main.cboRack;
    const Control* type = &m_main.cboType;
    Open(SampleBytes());
    for (const Case& press : std::initializer_list<Case>{
             {vwCoordinates, 2, MainKey::Up, rack, wheel, true},
             {vwCoordinates, 2, MainKey::Right, rack, rack, false},
             {vwCoordinates, 2, MainKey::Up, nullptr, wheel, false},
             {vwAntis, 1, MainKey::Left, wheel, nullptr, true}, // nothing to step
             {vwPlot, 2, MainKey::Right, type, rack, false},
             {vwPlot, 2, MainKey::Up, type, nullptr, false}, // steps the channels
             {vwLinkLengths, 2, MainKey::Up, nullptr, nullptr, false},
         }) {
        SCOPED_TRACE(press.View);
        GoTo(press.View, press.Variable);
        m_main.Focus = nullptr;
        EXPECT_EQ(m_main.KeyDown(press.Key, {}, press.From), press.Swallowed);
        EXPECT_EQ(m_main.Focus, press.To);
        m_main.Focus = nullptr;
        EXPECT_FALSE(m_main.KeyDown(press.Key, {true, false, false}, press.From));
        EXPECT_EQ(m_main.Focus, nullptr);
    }
    // A hidden strip takes no focus, whatever it showed last.
    GoTo(vwCoordinates);
    Open("no document");
    m_main.Focus = nullptr;
    EXPECT_FALSE(m_main.KeyDown(MainKey::Up, {}, nullptr));
    EXPECT_EQ(m_main.Focus, nullptr);
}

TEST_F(frmMainViewsTest, MenusAndToolbarFollowTheResultsAndTheView) {
    const auto expect = [&](bool results, bool exports, bool copies) {
        EXPECT_EQ(ItemOf(m_main.mnuFile, mcPrint).Enabled, results);
        EXPECT_EQ(ItemOf(m_main.mnuEdit, mcAdjust).Enabled, results);
        EXPECT_EQ(m_main.mnuExport.Enabled, exports);
        EXPECT_EQ(ItemOf(m_main.mnuFile, mcExportMenu).Enabled, exports);
        EXPECT_EQ(ItemOf(m_main.mnuEdit, mcCopy).Enabled, copies);
        for (const ToolButton& button : m_main.tbrMain) {
            const bool always = button.Key == "new" || button.Key == "open" ||
                                button.Key == "save" || button.Key == "properties" ||
                                button.Key == "adjust" || button.Key == "options" ||
                                button.Key == "workbench";
            if (!button.Key.empty() && button.Key != "export") {
                EXPECT_EQ(button.Enabled, always || results) << button.Key;
            }
            if (button.Key == "export") {
                EXPECT_EQ(button.Enabled, exports);
            }
            EXPECT_EQ(button.TwoState, button.Command == mcView);
            EXPECT_EQ(button.Pressed, button.TwoState && button.Tag == m_settings.View && results);
        }
    };
    expect(false, false, false);
    Open(SampleBytes("formula-front-pushrod.WSP"));
    for (const std::int32_t view : Views) {
        SCOPED_TRACE(view);
        GoTo(view);
        const bool table = view != vwDynamicsReport && view != vwPlot && view != vw3d;
        expect(true, true, table);
        m_windowSystem.Board = "before";
        m_main.Execute(mcCopy, 0);
        EXPECT_EQ(m_windowSystem.Board, table ? m_main.Grid().Text() : "before");
        for (const MenuItem& item : m_main.mnuView.Items) {
            EXPECT_EQ(item.Checked, item.Command == mcView && item.Tag == view);
        }
    }
    GoTo(vwAngles);
    Open("no document");
    EXPECT_EQ(m_settings.View, vwAngles) << "the view stays chosen";
    expect(false, false, false);
}

TEST_F(frmMainViewsTest, TheToolbarHoldsItsButtonsInOrderAndNoCommandOfItsOwn) {
    std::vector<std::string> keys;
    const auto known = [&](const ToolButton& button) {
        for (const Menu* menu : {&m_main.mnuFile, &m_main.mnuExport, &m_main.mnuEdit,
                                 &m_main.mnuView, &m_main.mnuTools}) {
            for (const MenuItem& item : menu->Items) {
                if (item.Command == button.Command && item.Tag == button.Tag) {
                    return true;
                }
            }
        }
        return false;
    };
    for (const ToolButton& button : m_main.tbrMain) {
        keys.push_back(button.Key);
        EXPECT_TRUE(known(button)) << button.Key;
    }
    EXPECT_THAT(keys, ElementsAre("", "new", "open", "save", "print", "export", "", "properties",
                                  "adjust", "options", "workbench", "", "customtable", "plot", "3d",
                                  "deflectedgeo", "lengths", "quad"));
}

TEST_F(frmMainViewsTest, TheStatusBarNamesDocumentPositionAndUnits) {
    const StatusBar& status = m_main.stbMain;
    EXPECT_EQ(status.Document, "No suspension");
    EXPECT_EQ(status.Position, "");
    EXPECT_EQ(status.Units, "mm  N  N/mm");
    Open(SampleBytes());
    EXPECT_EQ(status.Document, "front.WSP");
    EXPECT_EQ(status.Position, "Bump 0.00 mm   Rack 0.00 mm");
    ChooseWheel(0);
    ChooseRack(m_document.NR - 1);
    EXPECT_EQ(status.Position, "Bump +50.00 mm   Rack -60.00 mm");
    ChooseWheel(m_document.NW - 1);
    GoTo(vwLateralGeometry, vvAlongRackTravel);
    EXPECT_EQ(status.Position, "Droop -40.00 mm");
    GoTo(vwLinkLoads);
    EXPECT_EQ(status.Position, "Rack -60.00 mm") << "its table is at a rack position";
    GoTo(vwLinkLengths);
    EXPECT_EQ(status.Position, "");
    m_program.DocumentPath.clear();
    m_program.Modified = true;
    m_main.RefreshGUI(false);
    EXPECT_EQ(status.Document, "New suspension  modified");
}

TEST_F(frmMainViewsTest, ANoteLastsAsLongAsWhatItSays) {
    const std::string& note = m_main.stbMain.Note;
    Open(SampleBytes());
    m_main.Execute(mcCopy, 0);
    EXPECT_EQ(note, "Table copied");
    GoTo(vwAntis);
    EXPECT_EQ(note, "");
    Open(Changed("Bump", "[Bump]\t400"));
    EXPECT_THAT(note, StartsWith("Stopped at Bump +"));
    m_main.RefreshGUI(false);
    EXPECT_THAT(note, StartsWith("Stopped at Bump +"));
    Open("no document");
    EXPECT_EQ(note, "");
    Open(SampleBytes());
    m_files.RefuseFolder("/recovery");
    Edit("3");
    EXPECT_THAT(note, StartsWith("No recovery copy could be written"));
    GoTo(vwAntis);
    EXPECT_THAT(note, StartsWith("No recovery copy could be written"));
    m_main.Execute(mcSave, 0);
    EXPECT_EQ(note, "front.WSP saved");
    m_main.RefreshGUI(false);
    EXPECT_EQ(note, "");
}

TEST_F(frmMainViewsTest, TheStaticRowIsMarked) {
    Open(SampleBytes());
    for (const std::int32_t variable : {vvAlongRackTravel, vvAlongWheelTravel}) {
        for (const std::int32_t view : {vwAntis, vwCustomTable, vwLinkLoads}) {
            GoTo(view, variable);
            ASSERT_NE(m_main.Grid().MarkedRow, DataGrid::NoRow);
            EXPECT_EQ(m_main.Grid().Cell(m_main.Grid().MarkedRow, 0), "0.00") << view;
        }
    }
    GoTo(vwLinkLengths);
    EXPECT_EQ(m_main.Grid().MarkedRow, DataGrid::NoRow);
}

TEST_F(frmMainViewsTest, WindowsOpenOnceAndAreReleasedWhenTheyClosed) {
    Open(SampleBytes());
    m_main.Execute(mcProperties, 0);
    const frmEditGeometry* editor = m_main.EditGeometry.get();
    ASSERT_NE(editor, nullptr);
    EXPECT_TRUE(editor->IsOpen && editor->Raise);
    m_main.EditGeometry->Raise = false;
    m_main.ReleaseClosedWindows();
    m_main.Execute(mcProperties, 0);
    EXPECT_EQ(m_main.EditGeometry.get(), editor);
    EXPECT_TRUE(editor->Raise) << "comes to the front";
    m_main.Execute(mcOptions, 0);
    ASSERT_NE(m_main.OptionsDialog, nullptr);
    m_main.OptionsDialog->cmdOK_Click();
    EXPECT_FALSE(m_main.OptionsDialog->IsOpen);
    EXPECT_FALSE(editor->IsOpen) << "its boxes speak the former units";
    m_main.ReleaseClosedWindows();
    EXPECT_EQ(m_main.EditGeometry, nullptr);
    EXPECT_EQ(m_main.OptionsDialog, nullptr);

    m_main.Execute(mcAbout, 0);
    EXPECT_TRUE(m_main.About.IsOpen && !m_main.About.IsSplash);
    EXPECT_EQ(m_main.About.Version, "5.4.5");
    m_main.TakeDownSplash();
    EXPECT_TRUE(m_main.About.IsOpen) << "it waits for its user";
    m_main.Execute(mcHelpTopics, 0);
    EXPECT_THAT(m_windowSystem.Topics, ElementsAre(0));
}

} // namespace
} // namespace corvanta::test
