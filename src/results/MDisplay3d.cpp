#include "results/MDisplay3d.h"

#include "results/GridCourse.h"
#include "solver/SGetLocn.h"
#include "solver/SInitGeo.h"
#include "solver/StaticState.h"

#include <array>

namespace corvanta {

namespace {

constexpr Colour ColourARB{175, 128, 255};
constexpr Colour ColourAxes{150, 150, 150};
constexpr Colour ColourLowerWishbone{90, 150, 255}; // light enough to be read on black
constexpr Colour ColourPushrod{255, 255, 0};
constexpr Colour ColourRocker{255, 0, 255};
constexpr Colour ColourSpring{0, 255, 255};
constexpr Colour ColourStub{255, 128, 0};
constexpr Colour ColourDropLink{255, 255, 0};
constexpr Colour ColourTrackrod{0, 255, 0};
constexpr Colour ColourUpperWishbone{255, 0, 0};
constexpr Colour ColourUpright{255, 255, 255};
constexpr Colour ColourDriveshaft{255, 0, 255};
constexpr Colour ColourRing{255, 255, 255};

/// Length of the drawn axes, mm.
constexpr double AxisLength = 1000;

/// Radius of the ring around a point, in units of the surface.
constexpr double RingRadius = 7;

/// A T-bar that is the anti-roll bar has that one's colour.
Colour ColourTBar(const SuspensionData& data) {
    return data.ARBMechanism == abTBar ? ColourARB : Colour{255, 255, 0};
}

bool IsStrut(const SuspensionData& data) {
    return data.SpringMechanism == smMacPhersonStrut;
}

/// One drawing of the corner, assembly by assembly.
class CornerDrawing {
  public:
    CornerDrawing(DrawingSink& sink, const CornerPosition& corner)
        : m_sink(sink),
          m_points(corner.Points),
          m_static(corner.StaticPoints),
          m_data(corner.Data) {}

    void DrawAll() {
        DrawWishbones();
        DrawUpright();
        DrawStubAxleAndWheel();
        DrawSpringMechanism();
        if (HasLateralCentreSpring(m_data)) {
            DrawLateralCentreSpring();
        } else if (HasCentreSpring(m_data) && m_data.CentreSpringSystem == csLongitudinalViaTBar) {
            Line(ptTSI, ptTSO, ColourSpring);
            DrawTBar();
        }
        if (IsLateralBar(m_data.ARBMechanism)) {
            DrawLateralBar();
        } else if (m_data.ARBMechanism == abTBar) {
            DrawTBar();
        }
        if (m_data.DriveShaftExists) {
            Line(ptDSI, ptDSO, ColourDriveshaft);
        }
    }

  private:
    void Line(PointNumber from, PointNumber to, Colour colour) {
        m_sink.AddLine(m_points[from], m_points[to], colour);
    }

    [[nodiscard]] double Distance(PointNumber from, PointNumber to) const {
        return PointDistance(m_points[from], m_points[to]).Distance;
    }

    void DrawWishbones() {
        Line(ptLWIF, ptLWO, ColourLowerWishbone);
        Line(ptLWIR, ptLWO, ColourLowerWishbone);
        Line(ptLWIR, ptLWIF, ColourLowerWishbone);
        Line(ptTRI, ptTRO, ColourTrackrod);
        if (!IsStrut(m_data)) {
            Line(ptUWIF, ptUWO, ColourUpperWishbone);
            Line(ptUWIR, ptUWO, ColourUpperWishbone);
            Line(ptUWIR, ptUWIF, ColourUpperWishbone);
        }
    }

    void DrawUpright() {
        const PointNumber top = IsStrut(m_data) ? ptSAI : ptUWO;
        Line(ptLWO, ptTRO, ColourUpright);
        Line(ptTRO, top, ColourUpright);
        Line(top, ptLWO, ColourUpright);
    }

    void DrawStubAxleAndWheel() {
        m_sink.AddCircle(m_points[ptWC], m_points[ptWSA], Distance(ptWC, ptWTCP), ColourStub);
        Line(ptWC, ptWTCP, ColourStub);
        Line(ptWSA, ptWC, ColourStub);
    }

