#include "solver/DoubtfulValues.h"

#include "solver/SGetLocn.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <utility>

namespace corvanta {

namespace {

/// Tyres of cars, karts and trucks are larger and smaller than these radii, mm.
constexpr double LeastRadius = 90;
constexpr double MostRadius = 1000;

/// Half the track of a car, mm.
constexpr double LeastHalfTrack = 250;
constexpr double MostHalfTrack = 2500;

// The rest is told in radii of the tyre, which fit a kart as they fit a truck.
constexpr double MostJointDistance = 2.2; ///< of an outer joint from the wheel centre
constexpr double MostDistance = 9;        ///< of any point from the wheel centre
constexpr double OriginSize = 0.2;        ///< each coordinate of a point "at the origin"
constexpr double MostPatchOffset = 0.25;  ///< of the contact patch, along the car

/// Points that stand on the centreline or reach across it: the bar, the T-bar, the reference.
constexpr std::array MayCross{ptARP1, ptARP2, ptTBP1, ptTBP2, ptTSO, ptTSI, ptRHM};

bool IsOneOf(PointNumber number, std::initializer_list<PointNumber> numbers) {
    return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

class Doubts {
  public:
    Doubts(const PointSet& points, const PointCatalogue& catalogue)
        : m_points(points),
          m_catalogue(catalogue),
          m_radius(PointDistance(points[ptWC], points[ptWTCP]).Distance) {}

    std::vector<DoubtfulValue> All() {
        if (!Entered(ptWC) && !Entered(ptWTCP)) {
            return {}; // the first rows of a new corner are still being typed
        }
        CheckSides();
        if (CheckSizeOfWheel()) { // by which everything else is measured
            CheckPlaces();
        }
        CheckOrder();
        return std::move(m_doubts);
    }

  private:
    [[nodiscard]] bool Entered(PointNumber number) const {
        return m_catalogue[number].Enabled && m_points[number] != SuspPoint{}; // exactly: untouched
    }
    [[nodiscard]] std::string Name(PointNumber number) const {
        return m_catalogue[number].LongName;
    }
    void Add(PointNumber number, double SuspPoint::*coordinate, std::string sentence) {
        m_doubts.push_back({number, coordinate, std::move(sentence)});
    }

    void CheckSides() {
        if (m_points[ptWC].Y < 0 && m_points[ptWTCP].Y < 0) {
            Add(ptWC, &SuspPoint::Y,
                "The wheel is on the right of the car. Enter the left-hand corner: Y is positive "
                "to the left.");
            return; // one sentence for all of them
        }
        for (const PointNumber number : AllPoints) {
            if (Entered(number) && m_points[number].Y < 0 &&
                std::find(MayCross.begin(), MayCross.end(), number) == MayCross.end()) {
                Add(number, &SuspPoint::Y,
                    Name(number) + " is across the centreline of the car: its Y is negative.");
            }
        }
    }

    /// False when there is no wheel to go by.
    bool CheckSizeOfWheel() {
        if (!Entered(ptWC)) {
            return false;
        }
        const char* const units = " Were the coordinates typed in another unit?";
        if (m_radius < LeastRadius || m_radius > MostRadius) {
            Add(ptWC, &SuspPoint::Z,
                std::string("The wheel is too ") + (m_radius < LeastRadius ? "small" : "large") +
                    " for a car." + units);
            return false;
        }
        const double halfTrack = std::abs(m_points[ptWC].Y);
        if (halfTrack < LeastHalfTrack || halfTrack > MostHalfTrack) {
            Add(ptWC, &SuspPoint::Y,
                std::string("The track is too ") +
                    (halfTrack < LeastHalfTrack ? "narrow" : "wide") + " for a car." + units);
        }
        if (std::abs(m_points[ptWC].X - m_points[ptWTCP].X) > MostPatchOffset * m_radius) {
            Add(ptWTCP, &SuspPoint::X,
                Name(ptWTCP) + " is not below the wheel centre, where it is calculated.");
        }
        return true;
    }

    void CheckPlaces() {
        for (const PointNumber number : AllPoints) {
            const bool told = m_points[number].Y < 0; // of its side, which is enough
            if (!Entered(number) || told || IsOneOf(number, {ptWTCP, ptWC, ptRHM})) {
                continue;
            }
            const SuspPoint& p = m_points[number];
            const bool joint = IsOneOf(number, {ptUWO, ptLWO, ptTRO});
            const double distance = PointDistance(p, m_points[ptWC]).Distance / m_radius;
            const double size = std::max({std::abs(p.X), std::abs(p.Y), std::abs(p.Z)});
            if (distance > (joint ? MostJointDistance : MostDistance)) {
                Add(number, Furthest(p),
                    Name(number) + " is too far from the wheel. Was it typed in another unit?");
            } else if (!joint && size < OriginSize * m_radius) {
                Add(number, Furthest(p),
                    Name(number) + " is next to the origin. Was it typed in another unit?");
            }
        }
    }

    /// The coordinate in which a point is furthest from the wheel centre.
    [[nodiscard]] double SuspPoint::*Furthest(const SuspPoint& p) const {
        double SuspPoint::*furthest = &SuspPoint::X;
        for (double SuspPoint::*const coordinate : {&SuspPoint::Y, &SuspPoint::Z}) {
            if (std::abs(p.*coordinate - m_points[ptWC].*coordinate) >
                std::abs(p.*furthest - m_points[ptWC].*furthest)) {
                furthest = coordinate;
            }
        }
        return furthest;
    }

    void CheckOrder() {
        for (const auto& [front, rear] : {std::pair{ptUWIF, ptUWIR}, std::pair{ptLWIF, ptLWIR}}) {
            if (Entered(front) && Entered(rear) && m_points[front].X >= m_points[rear].X) {
                Add(front, &SuspPoint::X,
                    Name(front) + " is behind the rear one: are they swapped? X is positive to the "
                                  "back.");
            }
        }
        if (Entered(ptWC) && m_points[ptWC].Z <= m_points[ptWTCP].Z) {
            Add(ptWC, &SuspPoint::Z, "The wheel centre is not above the contact patch.");
        }
        if (Entered(ptUWO) && Entered(ptLWO) && m_points[ptUWO].Z <= m_points[ptLWO].Z) {
            Add(ptUWO, &SuspPoint::Z,
                Name(ptUWO) + " is below that of the lower wishbone: are they swapped?");
        }
        for (const PointNumber inner : {ptUWIF, ptUWIR, ptLWIF, ptLWIR, ptTRI}) {
            if (Entered(inner) && m_points[ptWC].Y > 0 && m_points[inner].Y >= m_points[ptWC].Y) {
                Add(ptWC, &SuspPoint::Y,
                    "The wheel stands inside the car: " + Name(inner) + " is further out.");
                break;
            }
        }
    }

    const PointSet& m_points;
    const PointCatalogue& m_catalogue;
    double m_radius;
    std::vector<DoubtfulValue> m_doubts;
};

} // namespace

std::vector<DoubtfulValue> DoubtfulValues(const PointSet& points, const PointCatalogue& catalogue) {
    return Doubts(points, catalogue).All();
}

} // namespace corvanta
