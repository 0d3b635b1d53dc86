#pragma once

#include "calculation/SCalcs.h"
#include "model/Design.h"
#include "study/Curve.h"
#include "study/StudyChart.h"

#include <optional>
#include <span>
#include <vector>

namespace corvanta {

/// A place in both travels, mm from static.
struct TravelPlace {
    double Wheel = 0;
    double Rack = 0;

    friend bool operator==(const TravelPlace&, const TravelPlace&) = default;
};

/// What charts show of one design: for each either a curve or a map. A design that fails has no
/// curve; its maps are without values where it fails, and there is none when nothing is reached.
struct DesignResults {
    SolveResult Outcome;
    std::vector<PointNumber> Faulty; ///< points in play that a failure is about
    std::vector<std::optional<Curve>> Curves;
    std::vector<std::optional<ChannelMap>> Maps;
    PointSet Points;       ///< at the place, where it is solved
    TravelPlace Place;     ///< of the steps nearest to the one asked for
    TravelPlace FirstStep; ///< the lowest travels of the grid, mm
    TravelPlace LastStep;  ///< the highest
    TravelPlace StepSize;
};

/// Solves of a design what charts and a drawing of the corner at a place need, and no more. Curves
/// along wheel travel are at the rack step nearest to the place, those along rack travel at the
/// nearest wheel step; maps take the whole grid, and without any chart only the position at the
/// place is solved with its row. The results stay in the scratch document.
[[nodiscard]] DesignResults ResultsOf(Suspension& scratch, const Design& design,
                                      const SolveSettings& settings,
                                      std::span<const StudyChart> charts, const TravelPlace& place);

/// Reads the same anew at another place from a scratch document that still holds the whole grid of
/// a design that was solved: nothing is solved again.
void ReadAt(DesignResults& results, const Suspension& scratch, std::span<const StudyChart> charts,
            const TravelPlace& place);

/// True when charts take the whole grid.
[[nodiscard]] bool TakeWholeGrid(std::span<const StudyChart> charts);

/// The curve of a channel of a design; none when it can't be solved.
[[nodiscard]] std::optional<Curve> CurveOfDesign(Suspension& scratch, const Design& design,
                                                 const SolveSettings& settings, int channel,
                                                 std::int32_t variable, const TravelPlace& place);

} // namespace corvanta
