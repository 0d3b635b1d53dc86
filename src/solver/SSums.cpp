#include "solver/SSums.h"

#include "solver/FaultyPoints.h"
#include "solver/MLibCoordGeom.h"
#include "solver/SGetLocn.h"

#include <cmath>
#include <initializer_list>
#include <string_view>
#include <vector>

namespace corvanta {

namespace {

/// Points nearer than this count as one, mm.
constexpr double LeastDistance = 1.0;

/// How far a T-bar's axis may be from straight across the car, mm.
constexpr double TBarAxisTolerance = 1e-6;

constexpr std::string_view ReportHead =
    "The following problem/s were found with the input geometry: ";

/// The static points and the list of problems found with them, and what points these are about.
class ProblemList {
  public:
    explicit ProblemList(const PointSet& points) : m_points(points) {}

    void AddIf(bool problem, std::string_view message, std::initializer_list<PointNumber> numbers) {
        if (problem) {
            m_text += '\r';
            m_text += message;
            m_numbers.insert(m_numbers.end(), numbers);
        }
    }
    void AddIfTooClose(PointNumber p1, PointNumber p2, std::string_view message) {
        AddIf(TooClose(p1, p2), message, {p1, p2});
    }
    void AddIfTooCloseToEither(PointNumber point, PointNumber axis1, PointNumber axis2,
                               std::string_view message) {
        AddIf(TooClose(point, axis1) || TooClose(point, axis2), message, {point, axis1, axis2});
    }
    [[nodiscard]] const SuspPoint& At(PointNumber number) const { return m_points[number]; }
    [[nodiscard]] const std::string& Text() const { return m_text; }
    [[nodiscard]] const std::vector<PointNumber>& Numbers() const { return m_numbers; }

  private:
    [[nodiscard]] bool TooClose(PointNumber p1, PointNumber p2) const {
        return PointDistance(m_points[p1], m_points[p2]).Distance < LeastDistance;
    }

