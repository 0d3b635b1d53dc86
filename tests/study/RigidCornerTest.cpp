#include "study/RigidCorner.h"

#include "solver/RideHeight.h"
#include "solver/WheelAttitude.h"
#include "tests/support/RigidParts.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

namespace corvanta::test {
namespace {

constexpr double PlaceTolerance = 1e-6;

/// The corners of the samples, one for each kind and more.
constexpr std::array Samples{"roadster-front-links.WSP",       "rally-rear-upright-spring.WSP",
                             "touring-front-wishbone.WSP",     "classic-front-inboard-rocker.WSP",
                             "classic-front-rocker-link.WSP",  "formula-front-pullrod.WSP",
                             "formula-front-pushrod.WSP",      "formula-rear-pullrod.WSP",
                             "formula-rear-pushrod.WSP",       "prototype-front-two-rockers.WSP",
                             "prototype-rear-two-rockers.WSP", "saloon-front-strut.WSP",
                             "formula-front-monoshock.WSP",    "hillclimb-rear-centre-spring.WSP"};

void ForEachCorner(const std::function<void(const CRigidCorner&)>& look) {
    for (const char* name : Samples) {
        SCOPED_TRACE(name);
        look(CRigidCorner(DesignOf(LoadSample(name))));
    }
}

std::vector<CornerLink> LinksOf(const SuspensionData& data) {
    std::vector<CornerLink> links;
    for (std::size_t n = 0; n < CornerLinkCount; ++n) {
        if (HasLink(data, static_cast<CornerLink>(n))) {
            links.push_back(static_cast<CornerLink>(n));
        }
    }
    return links;
}

/// Another way to stand a corner on its wheels: every point is three unknowns, every rigid part a
/// set of distances, all found together by Levenberg's method. There is no pose, no angle and no
/// frame in it.
class PointNet {
  public:
    PointNet(const Design& base, const CornerChange& change) : m_data(base.Data), m_base(base) {
        m_places = base.Points;
        for (const PointNumber number : AllPoints) {
            m_places[number] = Plus(m_places[number], change.Moved[number]);
        }
        m_bodies = m_places;
        CollectMoving();
        const RigidParts parts(m_data);
        for (const RigidLink& link : parts.Links()) {
            const auto is = [&](PointNumber n) { return link.From == n || link.To == n; };
            if (!is(ptWTCP) && !is(ptTBDLO2)) {
                Tie(link.From, link.To, 0);
            }
        }
        if (m_data.SpringMechanism == smMacPhersonStrut) {
            Tie(ptPRO, ptTRO, 0);
            Tie(ptPRO, ptWC, 0);
        }
        if (UsesTBar(m_data)) {
            for (const PointNumber pivot : {ptTBP1, ptTBP2}) {
                Tie(ptTBDLO, pivot, 0);
                Tie(ptTSI, pivot, 0);
            }
        }
        if (const auto end = MovingSpringEnd(m_data)) {
            Tie(*end, ptSAI, change.SpringLonger);
        }
        for (std::size_t n = 0; n < CornerLinkCount; ++n) {
            const LinkEnds ends = EndsOf(static_cast<CornerLink>(n));
            for (Distance3& tie : m_ties) {
                if ((tie.From == ends.From && tie.To == ends.To) ||
                    (tie.From == ends.To && tie.To == ends.From)) {
                    tie.Length =
                        Distance(m_base.Points[tie.From], m_base.Points[tie.To]) + change.Longer[n];
                }
            }
        }
        MoveRiders();
    }

    /// False when it does not converge.
    bool Solve() {
        double damping = 1e-3;
        std::vector<double> residuals = Residuals();
        for (int pass = 0; pass < 200 && Norm(residuals) > 1e-11; ++pass) {
            const PointSet before = m_places;
            Move(Improvement(residuals, damping));
            std::vector<double> after = Residuals();
            const bool better = Norm(after) < Norm(residuals);
            damping = better ? damping / 10 : damping * 10;
            if (better) {
                residuals = after;
            } else {
                m_places = before;
            }
        }
        return Norm(residuals) < 1e-8;
    }

    [[nodiscard]] const std::vector<PointNumber>& Moving() const { return m_moving; }
    [[nodiscard]] const PointSet& Places() const { return m_places; }

