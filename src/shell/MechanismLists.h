#pragma once

#include "platform/Controls.h"

#include <vector>

namespace corvanta {

/// The spring mechanisms in the order of their numbers.
[[nodiscard]] std::vector<ListEntry> SpringMechanismEntries();

/// The springs that a spring mechanism allows, in the order of their numbers.
[[nodiscard]] std::vector<ListEntry> SpringSystemEntries(int springMechanism);

/// The centre spring systems in the order of their numbers, "None" for springs without one.
/// `springSystem` is the number of the springs, -1 with none selected.
[[nodiscard]] std::vector<ListEntry> CentreSpringEntries(int springSystem);

/// The bars that a spring mechanism allows; each carries its number.
[[nodiscard]] std::vector<ListEntry> BarEntries(int springMechanism);

/// New entries for a list: it shows the text that it showed before if that is still one of them,
/// otherwise the first.
void Refill(ListControl& list, std::vector<ListEntry> entries);

} // namespace corvanta