    void DrawSpringMechanism() {
        switch (m_data.SpringMechanism) {
        case smOutboardToUpright:
        case smOutboardToLowerWishbone:
            Line(ptPRO, ptPRI, ColourSpring);
            break;
        case smMacPhersonStrut:
            Line(ptPRO, ptSAI, ColourSpring);
            break;
        case smDirectToUpperWishbone:
            Line(ptPRO, ptSAI, ColourSpring);
            DrawUpperWishboneSpringMount();
            break;
        case smRockerToUpperWishbone:
            DrawUpperWishboneSpringMount();
            DrawFirstRockerAndPushrod();
            Line(ptR1O, ptSAI, ColourSpring);
            break;
        case smPullrodToUpright:
        case smPushrodToUpright:
        case smPullrodToUpperWishbone:
        case smPushrodToLowerWishbone:
            DrawFirstRockerAndPushrod();
            if (m_data.ThirdSpringMechanism != tsCentreSpring) {
                Line(ptR1O, ptSAI, ColourSpring);
            }
            break;
        case smTwoRockersToUpright:
        case smTwoRockersToLowerWishbone:
            DrawFirstRockerAndPushrod();
            DrawSecondRocker();
            break;
        default:
            break;
        }
    }

    void DrawUpperWishboneSpringMount() {
        Line(ptUWIF, ptPRO, ColourUpperWishbone);
        Line(ptUWIR, ptPRO, ColourUpperWishbone);
        Line(ptUWO, ptPRO, ColourUpperWishbone);
    }

    void DrawFirstRockerAndPushrod() {
        Line(ptPRO, ptPRI, ColourPushrod);
        Line(ptR1O, ptPRI, ColourRocker);
        Line(ptR1O, ptR1P1, ColourRocker);
        Line(ptR1P1, ptPRI, ColourRocker);
        Line(ptR1P1, ptR1P2, ColourRocker);
        if (HasLateralCentreSpring(m_data)) {
            Line(ptLCSI, ptR1O, ColourRocker);
            Line(ptLCSI, ptPRI, ColourRocker);
        }
    }

    void DrawSecondRocker() {
        Line(ptR1O, ptR2I, ColourPushrod);
        Line(ptR2O, ptR2I, ColourRocker);
        Line(ptR2O, ptR2P1, ColourRocker);
        Line(ptR2P1, ptR2I, ColourRocker);
        Line(ptR2P1, ptR2P2, ColourRocker);
        Line(ptR2O, ptSAI, ColourSpring);
    }

    void DrawTBar() {
        const Colour colour = ColourTBar(m_data);
        Line(ptTBDLI, ptTBDLO, ColourDropLink);
        Line(ptTBDLO, ptTSI, colour);
        Line(ptTBDLO2, ptTSI, colour);
        Line(ptTSI, ptTBP1, colour);
        Line(ptTBP2, ptTBP1, colour);
    }

    /// The spring's far end rides on the other corner, which moves along in heave and stays at rest
    /// in roll.
    void DrawLateralCentreSpring() {
        const PointSet& other = m_data.ChassisMotion == cmHeave ? m_points : m_static;
        const SuspPoint& end = other[ptLCSI];
        m_sink.AddLine(m_points[ptLCSI], {end.X, -end.Y, end.Z}, ColourSpring);
    }

    void DrawLateralBar() {
        Line(ptARP1, ptARP2, ColourARB);
        const bool firstIsNearer = Distance(ptARP1, ptARI) < Distance(ptARP2, ptARI);
        Line(firstIsNearer ? ptARP1 : ptARP2, ptARI, ColourARB);
        Line(ptARI, ptARDL, ColourARB);
    }

