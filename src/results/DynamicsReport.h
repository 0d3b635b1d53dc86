#pragma once

#include "model/Program.h"
#include "platform/Messages.h"

#include <string>

namespace corvanta {

/// View 11: the report on how far the corner moves under the stated acceleration and braking, in
/// the user's units, lines joined by CR LF. While the settings do not allow it a message says so
/// and the text is empty.
[[nodiscard]] std::string ShowDynamicsReport(const Program& program, Messages& messages);

} // namespace corvanta