  private:
    struct Distance3 {
        PointNumber From;
        PointNumber To;
        double Length;
    };

    static SuspPoint Plus(const SuspPoint& a, const SuspPoint& b) {
        return {a.X + b.X, a.Y + b.Y, a.Z + b.Z};
    }
    static double Norm(const std::vector<double>& values) {
        double sum = 0;
        for (const double value : values) {
            sum += value * value;
        }
        return std::sqrt(sum);
    }

    void CollectMoving() {
        m_moving = {ptLWO, ptTRO, ptWC, ptWSA};
        const auto add = [&](bool has, std::initializer_list<PointNumber> points) {
            if (has) {
                m_moving.insert(m_moving.end(), points);
            }
        };
        const std::int32_t spring = m_data.SpringMechanism;
        const bool rockerTurns = m_data.ThirdSpringMechanism != tsCentreSpring;
        add(spring != smMacPhersonStrut, {ptUWO});
        add(spring == smMacPhersonStrut, {ptUWO_MACPH});
        add(spring != smNone, {ptPRO});
        add(m_data.DriveShaftExists, {ptDSO});
        add(HasRocker(spring) && rockerTurns, {ptPRI, ptR1O});
        add(HasSecondRocker(spring), {ptR2I, ptR2O});
        add(IsLateralBar(m_data.ARBMechanism), {ptARI});
        add(IsLateralBar(m_data.ARBMechanism) && (m_data.ARBMechanism != abToRocker || rockerTurns),
            {ptARDL});
        add(UsesTBar(m_data), {ptTBDLO, ptTSI});
        add(UsesTBar(m_data) && rockerTurns, {ptTBDLI});
        add(HasLateralCentreSpring(m_data) && rockerTurns, {ptLCSI});
    }

    /// Links keep the length of the base, whatever is put between them and a body.
    void Tie(PointNumber from, PointNumber to, double longer) {
        const auto onUpright = [&](PointNumber n) {
            return n == ptLWO || n == ptUWO || n == ptTRO || n == ptWC || n == ptWSA ||
                   n == ptDSO || n == ptUWO_MACPH ||
                   (n == ptPRO && (m_data.SpringMechanism == 1 || m_data.SpringMechanism == 5 ||
                                   m_data.SpringMechanism == 6 || m_data.SpringMechanism == 9 ||
                                   m_data.SpringMechanism == 11)) ||
                   (n == ptARDL && m_data.ARBMechanism == abToUpright);
        };
        const PointSet& of = onUpright(from) && onUpright(to) ? m_bodies : m_base.Points;
        m_ties.push_back({from, to, Distance(of[from], of[to]) + longer});
    }

    /// Where a leg is longer, what rides on the wishbone is measured on the wishbone drawn flat on
    /// the bench: inner pickups on a line, the joint where two circles meet.
    void MoveRiders() {
        for (const PointNumber rider : {ptPRO, ptARDL}) {
            for (const auto& [front, rear, joint] :
                 {std::array{ptLWIF, ptLWIR, ptLWO}, std::array{ptUWIF, ptUWIR, ptUWO}}) {
                std::array<Distance3*, 3> ties{TieOf(rider, front), TieOf(rider, rear),
                                               TieOf(rider, joint)};
                if (ties[0] == nullptr || ties[1] == nullptr) {
                    continue;
                }
                const auto flat = [&](double toFront, double toRear, double base) {
                    const double x =
                        (toFront * toFront - toRear * toRear + base * base) / (2 * base);
                    return std::array{x, std::sqrt(toFront * toFront - x * x)};
                };
                const PointSet& p = m_base.Points;
                const double base = Distance(p[front], p[rear]);
                const auto old =
                    flat(Distance(p[joint], p[front]), Distance(p[joint], p[rear]), base);
                const auto now =
                    flat(TieOf(joint, front)->Length, TieOf(joint, rear)->Length, base);
                // The rider from the line, and how far along it and above the plane.
                const auto along =
                    flat(Distance(p[rider], p[front]), Distance(p[rider], p[rear]), base);
                const double toJoint = Distance(p[rider], p[joint]);
                const double dx = along[0] - old[0];
                const double inPlane =
                    (along[1] * along[1] - old[1] * old[1] - (toJoint * toJoint - dx * dx)) /
                    (2 * old[1]);
                const double high = toJoint * toJoint - dx * dx - inPlane * inPlane;
                const double x = now[0] + dx;
                const double y = now[1] + inPlane;
                ties[0]->Length = std::sqrt(x * x + y * y + high);
                ties[1]->Length = std::sqrt((base - x) * (base - x) + y * y + high);
            }
        }
    }

