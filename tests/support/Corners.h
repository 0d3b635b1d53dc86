#pragma once

#include "model/Channels.h"
#include "model/Program.h"
#include "model/Suspension.h"
#include "model/Units.h"
#include "solver/SGetLocn.h"

#include <cstdint>
#include <string>

namespace corvanta::test {

/// Units by their labels, a decimal point.
[[nodiscard]] FundamentalUnits UnitsOf(const std::string& displacement, const std::string& force,
                                       const std::string& mass, const std::string& rate);

/// Units of a test: mm, N, kg and N/mm, a decimal point.
[[nodiscard]] FundamentalUnits MetricUnits();

/// The channels in the units of a test.
[[nodiscard]] ChannelCatalogue MetricChannels();

/// A program in these units with an empty grid of 3 rack steps by 4 wheel steps, of which the
/// static ones are 3 and 4.
[[nodiscard]] Program SmallGrid();

/// Sets a document up after a change of its settings; messages go nowhere.
void SetUpCorner(Suspension& document);

/// Calculates a document that was set up. Throws with the message of the run when it fails.
void CalculateCorner(Suspension& document);

/// A double wishbone corner of a road-going size, with every pickup that any mechanism asks for. No
/// axis is parallel to a coordinate axis except the T-bar's, which must be, and the wheel stands
/// with camber, so that a mixed-up coordinate shows. Travel is 20 mm in 5 mm steps, rack 10 mm in 5
/// mm steps.
[[nodiscard]] Suspension
DoubleWishboneCorner(std::int32_t springMechanism = smPushrodToLowerWishbone,
                     std::int32_t arbMechanism = abNone, std::int32_t chassisMotion = cmRoll);

/// A MacPherson strut of a small car, travels as above.
[[nodiscard]] Suspension StrutCorner(std::int32_t arbMechanism = abNone);

inline double Distance(const SuspPoint& p1, const SuspPoint& p2) {
    return PointDistance(p1, p2).Distance;
}

inline double Dot(const Vector3& a, const Vector3& b) {
    return a.X * b.X + a.Y * b.Y + a.Z * b.Z;
}

} // namespace corvanta::test