    DrawingSink& m_sink;
    const PointSet& m_points;
    const PointSet& m_static;
    const SuspensionData& m_data;
};

void DrawAxis(CWireframe& wireframe, const SuspPoint& end, const char* name) {
    wireframe.AddGuide({}, end, ColourAxes, name);
}

void DrawAxes(CWireframe& wireframe) {
    DrawAxis(wireframe, {AxisLength, 0, 0}, "X");
    DrawAxis(wireframe, {0, AxisLength, 0}, "Y");
    DrawAxis(wireframe, {0, 0, AxisLength}, "Z");
}

void DrawLegendRow(DrawingSurface& surface, const SuspensionData& data) {
    struct Entry {
        std::string_view Text;
        Colour Shown;
        bool InUse = false;
    };
    const std::array entries{
        Entry{"Stub Axle & Wheel", ColourStub, true},
        Entry{"Lower wishbone", ColourLowerWishbone, true},
        Entry{"Trackrod", ColourTrackrod, true},
        Entry{"Upper wishbone", ColourUpperWishbone, !IsStrut(data)},
        Entry{"Upright", ColourUpright, true},
        Entry{SpringShortWord(data), ColourPushrod, HasRocker(data.SpringMechanism)},
        Entry{"Rocker", ColourRocker, HasRocker(data.SpringMechanism)},
        Entry{"ARB", ColourARB, data.ARBMechanism != abNone},
        Entry{"Spring", ColourSpring, true},
        Entry{"TBar", ColourTBar(data), UsesTBar(data)},
        Entry{"Driveshaft", ColourDriveshaft, data.DriveShaftExists},
    };
    bool startOfRow = true;
    for (const Entry& entry : entries) {
        if (entry.InUse) {
            CWireframe::DrawLegend(surface, std::string(entry.Text), entry.Shown, startOfRow);
            startOfRow = false;
        }
    }
}

/// Which way the axes of the car run, small in the middle of an empty free view.
void DrawTriad(DrawingSurface& surface) {
    constexpr double Part = 0.3; // of the view
    const std::array<std::pair<SuspPoint, const char*>, 3> axes{
        {{{1, 0, 0}, "X"}, {{0, 1, 0}, "Y"}, {{0, 0, 1}, "Z"}}};
    CWireframe triad;
    triad.Init(surface);
    triad.SetFreeView({0, 0, Part, 0, 0});
    for (const auto& [end, name] : axes) {
        triad.AddLine({}, end, ColourAxes);
    }
    triad.DrawFreeView(surface, false);
    surface.SetForeColour(ColourAxes);
    for (const auto& [end, name] : axes) {
        const Point2D at = triad.PlaceInFreeView(end);
        surface.SetCurrentX(at.X);
        surface.SetCurrentY(at.Y);
        surface.Print(name);
    }
}

} // namespace

CornerPosition PositionAt(const Suspension& document, int rackStep, int wheelStep) {
    const WheelState& state =
        document.WheelStates(RackStepOf(document, rackStep), WheelStepOf(document, wheelStep));
    return {state.Points, document.StaticPoints(), document.Data};
}

void Draw3d(DrawingSink& sink, const CornerPosition& corner) {
    CornerDrawing(sink, corner).DrawAll();
}

void Draw3d(CWireframe& wireframe, DrawingSurface& surface, const CornerPosition& corner,
            const Options& options) {
    wireframe.Init(surface);
    if (options.DrawAxes) {
        DrawAxes(wireframe);
    }
    Draw3d(wireframe, corner);
    wireframe.DrawAutoLayout(surface, true, options.AutoScale);
    DrawLegendRow(surface, corner.Data);
}

PointSet EnteredPosition(const PointSet& entered, const SuspensionData& data) {
    PointSet points = entered;
    DerivePoints(points, data);
    if (data.ThirdSpringMechanism == tsCentreSpring && !UsesTBar(data)) {
        // The rocker has no output of its own: draw it as an arm to the rod.
        points[ptR1O] = points[ptPRI];
    }
    if (HasLateralCentreSpring(data)) { // a T-bar beside it carries no spring in its middle
        points[ptTSI] = {points[ptTBDLO].X, 0, points[ptTBDLO].Z};
    }
    if (!HasRocker(data.SpringMechanism)) {
        points[ptPRI] = points[ptSAI];
    }
    StaticLengthRecord lengths;
    CalculateStaticLengths(lengths, points, data);
    points[ptWSA] = points[ptWC];
    if (lengths.TyreRadius > 0) {
        PlaceStubAxle(points, lengths);
    }
    return points;
}

void DrawPreview(CWireframe& wireframe, DrawingSurface& surface, const PointSet& staticPoints,
                 const SuspensionData& data, std::optional<PointNumber> ringed) {
    if (staticPoints == PointSet{}) { // no point has been typed in yet
        DrawTriad(surface);
        return;
    }
    const PointSet points = EnteredPosition(staticPoints, data);
    wireframe.Init(surface);
    Draw3d(wireframe, {points, points, data});
    // No part holds the ride height point; a dot makes room for its ring.
    wireframe.AddLine(points[ptRHM], points[ptRHM], ColourAxes);
    wireframe.DrawFreeView(surface, false);
    if (ringed) {
        const Point2D at = wireframe.PlaceInFreeView(points[*ringed]);
        surface.DrawCircle(at.X, at.Y, RingRadius, ColourRing);
    }
}

} // namespace corvanta