    Distance3* TieOf(PointNumber one, PointNumber other) {
        const auto found = std::find_if(m_ties.begin(), m_ties.end(), [&](const Distance3& tie) {
            return (tie.From == one && tie.To == other) || (tie.From == other && tie.To == one);
        });
        return found == m_ties.end() ? nullptr : &*found;
    }

    [[nodiscard]] std::vector<double> Residuals() const {
        std::vector<double> residuals;
        for (const Distance3& tie : m_ties) {
            residuals.push_back(Distance(m_places[tie.From], m_places[tie.To]) - tie.Length);
        }
        if (m_data.SpringMechanism == smMacPhersonStrut) {
            const Vector3 body = VectorSubtract(m_places[ptUWO_MACPH], m_places[ptLWO]);
            const Vector3 mount = VectorSubtract(m_places[ptSAI], m_places[ptLWO]);
            const Vector3 cross = CrossProduct(body, mount);
            for (const double part : {cross.X, cross.Y, cross.Z}) {
                residuals.push_back(part / Distance(m_places[ptUWO_MACPH], m_places[ptLWO]));
            }
        }
        if (m_data.SpringMechanism == smNone) {
            const double radius = Distance(m_base.Points[ptWTCP], m_base.Points[ptWC]);
            const double sine = (m_places[ptWSA].Z - m_places[ptWC].Z) / 600;
            residuals.push_back(m_places[ptWC].Z - radius * std::sqrt(1 - sine * sine) -
                                m_base.Points[ptWTCP].Z);
        }
        return residuals;
    }

    double& Coordinate(std::size_t n) {
        SuspPoint& point = m_places[m_moving[n / 3]];
        return n % 3 == 0 ? point.X : n % 3 == 1 ? point.Y : point.Z;
    }

    void Move(const std::vector<double>& step) {
        for (std::size_t n = 0; n < step.size(); ++n) {
            Coordinate(n) -= step[n];
        }
    }

    std::vector<double> Improvement(const std::vector<double>& residuals, double damping) {
        const std::size_t unknowns = m_moving.size() * 3;
        std::vector<std::vector<double>> slopes;
        for (std::size_t n = 0; n < unknowns; ++n) {
            const double kept = Coordinate(n);
            Coordinate(n) = kept + 1e-4;
            slopes.push_back(Residuals());
            Coordinate(n) = kept - 1e-4;
            const std::vector<double> low = Residuals();
            Coordinate(n) = kept;
            for (std::size_t r = 0; r < residuals.size(); ++r) {
                slopes.back()[r] = (slopes.back()[r] - low[r]) / 2e-4;
            }
        }
        std::vector<std::vector<double>> normal(unknowns, std::vector<double>(unknowns + 1));
        for (std::size_t i = 0; i < unknowns; ++i) {
            for (std::size_t r = 0; r < residuals.size(); ++r) {
                for (std::size_t j = 0; j < unknowns; ++j) {
                    normal[i][j] += slopes[i][r] * slopes[j][r];
                }
                normal[i][unknowns] += slopes[i][r] * residuals[r];
            }
            normal[i][i] += damping;
        }
        for (std::size_t i = 0; i < unknowns; ++i) { // definite: Gauss and Jordan without pivots
            for (std::size_t j = 0; j < unknowns; ++j) {
                if (j != i) {
                    const double share = normal[j][i] / normal[i][i];
                    for (std::size_t k = i; k <= unknowns; ++k) {
                        normal[j][k] -= share * normal[i][k];
                    }
                }
            }
        }
        std::vector<double> step(unknowns);
        for (std::size_t i = 0; i < unknowns; ++i) {
            step[i] = normal[i][unknowns] / normal[i][i];
        }
        return step;
    }

