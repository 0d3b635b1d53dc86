#pragma once

#include "model/Failure.h"
#include "platform/Messages.h"

namespace corvanta {

/// Runs an event's handler. An exception that no handler of the program took is reported and ends
/// here, so that the next event works.
template <typename Handler>
void Guarded(Messages& messages, const Handler& handler) {
    try {
        handler();
    } catch (...) {
        messages.ShowMessage("There was an error.\rError was: " + FailureInFlight().Description(),
                             msExclamation);
    }
}

} // namespace corvanta
