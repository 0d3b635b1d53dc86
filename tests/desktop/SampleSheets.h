#pragma once

#include "platform/ChartSheet.h"

namespace corvanta::test {

/// Camber along wheel travel with a baseline, two variants, a target and a tolerance band, all of
/// 49 points. `change` moves the line.
[[nodiscard]] ChartSheet LineSheet(double change = 0);

/// Camber over both travels, 49 x 49, a corner of which can't be reached.
[[nodiscard]] ChartSheet MapSheet(double change = 0);

} // namespace corvanta::test
