#include "automation/SolvedCorner.h"

#include "model/NumberText.h"
#include "study/DesignFields.h"
#include "study/StudySolve.h"

namespace corvanta {

CornerFailure FailureOf(const Suspension& scratch, const SolveResult& outcome) {
    CornerFailure failure{ReasonOf(outcome.Failure), {}, {}, scratch.FaultyPoints};
    if (outcome.Failure.WheelStep >= 2) {
        failure.WheelTravel = WheelTravelAtStep(scratch, outcome.Failure.WheelStep);
    }
    if (outcome.Failure.RackStep >= 2) {
        failure.RackTravel = RackTravelAtStep(scratch, outcome.Failure.RackStep);
    }
    return failure;
}

ChannelCatalogue ChannelsOf(const Design& design, FundamentalUnits& units) {
    ChannelCatalogue channels;
    channels.ChannelsSetup(units);
    channels.SetFrontRearTitles(IsFrontCorner(design.Data, design.Points));
    return channels;
}

std::string TextOf(const CornerFailure& failure, const Design& design,
                   const FundamentalUnits& units) {
    const auto travel = [&](const char* what, const std::optional<double>& value) {
        return value ? std::string(", at ") + what + " travel " +
                           FormatChannelValue(units, *value, ucDisplacement) + " " +
                           units[ucDisplacement].Label
                     : std::string();
    };
    std::string text =
        failure.Reason + travel("wheel", failure.WheelTravel) + travel("rack", failure.RackTravel);
    const PointCatalogue catalogue = CatalogueOf(design.Data);
    const char* lead = "; look at ";
    for (const PointNumber number : failure.Points) {
        text += lead + catalogue[number].LongName;
        lead = ", ";
    }
    return text;
}

std::unique_ptr<Program> SolvedCorner(const Design& design, const FundamentalUnits& units,
                                      CornerFailure& failure) {
    auto corner = std::make_unique<Program>();
    corner->Units = units;
    corner->Channels.ChannelsSetup(corner->Units);
    Suspension& document = corner->Document;
    const SolveResult outcome = Solve(document, design, {corner->Units, corner->Channels});
    if (outcome.Solved) {
        corner->Channels.SetFrontRearTitles(IsFrontCorner(document));
        return corner;
    }
    failure = FailureOf(document, outcome);
    return nullptr;
}

} // namespace corvanta
