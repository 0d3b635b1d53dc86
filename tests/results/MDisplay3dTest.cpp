#include "results/MDisplay3d.h"

#include "model/Failure.h"
#include "tests/support/RecordingSurface.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace corvanta::test {
namespace {

using testing::UnorderedElementsAreArray;

constexpr Colour Violet{175, 128, 255};
constexpr Colour Blue{90, 150, 255};
constexpr Colour Yellow{255, 255, 0};
constexpr Colour Magenta{255, 0, 255};
constexpr Colour Cyan{0, 255, 255};
constexpr Colour Orange{255, 128, 0};
constexpr Colour Green{0, 255, 0};
constexpr Colour Red{255, 0, 0};
constexpr Colour White{255, 255, 255};
constexpr Colour Grey{150, 150, 150};

/// A line by the names of its ends, in order of name, "~" before a mirrored point.
struct NamedLine {
    std::string From;
    std::string To;
    Colour Drawn;

    NamedLine(const std::string& from, const std::string& to, Colour colour)
        : From(std::min(from, to)),
          To(std::max(from, to)),
          Drawn(colour) {}

    friend bool operator==(const NamedLine&, const NamedLine&) = default;
    friend void PrintTo(const NamedLine& line, std::ostream* stream) {
        *stream << line.From << "-" << line.To << " ";
        PrintTo(line.Drawn, stream);
    }
};

/// Takes a drawing down.
class RecordingSink final : public DrawingSink {
  public:
    struct Line {
        SuspPoint From;
        SuspPoint To;
        Colour Drawn;
    };

    std::vector<Line> Lines;
    std::vector<SuspPoint> Circle; ///< centre and axis point of the last circle
    double Radius = 0;
    int Circles = 0;
    int Labels = 0;

    void AddCircle(const SuspPoint& centre, const SuspPoint& axisPoint, double radius,
                   Colour colour) override {
        EXPECT_EQ(colour, Orange);
        Circle = {centre, axisPoint};
        Radius = radius;
        ++Circles;
    }
    void AddLabel(const SuspPoint& /*at*/, const std::string& /*text*/) override { ++Labels; }
    void AddLine(const SuspPoint& from, const SuspPoint& to, Colour colour) override {
        Lines.push_back({from, to, colour});
    }
};

/// A set of points that all lie apart, so that a place names its point.
PointSet DistinctPoints(double bump = 0) {
    PointSet points;
    for (const PointNumber number : AllPoints) {
        const double n = number;
        points[number] = {11 * n, 1000 - 7 * n + bump, n * n / 3};
    }
    return points;
}

std::string NameOf(const SuspPoint& place, const PointSet& points, const PointSet& staticPoints) {
    for (const PointNumber number : AllPoints) {
        std::string name(PointShortName(number).substr(2));
        if (points[number] == place) {
            return name;
        }
        if (points[number] == SuspPoint{place.X, -place.Y, place.Z}) {
            return "~" + name;
        }
        if (staticPoints[number] == SuspPoint{place.X, -place.Y, place.Z}) {
            return "~static " + name;
        }
    }
    return "?";
}

/// The lines that are drawn for the given mechanisms, circles and labels apart.
std::vector<NamedLine> LinesOf(const SuspensionData& data) {
    const PointSet points = DistinctPoints(30);
    const PointSet fixed = DistinctPoints();
    RecordingSink sink;
    Draw3d(sink, {points, fixed, data});
    EXPECT_EQ(sink.Labels, 0);
    EXPECT_EQ(sink.Circles, 1);
    EXPECT_THAT(sink.Circle, ElementsAre(points[ptWC], points[ptWSA]));
    EXPECT_DOUBLE_EQ(sink.Radius, Distance(points[ptWC], points[ptWTCP]));
    std::vector<NamedLine> lines;
    for (const RecordingSink::Line& line : sink.Lines) {
        lines.emplace_back(NameOf(line.From, points, fixed), NameOf(line.To, points, fixed),
                           line.Drawn);
    }
    return lines;
}

/// Lines of one colour from a text: "LWIF-LWO LWIR-LWO".
void Add(std::vector<NamedLine>& lines, Colour colour, const std::string& text) {
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        const std::size_t dash = word.find('-');
        lines.emplace_back(word.substr(0, dash), word.substr(dash + 1), colour);
    }
}

