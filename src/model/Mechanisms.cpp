#include "model/Mechanisms.h"

#include "model/TextTable.h"

#include <array>

namespace corvanta {

namespace {

struct MechanismTexts {
    std::string_view Name;
    std::string_view ShortWord;
};

constexpr std::array<MechanismTexts, 12> SpringMechanismTexts{{
    {"None (for link behaviour only)", "None"},
    {"Outboard spring to upright", "Spring"},
    {"Outboard spring to lower wishbone", "Spring"},
    {"Inboard spring direct to upper wishbone/rocker", "Spring"},
    {"Inboard spring via rocker to upper wishbone/rocker", "Pushrod"},
    {"Inboard spring via rocker and pullrod to upright", "Pullrod"},
    {"Inboard spring via rocker and pushrod to upright", "Pushrod"},
    {"Inboard spring via rocker and pullrod to upper wishbone", "Pullrod"},
    {"Inboard spring via rocker and pushrod to lower wishbone", "Pushrod"},
    {"Inboard spring via two rockers and pushrod to upright", "Pushrod"},
    {"Inboard spring via two rockers and pushrod to lower wishbone", "Pushrod"},
    {"Macpherson strut", "Strut"},
}};

constexpr std::array<std::string_view, 3> ThirdSpringTexts{
    "Corner spring", "Corner and centre spring", "Centre spring"};

constexpr std::array<std::string_view, 2> CentreSpringTexts{"Longitudinal via T-bar",
                                                            "Lateral via rocker"};

} // namespace

std::string_view SpringMechanismName(std::int32_t mechanism) {
    return EntryOrEmpty(SpringMechanismTexts, mechanism).Name;
}

std::string_view SpringShortWordOf(std::int32_t mechanism) {
    return EntryOrEmpty(SpringMechanismTexts, mechanism).ShortWord;
}

std::string_view ThirdSpringName(std::int32_t thirdSpring) {
    return EntryOrEmpty(ThirdSpringTexts, thirdSpring);
}

std::string_view CentreSpringSystemName(std::int32_t system) {
    return EntryOrEmpty(CentreSpringTexts, system);
}

} // namespace corvanta
