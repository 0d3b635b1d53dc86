#include "shell/ComparedLines.h"

#include "model/Channels.h"
#include "results/GridCourse.h"
#include "results/MDisplayPlot.h"
#include "study/DesignResults.h"

#include <optional>
#include <string>

namespace corvanta {

namespace {

constexpr Colour BaselineColour{128, 128, 128}; ///< to be seen on white and on black paper

TravelPlace PlaceOf(const Suspension& document, const PlottedCourse& course) {
    return {WheelTravelAtStep(document, WheelStepOf(document, course.Wheel)),
            RackTravelAtStep(document, RackStepOf(document, course.Rack))};
}

PlotColumn ColumnOf(const Program& program, int channel, const std::vector<double>& values) {
    const ChannelRecord& record = program.Channels[channel];
    return {record.Title, record.Format, values,
            static_cast<double>(UsableUnit(program.Units, record.Class).Factor)};
}

} // namespace

std::vector<ChartSeries> ComparedLines(Suspension& scratch, const Program& program,
                                       const StudyData& study, const PlottedCourse& course) {
    if (course.Variable != vvAlongRackTravel && course.Variable != vvAlongWheelTravel) {
        return {};
    }
    const TravelPlace place = PlaceOf(program.Document, course);
    const int channelX = course.Variable == vvAlongRackTravel ? chRackTravel : chWheelTravel;
    std::vector<ChartSeries> lines;
    const auto add = [&](const Design& design, const std::string& name, Colour drawn, bool dashed) {
        const std::optional<Curve> curve =
            CurveOfDesign(scratch, design, {program.Units, program.Channels}, course.Channel,
                          course.Variable, place);
        if (curve && curve->X.size() >= 2) {
            lines.push_back({drawn,
                             PlotPoints(ColumnOf(program, channelX, curve->X),
                                        ColumnOf(program, course.Channel, curve->Y)),
                             name, dashed});
        }
    };
    if (study.Baseline && *study.Baseline != DesignOf(program.Document)) {
        add(*study.Baseline, "Baseline", BaselineColour, true);
    }
    for (const Variant& variant : study.Variants) {
        if (variant.Ticked) {
            add(variant.Design, variant.Name, variant.Drawn, false);
        }
    }
    return lines;
}

} // namespace corvanta
