#include "results/ViewTitles.h"

namespace corvanta {

ViewTitles TitlesOfView(const Program& program, std::int32_t view, std::int32_t viewArgument,
                        std::int32_t variable) {
    const Suspension& document = program.Document;
    const auto position = [&](const char* what, double travel) {
        return std::string("Values at ") + what +
               " travel from static = " + NumberToText(travel, program.Units.NumberSeparators) +
               " " + program.Units[ucDisplacement].Label;
    };
    const std::string wheelText =
        position("wheel", WheelTravelAtStep(document, program.Settings.ViewWheel));
    const std::string rackText =
        position("rack", RackTravelAtStep(document, program.Settings.ViewRack));
    const bool alongRack = variable == vvAlongRackTravel;
    const std::string& subtitle = alongRack ? wheelText : rackText;
    const std::string name(ViewName(view));
    switch (view) {
    case vwCoordinates:
        return {name, wheelText + "\r\n" + rackText};
    case vwLinkLoads:
        return {name + " - " + LinkLoadViewName(viewArgument, document.Data), {}};
    case vwLinkLengths:
    case vwDynamicsReport:
    case vwQuadraticCoefficients:
        return {name, {}};
    case vwPlot:
        return {program.Channels[viewArgument == 0 ? int{chAckerman} : viewArgument].Title +
                    (alongRack ? " v. Rack travel from static" : " v. Wheel travel from static"),
                subtitle};
    case vwAllChannels:
        return {"All channels", subtitle};
    default:
        return view >= vwAntis && view <= vwCustomTable ? ViewTitles{name, subtitle} : ViewTitles{};
    }
}

} // namespace corvanta
