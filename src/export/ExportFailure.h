#pragma once

#include "platform/Messages.h"

namespace corvanta {

/// Reports the exception in flight as the failure of an export. Call it inside a handler only.
void ReportExportFailure(Messages& messages);

} // namespace corvanta