    const SuspensionData& m_data;
    const Design& m_base;
    PointSet m_places;
    PointSet m_bodies;
    std::vector<PointNumber> m_moving;
    std::vector<Distance3> m_ties;
};

void ExpectAsNet(const CRigidCorner& corner, const CornerChange& change) {
    const CornerStance stance = corner.OnSpring(corner.AtTravel(0), change);
    ASSERT_TRUE(stance.Closed) << stance.Fault;
    PointNet net(corner.Base(), change);
    ASSERT_TRUE(net.Solve());
    for (const PointNumber number : net.Moving()) {
        // The top of a strut is told as it is at rest.
        if (number != ptUWO_MACPH && number != ptWSA) {
            // Where it lies in one plane with the bar's ends, distances tell it to second order.
            EXPECT_LE(Distance(stance.Corner.Points[number], net.Places()[number]),
                      number == ptTSI ? 1e-3 : PlaceTolerance)
                << PointShortName(number);
        }
    }
    EXPECT_NEAR(stance.Camber, WheelCamber(net.Places()[ptWC], net.Places()[ptWSA]), 1e-5);
    EXPECT_NEAR(stance.Steer, WheelSteer(net.Places()[ptWC], net.Places()[ptWSA]), 1e-5);
}

TEST(RigidCornerTest, LengthsStandWhereANetOfPointsStands) {
    ForEachCorner([](const CRigidCorner& corner) {
        for (const CornerLink link : LinksOf(corner.Base().Data)) {
            SCOPED_TRACE(NameOf(corner.Base().Data, link));
            CornerChange change;
            change[link] = 1.5;
            ExpectAsNet(corner, change);
        }
        if (MovingSpringEnd(corner.Base().Data)) {
            CornerChange platform;
            platform.SpringLonger = -2;
            platform[CornerLink::TrackRod] = -1;
            ExpectAsNet(corner, platform);
        }
    });
}

TEST(RigidCornerTest, ShimsStandWhereANetOfPointsStands) {
    ForEachCorner([](const CRigidCorner& corner) {
        CornerChange joints;
        joints.Moved[ptTRO] = {0.5, 0, 2};
        joints.Moved[ptTRI] = {0, 0, -1};
        const bool strut = corner.Base().Data.SpringMechanism == smMacPhersonStrut;
        if (strut) {
            joints.Moved[ptSAI] = {3, -4, 0};
        } else {
            joints.Moved[ptUWO] = {0, 1.5, 0.5};
            joints.Moved[ptUWIF] = joints.Moved[ptUWIR] = {0, -2, 1};
        }
        ExpectAsNet(corner, joints);
    });
}

TEST(RigidCornerTest, ZeroChangesNothingAndPartsStayRigid) {
    ForEachCorner([](const CRigidCorner& corner) {
        const Design& base = corner.Base();
        const CornerStance still = corner.OnSpring(corner.AtTravel(0), {});
        ASSERT_TRUE(still.Closed) << still.Fault;
        for (const PointNumber number : AllPoints) {
            EXPECT_LE(Distance(still.Corner.Points[number], base.Points[number]), 1e-9);
        }
        EXPECT_EQ(still.Steer, 0);

        const CornerStance up = corner.AtTravel(12);
        ASSERT_TRUE(up.Closed) << up.Fault;
        std::vector<RigidLink> links = RigidParts(base.Data).Links();
        std::erase_if(links, [&](const RigidLink& link) {
            const auto is = [&](PointNumber n) { return link.From == n || link.To == n; };
            // At rest the top of a strut and the far side of a T-bar are elsewhere, and a rocker
            // that works a centre spring alone has no output of its own.
            return is(ptUWO_MACPH) || is(ptTBDLO2) ||
                   (is(ptR1O) && base.Data.ThirdSpringMechanism == tsCentreSpring);
        });
        WorstLink worst;
        worst.Look(up.Corner.Points, base.Points, links, "");
        EXPECT_LE(worst.Error, 1e-8) << worst.Name;

        // There and back by way of another corner's spring.
        CornerChange rod;
        rod[CornerLink::TrackRod] = 2;
        const CornerStance there = corner.OnSpring(up, rod);
        const CornerStance back = corner.OnSpring(there, {});
        ASSERT_TRUE(back.Closed) << back.Fault;
        for (const PointNumber number : {ptWC, ptTRO, ptLWO, ptPRO, ptWTCP}) {
            EXPECT_LE(Distance(back.Corner.Points[number], up.Corner.Points[number]),
                      base.Data.SpringMechanism == smNone ? 1e-3 : 1e-8);
        }
    });
}

TEST(RigidCornerTest, TheRodGivesTheRideHeightThatTheTravelGives) {
    for (const char* name :
         {"formula-front-pushrod.WSP", "formula-front-pullrod.WSP", "formula-rear-pullrod.WSP",
          "formula-rear-pushrod.WSP", "prototype-front-two-rockers.WSP"}) {
        for (const double travel : {6.0, -4.0}) {
            SCOPED_TRACE(name);
            Suspension document = LoadSample(name);
            const CRigidCorner corner(DesignOf(document));
            std::string errorText;
            ASSERT_TRUE(AdjustRideHeight(document, errorText, travel, true)) << errorText;
            const PointSet& adjusted = document.StaticPoints();
            CornerChange change;
            change[CornerLink::SpringRod] =
                Distance(adjusted[ptPRO], adjusted[ptPRI]) -
                Distance(corner.Base().Points[ptPRO], corner.Base().Points[ptPRI]);
            const CornerStance stance = corner.OnSpring(corner.AtTravel(0), change);
            ASSERT_TRUE(stance.Closed) << stance.Fault;
            EXPECT_NEAR(stance.Travel, travel, 1e-5);
            EXPECT_NEAR(stance.Camber, WheelCamber(adjusted[ptWC], adjusted[ptWSA]), 1e-5);
            EXPECT_NEAR(stance.Steer, WheelSteer(adjusted[ptWC], adjusted[ptWSA]), 1e-5);
            for (const PointNumber number : AllPoints) {
                // The adjustment carries the lateral spring along with a rocker that stays.
                if (document.Catalogue[number].Enabled && number != ptLCSI) {
                    EXPECT_LE(Distance(stance.Corner.Points[number], adjusted[number]), 2e-5)
                        << PointShortName(number);
                }
            }
        }
    }
}

TEST(RigidCornerTest, AStrutWithoutADirectionIsNotMet) {
    const CRigidCorner corner(DesignOf(LoadSample("saloon-front-strut.WSP")));
    Design design = corner.Base();
    const auto missed = [&] {
        const Unknowns residuals =
            CCornerLinkage(design.Data, design.Points, {}, CornerDemand::WheelTravel, 0)
                .Residuals({});
        return std::count_if(residuals.begin(), residuals.end(), [](double residual) {
            return !(std::abs(residual) < PlaceTolerance);
        });
    };
    EXPECT_EQ(missed(), 0);
    design.Points[ptWSA] = // on the line through lower joint and mount
        VectorScale(VectorAdd(design.Points[ptLWO], design.Points[ptSAI]), 0.5);
    EXPECT_EQ(missed(), 2);
}

TEST(RigidCornerTest, ALengthThatCantBeMetIsNamed) {
    const CRigidCorner corner(DesignOf(LoadSample("formula-front-pushrod.WSP")));
    const auto faultOf = [&](CornerLink link, double longer) {
        CornerChange change;
        change[link] = longer;
        const CornerStance stance = corner.OnSpring(corner.AtTravel(0), change);
        EXPECT_FALSE(stance.Closed);
        return stance.Fault;
    };
    EXPECT_THAT(faultOf(CornerLink::TrackRod, -300), HasSubstr("Trackrod can't be"));
    EXPECT_THAT(faultOf(CornerLink::TBarDropLink, -70), HasSubstr("T-Bar drop link can't be"));
    EXPECT_THAT(faultOf(CornerLink::UpperFront, std::nan("")), HasSubstr("too great"));
    EXPECT_THAT(corner.AtTravel(700).Fault, HasSubstr("travel of 700.000 mm"));
    Design flat = corner.Base();
    flat.Points[ptLWIF] = flat.Points[ptLWIR] = flat.Points[ptLWO];
    EXPECT_FALSE(CRigidCorner(flat).AtTravel(1).Closed);
}

} // namespace
} // namespace corvanta::test
