#pragma once

#include "model/Channels.h"
#include "model/Program.h"
#include "platform/Chart2D.h"

#include <cstdint>
#include <string>
#include <vector>

namespace corvanta {

/// View 14: one channel against wheel travel or rack travel on a chart, and the readout of a
/// position on it.

/// What a plot keeps between its drawing and a click on it.
struct PlotState {
    int PlotChannelX = chWheelTravel; ///< or rack travel
    int PlotChannelY = chAckerman;
    std::string PlotTitleX; ///< titles of the axes without a readout
    std::string PlotTitleY;
};

/// What goes along one axis of a plot.
struct PlotColumn {
    std::string Title;
    std::string Format;         ///< of a value in the units of the axis
    std::vector<double> Values; ///< stored units
    double Factor = 1;          ///< from stored units to those of the axis
};

/// Plots a channel, 0 for the first one, against rack travel at a fixed wheel step (`variable` 1)
/// or against wheel travel at a fixed rack step (2); any other variable has no points. A step of 0
/// is the static one. Throws Failure "Subscript out of range" for an id that is no channel, 1000
/// for a channel whose unit has no factor.
void PlotDisplay(PlotState& plot, Chart2D& chart, const Program& program, int channel,
                 std::int32_t variable, int rack, int wheel);

/// The points of a line, as many as both columns have, in the units of the axes. X values count to
/// five decimals of the stored unit. Throws Failure "Overflow" for a point beyond the range of a
/// double.
[[nodiscard]] std::vector<ChartPoint> PlotPoints(const PlotColumn& columnX,
                                                 const PlotColumn& columnY);

/// Sets the chart up and loads its points, as many as both columns have. Fewer than two make no
/// line: the points on the chart then stay as they are. A readout is taken away. Throws Failure
/// "Overflow" for a point beyond the range of a double; the chart then stays as it is.
void PlotChart(PlotState& plot, Chart2D& chart, const Program& program, const PlotColumn& columnX,
               const PlotColumn& columnY);

/// A click on the chart, twips right and down from its top left corner. Inside the plot area both
/// axes get a marker, and their titles the values in the units of the axes; outside it the readout
/// is taken away. Failures are ignored.
void PlotClick(const PlotState& plot, Chart2D& chart, const Program& program, double x, double y);

} // namespace corvanta
