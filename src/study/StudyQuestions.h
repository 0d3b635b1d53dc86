#pragma once

#include "study/Fit.h"
#include "study/Optimise.h"
#include "study/Region.h"
#include "study/SetupTurns.h"
#include "study/Sweep.h"
#include "study/Tolerance.h"

namespace corvanta {

/// What the studies of a document ask, as it is kept beside it: without charts, targets and the
/// numbers of a chart, which are those of the document.
struct StudyQuestions {
    SweepQuestion Sweep;
    ToleranceQuestion Tolerance;
    OptimiseQuestion Optimise;
    FitQuestion Fit;
    TurnsQuestion Setup;
    RegionQuestion Region;

    friend bool operator==(const StudyQuestions&, const StudyQuestions&) = default;
};

} // namespace corvanta
