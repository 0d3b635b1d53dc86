#include "study/RigidCorner.h"

#include "model/Failure.h"
#include "solver/SInitGeo.h"
#include "solver/StaticState.h"
#include "solver/WheelAttitude.h"

#include <cmath>
#include <utility>

namespace corvanta {

namespace {

/// All lengths are met to this, mm.
constexpr double LengthTolerance = 1e-9;

constexpr int MostSteps = 60;
constexpr int MostHalvings = 24;

/// The step of the slopes, mm.
constexpr double SlopeStep = 1e-4;

/// A greater change of a length, mm, is made in parts, so that the linkage is not thrown into its
/// mirror position.
constexpr double GreatestPart = 5;

/// More than this is no change of a corner, mm.
constexpr double GreatestChange = 1000;

/// The greater size; one that is no number prevails.
double Greater(double greatest, double value) {
    return std::abs(value) > greatest || std::isnan(value) ? std::abs(value) : greatest;
}

double Norm(const Unknowns& residuals) {
    double sum = 0;
    for (const double residual : residuals) {
        sum += residual * residual;
    }
    return std::sqrt(sum);
}

double Worst(const Unknowns& residuals) {
    double worst = 0;
    for (const double residual : residuals) {
        worst = Greater(worst, residual);
    }
    return worst;
}

Slopes SlopesAt(const CCornerLinkage& linkage, const Unknowns& at) {
    Slopes slopes{};
    for (std::size_t column = 0; column < linkage.Count(); ++column) {
        // An angle of a rocker is in radians.
        const double step = column < CCornerLinkage::FirstRocker ? SlopeStep : SlopeStep / 100;
        Unknowns less = at;
        Unknowns more = at;
        less[column] -= step;
        more[column] += step;
        const Unknowns low = linkage.Residuals(less);
        const Unknowns high = linkage.Residuals(more);
        for (std::size_t row = 0; row < linkage.Count(); ++row) {
            slopes[row][column] = (high[row] - low[row]) / (2 * step);
        }
    }
    return slopes;
}

Unknowns Step(const Unknowns& from, const Unknowns& step, double share) {
    Unknowns to = from;
    for (std::size_t n = 0; n < MostUnknowns; ++n) {
        to[n] -= share * step[n];
    }
    return to;
}

/// Newton's method with steps that are halved until they bring the linkage nearer. False where it
/// can't be closed; `at` is then the nearest that was found.
bool Close(const CCornerLinkage& linkage, Unknowns& at) {
    Unknowns residuals = linkage.Residuals(at);
    for (int n = 0; n < MostSteps && !(Worst(residuals) < LengthTolerance); ++n) {
        Unknowns step{};
        if (!SolveLinear(SlopesAt(linkage, at), residuals, linkage.Count(), step)) {
            return false;
        }
        const double norm = Norm(residuals);
        double share = 1;
        Unknowns next = Step(at, step, share);
        residuals = linkage.Residuals(next);
        for (int halvings = 0; !(Norm(residuals) < norm); ++halvings) {
            if (halvings == MostHalvings) {
                return false;
            }
            share /= 2;
            next = Step(at, step, share);
            residuals = linkage.Residuals(next);
        }
        at = next;
    }
    return Worst(residuals) < LengthTolerance;
}

std::string WorstFault(const CCornerLinkage& linkage, const Unknowns& at) {
    const Unknowns residuals = linkage.Residuals(at);
    std::size_t worst = 0;
    for (std::size_t n = 1; n < linkage.Count() && !std::isnan(residuals[worst]); ++n) {
        if (!(std::abs(residuals[n]) <= std::abs(residuals[worst]))) {
            worst = n;
        }
    }
    return linkage.FaultOf(worst);
}

double GreatestOf(const CornerChange& change) {
    double greatest = Greater(0, change.SpringLonger);
    for (const double longer : change.Longer) {
        greatest = Greater(greatest, longer);
    }
    for (const PointNumber number : AllPoints) {
        const SuspPoint& moved = change.Moved[number];
        greatest = Greater(Greater(Greater(greatest, moved.X), moved.Y), moved.Z);
    }
    return greatest;
}

CornerChange PartOf(const CornerChange& change, double share) {
    CornerChange part;
    for (std::size_t n = 0; n < CornerLinkCount; ++n) {
        part.Longer[n] = change.Longer[n] * share;
    }
    for (const PointNumber number : AllPoints) {
        part.Moved[number] = VectorScale(change.Moved[number], share);
    }
    part.SpringLonger = change.SpringLonger * share;
    return part;
}

void TellWheel(CornerStance& stance, const PointSet& places) {
    const Vector3 axle = VectorSubtract(places[ptWSA], places[ptWC]);
    stance.Camber = std::atan2(axle.Z, std::hypot(axle.X, axle.Y)) * DegreesPerRadian;
    stance.Steer = std::atan2(axle.X, -axle.Y) * DegreesPerRadian;
}

} // namespace

CRigidCorner::CRigidCorner(Design design) : m_base(std::move(design)) {
    try {
        DerivePoints(m_base.Points, m_base.Data);
        PrepareStrutGeometry(m_base.Points, m_base.Data);
        StaticLengthRecord lengths;
        CalculateStaticLengths(lengths, m_base.Points, m_base.Data);
        PlaceStubAxle(m_base.Points, lengths);
    } catch (const Failure& failure) {
        m_fault = "The corner can't be taken as it is: " + failure.Description();
    }
}

CornerStance CRigidCorner::Stand(const CornerStance& from, const CornerChange& change,
                                 CornerDemand demand, double start, double demanded) const {
    CornerStance stance;
    stance.Corner = m_base;
    stance.Fault = m_fault;
    const double greatest = Greater(GreatestOf(change), demanded - start);
    if (stance.Fault.empty() && !(greatest < GreatestChange)) {
        stance.Fault = "A change of the corner is too great";
    }
    if (!stance.Fault.empty()) {
        return stance;
    }
    const int parts = 1 + static_cast<int>(greatest / GreatestPart);
    stance.Solution = from.Solution;
    for (int n = 1; n <= parts; ++n) {
        const double share = static_cast<double>(n) / parts;
        const CCornerLinkage linkage(m_base.Data, m_base.Points, PartOf(change, share), demand,
                                     start + share * (demanded - start));
        if (!Close(linkage, stance.Solution)) {
            stance.Fault = WorstFault(
                n == parts ? linkage
                           : CCornerLinkage(m_base.Data, m_base.Points, change, demand, demanded),
                stance.Solution);
            return stance;
        }
    }
    const CCornerLinkage linkage(m_base.Data, m_base.Points, change, demand, demanded);
    PointSet& places = stance.Corner.Points;
    if (!linkage.AllPlaces(stance.Solution, places, stance.Fault)) {
        return stance;
    }
    TellWheel(stance, places);
    stance.Travel = linkage.WheelTravel(places);
    stance.SpringLength = linkage.SpringLength(places);
    stance.RockerAngle = linkage.RockerAngle(stance.Solution);
    DerivePoints(places, m_base.Data);
    stance.Closed = true;
    return stance;
}

CornerStance CRigidCorner::AtTravel(double travel, const CornerChange& change) const {
    return Stand({}, change, CornerDemand::WheelTravel, 0, travel);
}

CornerStance CRigidCorner::OnSpring(const CornerStance& base, const CornerChange& change) const {
    if (!base.Closed) {
        CornerStance stance;
        stance.Corner = m_base;
        stance.Fault = base.Fault;
        return stance;
    }
    if (base.SpringLength) {
        return Stand(base, change, CornerDemand::SpringLength, *base.SpringLength,
                     *base.SpringLength);
    }
    if (HasRocker(m_base.Data.SpringMechanism)) {
        return Stand(base, change, CornerDemand::RockerAngle, base.RockerAngle, base.RockerAngle);
    }
    return Stand(base, change, CornerDemand::WheelTravel, base.Travel, base.Travel);
}

} // namespace corvanta
