#pragma once

#include "model/Suspension.h"

namespace corvanta {

/// How far the corner moves under the stated acceleration and braking, from the static state of a
/// rack step: tyre, link and spring rates in series under the load transfer of one wheel. Sets
/// `DynamicsValid` and the record, all zeros when the settings do not allow it. Source of the load
/// transfer: W. F. Milliken and D. L. Milliken, "Race Car Vehicle Dynamics", 1995, ch. 17 and 18.
/// Throws Failure for arithmetic failures, and then leaves flag and record as they were.
void CalculateDynamics(Suspension& document, int rackRow);

} // namespace corvanta
