#include "model/Failure.h"

namespace corvanta {

Failure FailureInFlight() {
    try {
        throw;
    } catch (const Failure& failure) {
        return failure;
    } catch (const std::exception& exception) {
        return {fnInternal, exception.what()};
    } catch (...) {
        return {fnInternal, "Unknown failure"};
    }
}

} // namespace corvanta
