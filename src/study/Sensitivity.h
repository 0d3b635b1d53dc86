#pragma once

#include "study/DesignVariable.h"
#include "study/StudyNumber.h"
#include "study/StudyWork.h"

#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// What moves this number? A figure is taken with the other travel static.
struct SensitivityQuestion {
    StudyNumber Number;

    friend bool operator==(const SensitivityQuestion&, const SensitivityQuestion&) = default;
};

/// By how much the number changes per mm of a coordinate.
struct CoordinateSlope {
    PointCoordinate Coordinate;
    std::optional<double> PerMillimetre; ///< stored units of the number per mm
    std::string Reason;                  ///< why there is no slope: a design beside can't be solved
};

struct SensitivityAnswer {
    double Value = 0;                    ///< the number of the design itself, stored units
    std::vector<CoordinateSlope> Slopes; ///< of `CoordinatesInPlay`, in their order
    bool Stopped = false; ///< on request: coordinates not come to have neither slope nor reason
};

/// How a number of a design changes with every coordinate in play: central differences, each of the
/// row or column of the grid that the number needs. Throws Failure `fnInvalidCall` that
/// says what is wrong with the question, or why the design itself has no such number.
[[nodiscard]] SensitivityAnswer FindSensitivity(CSampleRunner& runner, const Design& design,
                                                const SensitivityQuestion& question,
                                                const SolveSettings& settings);

} // namespace corvanta
