#pragma once

#include "model/Points.h"
#include "model/Suspension.h"
#include "model/SuspensionData.h"

namespace corvanta {

/// All that a user enters of a corner, as one value of some 2 kB that is copied freely. The points
/// that are not in play are kept too, so that a mechanism that is taken back finds its points.
struct Design {
    SuspensionData Data;
    PointSet Points; ///< the 49 static points, mm

    /// Equal to the last bit in all that a document keeps: the data and the points in play.
    friend bool operator==(const Design& one, const Design& other);
};

/// The design of a document. Its other door is `SetDesign`, beside the set-up of documents.
[[nodiscard]] Design DesignOf(const Suspension& document);

} // namespace corvanta