void Join(std::vector<NamedLine>& lines, const std::vector<NamedLine>& more) {
    lines.insert(lines.end(), more.begin(), more.end());
}

std::vector<NamedLine> LinksAndUpright(bool strut) {
    std::vector<NamedLine> lines;
    Add(lines, Blue, "LWIF-LWO LWIR-LWO LWIR-LWIF");
    Add(lines, Green, "TRI-TRO");
    Add(lines, Orange, "WC-WTCP WSA-WC");
    if (strut) {
        Add(lines, White, "LWO-TRO TRO-SAI SAI-LWO");
    } else {
        Add(lines, Red, "UWIF-UWO UWIR-UWO UWIR-UWIF");
        Add(lines, White, "LWO-TRO TRO-UWO UWO-LWO");
    }
    return lines;
}

/// What stands between the wheel and the corner spring.
std::vector<NamedLine> SpringTrain(std::int32_t spring, bool cornerSpring) {
    std::vector<NamedLine> lines;
    const bool onUpperWishbone = spring == 3 || spring == 4;
    if (onUpperWishbone) {
        Add(lines, Red, "UWIF-PRO UWIR-PRO UWO-PRO");
    }
    if (spring >= 4 && spring <= 10) {
        Add(lines, Yellow, "PRO-PRI");
        Add(lines, Magenta, "R1O-PRI R1O-R1P1 R1P1-PRI R1P1-R1P2");
    }
    if (spring == 9 || spring == 10) {
        Add(lines, Yellow, "R1O-R2I");
        Add(lines, Magenta, "R2O-R2I R2O-R2P1 R2P1-R2I R2P1-R2P2");
    }
    const std::map<std::int32_t, std::string> springs{
        {1, "PRO-PRI"}, {2, "PRO-PRI"},  {3, "PRO-SAI"},  {4, "R1O-SAI"},
        {5, "R1O-SAI"}, {6, "R1O-SAI"},  {7, "R1O-SAI"},  {8, "R1O-SAI"},
        {9, "R2O-SAI"}, {10, "R2O-SAI"}, {11, "PRO-SAI"},
    };
    if (cornerSpring && springs.contains(spring)) {
        Add(lines, Cyan, springs.at(spring));
    }
    return lines;
}

std::vector<NamedLine> TBar(Colour colour) {
    std::vector<NamedLine> lines;
    Add(lines, Yellow, "TBDLI-TBDLO");
    Add(lines, colour, "TBDLO-TSI TBDLO2-TSI TSI-TBP1 TBP2-TBP1");
    return lines;
}

std::vector<NamedLine> CentreSpring(const MechanismChoice& choice) {
    std::vector<NamedLine> lines;
    if (choice.ThirdSpring == 0) {
        return lines;
    }
    if (choice.CentreSpring == 0) {
        Add(lines, Cyan, "TSI-TSO");
        Join(lines, TBar(choice.ARB == 3 ? Violet : Yellow));
        return lines;
    }
    Add(lines, Magenta, "LCSI-R1O LCSI-PRI");
    lines.emplace_back("LCSI", choice.Motion == 1 ? "~LCSI" : "~static LCSI", Cyan);
    return lines;
}

TEST(MDisplay3dTest, DrawsThePartsOfEveryMechanismInTheirColours) {
    for (const MechanismChoice& choice : OfferedChoices()) {
        SCOPED_TRACE(choice.Text());
        SuspensionData data;
        data.SpringMechanism = choice.Spring;
        data.ThirdSpringMechanism = choice.ThirdSpring;
        data.CentreSpringSystem = choice.CentreSpring;
        data.ARBMechanism = choice.ARB;
        data.ChassisMotion = choice.Motion;
        data.DriveShaftExists = choice.DriveShaft;

        std::vector<NamedLine> expected = LinksAndUpright(choice.Spring == 11);
        Join(expected, SpringTrain(choice.Spring, choice.ThirdSpring != 2));
        Join(expected, CentreSpring(choice));
        if (choice.ARB == 3) {
            Join(expected, TBar(Violet));
        } else if (choice.ARB != 0) {
            Add(expected, Violet, "ARP1-ARP2 ARP1-ARI ARI-ARDL");
        }
        if (choice.DriveShaft) {
            Add(expected, Magenta, "DSI-DSO");
        }
        EXPECT_THAT(LinesOf(data), UnorderedElementsAreArray(expected));
    }
}

