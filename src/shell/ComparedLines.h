#pragma once

#include "model/Program.h"
#include "model/Suspension.h"
#include "platform/Chart2D.h"
#include "study/StudyFile.h"

#include <cstdint>
#include <vector>

namespace corvanta {

/// What a plot shows and where: as `PlotDisplay` takes it.
struct PlottedCourse {
    int Channel = 0;
    std::int32_t Variable = 0;
    int Rack = 0;
    int Wheel = 0;
};

/// The lines that stand behind the plot of the program's document, in the units of its axes: the
/// baseline where it is another design, dashed, and the ticked variants, each at the step that is
/// nearest to the fixed travel. A design that can't be solved, or lacks the channel, has none. The
/// designs are solved in the scratch document. Throws Failure 1000 for a channel whose unit has no
/// factor.
[[nodiscard]] std::vector<ChartSeries> ComparedLines(Suspension& scratch, const Program& program,
                                                     const StudyData& study,
                                                     const PlottedCourse& course);

} // namespace corvanta
