#include "shell/PointWords.h"

#include "model/NumberText.h"
#include "solver/LocatedStatic.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace corvanta {

namespace {

/// A status bar has no room for more names.
constexpr std::size_t MostNames = 3;

/// "a, b and c" of texts.
std::string Listed(const std::vector<std::string>& texts) {
    std::string list;
    for (std::size_t n = 0; n < texts.size(); ++n) {
        list += n == 0 ? "" : (n + 1 == texts.size() ? " and " : ", ");
        list += texts[n];
    }
    return list;
}

std::vector<std::string> Names(const PointCatalogue& catalogue,
                               std::span<const PointNumber> numbers) {
    std::vector<std::string> names;
    for (const PointNumber number : numbers) {
        const std::string name = PointWords(catalogue, number);
        if (std::find(names.begin(), names.end(), name) == names.end()) {
            names.push_back(name);
        }
    }
    return names;
}

std::string Reason(const PointCatalogue& catalogue, const CarriedPoint& point) {
    return Listed(Names(catalogue, point.References)) +
           " lie in one line, so they can't tell where " + PointWords(catalogue, point.Target) +
           " is. Move one of them out of the line.";
}

std::string Reasons(const PointCatalogue& catalogue, const LocatedStatic& located) {
    std::vector<std::string> reasons;
    for (const CarriedPoint& point : located.WithoutTriangle) {
        const std::string reason = Reason(catalogue, point);
        if (std::find(reasons.begin(), reasons.end(), reason) == reasons.end()) {
            reasons.push_back(reason);
        }
    }
    if (reasons.empty()) {
        return "The points that carry them lie nearly in one line, or far apart. Check them.";
    }
    std::string text;
    for (const std::string& reason : reasons) {
        text += (text.empty() ? "" : " ") + reason;
    }
    return text;
}

/// A travel as the status bar names it: in words, with sign and unit.
std::string TravelWords(const FundamentalUnits& units, double travel, const char* positive,
                        const char* negative) {
    const std::string text = FormatChannelValue(units, travel, ucDisplacement);
    return std::string(travel < 0 ? negative : positive) + (travel > 0 ? " +" : " ") + text + " " +
           units[ucDisplacement].Label;
}

} // namespace

std::string ShortenedName(const std::string& name) {
    return ReplaceAll(ReplaceAll(name, " pickup", ""), "  ", " ");
}

std::string PointWords(const PointCatalogue& catalogue, PointNumber number) {
    return catalogue[number].LongName + " (" + std::string(PointShortName(number)) + ")";
}

std::string RowWords(const PointCatalogue& catalogue, std::span<const PointNumber> numbers) {
    std::vector<std::string> names;
    for (const PointNumber number : numbers.first(std::min(numbers.size(), MostNames))) {
        names.push_back(catalogue[number].LongName);
    }
    if (numbers.size() > MostNames) {
        names.push_back(std::to_string(numbers.size() - MostNames) + " more");
    }
    return Listed(names);
}

DisplacementWords DescribeDisplacement(const Suspension& document, const FundamentalUnits& units) {
    const LocatedStatic located = LocateStatic(document);
    if (located.Displaced.empty()) {
        return {};
    }
    const PointCatalogue& catalogue = document.Catalogue;
    std::vector<std::string> places;
    std::vector<PointNumber> numbers;
    for (const DisplacedPoint& point : located.Displaced) {
        places.push_back(PointWords(catalogue, point.Number) + " by " +
                         FormatChannelValue(units, point.Distance, ucDisplacement) + " " +
                         units[ucDisplacement].Label);
        numbers.push_back(point.Number);
    }
    return {"The results are not those of the points entered. At rest the calculation misses " +
                Listed(places) + ". " + Reasons(catalogue, located),
            "Not where entered: " + RowWords(catalogue, numbers)};
}

std::string DescribeFailure(const Suspension& document, const FundamentalUnits& units,
                            const std::string& position) {
    std::string text;
    const auto addLine = [&](const std::string& line) {
        text += (text.empty() ? "" : "\r") + line;
    };
    if (!document.FaultyPoints.empty()) {
        addLine("Rows of the table: " + Listed(Names(document.Catalogue, document.FaultyPoints)) +
                ".");
    }
    if (!position.empty()) {
        addLine("Position: " + position + ".");
        const std::string displaced = DescribeDisplacement(document, units).Banner;
        if (!displaced.empty()) {
            addLine(displaced);
        }
    }
    return text;
}

std::string PositionWords(const Suspension& document, const FundamentalUnits& units, int wheelStep,
                          int rackStep) {
    std::string text;
    if (wheelStep >= 2) {
        text = TravelWords(units, WheelTravelAtStep(document, wheelStep), "Bump", "Droop");
    }
    if (rackStep >= 2) {
        text += (text.empty() ? "" : "   ") +
                TravelWords(units, RackTravelAtStep(document, rackStep), "Rack", "Rack");
    }
    return text;
}

std::string FailureLine(const CalculationFailure& failure, const Suspension& document,
                        const FundamentalUnits& units) {
    constexpr std::string_view LeadEnd = "\r\r"; // before it stands that there are no results
    const std::size_t lead = failure.Message.rfind(LeadEnd);
    std::string reason =
        lead == std::string::npos ? failure.Message : failure.Message.substr(lead + LeadEnd.size());
    reason = ReplaceAll(reason, "The following error occurred: ", "");
    reason = reason.substr(0, reason.find("\r\n")); // advice follows, which a line has no room for
    reason = reason.substr(0, reason.find_last_not_of(". \r") + 1);
    const std::string place = PositionWords(document, units, failure.WheelStep, failure.RackStep);
    const std::string rows = RowWords(document.Catalogue, document.FaultyPoints);
    return "Can't be solved" + (place.empty() ? "" : " at " + place) + ": " +
           ReplaceAll(reason, "\r", "; ") +
           (rows.empty() ? "" : ". Look at " + ReplaceAll(rows, "  ", " "));
}

} // namespace corvanta