/// The words and colours of the legend.
struct LegendEntry {
    std::string Words;
    Colour Drawn;

    friend bool operator==(const LegendEntry&, const LegendEntry&) = default;
};

class View3dTest : public testing::Test {
  protected:
    void Draw(const MechanismChoice& choice) {
        m_document = CornerOf(choice);
        CalculateCorner(m_document);
        Draw3d(m_wire, m_surface, PositionAt(m_document, 0, 0), m_options);
    }
    [[nodiscard]] std::vector<LegendEntry> Legend() const {
        std::vector<LegendEntry> entries;
        for (const RecordingSurface::Text& text : m_surface.Texts) {
            if (text.Y == 0) {
                EXPECT_EQ(text.Words.substr(text.Words.size() - 3), "   ");
                entries.push_back({text.Words.substr(0, text.Words.size() - 3), text.Drawn});
            }
        }
        return entries;
    }

    RecordingSurface m_surface{1000, 700};
    CWireframe m_wire;
    Options m_options;
    Suspension m_document;
};

TEST_F(View3dTest, TheLegendNamesWhatIsDrawn) {
    Draw({smNone, 0, 0, abNone, cmRoll, false});
    EXPECT_THAT(Legend(),
                ElementsAre(LegendEntry{"Stub Axle & Wheel", Orange},
                            LegendEntry{"Lower wishbone", Blue}, LegendEntry{"Trackrod", Green},
                            LegendEntry{"Upper wishbone", Red}, LegendEntry{"Upright", White},
                            LegendEntry{"Spring", Cyan}));
    Draw({smMacPhersonStrut, 0, 0, abToUpright, cmRoll, true});
    EXPECT_THAT(Legend(),
                ElementsAre(LegendEntry{"Stub Axle & Wheel", Orange},
                            LegendEntry{"Lower wishbone", Blue}, LegendEntry{"Trackrod", Green},
                            LegendEntry{"Upright", White}, LegendEntry{"ARB", Violet},
                            LegendEntry{"Spring", Cyan}, LegendEntry{"Driveshaft", Magenta}));
    const auto behindUpright = [&](const MechanismChoice& choice) {
        Draw(choice);
        std::vector<LegendEntry> legend = Legend();
        legend.erase(legend.begin(), legend.begin() + 5);
        return legend;
    };
    const LegendEntry rod{"Pushrod", Yellow};
    const LegendEntry rocker{"Rocker", Magenta};
    const LegendEntry bar{"ARB", Violet};
    const LegendEntry spring{"Spring", Cyan};
    EXPECT_THAT(behindUpright({smPushrodToUpright, 0, 0, abTBar, cmHeave, false}),
                ElementsAre(rod, rocker, bar, spring, LegendEntry{"TBar", Violet}));
    EXPECT_THAT(behindUpright({smPushrodToUpright, 2, 0, abNone, cmHeave, false}),
                ElementsAre(rod, rocker, spring, LegendEntry{"TBar", Yellow}));
    EXPECT_THAT(behindUpright({smPushrodToUpright, 1, 1, abToRocker, cmHeave, false}),
                ElementsAre(rod, rocker, bar, spring));
    EXPECT_THAT(behindUpright({smDirectToUpperWishbone, 0, 0, abNone, cmRoll, false}),
                ElementsAre(spring));
    EXPECT_THAT(behindUpright({smTwoRockersToUpright, 0, 0, abNone, cmRoll, false}),
                ElementsAre(rod, rocker, spring));
}

