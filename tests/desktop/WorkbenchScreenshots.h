#pragma once

#include "tests/desktop/DesktopUser.h"
#include "tests/desktop/Photographer.h"

namespace corvanta::test {

/// The workbench on a corner, as a user has it who tunes its bump steer; it leaves the document
/// changed and the workbench closed.
void TakeWorkbench(DesktopUser& user, const Photographer& camera);

} // namespace corvanta::test
