#pragma once

#include "model/Suspension.h"
#include "tests/support/Corners.h"

#include <cmath>
#include <initializer_list>
#include <string>
#include <vector>

namespace corvanta::test {

/// Two points that a rigid part holds apart.
struct RigidLink {
    PointNumber From;
    PointNumber To;
};

/// Collects the rigid parts of a corner as links between their points.
class RigidParts {
  public:
    explicit RigidParts(const SuspensionData& data) : m_data(data) {
        AddUpright();
        AddActuator();
        AddRockers();
        AddBars();
    }

    [[nodiscard]] const std::vector<RigidLink>& Links() const { return m_links; }

  private:
    void Link(PointNumber from, PointNumber to) { m_links.push_back({from, to}); }

    /// A point that rides on the part of three others.
    void Rides(PointNumber point, std::initializer_list<PointNumber> part) {
        for (const PointNumber other : part) {
            Link(point, other);
        }
    }

    void AddUpright() {
        Rides(ptLWO, {ptLWIR, ptLWIF, ptTRO, ptWC, ptWSA});
        Rides(ptTRO, {ptTRI, ptWC, ptWSA});
        Link(ptWC, ptWSA);
        Link(ptWC, ptWTCP);
        if (m_data.SpringMechanism == smMacPhersonStrut) {
            Rides(ptUWO_MACPH, {ptLWO, ptTRO, ptWC, ptWSA});
        } else {
            Rides(ptUWO, {ptUWIR, ptUWIF, ptLWO, ptTRO, ptWC, ptWSA});
        }
        if (m_data.DriveShaftExists) {
            Rides(ptDSO, {ptLWO, ptTRO, ptWC});
        }
    }

    void AddActuator() {
        switch (m_data.SpringMechanism) {
        case 1:
        case 5:
        case 6:
        case 9:
            Rides(ptPRO, {ptUWO, ptLWO, ptTRO, ptWC});
            break;
        case 11: // the strut's pickup stays where it is while the rack turns the upright about the
                 // strut
            Rides(ptPRO, {ptLWO, ptUWO_MACPH});
            break;
        case 2:
        case 8:
        case 10:
            Rides(ptPRO, {ptLWIF, ptLWIR, ptLWO});
            break;
        case 3:
        case 4:
        case 7:
            Rides(ptPRO, {ptUWIF, ptUWIR, ptUWO});
            break;
        default:
            break;
        }
    }

    void AddRockers() {
        const auto spring = m_data.SpringMechanism;
        if (spring >= 4 && spring <= 10) {
            Link(ptPRO, ptPRI);
            Rides(ptPRI, {ptR1P1, ptR1P2, ptR1O});
            Rides(ptR1O, {ptR1P1, ptR1P2});
        }
        if (spring == 9 || spring == 10) {
            Link(ptR1O, ptR2I);
            Rides(ptR2I, {ptR2P1, ptR2P2, ptR2O});
            Rides(ptR2O, {ptR2P1, ptR2P2});
        }
        if (m_data.ThirdSpringMechanism != 0 && m_data.CentreSpringSystem == 1) {
            Rides(ptLCSI, {ptR1P1, ptPRI, ptR1O, ptR1P2});
        }
    }

    void AddBars() {
        switch (m_data.ARBMechanism) {
        case 1:
            Rides(ptARDL, {ptLWO, ptLWIF, ptLWIR});
            break;
        case 2:
            Rides(ptARDL, {ptR1P1, ptPRI, ptR1O, ptR1P2});
            break;
        case 4:
            Rides(ptARDL, {ptLWO, ptTRO, ptWC});
            break;
        default:
            break;
        }
        if (m_data.ARBMechanism == 1 || m_data.ARBMechanism == 2 || m_data.ARBMechanism == 4) {
            Rides(ptARI, {ptARDL, ptARP1, ptARP2});
        }
        if (UsesTBar(m_data)) {
            Rides(ptTBDLI, {ptR1P1, ptPRI, ptR1O, ptR1P2, ptTBDLO});
            Rides(ptTBDLO, {ptTBP1, ptTSI, ptTBDLO2});
            Rides(ptTSI, {ptTBP1, ptTBDLO2});
        }
    }

    const SuspensionData& m_data;
    std::vector<RigidLink> m_links;
};

/// The link of a set that is furthest from its static length.
struct WorstLink {
    double Error = 0;
    std::string Name;

    void Look(const PointSet& set, const PointSet& fixed, const std::vector<RigidLink>& links,
              const std::string& where) {
        for (const RigidLink& link : links) {
            const double error = std::abs(Distance(set[link.From], set[link.To]) -
                                          Distance(fixed[link.From], fixed[link.To]));
            if (!(error <= Error)) {
                Error = error;
                Name = std::string(PointShortName(link.From)) + " to " +
                       std::string(PointShortName(link.To)) + where;
            }
        }
    }
};

} // namespace corvanta::test
