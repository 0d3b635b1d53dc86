#pragma once

#include "study/Sweep.h"

namespace corvanta {

/// What the studies of a document ask, as it is kept beside it: without charts and targets, which
/// are those of the document.
struct StudyQuestions {
    SweepQuestion Sweep;

    friend bool operator==(const StudyQuestions&, const StudyQuestions&) = default;
};

} // namespace corvanta
