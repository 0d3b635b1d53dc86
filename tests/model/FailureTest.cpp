#include "model/Failure.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace corvanta {
namespace {

Failure Caught(const auto& thrown) {
    try {
        throw thrown;
    } catch (...) {
        return FailureInFlight();
    }
}

TEST(FailureTest, AnyExceptionReadsAsAFailure) {
    const Failure own = Caught(Failure(fnOverflow, "Overflow"));
    EXPECT_EQ(own.Number(), fnOverflow);
    EXPECT_EQ(own.Description(), "Overflow");

    const Failure foreign = Caught(std::runtime_error("out of paper"));
    EXPECT_EQ(foreign.Number(), fnInternal);
    EXPECT_EQ(foreign.Description(), "out of paper");
}

} // namespace
} // namespace corvanta
