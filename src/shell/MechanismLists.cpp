#include "shell/MechanismLists.h"

#include "model/Mechanisms.h"

#include <algorithm>
#include <utility>

namespace corvanta {

namespace {

constexpr const char* None = "None";

} // namespace

std::vector<ListEntry> SpringMechanismEntries() {
    std::vector<ListEntry> entries;
    for (std::int32_t mechanism = smNone; mechanism <= smMacPhersonStrut; ++mechanism) {
        entries.push_back({std::string(SpringMechanismName(mechanism))});
    }
    return entries;
}

std::vector<ListEntry> SpringSystemEntries(int springMechanism) {
    if (springMechanism == smNone) {
        return {{None}};
    }
    if (HasSingleRodRocker(springMechanism)) {
        return {{"Corner springs"}, {"Corner and centre springs"}, {"Centre spring"}};
    }
    return {{"Corner springs"}};
}

std::vector<ListEntry> CentreSpringEntries(int springSystem) {
    if (springSystem != tsCornerAndCentreSpring && springSystem != tsCentreSpring) {
        return {{None}};
    }
    return {{std::string(CentreSpringSystemName(csLongitudinalViaTBar))},
            {std::string(CentreSpringSystemName(csLateralViaRocker))}};
}

std::vector<ListEntry> BarEntries(int springMechanism) {
    std::vector<ListEntry> entries{
        {None, abNone}, {"Lateral bar via drop link to lower wishbone", abToLowerWishbone}};
    if (springMechanism == smOutboardToUpright || springMechanism == smOutboardToLowerWishbone) {
        entries.push_back({"Lateral bar via drop link to upright", abToUpright});
    } else if (HasSingleRodRocker(springMechanism)) {
        entries.push_back({"Lateral bar via drop link to rocker", abToRocker});
        entries.push_back({"T-bar via drop link to rocker", abTBar});
    } else if (HasSecondRocker(springMechanism)) {
        entries.push_back({"Lateral bar via drop link to first rocker", abToRocker});
    } else if (springMechanism == smMacPhersonStrut) {
        entries.push_back({"Lateral bar via drop link to Macpherson strut", abToUpright});
    }
    return entries;
}

void Refill(ListControl& list, std::vector<ListEntry> entries) {
    const std::string former = list.Text();
    list.Clear();
    for (ListEntry& entry : entries) {
        list.Add(std::move(entry.Text), entry.ItemData);
    }
    list.Select(std::max(0, list.Find(former)));
}

} // namespace corvanta
