#pragma once

#include "model/Failure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvanta::test {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;
using testing::ThrowsMessage;

/// The failure that some work ends with; its number is 0 when there is none.
inline Failure FailureOf(const auto& work) {
    try {
        work();
    } catch (const Failure& failure) {
        return failure;
    }
    return {0, "no failure"};
}

} // namespace corvanta::test
