#pragma once

#include "tests/desktop/Photographer.h"

namespace corvanta::test {

/// The steps of docs/tutorial.md, from a first start on, with the corner that the page has its
/// reader type.
void TakeTutorial(const Photographer& camera);

} // namespace corvanta::test
