#include "model/Views.h"

#include "model/SuspensionData.h"
#include "model/TextTable.h"

#include <algorithm>

namespace corvanta {

namespace {

constexpr std::array<std::string_view, 16> ViewNames{
    "",
    "Anti-Dive, -Squat & -Roll",
    "Lateral Geometry",
    "Plan & Longitudinal Geometry",
    "Spring Details",
    "Anti-Roll Bar Details",
    "Wishbone & Driveshaft Angles",
    "Custom Table",
    "Bump & Droop Coordinates",
    "Link Loads",
    "Link Lengths",
    "Dynamics Report",
    "Quadratic Coefficients",
    "",
    "Plot",
    "3d View",
};

} // namespace

std::string_view ViewName(std::int32_t view) {
    return EntryOrEmpty(ViewNames, view);
}

std::string LinkLoadViewName(std::int32_t subView, const SuspensionData& data) {
    switch (subView) {
    case 1:
        return "Upper Wishbone Loads";
    case 2:
        return "Lower Wishbone Loads";
    case LinkLoadViewCount:
        return std::string(SpringShortWord(data)) + " & Track Rod Loads";
    default:
        return {};
    }
}

void CustomChannels::Add(int id) {
    if (!Contains(id)) {
        m_ids.push_back(id);
    }
}

bool CustomChannels::Contains(int id) const {
    return std::find(m_ids.begin(), m_ids.end(), id) != m_ids.end();
}

} // namespace corvanta