    const PointSet& m_points;
    std::string m_text;
    std::vector<PointNumber> m_numbers;
};

void CheckWheelAndLinks(ProblemList& problems, const SuspensionData& data) {
    problems.AddIfTooClose(ptWTCP, ptWC, "Tyre centre & contact patch points coincident");
    problems.AddIfTooClose(ptUWO, ptTRO, "Trackrod & Upper wishbone outboard points coincident");
    problems.AddIfTooClose(ptLWO, ptTRO, "Trackrod & Lower wishbone outboard points coincident");
    problems.AddIfTooClose(ptTRO, ptTRI, "Trackrod has no length - check trackrod coordinates");
    problems.AddIf(problems.At(ptTRO).Y <= problems.At(ptTRI).Y,
                   "Trackrod points swapped inboard for outboard", {ptTRO, ptTRI});
    if (data.SpringMechanism == smMacPhersonStrut) {
        return;
    }
    problems.AddIfTooClose(ptUWO, ptLWO, "Upper & Lower wishbone outboard points coincident");
    problems.AddIf(problems.At(ptUWIR).X <= problems.At(ptUWIF).X,
                   "Upper wishbone inboard points back to front", {ptUWIR, ptUWIF});
    problems.AddIf(problems.At(ptLWIR).X <= problems.At(ptLWIF).X,
                   "Lower wishbone inboard points back to front", {ptLWIR, ptLWIF});
}

void CheckBar(ProblemList& problems, std::int32_t arbMechanism) {
    if (IsLateralBar(arbMechanism)) {
        problems.AddIfTooClose(ptARP1, ptARP2, "Two distinct points needed for rocker axis");
        const double lever =
            DistancePointToLine(problems.At(ptARP1), problems.At(ptARP2), problems.At(ptARI));
        problems.AddIf(lever == 0, "Anti-roll bar input lever length is 0", // exactly 0
                       {ptARI, ptARP1, ptARP2});
    }
    if (arbMechanism == abTBar) {
        const SuspPoint& pivot = problems.At(ptTBP1);
        const SuspPoint& axis = problems.At(ptTBP2);
        problems.AddIfTooClose(ptTBP1, ptTBP2, "Two distinct points needed for T-Bar pivot axis");
        problems.AddIf(std::abs(pivot.X - axis.X) >= TBarAxisTolerance ||
                           std::abs(pivot.Z - axis.Z) >= TBarAxisTolerance,
                       "T-Bar pivot axis must be horizontal", {ptTBP1, ptTBP2});
        problems.AddIf(problems.At(ptTBDLO).Y <= 0,
                       "T-Bar input lever length must be greater than 0", {ptTBDLO});
    }
}

void CheckSpring(ProblemList& problems, const SuspensionData& data) {
    if (const std::optional<PointNumber> end = MovingSpringEnd(data)) {
        problems.AddIfTooClose(*end, ptSAI, "Two distinct points needed for the spring");
    }
}

void CheckRockers(ProblemList& problems, std::int32_t mechanism) {
    if (HasRocker(mechanism)) {
        problems.AddIfTooCloseToEither(ptPRI, ptR1P1, ptR1P2,
                                       "Rocker input & pivot axis are coincident");
        problems.AddIfTooCloseToEither(ptR1O, ptR1P1, ptR1P2,
                                       "Rocker output & pivot axis are coincident");
        problems.AddIfTooClose(ptR1P1, ptR1P2, "Two distinct points needed for rocker axis");
    }
    if (HasSecondRocker(mechanism)) {
        problems.AddIfTooCloseToEither(ptR2I, ptR2P1, ptR2P2,
                                       "2nd rocker input & pivot axis is coincident");
        problems.AddIfTooCloseToEither(ptR2O, ptR2P1, ptR2P2,
                                       "2nd rockr output & pivot axis is coincident");
        problems.AddIfTooClose(ptR2P1, ptR2P2, "Two distinct points needed for 2nd rocker axis");
    }
}

} // namespace

bool CheckInputGeometry(Suspension& document, std::string& report) {
    const SuspensionData& data = document.Data;
    ProblemList problems(document.StaticPoints());
    CheckWheelAndLinks(problems, data);
    CheckBar(problems, data.ARBMechanism);
    CheckSpring(problems, data);
    CheckRockers(problems, data.SpringMechanism);
    if (data.DriveShaftExists) {
        problems.AddIfTooClose(ptDSO, ptDSI, "Two distinct points needed to define driveshaft");
    }
    if (problems.Text().empty()) {
        return true;
    }
    report = std::string(ReportHead) + "\r" + problems.Text();
    NameFaultyPoints(document, problems.Numbers());
    document.GeometryValid = false;
    return false;
}

bool CheckActuatorPlacement(Suspension& document, std::string& report) {
    const PointSet& points = document.StaticPoints();
    const double toUpper = PointDistance(points[ptPRO], points[ptUWO]).Distance;
    const double toLower = PointDistance(points[ptPRO], points[ptLWO]).Distance;
    ProblemList problems(points);
    switch (document.Data.SpringMechanism) {
    case smOutboardToLowerWishbone:
        problems.AddIf(toLower > toUpper, "Spring connection is nearer upper wishbone than lower",
                       {ptPRO, ptUWO, ptLWO});
        break;
    case smRockerToUpperWishbone:
        problems.AddIf(points[ptPRO].Y > points[ptUWCR].Y,
                       "Pickup off top rocker is outboard of its pivot axis",
                       {ptPRO, ptUWIF, ptUWIR});
        break;
    case smPullrodToUpright:
    case smPullrodToUpperWishbone:
        problems.AddIf(toUpper > toLower, "Pullrod outer point is nearer lower wishbone than upper",
                       {ptPRO, ptUWO, ptLWO});
        break;
    case smPushrodToUpright:
    case smPushrodToLowerWishbone:
    case smTwoRockersToUpright:
    case smTwoRockersToLowerWishbone:
        problems.AddIf(toLower > toUpper, "Pushrod outer point is nearer upper wishbone than lower",
                       {ptPRO, ptUWO, ptLWO});
        break;
    default:
        break;
    }
    if (problems.Text().empty()) {
        return true;
    }
    report = std::string(ReportHead) + "\r\r" + problems.Text() + "\r\rCheck system definition";
    NameFaultyPoints(document, problems.Numbers());
    return false;
}

} // namespace corvanta
