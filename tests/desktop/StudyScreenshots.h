#pragma once

#include "tests/desktop/DesktopUser.h"
#include "tests/desktop/Photographer.h"

namespace corvanta::test {

/// The studies at work on the examples of the help; leaves the workbench closed.
void TakeStudies(DesktopUser& user, const Photographer& camera);

} // namespace corvanta::test
