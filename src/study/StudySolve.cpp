#include "study/StudySolve.h"

#include "model/Channels.h"
#include "model/NumberText.h"
#include "model/Views.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace corvanta {

void AddCurve(GridCut& cut, int channel, std::int32_t variable) {
    std::vector<double>& travels =
        variable == vvAlongRackTravel ? cut.WheelTravels : cut.RackTravels;
    if (std::find(travels.begin(), travels.end(), 0) == travels.end()) {
        travels.push_back(0);
    }
    cut.BarRotation = cut.BarRotation || channel == chARBRotation;
}

std::string ReasonOf(const CalculationFailure& failure) {
    constexpr std::string_view Lead = "Calculations could not be completed.";
    constexpr std::string_view Raised = "The following error occurred: ";
    std::string_view text = failure.Message;
    for (const std::string_view head : {Lead, std::string_view("\r\r"), Raised}) {
        text.remove_prefix(text.starts_with(head) ? head.size() : 0);
    }
    std::string line = ReplaceAll(ReplaceAll(text, "\n", ""), "\r\r", "\r");
    line = ReplaceAll(line, "\r", " ");
    line.erase(line.find_last_not_of(". ") + 1);
    return line;
}

} // namespace corvanta
