#include "solver/FaultyPoints.h"

#include <algorithm>
#include <array>
#include <utility>

namespace corvanta {

PointNumber EnteredPoint(PointNumber number, const SuspensionData& data) {
    switch (number) {
    case ptWSA:
        return ptWC;
    case ptUWO:
    case ptUWO_MACPH:
    case ptUWIF:
    case ptUWIR:
        return data.SpringMechanism == smMacPhersonStrut ? ptSAI : number;
    case ptPRICR:
        return ptPRI;
    case ptR1O:
        return data.ThirdSpringMechanism == tsCentreSpring ? ptTBDLI : number;
    case ptTSI:
        return data.ThirdSpringMechanism == tsCornerSpring ? ptTBDLO : number;
    case ptTBDLO2:
        return ptTBDLO;
    default:
        return number;
    }
}

void NameFaultyPoints(Suspension& document, std::span<const PointNumber> numbers) {
    std::vector<PointNumber>& named = document.FaultyPoints;
    for (const PointNumber number : numbers) {
        const PointNumber entered = EnteredPoint(number, document.Data);
        if (document.Catalogue[entered].Enabled &&
            std::find(named.begin(), named.end(), entered) == named.end()) {
            named.push_back(entered);
        }
    }
}

void NamePointsOfRaisedFailure(Suspension& document, bool atAPosition) {
    constexpr std::array<std::pair<PointNumber, PointNumber>, 3> Axes{
        {{ptUWIF, ptUWIR}, {ptLWIF, ptLWIR}, {ptUWO, ptLWO}}};
    const PointSet& points = document.StaticPoints();
    for (const auto& [first, second] : Axes) {
        if (points[first] == points[second]) { // exactly: any length makes an axis
            NameFaultyPoints(document, std::array{first, second});
        }
    }
    const bool strut = document.Data.SpringMechanism == smMacPhersonStrut;
    if (strut && points[ptSAI].Z == points[ptLWO].Z) { // exactly: it lies flat
        NameFaultyPoints(document, std::array{ptSAI, ptLWO});
    }
    if (document.FaultyPoints.empty() && atAPosition) {
        NameFaultyPoints(document, strut ? std::array{ptLWO, ptLWIF, ptLWIR}
                                         : std::array{ptUWO, ptUWIF, ptUWIR});
    }
}

} // namespace corvanta