TEST_F(View3dTest, AxesAreAnOptionAndTheOnlyLabelledLines) {
    Draw({smPushrodToUpright, 1, 0, abToRocker, cmRoll, true}); // the fullest of drawings
    const std::size_t withAxes = m_surface.Lines.size();
    std::map<std::string, int> labels;
    for (const RecordingSurface::Text& text : m_surface.Texts) {
        if (text.Y != 0) {
            EXPECT_EQ(text.Drawn, Grey);
            ++labels[text.Words];
        }
    }
    // The views from the side and from above have each axis but the one that they look along, which
    // is a point there; the origin lies in the sight of all.
    EXPECT_EQ(labels, (std::map<std::string, int>{{"X", 4}, {"Y", 4}, {"Z", 4}}));
    EXPECT_EQ(m_surface.Lines.at(0).Drawn, Grey);
    const Point2D patch = m_wire.PlaceInFreeView(PositionAt(m_document, 0, 0).Points[ptWTCP]);

    m_options.DrawAxes = false;
    Draw({smPushrodToUpright, 1, 0, abToRocker, cmRoll, true});
    EXPECT_EQ(m_surface.Lines.size(), withAxes - 12);
    EXPECT_EQ(Legend().size(), m_surface.Texts.size());
    EXPECT_EQ(m_wire.PlaceInFreeView(PositionAt(m_document, 0, 0).Points[ptWTCP]).X, patch.X)
        << "the axes have no say in the scale";
}

TEST(PreviewTest, ShowsTheStaticPointsOfEverySampleAsItsCalculationDoes) {
    for (const std::string& path : AllSamplePaths()) {
        SCOPED_TRACE(path);
        Suspension document = LoadSample(path.substr(SamplePath("").size()));
        RecordingSurface preview(300, 200);
        CWireframe wire;
        DrawPreview(wire, preview, document.StaticPoints(), document.Data);
        const std::vector<RecordingSurface::Line> entered = preview.Lines;
        EXPECT_THAT(preview.Texts, IsEmpty());
        for (const RecordingSurface::Line& line : entered) {
            EXPECT_TRUE(line.X1 >= 0 && line.X1 <= 300 && line.Y1 >= 0 && line.Y1 <= 200);
        }
        CalculateCorner(document);
        DrawPreview(wire, preview, document.StaticPoints(), document.Data);
        EXPECT_TRUE(preview.Lines == entered);
    }
}

TEST(PreviewTest, LeavesNoLineToAPointThatIsNotInPlay) {
    for (const MechanismChoice& choice : OfferedChoices()) {
        SCOPED_TRACE(choice.Text());
        Suspension document = CornerOf(choice);
        const PointSet entered = document.StaticPoints();
        RecordingSurface before(300, 200);
        CWireframe wire;
        DrawPreview(wire, before, entered, document.Data);
        PointSet strayed = entered;
        for (const PointNumber number : AllPoints) {
            if (!document.Catalogue[number].Enabled) {
                strayed[number] = {9000, -9000, 9000};
            }
        }
        RecordingSurface after(300, 200);
        DrawPreview(wire, after, strayed, document.Data);
        EXPECT_TRUE(after.Lines == before.Lines);
    }
}

TEST(PreviewTest, DrawsPointsThatMakeNoSuspension) {
    RecordingSurface surface(300, 200);
    CWireframe wire;
    for (std::int32_t spring = smNone; spring <= smMacPhersonStrut; ++spring) {
        SuspensionData data;
        data.SpringMechanism = spring;
        PointSet points;
        DrawPreview(wire, surface, points, data);
        EXPECT_EQ(surface.Lines.size(), 3U) << "the axes, until there is a point";
        points[ptLWO] = {0, 600, 150};
        DrawPreview(wire, surface, points, data, ptLWO);
        EXPECT_THAT(surface.Lines, testing::Not(IsEmpty()));
        points[ptLWIR].Z = 1e200;
        EXPECT_THROW(DrawPreview(wire, surface, points, data), Failure);
    }
}

} // namespace
} // namespace corvanta::test
